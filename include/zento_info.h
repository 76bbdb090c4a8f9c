/* Information keys, messages, callbacks, logging and progress. */
#ifndef ZENTO_INFO_H
#define ZENTO_INFO_H

#include <stdio.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Information keys: QZ_IINFO_ int, QZ_DINFO_ double, QZ_SINFO_ string ---- */

/* Model size and type. */
#define QZ_IINFO_NUM_CONS                        11010
#define QZ_IINFO_NUM_VARS                        11011
#define QZ_IINFO_NUM_NONZ                        11012
#define QZ_IINFO_NUM_BIN                         11013
#define QZ_IINFO_NUM_INT                         11014
#define QZ_IINFO_NUM_CONT                        11015
#define QZ_IINFO_NUM_QC_NONZ                     11016
#define QZ_IINFO_NUM_NLP_NONZ                    11017
#define QZ_IINFO_NUM_NLPOBJ_NONZ                 11018
#define QZ_IINFO_NUM_RDCONS                      11019
#define QZ_IINFO_NUM_RDVARS                      11020
#define QZ_IINFO_NUM_RDNONZ                      11021
#define QZ_IINFO_NUM_RDINT                       11022
#define QZ_IINFO_LEN_VARNAMES                    11023
#define QZ_IINFO_LEN_CONNAMES                    11024
#define QZ_IINFO_NUM_NLP_CONS                    11025
#define QZ_IINFO_NUM_NLP_VARS                    11026
#define QZ_IINFO_NUM_SUF_ROWS                    11027
#define QZ_IINFO_NUM_IIS_ROWS                    11028
#define QZ_IINFO_NUM_SUF_BNDS                    11029
#define QZ_IINFO_NUM_IIS_BNDS                    11030
#define QZ_IINFO_NUM_SUF_COLS                    11031
#define QZ_IINFO_NUM_IUS_COLS                    11032
#define QZ_IINFO_NUM_CONES                       11033
#define QZ_IINFO_NUM_CONE_NONZ                   11034
#define QZ_IINFO_LEN_CONENAMES                   11035
#define QZ_DINFO_INST_VAL_MIN_COEF               11036
#define QZ_IINFO_INST_VARNDX_MIN_COEF            11037
#define QZ_IINFO_INST_CONNDX_MIN_COEF            11038
#define QZ_DINFO_INST_VAL_MAX_COEF               11039
#define QZ_IINFO_INST_VARNDX_MAX_COEF            11040
#define QZ_IINFO_INST_CONNDX_MAX_COEF            11041
#define QZ_IINFO_NUM_VARS_CARD                   11042
#define QZ_IINFO_NUM_VARS_SOS1                   11043
#define QZ_IINFO_NUM_VARS_SOS2                   11044
#define QZ_IINFO_NUM_VARS_SOS3                   11045
#define QZ_IINFO_NUM_VARS_SCONT                  11046
#define QZ_IINFO_NUM_CONS_L                      11047
#define QZ_IINFO_NUM_CONS_E                      11048
#define QZ_IINFO_NUM_CONS_G                      11049
#define QZ_IINFO_NUM_CONS_R                      11050
#define QZ_IINFO_NUM_CONS_N                      11051
#define QZ_IINFO_NUM_VARS_LB                     11052
#define QZ_IINFO_NUM_VARS_UB                     11053
#define QZ_IINFO_NUM_VARS_LUB                    11054
#define QZ_IINFO_NUM_VARS_FR                     11055
#define QZ_IINFO_NUM_VARS_FX                     11056
#define QZ_IINFO_NUM_SPARS                       11059
#define QZ_IINFO_NUM_SUF_INTS                    11062
#define QZ_IINFO_NUM_IIS_INTS                    11063

/* Solution of continuous solves. */
#define QZ_IINFO_METHOD                          11200
#define QZ_DINFO_POBJ                            11201
#define QZ_DINFO_DOBJ                            11202
#define QZ_DINFO_PINFEAS                         11203
#define QZ_DINFO_DINFEAS                         11204
#define QZ_IINFO_MODEL_STATUS                    11205
#define QZ_IINFO_PRIMAL_STATUS                   11206
#define QZ_IINFO_DUAL_STATUS                     11207
#define QZ_IINFO_BASIC_STATUS                    11208
#define QZ_IINFO_BAR_ITER                        11209
#define QZ_IINFO_SIM_ITER                        11210
#define QZ_IINFO_NLP_ITER                        11211
#define QZ_IINFO_ELAPSED_TIME                    11212
#define QZ_DINFO_MSW_POBJ                        11213
#define QZ_IINFO_MSW_PASS                        11214
#define QZ_IINFO_MSW_NSOL                        11215
#define QZ_IINFO_IPM_STATUS                      11216
#define QZ_DINFO_IPM_POBJ                        11217
#define QZ_DINFO_IPM_DOBJ                        11218
#define QZ_DINFO_IPM_PINFEAS                     11219
#define QZ_DINFO_IPM_DINFEAS                     11220
#define QZ_IINFO_NLP_CALL_FUN                    11221
#define QZ_IINFO_NLP_CALL_DEV                    11222
#define QZ_IINFO_NLP_CALL_HES                    11223
#define QZ_IINFO_BAR_THREADS                     11229
#define QZ_IINFO_NLP_THREADS                     11230
#define QZ_IINFO_SIM_THREADS                     11231
#define QZ_SINFO_NLP_THREAD_LOAD                 11233
#define QZ_IINFO_ARCH_ID                         11237
#define QZ_IINFO_LPTOOL                          11241

/* Mixed-integer. */
#define QZ_IINFO_MIP_STATUS                      11300
#define QZ_DINFO_MIP_OBJ                         11301
#define QZ_DINFO_MIP_BESTBOUND                   11302
#define QZ_IINFO_MIP_SIM_ITER                    11303
#define QZ_IINFO_MIP_BAR_ITER                    11304
#define QZ_IINFO_MIP_NLP_ITER                    11305
#define QZ_IINFO_MIP_BRANCHCOUNT                 11306
#define QZ_IINFO_MIP_NEWIPSOL                    11307
#define QZ_IINFO_MIP_LPCOUNT                     11308
#define QZ_IINFO_MIP_ACTIVENODES                 11309
#define QZ_IINFO_MIP_LTYPE                       11310
#define QZ_IINFO_MIP_AOPTTIMETOSTOP              11311
#define QZ_IINFO_MIP_NUM_TOTAL_CUTS              11312
#define QZ_IINFO_MIP_GUB_COVER_CUTS              11313
#define QZ_IINFO_MIP_FLOW_COVER_CUTS             11314
#define QZ_IINFO_MIP_LIFT_CUTS                   11315
#define QZ_IINFO_MIP_PLAN_LOC_CUTS               11316
#define QZ_IINFO_MIP_DISAGG_CUTS                 11317
#define QZ_IINFO_MIP_KNAPSUR_COVER_CUTS          11318
#define QZ_IINFO_MIP_LATTICE_CUTS                11319
#define QZ_IINFO_MIP_GOMORY_CUTS                 11320
#define QZ_IINFO_MIP_COEF_REDC_CUTS              11321
#define QZ_IINFO_MIP_GCD_CUTS                    11322
#define QZ_IINFO_MIP_OBJ_CUT                     11323
#define QZ_IINFO_MIP_BASIS_CUTS                  11324
#define QZ_IINFO_MIP_CARDGUB_CUTS                11325
#define QZ_IINFO_MIP_CLIQUE_CUTS                 11326
#define QZ_IINFO_MIP_CONTRA_CUTS                 11327
#define QZ_IINFO_MIP_GUB_CONS                    11328
#define QZ_IINFO_MIP_GLB_CONS                    11329
#define QZ_IINFO_MIP_PLANTLOC_CONS               11330
#define QZ_IINFO_MIP_DISAGG_CONS                 11331
#define QZ_IINFO_MIP_SB_CONS                     11332
#define QZ_IINFO_MIP_IKNAP_CONS                  11333
#define QZ_IINFO_MIP_KNAP_CONS                   11334
#define QZ_IINFO_MIP_NLP_CONS                    11335
#define QZ_IINFO_MIP_CONT_CONS                   11336
#define QZ_DINFO_MIP_TOT_TIME                    11347
#define QZ_DINFO_MIP_OPT_TIME                    11348
#define QZ_DINFO_MIP_HEU_TIME                    11349
#define QZ_IINFO_MIP_SOLSTATUS_LAST_BRANCH       11350
#define QZ_DINFO_MIP_SOLOBJVAL_LAST_BRANCH       11351
#define QZ_IINFO_MIP_HEU_LEVEL                   11352
#define QZ_DINFO_MIP_PFEAS                       11353
#define QZ_DINFO_MIP_INTPFEAS                    11354
#define QZ_IINFO_MIP_THREADS                     11367
#define QZ_SINFO_MIP_THREAD_LOAD                 11368
#define QZ_IINFO_MIP_STRATEGY_MASK               11374

/* Global. */
#define QZ_DINFO_GOP_OBJ                         11600
#define QZ_IINFO_GOP_SIM_ITER                    11601
#define QZ_IINFO_GOP_BAR_ITER                    11602
#define QZ_IINFO_GOP_NLP_ITER                    11603
#define QZ_DINFO_GOP_BESTBOUND                   11604
#define QZ_IINFO_GOP_STATUS                      11605
#define QZ_IINFO_GOP_LPCOUNT                     11606
#define QZ_IINFO_GOP_NLPCOUNT                    11607
#define QZ_IINFO_GOP_MIPCOUNT                    11608
#define QZ_IINFO_GOP_NEWSOL                      11609
#define QZ_IINFO_GOP_BOX                         11610
#define QZ_IINFO_GOP_BBITER                      11611
#define QZ_IINFO_GOP_SUBITER                     11612
#define QZ_IINFO_GOP_MIPBRANCH                   11613
#define QZ_IINFO_GOP_ACTIVEBOXES                 11614
#define QZ_IINFO_GOP_TOT_TIME                    11615
#define QZ_IINFO_GOP_MAXDEPTH                    11616
#define QZ_DINFO_GOP_SIM_ITER                    11619
#define QZ_DINFO_GOP_BAR_ITER                    11620
#define QZ_DINFO_GOP_NLP_ITER                    11621
#define QZ_DINFO_GOP_LPCOUNT                     11622
#define QZ_DINFO_GOP_NLPCOUNT                    11623
#define QZ_DINFO_GOP_MIPCOUNT                    11624
#define QZ_DINFO_GOP_BBITER                      11625
#define QZ_DINFO_GOP_SUBITER                     11626
#define QZ_DINFO_GOP_MIPBRANCH                   11627
#define QZ_DINFO_GOP_FIRST_TIME                  11628
#define QZ_DINFO_GOP_BEST_TIME                   11629
#define QZ_IINFO_GOP_THREADS                     11631
#define QZ_SINFO_GOP_THREAD_LOAD                 11632

/* Current best across solvers. */
#define QZ_DINFO_SUB_OBJ                         11700
#define QZ_DINFO_SUB_PINF                        11701
#define QZ_DINFO_CUR_OBJ                         11702
#define QZ_IINFO_CUR_ITER                        11703
#define QZ_DINFO_CUR_BEST_BOUND                  11704
#define QZ_IINFO_CUR_STATUS                      11705
#define QZ_IINFO_CUR_LP_COUNT                    11706
#define QZ_IINFO_CUR_BRANCH_COUNT                11707
#define QZ_IINFO_CUR_ACTIVE_COUNT                11708
#define QZ_IINFO_CUR_NLP_COUNT                   11709
#define QZ_IINFO_CUR_MIP_COUNT                   11710
#define QZ_IINFO_CUR_CUT_COUNT                   11711
#define QZ_DINFO_CUR_ITER                        11712
#define QZ_DINFO_CUR_TIME                        11713

/* General progress. */
#define QZ_DINFO_GEN_PERCENT                     11800
#define QZ_IINFO_GEN_NONZ_TTL                    11801
#define QZ_IINFO_GEN_NONZ_NL                     11802
#define QZ_IINFO_GEN_ROW_NL                      11803
#define QZ_IINFO_GEN_VAR_NL                      11804

/* IIS. */
#define QZ_IINFO_IIS_BAR_ITER                    11850
#define QZ_IINFO_IIS_SIM_ITER                    11851
#define QZ_IINFO_IIS_NLP_ITER                    11852
#define QZ_IINFO_IIS_TOT_TIME                    11856
#define QZ_IINFO_IIS_ACT_NODE                    11857
#define QZ_IINFO_IIS_LPCOUNT                     11858
#define QZ_IINFO_IIS_NLPCOUNT                    11859
#define QZ_IINFO_IIS_MIPCOUNT                    11860
#define QZ_IINFO_IIS_THREADS                     11861

/* IUS. */
#define QZ_IINFO_IUS_BAR_ITER                    11875
#define QZ_IINFO_IUS_SIM_ITER                    11876
#define QZ_IINFO_IUS_NLP_ITER                    11877
#define QZ_IINFO_IUS_TOT_TIME                    11881
#define QZ_IINFO_IUS_ACT_NODE                    11882
#define QZ_IINFO_IUS_LPCOUNT                     11883
#define QZ_IINFO_IUS_NLPCOUNT                    11884
#define QZ_IINFO_IUS_MIPCOUNT                    11885
#define QZ_IINFO_IUS_THREADS                     11886

/* Presolve progress (no macro names of their own elsewhere). */
#define QZ_IINFO_PRE_NUM_RED_ROWS                11900
#define QZ_IINFO_PRE_NUM_RED_COLS                11901
#define QZ_IINFO_PRE_NUM_RED_NONZ                11902
#define QZ_IINFO_PRE_NUM_PASSES                  11903
#define QZ_IINFO_PRE_LAST_STAGE                  11904
#define QZ_DINFO_PRE_ELAPSED                     11905

/* Status of the last run. */
#define QZ_IINFO_ERR_OPTIM                       11999

/* Text. */
#define QZ_SINFO_MODEL_FILENAME                  12950
#define QZ_SINFO_MODEL_SOURCE                    12951
#define QZ_SINFO_STOC_FILENAME                   12954
#define QZ_SINFO_MODEL_TYPE                      12952
#define QZ_IINFO_MODEL_TYPE                      12953

/* Stochastic. */
#define QZ_DINFO_STOC_EVOBJ                      13201
#define QZ_DINFO_STOC_EVPI                       13202
#define QZ_DINFO_STOC_PINFEAS                    13203
#define QZ_DINFO_STOC_DINFEAS                    13204
#define QZ_IINFO_STOC_SIM_ITER                   13207
#define QZ_IINFO_STOC_BAR_ITER                   13208
#define QZ_IINFO_STOC_NLP_ITER                   13209
#define QZ_DINFO_STOC_TOTAL_TIME                 13217
#define QZ_IINFO_STOC_STATUS                     13218
#define QZ_IINFO_STOC_NUM_SCENARIOS              13220
#define QZ_DINFO_STOC_NUM_SCENARIOS              13221
#define QZ_IINFO_STOC_NUM_STAGES                 13222
#define QZ_DINFO_STOC_NUM_COLS_DETEQI            13231
#define QZ_DINFO_STOC_NUM_ROWS_DETEQI            13233
#define QZ_IINFO_STOC_NUM_NBF_CUTS               13244
#define QZ_IINFO_STOC_NUM_NBO_CUTS               13245
#define QZ_DINFO_STOC_EVMU                       13287
#define QZ_IINFO_STOC_THREADS                    13341
#define QZ_SINFO_STOC_THREAD_LOAD                13344
#define QZ_IINFO_STOC_NUM_BUCKETS                13345

/* Other. */
#define QZ_IINFO_VER_MAJOR                       990
#define QZ_IINFO_VER_MINOR                       991
#define QZ_IINFO_VER_BUILD                       992
#define QZ_IINFO_VER_REVISION                    993
#define QZ_IINFO_OBJSENSE                        1022

/* A string key writes at most this many bytes, the terminating zero included. */
#define QZ_INFO_STRING_MAXLEN 1024
/* Buffer size that holds any message of QZgetErrorMessage. */
#define QZ_MAX_ERROR_MESSAGE_LENGTH 1024
/* QZgetFileError writes at most this many bytes of the offending line. */
#define QZ_FILE_ERROR_TEXT_MAXLEN 256
/* QZgetFormattedInfo writes at most this many bytes into each of its two buffers. */
#define QZ_FORMATTED_INFO_MAXLEN 16384

/* Contexts of QZgetProfilerInfo and QZgetProfilerContext. */
#define QZ_PROFILER_CONTEXT_FIRST 12000
#define QZ_PROFILER_CONTEXT_LAST 12499

/* ---- Locations reported to the progress callback ---- */
#define QZLOC_PRIMAL 0
#define QZLOC_DUAL 1
#define QZLOC_BARRIER 2
#define QZLOC_CROSSOVER 3
#define QZLOC_LOCAL_NLP 4
#define QZLOC_MIP 5
#define QZLOC_BANDB QZLOC_MIP
#define QZLOC_LOCAL_OPT 6
#define QZLOC_GEN_START 7
#define QZLOC_GEN_PROCESSING 8
#define QZLOC_GEN_END 9
#define QZLOC_GOP 10
#define QZLOC_EXIT_SOLVER 11
#define QZLOC_PRESOLVE 12
#define QZLOC_MSW 13
#define QZLOC_FUNC_CALC 14
#define QZLOC_IISIUS 15
#define QZLOC_SP 16
#define QZLOC_GEN_SP_START 17
#define QZLOC_GEN_SP 18
#define QZLOC_GEN_SP_END 19
#define QZLOC_SP_WS 20
#define QZLOC_LSQ 21
#define QZLOC_SP_WS_START 22
#define QZLOC_SP_WS_END 23
#define QZLOC_SP_BENCH_START 24
#define QZLOC_SP_BENCH_END 25
#define QZLOC_OBJPOOL 27

/* ---- Callback and log function types ---- */
/* Progress callback: a nonzero return stops the solve with QZERR_USER_INTERRUPT. */
typedef int (*QZcallback_t)(QZmodel model, int nLocation, void* pvData);
/* New incumbent of the MIP search; the result is ignored. */
typedef int (*QZmipCallback_t)(QZmodel model, void* pvData, double dObj, double* padPrimal);
/* MIP checkpoint: a nonzero return offers the solution written into padPrimal. */
typedef int (*QZmipInsSolCallback_t)(QZmodel model, void* pvData, double dBest,
                                     double* padPrimal);
/* MIP checkpoint: a nonzero return offers the objective and bound written back. */
typedef int (*QZmipInsObjCallback_t)(QZmodel model, void* pvData, double* pdObj,
                                     double* pdBound);
/* New incumbent of the global search. */
typedef int (*QZgopCallback_t)(QZmodel model, void* pvData, double dObj, double* padPrimal);
typedef void (*QZlogFunc_t)(QZmodel model, char* szLine, void* pvData);
typedef void (*QZenvLogFunc_t)(QZenv env, char* szLine, void* pvData);

/* ---- Setting callbacks and log functions (a null function clears the slot) ---- */
QZ_API int QZsetCallback(QZmodel model, QZcallback_t pfFunc, void* pvData);
QZ_API int QZsetMIPCallback(QZmodel model, QZmipCallback_t pfFunc, void* pvData);
QZ_API int QZsetMIPCallbackInsMIPSol(QZmodel model, QZmipInsSolCallback_t pfFunc, void* pvData);
QZ_API int QZsetMIPCallbackInsMIPObj(QZmodel model, QZmipInsObjCallback_t pfFunc, void* pvData);
QZ_API int QZsetGOPCallback(QZmodel model, QZgopCallback_t pfFunc, void* pvData);
QZ_API int QZsetModelLogfunc(QZmodel model, QZlogFunc_t pfFunc, void* pvData);
QZ_API int QZsetEnvLogfunc(QZenv env, QZenvLogFunc_t pfFunc, void* pvData);
/* One per process: receives environment lines when the environment has no log function. */
QZ_API int QZsetDbgLogfunc(QZenvLogFunc_t pfFunc, void* pvData);

/* ---- Information ---- */
QZ_API int QZgetInfo(QZmodel model, int nQuery, void* pvResult);
QZ_API int QZgetFinalInfo(QZmodel model, int nQuery, void* pvResult);
QZ_API int QZgetCallbackInfo(QZmodel model, int nLocation, int nQuery, void* pvResult);
QZ_API int QZgetMIPCallbackInfo(QZmodel model, int nQuery, void* pvResult);
QZ_API int QZgetProgressInfo(QZmodel model, int nLocation, int nQuery, void* pvResult);
QZ_API int QZgetQuickbackInfo(QZmodel model, int nLocation, int nQuery, void* pvResult);
QZ_API int QZgetFormattedInfo(QZmodel model, const char* szFormatFile, char* szHeader,
                              char* szData, int nSelector);
QZ_API int QZgetProfilerInfo(QZmodel model, int nContext, int* pnCalls, double* pdElapsed);
QZ_API const char* QZgetProfilerContext(QZmodel model, int nContext);

/* ---- Errors ---- */
QZ_API int QZgetErrorMessage(QZenv env, int nErrorCode, char* pszMessage);
QZ_API int QZgetFileError(QZmodel model, int* pnLinenum, char* pszLinetxt);
QZ_API int QZgetErrorRowIndex(QZmodel model, int* piRow);
QZ_API int QZgetLibArch(char* szPlatform, char* pcCode);

/* ---- Logging ---- */
#if defined(__GNUC__)
#define QZ_PRINTF_LIKE(f, a) __attribute__((format(printf, f, a)))
#else
#define QZ_PRINTF_LIKE(f, a)
#endif
/* With nLevel 0, a null model or no log function nothing happens. */
QZ_API int QZlogmod(QZmodel model, int nLevel, const char* fmt, ...) QZ_PRINTF_LIKE(3, 4);
/* The same, tagged with the OpenMP thread number. */
QZ_API int QZlogmodtid(QZmodel model, int nLevel, const char* fmt, ...) QZ_PRINTF_LIKE(3, 4);
QZ_API int QZlogenv(QZenv env, int nLevel, const char* fmt, ...) QZ_PRINTF_LIKE(3, 4);
/* Debug printers: the streams are the caller's; nothing goes to the standard output. */
QZ_API int QZprintlog(FILE* stream, int nLevel, const char* fmt, ...) QZ_PRINTF_LIKE(3, 4);
QZ_API int QZdprintf(int nMask, const char* fmt, ...) QZ_PRINTF_LIKE(2, 3);
QZ_API int QZdfprintf(FILE* stream, int nMask, const char* fmt, ...) QZ_PRINTF_LIKE(3, 4);
QZ_API int QZdsprintf(char* szBuffer, int nBufferSize, const char* fmt, ...) QZ_PRINTF_LIKE(3, 4);

/* ---- Interrupts ---- */
/* Clears the pending Ctrl-C and installs the library's SIGINT handler. */
QZ_API int QZresetctrlc(void);
/* 1 while a Ctrl-C is pending, else 0. */
QZ_API int QZcheckctrlc(void);

#ifdef __cplusplus
}
#endif

#endif
