// Entries that load model data.
#include "api/guard.h"
#include "core/load.h"
#include "core/model_ops.h"

using namespace zento;

namespace {

// Loads of further parts need a loaded linear core.
int check_target(QZmodel m) {
  if (m == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (m->modelState == QZ_STATUS_UNLOADED) return QZERR_NO_MODEL_LOADED;
  return 0;
}

}  // namespace

extern "C" {

int QZloadLPData(QZmodel model, int nCons, int nVars, int dObjSense, double dObjConst,
                 const double* padC, const double* padB, const char* pszConTypes, int nAnnz,
                 const int* paiAcols, const int* panAcols, const double* padAcoef,
                 const int* paiArows, const double* padL, const double* padU) {
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({
    return load_lp_data(*model, nCons, nVars, dObjSense, dObjConst, padC, padB, pszConTypes,
                        nAnnz, paiAcols, panAcols, padAcoef, paiArows, padL, padU);
  });
}

int QZloadVarType(QZmodel model, char* pszVarTypes) {
  if (int rc = check_target(model)) return rc;
  QZ_GUARD({ return load_var_type(*model, pszVarTypes); });
}

int QZloadSemiContData(QZmodel model, int nSC, const int* paiVars, const double* padL,
                       const double* padU) {
  if (int rc = check_target(model)) return rc;
  QZ_GUARD({ return load_semicont_data(*model, nSC, paiVars, padL, padU); });
}

int QZloadSETSData(QZmodel model, int nSETS, const char* pszSETStype, const int* paiCARDnum,
                   const int* paiSETSbegcol, const int* paiSETScols) {
  if (int rc = check_target(model)) return rc;
  QZ_GUARD({
    return load_sets_data(*model, nSETS, pszSETStype, paiCARDnum, paiSETSbegcol, paiSETScols);
  });
}

int QZsetSETSStatei(QZmodel model, int iSet, int nState) {
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return set_sets_state(*model, iSet, nState); });
}

int QZloadConeData(QZmodel model, int nCone, const char* pszConeTypes,
                   const double* padConeAlpha, const int* paiConebegcone,
                   const int* paiConecols) {
  if (int rc = check_target(model)) return rc;
  QZ_GUARD({
    return load_cone_data(*model, nCone, pszConeTypes, padConeAlpha, paiConebegcone,
                          paiConecols);
  });
}

int QZloadPOSDData(QZmodel model, int nPOSD, const int* paiPOSDdim, const int* paiPOSDbeg,
                   const int* paiPOSDrowndx, const int* paiPOSDcolndx,
                   const int* paiPOSDvarndx) {
  if (int rc = check_target(model)) return rc;
  QZ_GUARD({
    return load_posd_data(*model, nPOSD, paiPOSDdim, paiPOSDbeg, paiPOSDrowndx, paiPOSDcolndx,
                          paiPOSDvarndx);
  });
}

int QZloadALLDIFFData(QZmodel model, int nALLDIFF, const int* paiAlldiffDim,
                      const int* paiAlldiffL, const int* paiAlldiffU, const int* paiAlldiffBeg,
                      const int* paiAlldiffVar) {
  if (int rc = check_target(model)) return rc;
  QZ_GUARD({
    return load_alldiff_data(*model, nALLDIFF, paiAlldiffDim, paiAlldiffL, paiAlldiffU,
                             paiAlldiffBeg, paiAlldiffVar);
  });
}

int QZloadQCData(QZmodel model, int QCnonzeros, const int* QCrowndx, const int* QCcolndx1,
                 const int* QCcolndx2, const double* QCcoef) {
  if (int rc = check_target(model)) return rc;
  QZ_GUARD({ return load_qc_data(*model, QCnonzeros, QCrowndx, QCcolndx1, QCcolndx2, QCcoef); });
}

int QZloadNameData(QZmodel model, const char* pszTitle, const char* pszObjName,
                   const char* pszRhsName, const char* pszRngName, const char* pszBndname,
                   char** paszConNames, char** paszVarNames, char** paszConeNames) {
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({
    return load_name_data(*model, pszTitle, pszObjName, pszRhsName, pszRngName, pszBndname,
                          paszConNames, paszVarNames, paszConeNames);
  });
}

int QZloadVarStartPoint(QZmodel model, const double* padPrimal) {
  if (int rc = check_target(model)) return rc;
  QZ_GUARD({ return load_start_point(*model, false, padPrimal); });
}

int QZloadMIPVarStartPoint(QZmodel model, const double* padPrimal) {
  if (int rc = check_target(model)) return rc;
  QZ_GUARD({ return load_start_point(*model, true, padPrimal); });
}

int QZloadVarStartPointPartial(QZmodel model, int nCols, const int* paiCols,
                               const double* padPrimal) {
  if (int rc = check_target(model)) return rc;
  QZ_GUARD({ return load_start_point_partial(*model, false, nCols, paiCols, padPrimal); });
}

int QZloadMIPVarStartPointPartial(QZmodel model, int nCols, const int* paiCols,
                                  const double* padPrimal) {
  if (int rc = check_target(model)) return rc;
  QZ_GUARD({ return load_start_point_partial(*model, true, nCols, paiCols, padPrimal); });
}

int QZloadVarPriorities(QZmodel model, const int* panCprior) {
  if (int rc = check_target(model)) return rc;
  QZ_GUARD({ return load_var_priorities(*model, panCprior); });
}

int QZloadBasis(QZmodel model, const int* panCstatus, const int* panRstatus) {
  if (int rc = check_target(model)) return rc;
  QZ_GUARD({ return load_basis(*model, panCstatus, panRstatus); });
}

int QZloadPrimalSolution(QZmodel model, const int* pnStatus, const double* pdObj,
                         const double* padPrimal, const double* padSlack, const double* pdPinf) {
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (int rc = check_target(model)) return rc;
  QZ_GUARD({ return load_primal_solution(*model, pnStatus, pdObj, padPrimal, padSlack, pdPinf); });
}

int QZloadDualSolution(QZmodel model, const int* pnStatus, const double* pdDobj,
                       const double* padDual, const double* padRedcost, const double* pdDinf) {
  if (int rc = check_target(model)) return rc;
  QZ_GUARD({ return load_dual_solution(*model, pnStatus, pdDobj, padDual, padRedcost, pdDinf); });
}

int QZloadSolutionInfo(QZmodel model, const int* pnMethod, const int* pnElapsed,
                       const int* pnSpxIter, const int* pnBarIter, const int* pnNlpIter,
                       const int* pnPrimStatus, const int* pnDualStatus, const int* pnBasicStatus,
                       const double* pdPobj, const double* pdDobj, const double* pdPinf,
                       const double* pdDinf) {
  if (int rc = check_target(model)) return rc;
  QZ_GUARD({
    Sol& s = ensure_sol(*model);
    if (pnMethod) s.method = *pnMethod + 1;
    if (pnElapsed) s.elapsed = *pnElapsed;
    if (pnSpxIter) s.spxIter = *pnSpxIter;
    if (pnBarIter) s.barIter = *pnBarIter;
    if (pnNlpIter) s.nlpIter = *pnNlpIter;
    if (pnPrimStatus) s.primalStatus = *pnPrimStatus;
    if (pnDualStatus) s.dualStatus = *pnDualStatus;
    if (pnBasicStatus) s.basicStatus = *pnBasicStatus;
    if (pdPobj) s.pobj = *pdPobj;
    if (pdDobj) s.dobj = *pdDobj;
    if (pdPinf) s.pinf = *pdPinf;
    if (pdDinf) s.dinf = *pdDinf;
    return 0;
  });
}

int QZloadModelStatus(QZmodel model, const int* pnModelStatus, const int* pnErrorCode) {
  if (int rc = check_target(model)) return rc;
  QZ_GUARD({ return load_model_status(*model, pnModelStatus, pnErrorCode); });
}

}  // extern "C"
