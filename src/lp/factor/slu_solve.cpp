// SLU forward and backward solves: L etas, row etas, U, product-form etas; each stage either
// over the depth-first reach of a sparse vector or as a dense loop.
#include <algorithm>
#include <cmath>

#include "lp/factor/slu.h"

namespace zento::lu {

void store_work(WorkVec& w, SpVec& out, const int* map, bool dense_out, double eps) {
  const int m = static_cast<int>(w.x.size());
  if (static_cast<int>(out.val.size()) < m) out.resize(m);
  if (dense_out) {
    double* o = out.val.data();
    if (w.n >= 0) {
      std::fill(o, o + m, 0.0);
      for (int k = 0; k < w.n; ++k) {
        const int i = w.list[k];
        const double v = w.x[i];
        w.x[i] = 0.0;
        if (std::fabs(v) > eps) o[map ? map[i] : i] = v;
      }
    } else {
      for (int i = 0; i < m; ++i) {
        const double v = w.x[i];
        w.x[i] = 0.0;
        o[map ? map[i] : i] = std::fabs(v) > eps ? v : 0.0;
      }
    }
    w.n = 0;
    out.n = -1;
    ++out.ndense;
    return;
  }
  int cnt = 0;
  if (w.n >= 0) {
    for (int k = 0; k < w.n; ++k) {
      const int i = w.list[k];
      const double v = w.x[i];
      w.x[i] = 0.0;
      if (std::fabs(v) > eps) {
        out.idx[cnt] = map ? map[i] : i;
        out.val[cnt++] = v;
      }
    }
  } else {
    for (int i = 0; i < m; ++i) {
      const double v = w.x[i];
      if (v == 0.0) continue;
      w.x[i] = 0.0;
      if (std::fabs(v) > eps) {
        out.idx[cnt] = map ? map[i] : i;
        out.val[cnt++] = v;
      }
    }
  }
  w.n = 0;
  out.n = cnt;
  ++out.nsparse;
}

void load_work_sv(SvRef v, WorkVec& w, const int* map) {
  const int m = static_cast<int>(w.x.size());
  double* val = v.val;
  if (*v.n < 0) {
    for (int i = 0; i < m; ++i) {
      w.x[map ? map[i] : i] = val[i];
      val[i] = 0.0;
    }
    w.n = -1;
    return;
  }
  w.n = 0;
  for (int k = 0, n = *v.n; k < n; ++k) {
    const int s = v.idx[k];
    const double a = val[s];
    val[s] = 0.0;
    const int i = map ? map[s] : s;
    if (w.x[i] == 0.0) w.list[w.n++] = i;
    w.x[i] += a;
    if (w.x[i] == 0.0) w.x[i] = 1e-100;  // keep the entry listed once
  }
}

int store_work_sv(WorkVec& w, SvRef v, const int* map, const int* inv, bool pos_order,
                  double eps, double drop) {
  const int m = static_cast<int>(w.x.size());
  const double keep = std::max(eps, drop);
  double* val = v.val;
  int* idx = v.idx;
  int cnt = 0, c = 0;
  if (pos_order && w.n < 0) {
    // One pass in output order: position s takes work entry inv[s]. No branch on the
    // entries: on a dense result about half survive, which defeats any predictor. The
    // output positions are zero on entry.
    double* x = w.x.data();
    for (int s = 0; s < m; ++s) {
      const int i = inv ? inv[s] : s;
      const double a = x[i];
      x[i] = 0.0;
      const double fa = std::fabs(a);
      cnt += fa > eps;
      const bool k = fa > keep;
      val[s] = k ? a : 0.0;
      idx[c] = s;
      c += k;
    }
    w.n = 0;
    *v.n = c;
    return cnt;
  }
  auto put = [&](int i) {
    const double a = w.x[i];
    w.x[i] = 0.0;
    if (std::fabs(a) <= eps) return;
    ++cnt;
    if (std::fabs(a) <= keep) return;
    const int s = map ? map[i] : i;
    val[s] = a;
    idx[c++] = s;
  };
  if (w.n >= 0) {
    for (int k = 0; k < w.n; ++k) put(w.list[k]);
  } else {
    for (int i = 0; i < m; ++i)
      if (w.x[i] != 0.0) put(i);
  }
  if (pos_order) {
    // Position order: a short list is sorted, a long one rebuilt by a scan.
    int lg = 1;
    while ((1 << lg) < c) ++lg;
    if (4L * c * lg < m) {
      std::sort(idx, idx + c);
    } else {
      c = 0;
      for (int s = 0; s < m; ++s)
        if (val[s] != 0.0) idx[c++] = s;
    }
  }
  w.n = 0;
  *v.n = c;
  return cnt;
}

// Rebuilds the list of a sparse work vector from a reach: keeps the nonzeros only.
static void keep_nonzeros(WorkVec& w, const int* nodes, int cnt) {
  int n = 0;
  for (int q = 0; q < cnt; ++q) {
    const int i = nodes[q];
    if (w.x[i] != 0.0) w.list[n++] = i;
  }
  w.n = n;
}

void Slu::relist(WorkVec& w) {
  int n = 0;
  for (int i = 0; i < m_; ++i)
    if (w.x[i] != 0.0) w.list[n++] = i;
  w.n = n;
}

void Slu::ftran_l(WorkVec& w, bool sparse) {
  if (l_row_.empty()) return;
  if (sparse && w.n >= 0 && ftran_l_sparse(w)) return;
  ftran_l_dense(w);
}

bool Slu::ftran_l_sparse(WorkVec& w) {
  const double eps = opt_->eps_nonz;
  const int limit = static_cast<int>(opt_->spvtol_ftran * m_);
  auto adj = [this](int r) -> std::pair<const int*, const int*> {
    const int t = l_eta_of_row_[r];
    if (t < 0) return {nullptr, nullptr};
    return {l_idx_.data() + l_start_[t], l_idx_.data() + l_start_[t + 1]};
  };
  const int top = dfs_reach(m_, w.n, w.list.data(), adj, mk_, rw_, limit);
  if (top < 0) return false;
  const int* out = rw_.out.data();
  for (int q = top; q < m_; ++q) {
    const int r = out[q];
    const double xr = w.x[r];
    const int t = l_eta_of_row_[r];
    if (t < 0) continue;
    if (std::fabs(xr) <= eps) continue;
    const int b = l_start_[t], e = l_start_[t + 1];
    work_count_ += e - b;
    for (int k = b; k < e; ++k) w.x[l_idx_[k]] -= l_val_[k] * xr;
  }
  work_count_ += m_ - top;
  keep_nonzeros(w, out + top, m_ - top);
  return true;
}

void Slu::ftran_l_dense(WorkVec& w) {
  const double eps = opt_->eps_nonz;
  const int T = static_cast<int>(l_row_.size());
  w.n = -1;
  for (int t = 0; t < T; ++t) {
    const double xr = w.x[l_row_[t]];
    if (std::fabs(xr) <= eps) continue;
    for (int k = l_start_[t], e = l_start_[t + 1]; k < e; ++k) w.x[l_idx_[k]] -= l_val_[k] * xr;
  }
  work_count_ += m_ + static_cast<int64_t>(l_idx_.size());
}

// Two dense vectors through the L etas together: each eta's indices and values are read
// once; each vector takes exactly the operations of its own pass.
void Slu::ftran_l_dense2(WorkVec& a, WorkVec& b) {
  const double eps = opt_->eps_nonz;
  const int T = static_cast<int>(l_row_.size());
  a.n = -1;
  b.n = -1;
  double* xa = a.x.data();
  double* xb = b.x.data();
  const int* li = l_idx_.data();
  const double* lv = l_val_.data();
  for (int t = 0; t < T; ++t) {
    const int r = l_row_[t];
    const double ra = xa[r], rb = xb[r];
    const bool ua = std::fabs(ra) > eps, ub = std::fabs(rb) > eps;
    const int kb = l_start_[t], ke = l_start_[t + 1];
    if (ua && ub) {
      for (int k = kb; k < ke; ++k) {
        const int i = li[k];
        const double v = lv[k];
        xa[i] -= v * ra;
        xb[i] -= v * rb;
      }
    } else if (ua) {
      for (int k = kb; k < ke; ++k) xa[li[k]] -= lv[k] * ra;
    } else if (ub) {
      for (int k = kb; k < ke; ++k) xb[li[k]] -= lv[k] * rb;
    }
  }
  work_count_ += 2 * (m_ + static_cast<int64_t>(l_idx_.size()));
}

void Slu::ftran_r(WorkVec& w) {
  const int K = static_cast<int>(r_row_.size());
  if (K == 0) return;
  if (w.n >= 0 && 10 * w.n < m_) {
    // Sparse: only the etas that read a nonzero, in the same order and with the same sums
    // as the full pass (an eta whose entries all read zeros changes nothing there either).
    int first = K, marked = 0;
    auto reach = [&](int i, int after) {
      for (int q = r_head_[i]; q >= 0; q = r_next_[q]) {
        const int k = r_eta_of_[q];
        if (k <= after) break;  // chains run from the newest eta down
        marked += r_mark_[k] == 0;
        r_mark_[k] = 1;
        first = std::min(first, k);
      }
    };
    for (int t = 0, n = w.n; t < n; ++t) reach(w.list[t], -1);
    // Once a quarter of the etas is hit the full pass costs less than the chains.
    const bool sparse = 4 * marked <= K;
    if (!sparse) std::fill(r_mark_.begin() + first, r_mark_.begin() + K, 0);
    for (int k = sparse ? first : K; k < K; ++k) {
      if (!r_mark_[k]) continue;
      r_mark_[k] = 0;
      double dot = 0.0;
      for (int q = r_start_[k], e = r_start_[k + 1]; q < e; ++q) dot += r_val_[q] * w.x[r_idx_[q]];
      work_count_ += r_start_[k + 1] - r_start_[k];
      if (dot == 0.0) continue;
      const int r = r_row_[k];
      const double old = w.x[r];
      double nv = old - dot;
      if (old == 0.0) {
        w.list[w.n++] = r;
        reach(r, k);
      }
      if (nv == 0.0) nv = 1e-100;
      w.x[r] = nv;
    }
    if (sparse) return;
  }
  for (int k = 0; k < K; ++k) {
    double dot = 0.0;
    for (int q = r_start_[k], e = r_start_[k + 1]; q < e; ++q) dot += r_val_[q] * w.x[r_idx_[q]];
    work_count_ += r_start_[k + 1] - r_start_[k];
    if (dot == 0.0) continue;
    const int r = r_row_[k];
    const double old = w.x[r];
    double nv = old - dot;
    if (w.n >= 0) {
      if (old == 0.0) w.list[w.n++] = r;
      if (nv == 0.0) nv = 1e-100;
    }
    w.x[r] = nv;
  }
}

// The full pass of the row etas for two dense vectors (both unlisted).
void Slu::ftran_r_dense2(WorkVec& a, WorkVec& b) {
  const int K = static_cast<int>(r_row_.size());
  double* xa = a.x.data();
  double* xb = b.x.data();
  const int* ri = r_idx_.data();
  const double* rv = r_val_.data();
  for (int k = 0; k < K; ++k) {
    double da = 0.0, db = 0.0;
    for (int q = r_start_[k], e = r_start_[k + 1]; q < e; ++q) {
      const int i = ri[q];
      const double v = rv[q];
      da += v * xa[i];
      db += v * xb[i];
    }
    work_count_ += 2 * (r_start_[k + 1] - r_start_[k]);
    const int r = r_row_[k];
    if (da != 0.0) xa[r] = xa[r] - da;
    if (db != 0.0) xb[r] = xb[r] - db;
  }
}

// U x = w (columns of U, pivots in reverse order) or U^T x = w (rows, pivots in order): the
// same elimination over a different store. A sparse right-hand side is solved over its reach
// only; past `spvtol` of m the reach is abandoned for the dense loop.
void Slu::solve_u(WorkVec& w, bool sparse, const LineStore& st, double spvtol, bool reverse) {
  if (sparse && w.n >= 0 && solve_u_sparse(w, st, spvtol)) return;
  solve_u_dense(w, st, reverse);
}

bool Slu::solve_u_sparse(WorkVec& w, const LineStore& st, double spvtol) {
  const double eps = opt_->eps_nonz;
  const int limit = static_cast<int>(spvtol * m_);
  auto adj = [&st](int r) -> std::pair<const int*, const int*> {
    const int* b = st.idx(r);
    return {b, b + st.len(r)};
  };
  const int top = dfs_reach(m_, w.n, w.list.data(), adj, mk_, rw_, limit);
  if (top < 0) return false;
  const int* out = rw_.out.data();
  for (int q = top; q < m_; ++q) {
    const int r = out[q];
    double xr = w.x[r];
    if (std::fabs(xr) <= eps) {
      w.x[r] = 0.0;
      continue;
    }
    xr *= dinv_[r];
    w.x[r] = xr;
    const int* ii = st.idx(r);
    const double* vv = st.val(r);
    const int n = st.len(r);
    for (int k = 0; k < n; ++k) w.x[ii[k]] -= vv[k] * xr;
    work_count_ += n;
  }
  work_count_ += m_ - top;
  keep_nonzeros(w, out + top, m_ - top);
  return true;
}

void Slu::solve_u_dense(WorkVec& w, const LineStore& st, bool reverse) {
  const double eps = opt_->eps_nonz;
  double* x = w.x.data();
  const double* dinv = dinv_.data();
  auto eliminate = [&](int r) {
    double xr = x[r];
    if (std::fabs(xr) <= eps) {
      x[r] = 0.0;
      return;
    }
    xr *= dinv[r];
    x[r] = xr;
    const int* ii = st.idx(r);
    const double* vv = st.val(r);
    for (int k = 0, n = st.len(r); k < n; ++k) x[ii[k]] -= vv[k] * xr;
  };
  w.n = -1;
  if (reverse) {
    for (int p = m_ - 1; p >= 0; --p) eliminate(order_[p]);
  } else {
    for (int p = 0; p < m_; ++p) eliminate(order_[p]);
  }
  work_count_ += m_ + st.nnz();
}

// U x = w for two dense vectors: each column of U read once for both.
void Slu::ftran_u_dense2(WorkVec& a, WorkVec& b) {
  const double eps = opt_->eps_nonz;
  const LineStore& st = uc_;
  double* xa = a.x.data();
  double* xb = b.x.data();
  const double* dinv = dinv_.data();
  a.n = -1;
  b.n = -1;
  for (int p = m_ - 1; p >= 0; --p) {
    const int r = order_[p];
    double ra = xa[r], rb = xb[r];
    const bool ua = std::fabs(ra) > eps, ub = std::fabs(rb) > eps;
    if (ua) {
      ra *= dinv[r];
      xa[r] = ra;
    } else {
      xa[r] = 0.0;
    }
    if (ub) {
      rb *= dinv[r];
      xb[r] = rb;
    } else {
      xb[r] = 0.0;
    }
    if (!ua && !ub) continue;
    const int* ii = st.idx(r);
    const double* vv = st.val(r);
    const int n = st.len(r);
    if (ua && ub) {
      for (int k = 0; k < n; ++k) {
        const int i = ii[k];
        const double v = vv[k];
        xa[i] -= v * ra;
        xb[i] -= v * rb;
      }
    } else if (ua) {
      for (int k = 0; k < n; ++k) xa[ii[k]] -= vv[k] * ra;
    } else {
      for (int k = 0; k < n; ++k) xb[ii[k]] -= vv[k] * rb;
    }
  }
  work_count_ += 2 * (m_ + st.nnz());
}

void Slu::ftran_u(WorkVec& w, bool sparse) { solve_u(w, sparse, uc_, opt_->spvtol_ftran, true); }

// Product-form etas over row ids: x_s := x_s / piv, x_i -= alpha_i x_s.
void Slu::ftran_pf(WorkVec& w) {
  const int K = static_cast<int>(e_slot_.size());
  for (int k = 0; k < K; ++k) {
    const int s = e_slot_[k];
    double xs = w.x[s];
    if (xs == 0.0) continue;
    xs /= e_piv_[k];
    w.x[s] = xs;
    for (int q = e_start_[k], e = e_start_[k + 1]; q < e; ++q) {
      const int i = e_idx_[q];
      if (w.n >= 0 && w.x[i] == 0.0) w.list[w.n++] = i;
      double nv = w.x[i] - e_val_[q] * xs;
      if (w.n >= 0 && nv == 0.0) nv = 1e-100;
      w.x[i] = nv;
    }
  }
}

void Slu::btran_pf(WorkVec& w) {
  for (int k = static_cast<int>(e_slot_.size()) - 1; k >= 0; --k) {
    const int s = e_slot_[k];
    double dot = 0.0;
    for (int q = e_start_[k], e = e_start_[k + 1]; q < e; ++q) dot += e_val_[q] * w.x[e_idx_[q]];
    const double old = w.x[s];
    double nv = (old - dot) / e_piv_[k];
    if (nv == old) continue;
    if (w.n >= 0) {
      if (old == 0.0) w.list[w.n++] = s;
      if (nv == 0.0) nv = 1e-100;
    }
    w.x[s] = nv;
  }
}

void Slu::btran_u(WorkVec& w, bool sparse) { solve_u(w, sparse, ur_, opt_->spvtol_btran, false); }

void Slu::btran_r(WorkVec& w) {
  for (int k = static_cast<int>(r_row_.size()) - 1; k >= 0; --k) {
    const double xr = w.x[r_row_[k]];
    if (xr == 0.0) continue;
    work_count_ += r_start_[k + 1] - r_start_[k];
    for (int q = r_start_[k], e = r_start_[k + 1]; q < e; ++q) {
      const int j = r_idx_[q];
      const double old = w.x[j];
      double nv = old - r_val_[q] * xr;
      if (w.n >= 0) {
        if (old == 0.0) w.list[w.n++] = j;
        if (nv == 0.0) nv = 1e-100;
      }
      w.x[j] = nv;
    }
  }
}

void Slu::btran_l(WorkVec& w, bool sparse) {
  const double eps = opt_->eps_nonz;
  const int T = static_cast<int>(l_row_.size());
  if (T == 0) return;
  if (sparse && w.n >= 0) {
    const int limit = static_cast<int>(opt_->spvtol_btran * m_);
    auto adj = [this](int i) -> std::pair<const int*, const int*> {
      return {lr_idx_.data() + lr_start_[i], lr_idx_.data() + lr_start_[i + 1]};
    };
    const int top = dfs_reach(m_, w.n, w.list.data(), adj, mk_, rw_, limit);
    if (top >= 0) {
      const int* out = rw_.out.data();
      for (int q = top; q < m_; ++q) {
        const int i = out[q];
        const double xi = w.x[i];
        if (std::fabs(xi) <= eps) continue;
        const int b = lr_start_[i], e = lr_start_[i + 1];
        work_count_ += e - b;
        for (int k = b; k < e; ++k) w.x[lr_idx_[k]] -= lr_val_[k] * xi;
      }
      work_count_ += m_ - top;
      keep_nonzeros(w, out + top, m_ - top);
      return;
    }
  }
  w.n = -1;
  for (int t = T - 1; t >= 0; --t) {
    double dot = 0.0;
    for (int k = l_start_[t], e = l_start_[t + 1]; k < e; ++k) dot += l_val_[k] * w.x[l_idx_[k]];
    w.x[l_row_[t]] -= dot;
  }
  work_count_ += m_ + static_cast<int64_t>(l_idx_.size());
}

void Slu::save_spike(const WorkVec& w) {
  if (w.n >= 0) {
    spike_idx_.resize(w.n);
    spike_val_.resize(w.n);
    int n = 0;
    for (int k = 0; k < w.n; ++k) {
      const int i = w.list[k];
      if (w.x[i] == 0.0) continue;
      spike_idx_[n] = i;
      spike_val_[n++] = w.x[i];
    }
    spike_n_ = n;
  } else {
    spike_dense_.assign(w.x.begin(), w.x.end());
    spike_n_ = -1;
  }
}

int Slu::ftran(const SpVec& in, SpVec& out, bool save, bool dense_out) {
  if (stat_ != kLuOk) return stat_;
  work_count_ = 0;
  load_work(in, w_, nullptr);
  ftran_work(save, false);
  store_work(w_, out, slot_of_row_.data(), dense_out, opt_->eps_nonz);
  return 0;
}

int Slu::ftran_sv(SvRef v, bool save, bool pos_order, double drop, int* cnt_out) {
  if (stat_ != kLuOk) return stat_;
  work_count_ = 0;
  load_work_sv(v, w_, nullptr);
  ftran_work(save, v.dense_u);
  *cnt_out = store_work_sv(w_, v, slot_of_row_.data(), row_of_slot_.data(), pos_order,
                           opt_->eps_nonz, drop);
  return 0;
}

void Slu::ftran_work(bool save, bool dense_u) {
  WorkVec& w = w_;
  const bool sparse = w.n >= 0 && w.n < opt_->spvtol_ftran * m_;
  if (!sparse && w.n >= 0) w.n = -1;
  ftran_l(w, sparse);
  ftran_r(w);
  if (save && update_type_ == 1) save_spike(w);
  ftran_u(w, sparse && !dense_u);
  ftran_pf(w);
  if (save && update_type_ == 0) save_spike(w);
}

// Both vectors take their own course through each stage (sparse reach or dense loop, decided
// as a single solve would); stages where both run dense are done in one pass.
int Slu::ftran2_sv(SvRef v1, bool pos1, SvRef v2, double drop, int* cnt1) {
  if (stat_ != kLuOk) return stat_;
  work_count_ = 0;
  WorkVec& a = w_;
  WorkVec& b = w2_;
  load_work_sv(v1, a, nullptr);
  load_work_sv(v2, b, nullptr);
  const double tol = opt_->spvtol_ftran * m_;
  const bool sa = a.n >= 0 && a.n < tol;
  const bool sb = b.n >= 0 && b.n < tol;
  if (!sa && a.n >= 0) a.n = -1;
  if (!sb && b.n >= 0) b.n = -1;
  if (!l_row_.empty()) {
    const bool da = !(sa && a.n >= 0 && ftran_l_sparse(a));
    const bool db = !(sb && b.n >= 0 && ftran_l_sparse(b));
    if (da && db) {
      ftran_l_dense2(a, b);
    } else {
      if (da) ftran_l_dense(a);
      if (db) ftran_l_dense(b);
    }
  }
  if (a.n < 0 && b.n < 0 && !r_row_.empty()) {
    ftran_r_dense2(a, b);
  } else {
    ftran_r(a);
    ftran_r(b);
  }
  if (update_type_ == 1) save_spike(a);
  const double utol = opt_->spvtol_ftran;
  const bool ua = !(sa && !v1.dense_u && a.n >= 0 && solve_u_sparse(a, uc_, utol));
  const bool ub = !(sb && !v2.dense_u && b.n >= 0 && solve_u_sparse(b, uc_, utol));
  if (ua && ub) {
    ftran_u_dense2(a, b);
  } else {
    if (ua) solve_u_dense(a, uc_, true);
    if (ub) solve_u_dense(b, uc_, true);
  }
  ftran_pf(a);
  ftran_pf(b);
  if (update_type_ == 0) save_spike(a);
  pending2_ = true;
  *cnt1 = store_work_sv(a, v1, slot_of_row_.data(), row_of_slot_.data(), pos1, opt_->eps_nonz,
                        drop);
  return 0;
}

int Slu::ftran2_finish(SvRef v2, bool pos2, double drop, int* cnt2) {
  if (!pending2_) return kLuUpdateFailed;
  pending2_ = false;
  *cnt2 = store_work_sv(w2_, v2, slot_of_row_.data(), row_of_slot_.data(), pos2,
                        opt_->eps_nonz, drop);
  return 0;
}

void Slu::ftran2_drop() {
  if (!pending2_) return;
  pending2_ = false;
  if (w2_.n < 0)
    w2_.clear_all();
  else
    w2_.clear_listed();
}

int Slu::btran(const SpVec& in, SpVec& out, bool dense_out) {
  if (stat_ != kLuOk) return stat_;
  work_count_ = 0;
  load_work(in, w_, row_of_slot_.data());
  btran_work(false);
  store_work(w_, out, nullptr, dense_out, opt_->eps_nonz);
  return 0;
}

int Slu::btran_sv(SvRef v, bool pos_order, double drop, int* cnt_out) {
  if (stat_ != kLuOk) return stat_;
  work_count_ = 0;
  load_work_sv(v, w_, row_of_slot_.data());
  btran_work(v.dense_u);
  *cnt_out = store_work_sv(w_, v, nullptr, nullptr, pos_order, opt_->eps_nonz, drop);
  return 0;
}

void Slu::btran_work(bool dense_u) {
  WorkVec& w = w_;
  const bool sparse = w.n >= 0 && w.n < opt_->spvtol_btran * m_;
  if (!sparse && w.n >= 0) w.n = -1;
  btran_pf(w);
  btran_u(w, sparse && !dense_u);
  btran_r(w);
  btran_l(w, sparse);
}

}  // namespace zento::lu
