// The command-line solver: exit codes a script can test, and its outputs.
#include <gtest/gtest.h>

#include <string>

#include "io_test_util.h"

namespace zento::test {
namespace {

TEST(Runzento, ExitCodesAndMessages) {
  ScratchDir dir;
  const std::string data = data_dir(), inst = instances_dir();
  struct Case {
    std::string args;
    int code;
    const char* text;
  };
  const Case cases[] = {
      {"--help", 0, "Exit codes:"},
      {"", 1, "Usage:"},
      {"--bogus", 1, "unknown option --bogus"},
      {"-m sideways x.mps", 1, "unknown method"},
      {"-q QZ_IPARAM_NO_SUCH=1 " + inst + "/models/bounds_only.mps", 1, "unknown parameter"},
      {"-q " + dir.file("missing.mps"), 2, "error 2002"},
      {"-q " + inst + "/hostile/nan.mps", 2, "nan.mps:10:"},
      {"-q " + inst + "/models/bounds_only.mps", 0, "Objective  -9.0000000000e+00"},
      {"-q " + inst + "/models/bounds_only_max.mps", 0, "Objective  3.1500000000e+01"},
      {"-q " + inst + "/models/unbounded_column.mps", 0, "Status     UNBOUNDED"},
      {"-q --no-solve " + data + "/netlib/afiro.mps.gz", 0, "27 rows, 32 columns, 83 nonzeros"},
      {"-q " + data + "/examples/tiny_mip.mps --no-solve", 0, "(0 binary, 3 integer)"},
      {"-q --write-mps /nonexistent/dir/x.mps " + inst + "/models/bounds_only.mps", 5, "cannot write"},
      {"-q -p 0 -t 10 -i 1000 QZ_IPARAM_LP_SCALE=0 " + inst + "/models/bounds_only.mps", 0,
       "BASIC OPTIMAL"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.args);
    const CliRun r = run_cli(c.args);
    EXPECT_EQ(r.code, c.code) << r.out;
    EXPECT_NE(r.out.find(c.text), std::string::npos) << r.out;
  }
  // An LP with rows waits for the LP engine: a clean error, code 3, or a proven answer.
  const CliRun lp = run_cli("-q " + data + "/examples/tiny_lp.mps");
  EXPECT_TRUE(lp.code == 3 || lp.code == 0) << lp.out;
}

TEST(Runzento, WritesModelSolutionAndBasis) {
  ScratchDir dir;
  const std::string model = instances_dir() + "/models/bounds_only.mps";
  const CliRun r = run_cli("-q --write-mps " + dir.file("copy.mps.gz") + " -s " + dir.file("out.sol") +
                    " --write-basis " + dir.file("out.bas") + " " + model);
  ASSERT_EQ(r.code, 0) << r.out;
  Env env;
  Model a(env.env), b(env.env);
  ASSERT_EQ(QZreadMPSFile(a, model.c_str(), QZ_MPS_AUTO), 0);
  ASSERT_EQ(QZreadMPSFile(b, dir.file("copy.mps.gz").c_str(), QZ_MPS_AUTO), 0);
  EXPECT_EQ(first_difference(snapshot(a), snapshot(b)), "");
  ASSERT_EQ(QZreadVarStartPoint(a, dir.file("out.sol").c_str()), 0);
  std::vector<double> x(3);
  QZgetVarStartPoint(a, x.data());
  EXPECT_EQ(x, (std::vector<double>{1, 5, 0}));
  EXPECT_EQ(QZreadBasis(b, dir.file("out.bas").c_str(), 1), 0);
  // The basis read back drives the next run.
  const CliRun again = run_cli("-q --read-basis " + dir.file("out.bas") + " " + model);
  EXPECT_EQ(again.code, 0) << again.out;
}

}  // namespace
}  // namespace zento::test
