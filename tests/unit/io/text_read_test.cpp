// Reading the LP and ZENTO text formats: every construct to the model a hand count gives, the
// three ZENTO paths (line machine on a file and on a stream, grammar reader) alike, and the
// LP files written by glpk read to the model of their MPS source.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <map>

#include "io_test_util.h"

namespace zento::test {
namespace {

constexpr double kInf = 1e30;

struct Term {
  std::string col;
  double val;
};

// The model as named rows and columns, for hand-counted expectations.
struct Named {
  Snapshot s;
  int col(const std::string& n) const {
    for (int j = 0; j < s.nVars; ++j)
      if (s.colNames[j] == n) return j;
    return -1;
  }
  int row(const std::string& n) const {
    for (int i = 0; i < s.nCons; ++i)
      if (s.rowNames[i] == n) return i;
    return -1;
  }
  std::vector<Term> row_terms(int i) const {
    std::vector<Term> out;
    for (int j = 0; j < s.nVars; ++j)
      for (const auto& e : s.cols[j])
        if (e.first == i) out.push_back({s.colNames[j], e.second});
    return out;
  }
};

Named named(QZmodel m) { return Named{snapshot(m)}; }

int read_lp_text(QZmodel m, const std::string& text) {
  return QZreadLPStream(m, text.data(), static_cast<int>(text.size()));
}

TEST(LpRead, AllConstructsFileMatchesHandCount) {
  Env env;
  Model m(env.env);
  const std::string file = data_dir() + "/examples/all_constructs.lp";
  ASSERT_EQ(QZreadLPFile(m, file.c_str()), 0);
  const Named n = named(m);
  ASSERT_EQ(n.s.nCons, 5);
  ASSERT_EQ(n.s.nVars, 6);
  EXPECT_EQ(n.s.nnz, 9);
  EXPECT_EQ(n.s.sense, QZ_MAX);
  EXPECT_EQ(n.s.objConst, 5.0);
  const std::vector<std::string> cols = {"x", "y", "z", "w", "b", "g"};
  EXPECT_EQ(n.s.colNames, cols);
  EXPECT_EQ(n.s.c, (std::vector<double>{3, 2, 2, 0, 15, 1}));
  EXPECT_EQ(n.s.rowNames, (std::vector<std::string>{"c1", "c2", "R3", "R0000003", "empty"}));
  EXPECT_EQ(std::string(n.s.rowTypes.begin(), n.s.rowTypes.end()), "LGEGG");
  EXPECT_EQ(n.s.b, (std::vector<double>{10, -5.5, 0, 1, -1}));
  const auto c2 = n.row_terms(1);
  ASSERT_EQ(c2.size(), 2u);
  EXPECT_EQ(c2[0].col, "x");
  EXPECT_EQ(c2[0].val, -3.0);
  EXPECT_EQ(n.row_terms(2)[1].val, -1e-3);
  EXPECT_EQ(n.row_terms(3).size(), 2u);  // 0 z adds no entry
  EXPECT_TRUE(n.row_terms(4).empty());
  EXPECT_EQ(n.s.l, (std::vector<double>{-kInf, -kInf, 5, -kInf, 0, 0}));
  EXPECT_EQ(n.s.u, (std::vector<double>{4, kInf, 10, kInf, 1, 20}));
  EXPECT_EQ(std::string(n.s.varTypes.begin(), n.s.varTypes.end()), "ICCCBI");
}

// Small texts, each with the value it must give.
struct LpCase {
  const char* what;
  const char* text;
  int col;          // column checked (in order of appearance)
  int row;          // row of the checked entry, -1: the cost
  double expected;  // the entry or the cost
};

TEST(LpRead, TermsSignsAndDuplicates) {
  const LpCase cases[] = {
      {"a negative value", "min\n x\nst\nr: -2 x >= 1\nend\n", 0, 0, -2},
      {"a folded double sign", "min\n x\nst\nr: - -2 x >= 1\nend\n", 0, 0, 2},
      {"a sign run", "min\n x\nst\nr: - + - - 3 x >= 1\nend\n", 0, 0, -3},
      {"a repeated column sums", "min\n x\nst\nr: 2 x + y + 3 x >= 1\nend\n", 0, 0, 5},
      {"a value over two lines", "min\n x\nst\nr: 2\n x >= 1\nend\n", 0, 0, 2},
      {"a point with a blank", "min\n x\nst\nr: 2 . 5 x >= 1\nend\n", 0, 0, 2.5},
      {"an exponent", "min\n 2.5E-2 x\nst\nr: x >= 1\nend\n", 0, -1, 0.025},
      {"the objective sign alone", "max\n - x\nst\nr: x <= 1\nend\n", 0, -1, -1},
      {"subject to spelled out", "minimize\n 4 x\nsubject to\n x >= 1\nend\n", 0, -1, 4},
      {"such that", "min 4 x\nsuch that\n x >= 1\nend\n", 0, -1, 4},
      {"s.t.", "min 4 x\ns.t.\n x >= 1\nend\n", 0, -1, 4},
      {"a comment mid-line", "min 4 x \\ + 7 y\nst\n x >= 1\nend\n", 0, -1, 4},
      {"a sense written =<", "min x\nst\nr: 2 x =< 1\nend\n", 0, 0, 2},
  };
  Env env;
  for (const LpCase& c : cases) {
    SCOPED_TRACE(c.what);
    Model m(env.env);
    ASSERT_EQ(read_lp_text(m, c.text), 0);
    const Snapshot s = snapshot(m);
    ASSERT_GT(s.nVars, c.col);
    if (c.row < 0) {
      EXPECT_EQ(s.c[c.col], c.expected);
      continue;
    }
    double v = std::nan("");
    for (const auto& e : s.cols[c.col])
      if (e.first == c.row) v = e.second;
    EXPECT_EQ(v, c.expected);
  }
}

struct BoundCase {
  const char* line;
  double lo, up;
};

TEST(LpRead, BoundForms) {
  const BoundCase cases[] = {
      {"x >= -inf", -kInf, kInf},
      {"5 <= x <= 10", 5, 10},
      {"x free", -kInf, kInf},
      {"x FREE", -kInf, kInf},
      {"-Inf <= x <= 1", -kInf, 1},
      {"3 >= x", 0, 3},
      {"x = 7", 7, 7},
      {"-1e3 <= x", -1000, kInf},
      {"x <= +infinity", 0, kInf},
      {"x >= 2\n x <= 4", 2, 4},
      {"7 = x", 7, 7},
      {"x >= -5 y <= 3", -5, kInf},
  };
  Env env;
  for (const BoundCase& c : cases) {
    SCOPED_TRACE(c.line);
    Model m(env.env);
    const std::string text =
        std::string("min x + y\nst\n x + y >= 1\nbounds\n ") + c.line + "\nend\n";
    ASSERT_EQ(read_lp_text(m, text), 0);
    const Snapshot s = snapshot(m);
    EXPECT_EQ(s.l[0], c.lo);
    EXPECT_EQ(s.u[0], c.up);
  }
}

TEST(LpRead, RowNamesOnlyWithTheColonMark) {
  Env env;
  Model m(env.env);
  // "a)" is a column name in this format: the mark of a row name is ':'.
  ASSERT_EQ(read_lp_text(m, "min x\nst\na) + x >= 1\nend\n"), 0);
  const Snapshot s = snapshot(m);
  EXPECT_EQ(s.rowNames[0], "R0000000");
  EXPECT_EQ(s.colNames, (std::vector<std::string>{"x", "a)"}));
}

TEST(LpRead, MissingEndLoadsAndLongLinesHaveALimit) {
  Env env;
  {
    Model m(env.env);
    EXPECT_EQ(read_lp_text(m, "min x\nst\n x >= 1\n"), 0);
    EXPECT_EQ(snapshot(m).nCons, 1);
  }
  // 1024 characters are allowed on a line, 1025 are not.
  for (int len : {1024, 1025}) {
    SCOPED_TRACE(len);
    std::string pad = " x >= 1";
    pad.resize(static_cast<size_t>(len), ' ');
    Model m(env.env);
    const int rc = read_lp_text(m, "min x\nst\n" + pad + "\nend\n");
    EXPECT_EQ(rc, len == 1024 ? 0 : QZERR_BAD_MODEL_FILE);
    int line = 0;
    char text[QZ_FILE_ERROR_TEXT_MAXLEN];
    QZgetFileError(m, &line, text);
    EXPECT_EQ(line, len == 1024 ? 0 : 3);
  }
}

TEST(LpRead, StreamRulesAndAlreadyLoaded) {
  Env env;
  Model m(env.env);
  EXPECT_EQ(QZreadLPStream(m, "min x", 0), QZERR_BAD_MODEL_FILE);
  EXPECT_EQ(QZreadLPStream(nullptr, "min x", 5), QZERR_ILLEGAL_NULL_POINTER);
  // Only the given length is read: the constraint behind it is not.
  const std::string text = "min x\nst\n x >= 1\n y >= 2\n";
  ASSERT_EQ(QZreadLPStream(m, text.data(), 17), 0);
  EXPECT_EQ(snapshot(m).nCons, 1);
  EXPECT_EQ(QZreadLPStream(m, text.data(), 17), QZERR_ALREADY_LOADED);
}

TEST(LpRead, GzipFileReadsAsText) {
  Env env;
  ScratchDir dir;
  const std::string plain = data_dir() + "/examples/all_constructs.lp";
  const std::string gz = dir.file("all.lp.gz");
  ASSERT_EQ(std::system(("gzip -c " + plain + " > " + gz).c_str()), 0);
  Model a(env.env), b(env.env);
  ASSERT_EQ(QZreadLPFile(a, plain.c_str()), 0);
  ASSERT_EQ(QZreadLPFile(b, gz.c_str()), 0);
  EXPECT_EQ(first_difference(snapshot(a), snapshot(b)), "");
}

// glpk's LP writer: the files read to the model of their MPS source, row by row and column
// by column through the names.
void expect_same_by_names(const Snapshot& mps, const Snapshot& lp) {
  std::map<std::string, int> lpCol, lpRow;
  for (int j = 0; j < lp.nVars; ++j) lpCol[lp.colNames[j]] = j;
  for (int i = 0; i < lp.nCons; ++i) lpRow[lp.rowNames[i]] = i;
  for (int j = 0; j < mps.nVars; ++j) {
    SCOPED_TRACE(mps.colNames[j]);
    ASSERT_TRUE(lpCol.count(mps.colNames[j]));
    const int k = lpCol[mps.colNames[j]];
    EXPECT_EQ(mps.c[j], lp.c[k]);
    EXPECT_EQ(mps.l[j], lp.l[k]);
    EXPECT_EQ(mps.u[j], lp.u[k]);
    EXPECT_EQ(mps.varTypes[j], lp.varTypes[k]);
    std::map<std::string, double> a, b;
    for (const auto& e : mps.cols[j]) a[mps.rowNames[e.first]] = e.second;
    for (const auto& e : lp.cols[k]) b[lp.rowNames[e.first]] = e.second;
    EXPECT_EQ(a, b);
  }
  for (int i = 0; i < mps.nCons; ++i) {
    SCOPED_TRACE(mps.rowNames[i]);
    ASSERT_TRUE(lpRow.count(mps.rowNames[i]));
    const int r = lpRow[mps.rowNames[i]];
    EXPECT_EQ(mps.rowTypes[i], lp.rowTypes[r]);
    EXPECT_EQ(mps.b[i], lp.b[r]);
  }
}

TEST(LpRead, GlpkFilesReadToTheirMpsSource) {
  Env env;
  struct Pair {
    const char* lp;
    std::string mps;
  };
  const Pair pairs[] = {{"afiro_glpk.lp", data_dir() + "/netlib/afiro.mps.gz"},
                        {"p0033_glpk.lp", data_dir() + "/miplib3/p0033.mps.gz"}};
  for (const Pair& p : pairs) {
    SCOPED_TRACE(p.lp);
    Model a(env.env), b(env.env);
    ASSERT_EQ(QZreadMPSFile(a, p.mps.c_str(), QZ_MPS_AUTO), 0);
    ASSERT_EQ(QZreadLPFile(b, (data_dir() + "/examples/" + p.lp).c_str()), 0);
    const Snapshot sa = snapshot(a), sb = snapshot(b);
    EXPECT_EQ(sa.nVars, sb.nVars);
    EXPECT_EQ(sa.nCons, sb.nCons);
    EXPECT_EQ(sa.nnz, sb.nnz);
    expect_same_by_names(sa, sb);
  }
}

TEST(LpRead, GlpkRangedRowsBecomeSlackColumns) {
  // rng_src.mps has two ranged rows; glpk writes each as an equality with a bounded column.
  Env env;
  Model m(env.env);
  ASSERT_EQ(QZreadLPFile(m, (data_dir() + "/examples/rng_glpk.lp").c_str()), 0);
  const Named n = named(m);
  ASSERT_EQ(n.s.nCons, 4);
  ASSERT_EQ(n.s.nVars, 6);
  EXPECT_EQ(n.s.nnz, 9);
  const int r1 = n.col("~r_1"), x2 = n.col("X2"), x3 = n.col("X3"), x4 = n.col("X4");
  ASSERT_GE(r1, 0);
  EXPECT_EQ(n.s.u[r1], 2.5);
  EXPECT_EQ(n.s.l[x2], -kInf);
  EXPECT_EQ(n.s.u[x2], 1);
  EXPECT_EQ(n.s.l[x3], -kInf);
  EXPECT_EQ(n.s.l[x4], -3);
  EXPECT_EQ(n.s.varTypes[x4], 'I');
  EXPECT_EQ(n.s.rowTypes[n.row("LIM1")], 'E');
  EXPECT_EQ(n.s.b[n.row("LIM1")], 1.5);
}

// ZENTO format: the same text through the line machine (file and stream) and the grammar reader.
const char* kLtxText =
    "TITLE  hand model\n"
    "MAXIMIZE obj)\n"
    "   +3. x\n"
    "   +2 y --2 z   ! a comment\n"
    "   +0 w\n"
    "   +7.5\n"
    "SUBJECT TO\n"
    "c1)\n"
    "   +1. x +1. y\n"
    "   + z\n"
    "   < +10. \n"
    "c2) - 2 x + y - x > -5.5\n"
    "!n1)\n"
    "!   +1. x\n"
    "!   ~ +0. \n"
    "   = +4.\n"
    "END\n"
    "FREE w\n"
    "SLB   y -4.5\n"
    "SUB   y 8\n"
    "INT  x\n"
    "GIN  z\n"
    "SUB z 20\n";

TEST(LtxRead, HandModelThroughAllThreePaths) {
  Env env;
  ScratchDir dir;
  const std::string file = dir.write("hand.ltx", kLtxText);
  Model byFile(env.env), byStream(env.env), byGrammar(env.env);
  ASSERT_EQ(QZreadZENTOFile(byFile, file.c_str()), 0);
  ASSERT_EQ(QZreadZENTOStream(byStream, kLtxText, static_cast<int>(std::strlen(kLtxText))), 0);
  ASSERT_EQ(QZsetModelIntParameter(byGrammar, QZ_IPARAM_COPY_MODE, 0x400), 0);
  ASSERT_EQ(QZreadZENTOFile(byGrammar, file.c_str()), 0);
  const Named n = named(byFile);
  ASSERT_EQ(n.s.nVars, 4);
  ASSERT_EQ(n.s.nCons, 3);
  EXPECT_EQ(n.s.nnz, 5);
  EXPECT_EQ(n.s.sense, QZ_MAX);
  EXPECT_EQ(n.s.objConst, 7.5);
  EXPECT_EQ(n.s.c, (std::vector<double>{3, 2, 2, 0}));
  EXPECT_EQ(n.s.rowNames, (std::vector<std::string>{"c1", "c2", "R0000002"}));
  EXPECT_EQ(std::string(n.s.rowTypes.begin(), n.s.rowTypes.end()), "LGE");
  EXPECT_EQ(n.s.b, (std::vector<double>{10, -5.5, 4}));
  EXPECT_EQ(n.s.l, (std::vector<double>{0, -4.5, 0, -kInf}));
  EXPECT_EQ(n.s.u, (std::vector<double>{1, 8, 20, kInf}));
  EXPECT_EQ(std::string(n.s.varTypes.begin(), n.s.varTypes.end()), "BCIC");
  EXPECT_EQ(first_difference(n.s, snapshot(byStream)), "");
  EXPECT_EQ(first_difference(n.s, snapshot(byGrammar)), "");
  char title[256] = {};
  ASSERT_EQ(QZgetNameData(byFile, title, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                          nullptr, nullptr, nullptr, nullptr),
            0);
  EXPECT_EQ(std::string(title), "hand model");
}

TEST(LtxRead, GrammarReaderSpecifics) {
  Env env;
  ScratchDir dir;
  struct Case {
    const char* what;
    const char* text;
    int code;
    const char* types;
  };
  const Case cases[] = {
      {"INT n types the first n columns", "min x + y + z\nst\nx + y + z > 1\nend\nint 2\n", 0,
       "IIC"},
      {"GIN n has no effect", "min x + y\nst\nx + y > 1\nend\ngin 2\n", 0, "CC"},
      {"INT beyond the columns", "min x\nst\nx > 1\nend\nint 3\n", QZERR_VARIABLE_NOT_FOUND, ""},
      {"a bound of an unknown column", "min x\nst\nx > 1\nend\nsub q 3\n", QZERR_VARIABLE_NOT_FOUND,
       ""},
      {"quadratic sections", "min x\nst\nx > 1\nend\nqcp\n", QZERR_NOT_SUPPORTED, ""},
      {"two numbers in a row", "min 2 3 x\nst\nx > 1\nend\n", QZERR_BAD_MODEL_FILE, ""},
      {"a stray character", "min x\nst\nx > 1 #\nend\n", QZERR_BAD_MODEL_FILE, ""},
      {"keywords as prefixes", "maxim 2 x\ns.t.\nx < 1\nEND\nINTEGER x\n", 0, "B"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    const std::string file = dir.write("g.ltx", c.text);
    Model m(env.env);
    ASSERT_EQ(QZreadZENTOFileX(m, file.c_str()), c.code);
    if (c.code != 0) {
      int line = 0;
      QZgetFileError(m, &line, nullptr);
      EXPECT_GT(line, 0);
      continue;
    }
    const Snapshot s = snapshot(m);
    EXPECT_EQ(std::string(s.varTypes.begin(), s.varTypes.end()), c.types);
  }
}

TEST(LtxRead, StreamTooShortAndItemRules) {
  Env env;
  Model m(env.env);
  EXPECT_EQ(QZreadZENTOStream(m, "", 0), QZERR_BAD_MODEL_FILE);
  const std::string two = "MIN\n x\nST\n x > 1\nEND\nINT x y\n";
  Model n(env.env);
  EXPECT_EQ(QZreadZENTOStream(n, two.data(), static_cast<int>(two.size())), QZERR_ERROR_IN_INPUT);
  int line = 0;
  QZgetFileError(n, &line, nullptr);
  EXPECT_EQ(line, 6);
  // Unknown columns in item lines are passed over.
  const std::string unknown = "MIN\n x\nST\n x > 1\nEND\nFREE q\nSUB q 3\n";
  Model k(env.env);
  EXPECT_EQ(QZreadZENTOStream(k, unknown.data(), static_cast<int>(unknown.size())), 0);
}

}  // namespace
}  // namespace zento::test
