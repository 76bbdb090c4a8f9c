// String-to-index table of the file readers. Names are kept in a pool with an offset per
// index, the layout of the model's name pools, so that a reader hands the pool over whole.
//
// Chained hashing over a prime bucket count; nodes live in one int array, three ints a node
// (index, value, next node or -1), buckets hold the first node or -1.
#pragma once

#include <cstdint>
#include <vector>

#include "core/model.h"

namespace zento::io {

struct HashTable {
  int nCount = 0;
  int nBuckets = 0;
  int lastBucket = -1;
  int lastNode = -1;  // tail of the chain the last lookup walked
  NamePool names;     // pool and offsets, index order
  std::vector<int> buckets;
  std::vector<int> nodes;
  bool initialized = false;
};

// Sizes the table for about `nSize` names. A table that holds names already gives
// QZERR_INTERNAL_ERROR.
[[nodiscard]] int HashTable_Initialize(HashTable& t, int nSize);
// The new dense index of `name`, or -1 when the name is there already.
int HashTable_Insert(HashTable& t, const char* name);
// The index of `name`, or -1.
int HashTable_Lookup(HashTable& t, const char* name);
uint64_t HashTable_Hash(const char* name);
const char* HashTable_Name(const HashTable& t, int index);
// Releases everything; the table may be initialized again.
void HashTable_Delete(HashTable& t);
// Forgets the names but keeps the sizes.
void QZclearHashTable(HashTable& t);

// Bucket count for a requested size: the first listed prime not below it.
int hash_bucket_count(int nSize);

}  // namespace zento::io
