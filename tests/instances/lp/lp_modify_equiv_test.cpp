// Random modification sequences on netlib models against models rebuilt from scratch. A host
// copy of the data takes each change the way a user would apply it by hand; after every round
// the changed model, read back through the query entries, must equal the model loaded from the
// host copy, and its warm re-solve must give the status and optimum of a cold solve of the
// rebuilt model. Changes are drawn so that the last optimal point stays feasible (coefficients
// and deletions only on columns at zero, right-hand sides and new rows on the right side of
// the point's activity), so most rounds end optimal and the objectives can be compared.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "../../unit/modify/modify_util.h"
#include "core/model.h"
#include "lp_oracle.h"
#include "zento.h"

namespace zento::test {
namespace {

struct Host {
  int sense = QZ_MIN;
  double objConst = 0;
  std::vector<std::map<int, double>> cols;
  std::vector<double> c, lo, up, b;
  std::string rowTypes, varTypes;
  std::vector<std::string> rowNames, colNames;
  int m() const { return static_cast<int>(b.size()); }
  int n() const { return static_cast<int>(c.size()); }
};

Host host_of(QZmodel model) {
  Host h;
  int n = 0, m = 0, nnz = 0;
  EXPECT_EQ(QZgetDimensions(model, &n, &m, nullptr, &nnz, nullptr, nullptr, nullptr, nullptr,
                            nullptr, nullptr, nullptr),
            0);
  h.c.resize(n), h.lo.resize(n), h.up.resize(n), h.b.resize(m);
  h.rowTypes.assign(m, ' ');
  h.varTypes.assign(n, 'C');
  std::vector<int> beg(n + 1), len(n), rows(std::max(nnz, 1));
  std::vector<double> vals(rows.size());
  EXPECT_EQ(QZgetLPData(model, &h.sense, &h.objConst, h.c.data(), h.b.data(), h.rowTypes.data(),
                        beg.data(), len.data(), vals.data(), rows.data(), h.lo.data(),
                        h.up.data()),
            0);
  if (n > 0) {
    EXPECT_EQ(QZgetVarType(model, h.varTypes.data()), 0);
  }
  h.cols.resize(n);
  for (int j = 0; j < n; ++j)
    for (int k = beg[j]; k < beg[j] + len[j]; ++k) h.cols[j][rows[k]] = vals[k];
  h.rowNames = names_of(model, m, QZgetConstraintNamei);
  h.colNames = names_of(model, n, QZgetVariableNamej);
  return h;
}

QZmodel build(QZenv env, const Host& h) {
  int rc = 0;
  QZmodel model = QZcreateModel(env, &rc);
  std::vector<int> beg{0}, rows;
  std::vector<double> vals;
  for (const auto& col : h.cols) {
    for (const auto& [i, v] : col) rows.push_back(i), vals.push_back(v);
    beg.push_back(static_cast<int>(rows.size()));
  }
  EXPECT_EQ(QZloadLPData(model, h.m(), h.n(), h.sense, h.objConst, h.c.data(), h.b.data(),
                         h.rowTypes.data(), static_cast<int>(rows.size()), beg.data(), nullptr,
                         vals.data(), rows.data(), h.lo.data(), h.up.data()),
            0);
  std::string types = h.varTypes;
  EXPECT_EQ(QZloadVarType(model, types.data()), 0);
  std::vector<char*> rn, cn;
  std::vector<std::string> r = h.rowNames, c = h.colNames;
  for (auto& s : r) rn.push_back(s.data());
  for (auto& s : c) cn.push_back(s.data());
  EXPECT_EQ(QZloadNameData(model, nullptr, nullptr, nullptr, nullptr, nullptr, rn.data(),
                           cn.data(), nullptr),
            0);
  QZsetModelIntParameter(model, QZ_IPARAM_LP_PRELEVEL, 0);
  return model;
}

// Applies random changes to the model and to the host copy alike. `x` is the last optimal
// point, kept in step with the columns.
class Mutator {
 public:
  Mutator(QZmodel model, Host& h, std::vector<double>& x, unsigned seed)
      : m_(model), h_(h), x_(x), rng_(seed) {}

  // `dataOnly`: the changes that a live simplex record takes in place (right-hand sides, row
  // types, bounds, costs), so that the next solve starts from that record.
  void step(bool dataOnly) {
    if (dataOnly) {
      switch (pick(0, 3)) {
        case 0: rhs(); break;
        case 1: row_type(); break;
        case 2: bounds(); break;
        default: costs(); break;
      }
      return;
    }
    switch (pick(0, 11)) {
      case 0: coefficients(); break;
      case 1: delete_entries(); break;
      case 2: rhs(); break;
      case 3: row_type(); break;
      case 4: bounds(); break;
      case 5: costs(); break;
      case 6: var_type(); break;
      case 7: add_rows(); break;
      case 8: add_cols(); break;
      case 9: delete_rows(); break;
      case 10: delete_cols(); break;
      default: constant(); break;
    }
  }

  // Largest violation of the point in the host copy, relative to the row or bound.
  double violation() const {
    double worst = 0;
    for (int i = 0; i < h_.m(); ++i) {
      const double r = activity(i), b = h_.b[i], t = h_.rowTypes[i];
      const double v = t == 'L' ? r - b : t == 'G' ? b - r : t == 'E' ? std::fabs(r - b) : 0;
      worst = std::max(worst, v / (1 + std::fabs(b)));
    }
    for (int j = 0; j < h_.n(); ++j)
      worst = std::max({worst, (h_.lo[j] - x_[j]) / (1 + std::fabs(x_[j])),
                        (x_[j] - h_.up[j]) / (1 + std::fabs(x_[j]))});
    return worst;
  }

  // The solve compares linear programs: integer marks go back to continuous, in one call.
  void all_continuous() {
    std::vector<int> idx;
    for (int j = 0; j < h_.n(); ++j)
      if (h_.varTypes[j] != 'C') idx.push_back(j), h_.varTypes[j] = 'C';
    const std::string t(idx.size(), 'C');
    ASSERT_EQ(QZmodifyVariableType(m_, static_cast<int>(idx.size()), idx.data(), t.data()), 0);
  }

 private:
  int pick(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng_); }
  double unit() { return std::uniform_real_distribution<double>(0.0, 1.0)(rng_); }
  double coef() { return (pick(0, 1) ? 1 : -1) * (0.25 + 0.25 * pick(0, 11)); }

  double activity(int i) const {
    double r = 0;
    for (int j = 0; j < h_.n(); ++j) {
      auto it = h_.cols[j].find(i);
      if (it != h_.cols[j].end()) r += it->second * x_[j];
    }
    return r;
  }
  // A right-hand side that the point satisfies for the given type, some way off its activity.
  double rhs_for(char type, double r) {
    const double gap = unit() < 0.3 ? 0.0 : unit() * 0.1 * (1 + std::fabs(r));
    return type == 'L' ? r + gap : type == 'G' ? r - gap : r;
  }
  std::vector<int> distinct(int n, int k) {
    std::set<int> s;
    k = std::min(k, n);
    while (static_cast<int>(s.size()) < k) s.insert(pick(0, n - 1));
    std::vector<int> v(s.begin(), s.end());
    std::shuffle(v.begin(), v.end(), rng_);
    return v;
  }
  // A column at zero whose entries can change without moving any row activity.
  int zero_column() {
    std::vector<int> z;
    for (int j = 0; j < h_.n(); ++j)
      if (x_[j] == 0.0) z.push_back(j);
    return z.empty() ? -1 : z[pick(0, static_cast<int>(z.size()) - 1)];
  }

  void coefficients() {
    const int j = zero_column();
    if (j < 0 || h_.m() == 0) return;
    std::vector<int> rows = distinct(h_.m(), pick(1, 3));
    // Also overwrite an entry that is there already.
    if (!h_.cols[j].empty() && pick(0, 1)) {
      auto it = h_.cols[j].begin();
      std::advance(it, pick(0, static_cast<int>(h_.cols[j].size()) - 1));
      if (std::find(rows.begin(), rows.end(), it->first) == rows.end()) rows.push_back(it->first);
    }
    std::vector<double> vals;
    for (int i : rows) vals.push_back(coef()), h_.cols[j][i] = vals.back();
    ASSERT_EQ(QZmodifyAj(m_, j, static_cast<int>(rows.size()), rows.data(), vals.data()), 0);
  }

  void delete_entries() {
    const int j = zero_column();
    if (j < 0 || h_.cols[j].empty()) return;
    std::vector<int> present;
    for (const auto& e : h_.cols[j]) present.push_back(e.first);
    std::vector<int> rows;
    for (int k : distinct(static_cast<int>(present.size()), pick(1, 2))) {
      rows.push_back(present[k]);
      h_.cols[j].erase(present[k]);
    }
    ASSERT_EQ(QZdeleteAj(m_, j, static_cast<int>(rows.size()), rows.data()), 0);
  }

  void rhs() {
    if (h_.m() == 0) return;
    std::vector<int> rows = distinct(h_.m(), pick(1, 3));
    std::vector<double> b;
    for (int i : rows) {
      const char t = h_.rowTypes[i];
      b.push_back(t == 'N' ? pick(-5, 5) : t == 'E' ? h_.b[i] : rhs_for(t, activity(i)));
      h_.b[i] = b.back();
    }
    ASSERT_EQ(QZmodifyRHS(m_, static_cast<int>(rows.size()), rows.data(), b.data()), 0);
  }

  void row_type() {
    if (h_.m() == 0) return;
    const int i = pick(0, h_.m() - 1);
    const double r = activity(i), tol = 1e-9 * (1 + std::fabs(h_.b[i]));
    std::string ok = pick(0, 3) == 0 ? "N" : "";
    if (r <= h_.b[i] + tol) ok += 'L';
    if (r >= h_.b[i] - tol) ok += 'G';
    if (ok.empty()) return;
    const char t = ok[pick(0, static_cast<int>(ok.size()) - 1)];
    h_.rowTypes[i] = t;
    ASSERT_EQ(QZmodifyConstraintType(m_, 1, &i, &t), 0);
  }

  // Binary columns keep their [0, 1]: a load clips a binary's bounds to it, a change of
  // bounds does not, so the rebuilt model would differ by design.
  void bounds() {
    std::vector<int> cols;
    for (int j : distinct(h_.n(), pick(1, 3)))
      if (h_.varTypes[j] != 'B') cols.push_back(j);
    std::vector<double> lo, up;
    for (int j : cols) {
      const double s = 1 + std::fabs(x_[j]);
      lo.push_back(unit() < 0.1 ? -QZ_INFINITY : x_[j] - (unit() < 0.3 ? 0 : unit() * s));
      up.push_back(unit() < 0.1 ? QZ_INFINITY : x_[j] + (unit() < 0.3 ? 0 : unit() * s));
      h_.lo[j] = lo.back();
      h_.up[j] = up.back();
    }
    const int k = static_cast<int>(cols.size());
    // Lower first, then upper: lo <= x <= up holds at every stage.
    ASSERT_EQ(QZmodifyLowerBounds(m_, k, cols.data(), lo.data()), 0);
    ASSERT_EQ(QZmodifyUpperBounds(m_, k, cols.data(), up.data()), 0);
  }

  // Mostly on boxed columns, whose costs can't make the model unbounded.
  void costs() {
    std::vector<int> cols;
    for (int j : distinct(h_.n(), pick(2, 6)))
      if ((h_.lo[j] > -QZ_INFINITY && h_.up[j] < QZ_INFINITY) || pick(0, 3) == 0) cols.push_back(j);
    if (cols.empty()) return;
    std::vector<double> c;
    for (int j : cols) {
      c.push_back(h_.c[j] + (2 * unit() - 1) * (1 + std::fabs(h_.c[j])));
      h_.c[j] = c.back();
    }
    ASSERT_EQ(QZmodifyObjective(m_, static_cast<int>(cols.size()), cols.data(), c.data()), 0);
  }

  void var_type() {
    const int j = pick(0, h_.n() - 1);
    if (h_.up[j] < 1 || h_.lo[j] > 0) {
      // Binary is refused on such bounds, and nothing changes (the next comparison shows it).
      ASSERT_EQ(QZmodifyVariableType(m_, 1, &j, "B"), QZERR_INPUT_OUT_OF_RANGE);
      return;
    }
    if (x_[j] < 0 || x_[j] > 1) {
      h_.varTypes[j] = 'I';
      ASSERT_EQ(QZmodifyVariableType(m_, 1, &j, "I"), 0);
      return;
    }
    h_.varTypes[j] = 'B';
    h_.lo[j] = std::max(h_.lo[j], 0.0);
    h_.up[j] = std::min(h_.up[j], 1.0);
    ASSERT_EQ(QZmodifyVariableType(m_, 1, &j, "B"), 0);
  }

  void add_rows() {
    const int k = pick(1, 2);
    std::vector<int> beg{0}, cols;
    std::vector<double> vals, b;
    std::string types;
    std::vector<std::string> names;
    for (int r = 0; r < k; ++r) {
      double act = 0;
      for (int j : distinct(h_.n(), pick(1, 6))) {
        cols.push_back(j);
        vals.push_back(coef());
        act += vals.back() * x_[j];
      }
      beg.push_back(static_cast<int>(cols.size()));
      types += "LGE"[pick(0, 2)];
      b.push_back(rhs_for(types.back(), act));
      names.push_back("new_r" + std::to_string(serial_++));
    }
    std::vector<char*> np;
    for (auto& s : names) np.push_back(s.data());
    ASSERT_EQ(QZaddConstraints(m_, k, types.data(), np.data(), beg.data(), vals.data(),
                               cols.data(), b.data()),
              0);
    for (int r = 0; r < k; ++r) {
      const int i = h_.m();
      for (int p = beg[r]; p < beg[r + 1]; ++p) h_.cols[cols[p]][i] = vals[p];
      h_.b.push_back(b[r]);
      h_.rowTypes += types[r];
      h_.rowNames.push_back(names[r]);
    }
  }

  void add_cols() {
    const int k = pick(1, 2);
    std::vector<int> beg{0}, rows;
    std::vector<double> vals, c, lo, up;
    std::vector<std::string> names;
    for (int q = 0; q < k; ++q) {
      std::map<int, double> col;
      for (int i : distinct(h_.m(), pick(0, 4))) {
        rows.push_back(i);
        vals.push_back(coef());
        col[i] = vals.back();
      }
      beg.push_back(static_cast<int>(rows.size()));
      const bool boxed = pick(0, 1);
      c.push_back(boxed ? 4 * unit() - 2 : 2 * unit());
      lo.push_back(0);
      up.push_back(boxed ? 10 : QZ_INFINITY);
      names.push_back("new_c" + std::to_string(serial_++));
      h_.cols.push_back(col);
      h_.c.push_back(c.back());
      h_.lo.push_back(0);
      h_.up.push_back(up.back());
      h_.varTypes += 'C';
      h_.colNames.push_back(names.back());
      x_.push_back(0);
    }
    std::vector<char*> np;
    for (auto& s : names) np.push_back(s.data());
    ASSERT_EQ(QZaddVariables(m_, k, nullptr, np.data(), beg.data(), nullptr, vals.data(),
                             rows.data(), c.data(), lo.data(), up.data()),
              0);
  }

  // Mostly rows that don't bind at the point, which the dual can do without.
  void delete_rows() {
    if (h_.m() < 2) return;
    std::vector<int> del;
    for (int i : distinct(h_.m(), pick(2, 6)))
      if (del.size() < 2 &&
          (std::fabs(activity(i) - h_.b[i]) > 1e-7 * (1 + std::fabs(h_.b[i])) || pick(0, 3) == 0))
        del.push_back(i);
    if (del.empty()) return;
    ASSERT_EQ(QZdeleteConstraints(m_, static_cast<int>(del.size()), del.data()), 0);
    std::vector<int> map(h_.m());
    for (int i : del) map[i] = -1;
    int next = 0;
    Host& h = h_;
    std::vector<double> b;
    std::string t;
    std::vector<std::string> names;
    for (int i = 0; i < h.m(); ++i) {
      if (map[i] < 0) continue;
      map[i] = next++;
      b.push_back(h.b[i]);
      t += h.rowTypes[i];
      names.push_back(h.rowNames[i]);
    }
    for (auto& col : h.cols) {
      std::map<int, double> out;
      for (const auto& [i, v] : col)
        if (map[i] >= 0) out[map[i]] = v;
      col = out;
    }
    h.b = b, h.rowTypes = t, h.rowNames = names;
  }

  void delete_cols() {
    std::vector<int> del;
    for (int tries = 0; tries < 2; ++tries) {
      const int j = zero_column();
      if (j >= 0 && std::find(del.begin(), del.end(), j) == del.end()) del.push_back(j);
    }
    if (del.empty() || static_cast<int>(del.size()) >= h_.n()) return;
    std::vector<int> call = del;
    if (pick(0, 1)) call.push_back(del.front()), call.push_back(h_.n() + 5);  // passed over
    ASSERT_EQ(QZdeleteVariables(m_, static_cast<int>(call.size()), call.data()), 0);
    const std::set<int> gone(del.begin(), del.end());
    Host out = h_;
    out.cols.clear(), out.c.clear(), out.lo.clear(), out.up.clear(), out.colNames.clear();
    out.varTypes.clear();
    std::vector<double> x;
    for (int j = 0; j < h_.n(); ++j) {
      if (gone.count(j)) continue;
      out.cols.push_back(h_.cols[j]);
      out.c.push_back(h_.c[j]);
      out.lo.push_back(h_.lo[j]);
      out.up.push_back(h_.up[j]);
      out.varTypes += h_.varTypes[j];
      out.colNames.push_back(h_.colNames[j]);
      x.push_back(x_[j]);
    }
    h_ = out;
    x_ = x;
  }

  void constant() {
    h_.objConst = pick(-100, 100);
    ASSERT_EQ(QZmodifyObjConstant(m_, h_.objConst), 0);
  }

  QZmodel m_;
  Host& h_;
  std::vector<double>& x_;
  std::mt19937 rng_;
  int serial_ = 0;
};

TEST(LpModifyEquivalence, RandomChangesMatchRebuiltModelAndItsColdSolve) {
  const char* models[] = {"afiro",   "sc50a",  "sc50b",  "sc105",   "adlittle", "blend",
                          "stocfor1", "share2b", "scagr7", "bore3d", "boeing1",  "brandy",
                          "capri",   "grow7",  "e226",   "scorpion", "sctap1",  "scsd1"};
  const int kRounds = 6, kSteps = 15;
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  ASSERT_EQ(rc, 0);
  int rounds = 0, compared = 0, nonOptimal = 0, live = 0;
  double warmIters = 0, coldIters = 0;
  unsigned seed = 11;
  for (const char* name : models) {
    SCOPED_TRACE(name);
    QZmodel a = QZcreateModel(env, &rc);
    const std::string path = std::string(ZENTO_TEST_DATA) + "/netlib/" + name + ".mps.gz";
    ASSERT_EQ(QZreadMPSFile(a, path.c_str(), QZ_MPS_AUTO), 0);
    QZsetModelIntParameter(a, QZ_IPARAM_LP_PRELEVEL, 0);
    Host h = host_of(a);
    const LpRun first = solve_lp(a);
    ASSERT_TRUE(first.rc == 0 && is_optimal(first.status));
    std::vector<double> x(h.n());
    ASSERT_EQ(QZgetPrimalSolution(a, x.data()), 0);
    Mutator mut(a, h, x, seed++);
    for (int round = 0; round < kRounds; ++round) {
      SCOPED_TRACE(round);
      for (int s = 0; s < kSteps; ++s) {
        mut.step(round % 2 == 1);
        if (HasFatalFailure()) break;
      }
      // The changes keep the last optimum feasible, so neither solve may call it infeasible.
      const double viol = mut.violation();
      EXPECT_LT(viol, 1e-6);
      QZmodel b = build(env, h);
      expect_same(snapshot(a), snapshot(b));
      QZdeleteModel(&b);
      if (HasFailure()) break;
      // Both solve the linear program: integer marks go, and b is built again without them.
      mut.all_continuous();
      b = build(env, h);
      live += a->glp != nullptr;
      const LpRun warm = solve_lp(a), cold = solve_lp(b);
      ++rounds;
      EXPECT_EQ(warm.rc, 0);
      EXPECT_EQ(cold.rc, 0);
      EXPECT_TRUE(same_verdict(warm.status, cold.status))
          << "warm " << warm.status << " cold " << cold.status;
      if (viol < 1e-9) {
        EXPECT_NE(warm.status, QZ_STATUS_INFEASIBLE);
        EXPECT_NE(cold.status, QZ_STATUS_INFEASIBLE);
      }
      const bool both = is_optimal(warm.status) && is_optimal(cold.status);
      if (both) {
        EXPECT_NEAR(warm.obj, cold.obj, 1e-7 * std::max(1.0, std::fabs(cold.obj)));
        ++compared;
        warmIters += warm.iters;
        coldIters += cold.iters;
        ASSERT_EQ(QZgetPrimalSolution(a, x.data()), 0);
      }
      QZdeleteModel(&b);
      // Otherwise the last optimal point, which every change keeps feasible, goes on.
      nonOptimal += !both;
    }
    QZdeleteModel(&a);
  }
  std::printf("%d rounds over %zu models (%d from a live simplex record), %d compared at the "
              "optimum, %d ended otherwise; warm/cold iterations %.0f/%.0f = %.3f\n",
              rounds, std::size(models), live, compared, nonOptimal, warmIters, coldIters,
              coldIters > 0 ? warmIters / coldIters : 0.0);
  EXPECT_GE(3 * compared, 2 * rounds);
  QZdeleteEnv(&env);
}

}  // namespace
}  // namespace zento::test
