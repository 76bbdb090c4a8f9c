// The table of distribution codes: parameter counts and evaluators.
#include <array>

#include "random/distrib.h"
#include "zento_random.h"

namespace zento::random {

namespace {

constexpr std::array<DistInfo, 21> kDists = {{
    {QZ_DIST_BINOMIAL, 2, true, binomial_pdf, binomial_cdf, binomial_inv, nullptr, false},
    {QZ_DIST_NEGATIVE_BINOMIAL, 2, true, negbin_pdf, negbin_cdf, negbin_inv, nullptr, false},
    {QZ_DIST_GEOMETRIC, 1, true, geometric_pdf, geometric_cdf, geometric_inv, nullptr, true},
    {QZ_DIST_POISSON, 1, true, poisson_pdf, poisson_cdf, poisson_inv, nullptr, true},
    {QZ_DIST_LOGARITHMIC, 1, true, logarithmic_pdf, logarithmic_cdf, logarithmic_inv, nullptr,
     true},
    {QZ_DIST_BETA, 2, false, beta_pdf, beta_cdf, beta_inv, nullptr, true},
    {QZ_DIST_CAUCHY, 2, false, cauchy_pdf, cauchy_cdf, cauchy_inv, cauchy_dpdf, true},
    {QZ_DIST_CHI_SQUARE, 1, false, chisq_pdf, chisq_cdf, chisq_inv, nullptr, true},
    {QZ_DIST_EXPONENTIAL, 1, false, exp_pdf, exp_cdf, exp_inv, nullptr, true},
    {QZ_DIST_F, 2, false, f_pdf, f_cdf, f_inv, nullptr, true},
    {QZ_DIST_GAMMA, 2, false, gamma_pdf, gamma_cdf, gamma_inv, nullptr, true},
    {QZ_DIST_GUMBEL, 2, false, gumbel_pdf, gumbel_cdf, gumbel_inv, gumbel_dpdf, true},
    {QZ_DIST_LAPLACE, 2, false, laplace_pdf, laplace_cdf, laplace_inv, laplace_dpdf, true},
    {QZ_DIST_LOGNORMAL, 2, false, lognormal_pdf, lognormal_cdf, lognormal_inv, lognormal_dpdf,
     true},
    {QZ_DIST_LOGISTIC, 2, false, logistic_pdf, logistic_cdf, logistic_inv, logistic_dpdf, true},
    {QZ_DIST_NORMAL, 2, false, normal_pdf, normal_cdf_fn, normal_inv, nullptr, true},
    {QZ_DIST_PARETO, 2, false, pareto_pdf, pareto_cdf, pareto_inv, nullptr, true},
    {QZ_DIST_STUDENT_T, 1, false, t_pdf, t_cdf, t_inv, nullptr, true},
    {QZ_DIST_UNIFORM, 2, false, uniform_pdf, uniform_cdf, uniform_inv, nullptr, true},
    {QZ_DIST_WEIBULL, 2, false, weibull_pdf, weibull_cdf, weibull_inv, weibull_dpdf, true},
    {QZ_DIST_SYM_STABLE, 1, false, stable_pdf, stable_cdf, stable_inv, nullptr, true},
}};

}  // namespace

const DistInfo* find_dist(int code) {
  for (const DistInfo& d : kDists) {
    if (d.code == code) return &d;
  }
  return nullptr;
}

}  // namespace zento::random
