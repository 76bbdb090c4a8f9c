// Entries that set callbacks and log functions, and read messages.
#include <cstring>

#include "api/guard.h"
#include "core/env.h"
#include "core/errors.h"
#include "core/messages.h"

using namespace zento;

namespace {

template <class F>
int set_slot(QZmodel model, F& slot, void*& data, F func, void* pvData) {
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  slot = func;
  data = func ? pvData : nullptr;
  return 0;
}

}  // namespace

extern "C" {

int QZsetCallback(QZmodel model, QZcallback_t pfFunc, void* pvData) {
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  return set_slot(model, model->cb.progress, model->cb.progressData, pfFunc, pvData);
}

int QZsetMIPCallback(QZmodel model, QZmipCallback_t pfFunc, void* pvData) {
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  return set_slot(model, model->cb.mipFunc, model->cb.mipData, pfFunc, pvData);
}

int QZsetMIPCallbackInsMIPSol(QZmodel model, QZmipInsSolCallback_t pfFunc, void* pvData) {
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  return set_slot(model, model->cb.mipSolFunc, model->cb.mipSolData, pfFunc, pvData);
}

int QZsetMIPCallbackInsMIPObj(QZmodel model, QZmipInsObjCallback_t pfFunc, void* pvData) {
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  return set_slot(model, model->cb.mipObjFunc, model->cb.mipObjData, pfFunc, pvData);
}

int QZsetGOPCallback(QZmodel model, QZgopCallback_t pfFunc, void* pvData) {
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  return set_slot(model, model->cb.gopFunc, model->cb.gopData, pfFunc, pvData);
}

int QZsetModelLogfunc(QZmodel model, QZlogFunc_t pfFunc, void* pvData) {
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  return set_slot(model, model->cb.logFunc, model->cb.logData, pfFunc, pvData);
}

int QZsetEnvLogfunc(QZenv env, QZenvLogFunc_t pfFunc, void* pvData) {
  if (env == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  env->logFunc = pfFunc;
  env->logData = pfFunc ? pvData : nullptr;
  return 0;
}

int QZgetErrorMessage(QZenv env, int nErrorCode, char* pszMessage) {
  if (pszMessage == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (nErrorCode == 0) {
    std::strcpy(pszMessage, "No errors.");
    return 0;
  }
  if (nErrorCode < 1 || nErrorCode > 2750) {
    std::strcpy(pszMessage, "Unknown error.");
    return QZERR_BAD_ERROR_CODE;
  }
  pszMessage[0] = '\0';
  QZ_GUARD({
    const char* text = nullptr;
    MessageTable temp;  // without an environment the table lives for this call only
    if (env != nullptr) {
      text = message_text(env, nErrorCode);
    } else {
      QZ_CALL(load_message_table(temp, message_file_path()));
      text = message_text(temp, nErrorCode);
    }
    if (text != nullptr) std::strcpy(pszMessage, text);
    return 0;
  });
}

}  // extern "C"
