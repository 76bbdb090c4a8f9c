// Entries that change a loaded model in place.
#include <initializer_list>

#include "api/guard.h"
#include "core/modify.h"

using namespace zento;

namespace {

constexpr int kNoOp = -1;

// In this order: a null model, a count of 0 (a no-op, whatever the arrays), a negative count,
// a model without data, a required array that is null. `allowUnloaded`: additions may start
// an empty model.
int entry_check(QZmodel m, int n, std::initializer_list<const void*> arrays,
                bool allowUnloaded = false) {
  if (m == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (n == 0) return kNoOp;
  if (n < 0) return QZERR_ERROR_IN_INPUT;
  if (!allowUnloaded && m->modelState == QZ_STATUS_UNLOADED) return QZERR_NO_MODEL_LOADED;
  for (const void* p : arrays)
    if (p == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  return 0;
}

int model_check(QZmodel m) {
  if (m == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (m->modelState == QZ_STATUS_UNLOADED) return QZERR_NO_MODEL_LOADED;
  return 0;
}

int done(int rc) { return rc == kNoOp ? 0 : rc; }

// The nonlinear column structure these entries change is not held by this build's models.
int nonlinear_structure(QZmodel m, int n, const int* idx, int limit) {
  for (int k = 0; k < n; ++k)
    if (idx[k] < 0 || idx[k] >= limit) return QZERR_INDEX_OUT_OF_RANGE;
  if (m->nNLPnnz > 0 || m->nNLPobjnnz > 0) return QZERR_ALREADY_LOADED;
  return QZERR_NOT_SUPPORTED;
}

}  // namespace

extern "C" {

int QZmodifyAij(QZmodel model, int iRow, int iCol, double dAij) {
  if (int rc = model_check(model)) return rc;
  QZ_GUARD({ return modify_aj(*model, iCol, 1, &iRow, &dAij); });
}

int QZmodifyAj(QZmodel model, int iCol, int nRows, const int* paiRows, const double* padAj) {
  if (int rc = entry_check(model, nRows, {paiRows})) return done(rc);
  QZ_GUARD({ return modify_aj(*model, iCol, nRows, paiRows, padAj); });
}

int QZdeleteAj(QZmodel model, int iCol, int nRows, const int* paiRows) {
  if (int rc = entry_check(model, nRows, {paiRows})) return done(rc);
  QZ_GUARD({ return delete_aj(*model, iCol, nRows, paiRows); });
}

int QZmodifyRHS(QZmodel model, int nRows, const int* paiRows, const double* padB) {
  if (int rc = entry_check(model, nRows, {paiRows, padB})) return done(rc);
  QZ_GUARD({ return modify_rhs(*model, nRows, paiRows, padB); });
}

int QZmodifyConstraintType(QZmodel model, int nRows, const int* paiRows, const char* pszTypes) {
  if (int rc = entry_check(model, nRows, {paiRows, pszTypes})) return done(rc);
  QZ_GUARD({ return modify_constraint_type(*model, nRows, paiRows, pszTypes); });
}

int QZmodifyVariableType(QZmodel model, int nCols, const int* paiCols, const char* pszTypes) {
  if (int rc = entry_check(model, nCols, {paiCols, pszTypes})) return done(rc);
  QZ_GUARD({ return modify_variable_type(*model, nCols, paiCols, pszTypes); });
}

int QZmodifyLowerBounds(QZmodel model, int nCols, const int* paiCols, const double* padL) {
  if (int rc = entry_check(model, nCols, {paiCols, padL})) return done(rc);
  QZ_GUARD({ return modify_bounds(*model, false, nCols, paiCols, padL); });
}

int QZmodifyUpperBounds(QZmodel model, int nCols, const int* paiCols, const double* padU) {
  if (int rc = entry_check(model, nCols, {paiCols, padU})) return done(rc);
  QZ_GUARD({ return modify_bounds(*model, true, nCols, paiCols, padU); });
}

int QZmodifyObjective(QZmodel model, int nCols, const int* paiCols, const double* padC) {
  if (int rc = entry_check(model, nCols, {paiCols, padC})) return done(rc);
  QZ_GUARD({ return modify_objective(*model, nCols, paiCols, padC); });
}

int QZmodifyObjConstant(QZmodel model, double dObjConst) {
  if (int rc = model_check(model)) return rc;
  QZ_GUARD({ return modify_obj_constant(*model, dObjConst); });
}

int QZmodifySemiContVars(QZmodel model, int nVars, const int* paiVars, const double* padL) {
  if (int rc = entry_check(model, nVars, {paiVars, padL})) return done(rc);
  QZ_GUARD({ return modify_semicont_vars(*model, nVars, paiVars, padL); });
}

int QZmodifyCone(QZmodel model, char cConeType, int iCone, int nNnz, const int* paiCols,
                 double dConeAlpha) {
  if (int rc = model_check(model)) return rc;
  QZ_GUARD({ return modify_cone(*model, cConeType, iCone, nNnz, paiCols, dConeAlpha); });
}

int QZmodifySET(QZmodel model, char cSetType, int iSet, int nNnz, const int* paiCols) {
  if (int rc = model_check(model)) return rc;
  QZ_GUARD({ return modify_set(*model, cSetType, iSet, nNnz, paiCols); });
}

int QZmodifyPriorities(QZmodel model, int nCols, const int* paiCols, const int* paiPriorities) {
  if (int rc = entry_check(model, nCols, {paiCols, paiPriorities})) return done(rc);
  QZ_GUARD({ return modify_priorities(*model, nCols, paiCols, paiPriorities); });
}

int QZsetProbAllocSizes(QZmodel model, int nColsAlloc, int nRowsAlloc, int nQCAlloc,
                        int nNzAlloc, int nQCnzAlloc, int nNLPnzAlloc) {
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({
    return set_prob_alloc_sizes(*model, nColsAlloc, nRowsAlloc, nQCAlloc, nNzAlloc, nQCnzAlloc,
                                nNLPnzAlloc);
  });
}

int QZsetProbNameAllocSizes(QZmodel model, int nColNameBytes, int nRowNameBytes) {
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return set_prob_name_alloc_sizes(*model, nColNameBytes, nRowNameBytes); });
}

int QZaddEmptySpacesAcolumns(QZmodel model, const int* paiColnnz) {
  if (model == nullptr || paiColnnz == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (int rc = model_check(model)) return rc;
  QZ_GUARD({ return add_empty_spaces_acolumns(*model, paiColnnz); });
}

int QZaddEmptySpacesNLPAcolumns(QZmodel model, const int* paiColnnz) {
  if (model == nullptr || paiColnnz == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (int rc = model_check(model)) return rc;
  return QZERR_NOT_SUPPORTED;
}

int QZaddConstraints(QZmodel model, int nCons, const char* pszConTypes, char** paszConNames,
                     const int* paiRows, const double* padAcoef, const int* paiCols,
                     const double* padB) {
  if (int rc = entry_check(model, nCons, {}, true)) return done(rc);
  QZ_GUARD({
    return add_constraints(*model, nCons, pszConTypes, paszConNames, paiRows, padAcoef, paiCols,
                           padB);
  });
}

int QZaddVariables(QZmodel model, int nVars, const char* pszVarTypes, char** paszVarNames,
                   const int* paiAcols, const int* panAcols, const double* padAcoef,
                   const int* paiArows, const double* padC, const double* padL,
                   const double* padU) {
  if (int rc = entry_check(model, nVars, {}, true)) return done(rc);
  QZ_GUARD({
    return add_variables(*model, nVars, pszVarTypes, paszVarNames, paiAcols, panAcols, padAcoef,
                         paiArows, padC, padL, padU);
  });
}

int QZaddCones(QZmodel model, int nCones, const char* pszConeTypes, const double* padConeAlpha,
               char** paszConeNames, const int* paiConebegcol, const int* paiConecols) {
  if (int rc = entry_check(model, nCones, {pszConeTypes, paiConebegcol, paiConecols}))
    return done(rc);
  QZ_GUARD({
    return add_cones(*model, nCones, pszConeTypes, padConeAlpha, paszConeNames, paiConebegcol,
                     paiConecols);
  });
}

int QZaddSETS(QZmodel model, int nSETS, const char* pszSETStype, const int* paiCARDnum,
              const int* paiSETSbegcol, const int* paiSETScols) {
  if (int rc = entry_check(model, nSETS, {pszSETStype, paiSETSbegcol, paiSETScols}))
    return done(rc);
  QZ_GUARD({
    return add_sets(*model, nSETS, pszSETStype, paiCARDnum, paiSETSbegcol, paiSETScols);
  });
}

int QZaddQCterms(QZmodel model, int nQCnnz, const int* paiQCrows, const int* paiQCcols1,
                 const int* paiQCcols2, const double* padQCcoef) {
  if (int rc = entry_check(model, nQCnnz, {paiQCrows, paiQCcols1, paiQCcols2, padQCcoef}))
    return done(rc);
  QZ_GUARD({
    return add_qc_terms(*model, nQCnnz, paiQCrows, paiQCcols1, paiQCcols2, padQCcoef);
  });
}

int QZaddNLPAj(QZmodel model, int iCol, int nRows, const int* paiRows, const double* padAj) {
  if (int rc = entry_check(model, nRows, {paiRows, padAj})) return done(rc);
  if (iCol < 0 || iCol >= model->nVars) return QZERR_INDEX_OUT_OF_RANGE;
  return nonlinear_structure(model, nRows, paiRows, model->nCons);
}

int QZaddNLPobj(QZmodel model, int nCols, const int* paiCols, const double* padColj) {
  if (int rc = entry_check(model, nCols, {paiCols})) return done(rc);
  return nonlinear_structure(model, nCols, paiCols, model->nVars);
}

int QZdeleteNLPobj(QZmodel model, int nCols, const int* paiCols) {
  if (int rc = entry_check(model, nCols, {paiCols})) return done(rc);
  return nonlinear_structure(model, nCols, paiCols, model->nVars);
}

int QZaddArtColumns(QZmodel model, int nFlags, double dPenalty) {
  if (int rc = model_check(model)) return rc;
  QZ_GUARD({ return add_art_columns(*model, nFlags, dPenalty); });
}

int QZdelArtColumns(QZmodel model, int nFlags) {
  if (int rc = model_check(model)) return rc;
  QZ_GUARD({ return del_art_columns(*model, nFlags); });
}

int QZdeleteConstraints(QZmodel model, int nCons, const int* paiCons) {
  if (int rc = entry_check(model, nCons, {paiCons})) return done(rc);
  QZ_GUARD({ return delete_constraints(*model, nCons, paiCons); });
}

int QZdeleteVariables(QZmodel model, int nVars, const int* paiVars) {
  if (int rc = entry_check(model, nVars, {paiVars})) return done(rc);
  QZ_GUARD({ return delete_variables(*model, nVars, paiVars); });
}

int QZdeleteCones(QZmodel model, int nCones, const int* paiCones) {
  if (int rc = entry_check(model, nCones, {paiCones})) return done(rc);
  QZ_GUARD({ return delete_cones(*model, nCones, paiCones); });
}

int QZdeleteSETS(QZmodel model, int nSETS, const int* paiSETS) {
  if (int rc = entry_check(model, nSETS, {paiSETS})) return done(rc);
  QZ_GUARD({ return delete_sets(*model, nSETS, paiSETS); });
}

int QZdeleteSemiContVars(QZmodel model, int nVars, const int* paiVars) {
  if (int rc = entry_check(model, nVars, {paiVars})) return done(rc);
  QZ_GUARD({ return delete_semicont_vars(*model, nVars, paiVars); });
}

int QZdeleteQCterms(QZmodel model, int nCons, const int* paiCons) {
  if (int rc = entry_check(model, nCons, {paiCons})) return done(rc);
  QZ_GUARD({ return delete_qc_terms(*model, nCons, paiCons); });
}

}  // extern "C"
