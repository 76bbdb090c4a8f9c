/* Fortran-style twins of the public entries: every scalar and handle passed by reference. */
#ifndef ZENTO_FORTRAN_H
#define ZENTO_FORTRAN_H

#include "zento.h"

#ifdef __cplusplus
extern "C" {
#endif

QZ_API QZenv qzcreateenv_(int* pnErrorcode);
QZ_API int qzdeleteenv_(QZenv* pEnv);
QZ_API QZmodel qzcreatemodel_(QZenv* env, int* pnErrorcode);
QZ_API int qzdeletemodel_(QZmodel* pModel);
QZ_API QZmodel qzcopymodel_(QZmodel* src, int* pnErrorcode);
QZ_API int qzcopyparam_(QZmodel* src, QZmodel* dst, int* mode);
QZ_API int qzcopyallpam_(QZmodel* src, QZmodel* dst);
QZ_API int qzcopystocparam_(QZmodel* src, QZmodel* dst);
QZ_API int qzcopyenv_(QZenv* src, QZenv* dst);
QZ_API int qzgetmodelenv_(QZmodel* model, QZenv* pEnv);
QZ_API int qzgetenvmodelcount_(QZenv* env, int* pnCount);
QZ_API int qzgetenvmodellist_(QZenv* env, QZmodel* paModels);
QZ_API QZmodel qzgetenvlogmodel_(QZenv* env);
QZ_API QZmodel qzgetmastermodel_(QZmodel* model);
QZ_API int qzgetversioninfo_(char* szVersion, char* szBuildData);
QZ_API int qzfreesolvermemory_(QZmodel* model);
QZ_API void qzfreehashmemory_(QZmodel* model);
QZ_API void qzfreesolutionmemory_(QZmodel* model);
QZ_API void qzfreemipsolutionmemory_(QZmodel* model);
QZ_API void qzfreegopsolutionmemory_(QZmodel* model);
QZ_API void qzfreenlpsolvermemory_(QZmodel* model);
QZ_API void qzfreestocmemory_(QZmodel* model);
QZ_API void qzfreestochashmemory_(QZmodel* model);
QZ_API void qzfreecutpool_(QZmodel* model);
QZ_API void qzfreenamedata_(QZmodel* model);
QZ_API int qzsetenvexitfunc_(QZenv* env, QZexitFunc_t* pfFunc, void* pvData);
QZ_API int qzloadlpdata_(QZmodel* model, int* nCons, int* nVars, int* dObjSense, double* dObjConst, const double* padC, const double* padB, const char* pszConTypes, int* nAnnz, const int* paiAcols, const int* panAcols, const double* padAcoef, const int* paiArows, const double* padL, const double* padU);
QZ_API int qzloadvartype_(QZmodel* model, char* pszVarTypes);
QZ_API int qzloadsemicontdata_(QZmodel* model, int* nSC, const int* paiVars, const double* padL, const double* padU);
QZ_API int qzloadsetsdata_(QZmodel* model, int* nSETS, const char* pszSETStype, const int* paiCARDnum, const int* paiSETSbegcol, const int* paiSETScols);
QZ_API int qzsetsetsstatei_(QZmodel* model, int* iSet, int* nState);
QZ_API int qzloadconedata_(QZmodel* model, int* nCone, const char* pszConeTypes, const double* padConeAlpha, const int* paiConebegcone, const int* paiConecols);
QZ_API int qzloadposddata_(QZmodel* model, int* nPOSD, const int* paiPOSDdim, const int* paiPOSDbeg, const int* paiPOSDrowndx, const int* paiPOSDcolndx, const int* paiPOSDvarndx);
QZ_API int qzloadalldiffdata_(QZmodel* model, int* nALLDIFF, const int* paiAlldiffDim, const int* paiAlldiffL, const int* paiAlldiffU, const int* paiAlldiffBeg, const int* paiAlldiffVar);
QZ_API int qzloadqcdata_(QZmodel* model, int* QCnonzeros, const int* QCrowndx, const int* QCcolndx1, const int* QCcolndx2, const double* QCcoef);
QZ_API int qzloadnamedata_(QZmodel* model, const char* pszTitle, const char* pszObjName, const char* pszRhsName, const char* pszRngName, const char* pszBndname, char** paszConNames, char** paszVarNames, char** paszConeNames);
QZ_API int qzloadvarstartpoint_(QZmodel* model, const double* padPrimal);
QZ_API int qzloadmipvarstartpoint_(QZmodel* model, const double* padPrimal);
QZ_API int qzloadvarstartpointpartial_(QZmodel* model, int* nCols, const int* paiCols, const double* padPrimal);
QZ_API int qzloadmipvarstartpointpartial_(QZmodel* model, int* nCols, const int* paiCols, const double* padPrimal);
QZ_API int qzloadvarpriorities_(QZmodel* model, const int* panCprior);
QZ_API int qzloadbasis_(QZmodel* model, const int* panCstatus, const int* panRstatus);
QZ_API int qzloadprimalsolution_(QZmodel* model, const int* pnStatus, const double* pdObj, const double* padPrimal, const double* padSlack, const double* pdPinf);
QZ_API int qzloaddualsolution_(QZmodel* model, const int* pnStatus, const double* pdDobj, const double* padDual, const double* padRedcost, const double* pdDinf);
QZ_API int qzloadsolutioninfo_(QZmodel* model, const int* pnMethod, const int* pnElapsed, const int* pnSpxIter, const int* pnBarIter, const int* pnNlpIter, const int* pnPrimStatus, const int* pnDualStatus, const int* pnBasicStatus, const double* pdPobj, const double* pdDobj, const double* pdPinf, const double* pdDinf);
QZ_API int qzloadmodelstatus_(QZmodel* model, const int* pnModelStatus, const int* pnErrorCode);
QZ_API int qzgetdimensions_(QZmodel* model, int* pnVars, int* pnCons, int* pnCones, int* pnAnnz, int* pnQCnnz, int* pnConeNnz, int* pnNLPnnz, int* pnNLPobjnnz, int* pnVarNamelen, int* pnConNamelen, int* pnConeNamelen);
QZ_API int qzgetlpdata_(QZmodel* model, int* pnObjSense, double* pdObjConst, double* padC, double* padB, char* pszConTypes, int* paiAcols, int* panAcols, double* padAcoef, int* paiArows, double* padL, double* padU);
QZ_API int qzgetnamedata_(QZmodel* model, char* pszTitle, char* pszObjName, char* pszRhsName, char* pszRngName, char* pszBndname, char** paszConNames, char* pachConNameData, char** paszVarNames, char* pachVarNameData, char** paszConeNames, char* pachConeNameData);
QZ_API int qzgetconstraintdatai_(QZmodel* model, int* iCon, char* pchType, char* pchIsNlp, double* pdB);
QZ_API int qzgetlpvariabledataj_(QZmodel* model, int* iVar, char* pchVartype, double* pdC, double* pdL, double* pdU, int* pnAnnz, int* paiArows, double* padAcoef);
QZ_API int qzgetlpconstraintdatai_(QZmodel* model, int* iCon, char* pchType, double* pdB, int* pnNnz, int* paiVar, double* padAcoef);
QZ_API int qzgetlowerboundj_(QZmodel* model, int* iVar, double* pdValue);
QZ_API int qzgetupperboundj_(QZmodel* model, int* iVar, double* pdValue);
QZ_API int qzgetobjectivej_(QZmodel* model, int* iVar, double* pdValue);
QZ_API int qzgetvartype_(QZmodel* model, char* pszVarTypes);
QZ_API int qzgetvariablenamej_(QZmodel* model, int* iVar, char* pszName);
QZ_API int qzgetconstraintnamei_(QZmodel* model, int* iCon, char* pszName);
QZ_API int qzgetconenamei_(QZmodel* model, int* iCone, char* pszName);
QZ_API int qzgetvariableindex_(QZmodel* model, const char* pszName, int* pnIndex);
QZ_API int qzgetconstraintindex_(QZmodel* model, const char* pszName, int* pnIndex);
QZ_API int qzgetconeindex_(QZmodel* model, const char* pszName, int* pnIndex);
QZ_API int qzgetsetsdata_(QZmodel* model, int* piNsets, int* piNtnz, char* pszSETStype, int* piCardnum, int* piNnz, int* piBegset, int* piVarndx);
QZ_API int qzgetsetsdatai_(QZmodel* model, int* iSet, char* pszSETStype, int* piCardnum, int* piNnz, int* piVarndx);
QZ_API int qzgetsemicontdata_(QZmodel* model, int* piNvars, int* piVarndx, double* padL, double* padU);
QZ_API int qzgetconedatai_(QZmodel* model, int* iCone, char* pchConeType, double* pdConeAlpha, int* piNnz, int* piCols);
QZ_API int qzgetqcdata_(QZmodel* model, int* paiQCrows, int* paiQCcols1, int* paiQCcols2, double* padQCcoef);
QZ_API int qzgetqcdatai_(QZmodel* model, int* iCon, int* pnQCnnz, int* paiQCcols1, int* paiQCcols2, double* padQCcoef);
QZ_API int qzgetposddata_(QZmodel* model, int* pnPOSD, int* paiPOSDdim, int* paiPOSDnnz, int* paiPOSDbeg, int* paiPOSDrowndx, int* paiPOSDcolndx, int* paiPOSDvarndx);
QZ_API int qzgetposddatai_(QZmodel* model, int* iPOSD, int* pnPOSDdim, int* pnPOSDnnz, int* paiPOSDrowndx, int* paiPOSDcolndx, int* paiPOSDvarndx);
QZ_API int qzgetalldiffdata_(QZmodel* model, int* pinALLDIFF, int* paiAlldiffDim, int* paiAlldiffL, int* paiAlldiffU, int* paiAlldiffBeg, int* paiAlldiffVar);
QZ_API int qzgetalldiffdatai_(QZmodel* model, int* iALLDIFF, int* pnAlldiffDim, int* pnAlldiffL, int* pnAlldiffU, int* paiAlldiffVar);
QZ_API int qzgetvarstartpoint_(QZmodel* model, double* padPrimal);
QZ_API int qzgetmipvarstartpoint_(QZmodel* model, double* padPrimal);
QZ_API int qzgetvarstartpointpartial_(QZmodel* model, int* pnCols, int* paiCols, double* padPrimal);
QZ_API int qzgetmipvarstartpointpartial_(QZmodel* model, int* pnCols, int* paiCols, double* padPrimal);
QZ_API int qzgetvarpriorities_(QZmodel* model, int* panCprior);
QZ_API int qzgetgopvariablepriority_(QZmodel* model, int* iVar, int* pnPriority);
QZ_API int qzgetvartypecount_(QZmodel* model, int* pnCont, int* pnBin, int* pnInt);
QZ_API int qzoptimize_(QZmodel* model, int* nMethod, int* pnStatus);
QZ_API int qzgetsolutionstatus_(QZmodel* model, int* pnStatus);
QZ_API int qzgetmipsolutionstatus_(QZmodel* model, int* pnStatus);
QZ_API int qzgetsolutioninfo_(QZmodel* model, int* pnMethod, int* pnElapsed, int* pnSpxIter, int* pnBarIter, int* pnNlpIter, int* pnPrimStatus, int* pnDualStatus, int* pnBasicStatus, double* pdPobj, double* pdDobj, double* pdPinf, double* pdDinf);
QZ_API int qzgetprimalsolution_(QZmodel* model, double* padPrimal);
QZ_API int qzgetdualsolution_(QZmodel* model, double* padDual);
QZ_API int qzgetslacks_(QZmodel* model, double* padSlacks);
QZ_API int qzgetreducedcosts_(QZmodel* model, double* padRedcosts);
QZ_API int qzgetreducedcostscone_(QZmodel* model, double* padRedcosts);
QZ_API int qzgetbasis_(QZmodel* model, int* panCstatus, int* panRstatus);
QZ_API int qzgetmipprimalsolution_(QZmodel* model, double* padPrimal);
QZ_API int qzgetmipdualsolution_(QZmodel* model, double* padDual);
QZ_API int qzgetmipslacks_(QZmodel* model, double* padSlacks);
QZ_API int qzgetmipreducedcosts_(QZmodel* model, double* padRedcosts);
QZ_API int qzgetmipbasis_(QZmodel* model, int* panCstatus, int* panRstatus);
QZ_API int qzgetobjective_(QZmodel* model, double* pdObj);
QZ_API int qzgetmipobjective_(QZmodel* model, double* pdObj);
QZ_API int qzgetsolution_(QZmodel* model, int* nWhich, double* padValues);
QZ_API int qzgetsolution2_(QZmodel* model, int* nSolType, double* padPrimal, double* padDual, double* padSlacks, double* padRedcosts);
/* Parameters. */
QZ_API int qzsetmodelintparameter_(QZmodel* model, int* nParameter, int* nValue);
QZ_API int qzsetmodeldouparameter_(QZmodel* model, int* nParameter, double* dValue);
QZ_API int qzgetmodelintparameter_(QZmodel* model, int* nParameter, int* pnValue);
QZ_API int qzgetmodeldouparameter_(QZmodel* model, int* nParameter, double* pdValue);
QZ_API int qzsetenvintparameter_(QZenv* env, int* nParameter, int* nValue);
QZ_API int qzsetenvdouparameter_(QZenv* env, int* nParameter, double* dValue);
QZ_API int qzgetenvintparameter_(QZenv* env, int* nParameter, int* pnValue);
QZ_API int qzgetenvdouparameter_(QZenv* env, int* nParameter, double* pdValue);
QZ_API int qzsetmodelparameter_(QZmodel* model, int* nParameter, void* pvValue);
QZ_API int qzgetmodelparameter_(QZmodel* model, int* nParameter, void* pvValue);
QZ_API int qzsetenvparameter_(QZenv* env, int* nParameter, void* pvValue);
QZ_API int qzgetenvparameter_(QZenv* env, int* nParameter, void* pvValue);
QZ_API int qzreadmodelparameter_(QZmodel* model, const char* pszFname);
QZ_API int qzwritemodelparameter_(QZmodel* model, const char* pszFname);
QZ_API int qzreadenvparameter_(QZenv* env, const char* pszFname);
QZ_API int qzwriteenvparameter_(QZenv* env, const char* pszFname);
QZ_API int qzgetparamcount_(QZenv* env, int* pnCount);
QZ_API int qzgetparammacroname_(QZenv* env, int* nParameter, char* szName);
QZ_API int qzgetparammacroid_(QZenv* env, const char* szName, int* pnType, int* pnId);
/* Information, messages and callbacks. */
QZ_API int qzgetinfo_(QZmodel* model, int* nQuery, void* pvResult);
QZ_API int qzgetcallbackinfo_(QZmodel* model, int* nLocation, int* nQuery, void* pvResult);
QZ_API int qzgetmipcallbackinfo_(QZmodel* model, int* nQuery, void* pvResult);
QZ_API int qzgetprogressinfo_(QZmodel* model, int* nLocation, int* nQuery, void* pvResult);
QZ_API int qzgetformattedinfo_(QZmodel* model, const char* szFormatFile, char* szHeader, char* szData, int* nSelector);
QZ_API int qzgeterrormessage_(QZenv* env, int* nErrorCode, char* pszMessage);
QZ_API int qzgetfileerror_(QZmodel* model, int* pnLinenum, char* pszLinetxt);
QZ_API int qzgeterrorrowindex_(QZmodel* model, int* piRow);
QZ_API int qzsetcallback_(QZmodel* model, QZcallback_t pfFunc, void* pvData);
QZ_API int qzsetmipcallback_(QZmodel* model, QZmipCallback_t pfFunc, void* pvData);
QZ_API int qzsetgopcallback_(QZmodel* model, QZgopCallback_t pfFunc, void* pvData);
QZ_API int qzsetmodellogfunc_(QZmodel* model, QZlogFunc_t pfFunc, void* pvData);
QZ_API int qzsetenvlogfunc_(QZenv* env, QZenvLogFunc_t pfFunc, void* pvData);
/* Simplex runs and solves with the final basis. */
QZ_API QZmodel qzgetdualmodel_(QZmodel* model, int* pnErrorcode);
QZ_API int qzsplexoptimize_(QZmodel* model, int* nMethod);
QZ_API int qzsplexreoptimize_(QZmodel* model, int* nMethod);
QZ_API int qzdoftran_(QZmodel* model, int* nInc, const int* paiInc, const double* padInc, int* pnOut, int* paiOut, double* padOut);
QZ_API int qzdobtran_(QZmodel* model, int* nInc, const int* paiInc, const double* padInc, int* pnOut, int* paiOut, double* padOut);
QZ_API int qzdodenseftran_(QZmodel* model, const double* padB, double* padX);
QZ_API int qzdodensebtran_(QZmodel* model, const double* padC, double* padY);
/* Model modification. */
QZ_API int qzmodifyaij_(QZmodel* model, int* iRow, int* iCol, double* dAij);
QZ_API int qzmodifyaj_(QZmodel* model, int* iCol, int* nRows, const int* paiRows, const double* padAj);
QZ_API int qzdeleteaj_(QZmodel* model, int* iCol, int* nRows, const int* paiRows);
QZ_API int qzmodifyrhs_(QZmodel* model, int* nRows, const int* paiRows, const double* padB);
QZ_API int qzmodifyconstrainttype_(QZmodel* model, int* nRows, const int* paiRows, const char* pszTypes);
QZ_API int qzmodifyvariabletype_(QZmodel* model, int* nCols, const int* paiCols, const char* pszTypes);
QZ_API int qzmodifylowerbounds_(QZmodel* model, int* nCols, const int* paiCols, const double* padL);
QZ_API int qzmodifyupperbounds_(QZmodel* model, int* nCols, const int* paiCols, const double* padU);
QZ_API int qzmodifyobjective_(QZmodel* model, int* nCols, const int* paiCols, const double* padC);
QZ_API int qzmodifyobjconstant_(QZmodel* model, double* dObjConst);
QZ_API int qzmodifysemicontvars_(QZmodel* model, int* nVars, const int* paiVars, const double* padL);
QZ_API int qzmodifycone_(QZmodel* model, char* cConeType, int* iCone, int* nNnz, const int* paiCols, double* dConeAlpha);
QZ_API int qzmodifyset_(QZmodel* model, char* cSetType, int* iSet, int* nNnz, const int* paiCols);
QZ_API int qzmodifypriorities_(QZmodel* model, int* nCols, const int* paiCols, const int* paiPriorities);
QZ_API int qzsetproballocsizes_(QZmodel* model, int* nColsAlloc, int* nRowsAlloc, int* nQCAlloc, int* nNzAlloc, int* nQCnzAlloc, int* nNLPnzAlloc);
QZ_API int qzsetprobnameallocsizes_(QZmodel* model, int* nColNameBytes, int* nRowNameBytes);
QZ_API int qzaddemptyspacesacolumns_(QZmodel* model, const int* paiColnnz);
QZ_API int qzaddemptyspacesnlpacolumns_(QZmodel* model, const int* paiColnnz);
QZ_API int qzaddconstraints_(QZmodel* model, int* nCons, const char* pszConTypes, char** paszConNames, const int* paiRows, const double* padAcoef, const int* paiCols, const double* padB);
QZ_API int qzaddvariables_(QZmodel* model, int* nVars, const char* pszVarTypes, char** paszVarNames, const int* paiAcols, const int* panAcols, const double* padAcoef, const int* paiArows, const double* padC, const double* padL, const double* padU);
QZ_API int qzaddcones_(QZmodel* model, int* nCones, const char* pszConeTypes, const double* padConeAlpha, char** paszConeNames, const int* paiConebegcol, const int* paiConecols);
QZ_API int qzaddsets_(QZmodel* model, int* nSETS, const char* pszSETStype, const int* paiCARDnum, const int* paiSETSbegcol, const int* paiSETScols);
QZ_API int qzaddqcterms_(QZmodel* model, int* nQCnnz, const int* paiQCrows, const int* paiQCcols1, const int* paiQCcols2, const double* padQCcoef);
QZ_API int qzaddnlpaj_(QZmodel* model, int* iCol, int* nRows, const int* paiRows, const double* padAj);
QZ_API int qzaddnlpobj_(QZmodel* model, int* nCols, const int* paiCols, const double* padColj);
QZ_API int qzaddartcolumns_(QZmodel* model, int* nFlags, double* dPenalty);
QZ_API int qzdelartcolumns_(QZmodel* model, int* nFlags);
QZ_API int qzdeleteconstraints_(QZmodel* model, int* nCons, const int* paiCons);
QZ_API int qzdeletevariables_(QZmodel* model, int* nVars, const int* paiVars);
QZ_API int qzdeletecones_(QZmodel* model, int* nCones, const int* paiCones);
QZ_API int qzdeletesets_(QZmodel* model, int* nSETS, const int* paiSETS);
QZ_API int qzdeletesemicontvars_(QZmodel* model, int* nVars, const int* paiVars);
QZ_API int qzdeleteqcterms_(QZmodel* model, int* nCons, const int* paiCons);
QZ_API int qzdeletenlpobj_(QZmodel* model, int* nCols, const int* paiCols);
#ifdef __cplusplus
}
#endif

#endif
