// Block and time structure files, in the sections of the time file of the stochastic family:
// TIME, PERIODS (EXPLICIT: one stage name a line, then ROWS and COLUMNS lines of a name and its
// stage; LP: one line a stage with its first column and first row), ENDATA.
#include <cstring>
#include <string>
#include <vector>

#include "core/errors.h"
#include "core/log.h"
#include "core/names.h"
#include "io/hashtable.h"
#include "io/io.h"
#include "io/side_util.h"
#include "io/stream.h"

namespace zento::io {

namespace {

enum class Sec { kStart, kTitle, kPeriods, kRows, kCols, kSkip, kEnd };

struct BlockReader {
  BlockReader(Imodel& model, LineReader& reader) : m(model), lines(reader) {}
  Imodel& m;
  LineReader& lines;
  RawLine raw;
  Sec sec = Sec::kStart;
  bool lpStyle = false;
  HashTable stages;
  std::vector<std::string> stageNames;
  std::vector<int> rowBlock, colBlock;
  std::vector<int> firstRow, firstCol;  // LP style

  int bad() {
    note_file_error(m, lines, raw);
    return QZERR_BAD_MODEL_FILE;
  }

  int section(const std::vector<std::string>& w) {
    const std::string& k = w[0];
    if (sec == Sec::kStart) {
      if (k != "TIME") return bad();
      sec = Sec::kTitle;
      return 0;
    }
    if (k == "PERIODS" && sec == Sec::kTitle) {
      lpStyle = w.size() < 2 || w[1] == "LP" || w[1] == "IMPLICIT";
      if (w.size() >= 2 && !lpStyle && w[1] != "EXPLICIT") return bad();
      sec = Sec::kPeriods;
      return 0;
    }
    if (sec == Sec::kTitle || sec == Sec::kStart) return bad();
    if (k == "ENDATA") {
      sec = Sec::kEnd;
      return 0;
    }
    if (lpStyle) return bad();
    if (k == "ROWS")
      sec = Sec::kRows;
    else if (k == "COLUMNS" || k == "COLS")
      sec = Sec::kCols;
    else if (k == "SPARS" || k == "SVARS")
      sec = Sec::kSkip;
    else
      return bad();
    return 0;
  }

  int stage_of(const std::string& name) { return HashTable_Lookup(stages, name.c_str()); }

  int data(const std::vector<std::string>& w) {
    switch (sec) {
      case Sec::kPeriods: {
        const std::string& stage = lpStyle ? (w.size() >= 3 ? w[2] : std::string()) : w[0];
        if (stage.empty() || HashTable_Insert(stages, stage.c_str()) < 0) return bad();
        stageNames.push_back(stage);
        if (lpStyle) {
          int j = -1, i = -1;
          if (column_by_name(m, w[0], &j, 0) != 0) return bad();
          if (row_by_name(m, w[1], &i, 0) != 0) return bad();
          firstCol.push_back(j);
          firstRow.push_back(i);
        }
        return 0;
      }
      case Sec::kRows:
      case Sec::kCols: {
        if (w.size() < 2) return bad();
        const int stage = stage_of(w[1]);
        if (stage < 0) return bad();
        int index = -1;
        const int rc = sec == Sec::kRows ? row_by_name(m, w[0], &index, 0)
                                         : column_by_name(m, w[0], &index, 0);
        if (rc != 0) return bad();
        (sec == Sec::kRows ? rowBlock : colBlock)[index] = stage;
        return 0;
      }
      case Sec::kSkip:
        return 0;
      default:
        return bad();
    }
  }

  // Stages of the LP style cover the rows and columns from their first members on.
  int spread_lp_stages() {
    const int n = static_cast<int>(firstRow.size());
    for (int k = 1; k < n; ++k)
      if (firstRow[k] <= firstRow[k - 1] || firstCol[k] <= firstCol[k - 1]) return bad();
    if (n > 0 && (firstRow[0] != 0 || firstCol[0] != 0)) return bad();
    for (int k = 0; k < n; ++k) {
      const int rowEnd = k + 1 < n ? firstRow[k + 1] : m.nCons;
      const int colEnd = k + 1 < n ? firstCol[k + 1] : m.nVars;
      for (int i = firstRow[k]; i < rowEnd; ++i) rowBlock[i] = k;
      for (int j = firstCol[k]; j < colEnd; ++j) colBlock[j] = k;
    }
    return 0;
  }
};

int read_blocks(Imodel& m, const char* pszFname) {
  StreamPtr s(qzs_fopen(m.env, pszFname, "r"));
  if (!s) return QZERR_CANNOT_OPEN_FILE;
  LineReader lines(s.get(), "*");
  BlockReader r(m, lines);
  QZ_CALL(HashTable_Initialize(r.stages, 29));
  r.rowBlock.assign(static_cast<size_t>(m.nCons), 0);
  r.colBlock.assign(static_cast<size_t>(m.nVars), 0);
  while (r.sec != Sec::kEnd && lines.next(r.raw)) {
    if (r.raw.hasControl || r.raw.fullLen > kMaxLineBytes) return r.bad();
    const std::vector<std::string> w = split_line(r.raw);
    if (w.empty()) continue;
    const bool sectionLine = r.raw.text[0] != ' ' && r.raw.text[0] != '\t';
    QZ_CALL(sectionLine ? r.section(w) : r.data(w));
  }
  if (r.sec != Sec::kEnd || r.stageNames.empty()) return r.bad();
  if (r.lpStyle) QZ_CALL(r.spread_lp_stages());
  const int n = static_cast<int>(r.stageNames.size());
  QZ_CALL(load_block_structure(m, n, r.rowBlock.data(), r.colBlock.data(), r.lpStyle ? 1 : 0));
  m.blocks.names = std::move(r.stageNames);
  return 0;
}

}  // namespace

int load_block_structure(Imodel& m, int nBlock, const int* panRblock, const int* panCblock,
                         int nType) {
  if (m.modelState == QZ_STATUS_UNLOADED) return QZERR_NO_MODEL_LOADED;
  if (nBlock < 1) return QZERR_PARAM_OUT_OF_RANGE;
  if ((panRblock == nullptr && m.nCons > 0) || (panCblock == nullptr && m.nVars > 0))
    return QZERR_ILLEGAL_NULL_POINTER;
  for (int i = 0; i < m.nCons; ++i)
    if (panRblock[i] < 0 || panRblock[i] >= nBlock) return QZERR_INDEX_OUT_OF_RANGE;
  for (int j = 0; j < m.nVars; ++j)
    if (panCblock[j] < 0 || panCblock[j] >= nBlock) return QZERR_INDEX_OUT_OF_RANGE;
  BlockStructure& b = m.blocks;
  b.nBlocks = nBlock;
  b.type = nType;
  b.rowBlock.assign(panRblock, panRblock + m.nCons);
  b.colBlock.assign(panCblock, panCblock + m.nVars);
  b.names.clear();
  return 0;
}

int read_block_structure(Imodel& m, const char* pszFname) {
  if (m.modelState == QZ_STATUS_UNLOADED) return QZERR_NO_MODEL_LOADED;
  clear_file_error(m);
  QZlogmod(&m, base_printlevel(m), "\nReading block/time structure from %s\n", pszFname);
  const int rc = read_blocks(m, pszFname);
  if (rc != 0) {
    QZlogmod(&m, base_printlevel(m), "\nFailed to read time/block structure.");
    return rc;
  }
  QZlogmod(&m, base_printlevel(m), "\nModel contains %d explicit blocks.", m.blocks.nBlocks);
  return 0;
}

int write_block_structure(Imodel& m, const char* pszFname) {
  if (m.modelState == QZ_STATUS_UNLOADED || m.blocks.nBlocks == 0) return QZERR_INFO_NOT_AVAILABLE;
  const BlockStructure& b = m.blocks;
  QZlogmod(&m, base_printlevel(m), "\nWriting block/time structure to %s\n", pszFname);
  StreamPtr s(qzs_fopen(m.env, pszFname, "w"));
  if (!s) {
    QZlogmod(&m, base_printlevel(m), "\nFailed to write time/block structure.");
    return QZERR_CANNOT_OPEN_FILE;
  }
  std::vector<std::string> stage(static_cast<size_t>(b.nBlocks));
  for (int k = 0; k < b.nBlocks; ++k) {
    char fallback[32];
    std::snprintf(fallback, sizeof fallback, "TIME%04d", k);
    stage[k] = k < static_cast<int>(b.names.size()) ? b.names[k] : fallback;
  }
  // The LP form needs every stage to start later than the one before, in both rows and columns.
  std::vector<int> firstRow(static_cast<size_t>(b.nBlocks), -1), firstCol(firstRow);
  for (int i = m.nCons - 1; i >= 0; --i) firstRow[b.rowBlock[i]] = i;
  for (int j = m.nVars - 1; j >= 0; --j) firstCol[b.colBlock[j]] = j;
  bool lp = b.type == 1;
  for (int k = 0; k < b.nBlocks && lp; ++k)
    lp = firstRow[k] >= 0 && firstCol[k] >= 0 && (k == 0 || firstRow[k] > firstRow[k - 1]);
  Stream* f = s.get();
  qzs_puts(f, "*000000001111111111222222222233333333334444444444555555555566\n");
  qzs_puts(f, "*>>4>678901<34>678901<34>6789012345<789>123456<89>1234567890<\n");
  if (m.names.title.empty())
    qzs_puts(f, "TIME          NEWTITLE\n");
  else
    qzs_format(f, "TIME          %s\n", m.names.title.c_str());
  if (lp) {
    qzs_puts(f, "PERIODS       LP\n");
    for (int k = 0; k < b.nBlocks; ++k)
      qzs_format(f, "    %-8s  %-8s                 %-8s\n",
                 QZI_getVariableNamej(m, firstCol[k]).c_str(),
                 QZI_getConstraintNamei(m, firstRow[k]).c_str(), stage[k].c_str());
  } else {
    qzs_puts(f, "PERIODS       EXPLICIT\n");
    for (int k = 0; k < b.nBlocks; ++k) qzs_format(f, "    %-8s\n", stage[k].c_str());
    qzs_puts(f, "ROWS\n");
    for (int i = 0; i < m.nCons; ++i)
      qzs_format(f, "    %-8s  %-8s                 %-8s\n", QZI_getConstraintNamei(m, i).c_str(),
                 stage[b.rowBlock[i]].c_str(), "");
    qzs_puts(f, "COLUMNS\n");
    for (int j = 0; j < m.nVars; ++j)
      qzs_format(f, "    %-8s  %-8s                 %-8s\n", QZI_getVariableNamej(m, j).c_str(),
                 stage[b.colBlock[j]].c_str(), "");
  }
  qzs_puts(f, "ENDATA\n");
  if (qzs_fclose(s.release()) != 0) {
    QZlogmod(&m, base_printlevel(m), "\nFailed to write time/block structure.");
    return QZERR_CANNOT_OPEN_FILE;
  }
  QZlogmod(&m, base_printlevel(m), "\nDone. Model contains %d explicit blocks.", b.nBlocks);
  return 0;
}

}  // namespace zento::io
