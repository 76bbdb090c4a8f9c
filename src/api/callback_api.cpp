// Entries that set callbacks and log functions, and read messages.
#include <cstring>

#include "api/guard.h"
#include "core/env.h"
#include "core/messages.h"

using namespace zento;

extern "C" {

int QZsetCallback(QZmodel model, QZcallback_t pfFunc, void* pvData) {
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  model->cb.progress = pfFunc;
  model->cb.progressData = pvData;
  return 0;
}

int QZsetModelLogfunc(QZmodel model, QZlogFunc_t pfFunc, void* pvData) {
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  model->cb.logFunc = pfFunc;
  model->cb.logData = pvData;
  return 0;
}

int QZsetEnvLogfunc(QZenv env, QZenvLogFunc_t pfFunc, void* pvData) {
  if (env == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  env->logFunc = pfFunc;
  env->logData = pvData;
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
  QZ_GUARD({
    QZenv use = env;
    QZenv temp = nullptr;
    if (use == nullptr) {
      temp = new QZenv_s();
      load_message_table(temp, message_file_path());
      use = temp;
    }
    const char* text = message_text(use, nErrorCode);
    std::strcpy(pszMessage, text ? text : "");
    delete temp;
    return 0;
  });
}

}  // extern "C"
