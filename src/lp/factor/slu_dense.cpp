// SLU dense kernel: once the active submatrix is mostly full, the rest of the factorization runs
// on a dense array with partial pivoting, which is far cheaper than sparse elimination with its
// searches and fill bookkeeping. The result goes into the same L etas and U rows.
#include <algorithm>
#include <cmath>
#include <new>

#include "lp/factor/slu.h"

namespace zento::lu {

namespace {
// Switch when the active part holds this share of a full matrix and is not too big to hold.
constexpr double kDenseShare = 0.5;
constexpr int kDenseMin = 32;
constexpr int kDenseMax = 3000;
constexpr double kDropRel = 1e-13;
}  // namespace

bool Slu::dense_worthwhile() const {
  const int r = m_ - npiv_;
  if (r < kDenseMin || r > kDenseMax) return false;
  int64_t nnz = 0;
  for (int i = 0; i < m_; ++i)
    if (row_done_[i] < 0) nnz += ur_.len(i);
  return static_cast<double>(nnz) >= kDenseShare * r * static_cast<double>(r);
}

// Right-looking LU of the active part, column by column, the largest entry of the column as
// pivot. A column with nothing above the drop level stays unpivoted (rank deficiency).
bool Slu::dense_kernel() {
  std::vector<int> rows, cols;
  for (int i = 0; i < m_; ++i)
    if (row_done_[i] < 0) rows.push_back(i);
  for (int j = 0; j < m_; ++j)
    if (col_done_[j] < 0) cols.push_back(j);
  const int nr = static_cast<int>(rows.size()), nc = static_cast<int>(cols.size());
  std::vector<int> cpos(m_, -1);
  for (int q = 0; q < nc; ++q) cpos[cols[q]] = q;
  std::vector<double> d;
  try {
    d.assign(static_cast<size_t>(nr) * nc, 0.0);  // row-major: d[i * nc + j]
  } catch (const std::bad_alloc&) {
    return false;
  }
  // A column whose entries all cancelled to rounding level of its own first values holds no
  // pivot: the drop level is relative to each column, so badly scaled columns are kept.
  std::vector<double> cmax(nc, 0.0);
  for (int a = 0; a < nr; ++a) {
    const int i = rows[a];
    const int* ii = ur_.idx(i);
    const double* vv = ur_.val(i);
    for (int q = 0, n = ur_.len(i); q < n; ++q) {
      d[static_cast<size_t>(a) * nc + cpos[ii[q]]] = vv[q];
      cmax[cpos[ii[q]]] = std::max(cmax[cpos[ii[q]]], std::fabs(vv[q]));
    }
    ur_.clear(i);
    row_bucket_take(i);
  }
  for (int j : cols) col_bucket_take(j);
  std::vector<char> row_used(nr, 0);
  std::vector<int> live;  // rows still active
  for (int a = 0; a < nr; ++a) live.push_back(a);
  for (int k = 0; k < nc; ++k) {
    int p = -1;
    double best = kDropRel * cmax[k];
    for (int a : live) {
      const double v = std::fabs(d[static_cast<size_t>(a) * nc + k]);
      if (v > best) {
        best = v;
        p = a;
      }
    }
    if (p < 0) continue;  // no pivot in this column
    const double* prow = &d[static_cast<size_t>(p) * nc];
    const double piv = prow[k];
    live.erase(std::find(live.begin(), live.end(), p));
    // U row of the pivot row: the columns after k.
    int cnt = 0;
    for (int j = k + 1; j < nc; ++j) cnt += prow[j] != 0.0;
    if (cnt > 0 && !ur_.reserve(rows[p], cnt)) return false;
    for (int j = k + 1; j < nc; ++j)
      if (prow[j] != 0.0) ur_.push(rows[p], cols[j], prow[j]);
    bool any = false;
    for (int a : live) {
      double* arow = &d[static_cast<size_t>(a) * nc];
      if (arow[k] == 0.0) continue;
      const double l = arow[k] / piv;
      arow[k] = 0.0;
      if (!any) {
        l_eta_of_row_[rows[p]] = static_cast<int>(l_row_.size());
        l_row_.push_back(rows[p]);
        any = true;
      }
      l_idx_.push_back(rows[a]);
      l_val_.push_back(l);
      for (int j = k + 1; j < nc; ++j) {
        if (prow[j] == 0.0) continue;
        const double old = arow[j];
        const double lu = l * prow[j];
        const double nv = old - lu;
        arow[j] = std::fabs(nv) <= kDropRel * std::max(std::fabs(old), std::fabs(lu)) ? 0.0 : nv;
      }
    }
    if (any) l_start_.push_back(static_cast<int>(l_idx_.size()));
    record_pivot(rows[p], cols[k], piv);
  }
  return true;
}

}  // namespace zento::lu
