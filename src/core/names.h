// Name lookups of rows, columns and cones.
#pragma once

#include <string>

#include "core/model.h"

namespace zento {

enum class NameKind { kRow, kColumn, kCone };

// Index of a name through a hash table built on first use; names of length 0 are not
// entered, and of repeated names the first counts.
int find_name_index(Imodel& m, NameKind kind, const char* name, int* pnIndex);

// Names for writers and reports: the loaded name, or "C%07d" / "R%07d" with the index.
std::string QZI_getVariableNamej(const Imodel& m, int j);
std::string QZI_getConstraintNamei(const Imodel& m, int i);

}  // namespace zento
