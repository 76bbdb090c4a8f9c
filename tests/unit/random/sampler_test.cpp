// Samplers: generation by every method, fit of the samples, life cycle in the environment,
// user laws, tables, statistics and error codes.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "zento.h"

namespace {

class SamplerTest : public ::testing::Test {
 protected:
  void SetUp() override {
    env = QZcreateEnv(nullptr);
    ASSERT_NE(env, nullptr);
    rg = QZcreateRG(env, QZ_RG_MT19937);
    QZsetRGSeed(rg, 12345);
  }
  void TearDown() override {
    QZdisposeRG(&rg);
    QZdeleteEnv(&env);  // frees the samplers left alive
  }
  QZsample make(int code, std::vector<double> par) {
    int err = -1;
    QZsample s = QZsampCreate(env, code, &err);
    EXPECT_EQ(err, 0);
    for (size_t i = 0; i < par.size(); ++i) EXPECT_EQ(QZsampSetDistrParam(s, int(i), par[i]), 0);
    EXPECT_EQ(QZsampSetRG(s, rg), 0);
    return s;
  }
  std::vector<double> points(QZsample s) {
    int n = 0;
    EXPECT_EQ(QZsampGetPoints(s, &n, nullptr), 0);
    std::vector<double> v(n);
    QZsampGetPoints(s, &n, v.data());
    return v;
  }
  QZenv env = nullptr;
  QZrandGen rg = nullptr;
};

struct Law {
  const char* name;
  int code;
  std::vector<double> par;
};

// Kolmogorov-Smirnov distance of a continuous sample against the sampler's own cdf.
double ks_distance(QZsample s, std::vector<double> v) {
  std::sort(v.begin(), v.end());
  const double n = double(v.size());
  double d = 0.0;
  for (size_t i = 0; i < v.size(); ++i) {
    double F = 0.0;
    EXPECT_EQ(QZsampEvalDistr(s, QZ_FUNC_CDF, v[i], &F), 0);
    d = std::max({d, std::fabs(F - i / n), std::fabs(F - (i + 1) / n)});
  }
  return d;
}

TEST_F(SamplerTest, EveryContinuousLawFitsByEveryMethod) {
  const std::vector<Law> laws = {
      {"beta", QZ_DIST_BETA, {2.0, 5.0}},       {"cauchy", QZ_DIST_CAUCHY, {0.0, 1.0}},
      {"chisq", QZ_DIST_CHI_SQUARE, {4.0}},     {"exp", QZ_DIST_EXPONENTIAL, {2.0}},
      {"f", QZ_DIST_F, {5.0, 12.0}},            {"gamma", QZ_DIST_GAMMA, {0.7, 2.0}},
      {"gumbel", QZ_DIST_GUMBEL, {1.0, 2.0}},   {"laplace", QZ_DIST_LAPLACE, {0.0, 1.0}},
      {"lognormal", QZ_DIST_LOGNORMAL, {0.0, 0.5}}, {"logistic", QZ_DIST_LOGISTIC, {3.0, 1.0}},
      {"normal", QZ_DIST_NORMAL, {5.0, 2.0}},   {"pareto", QZ_DIST_PARETO, {1.0, 3.0}},
      {"t", QZ_DIST_STUDENT_T, {3.0}},          {"uniform", QZ_DIST_UNIFORM, {-2.0, 2.0}},
      {"weibull", QZ_DIST_WEIBULL, {2.0, 1.0}}, {"stable", QZ_DIST_SYM_STABLE, {1.5}},
  };
  for (const Law& law : laws) {
    QZsample s = make(law.code, law.par);
    const int n = law.code == QZ_DIST_SYM_STABLE ? 300 : 2000;
    for (int method = 0; method <= 3; ++method) {
      ASSERT_EQ(QZsampGenerate(s, method, n), 0) << law.name;
      const double d = ks_distance(s, points(s));
      // Monte Carlo at the 0.1% level; stratified methods are far tighter.
      const double bound = method == 0 || method == 2 ? 1.95 / std::sqrt(n) : 1.5 / n + 1e-9;
      EXPECT_LT(d, bound) << law.name << " method " << method;
    }
    QZsampDelete(&s);
    EXPECT_EQ(s, nullptr);
  }
}

TEST_F(SamplerTest, SameSeedSamePointsAndReseedRenews) {
  QZsample a = make(QZ_DIST_NORMAL, {0.0, 1.0});
  ASSERT_EQ(QZsampGenerate(a, QZ_LATINSQUARE, 100), 0);
  const auto first = points(a);
  // Current points of the same size and method are kept.
  ASSERT_EQ(QZsampGenerate(a, QZ_LATINSQUARE, 100), 0);
  EXPECT_EQ(points(a), first);
  // A reseed makes them stale; the same seed gives the same points again.
  QZsetRGSeed(rg, 12345);
  ASSERT_EQ(QZsampGenerate(a, QZ_LATINSQUARE, 100), 0);
  EXPECT_EQ(points(a), first);
  QZsetRGSeed(rg, 777);
  ASSERT_EQ(QZsampGenerate(a, QZ_LATINSQUARE, 100), 0);
  EXPECT_NE(points(a), first);
  // A parameter change regenerates too.
  QZsampSetDistrParam(a, 0, 10.0);
  ASSERT_EQ(QZsampGenerate(a, QZ_LATINSQUARE, 100), 0);
  double mean = 0.0;
  QZsampGetInfo(a, QZ_DINFO_SAMP_MEAN, &mean);
  EXPECT_NEAR(mean, 10.0, 0.01);
}

TEST_F(SamplerTest, AntitheticPairsMirrorAndOddSizesEndWithAPairStart) {
  QZsample s = make(QZ_DIST_NORMAL, {3.0, 2.0});
  ASSERT_EQ(QZsampGenerate(s, QZ_ANTITHETIC, 7), 0);
  const auto v = points(s);
  ASSERT_EQ(v.size(), 7u);
  for (int i = 0; i + 1 < 7; i += 2) EXPECT_NEAR(v[i] + v[i + 1], 6.0, 1e-9);
  // The odd one out is the first point of a pair drawn from the same stream.
  QZsetRGSeed(rg, 12345);
  ASSERT_EQ(QZsampGenerate(s, QZ_ANTITHETIC, 8), 0);
  EXPECT_EQ(points(s)[6], v[6]);
  // Latin hypercube: exactly one point per stratum of probability.
  ASSERT_EQ(QZsampGenerate(s, QZ_LATIN_ANTITHETIC, 50), 0);
  std::vector<int> strata(50, 0);
  for (double x : points(s)) {
    double F = 0.0;
    QZsampEvalDistr(s, QZ_FUNC_CDF, x, &F);
    ++strata[std::min(49, int(F * 50))];
  }
  for (int c : strata) EXPECT_EQ(c, 1);
}

TEST_F(SamplerTest, DiscreteTableSamplesItsValues) {
  QZsample s = make(QZ_DIST_DISCRETE, {});
  double probs[3] = {0.2, 0.5, 0.3}, vals[3] = {10.0, -4.0, 7.0};
  double x = 0.0;
  EXPECT_EQ(QZsampEvalDistr(s, QZ_FUNC_CDF, 0.0, &x), QZERR_NO_DISCRETE_PDF_TABLE);
  ASSERT_EQ(QZsampLoadDiscretePdfTable(s, 3, probs, vals), 0);
  ASSERT_EQ(QZsampEvalDistr(s, QZ_FUNC_CDF, 7.5, &x), 0);
  EXPECT_DOUBLE_EQ(x, 0.8);
  ASSERT_EQ(QZsampEvalDistr(s, QZ_FUNC_CDFINV, 0.6, &x), 0);
  EXPECT_EQ(x, 7.0);
  ASSERT_EQ(QZsampGenerate(s, QZ_LATINSQUARE, 1000), 0);
  int count[3] = {0, 0, 0};
  for (double v : points(s)) count[v == -4.0 ? 0 : (v == 7.0 ? 1 : 2)]++;
  EXPECT_EQ(count[0], 500);
  EXPECT_EQ(count[1], 300);
  EXPECT_EQ(count[2], 200);
  double maxabs = 0.0;
  QZsampGetInfo(s, QZ_DINFO_SAMP_MAXABS, &maxabs);
  EXPECT_EQ(maxabs, 10.0);
  int len = 0;
  double gp[3], gv[3];
  ASSERT_EQ(QZsampGetDiscretePdfTable(s, &len, gp, gv), 0);
  EXPECT_EQ(len, 3);
  EXPECT_EQ(gv[0], -4.0);
  EXPECT_EQ(gp[0], 0.5);
  double bad[3] = {0.2, 0.2, 0.2};
  EXPECT_EQ(QZsampLoadDiscretePdfTable(s, 3, bad, vals), QZERR_DIST_BAD_PROBABILITY);
  QZsample n = make(QZ_DIST_NORMAL, {0.0, 1.0});
  EXPECT_EQ(QZsampLoadDiscretePdfTable(n, 3, probs, vals), QZERR_DIST_BAD_TYPE);
  EXPECT_EQ(QZsampGetDiscretePdfTable(n, &len, gp, gv), QZERR_DIST_BAD_TYPE);
}

int sum_of_children(QZsample, int kind, double* in, int nin, double* out, void* data) {
  *static_cast<int*>(data) += 1;
  if (kind != QZ_FUNC_CDFINV) return QZERR_NOT_SUPPORTED;
  *out = 0.0;
  for (int i = 0; i < nin; ++i) *out += in[i];
  return 0;
}

TEST_F(SamplerTest, UserLawCombinesItsChildSamplers) {
  QZsample a = make(QZ_DIST_NORMAL, {1.0, 1.0});
  QZsample b = make(QZ_DIST_NORMAL, {2.0, 1.0});
  QZsample u = make(QZ_DIST_USER, {});
  EXPECT_EQ(QZsampAddUserFuncArg(u, a), 0);
  EXPECT_EQ(QZsampAddUserFuncArg(u, b), 0);
  EXPECT_EQ(QZsampAddUserFuncArg(u, a), QZERR_SAMP_SOURCE_ALREADY_SET);
  EXPECT_EQ(QZsampAddUserFuncArg(u, u), QZERR_SAMP_BAD_CALL);
  EXPECT_EQ(QZsampGenerate(u, QZ_MONTECARLO, 10), QZERR_SAMP_NO_USER_DIST);
  int calls = 0;
  ASSERT_EQ(QZsampSetUserDistr(u, sum_of_children, &calls), 0);
  ASSERT_EQ(QZsampGenerate(u, QZ_MONTECARLO, 4000), 0);
  EXPECT_EQ(calls, 4000);
  const auto pa = points(a), pb = points(b), pu = points(u);
  for (int i = 0; i < 4000; ++i) ASSERT_EQ(pu[i], pa[i] + pb[i]);
  double mean = 0.0, var = 0.0;
  QZsampGetInfo(u, QZ_DINFO_SAMP_MEAN, &mean);
  QZsampGetInfo(u, QZ_DINFO_SAMP_VAR, &var);
  EXPECT_NEAR(mean, 3.0, 0.1);
  EXPECT_NEAR(var, 2.0, 0.15);
  double in[2] = {1.0, 2.5}, out = 0.0;
  ASSERT_EQ(QZsampEvalUserDistr(u, QZ_FUNC_CDFINV, in, 2, &out), 0);
  EXPECT_EQ(out, 3.5);
  EXPECT_EQ(QZsampEvalDistr(u, QZ_FUNC_CDF, 0.0, &out), QZERR_SAMP_BAD_CALL);
  // Deleting a child drops it from the parent, which then regenerates from the other.
  QZsampDelete(&a);
  ASSERT_EQ(QZsampGenerate(u, QZ_MONTECARLO, 4000), 0);
  EXPECT_EQ(points(u), points(b));
}

TEST_F(SamplerTest, ErrorsHaveTheirCodes) {
  int err = 0;
  EXPECT_EQ(QZsampCreate(env, 703, &err), nullptr);
  EXPECT_EQ(err, QZERR_DIST_BAD_TYPE);
  EXPECT_EQ(QZsampCreate(nullptr, QZ_DIST_NORMAL, &err), nullptr);
  EXPECT_EQ(err, QZERR_ILLEGAL_NULL_POINTER);
  QZsample s = QZsampCreate(env, QZ_DIST_GAMMA, &err);
  double v = 0.0;
  EXPECT_EQ(QZsampSetDistrParam(s, 2, 1.0), QZERR_INDEX_OUT_OF_RANGE);
  EXPECT_EQ(QZsampSetDistrParam(s, -1, 1.0), QZERR_INDEX_OUT_OF_RANGE);
  EXPECT_EQ(QZsampGetDistrParam(s, 5, &v), QZERR_INDEX_OUT_OF_RANGE);
  EXPECT_EQ(QZsampGetDistrParam(s, 1, &v), 0);
  EXPECT_EQ(v, QZ_INFINITY);  // unset
  EXPECT_EQ(QZsampGenerate(s, 0, 10), QZERR_RG_NOT_SET);
  QZsampSetRG(s, rg);
  QZsampSetDistrParam(s, 0, 2.0);
  EXPECT_EQ(QZsampGenerate(s, 0, 10), QZERR_SAMP_DIST_PARAM_NOT_SET);
  EXPECT_EQ(QZsampEvalDistr(s, QZ_FUNC_PDF, 1.0, &v), QZERR_SAMP_DIST_PARAM_NOT_SET);
  QZsampSetDistrParam(s, 1, -3.0);
  EXPECT_EQ(QZsampGenerate(s, 0, 10), QZERR_DIST_SCALE_OUT_OF_RANGE);
  QZsampSetDistrParam(s, 1, 3.0);
  EXPECT_EQ(QZsampGenerate(s, 0, 0), QZERR_SAMP_SIZE_TOO_SMALL);
  EXPECT_EQ(QZsampGetPoints(s, nullptr, nullptr), QZERR_SAMP_NOT_GENERATED);
  EXPECT_EQ(QZsampEvalDistr(s, QZ_FUNC_PDFDIFF, 1.0, &v), QZERR_NOT_SUPPORTED);
  EXPECT_EQ(QZsampEvalDistr(s, 9, 1.0, &v), QZERR_SAMP_BAD_CALL);
  EXPECT_EQ(QZsampEvalDistr(s, QZ_FUNC_CDFINV, 1.5, &v), QZERR_DIST_BAD_PROBABILITY);
  QZsetRGSeed(rg, -5);  // a negative seed is not a valid stream
  EXPECT_EQ(QZsampGenerate(s, 0, 10), QZERR_RG_SEED_NOT_SET);
  QZsetRGSeed(rg, 5);
  ASSERT_EQ(QZsampGenerate(s, 0, 10), 0);
  EXPECT_EQ(QZsampGetCIPoints(s, nullptr, nullptr), QZERR_SAMP_NO_CORRELATION);
  EXPECT_EQ(QZsampGetInfo(s, 1, &v), QZERR_INFO_NOT_AVAILABLE);
  // Sequential reading ends with its code.
  for (int i = 0; i < 10; ++i) ASSERT_EQ(QZsampGetNextPoint(s, &v), 0);
  EXPECT_EQ(QZsampGetNextPoint(s, &v), QZERR_SAMP_ALL_POINTS_USED);
  int used = 0;
  QZsampGetInfo(s, QZ_IINFO_SAMP_USED, &used);
  EXPECT_EQ(used, 10);
  EXPECT_EQ(QZsampSetUserDistr(s, sum_of_children, nullptr), QZERR_DIST_BAD_TYPE);
  EXPECT_EQ(QZsampDelete(nullptr), QZERR_ILLEGAL_NULL_POINTER);
}

TEST_F(SamplerTest, GeneratorDisposalDetachesItsSamplers) {
  QZrandGen own = QZcreateRG(env, QZ_RG_SHUFFLE);
  QZsample s = make(QZ_DIST_EXPONENTIAL, {1.0});
  QZsampSetRG(s, own);
  ASSERT_EQ(QZsampGenerate(s, 1, 20), 0);
  QZdisposeRG(&own);
  EXPECT_EQ(QZsampGenerate(s, 1, 30), QZERR_RG_NOT_SET);
  // The generator's own sampler draws one value at a time.
  ASSERT_EQ(QZsetDistrRG(rg, QZ_DIST_POISSON), 0);
  double v = 0.0;
  EXPECT_EQ(QZgetDistrRV(rg, &v), QZERR_SAMP_DIST_PARAM_NOT_SET);
  ASSERT_EQ(QZsetDistrParamRG(rg, 0, 3.0), 0);
  double sum = 0.0;
  for (int i = 0; i < 5000; ++i) {
    ASSERT_EQ(QZgetDistrRV(rg, &v), 0);
    sum += v;
  }
  EXPECT_NEAR(sum / 5000, 3.0, 0.1);
  EXPECT_EQ(QZsetDistrRG(rg, 9999), QZERR_DIST_BAD_TYPE);
}

TEST_F(SamplerTest, EnvironmentDeletionFreesSamplersLeftAlive) {
  // Run under the address sanitizer: nothing here is deleted by hand.
  QZenv other = QZcreateEnv(nullptr);
  QZrandGen g = QZcreateRG(other, 1);
  for (int k = 0; k < 20; ++k) {
    int err = 0;
    QZsample s = QZsampCreate(other, QZ_DIST_LOGNORMAL, &err);
    QZsampSetDistrParam(s, 0, 0.0);
    QZsampSetDistrParam(s, 1, 1.0);
    QZsampSetRG(s, g);
    ASSERT_EQ(QZsampGenerate(s, k % 4, 50 + k), 0);
  }
  EXPECT_EQ(QZdeleteEnv(&other), 0);
  // The generator outlives the environment and no longer knows its samplers.
  EXPECT_GE(QZgetDoubleRV(g), 0.0);
  QZdisposeRG(&g);
}

TEST_F(SamplerTest, InterpolatedEvaluationIsCloseToExact) {
  QZsample s = make(QZ_DIST_GAMMA, {2.0, 1.5});
  for (double p : {0.0001, 0.01, 0.3, 0.5, 0.9, 0.9999}) {
    double exact = 0.0, li = 0.0;
    ASSERT_EQ(QZsampEvalDistr(s, QZ_FUNC_CDFINV, p, &exact), 0);
    ASSERT_EQ(QZsampEvalDistrLI(s, QZ_FUNC_CDFINV, p, &li), 0);
    EXPECT_NEAR(li, exact, 1e-3 * std::max(1.0, exact)) << p;
    ASSERT_EQ(QZsampEvalDistr(s, QZ_FUNC_CDF, exact, &exact), 0);
    ASSERT_EQ(QZsampEvalDistrLI(s, QZ_FUNC_CDF, li, &li), 0);
    EXPECT_NEAR(li, p, 1e-4) << p;
  }
}

TEST_F(SamplerTest, StatisticsAndHistogram) {
  QZsample s = make(QZ_DIST_UNIFORM, {0.0, 10.0});
  ASSERT_EQ(QZsampGenerate(s, QZ_LATINSQUARE, 10000), 0);
  double m = 0, var = 0, sk = 0, ku = 0, med = 0, mn = 0, mx = 0;
  QZsampGetInfo(s, QZ_DINFO_SAMP_MEAN, &m);
  QZsampGetInfo(s, QZ_DINFO_SAMP_VAR, &var);
  QZsampGetInfo(s, QZ_DINFO_SAMP_SKEWNESS, &sk);
  QZsampGetInfo(s, QZ_DINFO_SAMP_KURTOSIS, &ku);
  QZsampGetInfo(s, QZ_DINFO_SAMP_MEDIAN, &med);
  QZsampGetInfo(s, QZ_DINFO_SAMP_MIN, &mn);
  QZsampGetInfo(s, QZ_DINFO_SAMP_MAX, &mx);
  EXPECT_NEAR(m, 5.0, 1e-3);
  EXPECT_NEAR(var, 100.0 / 12.0, 1e-2);
  EXPECT_NEAR(sk, 0.0, 1e-3);
  EXPECT_NEAR(ku, -1.2, 1e-3);
  EXPECT_NEAR(med, 5.0, 1e-2);
  EXPECT_GE(mn, 0.0);
  EXPECT_LE(mx, 10.0);
  int err = 0;
  QZmodel model = QZcreateModel(env, &err);
  ASSERT_NE(model, nullptr);
  const auto v = points(s);
  int bins = 10;
  std::vector<int> counts(10);
  std::vector<double> probs(10), lo(10), hi(10);
  ASSERT_EQ(QZgetHistogram(model, int(v.size()), v.data(), nullptr, 0.0, 10.0, &bins,
                           counts.data(), probs.data(), lo.data(), hi.data()), 0);
  for (int b = 0; b < 10; ++b) {
    EXPECT_EQ(counts[b], 1000);  // one point per stratum of a Latin hypercube
    EXPECT_DOUBLE_EQ(lo[b], b);
    EXPECT_NEAR(probs[b], 0.1, 1e-12);
  }
  bins = 0;
  ASSERT_EQ(QZgetHistogram(model, int(v.size()), v.data(), nullptr, 0.0, 0.0, &bins, nullptr,
                           nullptr, nullptr, nullptr), 0);
  EXPECT_NEAR(bins, 10.0 / (2.0 * 5.0 / std::cbrt(10000.0)), 1.5);  // Freedman-Diaconis
  EXPECT_EQ(QZgetHistogram(nullptr, 1, v.data(), nullptr, 0, 1, &bins, nullptr, nullptr,
                           nullptr, nullptr), QZERR_ILLEGAL_NULL_POINTER);
  QZdeleteModel(&model);
}

}  // namespace

namespace {

struct Moments {
  const char* name;
  int code;
  std::vector<double> par;
  double mean, var;
  bool discrete = false;
};

}  // namespace

// Latin hypercube samples of 10^5 points carry the law's mean and variance (textbook formulas
// in the parameterisation of each law); discrete laws give whole numbers.
TEST_F(SamplerTest, LatinHypercubeMomentsMatchTheLaw) {
  const double pi = 3.14159265358979323846, euler = 0.57721566490153286, ln2 = std::log(2.0);
  const double g1 = std::tgamma(1.0 + 1.0 / 1.7), g2 = std::tgamma(1.0 + 2.0 / 1.7);
  const std::vector<Moments> laws = {
      {"beta", QZ_DIST_BETA, {2.0, 5.0}, 2.0 / 7.0, 10.0 / (49.0 * 8.0)},
      {"gamma", QZ_DIST_GAMMA, {0.7, 2.0}, 1.4, 2.8},
      {"chisq", QZ_DIST_CHI_SQUARE, {4.0}, 4.0, 8.0},
      {"exp", QZ_DIST_EXPONENTIAL, {2.0}, 0.5, 0.25},
      {"f", QZ_DIST_F, {5.0, 12.0}, 1.2, 2.0 * 144.0 * 15.0 / (5.0 * 100.0 * 8.0)},
      {"gumbel", QZ_DIST_GUMBEL, {1.0, 2.0}, 1.0 + 2.0 * euler, pi * pi * 4.0 / 6.0},
      {"laplace", QZ_DIST_LAPLACE, {0.5, 1.5}, 0.5, 2.0 * 2.25},
      {"lognormal", QZ_DIST_LOGNORMAL, {0.0, 0.5}, std::exp(0.125),
       std::expm1(0.25) * std::exp(0.25)},
      {"logistic", QZ_DIST_LOGISTIC, {3.0, 1.0}, 3.0, pi * pi / 3.0},
      {"normal", QZ_DIST_NORMAL, {5.0, 2.0}, 5.0, 4.0},
      {"pareto", QZ_DIST_PARETO, {1.0, 5.0}, 1.25, 5.0 / (16.0 * 3.0)},
      {"t", QZ_DIST_STUDENT_T, {6.0}, 0.0, 1.5},
      {"uniform", QZ_DIST_UNIFORM, {-2.0, 2.0}, 0.0, 16.0 / 12.0},
      {"weibull", QZ_DIST_WEIBULL, {1.7, 2.0}, 2.0 * g1, 4.0 * (g2 - g1 * g1)},
      {"binomial", QZ_DIST_BINOMIAL, {20.0, 0.3}, 6.0, 4.2, true},
      {"negbin", QZ_DIST_NEGATIVE_BINOMIAL, {3.0, 0.4}, 4.5, 11.25, true},
      {"geometric", QZ_DIST_GEOMETRIC, {0.25}, 3.0, 12.0, true},
      {"poisson", QZ_DIST_POISSON, {4.0}, 4.0, 4.0, true},
      {"logarithmic", QZ_DIST_LOGARITHMIC, {0.5}, 0.5 / (0.5 * ln2),
       -0.5 * (0.5 + std::log(0.5)) / (0.25 * ln2 * ln2), true},
  };
  for (const Moments& law : laws) {
    SCOPED_TRACE(law.name);
    QZsample s = make(law.code, law.par);
    ASSERT_EQ(QZsampGenerate(s, QZ_LATINSQUARE, 100000), 0);
    double mean = 0.0, var = 0.0;
    ASSERT_EQ(QZsampGetInfo(s, QZ_DINFO_SAMP_MEAN, &mean), 0);
    ASSERT_EQ(QZsampGetInfo(s, QZ_DINFO_SAMP_VAR, &var), 0);
    // A discrete law's strata hold whole numbers, which leaves a coarser fit.
    EXPECT_NEAR(mean, law.mean, law.discrete ? 0.01 * law.mean + 0.01 : 2e-3 * std::sqrt(law.var));
    EXPECT_NEAR(var, law.var, (law.discrete ? 0.05 : 0.02) * law.var);
    if (law.discrete)
      for (double v : points(s)) ASSERT_EQ(v, std::floor(v));
    QZsampDelete(&s);
  }
}
