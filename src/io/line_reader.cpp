// Lines out of blocks.
#include "io/line_reader.h"

#include <algorithm>
#include <cstring>

namespace zento::io {

namespace {
constexpr size_t kBlockBytes = 0x280000;
// Small files are read through a small first block; the full block comes with the first file
// that fills it.
constexpr size_t kFirstBlockBytes = 0x10000;
// Inputs larger than this are read again from the stream at a rewind.
constexpr size_t kKeepLimit = size_t{256} << 20;
}

LineReader::LineReader(Stream* s, const char* commentChars) : s_(s), comment_(commentChars) {}

bool LineReader::fill() {
  if (eof_) return false;
  if (buf_.empty()) buf_.resize(kFirstBlockBytes + 1);
  size_t cap = buf_.size() - 1;
  pos_ = 0;
  fill_ = qzs_fread(buf_.data(), 1, cap, s_);
  if (fill_ == cap && cap < kBlockBytes) {
    buf_.resize(kBlockBytes + 1);
    cap = kBlockBytes;
    fill_ += qzs_fread(buf_.data() + fill_, 1, cap - fill_, s_);
  }
  if (qzs_ioerr(s_)) readFailed_ = true;
  if (fill_ < cap) eof_ = true;
  if (collecting_) {
    if (readFailed_ || kept_.size() + fill_ > kKeepLimit) {
      collecting_ = false;
      too_big_ = !readFailed_;
      std::vector<char>().swap(kept_);
    } else {
      kept_.insert(kept_.end(), buf_.data(), buf_.data() + fill_);
    }
  }
  return fill_ > 0;
}

bool LineReader::rewind() {
  line_ = 0;
  if (!memory_ && collecting_ && eof_ && !readFailed_) {
    // A pass went to the end: from now on the input is the kept copy.
    buf_.swap(kept_);
    std::vector<char>().swap(kept_);
    collecting_ = false;
    memory_ = true;
  }
  if (memory_) {
    pos_ = 0;
    fill_ = buf_.size();
    eof_ = true;
    return true;
  }
  // A pass that stopped short: its partial copy is of no use; the next pass collects anew.
  std::vector<char>().swap(kept_);
  collecting_ = keep_ && !too_big_ && !readFailed_;
  if (qzs_rewind(s_) != 0) return false;
  pos_ = fill_ = 0;
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
    const char* start = buf_.data() + pos_;
    const size_t avail = fill_ - pos_;
    const char* nl = static_cast<const char*>(std::memchr(start, '\n', avail));
    const size_t n = nl ? static_cast<size_t>(nl - start) : avail;
    any = true;
    // Three simple passes instead of one with a branch per byte: control bytes (a carriage
    // return counts as a blank), the last non-blank, and the copy of the kept head.
    const unsigned char* u = reinterpret_cast<const unsigned char*>(start);
    unsigned ctl = 0;  // bitwise, so that the loop vectorizes
    for (size_t k = 0; k < n; ++k) {
      const unsigned c = u[k];
      ctl |= (static_cast<unsigned>(c < 32) & static_cast<unsigned>(c != '\t') &
              static_cast<unsigned>(c != '\r')) |
             static_cast<unsigned>(c == 127);
    }
    if (ctl != 0) out.hasControl = true;
    size_t last = n;
    while (last > 0 && (u[last - 1] == ' ' || u[last - 1] == '\t' || u[last - 1] == '\r')) --last;
    if (last > 0) out.fullLen = length + static_cast<long long>(last);
    length += static_cast<long long>(n);
    const size_t room = out.len <= kMaxLineBytes ? static_cast<size_t>(kMaxLineBytes + 1 - out.len) : 0;
    const size_t take = std::min(n, room);
    for (size_t k = 0; k < take; ++k) out.text[out.len + k] = start[k] == '\r' ? ' ' : start[k];
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
