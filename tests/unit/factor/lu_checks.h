// Solve certificates shared by the factorization tests: residuals of FTRAN and BTRAN on right-hand
// sides of several densities, fresh and along a run of basis updates.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "factor_testlib.h"

namespace zento::lutest {

// A basis of one shape and size under one engine (4: SLU, 3: CLU).
struct Case {
  int core;
  Shape shape;
  int m;
};

inline std::string case_name(const ::testing::TestParamInfo<Case>& p) {
  return std::string(p.param.core == 3 ? "clu_" : "slu_") + shape_name(p.param.shape) + "_" +
         std::to_string(p.param.m);
}

struct Solver {
  const ColMatrix& a;
  std::vector<int>& rbas;
  LuFactor& lu;

  // Checks FTRAN and BTRAN on right-hand sides of several densities.
  void check(std::mt19937& rng, const std::string& what) {
    const int m = a.m;
    SpVec b(m), x(m);
    std::vector<double> bd(m), xd(m);
    for (int nz : {1, 2, 10, m / 20, m / 3, m}) {
      nz = std::clamp(nz, 1, m);
      random_rhs(m, nz, rng, &b);
      b.to_dense(bd.data());
      ASSERT_EQ(QZI_lu_ftran(lu, b, x, 0), 0) << what;
      x.to_dense(xd.data());
      EXPECT_LE(ftran_residual(a, rbas, xd, bd), 1e-9) << what << " ftran nz=" << nz;
      ASSERT_EQ(QZI_lu_btran(lu, b, x), 0) << what;
      x.to_dense(xd.data());
      EXPECT_LE(btran_residual(a, rbas, xd, bd), 1e-9) << what << " btran nz=" << nz;
    }
  }

  // 200 column replacements drawn from the non-basic columns; failed updates refactor.
  // Returns the number of refactorizations the engine asked for.
  int updates(std::mt19937& rng, int count, const std::string& what) {
    std::vector<char> basic(a.n + a.m, 0);
    for (int v : rbas) basic[v] = 1;
    std::uniform_int_distribution<int> pick(0, a.n + a.m - 1);
    int refacts = 0, done = 0;
    for (int tries = 0; done < count && tries < 20 * count; ++tries) {
      const int var = pick(rng);
      if (basic[var]) continue;
      const std::vector<int> before = rbas;
      int st = 0;
      const int s = random_replace(lu, a, rbas, var, rng, &st);
      if (st != 0) {
        ++refacts;
        EXPECT_EQ(QZI_lu_fact(lu, rbas.data()), 0) << what;
        continue;
      }
      if (s < 0) continue;
      basic[before[s]] = 0;
      basic[var] = 1;
      ++done;
      if (done % 40 == 0 || done == count) check(rng, what + " after " + std::to_string(done));
      if (::testing::Test::HasFailure()) return refacts;
    }
    EXPECT_EQ(done, count) << what;
    return refacts;
  }
};

// FTRAN of a dense random right-hand side: the residual relative to the rhs, and the norms
// that turn it into a backward error.
struct SolveCheck {
  double resid = 0, xn = 0, bn = 0;
  double backward(double normB) const { return resid * bn / (normB * xn + bn); }
};

inline SolveCheck solve_random(LuFactor& lu, const ColMatrix& a, const std::vector<int>& rbas,
                               std::mt19937& rng) {
  const int m = a.m;
  SpVec b(m), x(m);
  random_rhs(m, m, rng, &b);
  std::vector<double> bd(m), xd(m);
  b.to_dense(bd.data());
  SolveCheck s;
  EXPECT_EQ(QZI_lu_ftran(lu, b, x, 0), 0);
  x.to_dense(xd.data());
  for (double v : xd) s.xn = std::max(s.xn, std::fabs(v));
  for (double v : bd) s.bn = std::max(s.bn, std::fabs(v));
  s.resid = ftran_residual(a, rbas, xd, bd);
  return s;
}

}  // namespace zento::lutest
