// Statistics of sample points (QZsampGetInfo) and the interpolated evaluation of
// QZsampEvalDistrLI.
#include <algorithm>
#include <cmath>
#include <new>

#include "core/errors.h"
#include "random/sampler.h"
#include "zento_random.h"

namespace zento::random {

namespace {

struct Moments {
  double mean = 0, var = 0, std = 0, skew = 0, kurt = 0, median = 0, min = 0, max = 0;
};

// Two passes: the mean first, then central moments, so that a large offset does not cancel.
Moments moments(const std::vector<double>& v) {
  Moments m;
  const size_t n = v.size();
  if (n == 0) return m;
  double s = 0.0;
  for (double x : v) s += x;
  m.mean = s / n;
  double m2 = 0.0, m3 = 0.0, m4 = 0.0;
  for (double x : v) {
    const double d = x - m.mean, d2 = d * d;
    m2 += d2;
    m3 += d2 * d;
    m4 += d2 * d2;
  }
  m.var = n > 1 ? m2 / (n - 1) : 0.0;
  m.std = std::sqrt(m.var);
  const double c2 = m2 / n;
  m.skew = c2 > 0.0 ? (m3 / n) / std::pow(c2, 1.5) : 0.0;
  m.kurt = c2 > 0.0 ? (m4 / n) / (c2 * c2) - 3.0 : 0.0;
  std::vector<double> sorted(v);
  std::sort(sorted.begin(), sorted.end());
  m.median = n % 2 ? sorted[n / 2] : 0.5 * (sorted[n / 2 - 1] + sorted[n / 2]);
  m.min = sorted.front();
  m.max = sorted.back();
  return m;
}

int stat_of(const std::vector<double>& v, int which, double* out) {
  if (v.empty()) return QZERR_SAMP_NOT_GENERATED;
  const Moments m = moments(v);
  const double vals[8] = {m.mean, m.var, m.std, m.skew, m.kurt, m.median, m.min, m.max};
  *out = vals[which];
  return 0;
}

}  // namespace

int sample_info(const QZsample_s& s, int key, void* out) {
  if (out == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (key >= QZ_DINFO_SAMP_MEAN && key <= QZ_DINFO_SAMP_MAX) {
    return stat_of(s.points, key - QZ_DINFO_SAMP_MEAN, static_cast<double*>(out));
  }
  if (key >= QZ_DINFO_SAMP_CI_MEAN && key <= QZ_DINFO_SAMP_CI_MAX) {
    if (s.ciPoints.empty()) return QZERR_SAMP_NO_CORRELATION;
    return stat_of(s.ciPoints, key - QZ_DINFO_SAMP_CI_MEAN, static_cast<double*>(out));
  }
  switch (key) {
    case QZ_IINFO_SAMP_SIZE: *static_cast<int*>(out) = static_cast<int>(s.points.size()); return 0;
    case QZ_IINFO_SAMP_CI_SIZE:
      *static_cast<int*>(out) = static_cast<int>(s.ciPoints.size());
      return 0;
    case QZ_IINFO_SAMP_METHOD: *static_cast<int*>(out) = s.method; return 0;
    case QZ_IINFO_SAMP_USED: *static_cast<int*>(out) = s.used; return 0;
    case QZ_IINFO_SAMP_DIST: *static_cast<int*>(out) = s.dist; return 0;
    case QZ_DINFO_SAMP_MAXABS: *static_cast<double*>(out) = s.maxAbs; return 0;
    default: return QZERR_INFO_NOT_AVAILABLE;
  }
}

namespace {

// Nodes at the quantiles (k + 1/2)/N. The stable law, whose quantile costs a root search of
// integrals, places its nodes at Cauchy quantiles and evaluates F there instead.
int build_li(QZsample s) {
  auto t = std::make_unique<LiTable>();
  const int n = kLiNodes;
  t->x.resize(n);
  t->F.resize(n);
  t->f.resize(n);
  const bool by_x = s->dist == QZ_DIST_SYM_STABLE;
  for (int k = 0; k < n; ++k) {
    const double p = (k + 0.5) / n;
    if (by_x) {
      t->x[k] = std::tan(3.14159265358979323846 * (p - 0.5));
      QZ_CALL(eval(s, QZ_FUNC_CDF, t->x[k], &t->F[k]));
    } else {
      QZ_CALL(eval(s, QZ_FUNC_CDFINV, p, &t->x[k]));
      t->F[k] = p;
    }
    QZ_CALL(eval(s, QZ_FUNC_PDF, t->x[k], &t->f[k]));
  }
  s->li = std::move(t);
  return 0;
}

double lerp(const std::vector<double>& xs, const std::vector<double>& ys, size_t i, double x) {
  const double w = xs[i + 1] > xs[i] ? (x - xs[i]) / (xs[i + 1] - xs[i]) : 0.0;
  return ys[i] + w * (ys[i + 1] - ys[i]);
}

}  // namespace

int eval_li(QZsample s, int kind, double x, double* out) {
  // Discrete, tabled and user laws, and the slope, are evaluated exactly.
  if (s->info == nullptr || s->info->discrete || kind == QZ_FUNC_PDFDIFF) {
    return eval(s, kind, x, out);
  }
  if (kind < QZ_FUNC_PDF || kind > QZ_FUNC_CDFINV) return QZERR_SAMP_BAD_CALL;
  if (!s->li) {
    double probe = 0.0;
    QZ_CALL(eval(s, QZ_FUNC_CDFINV, 0.5, &probe));
    QZ_CALL(build_li(s));
  }
  const LiTable& t = *s->li;
  if (kind == QZ_FUNC_CDFINV) {
    if (!(x >= 0.0 && x <= 1.0)) return QZERR_DIST_BAD_PROBABILITY;
    if (x <= t.F.front() || x >= t.F.back()) return eval(s, kind, x, out);
    const size_t i = std::upper_bound(t.F.begin(), t.F.end(), x) - t.F.begin() - 1;
    *out = lerp(t.F, t.x, i, x);
    return 0;
  }
  if (std::isnan(x)) return QZERR_DIST_BAD_VALUE;
  if (x <= t.x.front() || x >= t.x.back()) return eval(s, kind, x, out);
  const size_t i = std::upper_bound(t.x.begin(), t.x.end(), x) - t.x.begin() - 1;
  *out = kind == QZ_FUNC_CDF ? lerp(t.x, t.F, i, x) : lerp(t.x, t.f, i, x);
  return 0;
}

}  // namespace zento::random
