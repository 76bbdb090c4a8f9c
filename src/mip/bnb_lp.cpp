// The relaxation of the search: the private LP copy, the batched bound flush, node solves with
// cutoff and the retry ladder, and basis save and load.
#include <algorithm>
#include <cmath>

#include "core/callbacks.h"
#include "core/clock.h"
#include "core/errors.h"
#include "core/model_ops.h"
#include "core/modify.h"
#include "core/optimize.h"
#include "lp/simplex/simplex.h"
#include "mip/bnb.h"

namespace zento::mip {

int bnb_create_lp(BnbRecord& b) {
  Imodel* copy = nullptr;
  QZ_CALL(copy_model(*b.model, &copy));
  b.lp = copy;
  Imodel& lp = *copy;
  lp.lp.pszVarTypes.clear();
  lp.baseStats.stale = true;
  lp.cb = Callbacks{};
  lp.SplexPam.in_mip = 1;
  lp.SplexPam.lp_prelevel = 0;
  lp.SplexPam.lp_printlevel = 0;
  lp.SplexPam.solver_iusol = 0;
  lp.SplexPam.prob_to_solve = 1;
  lp.SolverPam.callbackfreq = -1;
  lp.holdLog = true;
  lp.isWorkingCopy = true;
  return 0;
}

void bnb_destroy_lp(BnbRecord& b) {
  if (b.lp) delete_model(&b.lp);
  b.lp = nullptr;
}

double int_eff_lb(const BnbRecord& b, int k) {
  const int v = std::max(b.ip.lb[k], b.ip.top_lb[k]);
  return v <= kIntNegInf ? -kInf : static_cast<double>(v);
}

double int_eff_ub(const BnbRecord& b, int k) {
  const int v = std::min(b.ip.ub[k], b.ip.top_ub[k]);
  return v >= kIntInf ? kInf : static_cast<double>(v);
}

void bnb_stack_int(BnbRecord& b, int k) {
  if (b.ip.on_stack[k]) return;
  b.ip.on_stack[k] = 1;
  b.ip.stacked.push_back(k);
}

int bnb_update_bounds_stack(BnbRecord& b) {
  if (b.ip.stacked.empty()) return 0;
  std::vector<int> lc, uc;
  std::vector<double> lv, uv;
  const LinearData& d = b.lp->lp;
  for (int k : b.ip.stacked) {
    b.ip.on_stack[k] = 0;
    const int j = b.ip.cols[k];
    const double l = int_eff_lb(b, k), u = int_eff_ub(b, k);
    if (d.padL[j] != l) {
      lc.push_back(j);
      lv.push_back(l);
    }
    if (d.padU[j] != u) {
      uc.push_back(j);
      uv.push_back(u);
    }
  }
  b.ip.stacked.clear();
  if (!lc.empty()) QZ_CALL(modify_bounds(*b.lp, false, static_cast<int>(lc.size()), lc.data(), lv.data()));
  if (!uc.empty()) QZ_CALL(modify_bounds(*b.lp, true, static_cast<int>(uc.size()), uc.data(), uv.data()));
  return 0;
}

void bnb_get_basis(const BnbRecord& b, std::vector<int>& basis) {
  basis.clear();
  const Sol* s = b.lp->sol.get();
  if (!s || s->basicStatus == QZ_STATUS_UNLOADED) return;
  if (static_cast<int>(s->colStatus.size()) != b.n_vars ||
      static_cast<int>(s->rowStatus.size()) != b.n_cons)
    return;
  basis.reserve(static_cast<size_t>(b.n_vars + b.n_cons));
  basis.insert(basis.end(), s->colStatus.begin(), s->colStatus.end());
  basis.insert(basis.end(), s->rowStatus.begin(), s->rowStatus.end());
}

int bnb_load_basis(BnbRecord& b, const std::vector<int>& basis) {
  if (static_cast<int>(basis.size()) != b.n_vars + b.n_cons) return 0;
  Imodel& lp = *b.lp;
  // Nonbasic columns at a bound that is now infinite move to the other bound.
  std::vector<int> cst(basis.begin(), basis.begin() + b.n_vars);
  for (int j = 0; j < b.n_vars; ++j) {
    if (cst[j] == -1 && lp.lp.padL[j] <= -kInf) cst[j] = lp.lp.padU[j] >= kInf ? -3 : -2;
    if (cst[j] == -2 && lp.lp.padU[j] >= kInf) cst[j] = lp.lp.padL[j] <= -kInf ? -3 : -1;
  }
  const int rc = qzi_glp_load_basis(lp, cst.data(), basis.data() + b.n_vars);
  if (rc > 1) {
    // A basis the engine cannot take leaves the factorization at hand in force.
    free_solver_memory(lp);
    return 0;
  }
  b.basis_state = 2;
  return 0;
}

void bnb_read_lp_point(BnbRecord& b) {
  const Sol& s = *b.lp->sol;
  b.x.assign(s.primal.begin(), s.primal.end());
  b.rc.resize(static_cast<size_t>(b.n_vars));
  for (int j = 0; j < b.n_vars; ++j)
    b.rc[j] = j < static_cast<int>(s.redcost.size()) ? b.obj_sign * s.redcost[j] : 0.0;
}

namespace {

// One solve of the LP copy with the given method; returns the driver's code.
int solve_once(BnbRecord& b, int method, LpResult& out) {
  Imodel& lp = *b.lp;
  const double t0 = lt_get_realtime();
  int status = QZ_STATUS_UNKNOWN;
  const int rc = QZoptimize_impl(lp, method, &status);
  b.t_in_lp += lt_get_realtime() - t0;
  const double it = lp.sol ? lp.sol->spxIter : 0;
  out.iters += it;
  b.spx_iters += it;
  out.status = status;
  out.obj = lp.sol ? lp.sol->pobj : 0;
  return rc;
}

bool good_status(int s) {
  return s == QZ_STATUS_OPTIMAL || s == QZ_STATUS_BASIC_OPTIMAL || s == QZ_STATUS_INFEASIBLE ||
         s == QZ_STATUS_CUTOFF || s == QZ_STATUS_UNBOUNDED;
}

}  // namespace

int bnb_optimizeLP(BnbRecord& b, bool root, double iter_limit, bool use_cutoff, LpResult& out) {
  out = LpResult{};
  Imodel& lp = *b.lp;
  const BandBParams& p = b.model->BandBPam;
  b.n_lps += 1;
  if (b.itr_limit >= 0 && b.spx_iters >= b.itr_limit) return QZERR_ITER_LIMIT;
  if (p.mip_itrlim_sim >= 0 && b.spx_iters >= p.mip_itrlim_sim) return QZERR_ITER_LIMIT;
  QZ_CALL(bnb_update_bounds_stack(b));

  // Budgets: time left of the search, iterations left of the search and of the caller.
  double tl = -1;
  if (b.time_limit >= 0) {
    tl = b.time_limit - (lt_get_realtime() - b.t_start);
    if (tl <= 0) return QZERR_TIME_LIMIT;
  }
  lp.SplexPam.solver_timlmt = tl;
  double il = iter_limit;
  auto cap = [&](double lim) {
    if (lim < 0) return;
    const double left = std::max(1.0, lim - b.spx_iters);
    il = il < 0 ? left : std::min(il, left);
  };
  cap(b.itr_limit);
  cap(p.mip_itrlim_sim);
  lp.SplexPam.lp_itrlmt = il;

  // Cut-off at the prune value; a hurdle caps it.
  double cut = b.prune_obj;
  if (b.use_cutoff) cut = std::min(cut, b.obj_sign * b.cutoff_obj);
  const bool cutoff = use_cutoff && !b.feas_only && cut < kInf / 2;
  lp.SplexPam.solver_usecutoffval = cutoff ? 1 : 0;
  lp.SplexPam.solver_cutoffval = cutoff ? b.obj_sign * cut : -kInf;

  // Root: the driver's method choice; nodes: dual simplex from the basis at hand. The retry
  // ladder alternates primal and dual, then starts cold.
  int rc = solve_once(b, root ? QZ_METHOD_FREE : QZ_METHOD_DSIMPLEX, out);
  for (int attempt = 0; attempt < 3; ++attempt) {
    if (rc == QZERR_TIME_LIMIT || rc == QZERR_USER_INTERRUPT || rc == QZERR_OUT_OF_MEMORY) break;
    if (rc == QZERR_ITER_LIMIT && iter_limit >= 0) break;
    if (rc == QZERR_ITER_LIMIT && (b.itr_limit >= 0 || p.mip_itrlim_sim >= 0)) break;
    if (rc == 0 && good_status(out.status)) break;
    if (rc == 0 && out.status == QZ_STATUS_INFORUNB && !root) {
      // The root relaxation is bounded, so a node's can only be infeasible.
      out.status = QZ_STATUS_INFEASIBLE;
      break;
    }
    if (attempt == 1) free_solver_memory(lp);
    const int method = (attempt == 0 || (root && out.status == QZ_STATUS_INFORUNB))
                           ? QZ_METHOD_PSIMPLEX
                           : (attempt == 1 ? QZ_METHOD_DSIMPLEX : QZ_METHOD_PSIMPLEX);
    if (attempt == 2) free_solver_memory(lp);
    rc = solve_once(b, method, out);
  }
  lp.SplexPam.lp_itrlmt = -1;
  lp.SplexPam.solver_timlmt = -1;
  if (rc == QZERR_TIME_LIMIT || rc == QZERR_USER_INTERRUPT || rc == QZERR_OUT_OF_MEMORY) return rc;
  if (rc == QZERR_ITER_LIMIT) {
    if (iter_limit >= 0) {
      out.status = 20;
      return 0;
    }
    return QZERR_ITER_LIMIT;
  }
  if (rc != 0 || !good_status(out.status)) out.status = 20;
  if (out.status == QZ_STATUS_CUTOFF && !(out.obj > -kInf / 2 && out.obj < kInf / 2))
    out.obj = b.obj_sign * cut;
  return 0;
}

}  // namespace zento::mip
