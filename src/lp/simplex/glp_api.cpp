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

int qzi_glp_warm_method(const Imodel& model) {
  if (!model.glp) return 0;
  const Glp& g = *model.glp;
  // New costs leave the basis primal feasible and perhaps dual infeasible: the primal goes on.
  if (g.changed_costs && !g.changed_bounds && g.xstat == XSTAT_OPT) return 1;
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
