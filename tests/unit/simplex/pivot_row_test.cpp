// The pivot row alpha_j = rho^T a_j over the nonbasic columns: the same sums to the bit as the
// plain row-wise or column-wise product the rule picks, through sequences of basis changes.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <random>
#include <vector>

#include "lp/simplex/spx_internal.h"

namespace zento {
namespace {

struct Shape {
  int m, n;
  double density;
  bool sorted_cols;
  uint32_t seed;
};

// Working matrix with logicals, a random basis of m heads, and the dense copy of A.
struct Fixture {
  Glp g;
  std::vector<std::vector<double>> A;  // [row][column], logicals included
  std::mt19937 rng;
  bool sorted_cols;

  explicit Fixture(const Shape& s) : rng(s.seed), sorted_cols(s.sorted_cols) {
    g.m = s.m;
    g.n = s.n;
    const int N = s.n + s.m;
    A.assign(s.m, std::vector<double>(N, 0.0));
    std::uniform_real_distribution<double> U(-3, 3);
    std::uniform_real_distribution<double> P(0, 1);
    g.acols.beg.assign(N + 1, 0);
    for (int j = 0; j < N; ++j) {
      std::vector<int> rows;
      if (j < s.n) {
        for (int i = 0; i < s.m; ++i)
          if (P(rng) < s.density) rows.push_back(i);
        if (!s.sorted_cols) std::shuffle(rows.begin(), rows.end(), rng);
      } else {
        rows.push_back(j - s.n);
      }
      for (int i : rows) {
        const double v = j < s.n ? U(rng) : (P(rng) < 0.5 ? -1.0 : 1.0);
        A[i][j] = v;
        g.acols.idx.push_back(i);
        g.acols.val.push_back(v);
      }
      g.acols.beg[j + 1] = static_cast<int>(g.acols.idx.size());
    }
    qzi_build_rows(g);
    g.cbas.assign(N, kAtLower);
    g.rbas.assign(s.m, 0);
    std::vector<int> cols(N);
    std::iota(cols.begin(), cols.end(), 0);
    std::shuffle(cols.begin(), cols.end(), rng);
    for (int p = 0; p < s.m; ++p) {
      g.rbas[p] = cols[p];
      g.cbas[cols[p]] = p;
    }
    g.prow.assign(N, 0.0);
    g.prow_idx.assign(N, 0);
    g.prow_mark.assign(N, 0);
  }

  // A nonbasic column takes the place of a basic one.
  void pivot() {
    const int N = g.n + g.m;
    std::uniform_int_distribution<int> pos(0, g.m - 1), col(0, N - 1);
    const int p = pos(rng);
    int q = col(rng);
    while (g.cbas[q] >= 0) q = col(rng);
    g.cbas[g.rbas[p]] = (p % 2 == 0) ? kAtLower : kAtUpper;
    g.cbas[q] = p;
    g.rbas[p] = q;
  }

  // Two heads trade places, as a refactorization may reorder them.
  void permute_heads() {
    std::uniform_int_distribution<int> pos(0, g.m - 1);
    const int a = pos(rng), b = pos(rng);
    std::swap(g.rbas[a], g.rbas[b]);
    g.cbas[g.rbas[a]] = a;
    g.cbas[g.rbas[b]] = b;
  }

  // Multipliers on `count` rows, listed in row order or shuffled.
  SVec multipliers(int count, bool ascending) {
    SVec r;
    r.resize(g.m);
    std::vector<int> rows(g.m);
    std::iota(rows.begin(), rows.end(), 0);
    std::shuffle(rows.begin(), rows.end(), rng);
    rows.resize(count);
    if (ascending) std::sort(rows.begin(), rows.end());
    std::uniform_real_distribution<double> U(-2, 2);
    for (int k = 0; k < count; ++k) {
      r.idx[k] = rows[k];
      r.val[rows[k]] = U(rng);
    }
    r.n = count;
    return r;
  }

  // The row summed term by term in the order of rho's list.
  std::vector<double> by_rows(const SVec& rho) const {
    const int N = g.n + g.m;
    std::vector<double> ref(N, 0.0);
    for (int k = 0; k < rho.n; ++k) {
      const int i = rho.idx[k];
      for (int j = 0; j < N; ++j)
        if (A[i][j] != 0.0 && g.cbas[j] < 0) ref[j] += rho.val[i] * A[i][j];
    }
    return ref;
  }

  // The row as dot products over each column's entries in stored order.
  std::vector<double> by_columns(const SVec& rho) const {
    const int N = g.n + g.m;
    std::vector<double> ref(N, 0.0);
    for (int j = 0; j < N; ++j) {
      if (g.cbas[j] >= 0) continue;
      double a = 0;
      for (int k = g.acols.beg[j]; k < g.acols.beg[j + 1]; ++k)
        a += g.acols.val[k] * rho.val[g.acols.idx[k]];
      ref[j] = a;
    }
    return ref;
  }

  // What the simplex has always been given: the row-wise sums when the rows of rho hold under
  // a third of the matrix, else the column-wise ones. Where both orders add the same terms
  // in the same sequence they must agree to the bit.
  std::vector<double> reference(const SVec& rho, bool sorted_cols) const {
    long work = 0;
    bool ascending = true;
    for (int k = 0; k < rho.n; ++k) {
      work += g.arows.count(rho.idx[k]);
      if (k > 0 && rho.idx[k] <= rho.idx[k - 1]) ascending = false;
    }
    const std::vector<double> rows = by_rows(rho), cols = by_columns(rho);
    if (ascending && sorted_cols) {
      for (size_t j = 0; j < rows.size(); ++j) {
        EXPECT_TRUE(std::fabs(rows[j]) <= g.azero ? std::fabs(cols[j]) <= g.azero
                                                  : rows[j] == cols[j])
            << "column " << j;
      }
    }
    return work * 3 < g.acols.nnz() ? rows : cols;
  }

  void expect_row(const SVec& rho, const char* what) {
    compute_pivrow(g, rho);
    const std::vector<double> ref = reference(rho, sorted_cols);
    const int N = g.n + g.m;
    std::vector<char> listed(N, 0);
    for (int k = 0; k < g.prow_n; ++k) {
      const int j = g.prow_idx[k];
      ASSERT_FALSE(listed[j]) << what << ": column " << j << " listed twice";
      listed[j] = 1;
    }
    for (int j = 0; j < N; ++j) {
      const bool keep = g.cbas[j] < 0 && std::fabs(ref[j]) > g.azero;
      ASSERT_EQ(static_cast<bool>(listed[j]), keep) << what << ": column " << j;
      ASSERT_EQ(static_cast<bool>(g.prow_mark[j]), keep) << what << ": mark " << j;
      // Bit for bit: a different order of additions changes the simplex path.
      ASSERT_EQ(g.prow[j], keep ? ref[j] : 0.0) << what << ": column " << j;
    }
  }
};

class PivotRow : public ::testing::TestWithParam<Shape> {};

TEST_P(PivotRow, ExactThroughBasisChanges) {
  Fixture f(GetParam());
  const int m = f.g.m;
  for (int round = 0; round < 40; ++round) {
    // Short shuffled lists take the row-wise product, long ones the column-wise one; lists
    // in row order may take either.
    const int counts[] = {1, std::max(1, m / 20), std::max(1, m / 4), m};
    for (int count : counts)
      for (bool ascending : {false, true}) {
        SVec rho = f.multipliers(count, ascending);
        f.expect_row(rho, ascending ? "row order" : "shuffled");
        if (HasFatalFailure()) return;
      }
    f.pivot();
    if (round % 7 == 3) f.permute_heads();
    if (round % 5 == 2) f.pivot();
  }
}

INSTANTIATE_TEST_SUITE_P(Shapes, PivotRow,
                         ::testing::Values(Shape{30, 60, 0.10, true, 1u},
                                           Shape{30, 60, 0.10, false, 2u},
                                           Shape{80, 400, 0.03, true, 3u},
                                           Shape{80, 40, 0.25, false, 4u},
                                           Shape{5, 3, 0.6, true, 5u}));

// A row with every multiplier tiny drops all of its entries and leaves no stale values.
TEST(PivotRowDrop, TinyEntriesLeaveNoTrace) {
  Fixture f(Shape{20, 30, 0.2, true, 9u});
  SVec big = f.multipliers(20, true);
  f.expect_row(big, "full");
  if (HasFatalFailure()) return;
  SVec tiny = f.multipliers(3, false);
  for (int k = 0; k < tiny.n; ++k) tiny.val[tiny.idx[k]] *= 1e-300;
  f.g.azero = 1e-200;
  f.expect_row(tiny, "tiny");
  if (HasFatalFailure()) return;
  f.g.azero = kMachEps;
  f.expect_row(big, "full again");
}

}  // namespace
}  // namespace zento
