// Log-gamma, Stirling error, incomplete gamma and beta, and the normal integral.
#include "random/special.h"

#include <cmath>
#include <limits>

#include "zento_errors.h"

namespace zento::random {

namespace {

constexpr double kEps = std::numeric_limits<double>::epsilon();
constexpr double kTiny = 1e-300;

// Stirling series of ln Gamma beyond its leading terms, for x >= 10 (error below 1e-17).
double stirling_series(double x) {
  const double r = 1.0 / x;
  const double r2 = r * r;
  return r * (1.0 / 12 +
              r2 * (-1.0 / 360 +
                    r2 * (1.0 / 1260 +
                          r2 * (-1.0 / 1680 +
                                r2 * (1.0 / 1188 + r2 * (-691.0 / 360360 + r2 * (1.0 / 156)))))));
}

}  // namespace

double log_gamma(double x) {
  if (x >= 10.0) return (x - 0.5) * std::log(x) - x + kLnSqrt2Pi + stirling_series(x);
  // Shift up by the recurrence Gamma(x + 1) = x Gamma(x); the product stays far from underflow
  // except for its first factor, which is taken as a log of its own.
  double prod = 1.0;
  double y = x + 1.0;
  while (y < 10.0) {
    prod *= y;
    y += 1.0;
  }
  return (y - 0.5) * std::log(y) - y + kLnSqrt2Pi + stirling_series(y) - std::log(prod) -
         std::log(x);
}

double stirlerr(double x) {
  if (x >= 10.0) return stirling_series(x);
  return log_gamma(x) - ((x - 0.5) * std::log(x) - x + kLnSqrt2Pi);
}

double log1pmx(double t) {
  if (std::fabs(t) >= 0.5) return std::log1p(t) - t;
  // log(1 + t) = 2 atanh(s) with s = t / (2 + t), and 2 s - t = -s t.
  const double s = t / (2.0 + t);
  const double s2 = s * s;
  double term = s * s2;
  double sum = 0.0;
  for (int k = 3; k < 200; k += 2) {
    const double add = term / k;
    sum += add;
    if (std::fabs(add) <= kEps * std::fabs(sum)) break;
    term *= s2;
  }
  return -s * t + 2.0 * sum;
}

double bd0(double x, double m) {
  if (x == 0.0) return m;
  const double t = (x - m) / m;
  if (std::fabs(t) < 0.5) return m * (log1pmx(t) + t * std::log1p(t));
  return x * std::log(x / m) + m - x;
}

double log_beta(double a, double b) {
  const double lo = std::fmin(a, b), hi = std::fmax(a, b);
  if (lo >= 10.0) {
    // Stirling form: the (a - 1/2) ln a terms combine without cancellation.
    const double n = a + b;
    return -0.5 * std::log(hi) + kLnSqrt2Pi + stirlerr(lo) + stirlerr(hi) - stirlerr(n) +
           (lo - 0.5) * std::log(lo / n) + hi * std::log1p(-lo / n);
  }
  if (hi >= 10.0) {
    // ln Gamma(hi) - ln Gamma(lo + hi) through the Stirling errors.
    const double n = lo + hi;
    const double diff = stirlerr(hi) - stirlerr(n) - (hi - 0.5) * std::log1p(lo / hi) -
                        lo * std::log(n) + lo;
    return log_gamma(lo) + diff;
  }
  return log_gamma(a) + log_gamma(b) - log_gamma(a + b);
}

double log_gamma_prefactor(double a, double x) {
  if (x <= 0.0) return -std::numeric_limits<double>::infinity();
  if (a < 1.0) return a * std::log(x) - x - log_gamma(a);
  return -bd0(a, x) + 0.5 * std::log(a) - kLnSqrt2Pi - stirlerr(a);
}

namespace {

// bd0(x, m) with the deviation d = m - x given too, which callers know more accurately than
// the difference of x and m.
double bd0_dev(double x, double m, double d) {
  const double t = -d / m;
  if (std::fabs(t) < 0.5) return m * (log1pmx(t) + t * std::log1p(t));
  return x * std::log(x / m) + d;
}

}  // namespace

double log_beta_prefactor(double a, double b, double x, double y) {
  if (x <= 0.0 || y <= 0.0) return -std::numeric_limits<double>::infinity();
  const double n = a + b;
  // n x - a = b - n y; take it from the smaller of x and y, the one known to full accuracy.
  const bool by_x = x <= y;
  const double d = by_x ? n * x - a : b - n * y;
  const double ma = by_x ? n * x : a + d;
  const double mb = by_x ? b - d : n * y;
  return -bd0_dev(a, ma, d) - bd0_dev(b, mb, -d) + 0.5 * std::log(a * b / n) - kLnSqrt2Pi -
         stirlerr(a) - stirlerr(b) + stirlerr(n);
}

int gamma_inc(double a, double x, double* p, double* q) {
  if (x <= 0.0) {
    *p = 0.0;
    *q = 1.0;
    return 0;
  }
  if (std::isinf(x)) {
    *p = 1.0;
    *q = 0.0;
    return 0;
  }
  const double lpre = log_gamma_prefactor(a, x);
  const int max_iter = 1000 + static_cast<int>(20.0 * std::sqrt(a + x));
  if (x < a + 1.0) {
    // P = x^a e^-x / Gamma(a + 1) * sum x^n / ((a + 1) ... (a + n)).
    double ap = a, term = 1.0, sum = 1.0;
    int it = 0;
    for (; it < max_iter; ++it) {
      ap += 1.0;
      term *= x / ap;
      sum += term;
      if (term <= sum * kEps) break;
    }
    *p = std::exp(lpre + std::log(sum) - std::log(a));
    if (*p > 1.0) *p = 1.0;
    *q = 1.0 - *p;
    return it < max_iter ? 0 : QZERR_DIST_TRUNCATED;
  }
  // Legendre's continued fraction for Q, modified Lentz.
  double b = x + 1.0 - a;
  double c = 1.0 / kTiny;
  double d = 1.0 / b;
  double h = d;
  int it = 1;
  for (; it < max_iter; ++it) {
    const double an = -it * (it - a);
    b += 2.0;
    d = an * d + b;
    if (std::fabs(d) < kTiny) d = kTiny;
    c = b + an / c;
    if (std::fabs(c) < kTiny) c = kTiny;
    d = 1.0 / d;
    const double del = d * c;
    h *= del;
    if (std::fabs(del - 1.0) <= kEps) break;
  }
  *q = std::exp(lpre) * h;
  if (*q > 1.0) *q = 1.0;
  *p = 1.0 - *q;
  return it < max_iter ? 0 : QZERR_DIST_TRUNCATED;
}

namespace {

// Continued fraction of I_x(a, b) (modified Lentz); converges fast for x < (a+1)/(a+b+2).
int beta_cf(double a, double b, double x, double* out) {
  const double qab = a + b, qap = a + 1.0, qam = a - 1.0;
  double c = 1.0;
  double d = 1.0 - qab * x / qap;
  if (std::fabs(d) < kTiny) d = kTiny;
  d = 1.0 / d;
  double h = d;
  const int max_iter = 1000 + static_cast<int>(20.0 * std::sqrt(std::fmax(a, b)));
  for (int m = 1; m <= max_iter; ++m) {
    const int m2 = 2 * m;
    double aa = m * (b - m) * x / ((qam + m2) * (a + m2));
    d = 1.0 + aa * d;
    if (std::fabs(d) < kTiny) d = kTiny;
    c = 1.0 + aa / c;
    if (std::fabs(c) < kTiny) c = kTiny;
    d = 1.0 / d;
    h *= d * c;
    aa = -(a + m) * (qab + m) * x / ((a + m2) * (qap + m2));
    d = 1.0 + aa * d;
    if (std::fabs(d) < kTiny) d = kTiny;
    c = 1.0 + aa / c;
    if (std::fabs(c) < kTiny) c = kTiny;
    d = 1.0 / d;
    const double del = d * c;
    h *= del;
    if (std::fabs(del - 1.0) <= kEps) {
      *out = h;
      return 0;
    }
  }
  *out = h;
  return QZERR_DIST_TRUNCATED;
}

}  // namespace

int beta_inc(double a, double b, double x, double y, double* ix, double* iy) {
  if (x <= 0.0) {
    *ix = 0.0;
    *iy = 1.0;
    return 0;
  }
  if (y <= 0.0) {
    *ix = 1.0;
    *iy = 0.0;
    return 0;
  }
  const double lpre = log_beta_prefactor(a, b, x, y);
  double cf = 0.0;
  if (x < (a + 1.0) / (a + b + 2.0)) {
    const int rc = beta_cf(a, b, x, &cf);
    *ix = std::fmin(1.0, std::exp(lpre) * cf / a);
    *iy = 1.0 - *ix;
    return rc;
  }
  const int rc = beta_cf(b, a, y, &cf);
  *iy = std::fmin(1.0, std::exp(lpre) * cf / b);
  *ix = 1.0 - *iy;
  return rc;
}

double normal_cdf(double z) { return 0.5 * std::erfc(-z * 0.70710678118654752440); }
double normal_ccdf(double z) { return 0.5 * std::erfc(z * 0.70710678118654752440); }

double normal_quantile_pq(double p, double q) {
  if (p <= 0.0) return -std::numeric_limits<double>::infinity();
  if (q <= 0.0) return std::numeric_limits<double>::infinity();
  const double dq = p < 0.5 ? p - 0.5 : 0.5 - q;
  if (std::fabs(dq) <= 0.425) {
    const double r = 0.180625 - dq * dq;
    const double num =
        ((((((2.5090809287301226727e+3 * r + 3.3430575583588128105e+4) * r +
             6.7265770927008700853e+4) * r + 4.5921953931549871457e+4) * r +
           1.3731693765509461125e+4) * r + 1.9715909503065514427e+3) * r +
         1.3314166789178437745e+2) * r + 3.3871328727963666080e+0;
    const double den =
        ((((((5.2264952788528545610e+3 * r + 2.8729085735721942674e+4) * r +
             3.9307895800092710610e+4) * r + 2.1213794301586595867e+4) * r +
           5.3941960214247511077e+3) * r + 6.8718700749205790830e+2) * r +
         4.2313330701600911252e+1) * r + 1.0;
    return dq * num / den;
  }
  double r = std::sqrt(-std::log(p < 0.5 ? p : q));
  double val;
  if (r <= 5.0) {
    r -= 1.6;
    val = (((((((7.74545014278341407640e-4 * r + 2.27238449892691845833e-2) * r +
                2.41780725177450611770e-1) * r + 1.27045825245236838258e+0) * r +
              3.64784832476320460504e+0) * r + 5.76949722146069140550e+0) * r +
            4.63033784615654529590e+0) * r + 1.42343711074968357734e+0) /
          (((((((1.05075007164441684324e-9 * r + 5.47593808499534494600e-4) * r +
                1.51986665636164571966e-2) * r + 1.48103976427480074590e-1) * r +
              6.89767334985100004550e-1) * r + 1.67638483018380384940e+0) * r +
            2.05319162663775882187e+0) * r + 1.0);
  } else {
    r -= 5.0;
    val = (((((((2.01033439929228813265e-7 * r + 2.71155556874348757815e-5) * r +
                1.24266094738807843860e-3) * r + 2.65321895265761230930e-2) * r +
              2.96560571828504891230e-1) * r + 1.78482653991729133580e+0) * r +
            5.46378491116411436990e+0) * r + 6.65790464350110377720e+0) /
          (((((((2.04426310338993978564e-15 * r + 1.42151175831644588870e-7) * r +
                1.84631831751005468180e-5) * r + 7.86869131145613259100e-4) * r +
              1.48753612908506148525e-2) * r + 1.36929880922735805310e-1) * r +
            5.99832206555887937690e-1) * r + 1.0);
  }
  return p < 0.5 ? -val : val;
}

double normal_quantile(double p) { return normal_quantile_pq(p, 1.0 - p); }

namespace {

constexpr int kRootIter = 500;

// Newton's method on g(v) = +-(ln tail(v) - ln target), increasing in v, inside a bracket
// [lo, hi] that every evaluation narrows. Working on the log of the tail keeps the steps
// sensible from the centre to the far tails, where the tail behaves like a power or an
// exponential of v. A step that leaves the bracket bisects it, geometrically when it spans
// orders of magnitude. Converged when the tail matches to a few ulps or the bracket is
// down to rounding; an answer below the smallest double is 0.
template <class Eval>
int bracketed_newton(Eval eval, double lo, double hi, double v, double* out) {
  for (int it = 0; it < kRootIter; ++it) {
    double g = 0.0, dg = 0.0;
    const int rc = eval(v, &g, &dg);
    if (rc != 0 && rc != QZERR_DIST_TRUNCATED) return rc;
    if (std::fabs(g) <= 4.0 * kEps) break;
    if (g > 0.0) hi = v; else lo = v;
    if (hi <= std::numeric_limits<double>::denorm_min()) {
      v = hi;
      break;
    }
    if (hi - lo <= 4.0 * kEps * std::fabs(v)) break;
    double next = (std::isfinite(g) && dg > 0.0 && std::isfinite(dg)) ? v - g / dg : lo - 1.0;
    if (!(next > lo && next < hi)) {
      if (lo <= 0.0) next = hi * 1e-3;
      else if (hi > 8.0 * lo) next = std::sqrt(lo) * std::sqrt(hi);
      else next = 0.5 * (lo + hi);
    }
    if (next == v) break;
    v = next;
    if (it + 1 == kRootIter) {
      *out = v;
      return QZERR_DIST_ROOTFIND_ITER_LIMIT;
    }
  }
  *out = v;
  return 0;
}

double safe_log(double v) {
  return v > 0.0 ? std::log(v) : -std::numeric_limits<double>::infinity();
}

}  // namespace

int gamma_quantile(double a, double p, double q, double* x) {
  if (p <= 0.0) {
    *x = 0.0;
    return 0;
  }
  if (q <= 0.0) {
    *x = std::numeric_limits<double>::infinity();
    return 0;
  }
  const bool lower = p <= q;
  // P(a, x) ~ x^a / Gamma(a + 1) for small x.
  const double log_small = (std::log(p) + log_gamma(a + 1.0)) / a;
  if (lower && log_small < -745.0) {
    *x = 0.0;
    return 0;
  }
  double x0 = -1.0;
  if (a > 1.0) {
    // Wilson-Hilferty.
    const double z = normal_quantile_pq(p, q);
    const double t = 1.0 - 1.0 / (9.0 * a) + z / (3.0 * std::sqrt(a));
    x0 = a * t * t * t;
  }
  if (!(x0 > 0.0) && lower && log_small < std::log(a + 1.0)) x0 = std::exp(log_small);
  if (!(x0 > 0.0)) x0 = a - std::log(q) + 1.0;
  const double lt = lower ? std::log(p) : std::log(q);
  auto eval = [&](double v, double* g, double* dg) {
    double P = 0.0, Q = 0.0;
    const int rc = gamma_inc(a, v, &P, &Q);
    const double tail = lower ? P : Q;
    *g = lower ? safe_log(tail) - lt : lt - safe_log(tail);
    *dg = std::exp(log_gamma_prefactor(a, v)) / v / tail;
    return rc;
  };
  double lo = 0.0, hi = std::fmax(2.0 * x0, 1.0);
  for (int k = 0; k < 2000; ++k) {
    double g = 0.0, dg = 0.0;
    (void)eval(hi, &g, &dg);
    if (g >= 0.0) break;
    lo = hi;
    hi *= 2.0;
  }
  if (!(x0 > lo && x0 < hi)) x0 = lo > 0.0 ? std::sqrt(lo * hi) : 0.5 * hi;
  return bracketed_newton(eval, lo, hi, x0, x);
}

int beta_quantile(double a, double b, double p, double q, double* x, double* y) {
  if (p <= 0.0) {
    *x = 0.0;
    *y = 1.0;
    return 0;
  }
  if (q <= 0.0) {
    *x = 1.0;
    *y = 0.0;
    return 0;
  }
  // I_x(a, b) ~ x^a / (a B(a, b)) near 0, and the mirror near 1.
  const double lb = log_beta(a, b);
  if (p <= q && (std::log(p) + std::log(a) + lb) / a < -745.0) {
    *x = 0.0;
    *y = 1.0;
    return 0;
  }
  if (q < p && (std::log(q) + std::log(b) + lb) / b < -745.0) {
    *x = 1.0;
    *y = 0.0;
    return 0;
  }
  // Starting point for the lower tail of (a, b) at probability pp.
  auto guess = [lb](double a_, double b_, double pp) {
    if (a_ >= 1.0 && b_ >= 1.0) {
      const double t = std::sqrt(-2.0 * std::log(pp));
      // Minus the normal quantile of pp, in the sign convention of this formula.
      const double z = t - (2.30753 + t * 0.27061) / (1.0 + t * (0.99229 + t * 0.04481));
      const double al = (z * z - 3.0) / 6.0;
      const double h = 2.0 / (1.0 / (2.0 * a_ - 1.0) + 1.0 / (2.0 * b_ - 1.0));
      const double w = z * std::sqrt(al + h) / h -
                       (1.0 / (2.0 * b_ - 1.0) - 1.0 / (2.0 * a_ - 1.0)) *
                           (al + 5.0 / 6.0 - 2.0 / (3.0 * h));
      return a_ / (a_ + b_ * std::exp(2.0 * w));
    }
    return std::exp((std::log(pp) + std::log(a_) + lb) / a_);
  };
  double x0 = p <= q ? guess(a, b, p) : 1.0 - guess(b, a, q);
  if (!(x0 > 0.0 && x0 < 1.0)) x0 = a / (a + b);
  const bool lower = p <= q;
  // Iterate on the smaller of x and 1 - x so that both come out with relative accuracy.
  const bool on_x = x0 <= 0.5;
  const double lt = lower ? std::log(p) : std::log(q);
  const double sgn = (lower ? 1.0 : -1.0) * (on_x ? 1.0 : -1.0);
  auto eval = [&](double v, double* g, double* dg) {
    const double xx = on_x ? v : 1.0 - v;
    const double yy = on_x ? 1.0 - v : v;
    double ix = 0.0, iy = 0.0;
    const int rc = beta_inc(a, b, xx, yy, &ix, &iy);
    const double tail = lower ? ix : iy;
    *g = sgn * (safe_log(tail) - lt);
    *dg = std::exp(log_beta_prefactor(a, b, xx, yy)) / (xx * yy) / tail;
    return rc;
  };
  double v = 0.0;
  const int rc = bracketed_newton(eval, 0.0, 1.0, on_x ? x0 : 1.0 - x0, &v);
  *x = on_x ? v : 1.0 - v;
  *y = on_x ? 1.0 - v : v;
  return rc;
}

}  // namespace zento::random
