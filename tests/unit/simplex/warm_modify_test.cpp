// Data changes taken into a resident working record: after each kind of change made through
// the public modification entries, the record survives, the warm solve passes the KKT
// certificate of the changed model and reaches the optimum of a cold solve of it.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "core/model.h"
#include "lp_oracle.h"

namespace zento::test {
namespace {

enum Kind { kUpper, kLower, kRhs, kCost, kRowType, kMixed };

struct Case {
  const char* name;
  Kind kind;
};

// One change of the given kind, chosen from the optimal point so that it moves the optimum.
void change(QZmodel m, Kind kind, std::mt19937& rng, const LpData& lp) {
  std::vector<double> x(lp.n), slack(lp.m);
  QZgetPrimalSolution(m, x.data());
  QZgetSlacks(m, slack.data());
  const int j = static_cast<int>(rng() % lp.n), i = static_cast<int>(rng() % lp.m);
  switch (kind) {
    case kUpper: {
      const double u = std::max(lp.lo[j] > -QZ_INFINITY ? lp.lo[j] : -1e30, x[j] - 1.5);
      ASSERT_EQ(QZmodifyUpperBounds(m, 1, &j, &u), 0);
      break;
    }
    case kLower: {
      const double l = std::min(lp.up[j] < QZ_INFINITY ? lp.up[j] : 1e30, x[j] + 1.5);
      ASSERT_EQ(QZmodifyLowerBounds(m, 1, &j, &l), 0);
      break;
    }
    case kRhs: {
      const double b = lp.b[i] + (rng() % 2 ? 2.5 : -2.5);
      ASSERT_EQ(QZmodifyRHS(m, 1, &i, &b), 0);
      break;
    }
    case kCost: {
      const double c = lp.c[j] + (rng() % 2 ? 3.0 : -3.0);
      ASSERT_EQ(QZmodifyObjective(m, 1, &j, &c), 0);
      break;
    }
    case kRowType: {
      const char t = lp.types[i] == 'G' ? 'L' : (lp.types[i] == 'L' ? 'G' : 'N');
      ASSERT_EQ(QZmodifyConstraintType(m, 1, &i, &t), 0);
      break;
    }
    case kMixed:
      for (Kind k : {kUpper, kCost, kRhs}) change(m, k, rng, lp);
      break;
  }
}

class WarmModify : public ::testing::TestWithParam<Case> {};

TEST_P(WarmModify, WarmSolveMatchesColdSolveOfChangedModel) {
  const Case c = GetParam();
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  int compared = 0, kept = 0;
  for (uint64_t seed = 1; seed <= 40; ++seed) {
    GenOptions o;
    o.m = 5 + static_cast<int>(seed % 9);
    o.n = 6 + static_cast<int>(seed % 13);
    o.wide_scale = seed % 3 == 0;
    const LpData lp = make_planted(seed, o);
    QZmodel warm = QZcreateModel(env, &rc);
    ASSERT_EQ(lp.load(warm), 0);
    // The changes are offered to the model's own simplex record: presolve off.
    ASSERT_EQ(QZsetModelIntParameter(warm, QZ_IPARAM_LP_PRELEVEL, 0), 0);
    int status = 0;
    ASSERT_EQ(QZoptimize(warm, QZ_METHOD_FREE, &status), 0);
    ASSERT_EQ(status, QZ_STATUS_BASIC_OPTIMAL) << "seed " << seed;
    std::mt19937 rng(static_cast<unsigned>(seed));
    change(warm, c.kind, rng, lp);
    if (HasFatalFailure()) return;
    kept += warm->glp != nullptr;
    const LpData changed = LpData::from_model(warm);
    int wst = 0, cst = 0;
    ASSERT_EQ(QZoptimize(warm, QZ_METHOD_FREE, &wst), 0) << "seed " << seed;
    QZmodel cold = QZcreateModel(env, &rc);
    ASSERT_EQ(changed.load(cold), 0);
    ASSERT_EQ(QZoptimize(cold, QZ_METHOD_FREE, &cst), 0) << "seed " << seed;
    // The dual may leave a model with no feasible dual "infeasible or unbounded", where the
    // other run tells which.
    auto either = [](int s) { return s == QZ_STATUS_INFEASIBLE || s == QZ_STATUS_UNBOUNDED; };
    const bool consistent = wst == cst || (wst == QZ_STATUS_INFORUNB && either(cst)) ||
                            (cst == QZ_STATUS_INFORUNB && either(wst));
    EXPECT_TRUE(consistent) << "seed " << seed << " warm " << wst << " cold " << cst;
    if (wst == QZ_STATUS_BASIC_OPTIMAL && cst == QZ_STATUS_BASIC_OPTIMAL) {
      double ow = 0, oc = 0;
      QZgetObjective(warm, &ow);
      QZgetObjective(cold, &oc);
      EXPECT_NEAR(ow, oc, 1e-7 * (1 + std::fabs(oc))) << "seed " << seed;
      const KktReport k = check_model(warm, changed);
      EXPECT_TRUE(k.ok(1e-7)) << "seed " << seed << ": " << k.worst;
      ++compared;
    }
    QZdeleteModel(&cold);
    QZdeleteModel(&warm);
  }
  EXPECT_GT(compared, 10);
  // Every change of these kinds is taken by the record in place.
  EXPECT_EQ(kept, 40);
  QZdeleteEnv(&env);
}

const Case kCases[] = {{"upper", kUpper}, {"lower", kLower}, {"rhs", kRhs},
                       {"cost", kCost},   {"rowtype", kRowType}, {"mixed", kMixed}};
INSTANTIATE_TEST_SUITE_P(Changes, WarmModify, ::testing::ValuesIn(kCases),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace zento::test
