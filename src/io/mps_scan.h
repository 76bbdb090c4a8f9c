// Word boundaries of a line from a bit mask of its non-blank bytes.
//
// The tokenizers of the MPS reader look at every byte of every line at least once; building
// the mask sixteen bytes at a time and walking its runs with bit scans makes the cost follow
// the number of words instead of the number of bytes, which matters for aligned files whose
// lines are mostly padding.
#pragma once

#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zento::io {

class WordScan {
 public:
  // `text` must be readable up to `len` rounded up to 16 bytes (a RawLine is).
  WordScan(const char* text, int len) {
    const int chunks = (len + 15) / 16;
    std::memset(bits_, 0, sizeof bits_);
#if defined(__SSE2__)
    const __m128i space = _mm_set1_epi8(' ');
    const __m128i tab = _mm_set1_epi8('\t');
    for (int c = 0; c < chunks; ++c) {
      const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + 16 * c));
      const __m128i blank = _mm_or_si128(_mm_cmpeq_epi8(v, space), _mm_cmpeq_epi8(v, tab));
      const uint64_t m = static_cast<uint16_t>(~_mm_movemask_epi8(blank));
      bits_[c >> 2] |= m << (16 * (c & 3));
    }
#else
    for (int k = 0; k < 16 * chunks; ++k)
      if (text[k] != ' ' && text[k] != '\t') bits_[k >> 6] |= uint64_t{1} << (k & 63);
#endif
    if ((len & 63) != 0) bits_[len >> 6] &= (uint64_t{1} << (len & 63)) - 1;
    nWords_ = (len + 63) / 64;
    startBits_ = nWords_ > 0 ? starts(0) : 0;
    endBits_ = nWords_ > 0 ? ends(0) : 0;
  }

  // The next word from the start of the line on: its first byte and the byte behind it.
  // False when there are no more.
  bool next(int* start, int* end) {
    while (startBits_ == 0) {
      if (++startWord_ >= nWords_) return false;
      startBits_ = starts(startWord_);
    }
    while (endBits_ == 0) endBits_ = ends(++endWord_);
    *start = 64 * startWord_ + __builtin_ctzll(startBits_);
    *end = 64 * endWord_ + __builtin_ctzll(endBits_) + 1;
    startBits_ &= startBits_ - 1;
    endBits_ &= endBits_ - 1;
    return true;
  }

 private:
  static constexpr int kWords = 5;  // 320 bits cover the longest kept line

  // Bytes that begin a word and bytes that end one, as masks of 64-bit word w.
  uint64_t starts(int w) const {
    const uint64_t before = w > 0 ? bits_[w - 1] >> 63 : 0;
    return bits_[w] & ~((bits_[w] << 1) | before);
  }
  uint64_t ends(int w) const {
    const uint64_t after = w + 1 < kWords ? bits_[w + 1] << 63 : 0;
    return bits_[w] & ~((bits_[w] >> 1) | after);
  }
  uint64_t bits_[kWords];
  int nWords_ = 0, startWord_ = 0, endWord_ = 0;
  uint64_t startBits_ = 0, endBits_ = 0;
};

}  // namespace zento::io
