// Limits and stops of the search: each returns its own code with the incumbent, the bound and a
// feasible status; a host stop is QZERR_USER_INTERRUPT; parameters come back unchanged.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "mip_oracle.h"
#include "zento_fortran.h"

namespace zento::test {
namespace {

// A multi-dimensional knapsack whose search takes many nodes (several constraints on
// correlated weights), with many improving solutions on the way.
MipData hard_knapsack(int n, int rows, uint64_t seed) {
  std::mt19937_64 g(seed);
  std::uniform_int_distribution<int> w(20, 80);
  MipData d;
  d.n = n;
  d.m = rows;
  d.sense = QZ_MAX;
  d.c.resize(n);
  d.lo.assign(n, 0);
  d.up.assign(n, 1);
  d.vtypes.assign(n, 'B');
  d.rtypes.assign(rows, 'L');
  d.b.assign(rows, 0);
  d.beg.assign(n + 1, 0);
  for (int j = 0; j < n; ++j) {
    double sum = 0;
    for (int i = 0; i < rows; ++i) {
      const int a = w(g);
      d.rows.push_back(i);
      d.vals.push_back(a);
      d.b[i] += a;
      sum += a;
    }
    d.c[j] = std::round(sum / rows + std::uniform_int_distribution<int>(-5, 5)(g));
    d.beg[j + 1] = static_cast<int>(d.rows.size());
  }
  for (double& v : d.b) v = std::floor(v / 2);
  return d;
}

class LimitsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    env_ = test_env();
    int rc = 0;
    m_ = QZcreateModel(env_, &rc);
    ASSERT_EQ(hard_knapsack(25, 4, 7).load(m_), 0);
    quiet(m_);
  }
  void TearDown() override {
    QZdeleteModel(&m_);
    QZdeleteEnv(&env_);
  }
  // Solves and checks that a stopped search still reports what it has.
  void expect_stopped_with_incumbent(int rc, int expected_rc, int status) {
    EXPECT_EQ(rc, expected_rc);
    EXPECT_EQ(status, QZ_STATUS_FEASIBLE);
    double obj = 0, bound = 0;
    ASSERT_EQ(QZgetMIPObjective(m_, &obj), 0);
    ASSERT_EQ(QZgetBestBounds(m_, nullptr, &bound), 0);
    EXPECT_GE(bound, obj - 1e-6);  // maximization: the bound lies above the incumbent
    EXPECT_LT(bound, 1e29);
    std::vector<double> x(25);
    ASSERT_EQ(QZgetMIPPrimalSolution(m_, x.data()), 0);
    for (double v : x) EXPECT_NEAR(v, std::round(v), 1e-6);
    int st = 0;
    ASSERT_EQ(QZgetInfo(m_, QZ_IINFO_MIP_STATUS, &st), 0);
    EXPECT_EQ(st, QZ_STATUS_FEASIBLE);
  }
  QZenv env_ = nullptr;
  QZmodel m_ = nullptr;
};

TEST_F(LimitsTest, EachLimitReturnsItsCodeWithIncumbentAndBound) {
  struct Case {
    const char* name;
    int param;
    double value;
    bool is_double;
    int code;
  } cases[] = {
      {"branch limit", QZ_IPARAM_MIP_BRANCH_LIMIT, 60, false, QZERR_BRANCH_LIMIT},
      {"solution limit", QZ_IPARAM_MIP_SOLLIM, 2, false, QZERR_SOL_LIMIT},
      {"iteration limit", QZ_DPARAM_MIP_ITRLIM, 400, true, QZERR_ITER_LIMIT},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    if (c.is_double)
      QZsetModelDouParameter(m_, c.param, c.value);
    else
      QZsetModelIntParameter(m_, c.param, static_cast<int>(c.value));
    int status = 0;
    const int rc = QZsolveMIP(m_, &status);
    expect_stopped_with_incumbent(rc, c.code, status);
    if (c.is_double)
      QZsetModelDouParameter(m_, c.param, -1);
    else
      QZsetModelIntParameter(m_, c.param, -1);
  }
  // Without limits the same model is solved to optimality, by the Fortran twins too.
  int status = 0;
  EXPECT_EQ(QZsolveMIP(m_, &status), 0);
  EXPECT_EQ(status, QZ_STATUS_OPTIMAL);
  double obj = 0, bound = 0;
  ASSERT_EQ(QZgetBestBounds(m_, &obj, &bound), 0);
  int fstatus = -1;
  double fobj = 0, fbound = 0;
  EXPECT_EQ(qzsolvemip_(&m_, &fstatus), 0);
  EXPECT_EQ(fstatus, QZ_STATUS_OPTIMAL);
  ASSERT_EQ(qzgetbestbounds_(&m_, &fobj, &fbound), 0);
  EXPECT_EQ(fobj, obj);
  EXPECT_EQ(fbound, bound);
}

TEST_F(LimitsTest, GapTolerancesEndTheSearchEarlyAsOptimal) {
  int status = 0;
  ASSERT_EQ(QZsolveMIP(m_, &status), 0);
  int full = 0;
  double opt = 0;
  QZgetInfo(m_, QZ_IINFO_MIP_BRANCHCOUNT, &full);
  QZgetMIPObjective(m_, &opt);
  struct Case {
    int param;
    double value;
  } cases[] = {{QZ_DPARAM_MIP_RELOPTTOL, 0.05}, {QZ_DPARAM_MIP_ABSOPTTOL, 0.05 * opt}};
  for (const Case& c : cases) {
    double saved = 0;
    QZgetModelDouParameter(m_, c.param, &saved);
    QZsetModelDouParameter(m_, c.param, c.value);
    ASSERT_EQ(QZsolveMIP(m_, &status), 0);
    EXPECT_EQ(status, QZ_STATUS_OPTIMAL);
    int br = 0;
    double obj = 0, bound = 0;
    QZgetInfo(m_, QZ_IINFO_MIP_BRANCHCOUNT, &br);
    QZgetMIPObjective(m_, &obj);
    QZgetBestBounds(m_, nullptr, &bound);
    EXPECT_LT(br, full);
    EXPECT_LE(bound - obj, 0.05 * opt + 1e-6);
    EXPECT_GE(bound, opt - 1e-6);
    QZsetModelDouParameter(m_, c.param, saved);
  }
}

TEST_F(LimitsTest, TimeLimitStopsAHardModel) {
  QZmodel hard = nullptr;
  int rc = 0;
  hard = QZcreateModel(env_, &rc);
  ASSERT_EQ(hard_knapsack(120, 8, 3).load(hard), 0);
  quiet(hard);
  QZsetModelDouParameter(hard, QZ_DPARAM_MIP_TIMLIM, 0.3);
  QZsetModelDouParameter(hard, QZ_DPARAM_MIP_AOPTTIMLIM, -1);
  int status = 0;
  rc = QZsolveMIP(hard, &status);
  double t = 0;
  QZgetInfo(hard, QZ_DINFO_MIP_TOT_TIME, &t);
  EXPECT_EQ(rc, QZERR_TIME_LIMIT);
  EXPECT_TRUE(status == QZ_STATUS_FEASIBLE || status == QZ_STATUS_UNKNOWN);
  EXPECT_LT(t, 2.0);
  // The parameter the search changed on the model is back.
  double lim = 0;
  QZgetModelDouParameter(hard, QZ_DPARAM_SOLVER_TIMLMT, &lim);
  EXPECT_EQ(lim, -1);
  QZdeleteModel(&hard);
}

int stop_at_third_call(QZmodel, int loc, void* data) {
  int* calls = static_cast<int*>(data);
  return loc == QZLOC_MIP && ++*calls >= 3 ? 1 : 0;
}

int stop_on_first_incumbent(QZmodel, void* data, double, double*) {
  ++*static_cast<int*>(data);
  return 1;
}

TEST_F(LimitsTest, HostStopsAreUserInterrupts) {
  int calls = 0;
  QZsetModelDouParameter(m_, QZ_DPARAM_CALLBACKFREQ, 0);
  QZsetCallback(m_, stop_at_third_call, &calls);
  int status = 0;
  EXPECT_EQ(QZsolveMIP(m_, &status), QZERR_USER_INTERRUPT);
  EXPECT_GE(calls, 3);
  QZsetCallback(m_, nullptr, nullptr);

  int found = 0;
  QZsetMIPCallback(m_, stop_on_first_incumbent, &found);
  EXPECT_EQ(QZsolveMIP(m_, &status), QZERR_USER_INTERRUPT);
  EXPECT_EQ(found, 1);
  EXPECT_EQ(status, QZ_STATUS_FEASIBLE);
}

struct Offer {
  std::vector<double> x;
  int calls = 0;
  std::string log;
};

int offer_once(QZmodel, void* data, double, double* primal) {
  Offer* o = static_cast<Offer*>(data);
  if (o->calls++ > 0) return 0;
  std::copy(o->x.begin(), o->x.end(), primal);
  return 1;
}

void keep_log(QZmodel, char* line, void* data) { static_cast<Offer*>(data)->log += line; }

TEST_F(LimitsTest, HostSolutionIsAdoptedAsIncumbent) {
  int status = 0;
  ASSERT_EQ(QZsolveMIP(m_, &status), 0);
  Offer offer;
  offer.x.assign(25, 0.0);
  QZgetMIPPrimalSolution(m_, offer.x.data());
  double opt = 0;
  QZgetMIPObjective(m_, &opt);
  QZsetMIPCallbackInsMIPSol(m_, offer_once, &offer);
  QZsetModelLogfunc(m_, keep_log, &offer);
  QZsetModelIntParameter(m_, QZ_IPARAM_MIP_PRINTLEVEL, 2);
  QZsetModelDouParameter(m_, QZ_DPARAM_CALLBACKFREQ, 0);
  ASSERT_EQ(QZsolveMIP(m_, &status), 0);
  EXPECT_EQ(status, QZ_STATUS_OPTIMAL);
  double obj = 0;
  QZgetMIPObjective(m_, &obj);
  EXPECT_EQ(obj, opt);
  EXPECT_GE(offer.calls, 1);
  EXPECT_NE(offer.log.find("(*USER)"), std::string::npos);
}

}  // namespace
}  // namespace zento::test
