// Distribution functions: inverse round trips, densities against their distribution
// functions, known values, slopes, and the codes of bad parameters.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "random/distrib.h"
#include "random/special.h"
#include "zento.h"

namespace {

using zento::random::DistInfo;
using zento::random::find_dist;

struct Case {
  const char* name;
  int code;
  std::vector<double> par;
};

const std::vector<Case>& continuous_cases() {
  static const std::vector<Case> cases = {
      {"beta_small", QZ_DIST_BETA, {0.5, 0.7}},
      {"beta", QZ_DIST_BETA, {2.5, 4.0}},
      {"beta_large", QZ_DIST_BETA, {300.0, 1200.0}},
      {"cauchy", QZ_DIST_CAUCHY, {1.0, 2.0}},
      {"chisq", QZ_DIST_CHI_SQUARE, {3.0}},
      {"chisq_large", QZ_DIST_CHI_SQUARE, {5000.0}},
      {"exp", QZ_DIST_EXPONENTIAL, {0.7}},
      {"f", QZ_DIST_F, {4.0, 9.0}},
      {"f_small", QZ_DIST_F, {0.8, 1.5}},
      {"gamma_small", QZ_DIST_GAMMA, {0.2, 3.0}},
      {"gamma", QZ_DIST_GAMMA, {4.5, 0.5}},
      {"gamma_large", QZ_DIST_GAMMA, {1e5, 2.0}},
      {"gumbel", QZ_DIST_GUMBEL, {-1.0, 0.5}},
      {"laplace", QZ_DIST_LAPLACE, {2.0, 3.0}},
      {"lognormal", QZ_DIST_LOGNORMAL, {0.3, 0.8}},
      {"logistic", QZ_DIST_LOGISTIC, {-2.0, 1.5}},
      {"normal", QZ_DIST_NORMAL, {10.0, 3.0}},
      {"pareto", QZ_DIST_PARETO, {2.0, 1.5}},
      {"t1", QZ_DIST_STUDENT_T, {1.0}},
      {"t", QZ_DIST_STUDENT_T, {4.5}},
      {"t_large", QZ_DIST_STUDENT_T, {2e4}},
      {"uniform", QZ_DIST_UNIFORM, {-1.0, 3.0}},
      {"weibull", QZ_DIST_WEIBULL, {1.7, 2.0}},
      {"weibull_small", QZ_DIST_WEIBULL, {0.4, 1.0}},
      {"stable_05", QZ_DIST_SYM_STABLE, {0.5}},
      {"stable_13", QZ_DIST_SYM_STABLE, {1.3}},
      {"stable_19", QZ_DIST_SYM_STABLE, {1.9}},
  };
  return cases;
}

double call(zento::random::DistFn fn, double x, const std::vector<double>& par) {
  double out = -12345.0;
  const int rc = fn(x, par.data(), &out);
  EXPECT_EQ(rc, 0) << "x=" << x;
  return out;
}

TEST(Distributions, CdfOfInverseGivesBackTheProbability) {
  std::vector<double> grid;
  for (double p : {1e-300, 1e-100, 1e-20, 1e-10, 1e-5, 1e-3}) {
    grid.push_back(p);
    grid.push_back(1.0 - p);
  }
  for (int k = 1; k < 100; ++k) grid.push_back(k / 100.0);
  for (const Case& c : continuous_cases()) {
    const DistInfo* d = find_dist(c.code);
    ASSERT_NE(d, nullptr);
    const bool stable = c.code == QZ_DIST_SYM_STABLE;
    const double tol = stable ? 1e-10 : 3e-12;
    for (double p : grid) {
      if (stable && (p < 1e-10 || p > 1.0 - 1e-10)) continue;
      const double x = call(d->inv, p, c.par);
      if (std::fabs(x) >= QZ_INFINITY) continue;  // beyond the range of doubles
      const double back = call(d->cdf, x, c.par);
      // Relative in the near tail, plus what one rounding of x moves the cdf by.
      const double scale = std::fmin(p, 1.0 - p) + 1e-16;
      const double cond = 8e-16 * std::fabs(x) * call(d->pdf, x, c.par);
      EXPECT_LE(std::fabs(back - p), tol * scale + cond + 2e-16)
          << c.name << " p=" << p << " x=" << x;
    }
  }
}

// The density integrates to the distribution function: Gauss-Legendre on small intervals.
TEST(Distributions, DensityIntegratesToTheDistributionFunction) {
  const double gx[5] = {-0.906179845938664, -0.538469310105683, 0.0, 0.538469310105683,
                        0.906179845938664};
  const double gw[5] = {0.236926885056189, 0.478628670499366, 0.568888888888889,
                        0.478628670499366, 0.236926885056189};
  for (const Case& c : continuous_cases()) {
    const DistInfo* d = find_dist(c.code);
    for (double p : {0.05, 0.3, 0.5, 0.8, 0.97}) {
      const double a = call(d->inv, p, c.par);
      const double b = call(d->inv, p + 0.01, c.par);
      double integral = 0.0;
      const int pieces = 40;
      for (int k = 0; k < pieces; ++k) {
        const double lo = a + (b - a) * k / pieces, hi = a + (b - a) * (k + 1) / pieces;
        for (int j = 0; j < 5; ++j) {
          integral += 0.5 * (hi - lo) * gw[j] * call(d->pdf, 0.5 * (lo + hi) + 0.5 * (hi - lo) * gx[j], c.par);
        }
      }
      EXPECT_NEAR(integral, 0.01, 1e-8) << c.name << " p=" << p;
    }
  }
}

TEST(Distributions, KnownValues) {
  double v = 0.0;
  EXPECT_EQ(QZcalcCdfNormal(1.96, 0.0, 1.0, &v), 0);
  EXPECT_NEAR(v, 0.9750021048517796, 1e-15);
  EXPECT_EQ(QZcalcCdfNormal(-30.0, 0.0, 1.0, &v), 0);
  EXPECT_NEAR(v / 4.906713927148187e-198, 1.0, 1e-10);
  EXPECT_EQ(QZcalcCdfInverseNormal(0.975, 0.0, 1.0, &v), 0);
  EXPECT_NEAR(v, 1.959963984540054, 1e-14);
  EXPECT_EQ(QZcalcCdfInverseNormal(0.5, 0.0, 500.0, &v), 0);
  EXPECT_EQ(v, 0.0);
  EXPECT_EQ(QZcalcCdfChiSquare(3.84145882069412, 1.0, &v), 0);
  EXPECT_NEAR(v, 0.95, 1e-12);
  EXPECT_EQ(QZcalcCdfStudentT(2.015048372669157, 5.0, &v), 0);
  EXPECT_NEAR(v, 0.9499999999576474, 1e-15);
  EXPECT_EQ(QZcalcCdfFDistribution(3.325834530413011, 5.0, 10.0, &v), 0);
  EXPECT_NEAR(v, 0.95, 1e-12);
  EXPECT_EQ(QZcalcCdfGamma(1.0, 1.0, 1.0, &v), 0);
  EXPECT_NEAR(v, 1.0 - std::exp(-1.0), 1e-15);
  EXPECT_EQ(QZcalcPdfPoisson(3.0, 2.5, &v), 0);
  EXPECT_NEAR(v, std::exp(-2.5) * 2.5 * 2.5 * 2.5 / 6.0, 1e-15);
  EXPECT_EQ(QZcalcPdfBinomial(3.0, 10.0, 0.3, &v), 0);
  EXPECT_NEAR(v, 120.0 * 0.027 * std::pow(0.7, 7), 1e-15);
  EXPECT_EQ(QZcalcCdfBinomial(3.0, 10.0, 0.3, &v), 0);
  EXPECT_NEAR(v, 0.6496107184, 1e-10);
  EXPECT_EQ(QZcalcPdfLogarithmic(2.0, 0.5, &v), 0);
  EXPECT_NEAR(v, 0.125 / std::log(2.0), 1e-15);
  // Large counts keep full accuracy: Poisson(1e6) at its mean, against Stirling to O(1/n^2).
  EXPECT_EQ(QZcalcPdfPoisson(1e6, 1e6, &v), 0);
  EXPECT_NEAR(v * std::sqrt(2 * M_PI * 1e6) / (1.0 - 1.0 / 12e6), 1.0, 1e-12);
  // Student t with one degree is the Cauchy law, chi-square with two the exponential(1/2).
  double w = 0.0;
  for (double x : {-50.0, -2.0, 0.3, 7.0}) {
    QZcalcCdfStudentT(x, 1.0, &v);
    QZcalcCdfCauchy(x, 0.0, 1.0, &w);
    EXPECT_NEAR(v, w, 1e-14);
    QZcalcCdfChiSquare(std::fabs(x), 2.0, &v);
    QZcalcCdfExponential(std::fabs(x), 0.5, &w);
    EXPECT_NEAR(v, w, 1e-14);
  }
  // Stable law: f(0) = Gamma(1 + 1/alpha) / pi; alpha 1 and 2 are Cauchy and N(0, 2).
  EXPECT_EQ(QZcalcPdfSymStable(0.0, 1.5, &v), 0);
  EXPECT_NEAR(v, std::tgamma(1.0 + 1.0 / 1.5) / M_PI, 1e-14);
  for (double x : {0.2, 1.0, 4.0, 40.0}) {
    QZcalcCdfSymStable(x, 1.0, &v);
    QZcalcCdfCauchy(x, 0.0, 1.0, &w);
    EXPECT_NEAR(v, w, 1e-13);
    QZcalcCdfSymStable(x, 2.0, &v);
    QZcalcCdfNormal(x, 0.0, std::sqrt(2.0), &w);
    EXPECT_NEAR(v, w, 1e-13);
    // Just off the closed forms the integrals agree with them.
    QZcalcPdfSymStable(x, 1.0001, &v);
    QZcalcPdfCauchy(x, 0.0, 1.0, &w);
    EXPECT_NEAR(v / w, 1.0, 2e-3) << x;
    QZcalcPdfSymStable(x, 1.9999, &v);
    QZcalcPdfNormal(x, 0.0, std::sqrt(2.0), &w);
    if (x < 10) {
      EXPECT_NEAR(v / w, 1.0, 2e-3) << x;
    }
  }
  // Discrete laws: the Poisson quantile at the cdf of k is k.
  for (double k : {0.0, 1.0, 5.0, 15.0}) {
    QZcalcCdfPoisson(k, 7.5, &v);
    QZcalcCdfInversePoisson(v, 7.5, &w);
    EXPECT_EQ(w, k);
  }
}

struct DiscreteCase {
  const char* name;
  int code;
  std::vector<double> par;
  double lo;
};

TEST(Distributions, DiscreteMassesSumToTheCdfAndQuantilesAreLeastPoints) {
  const std::vector<DiscreteCase> cases = {
      {"binomial", QZ_DIST_BINOMIAL, {40.0, 0.3}, 0.0},
      {"binomial_large", QZ_DIST_BINOMIAL, {100000.0, 0.01}, 0.0},
      {"negbin", QZ_DIST_NEGATIVE_BINOMIAL, {3.5, 0.4}, 0.0},
      {"geometric", QZ_DIST_GEOMETRIC, {0.15}, 0.0},
      {"poisson", QZ_DIST_POISSON, {6.2}, 0.0},
      {"poisson_large", QZ_DIST_POISSON, {2500.0}, 0.0},
      {"logarithmic", QZ_DIST_LOGARITHMIC, {0.9}, 1.0},
  };
  for (const DiscreteCase& c : cases) {
    const DistInfo* d = find_dist(c.code);
    ASSERT_NE(d, nullptr);
    const double start = call(d->inv, 1e-6, c.par);
    const double end = call(d->inv, 1.0 - 1e-9, c.par);
    double sum = start > c.lo ? call(d->cdf, start - 1.0, c.par) : 0.0;
    for (double k = start; k <= end; k += 1.0) {
      sum += call(d->pdf, k, c.par);
      EXPECT_NEAR(sum, call(d->cdf, k, c.par), 1e-12) << c.name << " k=" << k;
    }
    EXPECT_EQ(call(d->pdf, c.lo + 0.5, c.par), 0.0) << c.name;
    for (double p : {1e-6, 0.01, 0.2, 0.5, 0.77, 0.999}) {
      const double k = call(d->inv, p, c.par);
      EXPECT_GE(call(d->cdf, k, c.par), p) << c.name;
      if (k > c.lo) {
        EXPECT_LT(call(d->cdf, k - 1.0, c.par), p) << c.name;
      }
    }
  }
}

TEST(Distributions, SlopesMatchFiniteDifferences) {
  struct S {
    const char* name;
    int code;
    std::vector<double> par;
    std::vector<double> xs;
  };
  const std::vector<S> cases = {
      {"cauchy", QZ_DIST_CAUCHY, {1.0, 2.0}, {-3.0, 0.5, 4.0}},
      {"gumbel", QZ_DIST_GUMBEL, {-1.0, 0.5}, {-1.5, -0.2, 1.0}},
      {"laplace", QZ_DIST_LAPLACE, {2.0, 3.0}, {-1.0, 5.0}},
      {"lognormal", QZ_DIST_LOGNORMAL, {0.3, 0.8}, {0.3, 1.0, 4.0}},
      {"logistic", QZ_DIST_LOGISTIC, {-2.0, 1.5}, {-4.0, -1.0, 3.0}},
      {"weibull", QZ_DIST_WEIBULL, {1.7, 2.0}, {0.5, 1.5, 4.0}},
  };
  for (const S& c : cases) {
    const DistInfo* d = find_dist(c.code);
    ASSERT_NE(d->dpdf, nullptr);
    for (double x : c.xs) {
      const double h = 1e-5 * std::max(1.0, std::fabs(x));
      const double fd = (call(d->pdf, x + h, c.par) - call(d->pdf, x - h, c.par)) / (2 * h);
      EXPECT_NEAR(call(d->dpdf, x, c.par), fd, 1e-7) << c.name << " x=" << x;
    }
  }
  EXPECT_EQ(find_dist(QZ_DIST_NORMAL)->dpdf, nullptr);
}

TEST(Distributions, BadArgumentsGiveTheirCodes) {
  double v = 0.0;
  struct Bad {
    int rc;
    int want;
  };
  const std::vector<Bad> cases = {
      {QZcalcPdfNormal(0.0, 0.0, 0.0, &v), QZERR_DIST_BAD_STDDEV},
      {QZcalcPdfNormal(0.0, 0.0, -1.0, &v), QZERR_DIST_BAD_STDDEV},
      {QZcalcPdfNormal(NAN, 0.0, 1.0, &v), QZERR_DIST_BAD_VALUE},
      {QZcalcCdfInverseNormal(1.5, 0.0, 1.0, &v), QZERR_DIST_BAD_PROBABILITY},
      {QZcalcCdfInverseNormal(NAN, 0.0, 1.0, &v), QZERR_DIST_BAD_PROBABILITY},
      {QZcalcPdfGamma(1.0, -2.0, 1.0, &v), QZERR_DIST_SHAPE_OUT_OF_RANGE},
      {QZcalcPdfGamma(1.0, 2.0, 0.0, &v), QZERR_DIST_SCALE_OUT_OF_RANGE},
      {QZcalcCdfBeta(0.5, 0.0, 1.0, &v), QZERR_DIST_SHAPE_OUT_OF_RANGE},
      {QZcalcPdfCauchy(0.0, 0.0, -1.0, &v), QZERR_DIST_SCALE_OUT_OF_RANGE},
      {QZcalcPdfExponential(1.0, 0.0, &v), QZERR_DIST_SCALE_OUT_OF_RANGE},
      {QZcalcPdfWeibull(1.0, 0.0, 1.0, &v), QZERR_DIST_SHAPE_OUT_OF_RANGE},
      {QZcalcPdfPareto(3.0, -1.0, 1.0, &v), QZERR_DIST_SCALE_OUT_OF_RANGE},
      {QZcalcPdfUniform(0.5, 2.0, 1.0, &v), QZERR_DIST_BAD_PARAMS},
      {QZcalcPdfStudentT(0.5, 0.0, &v), QZERR_DIST_BAD_PARAMS},
      {QZcalcPdfFDistribution(0.5, 1.0, -3.0, &v), QZERR_DIST_BAD_PARAMS},
      {QZcalcPdfBinomial(1.0, 10.5, 0.5, &v), QZERR_DIST_BAD_PARAMS},
      {QZcalcPdfBinomial(1.0, 10.0, 1.5, &v), QZERR_DIST_BAD_PROBABILITY},
      {QZcalcPdfGeometric(1.0, 0.0, &v), QZERR_DIST_BAD_PROBABILITY},
      {QZcalcPdfLogarithmic(1.0, 1.0, &v), QZERR_DIST_BAD_PROBABILITY},
      {QZcalcPdfNegativeBinomial(1.0, 0.0, 0.5, &v), QZERR_DIST_SHAPE_OUT_OF_RANGE},
      {QZcalcPdfPoisson(1.0, -1.0, &v), QZERR_DIST_BAD_PARAMS},
      {QZcalcPdfSymStable(1.0, 2.5, &v), QZERR_DIST_SHAPE_OUT_OF_RANGE},
      {QZcalcPdfNormal(0.0, 0.0, 1.0, nullptr), QZERR_ILLEGAL_NULL_POINTER},
  };
  for (size_t i = 0; i < cases.size(); ++i) EXPECT_EQ(cases[i].rc, cases[i].want) << i;
}

TEST(SpecialFunctions, LogGammaAndIncompleteFunctions) {
  using namespace zento::random;
  for (double x : {1e-8, 0.1, 0.5, 1.0, 1.5, 2.0, 7.3, 10.0, 55.5, 1e6}) {
    EXPECT_NEAR(log_gamma(x), std::lgamma(x), 2e-14 * std::max(1.0, std::fabs(std::lgamma(x))))
        << x;
  }
  EXPECT_NEAR(log_beta(0.5, 0.5), std::log(M_PI), 1e-14);
  EXPECT_NEAR(log_beta(1e6, 3.0), std::lgamma(1e6) + std::lgamma(3.0) - std::lgamma(1e6 + 3.0), 1e-8);
  double p = 0.0, q = 0.0;
  ASSERT_EQ(gamma_inc(0.5, 2.0, &p, &q), 0);
  EXPECT_NEAR(p, std::erf(std::sqrt(2.0)), 1e-15);
  EXPECT_NEAR(q, std::erfc(std::sqrt(2.0)), 1e-15);
  double ix = 0.0, iy = 0.0;
  ASSERT_EQ(beta_inc(1.0, 3.0, 0.2, 0.8, &ix, &iy), 0);
  EXPECT_NEAR(iy, std::pow(0.8, 3.0), 1e-15);
  EXPECT_NEAR(log1pmx(1e-5), -5e-11 + 1e-15 / 3 - 2.5e-21, 1e-25);
}

}  // namespace
