// Side files: bases in their layouts, start points, priorities, block structure and solution
// reports, each written and read back where the format has a reader.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>

#include "core/model.h"
#include "io_test_util.h"

namespace zento::test {
namespace {

// tiny_lp: x + y >= 2, y + z >= 3, x + z >= 4, optimum x = 1.5, y = 0.5, z = 2.5.
class SideFiles : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(QZreadMPSFile(m, (data_dir() + "/examples/tiny_lp.mps").c_str(), QZ_MPS_AUTO), 0);
  }
  // The optimal basis and solution of tiny_lp, as a solver would leave them.
  void load_solution(Model& model) {
    const int cs[] = {0, 1, 2}, rs[] = {-1, -1, -1};
    ASSERT_EQ(QZloadBasis(model, cs, rs), 0);
    const int status = QZ_STATUS_BASIC_OPTIMAL;
    const double x[] = {1.5, 0.5, 2.5}, y[] = {0.5, 0.5, 0.5}, d[] = {0, 0, 0};
    ASSERT_EQ(QZloadPrimalSolution(model, &status, nullptr, x, nullptr, nullptr), 0);
    ASSERT_EQ(QZloadDualSolution(model, &status, nullptr, y, d, nullptr), 0);
    ASSERT_EQ(QZloadBasis(model, cs, rs), 0);
  }
  Env env;
  Model m{env.env};
  ScratchDir dir;
};

TEST_F(SideFiles, BinaryBasisRoundTrip) {
  const int cs[] = {0, -1, 1}, rs[] = {-1, 2, -1};
  ASSERT_EQ(QZloadBasis(m, cs, rs), 0);
  const std::string f = dir.file("b.bas");
  ASSERT_EQ(QZwriteBasis(m, f.c_str(), QZ_BASIS_BINARY), 0);
  EXPECT_EQ(slurp(f).size(), 6 * sizeof(int));
  Model back(env.env);
  ASSERT_EQ(QZreadMPSFile(back, (data_dir() + "/examples/tiny_lp.mps").c_str(), QZ_MPS_AUTO), 0);
  ASSERT_EQ(QZreadBasis(back, f.c_str(), 1), 0);
  EXPECT_EQ(back.m->sol->colStatus, std::vector<int>(cs, cs + 3));
  EXPECT_EQ(back.m->sol->rowStatus, std::vector<int>(rs, rs + 3));
  EXPECT_EQ(QZreadBasis(back, f.c_str(), 3), QZERR_PARAM_OUT_OF_RANGE);
  // A file shorter than the model needs.
  dir.write("short.bas", std::string(5 * sizeof(int), '\0'));
  EXPECT_EQ(QZreadBasis(back, dir.file("short.bas").c_str(), 1), QZERR_INTERNAL_ERROR);
  EXPECT_EQ(QZreadBasis(back, dir.file("none.bas").c_str(), 1), QZERR_CANNOT_OPEN_FILE);
  EXPECT_EQ(QZwriteBasis(back, f.c_str(), 5), QZERR_PARAM_OUT_OF_RANGE);
}

TEST_F(SideFiles, BasisWithoutASolutionIsNotAvailable) {
  EXPECT_EQ(QZwriteBasis(m, dir.file("x.bas").c_str(), QZ_BASIS_TEXT), QZERR_INFO_NOT_AVAILABLE);
  // The matrix form solves for a basis first; the LP engine decides whether it can.
  const int rc = QZwriteBasis(m, dir.file("x.mps").c_str(), QZ_BASIS_MPS);
  EXPECT_TRUE(rc == 0 || rc == QZERR_NOT_SUPPORTED) << rc;
}

TEST_F(SideFiles, TextAndMatrixLayouts) {
  load_solution(m);
  const std::string t = dir.file("b.txt");
  ASSERT_EQ(QZwriteBasis(m, t.c_str(), QZ_BASIS_TEXT), 0);
  EXPECT_EQ(slurp(t),
            "   X               QZ_BASTYPE_BAS\n   Y               QZ_BASTYPE_BAS\n"
            "   Z               QZ_BASTYPE_BAS\n   C1             QZ_BASTYPE_ATLO\n"
            "   C2             QZ_BASTYPE_ATLO\n   C3             QZ_BASTYPE_ATLO\n");
  const std::string x = dir.file("b.mtx");
  ASSERT_EQ(QZwriteBasis(m, x.c_str(), QZ_BASIS_MTX), 0);
  const std::string mtx = slurp(x);
  EXPECT_EQ(mtx.substr(0, 39), "           3            3            6\n");
  EXPECT_EQ(std::count(mtx.begin(), mtx.end(), '\n'), 7);
  // The matrix of the basis as an MPS model: 3 rows, the 3 basic columns, all free.
  const std::string b = dir.file("basis.mps");
  ASSERT_EQ(QZwriteBasis(m, b.c_str(), QZ_BASIS_MPS), 0);
  Model basis(env.env);
  ASSERT_EQ(QZreadMPSFile(basis, b.c_str(), QZ_MPS_AUTO), 0);
  Snapshot s = snapshot(basis);
  EXPECT_EQ(s.nCons, 3);
  EXPECT_EQ(s.nVars, 3);
  EXPECT_EQ(s.nnz, 6);
  EXPECT_EQ(s.rowTypes, (std::vector<char>{'E', 'E', 'E'}));
  EXPECT_EQ(s.l[0], -QZ_INFINITY);
  // A basis with the wrong count of basic entries has no matrix.
  const int cs[] = {0, 1, -1}, rs[] = {-1, -1, -1};
  ASSERT_EQ(QZloadBasis(m, cs, rs), 0);
  EXPECT_EQ(QZwriteBasis(m, x.c_str(), QZ_BASIS_MTX), QZERR_BAD_BASIS);
}

TEST_F(SideFiles, StartPointFiles) {
  struct Case {
    const char* text;
    std::vector<double> x;
    bool basis;
  };
  const Case cases[] = {
      {"* values only\n X 1\n Y 2 \n Z 3\n", {1, 2, 3}, false},
      {"! unknown names are skipped\n W 9\n Z 3\n", {0, 0, 3}, false},
      {" X 1 0 QZ_BASTYPE_BAS\n Y 2 0 QZ_BASTYPE_BAS\n Z 3 0 QZ_BASTYPE_BAS\n"
       " C1 0 0 QZ_BASTYPE_ATLO\n C2 0 0 QZ_BASTYPE_ATLO\n C3 0 0 QZ_BASTYPE_ATLO\n",
       {1, 2, 3}, true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    Model mm(env.env);
    ASSERT_EQ(QZreadMPSFile(mm, (data_dir() + "/examples/tiny_lp.mps").c_str(), QZ_MPS_AUTO), 0);
    ASSERT_EQ(QZreadVarStartPoint(mm, dir.write("start.sol", c.text).c_str()), 0);
    std::vector<double> x(3);
    ASSERT_EQ(QZgetVarStartPoint(mm, x.data()), 0);
    EXPECT_EQ(x, c.x);
    EXPECT_EQ(mm.m->sol != nullptr && mm.m->sol->basicStatus == QZ_STATUS_LOADED, c.basis);
  }
  EXPECT_EQ(QZreadVarStartPoint(m, dir.write("bad.sol", " X one\n").c_str()), QZERR_BAD_MODEL_FILE);
  int line = 0;
  char text[300];
  QZgetFileError(m, &line, text);
  EXPECT_EQ(line, 1);
  EXPECT_EQ(QZreadVarStartPoint(m, dir.file("missing.sol").c_str()), QZERR_CANNOT_OPEN_FILE);
  // A status that the bounds forbid stops the basis load with its code.
  EXPECT_EQ(QZreadVarStartPoint(m, dir.write("b.sol", " X 1 0 QZ_BASTYPE_ATUP\n").c_str()),
            QZERR_BAD_VARIABLE_BASIS_VALUE);
}

TEST_F(SideFiles, PrioritiesRoundTrip) {
  EXPECT_EQ(QZwriteVarPriorities(m, dir.file("p.pri").c_str(), 0), QZERR_INFO_NOT_AVAILABLE);
  ASSERT_EQ(QZreadVarPriorities(m, dir.write("in.pri", "X 5\nY -2\n  Z 0\n").c_str()), 0);
  std::vector<int> p(3);
  ASSERT_EQ(QZgetVarPriorities(m, p.data()), 0);
  EXPECT_EQ(p, (std::vector<int>{5, 0, 0}));
  // Without a name the file is zento.pri in the working folder.
  char cwd[4096];
  ASSERT_NE(getcwd(cwd, sizeof cwd), nullptr);
  ASSERT_EQ(chdir(dir.path.c_str()), 0);
  const int rc = QZwriteVarPriorities(m, nullptr, 0);
  ASSERT_EQ(chdir(cwd), 0);
  ASSERT_EQ(rc, 0);
  EXPECT_EQ(slurp(dir.file("zento.pri")),
            "X                    5\nY                    0\nZ                    0\n");
  Model back(env.env);
  ASSERT_EQ(QZreadMPSFile(back, (data_dir() + "/examples/tiny_lp.mps").c_str(), QZ_MPS_AUTO), 0);
  ASSERT_EQ(QZreadVarPriorities(back, dir.file("zento.pri").c_str()), 0);
  std::vector<int> q(3);
  QZgetVarPriorities(back, q.data());
  EXPECT_EQ(q, p);
  EXPECT_EQ(QZreadVarPriorities(back, dir.write("u.pri", "Q 3\n").c_str()),
            QZERR_COLUMN_TOKEN_NOT_FOUND);
}

TEST_F(SideFiles, BlockStructureRoundTrip) {
  EXPECT_EQ(QZwriteBlockStructure(m, dir.file("b.tim").c_str()), QZERR_INFO_NOT_AVAILABLE);
  const int rb[] = {0, 1, 1}, cb[] = {0, 0, 1};
  ASSERT_EQ(QZloadBlockStructure(m, 2, rb, cb, 0), 0);
  const std::string f = dir.file("b.tim");
  ASSERT_EQ(QZwriteBlockStructure(m, f.c_str()), 0);
  EXPECT_NE(slurp(f).find("PERIODS       EXPLICIT\n    TIME0000\n    TIME0001\nROWS\n"),
            std::string::npos);
  Model back(env.env);
  ASSERT_EQ(QZreadMPSFile(back, (data_dir() + "/examples/tiny_lp.mps").c_str(), QZ_MPS_AUTO), 0);
  ASSERT_EQ(QZreadBlockStructure(back, f.c_str()), 0);
  int n = 0, type = -1, r[3], c[3];
  ASSERT_EQ(QZgetBlockStructure(back, &n, r, c, &type), 0);
  EXPECT_EQ(n, 2);
  EXPECT_EQ(std::vector<int>(r, r + 3), std::vector<int>(rb, rb + 3));
  EXPECT_EQ(std::vector<int>(c, c + 3), std::vector<int>(cb, cb + 3));
  // The time form by first members: stages in temporal order.
  ASSERT_EQ(QZreadBlockStructure(back, dir.write("lp.tim", "TIME T\nPERIODS LP\n X C1 S1\n"
                                                          " Z C3 S2\nENDATA\n")
                                           .c_str()),
            0);
  QZgetBlockStructure(back, &n, r, c, &type);
  EXPECT_EQ(type, 1);
  EXPECT_EQ(std::vector<int>(r, r + 3), (std::vector<int>{0, 0, 1}));
  EXPECT_EQ(std::vector<int>(c, c + 3), (std::vector<int>{0, 0, 1}));
  for (const char* bad : {"PERIODS LP\nENDATA\n", "TIME T\nPERIODS EXPLICIT\n A\nROWS\n C1 B\nENDATA\n",
                          "TIME T\nPERIODS EXPLICIT\n A\nROWS\n Q A\nENDATA\n",
                          "TIME T\nPERIODS LP\n Z C3 S1\n X C1 S2\nENDATA\n", "TIME T\nPERIODS\n"}) {
    SCOPED_TRACE(bad);
    EXPECT_EQ(QZreadBlockStructure(back, dir.write("bad.tim", bad).c_str()), QZERR_BAD_MODEL_FILE);
  }
  EXPECT_EQ(QZloadBlockStructure(back, 2, rb, (const int[]){0, 2, 0}, 0), QZERR_INDEX_OUT_OF_RANGE);
}

TEST_F(SideFiles, SolutionReportReadsBackAsStartAndBasis) {
  EXPECT_EQ(QZwriteSolutionOfType(m, dir.file("none.sol").c_str(), QZ_SOLUTION_LIST),
            QZERR_INFO_NOT_AVAILABLE);
  m.m->SolverPam.sol_report_style = 1;
  EXPECT_EQ(QZwriteSolution(m, dir.file("none.sol").c_str()), QZERR_INFO_NOT_AVAILABLE);
  m.m->SolverPam.sol_report_style = 0;
  load_solution(m);
  const std::string f = dir.file("report.sol");
  ASSERT_EQ(QZwriteSolution(m, f.c_str()), 0);
  const std::string text = slurp(f);
  EXPECT_NE(text.find("*   LP GLOBAL OPTIMUM FOUND\n"), std::string::npos);
  EXPECT_NE(text.find("*    1)      " + std::string(11, ' ') + "4.500000000\n"), std::string::npos);
  Model back(env.env);
  ASSERT_EQ(QZreadMPSFile(back, (data_dir() + "/examples/tiny_lp.mps").c_str(), QZ_MPS_AUTO), 0);
  ASSERT_EQ(QZreadVarStartPoint(back, f.c_str()), 0);
  std::vector<double> x(3);
  ASSERT_EQ(QZgetVarStartPoint(back, x.data()), 0);
  EXPECT_EQ(x, (std::vector<double>{1.5, 0.5, 2.5}));
  EXPECT_EQ(back.m->sol->colStatus, (std::vector<int>{0, 0, 0}));
  EXPECT_EQ(back.m->sol->rowStatus, (std::vector<int>{-1, -1, -1}));

  const std::string list = dir.file("list.sol");
  ASSERT_EQ(QZwriteSolutionOfType(m, list.c_str(), QZ_SOLUTION_LIST), 0);
  const std::string l = slurp(list);
  EXPECT_EQ(l.rfind("SOLUTION ", 0), 0u);
  EXPECT_NE(l.find("(OPTIMAL)\nPROBLEM NAME        TINYLP\nOBJECTIVE VALUE     4.5000000000e+00\n"),
            std::string::npos);
  EXPECT_NE(l.find("     4  X                    C   1.5000000000e+00\n"), std::string::npos);
  EXPECT_EQ(QZwriteSolutionOfType(m, list.c_str(), QZ_SOLUTION_LIST_MIP), QZERR_INFO_NOT_AVAILABLE);
  EXPECT_EQ(QZwriteSolutionOfType(m, list.c_str(), 9), QZERR_PARAM_OUT_OF_RANGE);
}

TEST_F(SideFiles, TrivialSolveReportsThroughTheFile) {
  // No rows: the model solves, and its report carries the answer.
  Model free(env.env);
  const double c[] = {1, -1}, l[] = {0, -2}, u[] = {4, 3};
  const int beg[] = {0, 0, 0};
  ASSERT_EQ(QZloadLPData(free, 0, 2, QZ_MIN, 0, c, nullptr, nullptr, 0, beg, nullptr, nullptr,
                         nullptr, l, u),
            0);
  int status = 0;
  ASSERT_EQ(QZoptimize(free, QZ_METHOD_FREE, &status), 0);
  const std::string f = dir.file("trivial.sol");
  ASSERT_EQ(QZwriteSolution(free, f.c_str()), 0);
  EXPECT_NE(slurp(f).find("*    1)      " + std::string(10, ' ') + "-3.000000000\n"), std::string::npos);
}

}  // namespace
}  // namespace zento::test
