/* Public C interface of the zento optimization library. */
#ifndef ZENTO_H
#define ZENTO_H

#ifdef __cplusplus
extern "C" {
#endif

#if defined(ZENTO_BUILDING_LIBRARY)
#define QZ_API __attribute__((visibility("default")))
#else
#define QZ_API
#endif

/* Opaque handles. */
typedef struct QZenv_s* QZenv;
typedef struct Imodel* QZmodel;

#define QZ_INFINITY 1.0E30

/* Objective sense. */
#define QZ_MIN 1
#define QZ_MAX -1

/* Model and solver status. */
#define QZ_STATUS_OPTIMAL 1
#define QZ_STATUS_BASIC_OPTIMAL 2
#define QZ_STATUS_INFEASIBLE 3
#define QZ_STATUS_UNBOUNDED 4
#define QZ_STATUS_FEASIBLE 5
#define QZ_STATUS_INFORUNB 6
#define QZ_STATUS_NEAR_OPTIMAL 7
#define QZ_STATUS_LOCAL_OPTIMAL 8
#define QZ_STATUS_LOCAL_INFEASIBLE 9
#define QZ_STATUS_CUTOFF 10
#define QZ_STATUS_NUMERICAL_ERROR 11
#define QZ_STATUS_UNKNOWN 12
#define QZ_STATUS_UNLOADED 13
#define QZ_STATUS_LOADED 14
#define QZ_STATUS_BOUNDED 15

/* Basis status of a column or row; 0 and above is basic. */
#define QZ_BASTYPE_BAS 0
#define QZ_BASTYPE_ATLO -1
#define QZ_BASTYPE_ATUP -2
#define QZ_BASTYPE_FNUL -3
#define QZ_BASTYPE_SBAS -4

/* Solve methods. */
#define QZ_METHOD_FREE 0
#define QZ_METHOD_PSIMPLEX 1
#define QZ_METHOD_DSIMPLEX 2
#define QZ_METHOD_BARRIER 3
#define QZ_METHOD_NLP 4
#define QZ_METHOD_MIP 5
#define QZ_METHOD_MULTIS 6
#define QZ_METHOD_GOP 7
#define QZ_METHOD_IIS 8
#define QZ_METHOD_IUS 9
#define QZ_METHOD_SBD 10
#define QZ_METHOD_SPRINT 11
#define QZ_METHOD_GA 12

/* Nonlinear solver choice (QZ_IPARAM_NLP_SOLVER). */
#define QZ_NMETHOD_FREE 4
#define QZ_NEMTHOD_LSQ 5
#define QZ_NMETHOD_QP 6
#define QZ_NMETHOD_CONOPT 7
#define QZ_NEMTHOD_SLP 8
#define QZ_NMETHOD_MSW_GRG 9
#define QZ_NMETHOD_IPOPT 10

/* Bits of QZ_IPARAM_COPY_MODE. */
#define QZ_RAW_COPY 0
#define QZ_DEEP_COPY 1
#define QZ_TIME_COPY 2
#define QZ_STOC_COPY 4
#define QZ_SNGSTG_COPY 8

/* Set types of QZloadSETSData (numeric bytes, not digits). */
#define QZ_SOS1 1
#define QZ_SOS2 2
#define QZ_SOS3 3
#define QZ_SOSC 4

/* Selectors of QZgetSolution. */
#define QZ_SOLUTION_PRIMAL 11
#define QZ_SOLUTION_DUAL 12
#define QZ_SOLUTION_SLACKS 13
#define QZ_SOLUTION_REDCOSTS 14
#define QZ_SOLUTION_PRIMAL_IPM 15
#define QZ_SOLUTION_DUAL_IPM 16
#define QZ_SOLUTION_SLACKS_IPM 17
#define QZ_SOLUTION_REDCOSTS_IPM 18

#ifdef __cplusplus
}
#endif

#include "zento_errors.h"
#include "zento_params.h"
#include "zento_info.h"
#include "zento_io.h"
#include "zento_lp.h"
#include "zento_modify.h"
#include "zento_random.h"
#include "zento_mip.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Environment and model objects ---- */
QZ_API QZenv QZcreateEnv(int* pnErrorcode);
QZ_API int QZdeleteEnv(QZenv* pEnv);
QZ_API QZmodel QZcreateModel(QZenv env, int* pnErrorcode);
QZ_API int QZdeleteModel(QZmodel* pModel);
QZ_API QZmodel QZcopyModel(QZmodel src, int* pnErrorcode);
QZ_API int QZcopyParam(QZmodel src, QZmodel dst, int mode);
QZ_API int QZcopyAllPam(QZmodel src, QZmodel dst);
QZ_API int QZcopyStocParam(QZmodel src, QZmodel dst);
QZ_API int QZcopyEnv(QZenv src, QZenv dst);
QZ_API int QZgetModelEnv(QZmodel model, QZenv* pEnv);
QZ_API int QZgetEnvModelCount(QZenv env, int* pnCount);
QZ_API int QZgetEnvModelList(QZenv env, QZmodel* paModels);
QZ_API QZmodel QZgetEnvLogModel(QZenv env);
QZ_API QZmodel QZgetMasterModel(QZmodel model);
QZ_API int QZgetVersionInfo(char* szVersion, char* szBuildData);
QZ_API int QZgetThreadNum(void);
QZ_API int QZfreeSolverMemory(QZmodel model);
QZ_API void QZfreeHashMemory(QZmodel model);
QZ_API void QZfreeSolutionMemory(QZmodel model);
QZ_API void QZfreeMIPSolutionMemory(QZmodel model);
QZ_API void QZfreeGOPSolutionMemory(QZmodel model);
QZ_API void QZfreeNLPSolverMemory(QZmodel model);
QZ_API void QZfreeStocMemory(QZmodel model);
QZ_API void QZfreeStocHashMemory(QZmodel model);
QZ_API void QZfreeCutpool(QZmodel model);
QZ_API void QZfreeNameData(QZmodel model);
typedef void (*QZexitFunc_t)(QZenv env, int nErrorcode, void* pvData);
QZ_API int QZsetEnvExitFunc(QZenv env, QZexitFunc_t pfFunc, void* pvData);
typedef void (*QZerrorFunc_t)(QZenv env, int nErrorcode, const char* szMessage, void* pvData);
QZ_API int qzi_set_error_callback(QZenv env, QZerrorFunc_t pfFunc, void* pvData);

/* ---- Loading model data ---- */
QZ_API int QZloadLPData(QZmodel model, int nCons, int nVars, int dObjSense, double dObjConst,
                        const double* padC, const double* padB, const char* pszConTypes, int nAnnz,
                        const int* paiAcols, const int* panAcols, const double* padAcoef,
                        const int* paiArows, const double* padL, const double* padU);
QZ_API int QZloadVarType(QZmodel model, char* pszVarTypes);
QZ_API int QZloadSemiContData(QZmodel model, int nSC, const int* paiVars, const double* padL,
                              const double* padU);
QZ_API int QZloadSETSData(QZmodel model, int nSETS, const char* pszSETStype, const int* paiCARDnum,
                          const int* paiSETSbegcol, const int* paiSETScols);
QZ_API int QZsetSETSStatei(QZmodel model, int iSet, int nState);
QZ_API int QZloadConeData(QZmodel model, int nCone, const char* pszConeTypes,
                          const double* padConeAlpha, const int* paiConebegcone,
                          const int* paiConecols);
QZ_API int QZloadPOSDData(QZmodel model, int nPOSD, const int* paiPOSDdim, const int* paiPOSDbeg,
                          const int* paiPOSDrowndx, const int* paiPOSDcolndx,
                          const int* paiPOSDvarndx);
QZ_API int QZloadALLDIFFData(QZmodel model, int nALLDIFF, const int* paiAlldiffDim,
                             const int* paiAlldiffL, const int* paiAlldiffU,
                             const int* paiAlldiffBeg, const int* paiAlldiffVar);
QZ_API int QZloadQCData(QZmodel model, int QCnonzeros, const int* QCrowndx, const int* QCcolndx1,
                        const int* QCcolndx2, const double* QCcoef);
QZ_API int QZloadNameData(QZmodel model, const char* pszTitle, const char* pszObjName,
                          const char* pszRhsName, const char* pszRngName, const char* pszBndname,
                          char** paszConNames, char** paszVarNames, char** paszConeNames);
QZ_API int QZloadVarStartPoint(QZmodel model, const double* padPrimal);
QZ_API int QZloadMIPVarStartPoint(QZmodel model, const double* padPrimal);
QZ_API int QZloadVarStartPointPartial(QZmodel model, int nCols, const int* paiCols,
                                      const double* padPrimal);
QZ_API int QZloadMIPVarStartPointPartial(QZmodel model, int nCols, const int* paiCols,
                                         const double* padPrimal);
QZ_API int QZloadVarPriorities(QZmodel model, const int* panCprior);
QZ_API int QZloadBasis(QZmodel model, const int* panCstatus, const int* panRstatus);
QZ_API int QZloadPrimalSolution(QZmodel model, const int* pnStatus, const double* pdObj,
                                const double* padPrimal, const double* padSlack,
                                const double* pdPinf);
QZ_API int QZloadDualSolution(QZmodel model, const int* pnStatus, const double* pdDobj,
                              const double* padDual, const double* padRedcost,
                              const double* pdDinf);
QZ_API int QZloadSolutionInfo(QZmodel model, const int* pnMethod, const int* pnElapsed,
                              const int* pnSpxIter, const int* pnBarIter, const int* pnNlpIter,
                              const int* pnPrimStatus, const int* pnDualStatus,
                              const int* pnBasicStatus, const double* pdPobj,
                              const double* pdDobj, const double* pdPinf, const double* pdDinf);
QZ_API int QZloadModelStatus(QZmodel model, const int* pnModelStatus, const int* pnErrorCode);

/* ---- Querying model data ---- */
QZ_API int QZgetDimensions(QZmodel model, int* pnVars, int* pnCons, int* pnCones, int* pnAnnz,
                           int* pnQCnnz, int* pnConeNnz, int* pnNLPnnz, int* pnNLPobjnnz,
                           int* pnVarNamelen, int* pnConNamelen, int* pnConeNamelen);
QZ_API int QZgetLPData(QZmodel model, int* pnObjSense, double* pdObjConst, double* padC,
                       double* padB, char* pszConTypes, int* paiAcols, int* panAcols,
                       double* padAcoef, int* paiArows, double* padL, double* padU);
QZ_API int QZgetNameData(QZmodel model, char* pszTitle, char* pszObjName, char* pszRhsName,
                         char* pszRngName, char* pszBndname, char** paszConNames,
                         char* pachConNameData, char** paszVarNames, char* pachVarNameData,
                         char** paszConeNames, char* pachConeNameData);
QZ_API int QZgetConstraintDatai(QZmodel model, int iCon, char* pchType, char* pchIsNlp,
                                double* pdB);
QZ_API int QZgetLPVariableDataj(QZmodel model, int iVar, char* pchVartype, double* pdC,
                                double* pdL, double* pdU, int* pnAnnz, int* paiArows,
                                double* padAcoef);
QZ_API int QZgetLPConstraintDatai(QZmodel model, int iCon, char* pchType, double* pdB,
                                  int* pnNnz, int* paiVar, double* padAcoef);
QZ_API int QZgetLowerBoundj(QZmodel model, int iVar, double* pdValue);
QZ_API int QZgetUpperBoundj(QZmodel model, int iVar, double* pdValue);
QZ_API int QZgetObjectivej(QZmodel model, int iVar, double* pdValue);
QZ_API int QZgetVarType(QZmodel model, char* pszVarTypes);
QZ_API int QZgetVariableNamej(QZmodel model, int iVar, char* pszName);
QZ_API int QZgetConstraintNamei(QZmodel model, int iCon, char* pszName);
QZ_API int QZgetConeNamei(QZmodel model, int iCone, char* pszName);
QZ_API int QZgetVariableIndex(QZmodel model, const char* pszName, int* pnIndex);
QZ_API int QZgetConstraintIndex(QZmodel model, const char* pszName, int* pnIndex);
QZ_API int QZgetConeIndex(QZmodel model, const char* pszName, int* pnIndex);
QZ_API int QZgetSETSData(QZmodel model, int* piNsets, int* piNtnz, char* pszSETStype,
                         int* piCardnum, int* piNnz, int* piBegset, int* piVarndx);
QZ_API int QZgetSETSDatai(QZmodel model, int iSet, char* pszSETStype, int* piCardnum,
                          int* piNnz, int* piVarndx);
QZ_API int QZgetSemiContData(QZmodel model, int* piNvars, int* piVarndx, double* padL,
                             double* padU);
QZ_API int QZgetConeDatai(QZmodel model, int iCone, char* pchConeType, double* pdConeAlpha,
                          int* piNnz, int* piCols);
QZ_API int QZgetQCData(QZmodel model, int* paiQCrows, int* paiQCcols1, int* paiQCcols2,
                       double* padQCcoef);
QZ_API int QZgetQCDatai(QZmodel model, int iCon, int* pnQCnnz, int* paiQCcols1,
                        int* paiQCcols2, double* padQCcoef);
QZ_API int QZgetPOSDData(QZmodel model, int* pnPOSD, int* paiPOSDdim, int* paiPOSDnnz,
                         int* paiPOSDbeg, int* paiPOSDrowndx, int* paiPOSDcolndx,
                         int* paiPOSDvarndx);
QZ_API int QZgetPOSDDatai(QZmodel model, int iPOSD, int* pnPOSDdim, int* pnPOSDnnz,
                          int* paiPOSDrowndx, int* paiPOSDcolndx, int* paiPOSDvarndx);
QZ_API int QZgetALLDIFFData(QZmodel model, int* pinALLDIFF, int* paiAlldiffDim,
                            int* paiAlldiffL, int* paiAlldiffU, int* paiAlldiffBeg,
                            int* paiAlldiffVar);
QZ_API int QZgetALLDIFFDatai(QZmodel model, int iALLDIFF, int* pnAlldiffDim, int* pnAlldiffL,
                             int* pnAlldiffU, int* paiAlldiffVar);
QZ_API int QZgetVarStartPoint(QZmodel model, double* padPrimal);
QZ_API int QZgetMIPVarStartPoint(QZmodel model, double* padPrimal);
QZ_API int QZgetVarStartPointPartial(QZmodel model, int* pnCols, int* paiCols,
                                     double* padPrimal);
QZ_API int QZgetMIPVarStartPointPartial(QZmodel model, int* pnCols, int* paiCols,
                                        double* padPrimal);
QZ_API int QZgetVarPriorities(QZmodel model, int* panCprior);
QZ_API int QZgetGOPVariablePriority(QZmodel model, int iVar, int* pnPriority);
QZ_API int QZgetVarTypeCount(QZmodel model, int* pnCont, int* pnBin, int* pnInt);

/* ---- Optimizing and reading solutions ---- */
QZ_API int QZoptimize(QZmodel model, int nMethod, int* pnStatus);
QZ_API int QZgetSolutionStatus(QZmodel model, int* pnStatus);
QZ_API int QZgetMIPSolutionStatus(QZmodel model, int* pnStatus);
QZ_API int QZgetSolutionInfo(QZmodel model, int* pnMethod, int* pnElapsed, int* pnSpxIter,
                             int* pnBarIter, int* pnNlpIter, int* pnPrimStatus,
                             int* pnDualStatus, int* pnBasicStatus, double* pdPobj,
                             double* pdDobj, double* pdPinf, double* pdDinf);
QZ_API int QZgetPrimalSolution(QZmodel model, double* padPrimal);
QZ_API int QZgetDualSolution(QZmodel model, double* padDual);
QZ_API int QZgetSlacks(QZmodel model, double* padSlacks);
QZ_API int QZgetReducedCosts(QZmodel model, double* padRedcosts);
QZ_API int QZgetReducedCostsCone(QZmodel model, double* padRedcosts);
QZ_API int QZgetBasis(QZmodel model, int* panCstatus, int* panRstatus);
QZ_API int QZgetMIPPrimalSolution(QZmodel model, double* padPrimal);
QZ_API int QZgetMIPDualSolution(QZmodel model, double* padDual);
QZ_API int QZgetMIPSlacks(QZmodel model, double* padSlacks);
QZ_API int QZgetMIPReducedCosts(QZmodel model, double* padRedcosts);
QZ_API int QZgetMIPBasis(QZmodel model, int* panCstatus, int* panRstatus);
QZ_API int QZgetObjective(QZmodel model, double* pdObj);
QZ_API int QZgetMIPObjective(QZmodel model, double* pdObj);
QZ_API int QZgetSolution(QZmodel model, int nWhich, double* padValues);
QZ_API int QZgetSolution2(QZmodel model, int nSolType, double* padPrimal, double* padDual,
                          double* padSlacks, double* padRedcosts);

#ifdef __cplusplus
}
#endif

#endif /* ZENTO_H */
