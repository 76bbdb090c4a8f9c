// Block-buffered line reader shared by the text readers: it reads the input in blocks of
// 2.5 MB, cuts lines at newlines, counts every line, and passes blank lines and comment lines
// over.
#pragma once

#include <memory>
#include <vector>

#include "io/stream.h"

namespace zento::io {

constexpr int kMaxLineBytes = 255;  // longer data lines are refused by the readers

struct RawLine {
  char text[kMaxLineBytes + 2] = {};  // the line as read, at most 256 bytes, zero-terminated
  int len = 0;                        // bytes in text
  long long fullLen = 0;              // length of the line without its trailing blanks
  bool hasControl = false;            // a zero byte or another control character
};

class LineReader {
 public:
  // `commentChars` lists the first bytes that make a line a comment.
  explicit LineReader(Stream* s, const char* commentChars = "*");

  // The next line that is neither blank nor a comment; false at the end of the input.
  // A last line without a newline counts as a line.
  bool next(RawLine& out);
  // Number of the line last returned, from 1; lines passed over count.
  int line_number() const { return line_; }
  bool read_failed() const { return readFailed_; }
  // Starts again at the first byte.
  bool rewind();
  // Keeps the bytes of the first pass (up to a limit) so that a rewind reads them from memory
  // instead of the stream: a reader that passes over a compressed file three times inflates
  // it once.
  void keep_for_rewind() { keep_ = collecting_ = true; }

 private:
  bool fill();
  bool take_line(RawLine& out);

  struct Block {
    std::unique_ptr<char[]> bytes;  // not zeroed: only the bytes read are looked at
    size_t cap = 0, size = 0;
  };
  Block& block_for_reading(size_t cap);

  Stream* s_;
  const char* comment_;
  Block block_;                 // the block in use when the input is not kept
  std::vector<Block> kept_;     // the input of this pass, block by block, while collecting
  size_t keptBytes_ = 0;
  size_t nextKept_ = 0;         // from memory: the next kept block
  size_t blocksRead_ = 0;       // blocks read in this pass
  const char* data_ = nullptr;  // bytes of the current block
  size_t pos_ = 0, fill_ = 0;
  bool eof_ = false;
  bool readFailed_ = false;
  int line_ = 0;
  bool keep_ = false;        // asked to keep the input for rewinds
  bool collecting_ = false;  // this pass keeps its blocks in kept_
  bool too_big_ = false;     // the input passed the limit: nothing more is kept
  bool memory_ = false;      // kept_ holds the whole input and is read from
};

}  // namespace zento::io
