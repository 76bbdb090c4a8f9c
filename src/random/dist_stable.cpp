// Symmetric stable Paretian law with index alpha in (0, 2], location 0 and scale 1 (the law
// whose characteristic function is exp(-|t|^alpha)).
//
// Densities and tails come from Zolotarev's integral representation as arranged by Nolan
// (1997): for x > 0 and alpha != 1, with V(theta) = (cos t / sin(alpha t))^(alpha/(alpha-1)) *
// cos((alpha-1) t) / cos t and h(theta) = ln(x^(alpha/(alpha-1)) V(theta)),
//   f(x)     = alpha / (pi |alpha-1| x) * int_0^{pi/2} exp(h - e^h) dtheta,
//   1 - F(x) = (1/pi) int exp(-e^h)          for alpha > 1,
//   1 - F(x) = (1/pi) int (1 - exp(-e^h))    for alpha < 1,
// so the upper tail is an integral of positive terms and keeps its relative accuracy. The
// integrands are peaked where h = 0; the range is split at the points where h is -2, 0 and 2
// (V is monotone, so bisection finds them) and each piece is integrated by adaptive 15-point
// Gauss-Kronrod. Near the origin the Taylor series and far out the convergent (alpha < 1) or
// asymptotic (alpha > 1) power series take over. alpha = 1 and alpha = 2 are the Cauchy and
// the normal law with variance 2. Quantiles are found by safeguarded Newton steps.
#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "random/dist_common.h"
#include "random/special.h"

namespace zento::random {

namespace {

constexpr double kHalfPi = 1.57079632679489661923132169164;

// Nodes and weights of the 7-point Gauss and 15-point Kronrod rules on [-1, 1].
constexpr std::array<double, 8> kXgk = {
    0.991455371120812639206854697526329, 0.949107912342758524526189684047851,
    0.864864423359769072789712788640926, 0.741531185599394439863864773280788,
    0.586087235467691130294144845693013, 0.405845151377397166906606412076961,
    0.207784955007898467600689403773245, 0.000000000000000000000000000000000};
constexpr std::array<double, 8> kWgk = {
    0.022935322010529224963732008058970, 0.063092092629978553290700663189204,
    0.104790010322250183839876322541518, 0.140653259715525918745189590510238,
    0.169004726639267902826583426598550, 0.190350578064785409913256402421014,
    0.204432940075298892414161999234649, 0.209482141084727828012999174891714};
constexpr std::array<double, 4> kWg = {
    0.129484966168869693270611432679082, 0.279705391489276667901467771423780,
    0.381830050505118944950369775488975, 0.417959183673469387755102040816327};

struct Piece {
  double a, b, val, err;
};

template <class F>
Piece gk15(F& f, double a, double b) {
  const double c = 0.5 * (a + b), h = 0.5 * (b - a);
  const double fc = f(c);
  double rk = fc * kWgk[7], rg = fc * kWg[3];
  for (int j = 0; j < 7; ++j) {
    const double dx = h * kXgk[j];
    const double s = f(c - dx) + f(c + dx);
    rk += kWgk[j] * s;
    if (j % 2 == 1) rg += kWg[j / 2] * s;
  }
  return {a, b, rk * h, std::fabs((rk - rg) * h)};
}

// Adaptive Gauss-Kronrod over [a, b]: splits the piece with the largest error estimate.
template <class F>
double integrate(F& f, double a, double b, double rel_tol) {
  std::vector<Piece> pieces{gk15(f, a, b)};
  for (int it = 0; it < 400; ++it) {
    double total = 0.0, err = 0.0;
    size_t worst = 0;
    for (size_t i = 0; i < pieces.size(); ++i) {
      total += pieces[i].val;
      err += pieces[i].err;
      if (pieces[i].err > pieces[worst].err) worst = i;
    }
    if (err <= rel_tol * std::fabs(total) || err < 1e-300) break;
    const Piece w = pieces[worst];
    const double m = 0.5 * (w.a + w.b);
    if (m <= w.a || m >= w.b) break;
    pieces[worst] = gk15(f, w.a, m);
    pieces.push_back(gk15(f, m, w.b));
  }
  double total = 0.0;
  for (const Piece& p : pieces) total += p.val;
  return total;
}

// ln V(theta) for symmetric laws.
double log_v(double alpha, double theta) {
  const double e = alpha / (alpha - 1.0);
  return e * (std::log(std::cos(theta)) - std::log(std::sin(alpha * theta))) +
         std::log(std::cos((alpha - 1.0) * theta)) - std::log(std::cos(theta));
}

// theta in (0, pi/2) where h(theta) = level; h is increasing for alpha < 1, decreasing above.
double solve_h(double alpha, double logc, double level) {
  double lo = 0.0, hi = kHalfPi;
  const bool increasing = alpha < 1.0;
  for (int it = 0; it < 200 && hi - lo > 1e-16; ++it) {
    const double mid = 0.5 * (lo + hi);
    const double h = logc + log_v(alpha, mid);
    if ((h < level) == increasing) lo = mid; else hi = mid;
  }
  return 0.5 * (lo + hi);
}

// Integral of g(h(theta)) over (0, pi/2), split at the peak region.
template <class G>
double integrate_h(double alpha, double logc, G g) {
  auto f = [&](double th) {
    const double h = logc + log_v(alpha, th);
    return std::isnan(h) ? 0.0 : g(h);
  };
  std::array<double, 5> cuts = {0.0, solve_h(alpha, logc, -2.0), solve_h(alpha, logc, 0.0),
                                solve_h(alpha, logc, 2.0), kHalfPi};
  std::sort(cuts.begin(), cuts.end());
  double sum = 0.0;
  for (int i = 0; i + 1 < 5; ++i) {
    if (cuts[i + 1] > cuts[i]) sum += integrate(f, cuts[i], cuts[i + 1], 1e-14);
  }
  return sum;
}

// Power series in 1/x (tail and density) when its terms fall off fast; false otherwise.
bool far_series(double alpha, double x, double* tail, double* dens) {
  const double xa = std::exp(-alpha * std::log(x));
  if (xa > 1e-6) return false;
  double t = 0.0, d = 0.0, xk = 1.0, fact = 1.0;
  for (int k = 1; k <= 4; ++k) {
    xk *= xa;
    fact *= k;
    const double s = std::sin(k * kHalfPi * alpha) * ((k % 2) ? 1.0 : -1.0);
    t += s * std::exp(log_gamma(alpha * k)) / fact * xk;
    d += s * std::exp(log_gamma(alpha * k + 1.0)) / fact * xk / x;
  }
  *tail = t / kPi;
  *dens = d / kPi;
  return true;
}

// Upper tail 1 - F(x) and density at x > 0.
void stable_eval(double alpha, double x, double* tail, double* dens) {
  if (alpha == 2.0) {
    *tail = normal_ccdf(x / std::sqrt(2.0));
    *dens = std::exp(-0.25 * x * x) / (2.0 * std::sqrt(kPi));
    return;
  }
  if (std::fabs(alpha - 1.0) < 1e-10) {
    *tail = std::atan(1.0 / x) / kPi;
    *dens = 1.0 / (kPi * (1.0 + x * x));
    return;
  }
  if (far_series(alpha, x, tail, dens)) return;
  const double f0 = std::exp(log_gamma(1.0 + 1.0 / alpha)) / kPi;
  const double c2 = std::exp(log_gamma(3.0 / alpha)) / (2.0 * alpha * kPi);
  if (c2 * x * x < 1e-9 * f0) {
    // Taylor series at 0: f = f0 - c2 x^2 + ..., F = 1/2 + f0 x - c2 x^3 / 3.
    *dens = f0 - c2 * x * x;
    *tail = 0.5 - x * (f0 - c2 * x * x / 3.0);
    return;
  }
  const double logc = alpha / (alpha - 1.0) * std::log(x);
  const double fi = integrate_h(alpha, logc, [](double h) { return std::exp(h - std::exp(h)); });
  *dens = alpha / (kPi * std::fabs(alpha - 1.0) * x) * fi;
  if (alpha > 1.0) {
    *tail = integrate_h(alpha, logc, [](double h) { return std::exp(-std::exp(h)); }) / kPi;
  } else {
    *tail = integrate_h(alpha, logc, [](double h) { return -std::expm1(-std::exp(h)); }) / kPi;
  }
}

int stable_check(const double* par) {
  return (par[0] > 0.0 && par[0] <= 2.0) ? 0 : QZERR_DIST_SHAPE_OUT_OF_RANGE;
}

}  // namespace

int stable_pdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(stable_check(par));
  const double ax = std::fabs(x);
  if (ax == 0.0) {
    *out = std::exp(log_gamma(1.0 + 1.0 / par[0])) / kPi;
    return 0;
  }
  double tail = 0.0, dens = 0.0;
  stable_eval(par[0], ax, &tail, &dens);
  *out = dens;
  return 0;
}

int stable_cdf(double x, const double* par, double* out) {
  QZ_CALL(check_x(x));
  QZ_CALL(stable_check(par));
  if (x == 0.0) {
    *out = 0.5;
    return 0;
  }
  double tail = 0.0, dens = 0.0;
  stable_eval(par[0], std::fabs(x), &tail, &dens);
  *out = x < 0.0 ? tail : 1.0 - tail;
  return 0;
}

int stable_inv(double p, const double* par, double* out) {
  QZ_CALL(check_p(p));
  QZ_CALL(stable_check(par));
  if (p == 0.0 || p == 1.0) {
    *out = p == 0.0 ? -kDistInf : kDistInf;
    return 0;
  }
  if (p == 0.5) {
    *out = 0.0;
    return 0;
  }
  const double alpha = par[0];
  const double target = p < 0.5 ? p : 1.0 - p;  // upper tail probability of |x|
  // Bracket [lo, hi] with tail(lo) > target >= tail(hi).
  double lo = 0.0, hi = 1.0, tail = 0.0, dens = 0.0;
  for (int k = 0; k < 2100; ++k) {
    stable_eval(alpha, hi, &tail, &dens);
    if (tail <= target) break;
    lo = hi;
    hi *= 2.0;
    if (hi > 1e300) {
      *out = p < 0.5 ? -kDistInf : kDistInf;
      return 0;
    }
  }
  double x = 0.5 * (lo + hi);
  int it = 0;
  for (; it < 200; ++it) {
    stable_eval(alpha, x, &tail, &dens);
    const double g = target - tail;  // increasing in x
    if (g == 0.0) break;
    if (g > 0.0) hi = x; else lo = x;
    double next = dens > 0.0 ? x - g / dens : 0.5 * (lo + hi);
    if (!(next > lo && next < hi)) next = 0.5 * (lo + hi);
    if (std::fabs(next - x) <= 1e-15 * x || hi - lo <= 1e-15 * x) {
      x = next;
      break;
    }
    x = next;
  }
  if (it == 200) return QZERR_DIST_ROOTFIND_ITER_LIMIT;
  *out = p < 0.5 ? -x : x;
  return 0;
}

}  // namespace zento::random
