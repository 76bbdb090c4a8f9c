// The LP format reader: a line machine over sections (objective, constraints, bounds,
// integers, binaries, general integers, sets, end). Lines are prepared by the shared token
// helpers: comments cut at a backslash, keywords tested, blanks squeezed, signs folded.
#include <cstdio>
#include <cstring>
#include <new>

#include "core/errors.h"
#include "core/log.h"
#include "io/lp_tokens.h"
#include "io/text_formats.h"
#include "io/text_model.h"

namespace zento::io {

namespace {

enum LpState {
  kLpStart = 1,
  kLpObjective,
  kLpConstraints,
  kLpBounds,
  kLpIntegers,
  kLpBinaries,
  kLpGenerals,
  kLpSets,
  kLpEnd
};

struct LpMachine {
  explicit LpMachine(Imodel& m) : t(m) {}
  TextModel t;
  TermState terms;
  int state = kLpStart;
  int line = 0;
  std::string squeezed, rowName;
};

int bad_token(LpMachine& r) {
  QZlogmod(&r.t.m, text_printlevel(r.t.m) > 1,
           "\nUnexpected or missing token. Invalid LP format. ");
  return QZERR_ERROR_IN_INPUT;
}

// The section a keyword at the start of the line opens, or 0.
int section_keyword(LpMachine& r, const char** p) {
  if (r.state == kLpStart) {
    if (qzi_isKeyword(p, "max[imize]")) {
      r.t.sense = QZ_MAX;
      return kLpObjective;
    }
    if (qzi_isKeyword(p, "min[imize]")) {
      r.t.sense = QZ_MIN;
      return kLpObjective;
    }
    return 0;
  }
  if (r.state == kLpObjective &&
      (qzi_isKeyword(p, "s[ubject][   ]t[o]") || qzi_isKeyword(p, "s[uch][    ]t[hat]") ||
       qzi_isKeyword(p, "s[.][    ]t[.]")))
    return kLpConstraints;
  if (qzi_isKeyword(p, "bound[s]")) return kLpBounds;
  if (qzi_isKeyword(p, "int[egers]")) return kLpIntegers;
  if (qzi_isKeyword(p, "bin[aries]") || qzi_isKeyword(p, "bin[ary]")) return kLpBinaries;
  if (qzi_isKeyword(p, "gen[erals]")) return kLpGenerals;
  if (qzi_isKeyword(p, "sos")) return kLpSets;
  if (qzi_isKeyword(p, "end")) return kLpEnd;
  return 0;
}

int enter_section(LpMachine& r, int next) {
  if (r.state == kLpObjective) {
    QZ_CALL(end_objective(r.t, r.terms));
  } else if (r.state == kLpConstraints && r.terms.pending()) {
    return bad_token(r);  // a row without its right-hand side
  }
  r.state = next;
  return 0;
}

// Reads a column name at `*p`; -1 when unknown (nothing is inserted).
int known_column(LpMachine& r, const char** p, std::string& name) {
  const char* b = *p;
  while (**p != '\0' && std::strchr(kNameEndLp, **p) == nullptr) ++*p;
  name.assign(b, static_cast<size_t>(*p - b));
  return r.t.column(name.c_str(), false);
}

bool read_bound_value(const char** p, double* v) {
  if (qzi_isInfinity(*p)) {
    *v = qzi_readInfinity(p);
    return true;
  }
  bool signOnly = false, hasSign = false;
  return qzi_readValue(p, v, &signOnly, &hasSign) && !signOnly;
}

void set_bound(LpMachine& r, int j, char sense, double v, bool columnFirst) {
  r.t.ensure_bounds();
  if (sense == '=') {
    r.t.lo[j] = r.t.up[j] = v;
  } else if ((sense == '<') == columnFirst) {
    r.t.up[j] = v;
  } else {
    r.t.lo[j] = v;
  }
}

// "value sense column [sense value]", "column sense value", "column free".
int bounds_line(LpMachine& r, const char* p) {
  std::string name;
  while (*p != '\0') {
    skip_white(&p);
    if (*p == '\0') break;
    double v = 0.0;
    char s1 = 0;
    bool leading = false;
    const bool dotName = *p == '.' && !(p[1] >= '0' && p[1] <= '9');
    if (is_value_start(*p) && !dotName) {
      if (!read_bound_value(&p, &v)) return bad_token(r);
      skip_white(&p);
      s1 = qzi_readSense(&p);
      if (s1 == 0) return bad_token(r);
      skip_white(&p);
      leading = true;
    }
    if (!is_name_start(*p, kNameStartLp)) return bad_token(r);
    const int j = known_column(r, &p, name);
    if (j < 0)
      QZlogmod(&r.t.m, text_printlevel(r.t.m) > 1,
               "\nBounds: Ignoring unknown variable at line %d.", r.line);
    else if (leading)
      set_bound(r, j, s1, v, false);
    skip_white(&p);
    if (!leading && qzi_isFree(p)) {
      p += 4;
      if (j >= 0) {
        r.t.ensure_bounds();
        r.t.lo[j] = -QZ_INFINITY;
        r.t.up[j] = QZ_INFINITY;
      }
      continue;
    }
    if (!is_sense_char(*p)) {
      if (leading) continue;
      return bad_token(r);  // a column alone
    }
    const char s2 = qzi_readSense(&p);
    skip_white(&p);
    if (!read_bound_value(&p, &v)) return bad_token(r);
    if (j >= 0) set_bound(r, j, s2, v, true);
  }
  return 0;
}

// Integers, binaries and general integers: a list of column names.
int type_line(LpMachine& r, const char* p) {
  std::string name;
  while (*p != '\0') {
    skip_white(&p);
    if (*p == '\0') break;
    if (!is_name_start(*p, kNameStartLp)) return bad_token(r);
    const int j = known_column(r, &p, name);
    if (j < 0) {
      QZlogmod(&r.t.m, r.state == kLpBinaries && text_printlevel(r.t.m) > 1,
               "\nBinaries: Ignoring unknown variable at line %d.", r.line);
      continue;
    }
    r.t.ensure_types();
    if (r.state == kLpBinaries) {
      r.t.ensure_bounds();
      r.t.lo[j] = 0.0;
      r.t.up[j] = 1.0;
      r.t.type[j] = 'B';
    } else {
      r.t.type[j] = 'I';
    }
  }
  return 0;
}

int sets_line(LpMachine& r, const char* p) {
  while (*p != '\0') {
    skip_white(&p);
    if (*p == '\0') break;
    QZlogmod(&r.t.m, text_printlevel(r.t.m) > 1, "\nSOS: Ignoring unknown tags at line %d. ",
             r.line);
    while (*p != '\0' && !is_white(*p)) ++p;
  }
  return 0;
}

int do_line(LpMachine& r, std::string& line) {
  const char* p = line.c_str();
  skip_white(&p);
  if (char* cut = std::strchr(const_cast<char*>(p), '\\')) *cut = '\0';
  if (const int next = section_keyword(r, &p)) QZ_CALL(enter_section(r, next));
  if (r.state == kLpObjective || r.state == kLpConstraints) {
    const char* q = p;
    if (qzi_isRowname(&q, r.rowName, ':')) {
      p = q;
      if (r.state == kLpConstraints) {
        if (r.terms.pending()) return bad_token(r);
        r.terms.rowName = r.rowName;
      }
    }
  }
  squeeze_line(p, kNameStartSqueeze, r.squeezed);
  const char* s = r.squeezed.c_str();
  switch (r.state) {
    case kLpStart:
      return *s == '\0' ? 0 : bad_token(r);
    case kLpObjective:
    case kLpConstraints: {
      const int rc = read_terms(r.t, r.terms, s, r.state == kLpObjective, kNameStartLp, kNameEndLp);
      return rc == QZERR_ERROR_IN_INPUT ? bad_token(r) : rc;
    }
    case kLpBounds:
      return bounds_line(r, s);
    case kLpIntegers:
    case kLpBinaries:
    case kLpGenerals:
      return type_line(r, s);
    case kLpSets:
      return sets_line(r, s);
    default:
      return 0;
  }
}

int run(LpMachine& r, const char* text, size_t len) {
  TextLines lines(text, len);
  std::string line;
  bool tooLong = false;
  while (lines.next(line, &tooLong)) {
    r.line = lines.line_number();
    if (r.state == kLpEnd) continue;
    if (tooLong) {
      QZlogmod(&r.t.m, text_printlevel(r.t.m) > 1, "\nLimit of %d chars per line exceeded.",
               kMaxTextLine);
      return QZERR_BAD_MODEL_FILE;
    }
    QZ_CALL(do_line(r, line));
  }
  if (r.state == kLpStart) return bad_token(r);
  if (r.state != kLpEnd) {
    QZlogmod(&r.t.m, text_printlevel(r.t.m) > 1, "\nMissing token 'END'");
    QZ_CALL(enter_section(r, kLpEnd));
  }
  QZlogmod(&r.t.m, base_printlevel(r.t.m) > 0, "\nProcessed %d lines in LP format.", r.line);
  return r.t.finish();
}

}  // namespace

int read_lp_stream(Imodel& m, const char* text, int len, const char* title) {
  if (m.nCons > 0 || m.nVars > 0) return QZERR_ALREADY_LOADED;
  return read_text_stream<LpMachine>(m, text, len, title, "\nLP stream is too short.", "LP",
      [](LpMachine& r, const char* t, size_t n) { return run(r, t, n); });
}

int read_lp_file(Imodel& m, const char* fname) {
  if (m.nCons > 0 || m.nVars > 0) return QZERR_ALREADY_LOADED;
  std::string text;
  QZ_CALL(qzi_file2str(m.env, fname, text));
  if (text.size() > 2147483647u) return QZERR_BAD_MODEL_FILE;
  QZ_CALL(read_lp_stream(m, text.data(), static_cast<int>(text.size()), fname));
  QZbreakPathName(fname, m.fileInfo.dir, m.fileInfo.stem, m.fileInfo.ext);
  m.modelFileName = fname;
  return 0;
}

}  // namespace zento::io
