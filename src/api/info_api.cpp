// Entries that read information keys, formatted reports, the profiler and error details.
#include <algorithm>
#include <cstring>

#include "api/guard.h"
#include "core/info.h"
#include "core/info_profiler.h"
#include "core/version.h"

using namespace zento;

extern "C" {

int QZgetInfo(QZmodel model, int nQuery, void* pvResult) {
  QZ_GUARD({ return get_info(model, nQuery, pvResult); });
}

int QZgetFinalInfo(QZmodel model, int nQuery, void* pvResult) {
  QZ_GUARD({ return get_final_info(model, nQuery, pvResult); });
}

int QZgetCallbackInfo(QZmodel model, int nLocation, int nQuery, void* pvResult) {
  QZ_GUARD({ return get_callback_info(model, nLocation, nQuery, pvResult); });
}

int QZgetMIPCallbackInfo(QZmodel model, int nQuery, void* pvResult) {
  QZ_GUARD({ return get_mip_callback_info(model, nQuery, pvResult); });
}

int QZgetQuickbackInfo(QZmodel model, int nLocation, int nQuery, void* pvResult) {
  QZ_GUARD({ return get_quickback_info(model, nLocation, nQuery, pvResult); });
}

int QZgetProgressInfo(QZmodel model, int nLocation, int nQuery, void* pvResult) {
  return QZgetQuickbackInfo(model, nLocation, nQuery, pvResult);
}

int QZgetFormattedInfo(QZmodel model, const char* szFormatFile, char* szHeader, char* szData,
                       int nSelector) {
  QZ_GUARD({ return get_formatted_info(model, szFormatFile, szHeader, szData, nSelector); });
}

int QZgetProfilerInfo(QZmodel model, int nContext, int* pnCalls, double* pdElapsed) {
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (nContext < QZ_PROFILER_CONTEXT_FIRST || nContext > QZ_PROFILER_CONTEXT_LAST || !model->prof)
    return QZERR_INFO_NOT_AVAILABLE;
  const ProfRegion& r = model->prof->regions[static_cast<size_t>(nContext - QZ_PROFILER_CONTEXT_FIRST)];
  if (pnCalls) *pnCalls = r.calls;
  if (pdElapsed) *pdElapsed = r.seconds;
  return 0;
}

const char* QZgetProfilerContext(QZmodel model, int nContext) {
  if (model == nullptr || !model->prof) return nullptr;
  if (nContext < QZ_PROFILER_CONTEXT_FIRST || nContext > QZ_PROFILER_CONTEXT_LAST) return nullptr;
  return model->prof->regions[static_cast<size_t>(nContext - QZ_PROFILER_CONTEXT_FIRST)].name;
}

int QZgetFileError(QZmodel model, int* pnLinenum, char* pszLinetxt) {
  if (pnLinenum) *pnLinenum = 0;
  if (pszLinetxt) pszLinetxt[0] = '\0';
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (pnLinenum) *pnLinenum = model->fileErrorLine;
  if (pszLinetxt) {
    const std::string& t = model->fileErrorText;
    const size_t n = std::min(t.size(), static_cast<size_t>(QZ_FILE_ERROR_TEXT_MAXLEN - 1));
    std::memcpy(pszLinetxt, t.data(), n);
    pszLinetxt[n] = '\0';
  }
  return 0;
}

int QZgetErrorRowIndex(QZmodel model, int* piRow) {
  if (model == nullptr || piRow == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (!model->sol || model->sol->model_status != QZ_STATUS_NUMERICAL_ERROR)
    return QZERR_INFO_NOT_AVAILABLE;
  *piRow = model->sol->errorRow;
  return 0;
}

int QZgetLibArch(char* szPlatform, char* pcCode) {
  if (szPlatform == nullptr && pcCode == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (szPlatform) std::strcpy(szPlatform, kPlatformText);
  if (pcCode) *pcCode = kPlatformCode;
  return 0;
}

}  // extern "C"
