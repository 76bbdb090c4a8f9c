// What a change does to stored results: statuses, the basis kept for a warm start and its
// shape after adding and deleting rows and columns, status moves after bound changes, the
// MIP record, the simplex record, and the parts that follow a deletion.
#include <functional>

#include "core/model.h"
#include "lp/simplex/glp.h"
#include "modify_util.h"
#include "zento_fortran.h"

namespace zento::test {
namespace {

// Columns without rows solve in closed form: min x0 - x1 + 0 x2, x0 in [1,4], x1 in [0,3],
// x2 in [-2, 2].
QZmodel solved_without_rows(ModifyFixture& f) {
  QZmodel m = f.new_model();
  const double c[] = {1, -1, 0}, lo[] = {1, 0, -2}, up[] = {4, 3, 2};
  const int beg[] = {0, 0, 0, 0};
  EXPECT_EQ(QZloadLPData(m, 0, 3, QZ_MIN, 0, c, nullptr, nullptr, 0, beg, nullptr, nullptr,
                         nullptr, lo, up),
            0);
  int status = 0;
  EXPECT_EQ(QZoptimize(m, QZ_METHOD_FREE, &status), 0);
  EXPECT_EQ(status, QZ_STATUS_BASIC_OPTIMAL);
  return m;
}

int basic_count(QZmodel m) {
  std::vector<int> cs(m->nVars), rs(m->nCons);
  EXPECT_EQ(QZgetBasis(m, cs.data(), rs.data()), 0);
  int n = 0;
  for (int v : cs) n += v >= 0;
  for (int v : rs) n += v >= 0;
  return n;
}

struct Kind {
  const char* what;
  std::function<void(QZmodel)> change;
  int model, primal, basic;
  bool mipKept;
};

TEST_F(ModifyFixture, StatusesAfterEachKindOfChange) {
  const int j0[] = {0}, j1[] = {1};
  const double two[] = {2.0}, one[] = {1.0};
  const int S = QZ_STATUS_BASIC_OPTIMAL, L = QZ_STATUS_LOADED, U = QZ_STATUS_UNKNOWN;
  const std::vector<Kind> kinds = {
      {"new lower bound", [&](QZmodel m) { ASSERT_EQ(QZmodifyLowerBounds(m, 1, j0, two), 0); }, L, U, L, true},
      {"same lower bound", [&](QZmodel m) { ASSERT_EQ(QZmodifyLowerBounds(m, 1, j0, one), 0); }, S, S, S, true},
      {"cost", [&](QZmodel m) { ASSERT_EQ(QZmodifyObjective(m, 1, j1, two), 0); }, L, U, L, true},
      {"constant", [&](QZmodel m) { ASSERT_EQ(QZmodifyObjConstant(m, 5.0), 0); }, S, S, S, true},
      {"column type", [&](QZmodel m) { ASSERT_EQ(QZmodifyVariableType(m, 1, j1, "I"), 0); }, S, S, S, false},
      {"new row", [&](QZmodel m) { ASSERT_EQ(QZaddConstraints(m, 1, "L", nullptr, nullptr, nullptr, nullptr, one), 0); }, L, U, L, false},
      {"new column", [&](QZmodel m) { ASSERT_EQ(QZaddVariables(m, 1, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, one, nullptr, nullptr), 0); }, L, U, L, false},
      {"new set", [&](QZmodel m) { const char t[] = {1}; const int b[] = {0, 2}, c[] = {0, 1}; ASSERT_EQ(QZaddSETS(m, 1, t, nullptr, b, c), 0); }, L, U, L, false},
      {"deleted nonbasic column", [&](QZmodel m) { ASSERT_EQ(QZdeleteVariables(m, 1, j1), 0); }, L, U, L, false},
  };
  for (const Kind& k : kinds) {
    SCOPED_TRACE(k.what);
    QZmodel m = solved_without_rows(*this);
    m->mipsol = std::make_unique<MipSol>();
    m->mipsol->MIPstatus = QZ_STATUS_OPTIMAL;
    k.change(m);
    EXPECT_EQ(m->sol->model_status, k.model);
    EXPECT_EQ(m->sol->primalStatus, k.primal);
    EXPECT_EQ(m->sol->basicStatus, k.basic);
    EXPECT_EQ(m->mipsol != nullptr, k.mipKept);
    EXPECT_EQ(m->modelState, QZ_STATUS_LOADED);
    // The stored point is still readable and sized for the model.
    std::vector<double> x(m->nVars);
    EXPECT_EQ(QZgetPrimalSolution(m, x.data()), 0);
    EXPECT_EQ(basic_count(m), m->nCons);
    QZdeleteModel(&m);
  }
}

TEST_F(ModifyFixture, BasisKeepsItsShapeThroughRowAndColumnAdditions) {
  QZmodel m = solved_without_rows(*this);
  const int rb[] = {0, 2, 3}, rc[] = {0, 1, 2};
  const double rv[] = {1, 1, 1}, b[] = {5, 1};
  ASSERT_EQ(QZaddConstraints(m, 2, "LG", nullptr, rb, rv, rc, b), 0);
  const int cb[] = {0, 1}, cr[] = {1};
  const double cv[] = {2}, cost[] = {3};
  ASSERT_EQ(QZaddVariables(m, 1, nullptr, nullptr, cb, nullptr, cv, cr, cost, nullptr, nullptr), 0);
  std::vector<int> cs(4), rs(2);
  ASSERT_EQ(QZgetBasis(m, cs.data(), rs.data()), 0);
  EXPECT_EQ(rs, (std::vector<int>{0, 1}));  // each new logical basic in its own position
  EXPECT_EQ(cs[3], QZ_BASTYPE_ATLO);        // the new column rests at its lower bound
  EXPECT_EQ(basic_count(m), 2);
  // The new column's reduced cost follows from the stored (zero) duals.
  std::vector<double> d(4);
  ASSERT_EQ(QZgetReducedCosts(m, d.data()), 0);
  EXPECT_EQ(d[3], 3.0);
  // A basis of this shape is one the model takes back.
  EXPECT_EQ(QZloadBasis(m, cs.data(), rs.data()), 0);
  // Deleting a row whose logical is basic keeps the basis; a nonbasic logical loses it.
  const int r1[] = {1};
  ASSERT_EQ(QZdeleteConstraints(m, 1, r1), 0);
  EXPECT_EQ(m->sol->basicStatus, QZ_STATUS_LOADED);
  EXPECT_EQ(basic_count(m), 1);
  const int csB[] = {0, QZ_BASTYPE_ATUP, QZ_BASTYPE_ATLO, QZ_BASTYPE_ATLO}, rsB[] = {QZ_BASTYPE_ATLO};
  ASSERT_EQ(QZloadBasis(m, csB, rsB), 0);
  const int r0[] = {0};
  ASSERT_EQ(QZdeleteConstraints(m, 1, r0), 0);
  EXPECT_EQ(m->sol->basicStatus, QZ_STATUS_UNLOADED);
  std::vector<int> none(4);
  EXPECT_EQ(QZgetBasis(m, none.data(), nullptr), QZERR_INFO_NOT_AVAILABLE);
  QZdeleteModel(&m);
}

TEST_F(ModifyFixture, DeletingABasicColumnLosesTheBasis) {
  QZmodel m = solved_without_rows(*this);
  const double b[] = {1};
  const int rb[] = {0, 1}, rc[] = {2};
  const double rv[] = {1};
  ASSERT_EQ(QZaddConstraints(m, 1, "E", nullptr, rb, rv, rc, b), 0);
  const int cs[] = {QZ_BASTYPE_ATLO, QZ_BASTYPE_ATUP, 0}, rs[] = {QZ_BASTYPE_ATLO};
  ASSERT_EQ(QZloadBasis(m, cs, rs), 0);
  const int j2[] = {2};
  ASSERT_EQ(QZdeleteVariables(m, 1, j2), 0);
  EXPECT_EQ(m->sol->basicStatus, QZ_STATUS_UNLOADED);
  QZdeleteModel(&m);
}

TEST_F(ModifyFixture, NonbasicColumnsMoveToARealBound) {
  const double inf = QZ_INFINITY;
  struct Move {
    const char* what;
    double lo, up;
    int status;
    bool upper;
    double value;
    int expect;
  };
  const std::vector<Move> moves = {
      {"fixed, new lower", 2, 2, QZ_BASTYPE_ATLO, false, 1, QZ_BASTYPE_ATUP},
      {"fixed, new upper", 2, 2, QZ_BASTYPE_ATUP, true, 3, QZ_BASTYPE_ATLO},
      {"at lower, lower dropped, upper finite", 0, 5, QZ_BASTYPE_ATLO, false, -inf, QZ_BASTYPE_ATUP},
      {"at lower, lower dropped, no upper", 0, inf, QZ_BASTYPE_ATLO, false, -inf, QZ_BASTYPE_FNUL},
      {"free, lower set", -inf, inf, QZ_BASTYPE_FNUL, false, 0, QZ_BASTYPE_ATLO},
      {"at upper, upper dropped, lower finite", 0, 5, QZ_BASTYPE_ATUP, true, inf, QZ_BASTYPE_ATLO},
      {"at upper, upper dropped, no lower", -inf, 5, QZ_BASTYPE_ATUP, true, inf, QZ_BASTYPE_FNUL},
      {"free, upper set", -inf, inf, QZ_BASTYPE_FNUL, true, 4, QZ_BASTYPE_ATUP},
      {"at lower, lower moved", 0, 5, QZ_BASTYPE_ATLO, false, 1, QZ_BASTYPE_ATLO},
      {"basic stays basic", 0, 5, 0, false, -inf, 0},
  };
  for (const Move& mv : moves) {
    SCOPED_TRACE(mv.what);
    QZmodel m = new_model();
    const double c[] = {0}, lo[] = {mv.lo}, up[] = {mv.up};
    const int beg[] = {0, 0};
    ASSERT_EQ(QZloadLPData(m, 0, 1, QZ_MIN, 0, c, nullptr, nullptr, 0, beg, nullptr, nullptr,
                           nullptr, lo, up),
              0);
    const int cs[] = {mv.status};
    ASSERT_EQ(QZloadBasis(m, cs, nullptr), 0);
    const int j[] = {0};
    const double v[] = {mv.value};
    ASSERT_EQ(mv.upper ? QZmodifyUpperBounds(m, 1, j, v) : QZmodifyLowerBounds(m, 1, j, v), 0);
    // A loaded basis without a point: the record is read directly.
    EXPECT_EQ(m->sol->basicStatus, QZ_STATUS_LOADED);
    EXPECT_EQ(m->sol->colStatus[0], mv.expect);
    QZdeleteModel(&m);
  }
}

TEST_F(ModifyFixture, ObjectiveConstantShiftsStoredObjectives) {
  QZmodel m = solved_without_rows(*this);
  double before = 0, after = 0;
  ASSERT_EQ(QZgetObjective(m, &before), 0);
  m->mipsol = std::make_unique<MipSol>();
  m->mipsol->MIPstatus = QZ_STATUS_FEASIBLE;
  m->mipsol->obj = 10;
  ASSERT_EQ(QZmodifyObjConstant(m, 2.5), 0);
  ASSERT_EQ(QZgetObjective(m, &after), 0);
  EXPECT_EQ(after, before + 2.5);
  EXPECT_EQ(m->mipsol->obj, 12.5);
  // A MIP search keeps its record through changes of its own working model.
  m->SplexPam.in_mip = 1;
  const int j[] = {0};
  ASSERT_EQ(QZdeleteVariables(m, 1, j), 0);
  EXPECT_NE(m->mipsol, nullptr);
  QZdeleteModel(&m);
}

TEST_F(ModifyFixture, SimplexRecordThatCannotTakeAChangeIsReleased) {
  const int i0[] = {0};
  const double v[] = {3.0};
  const std::vector<std::pair<const char*, std::function<int(QZmodel)>>> changes = {
      {"rhs", [&](QZmodel m) { return QZmodifyRHS(m, 1, i0, v); }},
      {"row type", [&](QZmodel m) { return QZmodifyConstraintType(m, 1, i0, "G"); }},
      {"bound", [&](QZmodel m) { return QZmodifyUpperBounds(m, 1, i0, v); }},
      {"cost", [&](QZmodel m) { return QZmodifyObjective(m, 1, i0, v); }},
      {"coefficient", [&](QZmodel m) { return QZmodifyAij(m, 0, 0, 3.0); }},
  };
  for (const auto& [what, change] : changes) {
    SCOPED_TRACE(what);
    QZmodel m = new_model();
    const double c[] = {1}, b[] = {1}, a[] = {1};
    const int beg[] = {0, 1}, rows[] = {0};
    ASSERT_EQ(QZloadLPData(m, 1, 1, QZ_MIN, 0, c, b, "L", 1, beg, nullptr, a, rows, nullptr, nullptr), 0);
    m->glp.reset(new Glp());
    ASSERT_EQ(change(m), 0);
    EXPECT_EQ(m->glp, nullptr);
    QZdeleteModel(&m);
  }
}

TEST_F(ModifyFixture, DeletedColumnsTakeConesSetsAndOtherPartsAlong) {
  QZmodel m = new_model();
  const int n = 10;
  std::vector<double> c(n, 1.0), up(n, 8.0);
  std::vector<int> beg(n + 1, 0);
  ASSERT_EQ(QZloadLPData(m, 0, n, QZ_MIN, 0, c.data(), nullptr, nullptr, 0, beg.data(), nullptr,
                         nullptr, nullptr, nullptr, up.data()),
            0);
  // Cones: Q{0,1,2} R{3,4,5} E{6,7,8}; sets: type 2 {0,3,6}, type 1 {0,3,8}, type 4 {2,5}.
  const int cb[] = {0, 3, 6, 9}, cc[] = {0, 1, 2, 3, 4, 5, 6, 7, 8};
  char* cn[] = {const_cast<char*>("q"), const_cast<char*>("r"), const_cast<char*>("e")};
  ASSERT_EQ(QZaddCones(m, 3, "QRE", nullptr, cn, cb, cc), 0);
  const char st[] = {2, 1, 4};
  const int card[] = {0, 0, 1}, sb[] = {0, 3, 6, 8}, sc[] = {0, 3, 6, 0, 3, 8, 2, 5};
  ASSERT_EQ(QZaddSETS(m, 3, st, card, sb, sc), 0);
  const int scv[] = {9, 4};
  const double scl[] = {1, 2}, scu[] = {8, 8};
  ASSERT_EQ(QZloadSemiContData(m, 2, scv, scl, scu), 0);
  std::vector<int> prio(n);
  for (int j = 0; j < n; ++j) prio[j] = 10 * j;
  ASSERT_EQ(QZloadVarPriorities(m, prio.data()), 0);
  // Delete 1 (Q keeps its first member), 3, 4 and 5 (R loses its defining members), 7 (E needs
  // all three); 4 is listed twice and deleted once. Kept: 0 2 6 8 9 -> 0 1 2 3 4.
  const int del[] = {1, 5, 7, 4, 4, 3};
  ASSERT_EQ(QZdeleteVariables(m, 6, del), 0);
  const Snapshot s = snapshot(m);
  EXPECT_EQ(s.nVars, 5);
  EXPECT_EQ(s.cones, (std::vector<std::vector<double>>{{'Q', 0, 0, 1}}));
  EXPECT_EQ(s.coneNames, (std::vector<std::string>{"q"}));
  // The type 2 set keeps two members and goes; the type 1 set keeps two and stays; the
  // cardinality set keeps one and stays.
  EXPECT_EQ(s.sets, (std::vector<std::vector<int>>{{1, 1, 0, 3}, {4, 1, 1}}));
  EXPECT_EQ(s.scVars, (std::vector<int>{4}));
  EXPECT_EQ(s.scLower, (std::vector<double>{1}));
  EXPECT_EQ(s.priorities, (std::vector<int>{0, 20, 60, 80, 90}));
  // Deleting the last cone releases the cone names too.
  ASSERT_EQ(QZdeleteCones(m, 1, std::vector<int>{0}.data()), 0);
  int nCones = -1, coneBytes = -1;
  ASSERT_EQ(QZgetDimensions(m, nullptr, nullptr, &nCones, nullptr, nullptr, nullptr, nullptr,
                            nullptr, nullptr, nullptr, &coneBytes),
            0);
  EXPECT_EQ(nCones, 0);
  EXPECT_EQ(coneBytes, 0);
  QZdeleteModel(&m);
}

TEST_F(ModifyFixture, FortranTwinsChangeTheModelByReference) {
  QZmodel m = new_model();
  const double c[] = {1, 2}, lo[] = {0, 0}, up[] = {1, 1};
  const int beg[] = {0, 0, 0};
  ASSERT_EQ(QZloadLPData(m, 0, 2, QZ_MAX, 0, c, nullptr, nullptr, 0, beg, nullptr, nullptr,
                         nullptr, lo, up),
            0);
  int k = 1, row = 0, col = 1;
  const int rb[] = {0, 2}, rc[] = {0, 1};
  const double rv[] = {1, 1}, b[] = {1};
  ASSERT_EQ(qzaddconstraints_(&m, &k, "L", nullptr, rb, rv, rc, b), 0);
  double a = 4.0;
  ASSERT_EQ(qzmodifyaij_(&m, &row, &col, &a), 0);
  const Snapshot s = snapshot(m);
  EXPECT_EQ(s.rows[0], (Entries{{0, 1}, {1, 4}}));
  QZdeleteModel(&m);
}

}  // namespace
}  // namespace zento::test
