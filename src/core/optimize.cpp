// QZoptimize: decides what kind of model it holds and hands it to the right path, then
// restores what it changed and reports.
#include "core/optimize.h"

#include <algorithm>
#include <cmath>

#include "core/callbacks.h"
#include "core/clock.h"
#include "core/env.h"
#include "core/log.h"
#include "core/model_ops.h"

namespace zento {

namespace {

constexpr int kLowMemoryPresolve = 8192;

bool has_quadratic(const Imodel& m) { return m.quad.nnz() > 0; }
bool has_cones(const Imodel& m) { return !m.cones.cols.empty(); }
bool has_posd(const Imodel& m) { return m.posd.count() > 0; }
bool has_nonlinear(const Imodel& m) { return m.nNLPnnz > 0 || m.nNLPobjnnz > 0; }

// Parameters that one call changes and restores on every way out.
struct CallScope {
  Imodel& m;
  int prelevel;
  int iusol;
  int ipmThreads;
  ~CallScope() {
    m.SplexPam.lp_prelevel = prelevel;
    m.SplexPam.solver_iusol = iusol;
    m.SolverPam.ipm_num_threads = ipmThreads;
  }
};

// Threading rules of a top-level call. Concurrent runs are not available in this build, so
// the calls they would take go down the serial path.
int apply_threading_rules(Imodel& m, int nMethod) {
  const int nThreads = m.SolverPam.num_threads;
  const int nIpmThreads = m.SolverPam.ipm_num_threads;
  int nMode = m.SolverPam.multithread_mode;
  const int nDecomp = m.SolverPam.decomposition_type;
  constexpr int kLinkBlocksNone = 2, kModePP = 2;
  if (nDecomp == kLinkBlocksNone && has_quadratic(m)) return QZERR_NOT_SUPPORTED;
  if (nDecomp == kLinkBlocksNone && nThreads > 1) {
    if (nMode == -1)
      nMode = kModePP;
    else if (nMode != kModePP)
      return QZERR_NOT_SUPPORTED;
  }
  if (has_nonlinear(m) && nThreads > 1) {
    if (nMode == kModePP && nDecomp != kLinkBlocksNone) return QZERR_NOT_SUPPORTED;
    return 0;
  }
  const bool linear = !has_quadratic(m) && !has_cones(m) && !has_posd(m);
  if (linear && std::max(nThreads, nIpmThreads) > 1) {
    if (nMethod == QZ_METHOD_BARRIER) {
      if (nMode == 4) return QZERR_NOT_SUPPORTED;
      m.SolverPam.ipm_num_threads = std::max(nThreads, nIpmThreads);
    }
    return 0;
  }
  if (!linear && nThreads > 1 && nMode != 4) m.SolverPam.ipm_num_threads = nThreads;
  return 0;
}

int dispatch(Imodel& m, int nMethod) {
  const bool quad = has_quadratic(m), cones = has_cones(m), posd = has_posd(m),
             nonlin = has_nonlinear(m);
  if ((m.nCons == 0 && !nonlin && !quad && !cones && !posd) || m.nVars == 0)
    return QZtrivialOptimizer(m);
  if (nMethod == QZ_METHOD_NLP && m.NLPPam.nlp_solver == QZ_NMETHOD_IPOPT)
    return QZERR_XSOLVER_LIB_NOT_INSTALLED;
  if (is_linear(m) || m.NLPPam.nlp_solve_as_lp) {
    int rc = QZoptimizeLP(m, nMethod);
    if (rc == QZERR_OUT_OF_MEMORY && m.SplexPam.lp_prelevel > 0) {
      const int saved = m.SplexPam.lp_prelevel;
      m.SplexPam.lp_prelevel = 0;
      rc = QZoptimizeLP(m, nMethod);
      m.SplexPam.lp_prelevel = saved;
    }
    return rc;
  }
  if (!posd && quad && !nonlin && !cones) return QZERR_NOT_SUPPORTED;  // QP path not built
  if (posd && (quad || nonlin)) return QZERR_NOT_SUPPORTED;
  if (nonlin && !cones && !posd) {
    if (nMethod == QZ_METHOD_FREE || nMethod == QZ_METHOD_NLP) {
      const int s = m.NLPPam.nlp_solver;
      if (s == 4 || s == 5 || s == 7 || s == 8 || s == 9) return QZERR_NOT_SUPPORTED;
      if (s == QZ_NMETHOD_IPOPT) return QZERR_XSOLVER_LIB_NOT_INSTALLED;
    }
    return QZERR_BAD_SOLVER_TYPE;
  }
  if (cones || posd) {
    if (nMethod == QZ_METHOD_FREE || nMethod == QZ_METHOD_BARRIER) return QZERR_NOT_SUPPORTED;
    if (nMethod == QZ_METHOD_NLP && !cones) return QZERR_NOT_SUPPORTED;
  }
  return QZERR_BAD_SOLVER_TYPE;
}

}  // namespace

bool has_integers(const Imodel& m) {
  for (char t : m.lp.pszVarTypes)
    if (t == 'B' || t == 'I') return true;
  return false;
}

bool is_linear(const Imodel& m) {
  return !has_quadratic(m) && !has_cones(m) && !has_posd(m) && !has_nonlinear(m);
}

int QZI_get_model_type(const Imodel& m) {
  int base = 10;
  if (has_nonlinear(m))
    base = 14;
  else if (has_cones(m) || has_posd(m))
    base = 12;
  else if (has_quadratic(m))
    base = 11;
  if (has_integers(m)) base += 5;
  return base;
}

const char* QZI_model_type_str(const Imodel& m) {
  const bool mi = has_integers(m);
  if (has_nonlinear(m)) return mi ? "MINLP" : "NLP";
  if (has_posd(m)) return mi ? "MISDP" : "SDP";
  if (has_cones(m)) return mi ? "MICONIC" : "CONIC";
  if (has_quadratic(m)) {
    const bool obj = m.quad.objHasTerms, rows = m.quad.nQuadRows > 0;
    if (obj && rows) return mi ? "MIQCQP" : "QCQP";
    if (rows) return mi ? "MIQCP" : "QCP";
    return mi ? "MIQP" : "QP";
  }
  return mi ? "MILP" : "LP";
}

const char* qzi_get_model_szstatus(int status) {
  static constexpr const char* kText[] = {
      "OPTIMAL", "BASIC OPTIMAL", "INFEASIBLE", "UNBOUNDED", "FEASIBLE",
      "INFEASIBLE OR UNBOUNDED", "NEAR OPTIMAL", "LOCAL OPTIMAL", "LOCAL INFEASIBLE", "CUTOFF",
      "NUMERICAL ERROR", "UNKNOWN", "UNLOADED", "LOADED", "BOUNDED"};
  if (status < 1 || status > 15) return "N/A";
  return kText[status - 1];
}

int QZoptimize_impl(Imodel& m, int nMethod, int* pnStatus) {
  const double tStart = lt_get_realtime();
  SolveScope solveScope(m);
  CallScope scope{m, m.SplexPam.lp_prelevel, m.SplexPam.solver_iusol,
                  m.SolverPam.ipm_num_threads};
  // The low-memory route replaces the presolve stages; the LP path reads the bit alone.
  if (m.SplexPam.lp_prelevel & kLowMemoryPresolve) m.SplexPam.lp_prelevel = kLowMemoryPresolve;
  const bool topLevel = !is_nested(m);

  int rc = 0;
  if (topLevel) rc = apply_threading_rules(m, nMethod);
  if (rc == 0 && nMethod == QZ_METHOD_FREE) {
    const int pm = m.SolverPam.solver_method;
    if (pm == 1 || pm == 2 || pm == 3 || pm == 4 || pm == 6 || pm == 11) nMethod = pm;
  }
  if (rc == 0 && m.modelState == QZ_STATUS_UNLOADED) {
    m.lastError = QZERR_NO_MODEL_LOADED;
    return QZERR_NO_MODEL_LOADED;
  }
  if (rc != 0) {
    m.lastError = rc;
    return rc;
  }
  m.lastError = 0;
  if (pnStatus) *pnStatus = QZ_STATUS_UNKNOWN;
  Sol& s = ensure_sol(m);
  if (static_cast<int>(s.primal.size()) != m.nVars || static_cast<int>(s.dual.size()) != m.nCons)
    s.resize(m.nVars, m.nCons);
  s.model_status = QZ_STATUS_UNKNOWN;
  if (m.SplexPam.in_reopt >= 0) {
    s.method = 0;
    s.spxIter = s.barIter = s.nlpIter = 0;
    if (topLevel) s.totSpxIter = s.totBarIter = s.totNlpIter = 0;
  }
  s.ipmStatus = QZ_STATUS_UNLOADED;
  if (s.primalStatus != QZ_STATUS_UNLOADED) {
    s.primalStatus = QZ_STATUS_LOADED;
    s.dualStatus = QZ_STATUS_LOADED;
  }

  rc = dispatch(m, nMethod);

  if (rc == QZERR_USER_INTERRUPT || m.lastError == QZERR_USER_INTERRUPT)
    rc = QZERR_USER_INTERRUPT;
  else if (rc != 0)
    m.lastError = rc;
  Sol& out = *m.sol;
  out.elapsed = lt_get_realtime() - tStart;
  if (pnStatus) *pnStatus = out.model_status;
  if (m.cb.progress && run_progress_callback(m, QZLOC_EXIT_SOLVER, true) != 0)
    rc = QZERR_USER_INTERRUPT;
  if (topLevel && m.SplexPam.lp_printlevel > 0 && m.cb.logFunc) {
    QZlogmod(&m, 1, "\n");
    QZI_DispSolStatsLP(m);
  }
  return rc;
}

void QZI_DispSolStatsLP(Imodel& m) {
  if (!m.sol) return;
  const Sol& s = *m.sol;
  const unsigned used = static_cast<unsigned>(s.elapsed);
  QZlogmod(&m, 1, "\nUsed Method        = %d ", std::max(-1, s.method - 1));
  QZlogmod(&m, 1, "\nUsed Time          = %u ", used);
  QZlogmod(&m, 1, "\nSimplex   Iters    = %u ", static_cast<unsigned>(s.spxIter));
  QZlogmod(&m, 1, "\nBarrier   Iters    = %u ", static_cast<unsigned>(s.barIter));
  QZlogmod(&m, 1, "\nNonlinear Iters    = %u ", static_cast<unsigned>(s.nlpIter));
  QZlogmod(&m, 1, "\nPrimal Status      = %u ", static_cast<unsigned>(s.primalStatus));
  QZlogmod(&m, 1, "\nDual   Status      = %u ", static_cast<unsigned>(s.dualStatus));
  QZlogmod(&m, 1, "\nBasis  Status      = %u ", static_cast<unsigned>(s.basicStatus));
  QZlogmod(&m, 1, "\nPrimal Objective   = %.22g ", s.pobj);
  QZlogmod(&m, 1, "\nDual   Objective   = %.22g ", s.dobj);
  QZlogmod(&m, 1, "\nDuality Gap        = %e ", std::fabs(s.pobj - s.dobj));
  QZlogmod(&m, 1, "\nPrimal Infeas      = %e ", s.pinf);
  QZlogmod(&m, 1, "\nDual   Infeas      = %e ", s.dinf);
  switch (s.model_status) {
    case QZ_STATUS_OPTIMAL: QZlogmod(&m, 1, "\nSolution is optimal.\n"); break;
    case QZ_STATUS_BASIC_OPTIMAL: QZlogmod(&m, 1, "\nBasic solution is optimal.\n"); break;
    case QZ_STATUS_INFEASIBLE: QZlogmod(&m, 1, "\nModel is infeasible.\n"); break;
    case QZ_STATUS_UNBOUNDED: QZlogmod(&m, 1, "\nModel is unbounded.\n"); break;
    case QZ_STATUS_FEASIBLE: QZlogmod(&m, 1, "\nSolution is feasible.\n"); break;
    case QZ_STATUS_LOCAL_OPTIMAL: QZlogmod(&m, 1, "\nSolution is locally optimal.\n"); break;
    case QZ_STATUS_LOCAL_INFEASIBLE: QZlogmod(&m, 1, "\nModel is locally infeasible.\n"); break;
    case QZ_STATUS_INFORUNB: QZlogmod(&m, 1, "\nModel is infeasible or unbounded.\n"); break;
    default: QZlogmod(&m, 1, "\nModel status is unknown (%d).\n", s.model_status); break;
  }
}

}  // namespace zento
