// Fortran-style twins: lower-case names with a trailing underscore that take every scalar and
// handle by reference and call the plain entry. One line per entry.
#include "zento.h"
#include "zento_fortran.h"

extern "C" {

QZenv qzcreateenv_(int* pnErrorcode) { return QZcreateEnv(pnErrorcode); }
int qzdeleteenv_(QZenv* pEnv) { return QZdeleteEnv(pEnv); }
QZmodel qzcreatemodel_(QZenv* env, int* pnErrorcode) { return QZcreateModel(*env, pnErrorcode); }
int qzdeletemodel_(QZmodel* pModel) { return QZdeleteModel(pModel); }
QZmodel qzcopymodel_(QZmodel* src, int* pnErrorcode) { return QZcopyModel(*src, pnErrorcode); }
int qzcopyparam_(QZmodel* src, QZmodel* dst, int* mode) { return QZcopyParam(*src, *dst, *mode); }
int qzcopyallpam_(QZmodel* src, QZmodel* dst) { return QZcopyAllPam(*src, *dst); }
int qzcopystocparam_(QZmodel* src, QZmodel* dst) { return QZcopyStocParam(*src, *dst); }
int qzcopyenv_(QZenv* src, QZenv* dst) { return QZcopyEnv(*src, *dst); }
int qzgetmodelenv_(QZmodel* model, QZenv* pEnv) { return QZgetModelEnv(*model, pEnv); }
int qzgetenvmodelcount_(QZenv* env, int* pnCount) { return QZgetEnvModelCount(*env, pnCount); }
int qzgetenvmodellist_(QZenv* env, QZmodel* paModels) { return QZgetEnvModelList(*env, paModels); }
QZmodel qzgetenvlogmodel_(QZenv* env) { return QZgetEnvLogModel(*env); }
QZmodel qzgetmastermodel_(QZmodel* model) { return QZgetMasterModel(*model); }
int qzgetversioninfo_(char* szVersion, char* szBuildData) { return QZgetVersionInfo(szVersion, szBuildData); }
int qzfreesolvermemory_(QZmodel* model) { return QZfreeSolverMemory(*model); }
void qzfreehashmemory_(QZmodel* model) { QZfreeHashMemory(*model); }
void qzfreesolutionmemory_(QZmodel* model) { QZfreeSolutionMemory(*model); }
void qzfreemipsolutionmemory_(QZmodel* model) { QZfreeMIPSolutionMemory(*model); }
void qzfreegopsolutionmemory_(QZmodel* model) { QZfreeGOPSolutionMemory(*model); }
void qzfreenlpsolvermemory_(QZmodel* model) { QZfreeNLPSolverMemory(*model); }
void qzfreestocmemory_(QZmodel* model) { QZfreeStocMemory(*model); }
void qzfreestochashmemory_(QZmodel* model) { QZfreeStocHashMemory(*model); }
void qzfreecutpool_(QZmodel* model) { QZfreeCutpool(*model); }
void qzfreenamedata_(QZmodel* model) { QZfreeNameData(*model); }
int qzsetenvexitfunc_(QZenv* env, QZexitFunc_t* pfFunc, void* pvData) { return QZsetEnvExitFunc(*env, *pfFunc, pvData); }
int qzloadlpdata_(QZmodel* model, int* nCons, int* nVars, int* dObjSense, double* dObjConst, const double* padC, const double* padB, const char* pszConTypes, int* nAnnz, const int* paiAcols, const int* panAcols, const double* padAcoef, const int* paiArows, const double* padL, const double* padU) { return QZloadLPData(*model, *nCons, *nVars, *dObjSense, *dObjConst, padC, padB, pszConTypes, *nAnnz, paiAcols, panAcols, padAcoef, paiArows, padL, padU); }
int qzloadvartype_(QZmodel* model, char* pszVarTypes) { return QZloadVarType(*model, pszVarTypes); }
int qzloadsemicontdata_(QZmodel* model, int* nSC, const int* paiVars, const double* padL, const double* padU) { return QZloadSemiContData(*model, *nSC, paiVars, padL, padU); }
int qzloadsetsdata_(QZmodel* model, int* nSETS, const char* pszSETStype, const int* paiCARDnum, const int* paiSETSbegcol, const int* paiSETScols) { return QZloadSETSData(*model, *nSETS, pszSETStype, paiCARDnum, paiSETSbegcol, paiSETScols); }
int qzsetsetsstatei_(QZmodel* model, int* iSet, int* nState) { return QZsetSETSStatei(*model, *iSet, *nState); }
int qzloadconedata_(QZmodel* model, int* nCone, const char* pszConeTypes, const double* padConeAlpha, const int* paiConebegcone, const int* paiConecols) { return QZloadConeData(*model, *nCone, pszConeTypes, padConeAlpha, paiConebegcone, paiConecols); }
int qzloadposddata_(QZmodel* model, int* nPOSD, const int* paiPOSDdim, const int* paiPOSDbeg, const int* paiPOSDrowndx, const int* paiPOSDcolndx, const int* paiPOSDvarndx) { return QZloadPOSDData(*model, *nPOSD, paiPOSDdim, paiPOSDbeg, paiPOSDrowndx, paiPOSDcolndx, paiPOSDvarndx); }
int qzloadalldiffdata_(QZmodel* model, int* nALLDIFF, const int* paiAlldiffDim, const int* paiAlldiffL, const int* paiAlldiffU, const int* paiAlldiffBeg, const int* paiAlldiffVar) { return QZloadALLDIFFData(*model, *nALLDIFF, paiAlldiffDim, paiAlldiffL, paiAlldiffU, paiAlldiffBeg, paiAlldiffVar); }
int qzloadqcdata_(QZmodel* model, int* QCnonzeros, const int* QCrowndx, const int* QCcolndx1, const int* QCcolndx2, const double* QCcoef) { return QZloadQCData(*model, *QCnonzeros, QCrowndx, QCcolndx1, QCcolndx2, QCcoef); }
int qzloadnamedata_(QZmodel* model, const char* pszTitle, const char* pszObjName, const char* pszRhsName, const char* pszRngName, const char* pszBndname, char** paszConNames, char** paszVarNames, char** paszConeNames) { return QZloadNameData(*model, pszTitle, pszObjName, pszRhsName, pszRngName, pszBndname, paszConNames, paszVarNames, paszConeNames); }
int qzloadvarstartpoint_(QZmodel* model, const double* padPrimal) { return QZloadVarStartPoint(*model, padPrimal); }
int qzloadmipvarstartpoint_(QZmodel* model, const double* padPrimal) { return QZloadMIPVarStartPoint(*model, padPrimal); }
int qzloadvarstartpointpartial_(QZmodel* model, int* nCols, const int* paiCols, const double* padPrimal) { return QZloadVarStartPointPartial(*model, *nCols, paiCols, padPrimal); }
int qzloadmipvarstartpointpartial_(QZmodel* model, int* nCols, const int* paiCols, const double* padPrimal) { return QZloadMIPVarStartPointPartial(*model, *nCols, paiCols, padPrimal); }
int qzloadvarpriorities_(QZmodel* model, const int* panCprior) { return QZloadVarPriorities(*model, panCprior); }
int qzloadbasis_(QZmodel* model, const int* panCstatus, const int* panRstatus) { return QZloadBasis(*model, panCstatus, panRstatus); }
int qzloadprimalsolution_(QZmodel* model, const int* pnStatus, const double* pdObj, const double* padPrimal, const double* padSlack, const double* pdPinf) { return QZloadPrimalSolution(*model, pnStatus, pdObj, padPrimal, padSlack, pdPinf); }
int qzloaddualsolution_(QZmodel* model, const int* pnStatus, const double* pdDobj, const double* padDual, const double* padRedcost, const double* pdDinf) { return QZloadDualSolution(*model, pnStatus, pdDobj, padDual, padRedcost, pdDinf); }
int qzloadsolutioninfo_(QZmodel* model, const int* pnMethod, const int* pnElapsed, const int* pnSpxIter, const int* pnBarIter, const int* pnNlpIter, const int* pnPrimStatus, const int* pnDualStatus, const int* pnBasicStatus, const double* pdPobj, const double* pdDobj, const double* pdPinf, const double* pdDinf) { return QZloadSolutionInfo(*model, pnMethod, pnElapsed, pnSpxIter, pnBarIter, pnNlpIter, pnPrimStatus, pnDualStatus, pnBasicStatus, pdPobj, pdDobj, pdPinf, pdDinf); }
int qzloadmodelstatus_(QZmodel* model, const int* pnModelStatus, const int* pnErrorCode) { return QZloadModelStatus(*model, pnModelStatus, pnErrorCode); }
int qzgetdimensions_(QZmodel* model, int* pnVars, int* pnCons, int* pnCones, int* pnAnnz, int* pnQCnnz, int* pnConeNnz, int* pnNLPnnz, int* pnNLPobjnnz, int* pnVarNamelen, int* pnConNamelen, int* pnConeNamelen) { return QZgetDimensions(*model, pnVars, pnCons, pnCones, pnAnnz, pnQCnnz, pnConeNnz, pnNLPnnz, pnNLPobjnnz, pnVarNamelen, pnConNamelen, pnConeNamelen); }
int qzgetlpdata_(QZmodel* model, int* pnObjSense, double* pdObjConst, double* padC, double* padB, char* pszConTypes, int* paiAcols, int* panAcols, double* padAcoef, int* paiArows, double* padL, double* padU) { return QZgetLPData(*model, pnObjSense, pdObjConst, padC, padB, pszConTypes, paiAcols, panAcols, padAcoef, paiArows, padL, padU); }
int qzgetnamedata_(QZmodel* model, char* pszTitle, char* pszObjName, char* pszRhsName, char* pszRngName, char* pszBndname, char** paszConNames, char* pachConNameData, char** paszVarNames, char* pachVarNameData, char** paszConeNames, char* pachConeNameData) { return QZgetNameData(*model, pszTitle, pszObjName, pszRhsName, pszRngName, pszBndname, paszConNames, pachConNameData, paszVarNames, pachVarNameData, paszConeNames, pachConeNameData); }
int qzgetconstraintdatai_(QZmodel* model, int* iCon, char* pchType, char* pchIsNlp, double* pdB) { return QZgetConstraintDatai(*model, *iCon, pchType, pchIsNlp, pdB); }
int qzgetlpvariabledataj_(QZmodel* model, int* iVar, char* pchVartype, double* pdC, double* pdL, double* pdU, int* pnAnnz, int* paiArows, double* padAcoef) { return QZgetLPVariableDataj(*model, *iVar, pchVartype, pdC, pdL, pdU, pnAnnz, paiArows, padAcoef); }
int qzgetlpconstraintdatai_(QZmodel* model, int* iCon, char* pchType, double* pdB, int* pnNnz, int* paiVar, double* padAcoef) { return QZgetLPConstraintDatai(*model, *iCon, pchType, pdB, pnNnz, paiVar, padAcoef); }
int qzgetlowerboundj_(QZmodel* model, int* iVar, double* pdValue) { return QZgetLowerBoundj(*model, *iVar, pdValue); }
int qzgetupperboundj_(QZmodel* model, int* iVar, double* pdValue) { return QZgetUpperBoundj(*model, *iVar, pdValue); }
int qzgetobjectivej_(QZmodel* model, int* iVar, double* pdValue) { return QZgetObjectivej(*model, *iVar, pdValue); }
int qzgetvartype_(QZmodel* model, char* pszVarTypes) { return QZgetVarType(*model, pszVarTypes); }
int qzgetvariablenamej_(QZmodel* model, int* iVar, char* pszName) { return QZgetVariableNamej(*model, *iVar, pszName); }
int qzgetconstraintnamei_(QZmodel* model, int* iCon, char* pszName) { return QZgetConstraintNamei(*model, *iCon, pszName); }
int qzgetconenamei_(QZmodel* model, int* iCone, char* pszName) { return QZgetConeNamei(*model, *iCone, pszName); }
int qzgetvariableindex_(QZmodel* model, const char* pszName, int* pnIndex) { return QZgetVariableIndex(*model, pszName, pnIndex); }
int qzgetconstraintindex_(QZmodel* model, const char* pszName, int* pnIndex) { return QZgetConstraintIndex(*model, pszName, pnIndex); }
int qzgetconeindex_(QZmodel* model, const char* pszName, int* pnIndex) { return QZgetConeIndex(*model, pszName, pnIndex); }
int qzgetsetsdata_(QZmodel* model, int* piNsets, int* piNtnz, char* pszSETStype, int* piCardnum, int* piNnz, int* piBegset, int* piVarndx) { return QZgetSETSData(*model, piNsets, piNtnz, pszSETStype, piCardnum, piNnz, piBegset, piVarndx); }
int qzgetsetsdatai_(QZmodel* model, int* iSet, char* pszSETStype, int* piCardnum, int* piNnz, int* piVarndx) { return QZgetSETSDatai(*model, *iSet, pszSETStype, piCardnum, piNnz, piVarndx); }
int qzgetsemicontdata_(QZmodel* model, int* piNvars, int* piVarndx, double* padL, double* padU) { return QZgetSemiContData(*model, piNvars, piVarndx, padL, padU); }
int qzgetconedatai_(QZmodel* model, int* iCone, char* pchConeType, double* pdConeAlpha, int* piNnz, int* piCols) { return QZgetConeDatai(*model, *iCone, pchConeType, pdConeAlpha, piNnz, piCols); }
int qzgetqcdata_(QZmodel* model, int* paiQCrows, int* paiQCcols1, int* paiQCcols2, double* padQCcoef) { return QZgetQCData(*model, paiQCrows, paiQCcols1, paiQCcols2, padQCcoef); }
int qzgetqcdatai_(QZmodel* model, int* iCon, int* pnQCnnz, int* paiQCcols1, int* paiQCcols2, double* padQCcoef) { return QZgetQCDatai(*model, *iCon, pnQCnnz, paiQCcols1, paiQCcols2, padQCcoef); }
int qzgetposddata_(QZmodel* model, int* pnPOSD, int* paiPOSDdim, int* paiPOSDnnz, int* paiPOSDbeg, int* paiPOSDrowndx, int* paiPOSDcolndx, int* paiPOSDvarndx) { return QZgetPOSDData(*model, pnPOSD, paiPOSDdim, paiPOSDnnz, paiPOSDbeg, paiPOSDrowndx, paiPOSDcolndx, paiPOSDvarndx); }
int qzgetposddatai_(QZmodel* model, int* iPOSD, int* pnPOSDdim, int* pnPOSDnnz, int* paiPOSDrowndx, int* paiPOSDcolndx, int* paiPOSDvarndx) { return QZgetPOSDDatai(*model, *iPOSD, pnPOSDdim, pnPOSDnnz, paiPOSDrowndx, paiPOSDcolndx, paiPOSDvarndx); }
int qzgetalldiffdata_(QZmodel* model, int* pinALLDIFF, int* paiAlldiffDim, int* paiAlldiffL, int* paiAlldiffU, int* paiAlldiffBeg, int* paiAlldiffVar) { return QZgetALLDIFFData(*model, pinALLDIFF, paiAlldiffDim, paiAlldiffL, paiAlldiffU, paiAlldiffBeg, paiAlldiffVar); }
int qzgetalldiffdatai_(QZmodel* model, int* iALLDIFF, int* pnAlldiffDim, int* pnAlldiffL, int* pnAlldiffU, int* paiAlldiffVar) { return QZgetALLDIFFDatai(*model, *iALLDIFF, pnAlldiffDim, pnAlldiffL, pnAlldiffU, paiAlldiffVar); }
int qzgetvarstartpoint_(QZmodel* model, double* padPrimal) { return QZgetVarStartPoint(*model, padPrimal); }
int qzgetmipvarstartpoint_(QZmodel* model, double* padPrimal) { return QZgetMIPVarStartPoint(*model, padPrimal); }
int qzgetvarstartpointpartial_(QZmodel* model, int* pnCols, int* paiCols, double* padPrimal) { return QZgetVarStartPointPartial(*model, pnCols, paiCols, padPrimal); }
int qzgetmipvarstartpointpartial_(QZmodel* model, int* pnCols, int* paiCols, double* padPrimal) { return QZgetMIPVarStartPointPartial(*model, pnCols, paiCols, padPrimal); }
int qzgetvarpriorities_(QZmodel* model, int* panCprior) { return QZgetVarPriorities(*model, panCprior); }
int qzgetgopvariablepriority_(QZmodel* model, int* iVar, int* pnPriority) { return QZgetGOPVariablePriority(*model, *iVar, pnPriority); }
int qzgetvartypecount_(QZmodel* model, int* pnCont, int* pnBin, int* pnInt) { return QZgetVarTypeCount(*model, pnCont, pnBin, pnInt); }
int qzoptimize_(QZmodel* model, int* nMethod, int* pnStatus) { return QZoptimize(*model, *nMethod, pnStatus); }
int qzgetsolutionstatus_(QZmodel* model, int* pnStatus) { return QZgetSolutionStatus(*model, pnStatus); }
int qzgetmipsolutionstatus_(QZmodel* model, int* pnStatus) { return QZgetMIPSolutionStatus(*model, pnStatus); }
int qzsolvemip_(QZmodel* model, int* pnStatus) { return QZsolveMIP(*model, pnStatus); }
int qzbnbsolve_(QZmodel* model, int* pnStatus) { return QZbnbSolve(*model, pnStatus); }
int qzgetbestbounds_(QZmodel* model, double* pdBestObj, double* pdBestBound) { return QZgetBestBounds(*model, pdBestObj, pdBestBound); }
int qzgetsolutioninfo_(QZmodel* model, int* pnMethod, int* pnElapsed, int* pnSpxIter, int* pnBarIter, int* pnNlpIter, int* pnPrimStatus, int* pnDualStatus, int* pnBasicStatus, double* pdPobj, double* pdDobj, double* pdPinf, double* pdDinf) { return QZgetSolutionInfo(*model, pnMethod, pnElapsed, pnSpxIter, pnBarIter, pnNlpIter, pnPrimStatus, pnDualStatus, pnBasicStatus, pdPobj, pdDobj, pdPinf, pdDinf); }
int qzgetprimalsolution_(QZmodel* model, double* padPrimal) { return QZgetPrimalSolution(*model, padPrimal); }
int qzgetdualsolution_(QZmodel* model, double* padDual) { return QZgetDualSolution(*model, padDual); }
int qzgetslacks_(QZmodel* model, double* padSlacks) { return QZgetSlacks(*model, padSlacks); }
int qzgetreducedcosts_(QZmodel* model, double* padRedcosts) { return QZgetReducedCosts(*model, padRedcosts); }
int qzgetreducedcostscone_(QZmodel* model, double* padRedcosts) { return QZgetReducedCostsCone(*model, padRedcosts); }
int qzgetbasis_(QZmodel* model, int* panCstatus, int* panRstatus) { return QZgetBasis(*model, panCstatus, panRstatus); }
int qzgetmipprimalsolution_(QZmodel* model, double* padPrimal) { return QZgetMIPPrimalSolution(*model, padPrimal); }
int qzgetmipdualsolution_(QZmodel* model, double* padDual) { return QZgetMIPDualSolution(*model, padDual); }
int qzgetmipslacks_(QZmodel* model, double* padSlacks) { return QZgetMIPSlacks(*model, padSlacks); }
int qzgetmipreducedcosts_(QZmodel* model, double* padRedcosts) { return QZgetMIPReducedCosts(*model, padRedcosts); }
int qzgetmipbasis_(QZmodel* model, int* panCstatus, int* panRstatus) { return QZgetMIPBasis(*model, panCstatus, panRstatus); }
int qzgetobjective_(QZmodel* model, double* pdObj) { return QZgetObjective(*model, pdObj); }
int qzgetmipobjective_(QZmodel* model, double* pdObj) { return QZgetMIPObjective(*model, pdObj); }
int qzgetsolution_(QZmodel* model, int* nWhich, double* padValues) { return QZgetSolution(*model, *nWhich, padValues); }
int qzgetsolution2_(QZmodel* model, int* nSolType, double* padPrimal, double* padDual, double* padSlacks, double* padRedcosts) { return QZgetSolution2(*model, *nSolType, padPrimal, padDual, padSlacks, padRedcosts); }
QZmodel qzgetdualmodel_(QZmodel* model, int* pnErrorcode) { return QZgetDualModel(*model, pnErrorcode); }
int qzsplexoptimize_(QZmodel* model, int* nMethod) { return QZsplexOptimize(*model, *nMethod); }
int qzsplexreoptimize_(QZmodel* model, int* nMethod) { return QZsplexReoptimize(*model, *nMethod); }
int qzdoftran_(QZmodel* model, int* nInc, const int* paiInc, const double* padInc, int* pnOut, int* paiOut, double* padOut) { return QZdoFTRAN(*model, *nInc, paiInc, padInc, pnOut, paiOut, padOut); }
int qzdobtran_(QZmodel* model, int* nInc, const int* paiInc, const double* padInc, int* pnOut, int* paiOut, double* padOut) { return QZdoBTRAN(*model, *nInc, paiInc, padInc, pnOut, paiOut, padOut); }
int qzdodenseftran_(QZmodel* model, const double* padB, double* padX) { return QZdoDenseFTRAN(*model, padB, padX); }
int qzdodensebtran_(QZmodel* model, const double* padC, double* padY) { return QZdoDenseBTRAN(*model, padC, padY); }
int qzmodifyaij_(QZmodel* model, int* iRow, int* iCol, double* dAij) { return QZmodifyAij(*model, *iRow, *iCol, *dAij); }
int qzmodifyaj_(QZmodel* model, int* iCol, int* nRows, const int* paiRows, const double* padAj) { return QZmodifyAj(*model, *iCol, *nRows, paiRows, padAj); }
int qzdeleteaj_(QZmodel* model, int* iCol, int* nRows, const int* paiRows) { return QZdeleteAj(*model, *iCol, *nRows, paiRows); }
int qzmodifyrhs_(QZmodel* model, int* nRows, const int* paiRows, const double* padB) { return QZmodifyRHS(*model, *nRows, paiRows, padB); }
int qzmodifyconstrainttype_(QZmodel* model, int* nRows, const int* paiRows, const char* pszTypes) { return QZmodifyConstraintType(*model, *nRows, paiRows, pszTypes); }
int qzmodifyvariabletype_(QZmodel* model, int* nCols, const int* paiCols, const char* pszTypes) { return QZmodifyVariableType(*model, *nCols, paiCols, pszTypes); }
int qzmodifylowerbounds_(QZmodel* model, int* nCols, const int* paiCols, const double* padL) { return QZmodifyLowerBounds(*model, *nCols, paiCols, padL); }
int qzmodifyupperbounds_(QZmodel* model, int* nCols, const int* paiCols, const double* padU) { return QZmodifyUpperBounds(*model, *nCols, paiCols, padU); }
int qzmodifyobjective_(QZmodel* model, int* nCols, const int* paiCols, const double* padC) { return QZmodifyObjective(*model, *nCols, paiCols, padC); }
int qzmodifyobjconstant_(QZmodel* model, double* dObjConst) { return QZmodifyObjConstant(*model, *dObjConst); }
int qzmodifysemicontvars_(QZmodel* model, int* nVars, const int* paiVars, const double* padL) { return QZmodifySemiContVars(*model, *nVars, paiVars, padL); }
int qzmodifycone_(QZmodel* model, char* cConeType, int* iCone, int* nNnz, const int* paiCols, double* dConeAlpha) { return QZmodifyCone(*model, *cConeType, *iCone, *nNnz, paiCols, *dConeAlpha); }
int qzmodifyset_(QZmodel* model, char* cSetType, int* iSet, int* nNnz, const int* paiCols) { return QZmodifySET(*model, *cSetType, *iSet, *nNnz, paiCols); }
int qzmodifypriorities_(QZmodel* model, int* nCols, const int* paiCols, const int* paiPriorities) { return QZmodifyPriorities(*model, *nCols, paiCols, paiPriorities); }
int qzsetproballocsizes_(QZmodel* model, int* nColsAlloc, int* nRowsAlloc, int* nQCAlloc, int* nNzAlloc, int* nQCnzAlloc, int* nNLPnzAlloc) { return QZsetProbAllocSizes(*model, *nColsAlloc, *nRowsAlloc, *nQCAlloc, *nNzAlloc, *nQCnzAlloc, *nNLPnzAlloc); }
int qzsetprobnameallocsizes_(QZmodel* model, int* nColNameBytes, int* nRowNameBytes) { return QZsetProbNameAllocSizes(*model, *nColNameBytes, *nRowNameBytes); }
int qzaddemptyspacesacolumns_(QZmodel* model, const int* paiColnnz) { return QZaddEmptySpacesAcolumns(*model, paiColnnz); }
int qzaddemptyspacesnlpacolumns_(QZmodel* model, const int* paiColnnz) { return QZaddEmptySpacesNLPAcolumns(*model, paiColnnz); }
int qzaddconstraints_(QZmodel* model, int* nCons, const char* pszConTypes, char** paszConNames, const int* paiRows, const double* padAcoef, const int* paiCols, const double* padB) { return QZaddConstraints(*model, *nCons, pszConTypes, paszConNames, paiRows, padAcoef, paiCols, padB); }
int qzaddvariables_(QZmodel* model, int* nVars, const char* pszVarTypes, char** paszVarNames, const int* paiAcols, const int* panAcols, const double* padAcoef, const int* paiArows, const double* padC, const double* padL, const double* padU) { return QZaddVariables(*model, *nVars, pszVarTypes, paszVarNames, paiAcols, panAcols, padAcoef, paiArows, padC, padL, padU); }
int qzaddcones_(QZmodel* model, int* nCones, const char* pszConeTypes, const double* padConeAlpha, char** paszConeNames, const int* paiConebegcol, const int* paiConecols) { return QZaddCones(*model, *nCones, pszConeTypes, padConeAlpha, paszConeNames, paiConebegcol, paiConecols); }
int qzaddsets_(QZmodel* model, int* nSETS, const char* pszSETStype, const int* paiCARDnum, const int* paiSETSbegcol, const int* paiSETScols) { return QZaddSETS(*model, *nSETS, pszSETStype, paiCARDnum, paiSETSbegcol, paiSETScols); }
int qzaddqcterms_(QZmodel* model, int* nQCnnz, const int* paiQCrows, const int* paiQCcols1, const int* paiQCcols2, const double* padQCcoef) { return QZaddQCterms(*model, *nQCnnz, paiQCrows, paiQCcols1, paiQCcols2, padQCcoef); }
int qzaddnlpaj_(QZmodel* model, int* iCol, int* nRows, const int* paiRows, const double* padAj) { return QZaddNLPAj(*model, *iCol, *nRows, paiRows, padAj); }
int qzaddnlpobj_(QZmodel* model, int* nCols, const int* paiCols, const double* padColj) { return QZaddNLPobj(*model, *nCols, paiCols, padColj); }
int qzaddartcolumns_(QZmodel* model, int* nFlags, double* dPenalty) { return QZaddArtColumns(*model, *nFlags, *dPenalty); }
int qzdelartcolumns_(QZmodel* model, int* nFlags) { return QZdelArtColumns(*model, *nFlags); }
int qzdeleteconstraints_(QZmodel* model, int* nCons, const int* paiCons) { return QZdeleteConstraints(*model, *nCons, paiCons); }
int qzdeletevariables_(QZmodel* model, int* nVars, const int* paiVars) { return QZdeleteVariables(*model, *nVars, paiVars); }
int qzdeletecones_(QZmodel* model, int* nCones, const int* paiCones) { return QZdeleteCones(*model, *nCones, paiCones); }
int qzdeletesets_(QZmodel* model, int* nSETS, const int* paiSETS) { return QZdeleteSETS(*model, *nSETS, paiSETS); }
int qzdeletesemicontvars_(QZmodel* model, int* nVars, const int* paiVars) { return QZdeleteSemiContVars(*model, *nVars, paiVars); }
int qzdeleteqcterms_(QZmodel* model, int* nCons, const int* paiCons) { return QZdeleteQCterms(*model, *nCons, paiCons); }
int qzdeletenlpobj_(QZmodel* model, int* nCols, const int* paiCols) { return QZdeleteNLPobj(*model, *nCols, paiCols); }
int qzcalcpdfbinomial_(double* dX, double* dTrials, double* dProb, double* pdResult) { return QZcalcPdfBinomial(*dX, *dTrials, *dProb, pdResult); }
int qzcalccdfbinomial_(double* dX, double* dTrials, double* dProb, double* pdResult) { return QZcalcCdfBinomial(*dX, *dTrials, *dProb, pdResult); }
int qzcalcpdfnegativebinomial_(double* dX, double* dSuccesses, double* dProb, double* pdResult) { return QZcalcPdfNegativeBinomial(*dX, *dSuccesses, *dProb, pdResult); }
int qzcalccdfnegativebinomial_(double* dX, double* dSuccesses, double* dProb, double* pdResult) { return QZcalcCdfNegativeBinomial(*dX, *dSuccesses, *dProb, pdResult); }
int qzcalcpdfgeometric_(double* dX, double* dProb, double* pdResult) { return QZcalcPdfGeometric(*dX, *dProb, pdResult); }
int qzcalccdfgeometric_(double* dX, double* dProb, double* pdResult) { return QZcalcCdfGeometric(*dX, *dProb, pdResult); }
int qzcalcpdfpoisson_(double* dX, double* dMean, double* pdResult) { return QZcalcPdfPoisson(*dX, *dMean, pdResult); }
int qzcalccdfpoisson_(double* dX, double* dMean, double* pdResult) { return QZcalcCdfPoisson(*dX, *dMean, pdResult); }
int qzcalcpdflogarithmic_(double* dX, double* dProb, double* pdResult) { return QZcalcPdfLogarithmic(*dX, *dProb, pdResult); }
int qzcalccdflogarithmic_(double* dX, double* dProb, double* pdResult) { return QZcalcCdfLogarithmic(*dX, *dProb, pdResult); }
int qzcalcpdfbeta_(double* dX, double* dShape1, double* dShape2, double* pdResult) { return QZcalcPdfBeta(*dX, *dShape1, *dShape2, pdResult); }
int qzcalccdfbeta_(double* dX, double* dShape1, double* dShape2, double* pdResult) { return QZcalcCdfBeta(*dX, *dShape1, *dShape2, pdResult); }
int qzcalcpdfcauchy_(double* dX, double* dLoc, double* dScale, double* pdResult) { return QZcalcPdfCauchy(*dX, *dLoc, *dScale, pdResult); }
int qzcalccdfcauchy_(double* dX, double* dLoc, double* dScale, double* pdResult) { return QZcalcCdfCauchy(*dX, *dLoc, *dScale, pdResult); }
int qzcalcpdfchisquare_(double* dX, double* dDegrees, double* pdResult) { return QZcalcPdfChiSquare(*dX, *dDegrees, pdResult); }
int qzcalccdfchisquare_(double* dX, double* dDegrees, double* pdResult) { return QZcalcCdfChiSquare(*dX, *dDegrees, pdResult); }
int qzcalcpdfexponential_(double* dX, double* dRate, double* pdResult) { return QZcalcPdfExponential(*dX, *dRate, pdResult); }
int qzcalccdfexponential_(double* dX, double* dRate, double* pdResult) { return QZcalcCdfExponential(*dX, *dRate, pdResult); }
int qzcalcpdffdistribution_(double* dX, double* dDegrees1, double* dDegrees2, double* pdResult) { return QZcalcPdfFDistribution(*dX, *dDegrees1, *dDegrees2, pdResult); }
int qzcalccdffdistribution_(double* dX, double* dDegrees1, double* dDegrees2, double* pdResult) { return QZcalcCdfFDistribution(*dX, *dDegrees1, *dDegrees2, pdResult); }
int qzcalcpdfgamma_(double* dX, double* dShape, double* dScale, double* pdResult) { return QZcalcPdfGamma(*dX, *dShape, *dScale, pdResult); }
int qzcalccdfgamma_(double* dX, double* dShape, double* dScale, double* pdResult) { return QZcalcCdfGamma(*dX, *dShape, *dScale, pdResult); }
int qzcalcpdfgumbel_(double* dX, double* dLoc, double* dScale, double* pdResult) { return QZcalcPdfGumbel(*dX, *dLoc, *dScale, pdResult); }
int qzcalccdfgumbel_(double* dX, double* dLoc, double* dScale, double* pdResult) { return QZcalcCdfGumbel(*dX, *dLoc, *dScale, pdResult); }
int qzcalcpdflaplace_(double* dX, double* dLoc, double* dScale, double* pdResult) { return QZcalcPdfLaplace(*dX, *dLoc, *dScale, pdResult); }
int qzcalccdflaplace_(double* dX, double* dLoc, double* dScale, double* pdResult) { return QZcalcCdfLaplace(*dX, *dLoc, *dScale, pdResult); }
int qzcalcpdflognormal_(double* dX, double* dLoc, double* dScale, double* pdResult) { return QZcalcPdfLognormal(*dX, *dLoc, *dScale, pdResult); }
int qzcalccdflognormal_(double* dX, double* dLoc, double* dScale, double* pdResult) { return QZcalcCdfLognormal(*dX, *dLoc, *dScale, pdResult); }
int qzcalcpdflogistic_(double* dX, double* dLoc, double* dScale, double* pdResult) { return QZcalcPdfLogistic(*dX, *dLoc, *dScale, pdResult); }
int qzcalccdflogistic_(double* dX, double* dLoc, double* dScale, double* pdResult) { return QZcalcCdfLogistic(*dX, *dLoc, *dScale, pdResult); }
int qzcalcpdfnormal_(double* dX, double* dMean, double* dSigma, double* pdResult) { return QZcalcPdfNormal(*dX, *dMean, *dSigma, pdResult); }
int qzcalccdfnormal_(double* dX, double* dMean, double* dSigma, double* pdResult) { return QZcalcCdfNormal(*dX, *dMean, *dSigma, pdResult); }
int qzcalcpdfpareto_(double* dX, double* dScale, double* dShape, double* pdResult) { return QZcalcPdfPareto(*dX, *dScale, *dShape, pdResult); }
int qzcalccdfpareto_(double* dX, double* dScale, double* dShape, double* pdResult) { return QZcalcCdfPareto(*dX, *dScale, *dShape, pdResult); }
int qzcalcpdfstudentt_(double* dX, double* dDegrees, double* pdResult) { return QZcalcPdfStudentT(*dX, *dDegrees, pdResult); }
int qzcalccdfstudentt_(double* dX, double* dDegrees, double* pdResult) { return QZcalcCdfStudentT(*dX, *dDegrees, pdResult); }
int qzcalcpdfuniform_(double* dX, double* dLower, double* dUpper, double* pdResult) { return QZcalcPdfUniform(*dX, *dLower, *dUpper, pdResult); }
int qzcalccdfuniform_(double* dX, double* dLower, double* dUpper, double* pdResult) { return QZcalcCdfUniform(*dX, *dLower, *dUpper, pdResult); }
int qzcalcpdfweibull_(double* dX, double* dShape, double* dScale, double* pdResult) { return QZcalcPdfWeibull(*dX, *dShape, *dScale, pdResult); }
int qzcalccdfweibull_(double* dX, double* dShape, double* dScale, double* pdResult) { return QZcalcCdfWeibull(*dX, *dShape, *dScale, pdResult); }
int qzcalcpdfsymstable_(double* dX, double* dAlpha, double* pdResult) { return QZcalcPdfSymStable(*dX, *dAlpha, pdResult); }
int qzcalccdfsymstable_(double* dX, double* dAlpha, double* pdResult) { return QZcalcCdfSymStable(*dX, *dAlpha, pdResult); }
QZrandGen qzcreaterg_(QZenv* env, int* nMethod) { return QZcreateRG(*env, *nMethod); }
QZrandGen qzcreatergmt_(QZenv* env, int* nMethod) { return QZcreateRGMT(*env, *nMethod); }
void qzdisposerg_(QZrandGen* ppRG) { QZdisposeRG(ppRG); }
int qzsetrgseed_(QZrandGen* pRG, int* nSeed) { return QZsetRGSeed(*pRG, *nSeed); }
int qzgetinitseed_(QZrandGen* pRG) { return QZgetInitSeed(*pRG); }
double qzgetdoublerv_(QZrandGen* pRG) { return QZgetDoubleRV(*pRG); }
int qzgetint32rv_(QZrandGen* pRG, int* iLow, int* iHigh) { return QZgetInt32RV(*pRG, *iLow, *iHigh); }
int qzfillrgbuffer_(QZrandGen* pRG) { return QZfillRGBuffer(*pRG); }
double* qzgetrgbufferptr_(QZrandGen* pRG, int* pnBufferLen) { return QZgetRGBufferPtr(*pRG, pnBufferLen); }
int qzgetrgnumthreads_(QZrandGen* pRG) { return QZgetRGNumThreads(*pRG); }
int qzsetdistrrg_(QZrandGen* pRG, int* nDistType) { return QZsetDistrRG(*pRG, *nDistType); }
int qzsetdistrparamrg_(QZrandGen* pRG, int* iParam, double* dParam) { return QZsetDistrParamRG(*pRG, *iParam, *dParam); }
int qzgetdistrrv_(QZrandGen* pRG, double* pdResult) { return QZgetDistrRV(*pRG, pdResult); }
QZsample qzsampcreate_(QZenv* env, int* nDistType, int* pnErrorCode) { return QZsampCreate(*env, *nDistType, pnErrorCode); }
int qzsampdelete_(QZsample* paSample) { return QZsampDelete(paSample); }
int qzsampsetrg_(QZsample* pSample, QZrandGen* pRG) { return QZsampSetRG(*pSample, *pRG); }
int qzsampsetdistrparam_(QZsample* pSample, int* iParam, double* dValue) { return QZsampSetDistrParam(*pSample, *iParam, *dValue); }
int qzsampgetdistrparam_(QZsample* pSample, int* iParam, double* pdValue) { return QZsampGetDistrParam(*pSample, *iParam, pdValue); }
int qzsamploaddiscretepdftable_(QZsample* pSample, int* nLen, double* padProb, double* padVals) { return QZsampLoadDiscretePdfTable(*pSample, *nLen, padProb, padVals); }
int qzsampgetdiscretepdftable_(QZsample* pSample, int* pnLen, double* padProb, double* padVals) { return QZsampGetDiscretePdfTable(*pSample, pnLen, padProb, padVals); }
int qzsampsetuserdistr_(QZsample* pSample, user_pdf_t* pfUserFunc, void* pUserData) { return QZsampSetUserDistr(*pSample, *pfUserFunc, pUserData); }
int qzsampadduserfuncarg_(QZsample* pSample, QZsample* pSampleSource) { return QZsampAddUserFuncArg(*pSample, *pSampleSource); }
int qzsampevaluserdistr_(QZsample* pSample, int* nFuncType, double* padInput, int* nInput, double* pdOutput) { return QZsampEvalUserDistr(*pSample, *nFuncType, padInput, *nInput, pdOutput); }
int qzsampevaldistr_(QZsample* pSample, int* nFuncType, double* dXval, double* pdResult) { return QZsampEvalDistr(*pSample, *nFuncType, *dXval, pdResult); }
int qzsampevaldistrli_(QZsample* pSample, int* nFuncType, double* dXval, double* pdResult) { return QZsampEvalDistrLI(*pSample, *nFuncType, *dXval, pdResult); }
int qzsampgenerate_(QZsample* pSample, int* nMethod, int* nSize) { return QZsampGenerate(*pSample, *nMethod, *nSize); }
int qzsamploadpoints_(QZsample* pSample, int* nSampSize, double* padXval) { return QZsampLoadPoints(*pSample, *nSampSize, padXval); }
int qzsampgetpoints_(QZsample* pSample, int* pnSampSize, double* padXval) { return QZsampGetPoints(*pSample, pnSampSize, padXval); }
int qzsampgetpointsptr_(QZsample* pSample, int* pnSampSize, double** ppadXval) { return QZsampGetPointsPtr(*pSample, pnSampSize, ppadXval); }
int qzsampgetcipoints_(QZsample* pSample, int* pnSampSize, double* padXval) { return QZsampGetCIPoints(*pSample, pnSampSize, padXval); }
int qzsampgetcipointsptr_(QZsample* pSample, int* pnSampSize, double** ppadXval) { return QZsampGetCIPointsPtr(*pSample, pnSampSize, ppadXval); }
int qzsampgetnextpoint_(QZsample* pSample, double* pdValue) { return QZsampGetNextPoint(*pSample, pdValue); }
int qzsampinducecorrelation_(QZsample* paSample, int* nDim, int* nCorrType, int* nNonZeros, int* paiStartRow, int* paiStartCol, double* padValue) { return QZsampInduceCorrelation(paSample, *nDim, *nCorrType, *nNonZeros, paiStartRow, paiStartCol, padValue); }
int qzsampgetcorrelationmatrix_(QZsample* paSample, int* nDim, int* nCorrType, double* padCorr) { return QZsampGetCorrelationMatrix(paSample, *nDim, *nCorrType, padCorr); }
int qzsampgetcorrdiff_(QZsample* paSample, int* nDim, int* nDiffType, double* pdDiff) { return QZsampGetCorrDiff(paSample, *nDim, *nDiffType, pdDiff); }
int qzsampgetinfo_(QZsample* pSample, int* nQuery, void* pResult) { return QZsampGetInfo(*pSample, *nQuery, pResult); }
int qzgethistogram_(QZmodel* model, int* nSampSize, const double* padVals, const double* padWeights, double* dHistLow, double* dHistHigh, int* pnBins, int* panBinCounts, double* padBinProbs, double* padBinLow, double* padBinHigh) { return QZgetHistogram(*model, *nSampSize, padVals, padWeights, *dHistLow, *dHistHigh, pnBins, panBinCounts, padBinProbs, padBinLow, padBinHigh); }
int qzcalccdfinversegeometric_(double* dP, double* dProb, double* pdResult) { return QZcalcCdfInverseGeometric(*dP, *dProb, pdResult); }
int qzcalccdfinversepoisson_(double* dP, double* dMean, double* pdResult) { return QZcalcCdfInversePoisson(*dP, *dMean, pdResult); }
int qzcalccdfinverselogarithmic_(double* dP, double* dProb, double* pdResult) { return QZcalcCdfInverseLogarithmic(*dP, *dProb, pdResult); }
int qzcalccdfinversebeta_(double* dP, double* dShape1, double* dShape2, double* pdResult) { return QZcalcCdfInverseBeta(*dP, *dShape1, *dShape2, pdResult); }
int qzcalccdfinversecauchy_(double* dP, double* dLoc, double* dScale, double* pdResult) { return QZcalcCdfInverseCauchy(*dP, *dLoc, *dScale, pdResult); }
int qzcalccdfinversechisquare_(double* dP, double* dDegrees, double* pdResult) { return QZcalcCdfInverseChiSquare(*dP, *dDegrees, pdResult); }
int qzcalccdfinverseexponential_(double* dP, double* dRate, double* pdResult) { return QZcalcCdfInverseExponential(*dP, *dRate, pdResult); }
int qzcalccdfinversefdistribution_(double* dP, double* dDegrees1, double* dDegrees2, double* pdResult) { return QZcalcCdfInverseFDistribution(*dP, *dDegrees1, *dDegrees2, pdResult); }
int qzcalccdfinversegamma_(double* dP, double* dShape, double* dScale, double* pdResult) { return QZcalcCdfInverseGamma(*dP, *dShape, *dScale, pdResult); }
int qzcalccdfinversegumbel_(double* dP, double* dLoc, double* dScale, double* pdResult) { return QZcalcCdfInverseGumbel(*dP, *dLoc, *dScale, pdResult); }
int qzcalccdfinverselaplace_(double* dP, double* dLoc, double* dScale, double* pdResult) { return QZcalcCdfInverseLaplace(*dP, *dLoc, *dScale, pdResult); }
int qzcalccdfinverselognormal_(double* dP, double* dLoc, double* dScale, double* pdResult) { return QZcalcCdfInverseLognormal(*dP, *dLoc, *dScale, pdResult); }
int qzcalccdfinverselogistic_(double* dP, double* dLoc, double* dScale, double* pdResult) { return QZcalcCdfInverseLogistic(*dP, *dLoc, *dScale, pdResult); }
int qzcalccdfinversenormal_(double* dP, double* dMean, double* dSigma, double* pdResult) { return QZcalcCdfInverseNormal(*dP, *dMean, *dSigma, pdResult); }
int qzcalccdfinversepareto_(double* dP, double* dScale, double* dShape, double* pdResult) { return QZcalcCdfInversePareto(*dP, *dScale, *dShape, pdResult); }
int qzcalccdfinversestudentt_(double* dP, double* dDegrees, double* pdResult) { return QZcalcCdfInverseStudentT(*dP, *dDegrees, pdResult); }
int qzcalccdfinverseuniform_(double* dP, double* dLower, double* dUpper, double* pdResult) { return QZcalcCdfInverseUniform(*dP, *dLower, *dUpper, pdResult); }
int qzcalccdfinverseweibull_(double* dP, double* dShape, double* dScale, double* pdResult) { return QZcalcCdfInverseWeibull(*dP, *dShape, *dScale, pdResult); }
int qzcalccdfinversesymstable_(double* dP, double* dAlpha, double* pdResult) { return QZcalcCdfInverseSymStable(*dP, *dAlpha, pdResult); }
int qzcalcfirstpdfderivativecauchy_(double* dX, double* dLoc, double* dScale, double* pdResult) { return QZcalcFirstPdfDerivativeCauchy(*dX, *dLoc, *dScale, pdResult); }
int qzcalcfirstpdfderivativegumbel_(double* dX, double* dLoc, double* dScale, double* pdResult) { return QZcalcFirstPdfDerivativeGumbel(*dX, *dLoc, *dScale, pdResult); }
int qzcalcfirstpdfderivativelaplace_(double* dX, double* dLoc, double* dScale, double* pdResult) { return QZcalcFirstPdfDerivativeLaplace(*dX, *dLoc, *dScale, pdResult); }
int qzcalcfirstpdfderivativelognormal_(double* dX, double* dLoc, double* dScale, double* pdResult) { return QZcalcFirstPdfDerivativeLognormal(*dX, *dLoc, *dScale, pdResult); }
int qzcalcfirstpdfderivativelogistic_(double* dX, double* dLoc, double* dScale, double* pdResult) { return QZcalcFirstPdfDerivativeLogistic(*dX, *dLoc, *dScale, pdResult); }
int qzcalcfirstpdfderivativeweibull_(double* dX, double* dShape, double* dScale, double* pdResult) { return QZcalcFirstPdfDerivativeWeibull(*dX, *dShape, *dScale, pdResult); }
}  // extern "C"
