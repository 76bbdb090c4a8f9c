// SLU factorization: loading the basis, singleton passes, the Markowitz kernel and the final
// row/column copies of U and the row copy of L.
#include <algorithm>
#include <climits>
#include <cmath>

#include "lp/factor/slu.h"
#include "zento_errors.h"

namespace zento::lu {

namespace {
// Relative size below which the result of a cancellation counts as zero.
constexpr double kDropRel = 1e-13;
}  // namespace

Slu::Slu(int m, LuOptions* opt, LuColumnFn datacol, void* host)
    : LuEngine(m, opt, datacol, host) {
  eps_pivrel_ = eps_pivcur_ = opt->eps_pivrel;
  min_rcond_ = opt->ini_rcond;
}

// ---- buckets -------------------------------------------------------------------------------

void Slu::row_bucket_put(int r) {
  const int k = ur_.len(r);
  rb_at_[r] = k;
  rb_prev_[r] = -1;
  rb_next_[r] = rb_head_[k];
  if (rb_head_[k] >= 0) rb_prev_[rb_head_[k]] = r;
  rb_head_[k] = r;
}

void Slu::row_bucket_take(int r) {
  const int k = rb_at_[r];
  if (k < 0) return;
  const int p = rb_prev_[r], n = rb_next_[r];
  if (p >= 0)
    rb_next_[p] = n;
  else
    rb_head_[k] = n;
  if (n >= 0) rb_prev_[n] = p;
  rb_at_[r] = -1;
}

void Slu::col_bucket_put(int c) {
  const int k = ac_.len(c);
  cb_at_[c] = k;
  cb_prev_[c] = -1;
  cb_next_[c] = cb_head_[k];
  if (cb_head_[k] >= 0) cb_prev_[cb_head_[k]] = c;
  cb_head_[k] = c;
}

void Slu::col_bucket_take(int c) {
  const int k = cb_at_[c];
  if (k < 0) return;
  const int p = cb_prev_[c], n = cb_next_[c];
  if (p >= 0)
    cb_next_[p] = n;
  else
    cb_head_[k] = n;
  if (n >= 0) cb_prev_[n] = p;
  cb_at_[c] = -1;
}

void Slu::init_buckets() {
  rb_head_.assign(m_ + 1, -1);
  cb_head_.assign(m_ + 1, -1);
  rb_next_.assign(m_, -1);
  rb_prev_.assign(m_, -1);
  rb_at_.assign(m_, -1);
  cb_next_.assign(m_, -1);
  cb_prev_.assign(m_, -1);
  cb_at_.assign(m_, -1);
  for (int i = m_ - 1; i >= 0; --i) row_bucket_put(i);
  for (int j = m_ - 1; j >= 0; --j) col_bucket_put(j);
}

double Slu::row_max(int r) {
  if (rowmax_[r] < 0.0) {
    double mx = 0.0;
    const double* v = ur_.val(r);
    for (int k = 0, n = ur_.len(r); k < n; ++k) mx = std::max(mx, std::fabs(v[k]));
    rowmax_[r] = mx;
  }
  return rowmax_[r];
}

// ---- loading -------------------------------------------------------------------------------

int Slu::init_factor(const int* rbas) {
  std::vector<int>& rcnt = elim_rows_;  // scratch
  rcnt.assign(m_, 0);
  std::vector<int> ccnt(m_, 0);
  mk_.resize(m_);
  int64_t nnz = 0;
  bnorm1_ = 0.0;
  bmax_ = 0.0;
  for (int j = 0; j < m_; ++j) {
    LuColumn col;
    const int rc = datacol_(host_, rbas[j], &col);
    if (rc != 0) return rc;
    if (col.len < 0 || (col.len > 0 && (!col.idx || !col.val))) return QZERR_INDEX_OUT_OF_RANGE;
    mk_.next();
    double s = 0.0;
    for (int k = 0; k < col.len; ++k) {
      const int i = col.idx[k];
      if (i < 0 || i >= m_) return QZERR_INDEX_OUT_OF_RANGE;
      if (col.val[k] == 0.0) continue;
      if (!std::isfinite(col.val[k])) return QZERR_INDEX_OUT_OF_RANGE;
      s += std::fabs(col.val[k]);
      bmax_ = std::max(bmax_, std::fabs(col.val[k]));
      if (mk_.test_set(i)) continue;  // duplicate entry: merged below
      ++rcnt[i];
      ++ccnt[j];
      ++nnz;
    }
    bnorm1_ = std::max(bnorm1_, s);
  }
  const int growth = opt_->mem_exp < 2 ? 5 : opt_->mem_exp;
  ur_.init(m_, std::max<int64_t>(500, 3 * nnz + 4 * static_cast<int64_t>(m_)), true, growth);
  ac_.init(m_, std::max<int64_t>(500, 3 * nnz + 4 * static_cast<int64_t>(m_)), false, growth);
  if (!ur_.layout(rcnt.data(), 2) || !ac_.layout(ccnt.data(), 2)) return QZERR_OUT_OF_MEMORY;
  for (int j = 0; j < m_; ++j) {
    LuColumn col;
    const int rc = datacol_(host_, rbas[j], &col);
    if (rc != 0) return rc;
    for (int k = 0; k < col.len; ++k) {
      const int i = col.idx[k];
      const double v = col.val[k];
      if (v == 0.0) continue;
      const int n = ur_.len(i);
      if (n > 0 && ur_.idx(i)[n - 1] == j) {  // repeated row in this column
        ur_.val(i)[n - 1] += v;
        continue;
      }
      ur_.push(i, j, v);
      ac_.push(j, i, 0.0);
    }
  }
  return 0;
}

// ---- pivots --------------------------------------------------------------------------------

void Slu::record_pivot(int r, int c, double v) {
  prow_[npiv_] = r;
  pcol_[npiv_] = c;
  pval_[npiv_] = v;
  row_done_[r] = npiv_;
  col_done_[c] = npiv_;
  ++npiv_;
  const double a = std::fabs(v);
  min_piv_ = std::min(min_piv_, a);
  max_piv_ = std::max(max_piv_, a);
}

// Column c has one active entry: no elimination, the row's other entries become its U row.
bool Slu::pivot_col_singleton(int c) {
  const int r = ac_.idx(c)[0];
  const int k = ur_.find(r, c);
  const double v = ur_.val(r)[k];
  row_bucket_take(r);
  col_bucket_take(c);
  ur_.remove_at(r, k);
  ac_.clear(c);
  const int* ri = ur_.idx(r);
  for (int q = 0, n = ur_.len(r); q < n; ++q) {
    const int cc = ri[q];
    col_bucket_take(cc);
    ac_.remove(cc, r);
    col_bucket_put(cc);
  }
  record_pivot(r, c, v);
  return true;
}

// Row r has one active entry: the other rows of its column lose that entry, no fill.
bool Slu::pivot_row_singleton(int r) {
  const int c = ur_.idx(r)[0];
  const double v = ur_.val(r)[0];
  row_bucket_take(r);
  col_bucket_take(c);
  ur_.clear(r);
  const int nrows = ac_.len(c);
  elim_rows_.assign(ac_.idx(c), ac_.idx(c) + nrows);
  ac_.clear(c);
  bool any = false;
  for (int t = 0; t < nrows; ++t) {
    const int i = elim_rows_[t];
    if (i == r) continue;
    const int k = ur_.find(i, c);
    const double l = ur_.val(i)[k] / v;
    row_bucket_take(i);
    ur_.remove_at(i, k);
    rowmax_[i] = -1.0;
    row_bucket_put(i);
    if (!any) {
      l_eta_of_row_[r] = static_cast<int>(l_row_.size());
      l_row_.push_back(r);
      any = true;
    }
    l_idx_.push_back(i);
    l_val_.push_back(l);
  }
  record_pivot(r, c, v);
  if (any) l_start_.push_back(static_cast<int>(l_idx_.size()));
  return true;
}

// General pivot (r, c): eliminate column c from every other active row, adding fill.
bool Slu::pivot_general(int r, int c) {
  const int kp = ur_.find(r, c);
  const double v = ur_.val(r)[kp];
  row_bucket_take(r);
  col_bucket_take(c);
  ur_.remove_at(r, kp);
  const int plen = ur_.len(r);
  piv_idx_.assign(ur_.idx(r), ur_.idx(r) + plen);
  piv_val_.assign(ur_.val(r), ur_.val(r) + plen);
  for (int p = 0; p < plen; ++p) {
    colmap_[piv_idx_[p]] = p;
    col_bucket_take(piv_idx_[p]);
    ac_.remove(piv_idx_[p], r);
  }
  const int nrows = ac_.len(c);
  elim_rows_.assign(ac_.idx(c), ac_.idx(c) + nrows);
  ac_.clear(c);
  bool any = false;
  if (static_cast<int>(seen_.size()) < plen) seen_.resize(plen, 0);
  for (int t = 0; t < nrows; ++t) {
    const int i = elim_rows_[t];
    if (i == r) continue;
    row_bucket_take(i);
    const int k = ur_.find(i, c);
    const double l = ur_.val(i)[k] / v;
    ur_.remove_at(i, k);
    if (!any) {
      l_eta_of_row_[r] = static_cast<int>(l_row_.size());
      l_row_.push_back(r);
      any = true;
    }
    l_idx_.push_back(i);
    l_val_.push_back(l);
    if (++seen_stamp_ == INT_MAX) {
      std::fill(seen_.begin(), seen_.end(), 0);
      seen_stamp_ = 1;
    }
    int touched = 0;
    {
      int* ii = ur_.idx(i);
      double* vv = ur_.val(i);
      int n = ur_.len(i);
      for (int q = 0; q < n;) {
        const int p = colmap_[ii[q]];
        if (p < 0) {
          ++q;
          continue;
        }
        seen_[p] = seen_stamp_;
        ++touched;
        const double old = vv[q];
        const double lu = l * piv_val_[p];
        const double nv = old - lu;
        if (std::fabs(nv) <= kDropRel * std::max(std::fabs(old), std::fabs(lu))) {
          ac_.remove(ii[q], i);
          ur_.remove_at(i, q);
          --n;
          continue;
        }
        vv[q] = nv;
        ++q;
      }
    }
    const int nfill = plen - touched;
    if (nfill > 0) {
      if (!ur_.reserve(i, nfill)) return false;
      for (int p = 0; p < plen; ++p) {
        if (seen_[p] == seen_stamp_) continue;
        ur_.push(i, piv_idx_[p], -l * piv_val_[p]);
        if (!ac_.append(piv_idx_[p], i, 0.0)) return false;
      }
    }
    rowmax_[i] = -1.0;
    row_bucket_put(i);
  }
  for (int p = 0; p < plen; ++p) {
    colmap_[piv_idx_[p]] = -1;
    col_bucket_put(piv_idx_[p]);
  }
  record_pivot(r, c, v);
  if (any) l_start_.push_back(static_cast<int>(l_idx_.size()));
  return true;
}

// Markowitz search over the smallest count buckets, rows first, until num_candits lines with an
// acceptable entry were seen. A column none of whose entries passes the threshold leaves its
// bucket until its count changes, so failing columns are not scanned again and again (rows
// always hold an acceptable entry: their largest).
bool Slu::pick_pivot(int* pr, int* pc) {
  const double u = eps_pivcur_;
  const int ncand = std::max(1, opt_->num_candits);
  int64_t best = INT64_MAX;
  int br = -1, bc = -1, searched = 0;
  for (int k = 2; k <= m_; ++k) {
    const int64_t km1 = k - 1;
    if (br >= 0 && best <= km1 * km1) break;
    for (int i = rb_head_[k]; i >= 0; i = rb_next_[i]) {
      const double tol = u * row_max(i);
      const int* ii = ur_.idx(i);
      const double* vv = ur_.val(i);
      for (int q = 0; q < k; ++q) {
        const int64_t merit = km1 * (ac_.len(ii[q]) - 1);
        if (merit < best && std::fabs(vv[q]) >= tol) {
          best = merit;
          br = i;
          bc = ii[q];
        }
      }
      if (++searched >= ncand) goto done;
    }
    for (int c = cb_head_[k], next; c >= 0; c = next) {
      next = cb_next_[c];
      const int* rows = ac_.idx(c);
      bool acceptable = false;
      for (int q = 0; q < k; ++q) {
        const int i = rows[q];
        const int kk = ur_.find(i, c);
        if (std::fabs(ur_.val(i)[kk]) < u * row_max(i)) continue;
        acceptable = true;
        const int64_t merit = km1 * (ur_.len(i) - 1);
        if (merit < best) {
          best = merit;
          br = i;
          bc = c;
        }
      }
      if (!acceptable) {
        col_bucket_take(c);
        continue;
      }
      if (++searched >= ncand) goto done;
    }
  }
done:
  if (br < 0) return false;
  *pr = br;
  *pc = bc;
  return true;
}

// ---- driver --------------------------------------------------------------------------------

int Slu::refactor(const int* rbas) {
  if (static_cast<int>(w_.x.size()) != m_) {
    w_.resize(m_);
    w2_.resize(m_);
    rw_.resize(m_);
  } else {
    w_.clear_all();
    w2_.clear_all();
  }
  pending2_ = false;
  umax_ = 0.0;
  min_piv_ = 1e30;
  max_piv_ = 0.0;
  npiv_ = 0;
  rank_ = 0;
  sing_rows_.clear();
  sing_slots_.clear();
  l_start_.assign(1, 0);
  l_idx_.clear();
  l_val_.clear();
  l_row_.clear();
  l_eta_of_row_.assign(m_, -1);
  r_start_.assign(1, 0);
  r_idx_.clear();
  r_val_.clear();
  r_row_.clear();
  r_head_.assign(m_, -1);
  r_next_.clear();
  r_eta_of_.clear();
  r_mark_.clear();
  e_start_.assign(1, 0);
  e_idx_.clear();
  e_val_.clear();
  e_slot_.clear();
  e_piv_.clear();
  spike_n_ = -2;
  nupdates_ = 0;
  update_type_ = opt_->update_type == 0 ? 0 : 1;
  prow_.assign(m_, -1);
  pcol_.assign(m_, -1);
  pval_.assign(m_, 0.0);
  row_done_.assign(m_, -1);
  col_done_.assign(m_, -1);
  rowmax_.assign(m_, -1.0);
  colmap_.assign(m_, -1);
  const int rc = init_factor(rbas);
  if (rc == QZERR_OUT_OF_MEMORY) return kLuNoMemory;
  if (rc != 0) return -rc;  // bad column data: reported as an error code by the caller
  init_buckets();
  // Column singletons, then row singletons, then the kernel.
  while (cb_head_[1] >= 0) pivot_col_singleton(cb_head_[1]);
  while (rb_head_[1] >= 0) pivot_row_singleton(rb_head_[1]);
  int next_check = npiv_;
  while (npiv_ < m_) {
    if (rb_head_[1] >= 0) {
      pivot_row_singleton(rb_head_[1]);
    } else if (cb_head_[1] >= 0) {
      pivot_col_singleton(cb_head_[1]);
    } else {
      if (npiv_ >= next_check) {
        if (dense_worthwhile()) {
          if (!dense_kernel()) return kLuNoMemory;
          break;
        }
        next_check = npiv_ + std::max(16, (m_ - npiv_) / 16);
      }
      int r, c;
      if (!pick_pivot(&r, &c)) break;
      if (!pivot_general(r, c)) return kLuNoMemory;
    }
  }
  rank_ = npiv_;
  if (npiv_ < m_) {
    for (int i = 0; i < m_; ++i)
      if (row_done_[i] < 0) sing_rows_.push_back(i);
    for (int j = 0; j < m_; ++j)
      if (col_done_[j] < 0) sing_slots_.push_back(j);
    return kLuSingular;
  }
  return finish_factor() ? kLuOk : kLuNoMemory;
}

bool Slu::finish_factor() {
  order_.assign(prow_.begin(), prow_.end());
  pos_.assign(m_, 0);
  slot_of_row_.assign(m_, 0);
  row_of_slot_.assign(m_, 0);
  diag_.assign(m_, 0.0);
  dinv_.assign(m_, 0.0);
  for (int k = 0; k < m_; ++k) {
    const int r = prow_[k];
    pos_[r] = k;
    slot_of_row_[r] = pcol_[k];
    row_of_slot_[pcol_[k]] = r;
    diag_[r] = pval_[k];
    dinv_[r] = 1.0 / pval_[k];
    umax_ = std::max(umax_, std::fabs(pval_[k]));
  }
  row_step_ = pos_;
  // U rows over row ids, and the column copy built walking pivots from last to first.
  std::vector<int>& ccnt = elim_rows_;
  ccnt.assign(m_, 0);
  for (int r = 0; r < m_; ++r) {
    int* ii = ur_.idx(r);
    const double* vv = ur_.val(r);
    for (int q = 0, n = ur_.len(r); q < n; ++q) {
      ii[q] = row_of_slot_[ii[q]];
      ++ccnt[ii[q]];
      umax_ = std::max(umax_, std::fabs(vv[q]));
    }
  }
  const int growth = opt_->mem_exp < 2 ? 5 : opt_->mem_exp;
  uc_.init(m_, 2 * ur_.nnz() + 8 * static_cast<int64_t>(m_), true, growth);
  if (!uc_.layout(ccnt.data(), 4)) return false;
  for (int k = m_ - 1; k >= 0; --k) {
    const int r = order_[k];
    const int* ii = ur_.idx(r);
    const double* vv = ur_.val(r);
    for (int q = 0, n = ur_.len(r); q < n; ++q) uc_.push(ii[q], r, vv[q]);
  }
  build_lt();
  return true;
}

void Slu::build_lt() {
  const int T = static_cast<int>(l_row_.size());
  std::vector<int>& cnt = elim_rows_;
  cnt.assign(m_ + 1, 0);
  for (int i : l_idx_) ++cnt[i + 1];
  for (int i = 0; i < m_; ++i) cnt[i + 1] += cnt[i];
  lr_start_ = cnt;
  lr_idx_.resize(l_idx_.size());
  lr_val_.resize(l_idx_.size());
  std::vector<int> fill(lr_start_.begin(), lr_start_.end() - 1);
  for (int t = 0; t < T; ++t) {
    const int r = l_row_[t];
    for (int q = l_start_[t]; q < l_start_[t + 1]; ++q) {
      const int i = l_idx_[q];
      lr_idx_[fill[i]] = r;
      lr_val_[fill[i]++] = l_val_[q];
    }
  }
}

}  // namespace zento::lu
