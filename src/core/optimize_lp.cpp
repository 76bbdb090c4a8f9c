// The LP path of the driver: method choice, the simplex run, the classification of its
// outcome and the short ladder of retries that changes scaling and warm start.
#include <algorithm>
#include <cmath>

#include "core/callbacks.h"
#include "core/errors.h"
#include "core/log.h"
#include "core/model_ops.h"
#include "core/optimize.h"
#include "core/optimize_lp.h"
#include "core/load.h"
#include "lp/simplex/explicit_dual.h"
#include "lp/simplex/simplex.h"
#include "presolve/presolve.h"

namespace zento {

namespace {

constexpr double kEps = 2.220446049250313e-16;

bool scaling_on(const Imodel& m) {
  const GlpMeasures g = qzi_glp_measures(m);
  if (g.present) return g.scale != 0;
  return m.SplexPam.lp_scale == -1 || m.SplexPam.lp_scale > 0;
}

int lp_log_level(const Imodel& m) { return m.SplexPam.lp_printlevel > 0 ? 1 : 0; }

int run_simplex(Imodel& m, int imethod) {
  if (m.glp) return QZsplexReoptimize(m, imethod);
  return QZsplexOptimize(m, imethod);
}

}  // namespace

int qzi_accept_priminf(Imodel& m) {
  const double t = m.SplexPam.solver_feastol;
  const double b = std::max(t, m.sol ? m.sol->primalFloor : 0.0);
  const GlpMeasures g = qzi_glp_measures(m);
  double condest, ppfeas, s;
  if (g.present) {
    condest = qzi_glp_cond1est(m);
    ppfeas = g.ppfeas;
    s = g.ppfeas_sc;
  } else {
    condest = std::max(1.0 / t, m.sol ? m.sol->condEst : 0.0);
    ppfeas = s = m.sol ? m.sol->pinf : 0.0;
  }
  if (s > std::max(b, 10 * t) && ppfeas > std::max(kEps * condest, b)) return 0;
  QZlogmod(&m, lp_log_level(m), "\nWarning: accepting primal infeasibility (%12.6e), condest=%.8e", s,
           condest);
  return 1;
}

int qzi_accept_dualinf(Imodel& m) {
  const double t = m.SplexPam.solver_opttol;
  const double b = std::max(t, m.sol ? m.sol->dualFloor : 0.0);
  const GlpMeasures g = qzi_glp_measures(m);
  double condest, ynorm, obj, ddfeas, s;
  const int rows = std::max(1, m.nCons);
  if (g.present) {
    condest = qzi_glp_cond1est(m);
    ynorm = g.ynorm;
    obj = g.obj;
    ddfeas = g.ddfeas;
    s = g.ddfeas_sc;
  } else {
    condest = m.sol ? m.sol->condEst : 1.0;
    ynorm = 0;
    obj = m.sol ? m.sol->pobj : 0.0;
    ddfeas = s = m.sol ? m.sol->dinf : 0.0;
  }
  const bool refuse = s > std::max(b, 10 * t) &&
                      s > 10 * std::max(kEps * condest, b) &&
                      ddfeas > 10 * std::max(kEps * condest, b) &&
                      ddfeas > kEps * std::fabs(obj) && ddfeas > ynorm * t / rows;
  if (refuse) return 0;
  QZlogmod(&m, lp_log_level(m),
           "\nWarning: accepting dual infeasibility (%12.6e), condest=%.8e, ynorm=%.8e", s, condest,
           ynorm);
  return 1;
}

int do_the_event_check(Imodel& m, int result) {
  const int lv = lp_log_level(m);
  const double tolP = m.SplexPam.solver_feastol, tolD = m.SplexPam.solver_opttol;
  const GlpMeasures g = qzi_glp_measures(m);
  const bool on = scaling_on(m);
  const Sol* s = m.sol.get();
  const int pst = s ? s->primalStatus : QZ_STATUS_UNKNOWN;
  const double pp = g.present ? g.ppfeas : (s ? s->pinf : 0.0);
  const double dd = g.present ? g.ddfeas : (s ? s->dinf : 0.0);
  if (result == QZERR_NUMERIC_INSTABILITY && g.iter == 0) {
    QZlogmod(&m, lv, "\nWarning: initial basis singular,\nWarning: crashing a new basis...");
    return 6;
  }
  if (result == QZERR_NUMERIC_INSTABILITY) {
    if (!on) {
      QZlogmod(&m, lv, "\nWarning: numerical instability,\nWarning: optimizing model using another method...");
      return 2;
    }
    QZlogmod(&m, lv, "\nWarning: numerical instability,\nWarning: optimizing unscaled model...");
    return 1;
  }
  if (result != 0) return 0;
  if (pst == QZ_STATUS_BASIC_OPTIMAL) {
    if (pp > 10 * tolP) {
      if (qzi_accept_priminf(m)) return 0;
      if (!on)
        QZlogmod(&m, lv, "\nWarning: solution to the original model is not primal feasible (ppfeas=%12.6e)", pp);
      else
        QZlogmod(&m, lv, "\nWarning: descaled solution is not primal feasible (ppfeas=%12.6e)", pp);
      QZlogmod(&m, lv, "\nWarning: optimizing unscaled model...");
      return 3;
    }
    if (dd > 10 * tolD) {
      if (qzi_accept_dualinf(m)) return 0;
      if (!on) {
        QZlogmod(&m, lv, "\nWarning: solution to the original model is not dual feasible (ddfeas=%12.6e)", dd);
        QZlogmod(&m, lv, "\nWarning: reoptimizing model...");
      } else {
        QZlogmod(&m, lv, "\nWarning: descaled solution is not dual feasible (ddfeas=%12.6e)", dd);
        QZlogmod(&m, lv, "\nWarning: optimizing unscaled model...");
      }
      return 4;
    }
  }
  if (on && pst == QZ_STATUS_CUTOFF && dd > 10 * tolD && !qzi_accept_dualinf(m)) {
    QZlogmod(&m, lv, "\nWarning: descaled cutoff solution is not dual feasible (ddfeas=%12.6e)", dd);
    QZlogmod(&m, lv, "\nWarning: optimizing unscaled model...");
    return 7;
  }
  if (on && pst == QZ_STATUS_INFEASIBLE) {
    if (pp < tolP) {
      QZlogmod(&m, lv,
               "\nWarning: descaled solution is primal feasible (ppfeas=%12.6e, ddfeas=%12.6e),\nWarning: optimizing unscaled model...",
               pp, dd);
      return 5;
    }
    const double e = std::min(-1.0, std::floor(std::log10(qzi_glp_cond1est(m) * kEps)) + 1);
    if (pp < std::pow(10.0, e)) {
      QZlogmod(&m, lv,
               "\nWarning: scaled solution is near (primal) feasible (ppfeas=%12.6e, ddfeas=%12.6e),\nWarning: optimizing unscaled model...",
               pp, dd);
      return 5;
    }
  }
  return 0;
}

int pick_imethod_lp(Imodel& m, int event, int nMethod, bool warm) {
  int method = nMethod;
  if (nMethod == QZ_METHOD_FREE)
    method = qzi_glp_warm_method(m) == 1 ? QZ_METHOD_PSIMPLEX : QZ_METHOD_DSIMPLEX;
  if (nMethod == QZ_METHOD_SPRINT) method = QZ_METHOD_PSIMPLEX;
  if (m.glp && m.SplexPam.solver_restart) free_solver_memory(m);
  Sol* s = m.sol.get();
  if (!m.glp && warm && !m.SplexPam.solver_restart && s &&
      (s->basicStatus == QZ_STATUS_BASIC_OPTIMAL || s->basicStatus == QZ_STATUS_LOADED) &&
      static_cast<int>(s->colStatus.size()) == m.nVars &&
      static_cast<int>(s->rowStatus.size()) == m.nCons) {
    const int rc = qzi_glp_load_basis(m, s->colStatus.data(), s->rowStatus.data());
    if (rc > 1) free_solver_memory(m);
  }
  if (event > 0) {
    if (!s) {
      method = event == 4 ? QZ_METHOD_PSIMPLEX : QZ_METHOD_DSIMPLEX;
    } else if (s->pinf < m.SplexPam.solver_feastol) {
      method = QZ_METHOD_PSIMPLEX;
    } else {
      method = s->dinf < m.SplexPam.solver_opttol ? QZ_METHOD_DSIMPLEX : QZ_METHOD_PSIMPLEX;
    }
  }
  return method;
}

int ydo_the_lp_opt(Imodel& m, int nMethod) {
  if (m.nCons == 0 || m.nVars == 0) return QZtrivialOptimizer(m);
  Sol& s = ensure_sol(m);
  if (nMethod == QZ_METHOD_BARRIER) return QZERR_NOT_SUPPORTED;
  if (nMethod != QZ_METHOD_FREE && nMethod != QZ_METHOD_PSIMPLEX && nMethod != QZ_METHOD_DSIMPLEX &&
      nMethod != QZ_METHOD_SPRINT)
    return QZERR_BAD_SOLVER_TYPE;
  const int lv = lp_log_level(m);
  int imethod = pick_imethod_lp(m, -1, nMethod, true);
  s.method = imethod + 1;
  const int savedScale = m.SplexPam.lp_scale;
  m.SplexPam.solver_restart = 0;
  double iters = 0;
  int rc = run_simplex(m, imethod);
  if (rc == QZERR_OUT_OF_MEMORY) {
    m.SplexPam.lp_scale = savedScale;
    return rc;
  }
  int event = do_the_event_check(m, rc);
  if (event != 0) {
    m.SplexPam.lp_scale = -1;
    for (int pass = 0; pass <= 4 && event != 0; ++pass) {
      iters += m.sol->spxIter;
      m.sol->primalStatus = QZ_STATUS_UNKNOWN;
      m.sol->model_status = QZ_STATUS_UNKNOWN;
      bool warm = true, last = false;
      free_solver_memory(m);
      if (event == 2) {
        warm = false;
        last = true;
      } else if (event == 6) {
        warm = false;
      } else {
        if (pass == 0) {
          m.SplexPam.lp_scale = 0;
          QZlogmod(&m, lv, "\nWarning: scaling off, warm-start on");
        } else if (pass == 1) {
          m.SplexPam.lp_scale = 1;
          QZlogmod(&m, lv, "\nWarning: scaling on, warm-start on");
        } else if (pass == 2) {
          m.SplexPam.lp_scale = 1;
          warm = false;
          QZlogmod(&m, lv, "\nWarning: scaling on, warm-start off");
        } else {
          m.SplexPam.lp_scale = 0;
          warm = false;
          QZlogmod(&m, lv, "\nWarning: scaling off, warm-start off");
        }
      }
      if (event == 2) imethod = imethod == QZ_METHOD_PSIMPLEX ? QZ_METHOD_DSIMPLEX : QZ_METHOD_PSIMPLEX;
      imethod = pick_imethod_lp(m, event == 2 ? -1 : event, event == 2 ? imethod : imethod, warm);
      rc = run_simplex(m, imethod);
      if (rc == QZERR_OUT_OF_MEMORY) break;
      if (rc != 0 && rc != QZERR_ITER_LIMIT && rc != QZERR_TIME_LIMIT && rc != QZERR_USER_INTERRUPT &&
          !qzi_glp_has_basis(m))
        free_solver_memory(m);
      if (last) break;
      event = do_the_event_check(m, rc);
    }
  }
  m.SplexPam.lp_scale = savedScale;
  m.sol->spxIter += iters;
  m.sol->totSpxIter += m.sol->spxIter;
  m.sol->method = imethod + 1;
  if (rc == 0 && m.cb.progress) {
    const int loc = imethod == QZ_METHOD_PSIMPLEX ? QZLOC_PRIMAL : QZLOC_DUAL;
    if (run_progress_callback(m, loc, true) != 0) rc = QZERR_USER_INTERRUPT;
  }
  return rc;
}

bool QZI_choose_orient(Imodel& m, int nMethod) {
  const int pts = m.SplexPam.prob_to_solve;
  if (pts == 1) return false;
  if (pts == 2) return nMethod != QZ_METHOD_BARRIER;
  if (nMethod == QZ_METHOD_BARRIER || m.nCons < 2501) return false;
  if (m.baseStats.stale) compute_base_stats(m);
  const BaseStats& b = m.baseStats;
  const double mm = m.nCons, n = std::max(1, m.nVars);
  const double r = b.densestRow / n, c = b.densestCol / mm;
  bool vote = mm > 3 * n;
  if (!vote && n > 100000 &&
      mm - b.nCol2 - b.nRow1 - b.nE2 > 2 * (n - b.nCol1 - b.nCol2 - b.nE2)) {
    vote = true;
    if (b.nBoxed + b.nFixed + b.nRanged > n && mm < 1.5 * n) vote = false;
  }
  if (n <= 0.9 * mm || n >= 1.1 * mm) return vote;
  if (vote) return !(c > 0.1 && c > 10 * r);
  return r > 0.1 && r > 10 * c;
}

// Solves the explicit dual, then the model from the basis the dual's answer gives, so that
// the primal values and multipliers come from a solve of the model itself.
int QZIoptimizeDual(Imodel& m, int nMethod) {
  struct Saved {
    Imodel& m;
    int pts, pre, scale;
    ~Saved() {
      m.SplexPam.prob_to_solve = pts;
      m.SplexPam.lp_prelevel = pre;
      m.SplexPam.lp_scale = scale;
    }
  } saved{m, m.SplexPam.prob_to_solve, m.SplexPam.lp_prelevel, m.SplexPam.lp_scale};
  m.SplexPam.prob_to_solve = 1;
  Imodel* dual = nullptr;
  QZ_CALL(create_model(m.env, &dual));
  struct Owner {
    Imodel* p;
    ~Owner() { delete_model(&p); }
  } owner{dual};
  QZ_CALL(copy_param(m, *dual, 0));
  DualMap map;
  QZ_CALL(build_dual_model(m, *dual, map));
  dual->SplexPam.prob_to_solve = 1;
  dual->SplexPam.solver_iusol = 0;
  int status = 0;
  int rc = QZoptimize_impl(*dual, nMethod, &status);
  const double dualIters = dual->sol ? dual->sol->spxIter : 0.0;
  if (rc == QZERR_USER_INTERRUPT) return rc;
  free_solver_memory(m);
  if (rc == 0 && (status == QZ_STATUS_BASIC_OPTIMAL || status == QZ_STATUS_OPTIMAL)) {
    QZlogmod(&m, lp_log_level(m), "\n\nConstructing a primal basis from the explicit dual...\n");
    std::vector<int> cst, rst;
    dual_basis_build(m, map, dual->sol->colStatus, dual->sol->rowStatus, cst, rst);
    QZ_CALL(load_basis(m, cst.data(), rst.data()));
    m.SplexPam.lp_prelevel = 0;
    m.SplexPam.lp_scale = 0;
    rc = ydo_the_lp_opt(m, QZ_METHOD_PSIMPLEX);
  } else {
    // A dual without an optimum leaves the verdict to a solve of the model itself, with the
    // orientation now fixed to the model.
    rc = QZoptimizeLP(m, nMethod);
  }
  if (m.sol) {
    m.sol->spxIter += dualIters;
    m.sol->totSpxIter += dualIters;
  }
  return rc;
}

int QZoptimizeLP(Imodel& m, int nMethod) {
  if (!is_linear(m) && !m.NLPPam.nlp_solve_as_lp) return 0;
  // Presolve: a reduced copy is solved in place of the model and its answer postsolved.
  bool presolved = false;
  const int prc = qzi_lp_presolve_path(m, nMethod, &presolved);
  if (presolved) return prc;
  if (!is_nested(m) && is_linear(m) && QZI_choose_orient(m, nMethod)) return QZIoptimizeDual(m, nMethod);
  int rc = ydo_the_lp_opt(m, nMethod);
  if (rc == 0 && m.sol && m.sol->model_status == QZ_STATUS_INFORUNB && m.SplexPam.solver_iusol &&
      m.SplexPam.in_reopt == 0) {
    QZlogmod(&m, lp_log_level(m), "\nEnforcing reoptimization ...");
    const double carried = m.sol->spxIter;
    rc = ydo_the_lp_opt(m, QZ_METHOD_PSIMPLEX);
    if (m.sol) m.sol->spxIter += carried;
  }
  return rc;
}

}  // namespace zento
