/* Parameter identifiers, their types and classes, and the parameter entries. */
#ifndef ZENTO_PARAMS_H
#define ZENTO_PARAMS_H

#include "zento.h"

/* Type of a parameter as the registry and QZgetDataType report it. */
#define QZ_INT_PARAMETER_TYPE 4
#define QZ_DOUBLE_PARAMETER_TYPE 8
#define QZ_STRING_PARAMETER_TYPE 0

/* Class bits of a registry row. A row with no bits only reserves its identifier. */
#define QZ_PARCLASS_NOTIMPL 0
#define QZ_PARCLASS_BITMASK 1    /* the value is a bit mask */
#define QZ_PARCLASS_MULTSTEP 2   /* the tuner multiplies by the step instead of adding it */
#define QZ_PARCLASS_TUNPAR 4     /* the tuner varies this row in the current run */
#define QZ_PARCLASS_ENV 1024     /* may be set on the environment */
#define QZ_PARCLASS_MODEL 2048   /* may be set on a model */
#define QZ_PARCLASS_SELECTED 4096 /* the tuner counted this row as selected */
#define QZ_PARCLASS_KEEP 8192    /* the tuner keeps the value of this row */

/* Buffer sizes that always hold a macro name or a description. */
#define QZ_MAX_PARAM_NAME_LENGTH 64
#define QZ_MAX_PARAM_DESC_LENGTH 1024
#define QZ_MAX_PARAM_STRING_LENGTH 256

/* Default name of a parameter file. */
#define QZ_PARAM_FILE_NAME "zento.par"

/* Version */
#define QZ_IPARAM_VER_MAJOR                           990
#define QZ_IPARAM_VER_MINOR                           991
#define QZ_IPARAM_VER_BUILD                           992
#define QZ_IPARAM_VER_REVISION                        993
#define QZ_IPARAM_VER_NUMBER                          999

/* General */
#define QZ_IPARAM_OBJSENSE                            1022
#define QZ_DPARAM_CALLBACKFREQ                        1023
#define QZ_DPARAM_OBJPRINTMUL                         1024
#define QZ_IPARAM_CHECK_FOR_ERRORS                    1025
#define QZ_IPARAM_ALLOW_CNTRLBREAK                    1026
#define QZ_IPARAM_DECOMPOSITION_TYPE                  1027
#define QZ_IPARAM_BARRIER_SOLVER                      1033
#define QZ_IPARAM_MPS_OBJ_WRITESTYLE                  1036
#define QZ_IPARAM_SOL_REPORT_STYLE                    1038
#define QZ_IPARAM_INSTRUCT_LOADTYPE                   1039
#define QZ_IPARAM_STRING_LENLMT                       1042
#define QZ_IPARAM_USE_NAMEDATA                        1043
#define QZ_IPARAM_COPY_MODE                           1046
#define QZ_IPARAM_SBD_NUM_THREADS                     1047
#define QZ_IPARAM_NUM_THREADS                         1048
#define QZ_IPARAM_MULTITHREAD_MODE                    1049
#define QZ_IPARAM_FIND_BLOCK                          1050
#define QZ_IPARAM_PROFILER_LEVEL                      1051
#define QZ_IPARAM_INSTRUCT_READMODE                   1052
#define QZ_IPARAM_INSTRUCT_SUBOUT                     1053
#define QZ_IPARAM_SOLPOOL_LIM                         1054
#define QZ_IPARAM_FIND_SYMMETRY_LEVEL                 1055
#define QZ_IPARAM_FIND_SYMMETRY_PRINT_LEVEL           1056
#define QZ_IPARAM_TUNER_PRINT_LEVEL                   1057
#define QZ_IPARAM_DEFAULT_SEED                        1058

/* Solver */
#define QZ_IPARAM_SOLVER_IUSOL                        1251
#define QZ_IPARAM_SOLVER_TIMLMT                       1252
#define QZ_DPARAM_SOLVER_CUTOFFVAL                    1253
#define QZ_DPARAM_SOLVER_FEASTOL                      1254
#define QZ_IPARAM_SOLVER_RESTART                      1255
#define QZ_IPARAM_SOLVER_IPMSOL                       1256
#define QZ_DPARAM_SOLVER_OPTTOL                       1257
#define QZ_IPARAM_SOLVER_USECUTOFFVAL                 1258
#define QZ_IPARAM_SOLVER_PRE_ELIM_FILL                1259
#define QZ_DPARAM_SOLVER_TIMLMT                       1260
#define QZ_IPARAM_SOLVER_CONCURRENT_OPTMODE           1261
#define QZ_DPARAM_SOLVER_PERT_FEASTOL                 1262
#define QZ_IPARAM_SOLVER_PARTIALSOL_LEVEL             1263
#define QZ_IPARAM_SOLVER_MODE                         1264
#define QZ_IPARAM_SOLVER_METHOD                       1265

/* Infeasibility and unboundedness analysis, output */
#define QZ_IPARAM_IIS_ANALYZE_LEVEL                   1550
#define QZ_IPARAM_IUS_ANALYZE_LEVEL                   1551
#define QZ_IPARAM_IIS_TOPOPT                          1552
#define QZ_IPARAM_IIS_REOPT                           1553
#define QZ_IPARAM_IIS_USE_SFILTER                     1554
#define QZ_IPARAM_IIS_PRINT_LEVEL                     1555
#define QZ_IPARAM_IIS_INFEAS_NORM                     1556
#define QZ_IPARAM_IIS_ITER_LIMIT                      1557
#define QZ_DPARAM_IIS_ITER_LIMIT                      1558
#define QZ_IPARAM_IIS_TIME_LIMIT                      1559
#define QZ_IPARAM_IIS_METHOD                          1560
#define QZ_IPARAM_IIS_USE_EFILTER                     1561
#define QZ_IPARAM_IIS_USE_GOP                         1562
#define QZ_IPARAM_IIS_NUM_THREADS                     1563
#define QZ_IPARAM_IIS_GETMODE                         1564
#define QZ_IPARAM_FMT_ISSQL                           1565

/* Nonlinear */
#define QZ_IPARAM_NLP_SOLVE_AS_LP                     2500
#define QZ_IPARAM_NLP_SOLVER                          2501
#define QZ_IPARAM_NLP_SUBSOLVER                       2502
#define QZ_IPARAM_NLP_PRINTLEVEL                      2503
#define QZ_DPARAM_NLP_PSTEP_FINITEDIFF                2504
#define QZ_IPARAM_NLP_DERIV_DIFFTYPE                  2505
#define QZ_DPARAM_NLP_FEASTOL                         2506
#define QZ_DPARAM_NLP_REDGTOL                         2507
#define QZ_IPARAM_NLP_USE_CRASH                       2508
#define QZ_IPARAM_NLP_USE_STEEPEDGE                   2509
#define QZ_IPARAM_NLP_USE_SLP                         2510
#define QZ_IPARAM_NLP_USE_SELCONEVAL                  2511
#define QZ_IPARAM_NLP_PRELEVEL                        2512
#define QZ_IPARAM_NLP_ITRLMT                          2513
#define QZ_IPARAM_NLP_LINEARZ                         2514
#define QZ_IPARAM_NLP_LINEARITY                       2515
#define QZ_IPARAM_NLP_STARTPOINT                      2516
#define QZ_IPARAM_NLP_CONVEXRELAX                     2517
#define QZ_IPARAM_NLP_CR_ALG_REFORM                   2518
#define QZ_IPARAM_NLP_QUADCHK                         2519
#define QZ_IPARAM_NLP_AUTODERIV                       2520
#define QZ_IPARAM_NLP_MAXLOCALSEARCH                  2521
#define QZ_IPARAM_NLP_CONVEX                          2522
#define QZ_IPARAM_NLP_CONOPT_VER                      2523
#define QZ_IPARAM_NLP_USE_ZENTO_CRASH                 2524
#define QZ_IPARAM_NLP_STALL_ITRLMT                    2525
#define QZ_IPARAM_NLP_AUTOHESS                        2526
#define QZ_IPARAM_NLP_FEASCHK                         2527
#define QZ_DPARAM_NLP_ITRLMT                          2528
#define QZ_IPARAM_NLP_MAXSUP                          2529
#define QZ_IPARAM_NLP_MSW_SOLIDX                      2530
#define QZ_IPARAM_NLP_ITERS_PER_LOGLINE               2531
#define QZ_IPARAM_NLP_MAX_RETRY                       2532
#define QZ_IPARAM_NLP_MSW_NORM                        2533
#define QZ_IPARAM_NLP_MSW_POPSIZE                     2534
#define QZ_IPARAM_NLP_MSW_MAXPOP                      2535
#define QZ_IPARAM_NLP_MSW_MAXNOIMP                    2536
#define QZ_IPARAM_NLP_MSW_FILTMODE                    2537
#define QZ_DPARAM_NLP_MSW_POXDIST_THRES               2538
#define QZ_DPARAM_NLP_MSW_EUCDIST_THRES               2539
#define QZ_DPARAM_NLP_MSW_XNULRAD_FACTOR              2540
#define QZ_DPARAM_NLP_MSW_XKKTRAD_FACTOR              2541
#define QZ_IPARAM_NLP_MAXLOCALSEARCH_TREE             2542
#define QZ_IPARAM_NLP_MSW_NUM_THREADS                 2543
#define QZ_IPARAM_NLP_MSW_RG_SEED                     2544
#define QZ_IPARAM_NLP_MSW_PREPMODE                    2545
#define QZ_IPARAM_NLP_MSW_RMAPMODE                    2546
#define QZ_IPARAM_NLP_XSMODE                          2547
#define QZ_DPARAM_NLP_MSW_OVERLAP_RATIO               2548
#define QZ_DPARAM_NLP_INF                             2549
#define QZ_IPARAM_NLP_IPM2GRG                         2550
#define QZ_IPARAM_NLP_USE_SDP                         2551
#define QZ_IPARAM_NLP_LINEARZ_SHEET_CONSISTENT        2552
#define QZ_DPARAM_NLP_CUTOFFOBJ                       2553
#define QZ_IPARAM_NLP_USECUTOFFOBJ                    2554
#define QZ_IPARAM_NLP_CONIC_REFORM                    2555

/* Barrier */
#define QZ_DPARAM_IPM_TOL_INFEAS                      3101
#define QZ_DPARAM_IPM_TOL_PATH                        3102
#define QZ_DPARAM_IPM_TOL_PFEAS                       3103
#define QZ_DPARAM_IPM_TOL_REL_STEP                    3104
#define QZ_DPARAM_IPM_TOL_PSAFE                       3105
#define QZ_DPARAM_IPM_TOL_DFEAS                       3106
#define QZ_DPARAM_IPM_TOL_DSAFE                       3107
#define QZ_DPARAM_IPM_TOL_MU_RED                      3108
#define QZ_DPARAM_IPM_BASIS_REL_TOL_S                 3109
#define QZ_DPARAM_IPM_BASIS_TOL_S                     3110
#define QZ_DPARAM_IPM_BASIS_TOL_X                     3111
#define QZ_DPARAM_IPM_BI_LU_TOL_REL_PIV               3112
#define QZ_DPARAM_IPM_CO_TOL_INFEAS                   3113
#define QZ_DPARAM_IPM_CO_TOL_PFEAS                    3114
#define QZ_DPARAM_IPM_CO_TOL_DFEAS                    3115
#define QZ_DPARAM_IPM_CO_TOL_MU_RED                   3116
#define QZ_IPARAM_IPM_MAX_ITERATIONS                  3117
#define QZ_IPARAM_IPM_OFF_COL_TRH                     3118
#define QZ_IPARAM_IPM_NUM_THREADS                     3119
#define QZ_IPARAM_IPM_CHECK_CONVEXITY                 3169

/* Simplex and presolve */
#define QZ_IPARAM_LP_SCALE                            4029
#define QZ_IPARAM_LP_ITRLMT                           4030
#define QZ_IPARAM_SPLEX_PPRICING                      4031
#define QZ_IPARAM_SPLEX_REFACFRQ                      4032
#define QZ_IPARAM_PROB_TO_SOLVE                       4034
#define QZ_IPARAM_LP_PRINTLEVEL                       4035
#define QZ_IPARAM_SPLEX_DPRICING                      4037
#define QZ_IPARAM_SPLEX_DUAL_PHASE                    4040
#define QZ_IPARAM_LP_PRELEVEL                         4041
#define QZ_IPARAM_SPLEX_USE_EXTERNAL                  4042
#define QZ_DPARAM_LP_ITRLMT                           4045
#define QZ_DPARAM_LP_MIN_FEASTOL                      4060
#define QZ_DPARAM_LP_MAX_FEASTOL                      4061
#define QZ_DPARAM_LP_MIN_OPTTOL                       4062
#define QZ_DPARAM_LP_MAX_OPTTOL                       4063
#define QZ_DPARAM_LP_MIN_PIVTOL                       4064
#define QZ_DPARAM_LP_MAX_PIVTOL                       4065
#define QZ_DPARAM_LP_AIJ_ZEROTOL                      4066
#define QZ_DPARAM_LP_PIV_ZEROTOL                      4067
#define QZ_DPARAM_LP_PIV_BIGTOL                       4068
#define QZ_DPARAM_LP_BIGM                             4069
#define QZ_DPARAM_LP_BNDINF                           4070
#define QZ_DPARAM_LP_INFINITY                         4071
#define QZ_IPARAM_LP_PPARTIAL                         4072
#define QZ_IPARAM_LP_DPARTIAL                         4073
#define QZ_IPARAM_LP_DRATIO                           4074
#define QZ_IPARAM_LP_PRATIO                           4075
#define QZ_IPARAM_LP_RATRANGE                         4076
#define QZ_IPARAM_LP_DPSWITCH                         4077
#define QZ_IPARAM_LP_PALLOC                           4078
#define QZ_IPARAM_LP_PRTFG                            4079
#define QZ_IPARAM_LP_OPRFREE                          4080
#define QZ_IPARAM_LP_SPRINT_SUB                       4081
#define QZ_IPARAM_LP_XMODE                            4082
#define QZ_IPARAM_LP_PCOLAL_FACTOR                    4083
#define QZ_IPARAM_LP_MAXMERGE                         4084
#define QZ_DPARAM_LP_PERTFACT                         4085
#define QZ_DPARAM_LP_DYNOBJFACT                       4086
#define QZ_IPARAM_LP_DYNOBJMODE                       4087
#define QZ_DPARAM_LP_MERGEFACT                        4088
#define QZ_IPARAM_LP_UMODE                            4089
#define QZ_IPARAM_LP_SPRINT_MAXPASS                   4090
#define QZ_IPARAM_LP_SPRINT_COLFACT                   4091
#define QZ_IPARAM_LP_BASRECOV_METHOD                  4092
#define QZ_IPARAM_LP_BASPOLISH_ITRLMT                 4093
#define QZ_IPARAM_LP_BASPOLISH_DEPTH                  4094
#define QZ_IPARAM_LP_BASPOLISH_MODE                   4095

/* Factorization */
#define QZ_IPARAM_LU_NUM_CANDITS                      4800
#define QZ_IPARAM_LU_MAX_UPDATES                      4801
#define QZ_IPARAM_LU_PRINT_LEVEL                      4802
#define QZ_IPARAM_LU_UPDATE_TYPE                      4803
#define QZ_IPARAM_LU_MODE                             4804
#define QZ_IPARAM_LU_PIVMOD                           4806
#define QZ_DPARAM_LU_EPS_DIAG                         4900
#define QZ_DPARAM_LU_EPS_NONZ                         4901
#define QZ_DPARAM_LU_EPS_PIVABS                       4902
#define QZ_DPARAM_LU_EPS_PIVREL                       4903
#define QZ_DPARAM_LU_INI_RCOND                        4904
#define QZ_DPARAM_LU_SPVTOL_UPDATE                    4905
#define QZ_DPARAM_LU_SPVTOL_FTRAN                     4906
#define QZ_DPARAM_LU_SPVTOL_BTRAN                     4907
#define QZ_IPARAM_LU_CORE                             4908

/* Mixed-integer */
#define QZ_IPARAM_MIP_TIMLIM                          5300
#define QZ_IPARAM_MIP_AOPTTIMLIM                      5301
#define QZ_IPARAM_MIP_LSOLTIMLIM                      5302
#define QZ_IPARAM_MIP_PRELEVEL                        5303
#define QZ_IPARAM_MIP_NODESELRULE                     5304
#define QZ_DPARAM_MIP_INTTOL                          5305
#define QZ_DPARAM_MIP_RELINTTOL                       5306
#define QZ_DPARAM_MIP_RELOPTTOL                       5307
#define QZ_DPARAM_MIP_PEROPTTOL                       5308
#define QZ_IPARAM_MIP_MAXCUTPASS_TOP                  5309
#define QZ_IPARAM_MIP_MAXCUTPASS_TREE                 5310
#define QZ_DPARAM_MIP_ADDCUTPER                       5311
#define QZ_DPARAM_MIP_ADDCUTPER_TREE                  5312
#define QZ_IPARAM_MIP_MAXNONIMP_CUTPASS               5313
#define QZ_IPARAM_MIP_CUTLEVEL_TOP                    5314
#define QZ_IPARAM_MIP_CUTLEVEL_TREE                   5315
#define QZ_IPARAM_MIP_CUTTIMLIM                       5316
#define QZ_IPARAM_MIP_CUTDEPTH                        5317
#define QZ_IPARAM_MIP_CUTFREQ                         5318
#define QZ_IPARAM_MIP_HEULEVEL                        5319
#define QZ_IPARAM_MIP_PRINTLEVEL                      5320
#define QZ_IPARAM_MIP_PREPRINTLEVEL                   5321
#define QZ_DPARAM_MIP_CUTOFFOBJ                       5322
#define QZ_IPARAM_MIP_USECUTOFFOBJ                    5323
#define QZ_IPARAM_MIP_STRONGBRANCHLEVEL               5324
#define QZ_IPARAM_MIP_TREEREORDERLEVEL                5325
#define QZ_IPARAM_MIP_BRANCHDIR                       5326
#define QZ_IPARAM_MIP_TOPOPT                          5327
#define QZ_IPARAM_MIP_REOPT                           5328
#define QZ_IPARAM_MIP_SOLVERTYPE                      5329
#define QZ_IPARAM_MIP_KEEPINMEM                       5330
#define QZ_IPARAM_MIP_BRANCHRULE                      5331
#define QZ_DPARAM_MIP_REDCOSTFIX_CUTOFF               5332
#define QZ_DPARAM_MIP_ADDCUTOBJTOL                    5333
#define QZ_IPARAM_MIP_HEUMINTIMLIM                    5334
#define QZ_IPARAM_MIP_BRANCH_PRIO                     5335
#define QZ_IPARAM_MIP_SCALING_BOUND                   5336
#define QZ_DPARAM_MIP_PSEUDOCOST_WEIGT                5337
#define QZ_DPARAM_MIP_LBIGM                           5338
#define QZ_DPARAM_MIP_DELTA                           5339
#define QZ_IPARAM_MIP_DUAL_SOLUTION                   5340
#define QZ_IPARAM_MIP_BRANCH_LIMIT                    5341
#define QZ_DPARAM_MIP_ITRLIM                          5342
#define QZ_IPARAM_MIP_AGGCUTLIM_TOP                   5343
#define QZ_IPARAM_MIP_AGGCUTLIM_TREE                  5344
#define QZ_DPARAM_MIP_SWITCHFAC_SIM_IPM_ITER          5345
#define QZ_IPARAM_MIP_ANODES_SWITCH_DF                5346
#define QZ_DPARAM_MIP_ABSOPTTOL                       5347
#define QZ_DPARAM_MIP_MINABSOBJSTEP                   5348
#define QZ_IPARAM_MIP_PSEUDOCOST_RULE                 5349
#define QZ_IPARAM_MIP_ENUM_HEUMODE                    5350
#define QZ_IPARAM_MIP_PRELEVEL_TREE                   5351
#define QZ_DPARAM_MIP_REDCOSTFIX_CUTOFF_TREE          5352
#define QZ_IPARAM_MIP_USE_INT_ZERO_TOL                5353
#define QZ_IPARAM_MIP_USE_CUTS_HEU                    5354
#define QZ_DPARAM_MIP_BIGM_FOR_INTTOL                 5355
#define QZ_IPARAM_MIP_STRONGBRANCHDONUM               5356
#define QZ_IPARAM_MIP_MAKECUT_INACTIVE_COUNT          5357
#define QZ_IPARAM_MIP_PRE_ELIM_FILL                   5358
#define QZ_IPARAM_MIP_HEU_MODE                        5359
#define QZ_DPARAM_MIP_TIMLIM                          5370
#define QZ_DPARAM_MIP_AOPTTIMLIM                      5371
#define QZ_DPARAM_MIP_LSOLTIMLIM                      5372
#define QZ_DPARAM_MIP_CUTTIMLIM                       5373
#define QZ_DPARAM_MIP_HEUMINTIMLIM                    5374
#define QZ_IPARAM_MIP_FP_MODE                         5375
#define QZ_DPARAM_MIP_FP_WEIGHT                       5376
#define QZ_IPARAM_MIP_FP_OPT_METHOD                   5377
#define QZ_DPARAM_MIP_FP_TIMLIM                       5378
#define QZ_IPARAM_MIP_FP_ITRLIM                       5379
#define QZ_IPARAM_MIP_FP_HEU_MODE                     5380
#define QZ_DPARAM_MIP_OBJ_THRESHOLD                   5381
#define QZ_IPARAM_MIP_LOCALBRANCHNUM                  5382
#define QZ_DPARAM_MIP_SWITCHFAC_SIM_IPM_TIME          5383
#define QZ_DPARAM_MIP_ITRLIM_SIM                      5384
#define QZ_DPARAM_MIP_ITRLIM_NLP                      5385
#define QZ_DPARAM_MIP_ITRLIM_IPM                      5386
#define QZ_IPARAM_MIP_MAXNUM_MIP_SOL_STORAGE          5387
#define QZ_IPARAM_MIP_CONCURRENT_TOPOPTMODE           5388
#define QZ_IPARAM_MIP_CONCURRENT_REOPTMODE            5389
#define QZ_IPARAM_MIP_PREHEU_LEVEL                    5390
#define QZ_IPARAM_MIP_PREHEU_PRE_LEVEL                5391
#define QZ_IPARAM_MIP_PREHEU_PRINT_LEVEL              5392
#define QZ_IPARAM_MIP_PREHEU_TC_ITERLIM               5393
#define QZ_IPARAM_MIP_PREHEU_DFE_VSTLIM               5394
#define QZ_IPARAM_MIP_PREHEU_VAR_SEQ                  5395
#define QZ_IPARAM_MIP_USE_PARTIALSOL_LEVEL            5396
#define QZ_IPARAM_MIP_GENERAL_MODE                    5397
#define QZ_IPARAM_MIP_NUM_THREADS                     5398
#define QZ_IPARAM_MIP_POLISH_NUM_BRANCH_NEXT          5399
#define QZ_IPARAM_MIP_POLISH_MAX_BRANCH_COUNT         5400
#define QZ_DPARAM_MIP_POLISH_ALPHA_TARGET             5401
#define QZ_IPARAM_MIP_CONCURRENT_STRATEGY             5402
#define QZ_DPARAM_MIP_BRANCH_TOP_VAL_DIFF_WEIGHT      5403
#define QZ_IPARAM_MIP_BASCUTS_DONUM                   5404
#define QZ_IPARAM_MIP_PARA_SUB                        5405
#define QZ_DPARAM_MIP_PARA_RND_ITRLMT                 5406
#define QZ_DPARAM_MIP_PARA_INIT_NODE                  5407
#define QZ_IPARAM_MIP_PARA_ITR_MODE                   5408
#define QZ_IPARAM_MIP_PARA_FP                         5409
#define QZ_IPARAM_MIP_PARA_FP_MODE                    5410
#define QZ_IPARAM_MIP_HEU_DROP_OBJ                    5411
#define QZ_DPARAM_MIP_ABSCUTTOL                       5412
#define QZ_IPARAM_MIP_PERSPECTIVE_REFORM              5413
#define QZ_IPARAM_MIP_TREEREORDERMODE                 5414
#define QZ_IPARAM_MIP_XSOLVER                         5415
#define QZ_IPARAM_MIP_BNB_TRY_BNP                     5416
#define QZ_IPARAM_MIP_KBEST_USE_GOP                   5417
#define QZ_IPARAM_MIP_SYMMETRY_MODE                   5418
#define QZ_IPARAM_MIP_ALLDIFF_METHOD                  5419
#define QZ_IPARAM_MIP_SOLLIM                          5420

/* Global */
#define QZ_DPARAM_GOP_RELOPTTOL                       6400
#define QZ_DPARAM_GOP_FLTTOL                          6401
#define QZ_DPARAM_GOP_BOXTOL                          6402
#define QZ_DPARAM_GOP_WIDTOL                          6403
#define QZ_DPARAM_GOP_DELTATOL                        6404
#define QZ_DPARAM_GOP_BNDLIM                          6405
#define QZ_IPARAM_GOP_TIMLIM                          6406
#define QZ_IPARAM_GOP_OPTCHKMD                        6407
#define QZ_IPARAM_GOP_BRANCHMD                        6408
#define QZ_IPARAM_GOP_MAXWIDMD                        6409
#define QZ_IPARAM_GOP_PRELEVEL                        6410
#define QZ_IPARAM_GOP_POSTLEVEL                       6411
#define QZ_IPARAM_GOP_BBSRCHMD                        6412
#define QZ_IPARAM_GOP_DECOMPPTMD                      6413
#define QZ_IPARAM_GOP_ALGREFORMMD                     6414
#define QZ_IPARAM_GOP_RELBRNDMD                       6415
#define QZ_IPARAM_GOP_PRINTLEVEL                      6416
#define QZ_IPARAM_GOP_BNDLIM_MODE                     6417
#define QZ_IPARAM_GOP_BRANCH_LIMIT                    6418
#define QZ_IPARAM_GOP_CORELEVEL                       6419
#define QZ_IPARAM_GOP_OPT_MODE                        6420
#define QZ_IPARAM_GOP_HEU_MODE                        6421
#define QZ_IPARAM_GOP_SUBOUT_MODE                     6422
#define QZ_IPARAM_GOP_USE_NLPSOLVE                    6423
#define QZ_IPARAM_GOP_LSOLBRANLIM                     6424
#define QZ_IPARAM_GOP_LPSOPT                          6425
#define QZ_DPARAM_GOP_TIMLIM                          6426
#define QZ_DPARAM_GOP_BRANCH_LIMIT                    6427
#define QZ_IPARAM_GOP_QUADMD                          6428
#define QZ_IPARAM_GOP_LIM_MODE                        6429
#define QZ_DPARAM_GOP_ITRLIM                          6430
#define QZ_DPARAM_GOP_ITRLIM_SIM                      6431
#define QZ_DPARAM_GOP_ITRLIM_IPM                      6432
#define QZ_DPARAM_GOP_ITRLIM_NLP                      6433
#define QZ_DPARAM_GOP_ABSOPTTOL                       6434
#define QZ_DPARAM_GOP_PEROPTTOL                       6435
#define QZ_DPARAM_GOP_AOPTTIMLIM                      6436
#define QZ_IPARAM_GOP_LINEARZ                         6437
#define QZ_IPARAM_GOP_NUM_THREADS                     6438
#define QZ_IPARAM_GOP_MULTILINEAR                     6439
#define QZ_DPARAM_GOP_OBJ_THRESHOLD                   6440
#define QZ_IPARAM_GOP_QUAD_METHOD                     6441
#define QZ_IPARAM_GOP_SOLLIM                          6442
#define QZ_IPARAM_GOP_CMINLP                          6443
#define QZ_IPARAM_GOP_CONIC_REFORM                    6444

/* Stochastic */
#define QZ_IPARAM_STOC_NSAMPLE_SPAR                   6600
#define QZ_IPARAM_STOC_NSAMPLE_STAGE                  6601
#define QZ_IPARAM_STOC_RG_SEED                        6602
#define QZ_IPARAM_STOC_METHOD                         6603
#define QZ_IPARAM_STOC_REOPT                          6604
#define QZ_IPARAM_STOC_TOPOPT                         6605
#define QZ_IPARAM_STOC_ITER_LIM                       6606
#define QZ_IPARAM_STOC_PRINT_LEVEL                    6607
#define QZ_IPARAM_STOC_DETEQ_TYPE                     6608
#define QZ_IPARAM_STOC_CALC_EVPI                      6609
#define QZ_IPARAM_STOC_SAMP_CONT_ONLY                 6611
#define QZ_IPARAM_STOC_BUCKET_SIZE                    6612
#define QZ_IPARAM_STOC_MAX_NUMSCENS                   6613
#define QZ_IPARAM_STOC_SHARE_BEGSTAGE                 6614
#define QZ_IPARAM_STOC_NODELP_PRELEVEL                6615
#define QZ_DPARAM_STOC_TIME_LIM                       6616
#define QZ_DPARAM_STOC_RELOPTTOL                      6617
#define QZ_DPARAM_STOC_ABSOPTTOL                      6618
#define QZ_IPARAM_STOC_DEBUG_MASK                     6619
#define QZ_IPARAM_STOC_VARCONTROL_METHOD              6620
#define QZ_IPARAM_STOC_CORRELATION_TYPE               6621
#define QZ_IPARAM_STOC_WSBAS                          6622
#define QZ_IPARAM_STOC_ALD_OUTER_ITER_LIM             6623
#define QZ_IPARAM_STOC_ALD_INNER_ITER_LIM             6624
#define QZ_DPARAM_STOC_ALD_DUAL_FEASTOL               6625
#define QZ_DPARAM_STOC_ALD_PRIMAL_FEASTOL             6626
#define QZ_DPARAM_STOC_ALD_DUAL_STEPLEN               6627
#define QZ_DPARAM_STOC_ALD_PRIMAL_STEPLEN             6628
#define QZ_IPARAM_CORE_ORDER_BY_STAGE                 6629
#define QZ_SPARAM_STOC_FMT_NODE_NAME                  6630
#define QZ_SPARAM_STOC_FMT_SCENARIO_NAME              6631
#define QZ_IPARAM_STOC_MAP_MPI2LP                     6632
#define QZ_IPARAM_STOC_AUTOAGGR                       6633
#define QZ_IPARAM_STOC_BENCHMARK_SCEN                 6634
#define QZ_DPARAM_STOC_INFBND                         6635
#define QZ_IPARAM_STOC_ADD_MPI                        6636
#define QZ_IPARAM_STOC_ELIM_FXVAR                     6637
#define QZ_DPARAM_STOC_SBD_OBJCUTVAL                  6638
#define QZ_IPARAM_STOC_SBD_OBJCUTFLAG                 6639
#define QZ_IPARAM_STOC_SBD_NUMCANDID                  6640
#define QZ_DPARAM_STOC_BIGM                           6641
#define QZ_IPARAM_STOC_NAMEDATA_LEVEL                 6642
#define QZ_IPARAM_STOC_SBD_MAXCUTS                    6643
#define QZ_IPARAM_STOC_DEQOPT                         6644
#define QZ_IPARAM_STOC_DS_SUBFORM                     6645
#define QZ_DPARAM_STOC_REL_PSTEPTOL                   6646
#define QZ_DPARAM_STOC_REL_DSTEPTOL                   6647
#define QZ_IPARAM_STOC_NUM_THREADS                    6648
#define QZ_IPARAM_STOC_DETEQ_NBLOCKS                  6649

/* Sampling */
#define QZ_IPARAM_SAMP_NCM_METHOD                     7701
#define QZ_DPARAM_SAMP_NCM_CUTOBJ                     7702
#define QZ_IPARAM_SAMP_NCM_DSTORAGE                   7703
#define QZ_DPARAM_SAMP_CDSINC                         7704
#define QZ_IPARAM_SAMP_SCALE                          7705
#define QZ_IPARAM_SAMP_NCM_ITERLIM                    7706
#define QZ_DPARAM_SAMP_NCM_OPTTOL                     7707
#define QZ_IPARAM_SAMP_NUM_THREADS                    7708
#define QZ_IPARAM_SAMP_RG_BUFFER_SIZE                 7709

/* Branch-and-price */
#define QZ_DPARAM_BNP_INFBND                          8001
#define QZ_IPARAM_BNP_LEVEL                           8002
#define QZ_IPARAM_BNP_PRINT_LEVEL                     8003
#define QZ_DPARAM_BNP_BOX_SIZE                        8004
#define QZ_IPARAM_BNP_NUM_THREADS                     8005
#define QZ_DPARAM_BNP_SUB_ITRLMT                      8006
#define QZ_IPARAM_BNP_FIND_BLK                        8007
#define QZ_IPARAM_BNP_PRELEVEL                        8008
#define QZ_DPARAM_BNP_COL_LMT                         8009
#define QZ_DPARAM_BNP_TIMLIM                          8010
#define QZ_DPARAM_BNP_ITRLIM_SIM                      8011
#define QZ_DPARAM_BNP_ITRLIM_IPM                      8012
#define QZ_IPARAM_BNP_BRANCH_LIMIT                    8013
#define QZ_DPARAM_BNP_ITRLIM                          8014

/* Genetic */
#define QZ_DPARAM_GA_CXOVER_PROB                      8501
#define QZ_DPARAM_GA_XOVER_SPREAD                     8502
#define QZ_DPARAM_GA_IXOVER_PROB                      8503
#define QZ_DPARAM_GA_CMUTAT_PROB                      8504
#define QZ_DPARAM_GA_MUTAT_SPREAD                     8505
#define QZ_DPARAM_GA_IMUTAT_PROB                      8506
#define QZ_DPARAM_GA_TOL_ZERO                         8507
#define QZ_DPARAM_GA_TOL_PFEAS                        8508
#define QZ_DPARAM_GA_INF                              8509
#define QZ_DPARAM_GA_INFBND                           8510
#define QZ_DPARAM_GA_BLXA                             8511
#define QZ_DPARAM_GA_BLXB                             8512
#define QZ_IPARAM_GA_CXOVER_METHOD                    8513
#define QZ_IPARAM_GA_IXOVER_METHOD                    8514
#define QZ_IPARAM_GA_CMUTAT_METHOD                    8515
#define QZ_IPARAM_GA_IMUTAT_METHOD                    8516
#define QZ_IPARAM_GA_SEED                             8517
#define QZ_IPARAM_GA_NGEN                             8518
#define QZ_IPARAM_GA_POPSIZE                          8519
#define QZ_IPARAM_GA_FILEOUT                          8520
#define QZ_IPARAM_GA_PRINTLEVEL                       8521
#define QZ_IPARAM_GA_INJECT_OPT                       8522
#define QZ_IPARAM_GA_NUM_THREADS                      8523
#define QZ_IPARAM_GA_OBJDIR                           8524
#define QZ_DPARAM_GA_OBJSTOP                          8525
#define QZ_DPARAM_GA_MIGRATE_PROB                     8526
#define QZ_IPARAM_GA_SSPACE                           8527

/* Older spelling kept for existing hosts; it names the same parameter. */
#define QZ_IPARAM_SPLEX_ITRLMT QZ_IPARAM_LP_ITRLMT

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Typed and untyped get and set ----
 * The typed entries ignore an identifier of another type (or an unknown one) and return 0.
 * The untyped entries take a pointer to an int, a double or, for string parameters, a char
 * array (of QZ_MAX_PARAM_STRING_LENGTH characters when reading), as the parameter's type says. Stochastic identifiers (6600 and up) are passed on to
 * the stochastic entries. */
QZ_API int QZsetModelIntParameter(QZmodel model, int nParameter, int nValue);
QZ_API int QZsetModelDouParameter(QZmodel model, int nParameter, double dValue);
QZ_API int QZgetModelIntParameter(QZmodel model, int nParameter, int* pnValue);
QZ_API int QZgetModelDouParameter(QZmodel model, int nParameter, double* pdValue);
QZ_API int QZsetEnvIntParameter(QZenv env, int nParameter, int nValue);
QZ_API int QZsetEnvDouParameter(QZenv env, int nParameter, double dValue);
QZ_API int QZgetEnvIntParameter(QZenv env, int nParameter, int* pnValue);
QZ_API int QZgetEnvDouParameter(QZenv env, int nParameter, double* pdValue);
QZ_API int QZsetModelParameter(QZmodel model, int nParameter, void* pvValue);
QZ_API int QZgetModelParameter(QZmodel model, int nParameter, void* pvValue);
QZ_API int QZsetEnvParameter(QZenv env, int nParameter, void* pvValue);
QZ_API int QZgetEnvParameter(QZenv env, int nParameter, void* pvValue);

/* ---- Stochastic block ---- */
QZ_API int QZsetModelStocParameter(QZmodel model, int nParameter, void* pvValue);
QZ_API int QZgetModelStocParameter(QZmodel model, int nParameter, void* pvValue);
QZ_API int QZsetEnvStocParameter(QZenv env, int nParameter, void* pvValue);
QZ_API int QZgetEnvStocParameter(QZenv env, int nParameter, void* pvValue);
QZ_API int QZsetModelStocParameterInt(QZmodel model, int nParameter, int nValue);
QZ_API int QZgetModelStocParameterInt(QZmodel model, int nParameter, int* pnValue);
QZ_API int QZsetModelStocParameterDou(QZmodel model, int nParameter, double dValue);
QZ_API int QZgetModelStocParameterDou(QZmodel model, int nParameter, double* pdValue);
QZ_API int QZsetModelStocParameterChar(QZmodel model, int nParameter, const char* szValue);
QZ_API int QZgetModelStocParameterChar(QZmodel model, int nParameter, char* szValue);
QZ_API int QZsetEnvStocParameterInt(QZenv env, int nParameter, int nValue);
QZ_API int QZgetEnvStocParameterInt(QZenv env, int nParameter, int* pnValue);
QZ_API int QZsetEnvStocParameterDou(QZenv env, int nParameter, double dValue);
QZ_API int QZgetEnvStocParameterDou(QZenv env, int nParameter, double* pdValue);
QZ_API int QZsetEnvStocParameterChar(QZenv env, int nParameter, const char* szValue);
QZ_API int QZgetEnvStocParameterChar(QZenv env, int nParameter, char* szValue);

/* ---- The registry ---- */
QZ_API int QZgetIntParameterRange(QZmodel model, int nParameter, int* pnMin, int* pnMax);
QZ_API int QZgetDouParameterRange(QZmodel model, int nParameter, double* pdMin, double* pdMax);
/* Type, class bits, range and registry default of one parameter; any pointer may be null. */
QZ_API int QZgetParamInfo(QZenv env, int nParameter, int* pnType, int* pnClass, double* pdMin,
                          double* pdMax, double* pdDefault);
QZ_API int QZgetParamCount(QZenv env, int* pnCount);
/* Identifier of the row at a position of the registry (0 .. count-1, identifier order). */
QZ_API int QZgetParamIdByIndex(QZenv env, int iIndex, int* pnId);
QZ_API int QZgetParamMacroName(QZenv env, int nParameter, char* szName);
QZ_API const char* QZgetParamMacroNamePtr(QZenv env, int nParameter);
QZ_API int QZgetParamMacroID(QZenv env, const char* szName, int* pnType, int* pnId);
QZ_API int QZgetParamShortDesc(QZenv env, int nParameter, char* szDesc);
QZ_API const char* QZgetParamShortDescPtr(QZenv env, int nParameter);
QZ_API int QZgetParamLongDesc(QZenv env, int nParameter, char* szDesc);
QZ_API const char* QZgetParamLongDescPtr(QZenv env, int nParameter);
QZ_API int QZsearchParamHasKeyword(QZenv env, const char* szKey, int* pnStart, int* pnId);
/* 4 int, 8 double, 0 string, -1 unknown; for parameters and information keys. */
QZ_API int QZgetDataType(QZmodel model, int nKey);

/* ---- Parameter files ---- */
QZ_API int QZreadModelParameter(QZmodel model, const char* pszFname);
QZ_API int QZreadEnvParameter(QZenv env, const char* pszFname);
QZ_API int QZwriteModelParameter(QZmodel model, const char* pszFname);
QZ_API int QZwriteEnvParameter(QZenv env, const char* pszFname);
QZ_API int QZwriteParameterAsciiDoc(QZenv env, const char* pszFname);
/* Reference model: a parameter read logs only the values that differ from it. */
QZ_API int QZsetParModel(QZmodel model, QZmodel refModel);

#ifdef __cplusplus
}
#endif

#endif /* ZENTO_PARAMS_H */
