// The ZENTO format reader (line machine): title, objective, constraints with "name)" marks,
// then one-item lines INT, GIN, SLB, SUB and FREE, before or after END. Comments start at '!'.
#include <cstdio>
#include <cstring>
#include <new>

#include "core/clock.h"
#include "core/errors.h"
#include "core/log.h"
#include "io/lp_tokens.h"
#include "io/text_formats.h"
#include "io/text_model.h"

namespace zento::io {

namespace {

enum LtxState {
  kLtxLineDone = 0,
  kLtxStart = 1,
  kLtxTitle,
  kLtxObjective,
  kLtxConstraints,
  kLtxBinary,
  kLtxGeneral,
  kLtxLower,
  kLtxUpper,
  kLtxFree,
  kLtxEnd
};

struct LtxMachine {
  explicit LtxMachine(Imodel& m) : t(m) {}
  TextModel t;
  TermState terms;
  int state = kLtxStart;
  int line = 0;
  std::string squeezed, rowName, name;
};

int bad_token(LtxMachine& r) {
  QZlogmod(&r.t.m, text_printlevel(r.t.m) > 1,
           "\nUnexpected or missing token. Invalid ZENTO format. ");
  return QZERR_ERROR_IN_INPUT;
}

bool declaration_state(int s) { return s == kLtxLineDone || s >= kLtxConstraints; }

int keyword(LtxMachine& r, const char** p) {
  if (r.state == kLtxStart && qzi_isKeyword(p, "title")) return kLtxTitle;
  if (r.state == kLtxStart || r.state == kLtxTitle) {
    if (qzi_isKeyword(p, "max[imize]")) {
      r.t.sense = QZ_MAX;
      return kLtxObjective;
    }
    if (qzi_isKeyword(p, "min[imize]")) {
      r.t.sense = QZ_MIN;
      return kLtxObjective;
    }
    return 0;
  }
  if (r.state == kLtxObjective &&
      (qzi_isKeyword(p, "s[ubject][   ]t[o]") || qzi_isKeyword(p, "s[uch][    ]t[hat]") ||
       qzi_isKeyword(p, "s[.][    ]t[.]")))
    return kLtxConstraints;
  if (!declaration_state(r.state)) return 0;
  if (qzi_isKeyword(p, "free")) return kLtxFree;
  if (qzi_isKeyword(p, "int")) return kLtxBinary;
  if (qzi_isKeyword(p, "gin")) return kLtxGeneral;
  if (qzi_isKeyword(p, "slb")) return kLtxLower;
  if (qzi_isKeyword(p, "sub")) return kLtxUpper;
  if (qzi_isKeyword(p, "end")) return kLtxEnd;
  return 0;
}

int enter_state(LtxMachine& r, int next) {
  if (r.state == kLtxObjective) {
    QZ_CALL(end_objective(r.t, r.terms));
  } else if (r.state == kLtxConstraints && r.terms.pending()) {
    return bad_token(r);  // a row without its right-hand side
  }
  r.state = next;
  return 0;
}

const char* item_label(int state) {
  switch (state) {
    case kLtxFree:
      return "FREE";
    case kLtxUpper:
      return "SUB";
    case kLtxLower:
      return "SLB";
    default:
      return "INT";
  }
}

// The one item of an INT, GIN, SLB, SUB or FREE line.
int item_line(LtxMachine& r, const char* p) {
  skip_white(&p);
  if (!is_name_start(*p, kNameStartSqueeze)) return bad_token(r);
  const char* b = p;
  while (*p != '\0' && std::strchr(kNameEndLtx, *p) == nullptr) ++p;
  r.name.assign(b, static_cast<size_t>(p - b));
  const int j = r.t.column(r.name.c_str(), false);
  double v = 0.0;
  if (r.state == kLtxLower || r.state == kLtxUpper) {
    skip_white(&p);
    bool signOnly = false, hasSign = false;
    if (qzi_isInfinity(p))
      v = qzi_readInfinity(&p);
    else if (!qzi_readValue(&p, &v, &signOnly, &hasSign) || signOnly)
      return bad_token(r);
  }
  skip_white(&p);
  if (*p != '\0') return bad_token(r);  // another token on the line
  if (j < 0) {
    QZlogmod(&r.t.m, text_printlevel(r.t.m) > 1, "\n%s: Ignoring unknown variable at line %d.",
             item_label(r.state), r.line);
    r.state = kLtxLineDone;
    return 0;
  }
  TextModel& t = r.t;
  switch (r.state) {
    case kLtxBinary:
      t.ensure_bounds();
      t.ensure_types();
      t.lo[j] = 0.0;
      t.up[j] = 1.0;
      t.type[j] = 'B';
      break;
    case kLtxGeneral:
      t.ensure_types();
      t.type[j] = 'I';
      break;
    case kLtxLower:
      t.ensure_bounds();
      t.lo[j] = v;
      break;
    case kLtxUpper:
      t.ensure_bounds();
      t.up[j] = v;
      break;
    default:
      t.ensure_bounds();
      t.lo[j] = -QZ_INFINITY;
      t.up[j] = QZ_INFINITY;
  }
  r.state = kLtxLineDone;
  return 0;
}

void take_title(LtxMachine& r, const char* p) {
  skip_white(&p);
  std::string title(p);
  while (!title.empty() && is_white(title.back())) title.pop_back();
  if (r.t.title.empty()) r.t.title = title;
}

int do_line(LtxMachine& r, std::string& line) {
  const char* p = line.c_str();
  skip_white(&p);
  if (char* cut = std::strchr(const_cast<char*>(p), '!')) *cut = '\0';
  if (const int next = keyword(r, &p)) {
    QZ_CALL(enter_state(r, next));
    if (next == kLtxTitle) {
      take_title(r, p);
      return 0;
    }
  }
  if (r.state == kLtxObjective || r.state == kLtxConstraints) {
    const char* q = p;
    if (qzi_isRowname(&q, r.rowName, ')')) {
      p = q;
      if (r.state == kLtxConstraints) {
        if (r.terms.pending()) return bad_token(r);
        r.terms.rowName = r.rowName;
      }
    }
  }
  switch (r.state) {
    case kLtxLower:
    case kLtxUpper:
      return item_line(r, p);
    case kLtxEnd:
      return 0;
    default:
      break;
  }
  squeeze_line(p, kNameStartSqueeze, r.squeezed);
  const char* s = r.squeezed.c_str();
  switch (r.state) {
    case kLtxObjective:
    case kLtxConstraints: {
      const int rc =
          read_terms(r.t, r.terms, s, r.state == kLtxObjective, kNameStartSqueeze, kNameEndLtx);
      return rc == QZERR_ERROR_IN_INPUT ? bad_token(r) : rc;
    }
    case kLtxBinary:
    case kLtxGeneral:
    case kLtxFree:
      return item_line(r, s);
    default:  // start, title, line done: nothing may stand here
      return *s == '\0' ? 0 : bad_token(r);
  }
}

int run(LtxMachine& r, const char* text, size_t len) {
  const double t0 = lt_get_realtime();
  TextLines lines(text, len);
  std::string line;
  bool tooLong = false;
  while (lines.next(line, &tooLong)) {
    r.line = lines.line_number();
    if (tooLong) {
      QZlogmod(&r.t.m, text_printlevel(r.t.m) > 1, "\nLimit of %d chars per line exceeded.",
               kMaxTextLine);
      return QZERR_BAD_MODEL_FILE;
    }
    QZ_CALL(do_line(r, line));
  }
  if (r.state == kLtxStart || r.state == kLtxTitle) return bad_token(r);
  if (r.state == kLtxObjective || r.state == kLtxConstraints) QZ_CALL(enter_state(r, kLtxEnd));
  QZlogmod(&r.t.m, base_printlevel(r.t.m) > 0,
           "\nProcessed %d lines in ZENTO format (%.2f secs).\n", r.line, lt_get_realtime() - t0);
  return r.t.finish();
}

int read_text(Imodel& m, const char* text, int len, const char* title) {
  return read_text_stream<LtxMachine>(m, text, len, title, "\nLTX stream is too short.", "ZENTO",
      [](LtxMachine& r, const char* t, size_t n) { return run(r, t, n); });
}

}  // namespace

int read_ltx_stream(Imodel& m, const char* text, int len, const char* title) {
  if (m.nCons > 0 || m.nVars > 0) return QZERR_ALREADY_LOADED;
  QZlogmod(&m, base_printlevel(m) > 0, "\nReading from stream at 0x%p in ZENTO format",
           static_cast<const void*>(text));
  return read_text(m, text, len, title);
}

int read_ltx_file(Imodel& m, const char* fname) {
  if (m.nCons > 0 || m.nVars > 0) return QZERR_ALREADY_LOADED;
  QZlogmod(&m, base_printlevel(m) > 0, "\nReading %s in ZENTO format", fname);
  if (m.SolverPam.copy_mode & kLtxGrammarReaderBit) return read_ltx_file_x(m, fname);
  std::string text;
  QZ_CALL(qzi_file2str(m.env, fname, text));
  if (text.size() > 2147483647u) return QZERR_BAD_MODEL_FILE;
  QZ_CALL(read_text(m, text.data(), static_cast<int>(text.size()), fname));
  QZbreakPathName(fname, m.fileInfo.dir, m.fileInfo.stem, m.fileInfo.ext);
  m.modelFileName = fname;
  return 0;
}

}  // namespace zento::io
