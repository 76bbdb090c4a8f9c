// CLU engine: column Markowitz factorization, product-form update, topological solves.
#include "lp/factor/clu.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <new>

#include "zento_errors.h"

namespace zento::lu {

namespace {
constexpr double kDropRel = 1e-13;
constexpr double kTiny = 1e-14;
constexpr double kPivAgree = 1e-6;
}  // namespace

std::unique_ptr<LuEngine> make_clu(int m, LuOptions* opt, LuColumnFn datacol, void* host) {
  return std::make_unique<Clu>(m, opt, datacol, host);
}

void Clu::bucket_put(int c) {
  const int k = static_cast<int>(ac_idx_[c].size());
  bat_[c] = k;
  bp_[c] = -1;
  bn_[c] = bh_[k];
  if (bh_[k] >= 0) bp_[bh_[k]] = c;
  bh_[k] = c;
}

void Clu::bucket_take(int c) {
  const int k = bat_[c];
  if (k < 0) return;
  if (bp_[c] >= 0)
    bn_[bp_[c]] = bn_[c];
  else
    bh_[k] = bn_[c];
  if (bn_[c] >= 0) bp_[bn_[c]] = bp_[c];
  bat_[c] = -1;
}

bool Clu::pick(int* pr, int* pc) {
  const double u = opt_->eps_pivrel;
  const int ncand = std::max(1, opt_->num_candits);
  int64_t best = INT64_MAX;
  int br = -1, bc = -1, searched = 0;
  for (int k = 1; k <= m_; ++k) {
    for (int c = bh_[k]; c >= 0; c = bn_[c]) {
      const auto& ci = ac_idx_[c];
      const auto& cv = ac_val_[c];
      double cmax = 0.0;
      for (double v : cv) cmax = std::max(cmax, std::fabs(v));
      for (size_t q = 0; q < ci.size(); ++q) {
        if (std::fabs(cv[q]) < u * cmax) continue;
        const int64_t merit =
            static_cast<int64_t>(ar_pat_[ci[q]].size() - 1) * static_cast<int64_t>(k - 1);
        if (merit < best) {
          best = merit;
          br = ci[q];
          bc = c;
        }
      }
      if (br >= 0 && (++searched >= ncand || best == 0)) goto done;
    }
  }
done:
  if (br < 0) return false;
  *pr = br;
  *pc = bc;
  return true;
}

void Clu::eliminate(int r, int c) {
  bucket_take(c);
  auto& ci = ac_idx_[c];
  auto& cv = ac_val_[c];
  double piv = 0.0;
  for (size_t q = 0; q < ci.size(); ++q)
    if (ci[q] == r) piv = cv[q];
  // L column: multipliers of the other rows.
  std::vector<int> lrows;
  std::vector<double> lmul;
  for (size_t q = 0; q < ci.size(); ++q) {
    if (ci[q] == r) continue;
    lrows.push_back(ci[q]);
    lmul.push_back(cv[q] / piv);
  }
  if (!lrows.empty()) {
    l_eta_of_row_[r] = static_cast<int>(l_row_.size());
    l_row_.push_back(r);
    l_idx_.insert(l_idx_.end(), lrows.begin(), lrows.end());
    l_val_.insert(l_val_.end(), lmul.begin(), lmul.end());
    l_start_.push_back(static_cast<int>(l_idx_.size()));
  }
  for (int i : lrows) {
    auto& p = ar_pat_[i];
    p.erase(std::find(p.begin(), p.end(), c));
  }
  ci.clear();
  cv.clear();
  // Each other column of the pivot row: its entry goes to U, the L rows are updated.
  const std::vector<int> prow = ar_pat_[r];
  for (int j : prow) {
    if (j == c) continue;
    bucket_take(j);
    auto& ji = ac_idx_[j];
    auto& jv = ac_val_[j];
    double arj = 0.0;
    for (size_t q = 0; q < ji.size(); ++q) {
      if (ji[q] == r) {
        arj = jv[q];
        ji[q] = ji.back();
        jv[q] = jv.back();
        ji.pop_back();
        jv.pop_back();
        break;
      }
    }
    u_idx_.push_back(j);  // slot for now, row id after the factorization
    u_val_.push_back(arj);
    for (size_t q = 0; q < ji.size(); ++q) dmark_[ji[q]] = static_cast<int>(q);
    bool drops = false;
    for (size_t t = 0; t < lrows.size(); ++t) {
      const int i = lrows[t];
      const double lu = lmul[t] * arj;
      const int q = dmark_[i];
      if (q >= 0) {
        const double old = jv[q];
        const double nv = old - lu;
        if (std::fabs(nv) <= kDropRel * std::max(std::fabs(old), std::fabs(lu))) {
          jv[q] = 0.0;
          drops = true;
        } else {
          jv[q] = nv;
        }
      } else {
        ji.push_back(i);
        jv.push_back(-lu);
        ar_pat_[i].push_back(j);
      }
    }
    for (int i : ji) dmark_[i] = -1;
    if (drops) {
      size_t n = 0;
      for (size_t q = 0; q < ji.size(); ++q) {
        if (jv[q] == 0.0) {
          auto& p = ar_pat_[ji[q]];
          p.erase(std::find(p.begin(), p.end(), j));
          continue;
        }
        ji[n] = ji[q];
        jv[n++] = jv[q];
      }
      ji.resize(n);
      jv.resize(n);
    }
    bucket_put(j);
  }
  ar_pat_[r].clear();
  u_start_.push_back(static_cast<int>(u_idx_.size()));
  order_[npiv_] = r;
  slot_of_row_[r] = c;
  row_of_slot_[c] = r;
  dinv_[r] = 1.0 / piv;
  row_done_[r] = col_done_[c] = npiv_++;
  min_piv_ = std::min(min_piv_, std::fabs(piv));
  max_piv_ = std::max(max_piv_, std::fabs(piv));
  umax_ = std::max(umax_, std::fabs(piv));
}

int Clu::lufac(const int* rbas) {
  ac_idx_.assign(m_, {});
  ac_val_.assign(m_, {});
  ar_pat_.assign(m_, {});
  dmark_.assign(m_, -1);
  row_done_.assign(m_, -1);
  col_done_.assign(m_, -1);
  bnorm1_ = bmax_ = 0.0;
  for (int j = 0; j < m_; ++j) {
    LuColumn col;
    if (const int rc = datacol_(host_, rbas[j], &col)) return -rc;
    if (col.len < 0 || (col.len > 0 && (!col.idx || !col.val))) return -QZERR_INDEX_OUT_OF_RANGE;
    double s = 0.0;
    for (int k = 0; k < col.len; ++k) {
      const int i = col.idx[k];
      const double v = col.val[k];
      if (i < 0 || i >= m_ || !std::isfinite(v)) return -QZERR_INDEX_OUT_OF_RANGE;
      if (v == 0.0) continue;
      s += std::fabs(v);
      bmax_ = std::max(bmax_, std::fabs(v));
      if (dmark_[i] >= 0) {
        ac_val_[j][dmark_[i]] += v;
        continue;
      }
      dmark_[i] = static_cast<int>(ac_idx_[j].size());
      ac_idx_[j].push_back(i);
      ac_val_[j].push_back(v);
      ar_pat_[i].push_back(j);
    }
    for (int i : ac_idx_[j]) dmark_[i] = -1;
    bnorm1_ = std::max(bnorm1_, s);
  }
  bh_.assign(m_ + 1, -1);
  bn_.assign(m_, -1);
  bp_.assign(m_, -1);
  bat_.assign(m_, -1);
  for (int j = m_ - 1; j >= 0; --j) bucket_put(j);
  l_start_.assign(1, 0);
  l_idx_.clear();
  l_val_.clear();
  l_row_.clear();
  l_eta_of_row_.assign(m_, -1);
  u_start_.assign(1, 0);
  u_idx_.clear();
  u_val_.clear();
  order_.assign(m_, -1);
  slot_of_row_.assign(m_, -1);
  row_of_slot_.assign(m_, -1);
  dinv_.assign(m_, 0.0);
  npiv_ = 0;
  while (npiv_ < m_) {
    int r, c;
    if (!pick(&r, &c)) break;
    eliminate(r, c);
  }
  rank_ = npiv_;
  ac_idx_.clear();
  ac_val_.clear();
  ar_pat_.clear();
  if (npiv_ < m_) {
    for (int i = 0; i < m_; ++i)
      if (row_done_[i] < 0) sing_rows_.push_back(i);
    for (int j = 0; j < m_; ++j)
      if (col_done_[j] < 0) sing_slots_.push_back(j);
    return kLuSingular;
  }
  // U rows were stored in pivot order: regroup by row id and rename slots to rows.
  std::vector<int> ustart(m_ + 1, 0);
  for (int k = 0; k < m_; ++k) ustart[order_[k] + 1] = u_start_[k + 1] - u_start_[k];
  for (int r = 0; r < m_; ++r) ustart[r + 1] += ustart[r];
  std::vector<int> uidx(u_idx_.size());
  std::vector<double> uval(u_idx_.size());
  for (int k = 0; k < m_; ++k) {
    int p = ustart[order_[k]];
    for (int q = u_start_[k]; q < u_start_[k + 1]; ++q) {
      uidx[p] = row_of_slot_[u_idx_[q]];
      uval[p++] = u_val_[q];
      umax_ = std::max(umax_, std::fabs(u_val_[q]));
    }
  }
  u_start_.swap(ustart);
  u_idx_.swap(uidx);
  u_val_.swap(uval);
  return kLuOk;
}

int Clu::factor(const int* rbas) {
  stat_ = kLuNotFactored;
  nupdates_ = 0;
  e_start_.assign(1, 0);
  e_idx_.clear();
  e_val_.clear();
  e_row_.clear();
  e_piv_.clear();
  saved_ = false;
  sing_rows_.clear();
  sing_slots_.clear();
  tpos_ok_ = false;
  if (m_ == 0) return stat_;
  umax_ = 0.0;
  min_piv_ = 1e30;
  max_piv_ = 0.0;
  ++tot;
  int st;
  try {
    st = lufac(rbas);
    if (st == kLuOk) st = tpos() == 0 ? kLuOk : kLuNoMemory;
  } catch (const std::bad_alloc&) {
    st = kLuNoMemory;
  }
  if (st < 0) return st;  // bad column data, an error code for the caller
  stat_ = st;
  rcond_ = st == kLuOk ? (umax_ > min_piv_ ? min_piv_ / umax_ : 1.0) : 0.0;
  if (st == kLuOk) {
    ++ok;
    pool_cap_ = std::max<int64_t>(lnonz() + unonz(), 4 * static_cast<int64_t>(m_));
  }
  return st;
}

// Transposed copies: U by columns, L by rows.
int Clu::tpos() {
  if (stat_ != kLuOk && rank_ < m_) return 0;
  auto transpose = [this](const std::vector<int>& start, const std::vector<int>& idx,
                          const std::vector<double>& val, const std::vector<int>* owner,
                          std::vector<int>& tstart, std::vector<int>& tidx,
                          std::vector<double>& tval) {
    tstart.assign(m_ + 1, 0);
    for (int i : idx) ++tstart[i + 1];
    for (int i = 0; i < m_; ++i) tstart[i + 1] += tstart[i];
    tidx.resize(idx.size());
    tval.resize(idx.size());
    std::vector<int> fill(tstart.begin(), tstart.end() - 1);
    const int nl = static_cast<int>(start.size()) - 1;
    for (int l = 0; l < nl; ++l) {
      const int from = owner ? (*owner)[l] : l;
      for (int q = start[l]; q < start[l + 1]; ++q) {
        const int p = fill[idx[q]]++;
        tidx[p] = from;
        tval[p] = val[q];
      }
    }
  };
  transpose(u_start_, u_idx_, u_val_, nullptr, ut_start_, ut_idx_, ut_val_);
  transpose(l_start_, l_idx_, l_val_, &l_row_, lt_start_, lt_idx_, lt_val_);
  tpos_ok_ = true;
  ensure_work();
  return 0;
}

void Clu::ensure_work() {
  if (static_cast<int>(w_.x.size()) != m_) w_.resize(m_);
  if (static_cast<int>(mk_.mark.size()) != m_) mk_.resize(m_);
  if (static_cast<int>(rw_.out.size()) != m_) rw_.resize(m_);
}

int Clu::reset_sparse_work() {
  rw_ = ReachWork();
  return 0;
}

// ---- solves --------------------------------------------------------------------------------

namespace {
void keep_nonzeros(WorkVec& w, const int* nodes, int cnt) {
  int n = 0;
  for (int q = 0; q < cnt; ++q)
    if (w.x[nodes[q]] != 0.0) w.list[n++] = nodes[q];
  w.n = n;
}
}  // namespace

void Clu::solve_l(WorkVec& w, bool sparse) {
  const double eps = opt_->eps_nonz;
  if (sparse && w.n >= 0) {
    auto adj = [this](int r) -> std::pair<const int*, const int*> {
      const int t = l_eta_of_row_[r];
      if (t < 0) return {nullptr, nullptr};
      return {l_idx_.data() + l_start_[t], l_idx_.data() + l_start_[t + 1]};
    };
    const int top = dfs_reach(m_, w.n, w.list.data(), adj, mk_, rw_,
                              static_cast<int>(opt_->spvtol_ftran * m_));
    if (top >= 0) {
      for (int q = top; q < m_; ++q) {
        const int r = rw_.out[q];
        const int t = l_eta_of_row_[r];
        const double xr = w.x[r];
        if (t < 0 || std::fabs(xr) <= eps) continue;
        for (int k = l_start_[t]; k < l_start_[t + 1]; ++k) w.x[l_idx_[k]] -= l_val_[k] * xr;
      }
      keep_nonzeros(w, rw_.out.data() + top, m_ - top);
      return;
    }
  }
  w.n = -1;
  for (size_t t = 0; t < l_row_.size(); ++t) {
    const double xr = w.x[l_row_[t]];
    if (std::fabs(xr) <= eps) continue;
    for (int k = l_start_[t]; k < l_start_[t + 1]; ++k) w.x[l_idx_[k]] -= l_val_[k] * xr;
  }
}

// Triangular solve with U stored by lines in (start, idx, val): by columns for U x = w, with
// pivots taken in reverse order, or by rows for U^T x = w, in order.
void Clu::solve_lines(WorkVec& w, bool sparse, const std::vector<int>& start,
                      const std::vector<int>& idx, const std::vector<double>& val, double spvtol,
                      bool reverse) {
  const double eps = opt_->eps_nonz;
  auto step = [&](int r) {
    double xr = w.x[r];
    if (std::fabs(xr) <= eps) {
      w.x[r] = 0.0;
      return;
    }
    xr *= dinv_[r];
    w.x[r] = xr;
    for (int k = start[r]; k < start[r + 1]; ++k) w.x[idx[k]] -= val[k] * xr;
  };
  if (sparse && w.n >= 0) {
    auto adj = [&](int r) -> std::pair<const int*, const int*> {
      return {idx.data() + start[r], idx.data() + start[r + 1]};
    };
    const int top = dfs_reach(m_, w.n, w.list.data(), adj, mk_, rw_,
                              static_cast<int>(spvtol * m_));
    if (top >= 0) {
      for (int q = top; q < m_; ++q) step(rw_.out[q]);
      keep_nonzeros(w, rw_.out.data() + top, m_ - top);
      return;
    }
  }
  w.n = -1;
  if (reverse) {
    for (int p = m_ - 1; p >= 0; --p) step(order_[p]);
  } else {
    for (int p = 0; p < m_; ++p) step(order_[p]);
  }
}

void Clu::solve_u(WorkVec& w, bool sparse) {
  solve_lines(w, sparse, ut_start_, ut_idx_, ut_val_, opt_->spvtol_ftran, true);
}

void Clu::solve_ut(WorkVec& w, bool sparse) {
  solve_lines(w, sparse, u_start_, u_idx_, u_val_, opt_->spvtol_btran, false);
}

void Clu::solve_lt(WorkVec& w, bool sparse) {
  const double eps = opt_->eps_nonz;
  if (sparse && w.n >= 0) {
    auto adj = [this](int i) -> std::pair<const int*, const int*> {
      return {lt_idx_.data() + lt_start_[i], lt_idx_.data() + lt_start_[i + 1]};
    };
    const int top = dfs_reach(m_, w.n, w.list.data(), adj, mk_, rw_,
                              static_cast<int>(opt_->spvtol_btran * m_));
    if (top >= 0) {
      for (int q = top; q < m_; ++q) {
        const int i = rw_.out[q];
        const double xi = w.x[i];
        if (std::fabs(xi) <= eps) continue;
        for (int k = lt_start_[i]; k < lt_start_[i + 1]; ++k) w.x[lt_idx_[k]] -= lt_val_[k] * xi;
      }
      keep_nonzeros(w, rw_.out.data() + top, m_ - top);
      return;
    }
  }
  w.n = -1;
  for (int t = static_cast<int>(l_row_.size()) - 1; t >= 0; --t) {
    double dot = 0.0;
    for (int k = l_start_[t]; k < l_start_[t + 1]; ++k) dot += l_val_[k] * w.x[l_idx_[k]];
    w.x[l_row_[t]] -= dot;
  }
}

int Clu::ftran(const SpVec& in, SpVec& out, bool save, bool dense_out) {
  if (stat_ != kLuOk) return stat_;
  if (!tpos_ok_) tpos();
  ensure_work();
  load_work(in, w_, nullptr);
  const bool sparse = w_.n >= 0 && w_.n < opt_->spvtol_ftran * m_;
  if (!sparse && w_.n >= 0) w_.n = -1;
  solve_l(w_, sparse);
  solve_u(w_, sparse);
  for (size_t k = 0; k < e_row_.size(); ++k) {
    const int s = e_row_[k];
    double xs = w_.x[s];
    if (xs == 0.0) continue;
    xs /= e_piv_[k];
    w_.x[s] = xs;
    for (int q = e_start_[k]; q < e_start_[k + 1]; ++q) {
      const int i = e_idx_[q];
      if (w_.n >= 0 && w_.x[i] == 0.0) w_.list[w_.n++] = i;
      double nv = w_.x[i] - e_val_[q] * xs;
      if (w_.n >= 0 && nv == 0.0) nv = 1e-100;
      w_.x[i] = nv;
    }
  }
  if (save) {
    spike_idx_.clear();
    spike_val_.clear();
    if (w_.n >= 0) {
      for (int k = 0; k < w_.n; ++k) {
        const int i = w_.list[k];
        if (std::fabs(w_.x[i]) > kTiny) {
          spike_idx_.push_back(i);
          spike_val_.push_back(w_.x[i]);
        }
      }
    } else {
      for (int i = 0; i < m_; ++i)
        if (std::fabs(w_.x[i]) > kTiny) {
          spike_idx_.push_back(i);
          spike_val_.push_back(w_.x[i]);
        }
    }
    saved_ = true;
  }
  store_work(w_, out, slot_of_row_.data(), dense_out, opt_->eps_nonz);
  return 0;
}

int Clu::btran(const SpVec& in, SpVec& out, bool dense_out) {
  if (stat_ != kLuOk) return stat_;
  if (!tpos_ok_) tpos();
  ensure_work();
  load_work(in, w_, row_of_slot_.data());
  const bool sparse = w_.n >= 0 && w_.n < opt_->spvtol_btran * m_;
  if (!sparse && w_.n >= 0) w_.n = -1;
  for (int k = static_cast<int>(e_row_.size()) - 1; k >= 0; --k) {
    const int s = e_row_[k];
    double dot = 0.0;
    for (int q = e_start_[k]; q < e_start_[k + 1]; ++q) dot += e_val_[q] * w_.x[e_idx_[q]];
    const double old = w_.x[s];
    double nv = (old - dot) / e_piv_[k];
    if (nv == old) continue;
    if (w_.n >= 0) {
      if (old == 0.0) w_.list[w_.n++] = s;
      if (nv == 0.0) nv = 1e-100;
    }
    w_.x[s] = nv;
  }
  solve_ut(w_, sparse);
  solve_lt(w_, sparse);
  store_work(w_, out, nullptr, dense_out, opt_->eps_nonz);
  return 0;
}

int Clu::update(int slot, double pivcoe, int dir) {
  if (stat_ != kLuOk) return stat_;
  if (slot < 0 || slot >= m_ || !saved_) {
    stat_ = kLuUpdateFailed;
    return stat_;
  }
  saved_ = false;
  const int rp = row_of_slot_[slot];
  double alpha = 0.0;
  for (size_t k = 0; k < spike_idx_.size(); ++k)
    if (spike_idx_[k] == rp) alpha = spike_val_[k];
  const double piv = dir == 1 ? -pivcoe : pivcoe;
  if (std::fabs(alpha) <= opt_->eps_diag ||
      (piv != 0.0 &&
       std::fabs(std::fabs(alpha) - std::fabs(piv)) > kPivAgree * std::fabs(alpha))) {
    stat_ = kLuUpdateFailed;
    return stat_;
  }
  const int64_t len = static_cast<int64_t>(spike_idx_.size());
  if (static_cast<int64_t>(e_idx_.size()) + len > pool_cap_) {
    if (e_row_.size() >= 31) {
      stat_ = kLuNoSpace;
      return stat_;
    }
    pool_cap_ += std::max<int64_t>({len, m_ / 10, 5}) * 100;
  }
  try {
    for (size_t k = 0; k < spike_idx_.size(); ++k) {
      if (spike_idx_[k] == rp) continue;
      e_idx_.push_back(spike_idx_[k]);
      e_val_.push_back(spike_val_[k]);
    }
    e_row_.push_back(rp);
    e_piv_.push_back(alpha);
    e_start_.push_back(static_cast<int>(e_idx_.size()));
  } catch (const std::bad_alloc&) {
    stat_ = kLuNoMemory;
    return stat_;
  }
  ++nupdates_;
  min_piv_ = std::min(min_piv_, std::fabs(alpha) / std::fabs(dinv_[rp]));
  rcond_ = umax_ > min_piv_ ? min_piv_ / umax_ : 1.0;
  return 0;
}

int Clu::wfact(int min_frequency) const {
  const int e = nupdates_;
  if (e >= opt_->max_updates) return kWfactRefact;
  if (e > 2 * min_frequency && e >= std::pow(static_cast<double>(m_), 0.45)) {
    const double d = static_cast<double>(lnonz() + unonz()) - 1.5 * m_;
    if (2.0 * m_ * static_cast<double>(pnonz()) - d * d > 0.0) return kWfactDenseta;
  }
  return kWfactNo;
}

int Clu::npcand() const {
  if (nupdates_ == 0) return 10;
  return std::max<int>(10, static_cast<int>(0.5 * static_cast<double>(pnonz()) / nupdates_));
}

}  // namespace zento::lu
