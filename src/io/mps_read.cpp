// The MPS reader's driver: opening, the layout choice, the line loop, the counting pass of the
// debug log and the report of a failed read.
#include <cstdarg>
#include <cstring>
#include <functional>
#include <memory>
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

// `tokenized`: r.line holds the line's fields already.
int process_line(MpsReader& r, bool tokenized = false) {
  if (r.raw.hasControl) return mps_bad(r, "the line holds binary data");
  if (r.raw.fullLen > kMaxLineBytes) return mps_bad(r, "the line is longer than 255 characters");
  if (!tokenized && !tokenize(r)) return mps_bad(r, "wrong number of fields for the section");
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
  if (r.nExtHint > 0)
    QZlogmod(&m, 1, "\nMPS Reader: Found %u objectives", static_cast<unsigned>(r.nExtHint));
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

// The layout vote, one line at a time; `done` once the answer cannot change.
struct LayoutVote {
  int state = kStart;
  bool sawFixedOnly = false;
  bool done = false;
  bool fixed = false;
  MpsLine fx, fr;

  void finish() {
    done = true;
    fixed = sawFixedOnly;
  }
  // `freeLine` (optional) gets the free tokenization of a data line when the vote has it at
  // no cost; its ntok is -1 otherwise.
  void step(const RawLine& raw, MpsLine* freeLine = nullptr) {
    if (freeLine) freeLine->ntok = -1;
    if (raw.hasControl || raw.fullLen > kMaxLineBytes) return finish();
    const char c = raw.text[0];
    if (c != ' ' && c != '\t') {
      tokenize_free(raw, state, fr);
      state = section_of(fr.word[0], state);
      if (state == kEnd) return finish();
      if (state == kCone) done = true;  // conic sections exist only in the free layout
      return;
    }
    const int vote = fixed_layout_vote(raw, state, fx, fr, freeLine);
    if (vote < 0) done = true;
    if (vote > 0) sawFixedOnly = true;
  }
};

void log_reading(MpsReader& r, const char* displayName) {
  QZlogmod(&r.m, base_printlevel(r.m), "\nReading %s in MPS format (%s)", displayName,
           r.fixed ? "formatted" : "unformatted");
}

void release_log(MpsReader& r, const char* displayName) {
  r.holdLog = false;
  log_reading(r, displayName);
  for (const std::string& line : r.heldLog) QZlogmod(&r.m, 1, "%s", line.c_str());
  r.heldLog.clear();
}

// The free reading with the vote alongside. `*read` tells whether the reading stands; when
// it doesn't, the file is read again in the layout `v` chose, and nothing has been logged.
int read_while_voting(MpsReader& r, LayoutVote& v, const char* displayName, bool* read) {
  *read = false;
  r.fixed = false;
  r.holdLog = true;
  bool reading = true, failed = false;
  int endLine = -1;
  while ((reading || !v.done) && r.lines.next(r.raw)) {
    bool tokenized = false;
    if (!v.done) {
      // The vote's free tokenization serves the reading when both are in the same section.
      const bool share = reading && v.state == r.state;
      v.step(r.raw, share ? &r.line : nullptr);
      tokenized = share && r.line.ntok >= 0;
      if (v.done && v.fixed) return 0;
      if (v.done) {
        if (failed) return 0;
        release_log(r, displayName);
      }
    }
    if (!reading) continue;
    const int rc = process_line(r, tokenized);
    if (rc != 0) {
      if (v.done) return rc;  // the layout is free: the failure stands
      reading = false;
      failed = true;
    } else if (r.state == kEnd) {
      reading = false;
      endLine = r.lines.line_number();
    }
  }
  if (!v.done) v.finish();
  // Anything but a clean end at the line the vote ended on is left to the plain reading,
  // which reports failures with their line.
  if (v.fixed || failed || reading || endLine != r.lines.line_number()) return 0;
  if (r.holdLog) release_log(r, displayName);
  *read = true;
  return 0;
}

int finish_read(MpsReader& r, double t0) {
  Imodel& m = r.m;
  QZ_CALL(mps_finish(r));
  const double secs = lt_get_realtime() - t0;
  QZlogmod(&m, m.SplexPam.lp_printlevel > 199,
           "\nMPS Reader: Completed successfully... (%.2f secs)\n", secs);
  QZlogmod(&m, base_printlevel(m), "\nProcessed %d lines in MPS format (%.2f secs).",
           r.lines.line_number(), secs);
  return 0;
}

using ReaderPtr = std::unique_ptr<MpsReader>;

int read_passes(ReaderPtr& rp, const std::function<ReaderPtr()>& make, int nFormat,
                const char* displayName) {
  const bool debug = rp->m.SplexPam.lp_printlevel > 199;
  const double t0 = lt_get_realtime();
  if (nFormat == kMpsAutoLayout && !debug) {
    LayoutVote v;
    bool read = false;
    QZ_CALL(setup_tables(*rp));
    QZ_CALL(read_while_voting(*rp, v, displayName, &read));
    if (read) return finish_read(*rp, t0);
    if (!rp->lines.rewind()) return QZERR_CANNOT_OPEN_FILE;
    rp = make();
    rp->fixed = v.fixed;
  } else if (nFormat == kMpsAutoLayout) {
    QZ_CALL(mps_detect_layout(*rp, &rp->fixed));
    if (!rp->lines.rewind()) return QZERR_CANNOT_OPEN_FILE;
  } else {
    rp->fixed = nFormat == 1 || nFormat == 3;
  }
  MpsReader& r = *rp;
  log_reading(r, displayName);
  if (debug) {
    const double t1 = lt_get_realtime();
    QZ_CALL(mps_first_pass(r));
    if (!r.lines.rewind()) return QZERR_CANNOT_OPEN_FILE;
    log_first_pass(r, lt_get_realtime() - t1);
  }
  QZ_CALL(setup_tables(r));
  r.state = kStart;
  QZ_CALL(main_loop(r));
  return finish_read(r, t0);
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
          ++r.nNrowsHint;
          if (l.f[2] && l.f[3]) ++r.nExtHint;
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
  LayoutVote v;
  while (!v.done && r.lines.next(r.raw)) v.step(r.raw);
  if (!v.done) v.finish();
  *fixed = v.fixed;
  return 0;
}

void mps_log(MpsReader& r, int level, const char* fmt, ...) {
  if (level == 0) return;
  va_list ap;
  va_start(ap, fmt);
  std::string line = vformat(fmt, ap);
  va_end(ap);
  if (r.holdLog)
    r.heldLog.push_back(std::move(line));
  else
    QZlogmod(&r.m, 1, "%s", line.c_str());
}

int read_mps_stream(Imodel& m, Stream* s, int nFormat, int nObjIndex, int nKeepFreeRows,
                    const char* displayName) {
  if (m.nCons > 0 || m.nVars > 0) return QZERR_ALREADY_LOADED;
  if (nFormat < kMpsAutoLayout || nFormat > 3) return QZERR_PARAM_OUT_OF_RANGE;
  m.fileErrorLine = 0;
  m.fileErrorText.clear();
  LineReader lines(s);
  // The input is kept for a second pass: the counting one, or the reading of a fixed file.
  if (nFormat == kMpsAutoLayout || m.SplexPam.lp_printlevel > 199) lines.keep_for_rewind();
  auto make = [&] {
    auto p = std::make_unique<MpsReader>(m, lines);
    p->intBinary = nFormat == 2 || nFormat == 3;
    p->nObjIndex = nObjIndex;
    p->keepFreeRows = nKeepFreeRows != 0;
    return p;
  };
  ReaderPtr rp;
  int rc = 0;
  try {
    rp = make();
    rc = read_passes(rp, make, nFormat, displayName);
  } catch (const std::bad_alloc&) {
    rc = QZERR_OUT_OF_MEMORY;
  }
  if (!rp) return rc;
  MpsReader& r = *rp;
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
