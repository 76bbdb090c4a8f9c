// QZoptimize and the entries that read solutions.
#include <algorithm>

#include "api/guard.h"
#include "core/optimize.h"

using namespace zento;

namespace {

int check_sol(QZmodel m) {
  if (m == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (!m->sol || m->modelState == QZ_STATUS_UNLOADED || m->callLevel < 0)
    return QZERR_INFO_NOT_AVAILABLE;
  const Sol& s = *m->sol;
  if (s.model_status == QZ_STATUS_INFORUNB || s.primalStatus == QZ_STATUS_UNLOADED)
    return QZERR_INFO_NOT_AVAILABLE;
  return 0;
}

int copy_array(const std::vector<double>& v, int expected, double* out) {
  if (expected == 0) return 0;
  if (out == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (static_cast<int>(v.size()) < expected) return QZERR_INFO_NOT_AVAILABLE;
  std::copy(v.begin(), v.begin() + expected, out);
  return 0;
}

int check_mip(QZmodel m) {
  if (m == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (!m->mipsol || m->modelState == QZ_STATUS_UNLOADED || m->callLevel < 0)
    return QZERR_INFO_NOT_AVAILABLE;
  return 0;
}

const MipSol& best_mip(const Imodel& m) { return m.mipsol->better ? *m.mipsol->better : *m.mipsol; }

}  // namespace

extern "C" {

int QZoptimize(QZmodel model, int nMethod, int* pnStatus) {
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return QZoptimize_impl(*model, nMethod, pnStatus); });
}

int QZgetSolutionStatus(QZmodel model, int* pnStatus) {
  if (model == nullptr || pnStatus == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (!model->sol || model->modelState == QZ_STATUS_UNLOADED) return QZERR_INFO_NOT_AVAILABLE;
  *pnStatus = model->sol->primalStatus;
  return 0;
}

int QZgetMIPSolutionStatus(QZmodel model, int* pnStatus) {
  if (int rc = check_mip(model)) return rc;
  if (pnStatus == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  const MipSol& s = *model->mipsol;
  if (s.overrideStatus != 0) {
    *pnStatus = s.overrideStatus;
  } else {
    *pnStatus = (s.MIPstatus != QZ_STATUS_FEASIBLE && s.nSolutions > 1) ? QZ_STATUS_FEASIBLE
                                                                          : s.MIPstatus;
  }
  return 0;
}

int QZgetSolutionInfo(QZmodel model, int* pnMethod, int* pnElapsed, int* pnSpxIter,
                      int* pnBarIter, int* pnNlpIter, int* pnPrimStatus, int* pnDualStatus,
                      int* pnBasicStatus, double* pdPobj, double* pdDobj, double* pdPinf,
                      double* pdDinf) {
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (!model->sol || model->modelState == QZ_STATUS_UNLOADED || model->callLevel < 0)
    return QZERR_INFO_NOT_AVAILABLE;
  const Sol& s = *model->sol;
  auto put = [](auto* p, auto v) {
    if (p) *p = v;
  };
  const bool nothing = s.primalStatus == QZ_STATUS_UNLOADED || s.primalStatus == QZ_STATUS_LOADED ||
                       (s.primalStatus == QZ_STATUS_UNKNOWN && s.method == 0);
  if (nothing) {
    if (s.method != -1) return QZERR_INFO_NOT_AVAILABLE;
    put(pnMethod, -1);
    put(pnElapsed, 0);
    put(pnSpxIter, 0);
    put(pnBarIter, 0);
    put(pnNlpIter, 0);
    put(pnPrimStatus, QZ_STATUS_UNLOADED);
    put(pnDualStatus, QZ_STATUS_UNLOADED);
    put(pnBasicStatus, QZ_STATUS_UNLOADED);
    put(pdPobj, 0.0);
    put(pdDobj, 0.0);
    put(pdPinf, 0.0);
    put(pdDinf, 0.0);
    return 0;
  }
  put(pnMethod, std::max(-1, s.method - 1));
  put(pnElapsed, static_cast<int>(s.elapsed));
  put(pnSpxIter, static_cast<int>(s.spxIter));
  put(pnBarIter, static_cast<int>(s.barIter));
  put(pnNlpIter, static_cast<int>(s.nlpIter));
  put(pnPrimStatus, s.primalStatus);
  put(pnDualStatus, s.dualStatus);
  put(pnBasicStatus, s.basicStatus);
  put(pdPobj, s.pobj);
  put(pdDobj, s.dobj);
  put(pdPinf, s.pinf);
  put(pdDinf, s.dinf);
  return 0;
}

int QZgetPrimalSolution(QZmodel model, double* padPrimal) {
  if (int rc = check_sol(model)) return rc;
  return copy_array(model->sol->primal, model->nVars, padPrimal);
}

int QZgetDualSolution(QZmodel model, double* padDual) {
  if (int rc = check_sol(model)) return rc;
  return copy_array(model->sol->dual, static_cast<int>(model->sol->dual.size()), padDual);
}

int QZgetSlacks(QZmodel model, double* padSlacks) {
  if (int rc = check_sol(model)) return rc;
  return copy_array(model->sol->slack, static_cast<int>(model->sol->slack.size()), padSlacks);
}

int QZgetReducedCosts(QZmodel model, double* padRedcosts) {
  if (int rc = check_sol(model)) return rc;
  return copy_array(model->sol->redcost, model->nVars, padRedcosts);
}

int QZgetReducedCostsCone(QZmodel model, double* padRedcosts) {
  if (int rc = check_sol(model)) return rc;
  if (model->sol->coneRedcost.empty()) return QZERR_INFO_NOT_AVAILABLE;
  return copy_array(model->sol->coneRedcost, model->nVars, padRedcosts);
}

int QZgetBasis(QZmodel model, int* panCstatus, int* panRstatus) {
  if (int rc = check_sol(model)) return rc;
  const Sol& s = *model->sol;
  if (s.basicStatus == QZ_STATUS_UNLOADED) return QZERR_INFO_NOT_AVAILABLE;
  if (panCstatus) std::copy(s.colStatus.begin(), s.colStatus.end(), panCstatus);
  if (panRstatus) std::copy(s.rowStatus.begin(), s.rowStatus.end(), panRstatus);
  return 0;
}

int QZgetObjective(QZmodel model, double* pdObj) {
  if (int rc = check_sol(model)) return rc;
  if (pdObj == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  *pdObj = model->sol->pobj;
  return 0;
}

int QZgetSolution(QZmodel model, int nWhich, double* padValues) {
  if (int rc = check_sol(model)) return rc;
  const Sol& s = *model->sol;
  const bool keepIpm = model->SplexPam.solver_ipmsol != 0;
  if (nWhich >= QZ_SOLUTION_PRIMAL && nWhich <= QZ_SOLUTION_REDCOSTS) {
    if (s.basicStatus == QZ_STATUS_UNLOADED && !keepIpm) return QZERR_INFO_NOT_AVAILABLE;
    const std::vector<double>* v[] = {&s.primal, &s.dual, &s.slack, &s.redcost};
    const std::vector<double>& a = *v[nWhich - QZ_SOLUTION_PRIMAL];
    return copy_array(a, static_cast<int>(a.size()), padValues);
  }
  if (nWhich >= QZ_SOLUTION_PRIMAL_IPM && nWhich <= QZ_SOLUTION_REDCOSTS_IPM) {
    const bool plain = model->quad.nnz() > 0 || keepIpm;
    const std::vector<double>* v[] = {&s.primal, &s.dual, &s.slack, &s.redcost};
    const std::vector<double>* w[] = {&s.ipmPrimal, &s.ipmDual, &s.ipmSlack, &s.ipmRedcost};
    const std::vector<double>& a = *(plain ? v : w)[nWhich - QZ_SOLUTION_PRIMAL_IPM];
    if (!plain && s.ipmStatus == QZ_STATUS_UNLOADED) return QZERR_INFO_NOT_AVAILABLE;
    if (a.empty() && ((nWhich - QZ_SOLUTION_PRIMAL_IPM) % 2 == 0 ? model->nVars : model->nCons) > 0)
      return QZERR_INFO_NOT_AVAILABLE;
    return copy_array(a, static_cast<int>(a.size()), padValues);
  }
  return QZERR_INDEX_OUT_OF_RANGE;
}

int QZgetSolution2(QZmodel model, int nSolType, double* padPrimal, double* padDual,
                   double* padSlacks, double* padRedcosts) {
  const int base = nSolType == -1 ? QZ_SOLUTION_PRIMAL_IPM : QZ_SOLUTION_PRIMAL;
  double* outs[] = {padPrimal, padDual, padSlacks, padRedcosts};
  for (int k = 0; k < 4; ++k) {
    if (outs[k] == nullptr) continue;
    if (int rc = QZgetSolution(model, base + k, outs[k])) return rc;
  }
  return model ? 0 : QZERR_ILLEGAL_NULL_POINTER;
}

int QZgetMIPPrimalSolution(QZmodel model, double* padPrimal) {
  if (int rc = check_mip(model)) return rc;
  return copy_array(best_mip(*model).primal, model->nVars, padPrimal);
}
int QZgetMIPDualSolution(QZmodel model, double* padDual) {
  if (int rc = check_mip(model)) return rc;
  const auto& v = best_mip(*model).dual;
  return copy_array(v, static_cast<int>(v.size()), padDual);
}
int QZgetMIPSlacks(QZmodel model, double* padSlacks) {
  if (int rc = check_mip(model)) return rc;
  const auto& v = best_mip(*model).slack;
  return copy_array(v, static_cast<int>(v.size()), padSlacks);
}
int QZgetMIPReducedCosts(QZmodel model, double* padRedcosts) {
  if (int rc = check_mip(model)) return rc;
  return copy_array(best_mip(*model).redcost, model->nVars, padRedcosts);
}
int QZgetMIPBasis(QZmodel model, int* panCstatus, int* panRstatus) {
  if (int rc = check_mip(model)) return rc;
  const MipSol& s = best_mip(*model);
  if (s.colStatus.empty() && model->nVars > 0) return QZERR_INFO_NOT_AVAILABLE;
  if (panCstatus) std::copy(s.colStatus.begin(), s.colStatus.end(), panCstatus);
  if (panRstatus) std::copy(s.rowStatus.begin(), s.rowStatus.end(), panRstatus);
  return 0;
}
int QZgetMIPObjective(QZmodel model, double* pdObj) {
  if (int rc = check_mip(model)) return rc;
  if (pdObj == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  const MipSol& s = best_mip(*model);
  const int st = s.MIPstatus;
  if (!(st == 1 || st == 2 || st == 5 || st == 8 || s.nSolutions > 1))
    return QZERR_INFO_NOT_AVAILABLE;
  *pdObj = s.obj;
  return 0;
}

}  // extern "C"
