// Splitting MPS lines into fields, in the free and in the fixed layout.
//
// Field 1 is the section or type tag, field 2 the first name, field 3 the second name, field 4
// the first number, field 5 the third name, field 6 the second number, field 7 a further number
// of an extended objective row. A section line is recognised by its first byte (a letter in the
// free layout, anything but white space in the fixed layout); its words stay in order.
#pragma once

#include "io/line_reader.h"

namespace zento::io {

// States of the MPS reader; the numbers appear in its progress log.
enum MpsState : int {
  kStart = 0,
  kBeforeRows = 1,
  kObjSense = 2,
  kRows = 3,
  kColumns = 4,
  kRhs = 5,
  kRanges = 6,
  kBounds = 7,
  kEnd = 8,
  kQuadObj = 9,
  kQuadRow = 10,
  kCone = 11,
  kIndicators = 12,
};

struct MpsLine {
  const char* f[8] = {};  // fields 1..7, null when absent
  int ntok = 0;           // tokens on the line
  bool section = false;
  const char* word[8] = {};  // a section line's words, in order
  int nword = 0;
  char store[3 * (kMaxLineBytes + 2)] = {};
  // Values the tokenizer found on its way, for line_number: text pointer and value.
  const char* numText[2] = {};
  double numValue[2] = {};
};

// Free layout. Returns false for a data line whose token count doesn't fit its state.
bool tokenize_free(const RawLine& raw, int state, MpsLine& out);
// Fixed layout. Marker lines of the COLUMNS section are split as in the free layout, since
// writers rarely keep their words in the columns.
bool tokenize_fixed(const RawLine& raw, int state, MpsLine& out);

// Whether a data line of `state` reads in the fixed layout and gives other fields in the free
// one: the evidence for a fixed file with blanks in names. 1 fixed only, 0 either, -1 free only.
int fixed_layout_vote(const RawLine& raw, int state);
// The same with the caller's scratch lines, which a scan over a whole file reuses.
int fixed_layout_vote(const RawLine& raw, int state, MpsLine& fx, MpsLine& fr);
// The same; when the line reads alike in both layouts, `freeLine` gets its free tokenization
// (what tokenize_free gives), else its ntok is -1.
int fixed_layout_vote(const RawLine& raw, int state, MpsLine& fx, MpsLine& fr, MpsLine* freeLine);
// The same through both tokenizations, with no shortcut.
int fixed_layout_vote_full(const RawLine& raw, int state, MpsLine& fx, MpsLine& fr);

// A number text: after leading blanks only digits, '+', '-', '.', 'e', 'E', 'd', 'D'; an
// absent token passes. `parse_number` also needs the whole text to be one finite number.
bool QZI_IsNumber(const char* token);
bool parse_number(const char* token, double* value);

// parse_number(text, value) for a field of the line, from the values the tokenizer kept.
bool line_number(const MpsLine& l, const char* text, double* value);

bool iequals(const char* a, const char* b);

}  // namespace zento::io
