// Fortran-style twins of the information, message and callback entries.
#include "zento.h"
#include "zento_fortran.h"

extern "C" {

int qzgetinfo_(QZmodel* model, int* nQuery, void* pvResult) { return QZgetInfo(*model, *nQuery, pvResult); }
int qzgetcallbackinfo_(QZmodel* model, int* nLocation, int* nQuery, void* pvResult) { return QZgetCallbackInfo(*model, *nLocation, *nQuery, pvResult); }
int qzgetmipcallbackinfo_(QZmodel* model, int* nQuery, void* pvResult) { return QZgetMIPCallbackInfo(*model, *nQuery, pvResult); }
int qzgetprogressinfo_(QZmodel* model, int* nLocation, int* nQuery, void* pvResult) { return QZgetProgressInfo(*model, *nLocation, *nQuery, pvResult); }
int qzgetformattedinfo_(QZmodel* model, const char* szFormatFile, char* szHeader, char* szData, int* nSelector) { return QZgetFormattedInfo(*model, szFormatFile, szHeader, szData, *nSelector); }
int qzgeterrormessage_(QZenv* env, int* nErrorCode, char* pszMessage) { return QZgetErrorMessage(*env, *nErrorCode, pszMessage); }
int qzgetfileerror_(QZmodel* model, int* pnLinenum, char* pszLinetxt) { return QZgetFileError(*model, pnLinenum, pszLinetxt); }
int qzgeterrorrowindex_(QZmodel* model, int* piRow) { return QZgetErrorRowIndex(*model, piRow); }
int qzsetcallback_(QZmodel* model, QZcallback_t pfFunc, void* pvData) { return QZsetCallback(*model, pfFunc, pvData); }
int qzsetmipcallback_(QZmodel* model, QZmipCallback_t pfFunc, void* pvData) { return QZsetMIPCallback(*model, pfFunc, pvData); }
int qzsetgopcallback_(QZmodel* model, QZgopCallback_t pfFunc, void* pvData) { return QZsetGOPCallback(*model, pfFunc, pvData); }
int qzsetmodellogfunc_(QZmodel* model, QZlogFunc_t pfFunc, void* pvData) { return QZsetModelLogfunc(*model, pfFunc, pvData); }
int qzsetenvlogfunc_(QZenv* env, QZenvLogFunc_t pfFunc, void* pvData) { return QZsetEnvLogfunc(*env, pfFunc, pvData); }

}  // extern "C"
