// One small LP per reduction of the presolve loop. Each is solved with presolve off and on
// (and as the mirrored maximization); the answers must agree, the presolved one must carry
// the reduction's undo record, pass the KKT certificate and the basis check on the full
// model, and come out of postsolve clean, without a reoptimization.
#include <gtest/gtest.h>

#include <cmath>

#include "../common/env_fixture.h"
#include "presolve/records.h"
#include "presolve_test_util.h"

namespace zento::test {
namespace {

using presolve::RecordType;

struct Reduction {
  const char* name;
  LpData lp;
  RecordType record;  // must appear on the post stack
  double obj;         // the optimum (minimization as written)
  const char* stage;  // the stage of the log table that shrinks the model
};

std::vector<Reduction> reductions() {
  const double I = kInf;
  std::vector<Reduction> v;
  // An empty equation and a free row leave; the rest stays.
  v.push_back({"empty_and_free_rows",
               dense_lp(QZ_MIN, {1, 2}, {{1, 1}, {0, 0}, {1, 5}}, {1, 0, 3}, "GEN", {0, 0}, {I, I}),
               presolve::kRecDeleteRow, 1, "sp1"});
  // A singleton equation fixes x0 and its multiplier makes x0 basic.
  v.push_back({"singleton_row",
               dense_lp(QZ_MIN, {3, 1}, {{1, 0}, {1, 1}}, {3, 5}, "EG", {0, 0}, {I, I}),
               presolve::kRecFixCol, 11, "sp1"});
  v.push_back(
      {"fixed_column",
       dense_lp(QZ_MIN, {1, 1, 5}, {{1, 0, 1}, {0, 1, -1}}, {3, -1}, "GG", {0, 0, 2}, {I, I, 2}),
       presolve::kRecFixCol, 12, "spb"});
  // Empty columns at the bound their cost favours, free at zero, nearest bound without cost.
  v.push_back({"empty_columns",
               dense_lp(QZ_MIN, {1, 1, 2, -1, 0, 0}, {{1, 1, 0, 0, 0, 0}}, {2}, "G",
                        {0, 0, -1, 0, -I, -3}, {I, I, 4, 7, I, I}),
               presolve::kRecFixCol, 2 - 2 - 7, "spb"});
  // x0 + x1 <= 0 with both at least 0: forced to the minimum activity.
  v.push_back(
      {"forcing_row_min",
       dense_lp(QZ_MIN, {-1, -2, 1}, {{1, 1, 0}, {1, 1, 1}}, {0, 1}, "LG", {0, 0, 0}, {5, 5, I}),
       presolve::kRecForceRow, 1, "sp1"});
  v.push_back(
      {"forcing_row_max",
       dense_lp(QZ_MIN, {1, -1, -1}, {{2, -1, 0}, {1, 1, 1}}, {4, 10}, "GL", {0, 0, 0}, {2, 3, I}),
       presolve::kRecForceRow, -6, "sp1"});
  // A row no point can violate: its slack is implied free and leaves with it.
  v.push_back({"redundant_row",
               dense_lp(QZ_MIN, {1, 2}, {{1, 1}, {1, 1}}, {100, 1}, "LG", {0, 0}, {1, 1}),
               presolve::kRecEliminate, 1, "spb"});
  // x2 in one equation whose other columns bound it within its own bounds.
  v.push_back({"implied_free_singleton",
               dense_lp(QZ_MIN, {1, -1, 2}, {{1, 1, 1}, {1, -1, 0}}, {4, -0.5}, "EG", {0, 0, 0},
                        {1, 1, 10}),
               presolve::kRecEliminate, 4, "spb"});
  // x0 = x1 hands x0's tight bounds to x1, which ends on the borrowed bound.
  v.push_back(
      {"doubleton_borrowed_bound",
       dense_lp(QZ_MIN, {-1, 0, 1}, {{1, -1, 0}, {0, 1, 1}}, {0, 3}, "EG", {0, 0, 0}, {2, 10, I}),
       presolve::kRecEliminate, -1, "spb"});
  v.push_back({"doubleton_equation",
               dense_lp(QZ_MIN, {1, 2, 1}, {{2, 3, 0}, {1, 0, 1}, {0, 1, 1}}, {6, 2, 1}, "EGG",
                        {0, 0, 0}, {10, 10, I}),
               presolve::kRecEliminate, 3.6, "eli"});
  // A bound written as a row: x0 <= 3 ends active.
  v.push_back({"bound_row",
               dense_lp(QZ_MIN, {-1, 1}, {{1, 0}, {1, 1}}, {3, 2}, "LG", {0, 0}, {I, I}),
               presolve::kRecEliminate, -3, "spb"});
  // x2 only makes the '<=' rows tighter and costs: it sits at zero.
  v.push_back({"dominated_column",
               dense_lp(QZ_MIN, {1, 1, 3}, {{1, 0, 1}, {0, 1, 1}, {1, 1, 0}}, {4, 5, 1}, "LLG",
                        {0, 0, 0}, {I, I, I}),
               presolve::kRecFixCol, 1, "sdb"});
  // Column x1 is twice x0 with twice the cost: one merged column, split back.
  v.push_back(
      {"duplicate_columns_merged",
       dense_lp(QZ_MIN, {1, 2, -1}, {{1, 2, 0}, {3, 6, 1}}, {2.5, 20}, "GL", {0, 0, 0}, {1, 1, I}),
       presolve::kRecDupCol, -10, "dcp"});
  // Same pattern, x1 dearer per unit: it stays at its lower bound.
  v.push_back(
      {"duplicate_columns_dominated",
       dense_lp(QZ_MIN, {1, 3, -1}, {{1, 2, 0}, {3, 6, 1}}, {2.5, 20}, "GL", {0, 0, 0}, {I, 4, I}),
       presolve::kRecFixCol, -10, "dcp"});
  v.push_back({"duplicate_equations",
               dense_lp(QZ_MIN, {1, 2, 1}, {{1, 1, 0}, {2, 2, 0}, {1, -1, 1}}, {2, 4, 0}, "EEG",
                        {0, 0, 0}, {I, I, I}),
               presolve::kRecDeleteRow, 2, "drp"});
  v.push_back({"duplicate_equation_and_inequality",
               dense_lp(QZ_MIN, {1, 2, 1}, {{1, 1, 0}, {3, 3, 0}, {1, -1, 1}}, {2, 9, 0}, "ELG",
                        {0, 0, 0}, {I, I, I}),
               presolve::kRecDeleteRow, 2, "drp"});
  // Two parallel inequalities; the dropped one holds the active bound.
  v.push_back({"duplicate_inequalities",
               dense_lp(QZ_MIN, {-1, -1, 1}, {{1, 1, 0}, {-2, -2, 0}, {1, 0, 1}}, {4, -6, 1}, "LGG",
                        {0, 0, 0}, {I, I, I}),
               presolve::kRecDupRow, -3, "drp"});
  // x2 is implied free by its first row and substituted into the second.
  v.push_back({"implied_free_substitution",
               dense_lp(QZ_MIN, {1, 2, 0, 3}, {{1, 1, -1, 0}, {0, 0, 1, 1}, {1, 0, 0, 1}},
                        {0, 1, 3}, "EGL", {0, 0, 0, 0}, {1, 1, 5, I}),
               presolve::kRecEliminate, 1, "eli"});
  // Presolve alone: nothing is left for the simplex.
  v.push_back({"everything_removed",
               dense_lp(QZ_MIN, {1, 1}, {{1, 0}, {1, 1}}, {2, 10}, "EL", {0, 1}, {I, 1}),
               presolve::kRecFixCol, 3, "sp1"});
  return v;
}

void PrintTo(const Reduction& r, std::ostream* os) { *os << r.name; }

class PresolveReduction : public EnvParamFixture<Reduction> {};

TEST_P(PresolveReduction, SameAnswerAndCleanPostsolve) {
  const Reduction& c = GetParam();
  for (int sense : {QZ_MIN, QZ_MAX}) {
    LpData lp = c.lp;
    if (sense == QZ_MAX) {
      lp.sense = QZ_MAX;
      for (double& v : lp.c) v = -v;
    }
    const double want = sense == QZ_MAX ? -c.obj : c.obj;
    SolveRun off, on;
    std::string log;
    solve(env, lp, false, off);
    solve_at(env, lp, 254, on, QZ_METHOD_FREE, 0, &log);
    ASSERT_EQ(off.rc, 0);
    ASSERT_EQ(on.rc, 0);
    ASSERT_EQ(off.status, QZ_STATUS_BASIC_OPTIMAL);
    ASSERT_EQ(on.status, QZ_STATUS_BASIC_OPTIMAL) << "sense " << sense;
    EXPECT_NEAR(off.obj, want, 1e-9);
    EXPECT_NEAR(on.obj, want, 1e-9) << "sense " << sense;
    ASSERT_NE(on.model->presolve, nullptr) << "presolve kept no copy";
    // The stage table shows the reduction where it belongs: a line of that stage with fewer
    // rows, columns or nonzeros than the line before it; the reduced model is smaller.
    const std::vector<StageLine> table = stage_table(log);
    bool shrank = false;
    for (size_t i = 1; i < table.size(); ++i)
      shrank |= table[i].tag == c.stage &&
                (table[i].rows < table[i - 1].rows || table[i].cols < table[i - 1].cols ||
                 table[i].nnz < table[i - 1].nnz);
    EXPECT_TRUE(shrank) << "no shrinking '" << c.stage << "' line in\n" << log;
    int rdRows = -1, rdCols = -1;
    QZgetInfo(on.model, QZ_IINFO_NUM_RDCONS, &rdRows);
    QZgetInfo(on.model, QZ_IINFO_NUM_RDVARS, &rdCols);
    EXPECT_LT(rdRows + rdCols, lp.m + lp.n);
    EXPECT_GT(on.model->presolve->stack.count(c.record), 0) << "record " << c.record;
    // Clean postsolve: no reoptimization of the full model took place.
    EXPECT_EQ(on.model->glp, nullptr) << "postsolve needed a reoptimization";
    const KktReport k = check_model(on.model, lp);
    EXPECT_TRUE(k.ok(1e-9)) << k.worst;
    const KktReport b = check_basis(on.model, lp);
    EXPECT_LE(b.pinf, 1e-9) << b.worst;
    EXPECT_LE(b.dinf, 1e-9) << b.worst;
  }
}

INSTANTIATE_TEST_SUITE_P(Loop, PresolveReduction, ::testing::ValuesIn(reductions()),
                         [](const auto& info) { return std::string(info.param.name); });

// Verdicts: what presolve decides alone is reported with the used method -1; with
// QZ_IPARAM_SOLVER_IUSOL the verdict is dropped and the simplex decides.
struct Verdict {
  const char* name;
  LpData lp;
  int status;
  bool byPresolve;  // decided before any simplex run
};

std::vector<Verdict> verdicts() {
  const double I = kInf;
  std::vector<Verdict> v;
  v.push_back({"empty_row_nonzero_rhs",
               dense_lp(QZ_MIN, {1, 1}, {{1, 1}, {0, 0}}, {1, 1}, "GE", {0, 0}, {I, I}),
               QZ_STATUS_INFEASIBLE, true});
  v.push_back({"contradicting_equations",
               dense_lp(QZ_MIN, {1, 1}, {{1, 1}, {2, 2}}, {1, 3}, "EE", {0, 0}, {I, I}),
               QZ_STATUS_INFEASIBLE, true});
  v.push_back(
      {"row_beyond_its_activity",
       dense_lp(QZ_MIN, {1, 1, 1}, {{1, 1, 0}, {0, 1, 1}}, {5, 1}, "GG", {0, 0, 0}, {2, 2, I}),
       QZ_STATUS_INFEASIBLE, true});
  v.push_back({"singleton_row_outside_bounds",
               dense_lp(QZ_MIN, {1, 1}, {{1, 0}, {1, 1}}, {5, 1}, "EG", {0, 0}, {3, I}),
               QZ_STATUS_INFEASIBLE, true});
  v.push_back({"parallel_rows_apart",
               dense_lp(QZ_MIN, {1, 1, 1}, {{1, 1, 0}, {-1, -1, 0}, {0, 1, 1}}, {3, -2, 1}, "GGG",
                        {0, 0, 0}, {I, I, I}),
               QZ_STATUS_INFEASIBLE, true});
  // An empty column that improves without end, the rest feasible.
  v.push_back({"improving_empty_column",
               dense_lp(QZ_MIN, {1, -1}, {{1, 0}}, {2}, "E", {0, 0}, {I, I}), QZ_STATUS_UNBOUNDED,
               true});
  // The same column beside rows that no point satisfies: infeasible, not unbounded.
  v.push_back({"improving_column_infeasible_rest",
               dense_lp(QZ_MIN, {1, 1, -1, 0}, {{1, 1, 0, 1}, {1, -1, 0, 2}, {2, 0, 0, 3}},
                        {2, 2, 5}, "LLG", {0, 0, -I, 0}, {I, I, I, I}),
               QZ_STATUS_INFEASIBLE, false});
  // A column whose reduced cost is negative for every feasible multiplier, no upper bound.
  v.push_back(
      {"dual_fixing_unbounded",
       dense_lp(QZ_MIN, {-1, 1, 0}, {{1, -1, 0}, {0, 1, 1}}, {0, 4}, "GL", {0, 0, 0}, {I, I, I}),
       QZ_STATUS_UNBOUNDED, false});
  return v;
}

void PrintTo(const Verdict& v, std::ostream* os) { *os << v.name; }

class PresolveVerdict : public EnvParamFixture<Verdict> {};

TEST_P(PresolveVerdict, StatusAndMethod) {
  const Verdict& c = GetParam();
  SolveRun off, on, forced;
  solve(env, c.lp, false, off, QZ_METHOD_PSIMPLEX, 1);
  solve(env, c.lp, true, on);
  solve(env, c.lp, true, forced, QZ_METHOD_PSIMPLEX, 1);
  ASSERT_EQ(off.rc, 0);
  ASSERT_EQ(on.rc, 0);
  ASSERT_EQ(forced.rc, 0);
  EXPECT_EQ(off.status, c.status) << "reference without presolve";
  EXPECT_EQ(on.status, c.status);
  if (c.byPresolve) {
    EXPECT_EQ(on.method, -1) << "presolve decided the model";
  }
  // With IUSOL the simplex has the last word, and it agrees.
  EXPECT_EQ(forced.status, c.status);
  EXPECT_NE(forced.method, -1);
}

INSTANTIATE_TEST_SUITE_P(Loop, PresolveVerdict, ::testing::ValuesIn(verdicts()),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace zento::test
