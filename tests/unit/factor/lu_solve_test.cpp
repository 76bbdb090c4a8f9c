// Solves through the factorization layer on random and netlib bases, fresh and after 200
// basis updates: the residual certificates ||Bx - b|| and ||B^T y - c|| relative to the rhs.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "lu_checks.h"

namespace zento::lutest {
namespace {

std::vector<Case> cases(std::initializer_list<int> sizes) {
  std::vector<Case> v;
  for (int core : {4, 3})
    for (Shape s : kAllShapes)
      for (int m : sizes) v.push_back({core, s, m});
  return v;
}

class RandomBasis : public ::testing::TestWithParam<Case> {};

TEST_P(RandomBasis, FreshAndAfter200Updates) {
  const Case c = GetParam();
  std::mt19937 rng(1000u * c.m + 10u * static_cast<unsigned>(c.shape) + c.core);
  ColMatrix a = random_matrix(c.m, c.shape, std::max(30, c.m / 2), rng);
  std::vector<int> rbas = first_m_basis(a);
  lu::LuOptions opt;
  opt.lucore = c.core;
  int err = 0;
  auto lu = QZI_lu_create(c.m, opt, QZI_lu_datacol, &a.host, &err);
  ASSERT_TRUE(lu) << err;
  ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0);
  EXPECT_EQ(QZI_lu_get_rank(*lu), c.m);
  Solver sv{a, rbas, *lu};
  sv.check(rng, "fresh");
  const int refacts = sv.updates(rng, 200, "updates");
  // Forrest-Tomlin refactors only on numerical trouble; the product-form pool of CLU fills up
  // by design after 31 etas.
  if (c.core == 4) {
    EXPECT_LE(refacts, 10);
  }
  ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0);
  sv.check(rng, "refactored");
}

INSTANTIATE_TEST_SUITE_P(Unit, RandomBasis, ::testing::ValuesIn(cases({1, 3, 40, 300, 1200})),
                         case_name);

// The largest unit size on the shapes that stay quick; the rest of the big ones run as slow.
INSTANTIATE_TEST_SUITE_P(Unit5000, RandomBasis,
                         ::testing::Values(Case{4, Shape::kSlackMix, 5000},
                                           Case{4, Shape::kHyperSparse, 5000},
                                           Case{3, Shape::kBanded, 5000}),
                         case_name);

// SLU with the product-form eta update (update type 0) instead of Forrest-Tomlin.
TEST(EtaUpdate, SluProductFormKeepsSolvesAccurate) {
  for (Shape shape : {Shape::kSlackMix, Shape::kBlock, Shape::kHyperSparse}) {
    std::mt19937 rng(31);
    ColMatrix a = random_matrix(300, shape, 150, rng);
    std::vector<int> rbas = first_m_basis(a);
    lu::LuOptions opt;
    opt.update_type = 0;
    int err = 0;
    auto lu = QZI_lu_create(a.m, opt, QZI_lu_datacol, &a.host, &err);
    ASSERT_TRUE(lu);
    ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0);
    Solver sv{a, rbas, *lu};
    sv.updates(rng, 200, std::string("pf ") + shape_name(shape));
    EXPECT_GT(QZI_lu_num_pnonz(*lu), 0);
  }
}

// Netlib bases: a crash basis moved by 300 well-conditioned pivots, then refactored.
class NetlibBasis : public ::testing::TestWithParam<std::string> {};

TEST_P(NetlibBasis, BothEngines) {
  ColMatrix a;
  const std::string path = std::string(ZENTO_TEST_DATA_DIR) + "/netlib/" + GetParam() + ".mps.gz";
  ASSERT_TRUE(load_mps_matrix(path, &a)) << path;
  std::mt19937 rng(17);
  const std::vector<int> start = crash_basis(a, 300, rng);
  for (int core : {4, 3}) {
    std::vector<int> rbas = start;
    lu::LuOptions opt;
    opt.lucore = core;
    int err = 0;
    auto lu = QZI_lu_create(a.m, opt, QZI_lu_datacol, &a.host, &err);
    ASSERT_TRUE(lu);
    ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0) << GetParam() << " core " << core;
    Solver sv{a, rbas, *lu};
    const std::string what = GetParam() + (core == 3 ? " clu" : " slu");
    sv.check(rng, what);
    sv.updates(rng, 200, what);
  }
}

INSTANTIATE_TEST_SUITE_P(Unit, NetlibBasis,
                         ::testing::Values("afiro", "adlittle", "blend", "sc105", "scagr7",
                                           "share2b", "ship04s", "bandm", "25fv47", "bnl1",
                                           "degen2", "stair"));

}  // namespace
}  // namespace zento::lutest
