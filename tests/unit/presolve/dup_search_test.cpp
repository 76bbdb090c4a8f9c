// The duplicate searches keep their keys and verdicts from one round to the next. These tests
// pin what that must not change: every edit of the working copy marks what it touched, parallel
// columns that appear only after a substitution are still merged, and on models salted with
// parallel columns the reduced model keeps no pair that a fresh search would merge.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

#include "../common/env_fixture.h"
#include "presolve/lpdata.h"
#include "presolve/records.h"
#include "presolve_test_util.h"

namespace zento::test {
namespace {

using presolve::LpWork;

// ---- every edit marks the lines and the column clock ----

struct Edit {
  const char* name;
  void (*apply)(LpWork& w);
  std::vector<int> cols;  // columns whose entries, bounds, cost or life changed
  std::vector<int> rows;  // rows whose entries changed
  bool entries;           // the columns' entries changed (their keys are stale)
};

// Rows: r0 = x0 + 2 x1 + x2, r1 = x0 - x1 + 3 x3, r2 = x2 + x3.
LpData edit_lp() {
  return dense_lp(QZ_MIN, {1, 1, 1, 1}, {{1, 2, 1, 0}, {1, -1, 0, 3}, {0, 0, 1, 1}}, {4, 1, 2},
                  "EEE", {0, 0, 0, 0}, {5, 5, 5, 5});
}

std::vector<Edit> edits() {
  return {
      {"set_val", [](LpWork& w) { w.set_val(0, w.find_in_row(0, 1), 4.0); }, {1}, {0}, true},
      {"add_entry", [](LpWork& w) { w.add_entry(2, 0, 1.5); }, {0}, {2}, true},
      {"erase_at", [](LpWork& w) { w.erase_at(1, w.find_in_row(1, 3)); }, {3}, {1}, true},
      {"delete_row", [](LpWork& w) { w.delete_row(2); }, {2, 3}, {2}, true},
      {"delete_col", [](LpWork& w) { w.delete_col(1); }, {1}, {0, 1}, true},
      {"fix_col", [](LpWork& w) { w.fix_col(0, 1.0); }, {0}, {0, 1}, true},
      {"set_bounds", [](LpWork& w) { w.set_bounds(2, 1.0, 4.0); }, {2}, {}, false},
      {"set_cost", [](LpWork& w) { w.set_cost(3, 7.0); }, {3}, {}, false},
  };
}

TEST(DupSearchMarks, EveryEditMarksWhatItTouched) {
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  ASSERT_EQ(rc, 0);
  for (const Edit& ed : edits()) {
    SCOPED_TRACE(ed.name);
    QZmodel model = QZcreateModel(env, &rc);
    ASSERT_EQ(edit_lp().load(model), 0);
    LpWork w;
    ASSERT_EQ(w.load(*model), 0);
    std::fill(w.rowEdited.begin(), w.rowEdited.end(), 0);
    std::fill(w.colEdited.begin(), w.colEdited.end(), 0);
    const long before = w.tick;
    const std::vector<long> ticks = w.colTick;
    ed.apply(w);
    for (int c = 0; c < w.ncols; ++c) {
      const bool touched = std::find(ed.cols.begin(), ed.cols.end(), c) != ed.cols.end();
      EXPECT_EQ(w.colTick[c] > before, touched) << "column " << c;
      if (!touched) {
        EXPECT_EQ(w.colTick[c], ticks[c]) << "column " << c;
      }
      EXPECT_EQ(w.colEdited[c] != 0, touched && ed.entries) << "column " << c;
    }
    for (int r = 0; r < w.nrows; ++r) {
      const bool touched = std::find(ed.rows.begin(), ed.rows.end(), r) != ed.rows.end();
      EXPECT_EQ(w.rowEdited[r] != 0, touched) << "row " << r;
    }
    QZdeleteModel(&model);
  }
  QZdeleteEnv(&env);
}

// ---- parallel columns made by a substitution ----

using DupSearch = EnvFixture;

// y and z differ only in row r2. The doubleton equation w + z = 1 eliminates w (fewer
// entries) and carries -w into r2, which cancels z's entry there: from then on y and z are
// parallel with equal costs, and only a search that refreshes z's key merges them. The
// column q has z's length, so that z's key is taken before the elimination.
TEST_F(DupSearch, ColumnsMadeParallelBySubstitutionAreMerged) {
  //             y   z   w   u   v   q
  const LpData lp =
      dense_lp(QZ_MIN, {2, 3, 1, 1, 1, 1},
               {{1, 1, 0, 1, 0, 3},     // r0
                {2, 2, 0, 0, 1, 1},     // r1
                {0, -1, -1, 1, 1, 2},   // r2
                {0, 1, 1, 0, 0, 0},     // r3: w + z = 1
                {0, 0, 0, 1, 1, 1}},    // r4
               {3, 4, 1, 1, 2}, "GGEEL", {0, 0, 0, 0, 0, 0}, {4, 4, 4, 4, 4, 4});
  std::string log;
  SolveRun on, off;
  solve_at(env, lp, 254, on, QZ_METHOD_FREE, 0, &log);
  solve(env, lp, false, off);
  ASSERT_EQ(on.status, QZ_STATUS_BASIC_OPTIMAL);
  ASSERT_EQ(off.status, QZ_STATUS_BASIC_OPTIMAL);
  EXPECT_NEAR(on.obj, off.obj, 1e-9 * (1 + std::fabs(off.obj)));
  ASSERT_NE(on.model->presolve, nullptr);
  EXPECT_GE(on.model->presolve->stack.count(presolve::kRecEliminate), 1);
  EXPECT_GE(on.model->presolve->stack.count(presolve::kRecDupCol), 1);
  // The merge comes from a duplicate search that runs after the elimination.
  const std::vector<StageLine> t = stage_table(log);
  bool eliSeen = false, mergedAfter = false;
  for (size_t k = 1; k < t.size(); ++k) {
    if (t[k].tag == "eli" && t[k].cols < t[k - 1].cols) eliSeen = true;
    if (eliSeen && t[k].tag == "dcp" && t[k].cols < t[k - 1].cols) mergedAfter = true;
  }
  EXPECT_TRUE(eliSeen) << log;
  EXPECT_TRUE(mergedAfter) << log;
}

// ---- salted models: no mergeable pair survives ----

// Appends scaled copies of random columns (same pattern, values and cost times a positive
// factor, box bounds) and gadgets that hide a copy until a substitution: z = f x_j plus -1 in
// a new row R2 and +1 in a doubleton equation R3 with a new column w (w + z = 1, w also -1 in
// R2, and p alone in R2). Eliminating w cancels z's entry in R2 and leaves z parallel to x_j
// with the cost f c_j.
void salt_parallel(LpData& lp, uint64_t seed) {
  std::mt19937_64 rng(seed);
  std::uniform_real_distribution<double> U(0.5, 3.0);
  const int n0 = lp.n;
  std::vector<std::vector<std::pair<int, double>>> cols(n0);
  for (int j = 0; j < n0; ++j)
    for (int k = lp.beg[j]; k < lp.beg[j + 1]; ++k) cols[j].emplace_back(lp.rows[k], lp.vals[k]);
  auto add_col = [&](const std::vector<std::pair<int, double>>& ent, double c, double lo,
                     double up) {
    for (const auto& [r, v] : ent) {
      lp.rows.push_back(r);
      lp.vals.push_back(v);
    }
    lp.beg.push_back(static_cast<int>(lp.vals.size()));
    lp.c.push_back(c);
    lp.lo.push_back(lo);
    lp.up.push_back(up);
    ++lp.n;
  };
  auto add_row = [&](double b) {
    lp.b.push_back(b);
    lp.types.push_back('E');
    return lp.m++;
  };
  for (int k = 0; k < 9; ++k) {
    const int j = static_cast<int>(rng() % n0);
    if (cols[j].size() < 2) continue;
    const double f = U(rng);
    auto ent = cols[j];
    for (auto& e : ent) e.second *= f;
    if (k < 6) {
      add_col(ent, lp.c[j] * f, 0.0, 2.0);
      continue;
    }
    const int r2 = add_row(1.0), r3 = add_row(1.0);
    ent.emplace_back(r2, -1.0);
    ent.emplace_back(r3, 1.0);
    add_col(ent, lp.c[j] * f + 1.0, 0.0, 2.0);          // z
    add_col({{r2, -1.0}, {r3, 1.0}}, 1.0, 0.0, 4.0);  // w
    add_col({{r2, 1.0}}, 0.0, 0.0, 4.0);              // p
  }
  lp.has_opt = false;
}

bool finite(double v) { return std::fabs(v) < 1e15; }

TEST_F(DupSearch, SaltedModelsKeepNoMergeablePair) {
  int merged = 0;
  for (uint64_t seed = 1; seed <= 24; ++seed) {
    SCOPED_TRACE(seed);
    GenOptions o;
    o.m = 12 + static_cast<int>(seed % 7);
    o.n = 18 + static_cast<int>(seed % 5);
    o.density = 0.25;
    LpData lp = make_planted(seed, o);
    salt_parallel(lp, 100 + seed);
    SolveRun on, off;
    solve(env, lp, true, on);
    solve(env, lp, false, off);
    ASSERT_TRUE(same_verdict(on.status, off.status)) << on.status << " vs " << off.status;
    if (off.status != QZ_STATUS_BASIC_OPTIMAL) continue;
    EXPECT_NEAR(on.obj, off.obj, 1e-7 * (1 + std::fabs(off.obj)));
    if (on.model->presolve == nullptr) continue;
    merged += on.model->presolve->stack.count(presolve::kRecDupCol);
    const Imodel* red = on.model->presolve->reduced;
    if (red == nullptr) continue;
    const LpData r = LpData::from_model(const_cast<Imodel*>(red));
    // A pair of boxed columns of two or more entries, one a positive multiple of the other in
    // values and cost, is what the search merges; none may be left.
    for (int j = 0; j < r.n; ++j)
      for (int k = j + 1; k < r.n; ++k) {
        const int lj = r.beg[j + 1] - r.beg[j], lk = r.beg[k + 1] - r.beg[k];
        if (lj != lk || lj < 2) continue;
        if (!finite(r.lo[j]) || !finite(r.up[j]) || !finite(r.lo[k]) || !finite(r.up[k]))
          continue;
        const double lambda = r.vals[r.beg[k]] / r.vals[r.beg[j]];
        bool par = lambda > 0;
        for (int p = 0; p < lj && par; ++p) {
          const double a = r.vals[r.beg[k] + p], b = lambda * r.vals[r.beg[j] + p];
          par = r.rows[r.beg[k] + p] == r.rows[r.beg[j] + p] &&
                std::fabs(a - b) <= 1e-12 * std::max(std::fabs(a), std::fabs(b));
        }
        const double delta = r.c[k] - lambda * r.c[j];
        EXPECT_FALSE(par && std::fabs(delta) <= 1e-12 * (1 + std::fabs(r.c[k])))
            << "columns " << j << " and " << k << " of the reduced model are mergeable";
      }
  }
  // The salt must give the search work, or the test proves nothing.
  EXPECT_GT(merged, 24 * 3);
}

}  // namespace
}  // namespace zento::test
