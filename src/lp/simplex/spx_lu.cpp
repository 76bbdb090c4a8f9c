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

// The engine solves in the vector's own storage: no copies through list-slot records.
void SpxLu::ftran(SVec& x, bool save, bool dense) {
  if (m_ == 0) return;
  if (QZI_lu_ftran_sv(*f_, lu::SvRef{x.val.data(), x.idx.data(), &x.n, dense}, save ? 1 : 0,
                      kDropTol) != 0) {
    valid_ = false;
    x.clear();
  }
}

void SpxLu::ftran2(SVec& x1, SVec& x2, bool dense2) {
  if (m_ == 0) return;
  dense2_ = dense2;
  if (QZI_lu_ftran2_sv(*f_, lu::SvRef{x1.val.data(), x1.idx.data(), &x1.n, false},
                       lu::SvRef{x2.val.data(), x2.idx.data(), &x2.n, dense2}, kDropTol) != 0) {
    valid_ = false;
    x1.clear();
    x2.clear();
  }
}

void SpxLu::ftran2_finish(SVec& x2) {
  if (m_ == 0) return;
  if (QZI_lu_ftran2_finish(*f_, lu::SvRef{x2.val.data(), x2.idx.data(), &x2.n, dense2_},
                           kDropTol) != 0) {
    valid_ = false;
    x2.clear();
  }
}

void SpxLu::ftran2_drop() {
  if (m_ > 0 && f_) QZI_lu_ftran2_drop(*f_);
}

void SpxLu::btran(SVec& y, bool dense) {
  if (m_ == 0) return;
  if (QZI_lu_btran_sv(*f_, lu::SvRef{y.val.data(), y.idx.data(), &y.n, dense}, kDropTol) != 0) {
    valid_ = false;
    y.clear();
  }
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
