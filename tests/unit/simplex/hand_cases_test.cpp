// Hand-made LPs with known outcomes: cycling, infeasible, unbounded, empty rows and columns,
// mirrored and free columns, maximization signs; and the limits that stop a solve.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "core/model.h"
#include "lp_oracle.h"

namespace zento::test {
namespace {

struct Hand {
  const char* name;
  LpData lp;
  int status_primal;
  double obj;
};

constexpr double kInf = QZ_INFINITY;

std::vector<Hand> hand_cases() {
  std::vector<Hand> v;
  // Beale's example, which cycles under the textbook rule.
  {
    LpData lp = dense_lp(QZ_MIN, {-0.75, 150, -0.02, 6},
                         {{0.25, -60, -0.04, 9}, {0.5, -90, -0.02, 3}, {0, 0, 1, 0}}, {0, 0, 1}, "LLL",
                         {0, 0, 0, 0}, {kInf, kInf, kInf, kInf});
    lp.opt = -0.05;
    v.push_back({"beale", lp, QZ_STATUS_BASIC_OPTIMAL, -0.05});
  }
  // x + y >= 3, x + y <= 1.
  v.push_back({"infeasible",
               dense_lp(QZ_MIN, {1, 1}, {{1, 1}, {1, 1}}, {3, 1}, "GL", {0, 0}, {kInf, kInf}),
               QZ_STATUS_INFEASIBLE, 0});
  // max x + y, x - y <= 1.
  v.push_back({"unbounded",
               dense_lp(QZ_MAX, {1, 1}, {{1, -1}}, {1}, "L", {0, 0}, {kInf, kInf}),
               QZ_STATUS_UNBOUNDED, 0});
  // Crossing bounds on a column.
  v.push_back({"crossing_bounds",
               dense_lp(QZ_MIN, {1, 1}, {{1, 1}}, {5}, "L", {2, 0}, {1, 3}),
               QZ_STATUS_INFEASIBLE, 0});
  // An empty row (0 <= 4), an empty column with cost pushing it to its bound, a free column.
  {
    LpData lp = dense_lp(QZ_MIN, {1, 2, -1, 0}, {{1, 1, 0, 1}, {0, 0, 0, 0}, {1, -1, 0, 0}},
                         {2, 4, 1}, "GLE", {0, -kInf, -5, -kInf}, {kInf, 3, 7, kInf});
    v.push_back({"empty_row_col", lp, QZ_STATUS_BASIC_OPTIMAL, 0});
  }
  // Mirrored column (only an upper bound) in a maximization.
  {
    LpData lp = dense_lp(QZ_MAX, {-1, 2}, {{1, 1}, {1, -1}}, {4, -10}, "LG", {-kInf, 0},
                         {5, 3});
    v.push_back({"mirrored_max", lp, QZ_STATUS_BASIC_OPTIMAL, 13});
  }
  // Row of type N only.
  v.push_back({"free_row",
               dense_lp(QZ_MIN, {1, 1}, {{1, 2}, {3, 4}}, {100, 1}, "NG", {0, 0}, {kInf, kInf}),
               QZ_STATUS_BASIC_OPTIMAL, 0});
  return v;
}

class HandCases : public ::testing::TestWithParam<int> {};

TEST_P(HandCases, StatusAndCertificate) {
  const int method = GetParam();
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  for (Hand& h : hand_cases()) {
    QZmodel m = QZcreateModel(env, &rc);
    ASSERT_EQ(h.lp.load(m), 0) << h.name;
    int status = 0;
    rc = QZoptimize(m, method, &status);
    EXPECT_EQ(rc, 0) << h.name;
    int want = h.status_primal;
    if (method != QZ_METHOD_PSIMPLEX && want == QZ_STATUS_UNBOUNDED) want = QZ_STATUS_INFORUNB;
    EXPECT_EQ(status, want) << h.name;
    if (status == QZ_STATUS_BASIC_OPTIMAL) {
      double obj = 0;
      ASSERT_EQ(QZgetObjective(m, &obj), 0);
      if (h.obj != 0) {
        EXPECT_NEAR(obj, h.obj, 1e-9) << h.name;
      }
      LpData lp = h.lp;
      lp.opt = obj;  // optimality comes from the certificate itself
      const KktReport r = check_model(m, lp);
      EXPECT_TRUE(r.ok(1e-9)) << h.name << ": " << r.worst;
    }
    QZdeleteModel(&m);
  }
  QZdeleteEnv(&env);
}

INSTANTIATE_TEST_SUITE_P(Methods, HandCases,
                         ::testing::Values(QZ_METHOD_PSIMPLEX, QZ_METHOD_DSIMPLEX, QZ_METHOD_FREE));

// A model large enough to take many iterations.
LpData hard_lp() {
  GenOptions o;
  o.m = 120;
  o.n = 160;
  o.density = 0.08;
  o.degen = 0.3;
  o.ddegen = 0.3;
  return make_planted(424242, o);
}

struct Limits : ::testing::Test {
  void SetUp() override {
    int rc = 0;
    env = QZcreateEnv(&rc);
    m = QZcreateModel(env, &rc);
    lp = hard_lp();
    ASSERT_EQ(lp.load(m), 0);
  }
  void TearDown() override {
    QZdeleteModel(&m);
    QZdeleteEnv(&env);
  }
  double solve_cold_iters(int method) {
    int rc = 0;
    QZmodel c = QZcreateModel(env, &rc);
    EXPECT_EQ(lp.load(c), 0);
    int st = 0;
    EXPECT_EQ(QZoptimize(c, method, &st), 0);
    const double it = c->sol->spxIter;
    QZdeleteModel(&c);
    return it;
  }
  QZenv env = nullptr;
  QZmodel m = nullptr;
  LpData lp;
};

TEST_F(Limits, IterationLimitThenWarmContinue) {
  for (int method : {QZ_METHOD_PSIMPLEX, QZ_METHOD_DSIMPLEX}) {
    // A fresh model for each method; the fixture's own tear-down ends the last one.
    if (method != QZ_METHOD_PSIMPLEX) {
      TearDown();
      SetUp();
    }
    const double cold = solve_cold_iters(method);
    ASSERT_GT(cold, 20);
    m->SplexPam.lp_itrlmt = 10;
    int st = 0;
    EXPECT_EQ(QZoptimize(m, method, &st), QZERR_ITER_LIMIT);
    EXPECT_NE(st, QZ_STATUS_BASIC_OPTIMAL);
    m->SplexPam.lp_itrlmt = -1;
    EXPECT_EQ(QZoptimize(m, method, &st), 0);
    EXPECT_EQ(st, QZ_STATUS_BASIC_OPTIMAL);
    const KktReport r = check_model(m, lp);
    EXPECT_TRUE(r.ok(1e-7)) << r.worst;
  }
}

TEST_F(Limits, TimeLimitReturnsUsableModel) {
  m->SplexPam.solver_timlmt = 0.0;
  int st = 0;
  EXPECT_EQ(QZoptimize(m, QZ_METHOD_PSIMPLEX, &st), QZERR_TIME_LIMIT);
  m->SplexPam.solver_timlmt = -1;
  EXPECT_EQ(QZoptimize(m, QZ_METHOD_PSIMPLEX, &st), 0);
  EXPECT_EQ(st, QZ_STATUS_BASIC_OPTIMAL);
  EXPECT_TRUE(check_model(m, lp).ok(1e-7));
}

TEST_F(Limits, CallbackStopThenWarmContinue) {
  int calls = 0;
  m->SolverPam.callbackfreq = 0;
  QZsetCallback(
      m,
      [](QZmodel, int, void* data) {
        int* c = static_cast<int*>(data);
        return ++*c == 3 ? 1 : 0;
      },
      &calls);
  int st = 0;
  EXPECT_EQ(QZoptimize(m, QZ_METHOD_PSIMPLEX, &st), QZERR_USER_INTERRUPT);
  const double first = m->sol->spxIter;
  QZsetCallback(m, nullptr, nullptr);
  EXPECT_EQ(QZoptimize(m, QZ_METHOD_PSIMPLEX, &st), 0);
  EXPECT_EQ(st, QZ_STATUS_BASIC_OPTIMAL);
  EXPECT_LT(m->sol->spxIter + first, solve_cold_iters(QZ_METHOD_PSIMPLEX) + 5);
  EXPECT_TRUE(check_model(m, lp).ok(1e-7));
}

TEST_F(Limits, SameIterationsTwice) {
  for (int method : {QZ_METHOD_PSIMPLEX, QZ_METHOD_DSIMPLEX}) {
    const double a = solve_cold_iters(method), b = solve_cold_iters(method);
    EXPECT_EQ(a, b);
  }
}

TEST(BadInput, WrongBasisCountIsRepaired) {
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  QZmodel m = QZcreateModel(env, &rc);
  GenOptions o;
  o.m = 12;
  o.n = 18;
  const LpData lp = make_planted(77, o);
  ASSERT_EQ(lp.load(m), 0);
  // Too few basics: only two structurals, every row nonbasic.
  std::vector<int> cs(lp.n, QZ_BASTYPE_ATLO), rs(lp.m, QZ_BASTYPE_ATLO);
  for (int j = 0; j < lp.n; ++j) {
    if (lp.lo[j] <= -QZ_INFINITY) cs[j] = lp.up[j] < QZ_INFINITY ? QZ_BASTYPE_ATUP : QZ_BASTYPE_FNUL;
  }
  cs[0] = cs[1] = 0;
  for (int i = 0; i < lp.m; ++i)
    if (lp.types[i] == 'N') rs[i] = QZ_BASTYPE_FNUL;
  ASSERT_EQ(QZloadBasis(m, cs.data(), rs.data()), 0);
  int st = 0;
  EXPECT_EQ(QZoptimize(m, QZ_METHOD_PSIMPLEX, &st), 0);
  EXPECT_EQ(st, QZ_STATUS_BASIC_OPTIMAL);
  EXPECT_TRUE(check_model(m, lp).ok(1e-7));
  QZdeleteModel(&m);
  QZdeleteEnv(&env);
}

}  // namespace
}  // namespace zento::test
