// The univariate distributions: one table row per code with its parameter count and its
// density, distribution function, quantile and density derivative (null when it has none).
#pragma once

#include "zento.h"

namespace zento::random {

// All evaluators take x (or p for the quantile) and the parameter array; 0 or a QZERR_* code.
using DistFn = int (*)(double x, const double* par, double* out);

struct DistInfo {
  int code;
  int nparams;
  bool discrete;
  DistFn pdf;
  DistFn cdf;
  DistFn inv;     // least x with cdf(x) >= p for discrete laws
  DistFn dpdf;    // first derivative of the density
  bool pub_inv;   // the inverse has a public QZcalcCdfInverse* function
};

// The row of a distribution code, or null.
const DistInfo* find_dist(int code);

// Results that are infinite are reported as +-QZ_INFINITY.
inline constexpr double kDistInf = QZ_INFINITY;

// Continuous laws (dist_continuous.cpp).
int beta_pdf(double, const double*, double*);
int beta_cdf(double, const double*, double*);
int beta_inv(double, const double*, double*);
int cauchy_pdf(double, const double*, double*);
int cauchy_cdf(double, const double*, double*);
int cauchy_inv(double, const double*, double*);
int cauchy_dpdf(double, const double*, double*);
int chisq_pdf(double, const double*, double*);
int chisq_cdf(double, const double*, double*);
int chisq_inv(double, const double*, double*);
int exp_pdf(double, const double*, double*);
int exp_cdf(double, const double*, double*);
int exp_inv(double, const double*, double*);
int f_pdf(double, const double*, double*);
int f_cdf(double, const double*, double*);
int f_inv(double, const double*, double*);
int gamma_pdf(double, const double*, double*);
int gamma_cdf(double, const double*, double*);
int gamma_inv(double, const double*, double*);
int gumbel_pdf(double, const double*, double*);
int gumbel_cdf(double, const double*, double*);
int gumbel_inv(double, const double*, double*);
int gumbel_dpdf(double, const double*, double*);
int laplace_pdf(double, const double*, double*);
int laplace_cdf(double, const double*, double*);
int laplace_inv(double, const double*, double*);
int laplace_dpdf(double, const double*, double*);
int lognormal_pdf(double, const double*, double*);
int lognormal_cdf(double, const double*, double*);
int lognormal_inv(double, const double*, double*);
int lognormal_dpdf(double, const double*, double*);
int logistic_pdf(double, const double*, double*);
int logistic_cdf(double, const double*, double*);
int logistic_inv(double, const double*, double*);
int logistic_dpdf(double, const double*, double*);
int normal_pdf(double, const double*, double*);
int normal_cdf_fn(double, const double*, double*);
int normal_inv(double, const double*, double*);
int pareto_pdf(double, const double*, double*);
int pareto_cdf(double, const double*, double*);
int pareto_inv(double, const double*, double*);
int t_pdf(double, const double*, double*);
int t_cdf(double, const double*, double*);
int t_inv(double, const double*, double*);
int uniform_pdf(double, const double*, double*);
int uniform_cdf(double, const double*, double*);
int uniform_inv(double, const double*, double*);
int weibull_pdf(double, const double*, double*);
int weibull_cdf(double, const double*, double*);
int weibull_inv(double, const double*, double*);
int weibull_dpdf(double, const double*, double*);

// Discrete laws (dist_discrete.cpp).
int binomial_pdf(double, const double*, double*);
int binomial_cdf(double, const double*, double*);
int binomial_inv(double, const double*, double*);
int negbin_pdf(double, const double*, double*);
int negbin_cdf(double, const double*, double*);
int negbin_inv(double, const double*, double*);
int geometric_pdf(double, const double*, double*);
int geometric_cdf(double, const double*, double*);
int geometric_inv(double, const double*, double*);
int poisson_pdf(double, const double*, double*);
int poisson_cdf(double, const double*, double*);
int poisson_inv(double, const double*, double*);
int logarithmic_pdf(double, const double*, double*);
int logarithmic_cdf(double, const double*, double*);
int logarithmic_inv(double, const double*, double*);

// Symmetric stable law (dist_stable.cpp).
int stable_pdf(double, const double*, double*);
int stable_cdf(double, const double*, double*);
int stable_inv(double, const double*, double*);

}  // namespace zento::random
