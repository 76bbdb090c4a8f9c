// Solves with the final basis through the public entries: B x = b and B' y = c must hold in
// the model's own scale and signs, whatever the scaling and the mirroring of columns inside.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "lp_oracle.h"
#include "zento_fortran.h"

namespace zento::test {
namespace {

// Column p of the basis in the user's terms, as a dense vector over rows.
std::vector<std::vector<double>> basis_columns(const LpData& lp, const std::vector<int>& cst,
                                               const std::vector<int>& rst) {
  std::vector<std::vector<double>> B(lp.m, std::vector<double>(lp.m, 0.0));
  for (int j = 0; j < lp.n; ++j)
    if (cst[j] >= 0)
      for (int k = lp.beg[j]; k < lp.beg[j + 1]; ++k) B[cst[j]][lp.rows[k]] += lp.vals[k];
  for (int i = 0; i < lp.m; ++i)
    if (rst[i] >= 0) B[rst[i]][i] = lp.types[i] == 'G' ? -1.0 : 1.0;
  return B;
}

struct Solved {
  QZenv env = nullptr;
  QZmodel model = nullptr;
  LpData lp;
  std::vector<std::vector<double>> B;
  ~Solved() { QZdeleteEnv(&env); }
};

void solve(Solved& s, uint64_t seed, int method, int scale) {
  int rc = 0;
  s.env = QZcreateEnv(&rc);
  s.model = QZcreateModel(s.env, &rc);
  GenOptions o;
  o.m = 6 + static_cast<int>(seed % 9);
  o.n = 8 + static_cast<int>(seed % 11);
  o.wide_scale = seed % 2 == 0;
  s.lp = make_planted(seed, o);
  ASSERT_EQ(s.lp.load(s.model), 0);
  ASSERT_EQ(QZsetModelIntParameter(s.model, QZ_IPARAM_LP_SCALE, scale), 0);
  // Solves with the final basis need the model's own simplex record: presolve off.
  ASSERT_EQ(QZsetModelIntParameter(s.model, QZ_IPARAM_LP_PRELEVEL, 0), 0);
  int status = 0;
  ASSERT_EQ(QZoptimize(s.model, method, &status), 0);
  ASSERT_EQ(status, QZ_STATUS_BASIC_OPTIMAL);
  std::vector<int> cst(s.lp.n), rst(s.lp.m);
  ASSERT_EQ(QZgetBasis(s.model, cst.data(), rst.data()), 0);
  s.B = basis_columns(s.lp, cst, rst);
}

double bmag(const std::vector<std::vector<double>>& B) {
  double a = 1;
  for (const auto& c : B)
    for (double v : c) a = std::max(a, std::fabs(v));
  return a;
}

struct Case {
  uint64_t seed;
  int method, scale;
};

class BasisSolve : public ::testing::TestWithParam<Case> {};

TEST_P(BasisSolve, FtranAndBtranHoldInUserScale) {
  const Case c = GetParam();
  Solved s;
  solve(s, c.seed, c.method, c.scale);
  if (HasFatalFailure()) return;
  const int m = s.lp.m;
  std::mt19937 rng(static_cast<unsigned>(c.seed));
  std::uniform_real_distribution<double> U(-5, 5);
  const double amag = bmag(s.B);
  for (int trial = 0; trial < 4; ++trial) {
    // Sparse right-hand side over rows.
    std::vector<int> idx;
    std::vector<double> val;
    std::vector<double> b(m, 0.0);
    for (int i = 0; i < m; ++i)
      if (trial == 3 || rng() % 3 == 0) {
        idx.push_back(i);
        val.push_back(U(rng));
        b[i] = val.back();
      }
    std::vector<int> oidx(m);
    std::vector<double> oval(m);
    int onnz = -1;
    ASSERT_EQ(QZdoFTRAN(s.model, static_cast<int>(idx.size()), idx.data(), val.data(), &onnz,
                        oidx.data(), oval.data()),
              0);
    std::vector<double> x(m, 0.0);
    for (int k = 0; k < onnz; ++k) x[oidx[k]] = oval[k];
    double xmag = 1;
    for (double v : x) xmag = std::max(xmag, std::fabs(v));
    std::vector<double> r = b;
    for (int p = 0; p < m; ++p)
      for (int i = 0; i < m; ++i) r[i] -= s.B[p][i] * x[p];
    for (int i = 0; i < m; ++i) EXPECT_LE(std::fabs(r[i]), 1e-9 * amag * xmag) << "row " << i;
    // The dense form gives the same vector.
    std::vector<double> xd(m);
    ASSERT_EQ(QZdoDenseFTRAN(s.model, b.data(), xd.data()), 0);
    for (int p = 0; p < m; ++p) EXPECT_NEAR(xd[p], x[p], 1e-12 * xmag);

    // B' y = c with c over positions.
    std::vector<double> cvec(m);
    for (double& v : cvec) v = rng() % 2 ? U(rng) : 0.0;
    std::vector<int> cidx;
    std::vector<double> cval;
    for (int p = 0; p < m; ++p)
      if (cvec[p] != 0.0) {
        cidx.push_back(p);
        cval.push_back(cvec[p]);
      }
    ASSERT_EQ(QZdoBTRAN(s.model, static_cast<int>(cidx.size()), cidx.data(), cval.data(), &onnz,
                        oidx.data(), oval.data()),
              0);
    std::vector<double> y(m, 0.0);
    for (int k = 0; k < onnz; ++k) y[oidx[k]] = oval[k];
    double ymag = 1;
    for (double v : y) ymag = std::max(ymag, std::fabs(v));
    for (int p = 0; p < m; ++p) {
      double d = -cvec[p];
      for (int i = 0; i < m; ++i) d += s.B[p][i] * y[i];
      EXPECT_LE(std::fabs(d), 1e-9 * amag * ymag) << "position " << p;
    }
    std::vector<double> yd(m);
    ASSERT_EQ(QZdoDenseBTRAN(s.model, cvec.data(), yd.data()), 0);
    for (int i = 0; i < m; ++i) EXPECT_NEAR(yd[i], y[i], 1e-12 * ymag);
  }
}

const Case kCases[] = {{1, QZ_METHOD_DSIMPLEX, -1}, {2, QZ_METHOD_DSIMPLEX, -1},
                       {3, QZ_METHOD_PSIMPLEX, -1}, {4, QZ_METHOD_PSIMPLEX, 1},
                       {5, QZ_METHOD_DSIMPLEX, 0},  {6, QZ_METHOD_FREE, 2},
                       {7, QZ_METHOD_PSIMPLEX, 3},  {8, QZ_METHOD_DSIMPLEX, 1}};
INSTANTIATE_TEST_SUITE_P(Planted, BasisSolve, ::testing::ValuesIn(kCases));

TEST(BasisSolveErrors, CodesForBadCallsAndNoBasis) {
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  QZmodel model = QZcreateModel(env, &rc);
  const LpData lp = make_planted(11, GenOptions{});
  ASSERT_EQ(lp.load(model), 0);
  std::vector<int> idx(lp.m + 1, 0), oidx(lp.m);
  std::vector<double> val(lp.m + 1, 1.0), oval(lp.m), dense(lp.m, 1.0);
  int onnz = 0;
  EXPECT_EQ(QZdoFTRAN(nullptr, 1, idx.data(), val.data(), &onnz, oidx.data(), oval.data()),
            QZERR_ILLEGAL_NULL_POINTER);
  // No solve yet: no basis.
  EXPECT_EQ(QZdoFTRAN(model, 1, idx.data(), val.data(), &onnz, oidx.data(), oval.data()),
            QZERR_INFO_NOT_AVAILABLE);
  EXPECT_EQ(QZdoDenseBTRAN(model, dense.data(), oval.data()), QZERR_INFO_NOT_AVAILABLE);
  int status = 0;
  ASSERT_EQ(QZsetModelIntParameter(model, QZ_IPARAM_LP_PRELEVEL, 0), 0);
  ASSERT_EQ(QZoptimize(model, QZ_METHOD_FREE, &status), 0);
  EXPECT_EQ(QZdoFTRAN(model, -1, idx.data(), val.data(), &onnz, oidx.data(), oval.data()),
            QZERR_INDEX_OUT_OF_RANGE);
  EXPECT_EQ(QZdoBTRAN(model, lp.m + 1, idx.data(), val.data(), &onnz, oidx.data(), oval.data()),
            QZERR_INDEX_OUT_OF_RANGE);
  idx[0] = lp.m;
  EXPECT_EQ(QZdoFTRAN(model, 1, idx.data(), val.data(), &onnz, oidx.data(), oval.data()),
            QZERR_INDEX_OUT_OF_RANGE);
  EXPECT_EQ(QZdoFTRAN(model, 1, idx.data(), val.data(), nullptr, oidx.data(), oval.data()),
            QZERR_ILLEGAL_NULL_POINTER);
  // An empty right-hand side has an empty answer.
  onnz = -1;
  EXPECT_EQ(QZdoFTRAN(model, 0, nullptr, nullptr, &onnz, oidx.data(), oval.data()), 0);
  EXPECT_EQ(onnz, 0);
  // The Fortran twin answers the same as the C entry.
  std::vector<double> x1(lp.m), x2(lp.m);
  QZmodel* pm = &model;
  EXPECT_EQ(QZdoDenseFTRAN(model, dense.data(), x1.data()), 0);
  EXPECT_EQ(qzdodenseftran_(pm, dense.data(), x2.data()), 0);
  EXPECT_EQ(x1, x2);
  QZdeleteEnv(&env);
}

TEST(SplexEntries, ColdThenWarmRunAndBadArguments) {
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  QZmodel model = QZcreateModel(env, &rc);
  EXPECT_EQ(QZsplexOptimize(model, QZ_METHOD_DSIMPLEX), QZERR_NO_MODEL_LOADED);
  GenOptions o;
  o.m = 12;
  o.n = 18;
  const LpData lp = make_planted(21, o);
  ASSERT_EQ(lp.load(model), 0);
  EXPECT_EQ(QZsplexOptimize(model, QZ_METHOD_BARRIER), QZERR_BAD_SOLVER_TYPE);
  EXPECT_EQ(QZsplexOptimize(nullptr, QZ_METHOD_PSIMPLEX), QZERR_ILLEGAL_NULL_POINTER);
  for (int method : {QZ_METHOD_PSIMPLEX, QZ_METHOD_DSIMPLEX}) {
    ASSERT_EQ(QZsplexOptimize(model, method), 0);
    int status = 0, iters = -1;
    ASSERT_EQ(QZgetSolutionStatus(model, &status), 0);
    EXPECT_EQ(status, QZ_STATUS_BASIC_OPTIMAL);
    EXPECT_TRUE(check_model(model, lp).ok(1e-7)) << check_model(model, lp).worst;
    // Nothing changed: the warm run confirms the optimum without a pivot.
    ASSERT_EQ(QZsplexReoptimize(model, method), 0);
    ASSERT_EQ(QZgetInfo(model, QZ_IINFO_SIM_ITER, &iters), 0);
    EXPECT_EQ(iters, 0);
    EXPECT_TRUE(check_model(model, lp).ok(1e-7)) << check_model(model, lp).worst;
  }
  QZdeleteEnv(&env);
}

}  // namespace
}  // namespace zento::test
