// Correlation induction: targets of each type are reached, marginals stay, bad input is named.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "random/sampler.h"
#include "zento.h"

namespace {

class CorrelationTest : public ::testing::Test {
 protected:
  void SetUp() override {
    env = QZcreateEnv(nullptr);
    rg = QZcreateRG(env, QZ_RG_DEFAULT);
    QZsetRGSeed(rg, 2024);
  }
  void TearDown() override {
    QZdisposeRG(&rg);
    QZdeleteEnv(&env);
  }
  std::vector<QZsample> samplers(int n) {
    // Marginals far from normal next to a normal one.
    return generated({QZ_DIST_NORMAL, QZ_DIST_EXPONENTIAL, QZ_DIST_UNIFORM, QZ_DIST_GAMMA},
                     {{0, 1}, {1.5}, {-1, 1}, {0.5, 2}}, n);
  }
  std::vector<QZsample> generated(const std::vector<int>& codes,
                                  const std::vector<std::vector<double>>& pars, int n) {
    std::vector<QZsample> v;
    for (size_t j = 0; j < codes.size(); ++j) {
      int err = 0;
      QZsample s = QZsampCreate(env, codes[j], &err);
      for (size_t k = 0; k < pars[j].size(); ++k) QZsampSetDistrParam(s, int(k), pars[j][k]);
      QZsampSetRG(s, rg);
      EXPECT_EQ(QZsampGenerate(s, QZ_LATINSQUARE, n), 0);
      v.push_back(s);
    }
    return v;
  }
  QZenv env = nullptr;
  QZrandGen rg = nullptr;
};

TEST_F(CorrelationTest, EachTypeReachesItsTarget) {
  // Lower triangle of a target that stays positive definite on the normal-score scale.
  int rows[6] = {1, 2, 3, 2, 3, 3}, cols[6] = {0, 0, 0, 1, 1, 2};
  double vals[6] = {0.5, -0.2, 0.3, 0.1, 0.4, -0.1};
  for (int type : {QZ_CORR_PEARSON, QZ_CORR_SPEARMAN, QZ_CORR_KENDALL}) {
    auto s = samplers(3000);
    ASSERT_EQ(QZsampInduceCorrelation(s.data(), 4, type, 6, rows, cols, vals), 0);
    double got[16];
    ASSERT_EQ(QZsampGetCorrelationMatrix(s.data(), 4, type, got), 0);
    double diff = 1.0;
    ASSERT_EQ(QZsampGetCorrDiff(s.data(), 4, 0, &diff), 0);
    // Pearson is exact on rank scores only; the skewed marginals bend it a little.
    EXPECT_LT(diff, type == QZ_CORR_PEARSON ? 0.1 : 0.03) << type;
    for (int k = 0; k < 6; ++k) {
      EXPECT_NEAR(got[rows[k] * 4 + cols[k]], vals[k], type == QZ_CORR_PEARSON ? 0.1 : 0.03);
    }
    double target[16];
    ASSERT_EQ(QZsampGetCorrelationMatrix(s.data(), 4, QZ_CORR_TARGET, target), 0);
    EXPECT_EQ(target[1 * 4 + 0], 0.5);
    EXPECT_EQ(target[0 * 4 + 1], 0.5);
    // The marginal samples are the same points rearranged.
    for (QZsample x : s) {
      int n = 0;
      double *p = nullptr, *c = nullptr;
      QZsampGetPointsPtr(x, &n, &p);
      ASSERT_EQ(QZsampGetCIPointsPtr(x, &n, &c), 0);
      std::vector<double> a(p, p + n), b(c, c + n);
      std::sort(a.begin(), a.end());
      std::sort(b.begin(), b.end());
      EXPECT_EQ(a, b);
      QZsampDelete(&x);
    }
  }
}

TEST_F(CorrelationTest, SampleCorrelationsAgreeWithDefinitions) {
  std::vector<double> a = {1, 2, 3, 4, 5}, b = {2, 1, 4, 3, 5}, c = {1, 1, 2, 2, 3};
  EXPECT_NEAR(zento::random::corr_kendall(a, b), 0.6, 1e-15);            // 8 concordant, 2 not
  EXPECT_NEAR(zento::random::corr_spearman(a, b), 0.8, 1e-15);
  EXPECT_NEAR(zento::random::corr_pearson(a, a), 1.0, 1e-15);
  EXPECT_NEAR(zento::random::corr_kendall(a, c), 8.0 / std::sqrt(10.0 * 8.0), 1e-15);  // tau-b
}

TEST_F(CorrelationTest, InconsistentTargetIsRepairedToANearbyOne) {
  // Pairwise +0.9, +0.9, -0.9 is not a correlation matrix.
  int rows[3] = {1, 2, 2}, cols[3] = {0, 0, 1};
  double vals[3] = {0.9, 0.9, -0.9};
  for (int method : {0, 1, 4, 5}) {
    ASSERT_EQ(QZsetEnvIntParameter(env, QZ_IPARAM_SAMP_NCM_METHOD, method), 0);
    auto s = samplers(2000);
    ASSERT_EQ(QZsampInduceCorrelation(s.data(), 3, QZ_CORR_SPEARMAN, 3, rows, cols, vals), 0);
    double got[9];
    ASSERT_EQ(QZsampGetCorrelationMatrix(s.data(), 3, QZ_CORR_SPEARMAN, got), 0);
    // Signs follow the target and the result is a valid correlation structure.
    EXPECT_GT(got[3], 0.2) << method;
    EXPECT_GT(got[6], 0.2) << method;
    EXPECT_LT(got[7], -0.2) << method;
    for (QZsample x : s) QZsampDelete(&x);
  }
}

TEST_F(CorrelationTest, BadInputHasItsCode) {
  auto s = samplers(200);
  int rows[1] = {1}, cols[1] = {0};
  double vals[1] = {0.5}, bad[1] = {1.5};
  EXPECT_EQ(QZsampInduceCorrelation(s.data(), 2, 3, 1, rows, cols, vals), QZERR_BAD_CORRELATION_TYPE);
  EXPECT_EQ(QZsampInduceCorrelation(s.data(), 2, -1, 1, rows, cols, vals), QZERR_BAD_CORRELATION_TYPE);
  EXPECT_EQ(QZsampInduceCorrelation(s.data(), 2, 0, 1, rows, cols, bad), QZERR_DIST_BAD_VALUE);
  int far[1] = {5};
  EXPECT_EQ(QZsampInduceCorrelation(s.data(), 2, 0, 1, far, cols, vals), QZERR_INDEX_OUT_OF_RANGE);
  double d = 0.0;
  EXPECT_EQ(QZsampGetCorrDiff(s.data(), 2, 0, &d), QZERR_SAMP_NO_CORRELATION);
  double m[4];
  EXPECT_EQ(QZsampGetCorrelationMatrix(s.data(), 2, QZ_CORR_TARGET, m), QZERR_SAMP_NO_CORRELATION);
  EXPECT_EQ(QZsampGetCorrelationMatrix(s.data(), 2, 7, m), QZERR_BAD_CORRELATION_TYPE);
  int err = 0;
  QZsample fresh = QZsampCreate(env, QZ_DIST_NORMAL, &err);
  QZsample pair[2] = {s[0], fresh};
  EXPECT_EQ(QZsampInduceCorrelation(pair, 2, 0, 1, rows, cols, vals), QZERR_SAMP_NOT_GENERATED);
  QZsampSetDistrParam(fresh, 0, 0.0);
  QZsampSetDistrParam(fresh, 1, 1.0);
  QZsampSetRG(fresh, rg);
  QZsampGenerate(fresh, 1, 150);
  EXPECT_EQ(QZsampInduceCorrelation(pair, 2, 0, 1, rows, cols, vals), QZERR_SAMP_BAD_CALL);
  // Regeneration drops the correlated points.
  ASSERT_EQ(QZsampInduceCorrelation(s.data(), 2, 0, 1, rows, cols, vals), 0);
  ASSERT_EQ(QZsampGetCIPoints(s[0], nullptr, nullptr), 0);
  QZsetRGSeed(rg, 99);
  ASSERT_EQ(QZsampGenerate(s[0], 1, 200), 0);
  EXPECT_EQ(QZsampGetCIPoints(s[0], nullptr, nullptr), QZERR_SAMP_NO_CORRELATION);
}

}  // namespace

// Three symmetric marginals and a Pearson target: reached within 0.02 on every pair.
TEST_F(CorrelationTest, PearsonTargetOnThreeSamplersWithinTwoHundredths) {
  auto s = generated({QZ_DIST_NORMAL, QZ_DIST_UNIFORM, QZ_DIST_LOGISTIC},
                     {{0, 1}, {-1, 1}, {2, 0.5}}, 5000);
  int rows[3] = {1, 2, 2}, cols[3] = {0, 0, 1};
  double vals[3] = {0.6, -0.3, 0.25};
  ASSERT_EQ(QZsampInduceCorrelation(s.data(), 3, QZ_CORR_PEARSON, 3, rows, cols, vals), 0);
  double got[9];
  ASSERT_EQ(QZsampGetCorrelationMatrix(s.data(), 3, QZ_CORR_PEARSON, got), 0);
  for (int k = 0; k < 3; ++k) EXPECT_NEAR(got[rows[k] * 3 + cols[k]], vals[k], 0.02) << k;
  for (QZsample x : s) QZsampDelete(&x);
}
