// Continuous distributions: densities, distribution functions, quantiles, density slopes.
// Tails are computed on their own side (expm1, log1p, complements of the incomplete
// functions), so that a probability near 0 keeps its relative accuracy.
#include <cmath>

#include "random/dist_common.h"
#include "random/special.h"

namespace zento::random {

namespace {

constexpr double kInvSqrt2Pi = 0.398942280401432677939946059934;

// Location-scale parameters (par[0] location, par[1] scale).
int check_loc_scale(const double* par) {
  QZ_CALL(check_finite(par[0]));
  return check_scale(par[1]);
}

}  // namespace

// ---- Beta (shape a, shape b) on [0, 1] ----
static int beta_check(const double* par) {
  QZ_CALL(check_shape(par[0]));
  return check_shape(par[1]);
}
int beta_pdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(beta_check(par));
  const double a = par[0], b = par[1];
  if (x < 0.0 || x > 1.0) {
    *out = 0.0;
  } else if (x == 0.0) {
    *out = a < 1.0 ? kDistInf : (a == 1.0 ? b : 0.0);
  } else if (x == 1.0) {
    *out = b < 1.0 ? kDistInf : (b == 1.0 ? a : 0.0);
  } else {
    const double y = 1.0 - x;
    *out = clip_inf(std::exp(log_beta_prefactor(a, b, x, y)) / (x * y));
  }
  return 0;
}
int beta_cdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(beta_check(par));
  double ix = 0.0, iy = 0.0;
  const int rc = beta_inc(par[0], par[1], std::fmax(0.0, std::fmin(1.0, x)), 1.0 - x, &ix, &iy);
  *out = ix;
  return rc;
}
int beta_inv(double p, const double* par, double* out) {
  QZ_CALL(check_p(p));
  QZ_CALL(beta_check(par));
  double y = 0.0;
  return beta_quantile(par[0], par[1], p, 1.0 - p, out, &y);
}

// ---- Cauchy (location, scale) ----
int cauchy_pdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(check_loc_scale(par));
  const double z = (x - par[0]) / par[1];
  *out = 1.0 / (kPi * par[1] * (1.0 + z * z));
  return 0;
}
int cauchy_cdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(check_loc_scale(par));
  const double z = (x - par[0]) / par[1];
  // Far tails through atan(1/z), so that 1/2 + atan(z)/pi does not cancel.
  if (z < -1.0) {
    *out = std::atan(-1.0 / z) / kPi;
  } else if (z > 1.0) {
    *out = 1.0 - std::atan(1.0 / z) / kPi;
  } else {
    *out = 0.5 + std::atan(z) / kPi;
  }
  return 0;
}
int cauchy_inv(double p, const double* par, double* out) {
  QZ_CALL(check_p(p));
  QZ_CALL(check_loc_scale(par));
  double z;
  if (p == 0.0) {
    z = -kDistInf;
  } else if (p == 1.0) {
    z = kDistInf;
  } else if (p < 0.25) {
    z = -1.0 / std::tan(kPi * p);
  } else if (p > 0.75) {
    z = 1.0 / std::tan(kPi * (1.0 - p));
  } else {
    z = std::tan(kPi * (p - 0.5));
  }
  *out = clip_inf(par[0] + par[1] * z);
  return 0;
}
int cauchy_dpdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(check_loc_scale(par));
  const double s = par[1], z = (x - par[0]) / s;
  const double d = 1.0 + z * z;
  *out = -2.0 * z / (kPi * s * s * d * d);
  return 0;
}

// ---- Gamma (shape k, scale theta) ----
static int gamma_check(const double* par) {
  QZ_CALL(check_shape(par[0]));
  return check_scale(par[1]);
}
static double gamma_density(double x, double k, double theta) {
  if (x < 0.0) return 0.0;
  if (x == 0.0) return k < 1.0 ? kDistInf : (k == 1.0 ? 1.0 / theta : 0.0);
  const double u = x / theta;
  return clip_inf(std::exp(log_gamma_prefactor(k, u)) / x);
}
int gamma_pdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(gamma_check(par));
  *out = gamma_density(x, par[0], par[1]);
  return 0;
}
int gamma_cdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(gamma_check(par));
  double p = 0.0, q = 0.0;
  const int rc = gamma_inc(par[0], std::fmax(0.0, x / par[1]), &p, &q);
  *out = p;
  return rc;
}
int gamma_inv(double p, const double* par, double* out) {
  QZ_CALL(check_p(p));
  QZ_CALL(gamma_check(par));
  double x = 0.0;
  const int rc = gamma_quantile(par[0], p, 1.0 - p, &x);
  *out = clip_inf(x * par[1]);
  return rc;
}

// ---- Chi-square (degrees): Gamma(nu / 2, 2) ----
int chisq_pdf(double x, const double* par, double* out) {
  if (!positive(par[0])) return QZERR_DIST_BAD_PARAMS;
  const double g[2] = {0.5 * par[0], 2.0};
  return gamma_pdf(x, g, out);
}
int chisq_cdf(double x, const double* par, double* out) {
  if (!positive(par[0])) return QZERR_DIST_BAD_PARAMS;
  const double g[2] = {0.5 * par[0], 2.0};
  return gamma_cdf(x, g, out);
}
int chisq_inv(double p, const double* par, double* out) {
  if (!positive(par[0])) return QZERR_DIST_BAD_PARAMS;
  const double g[2] = {0.5 * par[0], 2.0};
  return gamma_inv(p, g, out);
}

// ---- Exponential (rate) ----
int exp_pdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(check_scale(par[0]));
  *out = x < 0.0 ? 0.0 : par[0] * std::exp(-par[0] * x);
  return 0;
}
int exp_cdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(check_scale(par[0]));
  *out = x <= 0.0 ? 0.0 : -std::expm1(-par[0] * x);
  return 0;
}
int exp_inv(double p, const double* par, double* out) {
  QZ_CALL(check_p(p));
  QZ_CALL(check_scale(par[0]));
  *out = p == 1.0 ? kDistInf : clip_inf(-std::log1p(-p) / par[0]);
  return 0;
}

// ---- F (degrees d1, degrees d2) through the beta variable w = d1 x / (d1 x + d2) ----
static int f_check(const double* par) {
  return positive(par[0]) && positive(par[1]) ? 0 : QZERR_DIST_BAD_PARAMS;
}
int f_pdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(f_check(par));
  const double d1 = par[0], d2 = par[1];
  if (x <= 0.0) {
    *out = x < 0.0 ? 0.0 : (d1 < 2.0 ? kDistInf : (d1 == 2.0 ? 1.0 : 0.0));
    return 0;
  }
  const double u = d1 * x;
  const double w = u / (u + d2), wc = d2 / (u + d2);
  *out = clip_inf(std::exp(log_beta_prefactor(0.5 * d1, 0.5 * d2, w, wc)) / x);
  return 0;
}
int f_cdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(f_check(par));
  if (x <= 0.0) {
    *out = 0.0;
    return 0;
  }
  const double u = par[0] * x;
  double ix = 0.0, iy = 0.0;
  const int rc = beta_inc(0.5 * par[0], 0.5 * par[1], u / (u + par[1]), par[1] / (u + par[1]),
                          &ix, &iy);
  *out = ix;
  return rc;
}
int f_inv(double p, const double* par, double* out) {
  QZ_CALL(check_p(p));
  QZ_CALL(f_check(par));
  double w = 0.0, wc = 0.0;
  const int rc = beta_quantile(0.5 * par[0], 0.5 * par[1], p, 1.0 - p, &w, &wc);
  *out = wc <= 0.0 ? kDistInf : clip_inf(par[1] * w / (par[0] * wc));
  return rc;
}

// ---- Gumbel of maxima (location, scale) ----
int gumbel_pdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(check_loc_scale(par));
  const double z = (x - par[0]) / par[1];
  *out = std::exp(-z - std::exp(-z)) / par[1];
  return 0;
}
int gumbel_cdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(check_loc_scale(par));
  const double z = (x - par[0]) / par[1];
  *out = std::exp(-std::exp(-z));
  return 0;
}
int gumbel_inv(double p, const double* par, double* out) {
  QZ_CALL(check_p(p));
  QZ_CALL(check_loc_scale(par));
  if (p == 0.0 || p == 1.0) {
    *out = p == 0.0 ? -kDistInf : kDistInf;
    return 0;
  }
  const double mlogp = p > 0.5 ? -std::log1p(-(1.0 - p)) : -std::log(p);
  *out = clip_inf(par[0] - par[1] * std::log(mlogp));
  return 0;
}
int gumbel_dpdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(check_loc_scale(par));
  const double s = par[1], z = (x - par[0]) / s;
  const double e = std::exp(-z);
  const double pdf = std::exp(-z - e) / s;
  *out = pdf == 0.0 ? 0.0 : pdf * (e - 1.0) / s;
  return 0;
}

// ---- Laplace (location, scale) ----
int laplace_pdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(check_loc_scale(par));
  *out = std::exp(-std::fabs(x - par[0]) / par[1]) / (2.0 * par[1]);
  return 0;
}
int laplace_cdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(check_loc_scale(par));
  const double z = (x - par[0]) / par[1];
  *out = z < 0.0 ? 0.5 * std::exp(z) : 1.0 - 0.5 * std::exp(-z);
  return 0;
}
int laplace_inv(double p, const double* par, double* out) {
  QZ_CALL(check_p(p));
  QZ_CALL(check_loc_scale(par));
  if (p == 0.0 || p == 1.0) {
    *out = p == 0.0 ? -kDistInf : kDistInf;
    return 0;
  }
  const double z = p < 0.5 ? std::log(2.0 * p) : -std::log(2.0 * (1.0 - p));
  *out = clip_inf(par[0] + par[1] * z);
  return 0;
}
int laplace_dpdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(check_loc_scale(par));
  const double s = par[1], z = (x - par[0]) / s;
  const double pdf = std::exp(-std::fabs(z)) / (2.0 * s);
  *out = z > 0.0 ? -pdf / s : (z < 0.0 ? pdf / s : 0.0);
  return 0;
}

// ---- Lognormal (location and scale of log x) ----
int lognormal_pdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(check_loc_scale(par));
  if (x <= 0.0) {
    *out = 0.0;
    return 0;
  }
  const double z = (std::log(x) - par[0]) / par[1];
  *out = kInvSqrt2Pi * std::exp(-0.5 * z * z) / (x * par[1]);
  return 0;
}
int lognormal_cdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(check_loc_scale(par));
  *out = x <= 0.0 ? 0.0 : normal_cdf((std::log(x) - par[0]) / par[1]);
  return 0;
}
int lognormal_inv(double p, const double* par, double* out) {
  QZ_CALL(check_p(p));
  QZ_CALL(check_loc_scale(par));
  if (p == 0.0 || p == 1.0) {
    *out = p == 0.0 ? 0.0 : kDistInf;
    return 0;
  }
  *out = clip_inf(std::exp(par[0] + par[1] * normal_quantile(p)));
  return 0;
}
int lognormal_dpdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(check_loc_scale(par));
  if (x <= 0.0) {
    *out = 0.0;
    return 0;
  }
  const double s = par[1], z = (std::log(x) - par[0]) / s;
  const double pdf = kInvSqrt2Pi * std::exp(-0.5 * z * z) / (x * s);
  *out = -pdf * (1.0 + z / s) / x;
  return 0;
}

// ---- Logistic (location, scale) ----
int logistic_pdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(check_loc_scale(par));
  const double e = std::exp(-std::fabs((x - par[0]) / par[1]));
  *out = e / (par[1] * (1.0 + e) * (1.0 + e));
  return 0;
}
int logistic_cdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(check_loc_scale(par));
  const double z = (x - par[0]) / par[1];
  const double e = std::exp(-std::fabs(z));
  *out = z >= 0.0 ? 1.0 / (1.0 + e) : e / (1.0 + e);
  return 0;
}
int logistic_inv(double p, const double* par, double* out) {
  QZ_CALL(check_p(p));
  QZ_CALL(check_loc_scale(par));
  if (p == 0.0 || p == 1.0) {
    *out = p == 0.0 ? -kDistInf : kDistInf;
    return 0;
  }
  const double z = p <= 0.5 ? std::log(p) - std::log1p(-p)
                            : -(std::log(1.0 - p) - std::log1p(-(1.0 - p)));
  *out = clip_inf(par[0] + par[1] * z);
  return 0;
}
int logistic_dpdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(check_loc_scale(par));
  const double s = par[1], z = (x - par[0]) / s;
  const double e = std::exp(-std::fabs(z));
  const double pdf = e / (s * (1.0 + e) * (1.0 + e));
  *out = -pdf * std::tanh(0.5 * z) / s;
  return 0;
}

// ---- Normal (mean, standard deviation) ----
static int normal_check(const double* par) {
  QZ_CALL(check_finite(par[0]));
  return positive(par[1]) ? 0 : QZERR_DIST_BAD_STDDEV;
}
int normal_pdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(normal_check(par));
  const double z = (x - par[0]) / par[1];
  *out = kInvSqrt2Pi * std::exp(-0.5 * z * z) / par[1];
  return 0;
}
int normal_cdf_fn(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(normal_check(par));
  *out = normal_cdf((x - par[0]) / par[1]);
  return 0;
}
int normal_inv(double p, const double* par, double* out) {
  QZ_CALL(check_p(p));
  QZ_CALL(normal_check(par));
  if (p == 0.0 || p == 1.0) {
    *out = p == 0.0 ? -kDistInf : kDistInf;
    return 0;
  }
  *out = clip_inf(par[0] + par[1] * normal_quantile(p));
  return 0;
}

// ---- Pareto (scale x_m, shape alpha) on [x_m, inf) ----
static int pareto_check(const double* par) {
  QZ_CALL(check_scale(par[0]));
  return check_shape(par[1]);
}
int pareto_pdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(pareto_check(par));
  *out = x < par[0] ? 0.0 : par[1] / x * std::exp(par[1] * std::log(par[0] / x));
  return 0;
}
int pareto_cdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(pareto_check(par));
  *out = x <= par[0] ? 0.0 : -std::expm1(par[1] * std::log(par[0] / x));
  return 0;
}
int pareto_inv(double p, const double* par, double* out) {
  QZ_CALL(check_p(p));
  QZ_CALL(pareto_check(par));
  *out = p == 1.0 ? kDistInf : clip_inf(par[0] * std::exp(-std::log1p(-p) / par[1]));
  return 0;
}

// ---- Student's t (degrees) through I_w(nu/2, 1/2), w = nu / (nu + t^2) ----
int t_pdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  const double nu = par[0];
  if (!positive(nu)) return QZERR_DIST_BAD_PARAMS;
  const double lg = -0.5 * (nu + 1.0) * std::log1p(x / nu * x) - 0.5 * std::log(nu) -
                    log_beta(0.5 * nu, 0.5);
  *out = std::exp(lg);
  return 0;
}
int t_cdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  const double nu = par[0];
  if (!positive(nu)) return QZERR_DIST_BAD_PARAMS;
  if (x == 0.0) {
    *out = 0.5;
    return 0;
  }
  double w, wc;
  if (std::fabs(x) > 1e150) {
    w = nu / x / x;
    wc = 1.0;
  } else {
    const double t2 = x * x;
    w = nu / (nu + t2);
    wc = t2 / (nu + t2);
  }
  double ix = 0.0, iy = 0.0;
  const int rc = beta_inc(0.5 * nu, 0.5, w, wc, &ix, &iy);
  *out = x < 0.0 ? 0.5 * ix : 0.5 + 0.5 * iy;
  return rc;
}
int t_inv(double p, const double* par, double* out) {
  QZ_CALL(check_p(p));
  const double nu = par[0];
  if (!positive(nu)) return QZERR_DIST_BAD_PARAMS;
  if (p == 0.0 || p == 1.0) {
    *out = p == 0.0 ? -kDistInf : kDistInf;
    return 0;
  }
  if (p == 0.5) {
    *out = 0.0;
    return 0;
  }
  const double tail = p < 0.5 ? p : 1.0 - p;
  double w = 0.0, wc = 0.0;
  const int rc = beta_quantile(0.5 * nu, 0.5, 2.0 * tail, 1.0 - 2.0 * tail, &w, &wc);
  const double t = w <= 0.0 ? kDistInf : std::sqrt(nu * wc / w);
  *out = clip_inf(p < 0.5 ? -t : t);
  return rc;
}

// ---- Uniform (lower, upper) ----
static int uniform_check(const double* par) {
  return std::isfinite(par[0]) && std::isfinite(par[1]) && par[0] < par[1]
             ? 0
             : QZERR_DIST_BAD_PARAMS;
}
int uniform_pdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(uniform_check(par));
  *out = (x < par[0] || x > par[1]) ? 0.0 : 1.0 / (par[1] - par[0]);
  return 0;
}
int uniform_cdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(uniform_check(par));
  *out = x <= par[0] ? 0.0 : (x >= par[1] ? 1.0 : (x - par[0]) / (par[1] - par[0]));
  return 0;
}
int uniform_inv(double p, const double* par, double* out) {
  QZ_CALL(check_p(p));
  QZ_CALL(uniform_check(par));
  *out = std::fmin(par[1], par[0] + p * (par[1] - par[0]));
  return 0;
}

// ---- Weibull (shape k, scale lambda) ----
static int weibull_check(const double* par) {
  QZ_CALL(check_shape(par[0]));
  return check_scale(par[1]);
}
int weibull_pdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(weibull_check(par));
  const double k = par[0], lam = par[1];
  if (x <= 0.0) {
    *out = x < 0.0 ? 0.0 : (k < 1.0 ? kDistInf : (k == 1.0 ? 1.0 / lam : 0.0));
    return 0;
  }
  const double z = x / lam;
  const double zk1 = std::pow(z, k - 1.0);
  *out = clip_inf(k / lam * zk1 * std::exp(-zk1 * z));
  return 0;
}
int weibull_cdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(weibull_check(par));
  *out = x <= 0.0 ? 0.0 : -std::expm1(-std::pow(x / par[1], par[0]));
  return 0;
}
int weibull_inv(double p, const double* par, double* out) {
  QZ_CALL(check_p(p));
  QZ_CALL(weibull_check(par));
  *out = p == 1.0 ? kDistInf : clip_inf(par[1] * std::pow(-std::log1p(-p), 1.0 / par[0]));
  return 0;
}
int weibull_dpdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(weibull_check(par));
  const double k = par[0], lam = par[1];
  if (x < 0.0) {
    *out = 0.0;
  } else if (x == 0.0) {
    // One-sided slope at the origin.
    if (k == 1.0) *out = -1.0 / (lam * lam);
    else if (k == 2.0) *out = 2.0 / (lam * lam);
    else if (k > 2.0) *out = 0.0;
    else *out = k < 1.0 ? -kDistInf : kDistInf;
  } else {
    const double z = x / lam;
    const double zk1 = std::pow(z, k - 1.0);
    const double pdf = k / lam * zk1 * std::exp(-zk1 * z);
    *out = clip_inf(pdf * ((k - 1.0) / x - k * zk1 / lam));
  }
  return 0;
}

}  // namespace zento::random
