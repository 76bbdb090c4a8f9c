// The MPS reader's driver: opening, the first pass, the layout choice, the line loop and the
// report of a failed read.
#include <cstring>
#include <new>

#include "core/clock.h"
#include "core/env.h"
#include "core/log.h"
#include "core/messages.h"
#include "core/model_ops.h"
#include "io/mps_reader.h"

namespace zento::io {

namespace {

bool tokenize(MpsReader& r) {
  return r.fixed ? tokenize_fixed(r.raw, r.state, r.line) : tokenize_free(r.raw, r.state, r.line);
}

bool is_keyword(const char* w, const char* k) { return w != nullptr && iequals(w, k); }

// The section a keyword opens, for the passes that only need to follow the sections.
int section_of(const char* w, int current) {
  if (is_keyword(w, "ROWS")) return kRows;
  if (is_keyword(w, "COLUMNS")) return kColumns;
  if (is_keyword(w, "RHS")) return kRhs;
  if (is_keyword(w, "RANGES")) return kRanges;
  if (is_keyword(w, "BOUNDS")) return kBounds;
  if (is_keyword(w, "ENDATA")) return kEnd;
  if (is_keyword(w, "QSECTION") || is_keyword(w, "QCMATRIX")) return kQuadRow;
  if (is_keyword(w, "QMATRIX") || is_keyword(w, "QUADS") || is_keyword(w, "QUADOBJ"))
    return kQuadObj;
  if (is_keyword(w, "CSECTION")) return kCone;
  if (is_keyword(w, "INDICATORS")) return kIndicators;
  if (is_keyword(w, "OBJSENSE") || is_keyword(w, "OBJSENCE")) return kObjSense;
  if (is_keyword(w, "NAME")) return kBeforeRows;
  return current;
}

void trace_line(MpsReader& r) {
  QZlogmod(&r.m, 1, "\nline%07d:", r.lines.line_number());
  for (int f = 1; f <= 7; ++f) QZlogmod(&r.m, 1, " [%s]", r.line.f[f] ? r.line.f[f] : "");
}

int process_line(MpsReader& r) {
  if (r.raw.hasControl) return mps_bad(r, "the line holds binary data");
  if (r.raw.fullLen > kMaxLineBytes) return mps_bad(r, "the line is longer than 255 characters");
  if (!tokenize(r)) return mps_bad(r, "wrong number of fields for the section");
  if (r.m.SplexPam.lp_printlevel > 200) trace_line(r);
  if (r.line.section) return mps_do_section_line(r);
  switch (r.state) {
    case kObjSense:
      if (is_keyword(r.line.f[2], "MAX") || is_keyword(r.line.f[2], "MAXIMIZE")) {
        r.sense = QZ_MAX;
      } else if (is_keyword(r.line.f[2], "MIN") || is_keyword(r.line.f[2], "MINIMIZE")) {
        r.sense = QZ_MIN;
      } else {
        return mps_bad(r, "the objective sense must be MAX or MIN");
      }
      r.haveObjSenseLine = true;
      return 0;
    case kRows:
      return mps_do_rows(r);
    case kColumns:
      return mps_do_columns(r);
    case kRhs:
      return mps_do_rhs(r);
    case kRanges:
      return mps_do_ranges(r);
    case kBounds:
      return mps_do_bounds(r);
    case kQuadObj:
    case kQuadRow:
      return mps_do_quad(r);
    case kCone:
      return mps_do_cone(r);
    case kIndicators:
      return mps_do_indicator(r);
    default:
      return mps_bad(r, "a data line outside a section");
  }
}

void record_file_error(MpsReader& r) {
  if (r.errLine > 0) {
    r.m.fileErrorLine = r.errLine;
    r.m.fileErrorText = r.errText;
    return;
  }
  r.m.fileErrorLine = r.lines.line_number();
  r.m.fileErrorText.assign(r.raw.text, static_cast<size_t>(r.raw.len));
}

int main_loop(MpsReader& r) {
  const double t0 = lt_get_realtime();
  while (r.state != kEnd && r.lines.next(r.raw)) {
    QZ_CALL(process_line(r));
    if (r.m.SplexPam.lp_printlevel > 200 && r.lines.line_number() % 5000 == 0)
      QZlogmod(&r.m, 1, "\nMPS Reader: processed %8u lines (state %u) in %.2f secs",
               static_cast<unsigned>(r.lines.line_number()), static_cast<unsigned>(r.state),
               lt_get_realtime() - t0);
  }
  if (r.state == kEnd) return 0;
  if (r.lines.read_failed()) return mps_bad(r, "the file could not be read to its end");
  QZlogmod(&r.m, r.m.SplexPam.lp_printlevel > 199,
           "\nMPS Reader: Unexpected end of file. ENDATA section missing.");
  r.reason = "ENDATA missing";
  return QZERR_BAD_MODEL_FILE;
}

void log_first_pass(MpsReader& r, double secs) {
  Imodel& m = r.m;
  if (m.SplexPam.lp_printlevel <= 199) return;
  QZlogmod(&m, 1, "\nMPS Reader: Initial pass completed in %.2f secs.", secs);
  QZlogmod(&m, 1, "\nMPS Reader: Found %u rows, %u columns, %u nonzs",
           static_cast<unsigned>(r.nRowsHint), static_cast<unsigned>(r.nColsHint),
           static_cast<unsigned>(r.nNzHint));
  if (r.nConesHint > 0)
    QZlogmod(&m, 1, "\nMPS Reader: Found %u cones, %u cone nonzs",
             static_cast<unsigned>(r.nConesHint), static_cast<unsigned>(r.nConeNzHint));
  if (r.nSetsHint > 0)
    QZlogmod(&m, 1, "\nMPS Reader: Found %u sets, %u set nonzs",
             static_cast<unsigned>(r.nSetsHint), static_cast<unsigned>(r.nSetNzHint));
  if (!r.extObj.empty())
    QZlogmod(&m, 1, "\nMPS Reader: Found %u objectives", static_cast<unsigned>(r.extObj.size()));
  QZlogmod(&m, 1, "\nMPS Reader:");
}

int setup_tables(MpsReader& r) {
  QZ_CALL(HashTable_Initialize(r.rowTab, r.nRowsHint + 1));
  QZ_CALL(HashTable_Initialize(r.colTab, r.nColsHint + 1));
  QZ_CALL(HashTable_Initialize(r.freeTab, 29));
  if (r.nConesHint > 0) QZ_CALL(HashTable_Initialize(r.coneTab, r.nConesHint));
  // Hints come from an unchecked pass, so they only reserve, and modestly.
  const size_t rows = static_cast<size_t>(std::min(r.nRowsHint, 1 << 24));
  const size_t cols = static_cast<size_t>(std::min(r.nColsHint, 1 << 24));
  const size_t nz = static_cast<size_t>(std::min(r.nNzHint, 1 << 26));
  r.rowType.reserve(rows);
  r.rhs.reserve(rows);
  r.colBeg.reserve(cols + 1);
  r.cost.reserve(cols);
  r.aRow.reserve(nz);
  r.aVal.reserve(nz);
  r.setType.reserve(static_cast<size_t>(std::min(r.nSetsHint, r.nColsHint / 2 + 1)));
  return 0;
}

int read_passes(MpsReader& r, int nFormat, const char* displayName) {
  Imodel& m = r.m;
  if (nFormat == kMpsAutoLayout) {
    QZ_CALL(mps_detect_layout(r, &r.fixed));
    if (!r.lines.rewind()) return QZERR_CANNOT_OPEN_FILE;
  } else {
    r.fixed = nFormat == 1 || nFormat == 3;
  }
  QZlogmod(&m, base_printlevel(m), "\nReading %s in MPS format (%s)", displayName,
           r.fixed ? "formatted" : "unformatted");
  const double t0 = lt_get_realtime();
  QZ_CALL(mps_first_pass(r));
  if (!r.lines.rewind()) return QZERR_CANNOT_OPEN_FILE;
  log_first_pass(r, lt_get_realtime() - t0);
  QZ_CALL(setup_tables(r));
  r.state = kStart;
  QZ_CALL(main_loop(r));
  QZ_CALL(mps_finish(r));
  const double secs = lt_get_realtime() - t0;
  QZlogmod(&m, m.SplexPam.lp_printlevel > 199,
           "\nMPS Reader: Completed successfully... (%.2f secs)\n", secs);
  QZlogmod(&m, base_printlevel(m), "\nProcessed %d lines in MPS format (%.2f secs).",
           r.lines.line_number(), secs);
  return 0;
}

}  // namespace

int mps_bad(MpsReader& r, const char* why) {
  r.reason = why;
  return QZERR_BAD_MODEL_FILE;
}

int mps_first_pass(MpsReader& r) {
  int state = kStart;
  std::string lastCol;
  while (r.lines.next(r.raw)) {
    if (r.raw.hasControl || r.raw.fullLen > kMaxLineBytes) break;
    MpsLine& l = r.line;
    if (!(r.fixed ? tokenize_fixed(r.raw, state, l) : tokenize_free(r.raw, state, l))) continue;
    if (l.section) {
      state = section_of(l.f[1], state);
      if (state == kCone) ++r.nConesHint;
      if (state == kEnd) break;
      continue;
    }
    switch (state) {
      case kRows:
        ++r.nRowsHint;
        if (l.f[1] && iequals(l.f[1], "N")) {
          const int ordinal = r.nNrowsHint++;
          if (l.f[2] && l.f[3]) {
            ExtObjective e;
            e.ordinal = ordinal;
            e.name = l.f[2];
            e.rank = std::atoi(l.f[3]);
            e.weight = l.f[4] ? std::atof(l.f[4]) : 0.0;
            e.absTol = l.f[5] ? std::atof(l.f[5]) : 0.0;
            e.relTol = l.f[6] ? std::atof(l.f[6]) : 0.0;
            e.sense = l.f[7] ? std::atoi(l.f[7]) : 1;
            r.extObj.push_back(std::move(e));
          }
        }
        break;
      case kColumns:
        if (l.f[3] && std::strcmp(l.f[3], "'MARKER'") == 0) {
          if (l.f[5] && std::strcmp(l.f[5], "'SOSORG'") == 0) ++r.nSetsHint;
          break;
        }
        if (l.f[2] && lastCol != l.f[2]) {
          lastCol = l.f[2];
          ++r.nColsHint;
          if (r.nSetsHint > 0) ++r.nSetNzHint;
        }
        r.nNzHint += (l.f[3] ? 1 : 0) + (l.f[5] ? 1 : 0);
        break;
      case kCone:
        if (l.f[2]) ++r.nConeNzHint;
        break;
      default:
        break;
    }
  }
  return 0;
}

int mps_detect_layout(MpsReader& r, bool* fixed) {
  int state = kStart;
  bool sawFixedOnly = false;
  MpsLine fx, fr;
  while (r.lines.next(r.raw)) {
    if (r.raw.hasControl || r.raw.fullLen > kMaxLineBytes) break;
    const char c = r.raw.text[0];
    if (c != ' ' && c != '\t') {
      MpsLine l;
      tokenize_free(r.raw, state, l);
      state = section_of(l.word[0], state);
      if (state == kEnd) break;
      if (state == kCone) {  // conic sections exist only in the free layout
        *fixed = false;
        return 0;
      }
      continue;
    }
    const int vote = fixed_layout_vote(r.raw, state, fx, fr);
    if (vote < 0) {
      *fixed = false;
      return 0;
    }
    if (vote > 0) sawFixedOnly = true;
  }
  *fixed = sawFixedOnly;
  return 0;
}

int read_mps_stream(Imodel& m, Stream* s, int nFormat, int nObjIndex, int nKeepFreeRows,
                    const char* displayName) {
  if (m.nCons > 0 || m.nVars > 0) return QZERR_ALREADY_LOADED;
  if (nFormat < kMpsAutoLayout || nFormat > 3) return QZERR_PARAM_OUT_OF_RANGE;
  m.fileErrorLine = 0;
  m.fileErrorText.clear();
  MpsReader r(m, s);
  r.intBinary = nFormat == 2 || nFormat == 3;
  r.nObjIndex = nObjIndex;
  r.keepFreeRows = nKeepFreeRows != 0;
  int rc = 0;
  try {
    rc = read_passes(r, nFormat, displayName);
  } catch (const std::bad_alloc&) {
    rc = QZERR_OUT_OF_MEMORY;
  }
  if (rc == 0) return 0;
  if (m.modelState != QZ_STATUS_UNLOADED || m.nVars > 0 || m.nCons > 0) clear_model(m);
  if (rc == QZERR_BAD_MODEL_FILE || !r.reason.empty()) record_file_error(r);
  if (m.SplexPam.lp_printlevel > 199) {
    QZlogmod(&m, 1, "\nMPS Reader: Last line processed: %s", m.fileErrorText.c_str());
    if (!r.reason.empty())
      QZlogmod(&m, 1, "\nMPS Reader: line %d: %s", m.fileErrorLine, r.reason.c_str());
  }
  const char* text = message_text(m.env, rc);
  QZlogmod(&m, base_printlevel(m), "\nMPS Reader: %s", text ? text : "unknown error");
  return rc;
}

int read_mps_file(Imodel& m, const char* pszFname, int nFormat, int nObjIndex,
                  int nKeepFreeRows) {
  if (m.nCons > 0 || m.nVars > 0) return QZERR_ALREADY_LOADED;
  m.fileErrorLine = 0;
  m.fileErrorText.clear();
  StreamPtr s(qzs_fopen(m.env, pszFname, "r"));
  if (!s) return QZERR_CANNOT_OPEN_FILE;
  const int rc = read_mps_stream(m, s.get(), nFormat, nObjIndex, nKeepFreeRows, pszFname);
  if (rc == 0) {
    QZbreakPathName(pszFname, m.fileInfo.dir, m.fileInfo.stem, m.fileInfo.ext);
    m.modelFileName = pszFname;
    m.modelSource = "MPS";
  }
  return rc;
}

}  // namespace zento::io
