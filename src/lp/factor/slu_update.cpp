// SLU basis updates: Forrest-Tomlin with the row eta file, and the product-form eta update.
#include <algorithm>
#include <cmath>

#include "lp/factor/slu.h"

namespace zento::lu {

namespace {
// Entries of an updated U row or spike below this are dropped.
constexpr double kTiny = 1e-14;
// A row eta multiplier beyond this magnifies rounding errors of U into the solves: the update
// is refused and the caller refactorizes the new basis instead.
constexpr double kEtaMax = 1e6;
// Agreement demanded between the new diagonal and the simplex pivot times the old diagonal.
constexpr double kPivAgree = 1e-6;

bool pivots_disagree(double got, double expected) {
  const double a = std::fabs(got), b = std::fabs(expected);
  return std::fabs(a - b) > kPivAgree * std::max(a, b);
}
}  // namespace

int Slu::update(int slot, double pivcoe, int dir) {
  if (stat_ != kLuOk) return stat_;
  if (slot < 0 || slot >= m_ || spike_n_ == -2) {
    stat_ = kLuUpdateFailed;
    return stat_;
  }
  const double piv = dir == 1 ? -pivcoe : pivcoe;
  int st;
  try {
    st = update_type_ == 1 ? ft_update(slot, piv) : eta_update(slot, piv);
  } catch (const std::bad_alloc&) {
    st = kLuNoMemory;
  }
  spike_n_ = -2;
  if (st != kLuOk) {
    w_.clear_all();  // a failed update leaves no residue for the next solve
    stat_ = st;
    return st;
  }
  ++nupdates_;
  rcond_ = umax_ > min_piv_ ? min_piv_ / umax_ : 1.0;
  return 0;
}

int Slu::eta_update(int slot, double pivcoe) {
  const int rp = row_of_slot_[slot];
  double alpha = 0.0;
  const int n = spike_n_ == -1 ? m_ : spike_n_;
  for (int k = 0; k < n; ++k) {
    const int i = spike_n_ == -1 ? k : spike_idx_[k];
    if (i == rp) alpha = spike_n_ == -1 ? spike_dense_[k] : spike_val_[k];
  }
  if (std::fabs(alpha) <= opt_->eps_diag) return kLuUpdateFailed;
  if (pivcoe != 0.0 && pivots_disagree(alpha, pivcoe)) return kLuUpdateFailed;
  for (int k = 0; k < n; ++k) {
    const int i = spike_n_ == -1 ? k : spike_idx_[k];
    const double v = spike_n_ == -1 ? spike_dense_[k] : spike_val_[k];
    if (i == rp || std::fabs(v) <= kTiny) continue;
    e_idx_.push_back(i);
    e_val_.push_back(v);
  }
  e_slot_.push_back(rp);
  e_piv_.push_back(alpha);
  e_start_.push_back(static_cast<int>(e_idx_.size()));
  min_piv_ = std::min(min_piv_, std::fabs(alpha) * std::fabs(diag_[rp]));
  return kLuOk;
}

// Forrest-Tomlin: column of row rp (slot `slot`) becomes the spike; row rp is eliminated
// against the rows between its position p and the spike's deepest position t.
int Slu::ft_update(int slot, double pivcoe) {
  const int rp = row_of_slot_[slot];
  const int p = pos_[rp];
  WorkVec& s = w2_;  // spike, dense values with list
  s.n = 0;
  int t = -1;
  auto add_spike = [&](int i, double v) {
    if (std::fabs(v) <= kTiny) return;
    s.x[i] = v;
    s.list[s.n++] = i;
    t = std::max(t, pos_[i]);
  };
  if (spike_n_ == -1) {
    for (int i = 0; i < m_; ++i)
      if (spike_dense_[i] != 0.0) add_spike(i, spike_dense_[i]);
  } else {
    for (int k = 0; k < spike_n_; ++k) add_spike(spike_idx_[k], spike_val_[k]);
  }
  if (t < p) {
    s.clear_listed();
    return kLuUpdateFailed;
  }
  // Eliminate row rp over positions (p, t] in position order.
  WorkVec& w = w_;
  w.n = 0;
  mk_.next();
  heap_.clear();
  auto later = [this](int a, int b) { return pos_[a] > pos_[b]; };
  {
    const int* ii = ur_.idx(rp);
    const double* vv = ur_.val(rp);
    for (int k = 0, n = ur_.len(rp); k < n; ++k) {
      const int c = ii[k];
      w.x[c] = vv[k];
      w.list[w.n++] = c;
      mk_.test_set(c);
      if (pos_[c] <= t) {
        heap_.push_back(c);
        std::push_heap(heap_.begin(), heap_.end(), later);
      }
    }
  }
  double d = s.x[rp];
  double emax = 0.0;
  const int eta_begin = static_cast<int>(r_idx_.size());
  while (!heap_.empty()) {
    std::pop_heap(heap_.begin(), heap_.end(), later);
    const int j = heap_.back();
    heap_.pop_back();
    const double xj = w.x[j];
    if (xj == 0.0) continue;
    const double eta = xj * dinv_[j];
    w.x[j] = 0.0;
    d -= eta * s.x[j];
    emax = std::max(emax, std::fabs(eta));
    r_idx_.push_back(j);
    r_val_.push_back(eta);
    const int* ii = ur_.idx(j);
    const double* vv = ur_.val(j);
    for (int k = 0, n = ur_.len(j); k < n; ++k) {
      const int c = ii[k];
      if (!mk_.test_set(c)) {
        w.list[w.n++] = c;
        if (pos_[c] <= t) {
          heap_.push_back(c);
          std::push_heap(heap_.begin(), heap_.end(), later);
        }
      }
      w.x[c] -= eta * vv[k];
    }
  }
  const double expected = pivcoe * diag_[rp];
  if (std::fabs(d) <= opt_->eps_diag || emax > kEtaMax ||
      (pivcoe != 0.0 && pivots_disagree(d, expected))) {
    r_idx_.resize(eta_begin);
    r_val_.resize(eta_begin);
    w.clear_listed();
    s.clear_listed();
    return kLuUpdateFailed;
  }
  // Old column and row of rp leave U.
  for (int k = 0, n = uc_.len(rp); k < n; ++k) ur_.remove(uc_.idx(rp)[k], rp);
  uc_.clear(rp);
  for (int k = 0, n = ur_.len(rp); k < n; ++k) uc_.remove(ur_.idx(rp)[k], rp);
  ur_.clear(rp);
  // The spike becomes column rp.
  for (int k = 0; k < s.n; ++k) {
    const int i = s.list[k];
    const double v = s.x[i];
    s.x[i] = 0.0;
    if (i == rp) continue;
    if (!ur_.append(i, rp, v) || !uc_.append(rp, i, v)) return kLuNoMemory;
    umax_ = std::max(umax_, std::fabs(v));
  }
  s.n = 0;
  // What is left of the eliminated row lies beyond t: the new row rp.
  for (int k = 0; k < w.n; ++k) {
    const int c = w.list[k];
    const double v = w.x[c];
    w.x[c] = 0.0;
    if (std::fabs(v) <= kTiny) continue;
    if (!ur_.append(rp, c, v) || !uc_.append(c, rp, v)) return kLuNoMemory;
    umax_ = std::max(umax_, std::fabs(v));
  }
  w.n = 0;
  diag_[rp] = d;
  dinv_[rp] = 1.0 / d;
  min_piv_ = std::min(min_piv_, std::fabs(d));
  max_piv_ = std::max(max_piv_, std::fabs(d));
  umax_ = std::max(umax_, std::fabs(d));
  if (static_cast<int>(r_idx_.size()) > eta_begin) {
    const int k = static_cast<int>(r_row_.size());
    for (int q = eta_begin, e = static_cast<int>(r_idx_.size()); q < e; ++q) {
      const int j = r_idx_[q];
      r_eta_of_.push_back(k);
      r_next_.push_back(r_head_[j]);
      r_head_[j] = q;
    }
    r_mark_.push_back(0);
    r_row_.push_back(rp);
    r_start_.push_back(static_cast<int>(r_idx_.size()));
  }
  // Cyclic shift: positions p+1..t move up one, rp goes to t.
  for (int q = p; q < t; ++q) {
    order_[q] = order_[q + 1];
    pos_[order_[q]] = q;
  }
  order_[t] = rp;
  pos_[rp] = t;
  return kLuOk;
}

double Slu::condest2() const {
  if (stat_ != kLuOk) return 1e30;
  double lo = 1e300, hi = 0.0;
  for (int r = 0; r < m_; ++r) {
    const double a = std::fabs(diag_[r]);
    lo = std::min(lo, a);
    hi = std::max(hi, a);
  }
  return lo > 0.0 ? hi / lo : 1e30;
}

}  // namespace zento::lu
