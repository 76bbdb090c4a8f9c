// The orientation vote on models built for each of its branches, and a model the vote sends
// through its explicit dual solved end to end: the same optimum as the model solved as it is,
// a primal basis, and the log line of the route.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>

#include "core/optimize_lp.h"
#include "presolve_test_util.h"

namespace zento::test {
namespace {

// max sum x over A x <= 1, x >= 0 with A > 0: feasible and bounded. Every column has `perCol`
// entries in distinct random rows, every row at least two; `denseRow` / `denseCol` add a
// full row (the first) or a full column (the last).
LpData shaped(int m, int n, int perCol, bool denseRow, bool denseCol) {
  std::mt19937_64 rng(static_cast<uint64_t>(m) * 131 + n);
  std::uniform_real_distribution<double> U(1.0, 2.0);
  std::vector<std::vector<std::pair<int, double>>> cols(n);
  std::vector<int> rowLen(m, 0);
  for (int j = 0; j < n; ++j) {
    std::vector<char> used(m, 0);
    const int k = denseCol && j == n - 1 ? m : perCol;
    for (int t = 0; t < k; ++t) {
      int r = k == m ? t : static_cast<int>(rng() % m);
      while (used[r]) r = (r + 1) % m;
      used[r] = 1;
      cols[j].push_back({r, U(rng)});
      ++rowLen[r];
    }
    if (denseRow && !used[0]) {
      cols[j].push_back({0, U(rng)});
      ++rowLen[0];
    }
  }
  // Rows short of two entries borrow them from columns in turn.
  int next = 0;
  for (int r = 0; r < m; ++r)
    while (rowLen[r] < 2) {
      auto& c = cols[next++ % n];
      bool seen = false;
      for (auto& e : c) seen |= e.first == r;
      if (seen) continue;
      c.push_back({r, U(rng)});
      ++rowLen[r];
    }
  LpData lp;
  lp.m = m;
  lp.n = n;
  lp.sense = QZ_MIN;
  lp.has_opt = false;
  lp.c.assign(n, -1.0);
  lp.lo.assign(n, 0.0);
  lp.up.assign(n, kInf);
  lp.b.assign(m, 1.0);
  lp.types.assign(m, 'L');
  lp.beg.assign(n + 1, 0);
  for (int j = 0; j < n; ++j) {
    std::sort(cols[j].begin(), cols[j].end());
    for (auto& [r, v] : cols[j]) {
      lp.rows.push_back(r);
      lp.vals.push_back(v);
    }
    lp.beg[j + 1] = static_cast<int>(lp.rows.size());
  }
  return lp;
}

struct Vote {
  const char* name;
  int m, n, perCol;
  bool denseRow, denseCol;
  int probToSolve, method;
  bool dual;
};

TEST(Orientation, VoteTable) {
  const Vote votes[] = {
      {"tall", 3000, 900, 10, false, false, 0, QZ_METHOD_FREE, true},
      {"tall_barrier", 3000, 900, 10, false, false, 0, QZ_METHOD_BARRIER, false},
      {"tall_forced_primal", 3000, 900, 10, false, false, 1, QZ_METHOD_FREE, false},
      {"not_tall_enough", 3000, 1200, 10, false, false, 0, QZ_METHOD_FREE, false},
      {"few_rows", 2400, 500, 10, false, false, 0, QZ_METHOD_FREE, false},
      {"forced_dual", 3000, 1200, 10, false, false, 2, QZ_METHOD_FREE, true},
      {"forced_dual_barrier", 3000, 1200, 10, false, false, 2, QZ_METHOD_BARRIER, false},
      {"square_dense_row", 3000, 3000, 4, true, false, 0, QZ_METHOD_FREE, true},
      {"square_dense_column", 3000, 3000, 4, false, true, 0, QZ_METHOD_FREE, false},
      {"square_sparse", 3000, 3000, 4, false, false, 0, QZ_METHOD_FREE, false},
  };
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  ASSERT_EQ(rc, 0);
  for (const Vote& v : votes) {
    const LpData lp = shaped(v.m, v.n, v.perCol, v.denseRow, v.denseCol);
    QZmodel model = QZcreateModel(env, &rc);
    ASSERT_EQ(lp.load(model), 0);
    ASSERT_EQ(QZsetModelIntParameter(model, QZ_IPARAM_PROB_TO_SOLVE, v.probToSolve), 0);
    EXPECT_EQ(QZI_choose_orient(*model, v.method), v.dual) << v.name;
    QZdeleteModel(&model);
  }
  QZdeleteEnv(&env);
}

// A tall model goes through its dual by the vote alone, with and without presolve.
TEST(Orientation, VotedDualSolvesTheModel) {
  const LpData lp = shaped(2600, 800, 4, false, false);
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  ASSERT_EQ(rc, 0);
  // The runs end before the environment does.
  [&] {
    SolveRun asIs;
    {
      asIs.model = QZcreateModel(env, &rc);
      ASSERT_EQ(lp.load(asIs.model), 0);
      ASSERT_EQ(QZsetModelIntParameter(asIs.model, QZ_IPARAM_PROB_TO_SOLVE, 1), 0);
      ASSERT_EQ(QZsetModelIntParameter(asIs.model, QZ_IPARAM_LP_PRELEVEL, 0), 0);
      ASSERT_EQ(QZoptimize(asIs.model, QZ_METHOD_FREE, &asIs.status), 0);
      ASSERT_EQ(asIs.status, QZ_STATUS_BASIC_OPTIMAL);
      QZgetObjective(asIs.model, &asIs.obj);
    }
    for (int level : {0, 254}) {
      SolveRun r;
      std::string log;
      solve_at(env, lp, level, r, QZ_METHOD_FREE, 0, &log);
      ASSERT_EQ(r.rc, 0);
      ASSERT_EQ(r.status, QZ_STATUS_BASIC_OPTIMAL) << "level " << level;
      EXPECT_NEAR(r.obj, asIs.obj, 1e-7 * (1 + std::fabs(asIs.obj))) << "level " << level;
      EXPECT_NE(log.find("Constructing a primal basis from the explicit dual..."),
                std::string::npos)
          << "level " << level;
      EXPECT_TRUE(check_model(r.model, lp).ok(1e-7)) << check_model(r.model, lp).worst;
      const KktReport b = check_basis(r.model, lp);
      EXPECT_LE(b.pinf, 1e-7) << b.worst;
      EXPECT_LE(b.dinf, 1e-7) << b.worst;
    }
  }();
  QZdeleteEnv(&env);
}

}  // namespace
}  // namespace zento::test
