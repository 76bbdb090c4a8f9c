/* Changing a loaded model in place: coefficients, right-hand sides, types, bounds, costs, and
   adding or deleting rows, columns, cones, sets, semi-continuous marks and quadratic terms.
   Every entry takes the model first and returns an error code; a count of 0 is a successful
   no-op. After a change the stored solution stays readable with the statuses of a point that
   is no longer proven (model status QZ_STATUS_LOADED, primal status QZ_STATUS_UNKNOWN), and a
   basis of the right shape is kept for a warm start. */
#ifndef ZENTO_MODIFY_H
#define ZENTO_MODIFY_H

#include "zento.h"

#ifdef __cplusplus
extern "C" {
#endif

/* QZaddArtColumns on a model that holds artificial columns already. */
#ifndef QZERR_ART_COLUMNS_PRESENT
#define QZERR_ART_COLUMNS_PRESENT 2062
#endif

/* ---- Coefficients, right-hand sides, types, bounds ---- */
QZ_API int QZmodifyAij(QZmodel model, int iRow, int iCol, double dAij);
QZ_API int QZmodifyAj(QZmodel model, int iCol, int nRows, const int* paiRows,
                      const double* padAj);
QZ_API int QZdeleteAj(QZmodel model, int iCol, int nRows, const int* paiRows);
QZ_API int QZmodifyRHS(QZmodel model, int nRows, const int* paiRows, const double* padB);
QZ_API int QZmodifyConstraintType(QZmodel model, int nRows, const int* paiRows,
                                  const char* pszTypes);
QZ_API int QZmodifyVariableType(QZmodel model, int nCols, const int* paiCols,
                                const char* pszTypes);
QZ_API int QZmodifyLowerBounds(QZmodel model, int nCols, const int* paiCols, const double* padL);
QZ_API int QZmodifyUpperBounds(QZmodel model, int nCols, const int* paiCols, const double* padU);
QZ_API int QZmodifyObjective(QZmodel model, int nCols, const int* paiCols, const double* padC);
QZ_API int QZmodifyObjConstant(QZmodel model, double dObjConst);
QZ_API int QZmodifySemiContVars(QZmodel model, int nVars, const int* paiVars,
                                const double* padL);
QZ_API int QZmodifyCone(QZmodel model, char cConeType, int iCone, int nNnz, const int* paiCols,
                        double dConeAlpha);
QZ_API int QZmodifySET(QZmodel model, char cSetType, int iSet, int nNnz, const int* paiCols);
QZ_API int QZmodifyPriorities(QZmodel model, int nCols, const int* paiCols,
                              const int* paiPriorities);

/* ---- Growth ---- */
QZ_API int QZsetProbAllocSizes(QZmodel model, int nColsAlloc, int nRowsAlloc, int nQCAlloc,
                               int nNzAlloc, int nQCnzAlloc, int nNLPnzAlloc);
QZ_API int QZsetProbNameAllocSizes(QZmodel model, int nColNameBytes, int nRowNameBytes);
QZ_API int QZaddEmptySpacesAcolumns(QZmodel model, const int* paiColnnz);
QZ_API int QZaddEmptySpacesNLPAcolumns(QZmodel model, const int* paiColnnz);
QZ_API int QZaddConstraints(QZmodel model, int nCons, const char* pszConTypes,
                            char** paszConNames, const int* paiRows, const double* padAcoef,
                            const int* paiCols, const double* padB);
QZ_API int QZaddVariables(QZmodel model, int nVars, const char* pszVarTypes,
                          char** paszVarNames, const int* paiAcols, const int* panAcols,
                          const double* padAcoef, const int* paiArows, const double* padC,
                          const double* padL, const double* padU);
QZ_API int QZaddCones(QZmodel model, int nCones, const char* pszConeTypes,
                      const double* padConeAlpha, char** paszConeNames,
                      const int* paiConebegcol, const int* paiConecols);
QZ_API int QZaddSETS(QZmodel model, int nSETS, const char* pszSETStype, const int* paiCARDnum,
                     const int* paiSETSbegcol, const int* paiSETScols);
QZ_API int QZaddQCterms(QZmodel model, int nQCnnz, const int* paiQCrows, const int* paiQCcols1,
                        const int* paiQCcols2, const double* padQCcoef);
QZ_API int QZaddNLPAj(QZmodel model, int iCol, int nRows, const int* paiRows,
                      const double* padAj);
QZ_API int QZaddNLPobj(QZmodel model, int nCols, const int* paiCols, const double* padColj);
QZ_API int QZaddArtColumns(QZmodel model, int nFlags, double dPenalty);
QZ_API int QZdelArtColumns(QZmodel model, int nFlags);

/* ---- Deletion ---- */
QZ_API int QZdeleteConstraints(QZmodel model, int nCons, const int* paiCons);
QZ_API int QZdeleteVariables(QZmodel model, int nVars, const int* paiVars);
QZ_API int QZdeleteCones(QZmodel model, int nCones, const int* paiCones);
QZ_API int QZdeleteSETS(QZmodel model, int nSETS, const int* paiSETS);
QZ_API int QZdeleteSemiContVars(QZmodel model, int nVars, const int* paiVars);
QZ_API int QZdeleteQCterms(QZmodel model, int nCons, const int* paiCons);
QZ_API int QZdeleteNLPobj(QZmodel model, int nCols, const int* paiCols);

#ifdef __cplusplus
}
#endif

#endif /* ZENTO_MODIFY_H */
