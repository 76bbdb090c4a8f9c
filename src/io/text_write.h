// Pieces shared by the text writers: a buffered writer over the stream layer, the row view of
// the matrix, and the number and name texts of the ZENTO format.
#pragma once

#include <string>
#include <vector>

#include "core/model.h"
#include "io/stream.h"

namespace zento::io {

class TextWriter {
 public:
  [[nodiscard]] int open(QZenv env, const char* fname);
  void put(const char* fmt, ...) __attribute__((format(__printf__, 2, 3)));
  // 0, or QZERR_CANNOT_OPEN_FILE when some output could not be written.
  [[nodiscard]] int close();

 private:
  bool flush();
  StreamPtr s_;
  std::string buf_;
  bool failed_ = false;
};

struct RowView {
  std::vector<int> beg, col;
  std::vector<double> val;
};
RowView row_view(const Imodel& m);

// "%+.16f" without trailing zeros behind the point, or the shortest exact fixed text.
std::string ltx_number(double v);
// Unique names of rows or columns that both ZENTO readers read back.
std::vector<std::string> ltx_names(const Imodel& m, bool rows);

}  // namespace zento::io
