// `key_lookup`: the names of the information keys, and the type each name implies.
#include <algorithm>
#include <array>
#include <cstring>

#include "core/info.h"

namespace zento {

namespace {

constexpr KeyRow kKeyLookup[] = {
#define QZ_INFO_KEY(name) {name, #name},
#include "core/info_keys.inc"
#undef QZ_INFO_KEY
};

constexpr size_t kKeyCount = sizeof kKeyLookup / sizeof kKeyLookup[0];

// The rows ordered by key for lookups from the solvers' hot paths.
constexpr std::array<KeyRow, kKeyCount> sorted_rows() {
  std::array<KeyRow, kKeyCount> rows{};
  for (size_t i = 0; i < kKeyCount; ++i) rows[i] = kKeyLookup[i];
  std::sort(rows.begin(), rows.end(), [](const KeyRow& a, const KeyRow& b) { return a.key < b.key; });
  return rows;
}

constexpr std::array<KeyRow, kKeyCount> kByKey = sorted_rows();

constexpr bool names_fit() {
  for (const KeyRow& r : kKeyLookup)
    if (std::char_traits<char>::length(r.name) > static_cast<size_t>(kKeyNameWidth)) return false;
  return true;
}
static_assert(names_fit(), "key names are at most 60 characters");

constexpr bool keys_unique() {
  for (size_t i = 1; i < kKeyCount; ++i)
    if (kByKey[i - 1].key == kByKey[i].key) return false;
  return true;
}
static_assert(keys_unique(), "every key has one name");

}  // namespace

std::span<const KeyRow> key_lookup() { return {kKeyLookup, kKeyCount}; }

const char* key_name(int key) {
  const auto it = std::lower_bound(kByKey.begin(), kByKey.end(), key,
                                   [](const KeyRow& r, int k) { return r.key < k; });
  return it != kByKey.end() && it->key == key ? it->name : nullptr;
}

KeyType key_type_of_name(std::string_view name) {
  if (name.find("IINFO") != std::string_view::npos) return KeyType::kInt;
  if (name.find("DINFO") != std::string_view::npos) return KeyType::kDouble;
  if (name.find("SINFO") != std::string_view::npos) return KeyType::kString;
  if (name.find("IPARAM") != std::string_view::npos) return KeyType::kInt;
  if (name.find("DPARAM") != std::string_view::npos) return KeyType::kDouble;
  return KeyType::kUnknown;
}

KeyType key_type(int key) {
  const char* name = key_name(key);
  return name ? key_type_of_name(name) : KeyType::kUnknown;
}

int key_by_name(std::string_view name) {
  const std::string_view probe = name.substr(0, std::min<size_t>(name.size(), kKeyNameWidth));
  for (const KeyRow& r : kKeyLookup)
    if (probe == std::string_view(r.name)) return r.key;
  return -1;
}

}  // namespace zento
