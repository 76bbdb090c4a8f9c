// Random sequences of additions, deletions and modifications, each checked against a plain
// dense model kept beside the library's: entries by column and by row, data, names and lookups.
#include <map>
#include <optional>
#include <random>
#include <set>

#include "modify_util.h"

namespace zento::test {
namespace {

struct Dense {
  std::vector<std::vector<std::optional<double>>> a;  // [row][col]
  std::vector<double> c, lo, up, b;
  std::string types;
  std::vector<std::string> rowNames, colNames;
  int rows() const { return static_cast<int>(b.size()); }
  int cols() const { return static_cast<int>(c.size()); }
};

void expect_matches(QZmodel m, const Dense& d) {
  const Snapshot s = snapshot(m);
  ASSERT_EQ(s.nCons, d.rows());
  ASSERT_EQ(s.nVars, d.cols());
  int nnz = 0;
  for (int j = 0; j < d.cols(); ++j) {
    Entries e;
    for (int i = 0; i < d.rows(); ++i)
      if (d.a[i][j]) e.emplace_back(i, *d.a[i][j]);
    nnz += static_cast<int>(e.size());
    ASSERT_EQ(s.cols[j], e) << "column " << j;
  }
  for (int i = 0; i < d.rows(); ++i) {
    Entries e;
    for (int j = 0; j < d.cols(); ++j)
      if (d.a[i][j]) e.emplace_back(j, *d.a[i][j]);
    ASSERT_EQ(s.rows[i], e) << "row " << i;
  }
  EXPECT_EQ(s.nnz, nnz);
  EXPECT_EQ(s.c, d.c);
  EXPECT_EQ(s.lo, d.lo);
  EXPECT_EQ(s.up, d.up);
  EXPECT_EQ(s.b, d.b);
  EXPECT_EQ(s.conTypes, d.types);
  EXPECT_EQ(s.rowNames, d.rowNames);
  EXPECT_EQ(s.colNames, d.colNames);
  // Name lookups see the current numbering.
  if (d.rows() > 0) {
    int idx = -1;
    EXPECT_EQ(QZgetConstraintIndex(m, d.rowNames.back().c_str(), &idx), 0);
    EXPECT_EQ(idx, d.rows() - 1);
  }
  if (d.cols() > 0) {
    int idx = -1;
    EXPECT_EQ(QZgetVariableIndex(m, d.colNames.front().c_str(), &idx), 0);
    EXPECT_EQ(idx, 0);
  }
}

class RandomOps {
 public:
  RandomOps(QZmodel m, unsigned seed) : m_(m), rng_(seed) {}

  void step() {
    switch (pick(0, 9)) {
      case 0: add_rows(); break;
      case 1: add_cols(); break;
      case 2: delete_rows(); break;
      case 3: delete_cols(); break;
      case 4:
      case 5: modify_column(); break;
      case 6: delete_entries(); break;
      case 7: modify_values(); break;
      case 8: widen(); break;
      default: add_rows(); add_cols(); break;
    }
  }
  const Dense& dense() const { return d_; }

 private:
  int pick(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng_); }
  double value() { return pick(-4, 4) * 0.5; }  // includes 0.0: explicit zeros are entries

  void add_rows() {
    const int k = pick(1, 3);
    std::vector<int> beg{0}, cols;
    std::vector<double> vals, rhs;
    std::string types;
    std::vector<std::string> names;
    for (int r = 0; r < k; ++r) {
      std::vector<std::optional<double>> row(d_.cols());
      for (int j = 0; j < d_.cols(); ++j)
        if (pick(0, 2) == 0) {
          row[j] = value();
          cols.push_back(j);
          vals.push_back(*row[j]);
        }
      beg.push_back(static_cast<int>(cols.size()));
      rhs.push_back(pick(-5, 5));
      types += "LGEN"[pick(0, 3)];
      names.push_back("r" + std::to_string(nextRow_++));
      d_.a.push_back(row);
      d_.b.push_back(rhs.back());
      d_.types += types.back();
      d_.rowNames.push_back(names.back());
    }
    std::vector<char*> np;
    for (auto& n : names) np.push_back(n.data());
    ASSERT_EQ(QZaddConstraints(m_, k, types.data(), np.data(), beg.data(), vals.data(),
                               cols.data(), rhs.data()),
              0);
  }

  void add_cols() {
    const int k = pick(1, 3);
    std::vector<int> beg{0}, rows;
    std::vector<double> vals, c, lo, up;
    std::vector<std::string> names;
    for (int j = 0; j < k; ++j) {
      for (auto& row : d_.a) row.emplace_back();
      for (int i = 0; i < d_.rows(); ++i)
        if (pick(0, 2) == 0) {
          const double v = value();
          rows.push_back(i);
          vals.push_back(v);
          // A repeated row in the input is summed into one entry.
          if (pick(0, 4) == 0) {
            rows.push_back(i);
            vals.push_back(1.0);
            d_.a[i].back() = v + 1.0;
          } else {
            d_.a[i].back() = v;
          }
        }
      beg.push_back(static_cast<int>(rows.size()));
      c.push_back(pick(-3, 3));
      lo.push_back(pick(0, 1) ? -QZ_INFINITY : pick(-2, 0));
      up.push_back(pick(0, 1) ? QZ_INFINITY : pick(1, 4));
      names.push_back("c" + std::to_string(nextCol_++));
      d_.c.push_back(c.back());
      d_.lo.push_back(lo.back());
      d_.up.push_back(up.back());
      d_.colNames.push_back(names.back());
    }
    std::vector<char*> np;
    for (auto& n : names) np.push_back(n.data());
    ASSERT_EQ(QZaddVariables(m_, k, nullptr, np.data(), beg.data(), nullptr, vals.data(),
                             rows.data(), c.data(), lo.data(), up.data()),
              0);
  }

  std::vector<int> subset(int n, int most) {
    std::set<int> s;
    const int k = std::min(n, pick(1, most));
    while (static_cast<int>(s.size()) < k) s.insert(pick(0, n - 1));
    std::vector<int> v(s.begin(), s.end());
    std::shuffle(v.begin(), v.end(), rng_);
    return v;
  }

  void delete_rows() {
    if (d_.rows() == 0) return;
    const std::vector<int> del = subset(d_.rows(), 2);
    ASSERT_EQ(QZdeleteConstraints(m_, static_cast<int>(del.size()), del.data()), 0);
    const std::set<int> gone(del.begin(), del.end());
    Dense out = d_;
    out.a.clear(), out.b.clear(), out.types.clear(), out.rowNames.clear();
    for (int i = 0; i < d_.rows(); ++i) {
      if (gone.count(i)) continue;
      out.a.push_back(d_.a[i]);
      out.b.push_back(d_.b[i]);
      out.types += d_.types[i];
      out.rowNames.push_back(d_.rowNames[i]);
    }
    d_ = out;
  }

  void delete_cols() {
    if (d_.cols() == 0) return;
    std::vector<int> del = subset(d_.cols(), 2);
    del.push_back(del.front());   // repeats and
    del.push_back(d_.cols() + 3);  // indices out of range are passed over
    ASSERT_EQ(QZdeleteVariables(m_, static_cast<int>(del.size()), del.data()), 0);
    const std::set<int> gone(del.begin(), del.end());
    Dense out = d_;
    out.c.clear(), out.lo.clear(), out.up.clear(), out.colNames.clear();
    for (auto& row : out.a) row.clear();
    for (int j = 0; j < d_.cols(); ++j) {
      if (gone.count(j)) continue;
      for (int i = 0; i < d_.rows(); ++i) out.a[i].push_back(d_.a[i][j]);
      out.c.push_back(d_.c[j]);
      out.lo.push_back(d_.lo[j]);
      out.up.push_back(d_.up[j]);
      out.colNames.push_back(d_.colNames[j]);
    }
    d_ = out;
  }

  void modify_column() {
    if (d_.rows() == 0 || d_.cols() == 0) return;
    const int j = pick(0, d_.cols() - 1);
    const int k = pick(1, 4);
    std::vector<int> rows;
    std::vector<double> vals;
    for (int q = 0; q < k; ++q) {
      rows.push_back(pick(0, d_.rows() - 1));  // any order, repeats allowed: the last wins
      vals.push_back(value());
      d_.a[rows.back()][j] = vals.back();
    }
    ASSERT_EQ(QZmodifyAj(m_, j, k, rows.data(), vals.data()), 0);
  }

  void delete_entries() {
    if (d_.rows() == 0 || d_.cols() == 0) return;
    const int j = pick(0, d_.cols() - 1);
    const std::vector<int> rows = subset(d_.rows(), 3);
    for (int i : rows) d_.a[i][j].reset();
    ASSERT_EQ(QZdeleteAj(m_, j, static_cast<int>(rows.size()), rows.data()), 0);
  }

  void modify_values() {
    if (d_.rows() > 0) {
      const int i = pick(0, d_.rows() - 1);
      const double b = pick(-9, 9);
      const char t = "LGEN"[pick(0, 3)];
      d_.b[i] = b;
      d_.types[i] = t;
      ASSERT_EQ(QZmodifyRHS(m_, 1, &i, &b), 0);
      ASSERT_EQ(QZmodifyConstraintType(m_, 1, &i, &t), 0);
    }
    if (d_.cols() > 0) {
      const int j = pick(0, d_.cols() - 1);
      const double c = pick(-9, 9), lo = pick(-3, 0), up = pick(0, 1) ? QZ_INFINITY : pick(1, 3);
      d_.c[j] = c;
      d_.lo[j] = lo;
      d_.up[j] = up;
      ASSERT_EQ(QZmodifyObjective(m_, 1, &j, &c), 0);
      ASSERT_EQ(QZmodifyLowerBounds(m_, 1, &j, &lo), 0);
      ASSERT_EQ(QZmodifyUpperBounds(m_, 1, &j, &up), 0);
    }
  }

  void widen() {
    std::vector<int> room(static_cast<size_t>(d_.cols()));
    for (int& r : room) r = pick(0, 3);
    if (!room.empty()) {
      ASSERT_EQ(QZaddEmptySpacesAcolumns(m_, room.data()), 0);
    }
    ASSERT_EQ(QZsetProbAllocSizes(m_, d_.cols() + pick(0, 20), -1, -1, pick(0, 200), -1, -1), 0);
  }

  QZmodel m_;
  std::mt19937 rng_;
  Dense d_;
  int nextRow_ = 0, nextCol_ = 0;
};

TEST_F(ModifyFixture, RandomSequencesMatchADenseReference) {
  for (unsigned seed : {1u, 7u, 42u, 2024u}) {
    SCOPED_TRACE(seed);
    QZmodel m = new_model();
    const int beg[] = {0};
    ASSERT_EQ(QZloadLPData(m, 0, 0, QZ_MIN, 0, nullptr, nullptr, nullptr, 0, beg, nullptr,
                           nullptr, nullptr, nullptr, nullptr),
              0);
    RandomOps ops(m, seed);
    for (int step = 0; step < 250; ++step) {
      ops.step();
      if (HasFatalFailure()) break;
      expect_matches(m, ops.dense());
      if (HasFatalFailure()) {
        ADD_FAILURE() << "step " << step;
        break;
      }
    }
    QZdeleteModel(&m);
  }
}

}  // namespace
}  // namespace zento::test
