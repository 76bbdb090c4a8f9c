// Data changes taken into an idle working record, so that the next solve starts warm from the
// same basis and, where the change allows, the same factorization.
#include "lp/simplex/glp_modify.h"

#include <cmath>

#include "lp/simplex/glp.h"

namespace zento {

namespace {

bool finite_lo(const Glp& g, int j) { return g.lb[j] > -g.infinity; }
bool finite_up(const Glp& g, int j) { return g.ub[j] < g.infinity; }

// Nonbasic state after a bound change, from the state before and which bound moved.
int moved_state(const Glp& g, int j, int st, double oldLo, double oldUp) {
  if (finite_lo(g, j) && finite_up(g, j) && g.lb[j] == g.ub[j]) return kFixed;
  switch (st) {
    case kFixed:
      if (oldLo != g.lb[j] && oldUp == g.ub[j] && finite_up(g, j)) return kAtUpper;
      if (finite_lo(g, j)) return kAtLower;
      return finite_up(g, j) ? kAtUpper : kFree;
    case kAtLower:
      if (!finite_lo(g, j)) return finite_up(g, j) ? kAtUpper : kFree;
      return kAtLower;
    case kAtUpper:
      if (!finite_up(g, j)) return finite_lo(g, j) ? kAtLower : kFree;
      return kAtUpper;
    case kFree:
      if (finite_lo(g, j)) return kAtLower;
      return finite_up(g, j) ? kAtUpper : kFree;
    default:
      return st;
  }
}

void drop_shift(Glp& g, int j) {
  if (g.shifted[j] != 0) {
    g.shifted[j] = 0;
    g.shift[j] = 0;
    --g.nshift;
  }
}

// The record holds primal values, tags and sums of the old data: the next run recomputes
// them on its first pass, and the method choice learns what kind of change came.
void values_changed(Glp& g, bool costs) {
  g.fiter = 0;
  g.duals_exact = false;
  if (costs)
    g.changed_costs = true;
  else
    g.changed_bounds = true;
}

}  // namespace

bool glp_is_idle(const Imodel& m) {
  if (!m.glp) return false;
  const Glp& g = *m.glp;
  return g.running == 0 && g.m == m.nCons && g.n == m.nVars;
}

int glp_take_rhs(Imodel& m, int row, double value) {
  Glp& g = *m.glp;
  if (row < 0 || row >= g.m || std::isnan(value)) return 1;
  if (value >= g.infinity) value = g.infinity;
  if (value <= -g.infinity) value = -g.infinity;
  g.rhs[row] = std::fabs(value) >= g.infinity ? value : value * g.rscal[row];
  values_changed(g, false);
  return 0;
}

int glp_take_bounds(Imodel& m, int col, double lower, double upper) {
  Glp& g = *m.glp;
  if (col < 0 || col >= g.n || std::isnan(lower) || std::isnan(upper)) return 1;
  const double inf = g.infinity;
  lower = lower <= -inf ? -inf : lower;
  upper = upper >= inf ? inf : upper;
  if (g.flipped[col]) {
    const double t = lower;
    lower = upper >= inf ? -inf : -upper;
    upper = t <= -inf ? inf : -t;
  }
  const double cs = g.cscal[col];
  const double oldLo = g.lb[col], oldUp = g.ub[col];
  g.lb[col] = g.lb0[col] = lower > -inf ? lower / cs : -inf;
  g.ub[col] = g.ub0[col] = upper < inf ? upper / cs : inf;
  drop_shift(g, col);
  if (g.cbas[col] < 0) g.cbas[col] = moved_state(g, col, g.cbas[col], oldLo, oldUp);
  if (!finite_lo(g, col) && !finite_up(g, col))
    g.cflag[col] |= kFlagFree;
  else
    g.cflag[col] &= ~kFlagFree;
  values_changed(g, false);
  return 0;
}

int glp_take_cost(Imodel& m, int col, double cost) {
  Glp& g = *m.glp;
  if (col < 0 || col >= g.n || !std::isfinite(cost)) return 1;
  double w = cost * g.oscal * g.cscal[col] * (g.objsense == -1 ? -1.0 : 1.0);
  if (g.flipped[col]) w = -w;
  g.cost[col] = g.cost0[col] = w;
  values_changed(g, true);
  return 0;
}

int glp_take_contype(Imodel& m, int row, char oldType, char newType) {
  Glp& g = *m.glp;
  if (row < 0 || row >= g.m) return 1;
  const int j = g.n + row;
  double lo, up;
  switch (newType) {
    case 'E': lo = 0; up = 0; break;
    case 'L':
    case 'G': lo = 0; up = g.infinity; break;
    case 'N': lo = -g.infinity; up = g.infinity; break;
    default: return 1;
  }
  // A change of side flips the stored entry of the logical; a basic one is in the
  // factorization, which is then made again on the next run from the same basis.
  const bool flip = (oldType == 'G') != (newType == 'G');
  if (flip) {
    for (int k = g.acols.beg[j]; k < g.acols.beg[j + 1]; ++k) g.acols.val[k] = -g.acols.val[k];
    if (!g.arows.beg.empty())
      for (int k = g.arows.beg[row]; k < g.arows.beg[row + 1]; ++k)
        if (g.arows.idx[k] == j) g.arows.val[k] = -g.arows.val[k];
    if (g.cbas[j] >= 0) {
      g.lu.invalidate();
      g.wfact = WFACT_REFACT;
      g.norms_valid = false;
    }
  }
  g.lb[j] = g.lb0[j] = lo;
  g.ub[j] = g.ub0[j] = up;
  drop_shift(g, j);
  g.rtype[row] = newType;
  if (newType == 'N')
    g.cflag[j] |= kFlagFree;
  else
    g.cflag[j] &= ~kFlagFree;
  if (g.cbas[j] < 0)
    g.cbas[j] = newType == 'E' ? kFixed : (newType == 'N' ? kFree : kAtLower);
  values_changed(g, false);
  return 0;
}

}  // namespace zento
