// Bridge from the simplex engine to the `QZI_lu_` factorization layer.
#include "lp/simplex/spx_lu.h"

#include <algorithm>
#include <cmath>

#include "zento_errors.h"

namespace zento {

namespace {
constexpr double kDropTol = 1e-14;
}  // namespace

int SpxLu::datacol(void* host, int var, lu::LuColumn* out) {
  const SpxLu* self = static_cast<const SpxLu*>(host);
  const SpMat& A = *self->mat_;
  const int b = A.beg[var];
  out->idx = A.idx.data() + b;
  out->val = A.val.data() + b;
  out->len = A.beg[var + 1] - b;
  return 0;
}

int SpxLu::init(int m, double pivrel, int lucore, int max_updates) {
  m_ = m;
  valid_ = false;
  lu::LuOptions opt;
  opt.lucore = lucore == 0 ? lu::kLuCoreSlu : lucore;
  opt.eps_pivrel = std::clamp(pivrel, 2.220446049250313e-16, 1.0);
  opt.max_updates = std::max(max_updates, 1);
  int err = 0;
  f_ = QZI_lu_create(m, opt, &SpxLu::datacol, this, &err);
  if (!f_) return err != 0 ? err : QZERR_OUT_OF_MEMORY;
  in_.resize(m);
  out_.resize(m);
  return 0;
}

int SpxLu::factor(const SpMat& acols, const int* rbas) {
  valid_ = false;
  singular_.clear();
  mat_ = &acols;
  if (m_ == 0) {
    valid_ = true;
    return kOk;
  }
  const int rc = QZI_lu_fact(*f_, rbas);
  if (rc == lu::kLuNoMemory || rc == QZERR_OUT_OF_MEMORY) return kNoMemory;
  if (rc == lu::kLuSingular) {
    const int k = QZI_lu_sing_num(*f_);
    std::vector<int> rows(k), slots(k);
    const int got = QZI_lu_sing_idx(*f_, rows.data(), slots.data());
    for (int t = 0; t < got; ++t) singular_.emplace_back(rows[t], slots[t]);
    return kSingular;
  }
  if (rc != 0) return kUnstable;
  valid_ = true;
  return kOk;
}

void SpxLu::to_engine(const SVec& x, SpVec& v) const {
  if (x.n < 0) {
    v.n = -1;
    std::copy(x.val.begin(), x.val.end(), v.val.begin());
    return;
  }
  v.n = x.n;
  for (int k = 0; k < x.n; ++k) {
    v.idx[k] = x.idx[k];
    v.val[k] = x.val[x.idx[k]];
  }
}

void SpxLu::from_engine(const SpVec& v, SVec& x) const {
  if (v.n < 0) {
    // Every position is written: one pass copies, drops the tiny values and lists the rest.
    const double* src = v.val.data();
    double* dst = x.val.data();
    int* idx = x.idx.data();
    int c = 0;
    for (int i = 0; i < m_; ++i) {
      const double a = src[i];
      if (std::fabs(a) > kDropTol) {
        dst[i] = a;
        idx[c++] = i;
      } else {
        dst[i] = 0.0;
      }
    }
    x.n = c;
    return;
  }
  x.clear();
  int c = 0;
  for (int k = 0; k < v.n; ++k) {
    const double a = v.val[k];
    if (std::fabs(a) <= kDropTol) continue;
    const int i = v.idx[k];
    x.val[i] = a;
    x.idx[c++] = i;
  }
  x.n = c;
}

void SpxLu::ftran(SVec& x, bool save) {
  if (m_ == 0) return;
  to_engine(x, in_);
  if (QZI_lu_ftran(*f_, in_, out_, save ? 1 : 0) != 0) {
    valid_ = false;
    x.clear();
    return;
  }
  from_engine(out_, x);
}

void SpxLu::btran(SVec& y) {
  if (m_ == 0) return;
  to_engine(y, in_);
  if (QZI_lu_btran(*f_, in_, out_) != 0) {
    valid_ = false;
    y.clear();
    return;
  }
  from_engine(out_, y);
}

int SpxLu::update(int pos, double pivcoe) {
  const int rc = QZI_lu_update(*f_, pos, pivcoe, 0);
  if (rc == 0) return kOk;
  if (rc == lu::kLuNoMemory || rc == QZERR_OUT_OF_MEMORY) return kNoMemory;
  if (rc == lu::kLuNoSpace) return kNoSpace;
  return kUnstable;
}

int SpxLu::eta_size() const { return f_ && m_ > 0 ? QZI_lu_eta_size(*f_) : 0; }
double SpxLu::rcond() const { return f_ && m_ > 0 ? QZI_lu_get_rcond(*f_) : 1.0; }
double SpxLu::cond2est() { return f_ && m_ > 0 ? QZI_lu_get_condest(*f_, 2) : 1.0; }
long SpxLu::lnonz() const { return f_ && m_ > 0 ? static_cast<long>(QZI_lu_num_lnonz(*f_)) : 0; }
long SpxLu::unonz() const { return f_ && m_ > 0 ? static_cast<long>(QZI_lu_num_unonz(*f_)) : 0; }
long SpxLu::pnonz() const { return f_ && m_ > 0 ? static_cast<long>(QZI_lu_num_pnonz(*f_)) : 0; }
int SpxLu::npcand() const { return f_ && m_ > 0 ? QZI_lu_npcand(*f_) : 10; }
int SpxLu::wfact(int min_frequency) const {
  return f_ && m_ > 0 ? QZI_lu_get_wfact(*f_, min_frequency) : 0;
}
void SpxLu::set_pivrel(double v) {
  if (f_) (void)QZI_lu_set_dpar(*f_, lu::SLU_DPAR_EPS_PIVREL, std::clamp(v, 2.220446049250313e-16, 1.0));
}

}  // namespace zento
