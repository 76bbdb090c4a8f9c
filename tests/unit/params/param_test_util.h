// Helpers of the parameter tests: the registry rows as test cases and the values to try.
#pragma once

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "core/params/registry.h"
#include "zento.h"
#include "../common/env_fixture.h"

namespace zento::test {

inline std::vector<ParItem> registry_rows() {
  return std::vector<ParItem>(parlist(), parlist() + parlist_count());
}

inline bool is_reserved(const ParItem& r) { return r.xxx_class == QZ_PARCLASS_NOTIMPL; }
inline bool is_read_only(const ParItem& r) { return (r.xxx_flags & kParReadOnly) != 0; }
inline bool is_string(const ParItem& r) { return r.xxx_type == QZ_STRING_PARAMETER_TYPE; }
inline bool settable_at(const ParItem& r, int level) {
  return !is_reserved(r) && !is_read_only(r) && (r.xxx_class & level) != 0;
}

// Values a row accepts: representable in its type and inside its range.
inline bool representable(const ParItem& r, double v) {
  if (std::isnan(v)) return false;
  if (r.xxx_type == QZ_INT_PARAMETER_TYPE)
    return v == std::floor(v) && v >= INT_MIN && v <= INT_MAX;
  return true;
}

// A value inside the range that differs from the default, if the range has one.
inline std::optional<double> other_value(const ParItem& r) {
  if (r.xxx_id == QZ_IPARAM_OBJSENSE) return QZ_MAX;  // 0 lies in the range but is no sense
  const double dfl = r.xxx_dfl;
  const double cands[] = {dfl + 1, dfl - 1, r.xxx_max, r.xxx_min, (r.xxx_min + r.xxx_max) / 2,
                          dfl * 2, dfl / 2};
  for (double v : cands)
    if (representable(r, v) && v >= r.xxx_min && v <= r.xxx_max && v != dfl &&
        v != param_block_default(r.xxx_id))
      return v;
  return std::nullopt;
}

// Values outside the range that the row must refuse. Limits take any negative value as "no
// limit", so they have nothing below their range; the defaults are always accepted.
inline std::vector<double> outside_values(const ParItem& r) {
  std::vector<double> out;
  const bool isInt = r.xxx_type == QZ_INT_PARAMETER_TYPE;
  const double above = isInt ? r.xxx_max + 1 : (r.xxx_max >= 1e30 ? 2e30 : r.xxx_max * 2 + 1);
  const double below = isInt ? r.xxx_min - 1 : (r.xxx_min <= -1e30 ? -2e30 : r.xxx_min - 1);
  for (double v : {above, below}) {
    if (!representable(r, v)) continue;
    if ((r.xxx_flags & kParLimit) && v < 0) continue;
    if (v == r.xxx_dfl || v == param_block_default(r.xxx_id)) continue;
    if (v >= r.xxx_min && v <= r.xxx_max) continue;
    out.push_back(v);
  }
  if (!isInt) out.push_back(std::nan(""));
  return out;
}

inline std::string mixed_case(const char* name) {
  std::string s(name);
  for (size_t i = 0; i < s.size(); i += 2) s[i] = static_cast<char>(std::tolower(s[i]));
  return s;
}

// The current values of every row of a target, for "nothing changed" checks.
inline std::vector<double> snapshot(const std::vector<ParItem>& items) {
  std::vector<double> v;
  for (const ParItem& it : items) v.push_back(par_value(it));
  return v;
}


}  // namespace zento::test
