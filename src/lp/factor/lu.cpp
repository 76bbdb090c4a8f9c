// The QZI_lu_ dispatch layer: engine choice, options, solve-form choice and reports.
#include "lp/factor/lu.h"

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <new>

#include "lp/factor/lu_engine.h"
#include "zento_errors.h"

namespace zento::lu {

void SpVec::set_dense_zero() {
  std::fill(val.begin(), val.end(), 0.0);
  n = -1;
}

double SpVec::at(int i) const {
  if (n < 0) return val[i];
  for (int k = 0; k < n; ++k)
    if (idx[k] == i) return val[k];
  return 0.0;
}

void SpVec::to_dense(double* out) const {
  const int m = dim();
  if (n < 0) {
    std::copy(val.begin(), val.end(), out);
    return;
  }
  std::fill(out, out + m, 0.0);
  for (int k = 0; k < n; ++k) out[idx[k]] += val[k];
}

void LuCscHost::init_logicals() {
  unit_idx.resize(nrows);
  unit_val.resize(nrows);
  for (int i = 0; i < nrows; ++i) {
    unit_idx[i] = i;
    unit_val[i] = logical_sign ? logical_sign[i] : 1.0;
  }
}

LuFactor::LuFactor(int m, const LuOptions& opt, LuColumnFn datacol, void* host)
    : m_(m), opt_(opt), datacol_(datacol), host_(host) {}

LuFactor::~LuFactor() = default;

int LuFactor::make_engine() {
  if (opt_.lucore == 0) opt_.lucore = kLuCoreSlu;
  if (opt_.lucore == kLuCoreSlu)
    engine_ = make_slu(m_, &opt_, datacol_, host_);
  else if (opt_.lucore == kLuCoreClu)
    engine_ = make_clu(m_, &opt_, datacol_, host_);
  else
    return QZERR_NOT_SUPPORTED;
  return 0;
}

int LuFactor::redim(int m) {
  if (m < 0) return QZERR_INDEX_OUT_OF_RANGE;
  m_ = m;
  ftran_mean = btran_mean = 0.0;
  return make_engine();
}

namespace {

int check_options(const LuOptions& o) {
  if (o.num_candits == 0) return QZERR_PARAM_OUT_OF_RANGE;
  auto bad = [](double v) { return !(v >= 2.220446049250313e-16 && v <= 1.0); };
  if (bad(o.eps_diag) || bad(o.eps_nonz) || bad(o.eps_pivabs) || bad(o.eps_pivrel) ||
      bad(o.ini_rcond) || bad(o.spvtol_update) || bad(o.spvtol_ftran) || bad(o.spvtol_btran))
    return QZERR_PARAM_OUT_OF_RANGE;
  return 0;
}

void logf(const LuOptions& o, const char* fmt, ...) __attribute__((format(printf, 2, 3)));
void logf(const LuOptions& o, const char* fmt, ...) {
  if (!o.log) return;
  char buf[512];
  va_list ap;
  va_start(ap, fmt);
  std::vsnprintf(buf, sizeof buf, fmt, ap);
  va_end(ap);
  o.log(o.log_user, buf);
}

// Running mean of result lengths, over the last few dozen solves.
void track(double& mean, int len) { mean = 0.95 * mean + 0.05 * len; }

}  // namespace

int lu_options_set_param(LuOptions& opt, int id, double v) {
  const int iv = static_cast<int>(v);
  const bool neg = v < 0;
  switch (id) {
    case kParLuNumCandits:
      if (iv == 0) return QZERR_PARAM_OUT_OF_RANGE;
      opt.num_candits = neg ? 4 : iv;
      return 0;
    case kParLuMaxUpdates:
      if (iv == 0) return QZERR_PARAM_OUT_OF_RANGE;
      opt.max_updates = neg ? 500 : iv;
      return 0;
    case kParLuPrintLevel: opt.print_level = neg ? 0 : iv; return 0;
    case kParLuUpdateType:
      if (iv > 2) return QZERR_PARAM_OUT_OF_RANGE;
      opt.update_type = neg ? 1 : (iv == 0 ? 0 : 1);
      return 0;
    case kParLuMode:
      if (iv < 0 || iv > 7) return QZERR_PARAM_OUT_OF_RANGE;
      opt.mode = iv;
      return 0;
    case kParLuPivmod:
      if (iv < -1 || iv > 3) return QZERR_PARAM_OUT_OF_RANGE;
      opt.pivmod = iv;
      return 0;
    case kParLuCore:
      if (iv < 0) return QZERR_PARAM_OUT_OF_RANGE;
      opt.lucore = iv == 0 ? kLuCoreSlu : iv;
      return 0;
    default: break;
  }
  double* field = nullptr;
  double def = 0.0;
  switch (id) {
    case kParLuEpsDiag: field = &opt.eps_diag; def = 2.220446049250313e-16; break;
    case kParLuEpsNonz: field = &opt.eps_nonz; def = 2.220446049250313e-16; break;
    case kParLuEpsPivabs: field = &opt.eps_pivabs; def = 1e-8; break;
    case kParLuEpsPivrel: field = &opt.eps_pivrel; def = 0.5; break;
    case kParLuIniRcond: field = &opt.ini_rcond; def = 0.01; break;
    case kParLuSpvtolUpdate: field = &opt.spvtol_update; def = 0.001; break;
    case kParLuSpvtolFtran: field = &opt.spvtol_ftran; def = 0.2; break;
    case kParLuSpvtolBtran: field = &opt.spvtol_btran; def = 0.1; break;
    default: return QZERR_INDEX_OUT_OF_RANGE;
  }
  if (neg) {
    *field = def;
    return 0;
  }
  if (!(v >= 2.220446049250313e-16 && v <= 1.0)) return QZERR_PARAM_OUT_OF_RANGE;
  *field = v;
  return 0;
}

namespace {

// A list-slot record into a caller vector: the form SpxLu-style hosts keep.
void sv_from_record(const SpVec& r, SvRef v, int m, double drop) {
  int c = 0;
  if (r.n < 0) {
    for (int i = 0; i < m; ++i) {
      const double a = r.val[i];
      if (std::fabs(a) > drop) {
        v.val[i] = a;
        v.idx[c++] = i;
      }
    }
  } else {
    for (int k = 0; k < r.n; ++k) {
      const double a = r.val[k];
      if (std::fabs(a) <= drop) continue;
      v.val[r.idx[k]] = a;
      v.idx[c++] = r.idx[k];
    }
  }
  *v.n = c;
}

void sv_to_record(SvRef v, SpVec& r, int m) {
  if (*v.n < 0) {
    std::copy(v.val, v.val + m, r.val.begin());
    std::fill(v.val, v.val + m, 0.0);
    r.n = -1;
    return;
  }
  r.n = *v.n;
  for (int k = 0; k < r.n; ++k) {
    r.idx[k] = v.idx[k];
    r.val[k] = v.val[v.idx[k]];
    v.val[v.idx[k]] = 0.0;
  }
}

}  // namespace

// Engines without their own in-place solves go through list-slot records.
int LuEngine::ftran_sv(SvRef v, bool save, bool pos_order, double drop, int* cnt_out) {
  if (sv_in_.dim() < m_) {
    sv_in_.resize(m_);
    sv_out_.resize(m_);
  }
  if (stat_ != kLuOk) return stat_;
  sv_to_record(v, sv_in_, m_);
  const int rc = ftran(sv_in_, sv_out_, save, pos_order);
  if (rc != 0) return rc;
  *cnt_out = sv_out_.n < 0 ? m_ : sv_out_.n;
  sv_from_record(sv_out_, v, m_, drop);
  return 0;
}

int LuEngine::btran_sv(SvRef v, bool pos_order, double drop, int* cnt_out) {
  if (sv_in_.dim() < m_) {
    sv_in_.resize(m_);
    sv_out_.resize(m_);
  }
  if (stat_ != kLuOk) return stat_;
  sv_to_record(v, sv_in_, m_);
  const int rc = btran(sv_in_, sv_out_, pos_order);
  if (rc != 0) return rc;
  *cnt_out = sv_out_.n < 0 ? m_ : sv_out_.n;
  sv_from_record(sv_out_, v, m_, drop);
  return 0;
}

// Engines without a joint pass solve the second vector when it is asked for.
int LuEngine::ftran2_sv(SvRef v1, bool pos1, SvRef v2, double drop, int* cnt1) {
  (void)v2;
  const int rc = ftran_sv(v1, true, pos1, drop, cnt1);
  pending_sv_ = rc == 0;
  return rc;
}

int LuEngine::ftran2_finish(SvRef v2, bool pos2, double drop, int* cnt2) {
  if (!pending_sv_) return kLuUpdateFailed;
  pending_sv_ = false;
  return ftran_sv(v2, false, pos2, drop, cnt2);
}

}  // namespace zento::lu

namespace zento {

using namespace lu;

std::unique_ptr<LuFactor> QZI_lu_create(int m, const LuOptions& opt, LuColumnFn datacol,
                                        void* host, int* err) {
  *err = 0;
  if (m < 0 || !datacol) {
    *err = QZERR_INDEX_OUT_OF_RANGE;
    return nullptr;
  }
  if (const int rc = check_options(opt)) {
    *err = rc;
    return nullptr;
  }
  try {
    auto lu = std::make_unique<LuFactor>(m, opt, datacol, host);
    if (const int rc = lu->make_engine()) {
      *err = rc;
      return nullptr;
    }
    return lu;
  } catch (const std::bad_alloc&) {
    *err = QZERR_OUT_OF_MEMORY;
    return nullptr;
  }
}

void QZI_lu_delete(std::unique_ptr<LuFactor>& lu) { lu.reset(); }

int QZI_lu_datacol(void* host, int var, LuColumn* out) {
  const auto* h = static_cast<const LuCscHost*>(host);
  if (var < 0 || var >= h->ncols + h->nrows) return QZERR_INDEX_OUT_OF_RANGE;
  if (var < h->ncols) {
    const int b = h->colbeg[var];
    out->idx = h->rowidx + b;
    out->val = h->val + b;
    out->len = h->collen ? h->collen[var] : h->colbeg[var + 1] - b;
    return 0;
  }
  const int i = var - h->ncols;
  if (static_cast<int>(h->unit_idx.size()) != h->nrows) return QZERR_INDEX_OUT_OF_RANGE;
  out->idx = h->unit_idx.data() + i;
  out->val = h->unit_val.data() + i;
  out->len = 1;
  return 0;
}

int QZI_lu_fact(LuFactor& lu, const int* rbas) {
  ++lu.nfact;
  return lu.engine().factor(rbas);
}

int QZI_lu_ftran(LuFactor& lu, const SpVec& in, SpVec& out, int save) {
  const int m = lu.m();
  if (in.dim() < m || (in.n >= 0 && static_cast<int>(in.idx.size()) < in.n))
    return QZERR_INDEX_OUT_OF_RANGE;
  if (out.dim() < m) out.resize(m);
  // Long results are cheaper to leave dense; the product-form file always keeps lists.
  const bool dense_out = lu.options().update_type != 0 &&
                         lu.ftran_mean > m * lu.options().spvtol_ftran;
  const int rc = lu.engine().ftran(in, out, save != 0, dense_out);
  if (rc != 0) return rc;
  ++lu.nftran;
  if (out.n < 0) ++lu.nftran_dense;
  track(lu.ftran_mean, out.n < 0 ? m : out.n);
  return 0;
}

int QZI_lu_ftran_sv(LuFactor& lu, lu::SvRef v, int save, double drop) {
  const int m = lu.m();
  const bool dense_out = lu.options().update_type != 0 &&
                         lu.ftran_mean > m * lu.options().spvtol_ftran;
  int cnt = 0;
  const int rc = lu.engine().ftran_sv(v, save != 0, dense_out, drop, &cnt);
  if (rc != 0) return rc;
  ++lu.nftran;
  if (dense_out) ++lu.nftran_dense;
  track(lu.ftran_mean, dense_out ? m : cnt);
  return 0;
}

int QZI_lu_ftran2_sv(LuFactor& lu, lu::SvRef v1, lu::SvRef v2, double drop) {
  const int m = lu.m();
  const bool dense_out = lu.options().update_type != 0 &&
                         lu.ftran_mean > m * lu.options().spvtol_ftran;
  int cnt = 0;
  const int rc = lu.engine().ftran2_sv(v1, dense_out, v2, drop, &cnt);
  if (rc != 0) return rc;
  ++lu.nftran;
  if (dense_out) ++lu.nftran_dense;
  track(lu.ftran_mean, dense_out ? m : cnt);
  return 0;
}

int QZI_lu_ftran2_finish(LuFactor& lu, lu::SvRef v2, double drop) {
  const int m = lu.m();
  const bool dense_out = lu.options().update_type != 0 &&
                         lu.ftran_mean > m * lu.options().spvtol_ftran;
  int cnt = 0;
  const int rc = lu.engine().ftran2_finish(v2, dense_out, drop, &cnt);
  if (rc != 0) return rc;
  ++lu.nftran;
  if (dense_out) ++lu.nftran_dense;
  track(lu.ftran_mean, dense_out ? m : cnt);
  return 0;
}

void QZI_lu_ftran2_drop(LuFactor& lu) { lu.engine().ftran2_drop(); }

int QZI_lu_btran_sv(LuFactor& lu, lu::SvRef v, double drop) {
  const int m = lu.m();
  const bool dense_out = lu.btran_mean > m * lu.options().spvtol_btran;
  int cnt = 0;
  const int rc = lu.engine().btran_sv(v, dense_out, drop, &cnt);
  if (rc != 0) return rc;
  ++lu.nbtran;
  if (dense_out) ++lu.nbtran_dense;
  track(lu.btran_mean, dense_out ? m : cnt);
  return 0;
}

int QZI_lu_ftran2(LuFactor& lu, const SpVec& in1, SpVec& out1, const SpVec& in2, SpVec& out2,
                  int save1) {
  if (const int rc = QZI_lu_ftran(lu, in1, out1, save1)) return rc;
  return QZI_lu_ftran(lu, in2, out2, 0);
}

int QZI_lu_btran(LuFactor& lu, const SpVec& in, SpVec& out) {
  const int m = lu.m();
  if (in.dim() < m || (in.n >= 0 && static_cast<int>(in.idx.size()) < in.n))
    return QZERR_INDEX_OUT_OF_RANGE;
  if (out.dim() < m) out.resize(m);
  const bool dense_out = lu.btran_mean > m * lu.options().spvtol_btran;
  const int rc = lu.engine().btran(in, out, dense_out);
  if (rc != 0) return rc;
  ++lu.nbtran;
  if (out.n < 0) ++lu.nbtran_dense;
  track(lu.btran_mean, out.n < 0 ? m : out.n);
  return 0;
}

int QZI_lu_update(LuFactor& lu, int pivi, double pivcoe, int dir) {
  lu.pivcoe = pivcoe;
  lu.dir = dir;
  ++lu.nupdate;
  return lu.engine().update(pivi, pivcoe, dir);
}

int QZI_lu_get_wfact(const LuFactor& lu, int min_frequency) {
  return lu.engine().wfact(min_frequency);
}

int QZI_lu_npcand(const LuFactor& lu) { return lu.engine().npcand(); }
int QZI_lu_eta_size(const LuFactor& lu) { return lu.engine().updates(); }
int64_t QZI_lu_num_lnonz(const LuFactor& lu) { return lu.engine().lnonz(); }
int64_t QZI_lu_num_unonz(const LuFactor& lu) { return lu.engine().unonz(); }
int64_t QZI_lu_num_pnonz(const LuFactor& lu) { return lu.engine().pnonz(); }
int64_t QZI_lu_num_spsize(const LuFactor& lu) { return lu.engine().spsize(); }
double QZI_lu_get_rcond(const LuFactor& lu) { return lu.engine().rcond(); }
int QZI_lu_get_rank(const LuFactor& lu) { return lu.engine().rank(); }
int QZI_lu_stat(const LuFactor& lu) { return lu.engine().stat(); }

int QZI_lu_sing_num(const LuFactor& lu) {
  return static_cast<int>(lu.engine().sing_rows().size());
}

int QZI_lu_sing_idx(const LuFactor& lu, int* rows, int* slots) {
  const auto& r = lu.engine().sing_rows();
  const auto& s = lu.engine().sing_slots();
  const int n = static_cast<int>(std::min(r.size(), s.size()));
  for (int k = 0; k < n; ++k) {
    if (rows) rows[k] = r[k];
    if (slots) slots[k] = s[k];
  }
  return n;
}

// Hager's estimate of ||B^-1||_1 (Higham's refinement) times ||B||_1.
static double condest1(LuFactor& lu) {
  LuEngine& e = lu.engine();
  const int m = lu.m();
  if (e.stat() != kLuOk) return 1e29;
  if (m == 0) return 1.0;
  SpVec x(m), y(m);
  x.set_dense_zero();
  for (int i = 0; i < m; ++i) x.val[i] = 1.0 / m;
  double est = 0.0;
  int last = -1;
  std::vector<double> xv(m), zv(m);
  for (int it = 0; it < 5; ++it) {
    if (e.ftran(x, y, false, true) != 0) return 1e29;  // y = B^-1 x, by slot
    double nrm = 0.0;
    for (int j = 0; j < m; ++j) nrm += std::fabs(y.val[j]);
    if (it > 0 && nrm <= est) break;
    est = nrm;
    for (int j = 0; j < m; ++j) y.val[j] = y.val[j] >= 0 ? 1.0 : -1.0;
    y.n = -1;
    if (e.btran(y, x, true) != 0) return 1e29;  // z = B^-T sign(y), by row
    int jmax = 0;
    for (int i = 1; i < m; ++i)
      if (std::fabs(x.val[i]) > std::fabs(x.val[jmax])) jmax = i;
    if (jmax == last) break;
    last = jmax;
    x.set_dense_zero();
    x.val[jmax] = 1.0;
  }
  return est * e.bnorm1();
}

double QZI_lu_get_condest(LuFactor& lu, int which) {
  LuEngine& e = lu.engine();
  switch (which) {
    case 1: return condest1(lu);
    case 2: return e.condest2();
    case 4: return e.stat() == kLuOk && e.bmax() > 0 ? e.umax() / e.bmax() : 1e30;
    default: return -1.0;
  }
}

int QZI_lu_set_ipar(LuFactor& lu, int id, int v) {
  LuOptions& o = lu.options();
  const bool neg = v < 0;
  switch (id) {
    case SLU_IPAR_NUM_CANDITS:
      if (v == 0) return QZERR_PARAM_OUT_OF_RANGE;
      o.num_candits = neg ? 4 : v;
      break;
    case SLU_IPAR_MAX_UPDATES:
      if (v == 0) return QZERR_PARAM_OUT_OF_RANGE;
      o.max_updates = neg ? 500 : v;
      break;
    case SLU_IPAR_PRINT_LEVEL: o.print_level = neg ? 0 : v; break;
    case SLU_IPAR_UPDATE_TYPE: o.update_type = neg ? 1 : (v == 0 ? 0 : 1); break;
    case SLU_IPAR_USE_PIVCOL: o.mode = neg ? o.mode & ~1 : (v ? o.mode | 1 : o.mode & ~1); break;
    case SLU_IPAR_MEM_EXP: o.mem_exp = v < 2 ? 5 : v; break;
    case SLU_IPAR_MODE:
      if (v > 7) return QZERR_PARAM_OUT_OF_RANGE;
      o.mode = neg ? 0 : v;
      break;
    case SLU_IPAR_PROFILE: o.profile = neg ? 0 : v; break;
    default: return QZERR_INDEX_OUT_OF_RANGE;
  }
  lu.engine().options_changed();
  return 0;
}

namespace {
// Engine option id -> simplex parameter id of the double options.
constexpr int kDparMap[][2] = {
    {SLU_DPAR_EPS_DIAG, kParLuEpsDiag},         {SLU_DPAR_EPS_NONZ, kParLuEpsNonz},
    {SLU_DPAR_EPS_PIVABS, kParLuEpsPivabs},     {SLU_DPAR_EPS_PIVREL, kParLuEpsPivrel},
    {SLU_DPAR_INI_RCOND, kParLuIniRcond},       {SLU_DPAR_SPVTOL_UPDATE, kParLuSpvtolUpdate},
    {SLU_DPAR_SPVTOL_FTRAN, kParLuSpvtolFtran}, {SLU_DPAR_SPVTOL_BTRAN, kParLuSpvtolBtran}};
}  // namespace

int QZI_lu_set_dpar(LuFactor& lu, int id, double v) {
  for (const auto& e : kDparMap) {
    if (e[0] != id) continue;
    if (const int rc = lu_options_set_param(lu.options(), e[1], v)) return rc;
    lu.engine().options_changed();
    return 0;
  }
  return QZERR_INDEX_OUT_OF_RANGE;
}

int QZI_lu_get_ipar(const LuFactor& lu, int id, int* v) {
  const LuOptions& o = lu.options();
  switch (id) {
    case SLU_IPAR_NUM_CANDITS: *v = o.num_candits; return 0;
    case SLU_IPAR_MAX_UPDATES: *v = o.max_updates; return 0;
    case SLU_IPAR_PRINT_LEVEL: *v = o.print_level; return 0;
    case SLU_IPAR_UPDATE_TYPE: *v = o.update_type; return 0;
    case SLU_IPAR_USE_PIVCOL: *v = o.mode & 1; return 0;
    case SLU_IPAR_MEM_EXP: *v = o.mem_exp; return 0;
    case SLU_IPAR_MODE: *v = o.mode; return 0;
    case SLU_IPAR_PROFILE: *v = o.profile; return 0;
    default: return QZERR_INDEX_OUT_OF_RANGE;
  }
}

int QZI_lu_get_dpar(const LuFactor& lu, int id, double* v) {
  const LuOptions& o = lu.options();
  switch (id) {
    case SLU_DPAR_EPS_DIAG: *v = o.eps_diag; return 0;
    case SLU_DPAR_EPS_NONZ: *v = o.eps_nonz; return 0;
    case SLU_DPAR_EPS_PIVABS: *v = o.eps_pivabs; return 0;
    case SLU_DPAR_EPS_PIVREL: *v = o.eps_pivrel; return 0;
    case SLU_DPAR_INI_RCOND: *v = o.ini_rcond; return 0;
    case SLU_DPAR_SPVTOL_UPDATE: *v = o.spvtol_update; return 0;
    case SLU_DPAR_SPVTOL_FTRAN: *v = o.spvtol_ftran; return 0;
    case SLU_DPAR_SPVTOL_BTRAN: *v = o.spvtol_btran; return 0;
    default: return QZERR_INDEX_OUT_OF_RANGE;
  }
}

int QZI_lu_set_vinfo(LuFactor& lu, int key, double v) {
  switch (key) {
    case SLU_IINFO_QUICKBACK1: lu.quickback[0] = static_cast<int>(v); return 0;
    case SLU_IINFO_QUICKBACK2: lu.quickback[1] = static_cast<int>(v); return 0;
    case SLU_IINFO_DIR: lu.dir = static_cast<int>(v); return 0;
    case SLU_DINFO_PIVCOE: lu.pivcoe = v; return 0;
    default: return QZERR_INDEX_OUT_OF_RANGE;
  }
}

int QZI_lu_get_iinfo(const LuFactor& lu, int key, int* v) {
  switch (key) {
    case SLU_IINFO_QUICKBACK1: *v = lu.quickback[0]; return 0;
    case SLU_IINFO_QUICKBACK2: *v = lu.quickback[1]; return 0;
    case SLU_IINFO_DIR: *v = lu.dir; return 0;
    default: return QZERR_INDEX_OUT_OF_RANGE;
  }
}

int QZI_lu_get_dinfo(const LuFactor& lu, int key, double* v) {
  if (key != SLU_DINFO_PIVCOE) return QZERR_INDEX_OUT_OF_RANGE;
  *v = lu.pivcoe;
  return 0;
}

void QZI_lu_sparsify(int m, SpVec& v, double tol) {
  if (v.n >= 0) return;
  int cnt = 0;
  for (int i = 0; i < m; ++i)
    if (std::fabs(v.val[i]) > 2.220446049250313e-16) ++cnt;
  if (cnt >= m * tol) return;
  int k = 0;
  for (int i = 0; i < m; ++i) {
    const double x = v.val[i];
    if (std::fabs(x) > 2.220446049250313e-16) {
      v.idx[k] = i;
      v.val[k++] = x;  // k <= i: the packed prefix never overtakes the scan
    }
  }
  v.n = k;
}

int QZI_lu_redim(LuFactor& lu, int m) {
  try {
    return lu.redim(m);
  } catch (const std::bad_alloc&) {
    return QZERR_OUT_OF_MEMORY;
  }
}

int QZI_lu_map_stat(int stat) {
  switch (stat) {
    case kLuOk: return 0;
    case kLuNoMemory: return QZERR_OUT_OF_MEMORY;
    default: return QZERR_NUMERIC_INSTABILITY;
  }
}

int QZI_lu_disp_params(const LuFactor& lu) {
  const LuOptions& o = lu.options();
  logf(o, "\nWorking LU options \n");
  logf(o, "\n  SLU_IPAR_NUM_CANDITS   = %d", o.num_candits);
  logf(o, "\n  SLU_IPAR_MAX_UPDATES   = %d", o.max_updates);
  logf(o, "\n  SLU_IPAR_PRINT_LEVEL   = %d", o.print_level);
  logf(o, "\n  SLU_IPAR_UPDATE_TYPE   = %d", o.update_type);
  logf(o, "\n  SLU_IPAR_USE_PIVCOL    = %d", o.mode & 1);
  logf(o, "\n  SLU_IPAR_MEM_EXP       = %d", o.mem_exp);
  logf(o, "\n  SLU_IPAR_MODE          = %d", o.mode);
  logf(o, "\n  SLU_IPAR_PROFILE       = %d", o.profile);
  logf(o, "\n  SLU_DPAR_EPS_DIAG      = %g", o.eps_diag);
  logf(o, "\n  SLU_DPAR_EPS_NONZ      = %g", o.eps_nonz);
  logf(o, "\n  SLU_DPAR_EPS_PIVABS    = %g", o.eps_pivabs);
  logf(o, "\n  SLU_DPAR_EPS_PIVREL    = %g", o.eps_pivrel);
  logf(o, "\n  SLU_DPAR_INI_RCOND     = %g", o.ini_rcond);
  logf(o, "\n  SLU_DPAR_SPVTOL_UPDATE = %g", o.spvtol_update);
  logf(o, "\n  SLU_DPAR_SPVTOL_FTRAN  = %g", o.spvtol_ftran);
  logf(o, "\n  SLU_DPAR_SPVTOL_BTRAN  = %g", o.spvtol_btran);
  return 0;
}

int QZI_lu_dump(const LuFactor& lu) {
  const LuEngine& e = lu.engine();
  logf(lu.options(),
       "\nLU core %d: m=%d stat=%d rank=%d lnz=%lld unz=%lld pnz=%lld updates=%d rcond=%g",
       lu.options().lucore, lu.m(), e.stat(), e.rank(), static_cast<long long>(e.lnonz()),
       static_cast<long long>(e.unonz()), static_cast<long long>(e.pnonz()), e.updates(),
       e.rcond());
  return 0;
}

int QZI_lu_profiles(const LuFactor& lu) {
  logf(lu.options(),
       "\nLU profile: fact=%lld ftran=%lld (dense %lld) btran=%lld (dense %lld) update=%lld",
       static_cast<long long>(lu.nfact), static_cast<long long>(lu.nftran),
       static_cast<long long>(lu.nftran_dense), static_cast<long long>(lu.nbtran),
       static_cast<long long>(lu.nbtran_dense), static_cast<long long>(lu.nupdate));
  return 0;
}

int64_t QZI_lu_num_profiled(const LuFactor& lu) {
  return lu.nfact + lu.nftran + lu.nbtran + lu.nupdate;
}

int QZI_lu_tpos(LuFactor& lu) { return lu.engine().tpos(); }
int QZI_lu_reset_lusp(LuFactor& lu) { return lu.engine().reset_sparse_work(); }
int64_t QZI_lu_lusp_len(const LuFactor& lu) { return lu.engine().sparse_work_len(); }

}  // namespace zento
