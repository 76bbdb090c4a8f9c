// Special functions under the distribution functions: log-gamma, incomplete gamma and beta,
// the normal integral and the quantiles that need iteration.
//
// Accuracy is kept where the textbook forms lose it. Densities and the prefactors of the
// incomplete functions are written through Loader's saddle-point pieces (stirlerr, bd0), so
// that large shapes and counts do not cancel big logarithms against each other. The incomplete
// gamma uses its power series below x = a + 1 and Legendre's continued fraction above; the
// incomplete beta uses its continued fraction on the side of the mean where it converges,
// both evaluated by the modified Lentz method. Every routine that can return a probability
// near 1 returns its complement too, computed directly, so tails keep relative accuracy.
// The normal quantile is Wichura's AS 241 (PPND16, about 1e-16 relative); gamma and beta
// quantiles start from the Wilson-Hilferty and Abramowitz-Stegun guesses and finish with
// safeguarded Halley steps inside a bracket.
#pragma once

namespace zento::random {

inline constexpr double kLnSqrt2Pi = 0.918938533204672741780329736406;  // ln sqrt(2 pi)
inline constexpr double kPi = 3.14159265358979323846264338328;

// ln Gamma(x) for x > 0.
double log_gamma(double x);
// ln Gamma(x) - ((x - 1/2) ln x - x + ln sqrt(2 pi)), the error of Stirling's formula.
double stirlerr(double x);
// log(1 + t) - t without cancellation for small t.
double log1pmx(double t);
// x ln(x / m) + m - x, the deviance term of the saddle-point expansions.
double bd0(double x, double m);
// ln B(a, b).
double log_beta(double a, double b);

// ln(x^a e^-x / Gamma(a)), the prefactor of the incomplete gamma.
double log_gamma_prefactor(double a, double x);
// ln(x^a y^b / B(a, b)) with y = 1 - x given separately.
double log_beta_prefactor(double a, double b, double x, double y);

// Regularized incomplete gamma: *p = P(a, x), *q = Q(a, x). Returns 0 or QZERR_DIST_TRUNCATED.
[[nodiscard]] int gamma_inc(double a, double x, double* p, double* q);
// Regularized incomplete beta I_x(a, b) and its complement, y = 1 - x given separately.
[[nodiscard]] int beta_inc(double a, double b, double x, double y, double* ix, double* iy);

// Standard normal distribution function and its upper tail.
double normal_cdf(double z);
double normal_ccdf(double z);
// Standard normal quantile for p in (0, 1); q = 1 - p picks the accurate tail when given.
double normal_quantile(double p);
double normal_quantile_pq(double p, double q);

// x with P(a, x) = p (q = 1 - p, both given so that either tail is accurate).
[[nodiscard]] int gamma_quantile(double a, double p, double q, double* x);
// x with I_x(a, b) = p; *y = 1 - x computed on its own.
[[nodiscard]] int beta_quantile(double a, double b, double p, double q, double* x, double* y);

}  // namespace zento::random
