// Every model of the LP and MIP collections written in ZENTO format and read back equals the
// original value for value; both ZENTO readers give the same model; an MPS file written from
// the ZENTO read reads back to it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <regex>
#include <set>

#include "io_test_util.h"

namespace zento::test {
namespace {

// Names the writer keeps as they are.
bool clean_name(const std::string& n, bool row) {
  static const std::regex name("[A-Za-z_][A-Za-z0-9_.]*"), digits("[0-9]+"),
      keyword(
          "(title.*|min|mini|minim|minimi|minimiz|minimize|max|maxi|maxim|maximi|maximiz|"
          "maximize|int|inte|integ|intege|integer|st|st\\.|s\\.t\\.|end|free|gin|slb|sub|qcp)",
          std::regex::icase);
  if (n.size() > 255) return false;
  if (!std::regex_match(n, name) && !(row && std::regex_match(n, digits))) return false;
  return !std::regex_match(n, keyword);
}

Snapshot without_names(Snapshot s) {
  for (auto& n : s.colNames) n.clear();
  for (auto& n : s.rowNames) n.clear();
  // Entries of a column come back in row order; the format carries no explicit zeros.
  for (auto& c : s.cols) {
    std::sort(c.begin(), c.end());
    const size_t before = c.size();
    c.erase(std::remove_if(c.begin(), c.end(), [](const auto& e) { return e.second == 0.0; }),
            c.end());
    s.nnz -= static_cast<int>(before - c.size());
  }
  // An integer column on [0, 1] is written as a binary one.
  for (int j = 0; j < s.nVars; ++j)
    if (s.varTypes[j] == 'I' && s.l[j] == 0.0 && s.u[j] == 1.0) s.varTypes[j] = 'B';
  return s;
}

// Clean names survive; the others come back unique.
void expect_names_kept(const Snapshot& a, const Snapshot& b) {
  int changedClean = 0;
  for (int j = 0; j < a.nVars; ++j)
    if (clean_name(a.colNames[j], false) && a.colNames[j] != b.colNames[j]) ++changedClean;
  for (int i = 0; i < a.nCons; ++i)
    if (clean_name(a.rowNames[i], true) && a.rowNames[i] != b.rowNames[i]) ++changedClean;
  EXPECT_EQ(changedClean, 0);
  std::set<std::string> cols(b.colNames.begin(), b.colNames.end());
  EXPECT_EQ(cols.size(), b.colNames.size());
}

class TextRoundTrip : public ::testing::TestWithParam<std::string> {};

TEST_P(TextRoundTrip, ZentoWriteAndBothReadersGiveTheOriginal) {
  Env env;
  ScratchDir dir;
  int models = 0;
  for (const ManifestRow& r : read_manifest(GetParam())) {
    SCOPED_TRACE(r.name);
    Model m(env.env);
    ASSERT_EQ(QZreadMPSFile(m, r.file.c_str(), QZ_MPS_AUTO), 0);
    const Snapshot before = snapshot(m);
    const std::string ltx = dir.file(r.name + ".ltx.gz");
    if (!before.qcCoef.empty()) {  // the format has no quadratic terms: refused, not dropped
      EXPECT_EQ(QZwriteZENTOFile(m, ltx.c_str()), QZERR_NOT_SUPPORTED);
      continue;
    }
    ASSERT_EQ(QZwriteZENTOFile(m, ltx.c_str()), 0);

    Model line(env.env), grammar(env.env);
    ASSERT_EQ(QZreadZENTOFile(line, ltx.c_str()), 0);
    ASSERT_EQ(QZreadZENTOFileX(grammar, ltx.c_str()), 0);
    const Snapshot byLine = snapshot(line);
    EXPECT_EQ(first_difference(without_names(before), without_names(byLine)), "");
    expect_names_kept(before, byLine);
    EXPECT_EQ(first_difference(byLine, snapshot(grammar)), "");

    const std::string mps = dir.file(r.name + ".mps");
    ASSERT_EQ(QZwriteMPSFile(line, mps.c_str(), QZ_MPS_FREE), 0);
    Model again(env.env);
    ASSERT_EQ(QZreadMPSFile(again, mps.c_str(), QZ_MPS_FREE), 0);
    EXPECT_EQ(first_difference(byLine, snapshot(again)), "");
    ++models;
  }
  EXPECT_GT(models, 0);
}

INSTANTIATE_TEST_SUITE_P(Data, TextRoundTrip,
                         ::testing::Values("netlib", "netlib_infeasible", "miplib3", "miplib2017",
                                           "examples"));

}  // namespace
}  // namespace zento::test

namespace zento::test {
namespace {

// glpk's LP writer on every model: the LP read agrees with the MPS read, column by column and
// row by row through the names, to glpk's 15 printed digits. Models where glpk renames (names
// invalid in the format) or adds columns (ranged rows) are counted apart.
bool near(double a, double b) {
  return a == b || std::fabs(a - b) <= 1e-13 * std::max(std::fabs(a), std::fabs(b));
}

class GlpkFiles : public ::testing::TestWithParam<std::string> {};

TEST_P(GlpkFiles, ReadToTheModelOfTheirMpsSource) {
  if (std::system("glpsol --version > /dev/null 2>&1") != 0) GTEST_SKIP() << "no glpsol";
  Env env;
  ScratchDir dir;
  int compared = 0, skipped = 0;
  for (const ManifestRow& r : read_manifest(GetParam())) {
    SCOPED_TRACE(r.name);
    const std::string lp = dir.file(r.name + ".lp");
    const std::string cmd = "glpsol --mps " + r.file + " --wlp " + lp + " --check > /dev/null 2>&1";
    if (std::system(cmd.c_str()) != 0) {  // glpk refuses a few files (e.g. a missing ENDATA)
      ++skipped;
      continue;
    }
    Model a(env.env), b(env.env);
    ASSERT_EQ(QZreadMPSFile(a, r.file.c_str(), QZ_MPS_AUTO), 0);
    ASSERT_EQ(QZreadLPFile(b, lp.c_str()), 0);
    const Snapshot sa = snapshot(a), sb = snapshot(b);
    std::map<std::string, int> col, row;
    for (int j = 0; j < sb.nVars; ++j) col[sb.colNames[j]] = j;
    for (int i = 0; i < sb.nCons; ++i) row[sb.rowNames[i]] = i;
    bool sameNames = sa.nVars == sb.nVars && sa.nCons == sb.nCons;
    for (int j = 0; j < sa.nVars && sameNames; ++j) sameNames = col.count(sa.colNames[j]) > 0;
    for (int i = 0; i < sa.nCons && sameNames; ++i) sameNames = row.count(sa.rowNames[i]) > 0;
    if (!sameNames) {
      ++skipped;
      continue;
    }
    int nonzeros = 0;
    for (const auto& c : sa.cols)
      for (const auto& e : c) nonzeros += e.second != 0.0;
    EXPECT_EQ(nonzeros, sb.nnz);  // glpk writes no explicit zeros
    // glpk writes a binary column as a general integer on [0, 1].
    auto type = [](const Snapshot& s, int j) {
      return s.varTypes[j] == 'I' && s.l[j] == 0.0 && s.u[j] == 1.0 ? 'B' : s.varTypes[j];
    };
    int bad = 0;
    for (int j = 0; j < sa.nVars; ++j) {
      const int k = col[sa.colNames[j]];
      bad += !near(sa.c[j], sb.c[k]) + !near(sa.l[j], sb.l[k]) + !near(sa.u[j], sb.u[k]);
      bad += type(sa, j) != type(sb, k);
      std::map<int, double> ea;
      for (const auto& e : sa.cols[j])
        if (e.second != 0.0) ea[row[sa.rowNames[e.first]]] = e.second;
      for (const auto& e : sb.cols[k]) bad += !ea.count(e.first) || !near(ea[e.first], e.second);
    }
    for (int i = 0; i < sa.nCons; ++i) {
      const int k = row[sa.rowNames[i]];
      bad += sa.rowTypes[i] != sb.rowTypes[k] || !near(sa.b[i], sb.b[k]);
    }
    EXPECT_EQ(bad, 0);
    ++compared;
  }
  std::printf("%s: %d models compared, %d skipped\n", GetParam().c_str(), compared, skipped);
  EXPECT_GT(compared, 0);
}

INSTANTIATE_TEST_SUITE_P(Data, GlpkFiles, ::testing::Values("netlib", "miplib3", "miplib2017"));

}  // namespace
}  // namespace zento::test
