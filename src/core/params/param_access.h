// Getting and setting parameters by identifier on the environment or on a model.
//
// Every set goes through one path: find the row, check the level (environment or model) and
// the value, store it in the bound block field, then run the parameter's side effects. A
// refused set changes nothing.
#pragma once

#include <string>

#include "core/params/registry.h"
#include "zento.h"

namespace zento {

// Where a parameter is read or written: a model, or the environment when `model` is null.
struct ParTarget {
  QZenv env = nullptr;
  Imodel* model = nullptr;

  static ParTarget of(QZenv e) { return ParTarget{e, nullptr}; }
  static ParTarget of(Imodel* m);
  bool valid() const { return model != nullptr || env != nullptr; }
  std::vector<ParItem>& items() const;
  int level() const { return model != nullptr ? QZ_PARCLASS_MODEL : QZ_PARCLASS_ENV; }
};

// Stochastic identifiers live in SPPam and are reached through the stochastic entries.
inline bool is_stoc_param(int id) { return id >= 6600 && id < 6700; }

// Longest value of a string parameter, in characters.
inline constexpr int kParStringMax = QZ_MAX_PARAM_STRING_LENGTH - 1;

// Untyped access: `pv` points at an int, a double or a zero-terminated string, as the row's
// type says. `stocEntry` tells the stochastic entries from the plain ones: the stochastic
// dispatch knows only stochastic identifiers, the plain one passes them on.
[[nodiscard]] int param_set(const ParTarget& t, int id, const void* pv, bool stocEntry);
[[nodiscard]] int param_get(const ParTarget& t, int id, void* pv, bool stocEntry);

// Typed access: an identifier without storage of that type is ignored and 0 is returned.
[[nodiscard]] int param_set_int(const ParTarget& t, int id, int value, bool stocEntry);
[[nodiscard]] int param_set_dou(const ParTarget& t, int id, double value, bool stocEntry);
[[nodiscard]] int param_set_str(const ParTarget& t, int id, const char* value, bool stocEntry);
[[nodiscard]] int param_get_int(const ParTarget& t, int id, int* value, bool stocEntry);
[[nodiscard]] int param_get_dou(const ParTarget& t, int id, double* value, bool stocEntry);
[[nodiscard]] int param_get_str(const ParTarget& t, int id, char* value, bool stocEntry);

// A row of the static table by identifier, or null.
const ParItem* param_row(int id);
// The row of a macro name, case ignored, following renames. Null when unknown.
const ParItem* param_row_by_name(QZenv env, const char* name);
// 4, 8 or 0 for a parameter, the information key's type for other keys, -1 when unknown.
int param_data_type(int key);

// Current value of a row of a target as text in the form the parameter files use.
std::string param_value_text(const ParItem& item);

}  // namespace zento
