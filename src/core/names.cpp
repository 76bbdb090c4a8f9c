// Lazy name hashes and default names (also for names left empty).
#include "core/names.h"

#include <cstdio>

namespace zento {

namespace {

std::unique_ptr<std::unordered_map<std::string, int>> build(const NamePool& p) {
  auto table = std::make_unique<std::unordered_map<std::string, int>>();
  table->reserve(p.offset.size());
  for (size_t i = 0; i < p.offset.size(); ++i) {
    const char* s = p.name(static_cast<int>(i));
    if (*s != '\0') table->emplace(s, static_cast<int>(i));
  }
  return table;
}

}  // namespace

int find_name_index(Imodel& m, NameKind kind, const char* name, int* pnIndex) {
  *pnIndex = -1;
  const NamePool* pool = nullptr;
  std::unique_ptr<std::unordered_map<std::string, int>>* slot = nullptr;
  int notFound = QZERR_COLUMN_TOKEN_NOT_FOUND;
  switch (kind) {
    case NameKind::kRow:
      pool = &m.names.rows;
      slot = &m.nameHash.rows;
      notFound = QZERR_ROW_TOKEN_NOT_FOUND;
      break;
    case NameKind::kColumn:
      pool = &m.names.cols;
      slot = &m.nameHash.cols;
      break;
    case NameKind::kCone:
      pool = &m.names.cones;
      slot = &m.nameHash.cones;
      notFound = QZERR_NAME_TOKEN_NOT_FOUND;
      break;
  }
  if (pool->empty()) return notFound;
  if (!*slot) *slot = build(*pool);
  auto it = (*slot)->find(name);
  if (it == (*slot)->end()) return notFound;
  *pnIndex = it->second;
  return 0;
}

std::string QZI_getVariableNamej(const Imodel& m, int j) {
  if (!m.names.cols.empty() && *m.names.cols.name(j) != '\0') return m.names.cols.name(j);
  char buf[32];
  std::snprintf(buf, sizeof buf, "C%07d", j);
  return buf;
}

std::string QZI_getConstraintNamei(const Imodel& m, int i) {
  if (!m.names.rows.empty() && *m.names.rows.name(i) != '\0') return m.names.rows.name(i);
  char buf[32];
  std::snprintf(buf, sizeof buf, "R%07d", i);
  return buf;
}

}  // namespace zento
