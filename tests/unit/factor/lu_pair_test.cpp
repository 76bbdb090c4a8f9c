// Two FTRANs in one pass (QZI_lu_ftran2_sv, then QZI_lu_ftran2_finish) against the same solves
// one at a time: the same values and lists to the bit, the same running statistics, the same
// spike for the next update, whatever solve comes between the two halves.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "factor_testlib.h"

namespace zento::lutest {
namespace {

void expect_same(const Scattered& a, const Scattered& b, const std::string& what) {
  ASSERT_EQ(a.n, b.n) << what;
  for (int k = 0; k < a.n; ++k) ASSERT_EQ(a.idx[k], b.idx[k]) << what << " list at " << k;
  for (size_t i = 0; i < a.val.size(); ++i) ASSERT_EQ(a.val[i], b.val[i]) << what << " at " << i;
}

struct Case {
  int core;
  Shape shape;
  int m;
  double spvtol;
};

// Two factors of one basis through the same updates: one solves in pairs, one singly.
struct Twins {
  ColMatrix a;
  std::vector<int> rbas;
  std::unique_ptr<LuFactor> pair, single;

  Twins(const Case& c, std::mt19937& rng) {
    a = random_matrix(c.m, c.shape, c.m, rng);
    rbas = first_m_basis(a);
    lu::LuOptions opt;
    opt.lucore = c.core;
    opt.spvtol_ftran = opt.spvtol_btran = c.spvtol;
    int err = 0;
    pair = QZI_lu_create(c.m, opt, QZI_lu_datacol, &a.host, &err);
    single = QZI_lu_create(c.m, opt, QZI_lu_datacol, &a.host, &err);
  }
};

class PairSolve : public ::testing::TestWithParam<Case> {};

TEST_P(PairSolve, SameAsOneAtATime) {
  const Case c = GetParam();
  std::mt19937 rng(31u * c.m + static_cast<unsigned>(c.shape) + 7u * c.core);
  Twins t(c, rng);
  ASSERT_TRUE(t.pair && t.single);
  ASSERT_EQ(QZI_lu_fact(*t.pair, t.rbas.data()), 0);
  ASSERT_EQ(QZI_lu_fact(*t.single, t.rbas.data()), 0);
  const int m = c.m;
  SpVec in1(m), in2(m), in3(m);
  Scattered p1(m), p2(m), p3(m), s1(m), s2(m), s3(m);
  const int sizes[] = {1, 4, m / 8 + 1, m};
  int round = 0;
  for (int nz1 : sizes)
    for (int nz2 : sizes) {
      const std::string what = "nz " + std::to_string(nz1) + "/" + std::to_string(nz2);
      random_rhs(m, nz1, rng, &in1);
      random_rhs(m, nz2, rng, &in2);
      random_rhs(m, 3, rng, &in3);
      const bool hint = (round++ % 3) == 0;
      p1.load(in1), p2.load(in2), p3.load(in3);
      s1.load(in1), s2.load(in2), s3.load(in3);
      ASSERT_EQ(QZI_lu_ftran2_sv(*t.pair, p1.ref(), p2.ref(hint), 0.0), 0);
      ASSERT_EQ(QZI_lu_ftran_sv(*t.pair, p3.ref(), 0, 0.0), 0);
      ASSERT_EQ(QZI_lu_ftran2_finish(*t.pair, p2.ref(), 0.0), 0);
      ASSERT_EQ(QZI_lu_ftran_sv(*t.single, s1.ref(), 1, 0.0), 0);
      ASSERT_EQ(QZI_lu_ftran_sv(*t.single, s3.ref(), 0, 0.0), 0);
      ASSERT_EQ(QZI_lu_ftran_sv(*t.single, s2.ref(hint), 0, 0.0), 0);
      expect_same(p1, s1, what + " first");
      expect_same(p3, s3, what + " between");
      expect_same(p2, s2, what + " second");
      if (HasFatalFailure()) return;
      ASSERT_EQ(t.pair->ftran_mean, t.single->ftran_mean) << what;
      // The first vector's spike drives the update: replace its largest position in both.
      int slot = -1;
      double big = 0;
      for (int i = 0; i < m; ++i)
        if (std::fabs(s1.val[i]) > big) big = std::fabs(s1.val[i]), slot = i;
      ASSERT_GE(slot, 0);
      const int u1 = QZI_lu_update(*t.pair, slot, s1.val[slot], 0);
      const int u2 = QZI_lu_update(*t.single, slot, s1.val[slot], 0);
      ASSERT_EQ(u1, u2) << what;
      if (u1 != 0) {
        ASSERT_EQ(QZI_lu_fact(*t.pair, t.rbas.data()), 0);
        ASSERT_EQ(QZI_lu_fact(*t.single, t.rbas.data()), 0);
        continue;
      }
      random_rhs(m, m / 4 + 1, rng, &in3);
      p3.load(in3), s3.load(in3);
      ASSERT_EQ(QZI_lu_ftran_sv(*t.pair, p3.ref(), 0, 0.0), 0);
      ASSERT_EQ(QZI_lu_ftran_sv(*t.single, s3.ref(), 0, 0.0), 0);
      expect_same(p3, s3, what + " after the update");
      if (HasFatalFailure()) return;
    }
}

// A dropped second half leaves nothing behind: the next solves match a factor that never
// saw it, and a finish without a pending vector is refused.
TEST_P(PairSolve, DropLeavesNoResidue) {
  const Case c = GetParam();
  std::mt19937 rng(17u * c.m + static_cast<unsigned>(c.shape) + c.core);
  Twins t(c, rng);
  ASSERT_TRUE(t.pair && t.single);
  ASSERT_EQ(QZI_lu_fact(*t.pair, t.rbas.data()), 0);
  ASSERT_EQ(QZI_lu_fact(*t.single, t.rbas.data()), 0);
  const int m = c.m;
  SpVec in1(m), in2(m);
  Scattered p1(m), p2(m), s1(m);
  for (int nz : {2, m}) {
    random_rhs(m, nz, rng, &in1);
    random_rhs(m, m, rng, &in2);
    p1.load(in1), p2.load(in2), s1.load(in1);
    ASSERT_EQ(QZI_lu_ftran2_sv(*t.pair, p1.ref(), p2.ref(), 0.0), 0);
    QZI_lu_ftran2_drop(*t.pair);
    EXPECT_NE(QZI_lu_ftran2_finish(*t.pair, p2.ref(), 0.0), 0);
    ASSERT_EQ(QZI_lu_ftran_sv(*t.single, s1.ref(), 1, 0.0), 0);
    expect_same(p1, s1, "first of a dropped pair");
    random_rhs(m, nz, rng, &in1);
    p1.load(in1), s1.load(in1);
    ASSERT_EQ(QZI_lu_ftran_sv(*t.pair, p1.ref(), 0, 0.0), 0);
    ASSERT_EQ(QZI_lu_ftran_sv(*t.single, s1.ref(), 0, 0.0), 0);
    expect_same(p1, s1, "solve after the drop");
    if (HasFatalFailure()) return;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Unit, PairSolve,
    ::testing::Values(Case{4, Shape::kSlackMix, 200, 0.2}, Case{4, Shape::kDenseKernel, 120, 0.2},
                      Case{4, Shape::kBanded, 300, 0.01}, Case{4, Shape::kHyperSparse, 400, 0.1},
                      Case{4, Shape::kBlock, 150, 0.3}, Case{3, Shape::kSlackMix, 150, 0.2}),
    [](const ::testing::TestParamInfo<Case>& i) {
      return std::string(i.param.core == 3 ? "clu_" : "slu_") + shape_name(i.param.shape) + "_" +
             std::to_string(i.param.m);
    });

}  // namespace
}  // namespace zento::lutest
