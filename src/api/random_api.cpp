// Public entries of the generators, samplers and distribution functions.
#include <new>

#include "api/guard.h"
#include "random/distrib.h"
#include "random/randgen.h"
#include "random/sampler.h"
#include "zento.h"

namespace zr = zento::random;

namespace {

template <class F>
QZrandGen guarded_rg(F&& f) noexcept {
  try {
    return f();
  } catch (...) {
    return nullptr;
  }
}

}  // namespace

extern "C" {

// ---- Generators ----
QZrandGen QZcreateRG(QZenv env, int nMethod) {
  return guarded_rg([&] { return zr::create_rg(env, nMethod, false); });
}
QZrandGen QZcreateRGMT(QZenv env, int nMethod) {
  return guarded_rg([&] { return zr::create_rg(env, nMethod, true); });
}
void QZdisposeRG(QZrandGen* ppRG) {
  try {
    zr::dispose_rg(ppRG);
  } catch (...) {
  }
}
int QZsetRGSeed(QZrandGen pRG, int nSeed) {
  if (pRG == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({
    zr::seed_rg(pRG, nSeed);
    return 0;
  });
}
int QZgetInitSeed(QZrandGen pRG) { return pRG == nullptr ? 0 : pRG->seed; }
double QZgetDoubleRV(QZrandGen pRG) { return pRG == nullptr ? -1.0 : zr::draw_uniform(pRG); }
int QZgetInt32RV(QZrandGen pRG, int iLow, int iHigh) {
  return pRG == nullptr ? iLow : zr::draw_int(pRG, iLow, iHigh);
}
int QZfillRGBuffer(QZrandGen pRG) {
  if (pRG == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({
    if (!pRG->threaded) return zr::fill_buffer(pRG);
    std::lock_guard<std::mutex> lock(pRG->mutex);
    return zr::fill_buffer(pRG);
  });
}
double* QZgetRGBufferPtr(QZrandGen pRG, int* pnBufferLen) {
  if (pRG == nullptr || pRG->buffer.empty()) {
    if (pnBufferLen != nullptr) *pnBufferLen = 0;
    return nullptr;
  }
  if (pnBufferLen != nullptr) *pnBufferLen = static_cast<int>(pRG->buffer.size());
  return pRG->buffer.data();
}
int QZgetRGNumThreads(QZrandGen pRG) { return pRG == nullptr ? 0 : pRG->nthreads; }
int QZsetDistrRG(QZrandGen pRG, int nDistType) {
  if (pRG == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({
    int err = 0;
    QZsample s = zr::create_sample(nullptr, nDistType, false, &err);
    if (s == nullptr) return err;
    pRG->distr.reset(s);
    return 0;
  });
}
int QZsetDistrParamRG(QZrandGen pRG, int iParam, double dParam) {
  if (pRG == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (!pRG->distr) return QZERR_SAMP_BAD_CALL;
  QZ_GUARD({ return zr::set_param(pRG->distr.get(), iParam, dParam); });
}
int QZgetDistrRV(QZrandGen pRG, double* pdResult) {
  if (pRG == nullptr || pdResult == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (!pRG->distr) return QZERR_SAMP_BAD_CALL;
  QZ_GUARD({
    const double u = zr::draw_open(pRG);
    return zr::eval(pRG->distr.get(), QZ_FUNC_CDFINV, u, pdResult);
  });
}

// ---- Samplers ----
QZsample QZsampCreate(QZenv env, int nDistType, int* pnErrorCode) {
  int err = 0;
  QZsample s = nullptr;
  if (env == nullptr) {
    err = QZERR_ILLEGAL_NULL_POINTER;
  } else {
    try {
      s = zr::create_sample(env, nDistType, true, &err);
    } catch (...) {
      err = QZERR_OUT_OF_MEMORY;
    }
  }
  if (pnErrorCode != nullptr) *pnErrorCode = err;
  return s;
}
int QZsampDelete(QZsample* paSample) {
  QZ_GUARD({ return zr::delete_sample(paSample); });
}
int QZsampSetRG(QZsample pSample, QZrandGen pRG) {
  if (pSample == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return zr::set_rg(pSample, pRG); });
}
int QZsampSetDistrParam(QZsample pSample, int iParam, double dValue) {
  if (pSample == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  return zr::set_param(pSample, iParam, dValue);
}
int QZsampGetDistrParam(QZsample pSample, int iParam, double* pdValue) {
  if (pSample == nullptr || pdValue == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (iParam < 0 || iParam >= zr::param_count(*pSample)) return QZERR_INDEX_OUT_OF_RANGE;
  *pdValue = pSample->params[iParam];
  return 0;
}
int QZsampLoadDiscretePdfTable(QZsample pSample, int nLen, double* padProb, double* padVals) {
  if (pSample == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (pSample->dist != QZ_DIST_DISCRETE) return QZERR_DIST_BAD_TYPE;
  if (nLen > 0 && (padProb == nullptr || padVals == nullptr)) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return zr::load_table(pSample, nLen, padProb, padVals); });
}
int QZsampGetDiscretePdfTable(QZsample pSample, int* pnLen, double* padProb, double* padVals) {
  if (pSample == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (pSample->dist != QZ_DIST_DISCRETE) return QZERR_DIST_BAD_TYPE;
  if (pSample->tableVals.empty()) return QZERR_NO_DISCRETE_PDF_TABLE;
  if (pnLen != nullptr) *pnLen = static_cast<int>(pSample->tableVals.size());
  zento::api::copy_out(pSample->tableProbs, padProb);
  zento::api::copy_out(pSample->tableVals, padVals);
  return 0;
}
int QZsampSetUserDistr(QZsample pSample, user_pdf_t pfUserFunc, void* pUserData) {
  if (pSample == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (pSample->dist != QZ_DIST_USER) return QZERR_DIST_BAD_TYPE;
  pSample->userFunc = pfUserFunc;
  pSample->userData = pUserData;
  pSample->flags &= ~zr::kPointsCurrent;
  return 0;
}
int QZsampAddUserFuncArg(QZsample pSample, QZsample pSampleSource) {
  if (pSample == nullptr || pSampleSource == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return zr::add_child(pSample, pSampleSource); });
}
int QZsampEvalUserDistr(QZsample pSample, int nFuncType, double* padInput, int nInput,
                        double* pdOutput) {
  if (pSample == nullptr || pdOutput == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (nInput < 0 || (nInput > 0 && padInput == nullptr)) return QZERR_SAMP_BAD_CALL;
  QZ_GUARD({ return zr::eval_user(pSample, nFuncType, padInput, nInput, pdOutput); });
}
int QZsampEvalDistr(QZsample pSample, int nFuncType, double dXval, double* pdResult) {
  if (pSample == nullptr || pdResult == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return zr::eval(pSample, nFuncType, dXval, pdResult); });
}
int QZsampEvalDistrLI(QZsample pSample, int nFuncType, double dXval, double* pdResult) {
  if (pSample == nullptr || pdResult == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return zr::eval_li(pSample, nFuncType, dXval, pdResult); });
}
int QZsampGenerate(QZsample pSample, int nMethod, int nSize) {
  if (pSample == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return zr::generate(pSample, nMethod, nSize); });
}
int QZsampLoadPoints(QZsample pSample, int nSampSize, double* padXval) {
  if (pSample == nullptr || (nSampSize > 0 && padXval == nullptr)) {
    return QZERR_ILLEGAL_NULL_POINTER;
  }
  QZ_GUARD({ return zr::load_points(pSample, nSampSize, padXval); });
}
int QZsampGetPoints(QZsample pSample, int* pnSampSize, double* padXval) {
  if (pSample == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (pSample->points.empty()) return QZERR_SAMP_NOT_GENERATED;
  if (pnSampSize != nullptr) *pnSampSize = static_cast<int>(pSample->points.size());
  zento::api::copy_out(pSample->points, padXval);
  return 0;
}
int QZsampGetPointsPtr(QZsample pSample, int* pnSampSize, double** ppadXval) {
  if (pSample == nullptr || ppadXval == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (pSample->points.empty()) return QZERR_SAMP_NOT_GENERATED;
  if (pnSampSize != nullptr) *pnSampSize = static_cast<int>(pSample->points.size());
  *ppadXval = pSample->points.data();
  return 0;
}
int QZsampGetCIPoints(QZsample pSample, int* pnSampSize, double* padXval) {
  if (pSample == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (pSample->ciPoints.empty()) return QZERR_SAMP_NO_CORRELATION;
  if (pnSampSize != nullptr) *pnSampSize = static_cast<int>(pSample->ciPoints.size());
  zento::api::copy_out(pSample->ciPoints, padXval);
  return 0;
}
int QZsampGetCIPointsPtr(QZsample pSample, int* pnSampSize, double** ppadXval) {
  if (pSample == nullptr || ppadXval == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (pSample->ciPoints.empty()) return QZERR_SAMP_NO_CORRELATION;
  if (pnSampSize != nullptr) *pnSampSize = static_cast<int>(pSample->ciPoints.size());
  *ppadXval = pSample->ciPoints.data();
  return 0;
}
int QZsampGetNextPoint(QZsample pSample, double* pdValue) {
  if (pSample == nullptr || pdValue == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  return zr::next_point(pSample, pdValue);
}
int QZsampInduceCorrelation(QZsample* paSample, int nDim, int nCorrType, int nNonZeros,
                            int* paiStartRow, int* paiStartCol, double* padValue) {
  if (paSample == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({
    return zr::induce_correlation(paSample, nDim, nCorrType, nNonZeros, paiStartRow,
                                  paiStartCol, padValue);
  });
}
int QZsampGetCorrelationMatrix(QZsample* paSample, int nDim, int nCorrType, double* padCorr) {
  QZ_GUARD({ return zr::correlation_matrix(paSample, nDim, nCorrType, padCorr); });
}
int QZsampGetCorrDiff(QZsample* paSample, int nDim, int nDiffType, double* pdDiff) {
  QZ_GUARD({ return zr::correlation_diff(paSample, nDim, nDiffType, pdDiff); });
}
int QZsampGetInfo(QZsample pSample, int nQuery, void* pResult) {
  if (pSample == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return zr::sample_info(*pSample, nQuery, pResult); });
}
int QZgetHistogram(QZmodel model, int nSampSize, const double* padVals, const double* padWeights,
                   double dHistLow, double dHistHigh, int* pnBins, int* panBinCounts,
                   double* padBinProbs, double* padBinLow, double* padBinHigh) {
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({
    return zr::histogram(nSampSize, padVals, padWeights, dHistLow, dHistHigh, pnBins,
                         panBinCounts, padBinProbs, padBinLow, padBinHigh);
  });
}

// ---- Distribution functions ----
#define QZ_DIST_DEF1(Fn, impl)                                                  \
  int QZcalcPdf##Fn(double dX, double p1, double* pdResult) {                   \
    if (pdResult == nullptr) return QZERR_ILLEGAL_NULL_POINTER;                 \
    const double par[1] = {p1};                                                 \
    return zr::impl##_pdf(dX, par, pdResult);                                   \
  }                                                                             \
  int QZcalcCdf##Fn(double dX, double p1, double* pdResult) {                   \
    if (pdResult == nullptr) return QZERR_ILLEGAL_NULL_POINTER;                 \
    const double par[1] = {p1};                                                 \
    return zr::impl##_cdf(dX, par, pdResult);                                   \
  }
#define QZ_DIST_DEF2(Fn, impl)                                                  \
  int QZcalcPdf##Fn(double dX, double p1, double p2, double* pdResult) {        \
    if (pdResult == nullptr) return QZERR_ILLEGAL_NULL_POINTER;                 \
    const double par[2] = {p1, p2};                                             \
    return zr::impl##_pdf(dX, par, pdResult);                                   \
  }                                                                             \
  int QZcalcCdf##Fn(double dX, double p1, double p2, double* pdResult) {        \
    if (pdResult == nullptr) return QZERR_ILLEGAL_NULL_POINTER;                 \
    const double par[2] = {p1, p2};                                             \
    return zr::impl##_cdf(dX, par, pdResult);                                   \
  }
#define QZ_INV_DEF1(Fn, impl)                                                   \
  int QZcalcCdfInverse##Fn(double dP, double p1, double* pdResult) {            \
    if (pdResult == nullptr) return QZERR_ILLEGAL_NULL_POINTER;                 \
    const double par[1] = {p1};                                                 \
    return zr::impl##_inv(dP, par, pdResult);                                   \
  }
#define QZ_INV_DEF2(Fn, impl)                                                   \
  int QZcalcCdfInverse##Fn(double dP, double p1, double p2, double* pdResult) { \
    if (pdResult == nullptr) return QZERR_ILLEGAL_NULL_POINTER;                 \
    const double par[2] = {p1, p2};                                             \
    return zr::impl##_inv(dP, par, pdResult);                                   \
  }
#define QZ_DPDF_DEF2(Fn, impl)                                                        \
  int QZcalcFirstPdfDerivative##Fn(double dX, double p1, double p2, double* pdResult) { \
    if (pdResult == nullptr) return QZERR_ILLEGAL_NULL_POINTER;                       \
    const double par[2] = {p1, p2};                                                   \
    return zr::impl##_dpdf(dX, par, pdResult);                                        \
  }

QZ_DIST_DEF2(Binomial, binomial)
QZ_DIST_DEF2(NegativeBinomial, negbin)
QZ_DIST_DEF1(Geometric, geometric)
QZ_DIST_DEF1(Poisson, poisson)
QZ_DIST_DEF1(Logarithmic, logarithmic)
QZ_DIST_DEF2(Beta, beta)
QZ_DIST_DEF2(Cauchy, cauchy)
QZ_DIST_DEF1(ChiSquare, chisq)
QZ_DIST_DEF1(Exponential, exp)
QZ_DIST_DEF2(FDistribution, f)
QZ_DIST_DEF2(Gamma, gamma)
QZ_DIST_DEF2(Gumbel, gumbel)
QZ_DIST_DEF2(Laplace, laplace)
QZ_DIST_DEF2(Lognormal, lognormal)
QZ_DIST_DEF2(Logistic, logistic)
int QZcalcPdfNormal(double dX, double dMean, double dSigma, double* pdResult) {
  if (pdResult == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  const double par[2] = {dMean, dSigma};
  return zr::normal_pdf(dX, par, pdResult);
}
int QZcalcCdfNormal(double dX, double dMean, double dSigma, double* pdResult) {
  if (pdResult == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  const double par[2] = {dMean, dSigma};
  return zr::normal_cdf_fn(dX, par, pdResult);
}
QZ_DIST_DEF2(Pareto, pareto)
QZ_DIST_DEF1(StudentT, t)
QZ_DIST_DEF2(Uniform, uniform)
QZ_DIST_DEF2(Weibull, weibull)
QZ_DIST_DEF1(SymStable, stable)

QZ_INV_DEF1(Geometric, geometric)
QZ_INV_DEF1(Poisson, poisson)
QZ_INV_DEF1(Logarithmic, logarithmic)
QZ_INV_DEF2(Beta, beta)
QZ_INV_DEF2(Cauchy, cauchy)
QZ_INV_DEF1(ChiSquare, chisq)
QZ_INV_DEF1(Exponential, exp)
QZ_INV_DEF2(FDistribution, f)
QZ_INV_DEF2(Gamma, gamma)
QZ_INV_DEF2(Gumbel, gumbel)
QZ_INV_DEF2(Laplace, laplace)
QZ_INV_DEF2(Lognormal, lognormal)
QZ_INV_DEF2(Logistic, logistic)
QZ_INV_DEF2(Normal, normal)
QZ_INV_DEF2(Pareto, pareto)
QZ_INV_DEF1(StudentT, t)
QZ_INV_DEF2(Uniform, uniform)
QZ_INV_DEF2(Weibull, weibull)
QZ_INV_DEF1(SymStable, stable)

QZ_DPDF_DEF2(Cauchy, cauchy)
QZ_DPDF_DEF2(Gumbel, gumbel)
QZ_DPDF_DEF2(Laplace, laplace)
QZ_DPDF_DEF2(Lognormal, lognormal)
QZ_DPDF_DEF2(Logistic, logistic)
QZ_DPDF_DEF2(Weibull, weibull)

}  // extern "C"
