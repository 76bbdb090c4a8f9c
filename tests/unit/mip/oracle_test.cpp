// The search against enumeration: random small MIPs under every node rule and branching rule,
// verdicts (optimal, infeasible, unbounded), the watched optimum that no pruning may remove,
// and repeatability.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "mip/mip.h"
#include "mip_oracle.h"

namespace zento::test {
namespace {

struct Config {
  int nodesel;
  int branchrule;
  int strong;   // strong-branch level
  int branchdir;
  int radius;   // delay pool
};

Config config_for(int i) {
  const int c = i % 36;
  return {1 + c % 6, c / 6, (i / 36) % 3 == 0 ? 0 : 10, (i / 7) % 4, (i % 11 == 0) ? 2 : 0};
}

class OracleTest : public ::testing::Test {
 protected:
  void SetUp() override { env_ = test_env(); }
  void TearDown() override { QZdeleteEnv(&env_); }
  QZenv env_ = nullptr;
};

// One run with the watched optimum; returns the solver status and fills obj and violations.
int run(QZenv env, const MipData& d, const Config& cfg, const OracleAnswer& ans, double* obj,
        int* violations, double* bound, std::vector<double>* x) {
  int rc = 0;
  QZmodel m = QZcreateModel(env, &rc);
  EXPECT_EQ(d.load(m), 0);
  quiet(m);
  QZsetModelIntParameter(m, QZ_IPARAM_MIP_NODESELRULE, cfg.nodesel);
  QZsetModelIntParameter(m, QZ_IPARAM_MIP_BRANCHRULE, cfg.branchrule);
  QZsetModelIntParameter(m, QZ_IPARAM_MIP_STRONGBRANCHLEVEL, cfg.strong);
  QZsetModelIntParameter(m, QZ_IPARAM_MIP_BRANCHDIR, cfg.branchdir);
  QZsetModelIntParameter(m, QZ_IPARAM_MIP_LOCALBRANCHNUM, cfg.radius);
  mip::SearchDebug dbg;
  if (ans.status == QZ_STATUS_OPTIMAL) {
    dbg.x = ans.x;
    dbg.obj = ans.obj;
  }
  int status = 0;
  rc = mip::solve_mip(*m, &status, &dbg);
  EXPECT_EQ(rc, 0);
  *violations = dbg.violations;
  *obj = 0;
  if (status == QZ_STATUS_OPTIMAL) {
    EXPECT_EQ(QZgetMIPObjective(m, obj), 0);
    double bb = 0;
    EXPECT_EQ(QZgetBestBounds(m, nullptr, &bb), 0);
    *bound = bb;
    x->assign(d.n, 0.0);
    EXPECT_EQ(QZgetMIPPrimalSolution(m, x->data()), 0);
  }
  QZdeleteModel(&m);
  return status;
}

bool feasible(const MipData& d, const std::vector<double>& x) {
  for (int j = 0; j < d.n; ++j) {
    if (x[j] < d.lo[j] - 1e-6 || x[j] > d.up[j] + 1e-6) return false;
    if (d.vtypes[j] != 'C' && std::fabs(x[j] - std::round(x[j])) > 1e-5) return false;
  }
  return rows_ok(d, x, 1e-6);
}

TEST_F(OracleTest, RandomMipsAgreeWithEnumerationUnderEveryRule) {
  int counts[16] = {};
  for (int i = 0; i < 540; ++i) {
    const MipData d = random_mip(1000 + i, i % 35);
    const OracleAnswer ans = enumerate_mip(env_, d);
    const Config cfg = config_for(i);
    double obj = 0, bound = 0;
    int viol = 0;
    std::vector<double> x;
    const int status = run(env_, d, cfg, ans, &obj, &viol, &bound, &x);
    SCOPED_TRACE("instance " + std::to_string(i) + " rule " + std::to_string(cfg.nodesel) +
                 " branch " + std::to_string(cfg.branchrule) + "\n" + d.describe());
    ++counts[ans.status];
    ASSERT_EQ(status, ans.status);
    EXPECT_EQ(viol, 0);
    if (status == QZ_STATUS_OPTIMAL) {
      EXPECT_NEAR(obj, ans.obj, 1e-6 * (1 + std::fabs(ans.obj)));
      EXPECT_NEAR(bound, obj, 1e-6 * (1 + std::fabs(obj)));
      EXPECT_TRUE(feasible(d, x));
    }
  }
  // The generator gives every verdict a fair share.
  EXPECT_GT(counts[QZ_STATUS_OPTIMAL], 250);
  EXPECT_GT(counts[QZ_STATUS_INFEASIBLE], 20);
  EXPECT_GT(counts[QZ_STATUS_UNBOUNDED], 5);
}

// Pure binary models with enough columns that pseudo-costs become trusted and strong
// branching, reduced-cost fixing and the lattice all act; the recorded optimum is watched.
TEST_F(OracleTest, LargerBinaryModelsKeepTheRecordedOptimum) {
  for (int i = 0; i < 40; ++i) {
    MipData d = random_mip(5000 + i, 0);
    // Widen to 13 binaries over 6 rows with a knapsack-like structure.
    std::mt19937_64 g(9000 + i);
    auto uni = [&](int a, int b) { return std::uniform_int_distribution<int>(a, b)(g); };
    d.n = 13;
    d.m = 6;
    d.sense = i % 2 ? QZ_MAX : QZ_MIN;
    d.c.assign(d.n, 0);
    d.lo.assign(d.n, 0);
    d.up.assign(d.n, 1);
    d.vtypes.assign(d.n, 'B');
    d.rtypes.assign(d.m, 'L');
    d.b.assign(d.m, 0);
    d.beg.assign(d.n + 1, 0);
    d.rows.clear();
    d.vals.clear();
    for (int j = 0; j < d.n; ++j) {
      d.c[j] = (d.sense == QZ_MAX ? 1 : -1) * uni(5, 40);
      for (int r = 0; r < d.m; ++r)
        if (uni(0, 3) > 0) {
          const int a = uni(3, 30);
          d.rows.push_back(r);
          d.vals.push_back(a);
          d.b[r] += a;
        }
      d.beg[j + 1] = static_cast<int>(d.rows.size());
    }
    for (double& v : d.b) v = std::floor(v * 0.45);
    const OracleAnswer ans = enumerate_mip(env_, d);
    ASSERT_EQ(ans.status, QZ_STATUS_OPTIMAL);
    double obj = 0, bound = 0;
    int viol = 0;
    std::vector<double> x;
    const Config cfg{1 + i % 6, i % 6, 10, 0, 0};
    const int status = run(env_, d, cfg, ans, &obj, &viol, &bound, &x);
    ASSERT_EQ(status, QZ_STATUS_OPTIMAL) << "instance " << i;
    EXPECT_NEAR(obj, ans.obj, 1e-6 * (1 + std::fabs(ans.obj))) << "instance " << i;
    EXPECT_EQ(viol, 0) << "instance " << i;
  }
}

TEST_F(OracleTest, TwoRunsGiveTheSameSearch) {
  for (int i = 0; i < 12; ++i) {
    const MipData d = random_mip(77 + i, i);
    double stats[2][4];
    std::vector<double> xs[2];
    for (int r = 0; r < 2; ++r) {
      int rc = 0;
      QZmodel m = QZcreateModel(env_, &rc);
      ASSERT_EQ(d.load(m), 0);
      quiet(m);
      QZsetModelIntParameter(m, QZ_IPARAM_MIP_NODESELRULE, 1 + i % 6);
      int status = 0;
      ASSERT_EQ(QZsolveMIP(m, &status), 0);
      int br = 0, lps = 0, it = 0;
      QZgetInfo(m, QZ_IINFO_MIP_BRANCHCOUNT, &br);
      QZgetInfo(m, QZ_IINFO_MIP_LPCOUNT, &lps);
      QZgetInfo(m, QZ_IINFO_MIP_SIM_ITER, &it);
      double obj = 0;
      QZgetMIPObjective(m, &obj);
      stats[r][0] = br;
      stats[r][1] = lps;
      stats[r][2] = it;
      stats[r][3] = status == QZ_STATUS_OPTIMAL ? obj : 0;
      xs[r].assign(d.n, 0);
      if (status == QZ_STATUS_OPTIMAL) QZgetMIPPrimalSolution(m, xs[r].data());
      QZdeleteModel(&m);
    }
    for (int k = 0; k < 4; ++k) EXPECT_EQ(stats[0][k], stats[1][k]) << "instance " << i << " figure " << k;
    EXPECT_EQ(xs[0], xs[1]);
  }
}

}  // namespace
}  // namespace zento::test
