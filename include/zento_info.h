/* Information keys, messages, callbacks and logging. */
#ifndef ZENTO_INFO_H
#define ZENTO_INFO_H

#ifdef __cplusplus
extern "C" {
#endif

#define QZ_IINFO_METHOD 11200
#define QZ_DINFO_POBJ 11201
#define QZ_DINFO_DOBJ 11202
#define QZ_DINFO_PINFEAS 11203
#define QZ_DINFO_DINFEAS 11204
#define QZ_IINFO_MODEL_STATUS 11205
#define QZ_IINFO_PRIMAL_STATUS 11206
#define QZ_IINFO_DUAL_STATUS 11207
#define QZ_IINFO_BASIC_STATUS 11208

/* Locations reported to the progress callback. */
#define QZLOC_PRIMAL 0
#define QZLOC_DUAL 1
#define QZLOC_BARRIER 2
#define QZLOC_EXIT_SOLVER 11

typedef int (*QZcallback_t)(QZmodel model, int nLocation, void* pvData);
typedef void (*QZlogFunc_t)(QZmodel model, char* szLine, void* pvData);
typedef void (*QZenvLogFunc_t)(QZenv env, char* szLine, void* pvData);

QZ_API int QZsetCallback(QZmodel model, QZcallback_t pfFunc, void* pvData);
QZ_API int QZsetModelLogfunc(QZmodel model, QZlogFunc_t pfFunc, void* pvData);
QZ_API int QZsetEnvLogfunc(QZenv env, QZenvLogFunc_t pfFunc, void* pvData);
QZ_API int QZgetErrorMessage(QZenv env, int nErrorCode, char* pszMessage);

#ifdef __cplusplus
}
#endif

#endif
