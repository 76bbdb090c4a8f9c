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

double log_beta_prefactor(double a, double b, double x, double y) {
  if (x <= 0.0 || y <= 0.0) return -std::numeric_limits<double>::infinity();
  const double n = a + b;
  const double lin = (n * x - a) + (n * y - b);
  return -bd0(a, n * x) - bd0(b, n * y) + lin + 0.5 * std::log(a * b / n) - kLnSqrt2Pi -
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

constexpr int kRootIter = 300;

// Safeguarded Halley iteration for a monotone increasing g(v) - target on (lo, hi): g and its
// derivative come from `eval`, which also returns the Halley curvature ratio g''/g'.
template <class Eval>
int bracketed_halley(Eval eval, double lo, double hi, double v, double* out) {
  for (int it = 0; it < kRootIter; ++it) {
    double f = 0.0, df = 0.0, curv = 0.0;
    const int rc = eval(v, &f, &df, &curv);
    if (rc != 0 && rc != QZERR_DIST_TRUNCATED) return rc;
    if (f == 0.0) break;
    if (f > 0.0) hi = v; else lo = v;
    double next;
    if (df > 0.0 && std::isfinite(df)) {
      const double u = f / df;
      double corr = 1.0 - 0.5 * u * curv;
      if (!(corr > 0.5)) corr = 0.5;
      if (corr > 2.0) corr = 2.0;
      next = v - u / corr;
    } else {
      next = lo;  // forces the bisection below
    }
    if (!(next > lo && next < hi)) next = 0.5 * (lo + hi);
    if (std::fabs(next - v) <= 4.0 * kEps * std::fabs(v) || hi - lo <= 4.0 * kEps * std::fabs(v)) {
      v = next;
      *out = v;
      return 0;
    }
    v = next;
  }
  *out = v;
  // A bracket squeezed to rounding level is an answer; otherwise report the limit.
  return (hi - lo) <= 1e-12 * std::fabs(v) ? 0 : QZERR_DIST_ROOTFIND_ITER_LIMIT;
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
  // Starting point: Wilson-Hilferty, or the small-x power law when it fails or a is small.
  double x0 = -1.0;
  if (a > 1.0) {
    const double z = normal_quantile_pq(p, q);
    const double t = 1.0 - 1.0 / (9.0 * a) + z / (3.0 * std::sqrt(a));
    x0 = a * t * t * t;
  }
  if (!(x0 > 0.0)) {
    const double lg = log_gamma(a + 1.0);
    const double small = std::exp((std::log(p) + lg) / a);
    x0 = small < a ? small : a - std::log(q) + (a - 1.0) * std::log(a + 1.0);
    if (!(x0 > 0.0) || !std::isfinite(x0)) x0 = a;
  }
  auto eval = [&](double v, double* f, double* df, double* curv) {
    double P = 0.0, Q = 0.0;
    const int rc = gamma_inc(a, v, &P, &Q);
    *f = lower ? P - p : q - Q;
    *df = std::exp(log_gamma_prefactor(a, v)) / v;
    *curv = (a - 1.0) / v - 1.0;
    return rc;
  };
  // Bracket: expand above until the function is positive.
  double lo = 0.0, hi = std::fmax(2.0 * x0, 1.0);
  for (int k = 0; k < 2000; ++k) {
    double f = 0.0, df = 0.0, curv = 0.0;
    (void)eval(hi, &f, &df, &curv);
    if (f >= 0.0) break;
    lo = hi;
    hi *= 2.0;
  }
  if (!(x0 > lo && x0 < hi)) x0 = 0.5 * (lo + hi);
  return bracketed_halley(eval, lo, hi, x0, x);
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
  // Starting point for the lower tail of (a, b) at probability pp.
  auto guess = [](double a_, double b_, double pp) {
    if (a_ >= 1.0 && b_ >= 1.0) {
      const double t = std::sqrt(-2.0 * std::log(pp));
      const double z = (2.30753 + t * 0.27061) / (1.0 + t * (0.99229 + t * 0.04481)) - t;
      const double al = (z * z - 3.0) / 6.0;
      const double h = 2.0 / (1.0 / (2.0 * a_ - 1.0) + 1.0 / (2.0 * b_ - 1.0));
      const double w = z * std::sqrt(al + h) / h -
                       (1.0 / (2.0 * b_ - 1.0) - 1.0 / (2.0 * a_ - 1.0)) *
                           (al + 5.0 / 6.0 - 2.0 / (3.0 * h));
      return a_ / (a_ + b_ * std::exp(2.0 * w));
    }
    const double lna = std::log(a_ / (a_ + b_)), lnb = std::log(b_ / (a_ + b_));
    const double t = std::exp(a_ * lna) / a_, u = std::exp(b_ * lnb) / b_;
    const double w = t + u;
    if (pp < t / w) return std::pow(a_ * w * pp, 1.0 / a_);
    return 1.0 - std::pow(b_ * w * (1.0 - pp), 1.0 / b_);
  };
  double x0 = p <= q ? guess(a, b, p) : 1.0 - guess(b, a, q);
  if (!(x0 > 0.0 && x0 < 1.0)) x0 = a / (a + b);
  const bool lower = p <= q;
  // Iterate on the smaller of x and 1 - x so that both come out with relative accuracy.
  const bool on_x = x0 <= 0.5;
  auto eval = [&](double v, double* f, double* df, double* curv) {
    const double xx = on_x ? v : 1.0 - v;
    const double yy = on_x ? 1.0 - v : v;
    double ix = 0.0, iy = 0.0;
    const int rc = beta_inc(a, b, xx, yy, &ix, &iy);
    const double g = lower ? ix - p : q - iy;  // increasing in x
    const double dens = std::exp(log_beta_prefactor(a, b, xx, yy)) / (xx * yy);
    const double c = (a - 1.0) / xx - (b - 1.0) / yy;
    *f = on_x ? g : -g;
    *df = dens;
    *curv = on_x ? c : -c;
    return rc;
  };
  double v = 0.0;
  const int rc = bracketed_halley(eval, 0.0, 1.0, on_x ? x0 : 1.0 - x0, &v);
  *x = on_x ? v : 1.0 - v;
  *y = on_x ? 1.0 - v : v;
  return rc;
}

}  // namespace zento::random
