// Entries on parameters: get and set, the registry, parameter files.
#include <strings.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "api/guard.h"
#include "core/env.h"
#include "core/params/param_access.h"
#include "core/params/param_files.h"

using namespace zento;

namespace {

ParTarget on(QZmodel m) { return ParTarget::of(m); }
ParTarget on(QZenv e) { return ParTarget::of(e); }

// The environment's row of an identifier, or null.
ParItem* env_row(QZenv env, int id) { return gss_getitem_by_id(env->AllPamItems, id); }

int copy_text(const char* src, char* dst) {
  if (dst == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  std::strcpy(dst, src != nullptr ? src : "");
  return 0;
}

}  // namespace

extern "C" {

int QZsetModelIntParameter(QZmodel model, int nParameter, int nValue) {
  QZ_GUARD({ return param_set_int(on(model), nParameter, nValue, false); });
}
int QZsetModelDouParameter(QZmodel model, int nParameter, double dValue) {
  QZ_GUARD({ return param_set_dou(on(model), nParameter, dValue, false); });
}
int QZgetModelIntParameter(QZmodel model, int nParameter, int* pnValue) {
  QZ_GUARD({ return param_get_int(on(model), nParameter, pnValue, false); });
}
int QZgetModelDouParameter(QZmodel model, int nParameter, double* pdValue) {
  QZ_GUARD({ return param_get_dou(on(model), nParameter, pdValue, false); });
}
int QZsetEnvIntParameter(QZenv env, int nParameter, int nValue) {
  QZ_GUARD({ return param_set_int(on(env), nParameter, nValue, false); });
}
int QZsetEnvDouParameter(QZenv env, int nParameter, double dValue) {
  QZ_GUARD({ return param_set_dou(on(env), nParameter, dValue, false); });
}
int QZgetEnvIntParameter(QZenv env, int nParameter, int* pnValue) {
  QZ_GUARD({ return param_get_int(on(env), nParameter, pnValue, false); });
}
int QZgetEnvDouParameter(QZenv env, int nParameter, double* pdValue) {
  QZ_GUARD({ return param_get_dou(on(env), nParameter, pdValue, false); });
}
int QZsetModelParameter(QZmodel model, int nParameter, void* pvValue) {
  QZ_GUARD({ return param_set(on(model), nParameter, pvValue, false); });
}
int QZgetModelParameter(QZmodel model, int nParameter, void* pvValue) {
  QZ_GUARD({ return param_get(on(model), nParameter, pvValue, false); });
}
int QZsetEnvParameter(QZenv env, int nParameter, void* pvValue) {
  QZ_GUARD({ return param_set(on(env), nParameter, pvValue, false); });
}
int QZgetEnvParameter(QZenv env, int nParameter, void* pvValue) {
  QZ_GUARD({ return param_get(on(env), nParameter, pvValue, false); });
}

int QZsetModelStocParameter(QZmodel model, int nParameter, void* pvValue) {
  QZ_GUARD({ return param_set(on(model), nParameter, pvValue, true); });
}
int QZgetModelStocParameter(QZmodel model, int nParameter, void* pvValue) {
  QZ_GUARD({ return param_get(on(model), nParameter, pvValue, true); });
}
int QZsetEnvStocParameter(QZenv env, int nParameter, void* pvValue) {
  QZ_GUARD({ return param_set(on(env), nParameter, pvValue, true); });
}
int QZgetEnvStocParameter(QZenv env, int nParameter, void* pvValue) {
  QZ_GUARD({ return param_get(on(env), nParameter, pvValue, true); });
}
int QZsetModelStocParameterInt(QZmodel model, int nParameter, int nValue) {
  QZ_GUARD({ return param_set_int(on(model), nParameter, nValue, true); });
}
int QZgetModelStocParameterInt(QZmodel model, int nParameter, int* pnValue) {
  QZ_GUARD({ return param_get_int(on(model), nParameter, pnValue, true); });
}
int QZsetModelStocParameterDou(QZmodel model, int nParameter, double dValue) {
  QZ_GUARD({ return param_set_dou(on(model), nParameter, dValue, true); });
}
int QZgetModelStocParameterDou(QZmodel model, int nParameter, double* pdValue) {
  QZ_GUARD({ return param_get_dou(on(model), nParameter, pdValue, true); });
}
int QZsetModelStocParameterChar(QZmodel model, int nParameter, const char* szValue) {
  QZ_GUARD({ return param_set_str(on(model), nParameter, szValue, true); });
}
int QZgetModelStocParameterChar(QZmodel model, int nParameter, char* szValue) {
  QZ_GUARD({ return param_get_str(on(model), nParameter, szValue, true); });
}
int QZsetEnvStocParameterInt(QZenv env, int nParameter, int nValue) {
  QZ_GUARD({ return param_set_int(on(env), nParameter, nValue, true); });
}
int QZgetEnvStocParameterInt(QZenv env, int nParameter, int* pnValue) {
  QZ_GUARD({ return param_get_int(on(env), nParameter, pnValue, true); });
}
int QZsetEnvStocParameterDou(QZenv env, int nParameter, double dValue) {
  QZ_GUARD({ return param_set_dou(on(env), nParameter, dValue, true); });
}
int QZgetEnvStocParameterDou(QZenv env, int nParameter, double* pdValue) {
  QZ_GUARD({ return param_get_dou(on(env), nParameter, pdValue, true); });
}
int QZsetEnvStocParameterChar(QZenv env, int nParameter, const char* szValue) {
  QZ_GUARD({ return param_set_str(on(env), nParameter, szValue, true); });
}
int QZgetEnvStocParameterChar(QZenv env, int nParameter, char* szValue) {
  QZ_GUARD({ return param_get_str(on(env), nParameter, szValue, true); });
}

int QZgetIntParameterRange(QZmodel model, int nParameter, int* pnMin, int* pnMax) {
  if (model == nullptr || pnMin == nullptr || pnMax == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return QZI_GetIntParRange(model->AllPamItems, nParameter, pnMin, pnMax); });
}

int QZgetDouParameterRange(QZmodel model, int nParameter, double* pdMin, double* pdMax) {
  if (model == nullptr || pdMin == nullptr || pdMax == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return QZI_GetDouParRange(model->AllPamItems, nParameter, pdMin, pdMax); });
}

int QZgetParamInfo(QZenv env, int nParameter, int* pnType, int* pnClass, double* pdMin,
                   double* pdMax, double* pdDefault) {
  if (env == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  const ParItem* it = env_row(env, nParameter);
  if (it == nullptr) return QZERR_BAD_PARAM_ID;
  if (pnType) *pnType = it->xxx_type;
  if (pnClass) *pnClass = it->xxx_class;
  if (pdMin) *pdMin = it->xxx_min;
  if (pdMax) *pdMax = it->xxx_max;
  if (pdDefault) *pdDefault = it->xxx_dfl;
  return 0;
}

int QZgetParamCount(QZenv env, int* pnCount) {
  if (env == nullptr || pnCount == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  *pnCount = static_cast<int>(env->AllPamItems.size());
  return 0;
}

int QZgetParamIdByIndex(QZenv env, int iIndex, int* pnId) {
  if (env == nullptr || pnId == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  const ParItem* it = gss_getitem_by_pos(env->AllPamItems, iIndex);
  if (it == nullptr) return QZERR_INDEX_OUT_OF_RANGE;
  *pnId = it->xxx_id;
  return 0;
}

int QZgetParamMacroName(QZenv env, int nParameter, char* szName) {
  if (env == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  const ParItem* it = env_row(env, nParameter);
  if (it == nullptr) return QZERR_BAD_PARAM_ID;
  return copy_text(it->xxx_szid, szName);
}

const char* QZgetParamMacroNamePtr(QZenv env, int nParameter) {
  if (env == nullptr) return nullptr;
  const ParItem* it = env_row(env, nParameter);
  return it != nullptr ? it->xxx_szid : nullptr;
}

int QZgetParamMacroID(QZenv env, const char* szName, int* pnType, int* pnId) {
  if (env == nullptr || szName == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({
    const ParItem* it = param_row_by_name(env, szName);
    if (it == nullptr) return QZERR_BAD_PARAM_ID;
    if (pnType) *pnType = it->xxx_type;
    if (pnId) *pnId = it->xxx_id;
    return 0;
  });
}

int QZgetParamShortDesc(QZenv env, int nParameter, char* szDesc) {
  if (env == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  const ParItem* it = env_row(env, nParameter);
  if (it == nullptr) return QZERR_BAD_PARAM_ID;
  return copy_text(it->xxx_name, szDesc);
}

const char* QZgetParamShortDescPtr(QZenv env, int nParameter) {
  if (env == nullptr) return nullptr;
  const ParItem* it = env_row(env, nParameter);
  return it != nullptr ? it->xxx_name : nullptr;
}

int QZgetParamLongDesc(QZenv env, int nParameter, char* szDesc) {
  if (env == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  const ParItem* it = env_row(env, nParameter);
  if (it == nullptr) return QZERR_BAD_PARAM_ID;
  return copy_text(it->xxx_help, szDesc);
}

const char* QZgetParamLongDescPtr(QZenv env, int nParameter) {
  if (env == nullptr) return nullptr;
  const ParItem* it = env_row(env, nParameter);
  return it != nullptr ? it->xxx_help : nullptr;
}

int QZsearchParamHasKeyword(QZenv env, const char* szKey, int* pnStart, int* pnId) {
  if (env == nullptr || szKey == nullptr || pnStart == nullptr || pnId == nullptr)
    return QZERR_ILLEGAL_NULL_POINTER;
  const std::vector<ParItem>& items = env->AllPamItems;
  const int n = static_cast<int>(items.size());
  *pnId = -1;
  const int number = std::atoi(szKey);
  if (number > 0) {
    if (*pnStart < 0 || *pnStart >= n) return QZERR_INDEX_OUT_OF_RANGE;
    for (int r = *pnStart; r < n; ++r)
      if (items[r].xxx_id == number) {
        *pnStart = r;
        *pnId = number;
        return 0;
      }
    *pnStart = n;
    return 0;
  }
  for (int r = std::max(*pnStart, 0); r < n; ++r)
    if (strcasestr(items[r].xxx_szid, szKey) != nullptr) {
      *pnStart = r;
      *pnId = items[r].xxx_id;
      return 0;
    }
  *pnStart = n;
  return 0;
}

int QZgetDataType(QZmodel /*model*/, int nKey) {
  QZ_GUARD({ return param_data_type(nKey); });
}

int QZreadModelParameter(QZmodel model, const char* pszFname) {
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return read_model_params(*model, pszFname); });
}

int QZreadEnvParameter(QZenv env, const char* pszFname) {
  if (env == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return read_env_params(env, pszFname); });
}

int QZwriteModelParameter(QZmodel model, const char* pszFname) {
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return write_model_params(*model, pszFname); });
}

int QZwriteEnvParameter(QZenv env, const char* pszFname) {
  if (env == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return write_env_params(env, pszFname); });
}

int QZwriteParameterAsciiDoc(QZenv env, const char* pszFname) {
  if (env == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return write_params_asciidoc(env, pszFname); });
}

int QZsetParModel(QZmodel model, QZmodel refModel) {
  if (model == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return set_par_model(*model, refModel); });
}

}  // extern "C"
