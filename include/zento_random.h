/* Random generators, univariate distributions, samplers and correlation induction. */
#ifndef ZENTO_RANDOM_H
#define ZENTO_RANDOM_H

#ifdef __cplusplus
extern "C" {
#endif

/* Opaque handles: a random generator and a sampler of one distribution. */
typedef struct QZrandGen_s* QZrandGen;
typedef struct QZsample_s* QZsample;

/* Generator kinds, the argument of QZcreateRG. Every kind gives the same stream for the same
   seed on every run and platform. */
#define QZ_RG_DEFAULT -1  /* the Mersenne Twister */
#define QZ_RG_SYSTEM 0    /* additive feedback generator of the C library's rand(), own state */
#define QZ_RG_MRG32K3A 1  /* combined multiple recursive generator */
#define QZ_RG_LCG_PAIR 2  /* two chained multiplicative steps on one 31-bit state; its cycle
                             depends on the seed and can be as short as ~10^5 draws: kept for
                             reproducing old streams, not for long simulations */
#define QZ_RG_SHUFFLE 3   /* two linear congruential generators with a shuffle table */
#define QZ_RG_SUBTRACT 4  /* subtractive generator with a table of 55 */
#define QZ_RG_LAGFIB 5    /* lagged subtraction on doubles */
#define QZ_RG_MT19937 6   /* MT19937, reals in [0, 1) with resolution 2^-32 */

/* Distribution codes of QZsampCreate. */
#define QZ_DIST_BINOMIAL 701
#define QZ_DIST_DISCRETE 702
#define QZ_DIST_NEGATIVE_BINOMIAL 704 /* failures before the r-th success */
#define QZ_DIST_GEOMETRIC 705         /* failures before the first success */
#define QZ_DIST_POISSON 706
#define QZ_DIST_LOGARITHMIC 707
#define QZ_DIST_USER 710 /* user function, optionally over child samplers */
#define QZ_DIST_BETA 801
#define QZ_DIST_CAUCHY 802
#define QZ_DIST_CHI_SQUARE 803
#define QZ_DIST_EXPONENTIAL 804
#define QZ_DIST_F 805
#define QZ_DIST_GAMMA 806
#define QZ_DIST_GUMBEL 807
#define QZ_DIST_LAPLACE 808
#define QZ_DIST_LOGNORMAL 809
#define QZ_DIST_LOGISTIC 810
#define QZ_DIST_NORMAL 811
#define QZ_DIST_PARETO 812
#define QZ_DIST_STUDENT_T 814
#define QZ_DIST_UNIFORM 816
#define QZ_DIST_WEIBULL 817
#define QZ_DIST_SYM_STABLE 820 /* symmetric stable Paretian, index alpha in (0, 2] */

/* Function kinds of QZsampEvalDistr and of user distribution functions. */
#define QZ_FUNC_PDF 1
#define QZ_FUNC_CDF 2
#define QZ_FUNC_CDFINV 3
#define QZ_FUNC_PDFDIFF 4

/* Sampling methods of QZsampGenerate. */
#ifndef QZ_MONTECARLO
#define QZ_MONTECARLO 0
#define QZ_LATINSQUARE 1
#define QZ_ANTITHETIC 2
#define QZ_LATIN_ANTITHETIC 3
#endif

/* Correlation types. QZ_CORR_TARGET reads back the target given to QZsampInduceCorrelation. */
#ifndef QZ_CORR_PEARSON
#define QZ_CORR_TARGET -1
#define QZ_CORR_PEARSON 0
#define QZ_CORR_KENDALL 1
#define QZ_CORR_SPEARMAN 2
#endif

/* Keys of QZsampGetInfo: statistics of the points, then of the correlated points. Variance
   and standard deviation use the n - 1 divisor; kurtosis is the excess over the normal's 3.
   Integer keys write an int, the others a double. */
#define QZ_DINFO_SAMP_MEAN 13600
#define QZ_DINFO_SAMP_VAR 13601
#define QZ_DINFO_SAMP_STD 13602
#define QZ_DINFO_SAMP_SKEWNESS 13603
#define QZ_DINFO_SAMP_KURTOSIS 13604
#define QZ_DINFO_SAMP_MEDIAN 13605
#define QZ_DINFO_SAMP_MIN 13606
#define QZ_DINFO_SAMP_MAX 13607
#define QZ_IINFO_SAMP_SIZE 13608
#define QZ_DINFO_SAMP_CI_MEAN 13610
#define QZ_DINFO_SAMP_CI_VAR 13611
#define QZ_DINFO_SAMP_CI_STD 13612
#define QZ_DINFO_SAMP_CI_SKEWNESS 13613
#define QZ_DINFO_SAMP_CI_KURTOSIS 13614
#define QZ_DINFO_SAMP_CI_MEDIAN 13615
#define QZ_DINFO_SAMP_CI_MIN 13616
#define QZ_DINFO_SAMP_CI_MAX 13617
#define QZ_IINFO_SAMP_CI_SIZE 13618
#define QZ_IINFO_SAMP_METHOD 13620 /* method of the last generation, -1 for loaded points */
#define QZ_IINFO_SAMP_USED 13621   /* points read by QZsampGetNextPoint */
#define QZ_DINFO_SAMP_MAXABS 13622 /* largest absolute value of the points */
#define QZ_IINFO_SAMP_DIST 13623   /* distribution code */

/* ---- Generators ----
   A new generator is seeded with QZ_IPARAM_DEFAULT_SEED of the environment (env may be null:
   seed 1031). A generator is independent state; kinds 0 to 5 lock each draw, so one object
   may be shared by threads; kind 6 does not lock. A sampler refers to its generator without
   owning it: disposing the generator detaches it from the samplers of its environment. */
QZ_API QZrandGen QZcreateRG(QZenv env, int nMethod);
/* Kind 6 (or -1) only: one Mersenne Twister state per thread (QZ_IPARAM_SAMP_NUM_THREADS) and
   a buffer of QZ_IPARAM_SAMP_RG_BUFFER_SIZE doubles (0: 65536) filled in blocks of 4096, block
   b by state b mod threads, so the buffer depends on the seed and the thread count only. */
QZ_API QZrandGen QZcreateRGMT(QZenv env, int nMethod);
QZ_API void QZdisposeRG(QZrandGen* ppRG);
/* Seed 0 takes the current time. Returns an error code. */
QZ_API int QZsetRGSeed(QZrandGen pRG, int nSeed);
QZ_API int QZgetInitSeed(QZrandGen pRG);
/* A uniform double in [0, 1) (kind 0 may give 1.0); -1.0 for a null generator. The threaded
   variant reads its buffer and refills it when used up. */
QZ_API double QZgetDoubleRV(QZrandGen pRG);
/* A uniform integer in [iLow, iHigh]; iLow when iLow >= iHigh or the generator is null. */
QZ_API int QZgetInt32RV(QZrandGen pRG, int iLow, int iHigh);
/* Buffer of the threaded variant; any generator gets one on its first fill. */
QZ_API int QZfillRGBuffer(QZrandGen pRG);
QZ_API double* QZgetRGBufferPtr(QZrandGen pRG, int* pnBufferLen);
QZ_API int QZgetRGNumThreads(QZrandGen pRG);
/* The generator's own sampler, drawn by QZgetDistrRV with the generator's stream. */
QZ_API int QZsetDistrRG(QZrandGen pRG, int nDistType);
QZ_API int QZsetDistrParamRG(QZrandGen pRG, int iParam, double dParam);
QZ_API int QZgetDistrRV(QZrandGen pRG, double* pdResult);

/* ---- Samplers ----
   The environment owns its samplers: QZdeleteEnv deletes those still alive. */
typedef int (*user_pdf_t)(QZsample pSample, int nFuncType, double* padInput, int nInput,
                          double* pdOutput, void* pUserData);

QZ_API QZsample QZsampCreate(QZenv env, int nDistType, int* pnErrorCode);
QZ_API int QZsampDelete(QZsample* paSample);
QZ_API int QZsampSetRG(QZsample pSample, QZrandGen pRG);
/* Parameters by index below the distribution's count; checked when the sampler is used. */
QZ_API int QZsampSetDistrParam(QZsample pSample, int iParam, double dValue);
QZ_API int QZsampGetDistrParam(QZsample pSample, int iParam, double* pdValue);
/* Code 702: values and their probabilities (nonnegative, sum 1 within 1e-6; normalized). */
QZ_API int QZsampLoadDiscretePdfTable(QZsample pSample, int nLen, double* padProb,
                                      double* padVals);
QZ_API int QZsampGetDiscretePdfTable(QZsample pSample, int* pnLen, double* padProb,
                                     double* padVals);
/* Code 710. The function gets nFuncType and its input: for evaluation [x] (or [p] for
   QZ_FUNC_CDFINV); for generation QZ_FUNC_CDFINV with [u] when the sampler has no child
   samplers, else with the children's points at the same index. Nonzero return is an error. */
QZ_API int QZsampSetUserDistr(QZsample pSample, user_pdf_t pfUserFunc, void* pUserData);
QZ_API int QZsampAddUserFuncArg(QZsample pSample, QZsample pSampleSource);
QZ_API int QZsampEvalUserDistr(QZsample pSample, int nFuncType, double* padInput, int nInput,
                               double* pdOutput);
/* nFuncType QZ_FUNC_*; the inverse of a discrete distribution is the least x with CDF >= p.
   The LI form interpolates in a table of 5000 nodes built on first use (continuous laws). */
QZ_API int QZsampEvalDistr(QZsample pSample, int nFuncType, double dXval, double* pdResult);
QZ_API int QZsampEvalDistrLI(QZsample pSample, int nFuncType, double dXval, double* pdResult);
/* Generation repeats nothing when the points are current for the same size, method and
   generator stream (a reseed makes them stale). */
QZ_API int QZsampGenerate(QZsample pSample, int nMethod, int nSize);
QZ_API int QZsampLoadPoints(QZsample pSample, int nSampSize, double* padXval);
QZ_API int QZsampGetPoints(QZsample pSample, int* pnSampSize, double* padXval);
QZ_API int QZsampGetPointsPtr(QZsample pSample, int* pnSampSize, double** ppadXval);
QZ_API int QZsampGetCIPoints(QZsample pSample, int* pnSampSize, double* padXval);
QZ_API int QZsampGetCIPointsPtr(QZsample pSample, int* pnSampSize, double** ppadXval);
/* Reads the (correlated, when induced) points one at a time. */
QZ_API int QZsampGetNextPoint(QZsample pSample, double* pdValue);
/* Targets: nNonZeros entries (row, column, value) of the lower triangle, others 0. The
   correlated points of each sampler are its own points rearranged, so marginals stay. */
QZ_API int QZsampInduceCorrelation(QZsample* paSample, int nDim, int nCorrType,
                                   int nNonZeros, int* paiStartRow, int* paiStartCol,
                                   double* padValue);
/* Dense nDim x nDim correlations of the correlated points (of the points when some sampler
   has none); QZ_CORR_TARGET returns the target of the last induction. */
QZ_API int QZsampGetCorrelationMatrix(QZsample* paSample, int nDim, int nCorrType,
                                      double* padCorr);
/* Target against achieved, of the type induced: nDiffType 0 largest absolute difference,
   1 Frobenius norm over the lower triangle, 2 mean absolute difference. */
QZ_API int QZsampGetCorrDiff(QZsample* paSample, int nDim, int nDiffType, double* pdDiff);
QZ_API int QZsampGetInfo(QZsample pSample, int nQuery, void* pResult);

/* Histogram of weighted values (weights may be null). *pnBins <= 0 picks the count by the
   Freedman-Diaconis rule (Sturges when the spread is zero), at most 1000; dHistLow >=
   dHistHigh takes the sample range. Null output arrays only report the bin count. */
QZ_API int QZgetHistogram(QZmodel model, int nSampSize, const double* padVals,
                          const double* padWeights, double dHistLow, double dHistHigh,
                          int* pnBins, int* panBinCounts, double* padBinProbs,
                          double* padBinLow, double* padBinHigh);

/* ---- Distribution functions ----
   Each returns 0 or a QZERR_DIST_* code and writes *pdResult. Discrete laws take x as a
   double and read it by its floor. Parameter order as in the sampler. */
#define QZ_DIST_DECL1(Fn, P1) \
  QZ_API int QZcalcPdf##Fn(double dX, double P1, double* pdResult); \
  QZ_API int QZcalcCdf##Fn(double dX, double P1, double* pdResult)
#define QZ_DIST_DECL2(Fn, P1, P2) \
  QZ_API int QZcalcPdf##Fn(double dX, double P1, double P2, double* pdResult); \
  QZ_API int QZcalcCdf##Fn(double dX, double P1, double P2, double* pdResult)
QZ_DIST_DECL2(Binomial, dTrials, dProb);
QZ_DIST_DECL2(NegativeBinomial, dSuccesses, dProb);
QZ_DIST_DECL1(Geometric, dProb);
QZ_DIST_DECL1(Poisson, dMean);
QZ_DIST_DECL1(Logarithmic, dProb);
QZ_DIST_DECL2(Beta, dShape1, dShape2);
QZ_DIST_DECL2(Cauchy, dLoc, dScale);
QZ_DIST_DECL1(ChiSquare, dDegrees);
QZ_DIST_DECL1(Exponential, dRate);
QZ_DIST_DECL2(FDistribution, dDegrees1, dDegrees2);
QZ_DIST_DECL2(Gamma, dShape, dScale);
QZ_DIST_DECL2(Gumbel, dLoc, dScale);
QZ_DIST_DECL2(Laplace, dLoc, dScale);
QZ_DIST_DECL2(Lognormal, dLoc, dScale);
QZ_DIST_DECL2(Logistic, dLoc, dScale);
QZ_DIST_DECL2(Normal, dMean, dSigma);
QZ_DIST_DECL2(Pareto, dScale, dShape);
QZ_DIST_DECL1(StudentT, dDegrees);
QZ_DIST_DECL2(Uniform, dLower, dUpper);
QZ_DIST_DECL2(Weibull, dShape, dScale);
QZ_DIST_DECL1(SymStable, dAlpha);
#undef QZ_DIST_DECL1
#undef QZ_DIST_DECL2

QZ_API int QZcalcCdfInverseGeometric(double dP, double dProb, double* pdResult);
QZ_API int QZcalcCdfInversePoisson(double dP, double dMean, double* pdResult);
QZ_API int QZcalcCdfInverseLogarithmic(double dP, double dProb, double* pdResult);
QZ_API int QZcalcCdfInverseBeta(double dP, double dShape1, double dShape2, double* pdResult);
QZ_API int QZcalcCdfInverseCauchy(double dP, double dLoc, double dScale, double* pdResult);
QZ_API int QZcalcCdfInverseChiSquare(double dP, double dDegrees, double* pdResult);
QZ_API int QZcalcCdfInverseExponential(double dP, double dRate, double* pdResult);
QZ_API int QZcalcCdfInverseFDistribution(double dP, double dDegrees1, double dDegrees2,
                                         double* pdResult);
QZ_API int QZcalcCdfInverseGamma(double dP, double dShape, double dScale, double* pdResult);
QZ_API int QZcalcCdfInverseGumbel(double dP, double dLoc, double dScale, double* pdResult);
QZ_API int QZcalcCdfInverseLaplace(double dP, double dLoc, double dScale, double* pdResult);
QZ_API int QZcalcCdfInverseLognormal(double dP, double dLoc, double dScale, double* pdResult);
QZ_API int QZcalcCdfInverseLogistic(double dP, double dLoc, double dScale, double* pdResult);
QZ_API int QZcalcCdfInverseNormal(double dP, double dMean, double dSigma, double* pdResult);
QZ_API int QZcalcCdfInversePareto(double dP, double dScale, double dShape, double* pdResult);
QZ_API int QZcalcCdfInverseStudentT(double dP, double dDegrees, double* pdResult);
QZ_API int QZcalcCdfInverseUniform(double dP, double dLower, double dUpper, double* pdResult);
QZ_API int QZcalcCdfInverseWeibull(double dP, double dShape, double dScale, double* pdResult);
QZ_API int QZcalcCdfInverseSymStable(double dP, double dAlpha, double* pdResult);

QZ_API int QZcalcFirstPdfDerivativeCauchy(double dX, double dLoc, double dScale,
                                          double* pdResult);
QZ_API int QZcalcFirstPdfDerivativeGumbel(double dX, double dLoc, double dScale,
                                          double* pdResult);
QZ_API int QZcalcFirstPdfDerivativeLaplace(double dX, double dLoc, double dScale,
                                           double* pdResult);
QZ_API int QZcalcFirstPdfDerivativeLognormal(double dX, double dLoc, double dScale,
                                             double* pdResult);
QZ_API int QZcalcFirstPdfDerivativeLogistic(double dX, double dLoc, double dScale,
                                            double* pdResult);
QZ_API int QZcalcFirstPdfDerivativeWeibull(double dX, double dShape, double dScale,
                                           double* pdResult);

#ifdef __cplusplus
}
#endif

#endif
