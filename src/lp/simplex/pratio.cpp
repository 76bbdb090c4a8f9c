// Ratio tests of the primal method: `ratio2` while every basic variable is feasible, `ratio1`
// while some are not. Both are two-pass Harris tests: the first pass finds the largest step
// that keeps every blocking variable within its bound relaxed by `reps2`, the second picks,
// among the variables that block before that step, the one with the largest pivot.
#include <cmath>

#include "lp/simplex/spx_internal.h"
#include "lp/simplex/primal.h"

namespace zento {

namespace {

// Bound at which basic position p blocks when it moves with slope -a (a > 0: falls), or
// nothing. `feasible` selects the rules of ratio2.
bool blocking_bound(const Glp& g, int p, double a, bool feasible, double* bound) {
  const int j = g.rbas[p];
  const char t = g.rstat[p];
  if (t == 'F') return false;
  if (!feasible) {
    if (t == 'A') {
      if (a > 0) {
        *bound = g.ub[j];
        return true;
      }
      return false;
    }
    if (t == 'B') {
      if (a < 0) {
        *bound = g.lb[j];
        return true;
      }
      return false;
    }
  }
  if (a > 0) {
    if (g.lb[j] <= -g.infinity) return false;
    *bound = g.lb[j];
    return true;
  }
  if (g.ub[j] >= g.infinity) return false;
  *bound = g.ub[j];
  return true;
}

}  // namespace

// Returns the pivot position, -2 when nothing blocks, -3 when only tiny pivots block. `sgn`
// is +1 when the entering variable increases and -1 when it decreases.
int primal_ratio(Glp& g, const SVec& col, double sgn, double pivtol, double* out_ratio,
                 double* out_bigpiv) {
  const bool feasible = g.npinf == 0;
  const double inf = g.infinity;
  double T = inf;
  int found = 0;
  double bigpiv = 0;
  // Pass 1: the relaxed step.
  for (int k = 0; k < col.n; ++k) {
    const int p = col.idx[k];
    const double a = sgn * col.val[p];
    bigpiv = std::max(bigpiv, std::fabs(a));
    if (std::fabs(a) <= pivtol) continue;
    double bnd;
    if (!blocking_bound(g, p, a, feasible, &bnd)) continue;
    const double x = g.rhs1[p];
    const double rel = a > 0 ? (x - bnd + g.reps2) / a : (x - bnd - g.reps2) / a;
    if (rel < T) T = rel;
    ++found;
  }
  *out_bigpiv = bigpiv;
  if (found == 0) return -2;
  // Pass 2: largest pivot among the variables that block before T.
  int best = -1;
  double bestabs = 0, bestr = 0;
  for (int k = 0; k < col.n; ++k) {
    const int p = col.idx[k];
    const double a = sgn * col.val[p];
    if (std::fabs(a) <= pivtol) continue;
    double bnd;
    if (!blocking_bound(g, p, a, feasible, &bnd)) continue;
    const double r = (g.rhs1[p] - bnd) / a;
    if (r > T) continue;
    const double aa = std::fabs(a);
    if (aa > bestabs || (aa == bestabs && g.ppartial < 0 && best >= 0 && g.rbas[p] < g.rbas[best])) {
      bestabs = aa;
      best = p;
      bestr = r;
    }
  }
  if (best < 0) return -3;
  *out_ratio = bestr;
  return best;
}

}  // namespace zento
