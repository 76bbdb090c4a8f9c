// The presolved route of the LP path: presolve (or reuse of a kept copy), the solve of the
// reduced model, postsolve, and the reoptimization of the user's model from the rebuilt basis
// when the rebuilt point is not clean.
#include <algorithm>
#include <cmath>
#include <memory>

#include "core/clock.h"
#include "core/errors.h"
#include "core/log.h"
#include "core/model_ops.h"
#include "core/optimize.h"
#include "core/optimize_lp.h"
#include "presolve/presolve.h"

namespace zento {

namespace {

int log_level(const Imodel& m) { return m.SplexPam.lp_printlevel > 0 ? 1 : 0; }

// Sum of infeasibilities below which an infeasible copy is not trusted.
constexpr double kDoubtfulInfeas = 1e-5;

// The low-memory route: the level bit, and the stages it runs (row and column scans, bound
// passes, dual fixing), none of which needs pattern tables or fill room.
constexpr int kLowMemoryRoute = 8192;
constexpr int kLowMemoryStages = 2 | 4 | 8;

// The low-memory route takes a reduced copy only when it is clearly smaller, and never an
// empty one.
bool worth_solving(const Imodel& m, const PresolveRecord& r) {
  if (r.redRows <= 0 || r.redCols <= 0) return false;
  return r.redCols <= 0.9 * m.nVars || r.redRows <= 0.95 * m.nCons ||
         r.redNnz <= 0.9 * static_cast<double>(m.nAnnz);
}

// A basis of an earlier solve, or one the host loaded, starts the model warm; presolve would
// throw it away.
bool has_warm_basis(const Imodel& m) {
  const Sol* s = m.sol.get();
  return s && !m.SplexPam.solver_restart &&
         (s->basicStatus == QZ_STATUS_BASIC_OPTIMAL || s->basicStatus == QZ_STATUS_LOADED) &&
         static_cast<int>(s->colStatus.size()) == m.nVars &&
         static_cast<int>(s->rowStatus.size()) == m.nCons;
}

// Presolve decided the model: no point, no basis, used method -1.
void set_verdict(Imodel& m, int modelStatus) {
  Sol& s = ensure_sol(m);
  s.model_status = modelStatus;
  s.primalStatus = s.dualStatus = QZ_STATUS_UNLOADED;
  s.basicStatus = QZ_STATUS_UNLOADED;
  s.method = -1;
  s.spxIter = 0;
  s.pobj = s.dobj = modelStatus == QZ_STATUS_UNBOUNDED ? -m.lp.dObjSense * QZ_INFINITY : 0.0;
}

// Solves the reduced model with the user's current parameters and callbacks.
int solve_reduced(Imodel& m, Imodel& red, int nMethod) {
  QZ_CALL(copy_param(m, red, 0));
  red.SplexPam.lp_prelevel = 0;
  red.inNested = 1;
  red.holdLog = m.holdLog;
  if (m.SplexPam.solver_timlmt >= 0 && m.run.startWall > 0) {
    const double used = lt_get_realtime() - m.run.startWall;
    red.SplexPam.solver_timlmt = std::max(0.0, m.SplexPam.solver_timlmt - used);
  }
  if (m.SplexPam.prob_to_solve != 1 && QZI_choose_orient(red, nMethod)) {
    red.SplexPam.lp_scale = 0;
    return QZIoptimizeDual(red, nMethod);
  }
  return ydo_the_lp_opt(red, nMethod);
}

}  // namespace

int qzi_postsolve_check(Imodel& m, bool solved) {
  Sol& s = ensure_sol(m);
  const bool iusol = m.SplexPam.solver_iusol != 0;
  int method = 0;
  if (solved) {
    if (s.basicStatus != QZ_STATUS_BASIC_OPTIMAL) {
      method = QZ_METHOD_PSIMPLEX;
    } else {
      if (s.pinf > m.SplexPam.solver_feastol) {
        QZlogmod(&m, log_level(m), "\nWarning: Postsolve leads to primal infeasibility (%.8e)",
                 s.pinf);
        if (!qzi_accept_priminf(m)) method = QZ_METHOD_DSIMPLEX;
      }
      if (s.dinf > m.SplexPam.solver_opttol) {
        QZlogmod(&m, log_level(m), "\nWarning: Postsolve leads to dual infeasibility (%.8e)",
                 s.dinf);
        // A point off in both senses goes to the dual simplex chosen above.
        if (!qzi_accept_dualinf(m) && method == 0) method = QZ_METHOD_PSIMPLEX;
      }
    }
  } else {
    method = QZ_METHOD_PSIMPLEX;
  }
  if (method == 0 && !iusol) return 0;
  QZlogmod(&m, log_level(m), "\nPerforming postsolve reoptimization ...");
  const double carried = s.spxIter;
  const int savedScale = m.SplexPam.lp_scale;
  if (m.SplexPam.lp_oprfree & 0x800) m.SplexPam.lp_scale = 0;
  const int usedMethod = s.method;
  const int rc = ydo_the_lp_opt(m, method ? method : QZ_METHOD_PSIMPLEX);
  m.SplexPam.lp_scale = savedScale;
  if (m.sol) {
    m.sol->spxIter += carried;
    m.sol->method = usedMethod;
  }
  return rc;
}

int qzi_lp_presolve_path(Imodel& m, int nMethod, bool* done) {
  *done = false;
  const int level = m.SplexPam.lp_prelevel;
  if (m.presolve && !(m.presolve->options == presolve_options(m))) QZfreePresolvMemory(m);
  if (level <= 0 || !is_linear(m) || m.nCons == 0 || m.nVars == 0) return 0;
  // Other methods are the plain path's to refuse.
  if (nMethod != QZ_METHOD_FREE && nMethod != QZ_METHOD_PSIMPLEX && nMethod != QZ_METHOD_DSIMPLEX &&
      nMethod != QZ_METHOD_SPRINT)
    return 0;
  const bool iusol = m.SplexPam.solver_iusol != 0;
  if (!m.presolve) {
    if (has_warm_basis(m)) return 0;
    auto rec = std::make_unique<PresolveRecord>();
    rec->options = presolve_options(m);
    int status = kPreNothing;
    const bool lowMemory = (level & kLowMemoryRoute) != 0;
    if (lowMemory) QZlogmod(&m, log_level(m), "\nPresolving in low memory mode ...\n");
    const int rc = gen_pre(m, *rec, lowMemory ? kLowMemoryStages : level, &status);
    if (lowMemory) QZlogmod(&m, log_level(m), "\nPreprocessing retval:%d", rc != 0 ? rc : status);
    if (rc != 0) {
      *done = true;
      return rc;
    }
    if (status == kPreInfeasible || status == kPreUnbounded) {
      if (iusol) return 0;
      set_verdict(m, status == kPreInfeasible ? QZ_STATUS_INFEASIBLE : QZ_STATUS_UNBOUNDED);
      if (lowMemory) {
        // This route tells an infeasible model apart, not an unbounded one.
        Sol& s = *m.sol;
        if (status == kPreInfeasible) {
          s.primalStatus = QZ_STATUS_INFEASIBLE;
          s.dualStatus = QZ_STATUS_UNBOUNDED;
        } else {
          s.model_status = s.primalStatus = s.dualStatus = QZ_STATUS_INFORUNB;
        }
      }
      *done = true;
      return 0;
    }
    if (status == kPreNothing) return 0;
    if (lowMemory && !worth_solving(m, *rec)) return 0;
    if (rec->dualInfeasible && iusol) return 0;
    m.presolve.reset(rec.release());
  }
  PresolveRecord& rec = *m.presolve;
  Sol& s = ensure_sol(m);
  s.rdCons = rec.redRows;
  s.rdVars = rec.redCols;
  s.rdNonz = rec.redNnz;
  s.basicStatus = QZ_STATUS_UNLOADED;
  m.glp.reset();
  *done = true;

  int rc = 0;
  Imodel* red = rec.reduced;
  if (red) {
    rc = solve_reduced(m, *red, nMethod);
    const Sol* rs = red->sol.get();
    if (rs) {
      s.spxIter = rs->spxIter;
      s.totSpxIter += rs->spxIter;
      s.method = rs->method;
      rec.reducedStatus = rs->model_status;
    }
    if (rc == QZERR_USER_INTERRUPT) m.lastError = rc;
  } else {
    s.method = 1;
    s.spxIter = 0;
    rec.reducedStatus = QZ_STATUS_BASIC_OPTIMAL;
  }
  const int rstat = rec.reducedStatus;
  const bool solved =
      rstat == QZ_STATUS_BASIC_OPTIMAL || rstat == QZ_STATUS_OPTIMAL || rstat == QZ_STATUS_FEASIBLE;
  if (rec.dualInfeasible) {
    // A direction without end: the model is unbounded once the rest is feasible.
    if (rc == 0) {
      const int v = rstat == QZ_STATUS_INFEASIBLE            ? QZ_STATUS_INFEASIBLE
                    : rstat == QZ_STATUS_INFORUNB            ? QZ_STATUS_INFORUNB
                    : solved || rstat == QZ_STATUS_UNBOUNDED ? QZ_STATUS_UNBOUNDED
                                                             : QZ_STATUS_UNKNOWN;
      const int method = s.method;
      set_verdict(m, v);
      s.method = method;
    }
    return rc;
  }
  if (!solved || rc != 0) {
    // No optimum to map back: the statuses tell the outcome; the user's model has no point.
    const Sol* rs = red ? red->sol.get() : nullptr;
    s.model_status = rs ? rs->model_status : QZ_STATUS_UNKNOWN;
    s.primalStatus = rs ? rs->primalStatus : QZ_STATUS_UNKNOWN;
    s.dualStatus = rs ? rs->dualStatus : QZ_STATUS_UNKNOWN;
    s.pobj = rs ? rs->pobj : 0.0;
    s.dobj = rs ? rs->dobj : 0.0;
    if (rc != 0) return rc;
    // A verdict of infeasibility on a badly conditioned copy, or by a margin that rounding in
    // the reductions could make, is checked on the model itself.
    const bool doubtful = rstat == QZ_STATUS_INFEASIBLE && rs &&
                          (rs->condEst > 1e16 || std::fabs(rs->pobj) < kDoubtfulInfeas);
    if (!iusol && !doubtful) return 0;
  } else {
    int walkError = 0;
    QZ_CALL(genpre_postsolv_prob(red, m, rec, &walkError));
  }

  return qzi_postsolve_check(m, solved);
}

}  // namespace zento
