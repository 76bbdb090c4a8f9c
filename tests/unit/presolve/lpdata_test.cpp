// The working copy's row activities: ranges without one column, taken from the cached sums on
// long rows, must equal a fresh sum over the row after bound changes, removals and fixings,
// with infinite contributions and with terms large enough that the cached difference cancels.
#include "presolve/lpdata.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "presolve_test_util.h"

namespace zento::test {
namespace {

using presolve::kInf;
using presolve::LpWork;

// The range of row r's activity without column c, summed afresh.
void fresh_range(const LpWork& w, int r, int c, double& mn, double& mx) {
  mn = mx = 0;
  bool infMin = false, infMax = false;
  for (const presolve::RowEnt& e : w.row[r]) {
    if (e.col == c) continue;
    const double l = w.lo[e.col], u = w.up[e.col], v = e.val;
    const double atMin = v > 0 ? l : u, atMax = v > 0 ? u : l;
    if (presolve::finite_lo(atMin) && presolve::finite_up(atMin))
      mn += v * atMin;
    else
      infMin = true;
    if (presolve::finite_lo(atMax) && presolve::finite_up(atMax))
      mx += v * atMax;
    else
      infMax = true;
  }
  if (infMin) mn = -kInf;
  if (infMax) mx = kInf;
}

// One long dense row and a short one over `n` columns. One column has no lower bound and
// one no upper, so that ranges without them are finite; `big` instead puts one column's
// bounds at 1e12, so that removing it from the cached sum would lose the small terms.
LpData long_rows(int n, bool big, uint64_t seed) {
  std::mt19937_64 rng(seed);
  std::uniform_real_distribution<double> U(-3.0, 3.0);
  std::vector<std::vector<double>> A(2, std::vector<double>(n, 0.0));
  std::vector<double> c(n, 1.0), lo(n), up(n);
  for (int j = 0; j < n; ++j) {
    A[0][j] = U(rng) + (U(rng) > 0 ? 0.5 : -0.5);
    if (j % 7 == 0) A[1][j] = 1.0;
    lo[j] = j == 5 && !big ? -QZ_INFINITY : std::floor(U(rng));
    up[j] = j == 3 && !big ? QZ_INFINITY : lo[j] + 1 + std::fabs(U(rng));
    if (big && j == 1) {
      lo[j] = -1e12;
      up[j] = 1e12;
    }
  }
  return dense_lp(QZ_MIN, c, A, {1.0, 2.0}, "LE", lo, up);
}

TEST(LpWorkActivity, CachedRangesMatchAFreshSum) {
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  ASSERT_EQ(rc, 0);
  for (int variant = 0; variant < 4; ++variant) {
    const bool big = variant >= 2;
    const LpData lp = long_rows(150, big, 40 + variant);
    QZmodel model = QZcreateModel(env, &rc);
    ASSERT_EQ(lp.load(model), 0);
    LpWork w;
    ASSERT_EQ(w.load(*model), 0);
    std::mt19937_64 rng(7 + variant);
    auto check_all = [&](const char* when) {
      for (int r = 0; r < w.nrows; ++r)
        for (const presolve::RowEnt& e : std::vector<presolve::RowEnt>(w.row[r])) {
          double mn, mx, fmn, fmx;
          w.activity_without(r, e.col, mn, mx);
          fresh_range(w, r, e.col, fmn, fmx);
          const double tol = 1e-9 * (1 + std::fabs(fmn) + std::fabs(fmx));
          ASSERT_NEAR(mn, fmn, fmn <= -kInf ? 0 : tol) << when << " row " << r << " col " << e.col;
          ASSERT_NEAR(mx, fmx, fmx >= kInf ? 0 : tol) << when << " row " << r << " col " << e.col;
        }
      // The largest entry of each row follows the row.
      for (int r = 0; r < w.nrows; ++r) {
        double amax = 0;
        for (const presolve::RowEnt& e : w.row[r]) amax = std::max(amax, std::fabs(e.val));
        ASSERT_EQ(w.row_max(r), amax) << when;
      }
    };
    check_all("loaded");
    if (HasFatalFailure()) return;
    // Bounds tightened and opened, entries removed, columns fixed: the cache must follow.
    for (int step = 0; step < 40; ++step) {
      const int c = static_cast<int>(rng() % w.n0);
      if (!w.colAlive[c]) continue;
      switch (step % 4) {
        case 0:
          w.set_bounds(c, w.lo[c],
                       std::max(w.lo[c], presolve::finite_lo(w.lo[c]) ? w.lo[c] + 0.5 : 0.0));
          break;
        case 1:
          w.set_bounds(c, step == 1 ? -kInf : w.lo[c] - 1.0, w.up[c]);
          break;
        case 2:
          w.fix_col(c, presolve::finite_lo(w.lo[c]) ? w.lo[c] : 0.0);
          break;
        default: {
          const int p = w.find_in_row(0, c);
          if (p >= 0) w.set_val(0, p, 2 * w.row[0][p].val);
        }
      }
      check_all("after a change");
      if (HasFatalFailure()) return;
    }
    QZdeleteModel(&model);
  }
  QZdeleteEnv(&env);
}

}  // namespace
}  // namespace zento::test
