// The one set path and the one get path of parameters, with their checks and side effects.
#include "core/params/param_access.h"

#include <algorithm>
#include <cctype>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "core/callbacks.h"
#include "core/env.h"
#include "core/errors.h"
#include "core/info_keys.h"
#include "core/model.h"
#include "core/model_ops.h"

namespace zento {

ParTarget ParTarget::of(Imodel* m) { return ParTarget{m != nullptr ? m->env : nullptr, m}; }

std::vector<ParItem>& ParTarget::items() const {
  return model != nullptr ? model->AllPamItems : env->AllPamItems;
}

namespace {

constexpr double kInfinity = 1e30;
constexpr int kRenameHops = 4;  // renames may chain a few steps; a cycle cannot loop forever

int clamp_to_int(double v) {
  if (v >= static_cast<double>(INT_MAX)) return INT_MAX;
  if (v <= static_cast<double>(INT_MIN)) return INT_MIN;
  return static_cast<int>(v);
}

// A C format that takes exactly one integer argument: "%d", "S%04d" and the like.
bool is_one_int_format(const char* s) {
  int conversions = 0;
  for (const char* p = s; *p != '\0'; ++p) {
    if (*p != '%') continue;
    ++p;
    if (*p == '%') continue;
    while (*p == '-' || *p == '+' || *p == ' ' || *p == '0' || *p == '#') ++p;
    while (std::isdigit(static_cast<unsigned char>(*p))) ++p;
    if (*p == '\0' || std::strchr("diuxX", *p) == nullptr) return false;
    ++conversions;
  }
  return conversions == 1;
}

// The value test of one row. `v` may be rewritten (limits take any negative value as -1).
int check_value(const ParItem& it, double& v) {
  if (std::isnan(v)) return QZERR_PARAM_OUT_OF_RANGE;
  if (it.xxx_id == QZ_IPARAM_OBJSENSE && v != QZ_MIN && v != QZ_MAX)
    return QZERR_BAD_OBJECTIVE_SENSE;
  if ((it.xxx_flags & kParLimit) && v < 0) v = -1;
  if (v >= it.xxx_min && v <= it.xxx_max) return 0;
  // The defaults are always accepted, even where they lie outside the range.
  if (v == it.xxx_dfl || v == param_block_default(it.xxx_id)) return 0;
  return QZERR_PARAM_OUT_OF_RANGE;
}

void store_number(ParItem& it, double v) {
  if (it.xxx_kind == kKindInt) *static_cast<int*>(it.xxx_local) = static_cast<int>(v);
  if (it.xxx_kind == kKindDouble) *static_cast<double*>(it.xxx_local) = v;
}

void set_companion_flag(const ParTarget& t, int flagId, double cutoff) {
  if (ParItem* flag = gss_getitem_by_id(t.items(), flagId))
    store_number(*flag, std::fabs(cutoff) < kInfinity ? 1 : 0);
}

// What a few parameters do besides being stored. `old` is the value before the store.
void side_effects(const ParTarget& t, int id, double v, double old) {
  switch (id) {
    case QZ_IPARAM_OBJSENSE:
      if (t.model != nullptr && v != old) {
        free_solver_memory(*t.model);
        t.model->lp.dObjSense = static_cast<int>(v);
      }
      break;
    case QZ_DPARAM_SOLVER_CUTOFFVAL:
      set_companion_flag(t, QZ_IPARAM_SOLVER_USECUTOFFVAL, v);
      break;
    case QZ_DPARAM_MIP_CUTOFFOBJ:
      set_companion_flag(t, QZ_IPARAM_MIP_USECUTOFFOBJ, v);
      break;
    case QZ_IPARAM_ALLOW_CNTRLBREAK:
      if (v == 1) reset_ctrlc();
      break;
    default:
      break;
  }
}

// Finds the row and tests what every access tests. `*out` is null when the code says so.
int find_row(const ParTarget& t, int id, bool stocEntry, ParItem** out) {
  *out = nullptr;
  if (stocEntry && !is_stoc_param(id)) return QZERR_PARAM_OUT_OF_RANGE;
  ParItem* it = gss_getitem_by_id(t.items(), id);
  if (it == nullptr) return QZERR_PARAM_OUT_OF_RANGE;
  if (it->xxx_class == QZ_PARCLASS_NOTIMPL) return QZERR_NOT_SUPPORTED;
  *out = it;
  return 0;
}

// Identifiers that the typed entries of a type serve: rows of that type, reserved ones aside.
bool typed_ok(const ParTarget& t, int id, int type) {
  if (!t.valid()) return true;  // the untyped path reports the null handle
  const ParItem* it = gss_getitem_by_id(t.items(), id);
  return it != nullptr && it->xxx_type == type && it->xxx_class != QZ_PARCLASS_NOTIMPL;
}

}  // namespace

int param_set(const ParTarget& t, int id, const void* pv, bool stocEntry) {
  if (!t.valid() || pv == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  ParItem* it = nullptr;
  QZ_CALL(find_row(t, id, stocEntry, &it));
  if ((it->xxx_flags & kParReadOnly) || (it->xxx_class & t.level()) == 0)
    return QZERR_PARAM_CANNOT_BE_SET;
  if (it->xxx_type == QZ_STRING_PARAMETER_TYPE) {
    const char* s = static_cast<const char*>(pv);
    if (std::strlen(s) > static_cast<size_t>(kParStringMax) || !is_one_int_format(s))
      return QZERR_PARAM_OUT_OF_RANGE;
    if (it->xxx_kind == kKindString) *static_cast<std::string*>(it->xxx_local) = s;
    return 0;
  }
  double v = it->xxx_type == QZ_INT_PARAMETER_TYPE ? *static_cast<const int*>(pv)
                                                   : *static_cast<const double*>(pv);
  QZ_CALL(check_value(*it, v));
  const double old = par_value(*it);
  store_number(*it, v);
  side_effects(t, id, v, old);
  return 0;
}

int param_get(const ParTarget& t, int id, void* pv, bool stocEntry) {
  if (!t.valid() || pv == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  ParItem* it = nullptr;
  QZ_CALL(find_row(t, id, stocEntry, &it));
  switch (it->xxx_type) {
    case QZ_INT_PARAMETER_TYPE:
      *static_cast<int*>(pv) = clamp_to_int(par_value(*it));
      return 0;
    case QZ_DOUBLE_PARAMETER_TYPE:
      *static_cast<double*>(pv) = par_value(*it);
      return 0;
    case QZ_STRING_PARAMETER_TYPE: {
      const std::string& s = *static_cast<const std::string*>(it->xxx_local);
      std::memcpy(pv, s.c_str(), s.size() + 1);
      return 0;
    }
    default:
      return QZERR_INTERNAL_ERROR;
  }
}

int param_set_int(const ParTarget& t, int id, int value, bool stocEntry) {
  if (!typed_ok(t, id, QZ_INT_PARAMETER_TYPE)) return 0;
  return param_set(t, id, &value, stocEntry);
}

int param_set_dou(const ParTarget& t, int id, double value, bool stocEntry) {
  if (!typed_ok(t, id, QZ_DOUBLE_PARAMETER_TYPE)) return 0;
  return param_set(t, id, &value, stocEntry);
}

int param_set_str(const ParTarget& t, int id, const char* value, bool stocEntry) {
  if (!typed_ok(t, id, QZ_STRING_PARAMETER_TYPE)) return 0;
  return param_set(t, id, value, stocEntry);
}

int param_get_int(const ParTarget& t, int id, int* value, bool stocEntry) {
  if (!typed_ok(t, id, QZ_INT_PARAMETER_TYPE)) return 0;
  return param_get(t, id, value, stocEntry);
}

int param_get_dou(const ParTarget& t, int id, double* value, bool stocEntry) {
  if (!typed_ok(t, id, QZ_DOUBLE_PARAMETER_TYPE)) return 0;
  return param_get(t, id, value, stocEntry);
}

int param_get_str(const ParTarget& t, int id, char* value, bool stocEntry) {
  if (!typed_ok(t, id, QZ_STRING_PARAMETER_TYPE)) return 0;
  return param_get(t, id, value, stocEntry);
}

const ParItem* param_row(int id) {
  const ParItem* first = parlist();
  const ParItem* last = first + parlist_count();
  const ParItem* it = std::lower_bound(first, last, id,
                                       [](const ParItem& a, int key) { return a.xxx_id < key; });
  return (it != last && it->xxx_id == id) ? it : nullptr;
}

const ParItem* param_row_by_name(QZenv env, const char* name) {
  std::vector<ParItem>& items = env->AllPamItems;
  const char* lookup = name;
  for (int hop = 0; lookup != nullptr && hop <= kRenameHops; ++hop) {
    if (const ParItem* it = gss_getitem_by_szid(items, lookup, &env->parNameIndex)) return it;
    lookup = param_rename(lookup);
  }
  return nullptr;
}

int param_data_type(int key) {
  if (const ParItem* it = param_row(key)) return it->xxx_type;
  return info_key_type(key);
}

std::string param_value_text(const ParItem& item) {
  char buf[64];
  switch (item.xxx_type) {
    case QZ_INT_PARAMETER_TYPE:
      std::snprintf(buf, sizeof buf, "%d", clamp_to_int(par_value(item)));
      return buf;
    case QZ_DOUBLE_PARAMETER_TYPE: {
      // The short form when it reads back exactly, else all digits.
      const double v = par_value(item);
      std::snprintf(buf, sizeof buf, "%g", v);
      if (std::strtod(buf, nullptr) != v) std::snprintf(buf, sizeof buf, "%.17g", v);
      return buf;
    }
    default:
      return item.xxx_kind == kKindString ? *static_cast<const std::string*>(item.xxx_local)
                                          : std::string();
  }
}

}  // namespace zento
