// Solves in the caller's storage (QZI_lu_ftran_sv / QZI_lu_btran_sv) against the list-slot
// solves: the same values to the bit, a valid list, a zero vector elsewhere, and position order
// whenever the dispatch asks for the dense form.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "factor_testlib.h"

namespace zento::lutest {
namespace {

std::vector<double> dense_of(const SpVec& v, int m) {
  std::vector<double> d(m, 0.0);
  v.to_dense(d.data());
  return d;
}

// The list names exactly the nonzeros, once each; returns whether it ascends.
bool check_list(const Scattered& s, const char* what) {
  const int m = static_cast<int>(s.val.size());
  EXPECT_GE(s.n, 0) << what;
  std::vector<char> seen(m, 0);
  bool ascending = true;
  for (int k = 0; k < s.n; ++k) {
    const int i = s.idx[k];
    EXPECT_FALSE(seen[i]) << what << " listed twice: " << i;
    seen[i] = 1;
    EXPECT_NE(s.val[i], 0.0) << what << " listed zero at " << i;
    if (k > 0 && s.idx[k - 1] > i) ascending = false;
  }
  for (int i = 0; i < m; ++i) {
    if (!seen[i]) {
      EXPECT_EQ(s.val[i], 0.0) << what << " unlisted value at " << i;
    }
  }
  return ascending;
}

struct Case {
  int core;
  Shape shape;
  int m;
  double spvtol;  // the dispatch's density threshold: small values force position order
};

class InPlace : public ::testing::TestWithParam<Case> {};

TEST_P(InPlace, SameValuesAsListSlotSolves) {
  const Case c = GetParam();
  std::mt19937 rng(77u * c.m + static_cast<unsigned>(c.shape) + 5u * c.core);
  ColMatrix a = random_matrix(c.m, c.shape, c.m, rng);
  std::vector<int> rbas = first_m_basis(a);
  lu::LuOptions opt;
  opt.lucore = c.core;
  opt.spvtol_ftran = opt.spvtol_btran = c.spvtol;
  int err = 0;
  auto lu = QZI_lu_create(c.m, opt, QZI_lu_datacol, &a.host, &err);
  ASSERT_TRUE(lu) << err;
  ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0);
  for (int k = 0; k < c.m / 3; ++k) {
    int st = 0;
    random_replace(*lu, a, rbas, a.n + static_cast<int>(rng() % a.m), rng, &st);
    if (st != 0) {
      ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0);
    }
  }
  SpVec in(c.m), out(c.m);
  Scattered s(c.m);
  int ordered = 0;
  for (int nz : {1, 3, c.m / 10 + 1, c.m}) {
    for (int btran = 0; btran < 2; ++btran) {
      random_rhs(c.m, nz, rng, &in);
      s.load(in);
      // The in-place solve first: the list-slot one after it sees the same running mean.
      const bool dense_form = btran ? lu->btran_mean > c.m * c.spvtol
                                    : lu->ftran_mean > c.m * c.spvtol;
      const int rc = btran ? QZI_lu_btran_sv(*lu, s.ref(), 0.0) : QZI_lu_ftran_sv(*lu, s.ref(), 0, 0.0);
      ASSERT_EQ(rc, 0);
      ASSERT_EQ(btran ? QZI_lu_btran(*lu, in, out) : QZI_lu_ftran(*lu, in, out, 0), 0);
      const char* what = btran ? "btran" : "ftran";
      const bool asc = check_list(s, what);
      if (dense_form && c.core == lu::kLuCoreSlu) {
        EXPECT_TRUE(asc) << what << " nz=" << nz;
        ++ordered;
      }
      const std::vector<double> ref = dense_of(out, c.m);
      for (int i = 0; i < c.m; ++i) ASSERT_EQ(s.val[i], ref[i]) << what << " nz=" << nz << " at " << i;
      // The dense-U hint takes another elimination order: the same solution up to rounding.
      s.load(in);
      ASSERT_EQ(btran ? QZI_lu_btran_sv(*lu, s.ref(true), 0.0)
                      : QZI_lu_ftran_sv(*lu, s.ref(true), 0, 0.0),
                0);
      check_list(s, what);
      double scale = 1.0;
      for (double v : ref) scale = std::max(scale, std::fabs(v));
      for (int i = 0; i < c.m; ++i) EXPECT_NEAR(s.val[i], ref[i], 1e-10 * scale) << what << " at " << i;
    }
  }
  if (c.spvtol < 0.05 && c.core == lu::kLuCoreSlu && c.m > 10) {
    EXPECT_GT(ordered, 0);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Unit, InPlace,
    ::testing::Values(Case{4, Shape::kSlackMix, 200, 0.2}, Case{4, Shape::kHyperSparse, 400, 0.1},
                      Case{4, Shape::kDenseKernel, 120, 0.2}, Case{4, Shape::kBanded, 300, 0.01},
                      Case{4, Shape::kSlackMix, 300, 0.01}, Case{3, Shape::kSlackMix, 200, 0.2},
                      Case{3, Shape::kBlock, 150, 0.01}, Case{4, Shape::kNearTriangular, 1, 0.2}),
    [](const ::testing::TestParamInfo<Case>& i) {
      return std::string(i.param.core == 3 ? "clu_" : "slu_") + shape_name(i.param.shape) + "_" +
             std::to_string(i.param.m) + (i.param.spvtol < 0.05 ? "_posorder" : "");
    });

// Sparse right-hand sides after many updates visit only the row etas their nonzeros reach:
// the solution must be the one of the same vector given dense (every eta visited), and solve
// B x = b. A missed eta shows as an error of the size of the entries.
TEST(InPlaceRowEtas, SparseVisitMatchesFullPass) {
  struct RowEtaCase {
    Shape shape;
    int m, updates;
  };
  for (const RowEtaCase c : {RowEtaCase{Shape::kHyperSparse, 400, 150}, RowEtaCase{Shape::kSlackMix, 300, 250},
                             RowEtaCase{Shape::kBanded, 200, 120}, RowEtaCase{Shape::kBlock, 150, 90}}) {
    std::mt19937 rng(911u + static_cast<unsigned>(c.m));
    ColMatrix a = random_matrix(c.m, c.shape, c.m, rng);
    std::vector<int> rbas = first_m_basis(a);
    lu::LuOptions opt;
    opt.lucore = lu::kLuCoreSlu;
    opt.max_updates = c.updates + 10;
    int err = 0;
    auto lu = QZI_lu_create(c.m, opt, QZI_lu_datacol, &a.host, &err);
    ASSERT_TRUE(lu) << err;
    ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0);
    int done = 0;
    for (int k = 0; k < 4 * c.updates && done < c.updates; ++k) {
      int st = 0;
      if (random_replace(*lu, a, rbas, static_cast<int>(rng() % (a.n + a.m)), rng, &st) >= 0 && st == 0) ++done;
      if (st != 0) {
        ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0);
      }
    }
    EXPECT_GT(done, c.updates / 2) << shape_name(c.shape);
    SpVec in(c.m);
    Scattered sparse(c.m), dense(c.m);
    for (int trial = 0; trial < 60; ++trial) {
      random_rhs(c.m, 1 + trial % 4, rng, &in);
      sparse.load(in);
      dense.load(in);
      dense.n = -1;
      ASSERT_EQ(QZI_lu_ftran_sv(*lu, sparse.ref(), 0, 0.0), 0);
      ASSERT_EQ(QZI_lu_ftran_sv(*lu, dense.ref(), 0, 0.0), 0);
      check_list(sparse, "sparse ftran");
      std::vector<double> b = dense_of(in, c.m), xs(c.m, 0.0), xd(c.m, 0.0);
      if (sparse.n >= 0) {
        for (int t = 0; t < sparse.n; ++t) xs[sparse.idx[t]] = sparse.val[sparse.idx[t]];
      } else {
        xs = sparse.val;
      }
      if (dense.n >= 0) {
        for (int t = 0; t < dense.n; ++t) xd[dense.idx[t]] = dense.val[dense.idx[t]];
      } else {
        xd = dense.val;
      }
      double scale = 1.0;
      for (double v : xd) scale = std::max(scale, std::fabs(v));
      for (int i = 0; i < c.m; ++i)
        ASSERT_NEAR(xs[i], xd[i], 1e-10 * scale) << shape_name(c.shape) << " trial " << trial << " at " << i;
      EXPECT_LT(ftran_residual(a, rbas, xs, b), 1e-9) << shape_name(c.shape) << " trial " << trial;
    }
  }
}

// A factor that is not usable leaves the caller's vector untouched.
TEST(InPlaceErrors, UnfactoredLeavesVector) {
  ColMatrix a = [] {
    std::mt19937 rng(3);
    return random_matrix(20, Shape::kSlackMix, 5, rng);
  }();
  for (int core : {3, 4}) {
    lu::LuOptions opt;
    opt.lucore = core;
    int err = 0;
    auto lu = QZI_lu_create(20, opt, QZI_lu_datacol, &a.host, &err);
    ASSERT_TRUE(lu);
    Scattered s(20);
    s.val[4] = 2.5;
    s.idx[0] = 4;
    s.n = 1;
    EXPECT_NE(QZI_lu_ftran_sv(*lu, s.ref(), 0, 0.0), 0) << core;
    EXPECT_NE(QZI_lu_btran_sv(*lu, s.ref(), 0.0), 0) << core;
    EXPECT_EQ(s.n, 1);
    EXPECT_EQ(s.val[4], 2.5);
  }
}

}  // namespace
}  // namespace zento::lutest
