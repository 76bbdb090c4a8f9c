// Correlation induction across samplers, after Iman and Conover (1982).
//
// Each sampler's points are ranked and turned into scores (van der Waerden scores
// Phi^-1(rank / (n + 1)), or with QZ_IPARAM_SAMP_SCALE 1 the standardized values). With S the
// correlation of the score matrix M and T the target, both factored as L L', the rows of
// M L_S^-T L_T^T have correlation exactly T. Each sampler's sorted points are then placed in
// the order of its transformed column, so the marginal sample is unchanged and the rank
// structure follows T. Kendall and Spearman targets are first mapped to the normal-score
// scale by sin(pi tau / 2) and 2 sin(pi rho / 6).
//
// A matrix that is not positive definite is repaired before factoring: by Higham's (2002)
// alternating projections with Dykstra's correction (mask bit 1 of QZ_IPARAM_SAMP_NCM_METHOD),
// by clipping its eigenvalues and rescaling to unit diagonal (bit 4), and at last by raising
// the diagonal in steps of QZ_DPARAM_SAMP_CDSINC (doubling) and rescaling. Matrices are small
// (one row per sampler) and dense; Cholesky and eigenvalues come from LAPACK.
#include <algorithm>
#include <cmath>
#include <numeric>

#include "core/dense_lapack.h"
#include "core/env.h"
#include "core/errors.h"
#include "random/sampler.h"
#include "random/special.h"
#include "zento_random.h"

namespace zento::random {

namespace {

using Mat = std::vector<double>;  // row-major d x d

bool cholesky(const Mat& a, int d, Mat& l) {
  l = a;
  return dense_cholesky(l, d, 1e-12);
}

// Symmetric eigen-decomposition a = v diag(w) v'; a failed decomposition leaves a as it is.
void sym_eigen(const Mat& a, int d, std::vector<double>& w, Mat& v) {
  if (dense_sym_eigen(a, d, w, v)) return;
  v.assign(a.size(), 0.0);
  for (int i = 0; i < d; ++i) {
    v[i * d + i] = 1.0;
    w[i] = a[i * d + i];
  }
}

// Projection onto {eigenvalues >= floor}.
Mat clip_eigen(const Mat& a, int d, double floor) {
  std::vector<double> w;
  Mat v;
  sym_eigen(a, d, w, v);
  Mat out(static_cast<size_t>(d) * d, 0.0);
  for (int k = 0; k < d; ++k) {
    const double lam = std::max(w[k], floor);
    for (int i = 0; i < d; ++i) {
      for (int j = 0; j < d; ++j) out[i * d + j] += lam * v[i * d + k] * v[j * d + k];
    }
  }
  return out;
}

void unit_diagonal(Mat& a, int d) {
  std::vector<double> s(d);
  for (int i = 0; i < d; ++i) s[i] = 1.0 / std::sqrt(a[i * d + i]);
  for (int i = 0; i < d; ++i) {
    for (int j = 0; j < d; ++j) a[i * d + j] *= s[i] * s[j];
  }
}

struct NcmParams {
  int method = 5;
  int iterlim = 100;
  double tol = 1e-7;
  double cutobj = -1e30;
  double cdsinc = 1e-6;
};

double frob_diff(const Mat& a, const Mat& b) {
  double s = 0.0;
  for (size_t i = 0; i < a.size(); ++i) s += (a[i] - b[i]) * (a[i] - b[i]);
  return std::sqrt(s);
}

// Factors a correlation matrix, repairing it first when it is not positive definite.
void factor_correlation(Mat a, int d, const NcmParams& prm, Mat& l) {
  if (cholesky(a, d, l)) return;
  constexpr double kFloor = 1e-8;
  if (prm.method & 1) {
    Mat y = a, ds(a.size(), 0.0);
    for (int it = 0; it < prm.iterlim; ++it) {
      Mat r(a.size());
      for (size_t i = 0; i < a.size(); ++i) r[i] = y[i] - ds[i];
      Mat x = clip_eigen(r, d, kFloor);
      for (size_t i = 0; i < a.size(); ++i) ds[i] = x[i] - r[i];
      Mat ynew = x;
      for (int i = 0; i < d; ++i) ynew[i * d + i] = 1.0;
      const double change = frob_diff(ynew, y) / std::max(1.0, frob_diff(ynew, Mat(a.size(), 0.0)));
      y.swap(ynew);
      if (change <= prm.tol || frob_diff(y, a) <= prm.cutobj) break;
    }
    if (cholesky(y, d, l)) return;
    a = y;
  }
  if (prm.method & 4) {
    Mat b = clip_eigen(a, d, kFloor);
    unit_diagonal(b, d);
    if (cholesky(b, d, l)) return;
    a = b;
  }
  double step = prm.cdsinc > 0.0 ? prm.cdsinc : 1e-6;
  for (int k = 0; k < 200; ++k) {
    Mat b = a;
    for (int i = 0; i < d; ++i) b[i * d + i] += step;
    unit_diagonal(b, d);
    if (cholesky(b, d, l)) return;
    step *= 2.0;
  }
  // Unreachable for finite input: the identity is the end of the road.
  l.assign(static_cast<size_t>(d) * d, 0.0);
  for (int i = 0; i < d; ++i) l[i * d + i] = 1.0;
}

// 0-based ranks, ties broken by position.
std::vector<int> ranks_of(const std::vector<double>& v) {
  std::vector<int> order(v.size());
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return v[a] < v[b]; });
  std::vector<int> r(v.size());
  for (size_t k = 0; k < order.size(); ++k) r[order[k]] = static_cast<int>(k);
  return r;
}

// Average ranks (1-based) for the Spearman coefficient.
std::vector<double> average_ranks(const std::vector<double>& v) {
  const size_t n = v.size();
  std::vector<int> order(n);
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return v[a] < v[b]; });
  std::vector<double> r(n);
  for (size_t i = 0; i < n;) {
    size_t j = i;
    while (j + 1 < n && v[order[j + 1]] == v[order[i]]) ++j;
    const double avg = 0.5 * (i + j) + 1.0;
    for (size_t k = i; k <= j; ++k) r[order[k]] = avg;
    i = j + 1;
  }
  return r;
}

// Merge sort counting the exchanges (discordant pairs).
long long sort_count(std::vector<double>& a, std::vector<double>& tmp, size_t lo, size_t hi) {
  if (hi - lo < 2) return 0;
  const size_t mid = lo + (hi - lo) / 2;
  long long c = sort_count(a, tmp, lo, mid) + sort_count(a, tmp, mid, hi);
  size_t i = lo, j = mid, k = lo;
  while (i < mid && j < hi) {
    if (a[j] < a[i]) {
      c += static_cast<long long>(mid - i);
      tmp[k++] = a[j++];
    } else {
      tmp[k++] = a[i++];
    }
  }
  while (i < mid) tmp[k++] = a[i++];
  while (j < hi) tmp[k++] = a[j++];
  std::copy(tmp.begin() + lo, tmp.begin() + hi, a.begin() + lo);
  return c;
}

long long tied_pairs(const std::vector<double>& sorted) {
  long long t = 0, run = 1;
  for (size_t i = 1; i <= sorted.size(); ++i) {
    if (i < sorted.size() && sorted[i] == sorted[i - 1]) {
      ++run;
    } else {
      t += run * (run - 1) / 2;
      run = 1;
    }
  }
  return t;
}

}  // namespace

double corr_pearson(const std::vector<double>& a, const std::vector<double>& b) {
  const size_t n = a.size();
  if (n < 2) return 0.0;
  double ma = 0.0, mb = 0.0;
  for (size_t i = 0; i < n; ++i) {
    ma += a[i];
    mb += b[i];
  }
  ma /= n;
  mb /= n;
  double sab = 0.0, saa = 0.0, sbb = 0.0;
  for (size_t i = 0; i < n; ++i) {
    const double da = a[i] - ma, db = b[i] - mb;
    sab += da * db;
    saa += da * da;
    sbb += db * db;
  }
  return (saa > 0.0 && sbb > 0.0) ? sab / std::sqrt(saa * sbb) : 0.0;
}

double corr_spearman(const std::vector<double>& a, const std::vector<double>& b) {
  return corr_pearson(average_ranks(a), average_ranks(b));
}

// Kendall's tau-b in O(n log n) (Knight 1966).
double corr_kendall(const std::vector<double>& a, const std::vector<double>& b) {
  const size_t n = a.size();
  if (n < 2) return 0.0;
  std::vector<size_t> order(n);
  std::iota(order.begin(), order.end(), 0);
  std::sort(order.begin(), order.end(), [&](size_t i, size_t j) {
    return a[i] < a[j] || (a[i] == a[j] && b[i] < b[j]);
  });
  std::vector<double> xs(n), ys(n);
  for (size_t k = 0; k < n; ++k) {
    xs[k] = a[order[k]];
    ys[k] = b[order[k]];
  }
  const long long n1 = tied_pairs(xs);
  long long n3 = 0, run = 1;
  for (size_t i = 1; i <= n; ++i) {
    if (i < n && xs[i] == xs[i - 1] && ys[i] == ys[i - 1]) {
      ++run;
    } else {
      n3 += run * (run - 1) / 2;
      run = 1;
    }
  }
  std::vector<double> tmp(n);
  const long long swaps = sort_count(ys, tmp, 0, n);
  const long long n2 = tied_pairs(ys);
  const long long n0 = static_cast<long long>(n) * (n - 1) / 2;
  const double num = static_cast<double>(n0 - n1 - n2 + n3 - 2 * swaps);
  const double den = std::sqrt(static_cast<double>(n0 - n1) * static_cast<double>(n0 - n2));
  return den > 0.0 ? num / den : 0.0;
}

int induce_correlation(QZsample* samples, int dim, int type, int nnz, const int* rows,
                       const int* cols, const double* vals) {
  if (type < QZ_CORR_PEARSON || type > QZ_CORR_SPEARMAN) return QZERR_BAD_CORRELATION_TYPE;
  if (dim < 1) return QZERR_INDEX_OUT_OF_RANGE;
  if (nnz < 0) return QZERR_INDEX_OUT_OF_RANGE;
  if (nnz > 0 && (rows == nullptr || cols == nullptr || vals == nullptr)) {
    return QZERR_ILLEGAL_NULL_POINTER;
  }
  size_t n = 0;
  for (int j = 0; j < dim; ++j) {
    if (samples[j] == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
    for (int k = 0; k < j; ++k) {
      if (samples[k] == samples[j]) return QZERR_SAMP_BAD_CALL;
    }
    if (samples[j]->points.empty()) return QZERR_SAMP_NOT_GENERATED;
    if (j == 0) n = samples[0]->points.size();
    if (samples[j]->points.size() != n) return QZERR_SAMP_BAD_CALL;
  }
  if (n < 2) return QZERR_SAMP_SIZE_TOO_SMALL;
  Mat given(static_cast<size_t>(dim) * dim, 0.0);
  for (int i = 0; i < dim; ++i) given[i * dim + i] = 1.0;
  for (int k = 0; k < nnz; ++k) {
    const int r = rows[k], c = cols[k];
    if (r < 0 || r >= dim || c < 0 || c >= dim) return QZERR_INDEX_OUT_OF_RANGE;
    if (!(vals[k] >= -1.0 && vals[k] <= 1.0)) return QZERR_DIST_BAD_VALUE;
    if (r == c) continue;
    given[r * dim + c] = given[c * dim + r] = vals[k];
  }
  Mat target = given;
  for (double& v : target) {
    if (v == 1.0) continue;
    if (type == QZ_CORR_KENDALL) v = std::sin(0.5 * kPi * v);
    if (type == QZ_CORR_SPEARMAN) v = 2.0 * std::sin(kPi * v / 6.0);
  }
  for (int i = 0; i < dim; ++i) target[i * dim + i] = 1.0;

  NcmParams prm;
  int scale = 0;
  if (QZenv env = samples[0]->env; env != nullptr) {
    prm.method = env->SPPam.samp_ncm_method;
    prm.iterlim = env->SPPam.samp_ncm_iterlim;
    prm.tol = env->SPPam.samp_ncm_opttol;
    prm.cutobj = env->SPPam.samp_ncm_cutobj;
    prm.cdsinc = env->SPPam.samp_cdsinc;
    scale = env->SPPam.samp_scale;
  }

  // Score matrix, column by column.
  std::vector<std::vector<double>> score(dim, std::vector<double>(n));
  for (int j = 0; j < dim; ++j) {
    const std::vector<double>& pts = samples[j]->points;
    if (scale == 1) {
      double m = 0.0, s2 = 0.0;
      for (double v : pts) m += v;
      m /= n;
      for (double v : pts) s2 += (v - m) * (v - m);
      const double sd = s2 > 0.0 ? std::sqrt(s2 / (n - 1)) : 1.0;
      for (size_t i = 0; i < n; ++i) score[j][i] = (pts[i] - m) / sd;
    } else {
      const std::vector<int> r = ranks_of(pts);
      for (size_t i = 0; i < n; ++i) score[j][i] = normal_quantile((r[i] + 1.0) / (n + 1.0));
    }
  }
  Mat s(static_cast<size_t>(dim) * dim, 1.0);
  for (int i = 0; i < dim; ++i) {
    for (int j = 0; j < i; ++j) s[i * dim + j] = s[j * dim + i] = corr_pearson(score[i], score[j]);
  }
  Mat ls, lt;
  factor_correlation(s, dim, prm, ls);
  factor_correlation(target, dim, prm, lt);

  // Row by row: y = L_S^-1 m (forward substitution), z = L_T y.
  std::vector<std::vector<double>> z(dim, std::vector<double>(n));
  std::vector<double> y(dim);
  for (size_t i = 0; i < n; ++i) {
    for (int a = 0; a < dim; ++a) {
      double t = score[a][i];
      for (int b = 0; b < a; ++b) t -= ls[a * dim + b] * y[b];
      y[a] = t / ls[a * dim + a];
    }
    for (int a = 0; a < dim; ++a) {
      double t = 0.0;
      for (int b = 0; b <= a; ++b) t += lt[a * dim + b] * y[b];
      z[a][i] = t;
    }
  }
  auto group = std::make_shared<CorrGroup>();
  group->type = type;
  group->dim = dim;
  group->target = given;
  for (int j = 0; j < dim; ++j) {
    std::vector<double> sorted = samples[j]->points;
    std::sort(sorted.begin(), sorted.end());
    const std::vector<int> r = ranks_of(z[j]);
    std::vector<double> ci(n);
    for (size_t i = 0; i < n; ++i) ci[i] = sorted[r[i]];
    samples[j]->ciPoints.swap(ci);
    samples[j]->corr = group;
    samples[j]->corrIndex = j;
    samples[j]->used = 0;
  }
  return 0;
}

namespace {

double corr_of(int type, const std::vector<double>& a, const std::vector<double>& b) {
  if (type == QZ_CORR_KENDALL) return corr_kendall(a, b);
  if (type == QZ_CORR_SPEARMAN) return corr_spearman(a, b);
  return corr_pearson(a, b);
}

int check_samples(QZsample* samples, int dim) {
  if (samples == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (dim < 1) return QZERR_INDEX_OUT_OF_RANGE;
  size_t n = 0;
  for (int j = 0; j < dim; ++j) {
    if (samples[j] == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
    const std::vector<double>& v = view_points(*samples[j]);
    if (v.empty()) return QZERR_SAMP_NOT_GENERATED;
    if (j == 0) n = v.size();
    if (v.size() != n) return QZERR_SAMP_BAD_CALL;
  }
  return 0;
}

}  // namespace

int correlation_matrix(QZsample* samples, int dim, int type, double* out) {
  if (type < QZ_CORR_TARGET || type > QZ_CORR_SPEARMAN) return QZERR_BAD_CORRELATION_TYPE;
  if (samples == nullptr || out == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (dim < 1) return QZERR_INDEX_OUT_OF_RANGE;
  if (type == QZ_CORR_TARGET) {
    for (int j = 0; j < dim; ++j) {
      if (samples[j] == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
      if (!samples[j]->corr || samples[j]->corr != samples[0]->corr) {
        return QZERR_SAMP_NO_CORRELATION;
      }
    }
    const CorrGroup& g = *samples[0]->corr;
    for (int i = 0; i < dim; ++i) {
      for (int j = 0; j < dim; ++j) {
        out[i * dim + j] = g.target[samples[i]->corrIndex * g.dim + samples[j]->corrIndex];
      }
    }
    return 0;
  }
  QZ_CALL(check_samples(samples, dim));
  for (int i = 0; i < dim; ++i) {
    out[i * dim + i] = 1.0;
    for (int j = 0; j < i; ++j) {
      out[i * dim + j] = out[j * dim + i] =
          corr_of(type, view_points(*samples[i]), view_points(*samples[j]));
    }
  }
  return 0;
}

int correlation_diff(QZsample* samples, int dim, int kind, double* out) {
  if (samples == nullptr || out == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (kind < 0 || kind > 2) return QZERR_PARAM_OUT_OF_RANGE;
  if (dim < 1) return QZERR_INDEX_OUT_OF_RANGE;
  for (int j = 0; j < dim; ++j) {
    if (samples[j] == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
    if (!samples[j]->corr || samples[j]->corr != samples[0]->corr) {
      return QZERR_SAMP_NO_CORRELATION;
    }
  }
  const CorrGroup& g = *samples[0]->corr;
  double mx = 0.0, sq = 0.0, sum = 0.0;
  int cnt = 0;
  for (int i = 0; i < dim; ++i) {
    for (int j = 0; j < i; ++j) {
      const double tgt = g.target[samples[i]->corrIndex * g.dim + samples[j]->corrIndex];
      const double got = corr_of(g.type, samples[i]->ciPoints, samples[j]->ciPoints);
      const double d = std::fabs(tgt - got);
      mx = std::max(mx, d);
      sq += d * d;
      sum += d;
      ++cnt;
    }
  }
  *out = kind == 0 ? mx : (kind == 1 ? std::sqrt(sq) : (cnt ? sum / cnt : 0.0));
  return 0;
}

}  // namespace zento::random
