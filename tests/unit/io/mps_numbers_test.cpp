// Numbers and lines of the MPS reader's fast paths against their slow references: every value
// bit for bit as strtod gives it, the same tokens refused, line measures and control bytes as
// a byte-by-byte scan finds them, and layout votes that do not depend on reused scratch lines.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "io/line_reader.h"
#include "io/mps_reader.h"
#include "io/mps_tokens.h"
#include "io/stream.h"
#include "io_test_util.h"

namespace zento::test {
namespace {

using namespace zento::io;

// The reader's rule before its fast path: charset check, then strtod over the whole token
// with d as exponent letter, finite values only.
bool reference_number(const char* token, double* value) {
  if (token == nullptr || *token == '\0' || !QZI_IsNumber(token)) return false;
  const size_t n = std::strlen(token);
  if (n >= 64) return false;
  std::string buf(token);
  for (char& c : buf)
    if (c == 'd' || c == 'D') c = 'e';
  char* end = nullptr;
  const double v = std::strtod(buf.c_str(), &end);
  if (end == buf.c_str() || *end != '\0' || !std::isfinite(v)) return false;
  *value = v;
  return true;
}

void expect_same(const std::string& t) {
  double ref = 0, got = 0;
  const bool rok = reference_number(t.c_str(), &ref);
  const bool gok = parse_number(t.c_str(), &got);
  ASSERT_EQ(gok, rok) << "'" << t << "'";
  EXPECT_EQ(parse_number(t.c_str(), nullptr), rok) << "'" << t << "'";
  if (rok) {
    EXPECT_EQ(std::memcmp(&ref, &got, sizeof ref), 0)
        << "'" << t << "' strtod " << ref << " fast " << got;
  }
}

TEST(MpsNumbers, EdgeTokensAsStrtod) {
  const char* tokens[] = {
      "0", "-0", "+0", "0.", ".0", ".", "-.", "+", "-", "1", "-1", "+1.5", "1.50", "00012.3400",
      "0.1", "0.3", "1e0", "1E5", "1d5", "1D-5", "2.5e+22", "2.5e22", "9007199254740993",
      "9007199254740992", "1e22", "1e23", "1e-22", "1e-23", "123456789012345678",
      "1234567890123456789", "12345678901234567890", "0.000000000000000000000001",
      "1e", "1e+", "1e-", "e5", ".e5", "1.2.3", "1-2", "1e5e3", "--1", "+-1", "1..2", "1e999",
      "-1e999", "1e-999", "1e99", "1e100", "1e308", "1.7976931348623157e308",
      "1.7976931348623159e308", "4.9e-324", "2.2250738585072014e-308", " 12", "\t-3.5",
      "12 ", "1,5", "0x10", "inf", "nan", "1e0000000000000000005",
      "0.1000000000000000055511151231257827", "3.14159265358979323846264338327950288",
      "1234567.0000000001", "-999999999999999999999.5e-3"};
  for (const char* t : tokens) expect_same(t);
  expect_same(std::string(63, '1'));
  expect_same(std::string(64, '1'));
  expect_same("0." + std::string(60, '0') + "1");
}

TEST(MpsNumbers, RandomDecimalsAsStrtod) {
  std::mt19937_64 gen(20261123);
  auto pick = [&](int n) { return static_cast<int>(gen() % static_cast<unsigned>(n)); };
  const char expo[] = {'e', 'E', 'd', 'D'};
  for (int trial = 0; trial < 200000; ++trial) {
    std::string t;
    if (pick(3) == 0) t += pick(2) ? '-' : '+';
    const int before = pick(trial % 7 == 0 ? 25 : 10);
    for (int k = 0; k < before; ++k) t += static_cast<char>('0' + pick(10));
    if (pick(2)) {
      t += '.';
      const int after = pick(trial % 5 == 0 ? 25 : 10);
      for (int k = 0; k < after; ++k) t += static_cast<char>('0' + pick(10));
    }
    if (pick(3) == 0) {
      t += expo[pick(4)];
      if (pick(2)) t += pick(2) ? '-' : '+';
      const int ed = pick(4);
      for (int k = 0; k < ed; ++k) t += static_cast<char>('0' + pick(10));
    }
    if (pick(50) == 0) t.insert(static_cast<size_t>(pick(static_cast<int>(t.size()) + 1)), 1, '.');
    expect_same(t);
    if (HasFailure()) return;
  }
}

// A byte-by-byte scan of one line: its measure without trailing blanks (a carriage return
// counts as one) and whether it holds control bytes.
void reference_measure(const std::string& line, long long* full, bool* ctl) {
  *full = 0;
  *ctl = false;
  for (size_t k = 0; k < line.size(); ++k) {
    unsigned char c = static_cast<unsigned char>(line[k]);
    if (c == '\r') c = ' ';
    if ((c < 32 && c != '\t') || c == 127) *ctl = true;
    if (c != ' ' && c != '\t') *full = static_cast<long long>(k + 1);
  }
}

TEST(MpsLines, MeasuresAndControlBytesAsAByteScan) {
  std::mt19937 gen(7);
  const char alphabet[] = {'a', 'Z', '1', ' ', ' ', '\t', '\r', '\x01', '\x7f', '\xe9', '.'};
  std::vector<std::string> lines;
  for (int k = 0; k < 3000; ++k) {
    const int len = k % 97 == 0 ? 300 + static_cast<int>(gen() % 400) : static_cast<int>(gen() % 90);
    std::string l;
    for (int c = 0; c < len; ++c) {
      const unsigned r = gen() % 100;
      l += r < 90 ? alphabet[r % 3] : alphabet[3 + r % 8];
    }
    lines.push_back(l);
  }
  std::string text;
  for (const std::string& l : lines) text += l + "\n";
  StreamPtr s(qzs_memopen(text.data(), text.size()));
  LineReader reader(s.get(), "");
  RawLine raw;
  for (size_t k = 0; k < lines.size(); ++k) {
    long long full = 0;
    bool ctl = false;
    reference_measure(lines[k], &full, &ctl);
    if (full == 0) continue;  // blank lines are passed over
    ASSERT_TRUE(reader.next(raw)) << k;
    ASSERT_EQ(reader.line_number(), static_cast<int>(k + 1));
    EXPECT_EQ(raw.fullLen, full) << k;
    EXPECT_EQ(raw.hasControl, ctl) << k;
    const size_t kept = std::min<size_t>(lines[k].size(), kMaxLineBytes + 1);
    ASSERT_EQ(raw.len, static_cast<int>(kept)) << k;
    for (size_t c = 0; c < kept; ++c) {
      const char want = lines[k][c] == '\r' ? ' ' : lines[k][c];
      ASSERT_EQ(raw.text[c], want) << k << ":" << c;
    }
    EXPECT_EQ(raw.text[kept], '\0');
  }
  EXPECT_FALSE(reader.next(raw));
}

TEST(MpsLines, KeptInputRereadsTheSameLines) {
  // Passes that stop short, run to the end, and run again from the kept copy: every pass
  // sees the same lines with the same numbers, across block boundaries and a last line
  // without its newline.
  for (const size_t target : {size_t{500}, size_t{3} << 20}) {
    std::string text;
    std::vector<std::string> want;
    std::vector<int> number;
    int line = 0;
    while (text.size() < target) {
      ++line;
      if (line % 7 == 0) {
        text += "* note\n";
        continue;
      }
      want.push_back(" L" + std::to_string(line) + (line % 40 ? " " : "") +
                     std::string(static_cast<size_t>(line % 40), 'x'));
      number.push_back(line);
      text += want.back() + (line % 11 == 0 ? "\r\n" : "\n");
    }
    text += " tail";
    want.push_back(" tail");
    number.push_back(line + 1);
    StreamPtr s(qzs_memopen(text.data(), text.size()));
    LineReader reader(s.get(), "*");
    reader.keep_for_rewind();
    RawLine raw;
    for (const size_t stop : {want.size() / 2, want.size(), want.size(), size_t{3}, want.size()}) {
      for (size_t k = 0; k < stop; ++k) {
        ASSERT_TRUE(reader.next(raw)) << target << " " << stop << " " << k;
        std::string got(raw.text);
        while (!got.empty() && got.back() == ' ') got.pop_back();
        ASSERT_EQ(got, want[k]);
        ASSERT_EQ(reader.line_number(), number[k]);
      }
      if (stop == want.size()) {
        EXPECT_FALSE(reader.next(raw));
      }
      ASSERT_TRUE(reader.rewind());
    }
  }
}

TEST(MpsLines, LayoutVotesDoNotDependOnReusedScratch) {
  // Each line is voted on after a different predecessor in the same scratch lines; the vote
  // must equal the one with fresh scratch.
  const std::vector<std::pair<int, std::string>> lines = {
      {kColumns, "    X1        ROW1         1.0          ROW2         2.0"},
      {kColumns, "    X 1       ROW1         1.0"},
      {kColumns, "    X1        ROW1         1.0          ROW2"},
      {kColumns, " X1 ROW1 1.0 ROW2 2.0"},
      {kRhs, "    RHS       ROW1         5.0"},
      {kRhs, "    RHS       ROW 1        5.0          ROW2         1e3"},
      {kRows, " E  ROW1"},
      {kRows, " E  ROW 1"},
      {kBounds, " UP BND       X1           4.0"},
      {kBounds, " FR BND       X 1"},
      {kRanges, "    RNG       ROW1         2.5"},
      {kColumns, "    MARKER                 'MARKER'                 'INTORG'"},
  };
  MpsLine fx, fr;
  for (int round = 0; round < 3; ++round) {
    for (size_t k = 0; k < lines.size(); ++k) {
      const size_t i = round == 1 ? lines.size() - 1 - k : (k * 5 + static_cast<size_t>(round)) % lines.size();
      RawLine raw;
      const std::string& t = lines[i].second;
      std::memcpy(raw.text, t.c_str(), t.size() + 1);
      raw.len = static_cast<int>(t.size());
      raw.fullLen = raw.len;
      EXPECT_EQ(fixed_layout_vote(raw, lines[i].first, fx, fr), fixed_layout_vote(raw, lines[i].first))
          << t;
    }
  }
}

}  // namespace
}  // namespace zento::test
