// Building the working record from the model: parameters, bounded working form, logicals,
// mirrored columns, the row-wise copy, and the record's life.
#include <algorithm>
#include <cmath>
#include <new>

#include "core/clock.h"
#include "core/model.h"
#include "lp/simplex/glp.h"
#include "lp/simplex/spx_internal.h"

namespace zento {

const char* const szXSTAT[11] = {"XSTAT_NA",     "XSTAT_CONT",    "XSTAT_OPT",     "XSTAT_INF",
                                 "XSTAT_INFORUNB", "XSTAT_UNB",   "XSTAT_ITERLIM", "XSTAT_SWITCH",
                                 "XSTAT_TIMELIM", "XSTAT_CTRLC",  "XSTAT_CUTOFF"};
const char* const szWFACT[14] = {
    "WFACT_NO",     "WFACT_INIT",    "WFACT_REFACT",  "WFACT_MAXDMERGE", "WFACT_CHKOPT",
    "WFACT_CHKFSB", "WFACT_NUMERR",  "WFACT_CHKUNB",  "WFACT_PHASECHG",  "WFACT_ENDPERT",
    "WFACT_DENSETA", "WFACT_LUSPACE", "WFACT_BUPERR", "WFACT_CYCLING"};

void freeglp(Glp* g) { delete g; }

void GlpDeleter::operator()(Glp* g) const { freeglp(g); }

void QZI_spx_param(Glp& g, const Imodel& model) {
  const SplexParams& p = model.SplexPam;
  g.infinity = p.lp_infinity > 0 ? std::min(p.lp_infinity, 1e30) : 1e30;
  g.bndinf = p.lp_bndinf;
  g.reps = g.reps0 = g.reps2 = p.solver_feastol;
  g.ceps = g.ceps0 = p.solver_opttol;
  g.pvteps = g.pvteps0 = p.lp_piv_zerotol;
  g.pvtbig = p.lp_piv_bigtol;
  g.azero = p.lp_aij_zerotol;
  g.bigM = g.bigM0 = p.lp_bigm;
  g.mkweps = p.lu_eps_pivrel;
  g.ratrange = g.ratrange0 = std::max(1, p.lp_ratrange);
  g.ptval = 0.0002;
  g.refacfrq = g.refacfrq0 = std::max(1, p.splex_refacfrq);
  g.pcolal = p.lp_pcolal_factor > 0 ? p.lp_pcolal_factor / 100.0 : 0.1;
  g.minfeastol = p.lp_min_feastol;
  g.maxfeastol = p.lp_max_feastol;
  g.minopttol = p.lp_min_opttol;
  g.maxopttol = p.lp_max_opttol;
  g.minpivtol = p.lp_min_pivtol;
  g.maxpivtol = p.lp_max_pivtol;
  g.pertfeastol = p.solver_pert_feastol;
  g.lptool = p.lp_oprfree;
  g.umode = p.lp_umode;
  g.xmode = p.lp_xmode;
  g.basrecov = p.lp_basrecov_method == 0 ? 1 : p.lp_basrecov_method;
  g.printlevel = p.lp_printlevel;
  g.prtfg = p.lp_prtfg;
  g.ppricing_param = p.splex_ppricing;
  g.dpricing_param = p.splex_dpricing;
  g.ppartial_param = p.lp_ppartial;
  g.dratio = p.lp_dratio;
  g.dphase_param = p.splex_dual_phase;
  g.dpswitch = p.lp_dpswitch;
  g.mip_relax = p.in_mip != 0;
  if (g.mip_relax || p.in_gop != 0) g.lptool |= kToolNoEps2Cond;
  g.xstat = XSTAT_CONT;
  g.wfact = WFACT_INIT;
  g.crash = 1;
  std::fill(std::begin(g.wfactcnt), std::end(g.wfactcnt), 0);
}

namespace {

double clip_bound(double v, double inf) {
  if (v >= inf) return inf;
  if (v <= -inf) return -inf;
  return v;
}

}  // namespace

int QZI_spx_mbuild2(Glp& g, const Imodel& model) {
  const LinearData& lp = model.lp;
  const int n = model.nVars, m = model.nCons;
  const double inf = g.infinity;
  g.n = n;
  g.m = m;
  g.objsense = lp.dObjSense == QZ_MAX ? -1 : 1;
  g.objconst = lp.dObjConst * g.objsense;
  const int N = n + m;
  g.cost.assign(N, 0.0);
  g.lb.assign(N, 0.0);
  g.ub.assign(N, inf);
  g.cflag.assign(N, 0);
  g.flipped.assign(N, 0);
  g.fliplist.clear();
  g.rhs.assign(m, 0.0);
  g.rtype.assign(m, 'L');
  g.isint.assign(n, 0);
  if (!lp.pszVarTypes.empty())
    for (int j = 0; j < n; ++j)
      g.isint[j] = lp.pszVarTypes[j] == 'B' || lp.pszVarTypes[j] == 'I';

  // Columns, exact zeros dropped; logicals appended.
  long nnz = 0;
  for (int j = 0; j < n; ++j) {
    const int len = lp.panAcols.empty() ? lp.paiAcols[j + 1] - lp.paiAcols[j] : lp.panAcols[j];
    nnz += len;
  }
  if (nnz + m > 2147483000L) return QZERR_OUT_OF_MEMORY;
  SpMat& A = g.acols;
  A.beg.assign(N + 1, 0);
  A.idx.resize(static_cast<size_t>(nnz + m));
  A.val.resize(static_cast<size_t>(nnz + m));
  int pos = 0;
  double amax = 0, amin = 1e300;
  for (int j = 0; j < n; ++j) {
    A.beg[j] = pos;
    const int b = lp.paiAcols[j];
    const int len = lp.panAcols.empty() ? lp.paiAcols[j + 1] - b : lp.panAcols[j];
    for (int k = b; k < b + len; ++k) {
      const double v = lp.padAcoef[k];
      if (!std::isfinite(v)) return QZERR_ERROR_IN_INPUT;
      if (v == 0.0) continue;
      const int r = lp.paiArows[k];
      if (r < 0 || r >= m) return QZERR_INTERNAL_ERROR;
      A.idx[pos] = r;
      A.val[pos] = v;
      amax = std::max(amax, std::fabs(v));
      amin = std::min(amin, std::fabs(v));
      ++pos;
    }
    if (pos == A.beg[j]) g.cflag[j] |= kFlagEmpty;
  }
  for (int i = 0; i < m; ++i) {
    const char t = lp.pszConTypes[i];
    g.rtype[i] = t;
    A.beg[n + i] = pos;
    A.idx[pos] = i;
    A.val[pos] = t == 'G' ? -1.0 : 1.0;
    ++pos;
    const double b = lp.padB[i];
    if (std::isnan(b)) return QZERR_ERROR_IN_INPUT;
    g.rhs[i] = clip_bound(b, inf);
    const int jl = n + i;
    switch (t) {
      case 'E': g.lb[jl] = 0; g.ub[jl] = 0; break;
      case 'N': g.lb[jl] = -inf; g.ub[jl] = inf; g.cflag[jl] |= kFlagFree; break;
      case 'L': case 'G': g.lb[jl] = 0; g.ub[jl] = inf; break;
      default: return QZERR_BAD_CONSTRAINT_TYPE;
    }
  }
  A.beg[N] = pos;
  A.idx.resize(pos);
  A.val.resize(pos);
  g.nonz = pos;
  g.cond0 = amax > 0 ? amax / amin : 1.0;

  g.maxoc = 0;
  for (int j = 0; j < n; ++j) {
    const double c = lp.padC.empty() ? 0.0 : lp.padC[j];
    if (!std::isfinite(c)) return QZERR_ERROR_IN_INPUT;
    g.cost[j] = c * g.objsense;
    g.maxoc = std::max(g.maxoc, std::fabs(c));
    double lo = lp.padL.empty() ? 0.0 : lp.padL[j];
    double up = lp.padU.empty() ? inf : lp.padU[j];
    if (std::isnan(lo) || std::isnan(up)) return QZERR_ERROR_IN_INPUT;
    lo = clip_bound(lo, inf);
    up = clip_bound(up, inf);
    if (lo <= -inf && up < inf) {
      // Mirror: the only finite bound becomes a lower one.
      g.flipped[j] = 1;
      g.fliplist.push_back(j);
      const double t = lo;
      lo = -up;
      up = -t;
      g.cost[j] = -g.cost[j];
      for (int k = A.beg[j]; k < A.beg[j + 1]; ++k) A.val[k] = -A.val[k];
    }
    g.lb[j] = lo;
    g.ub[j] = up;
    if (lo <= -inf && up >= inf) g.cflag[j] |= kFlagFree;
  }
  g.nflip = static_cast<int>(g.fliplist.size());
  g.rscal.assign(m, 1.0);
  g.cscal.assign(n, 1.0);
  g.oscal = 1.0;
  return 0;
}

void qzi_build_rows(Glp& g) {
  const int m = g.m, N = g.n + g.m;
  SpMat& R = g.arows;
  const SpMat& A = g.acols;
  R.beg.assign(m + 1, 0);
  for (int j = 0; j < N; ++j)
    for (int k = A.beg[j]; k < A.beg[j + 1]; ++k) ++R.beg[A.idx[k] + 1];
  for (int i = 0; i < m; ++i) R.beg[i + 1] += R.beg[i];
  R.idx.resize(A.nnz());
  R.val.resize(A.nnz());
  std::vector<int> fill(R.beg.begin(), R.beg.end() - 1);
  for (int j = 0; j < N; ++j)
    for (int k = A.beg[j]; k < A.beg[j + 1]; ++k) {
      const int p = fill[A.idx[k]]++;
      R.idx[p] = j;
      R.val[p] = A.val[k];
    }
}

int QZI_spx_malloc(Glp& g) {
  const int m = g.m, N = g.n + g.m;
  g.cbas.assign(N, kAtLower);
  g.rbas.assign(m, 0);
  g.rstat.assign(m, 'N');
  g.rhs1.assign(m, 0.0);
  g.dual.assign(m, 0.0);
  g.rdc.assign(N, 0.0);
  g.xvec.assign(N, 0.0);
  g.shift.assign(N, 0.0);
  g.shifted.assign(N, 0);
  g.ptotal.assign(m, 0.0);
  g.pweight.assign(N, 1.0);
  g.dual_norm.assign(m, 1.0);
  g.rdcshift.assign(N, 0.0);
  g.rowrej.assign(m, 0);
  g.col.resize(m);
  g.row.resize(m);
  g.rho.resize(m);
  g.tau.resize(m);
  g.wvec.resize(m);
  g.wvec2.resize(m);
  g.prow.assign(N, 0.0);
  g.prow_idx.assign(N, 0);
  g.prow_mark.assign(N, 0);
  g.rowmark.assign(m, 0);
  g.plist.assign(N, 0);
  g.dwork.assign(std::max(N, 1), 0.0);
  return 0;
}

Glp* lpini(Imodel& model, int* out_err) {
  *out_err = 0;
  Glp* g = new (std::nothrow) Glp;
  if (g == nullptr) {
    *out_err = QZERR_OUT_OF_MEMORY;
    return nullptr;
  }
  g->model = &model;
  g->tstart = lt_get_realtime();
  int rc = 0;
  try {
    QZI_spx_param(*g, model);
    rc = QZI_spx_mbuild2(*g, model);
    if (rc == 0) rc = QZI_spx_malloc(*g);
    if (rc == 0) {
      g->scale = model.SplexPam.lp_scale < 0 ? 1 : model.SplexPam.lp_scale;
      if (g->scale > 3) g->scale = 1;
      QZI_spx_mscale(*g);
      g->lb0 = g->lb;
      g->ub0 = g->ub;
      g->cost0 = g->cost;
      qzi_build_rows(*g);
      rc = g->lu.init(g->m, g->mkweps, model.SplexPam.lu_core, std::max(g->refacfrq + 10, 500));
      if (rc == 0) QZI_spx_set_biden(*g);
    }
  } catch (const std::bad_alloc&) {
    rc = QZERR_OUT_OF_MEMORY;
  }
  if (rc != 0) {
    freeglp(g);
    *out_err = rc;
    return nullptr;
  }
  return g;
}

}  // namespace zento

namespace zento {

// Parameters a host may change between a solve and a warm restart.
void QZI_spx_param_refresh(Glp& g, const Imodel& model) {
  const SplexParams& p = model.SplexPam;
  g.reps = g.reps0 = g.reps2 = p.solver_feastol;
  g.ceps = g.ceps0 = p.solver_opttol;
  g.pvteps = g.pvteps0 = p.lp_piv_zerotol;
  g.printlevel = p.lp_printlevel;
  g.prtfg = p.lp_prtfg;
  g.ppricing_param = p.splex_ppricing;
  g.dpricing_param = p.splex_dpricing;
  g.ppartial_param = p.lp_ppartial;
  g.dratio = p.lp_dratio;
  g.dphase_param = p.splex_dual_phase;
  g.refacfrq = g.refacfrq0 = std::max(1, p.splex_refacfrq);
}

}  // namespace zento
