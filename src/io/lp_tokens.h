// Token helpers shared by the two row-oriented text readers (LP and ZENTO line machines):
// character classes, keywords, row names, values, senses, and the line preparation that
// squeezes blanks and folds runs of signs.
#pragma once

#include <string>

namespace zento::io {

constexpr int kMaxTextLine = 1024;  // characters of a line, without its line feed

// Column names may start with these besides letters.
constexpr const char* kNameStartLp = "!\"#$%&(),.;?@_'`{}~";
// Start of a column name when blanks are squeezed, and in the ZENTO machine.
constexpr const char* kNameStartSqueeze = "\"#$%&(:,.;?@_'`{}~";
constexpr const char* kNameEndLp = " \t\n\r+-<>=";
constexpr const char* kNameEndLtx = " \t\n\r+-<>=!)";

bool is_white(char c);
bool is_value_start(char c);
bool is_sense_char(char c);
bool is_name_start(char c, const char* extra);

// Case-insensitive match of the text at `*pos` with a pattern whose bracketed parts are
// optional and may match in part ("s[ubject][   ]t[o]"). A blank in the pattern matches a blank
// or a tab. The match must be followed by the end of the text, white or a sense character;
// only then does `*pos` move past it.
bool qzi_isKeyword(const char** pos, const char* pattern);

// Finds the first `mark` in the rest of the text. The name is the last blank-separated word
// before it (blanks before the mark dropped). On a mark, `*pos` moves behind it and the result
// is true; `name` is empty when nothing stands before the mark.
bool qzi_isRowname(const char** pos, std::string& name, char mark);

// A value: optional sign, digits, optional point and digits, optional exponent. A sign alone
// yields +1 or -1 and sets `*signOnly`. One white character behind is passed over. `*hasSign`
// tells whether the text began with a sign. False when nothing value-like is there.
bool qzi_readValue(const char** pos, double* value, bool* signOnly, bool* hasSign);

// '<', '>' or '=' from "<", "<=", "=<", ">", ">=", "=>", "=", "=="; 0 when none.
char qzi_readSense(const char** pos);

bool qzi_isInfinity(const char* pos);
double qzi_readInfinity(const char** pos);  // +-1e30
bool qzi_isFree(const char* pos);

void skip_white(const char** pos);

// Copies `text` into `out` dropping white space but a blank that stands before the start of a
// column name (a '.' followed by a digit is a value, not a name), then folds runs of signs.
void squeeze_line(const char* text, const char* nameStart, std::string& out);
void fold_signs(std::string& s);

}  // namespace zento::io
