// The readers' name table.
#include "io/hashtable.h"

#include <algorithm>
#include <cstring>

#include "zento.h"

namespace zento::io {

namespace {

constexpr int kPrimes[] = {29,      229,     883,     1671,    2791,    4801,    8629,
                           15289,   25303,   34843,   65269,   99709,   129403,  147673,
                           166669,  201403,  222163,  242729,  261431,  303491,  320237,
                           402761,  501131,  602309,  701507,  800999,  900551,  1000619,
                           1100837, 1200359, 1500007, 2000003, 3000017, 4000037, 4500007,
                           5000011, 6000011, 7000003, 8000009, 9000011, 9999991};

// Buckets are chosen by FNV-1a, which spreads short names with common stems better than the
// folding hash above and costs less a byte.
int bucket_of(const HashTable& t, const char* name) {
  uint64_t h = 14695981039346656037ULL;
  for (const unsigned char* p = reinterpret_cast<const unsigned char*>(name); *p != 0; ++p)
    h = (h ^ *p) * 1099511628211ULL;
  return static_cast<int>(h % static_cast<uint64_t>(t.nBuckets));
}

}  // namespace

int hash_bucket_count(int nSize) {
  for (int p : kPrimes)
    if (p >= nSize) return p;
  return kPrimes[std::size(kPrimes) - 1];
}

uint64_t HashTable_Hash(const char* name) {
  uint64_t h = 0;
  for (const char* p = name; *p != '\0'; ++p) {
    h = (h << 4) + static_cast<uint64_t>(static_cast<int64_t>(static_cast<signed char>(*p)));
    const uint64_t g = h & 0xF0000000ULL;
    if (g != 0) {
      h ^= g >> 24;
      h &= ~g;
    }
  }
  return h;
}

int HashTable_Initialize(HashTable& t, int nSize) {
  if (!t.names.pool.empty()) return QZERR_INTERNAL_ERROR;
  if (nSize < 1) nSize = 1;
  t.nBuckets = hash_bucket_count(nSize);
  t.buckets.assign(static_cast<size_t>(t.nBuckets), -1);
  const int nodeCap = std::min(nSize, (nSize + 1) / 10 + 1000);
  t.nodes.clear();
  t.nodes.reserve(static_cast<size_t>(nodeCap) * 3);
  t.names.offset.clear();
  t.names.offset.reserve(static_cast<size_t>(std::min(t.nBuckets, nSize)));
  t.names.pool.reserve(static_cast<size_t>(std::min(t.nBuckets, nSize)) * 8);
  t.nCount = 0;
  t.lastBucket = t.lastNode = -1;
  t.initialized = true;
  return 0;
}

int HashTable_Lookup(HashTable& t, const char* name) {
  if (!t.initialized) return -1;
  t.lastBucket = bucket_of(t, name);
  t.lastNode = -1;
  for (int node = t.buckets[t.lastBucket]; node != -1; node = t.nodes[3 * node + 2]) {
    const int index = t.nodes[3 * node];
    if (std::strcmp(t.names.name(index), name) == 0) return t.nodes[3 * node + 1];
    t.lastNode = node;
  }
  return -1;
}

namespace {

// Spreads the chains over more buckets once they average more than one node. Chains keep
// their insertion order, so lookups find what they found before.
void grow(HashTable& t) {
  const int want = hash_bucket_count(t.nCount < INT32_MAX / 4 ? 4 * t.nCount : INT32_MAX);
  if (want <= t.nBuckets) return;
  t.nBuckets = want;
  t.buckets.assign(static_cast<size_t>(want), -1);
  std::vector<int> tail(static_cast<size_t>(want), -1);
  const int nNodes = static_cast<int>(t.nodes.size() / 3);
  for (int node = 0; node < nNodes; ++node) {
    const int b = bucket_of(t, t.names.name(t.nodes[3 * node]));
    t.nodes[3 * node + 2] = -1;
    if (tail[b] == -1)
      t.buckets[b] = node;
    else
      t.nodes[3 * tail[b] + 2] = node;
    tail[b] = node;
  }
}

}  // namespace

int HashTable_Insert(HashTable& t, const char* name) {
  if (!t.initialized && HashTable_Initialize(t, 1000) != 0) return -1;
  if (t.nCount >= t.nBuckets) grow(t);
  if (HashTable_Lookup(t, name) != -1) return -1;
  const int index = t.nCount;
  const size_t len = std::strlen(name);
  if (t.names.pool.size() + len + 1 > static_cast<size_t>(INT32_MAX)) throw std::bad_alloc();
  if (t.nodes.size() == t.nodes.capacity())
    t.nodes.reserve(t.nodes.capacity() + 3 * (t.nodes.capacity() / 30 + 100000));
  t.names.offset.push_back(static_cast<int>(t.names.pool.size()));
  t.names.pool.insert(t.names.pool.end(), name, name + len + 1);
  const int node = static_cast<int>(t.nodes.size() / 3);
  t.nodes.push_back(index);
  t.nodes.push_back(index);
  t.nodes.push_back(-1);
  if (t.lastNode == -1)
    t.buckets[t.lastBucket] = node;
  else
    t.nodes[3 * t.lastNode + 2] = node;
  t.lastNode = node;
  ++t.nCount;
  return index;
}

const char* HashTable_Name(const HashTable& t, int index) { return t.names.name(index); }

void HashTable_Delete(HashTable& t) { t = HashTable{}; }

void QZclearHashTable(HashTable& t) {
  std::fill(t.buckets.begin(), t.buckets.end(), -1);
  t.nodes.clear();
  t.names.pool.clear();
  t.names.offset.clear();
  t.nCount = 0;
  t.lastBucket = t.lastNode = -1;
}

}  // namespace zento::io
