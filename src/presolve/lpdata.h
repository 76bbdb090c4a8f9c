// The working copy of an LP inside the presolver (`lpdata`).
//
// The copy is in minimization form and every row is an equality: an inequality row gets a
// slack column of its own (coefficient +1 for 'L', -1 for 'G', bounds [0, inf), cost 0), so
// that later stages see one row type and a redundant side of a row shows up as a slack whose
// bounds are implied. The matrix is held twice, by rows and by columns, with cross positions
// in the entries: an entry leaves both lists in constant time (the last entry of a list takes
// its place), so removals never cost a scan. Values live in the row entries only.
//
// Row activity bounds (sums of the finite contributions and counts of infinite ones) are
// cached per row and recomputed when a row is stale. Rows and columns whose data changed are
// queued, so the simple passes look only at what changed since they last ran.
#pragma once

#include <cstdint>
#include <vector>

#include "core/model.h"

namespace zento::presolve {

constexpr double kInf = 1e30;
// Bounds at or beyond this size count as infinite in activity sums and bound transfers.
constexpr double kBigBound = 1e15;

inline bool finite_lo(double v) { return v > -kBigBound; }
inline bool finite_up(double v) { return v < kBigBound; }

struct RowEnt {
  int col;
  int cpos;  // position of the twin entry in the column list
  double val;
};

struct ColEnt {
  int row;
  int rpos;  // position of the entry in the row list
};

struct Activity {
  double min = 0, max = 0;
  int infMin = 0, infMax = 0;  // contributions that are infinite
  double amax = 0;             // largest absolute value of the row
  double mag = 0;              // sum of the absolute finite contributions (rounding scale)
  bool stale = true;
};

class LpWork {
 public:
  // Copies the linear part of `m`; 'N' rows come in dead.
  int load(const Imodel& m);

  int n0 = 0, m0 = 0;        // columns and rows of the user's model
  int ncols = 0, nrows = 0;  // working columns (user's, then slacks) and rows
  std::vector<std::vector<RowEnt>> row;
  std::vector<std::vector<ColEnt>> col;
  std::vector<double> cost, lo, up, rhs;
  std::vector<char> rowAlive, colAlive;
  std::vector<char> rowType;           // the user's row type
  std::vector<int> slackCol;           // per row: its slack column, or -1
  std::vector<int> slackRow;           // per column: the row whose slack it is, or -1
  std::vector<signed char> slackSign;  // per column: +1 / -1 for slacks, 0 otherwise
  double objConst = 0;                 // minimization form
  double sense = 1;                    // +1 minimize, -1 maximize (the user's)
  int rowsAlive = 0, colsAlive = 0;
  long nnz = 0;
  // Set whenever an entry of the row / column is added, removed or changed; the duplicate
  // searches clear them as they refresh their cached keys.
  std::vector<char> rowEdited, colEdited;
  // A clock of column changes (entries, bounds, cost, removal) and the tick of each column's
  // last change: a search can tell what changed since it last ran.
  long tick = 0;
  std::vector<long> colTick;

  double val(const ColEnt& e) const { return row[e.row][e.rpos].val; }
  int row_len(int r) const { return static_cast<int>(row[r].size()); }
  int col_len(int c) const { return static_cast<int>(col[c].size()); }

  // A new column (for slacks); returns its index.
  int add_column(double c, double l, double u);
  void add_entry(int r, int c, double v);
  // Removes the entry at position p of row r from both lists.
  void erase_at(int r, int p);
  void set_val(int r, int p, double v);
  // Position of column c in row r, or -1.
  int find_in_row(int r, int c) const;

  // Kills a row or a column with all its entries; neighbours are queued.
  void delete_row(int r);
  void delete_col(int c);
  // Removes column c at value v: right-hand sides and the constant take it.
  void fix_col(int c, double v);
  // New bounds of a column; the rows it meets are queued.
  void set_bounds(int c, double l, double u);
  void set_cost(int c, double v) {
    cost[c] = v;
    colTick[c] = ++tick;
    queue_col(c);
  }

  // A slack column still in its own shape: alone in its row, zero cost.
  bool pure_slack(int c) const;

  const Activity& activity(int r);
  // Range of row r's activity without column c (infinite ends at +-kInf). Long rows take it
  // from the cached sums, so that a scan of many columns of one row stays linear.
  void activity_without(int r, int c, double& mn, double& mx);
  // Largest absolute value of the row.
  double row_max(int r) { return activity(r).amax; }

  // Work queues.
  void queue_row(int r);
  void queue_col(int c);
  void queue_all();
  bool pop_row(int& r);
  bool pop_col(int& c);

 private:
  std::vector<Activity> act_;
  std::vector<char> rowQueued_, colQueued_;
  std::vector<int> rowQueue_, colQueue_;
  size_t rowHead_ = 0, colHead_ = 0;
};

}  // namespace zento::presolve
