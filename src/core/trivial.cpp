// QZtrivialOptimizer: models without rows or without columns, solved in closed form.
#include <cmath>

#include "core/callbacks.h"
#include "core/model_ops.h"
#include "core/optimize.h"

namespace zento {

namespace {

// No columns: every row is basic at slack b and must hold with x empty.
void solve_without_columns(Imodel& m, Sol& s) {
  const double tol = m.SplexPam.solver_feastol;
  double worst = 0;
  for (int i = 0; i < m.nCons; ++i) {
    const double b = m.lp.padB[i];
    s.rowStatus[i] = QZ_BASTYPE_BAS;
    s.slack[i] = b;
    s.dual[i] = 0.0;
    double viol = 0;
    switch (m.lp.pszConTypes[i]) {
      case 'E': viol = std::fabs(b) > tol ? std::fabs(b) : 0; break;
      case 'G': viol = b > tol ? b : 0; break;
      case 'L': viol = b < -tol ? -b : 0; break;
      default: break;
    }
    worst = std::max(worst, viol);
  }
  s.pobj = s.dobj = m.lp.dObjConst;
  s.pinf = worst;
  s.dinf = 0;
  s.model_status = worst > 0 ? QZ_STATUS_INFEASIBLE : QZ_STATUS_BASIC_OPTIMAL;
}

// No rows: each column sits at the bound its cost favours.
void solve_without_rows(Imodel& m, Sol& s) {
  const LinearData& lp = m.lp;
  const double sense = lp.dObjSense;
  const double tol = m.SplexPam.solver_feastol;
  bool unbounded = false, infeasible = false;
  double obj = lp.dObjConst;
  for (int j = 0; j < m.nVars; ++j) {
    const double c = sense * lp.padC[j];
    const double lo = lp.padL[j], up = lp.padU[j];
    const bool loInf = lo <= -QZ_INFINITY, upInf = up >= QZ_INFINITY;
    if (lo > up + tol) infeasible = true;
    double x = 0;
    int st = QZ_BASTYPE_FNUL;
    if (c > 0) {
      st = QZ_BASTYPE_ATLO;
      if (loInf) unbounded = true; else x = lo;
    } else if (c < 0) {
      st = QZ_BASTYPE_ATUP;
      if (upInf) unbounded = true; else x = up;
    } else if (!(loInf && upInf)) {
      const bool atUp = std::fabs(up) <= std::fabs(lo);
      st = atUp ? QZ_BASTYPE_ATUP : QZ_BASTYPE_ATLO;
      x = atUp ? up : lo;
    }
    s.colStatus[j] = st;
    s.primal[j] = x;
    s.redcost[j] = lp.padC[j];
    obj += lp.padC[j] * x;
  }
  if (infeasible) {
    s.model_status = QZ_STATUS_INFEASIBLE;
  } else if (unbounded) {
    s.model_status = QZ_STATUS_UNBOUNDED;
    obj = -sense * QZ_INFINITY;
  } else {
    s.model_status = QZ_STATUS_BASIC_OPTIMAL;
  }
  s.pobj = s.dobj = obj;
  s.pinf = s.dinf = 0;
}

}  // namespace

int QZtrivialOptimizer(Imodel& m) {
  Sol& s = ensure_sol(m);
  s.resize(m.nVars, m.nCons);
  s.method = 1;
  if (m.nVars == 0)
    solve_without_columns(m, s);
  else
    solve_without_rows(m, s);
  if (s.model_status == QZ_STATUS_BASIC_OPTIMAL) {
    s.primalStatus = QZ_STATUS_BASIC_OPTIMAL;
    s.basicStatus = QZ_STATUS_BASIC_OPTIMAL;
    s.dualStatus = QZ_STATUS_OPTIMAL;
  } else {
    s.primalStatus = s.model_status;
    s.dualStatus = QZ_STATUS_UNKNOWN;
    s.basicStatus = QZ_STATUS_LOADED;
  }
  if (m.cb.progress && run_progress_callback(m, QZLOC_PRIMAL, true) != 0)
    return QZERR_USER_INTERRUPT;
  return 0;
}

}  // namespace zento
