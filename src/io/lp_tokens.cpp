// Token helpers of the LP and ZENTO line machines.
#include "io/lp_tokens.h"

#include <cctype>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "zento.h"

namespace zento::io {

namespace {

char lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }
bool is_digit(char c) { return c >= '0' && c <= '9'; }

// Matches `pat` at `s`; on success `*end` is behind the match. Bracketed parts are optional
// prefixes; the shortest choice that lets the rest match wins after the longest is tried.
bool match_pattern(const char* s, const char* pat, const char** end) {
  if (*pat == '\0') {
    if (*s == '\0' || is_white(*s) || is_sense_char(*s)) {
      *end = s;
      return true;
    }
    return false;
  }
  if (*pat == '[') {
    const char* close = std::strchr(pat, ']');
    if (close == nullptr) return false;
    const int len = static_cast<int>(close - pat - 1);
    int n = 0;  // how much of the optional part the text holds
    while (n < len) {
      const char p = pat[1 + n];
      const char c = s[n];
      const bool ok = p == ' ' ? (c == ' ' || c == '\t') : (c != '\0' && lower(c) == lower(p));
      if (!ok) break;
      ++n;
    }
    for (int k = n; k >= 0; --k)
      if (match_pattern(s + k, close + 1, end)) return true;
    return false;
  }
  const char p = *pat;
  const bool ok = p == ' ' ? (*s == ' ' || *s == '\t') : (*s != '\0' && lower(*s) == lower(p));
  return ok && match_pattern(s + 1, pat + 1, end);
}

}  // namespace

bool is_white(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }
bool is_value_start(char c) { return c == '+' || c == '-' || c == '.' || is_digit(c); }
bool is_sense_char(char c) { return c == '<' || c == '=' || c == '>'; }
bool is_name_start(char c, const char* extra) {
  return std::isalpha(static_cast<unsigned char>(c)) || (c != '\0' && std::strchr(extra, c));
}

void skip_white(const char** pos) {
  while (is_white(**pos)) ++*pos;
}

bool qzi_isKeyword(const char** pos, const char* pattern) {
  const char* end = nullptr;
  if (!match_pattern(*pos, pattern, &end)) return false;
  *pos = end;
  return true;
}

bool qzi_isRowname(const char** pos, std::string& name, char mark) {
  const char* at = std::strchr(*pos, mark);
  if (at == nullptr) return false;
  const char* e = at;
  while (e > *pos && is_white(e[-1])) --e;
  const char* b = e;
  while (b > *pos && !is_white(b[-1])) --b;
  name.assign(b, static_cast<size_t>(e - b));
  *pos = at + 1;
  return true;
}

bool qzi_readValue(const char** pos, double* value, bool* signOnly, bool* hasSign) {
  const char* s = *pos;
  const char* p = s;
  *hasSign = *p == '+' || *p == '-';
  const bool negative = *p == '-';
  if (*hasSign) ++p;
  const char* digits = p;
  while (is_digit(*p)) ++p;
  bool any = p > digits;
  if (*p == '.') {
    ++p;
    const char* frac = p;
    while (is_digit(*p)) ++p;
    any = any || p > frac;
    if (!any && !*hasSign) return false;  // a lone point is no value
  }
  if (!any) {
    if (!*hasSign) return false;
    *signOnly = true;
    *value = negative ? -1.0 : 1.0;
    p = s + 1;
    *pos = p;
    if (is_white(**pos)) ++*pos;
    return true;
  }
  // An exponent only when digits follow, so that "2e" before a name stays a name.
  if (*p == 'e' || *p == 'E') {
    const char* q = p + 1;
    if (*q == '+' || *q == '-') ++q;
    if (is_digit(*q)) {
      while (is_digit(*q)) ++q;
      p = q;
    }
  }
  *signOnly = false;
  *value = std::strtod(std::string(s, static_cast<size_t>(p - s)).c_str(), nullptr);
  if (!std::isfinite(*value)) return false;  // beyond the range of a double
  *pos = p;
  if (is_white(**pos)) ++*pos;
  return true;
}

char qzi_readSense(const char** pos) {
  const char* p = *pos;
  char sense = 0;
  if (p[0] == '<') {
    sense = '<';
    p += p[1] == '=' ? 2 : 1;
  } else if (p[0] == '>') {
    sense = '>';
    p += p[1] == '=' ? 2 : 1;
  } else if (p[0] == '=') {
    if (p[1] == '<') {
      sense = '<';
      p += 2;
    } else if (p[1] == '>') {
      sense = '>';
      p += 2;
    } else {
      sense = '=';
      p += p[1] == '=' ? 2 : 1;
    }
  }
  if (sense == 0) return 0;
  if (is_white(*p)) ++p;
  *pos = p;
  return sense;
}

bool qzi_isInfinity(const char* pos) {
  if (*pos != '+' && *pos != '-') return false;
  return lower(pos[1]) == 'i' && lower(pos[2]) == 'n' && lower(pos[3]) == 'f';
}

double qzi_readInfinity(const char** pos) {
  const double v = **pos == '-' ? -QZ_INFINITY : QZ_INFINITY;
  const char* p = *pos + 4;
  const char* rest = "inity";
  for (int k = 0; rest[k] != '\0' && lower(*p) == rest[k]; ++k) ++p;
  if (is_white(*p)) ++p;
  *pos = p;
  return v;
}

bool qzi_isFree(const char* pos) {
  return lower(pos[0]) == 'f' && lower(pos[1]) == 'r' && lower(pos[2]) == 'e' &&
         lower(pos[3]) == 'e';
}

void squeeze_line(const char* text, const char* nameStart, std::string& out) {
  out.clear();
  const char* p = text;
  while (*p != '\0') {
    if (!is_white(*p)) {
      out.push_back(*p++);
      continue;
    }
    while (is_white(*p)) ++p;
    if (*p == '\0' || out.empty()) continue;
    bool keep = is_name_start(*p, nameStart);
    if (keep && *p == '.') {
      const char* q = p + 1;
      while (is_white(*q)) ++q;
      if (is_digit(*q)) keep = false;
    }
    if (keep) out.push_back(' ');
  }
  fold_signs(out);
}

void fold_signs(std::string& s) {
  std::string out;
  out.reserve(s.size());
  for (char c : s) {
    const bool sign = c == '+' || c == '-';
    if (sign && !out.empty() && (out.back() == '+' || out.back() == '-')) {
      out.back() = out.back() == c ? '+' : '-';
      continue;
    }
    out.push_back(c);
  }
  s.swap(out);
}

}  // namespace zento::io
