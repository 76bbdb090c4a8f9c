// Loading model data: validation order, codes for bad input, and the transformations a load
// makes (summed duplicates, clamped bounds, binary bounds, merged quadratic terms).
#include <cmath>
#include <functional>
#include <limits>

#include "test_util.h"

namespace zento::test {
namespace {

using Load = EnvFixture;

struct BadLoad {
  const char* what;
  std::function<void(SmallLP&)> spoil;
  int code;
  bool nullModel = false;
};

TEST_F(Load, BadLinearDataGivesItsCodeAndLeavesTheModelUnloadedAndUsable) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const std::vector<BadLoad> cases = {
      {"null model", [](SmallLP&) {}, QZERR_ILLEGAL_NULL_POINTER, true},
      {"null objective", [](SmallLP& l) { l.c.clear(); }, QZERR_ILLEGAL_NULL_POINTER},
      {"null rhs", [](SmallLP& l) { l.b.clear(); }, QZERR_ILLEGAL_NULL_POINTER},
      {"null row types", [](SmallLP& l) { l.types.clear(); }, QZERR_ILLEGAL_NULL_POINTER},
      {"null column starts", [](SmallLP& l) { l.beg.clear(); }, QZERR_ILLEGAL_NULL_POINTER},
      {"null row indices", [](SmallLP& l) { l.rows.clear(); }, QZERR_ILLEGAL_NULL_POINTER},
      {"negative rows", [](SmallLP& l) { l.nCons = -1; }, QZERR_ERROR_IN_INPUT},
      {"negative columns", [](SmallLP& l) { l.nVars = -2; }, QZERR_ERROR_IN_INPUT},
      {"starts below total", [](SmallLP& l) { l.beg = {0, 3, 5}; }, QZERR_BAD_TOTAL_NONZEROS},
      {"decreasing starts", [](SmallLP& l) { l.beg = {0, 7, 6}; },
       QZERR_BAD_COLUMN_BEGIN_VECTOR},
      {"negative first start", [](SmallLP& l) { l.beg[0] = -1; }, QZERR_BAD_COLUMN_BEGIN_VECTOR},
      {"bad sense", [](SmallLP& l) { l.sense = 0; }, QZERR_BAD_OBJECTIVE_SENSE},
      {"bad row type", [](SmallLP& l) { l.types = "LXE"; }, QZERR_BAD_CONSTRAINT_TYPE},
      {"row index high", [](SmallLP& l) { l.rows[4] = 3; }, QZERR_INDEX_OUT_OF_RANGE},
      {"row index negative", [](SmallLP& l) { l.rows[0] = -1; }, QZERR_INDEX_OUT_OF_RANGE},
      {"NaN coefficient", [nan](SmallLP& l) { l.coef[2] = nan; }, QZERR_ERROR_IN_INPUT},
      {"infinite objective", [](SmallLP& l) { l.c[0] = HUGE_VAL; }, QZERR_ERROR_IN_INPUT},
      {"NaN bound", [nan](SmallLP& l) { l.up[1] = nan; }, QZERR_ERROR_IN_INPUT},
      {"NaN rhs", [nan](SmallLP& l) { l.b[0] = nan; }, QZERR_ERROR_IN_INPUT},
  };
  for (const BadLoad& bad : cases) {
    SCOPED_TRACE(bad.what);
    SmallLP lp;
    bad.spoil(lp);
    QZmodel m = new_model();
    const int rc = lp.load(bad.nullModel ? nullptr : m);
    EXPECT_EQ(rc, bad.code);
    // The model is unloaded and takes a good load afterwards.
    int nv = -1;
    EXPECT_EQ(QZgetDimensions(m, &nv, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                              nullptr, nullptr, nullptr, nullptr),
              QZERR_INFO_NOT_AVAILABLE);
    EXPECT_EQ(SmallLP().load(m), 0);
    QZdeleteModel(&m);
  }
}

TEST_F(Load, ColumnLengthsAreCheckedAgainstSpansAndTotal) {
  SmallLP lp;
  QZmodel m = new_model();
  std::vector<int> len{3, 4};
  EXPECT_EQ(QZloadLPData(m, 3, 2, QZ_MIN, 0, lp.c.data(), lp.b.data(), lp.types.data(), 6,
                         lp.beg.data(), len.data(), lp.coef.data(), lp.rows.data(), nullptr,
                         nullptr),
            QZERR_BAD_COLUMN_NONZEROS);
  len = {2, 3};
  EXPECT_EQ(QZloadLPData(m, 3, 2, QZ_MIN, 0, lp.c.data(), lp.b.data(), lp.types.data(), 6,
                         lp.beg.data(), len.data(), lp.coef.data(), lp.rows.data(), nullptr,
                         nullptr),
            QZERR_BAD_TOTAL_NONZEROS);
  QZdeleteModel(&m);
}

TEST_F(Load, SecondLoadIsRefused) {
  QZmodel m = new_model();
  SmallLP lp;
  ASSERT_EQ(lp.load(m), 0);
  EXPECT_EQ(lp.load(m), QZERR_ALREADY_LOADED);
  std::vector<int> sc{0};
  std::vector<double> scl{1}, scu{5};
  ASSERT_EQ(QZloadSemiContData(m, 1, sc.data(), scl.data(), scu.data()), 0);
  EXPECT_EQ(QZloadSemiContData(m, 1, sc.data(), scl.data(), scu.data()), QZERR_ALREADY_LOADED);
  char t[] = {1};
  std::vector<int> sb{0, 1}, sv{1};
  ASSERT_EQ(QZloadSETSData(m, 1, t, nullptr, sb.data(), sv.data()), 0);
  EXPECT_EQ(QZloadSETSData(m, 1, t, nullptr, sb.data(), sv.data()), QZERR_ALREADY_LOADED);
  QZdeleteModel(&m);
}

TEST_F(Load, RepeatedRowsInAColumnAreSummedAndGapsCompacted) {
  // Column 0 has rows 1, 0, 1 (summed into the first 1), and a gap of two spare slots.
  std::vector<int> beg{0, 5, 7};
  std::vector<int> len{3, 2};
  std::vector<int> rows{1, 0, 1, -9, -9, 0, 1};
  std::vector<double> coef{2.0, 5.0, 3.0, 0.0, 0.0, 7.0, 1.0};
  std::vector<double> c{1, 1}, b{1, 1};
  QZmodel m = new_model();
  ASSERT_EQ(QZloadLPData(m, 2, 2, QZ_MIN, 0, c.data(), b.data(), "LL", 5, beg.data(), len.data(),
                         coef.data(), rows.data(), nullptr, nullptr),
            0);
  int nz = 0;
  ASSERT_EQ(QZgetDimensions(m, nullptr, nullptr, nullptr, &nz, nullptr, nullptr, nullptr, nullptr,
                            nullptr, nullptr, nullptr),
            0);
  EXPECT_EQ(nz, 4);
  std::vector<int> gb(3), gl(2), gr(4);
  std::vector<double> gc(4);
  ASSERT_EQ(QZgetLPData(m, nullptr, nullptr, nullptr, nullptr, nullptr, gb.data(), gl.data(),
                        gc.data(), gr.data(), nullptr, nullptr),
            0);
  EXPECT_EQ(gb, (std::vector<int>{0, 2, 4}));
  EXPECT_EQ(gl, (std::vector<int>{2, 2}));
  EXPECT_EQ(gr, (std::vector<int>{1, 0, 0, 1}));
  EXPECT_EQ(gc, (std::vector<double>{5.0, 5.0, 7.0, 1.0}));
  QZdeleteModel(&m);
}

TEST_F(Load, ModelWithoutRowsNeedsNoRowArrays) {
  QZmodel m = new_model();
  std::vector<double> c{1, -1};
  std::vector<int> beg{0, 0, 0};
  ASSERT_EQ(QZloadLPData(m, 0, 2, QZ_MIN, 0, c.data(), nullptr, nullptr, 0, beg.data(), nullptr,
                         nullptr, nullptr, nullptr, nullptr),
            0);
  double lo = -1, up = -1;
  ASSERT_EQ(QZgetLowerBoundj(m, 1, &lo), 0);
  ASSERT_EQ(QZgetUpperBoundj(m, 1, &up), 0);
  EXPECT_EQ(lo, 0.0);
  EXPECT_EQ(up, QZ_INFINITY);
  QZdeleteModel(&m);
}

TEST_F(Load, BoundsBeyondInfinityAreClamped) {
  SmallLP lp;
  lp.lo = {-1e40, -5};
  lp.up = {1e35, 7};
  QZmodel m = new_model();
  ASSERT_EQ(lp.load(m), 0);
  double lo = 0, up = 0;
  QZgetLowerBoundj(m, 0, &lo);
  QZgetUpperBoundj(m, 0, &up);
  EXPECT_EQ(lo, -QZ_INFINITY);
  EXPECT_EQ(up, QZ_INFINITY);
  QZdeleteModel(&m);
}

TEST_F(Load, VariableTypes) {
  SmallLP lp;
  lp.lo = {1.0, -3.0};
  lp.up = {1.0, 0.5};
  QZmodel m = new_model();
  ASSERT_EQ(lp.load(m), 0);
  char bad[] = "CX";
  EXPECT_EQ(QZloadVarType(m, bad), QZERR_BAD_VARIABLE_TYPE);
  // A binary fixed at [1, 1] becomes continuous in the host's own array.
  char types[] = "BB";
  ASSERT_EQ(QZloadVarType(m, types), 0);
  EXPECT_EQ(types[0], 'C');
  EXPECT_EQ(types[1], 'B');
  double lo = 0, up = 0;
  QZgetLowerBoundj(m, 1, &lo);
  QZgetUpperBoundj(m, 1, &up);
  EXPECT_EQ(lo, 0.0);
  EXPECT_EQ(up, 0.5);
  int nc = 0, nb = 0, ni = 0;
  ASSERT_EQ(QZgetVarTypeCount(m, &nc, &nb, &ni), 0);
  EXPECT_EQ(nc, 1);
  EXPECT_EQ(nb, 1);
  QZdeleteModel(&m);

  SmallLP neg;
  neg.lo = {0, -5};
  neg.up = {10, -1};
  m = new_model();
  ASSERT_EQ(neg.load(m), 0);
  char t2[] = "CB";
  EXPECT_EQ(QZloadVarType(m, t2), QZERR_INPUT_OUT_OF_RANGE);
  char got[2];
  ASSERT_EQ(QZgetVarType(m, got), 0);
  EXPECT_EQ(got[1], 'C');
  QZdeleteModel(&m);
}

TEST_F(Load, SemiContinuousTypeMovesLowerBoundIntoTheList) {
  SmallLP lp;
  lp.lo = {2.0, 0.0};
  lp.up = {8.0, 1.0};
  QZmodel m = new_model();
  ASSERT_EQ(lp.load(m), 0);
  char types[] = "SC";
  ASSERT_EQ(QZloadVarType(m, types), 0);
  double lo = -1, up = -1;
  QZgetLowerBoundj(m, 0, &lo);
  QZgetUpperBoundj(m, 0, &up);
  EXPECT_EQ(lo, 0.0);
  EXPECT_EQ(up, 8.0);
  int n = 0, idx = -1;
  double scl = 0, scu = 0;
  ASSERT_EQ(QZgetSemiContData(m, &n, &idx, &scl, &scu), 0);
  EXPECT_EQ(n, 1);
  EXPECT_EQ(idx, 0);
  EXPECT_EQ(scl, 2.0);
  EXPECT_EQ(scu, 8.0);
  QZdeleteModel(&m);
}

TEST_F(Load, PartsValidateTheirIndices) {
  QZmodel m = new_model();
  ASSERT_EQ(SmallLP().load(m), 0);
  std::vector<int> two{0, 0};
  std::vector<double> l{1, 1}, u{2, 2};
  EXPECT_EQ(QZloadSemiContData(m, 2, two.data(), l.data(), u.data()), QZERR_DUPLICATE_INDEX);
  std::vector<int> out{5};
  EXPECT_EQ(QZloadSemiContData(m, 1, out.data(), l.data(), u.data()),
            QZERR_COLUMN_INDEX_OUT_OF_RANGE);

  std::vector<int> beg{0, 1}, one{0};
  char t5[] = {5};
  EXPECT_EQ(QZloadSETSData(m, 1, t5, nullptr, beg.data(), one.data()), QZERR_BAD_CONSTRAINT_TYPE);
  char t2[] = {2};
  EXPECT_EQ(QZloadSETSData(m, 1, t2, nullptr, beg.data(), one.data()), QZERR_BAD_COLUMN_NONZEROS);
  char t4[] = {4};
  EXPECT_EQ(QZloadSETSData(m, 1, t4, nullptr, beg.data(), one.data()), QZERR_ILLEGAL_NULL_POINTER);

  char q[] = "R";
  EXPECT_EQ(QZloadConeData(m, 1, q, nullptr, beg.data(), one.data()), QZERR_BAD_COLUMN_NONZEROS);
  char p[] = "P";
  std::vector<int> b3{0, 3}, m3{0, 1, 1};
  EXPECT_EQ(QZloadConeData(m, 1, p, nullptr, b3.data(), m3.data()), QZERR_BAD_CONSTRAINT_TYPE);
  char e[] = "E";
  EXPECT_EQ(QZloadConeData(m, 1, e, nullptr, b3.data(), m3.data()),
            QZERR_COLUMN_INDEX_OUT_OF_RANGE);

  std::vector<int> qr{3}, q1{0}, q2{1};
  std::vector<double> qc{1.0};
  EXPECT_EQ(QZloadQCData(m, 1, qr.data(), q1.data(), q2.data(), qc.data()),
            QZERR_ROW_INDEX_OUT_OF_RANGE);
  qr = {-1};
  q2 = {2};
  EXPECT_EQ(QZloadQCData(m, 1, qr.data(), q1.data(), q2.data(), qc.data()),
            QZERR_COLUMN_INDEX_OUT_OF_RANGE);

  std::vector<int> dim{2}, pb{0, 2}, pr{0, 0}, pc{1, 0}, pv{0, 1};
  EXPECT_EQ(QZloadPOSDData(m, 1, dim.data(), pb.data(), pr.data(), pc.data(), pv.data()),
            QZERR_INDEX_OUT_OF_RANGE);
  pr = {0, 1};
  pc = {0, 0};
  pv = {1, 1};
  EXPECT_EQ(QZloadPOSDData(m, 1, dim.data(), pb.data(), pr.data(), pc.data(), pv.data()),
            QZERR_DUPLICATE_INDEX);
  QZdeleteModel(&m);
}

TEST_F(Load, QuadraticDuplicatesMergeToTheirMean) {
  QZmodel m = new_model();
  ASSERT_EQ(SmallLP().load(m), 0);
  // (0,1) and (1,0) with 2.0 are one symmetric term; (1,1) three times with 1, 2, 3 -> 2.
  std::vector<int> r{-1, -1, 0, 0, 0, 0}, i{0, 1, 1, 1, 1, 0}, j{1, 0, 1, 1, 1, 0};
  std::vector<double> v{2.0, 2.0, 1.0, 2.0, 3.0, 0.0};
  ASSERT_EQ(QZloadQCData(m, 6, r.data(), i.data(), j.data(), v.data()), 0);
  int qnz = 0;
  ASSERT_EQ(QZgetDimensions(m, nullptr, nullptr, nullptr, nullptr, &qnz, nullptr, nullptr,
                            nullptr, nullptr, nullptr, nullptr),
            0);
  ASSERT_EQ(qnz, 2);
  std::vector<int> gr(2), g1(2), g2(2);
  std::vector<double> gv(2);
  ASSERT_EQ(QZgetQCData(m, gr.data(), g1.data(), g2.data(), gv.data()), 0);
  EXPECT_EQ(gr, (std::vector<int>{-1, 0}));
  EXPECT_EQ(g1, (std::vector<int>{0, 1}));
  EXPECT_EQ(g2, (std::vector<int>{1, 1}));
  EXPECT_EQ(gv, (std::vector<double>{2.0, 2.0}));
  int n = 0;
  EXPECT_EQ(QZgetQCDatai(m, 1, &n, nullptr, nullptr, nullptr), QZERR_NO_QCDATA_IN_ROW);
  QZdeleteModel(&m);
}

TEST_F(Load, BasisStatusesAreCheckedAgainstBounds) {
  QZmodel m = new_model();
  ASSERT_EQ(SmallLP().load(m), 0);  // x in [0, 10], y free
  struct Case {
    std::vector<int> col, row;
    int code;
  };
  const std::vector<Case> cases = {
      {{-1, 0}, {0, 0, -1}, 0},
      {{-2, -3}, {0, 0, 0}, 0},
      {{-1, -1}, {0, 0, 0}, QZERR_BAD_VARIABLE_BASIS_VALUE},  // y has no finite lower bound
      {{-3, 0}, {0, 0, -1}, QZERR_BAD_VARIABLE_BASIS_VALUE},  // x is not free
      {{-1, -5}, {0, 0, 0}, QZERR_INTERNAL_ERROR},
      {{-1, 0}, {0, -2, 0}, QZERR_INTERNAL_ERROR},  // rows are never at upper
  };
  for (const Case& c : cases) EXPECT_EQ(QZloadBasis(m, c.col.data(), c.row.data()), c.code);
  QZdeleteModel(&m);
}

TEST_F(Load, LoadedPrimalSolutionComputesSlacksObjectiveAndInfeasibility) {
  QZmodel m = new_model();
  SmallLP lp;
  ASSERT_EQ(lp.load(m), 0);
  const double x[] = {3.0, 2.0};  // rows: 5 (> 4 by 1), 9, 1
  int st = QZ_STATUS_FEASIBLE;
  ASSERT_EQ(QZloadPrimalSolution(m, &st, nullptr, x, nullptr, nullptr), 0);
  double obj = 0;
  ASSERT_EQ(QZgetObjective(m, &obj), 0);
  EXPECT_DOUBLE_EQ(obj, 1.5 + 6.0 + 6.0);
  double slack[3];
  ASSERT_EQ(QZgetSlacks(m, slack), 0);
  EXPECT_DOUBLE_EQ(slack[0], -1.0);
  EXPECT_DOUBLE_EQ(slack[1], -7.0);
  EXPECT_DOUBLE_EQ(slack[2], 0.0);
  double pinf = 0;
  int method = 0;
  ASSERT_EQ(QZgetSolutionInfo(m, &method, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                              nullptr, nullptr, nullptr, &pinf, nullptr),
            0);
  EXPECT_EQ(method, -1);  // a loaded point has no method record
  EXPECT_DOUBLE_EQ(pinf, 1.0);  // only the 'L' row is violated
  int bad = 9;
  EXPECT_EQ(QZloadPrimalSolution(m, &bad, nullptr, x, nullptr, nullptr), QZERR_ERROR_IN_INPUT);
  EXPECT_EQ(QZloadPrimalSolution(m, nullptr, nullptr, x, nullptr, nullptr),
            QZERR_ILLEGAL_NULL_POINTER);
  int none = QZ_STATUS_UNLOADED;
  ASSERT_EQ(QZloadPrimalSolution(m, &none, nullptr, x, nullptr, nullptr), 0);
  EXPECT_EQ(QZgetPrimalSolution(m, slack), QZERR_INFO_NOT_AVAILABLE);
  QZdeleteModel(&m);
}

TEST_F(Load, ModelStatusRange) {
  QZmodel m = new_model();
  ASSERT_EQ(SmallLP().load(m), 0);
  int st = 8, err = 0;
  EXPECT_EQ(QZloadModelStatus(m, &st, &err), QZERR_ERROR_IN_INPUT);
  st = QZ_STATUS_CUTOFF;
  err = 2000;
  EXPECT_EQ(QZloadModelStatus(m, &st, &err), QZERR_ERROR_IN_INPUT);
  err = QZERR_TIME_LIMIT;
  EXPECT_EQ(QZloadModelStatus(m, &st, &err), 0);
  QZdeleteModel(&m);
}

}  // namespace
}  // namespace zento::test
