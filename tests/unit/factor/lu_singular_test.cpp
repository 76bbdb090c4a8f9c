// Singular and near-singular bases: the dependent (row, slot) pairs, the threshold ladder,
// and failed updates that must never leave a wrong factor behind.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "lu_checks.h"
#include "lp/factor/lu_engine.h"

namespace zento::lutest {
namespace {

using Col = std::vector<std::pair<int, double>>;

ColMatrix from_cols(int m, const std::vector<Col>& cols) {
  ColMatrix a;
  a.m = m;
  a.beg.push_back(0);
  for (const Col& c : cols) {
    for (auto [i, v] : c) {
      a.idx.push_back(i);
      a.val.push_back(v);
    }
    a.beg.push_back(static_cast<int>(a.idx.size()));
    ++a.n;
  }
  a.bind();
  return a;
}

std::unique_ptr<LuFactor> make(const ColMatrix& a, int core, lu::LuOptions opt = {}) {
  opt.lucore = core;
  int err = 0;
  auto lu = QZI_lu_create(a.m, opt, QZI_lu_datacol, const_cast<lu::LuCscHost*>(&a.host), &err);
  EXPECT_TRUE(lu) << err;
  return lu;
}

// A random well-conditioned basis of m columns with `dep` columns then overwritten.
struct SingularCase {
  const char* name;
  int deficiency;
  // Builds the columns; returns the basis columns.
  std::vector<Col> (*build)(int m, std::mt19937& rng);
};

std::vector<Col> diag_cols(int m, std::mt19937& rng) {
  std::uniform_real_distribution<double> u(1.0, 2.0);
  std::uniform_int_distribution<int> row(0, m - 1);
  std::bernoulli_distribution sign(0.5);
  std::vector<Col> cols(m);
  for (int j = 0; j < m; ++j) {
    cols[j].push_back({j, 4.0 * u(rng)});
    const int i = row(rng);
    if (i != j) cols[j].push_back({i, (sign(rng) ? 0.5 : -0.5) * u(rng)});
  }
  return cols;
}

const SingularCase kSingular[] = {
    {"duplicate_column", 1,
     [](int m, std::mt19937& rng) {
       auto c = diag_cols(m, rng);
       c[5] = c[11];
       return c;
     }},
    {"empty_row", 1,
     [](int m, std::mt19937& rng) {
       auto c = diag_cols(m, rng);
       for (auto& col : c) std::erase_if(col, [](auto e) { return e.first == 7; });
       return c;
     }},
    {"combination", 1,
     [](int m, std::mt19937& rng) {
       auto c = diag_cols(m, rng);
       std::map<int, double> s;
       for (auto [i, v] : c[2]) s[i] += 0.3 * v;
       for (auto [i, v] : c[9]) s[i] += 0.7 * v;
       c[14].assign(s.begin(), s.end());
       return c;
     }},
    {"rank_minus_3", 3,
     [](int m, std::mt19937& rng) {
       auto c = diag_cols(m, rng);
       c[3] = c[4];
       c[20] = c[21];
       std::map<int, double> s;
       for (auto [i, v] : c[1]) s[i] -= 1.25 * v;
       for (auto [i, v] : c[30]) s[i] += 0.5 * v;
       c[17].assign(s.begin(), s.end());
       return c;
     }},
    {"dense_block_combination", 1,
     [](int m, std::mt19937& rng) {
       // A full 36 x 36 block: the factorization finishes it as a dense kernel.
       auto c = diag_cols(m, rng);
       std::uniform_real_distribution<double> u(-1.0, 1.0);
       for (int j = 0; j < 36; ++j) {
         c[j].clear();
         for (int i = 0; i < 36; ++i) c[j].push_back({i, u(rng) + (i == j ? 3.0 : 0.0)});
       }
       std::map<int, double> s;
       for (auto [i, v] : c[3]) s[i] += 0.5 * v;
       for (auto [i, v] : c[7]) s[i] -= 2.0 * v;
       c[10].assign(s.begin(), s.end());
       return c;
     }},
    {"structural_clash", 1,
     [](int m, std::mt19937& rng) {
       auto c = diag_cols(m, rng);
       c[8] = {{12, 3.0}};
       c[12] = {{12, -1.0}};
       return c;
     }},
};

TEST(Singular, DependentPairsRepairTheBasis) {
  const int m = 40;
  for (const SingularCase& sc : kSingular) {
    for (int core : {4, 3}) {
      std::mt19937 rng(5);
      ColMatrix a = from_cols(m, sc.build(m, rng));
      std::vector<int> rbas = first_m_basis(a);
      auto lu = make(a, core);
      const std::string what = std::string(sc.name) + (core == 3 ? " clu" : " slu");
      ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), lu::kLuSingular) << what;
      EXPECT_EQ(QZI_lu_stat(*lu), lu::kLuSingular);
      EXPECT_EQ(QZI_lu_sing_num(*lu), sc.deficiency) << what;
      EXPECT_EQ(QZI_lu_get_rank(*lu), m - sc.deficiency) << what;
      std::vector<int> rows(m), slots(m);
      const int k = QZI_lu_sing_idx(*lu, rows.data(), slots.data());
      ASSERT_EQ(k, sc.deficiency);
      // A singular factor refuses to solve and leaves the output alone.
      SpVec b(m), x(m);
      b.set_unit(0);
      x.n = 7;
      EXPECT_EQ(QZI_lu_ftran(*lu, b, x, 0), lu::kLuSingular);
      EXPECT_EQ(x.n, 7);
      EXPECT_EQ(QZI_lu_btran(*lu, b, x), lu::kLuSingular);
      // The logicals of the deficient rows in the reported slots give a nonsingular basis.
      for (int q = 0; q < k; ++q) rbas[slots[q]] = a.n + rows[q];
      ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0) << what;
      EXPECT_LE(solve_random(*lu, a, rbas, rng).resid, 1e-9) << what;
    }
  }
}

// Near-singular: one column is a combination of others up to a relative perturbation.
// The layer must either refuse (singular, or an rcond the caller treats as singular) or solve
// with a backward error at rounding level.
TEST(Singular, NearSingularSolvesOrRefuses) {
  const int m = 60;
  for (double delta : {1e-6, 1e-9, 1e-12, 1e-15}) {
    for (int core : {4, 3}) {
      std::mt19937 rng(9);
      auto cols = diag_cols(m, rng);
      std::map<int, double> s;
      for (auto [i, v] : cols[2]) s[i] += 0.3 * v;
      for (auto [i, v] : cols[9]) s[i] += 0.7 * v;
      s[33] += delta;
      cols[14].assign(s.begin(), s.end());
      ColMatrix a = from_cols(m, cols);
      std::vector<int> rbas = first_m_basis(a);
      auto lu = make(a, core);
      const int st = QZI_lu_fact(*lu, rbas.data());
      if (st != 0) {
        EXPECT_EQ(st, lu::kLuSingular);
        EXPECT_GE(QZI_lu_sing_num(*lu), 1);
        continue;
      }
      if (QZI_lu_get_rcond(*lu) < 2.220446049250313e-16) continue;  // the caller's "singular"
      // Normwise backward error ||r|| / (||B|| ||x|| + ||b||), with ||B|| <= 10 here.
      const SolveCheck r = solve_random(*lu, a, rbas, rng);
      EXPECT_LE(r.backward(10.0), 1e-13) << "delta " << delta << " core " << core;
      if (delta >= 1e-9) {
        EXPECT_LE(r.resid, 1e-6);
      }
    }
  }
}

// A tiny column scale is not a dependency, in the sparse and in the dense kernel.
TEST(Singular, BadlyScaledColumnIsNotSingular) {
  const int m = 50;
  for (int block : {0, 40}) {
    std::mt19937 rng(2);
    auto cols = diag_cols(m, rng);
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    for (int j = 0; j < block; ++j) {
      cols[j].clear();
      for (int i = 0; i < block; ++i) cols[j].push_back({i, u(rng) + (i == j ? 3.0 : 0.0)});
    }
    for (auto& e : cols[5]) e.second *= 1e-12;
    ColMatrix a = from_cols(m, cols);
    std::vector<int> rbas = first_m_basis(a);
    for (int core : {4, 3}) {
      auto lu = make(a, core);
      ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0) << "block " << block << " core " << core;
      EXPECT_EQ(QZI_lu_get_rank(*lu), m);
      EXPECT_LE(solve_random(*lu, a, rbas, rng).backward(8.0), 1e-14)
          << "block " << block << " core " << core;
    }
  }
}

std::vector<std::string>* g_lines = nullptr;
void collect(void*, const char* line) { g_lines->push_back(line); }

int count(const std::vector<std::string>& lines, const char* tag) {
  int n = 0;
  for (const auto& l : lines) n += l.find(tag) != std::string::npos;
  return n;
}

TEST(Ladder, ThresholdWalksToItsEndWhenRcondStaysLow) {
  // A diagonal with a 1000:1 spread: rcond is 1e-3 whatever the threshold.
  const int m = 5;
  std::vector<Col> cols;
  for (int j = 0; j < m; ++j) cols.push_back({{j, j == 2 ? 1e-3 : 1.0}});
  ColMatrix a = from_cols(m, cols);
  std::vector<int> rbas = first_m_basis(a);
  std::vector<std::string> lines;
  g_lines = &lines;
  lu::LuOptions opt;
  opt.print_level = 1;
  opt.log = collect;
  auto lu = make(a, 4, opt);
  ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0);
  double eps = 0;
  ASSERT_EQ(QZI_lu_get_dpar(*lu, lu::SLU_DPAR_EPS_PIVREL, &eps), 0);
  EXPECT_DOUBLE_EQ(eps, 0.85);
  EXPECT_EQ(count(lines, "(LOOP)"), 2);  // 0.5 -> 0.7 -> 0.85
  EXPECT_EQ(count(lines, "(END)"), 1);
  EXPECT_NEAR(QZI_lu_get_rcond(*lu), 1e-3, 1e-15);
  // A second factorization has nowhere to go: one pass, (END) at once.
  lines.clear();
  ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0);
  EXPECT_EQ(count(lines, "(LOOP)"), 0);
  EXPECT_EQ(count(lines, "(END)"), 1);
  g_lines = nullptr;
}

TEST(Ladder, RaisedThresholdRepairsABadPivot) {
  // With threshold 0.01 the small 0.02 entry is an acceptable first pivot and the growth
  // makes rcond 4e-4; the ladder raises the threshold to 0.1 and the factor comes out clean.
  ColMatrix a = from_cols(2, {{{0, 0.02}, {1, 1.0}}, {{0, 1.0}, {1, 1.0}}});
  std::vector<int> rbas = first_m_basis(a);
  std::vector<std::string> lines;
  g_lines = &lines;
  lu::LuOptions opt;
  opt.eps_pivrel = 0.01;
  opt.print_level = 1;
  opt.log = collect;
  auto lu = make(a, 4, opt);
  ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0);
  double eps = 0;
  ASSERT_EQ(QZI_lu_get_dpar(*lu, lu::SLU_DPAR_EPS_PIVREL, &eps), 0);
  EXPECT_DOUBLE_EQ(eps, 0.1);
  EXPECT_EQ(count(lines, "(LOOP)"), 1);
  EXPECT_EQ(count(lines, "(OK)"), 1);
  EXPECT_GT(QZI_lu_get_rcond(*lu), 0.5);
  g_lines = nullptr;
}

TEST(Ladder, StepRules) {
  struct Step {
    double cur;
    bool stepped;
    double next;
  };
  const Step steps[] = {{0.001, false, 0.01}, {0.01, false, 0.1},  {0.3, false, 0.35},
                        {0.5, false, 0.7},    {0.7, false, 0.85},  {0.85, false, 0.85},
                        {0.95, false, 0.95},  {0.001, true, 0.01}, {0.05, true, 0.5},
                        {0.5, true, 0.75},    {0.95, true, 0.99999}, {0.99999, true, 0.99999}};
  for (const Step& s : steps)
    EXPECT_DOUBLE_EQ(lu::next_pivot_threshold(s.cur, s.stepped), s.next)
        << s.cur << (s.stepped ? " stepped" : "");
}

TEST(Update, DependentEnteringColumnFailsCleanly) {
  for (int core : {4, 3}) {
    std::mt19937 rng(3);
    const int m = 30;
    auto cols = diag_cols(m, rng);
    cols.push_back(cols[4]);  // column m duplicates basic column 4
    ColMatrix a = from_cols(m, cols);
    std::vector<int> rbas = first_m_basis(a);
    auto lu = make(a, core);
    ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0);
    // Entering the duplicate in any slot other than 4 makes B singular.
    SpVec in(m), alpha(m);
    in.n = 0;
    for (auto [i, v] : cols[m]) {
      in.idx[in.n] = i;
      in.val[in.n++] = v;
    }
    ASSERT_EQ(QZI_lu_ftran(*lu, in, alpha, 1), 0);
    EXPECT_EQ(QZI_lu_update(*lu, 7, 0.0, 0), lu::kLuUpdateFailed) << core;
    SpVec x(m);
    x.n = 3;
    EXPECT_EQ(QZI_lu_ftran(*lu, in, x, 0), lu::kLuUpdateFailed);
    EXPECT_EQ(x.n, 3);
    ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0);
    // Without a saved spike there is nothing to update with.
    EXPECT_EQ(QZI_lu_update(*lu, 2, 1.0, 0), lu::kLuUpdateFailed);
    ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0);
    // A pivot element that disagrees with the factor is refused too.
    ASSERT_EQ(QZI_lu_ftran(*lu, in, alpha, 1), 0);
    EXPECT_EQ(QZI_lu_update(*lu, 4, 123.0, 0), lu::kLuUpdateFailed);
  }
}

}  // namespace
}  // namespace zento::lutest
