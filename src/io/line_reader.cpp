// Lines out of blocks.
#include "io/line_reader.h"

#include <algorithm>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zento::io {

namespace {
constexpr size_t kBlockBytes = 0x280000;
// A pass reads a small first block, so that small files take little memory, then full ones.
constexpr size_t kFirstBlockBytes = 0x10000;
// Inputs larger than this are read again from the stream at a rewind.
constexpr size_t kKeepLimit = size_t{256} << 20;

// Whether the bytes hold a control byte: one below 32 other than tab and carriage return
// (which counts as a blank), or 127.
bool has_control(const unsigned char* u, size_t n) {
  size_t k = 0;
  unsigned ctl = 0;
#if defined(__SSE2__)
  const __m128i top = _mm_set1_epi8(31);
  const __m128i tab = _mm_set1_epi8('\t');
  const __m128i cr = _mm_set1_epi8('\r');
  const __m128i del = _mm_set1_epi8(127);
  auto chunk = [&](const unsigned char* at) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    const __m128i low = _mm_cmpeq_epi8(_mm_min_epu8(v, top), v);
    const __m128i allowed = _mm_or_si128(_mm_cmpeq_epi8(v, tab), _mm_cmpeq_epi8(v, cr));
    const __m128i bad = _mm_or_si128(_mm_andnot_si128(allowed, low), _mm_cmpeq_epi8(v, del));
    ctl |= static_cast<unsigned>(_mm_movemask_epi8(bad));
  };
  for (; k + 16 <= n; k += 16) chunk(u + k);
  // The rest as the last sixteen bytes, which overlap bytes seen already.
  if (k < n && n >= 16) {
    chunk(u + n - 16);
    k = n;
  }
#endif
  for (; k < n; ++k) {
    const unsigned c = u[k];
    ctl |= (static_cast<unsigned>(c < 32) & static_cast<unsigned>(c != '\t') &
            static_cast<unsigned>(c != '\r')) |
           static_cast<unsigned>(c == 127);
  }
  return ctl != 0;
}

}  // namespace

LineReader::LineReader(Stream* s, const char* commentChars) : s_(s), comment_(commentChars) {}

LineReader::Block& LineReader::block_for_reading(size_t cap) {
  Block* b = &block_;
  if (collecting_) {
    kept_.emplace_back();
    b = &kept_.back();
  }
  if (b->cap != cap) {
    b->bytes.reset(new char[cap]);
    b->cap = cap;
  }
  return *b;
}

// Leaves the position alone when there is nothing more: the caller may be at the end of the
// last block.
bool LineReader::fill() {
  if (memory_) {
    if (nextKept_ >= kept_.size()) {
      eof_ = true;
      return false;
    }
    pos_ = 0;
    const Block& b = kept_[nextKept_++];
    data_ = b.bytes.get();
    fill_ = b.size;
    return fill_ > 0;
  }
  if (eof_) return false;
  pos_ = 0;
  const size_t cap = blocksRead_++ == 0 ? kFirstBlockBytes : kBlockBytes;
  Block& b = block_for_reading(cap);
  fill_ = b.size = qzs_fread(b.bytes.get(), 1, cap, s_);
  data_ = b.bytes.get();
  if (qzs_ioerr(s_)) readFailed_ = true;
  if (fill_ < cap) eof_ = true;
  if (collecting_) {
    keptBytes_ += fill_;
    if (readFailed_ || keptBytes_ > kKeepLimit) {
      // Nothing more is kept; the block just read goes on as the working block.
      collecting_ = false;
      too_big_ = !readFailed_;
      block_ = std::move(kept_.back());
      data_ = block_.bytes.get();
      std::vector<Block>().swap(kept_);
      keptBytes_ = 0;
    }
  }
  return fill_ > 0;
}

bool LineReader::rewind() {
  line_ = 0;
  pos_ = fill_ = 0;
  if (!memory_ && collecting_ && eof_ && !readFailed_) {
    // A pass went to the end: from now on the input is the kept blocks.
    collecting_ = false;
    memory_ = true;
    block_ = Block{};
  }
  if (memory_) {
    nextKept_ = 0;
    eof_ = false;
    return true;
  }
  // A pass that stopped short: its partial copy is of no use; the next pass collects anew.
  std::vector<Block>().swap(kept_);
  keptBytes_ = 0;
  collecting_ = keep_ && !too_big_ && !readFailed_;
  if (qzs_rewind(s_) != 0) return false;
  blocksRead_ = 0;
  eof_ = false;
  return true;
}

// One physical line: keeps its first bytes, measures it, and notes control bytes. A line
// that runs past the block continues in the next block.
bool LineReader::take_line(RawLine& out) {
  if (pos_ == fill_ && !fill()) return false;
  out.len = 0;
  out.fullLen = 0;
  out.hasControl = false;
  long long length = 0;
  bool any = false;
  for (;;) {
    if (pos_ == fill_ && !fill()) break;
    const char* start = data_ + pos_;
    const size_t avail = fill_ - pos_;
    const char* nl = static_cast<const char*>(std::memchr(start, '\n', avail));
    const size_t n = nl ? static_cast<size_t>(nl - start) : avail;
    any = true;
    // Three simple passes instead of one with a branch per byte: control bytes (a carriage
    // return counts as a blank), the last non-blank, and the copy of the kept head.
    const unsigned char* u = reinterpret_cast<const unsigned char*>(start);
    if (has_control(u, n)) out.hasControl = true;
    size_t last = n;
    while (last > 0 && (u[last - 1] == ' ' || u[last - 1] == '\t' || u[last - 1] == '\r')) --last;
    if (last > 0) out.fullLen = length + static_cast<long long>(last);
    length += static_cast<long long>(n);
    const size_t room = out.len <= kMaxLineBytes ? static_cast<size_t>(kMaxLineBytes + 1 - out.len) : 0;
    const size_t take = std::min(n, room);
    char* copy = out.text + out.len;
    std::memcpy(copy, start, take);
    for (char* q = copy; (q = static_cast<char*>(std::memchr(q, '\r', take - static_cast<size_t>(q - copy))));)
      *q++ = ' ';
    out.len += static_cast<int>(take);
    pos_ += n;
    if (nl) {
      ++pos_;
      break;
    }
  }
  if (!any) return false;
  out.text[out.len] = '\0';
  ++line_;
  return true;
}

bool LineReader::next(RawLine& out) {
  while (take_line(out)) {
    if (out.fullLen == 0) continue;
    if (out.text[0] != '\0' && std::strchr(comment_, out.text[0]) != nullptr) continue;
    return true;
  }
  return false;
}

}  // namespace zento::io
