// The model under construction of the row-oriented text readers (LP, ZENTO and its grammar
// reader): the matrix by rows with the objective as row 0, the column name table, bounds and
// types, and the hand-over to the model once the text is read.
#pragma once

#include <cstdio>
#include <new>
#include <string>
#include <vector>

#include "core/errors.h"
#include "core/log.h"
#include "core/model.h"
#include "io/hashtable.h"
#include "io/stream.h"

namespace zento::io {

struct TextModel {
  explicit TextModel(Imodel& model);

  Imodel& m;
  HashTable cols;
  int sense = QZ_MIN;
  double objConst = 0.0;
  std::string title;

  // Rows: row 0 is the objective; row i > 0 is constraint i - 1.
  std::vector<int> rowBeg{0};
  std::vector<int> rowCol;
  std::vector<double> rowVal;
  std::vector<char> rowType;  // per constraint
  std::vector<double> rhs;    // per constraint
  NamePool rowNames;          // per constraint
  bool haveObjective = false;

  std::vector<double> lo, up;  // empty until a bound or a type needs them
  std::vector<char> type;      // empty until a type is set

  // The current row's terms and the scratch that sums repeated columns.
  std::vector<int> curCol;
  std::vector<double> curVal;
  std::vector<double> scratch;
  std::vector<int> scratchPos;

  int ncols() const { return cols.nCount; }
  int nrows() const { return static_cast<int>(rowType.size()); }

  // The index of a column name; with `insert`, a new name becomes a new column, else -1.
  int column(const char* name, bool insert);
  void add_term(int col, double v) {
    curCol.push_back(col);
    curVal.push_back(v);
  }
  void clear_row() {
    curCol.clear();
    curVal.clear();
  }
  // Stores the current terms as the objective (zeros kept) or as a constraint (zeros
  // dropped). An empty `name` gives "R%07d" with the constraint's index.
  void put_objective();
  void put_constraint(char type, double rhs, const std::string& name);

  void ensure_bounds();
  void ensure_types();

  // Loads the model: the objective row becomes the cost vector, the rows become columns.
  [[nodiscard]] int finish();
};

// The pending term of an objective or constraint, which may run over several lines.
struct TermState {
  double sign = 1.0;  // a sign read alone
  double num = 0.0;   // a value read, waiting for its column
  bool haveNum = false;
  bool haveSense = false;  // the left side ended; the right side comes next
  char sense = 0;
  bool anyTerm = false;  // the current row has a term or a pending part
  std::string rowName;
  void reset() { *this = TermState(); }
  bool pending() const { return anyTerm || haveNum || haveSense || sign != 1.0; }
};

// The term loop of the objective (`objective` true: no sense; a value with no column behind
// it is a constant when another signed value or the end of the objective follows) and of the
// constraints (a row is stored once its right side is read). 0 or QZERR_ERROR_IN_INPUT.
[[nodiscard]] int read_terms(TextModel& t, TermState& s, const char* p, bool objective,
                             const char* nameStart, const char* nameEnd);
// Ends the objective: a pending value becomes the constant, and the row is stored.
[[nodiscard]] int end_objective(TextModel& t, TermState& s);

// Reads the whole content of a file through the stream layer (gzip reads as text).
[[nodiscard]] int qzi_file2str(QZenv env, const char* fname, std::string& out);

// Lines of a block of memory: a line ends at a line feed, at `limit` characters or at the end.
class TextLines {
 public:
  explicit TextLines(const char* text, size_t len) : p_(text), end_(text + len) {}
  // False at the end. `line` gets the characters (without the line feed) up to a zero byte;
  // `tooLong` when more than kMaxTextLine characters stood before the line feed.
  bool next(std::string& line, bool* tooLong);
  int line_number() const { return line_; }

 private:
  const char* p_;
  const char* end_;
  int line_ = 0;
};

// Records a failed read on the model: the line, the text "Error at line %d.", the message
// at print level above 1, and the model left empty.
void text_read_failed(Imodel& m, int line);

// The print level of the line machines: the larger of the LP and MIP print levels.
int text_printlevel(const Imodel& m);

// The frame of a stream read: checks, the line machine over the whole text, the file error on
// failure, a title for an untitled model. `run(machine, text, len)` drives the machine.
template <class Machine, class Run>
int read_text_stream(Imodel& m, const char* text, int len, const char* title,
                     const char* shortMsg, const char* source, Run run) {
  m.fileErrorLine = 0;
  m.fileErrorText.clear();
  if (len <= 0) {
    QZlogmod(&m, text_printlevel(m) > 1, shortMsg);
    text_read_failed(m, 0);
    return QZERR_BAD_MODEL_FILE;
  }
  Machine r(m);
  int rc = 0;
  try {
    rc = run(r, text, static_cast<size_t>(len));
  } catch (const std::bad_alloc&) {
    rc = QZERR_OUT_OF_MEMORY;
  }
  if (rc != 0) {
    text_read_failed(m, r.line);
    return rc;
  }
  if (m.names.title.empty()) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "stream_%p", static_cast<const void*>(text));
    m.names.title = title != nullptr ? title : buf;
  }
  m.modelSource = source;
  return 0;
}

}  // namespace zento::io
