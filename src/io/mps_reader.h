// The MPS reader: a state machine over the lines of the file that gathers the model in
// growing arrays and loads it through the load entries once ENDATA is reached.
//
// One pass fills growing tables and arrays. A file may be in the fixed layout (fields at fixed
// columns, names may hold blanks) or the free one (fields split at blanks, names of any
// length); with the automatic choice every data line votes, and the fixed layout is taken only
// when every data line reads in it and some line reads differently in the free one. The free
// reading runs alongside the vote, with its log held back, so that a free file (nearly all of
// them) is read once; a fixed one, or a failure before the vote is in, is read again from the
// kept input. At debug print levels a counting pass before the fill logs the sizes.
#pragma once

#include <string>
#include <vector>

#include "core/errors.h"
#include "core/model.h"
#include "io/hashtable.h"
#include "io/io.h"
#include "io/mps_tokens.h"
#include "io/stream.h"

namespace zento::io {

constexpr int kMpsAutoLayout = -1;

struct ExtObjective {
  int ordinal = 0;  // among the file's N rows
  int rank = 0;
  double weight = 0, absTol = 0, relTol = 0;
  int sense = 1;
  std::string name;
  std::vector<double> cost;
};

// A row that must hold when a binary column takes `value`.
struct Indicator {
  int row = 0, col = 0, value = 0;
  int line = 0;
  std::string text;
};

struct MpsReader {
  MpsReader(Imodel& model, LineReader& reader) : m(model), lines(reader) {}

  Imodel& m;
  LineReader& lines;
  RawLine raw;
  MpsLine line;
  int state = kStart;
  bool fixed = false;
  bool intBinary = false;  // 'INTORG' columns are binary unless bounded
  int nObjIndex = 0;
  bool keepFreeRows = false;
  std::string reason;  // what was wrong with the line, for the log
  int errLine = 0;     // a failure found after the loop names its line here
  std::string errText;
  bool holdLog = false;              // log lines wait in heldLog until the layout is known
  std::vector<std::string> heldLog;

  // Sizes from the counting pass (debug print levels only).
  int nRowsHint = 0, nColsHint = 0, nNzHint = 0, nConesHint = 0, nSetsHint = 0;
  int nNrowsHint = 0, nConeNzHint = 0, nSetNzHint = 0, nExtHint = 0;
  std::vector<ExtObjective> extObj;

  std::string title;
  int sense = QZ_MIN;
  bool haveObjSenseLine = false;
  double objConst = 0.0;
  std::string objName;
  bool haveObj = false;
  int nNrows = 0;  // N rows seen so far

  HashTable rowTab, colTab, coneTab, freeTab;
  std::vector<int> freeExt;  // free row -> extended objective or -1
  std::vector<char> rowType;
  std::vector<double> rhs, range;
  std::vector<int> rangeCount;

  std::vector<int> colBeg;  // start of each column's entries; columns are contiguous
  std::vector<int> aRow;
  std::vector<double> aVal;
  std::vector<double> cost, lo, up;
  std::vector<char> type;  // 'C', 'I', 'B', and 'Z' while integer by marker only
  int curCol = -1;
  bool columnsClosed = false;
  int intMode = 0;

  std::vector<char> setType;
  std::vector<int> setCol, setOf;  // members as (column, set) pairs
  int openSet = -1;

  std::vector<int> scPos;  // per column: position in the lists or -1
  std::vector<int> scVars;
  std::vector<double> scLower;

  std::vector<int> qRow, qCol1, qCol2;
  std::vector<double> qVal;
  int qCurRow = -1;
  int nColsBeforeSection = 0;

  std::vector<char> coneType;
  std::vector<double> coneAlpha;
  std::vector<int> coneBeg, coneCols;

  std::vector<Indicator> indicators;

  std::string rhsSet, rngSet, bndSet;
  bool rhsSetFixed = false, rngSetFixed = false, bndSetFixed = false;
};

// Reads an MPS model from an open stream into the empty model. `nFormat` is 0..3 or
// kMpsAutoLayout (free or fixed by examination, integer markers as for 0).
[[nodiscard]] int read_mps_stream(Imodel& m, Stream* s, int nFormat, int nObjIndex,
                                  int nKeepFreeRows, const char* displayName);

// Pieces of the reader, by section.
[[nodiscard]] int mps_first_pass(MpsReader& r);
[[nodiscard]] int mps_detect_layout(MpsReader& r, bool* fixed);
[[nodiscard]] int mps_do_section_line(MpsReader& r);
[[nodiscard]] int mps_do_rows(MpsReader& r);
[[nodiscard]] int mps_do_columns(MpsReader& r);
[[nodiscard]] int mps_do_rhs(MpsReader& r);
[[nodiscard]] int mps_do_ranges(MpsReader& r);
[[nodiscard]] int mps_do_bounds(MpsReader& r);
[[nodiscard]] int mps_do_quad(MpsReader& r);
[[nodiscard]] int mps_do_cone(MpsReader& r);
[[nodiscard]] int mps_do_indicator(MpsReader& r);
[[nodiscard]] int mps_finish(MpsReader& r);

// A new column with cost 0, bounds [0, 1e30], type 'C' and no entries.
int mps_new_column(MpsReader& r, const char* name);
// Closes the COLUMNS section: default bounds.
void mps_close_columns(MpsReader& r);
// Logs a line of the fill pass, or holds it while the layout is still open.
void mps_log(MpsReader& r, int level, const char* fmt, ...);
// Fails the read of the current line with a reason for the log.
int mps_bad(MpsReader& r, const char* why);

}  // namespace zento::io
