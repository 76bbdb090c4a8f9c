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
  WordScan(const char* text, int len) : len_(len) {
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
  }

  // The first non-blank at or after k, or the length.
  int next_word(int k) const { return next(k, 0); }
  // The first blank at or after k, or the length.
  int word_end(int k) const { return next(k, ~uint64_t{0}); }

 private:
  static constexpr int kWords = 5;  // 320 bits cover the longest kept line

  int next(int k, uint64_t flip) const {
    if (k >= len_) return len_;
    int w = k >> 6;
    uint64_t m = (bits_[w] ^ flip) & (~uint64_t{0} << (k & 63));
    while (m == 0) {
      if (++w >= kWords || 64 * w >= len_) return len_;
      m = bits_[w] ^ flip;
    }
    const int at = 64 * w + __builtin_ctzll(m);
    return at < len_ ? at : len_;
  }

  uint64_t bits_[kWords];
  int len_;
};

}  // namespace zento::io
