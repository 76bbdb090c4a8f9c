// The MPS reader's shortcuts against the plain ways they stand in for: the layout vote on
// words in place, the word scan, control bytes found sixteen at a time, the growing name
// table, and the one-pass reading of the automatic layout.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <regex>
#include <string>
#include <vector>

#include "core/model.h"
#include "io/hashtable.h"
#include "io/line_reader.h"
#include "io/mps_scan.h"
#include "io/mps_tokens.h"
#include "io/stream.h"
#include "io_test_util.h"

namespace zento::test {
namespace {

using io::MpsLine;
using io::RawLine;

RawLine raw_of(const std::string& t) {
  RawLine raw;
  std::memset(raw.text, 'q', sizeof raw.text);  // stale bytes behind the line must not count
  raw.len = static_cast<int>(std::min<size_t>(t.size(), io::kMaxLineBytes + 1));
  std::memcpy(raw.text, t.data(), static_cast<size_t>(raw.len));
  raw.text[raw.len] = '\0';
  raw.fullLen = static_cast<long long>(t.find_last_not_of(" \t") + 1);
  for (char c : t) raw.hasControl |= (c >= 0 && c < 32 && c != '\t') || c == 127;
  return raw;
}

std::string fields_of(const MpsLine& l) {
  std::string s = std::to_string(l.ntok) + (l.section ? "S" : "D");
  for (int f = 1; f <= 7; ++f) s += std::string("|") + (l.f[f] ? l.f[f] : "~");
  return s;
}

// A data line of a section with its fields at the fixed columns, then often broken: a word
// moved, a blank in a name, an odd word (comment, marker, bad number), a field dropped, a tab,
// or a byte between or behind the fields.
std::string random_line(std::mt19937& g, int state) {
  static const char* kNames[] = {"X1", "ROW1", "LONGNAM8", "RHS", "BND", "up", "c"};
  static const char* kNums[] = {"1.0", "-2.5e3", "12", "0", "+.5", "7d2", "1.5D+300", "1e999"};
  static const char* kTags[] = {"UP", "LO", "FX", "FR", "MI", "PL", "BV", "SC", "LI", "UI", "N", "E"};
  static const char* kOdd[] = {"$note", "!x", "'MARKER'", "1e", "x'y", "A B", "--1", "1.2.3"};
  static const int kStarts[] = {1, 4, 14, 24, 39, 49};
  auto pick = [&](const auto& list) { return std::string(list[g() % std::size(list)]); };
  std::string f[7];
  switch (state) {
    case io::kRows:
      f[1] = pick(kTags);
      f[2] = pick(kNames);
      break;
    case io::kBounds:
      f[1] = pick(kTags);
      if (g() % 4) f[2] = pick(kNames);
      f[3] = pick(kNames);
      if (g() % 4) f[4] = pick(kNums);
      break;
    default:  // COLUMNS, RHS, RANGES and the quadratic sections
      if (state == io::kColumns || g() % 4) f[2] = pick(kNames);
      f[3] = pick(kNames);
      f[4] = pick(kNums);
      if (g() % 2) {
        f[5] = pick(kNames);
        f[6] = pick(kNums);
      }
  }
  const unsigned mutation = g() % 14;
  const int victim = 1 + static_cast<int>(g() % 6);
  if (mutation == 1) f[victim] = pick(kOdd);
  if (mutation == 2) f[victim].clear();
  if ((mutation == 3 || mutation == 8 || mutation == 9) && !f[victim].empty()) f[victim].insert(f[victim].size() / 2 + 1, " ");
  std::string line(80, ' ');
  for (int k = 1; k <= 6; ++k) {
    int at = kStarts[k - 1];
    if (mutation == 4 && k == victim) at += static_cast<int>(g() % 5) - 2;
    if (!f[k].empty()) line.replace(static_cast<size_t>(std::max(at, 1)), f[k].size(), f[k]);
  }
  if (mutation == 5) line[static_cast<size_t>(kStarts[victim - 1] - 1)] = 'z';
  if (mutation == 6) line[static_cast<size_t>(g() % 60 + 1)] = '\t';
  if (mutation == 7) line += "  behind";
  line.erase(line.find_last_not_of(' ') + 1);
  return line.empty() ? " " : line;
}

TEST(MpsFastPaths, VoteShortcutAgreesWithBothTokenizations) {
  std::mt19937 g(11);
  const int states[] = {io::kRows, io::kColumns, io::kRhs, io::kRanges, io::kBounds, io::kQuadObj};
  MpsLine fx, fr, fx2, fr2, shared, plain;
  int taken = 0, total = 0;
  int votes[3] = {};
  for (int k = 0; k < 20000; ++k) {
    for (int st : states) {
      const std::string t = random_line(g, states[g() % std::size(states)]);
      const RawLine raw = raw_of(t);
      SCOPED_TRACE("[" + t + "] state " + std::to_string(st));
      const int quick = io::fixed_layout_vote(raw, st, fx, fr, &shared);
      const int full = io::fixed_layout_vote_full(raw, st, fx2, fr2);
      ASSERT_EQ(quick, full);
      ++votes[full + 1];
      ++total;
      if (shared.ntok < 0) continue;
      ++taken;
      ASSERT_EQ(full, 0);
      ASSERT_TRUE(io::tokenize_free(raw, st, plain));
      ASSERT_EQ(fields_of(shared), fields_of(plain));
      for (int f : {2, 3, 4, 6}) {  // numbers kept on the way read as the text does
        double kept = 0, read = 0;
        ASSERT_EQ(io::line_number(shared, shared.f[f], &kept), io::parse_number(plain.f[f], &read));
        ASSERT_EQ(std::memcmp(&kept, &read, sizeof kept), 0) << f;
      }
    }
  }
  // The lines must reach the shortcut and every vote often enough to mean something.
  EXPECT_GT(taken, total / 10);
  for (int v : votes) EXPECT_GT(v, total / 100) << votes[0] << " " << votes[1] << " " << votes[2];
}

TEST(MpsFastPaths, WordScanFindsEveryWord) {
  std::mt19937 g(5);
  const char alphabet[] = {' ', ' ', '\t', 'a', 'Z', '0', '\0', '\x7f', '\xe9'};
  for (int k = 0; k < 20000; ++k) {
    const int len = k % 50 == 0 ? io::kMaxLineBytes + 1 : static_cast<int>(g() % 200);
    std::string t;
    for (int c = 0; c < len; ++c) t += alphabet[g() % (c % 64 < 3 ? 3 : std::size(alphabet))];
    const RawLine raw = raw_of(t);
    std::vector<std::pair<int, int>> want, got;
    for (int c = 0; c < len;) {
      while (c < len && (t[c] == ' ' || t[c] == '\t')) ++c;
      if (c == len) break;
      const int s = c;
      while (c < len && t[c] != ' ' && t[c] != '\t') ++c;
      want.push_back({s, c});
    }
    io::WordScan scan(raw.text, len);
    for (int s = 0, e = 0; scan.next(&s, &e);) got.push_back({s, e});
    ASSERT_EQ(got, want) << k;
  }
}

TEST(MpsFastPaths, ControlBytesFoundAtEveryPosition) {
  for (const int b : {0, 1, 8, 9, 11, 13, 27, 31, 32, 126, 127, 128, 200, 255}) {
    for (int pos = 0; pos < 50; ++pos) {
      std::string line(50, 'a');
      line[static_cast<size_t>(pos)] = static_cast<char>(b);
      const std::string text = " " + line + "\n" + " tail\n";
      io::StreamPtr s(io::qzs_memopen(text.data(), text.size()));
      io::LineReader reader(s.get(), "*");
      RawLine raw;
      ASSERT_TRUE(reader.next(raw));
      const bool want = (b < 32 && b != '\t' && b != '\r') || b == 127;
      EXPECT_EQ(raw.hasControl, want) << b << " at " << pos;
      ASSERT_TRUE(reader.next(raw));
      EXPECT_FALSE(raw.hasControl);
      EXPECT_EQ(reader.line_number(), 2);
    }
  }
}

TEST(MpsFastPaths, NameTableGrowsAndKeepsItsIndices) {
  io::HashTable t;
  ASSERT_EQ(io::HashTable_Initialize(t, 1), 0);
  const int n = 40000;
  for (int k = 0; k < n; ++k) {
    const std::string name = "C" + std::to_string(k * 7919 % 100003);
    ASSERT_EQ(io::HashTable_Insert(t, name.c_str()), k);
    if (k % 997 == 0) {
      ASSERT_EQ(io::HashTable_Insert(t, name.c_str()), -1) << "duplicate taken at " << k;
    }
  }
  EXPECT_GE(t.nBuckets, t.nCount);
  for (int k = 0; k < n; ++k) {
    const std::string name = "C" + std::to_string(k * 7919 % 100003);
    ASSERT_EQ(io::HashTable_Lookup(t, name.c_str()), k);
    ASSERT_STREQ(io::HashTable_Name(t, k), name.c_str());
  }
  EXPECT_EQ(io::HashTable_Lookup(t, "C100004"), -1);
  io::QZclearHashTable(t);
  EXPECT_EQ(io::HashTable_Lookup(t, "C0"), -1);
  EXPECT_EQ(io::HashTable_Insert(t, "C0"), 0);
  EXPECT_EQ(io::HashTable_Lookup(t, "C0"), 0);
}

// Reading with the automatic layout must be the reading in the layout it picks: same model,
// same log lines in the same order, same code, failing line and text.
class MpsOnePass : public ::testing::Test {
 protected:
  Env env;
  ScratchDir dir;

  struct Outcome {
    int rc = 0;
    std::vector<std::string> log;
    int errLine = 0;
    std::string errText;
    Snapshot model;
  };

  static void collect(QZmodel, char* line, void* data) {
    static const std::regex kSecs("[0-9.]+ secs");
    static_cast<std::vector<std::string>*>(data)->push_back(std::regex_replace(line, kSecs, "secs"));
  }

  Outcome read(const std::string& text, int layout) {
    const std::string f = dir.write("model.mps", text);
    Model m(env.env);
    Outcome o;
    QZsetModelIntParameter(m, QZ_IPARAM_LP_PRINTLEVEL, 1);
    QZsetModelLogfunc(m, &collect, &o.log);
    o.rc = QZreadMPSFile(m, f.c_str(), layout);
    o.errLine = m.m->fileErrorLine;
    o.errText = m.m->fileErrorText;
    if (o.rc == 0) o.model = snapshot(m);
    for (std::string& l : o.log) {
      const size_t at = l.find(f);
      if (at != std::string::npos) l.replace(at, f.size(), "FILE");
    }
    return o;
  }
};

// A line with its fields at the fixed columns.
std::string fx_line(const std::string& f1, const std::string& f2, const std::string& f3,
                    const std::string& f4, const std::string& f5 = "", const std::string& f6 = "") {
  std::string s(61, ' ');
  const int at[] = {1, 4, 14, 24, 39, 49};
  const std::string* f[] = {&f1, &f2, &f3, &f4, &f5, &f6};
  for (int k = 0; k < 6; ++k) s.replace(static_cast<size_t>(at[k]), f[k]->size(), *f[k]);
  s.erase(s.find_last_not_of(' ') + 1);
  return s.substr(0, std::max<size_t>(s.size(), 1)) + "\n";
}

// Column lines that read alike in both layouts, so the vote stays open over them.
std::string aligned_columns(int from, int n) {
  std::string s;
  for (int j = from; j < from + n; ++j)
    s += fx_line("", "X" + std::to_string(j), "COST", std::to_string(j + 1), "LIM", "1");
  return s;
}

TEST_F(MpsOnePass, AutomaticLayoutReadsAsTheLayoutItPicks) {
  const std::string head = "NAME          T\nROWS\n N  COST\n L  LIM\nCOLUMNS\n";
  struct Case {
    const char* what;
    std::string text;
    int layout;  // the one the vote must pick
    int rc;
  };
  const std::string end = "ENDATA\n";
  const Case cases[] = {
      {"aligned free file with a constant and a QMATRIX name: held log lines",
       head + aligned_columns(0, 300) + "RHS\n" + fx_line("", "RHS", "COST", "5.0", "LIM", "7.0") +
           "QMATRIX   COST\n" + fx_line("", "X0", "X0", "2.0") + end,
       QZ_MPS_FREE, 0},
      {"blank in a name on the last column line: fixed, read again",
       head + aligned_columns(0, 200) + fx_line("", "X 200", "COST", "1") + end, QZ_MPS_FIXED, 0},
      {"the free reading fails first, then the vote turns fixed",
       head + aligned_columns(0, 50) + fx_line("", "X50", "NOROW", "1") + aligned_columns(51, 3) +
           fx_line("", "X 9", "COST", "1") + end,
       QZ_MPS_FIXED, QZERR_BAD_MODEL_FILE},
      {"a failure while the vote is open, free in the end",
       head + aligned_columns(0, 50) + fx_line("", "X50", "NOROW", "1") + aligned_columns(51, 2) + end,
       QZ_MPS_FREE, QZERR_BAD_MODEL_FILE},
      {"a failure after the vote said free",
       head + " X0 COST 1\n" + aligned_columns(1, 5) + fx_line("", "X9", "NOROW", "1") + end,
       QZ_MPS_FREE, QZERR_BAD_MODEL_FILE},
      {"lines after ENDATA", head + aligned_columns(0, 5) + end + fx_line("", "X 1", "junk", ""),
       QZ_MPS_FREE, 0},
      {"no ENDATA", head + aligned_columns(0, 5), QZ_MPS_FREE, QZERR_BAD_MODEL_FILE},
      {"a control byte while the vote is open",
       head + aligned_columns(0, 5) + "    X7   \x01" + fx_line("", "", "COST", "1").substr(9) + end,
       QZ_MPS_FREE, QZERR_BAD_MODEL_FILE},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    const Outcome a = read(c.text, QZ_MPS_AUTO);
    const Outcome e = read(c.text, c.layout);
    EXPECT_EQ(a.rc, c.rc);
    EXPECT_EQ(a.rc, e.rc);
    EXPECT_EQ(a.log, e.log);
    EXPECT_EQ(a.errLine, e.errLine);
    EXPECT_EQ(a.errText, e.errText);
    EXPECT_EQ(first_difference(a.model, e.model), "");
    ASSERT_FALSE(a.log.empty());
    const char* picked = c.layout == QZ_MPS_FIXED ? "(formatted)" : "(unformatted)";
    EXPECT_NE(a.log.front().find(picked), std::string::npos) << a.log.front();
  }
}

}  // namespace
}  // namespace zento::test
