#include <gtest/gtest.h>
#include "factor_testlib.h"
using namespace zento;
using namespace zento::lutest;
TEST(Smoke, Basic) {
  for (int core : {4, 3}) for (Shape sh : kAllShapes) for (int m : {1, 5, 50, 500, 3000}) {
    std::mt19937 rng(m * 7 + (int)sh);
    ColMatrix a = random_matrix(m, sh, 50, rng);
    auto rbas = first_m_basis(a);
    int err = 0;
    lu::LuOptions opt;
    opt.lucore = core;
    auto lu = QZI_lu_create(m, opt, QZI_lu_datacol, &a.host, &err);
    ASSERT_TRUE(lu);
    int st = QZI_lu_fact(*lu, rbas.data());
    ASSERT_EQ(st, 0) << shape_name(sh) << " " << m << " core " << core;
    SpVec b(m), x(m);
    for (int nz : {1, 3, m / 10 + 1, m}) {
      random_rhs(m, nz, rng, &b);
      std::vector<double> bd(m), xd(m);
      b.to_dense(bd.data());
      ASSERT_EQ(QZI_lu_ftran(*lu, b, x, 0), 0);
      x.to_dense(xd.data());
      EXPECT_LE(ftran_residual(a, rbas, xd, bd), 1e-9) << shape_name(sh) << " " << m << " nz " << nz;
      ASSERT_EQ(QZI_lu_btran(*lu, b, x), 0);
      x.to_dense(xd.data());
      EXPECT_LE(btran_residual(a, rbas, xd, bd), 1e-9) << shape_name(sh) << " " << m << " nz " << nz;
    }
    int fails = 0;
    for (int u = 0; u < 200; ++u) {
      int var = m + (u % 50);
      if (std::find(rbas.begin(), rbas.end(), var) != rbas.end()) continue;
      int s2 = 0;
      random_replace(*lu, a, rbas, var, rng, &s2);
      if (s2 != 0) { ++fails; ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0); }
      if (u % 20 == 19) {
        random_rhs(m, std::max(1, m/20), rng, &b);
        std::vector<double> bd(m), xd(m);
        b.to_dense(bd.data());
        ASSERT_EQ(QZI_lu_ftran(*lu, b, x, 0), 0);
        x.to_dense(xd.data());
        EXPECT_LE(ftran_residual(a, rbas, xd, bd), 1e-9) << "upd " << shape_name(sh) << " " << m << " core " << core;
        ASSERT_EQ(QZI_lu_btran(*lu, b, x), 0);
        x.to_dense(xd.data());
        EXPECT_LE(btran_residual(a, rbas, xd, bd), 1e-9) << "upd " << shape_name(sh) << " " << m << " core " << core;
      }
    }
    EXPECT_LE(fails, 2);
  }
}
