// Pool of sparse lines (rows or columns) with per-line start, length and room, kept in a
// doubly linked order by place in the pool. A line that must grow moves to the end of the pool;
// when the end is full the pool is compacted first and grown by a factor only if compaction
// did not free enough. Access to a line stays linear in its length.
#pragma once

#include <cstdint>
#include <vector>

namespace zento::lu {

class LineStore {
 public:
  // nlines empty lines, `cap` pool entries; values kept when `with_values`.
  void init(int nlines, int64_t cap, bool with_values, int growth);

  // Lays the lines out in order with lens[l] + slack room each, all empty. False when the pool
  // would exceed the int range.
  bool layout(const int* lens, int slack);

  int len(int l) const { return len_[l]; }
  int start(int l) const { return start_[l]; }
  int* idx(int l) { return idx_.data() + start_[l]; }
  const int* idx(int l) const { return idx_.data() + start_[l]; }
  double* val(int l) { return val_.data() + start_[l]; }
  const double* val(int l) const { return val_.data() + start_[l]; }
  int64_t nnz() const { return nnz_; }
  int64_t capacity() const { return static_cast<int64_t>(idx_.size()); }
  int nlines() const { return static_cast<int>(len_.size()); }

  // Makes room for `extra` more entries in line l (may move the line and compact the pool).
  // Returns false when the pool cannot grow (size beyond the int range or no memory).
  bool reserve(int l, int extra);
  // Appends with room already reserved.
  void push(int l, int i, double v) {
    const int p = start_[l] + len_[l]++;
    idx_[p] = i;
    if (has_val_) val_[p] = v;
    ++nnz_;
  }
  bool append(int l, int i, double v) {
    if (len_[l] >= room_[l] && !reserve(l, 1)) return false;
    push(l, i, v);
    return true;
  }
  // Removes the k-th entry of line l by moving the last one into its place.
  void remove_at(int l, int k) {
    const int s = start_[l];
    const int last = s + --len_[l];
    idx_[s + k] = idx_[last];
    if (has_val_) val_[s + k] = val_[last];
    --nnz_;
  }
  // Position of index i in line l, or -1.
  int find(int l, int i) const {
    const int* p = idx_.data() + start_[l];
    for (int k = 0, n = len_[l]; k < n; ++k)
      if (p[k] == i) return k;
    return -1;
  }
  bool remove(int l, int i) {
    const int k = find(l, i);
    if (k < 0) return false;
    remove_at(l, k);
    return true;
  }
  void clear(int l) {
    nnz_ -= len_[l];
    len_[l] = 0;
  }
  // Packs all lines to the front, each keeping `slack` free entries.
  void compact(int slack);

 private:
  void unlink(int l);
  void link_last(int l);

  std::vector<int> start_, len_, room_, prev_, next_;
  std::vector<int> idx_;
  std::vector<double> val_;
  std::vector<int> tmp_idx_;
  std::vector<double> tmp_val_;
  int head_ = -1, tail_ = -1;
  int64_t end_ = 0;  // first free entry after the tail line
  int64_t nnz_ = 0;
  bool has_val_ = true;
  int growth_ = 5;
};

}  // namespace zento::lu
