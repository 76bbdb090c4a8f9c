// The ZENTO and MARLO writers: the text they produce, exact numbers, names both readers take
// back, the dual twin, and runzento converting between formats.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>

#include "io_test_util.h"

namespace zento::test {
namespace {

// max 3x - 2.5y + 0z + 4 s.t. r1: x + y <= 4, n1 (free row): x, r3: y - z >= -1;
// x binary, y general integer in [-2, 10], z free.
void load_small(QZmodel m, const char* xName, const char* r1Name) {
  const double c[] = {3, -2.5, 0}, b[] = {4, 0, -1}, l[] = {0, -2, -1e30}, u[] = {1, 10, 1e30};
  const int beg[] = {0, 2, 4, 5}, rows[] = {0, 1, 0, 2, 2};
  const double a[] = {1, 1, 1, 1, -1};
  char types[] = "LNG";
  ASSERT_EQ(QZloadLPData(m, 3, 3, QZ_MAX, 4.0, c, b, types, 5, beg, nullptr, a, rows, l, u), 0);
  char vt[] = "BIC";
  ASSERT_EQ(QZloadVarType(m, vt), 0);
  char* cols[] = {const_cast<char*>(xName), const_cast<char*>("y"), const_cast<char*>("z")};
  char* rowNames[] = {const_cast<char*>(r1Name), const_cast<char*>("n1"), const_cast<char*>("r3")};
  ASSERT_EQ(QZloadNameData(m, "small", nullptr, nullptr, nullptr, nullptr, rowNames, cols, nullptr),
            0);
}

TEST(LtxWrite, TextOfASmallModel) {
  Env env;
  ScratchDir dir;
  Model m(env.env);
  load_small(m, "x", "r1");
  const std::string file = dir.file("small.ltx");
  ASSERT_EQ(QZwriteZENTOFile(m, file.c_str()), 0);
  const std::string expected =
      "MAXIMIZE\n"
      "   +3. x\n"
      "   -2.5 y\n"
      "   +0. z\n"
      "   +4.\n"
      "\nSUBJECT TO\n"
      "r1)\n"
      "   +1. x\n"
      "   +1. y\n"
      "   < +4. \n"
      "!n1)\n"
      "!   +1. x\n"
      "!   ~ +0. \n"
      "r3)\n"
      "   +1. y\n"
      "   -1. z\n"
      "   > -1. \n"
      "\nEND\n"
      "SUB   x +1.\n"
      "SLB   "
      "       y"
      " -2.\n"
      "SUB   y +10.\n"
      "FREE "
      "       z"
      "\n"
      "INT  "
      "       x"
      "\n"
      "GIN  "
      "       y"
      "\n";
  EXPECT_EQ(slurp(file), expected);
  // The free row is a comment on reading; the rest comes back.
  Model back(env.env);
  ASSERT_EQ(QZreadZENTOFile(back, file.c_str()), 0);
  const Snapshot s = snapshot(back);
  EXPECT_EQ(s.nCons, 2);
  EXPECT_EQ(s.rowNames, (std::vector<std::string>{"r1", "r3"}));
  EXPECT_EQ(s.objConst, 4.0);
  EXPECT_EQ(std::string(s.varTypes.begin(), s.varTypes.end()), "BIC");
}

TEST(LtxWrite, NamesBothReadersTakeBack) {
  Env env;
  ScratchDir dir;
  struct Case {
    const char* col;
    const char* row;
    const char* colOut;
    const char* rowOut;
    const char* secondOut = "y";
  };
  const Case cases[] = {
      {"x-1", "r<1>", "x_1", "r_1_"},      {"1abc", "123", "_1abc", "123"},
      {"maxim", "end", "_maxim", "_end"},  {"a b!c", "r)1", "a_b_c", "r_1"},
      {"y", "row.1", "y", "row.1", "y_1"},  // the second column is "y" too
      {"TITLEx", "st", "_TITLEx", "_st"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.col);
    Model m(env.env);
    load_small(m, c.col, c.row);
    const std::string file = dir.file("names.ltx");
    ASSERT_EQ(QZwriteZENTOFile(m, file.c_str()), 0);
    Snapshot s;
    read_ltx_both(env.env, file, &s);
    if (HasFatalFailure()) return;
    EXPECT_EQ(s.colNames[0], c.colOut);
    EXPECT_EQ(s.colNames[1], c.secondOut);
    EXPECT_EQ(s.rowNames[0], c.rowOut);
  }
}

TEST(LtxWrite, EveryDoubleComesBackExactly) {
  Env env;
  ScratchDir dir;
  std::mt19937_64 gen(20261123);
  std::uniform_real_distribution<double> mant(-10.0, 10.0);
  std::uniform_int_distribution<int> expo(-300, 300);
  const int n = 400;
  std::vector<double> c(n), l(n), u(n, 1e30);
  for (int j = 0; j < n; ++j) {
    c[j] = mant(gen) * std::pow(10.0, expo(gen));
    l[j] = j % 3 == 0 ? 0.1 + 0.2 : -std::fabs(mant(gen)) * std::pow(10.0, expo(gen) / 10);
  }
  std::vector<int> beg(n + 1, 0);
  Model m(env.env);
  ASSERT_EQ(QZloadLPData(m, 0, n, QZ_MIN, 1.0 / 3.0, c.data(), nullptr, nullptr, 0, beg.data(),
                         nullptr, nullptr, nullptr, l.data(), u.data()),
            0);
  const std::string file = dir.file("numbers.ltx");
  ASSERT_EQ(QZwriteZENTOFile(m, file.c_str()), 0);
  Snapshot b;
  read_ltx_both(env.env, file, &b);
  const Snapshot a = snapshot(m);
  EXPECT_EQ(a.c, b.c);
  EXPECT_EQ(a.l, b.l);
  EXPECT_EQ(a.objConst, b.objConst);
}

TEST(LtxWrite, RefusesWhatTheFormatCannotHold) {
  Env env;
  ScratchDir dir;
  Model qp(env.env);
  ASSERT_EQ(QZreadMPSFile(qp, (data_dir() + "/examples/tiny_qp.qps").c_str(), QZ_MPS_AUTO), 0);
  EXPECT_EQ(QZwriteZENTOFile(qp, dir.file("qp.ltx").c_str()), QZERR_NOT_SUPPORTED);
  Model m(env.env);
  load_small(m, "x", "r1");
  EXPECT_EQ(QZwriteZENTOFile(m, "/nonexistent/dir/x.ltx"), QZERR_CANNOT_OPEN_FILE);
  EXPECT_EQ(QZwriteDualZENTOFile(m, dir.file("d.ltx").c_str(), 1), QZERR_NOT_SUPPORTED);
  EXPECT_EQ(QZwriteDualZENTOFile(m, dir.file("d.ltx").c_str(), 0), QZERR_BAD_OBJECTIVE_SENSE);
  EXPECT_EQ(QZwriteDualMPSFile(m, dir.file("d.mps").c_str(), 1, 1), QZERR_NOT_SUPPORTED);
  EXPECT_EQ(QZwriteDualMPSFile(qp, dir.file("d.mps").c_str(), 1, 1), QZERR_NOT_SUPPORTED);
}

TEST(LtxWrite, DualTwinHasTheSameOptimum) {
  Env env;
  ScratchDir dir;
  Model m(env.env);
  ASSERT_EQ(QZreadMPSFile(m, (data_dir() + "/examples/tiny_lp.mps").c_str(), QZ_MPS_AUTO), 0);
  const std::string kept = dir.file("dual.ltx"), negated = dir.file("dual_neg.ltx");
  ASSERT_EQ(QZwriteDualZENTOFile(m, kept.c_str(), -1), 0);
  ASSERT_EQ(QZwriteDualZENTOFile(m, negated.c_str(), 1), 0);
  Model d(env.env), n(env.env);
  ASSERT_EQ(QZreadZENTOFile(d, kept.c_str()), 0);
  ASSERT_EQ(QZreadZENTOFile(n, negated.c_str()), 0);
  const Snapshot sd = snapshot(d), sn = snapshot(n);
  ASSERT_EQ(sd.nVars, sn.nVars);
  for (int j = 0; j < sd.nVars; ++j) EXPECT_EQ(sd.c[j], -sn.c[j]);
  int status = 0;
  ASSERT_EQ(QZoptimize(d, QZ_METHOD_FREE, &status), 0);
  double obj = 0;
  ASSERT_EQ(QZgetObjective(d, &obj), 0);
  EXPECT_NEAR(obj, 4.5, 1e-9);
  // The MPS twin writes the same dual model, in either layout; the dual maximizes, so the
  // OBJSENSE card must be written live for the sense to come back.
  ASSERT_EQ(QZsetEnvIntParameter(env.env, QZ_IPARAM_MPS_OBJ_WRITESTYLE, 1), 0);
  for (int layout : {0, 1}) {
    const std::string mps = dir.file("dual.mps");
    ASSERT_EQ(QZwriteDualMPSFile(m, mps.c_str(), layout, -1), 0);
    Model back(env.env);
    ASSERT_EQ(QZreadMPSFile(back, mps.c_str(), QZ_MPS_AUTO), 0);
    EXPECT_EQ(first_difference(sd, snapshot(back)), "") << layout;
  }
}

TEST(MarloWrite, TextOfAQuadraticAndAnIntegerModel) {
  Env env;
  ScratchDir dir;
  Model qp(env.env);
  ASSERT_EQ(QZreadMPSFile(qp, (data_dir() + "/examples/tiny_qp.qps").c_str(), QZ_MPS_AUTO), 0);
  const std::string f = dir.file("qp.mrl");
  ASSERT_EQ(QZwriteMARLOFile(qp, f.c_str()), 0);
  const std::string text = slurp(f);
  for (const char* piece : {"model:\n[OBJ] min=\n", "   +0.500000*(\n", "  ) ;\n", "\nend\n"})
    EXPECT_NE(text.find(piece), std::string::npos) << piece << "\n" << text;

  Model m(env.env);
  load_small(m, "x.1", "r1");
  // The free row can't be written in this format.
  EXPECT_EQ(QZwriteMARLOFile(m, dir.file("small.mrl").c_str()), QZERR_BAD_CONSTRAINT_TYPE);
  Model mip(env.env);
  ASSERT_EQ(QZreadMPSFile(mip, (data_dir() + "/examples/tiny_mip.mps").c_str(), QZ_MPS_AUTO), 0);
  ASSERT_EQ(QZwriteMARLOFile(mip, f.c_str()), 0);
  const std::string t2 = slurp(f);
  EXPECT_NE(t2.find("@GIN ("), std::string::npos) << t2;
  EXPECT_NE(t2.find("   > 2.000000;\n"), std::string::npos) << t2;
}

TEST(Runzento, ConvertsAndReadsTextFormatsByExtension) {
  ScratchDir dir;
  const std::string afiro = data_dir() + "/netlib/afiro.mps.gz";
  const std::string ltx = dir.file("afiro.ltx.gz"), mrl = dir.file("afiro.mrl");
  const CliRun w = run_cli("-q --no-solve --write-ltx " + ltx + " --write-marlo " + mrl + " " + afiro);
  ASSERT_EQ(w.code, 0) << w.out;
  for (const std::string& args :
       {"-q --no-solve " + ltx, "-q --no-solve QZ_IPARAM_COPY_MODE=1024 " + ltx,
        "-q --no-solve " + data_dir() + "/examples/afiro_glpk.lp"}) {
    const CliRun r = run_cli(args);
    EXPECT_EQ(r.code, 0) << args << "\n" << r.out;
    EXPECT_NE(r.out.find("27 rows, 32 columns, 83 nonzeros"), std::string::npos) << r.out;
  }
  const CliRun bad = run_cli("-q " + instances_dir() + "/hostile/bad_token.lp");
  EXPECT_EQ(bad.code, 2);
  EXPECT_NE(bad.out.find("bad_token.lp:4: Error at line 4."), std::string::npos) << bad.out;
}

}  // namespace
}  // namespace zento::test
