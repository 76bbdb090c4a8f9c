// Discrete distributions on the integers. Probabilities of single values follow Loader's
// saddle-point form (stirlerr and bd0), which stays accurate for large counts; distribution
// functions go through the incomplete beta and gamma functions. A quantile is the least
// integer k with F(k) >= p, found by a doubling search and bisection from a Cornish-Fisher
// guess, so that its cost grows with the log of the distance to the guess.
#include <cmath>
#include <limits>

#include "random/dist_common.h"
#include "random/special.h"

namespace zento::random {

namespace {

constexpr double kTwoPi = 6.283185307179586476925286766559;

// Probability of k successes in n trials (Loader's dbinom_raw), q = 1 - p given.
double binom_raw(double k, double n, double p, double q) {
  if (p == 0.0) return k == 0.0 ? 1.0 : 0.0;
  if (q == 0.0) return k == n ? 1.0 : 0.0;
  if (k == 0.0) return std::exp(n * std::log1p(-p));
  if (k == n) return std::exp(n * (q < 0.1 ? std::log1p(-q) : std::log(p)));
  if (k < 0.0 || k > n) return 0.0;
  const double lc = stirlerr(n) - stirlerr(k) - stirlerr(n - k) - bd0(k, n * p) - bd0(n - k, n * q);
  const double lf = std::log(kTwoPi) + std::log(k) + std::log1p(-k / n);
  return std::exp(lc - 0.5 * lf);
}

using CdfAt = int (*)(double k, const double* par, double* out);

// Least integer k in [lo, hi] with cdf(k) >= p, searched outward from `guess`.
int discrete_search(CdfAt cdf, const double* par, double p, double lo, double hi, double guess,
                    double* out) {
  if (!(guess >= lo)) guess = lo;
  if (guess > hi) guess = hi;
  guess = std::floor(guess);
  double f = 0.0;
  QZ_CALL(cdf(guess, par, &f));
  double a, b;  // invariant: cdf(a) < p <= cdf(b), a = lo - 1 allowed
  if (f >= p) {
    b = guess;
    double step = 1.0;
    a = b - step;
    for (;;) {
      if (a < lo) {
        a = lo - 1.0;
        break;
      }
      QZ_CALL(cdf(a, par, &f));
      if (f < p) break;
      b = a;
      step *= 2.0;
      a = b - step;
    }
  } else {
    a = guess;
    double step = 1.0;
    b = a + step;
    for (;;) {
      if (b >= hi) {
        b = hi;
        break;
      }
      QZ_CALL(cdf(b, par, &f));
      if (f >= p) break;
      a = b;
      step *= 2.0;
      b = a + step;
      if (step > 1e300) return QZERR_DIST_ROOTFIND_ITER_LIMIT;
    }
  }
  while (b - a > 1.0) {
    const double mid = std::floor(a + 0.5 * (b - a));
    QZ_CALL(cdf(mid, par, &f));
    if (f >= p) b = mid; else a = mid;
  }
  *out = b;
  return 0;
}

// Cornish-Fisher guess at the p-quantile of a law with this mean, deviation and skewness.
double cf_guess(double p, double mean, double sd, double skew) {
  const double z = normal_quantile(std::fmin(std::fmax(p, 1e-300), 1.0 - 1e-16));
  return mean + sd * (z + skew * (z * z - 1.0) / 6.0);
}

bool is_count(double v) { return v >= 0.0 && v <= 9007199254740992.0 && v == std::floor(v); }

}  // namespace

// ---- Binomial (trials n, probability p) ----
static int binomial_check(const double* par) {
  if (!is_count(par[0])) return QZERR_DIST_BAD_PARAMS;
  return check_p(par[1]);
}
int binomial_pdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(binomial_check(par));
  const double n = par[0], p = par[1];
  *out = (x < 0.0 || x > n || x != std::floor(x)) ? 0.0 : binom_raw(x, n, p, 1.0 - p);
  return 0;
}
int binomial_cdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(binomial_check(par));
  const double n = par[0], p = par[1], k = std::floor(x);
  if (k < 0.0) {
    *out = 0.0;
    return 0;
  }
  if (k >= n || p == 0.0) {
    *out = 1.0;
    return 0;
  }
  if (p == 1.0) {
    *out = 0.0;
    return 0;
  }
  // P(X <= k) = 1 - I_p(k + 1, n - k).
  double ix = 0.0, iy = 0.0;
  const int rc = beta_inc(k + 1.0, n - k, p, 1.0 - p, &ix, &iy);
  *out = iy;
  return rc;
}
int binomial_inv(double u, const double* par, double* out) {
  QZ_CALL(check_p(u));
  QZ_CALL(binomial_check(par));
  const double n = par[0], p = par[1];
  if (u == 0.0 || p == 0.0) {
    *out = 0.0;
    return 0;
  }
  const double sd = std::sqrt(n * p * (1.0 - p));
  const double skew = sd > 0.0 ? (1.0 - 2.0 * p) / sd : 0.0;
  return discrete_search(binomial_cdf, par, u, 0.0, n, cf_guess(u, n * p, sd, skew), out);
}

// ---- Negative binomial (successes r, probability p): failures before the r-th success ----
static int negbin_check(const double* par) {
  QZ_CALL(check_shape(par[0]));
  return (par[1] > 0.0 && par[1] <= 1.0) ? 0 : QZERR_DIST_BAD_PROBABILITY;
}
int negbin_pdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(negbin_check(par));
  const double r = par[0], p = par[1];
  if (x < 0.0 || x != std::floor(x)) {
    *out = 0.0;
  } else if (x == 0.0) {
    *out = std::exp(r * std::log(p));
  } else {
    *out = r / (r + x) * binom_raw(r, r + x, p, 1.0 - p);
  }
  return 0;
}
int negbin_cdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(negbin_check(par));
  const double k = std::floor(x), p = par[1];
  if (k < 0.0) {
    *out = 0.0;
    return 0;
  }
  if (p == 1.0) {
    *out = 1.0;
    return 0;
  }
  double ix = 0.0, iy = 0.0;
  const int rc = beta_inc(par[0], k + 1.0, p, 1.0 - p, &ix, &iy);
  *out = ix;
  return rc;
}
int negbin_inv(double u, const double* par, double* out) {
  QZ_CALL(check_p(u));
  QZ_CALL(negbin_check(par));
  const double r = par[0], p = par[1], q = 1.0 - p;
  if (u == 0.0 || p == 1.0) {
    *out = 0.0;
    return 0;
  }
  if (u == 1.0) {
    *out = kDistInf;
    return 0;
  }
  const double mean = r * q / p, sd = std::sqrt(r * q) / p;
  const double skew = (2.0 - p) / std::sqrt(r * q);
  return discrete_search(negbin_cdf, par, u, 0.0, kDistInf, cf_guess(u, mean, sd, skew), out);
}

// ---- Geometric (probability p): failures before the first success ----
static int geometric_check(const double* par) {
  return (par[0] > 0.0 && par[0] <= 1.0) ? 0 : QZERR_DIST_BAD_PROBABILITY;
}
int geometric_pdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(geometric_check(par));
  const double p = par[0];
  if (x < 0.0 || x != std::floor(x)) *out = 0.0;
  else if (p == 1.0) *out = x == 0.0 ? 1.0 : 0.0;
  else *out = p * std::exp(x * std::log1p(-p));
  return 0;
}
int geometric_cdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(geometric_check(par));
  const double k = std::floor(x), p = par[0];
  if (k < 0.0) *out = 0.0;
  else if (p == 1.0) *out = 1.0;
  else *out = -std::expm1((k + 1.0) * std::log1p(-p));
  return 0;
}
int geometric_inv(double u, const double* par, double* out) {
  QZ_CALL(check_p(u));
  QZ_CALL(geometric_check(par));
  const double p = par[0];
  if (u == 0.0 || p == 1.0) {
    *out = 0.0;
    return 0;
  }
  if (u == 1.0) {
    *out = kDistInf;
    return 0;
  }
  // Closed form, then one-step corrections for rounding at the jump points.
  double k = std::fmax(0.0, std::ceil(std::log1p(-u) / std::log1p(-p)) - 1.0);
  double f = 0.0;
  QZ_CALL(geometric_cdf(k, par, &f));
  while (f < u) {
    k += 1.0;
    QZ_CALL(geometric_cdf(k, par, &f));
  }
  while (k > 0.0) {
    QZ_CALL(geometric_cdf(k - 1.0, par, &f));
    if (f < u) break;
    k -= 1.0;
  }
  *out = clip_inf(k);
  return 0;
}

// ---- Poisson (mean) ----
static int poisson_check(const double* par) {
  return positive(par[0]) ? 0 : QZERR_DIST_BAD_PARAMS;
}
int poisson_pdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(poisson_check(par));
  const double lam = par[0];
  if (x < 0.0 || x != std::floor(x)) *out = 0.0;
  else if (x == 0.0) *out = std::exp(-lam);
  else *out = std::exp(-stirlerr(x) - bd0(x, lam)) / std::sqrt(kTwoPi * x);
  return 0;
}
int poisson_cdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(poisson_check(par));
  const double k = std::floor(x);
  if (k < 0.0) {
    *out = 0.0;
    return 0;
  }
  // P(X <= k) = Q(k + 1, mean).
  double p = 0.0, q = 0.0;
  const int rc = gamma_inc(k + 1.0, par[0], &p, &q);
  *out = q;
  return rc;
}
int poisson_inv(double u, const double* par, double* out) {
  QZ_CALL(check_p(u));
  QZ_CALL(poisson_check(par));
  const double lam = par[0];
  if (u == 0.0) {
    *out = 0.0;
    return 0;
  }
  if (u == 1.0) {
    *out = kDistInf;
    return 0;
  }
  const double sd = std::sqrt(lam);
  return discrete_search(poisson_cdf, par, u, 0.0, kDistInf, cf_guess(u, lam, sd, 1.0 / sd), out);
}

// ---- Logarithmic (probability p) on 1, 2, ... ----
static int logarithmic_check(const double* par) {
  return (par[0] > 0.0 && par[0] < 1.0) ? 0 : QZERR_DIST_BAD_PROBABILITY;
}
int logarithmic_pdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(logarithmic_check(par));
  const double p = par[0];
  if (x < 1.0 || x != std::floor(x)) *out = 0.0;
  else *out = std::exp(x * std::log(p)) / (x * -std::log1p(-p));
  return 0;
}
int logarithmic_cdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(logarithmic_check(par));
  const double k = std::floor(x), p = par[0];
  if (k < 1.0) {
    *out = 0.0;
    return 0;
  }
  const double norm = -std::log1p(-p);
  // Upper tail sum_{j > k} p^j / j = p^(k+1) sum_m p^m / (k + 1 + m); it converges at the
  // rate p, and it is the accurate side unless most of the mass lies above k.
  const double lead = std::exp((k + 1.0) * std::log(p));
  double tail = 0.0, pm = 1.0;
  const int max_terms = 100000000;
  int m = 0;
  for (; m < max_terms; ++m) {
    const double add = pm / (k + 1.0 + m);
    tail += add;
    if (add <= tail * 1e-17) break;
    pm *= p;
  }
  if (m == max_terms) return QZERR_DIST_TRUNCATED;
  tail *= lead / norm;
  if (tail < 0.5) {
    *out = 1.0 - tail;
    return 0;
  }
  // Most mass above k, so k is small: sum the head directly.
  double head = 0.0, pj = 1.0;
  for (double j = 1.0; j <= k; j += 1.0) {
    pj *= p;
    head += pj / j;
  }
  *out = head / norm;
  return 0;
}
int logarithmic_inv(double u, const double* par, double* out) {
  QZ_CALL(check_p(u));
  QZ_CALL(logarithmic_check(par));
  if (u == 0.0) {
    *out = 1.0;
    return 0;
  }
  if (u == 1.0) {
    *out = kDistInf;
    return 0;
  }
  return discrete_search(logarithmic_cdf, par, u, 1.0, kDistInf, 1.0, out);
}

}  // namespace zento::random
