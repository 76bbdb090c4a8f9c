// Large bases (slow label): the residual certificates at m = 10,000 .. 50,000, fresh and after
// 200 Forrest-Tomlin or product-form updates.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "lu_checks.h"

namespace zento::lutest {
namespace {

class LargeBasis : public ::testing::TestWithParam<Case> {};

TEST_P(LargeBasis, FreshAndAfter200Updates) {
  const Case c = GetParam();
  std::mt19937 rng(77u + c.m + static_cast<unsigned>(c.shape));
  ColMatrix a = random_matrix(c.m, c.shape, 2000, rng);
  std::vector<int> rbas = first_m_basis(a);
  lu::LuOptions opt;
  opt.lucore = c.core;
  int err = 0;
  auto lu = QZI_lu_create(c.m, opt, QZI_lu_datacol, &a.host, &err);
  ASSERT_TRUE(lu);
  ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0);
  const int m = c.m;
  SpVec b(m), x(m);
  std::vector<double> bd(m), xd(m);
  auto check = [&](const char* when) {
    for (int nz : {1, 50, m}) {
      random_rhs(m, nz, rng, &b);
      b.to_dense(bd.data());
      ASSERT_EQ(QZI_lu_ftran(*lu, b, x, 0), 0);
      x.to_dense(xd.data());
      EXPECT_LE(ftran_residual(a, rbas, xd, bd), 1e-9) << when << " nz " << nz;
      ASSERT_EQ(QZI_lu_btran(*lu, b, x), 0);
      x.to_dense(xd.data());
      EXPECT_LE(btran_residual(a, rbas, xd, bd), 1e-9) << when << " nz " << nz;
    }
  };
  check("fresh");
  std::vector<char> basic(a.n + m, 0);
  for (int v : rbas) basic[v] = 1;
  int done = 0;
  for (int var = m; var < a.n && done < 200; ++var) {
    if (basic[var]) continue;
    int st = 0;
    if (random_replace(*lu, a, rbas, var, rng, &st) >= 0) ++done;
    if (st != 0) {
      ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0);
    }
  }
  EXPECT_EQ(done, 200);
  check("after updates");
}

INSTANTIATE_TEST_SUITE_P(
    Slow, LargeBasis,
    ::testing::Values(Case{4, Shape::kSlackMix, 10000}, Case{4, Shape::kRandomDiag, 3000},
                      Case{4, Shape::kBanded, 50000}, Case{4, Shape::kBlock, 50000},
                      Case{4, Shape::kNearTriangular, 10000}, Case{4, Shape::kHyperSparse, 50000},
                      Case{4, Shape::kDenseKernel, 20000}, Case{3, Shape::kSlackMix, 10000},
                      Case{3, Shape::kBlock, 20000}, Case{3, Shape::kHyperSparse, 50000}),
    case_name);

}  // namespace
}  // namespace zento::lutest
