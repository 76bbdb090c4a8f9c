// The grammar-driven reader of the ZENTO format: a case-insensitive longest-match scanner and
// a recursive-descent parser, one function per rule of the grammar
//
//   program      := [TITLE] problem {declaration}
//   problem      := objective ST {constraint} [END]
//   objective    := (MAX | MIN) [ROWNAME] [terms]
//   constraint   := [ROWNAME] [terms] SENSE [SIGN] NUMBER
//   terms        := first {further};  first := [SIGN] [NUMBER] NAME;  further := SIGN [NUMBER] NAME
//   declaration  := FREE NAME | GIN (NAME | NUMBER) | INT (NAME | NUMBER)
//                 | SUB NAME [SIGN] NUMBER | SLB NAME [SIGN] NUMBER | QCP | TITLE
//
// The objective also takes constant terms ([SIGN] NUMBER with no NAME behind it), which the
// writer puts there, and a number may carry an exponent, so that both readers of the format
// read every file of the writer alike. The scanner and the parser keep their state in local
// records, so reads may run side by side.
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

#include "core/errors.h"
#include "core/load.h"
#include "core/log.h"
#include "io/text_formats.h"
#include "io/text_model.h"

namespace zento::io {

namespace {

enum class Tok {
  kEof,
  kError,
  kTitle,
  kMin,
  kMax,
  kSt,
  kEnd,
  kFree,
  kGin,
  kInt,
  kSlb,
  kSub,
  kQcp,
  kNumber,
  kName,
  kRowName,
  kSign,
  kSense
};

struct Token {
  Tok type = Tok::kEof;
  std::string text;  // name, row name (without the mark) or title
  double value = 0;  // number, or the sign (+1, -1)
  char sense = 0;    // 'L', 'G', 'E'
  int line = 1;
};

bool is_alpha(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; }
bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool is_name_char(char c) { return is_alpha(c) || is_digit(c) || c == '_' || c == '.'; }
char lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

class Scanner {
 public:
  Scanner(Imodel& m, const char* text, size_t len) : m_(m), p_(text), end_(text + len) {}
  Token next();
  int line() const { return line_; }

 private:
  // Length of the longest case-insensitive prefix of `word` at p_, when at least `min` long.
  size_t prefix(const char* word, size_t min) const;
  size_t exact(const char* word) const {
    const size_t n = std::strlen(word);
    return prefix(word, n) == n ? n : 0;
  }
  size_t st_length() const;

  Imodel& m_;
  const char* p_;
  const char* end_;
  int line_ = 1;
};

size_t Scanner::prefix(const char* word, size_t min) const {
  size_t n = 0;
  while (word[n] != '\0' && p_ + n < end_ && lower(p_[n]) == word[n]) ++n;
  return n >= min ? n : 0;
}

size_t Scanner::st_length() const {
  const char* forms[] = {"subject to", "s.t.", "st.", "st"};
  for (const char* f : forms)
    if (const size_t n = exact(f)) return n;
  return 0;
}

Token Scanner::next() {
  Token t;
  for (;;) {
    while (p_ < end_ && (*p_ == ' ' || *p_ == '\t' || *p_ == '\r' || *p_ == '\n')) {
      if (*p_ == '\n') ++line_;
      ++p_;
    }
    if (p_ < end_ && *p_ == '!') {
      while (p_ < end_ && *p_ != '\n') ++p_;
      continue;
    }
    break;
  }
  t.line = line_;
  if (p_ >= end_) return t;
  const char c = *p_;
  // Candidates of variable length; a keyword wins a tie.
  size_t nameLen = 0, rowLen = 0, numLen = 0;
  if (is_alpha(c) || c == '_') {
    while (p_ + nameLen < end_ && is_name_char(p_[nameLen])) ++nameLen;
    if (p_ + nameLen < end_ && p_[nameLen] == ')') rowLen = nameLen + 1;
  } else if (is_digit(c) || (c == '.' && p_ + 1 < end_ && is_digit(p_[1]))) {
    const char* q = p_;
    while (q < end_ && is_digit(*q)) ++q;
    if (q < end_ && *q == ')' && q > p_) rowLen = static_cast<size_t>(q - p_) + 1;
    if (q < end_ && *q == '.') {
      ++q;
      while (q < end_ && is_digit(*q)) ++q;
    }
    if (q < end_ && (*q == 'e' || *q == 'E')) {
      const char* e = q + 1;
      if (e < end_ && (*e == '+' || *e == '-')) ++e;
      if (e < end_ && is_digit(*e)) {
        while (e < end_ && is_digit(*e)) ++e;
        q = e;
      }
    }
    numLen = static_cast<size_t>(q - p_);
  }
  struct Keyword {
    Tok tok;
    size_t len;
  };
  size_t titleLen = 0;
  if (exact("title")) {
    titleLen = 5;
    while (p_ + titleLen < end_ && p_[titleLen] != '\n') ++titleLen;
  }
  const Keyword keys[] = {{Tok::kTitle, titleLen},
                          {Tok::kMin, prefix("minimize", 3)},
                          {Tok::kMax, prefix("maximize", 3)},
                          {Tok::kSt, st_length()},
                          {Tok::kEnd, exact("end")},
                          {Tok::kFree, exact("free")},
                          {Tok::kGin, exact("gin")},
                          {Tok::kInt, prefix("integer", 3)},
                          {Tok::kSlb, exact("slb")},
                          {Tok::kSub, exact("sub")},
                          {Tok::kQcp, exact("qcp")}};
  Keyword best{Tok::kEof, 0};
  for (const Keyword& k : keys)
    if (k.len > best.len) best = k;
  const size_t other = std::max(nameLen, std::max(rowLen, numLen));
  if (best.len > 0 && best.len >= other) {
    t.type = best.tok;
    if (best.tok == Tok::kTitle) {
      const char* b = p_ + 5;
      const char* e = p_ + best.len;
      while (b < e && (*b == ' ' || *b == '\t')) ++b;
      while (e > b && (e[-1] == ' ' || e[-1] == '\t' || e[-1] == '\r')) --e;
      t.text.assign(b, static_cast<size_t>(e - b));
    }
    p_ += best.len;
    return t;
  }
  if (rowLen > 0 && rowLen >= other) {
    t.type = Tok::kRowName;
    t.text.assign(p_, rowLen - 1);
    p_ += rowLen;
    return t;
  }
  if (numLen > 0) {
    t.type = Tok::kNumber;
    t.value = std::strtod(std::string(p_, numLen).c_str(), nullptr);
    p_ += numLen;
    if (!std::isfinite(t.value)) t.type = Tok::kError;  // beyond the range of a double
    return t;
  }
  if (nameLen > 0) {
    t.type = Tok::kName;
    t.text.assign(p_, nameLen);
    p_ += nameLen;
    return t;
  }
  if (c == '+' || c == '-') {
    t.type = Tok::kSign;
    t.value = 1.0;
    while (p_ < end_ && (*p_ == '+' || *p_ == '-')) {
      if (*p_ == '-') t.value = -t.value;
      ++p_;
    }
    return t;
  }
  const char d = p_ + 1 < end_ ? p_[1] : '\0';
  if (c == '<' || c == '>' || c == '=') {
    t.type = Tok::kSense;
    if (c == '=' && (d == '<' || d == '>')) {
      t.sense = d == '<' ? 'L' : 'G';
      p_ += 2;
    } else {
      t.sense = c == '<' ? 'L' : c == '>' ? 'G' : 'E';
      p_ += d == '=' ? 2 : 1;
    }
    return t;
  }
  char shown[2] = {c, '\0'};
  QZlogmod(&m_, text_printlevel(m_) > 1, "LEX ERROR: %s\n", shown);
  t.type = Tok::kError;
  return t;
}

struct SyntaxError {};

class Parser {
 public:
  Parser(Imodel& m, const char* text, size_t len) : t_(m), scan_(m, text, len) {}
  int parse();
  // The line of the token or declaration where the parse stopped.
  int line() const { return errLine_ > 0 ? errLine_ : tok_.line; }
  TextModel& model() { return t_; }

 private:
  void advance() { tok_ = scan_.next(); }
  bool at(Tok k) const { return tok_.type == k; }
  [[noreturn]] void fail() { throw SyntaxError{}; }
  void expect(Tok k) {
    if (!at(k)) fail();
    advance();
  }
  std::string take_name() {
    if (!at(Tok::kName)) fail();
    std::string n = tok_.text;
    advance();
    return n;
  }
  double take_signed_number() {
    double sign = 1.0;
    if (at(Tok::kSign)) {
      sign = tok_.value;
      advance();
    }
    if (!at(Tok::kNumber)) fail();
    const double v = sign * tok_.value;
    advance();
    return v;
  }

  void problem();
  void objective();
  void constraint();
  // One term; in the objective a number with no name behind it is a constant. False when
  // the current token can't start a term.
  bool term(bool first, bool objective);
  void terms(bool objective);
  int declaration();

  TextModel t_;
  Scanner scan_;
  Token tok_;
  int errLine_ = 0;
};

bool Parser::term(bool first, bool objective) {
  double coef = 1.0;
  if (at(Tok::kSign)) {
    coef = tok_.value;
    advance();
  } else if (!first || !(at(Tok::kName) || at(Tok::kNumber))) {
    return false;
  }
  if (at(Tok::kNumber)) {
    coef *= tok_.value;
    advance();
    if (!at(Tok::kName)) {
      if (!objective) fail();
      t_.objConst += coef;
      return true;
    }
  }
  const std::string name = take_name();
  const int j = t_.column(name.c_str(), true);
  if (j < 0) throw std::bad_alloc();
  t_.add_term(j, coef);
  return true;
}

void Parser::terms(bool objective) {
  if (!term(true, objective)) return;
  while (term(false, objective)) {
  }
}

void Parser::objective() {
  if (at(Tok::kMax)) {
    t_.sense = QZ_MAX;
  } else if (at(Tok::kMin)) {
    t_.sense = QZ_MIN;
  } else {
    fail();
  }
  advance();
  if (at(Tok::kRowName)) advance();
  terms(true);
  t_.put_objective();
}

void Parser::constraint() {
  std::string name;
  if (at(Tok::kRowName)) {
    name = tok_.text;
    advance();
  }
  terms(false);
  if (!at(Tok::kSense)) fail();
  const char sense = tok_.sense;
  advance();
  const double rhs = take_signed_number();
  t_.put_constraint(sense, rhs, name);
}

void Parser::problem() {
  objective();
  expect(Tok::kSt);
  while (at(Tok::kRowName) || at(Tok::kName) || at(Tok::kNumber) || at(Tok::kSign) ||
         at(Tok::kSense))
    constraint();
  if (at(Tok::kEnd)) advance();
  t_.ensure_bounds();
}

int Parser::declaration() {
  const Tok kind = tok_.type;
  errLine_ = tok_.line;  // a declaration that fails names its own line
  switch (kind) {
    case Tok::kQcp:
    case Tok::kTitle:
    case Tok::kGin:
    case Tok::kInt:
    case Tok::kFree:
    case Tok::kSub:
    case Tok::kSlb:
      break;
    default:
      fail();
  }
  advance();
  switch (kind) {
    case Tok::kQcp:
      return QZERR_NOT_SUPPORTED;
    case Tok::kTitle:
      return 0;
    case Tok::kGin:
    case Tok::kInt:
      if (at(Tok::kNumber)) {
        const double n = tok_.value;
        advance();
        if (kind == Tok::kGin) return 0;
        if (n > t_.ncols()) return QZERR_VARIABLE_NOT_FOUND;
        t_.ensure_types();
        for (int j = 0; j < static_cast<int>(n); ++j) t_.type[j] = 'I';
        return 0;
      }
      break;
    default:
      break;
  }
  const std::string name = take_name();
  const int j = t_.column(name.c_str(), false);
  const double v = (kind == Tok::kSub || kind == Tok::kSlb) ? take_signed_number() : 0.0;
  if (j < 0) return QZERR_VARIABLE_NOT_FOUND;
  t_.ensure_bounds();
  t_.ensure_types();
  switch (kind) {
    case Tok::kFree:
      t_.lo[j] = -QZ_INFINITY;
      t_.up[j] = QZ_INFINITY;
      break;
    case Tok::kGin:
      t_.type[j] = 'I';
      break;
    case Tok::kInt:
      t_.lo[j] = 0.0;
      t_.up[j] = 1.0;
      t_.type[j] = 'B';
      break;
    case Tok::kSub:
      t_.up[j] = v;
      break;
    default:
      t_.lo[j] = v;
  }
  return 0;
}

int Parser::parse() {
  try {
    advance();
    if (at(Tok::kTitle)) {
      t_.title = tok_.text;
      advance();
    }
    problem();
    while (!at(Tok::kEof)) {
      QZ_CALL(declaration());
      errLine_ = 0;
    }
  } catch (const SyntaxError&) {
    QZlogmod(&t_.m, 1, "\nparse error");
    return QZERR_BAD_MODEL_FILE;
  }
  return t_.finish();
}

}  // namespace

int read_ltx_text_x(Imodel& m, const char* text, size_t len, const char* title) {
  if (m.nCons > 0 || m.nVars > 0) return QZERR_ALREADY_LOADED;
  m.fileErrorLine = 0;
  m.fileErrorText.clear();
  Parser parser(m, text, len);
  int rc = 0;
  try {
    rc = parser.parse();
  } catch (const std::bad_alloc&) {
    rc = QZERR_OUT_OF_MEMORY;
  }
  if (rc != 0) {
    text_read_failed(m, parser.line());
    return rc;
  }
  if (m.names.title.empty() && title != nullptr) m.names.title = title;
  m.modelSource = "ZENTO";
  return 0;
}

int read_ltx_file_x(Imodel& m, const char* fname) {
  if (m.nCons > 0 || m.nVars > 0) return QZERR_ALREADY_LOADED;
  std::string text;
  QZ_CALL(qzi_file2str(m.env, fname, text));
  QZ_CALL(read_ltx_text_x(m, text.data(), text.size(), fname));
  QZbreakPathName(fname, m.fileInfo.dir, m.fileInfo.stem, m.fileInfo.ext);
  m.modelFileName = fname;
  return 0;
}

}  // namespace zento::io
