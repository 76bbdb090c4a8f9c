// genpre_eliminator: columns substituted out through an equality row. A doubleton equation
// hands the bounds of the column it removes to the other column; an implied free column
// (its row implies its bounds) is substituted into its other rows within a fill budget, with
// a pivot no smaller than a hundredth of the largest entry of its row.
#include <algorithm>
#include <cmath>

#include "presolve/genpre_internal.h"
#include "presolve/records.h"

namespace zento::presolve {

namespace {

// Range of a x for x in [l, u] (infinite ends at +-kInf).
void scaled_range(double a, double l, double u, double& lo, double& hi) {
  const double p = finite_lo(l) ? a * l : (a > 0 ? -kInf : kInf);
  const double q = finite_up(u) ? a * u : (a > 0 ? kInf : -kInf);
  lo = std::min(p, q);
  hi = std::max(p, q);
}

}  // namespace

bool Presolver::implied_free(int c, int r, double a) {
  const double b = w.rhs[r], l = w.lo[c], u = w.up[c];
  // A finite bound of c is implied only by a finite end of the others' activity: the cached
  // counts of infinite contributions turn most candidates down before any sum is taken.
  if (finite_lo(l) || finite_up(u)) {
    const Activity& act = w.activity(r);
    const double atMin = a > 0 ? l : u, atMax = a > 0 ? u : l;
    const bool cMinInf = !(finite_lo(atMin) && finite_up(atMin));
    const bool cMaxInf = !(finite_lo(atMax) && finite_up(atMax));
    const bool mnInf = act.infMin - (cMinInf ? 1 : 0) > 0;
    const bool mxInf = act.infMax - (cMaxInf ? 1 : 0) > 0;
    // implLo comes from mx (a > 0) or mn, implUp from the other end.
    if (finite_lo(l) && (a > 0 ? mxInf : mnInf)) return false;
    if (finite_up(u) && (a > 0 ? mnInf : mxInf)) return false;
  }
  double mn, mx;
  w.activity_without(r, c, mn, mx);
  double implLo, implUp;
  if (a > 0) {
    implLo = mx >= kInf ? -kInf : (b - mx) / a;
    implUp = mn <= -kInf ? kInf : (b - mn) / a;
  } else {
    implLo = mn <= -kInf ? -kInf : (b - mn) / a;
    implUp = mx >= kInf ? kInf : (b - mx) / a;
  }
  const bool loOk = !finite_lo(l) || implLo >= l - tol_tight(l);
  const bool upOk = !finite_up(u) || implUp <= u + tol_tight(u);
  // The values the row gives must stay within reach of the column's own scale.
  auto sized = [](double v, double bound) {
    return !finite_lo(v) || !finite_up(v) || std::fabs(v) < 1e8 ||
           std::fabs(v) < 1e8 * std::max(1.0, std::fabs(bound));
  };
  return loOk && upOk && sized(implLo, l) && sized(implUp, u);
}

int Presolver::eliminate_rec(int c, int r, int k) {
  const int pc = w.find_in_row(r, c);
  const double a = w.row[r][pc].val, b = w.rhs[r];
  std::vector<int>& rowCols = recInts_;
  std::vector<int>& colRows = recInts2_;
  std::vector<double>& rowVals = recDbls_;
  std::vector<double>& colVals = recDbls2_;
  rowCols.clear();
  colRows.clear();
  rowVals.clear();
  colVals.clear();
  for (const RowEnt& e : w.row[r])
    if (e.col != c) {
      rowCols.push_back(e.col);
      rowVals.push_back(e.val);
    }
  for (const ColEnt& e : w.col[c])
    if (e.row != r) {
      colRows.push_back(e.row);
      colVals.push_back(w.val(e));
    }
  int flags = 0;
  double nlo = 0, nup = 0;
  if (k >= 0) {
    // x_c = (b - a_k x_k) / a in [l_c, u_c]  <=>  a_k x_k in [b - hi, b - lo].
    const double ak = w.row[r][w.find_in_row(r, k)].val;
    double lo, hi;
    scaled_range(a, w.lo[c], w.up[c], lo, hi);
    const double plo = hi >= kInf ? -kInf : b - hi, phi = lo <= -kInf ? kInf : b - lo;
    double tlo, tup;
    if (ak > 0) {
      tlo = plo <= -kInf ? -kInf : plo / ak;
      tup = phi >= kInf ? kInf : phi / ak;
    } else {
      tlo = phi >= kInf ? -kInf : phi / ak;
      tup = plo <= -kInf ? kInf : plo / ak;
    }
    if (!finite_lo(tlo)) tlo = -kInf;
    if (!finite_up(tup)) tup = kInf;
    nlo = w.lo[k];
    nup = w.up[k];
    if (!take_borrowed_bounds(tlo, tup, nlo, nup, flags)) return infeasible();
  }
  post_.push_int(c);
  post_.push_int(r);
  post_.push_int(k);
  post_.push_int(flags);
  post_.push_ints(rowCols);
  post_.push_ints(colRows);
  post_.push_dbl(a);
  post_.push_dbl(b);
  post_.push_dbl(w.cost[c]);
  post_.push_dbl(w.lo[c]);
  post_.push_dbl(w.up[c]);
  post_.push_dbls(rowVals);
  post_.push_dbls(colVals);
  post_.push_type(kRecEliminate);
  if (k >= 0) w.set_bounds(k, nlo, nup);
  substitute(c, r);
  ++reductions_;
  return 1;
}

void Presolver::substitute(int c, int r) {
  const double a = w.row[r][w.find_in_row(r, c)].val, b = w.rhs[r];
  std::vector<RowEnt>& prow = recRow_;
  prow.assign(w.row[r].begin(), w.row[r].end());
  const double cc = w.cost[c];
  if (cc != 0.0) {
    for (const RowEnt& e : prow)
      if (e.col != c) w.set_cost(e.col, w.cost[e.col] - cc * e.val / a);
    w.objConst += cc * b / a;
  }
  std::vector<ColEnt>& others = recCol_;
  others.clear();
  for (const ColEnt& e : w.col[c])
    if (e.row != r) others.push_back(e);
  std::vector<int>& marked = recMarked_;
  for (const ColEnt& oc : others) {
    const int i = oc.row;
    const int pci = w.find_in_row(i, c);
    const double f = -w.row[i][pci].val / a;
    marked.clear();
    for (size_t p = 0; p < w.row[i].size(); ++p) {
      pos_[w.row[i][p].col] = static_cast<int>(p);
      marked.push_back(w.row[i][p].col);
    }
    for (const RowEnt& e : prow) {
      if (e.col == c) continue;
      const double delta = f * e.val;
      const int p = pos_[e.col];
      if (p >= 0) {
        const double old = w.row[i][p].val, nv = old + delta;
        if (std::fabs(nv) <= 1e-12 * std::max(std::fabs(old), std::fabs(delta))) {
          w.erase_at(i, p);
          pos_[e.col] = -1;
          if (p < w.row_len(i)) pos_[w.row[i][p].col] = p;
          w.queue_col(e.col);
        } else {
          w.set_val(i, p, nv);
        }
      } else {
        w.add_entry(i, e.col, delta);
        pos_[e.col] = w.row_len(i) - 1;
        marked.push_back(e.col);
        w.queue_col(e.col);
      }
    }
    w.rhs[i] += f * b;
    const int pcNow = pos_[c];
    w.erase_at(i, pcNow);
    for (int col : marked) pos_[col] = -1;
    w.queue_row(i);
  }
  w.delete_col(c);
  w.delete_row(r);
}

int Presolver::genpre_eliminator(bool doubletonOnly) {
  int changed = 0;
  for (int r = 0; r < w.nrows; ++r) {
    if (!w.rowAlive[r] || w.row_len(r) != 2) continue;
    const int k = eliminate_doubleton(r);
    if (k < 0) return -1;
    changed |= k;
    if ((++polls_ & 255) == 0 && poll() != 0) return -1;
  }
  if (!doubletonOnly) {
    for (int c = 0; c < w.ncols; ++c) {
      if (!w.colAlive[c] || w.col_len(c) < 2) continue;
      const int k = eliminate_implied_free(c);
      if (k < 0) return -1;
      changed |= k;
      if ((++polls_ & 255) == 0 && poll() != 0) return -1;
    }
  }
  if (end_stage(kStageEli, "eli") != 0) return -1;
  return changed;
}

int Presolver::eliminate_doubleton(int r) {
  const RowEnt e0 = w.row[r][0], e1 = w.row[r][1];
  // Eliminate the column with fewer entries (no fill from a singleton), unless its pivot is
  // small next to the other's.
  RowEnt el = e0, ot = e1;
  if (w.col_len(e1.col) < w.col_len(e0.col) ||
      (w.col_len(e1.col) == w.col_len(e0.col) && std::fabs(e1.val) > std::fabs(e0.val)))
    std::swap(el, ot);
  if (std::fabs(el.val) < 1e-3 * std::fabs(ot.val)) std::swap(el, ot);
  return eliminate_rec(el.col, r, ot.col) < 0 ? -1 : 1;
}

int Presolver::eliminate_implied_free(int c) {
  constexpr int kMaxColLen = 10, kMaxRowLen = 40;
  const int len = w.col_len(c);
  if (len > kMaxColLen) return 0;
  int best = -1;
  long bestFill = 0;
  for (const ColEnt& e : w.col[c]) {
    const int r = e.row, rl = w.row_len(r);
    if (rl > kMaxRowLen || rl < 2) continue;
    const double a = w.val(e);
    if (std::fabs(a) < 1e-2 * w.row_max(r)) continue;
    const long fill = static_cast<long>(len - 1) * (rl - 1) - (len - 1) - (rl - 1);
    if (fill > 0 && fill > fillBudget_) continue;
    if (best >= 0 && rl >= w.row_len(best)) continue;
    if (!implied_free(c, r, a)) continue;
    best = r;
    bestFill = fill;
  }
  if (best < 0) return 0;
  if (bestFill > 0) fillBudget_ -= bestFill;
  return eliminate_rec(c, best, -1) < 0 ? -1 : 1;
}

}  // namespace zento::presolve
