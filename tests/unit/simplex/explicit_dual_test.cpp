// The explicit dual: its optimum equals the model's for every bound and row type and both
// senses, and solving a model through it (orientation forced) gives the model's own optimal
// answer with a KKT certificate and the same verdict on infeasible and unbounded models.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "../common/env_fixture.h"
#include "lp_oracle.h"
#include "zento_fortran.h"

namespace zento::test {
namespace {

LpData planted(uint64_t seed) {
  GenOptions o;
  o.m = 4 + static_cast<int>(seed % 11);
  o.n = 5 + static_cast<int>((seed * 3) % 14);
  o.degen = (seed % 3) * 0.25;
  o.ddegen = (seed % 4) * 0.2;
  o.wide_scale = seed % 5 == 0;
  return make_planted(seed, o);
}

using ExplicitDual = EnvFixture;

TEST_F(ExplicitDual, DualOptimumEqualsPlantedOptimum) {
  int checked = 0;
  for (uint64_t seed = 1; seed <= 60; ++seed) {
    const LpData lp = planted(seed);
    int rc = 0;
    QZmodel m = QZcreateModel(env, &rc);
    ASSERT_EQ(lp.load(m), 0);
    QZmodel d = QZgetDualModel(m, &rc);
    ASSERT_EQ(rc, 0);
    ASSERT_NE(d, nullptr);
    int sense = 0, dsense = 0;
    QZgetLPData(m, &sense, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                nullptr, nullptr, nullptr);
    QZgetLPData(d, &dsense, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                nullptr, nullptr, nullptr);
    EXPECT_EQ(dsense, -sense);
    int status = 0;
    ASSERT_EQ(QZoptimize(d, QZ_METHOD_FREE, &status), 0);
    EXPECT_EQ(status, QZ_STATUS_BASIC_OPTIMAL) << "seed " << seed;
    double obj = 0;
    QZgetObjective(d, &obj);
    EXPECT_NEAR(obj, lp.opt, 1e-7 * (1 + std::fabs(lp.opt))) << "seed " << seed;
    // The dual's own certificate: its answer is optimal for the model it is.
    const KktReport k = check_model(d, LpData::from_model(d));
    EXPECT_TRUE(k.ok(1e-7)) << "seed " << seed << ": " << k.worst;
    ++checked;
    QZdeleteModel(&d);
    QZdeleteModel(&m);
  }
  EXPECT_EQ(checked, 60);
}

TEST_F(ExplicitDual, ForcedOrientationGivesTheModelsAnswer) {
  for (uint64_t seed = 1; seed <= 40; ++seed) {
    const LpData lp = planted(seed);
    int rc = 0;
    QZmodel m = QZcreateModel(env, &rc);
    ASSERT_EQ(lp.load(m), 0);
    ASSERT_EQ(QZsetModelIntParameter(m, QZ_IPARAM_PROB_TO_SOLVE, 2), 0);
    int status = 0;
    ASSERT_EQ(QZoptimize(m, QZ_METHOD_FREE, &status), 0) << "seed " << seed;
    EXPECT_EQ(status, QZ_STATUS_BASIC_OPTIMAL) << "seed " << seed;
    const KktReport k = check_model(m, lp);
    EXPECT_TRUE(k.ok(1e-7)) << "seed " << seed << ": " << k.worst;
    // The parameter reads back as set: the inner solves restore what they change.
    int pts = 0;
    QZgetModelIntParameter(m, QZ_IPARAM_PROB_TO_SOLVE, &pts);
    EXPECT_EQ(pts, 2);
    QZdeleteModel(&m);
  }
}

// Small models whose verdict is known: the forced orientation must agree with the plain solve.
TEST_F(ExplicitDual, ForcedOrientationKeepsInfeasibleAndUnboundedVerdicts) {
  const double inf = QZ_INFINITY;
  const std::pair<const char*, LpData> cases[] = {
      {"infeasible", dense_lp(QZ_MIN, {1, 1}, {{1, 1}, {1, 1}}, {1, 3}, "LG", {0, 0}, {inf, inf})},
      // Unbounded along x = y.
      {"unbounded", dense_lp(QZ_MIN, {-1, -1}, {{1, -1}}, {1}, "L", {0, 0}, {inf, inf})},
  };
  for (const auto& [name, lp] : cases) {
    int verdict[2] = {0, 0};
    for (int pts : {1, 2}) {
      QZmodel m = new_model();
      ASSERT_EQ(lp.load(m), 0);
      QZsetModelIntParameter(m, QZ_IPARAM_PROB_TO_SOLVE, pts);
      QZsetModelIntParameter(m, QZ_IPARAM_SOLVER_IUSOL, 1);
      EXPECT_EQ(QZoptimize(m, QZ_METHOD_FREE, &verdict[pts - 1]), 0) << name;
      QZdeleteModel(&m);
    }
    EXPECT_EQ(verdict[0], verdict[1]) << name;
    EXPECT_NE(verdict[0], QZ_STATUS_BASIC_OPTIMAL) << name;
  }
}

TEST_F(ExplicitDual, BadCalls) {
  int rc = 0;
  EXPECT_EQ(QZgetDualModel(nullptr, &rc), nullptr);
  EXPECT_EQ(rc, QZERR_ILLEGAL_NULL_POINTER);
  QZmodel m = QZcreateModel(env, &rc);
  EXPECT_EQ(QZgetDualModel(m, &rc), nullptr);
  EXPECT_EQ(rc, QZERR_NO_MODEL_LOADED);
  const LpData lp = planted(3);
  ASSERT_EQ(lp.load(m), 0);
  QZmodel* pm = &m;
  QZmodel d = qzgetdualmodel_(pm, &rc);
  EXPECT_EQ(rc, 0);
  EXPECT_NE(d, nullptr);
  QZdeleteModel(&d);
  QZdeleteModel(&m);
}

}  // namespace
}  // namespace zento::test
