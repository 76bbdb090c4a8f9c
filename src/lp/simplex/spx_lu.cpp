// Basis factorization used by the simplex engine: LU with row pivoting and product-form
// updates between refactorizations.
#include "lp/simplex/spx_lu.h"

#include <algorithm>
#include <cmath>
#include <new>

namespace zento {

namespace {
constexpr double kTiny = 1e-100;
constexpr double kAbsPivTol = 1e-11;
}  // namespace

void SpxLu::init(int m, double pivrel) {
  m_ = m;
  pivrel_ = pivrel;
  valid_ = false;
  perm_.assign(static_cast<size_t>(m), -1);
  qperm_.assign(static_cast<size_t>(m), -1);
  work_.assign(static_cast<size_t>(m), 0.0);
  spike_.assign(static_cast<size_t>(m), 0.0);
}

int SpxLu::npcand() const {
  const int e = eta_size();
  if (e == 0) return 10;
  return std::max(10, static_cast<int>(0.5 * static_cast<double>(pnonz()) / e));
}

int SpxLu::factor(const SpMat& acols, const int* rbas) {
  const int m = m_;
  valid_ = false;
  singular_.clear();
  eta_pos_.clear();
  eta_beg_.assign(1, 0);
  eta_idx_.clear();
  eta_piv_.clear();
  eta_val_.clear();
  spike_ok_ = false;
  const size_t mm = static_cast<size_t>(m) * static_cast<size_t>(m);
  try {
    lu_.assign(mm, 0.0);
  } catch (const std::bad_alloc&) {
    return kNoMemory;
  }
  auto at = [&](int r, int p) -> double& { return lu_[static_cast<size_t>(p) * m + r]; };
  for (int p = 0; p < m; ++p) {
    const int j = rbas[p];
    for (int k = acols.beg[j]; k < acols.beg[j + 1]; ++k) at(acols.idx[k], p) = acols.val[k];
  }
  std::vector<int> rowstep(static_cast<size_t>(m), -1);
  std::vector<int> colmark(static_cast<size_t>(m), 0);
  int K = 0;
  double dmin = 1e300, dmax = 0;
  // Right-looking elimination, positions in their natural order, largest entry as pivot
  // among the rows within the threshold.
  for (int p = 0; p < m; ++p) {
    double best = 0;
    int br = -1;
    for (int r = 0; r < m; ++r) {
      if (rowstep[r] >= 0) continue;
      const double a = std::fabs(at(r, p));
      if (a > best) {
        best = a;
        br = r;
      }
    }
    if (br < 0 || best < kAbsPivTol) continue;
    rowstep[br] = K;
    perm_[K] = br;
    qperm_[K] = p;
    colmark[p] = 1;
    ++K;
    dmin = std::min(dmin, best);
    dmax = std::max(dmax, best);
    const double piv = at(br, p);
    for (int r = 0; r < m; ++r) {
      if (rowstep[r] >= 0) continue;
      double& l = at(r, p);
      if (l == 0.0) continue;
      l /= piv;
      const double f = l;
      for (int p2 = p + 1; p2 < m; ++p2) {
        const double u = at(br, p2);
        if (u != 0.0) at(r, p2) -= f * u;
      }
    }
  }
  lnz_ = unz_ = 0;
  for (size_t k = 0; k < mm; ++k)
    if (lu_[k] != 0.0) ++unz_;
  if (K < m) {
    std::vector<int> rows, pos;
    for (int r = 0; r < m; ++r)
      if (rowstep[r] < 0) rows.push_back(r);
    for (int p = 0; p < m; ++p)
      if (!colmark[p]) pos.push_back(p);
    for (size_t k = 0; k < rows.size() && k < pos.size(); ++k)
      singular_.emplace_back(rows[k], pos[k]);
    rcond_ = 0;
    cond2_ = 1e300;
    return kSingular;
  }
  rowstep_ = std::move(rowstep);
  rcond_ = dmax > 0 ? dmin / dmax : 0;
  cond2_ = dmin > 0 ? dmax / dmin : 1e300;
  valid_ = true;
  return kOk;
}

void SpxLu::ftran(SVec& x, bool save) {
  const int m = m_;
  auto at = [&](int r, int p) { return lu_[static_cast<size_t>(p) * m + r]; };
  std::vector<double>& b = x.val;
  for (int k = 0; k < m; ++k) {
    const int r = perm_[k], p = qperm_[k];
    const double v = b[r];
    if (v == 0.0) continue;
    for (int r2 = 0; r2 < m; ++r2)
      if (rowstep_[r2] > k) {
        const double l = at(r2, p);
        if (l != 0.0) b[r2] -= l * v;
      }
  }
  std::vector<double>& w = work_;
  for (int k = m - 1; k >= 0; --k) {
    const int r = perm_[k], p = qperm_[k];
    double v = b[r];
    if (v != 0.0) {
      v /= at(r, p);
      if (v == 0.0) v = kTiny;
    }
    w[p] = v;
    if (v == 0.0) continue;
    for (int k2 = 0; k2 < k; ++k2) {
      const double u = at(perm_[k2], p);
      if (u != 0.0) b[perm_[k2]] -= u * v;
    }
  }
  for (int i = 0; i < m; ++i) {
    b[i] = w[i];
    w[i] = 0.0;
  }
  for (size_t e = 0; e < eta_pos_.size(); ++e) {
    const int r = eta_pos_[e];
    double xr = b[r];
    if (xr == 0.0) continue;
    xr /= eta_piv_[e];
    b[r] = xr;
    for (int k = eta_beg_[e]; k < eta_beg_[e + 1]; ++k) b[eta_idx_[k]] -= eta_val_[k] * xr;
  }
  x.n = -1;
  x.pack(1e-14);
  if (save) {
    std::copy(b.begin(), b.end(), spike_.begin());
    spike_ok_ = true;
  }
}

void SpxLu::btran(SVec& y) {
  const int m = m_;
  auto at = [&](int r, int p) { return lu_[static_cast<size_t>(p) * m + r]; };
  std::vector<double>& c = y.val;
  for (int e = static_cast<int>(eta_pos_.size()) - 1; e >= 0; --e) {
    const int r = eta_pos_[e];
    double s = c[r];
    for (int k = eta_beg_[e]; k < eta_beg_[e + 1]; ++k) s -= eta_val_[k] * c[eta_idx_[k]];
    c[r] = s / eta_piv_[e];
  }
  std::vector<double>& z = work_;
  for (int k = 0; k < m; ++k) {
    const int r = perm_[k], p = qperm_[k];
    double s = c[p];
    for (int k2 = 0; k2 < k; ++k2) {
      const double zr = z[perm_[k2]];
      if (zr != 0.0) s -= zr * at(perm_[k2], p);
    }
    z[r] = s / at(r, p);
  }
  for (int k = m - 1; k >= 0; --k) {
    const int r = perm_[k], p = qperm_[k];
    double s = z[r];
    for (int r2 = 0; r2 < m; ++r2)
      if (rowstep_[r2] > k) {
        const double l = at(r2, p);
        if (l != 0.0) s -= l * z[r2];
      }
    z[r] = s;
  }
  for (int i = 0; i < m; ++i) {
    c[i] = z[i];
    z[i] = 0.0;
  }
  y.n = -1;
  y.pack(1e-14);
}

int SpxLu::update(int pos) {
  if (!spike_ok_) return kUnstable;
  spike_ok_ = false;
  const double piv = spike_[pos];
  if (std::fabs(piv) < 1e-11) return kUnstable;
  eta_pos_.push_back(pos);
  eta_piv_.push_back(piv);
  for (int i = 0; i < m_; ++i) {
    if (i == pos || spike_[i] == 0.0) continue;
    eta_idx_.push_back(i);
    eta_val_.push_back(spike_[i]);
  }
  eta_beg_.push_back(static_cast<int>(eta_idx_.size()));
  return kOk;
}

}  // namespace zento
