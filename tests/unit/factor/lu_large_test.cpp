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
  Solver sv{a, rbas, *lu};
  sv.check(rng, "fresh");
  sv.updates(rng, 200, "updates");
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
