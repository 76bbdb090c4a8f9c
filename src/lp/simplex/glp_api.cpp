// What the rest of the library asks of an attached working record: loading a basis, reading
// its measures, changing bounds, costs and right-hand sides in place, and solves with the
// final basis in the user's scale.
#include <cmath>

#include "core/model.h"
#include "lp/simplex/simplex.h"
#include "lp/simplex/spx_internal.h"

namespace zento {

int qzi_glp_load_basis(Imodel& model, const int* cstat, const int* rstat) {
  if (!model.glp) {
    int err = 0;
    Glp* g = lpini(model, &err);
    if (g == nullptr) return err;
    model.glp.reset(g);
  }
  return qzi_load_basis(*model.glp, cstat, rstat);
}

bool qzi_glp_has_basis(const Imodel& model) { return model.glp && model.glp->lu.valid(); }

GlpMeasures qzi_glp_measures(const Imodel& model) {
  GlpMeasures r;
  if (!model.glp) return r;
  const Glp& g = *model.glp;
  r.present = true;
  r.scale = g.scale;
  r.iter = g.iter;
  r.ynorm = g.ynorm;
  r.obj = model.sol ? model.sol->pobj : 0;
  r.ppfeas = g.pinf_unscaled;
  r.ddfeas = g.dinf_unscaled;
  r.ppfeas_sc = g.pinf_unscaled;
  r.ddfeas_sc = g.dinf_unscaled;
  r.m = g.m;
  return r;
}

double qzi_glp_cond1est(const Imodel& model) {
  return model.glp ? spx_cond1est(*model.glp) : 1.0;
}

namespace {

int fit_nonbasic(const Glp& g, int j, int st) {
  const bool loInf = g.lb[j] <= -g.infinity, upInf = g.ub[j] >= g.infinity;
  if (!loInf && !upInf && g.lb[j] == g.ub[j]) return kFixed;
  if (st == kAtUpper && !upInf) return kAtUpper;
  if ((st == kAtLower || st == kFixed) && !loInf) return kAtLower;
  if (!loInf) return kAtLower;
  if (!upInf) return kAtUpper;
  return kFree;
}

}  // namespace

int qzi_glp_set_bounds(Imodel& model, int j, double lo, double up) {
  if (!model.glp) return 0;
  Glp& g = *model.glp;
  if (j < 0 || j >= g.n) return QZERR_INDEX_OUT_OF_RANGE;
  const double inf = g.infinity;
  lo = lo <= -inf ? -inf : lo;
  up = up >= inf ? inf : up;
  if (g.flipped[j]) {
    const double t = lo;
    lo = -up;
    up = -t;
  }
  const double cs = g.cscal[j];
  g.lb[j] = g.lb0[j] = lo > -inf ? lo / cs : -inf;
  g.ub[j] = g.ub0[j] = up < inf ? up / cs : inf;
  if (g.cbas[j] < 0) g.cbas[j] = fit_nonbasic(g, j, g.cbas[j]);
  if (g.lb[j] <= -inf && g.ub[j] >= inf)
    g.cflag[j] |= kFlagFree;
  else
    g.cflag[j] &= ~kFlagFree;
  g.fiter = 0;
  return 0;
}

int qzi_glp_set_cost(Imodel& model, int j, double c) {
  if (!model.glp) return 0;
  Glp& g = *model.glp;
  if (j < 0 || j >= g.n) return QZERR_INDEX_OUT_OF_RANGE;
  double w = c * g.objsense * g.cscal[j] * g.oscal;
  if (g.flipped[j]) w = -w;
  g.cost[j] = g.cost0[j] = w;
  g.duals_exact = false;
  g.fiter = 0;
  return 0;
}

int qzi_glp_set_rhs(Imodel& model, int i, double b) {
  if (!model.glp) return 0;
  Glp& g = *model.glp;
  if (i < 0 || i >= g.m) return QZERR_INDEX_OUT_OF_RANGE;
  g.rhs[i] = std::fabs(b) >= g.infinity ? (b > 0 ? g.infinity : -g.infinity) : b * g.rscal[i];
  g.fiter = 0;
  return 0;
}

namespace {

// Scale of the basic variable in position p: working value times this is the user value.
double pos_scale(const Glp& g, int p) {
  const int j = g.rbas[p];
  if (j < g.n) return g.flipped[j] ? -g.cscal[j] : g.cscal[j];
  return 1.0 / g.rscal[j - g.n];
}

int check_solve(const Imodel& model, int nnz) {
  if (!model.glp) return QZERR_INFO_NOT_AVAILABLE;
  const Glp& g = *model.glp;
  const int xs = g.xstat;
  if (!(xs == XSTAT_OPT || xs == XSTAT_INF || xs == XSTAT_INFORUNB || xs == XSTAT_UNB) ||
      !g.lu.valid())
    return QZERR_INFO_NOT_AVAILABLE;
  if (nnz < 0 || nnz > g.m) return QZERR_INDEX_OUT_OF_RANGE;
  return 0;
}

void emit(const SVec& v, int* out_nnz, int* out_idx, double* out_val) {
  int c = 0;
  for (int k = 0; k < v.n; ++k) {
    const int i = v.idx[k];
    out_idx[c] = i;
    out_val[c] = v.val[i];
    ++c;
  }
  *out_nnz = c;
}

}  // namespace

int qzi_glp_ftran(Imodel& model, int nnz, const int* idx, const double* val, int* out_nnz,
                  int* out_idx, double* out_val) {
  if (int rc = check_solve(model, nnz)) return rc;
  Glp& g = *model.glp;
  SVec& v = g.wvec2;
  v.clear();
  for (int k = 0; k < nnz; ++k) {
    if (idx[k] < 0 || idx[k] >= g.m) return QZERR_INDEX_OUT_OF_RANGE;
    v.val[idx[k]] += val[k] * g.rscal[idx[k]];
  }
  v.n = -1;
  v.pack(0.0);
  g.lu.ftran(v, false);
  for (int k = 0; k < v.n; ++k) v.val[v.idx[k]] *= pos_scale(g, v.idx[k]);
  emit(v, out_nnz, out_idx, out_val);
  v.clear();
  return 0;
}

int qzi_glp_btran(Imodel& model, int nnz, const int* idx, const double* val, int* out_nnz,
                  int* out_idx, double* out_val) {
  if (int rc = check_solve(model, nnz)) return rc;
  Glp& g = *model.glp;
  SVec& v = g.wvec2;
  v.clear();
  for (int k = 0; k < nnz; ++k) {
    if (idx[k] < 0 || idx[k] >= g.m) return QZERR_INDEX_OUT_OF_RANGE;
    v.val[idx[k]] += val[k] * pos_scale(g, idx[k]);
  }
  v.n = -1;
  v.pack(0.0);
  g.lu.btran(v);
  for (int k = 0; k < v.n; ++k) v.val[v.idx[k]] *= g.rscal[v.idx[k]];
  emit(v, out_nnz, out_idx, out_val);
  v.clear();
  return 0;
}

}  // namespace zento
