// Line pool: moving, compaction and growth.
#include "lp/factor/line_store.h"

#include <algorithm>
#include <climits>
#include <new>

namespace zento::lu {

void LineStore::init(int nlines, int64_t cap, bool with_values, int growth) {
  has_val_ = with_values;
  growth_ = growth < 2 ? 5 : growth;
  cap = std::min<int64_t>(std::max<int64_t>({cap, 16, capacity()}), INT_MAX);
  start_.assign(nlines, 0);
  len_.assign(nlines, 0);
  room_.assign(nlines, 0);
  prev_.assign(nlines, -1);
  next_.assign(nlines, -1);
  idx_.resize(cap);
  if (has_val_) val_.resize(cap);
  head_ = tail_ = -1;
  end_ = 0;
  nnz_ = 0;
  // Empty lines start unlinked with no room; each joins the pool order on first growth.
}

bool LineStore::layout(const int* lens, int slack) {
  int64_t pos = 0;
  const int nl = nlines();
  for (int l = 0; l < nl; ++l) pos += lens[l] + slack;
  if (pos > INT_MAX) return false;
  if (pos > capacity()) {
    idx_.resize(pos);
    if (has_val_) val_.resize(pos);
  }
  pos = 0;
  head_ = nl > 0 ? 0 : -1;
  tail_ = nl - 1;
  for (int l = 0; l < nl; ++l) {
    start_[l] = static_cast<int>(pos);
    len_[l] = 0;
    room_[l] = lens[l] + slack;
    prev_[l] = l - 1;
    next_[l] = l + 1 < nl ? l + 1 : -1;
    pos += room_[l];
  }
  end_ = pos;
  nnz_ = 0;
  return true;
}

void LineStore::unlink(int l) {
  const int p = prev_[l], n = next_[l];
  if (n < 0) {
    tail_ = p;
    end_ = start_[l];  // the tail's space returns to the free end
  } else {
    prev_[n] = p;
    if (p >= 0) room_[p] += room_[l];  // space before the head is lost until compaction
  }
  if (p >= 0)
    next_[p] = n;
  else
    head_ = n;
  prev_[l] = next_[l] = -1;
  room_[l] = 0;
}

void LineStore::link_last(int l) {
  prev_[l] = tail_;
  next_[l] = -1;
  if (tail_ >= 0)
    next_[tail_] = l;
  else
    head_ = l;
  tail_ = l;
}

void LineStore::compact(int slack) {
  int64_t pos = 0;
  for (int l = head_; l >= 0; l = next_[l]) {
    const int s = start_[l], n = len_[l];
    if (s != pos) {
      std::copy(idx_.begin() + s, idx_.begin() + s + n, idx_.begin() + pos);
      if (has_val_) std::copy(val_.begin() + s, val_.begin() + s + n, val_.begin() + pos);
      start_[l] = static_cast<int>(pos);
    }
    int64_t r = n + slack;
    if (pos + r > capacity()) r = n;
    room_[l] = static_cast<int>(r);
    pos += r;
  }
  end_ = pos;
}

bool LineStore::reserve(int l, int extra) {
  const int64_t need = static_cast<int64_t>(len_[l]) + extra;
  if (need <= room_[l]) return true;
  const int64_t want = need + (need >> 2) + 4;
  const int64_t cap = capacity();
  if (l == tail_ && start_[l] + need <= cap) {
    room_[l] = static_cast<int>(std::min<int64_t>(want, cap - start_[l]));
    end_ = start_[l] + room_[l];
    return true;
  }
  const bool linked = prev_[l] >= 0 || head_ == l;
  if (end_ + want > cap) {
    // Keep the line aside, pack the others, grow if packing did not free a quarter.
    tmp_idx_.assign(idx_.begin() + start_[l], idx_.begin() + start_[l] + len_[l]);
    if (has_val_) tmp_val_.assign(val_.begin() + start_[l], val_.begin() + start_[l] + len_[l]);
    if (linked) unlink(l);
    compact(0);
    if (end_ + want > cap - cap / 4) {
      int64_t ncap = std::max<int64_t>(cap * growth_, end_ + want + 16);
      if (ncap > INT_MAX) ncap = INT_MAX;
      if (end_ + want > ncap) return false;
      try {
        idx_.resize(ncap);
        if (has_val_) val_.resize(ncap);
      } catch (const std::bad_alloc&) {
        return false;
      }
    }
    std::copy(tmp_idx_.begin(), tmp_idx_.end(), idx_.begin() + end_);
    if (has_val_) std::copy(tmp_val_.begin(), tmp_val_.end(), val_.begin() + end_);
  } else {
    std::copy(idx_.begin() + start_[l], idx_.begin() + start_[l] + len_[l], idx_.begin() + end_);
    if (has_val_)
      std::copy(val_.begin() + start_[l], val_.begin() + start_[l] + len_[l],
                val_.begin() + end_);
    if (linked) unlink(l);
  }
  start_[l] = static_cast<int>(end_);
  link_last(l);
  room_[l] = static_cast<int>(std::min<int64_t>(want, capacity() - end_));
  end_ += room_[l];
  return true;
}

}  // namespace zento::lu
