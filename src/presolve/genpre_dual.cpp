// genpre_dual_fixing: bounds on the row multipliers from column singletons, and the columns
// whose reduced cost keeps one sign over those bounds.
//
// A column singleton x_k in row r with a finite lower bound only has d_k = c_k - a y_r >= 0
// at every optimum, so a y_r <= c_k; an upper bound only gives the mirror, a free column both
// (slack columns give the sign of the multipliers of inequalities). A column whose reduced
// cost stays above zero over those bounds sits at its lower bound in every optimum, and below
// zero at its upper bound; with that bound infinite the model has no optimum.
#include <algorithm>
#include <cmath>

#include "presolve/genpre_internal.h"

namespace zento::presolve {

int Presolver::genpre_dual_fixing() {
  std::vector<double>& ylo = sdbYlo_;
  std::vector<double>& yup = sdbYup_;
  ylo.assign(w.nrows, -kInf);
  yup.assign(w.nrows, kInf);
  const double t = std::max(reps_, ceps_);
  for (int k = 0; k < w.ncols; ++k) {
    if (!w.colAlive[k] || w.col_len(k) != 1) continue;
    const ColEnt e = w.col[k][0];
    const double a = w.val(e), c = w.cost[k], v = c / a;
    const bool lf = finite_lo(w.lo[k]), uf = finite_up(w.up[k]);
    if (lf && uf) continue;
    // a y <= c when only the lower bound is finite, a y >= c when only the upper, both if free.
    const bool le = !uf, ge = !lf;
    if ((le && a > 0) || (ge && a < 0)) yup[e.row] = std::min(yup[e.row], v);
    if ((le && a < 0) || (ge && a > 0)) ylo[e.row] = std::max(ylo[e.row], v);
  }
  for (int r = 0; r < w.nrows; ++r)
    if (w.rowAlive[r] && ylo[r] > yup[r] + t * (1 + std::fabs(yup[r]))) {
      dual_infeasible();
      return 0;
    }
  // A column that was not fixed last time, has not changed since and meets only rows whose
  // multiplier bounds are the same or looser, is not fixed now: its reduced cost range only
  // widened (rounding is monotone in every term). Only the others are looked at, in order.
  const bool first = sdbTick_ < 0;
  std::vector<char>& look = sdbLook_;
  look.assign(w.ncols, first ? 1 : 0);
  if (!first) {
    for (int j = 0; j < w.ncols; ++j)
      if (w.colTick[j] > sdbTick_) look[j] = 1;
    for (int r = 0; r < w.nrows; ++r)
      if (ylo[r] > sdbPrevLo_[r] || yup[r] < sdbPrevUp_[r])
        for (const RowEnt& e : w.row[r]) look[e.col] = 1;
  }
  sdbTick_ = w.tick;
  sdbPrevLo_ = ylo;
  sdbPrevUp_ = yup;
  int changed = 0;
  for (int j = 0; j < w.ncols; ++j) {
    if (!look[j]) continue;
    if (!w.colAlive[j] || w.col_len(j) == 0 || w.lo[j] == w.up[j]) continue;
    const double c = w.cost[j];
    double dmin = c, dmax = c;
    bool minInf = false, maxInf = false;
    for (const ColEnt& e : w.col[j]) {
      const double a = w.val(e), lo = ylo[e.row], hi = yup[e.row];
      // -a y over y in [lo, hi].
      if (a > 0) {
        if (hi >= kInf)
          minInf = true;
        else
          dmin -= a * hi;
        if (lo <= -kInf)
          maxInf = true;
        else
          dmax -= a * lo;
      } else {
        if (lo <= -kInf)
          minInf = true;
        else
          dmin -= a * lo;
        if (hi >= kInf)
          maxInf = true;
        else
          dmax -= a * hi;
      }
      if (minInf && maxInf) break;
    }
    const double tol = t * (1 + std::fabs(c));
    if (!minInf && dmin > tol) {
      if (!finite_lo(w.lo[j])) {
        dual_infeasible();
        return changed;
      }
      fix_col_rec(j, w.lo[j], -1);
      changed = 1;
    } else if (!maxInf && dmax < -tol) {
      if (!finite_up(w.up[j])) {
        dual_infeasible();
        return changed;
      }
      fix_col_rec(j, w.up[j], -1);
      changed = 1;
    }
    if ((++polls_ & 255) == 0 && poll() != 0) return -1;
  }
  if (end_stage(kStageSdb, "sdb") != 0) return -1;
  return changed;
}

}  // namespace zento::presolve
