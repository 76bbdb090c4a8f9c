// MPS tokenizers.
#include "io/mps_tokens.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include "io/mps_scan.h"

namespace zento::io {

namespace {

bool is_blank(char c) { return c == ' ' || c == '\t'; }

// Resets a line for the next tokenization. The text store is not cleared: every string the
// tokenizers put there is terminated, and zeroing it per line cost more than the rest.
void clear_line(MpsLine& out) {
  std::fill(std::begin(out.f), std::end(out.f), nullptr);
  std::fill(std::begin(out.word), std::end(out.word), nullptr);
  out.ntok = 0;
  out.nword = 0;
  out.section = false;
  out.numText[0] = out.numText[1] = nullptr;
}

// Splits into words; `comments` drops a word starting with '$' or '!' and all behind it.
// Returns the word count, which may exceed `cap`; only `cap` pointers are stored.
int split_words(const RawLine& raw, char* store, const char** words, int cap, bool comments) {
  const int len = raw.len;
  std::memcpy(store, raw.text, static_cast<size_t>(len));
  store[len] = '\0';
  WordScan scan(raw.text, len);
  int n = 0;
  for (int k = 0, end = 0; scan.next(&k, &end);) {
    if (comments && (store[k] == '$' || store[k] == '!')) break;
    if (n < cap) words[n] = store + k;
    ++n;
    store[end] = '\0';
  }
  return n;
}

void place(MpsLine& out, const char* const* tok, std::initializer_list<int> fields) {
  int k = 0;
  for (int f : fields) out.f[f] = tok[k++];
}

// Data line placement of the free layout by state.
bool place_free(MpsLine& out, const char* const* t, int n, int state) {
  switch (state) {
    case kObjSense:
      if (n >= 1) out.f[2] = t[0];
      return true;
    case kRows:
      if (n > 7) return false;
      for (int k = 0; k < n; ++k) out.f[k + 1] = t[k];
      return true;
    case kColumns:
      if (n == 5) {
        place(out, t, {2, 3, 4, 5, 6});
      } else if (n == 3) {
        if (std::strcmp(t[1], "'MARKER'") == 0)
          place(out, t, {2, 3, 5});
        else
          place(out, t, {2, 3, 4});
      } else if (n == 4 && std::strcmp(t[2], "'MARKER'") == 0) {
        place(out, t, {1, 2, 3, 5});
      } else {
        return false;
      }
      return true;
    case kRhs:
    case kRanges:
      if (n == 5)
        place(out, t, {2, 3, 4, 5, 6});
      else if (n == 4)
        place(out, t, {3, 4, 5, 6});
      else if (n == 3)
        place(out, t, {2, 3, 4});
      else if (n == 2)
        place(out, t, {3, 4});
      else
        return false;
      return true;
    case kBounds: {
      if (n > 4) return false;
      const char* tag = t[0];
      const bool valued = iequals(tag, "UP") || iequals(tag, "LO") || iequals(tag, "FX") ||
                          iequals(tag, "UI") || iequals(tag, "LI");
      const bool bare = iequals(tag, "BV") || iequals(tag, "PL") || iequals(tag, "MI") ||
                        iequals(tag, "FR");
      // "SC x 5" has no set name when its last word is a number.
      const bool scValued = iequals(tag, "SC") && n == 3 && parse_number(t[2], nullptr);
      if (n == 3 && (valued || scValued))
        place(out, t, {1, 3, 4});
      else if (n == 2 && bare)
        place(out, t, {1, 3});
      else
        for (int k = 0; k < n; ++k) out.f[k + 1] = t[k];
      return true;
    }
    case kQuadObj:
    case kQuadRow:
      if (n > 3) return false;
      for (int k = 0; k < n; ++k) out.f[k + 2] = t[k];
      return true;
    case kCone:
      if (n > 1) return false;
      if (n == 1) out.f[2] = t[0];
      return true;
    case kIndicators:
      if (n > 4) return false;
      for (int k = 0; k < n; ++k) out.f[k + 1] = t[k];
      return true;
    default:
      return false;
  }
}

// Copies columns [a, b] of the line, blank padded, trimmed on both sides; null when blank.
const char* fixed_field(const RawLine& raw, int a, int b, char*& cursor) {
  int lo = a, hi = b;
  auto at = [&](int k) { return k < raw.len ? raw.text[k] : ' '; };
  while (lo <= hi && is_blank(at(lo))) ++lo;
  while (hi >= lo && is_blank(at(hi))) --hi;
  if (lo > hi) return nullptr;
  char* out = cursor;
  for (int k = lo; k <= hi; ++k) *cursor++ = at(k);
  *cursor++ = '\0';
  return out;
}

constexpr int kFieldCols[7][2] = {{0, 0}, {1, 2}, {4, 11}, {14, 21}, {24, 35}, {39, 46}, {49, 60}};

// Whether a column of a fixed-layout line lies inside one of the six fields.
struct FieldMask {
  bool inside[kMaxLineBytes + 2] = {};
  constexpr FieldMask() {
    for (int f = 1; f <= 6; ++f)
      for (int k = kFieldCols[f][0]; k <= kFieldCols[f][1]; ++k) inside[k] = true;
  }
};
constexpr FieldMask kFieldMask;

bool has_stray_bytes(const RawLine& raw) {
  for (int k = 0; k < raw.len; ++k)
    if (!is_blank(raw.text[k]) && !kFieldMask.inside[k]) return true;
  return false;
}

bool fill_fixed_section(const RawLine& raw, MpsLine& out) {
  out.section = true;
  out.nword = split_words(raw, out.store, out.word, 8, false);
  out.f[1] = out.word[0];
  char* cursor = out.store + kMaxLineBytes + 2;
  out.f[3] = fixed_field(raw, 14, 21, cursor);
  out.ntok = out.f[3] ? 2 : 1;
  return true;
}

}  // namespace

// Keywords are ASCII: folding only a-z keeps their test apart from the host's locale.
char ascii_upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

bool iequals(const char* a, const char* b) {
  if (a == nullptr || b == nullptr) return false;
  for (; *a && *b; ++a, ++b)
    if (ascii_upper(*a) != ascii_upper(*b)) return false;
  return *a == *b;
}

bool QZI_IsNumber(const char* token) {
  if (token == nullptr) return true;
  while (is_blank(*token)) ++token;
  for (; *token; ++token) {
    const char c = *token;
    if (!std::isdigit(static_cast<unsigned char>(c)) && c != '+' && c != '-' && c != '.' &&
        c != 'e' && c != 'E' && c != 'd' && c != 'D')
      return false;
  }
  return true;
}

namespace {

// Decimal syntax as strtod takes it on the characters QZI_IsNumber lets through: blanks, a
// sign, digits with at most one point (one digit at least), then an optional exponent letter
// (e, E, d, D), sign and digits. On success gives the mantissa digits as an integer when it
// has at most 19 of them (`exact`), the power of ten it is scaled by, and the exponent's digit
// count.
struct DecimalParts {
  bool negative = false;
  bool exact = true;
  unsigned long long mant = 0;
  int scale = 0;
  int exp_digits = 0;
};

bool decimal_syntax(const char* t, DecimalParts* d, const char** end) {
  // Locals, not the fields of *d: stores through d could alias the text and force reloads.
  while (*t == ' ' || *t == '\t') ++t;
  bool negative = false;
  if (*t == '+' || *t == '-') negative = *t++ == '-';
  unsigned long long mant = 0;
  int digits = 0, sig = 0, scale = 0;
  bool point = false, exact = true;
  for (;; ++t) {
    const unsigned c = static_cast<unsigned char>(*t) - static_cast<unsigned>('0');
    if (c <= 9) {
      ++digits;
      if (mant == 0 && c == 0) {
        scale -= point;
      } else if (sig < 19) {
        mant = mant * 10 + c;
        scale -= point;
        ++sig;
      } else {
        exact = false;
        scale += !point;
        ++sig;
      }
    } else if (*t == '.' && !point) {
      point = true;
    } else {
      break;
    }
  }
  d->negative = negative;
  d->mant = mant;
  d->exact = exact;
  if (digits == 0) return false;
  if (*t == 'e' || *t == 'E' || *t == 'd' || *t == 'D') {
    ++t;
    bool eneg = false;
    if (*t == '+' || *t == '-') eneg = *t++ == '-';
    int e = 0, ed = 0;
    while (*t >= '0' && *t <= '9') {
      if (e < 100000) e = e * 10 + (*t - '0');
      ++ed;
      ++t;
    }
    d->exp_digits = ed;
    if (ed == 0) return false;
    scale += eneg ? -e : e;
  }
  d->scale = scale;
  *end = t;
  return *t == '\0';
}

// The value of a short decimal when double arithmetic gives it exactly.
bool exact_value(const DecimalParts& d, double* value) {
  static constexpr double kPow10[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                      1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                      1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
  if (!d.exact || d.mant >= (1ULL << 53) || d.scale < -22 || d.scale > 22) return false;
  double v = static_cast<double>(d.mant);
  v = d.scale >= 0 ? v * kPow10[d.scale] : v / kPow10[-d.scale];
  *value = d.negative ? -v : v;
  return true;
}

}  // namespace

bool line_number(const MpsLine& l, const char* text, double* value) {
  for (int k = 0; k < 2; ++k) {
    if (text != nullptr && text == l.numText[k]) {
      *value = l.numValue[k];
      return true;
    }
  }
  return parse_number(text, value);
}

bool parse_number(const char* token, double* value) {
  if (token == nullptr || *token == '\0') return false;
  // Most numbers of a model file are short decimals: their syntax decides (a text that
  // passes it holds only what QZI_IsNumber allows), and the value is exact in double
  // arithmetic when the mantissa and the power of ten both are (an integer below 2^53 times
  // or over a power up to 10^22 rounds once, as strtod rounds). All others go through strtod.
  DecimalParts d;
  const char* end = token;
  if (!decimal_syntax(token, &d, &end)) return false;
  const size_t n = static_cast<size_t>(end - token);
  if (n >= 64) return false;
  if (value == nullptr && d.exp_digits <= 2) return true;
  if (value != nullptr && exact_value(d, value)) return true;
  char buf[64];
  for (size_t k = 0; k <= n; ++k) buf[k] = (token[k] == 'd' || token[k] == 'D') ? 'e' : token[k];
  char* stop = nullptr;
  const double v = std::strtod(buf, &stop);
  if (stop == buf || *stop != '\0' || !std::isfinite(v)) return false;
  if (value) *value = v;
  return true;
}

bool tokenize_free(const RawLine& raw, int state, MpsLine& out) {
  clear_line(out);
  const char* tok[8] = {};
  const int n = split_words(raw, out.store, tok, 8, true);
  out.ntok = n;
  if (std::isalpha(static_cast<unsigned char>(raw.text[0]))) {
    out.section = true;
    out.nword = n < 8 ? n : 8;
    for (int k = 0; k < out.nword; ++k) out.word[k] = tok[k];
    for (int k = 0; k < n && k < 7; ++k) out.f[k + 1] = tok[k];
    if (state == kStart) {
      out.f[3] = out.f[2];
      out.f[2] = nullptr;
    }
    return true;
  }
  if (n == 0) return true;
  if (n > 7) return false;
  return place_free(out, tok, n, state);
}

bool tokenize_fixed(const RawLine& raw, int state, MpsLine& out) {
  clear_line(out);
  if (!is_blank(raw.text[0])) return fill_fixed_section(raw, out);
  if (state == kColumns && std::strstr(raw.text, "'MARKER'") != nullptr)
    return tokenize_free(raw, state, out);
  char* cursor = out.store;
  for (int f = 1; f <= 6; ++f) {
    out.f[f] = fixed_field(raw, kFieldCols[f][0], kFieldCols[f][1], cursor);
    if (out.f[f]) ++out.ntok;
  }
  return true;
}

int fixed_layout_vote(const RawLine& raw, int state) {
  MpsLine fx, fr;
  return fixed_layout_vote(raw, state, fx, fr);
}

namespace {

// Field number of each column of a fixed-layout line, 0 between fields.
struct FieldOf {
  unsigned char of[kMaxLineBytes + 2] = {};
  constexpr FieldOf() {
    for (int f = 1; f <= 6; ++f)
      for (int k = kFieldCols[f][0]; k <= kFieldCols[f][1]; ++k) of[k] = static_cast<unsigned char>(f);
  }
};
constexpr FieldOf kFieldOf;

constexpr unsigned bit(int f) { return 1u << f; }

// A word of the line as a terminated copy, for the tests that need one.
struct Word {
  char text[kMaxLineBytes + 2];
  Word(const char* p, int n) {
    std::memcpy(text, p, static_cast<size_t>(n));
    text[n] = '\0';
  }
};

// parse_number(word, nullptr) on a word of a line, mostly without a copy: the syntax scan
// stops at the blank or the terminator behind the word just as it stops at the end of a copy.
// When it can, it also gives the value parse_number(word, &value) would (*exact).
bool number_word(const char* p, int n, double* value = nullptr, bool* exact = nullptr) {
  DecimalParts d;
  const char* end = nullptr;
  decimal_syntax(p, &d, &end);
  if (end == p + n && n < 64 && d.exp_digits <= 2) {
    if (exact) *exact = exact_value(d, value);
    return true;
  }
  if (exact) *exact = false;
  return parse_number(Word(p, n).text, nullptr);
}

// The fields the free layout gives to `n` words of a data line, as a bit set; -1 when the
// words don't fit the state. Only for states and lines fixed_layout_vote reaches it with.
int free_fields(int state, int n, const char* const* w, const int* wl) {
  switch (state) {
    case kRows:
      return n > 7 ? -1 : static_cast<int>(((1u << n) - 1) << 1);
    case kColumns:
      if (n == 5) return static_cast<int>(bit(2) | bit(3) | bit(4) | bit(5) | bit(6));
      if (n == 3) return static_cast<int>(bit(2) | bit(3) | bit(4));  // no marker here
      return -1;
    case kRhs:
    case kRanges:
      if (n == 5) return static_cast<int>(bit(2) | bit(3) | bit(4) | bit(5) | bit(6));
      if (n == 4) return static_cast<int>(bit(3) | bit(4) | bit(5) | bit(6));
      if (n == 3) return static_cast<int>(bit(2) | bit(3) | bit(4));
      if (n == 2) return static_cast<int>(bit(3) | bit(4));
      return -1;
    default: {  // kBounds
      if (n > 4) return -1;
      const Word tag(w[0], wl[0]);
      const char* t = tag.text;
      const bool valued = iequals(t, "UP") || iequals(t, "LO") || iequals(t, "FX") ||
                          iequals(t, "UI") || iequals(t, "LI");
      const bool bare = iequals(t, "BV") || iequals(t, "PL") || iequals(t, "MI") || iequals(t, "FR");
      const bool scValued =
          iequals(t, "SC") && n == 3 && number_word(w[2], wl[2]);
      if (n == 3 && (valued || scValued)) return static_cast<int>(bit(1) | bit(3) | bit(4));
      if (n == 2 && bare) return static_cast<int>(bit(1) | bit(3));
      return static_cast<int>(((1u << n) - 1) << 1);
    }
  }
}

// The vote of a line whose words each sit inside one field, one word a field at most, with
// no comment word: then the fixed fields are the words themselves, and the two readings
// agree exactly when the free one puts the words into the fields they sit in. Returns 2 for
// a line it cannot decide this way.
int quick_vote(const RawLine& raw, int state, MpsLine* out) {
  const char* text = raw.text;
  const int len = raw.len;
  // Marker lines and lines with a zero byte take the long way.
  if (raw.hasControl || (state == kColumns && std::memchr(text, '\'', static_cast<size_t>(len))))
    return 2;
  const char* w[8];
  int wl[8];
  unsigned have = 0;  // fields holding a word
  int wordIn[7] = {-1, -1, -1, -1, -1, -1, -1};
  int n = 0;
  WordScan scan(text, len);
  for (int start = 0, k = 0; scan.next(&start, &k);) {
    const int f = kFieldOf.of[start];
    if (f == 0 || kFieldOf.of[k - 1] != f) return -1;  // a byte between the fields
    if ((have & bit(f)) != 0 || n == 6) return 2;          // a field with a blank inside
    if (text[start] == '$' || text[start] == '!' || text[start] == '\'') return 2;
    have |= bit(f);
    wordIn[f] = n;
    w[n] = text + start;
    wl[n] = k - start;
    ++n;
  }
  double value[7];
  bool exact[7] = {};
  auto num = [&](int f) {
    const int i = wordIn[f];
    return i < 0 || number_word(w[i], wl[i], &value[f], &exact[f]);
  };
  bool valid = true;
  switch (state) {
    case kRows:
      valid = have == (bit(1) | bit(2));
      break;
    case kColumns:
    case kRhs:
    case kRanges:
      valid = !(have & bit(1)) && (have & bit(3)) && (have & bit(4)) && num(4) &&
              !(have & bit(5)) == !(have & bit(6)) && num(6) &&
              (state != kColumns || (have & bit(2)));
      break;
    case kBounds:
      valid = (have & bit(1)) && (have & bit(3)) && num(4) && !(have & bit(5)) && !(have & bit(6));
      break;
    default:
      return 0;
  }
  if (!valid) return -1;
  if (n == 0) return 1;
  if (free_fields(state, n, w, wl) != static_cast<int>(have)) return 1;
  if (out != nullptr) {  // the free reading: the words in the fields they sit in
    clear_line(*out);
    out->ntok = n;
    std::memcpy(out->store, text, static_cast<size_t>(len) + 1);
    int i = 0;
    for (int f = 1; f <= 6; ++f) {
      if ((have & bit(f)) == 0) continue;
      const int at = static_cast<int>(w[i] - text);
      out->store[at + wl[i]] = '\0';
      out->f[f] = out->store + at;
      ++i;
    }
    for (int f = 4, k = 0; f <= 6; f += 2, ++k) {
      if (!exact[f]) continue;
      out->numText[k] = out->f[f];
      out->numValue[k] = value[f];
    }
  }
  return 0;
}

}  // namespace

int fixed_layout_vote(const RawLine& raw, int state, MpsLine& fx, MpsLine& fr) {
  return fixed_layout_vote(raw, state, fx, fr, nullptr);
}

int fixed_layout_vote(const RawLine& raw, int state, MpsLine& fx, MpsLine& fr, MpsLine* freeLine) {
  if (freeLine) freeLine->ntok = -1;
  if (!is_blank(raw.text[0])) return 0;
  const int quick = quick_vote(raw, state, freeLine);
  if (quick != 2) return quick;
  if (freeLine) freeLine->ntok = -1;
  return fixed_layout_vote_full(raw, state, fx, fr);
}

int fixed_layout_vote_full(const RawLine& raw, int state, MpsLine& fx, MpsLine& fr) {
  if (!is_blank(raw.text[0])) return 0;
  if (state == kColumns && std::strstr(raw.text, "'MARKER'") != nullptr) return 0;
  if (has_stray_bytes(raw)) return -1;
  tokenize_fixed(raw, state, fx);
  auto num = [](const char* t) { return t == nullptr || parse_number(t, nullptr); };
  bool valid = true;
  switch (state) {
    case kRows:
      valid = fx.f[1] && fx.f[2] && !fx.f[3] && !fx.f[4] && !fx.f[5] && !fx.f[6];
      break;
    case kColumns:
    case kRhs:
    case kRanges:
      valid = !fx.f[1] && fx.f[3] && fx.f[4] && num(fx.f[4]) && (!fx.f[5] == !fx.f[6]) &&
              num(fx.f[6]) && (state != kColumns || fx.f[2]);
      break;
    case kBounds:
      valid = fx.f[1] && fx.f[3] && num(fx.f[4]) && !fx.f[5] && !fx.f[6];
      break;
    default:
      return 0;
  }
  if (!valid) return -1;
  if (!tokenize_free(raw, state, fr)) return 1;
  for (int f = 1; f <= 6; ++f) {
    if (!fx.f[f] != !fr.f[f]) return 1;
    if (fx.f[f] && std::strcmp(fx.f[f], fr.f[f]) != 0) return 1;
  }
  return 0;
}

}  // namespace zento::io
