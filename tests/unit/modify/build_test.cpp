// A model built by additions and modifications equals the same model loaded at once, and the
// gapped matrix behaves: merges in any order, explicit zeros, one widening for many rows.
#include "core/model.h"
#include "modify_util.h"

namespace zento::test {
namespace {

// The target: min/max with 4 rows, 5 columns, names, types, sets, a semi-continuous column,
// a cone and priorities.
void load_at_once(QZmodel m) {
  const double c[] = {1, -2, 3, 0, 5}, b[] = {4, 2, 7, -1};
  const int beg[] = {0, 2, 4, 6, 8, 10};
  const int rows[] = {0, 2, 1, 3, 0, 3, 1, 2, 0, 1};
  const double a[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
  const double lo[] = {0, -QZ_INFINITY, 0, 0, 0}, up[] = {1, 5, 10, 6, QZ_INFINITY};
  ASSERT_EQ(QZloadLPData(m, 4, 5, QZ_MIN, 2.5, c, b, "LGEN", 10, beg, nullptr, a, rows, lo, up), 0);
  char types[] = "BCICC";
  ASSERT_EQ(QZloadVarType(m, types), 0);
  const char* rn[] = {"r0", "r1", "r2", "r3"};
  const char* cn[] = {"x0", "x1", "x2", "x3", "x4"};
  ASSERT_EQ(QZloadNameData(m, nullptr, nullptr, nullptr, nullptr, nullptr, const_cast<char**>(rn),
                           const_cast<char**>(cn), nullptr),
            0);
  const char st[] = {1, 4};
  const int card[] = {0, 2}, sb[] = {0, 2, 5}, sc[] = {0, 2, 1, 2, 4};
  ASSERT_EQ(QZloadSETSData(m, 2, st, card, sb, sc), 0);
  const int scv[] = {3};
  const double scl[] = {1.5}, scu[] = {6};
  ASSERT_EQ(QZloadSemiContData(m, 1, scv, scl, scu), 0);
  const int cb[] = {0, 2}, cc[] = {4, 1};
  ASSERT_EQ(QZloadConeData(m, 1, "Q", nullptr, cb, cc), 0);
  const int prio[] = {0, 3, 0, 1, 0};
  ASSERT_EQ(QZloadVarPriorities(m, prio), 0);
}

TEST_F(ModifyFixture, ModelBuiltByAdditionsEqualsModelLoadedAtOnce) {
  QZmodel once = new_model();
  load_at_once(once);
  QZmodel built = new_model();  // never loaded: additions start an empty model
  // Two empty columns, then two rows by rows, then the other columns with their entries.
  char* n01[] = {const_cast<char*>("x0"), const_cast<char*>("x1")};
  const double c01[] = {1, 0}, lo01[] = {-3, -QZ_INFINITY}, up01[] = {1, 7};
  ASSERT_EQ(QZaddVariables(built, 2, "BC", n01, nullptr, nullptr, nullptr, nullptr, c01, lo01,
                           up01),
            0);
  char* r01[] = {const_cast<char*>("r0"), const_cast<char*>("r1")};
  const int rb[] = {0, 1, 2};
  const int rc[] = {0, 1};
  const double rv[] = {1, 3}, b01[] = {4, 99};
  ASSERT_EQ(QZaddConstraints(built, 2, "LG", r01, rb, rv, rc, b01), 0);
  char* r23[] = {const_cast<char*>("r2"), const_cast<char*>("r3")};
  const int rb2[] = {0, 2, 3};
  const int rc2[] = {0, 1, 1};
  const double rv2[] = {2, 8, 4}, b23[] = {7, -1};
  ASSERT_EQ(QZaddConstraints(built, 2, "EN", r23, rb2, rv2, rc2, b23), 0);
  char* n24[] = {const_cast<char*>("x2"), const_cast<char*>("x3"), const_cast<char*>("x4")};
  // Column 2 listed in descending row order with a repeated row that sums to 6.
  const int cb[] = {0, 3, 5, 7};
  const int cr[] = {3, 0, 3, 1, 2, 1, 0};
  const double cv[] = {2, 5, 4, 7, 8, 10, 9};
  const double c24[] = {3, 0, 5}, up24[] = {10, 6, QZ_INFINITY};
  ASSERT_EQ(QZaddVariables(built, 3, "ICC", n24, cb, nullptr, cv, cr, c24, nullptr, up24), 0);
  // Fix up by modification: wrong coefficients, rhs, cost, bounds, constant.
  ASSERT_EQ(QZdeleteAj(built, 3, 1, std::vector<int>{2}.data()), 0);
  ASSERT_EQ(QZdeleteAj(built, 1, 1, std::vector<int>{2}.data()), 0);
  ASSERT_EQ(QZmodifyAij(built, 2, 3, 8.0), 0);
  ASSERT_EQ(QZmodifyAij(built, 1, 1, 3.0), 0);
  ASSERT_EQ(QZmodifyRHS(built, 1, std::vector<int>{1}.data(), std::vector<double>{2}.data()), 0);
  ASSERT_EQ(QZmodifyObjective(built, 1, std::vector<int>{1}.data(), std::vector<double>{-2}.data()), 0);
  ASSERT_EQ(QZmodifyUpperBounds(built, 1, std::vector<int>{1}.data(), std::vector<double>{5}.data()), 0);
  ASSERT_EQ(QZmodifyLowerBounds(built, 1, std::vector<int>{0}.data(), std::vector<double>{0}.data()), 0);
  ASSERT_EQ(QZmodifyObjConstant(built, 2.5), 0);
  ASSERT_EQ(QZmodifyPriorities(built, 2, std::vector<int>{1, 3}.data(), std::vector<int>{3, 1}.data()), 0);
  const char st[] = {1, 4};
  const int card[] = {0, 2}, sb[] = {0, 2, 5}, sc[] = {0, 2, 1, 2, 4};
  ASSERT_EQ(QZaddSETS(built, 2, st, card, sb, sc), 0);
  const int scv[] = {3};
  const double scl[] = {1.5}, scu[] = {6};
  ASSERT_EQ(QZloadSemiContData(built, 1, scv, scl, scu), 0);
  const int kb[] = {0, 2}, kc[] = {4, 1};
  ASSERT_EQ(QZaddCones(built, 1, "Q", nullptr, nullptr, kb, kc), 0);
  expect_same(snapshot(built), snapshot(once));
  QZdeleteModel(&built);
  QZdeleteModel(&once);
}

TEST_F(ModifyFixture, QuadraticTermsAddedInBatchesEqualOneLoad) {
  const double c[] = {0, 0, 0}, b[] = {1, 2};
  const int beg[] = {0, 1, 2, 2}, rows[] = {0, 1};
  const double a[] = {1, 1};
  QZmodel once = new_model(), built = new_model();
  for (QZmodel m : {once, built})
    ASSERT_EQ(QZloadLPData(m, 2, 3, QZ_MIN, 0, c, b, "LE", 2, beg, nullptr, a, rows, nullptr, nullptr), 0);
  const int qr[] = {-1, 1, -1, 0, 1}, q1[] = {0, 2, 1, 1, 0}, q2[] = {0, 1, 0, 1, 0};
  const double qc[] = {2, 3, 1, 4, 5};
  ASSERT_EQ(QZloadQCData(once, 5, qr, q1, q2, qc), 0);
  ASSERT_EQ(QZaddQCterms(built, 2, qr, q1, q2, qc), 0);
  ASSERT_EQ(QZaddQCterms(built, 3, qr + 2, q1 + 2, q2 + 2, qc + 2), 0);
  expect_same(snapshot(built), snapshot(once));
  // Deleting the blocks of the objective and of row 0 leaves row 1 only.
  const int del[] = {-1, 0};
  ASSERT_EQ(QZdeleteQCterms(built, 2, del), 0);
  const Snapshot s = snapshot(built);
  ASSERT_EQ(s.qcNnz, 2);
  for (const auto& t : s.quad) EXPECT_EQ(std::get<0>(t), 1);
  const int last[] = {1};
  ASSERT_EQ(QZdeleteQCterms(built, 1, last), 0);
  EXPECT_EQ(snapshot(built).qcNnz, 0);
  QZdeleteModel(&built);
  QZdeleteModel(&once);
}

// Three columns over three rows, loaded with rows out of order in column 0.
QZmodel small(ModifyFixture& f) {
  QZmodel m = f.new_model();
  const double c[] = {1, 1, 1}, b[] = {1, 1, 1};
  const int beg[] = {0, 2, 3, 4}, rows[] = {2, 0, 1, 2};
  const double a[] = {5, 6, 7, 8};
  EXPECT_EQ(QZloadLPData(m, 3, 3, QZ_MIN, 0, c, b, "LLL", 4, beg, nullptr, a, rows, nullptr, nullptr), 0);
  return m;
}

TEST_F(ModifyFixture, ColumnMergeTakesAnyOrderRepeatsAndExplicitZeros) {
  struct Case {
    const char* what;
    std::vector<int> rows;
    std::vector<double> vals;  // empty: null array, zeros
    Entries expect;            // column 0 afterwards
  };
  const std::vector<Case> cases = {
      {"new row between", {1}, {9}, {{0, 6}, {1, 9}, {2, 5}}},
      {"descending mix", {2, 1, 0}, {1, 2, 3}, {{0, 3}, {1, 2}, {2, 1}}},
      {"explicit zero", {1}, {0}, {{0, 6}, {1, 0}, {2, 5}}},
      {"null values write zeros", {1, 0}, {}, {{0, 0}, {1, 0}, {2, 5}}},
      {"repeat takes the last", {1, 2, 1}, {4, 3, 2}, {{0, 6}, {1, 2}, {2, 3}}},
  };
  for (const Case& k : cases) {
    SCOPED_TRACE(k.what);
    QZmodel m = small(*this);
    const std::vector<int> asked = k.rows;
    ASSERT_EQ(QZmodifyAj(m, 0, static_cast<int>(k.rows.size()), k.rows.data(),
                         k.vals.empty() ? nullptr : k.vals.data()),
              0);
    EXPECT_EQ(k.rows, asked);  // the host's array comes back as it was
    const Snapshot s = snapshot(m);
    EXPECT_EQ(s.cols[0], k.expect);
    EXPECT_EQ(s.cols[1], (Entries{{1, 7}}));
    EXPECT_EQ(s.cols[2], (Entries{{2, 8}}));
    EXPECT_EQ(s.nnz, 4 + static_cast<int>(k.expect.size()) - 2);
    // Stored columns are sorted now.
    EXPECT_TRUE(m->lp.rowsSorted);
    EXPECT_EQ(m->lp.paiArows[m->lp.paiAcols[0]], 0);
    QZdeleteModel(&m);
  }
}

TEST_F(ModifyFixture, GapsAbsorbGrowthAndAddingRowsWidensOnce) {
  QZmodel m = small(*this);
  const int room[] = {2, 2, 2};
  ASSERT_EQ(QZaddEmptySpacesAcolumns(m, room), 0);
  const std::vector<int> starts = m->lp.paiAcols;
  EXPECT_EQ(starts, (std::vector<int>{0, 4, 7, 10}));
  // Two rows touching every column fit the gaps: nothing moves.
  const int rb[] = {0, 3, 6}, rc[] = {0, 1, 2, 2, 1, 0};
  const double rv[] = {1, 2, 3, 4, 5, 6};
  ASSERT_EQ(QZaddConstraints(m, 2, "GG", nullptr, rb, rv, rc, nullptr), 0);
  EXPECT_EQ(m->lp.paiAcols, starts);
  // A third row finds no room anywhere: one widening, all columns keep their entries.
  const int rb2[] = {0, 3}, rc2[] = {0, 1, 2};
  ASSERT_EQ(QZaddConstraints(m, 1, "G", nullptr, rb2, rv, rc2, nullptr), 0);
  const Snapshot s = snapshot(m);
  EXPECT_EQ(s.cols[0], (Entries{{0, 6}, {2, 5}, {3, 1}, {4, 6}, {5, 1}}));
  EXPECT_EQ(s.cols[1], (Entries{{1, 7}, {3, 2}, {4, 5}, {5, 2}}));
  EXPECT_EQ(s.cols[2], (Entries{{2, 8}, {3, 3}, {4, 4}, {5, 3}}));
  EXPECT_EQ(s.rows[4], (Entries{{0, 6}, {1, 5}, {2, 4}}));
  // Growing one column past its gap moves only the columns after it.
  const int before1 = m->lp.paiAcols[1];
  const int r6[] = {0, 1, 3, 4, 5};
  ASSERT_EQ(QZdeleteAj(m, 2, 5, r6), 0);
  ASSERT_EQ(QZmodifyAj(m, 2, 2, std::vector<int>{0, 1}.data(), std::vector<double>{9, 9}.data()), 0);
  EXPECT_EQ(m->lp.paiAcols[1], before1);
  EXPECT_EQ(snapshot(m).cols[2], (Entries{{0, 9}, {1, 9}, {2, 8}}));
  // The compact form that queries return has no gaps.
  std::vector<int> beg(4), len(3);
  ASSERT_EQ(QZgetLPData(m, nullptr, nullptr, nullptr, nullptr, nullptr, beg.data(), len.data(),
                        nullptr, nullptr, nullptr, nullptr),
            0);
  EXPECT_EQ(beg, (std::vector<int>{0, 5, 9, 12}));
  QZdeleteModel(&m);
}

TEST_F(ModifyFixture, CapacitiesGrowAndNeverFallBelowCounts) {
  QZmodel m = small(*this);
  ASSERT_EQ(QZsetProbAllocSizes(m, 50, 40, -1, 500, -1, -1), 0);
  EXPECT_GE(m->lp.padC.capacity(), 50u);
  EXPECT_GE(m->lp.padB.capacity(), 40u);
  EXPECT_GE(m->lp.paiArows.capacity(), 500u);
  ASSERT_EQ(QZsetProbAllocSizes(m, 1, 1, 1, 1, 1, 1), 0);  // below the counts: no change
  EXPECT_EQ(m->nVars, 3);
  const double* data = m->lp.padB.data();
  ASSERT_EQ(QZaddConstraints(m, 30, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(m->lp.padB.data(), data);  // within the capacity nothing moved
  // Name pools: created with empty names that print as defaults.
  int len = -1;
  ASSERT_EQ(QZsetProbNameAllocSizes(m, 100, 0), 0);
  ASSERT_EQ(QZgetDimensions(m, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                            nullptr, &len, nullptr, nullptr),
            0);
  EXPECT_EQ(len, 3);
  char name[32] = "junk";
  EXPECT_EQ(QZgetVariableNamej(m, 1, name), 0);
  EXPECT_STREQ(name, "");
  EXPECT_EQ(QZgetConstraintNamei(m, 1, name), QZERR_INFO_NOT_AVAILABLE);
  QZdeleteModel(&m);
}

}  // namespace
}  // namespace zento::test
