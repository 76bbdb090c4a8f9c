// QZoptimize on models without rows or columns, dispatch codes, and solution access rules.
#include <vector>

#include "test_util.h"

namespace zento::test {
namespace {

struct Optimize : EnvFixture {
  // A model of columns alone; empty bound arrays take the defaults.
  QZmodel columns_only(int sense, double constant, std::vector<double> c,
                       std::vector<double> lo = {}, std::vector<double> up = {}) {
    QZmodel m = new_model();
    const std::vector<int> beg(c.size() + 1, 0);
    EXPECT_EQ(QZloadLPData(m, 0, static_cast<int>(c.size()), sense, constant, c.data(), nullptr,
                           nullptr, 0, beg.data(), nullptr, nullptr, nullptr,
                           lo.empty() ? nullptr : lo.data(), up.empty() ? nullptr : up.data()),
              0);
    return m;
  }
};

struct Column {
  double c, lo, up;
  int status;     // expected basis status
  double x;       // expected value
};

TEST_F(Optimize, ColumnsWithoutRowsGoToTheBoundTheirCostFavours) {
  const double inf = QZ_INFINITY;
  const std::vector<Column> cols = {
      {2.0, -1.0, 4.0, QZ_BASTYPE_ATLO, -1.0},
      {-3.0, -1.0, 4.0, QZ_BASTYPE_ATUP, 4.0},
      {0.0, -5.0, 2.0, QZ_BASTYPE_ATUP, 2.0},   // smaller bound in magnitude
      {0.0, -2.0, 2.0, QZ_BASTYPE_ATUP, 2.0},   // tie goes to upper
      {0.0, 1.0, inf, QZ_BASTYPE_ATLO, 1.0},
      {0.0, -inf, inf, QZ_BASTYPE_FNUL, 0.0},
  };
  for (int sense : {QZ_MIN, QZ_MAX}) {
    SCOPED_TRACE(sense);
    std::vector<double> c, lo, up;
    for (const Column& col : cols) {
      c.push_back(sense * col.c);
      lo.push_back(col.lo);
      up.push_back(col.up);
    }
    QZmodel m = columns_only(sense, 10.0, c, lo, up);
    int status = -1;
    ASSERT_EQ(QZoptimize(m, QZ_METHOD_FREE, &status), 0);
    EXPECT_EQ(status, QZ_STATUS_BASIC_OPTIMAL);
    std::vector<double> x(cols.size()), d(cols.size());
    std::vector<int> cs(cols.size());
    ASSERT_EQ(QZgetPrimalSolution(m, x.data()), 0);
    ASSERT_EQ(QZgetReducedCosts(m, d.data()), 0);
    ASSERT_EQ(QZgetBasis(m, cs.data(), nullptr), 0);
    double expectObj = 10.0;
    for (size_t j = 0; j < cols.size(); ++j) {
      EXPECT_EQ(cs[j], cols[j].status) << j;
      EXPECT_EQ(x[j], cols[j].x) << j;
      EXPECT_EQ(d[j], c[j]);
      expectObj += c[j] * x[j];
    }
    double obj = 0;
    ASSERT_EQ(QZgetObjective(m, &obj), 0);
    EXPECT_DOUBLE_EQ(obj, expectObj);
    int prim = 0, dual = 0, basic = 0;
    ASSERT_EQ(QZgetSolutionInfo(m, nullptr, nullptr, nullptr, nullptr, nullptr, &prim, &dual,
                                &basic, nullptr, nullptr, nullptr, nullptr),
              0);
    EXPECT_EQ(prim, QZ_STATUS_BASIC_OPTIMAL);
    EXPECT_EQ(dual, QZ_STATUS_OPTIMAL);
    EXPECT_EQ(basic, QZ_STATUS_BASIC_OPTIMAL);
    QZdeleteModel(&m);
  }
}

TEST_F(Optimize, UnboundedColumnWithoutRows) {
  for (int sense : {QZ_MIN, QZ_MAX}) {
    QZmodel m = columns_only(sense, 0, {-1.0 * sense}, {0}, {QZ_INFINITY});
    int status = 0;
    ASSERT_EQ(QZoptimize(m, QZ_METHOD_FREE, &status), 0);
    EXPECT_EQ(status, QZ_STATUS_UNBOUNDED);
    double obj = 0;
    ASSERT_EQ(QZgetObjective(m, &obj), 0);
    EXPECT_EQ(obj, -sense * QZ_INFINITY);
    QZdeleteModel(&m);
  }
}

TEST_F(Optimize, RowsWithoutColumnsAreFeasibleOnlyIfZeroSatisfiesThem) {
  struct Case {
    std::string types;
    std::vector<double> b;
    int status;
  };
  const std::vector<Case> cases = {
      {"LGEN", {1.0, -1.0, 0.0, 5.0}, QZ_STATUS_BASIC_OPTIMAL},
      {"E", {1e-9}, QZ_STATUS_BASIC_OPTIMAL},
      {"E", {-0.5}, QZ_STATUS_INFEASIBLE},
      {"G", {0.25}, QZ_STATUS_INFEASIBLE},
      {"L", {-2.0}, QZ_STATUS_INFEASIBLE},
  };
  for (const Case& tc : cases) {
    SCOPED_TRACE(tc.types);
    QZmodel m = new_model();
    std::vector<int> beg{0};
    ASSERT_EQ(QZloadLPData(m, static_cast<int>(tc.b.size()), 0, QZ_MIN, 3.0, nullptr, tc.b.data(),
                           tc.types.data(), 0, beg.data(), nullptr, nullptr, nullptr, nullptr,
                           nullptr),
              0);
    int status = 0;
    ASSERT_EQ(QZoptimize(m, QZ_METHOD_PSIMPLEX, &status), 0);
    EXPECT_EQ(status, tc.status);
    std::vector<double> slack(tc.b.size()), dual(tc.b.size());
    ASSERT_EQ(QZgetSlacks(m, slack.data()), 0);
    ASSERT_EQ(QZgetDualSolution(m, dual.data()), 0);
    EXPECT_EQ(slack, tc.b);
    for (double y : dual) EXPECT_EQ(y, 0.0);
    double obj = 0;
    ASSERT_EQ(QZgetObjective(m, &obj), 0);
    EXPECT_EQ(obj, 3.0);
    QZdeleteModel(&m);
  }
}

TEST_F(Optimize, EmptyModelIsOptimalAtItsConstant) {
  QZmodel m = columns_only(QZ_MAX, -4.0, {});
  ASSERT_EQ(QZoptimize(m, QZ_METHOD_FREE, nullptr), 0);
  double obj = 0;
  ASSERT_EQ(QZgetObjective(m, &obj), 0);
  EXPECT_EQ(obj, -4.0);
  QZdeleteModel(&m);
}

TEST_F(Optimize, DispatchCodes) {
  QZmodel m = new_model();
  int status = 0;
  EXPECT_EQ(QZoptimize(m, QZ_METHOD_FREE, &status), QZERR_NO_MODEL_LOADED);
  EXPECT_EQ(QZoptimize(nullptr, QZ_METHOD_FREE, &status), QZERR_ILLEGAL_NULL_POINTER);
  ASSERT_EQ(SmallLP().load(m), 0);
  for (int method : {QZ_METHOD_MIP, QZ_METHOD_GOP, 99})
    EXPECT_EQ(QZoptimize(m, method, &status), QZERR_BAD_SOLVER_TYPE) << method;
  QZdeleteModel(&m);
}

TEST_F(Optimize, NoSolutionBeforeASolve) {
  QZmodel m = new_model();
  ASSERT_EQ(SmallLP().load(m), 0);
  double x[2];
  int st = 0;
  EXPECT_EQ(QZgetPrimalSolution(m, x), QZERR_INFO_NOT_AVAILABLE);
  EXPECT_EQ(QZgetSolutionStatus(m, &st), QZERR_INFO_NOT_AVAILABLE);
  EXPECT_EQ(QZgetMIPSolutionStatus(m, &st), QZERR_INFO_NOT_AVAILABLE);
  EXPECT_EQ(QZgetMIPObjective(m, x), QZERR_INFO_NOT_AVAILABLE);
  QZdeleteModel(&m);
}

TEST_F(Optimize, CallbackStopAndExitLocation) {
  QZmodel m = columns_only(QZ_MIN, 0, {1.0}, {0}, {1});
  std::vector<int> seen;
  auto record = [](QZmodel, int loc, void* d) {
    static_cast<std::vector<int>*>(d)->push_back(loc);
    return 0;
  };
  ASSERT_EQ(QZsetCallback(m, record, &seen), 0);
  ASSERT_EQ(QZoptimize(m, QZ_METHOD_FREE, nullptr), 0);
  ASSERT_FALSE(seen.empty());
  EXPECT_EQ(seen.back(), QZLOC_EXIT_SOLVER);

  auto stop = [](QZmodel, int, void*) { return 5; };
  ASSERT_EQ(QZsetCallback(m, stop, nullptr), 0);
  EXPECT_EQ(QZoptimize(m, QZ_METHOD_FREE, nullptr), QZERR_USER_INTERRUPT);
  QZdeleteModel(&m);
}

TEST_F(Optimize, IntegerModelSolvesAsItsRelaxation) {
  QZmodel m = columns_only(QZ_MIN, 0, {1.0, -1.0}, {0.5, 0}, {3.5, 2.5});
  char t[] = "II";
  ASSERT_EQ(QZloadVarType(m, t), 0);
  ASSERT_EQ(QZoptimize(m, QZ_METHOD_FREE, nullptr), 0);
  double x[2];
  ASSERT_EQ(QZgetPrimalSolution(m, x), 0);
  EXPECT_EQ(x[0], 0.5);
  EXPECT_EQ(x[1], 2.5);
  QZdeleteModel(&m);
}

}  // namespace
}  // namespace zento::test

namespace zento::test {
namespace {

TEST_F(Optimize, ThreadRequestsRunSeriallyUnlessRefused) {
  QZmodel m = columns_only(QZ_MIN, 0, {1.0}, {-2}, {1});
  ASSERT_EQ(QZsetModelIntParameter(m, QZ_IPARAM_NUM_THREADS, 2), 0);
  int status = 0;
  ASSERT_EQ(QZoptimize(m, QZ_METHOD_FREE, &status), 0);
  EXPECT_EQ(status, QZ_STATUS_BASIC_OPTIMAL);
  // Parallel-phase mode with linked blocks is a combination the rules refuse.
  ASSERT_EQ(QZsetModelIntParameter(m, QZ_IPARAM_DECOMPOSITION_TYPE, 2), 0);
  ASSERT_EQ(QZsetModelIntParameter(m, QZ_IPARAM_MULTITHREAD_MODE, 1), 0);
  EXPECT_EQ(QZoptimize(m, QZ_METHOD_FREE, &status), QZERR_NOT_SUPPORTED);
  QZdeleteModel(&m);
}

}  // namespace
}  // namespace zento::test
