// Warm reoptimization over netlib: after the optimum, one basic structural gets an upper bound
// below its value; the warm re-solve must reach the optimum of a cold solve of the changed
// model, in far fewer iterations, and with a cutoff between the old and the new optimum the
// warm re-solve must stop with QZ_STATUS_CUTOFF. Cost and right-hand-side changes likewise;
// rows added and deleted keep or drop the basis.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "core/model.h"
#include "lp_oracle.h"
#include "zento.h"

namespace zento::test {
namespace {

std::vector<std::string> netlib_models() {
  std::vector<std::string> out;
  for (const TableRow& r : read_lp_table(ZENTO_LP_TABLES, "netlib")) out.push_back(r.model);
  return out;
}

QZmodel read(QZenv env, const std::string& name) {
  int rc = 0;
  QZmodel m = QZcreateModel(env, &rc);
  const std::string path = std::string(ZENTO_TEST_DATA) + "/netlib/" + name + ".mps.gz";
  if (QZreadMPSFile(m, path.c_str(), QZ_MPS_AUTO) != 0) return nullptr;
  QZsetModelIntParameter(m, QZ_IPARAM_LP_PRELEVEL, 0);
  return m;
}

void set_upper(QZmodel m, int j, double u) { ASSERT_EQ(QZmodifyUpperBounds(m, 1, &j, &u), 0); }

// The primal point and basis statuses of a solved model.
struct Point {
  int n = 0;
  std::vector<double> x;
  std::vector<int> cst, rst;
};

Point point_of(QZmodel a) {
  Point p;
  int m = 0;
  QZgetDimensions(a, &p.n, &m, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                  nullptr, nullptr);
  p.x.resize(p.n);
  p.cst.resize(p.n);
  p.rst.resize(m);
  QZgetPrimalSolution(a, p.x.data());
  QZgetBasis(a, p.cst.data(), p.rst.data());
  return p;
}

// Warm against cold iteration counts over a collection.
struct Ratios {
  double warm = 0, cold = 0, log_ratio = 0;
  int counted = 0;
  double add(const LpRun& w, const LpRun& c) {
    const double ratio = (w.iters + 1.0) / (c.iters + 1.0);
    warm += w.iters;
    cold += c.iters;
    log_ratio += std::log(ratio);
    ++counted;
    return ratio;
  }
  double geomean() const { return std::exp(log_ratio / counted); }
};

// A warm re-solve `w` of model `a` against the cold solve `c` of the same changed model.
void expect_same_answer(QZmodel a, const LpRun& w, const LpRun& c, double rel) {
  EXPECT_EQ(w.rc, 0);
  EXPECT_TRUE(same_verdict(w.status, c.status)) << "warm " << w.status << ", cold " << c.status;
  if (is_optimal(c.status) && is_optimal(w.status)) {
    EXPECT_NEAR(w.obj, c.obj, rel * std::max(1.0, std::fabs(c.obj)));
    const KktReport k = check_model(a, LpData::from_model(a));
    EXPECT_TRUE(k.ok(1e-7)) << k.worst;
  }
}

TEST(LpWarm, TightenedBoundReoptimizesAndCutsOff) {
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  ASSERT_EQ(rc, 0);
  Ratios ratios;
  int cutoffs = 0;
  std::printf("%-10s %8s %8s %8s %9s %9s  %s\n", "model", "cold", "warm", "ratio", "cold s",
              "warm s", "status");
  for (const std::string& name : netlib_models()) {
    QZmodel a = read(env, name);
    ASSERT_NE(a, nullptr) << name;
    const LpRun first = solve_lp(a);
    ASSERT_TRUE(first.rc == 0 && is_optimal(first.status)) << name;
    // The most interior basic structural, relative to its magnitude.
    const auto [n, x, cst, rst] = point_of(a);
    int jbest = -1;
    double best = 1e-6;
    for (int j = 0; j < n; ++j) {
      if (cst[j] < 0) continue;
      const double lo = a->lp.padL[j], up = a->lp.padU[j];
      const double room = std::min(lo > -QZ_INFINITY ? x[j] - lo : 1e30,
                                   up < QZ_INFINITY ? up - x[j] : 1e30) /
                          (1 + std::fabs(x[j]));
      if (room > best) {
        best = room;
        jbest = j;
      }
    }
    if (jbest < 0) {
      QZdeleteModel(&a);
      continue;
    }
    const double xj = x[jbest], lo = a->lp.padL[jbest], oldUp = a->lp.padU[jbest];
    const double newUp = xj - 0.5 * std::min(lo > -QZ_INFINITY ? xj - lo : 1e30, 1 + std::fabs(xj));
    set_upper(a, jbest, newUp);
    const LpRun warm = solve_lp(a);

    QZmodel b = read(env, name);
    set_upper(b, jbest, newUp);
    const LpRun cold = solve_lp(b);

    SCOPED_TRACE(name);
    EXPECT_EQ(warm.status, cold.status);
    expect_same_answer(a, warm, cold, 1e-6);
    const double ratio = ratios.add(warm, cold);
    std::printf("%-10s %8d %8d %8.3f %9.4f %9.4f  %d\n", name.c_str(), cold.iters, warm.iters,
                ratio, cold.secs, warm.secs, warm.status);

    // Back to the first optimum warm, then the same tightening under a cutoff that the new
    // optimum passes: the dual must stop at the cutoff.
    if (is_optimal(cold.status) &&
        std::fabs(cold.obj - first.obj) > 1e-5 * std::max(1.0, std::fabs(first.obj))) {
      set_upper(a, jbest, oldUp);
      const LpRun back = solve_lp(a);
      EXPECT_TRUE(is_optimal(back.status)) << name;
      EXPECT_NEAR(back.obj, first.obj, 1e-6 * std::max(1.0, std::fabs(first.obj))) << name;
      QZsetModelIntParameter(a, QZ_IPARAM_SOLVER_USECUTOFFVAL, 1);
      QZsetModelDouParameter(a, QZ_DPARAM_SOLVER_CUTOFFVAL, 0.5 * (first.obj + cold.obj));
      set_upper(a, jbest, newUp);
      const LpRun cut = solve_lp(a);
      EXPECT_EQ(cut.rc, 0) << name;
      EXPECT_EQ(cut.status, QZ_STATUS_CUTOFF) << name;
      ++cutoffs;
    }
    QZdeleteModel(&a);
    QZdeleteModel(&b);
  }
  std::printf("warm/cold iterations over %d models: total %.0f/%.0f = %.4f, geometric mean of "
              "ratios %.4f; %d cutoff runs\n",
              ratios.counted, ratios.warm, ratios.cold, ratios.warm / ratios.cold, ratios.geomean(),
              cutoffs);
  EXPECT_LT(ratios.warm, 0.2 * ratios.cold);
  QZdeleteEnv(&env);
}

// Cost and right-hand-side changes that move the optimum: the nonbasic structural with the
// largest reduced cost gets the cost that reverses it (the old basis stays primal feasible),
// or the active inequality with the largest dual is relaxed by a tenth of its size (the old
// basis stays dual feasible). The warm re-solve must reach the cold optimum of the changed
// model in fewer iterations.
enum class Move { kCost, kRhs };
constexpr int kMoveNnzLimit = 10000;

// Nonbasic statuses as they are, basic ones as 0: basic positions may be renumbered.
std::vector<int> shape(std::vector<int> st) {
  for (int& v : st) v = std::min(v, 0);
  return st;
}

// Applies the change to a solved model; false when the model offers no such change.
bool apply_move(QZmodel m, Move move, int* index, double* value) {
  const auto [n, x, cst, rst] = point_of(m);
  const int mrows = static_cast<int>(rst.size());
  if (move == Move::kCost) {
    std::vector<double> d(n);
    QZgetReducedCosts(m, d.data());
    int best = -1;
    for (int j = 0; j < n; ++j)
      if (cst[j] < 0 && std::fabs(d[j]) > 1e-7 && (best < 0 || std::fabs(d[j]) > std::fabs(d[best])))
        best = j;
    if (best < 0) return false;
    *index = best;
    *value = m->lp.padC[best] - 2 * d[best];
    return QZmodifyObjective(m, 1, index, value) == 0;
  }
  std::vector<double> y(mrows);
  QZgetDualSolution(m, y.data());
  int best = -1;
  for (int i = 0; i < mrows; ++i) {
    const char t = m->lp.pszConTypes[i];
    if (rst[i] < 0 && (t == 'L' || t == 'G') && std::fabs(y[i]) > 1e-9 &&
        (best < 0 || std::fabs(y[i]) > std::fabs(y[best])))
      best = i;
  }
  if (best < 0) return false;
  const double b = m->lp.padB[best], delta = 0.1 * (1 + std::fabs(b));
  *index = best;
  *value = m->lp.pszConTypes[best] == 'L' ? b + delta : b - delta;
  return QZmodifyRHS(m, 1, index, value) == 0;
}

class LpWarmMove : public ::testing::TestWithParam<Move> {};

TEST_P(LpWarmMove, ReoptimizesInFewerIterations) {
  const Move move = GetParam();
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  ASSERT_EQ(rc, 0);
  Ratios ratios;
  int skipped = 0;
  for (const std::string& name : netlib_models()) {
    QZmodel a = read(env, name);
    ASSERT_NE(a, nullptr) << name;
    // The larger models take minutes cold; the bound case above covers them.
    if (a->nAnnz > kMoveNnzLimit) {
      QZdeleteModel(&a);
      continue;
    }
    const LpRun first = solve_lp(a);
    ASSERT_TRUE(first.rc == 0 && is_optimal(first.status)) << name;
    int idx = -1;
    double value = 0;
    // A warm solve that runs away shows as a failure of this model, not as a hung test.
    QZsetModelDouParameter(a, QZ_DPARAM_SOLVER_TIMLMT, 60);
    if (!apply_move(a, move, &idx, &value)) {
      ++skipped;
      QZdeleteModel(&a);
      continue;
    }
    const LpRun warm = solve_lp(a);
    QZmodel b = read(env, name);
    ASSERT_EQ(move == Move::kCost ? QZmodifyObjective(b, 1, &idx, &value)
                                  : QZmodifyRHS(b, 1, &idx, &value),
              0);
    const LpRun cold = solve_lp(b);
    SCOPED_TRACE(name);
    expect_same_answer(a, warm, cold, 1e-7);
    const double ratio = ratios.add(warm, cold);
    std::printf("%-10s %8d %8d %8.3f  %d\n", name.c_str(), cold.iters, warm.iters, ratio,
                warm.status);
    QZdeleteModel(&a);
    QZdeleteModel(&b);
  }
  std::printf("%s: warm/cold iterations over %d models (%d without such a change): total "
              "%.0f/%.0f = %.4f, geometric mean of ratios %.4f\n",
              move == Move::kCost ? "cost" : "rhs", ratios.counted, skipped, ratios.warm,
              ratios.cold, ratios.warm / ratios.cold, ratios.geomean());
  // The geometric mean, since one degenerate model can cost a warm primal more than a cold
  // solve (qap8 after a cost change).
  EXPECT_LT(ratios.geomean(), 0.5);
  QZdeleteEnv(&env);
}

INSTANTIATE_TEST_SUITE_P(Changes, LpWarmMove, ::testing::Values(Move::kCost, Move::kRhs),
                         [](const auto& info) {
                           return std::string(info.param == Move::kCost ? "Cost" : "Rhs");
                         });

// Rows added to and deleted from a solved model: a new row's logical joins the basis and the
// rest of the basis stays; deleting a row whose logical is basic keeps the basis, deleting
// one whose logical is nonbasic drops it. Each re-solve reaches the cold optimum of the
// model changed the same way.
struct RowChange {
  std::vector<int> cols;
  std::vector<double> vals;
  double rhs = 0;
  int del = -1;  // row to delete instead, when >= 0
};

void apply_row_change(QZmodel m, const RowChange& rc) {
  if (rc.del >= 0) {
    ASSERT_EQ(QZdeleteConstraints(m, 1, &rc.del), 0);
    return;
  }
  const int beg[] = {0, static_cast<int>(rc.cols.size())};
  ASSERT_EQ(QZaddConstraints(m, 1, "L", nullptr, beg, rc.vals.data(), rc.cols.data(), &rc.rhs),
            0);
}

TEST(LpWarm, RowsAddedAndDeletedKeepOrDropTheBasis) {
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  ASSERT_EQ(rc, 0);
  const char* models[] = {"afiro", "sc50a", "adlittle", "blend", "share2b", "scagr7",
                          "stocfor1", "bore3d", "brandy", "capri", "e226", "scorpion"};
  int added = 0, keptDel = 0, droppedDel = 0;
  double warmAdd = 0, coldAdd = 0;
  for (const char* name : models) {
    SCOPED_TRACE(name);
    QZmodel a = read(env, name);
    ASSERT_NE(a, nullptr);
    ASSERT_TRUE(is_optimal(solve_lp(a).status));
    const auto [n, x, cst, rst] = point_of(a);
    const int m = static_cast<int>(rst.size());
    // A cut through the sum of up to four basic structurals, a tenth below its value.
    RowChange cut;
    double act = 0;
    for (int j = 0; j < n && cut.cols.size() < 4; ++j)
      if (cst[j] >= 0 && std::fabs(x[j]) > 1e-6) {
        cut.cols.push_back(j);
        cut.vals.push_back(1.0);
        act += x[j];
      }
    cut.rhs = act - 0.1 * (1 + std::fabs(act));
    RowChange basicDel, nonbasicDel;
    for (int i = 0; i < m; ++i) {
      if (rst[i] >= 0 && basicDel.del < 0) basicDel.del = i;
      if (rst[i] < 0 && nonbasicDel.del < 0) nonbasicDel.del = i;
    }
    for (const RowChange* ch : {&cut, &basicDel, &nonbasicDel}) {
      if (ch->cols.empty() && ch->del < 0) continue;
      // Start each change from the optimum of the model as read.
      QZmodel w = read(env, name);
      ASSERT_TRUE(is_optimal(solve_lp(w).status));
      apply_row_change(w, *ch);
      const bool adding = ch->del < 0;
      std::vector<int> cs(n), rs(adding ? m + 1 : m - 1);
      if (adding) {
        ASSERT_EQ(QZgetBasis(w, cs.data(), rs.data()), 0);
        EXPECT_GE(rs[m], 0);
        EXPECT_EQ(cs, cst);
        EXPECT_TRUE(std::equal(rst.begin(), rst.end(), rs.begin()));
        ++added;
      } else if (rst[ch->del] >= 0) {
        ASSERT_EQ(QZgetBasis(w, cs.data(), rs.data()), 0);
        EXPECT_EQ(shape(cs), shape(cst));
        std::vector<int> kept = rst;
        kept.erase(kept.begin() + ch->del);
        EXPECT_EQ(shape(rs), shape(kept));
        int basics = 0;
        for (int v : cs) basics += v >= 0;
        for (int v : rs) basics += v >= 0;
        EXPECT_EQ(basics, m - 1);
        ++keptDel;
      } else {
        EXPECT_EQ(w->sol->basicStatus, QZ_STATUS_UNLOADED);
        EXPECT_EQ(QZgetBasis(w, cs.data(), rs.data()), QZERR_INFO_NOT_AVAILABLE);
        ++droppedDel;
      }
      const LpRun warm = solve_lp(w);
      QZmodel b = read(env, name);
      apply_row_change(b, *ch);
      const LpRun cold = solve_lp(b);
      expect_same_answer(w, warm, cold, 1e-7);
      if (adding) {
        warmAdd += warm.iters;
        coldAdd += cold.iters;
      } else if (rst[ch->del] >= 0) {
        // The old optimum stays optimal: nothing to do from the kept basis.
        EXPECT_LT(warm.iters, std::max(cold.iters, 1));
      }
      QZdeleteModel(&b);
      QZdeleteModel(&w);
    }
    QZdeleteModel(&a);
  }
  std::printf("added rows: %d, warm/cold iterations %.0f/%.0f; deletions keeping the basis %d, "
              "dropping it %d\n",
              added, warmAdd, coldAdd, keptDel, droppedDel);
  EXPECT_LT(warmAdd, coldAdd);
  QZdeleteEnv(&env);
}

}  // namespace
}  // namespace zento::test
