// simple_spre: the row and column scans. Empty and singleton rows, rows forced to a bound by
// their activity, infeasible rows, empty and fixed columns, and column singletons whose
// bounds the row implies (the row and the column leave together: a redundant inequality is
// the case of its own slack).
#include <algorithm>
#include <cmath>

#include "presolve/genpre_internal.h"
#include "presolve/records.h"

namespace zento::presolve {

void Presolver::delete_row_rec(int r, int slack) {
  std::vector<int>& cols = recInts_;
  std::vector<double>& vals = recDbls_;
  cols.clear();
  vals.clear();
  if (slack >= 0)
    for (const RowEnt& e : w.row[r]) {
      cols.push_back(e.col);
      vals.push_back(e.val);
    }
  post_.push_int(r);
  post_.push_int(slack);
  post_.push_ints(cols);
  post_.push_dbl(w.rhs[r]);
  post_.push_dbls(vals);
  post_.push_type(kRecDeleteRow);
  w.delete_row(r);
  if (slack >= 0) w.delete_col(slack);
  ++reductions_;
}

void Presolver::fix_col_rec(int c, double v, int row) {
  std::vector<int>& rows = recInts_;
  std::vector<double>& vals = recDbls_;
  rows.clear();
  vals.clear();
  for (const ColEnt& e : w.col[c]) {
    rows.push_back(e.row);
    vals.push_back(w.val(e));
  }
  post_.push_int(c);
  post_.push_int(row);
  post_.push_ints(rows);
  post_.push_dbl(v);
  post_.push_dbl(w.cost[c]);
  post_.push_dbl(w.lo[c]);
  post_.push_dbl(w.up[c]);
  post_.push_dbls(vals);
  post_.push_type(kRecFixCol);
  w.fix_col(c, v);
  if (row >= 0) w.delete_row(row);
  ++reductions_;
}

void Presolver::force_row_rec(int r, bool atMin) {
  std::vector<RowEnt>& ents = recRow_;
  ents.assign(w.row[r].begin(), w.row[r].end());
  std::vector<double>& fixAt = recDbls2_;
  fixAt.assign(ents.size(), 0.0);
  std::vector<int>& rows = recInts_;
  std::vector<double>& vals = recDbls_;
  for (size_t p = 0; p < ents.size(); ++p) {
    const int k = ents[p].col;
    const double a = ents[p].val;
    const bool lower = (a > 0) == atMin;
    fixAt[p] = lower ? w.lo[k] : w.up[k];
    rows.clear();
    vals.clear();
    for (const ColEnt& e : w.col[k])
      if (e.row != r) {
        rows.push_back(e.row);
        vals.push_back(w.val(e));
      }
    post_.push_int(k);
    post_.push_ints(rows);
    post_.push_dbl(a);
    post_.push_dbl(fixAt[p]);
    post_.push_dbl(w.cost[k]);
    post_.push_dbl(w.lo[k]);
    post_.push_dbl(w.up[k]);
    post_.push_dbls(vals);
  }
  post_.push_int(r);
  post_.push_int(atMin ? 0 : 1);
  post_.push_int(static_cast<int>(ents.size()));
  post_.push_type(kRecForceRow);
  for (size_t p = 0; p < ents.size(); ++p) w.fix_col(ents[p].col, fixAt[p]);
  w.delete_row(r);
  ++reductions_;
}

int Presolver::simple_spre() {
  int changed = 0;
  int r = 0, c = 0;
  for (;;) {
    bool any = false;
    while (w.pop_row(r)) {
      const int k = check_row(r);
      if (k < 0) return -1;
      any |= k > 0;
      if ((++polls_ & 255) == 0 && poll() != 0) return -1;
    }
    if (end_stage(kStageSp1, "sp1") != 0) return -1;
    while (w.pop_col(c)) {
      const int k = check_col(c);
      if (k < 0) return -1;
      any |= k > 0;
      if ((++polls_ & 255) == 0 && poll() != 0) return -1;
    }
    if (end_stage(kStageSpb, "spb") != 0) return -1;
    if (!any) break;
    changed = 1;
  }
  return changed;
}

int Presolver::check_row(int r) {
  const int len = w.row_len(r);
  const double b = w.rhs[r];
  if (len == 0) {
    if (std::fabs(b) > tol_infeas(0)) return infeasible();
    delete_row_rec(r, -1);
    return 1;
  }
  if (len == 1) {
    const RowEnt e = w.row[r][0];
    const int c = e.col;
    double v = b / e.val;
    const double l = w.lo[c], u = w.up[c];
    // Off its bounds by what the row can tolerate: the row decides, in its own measure.
    const double off = std::max(l - v, v - u);
    if (off > 0 && off * std::fabs(e.val) > tol_infeas(b)) return infeasible();
    v = std::min(std::max(v, l), u);
    fix_col_rec(c, v, r);
    return 1;
  }
  const Activity& a = w.activity(r);
  const bool check = (level_ & kBitBounds) != 0;
  const double scale = std::max(std::fabs(b), std::max(std::fabs(a.min), std::fabs(a.max)) * 1e-3);
  if (check && a.infMin == 0 && a.min > b + tol_infeas(scale)) return infeasible();
  if (check && a.infMax == 0 && a.max < b - tol_infeas(scale)) return infeasible();
  // Forcing: the activity can just reach b. The gap allowed is small enough that no column
  // could move off its bound by more than a tenth of the feasibility tolerance and still
  // meet the row.
  const bool nearMin = a.infMin == 0 && a.min <= b + tol_infeas(scale);
  const bool nearMax = a.infMax == 0 && a.max >= b - tol_infeas(scale);
  if (!nearMin && !nearMax) return 0;
  double minAbs = kInf;
  for (const RowEnt& e : w.row[r]) minAbs = std::min(minAbs, std::fabs(e.val));
  const double gap = 0.1 * reps_ * minAbs;
  if (nearMin && a.min >= b - gap) {
    force_row_rec(r, true);
    return 1;
  }
  if (nearMax && a.max <= b + gap) {
    force_row_rec(r, false);
    return 1;
  }
  return 0;
}

int Presolver::check_col(int c) {
  double l = w.lo[c], u = w.up[c];
  if (l > u) {
    if (l - u > tol_infeas(std::max(std::fabs(l), std::fabs(u)))) return infeasible();
    l = u = 0.5 * (l + u);
    w.set_bounds(c, l, u);
  }
  const int len = w.col_len(c);
  if (len == 0) {
    // The cost decides; a cost that pulls toward an infinite bound has no optimum if the rest
    // is feasible.
    const double cc = w.cost[c];
    const double t = 1e-10;
    double v;
    if (cc > t) {
      if (!finite_lo(l)) dual_infeasible();
      v = finite_lo(l) ? l : (finite_up(u) ? u : 0.0);
    } else if (cc < -t) {
      if (!finite_up(u)) dual_infeasible();
      v = finite_up(u) ? u : (finite_lo(l) ? l : 0.0);
    } else if (finite_lo(l) && finite_up(u)) {
      v = std::fabs(u) <= std::fabs(l) ? u : l;
    } else {
      v = finite_lo(l) ? l : (finite_up(u) ? u : 0.0);
    }
    fix_col_rec(c, v, -1);
    return 1;
  }
  if (l == u) {
    fix_col_rec(c, l, -1);
    return 1;
  }
  if (len == 1) return singleton_col(c);
  return 0;
}

// A column singleton in row r: when the row implies its bounds it leaves with the row;
// otherwise, in a row of two entries, it goes as a doubleton and hands its bounds on.
int Presolver::singleton_col(int c) {
  const ColEnt ce = w.col[c][0];
  const int r = ce.row;
  const double a = w.val(ce);
  const bool slack = w.slackRow[c] == r;
  // The multiplier of the row becomes c_j / a: keep it within reach of the costs.
  const double cj = w.cost[c];
  const bool pivotOk = cj == 0.0 || std::fabs(a) >= 1e-3 * w.row_max(r);
  if (pivotOk && implied_free(c, r, a)) return eliminate_rec(c, r, -1) < 0 ? -1 : 1;
  if ((level_ & kBitEliminate) && w.row_len(r) == 2) {
    const RowEnt& o = w.row[r][w.row[r][0].col == c ? 1 : 0];
    if (!slack && std::fabs(a) < 1e-3 * std::fabs(o.val)) return 0;
    return eliminate_rec(c, r, o.col) < 0 ? -1 : 1;
  }
  return 0;
}

}  // namespace zento::presolve
