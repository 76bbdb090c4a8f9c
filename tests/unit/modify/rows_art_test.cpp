// Deleting rows keeps names, quadratic blocks and lookups in step; artificial columns absorb
// the violations of a reference point and go again without a trace.
#include "modify_util.h"

namespace zento::test {
namespace {

TEST_F(ModifyFixture, DeletedRowsTakeTheirNamesAndQuadraticBlocks) {
  QZmodel m = new_model();
  const double c[] = {1, 1}, b[] = {1, 2, 3, 4};
  const int beg[] = {0, 4, 6}, rows[] = {0, 1, 2, 3, 1, 3};
  const double a[] = {1, 2, 3, 4, 5, 6};
  ASSERT_EQ(QZloadLPData(m, 4, 2, QZ_MIN, 0, c, b, "LGLE", 6, beg, nullptr, a, rows, nullptr, nullptr), 0);
  const char* rn[] = {"a", "b", "c", "d"};
  ASSERT_EQ(QZloadNameData(m, nullptr, nullptr, nullptr, nullptr, nullptr, const_cast<char**>(rn), nullptr, nullptr), 0);
  const int qr[] = {-1, 1, 2, 3}, q1[] = {0, 0, 1, 0}, q2[] = {0, 1, 1, 0};
  const double qc[] = {1, 2, 3, 4};
  ASSERT_EQ(QZloadQCData(m, 4, qr, q1, q2, qc), 0);
  int idx = -1;
  ASSERT_EQ(QZgetConstraintIndex(m, "d", &idx), 0);  // builds the hash
  const int twice[] = {1, 1};
  EXPECT_EQ(QZdeleteConstraints(m, 2, twice), QZERR_DUPLICATE_INDEX);
  const int del[] = {2, 0};
  ASSERT_EQ(QZdeleteConstraints(m, 2, del), 0);
  const Snapshot s = snapshot(m);
  EXPECT_EQ(s.rowNames, (std::vector<std::string>{"b", "d"}));
  EXPECT_EQ(s.b, (std::vector<double>{2, 4}));
  EXPECT_EQ(s.conTypes, "GE");
  EXPECT_EQ(s.cols[0], (Entries{{0, 2}, {1, 4}}));
  EXPECT_EQ(s.cols[1], (Entries{{0, 5}, {1, 6}}));
  using Q = std::tuple<int, int, int, double>;
  EXPECT_EQ(s.quad, (std::vector<Q>{Q{-1, 0, 0, 1}, Q{0, 0, 1, 2}, Q{1, 0, 0, 4}}));
  ASSERT_EQ(QZgetConstraintIndex(m, "d", &idx), 0);
  EXPECT_EQ(idx, 1);
  EXPECT_EQ(QZgetConstraintIndex(m, "c", &idx), QZERR_ROW_TOKEN_NOT_FOUND);
  QZdeleteModel(&m);
}

TEST_F(ModifyFixture, ArtificialColumnsCoverViolatedRowsAndLeaveAgain) {
  QZmodel m = new_model();
  // At the reference point x = (2, 0) (lower bound 2 is positive): row0 x0 + x1 >= 5 is short
  // by 3, row1 x0 <= 1 is over by 1, row2 x0 - x1 = 2 holds, row3 is free.
  const double c[] = {1, 1}, b[] = {5, 1, 2, 0}, lo[] = {2, 0}, up[] = {10, 10};
  const int beg[] = {0, 4, 6}, rows[] = {0, 1, 2, 3, 0, 2};
  const double a[] = {1, 1, 1, 7, 1, -1};
  ASSERT_EQ(QZloadLPData(m, 4, 2, QZ_MAX, 0, c, b, "GLEN", 6, beg, nullptr, a, rows, lo, up), 0);
  const Snapshot before = snapshot(m);
  ASSERT_EQ(QZaddArtColumns(m, 0, -1), 0);
  const Snapshot s = snapshot(m);
  ASSERT_EQ(s.nVars, 4);
  EXPECT_EQ(s.cols[2], (Entries{{0, 1}}));
  EXPECT_EQ(s.cols[3], (Entries{{1, -1}}));
  EXPECT_EQ(s.c[2], -1e8);  // a penalty against the maximisation
  EXPECT_EQ(s.lo[3], 0.0);
  EXPECT_EQ(s.up[3], QZ_INFINITY);
  // A second addition is refused and leaves the first one's columns as they are.
  EXPECT_EQ(QZaddArtColumns(m, 0, 5), QZERR_ART_COLUMNS_PRESENT);
  expect_same(snapshot(m), s);
  ASSERT_EQ(QZdelArtColumns(m, 0), 0);
  expect_same(snapshot(m), before);
  EXPECT_EQ(QZdelArtColumns(m, 0), QZERR_INFO_NOT_AVAILABLE);
  QZdeleteModel(&m);
}

}  // namespace
}  // namespace zento::test
