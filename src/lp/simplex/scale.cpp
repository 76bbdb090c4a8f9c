// Scaling of the working form: powers of two on rows and columns (geometric passes, then an
// equilibration), an objective scale, and the weight `bigM` of the composite objective.
//
// Factors are exact powers of two, so scaling never perturbs a coefficient: unscaling gives
// back the model's numbers bit for bit.
#include <algorithm>
#include <cmath>

#include "core/log.h"
#include "core/model.h"
#include "lp/simplex/glp.h"
#include "lp/simplex/spx_internal.h"

namespace zento {

namespace {

constexpr double kIntScaleFloor = 0.015625;  // 2^-6

// Power of two that brings a geometric mean sqrt(p) near [1, 2].
double geo_factor(double p) {
  if (p == 0.0 || (p >= 1.0 && p <= 4.0)) return 1.0;
  const double s = std::sqrt(p);
  if (p > 4.0) {
    double d = 4.0;
    while (d < s) d *= 2.0;
    return 2.0 / d;
  }
  double d = 2.0;
  while (s * d < 1.0) d *= 2.0;
  return d;
}

// Power of two that brings a largest entry into [1, 2].
double equi_factor(double mx) {
  if (mx == 0.0 || (mx >= 1.0 && mx <= 2.0)) return 1.0;
  if (mx > 2.0) {
    double d = 4.0;
    while (d < mx) d *= 2.0;
    return 2.0 / d;
  }
  double d = 2.0;
  while (mx * d < 1.0) d *= 2.0;
  return d;
}

struct Scaler {
  Glp& g;
  std::vector<double> rmin, rmax;
  bool int_rule(int j) const {
    if (!g.mip_relax || !g.isint[j]) return false;
    return g.lb[j] > -g.infinity && g.ub[j] < g.infinity;
  }
  double limit_int(int j, double f) const {
    if (int_rule(j) && g.cscal[j] * f < kIntScaleFloor) return kIntScaleFloor / g.cscal[j];
    return f;
  }
  void scale_col(int j, double f) {
    if (f == 1.0) return;
    g.cscal[j] *= f;
    for (int k = g.acols.beg[j]; k < g.acols.beg[j + 1]; ++k) g.acols.val[k] *= f;
  }
  void row_extremes() {
    rmin.assign(g.m, 1e300);
    rmax.assign(g.m, 0.0);
    for (int j = 0; j < g.n; ++j)
      for (int k = g.acols.beg[j]; k < g.acols.beg[j + 1]; ++k) {
        const double a = std::fabs(g.acols.val[k]);
        const int i = g.acols.idx[k];
        rmin[i] = std::min(rmin[i], a);
        rmax[i] = std::max(rmax[i], a);
      }
  }
  void apply_rows(const std::vector<double>& f) {
    for (int i = 0; i < g.m; ++i) g.rscal[i] *= f[i];
    for (int j = 0; j < g.n; ++j)
      for (int k = g.acols.beg[j]; k < g.acols.beg[j + 1]; ++k) g.acols.val[k] *= f[g.acols.idx[k]];
  }
  double cond() const {
    double mx = 0, mn = 1e300;
    for (int j = 0; j < g.n; ++j)
      for (int k = g.acols.beg[j]; k < g.acols.beg[j + 1]; ++k) {
        const double a = std::fabs(g.acols.val[k]);
        mx = std::max(mx, a);
        mn = std::min(mn, a);
      }
    return mx > 0 ? mx / mn : 1.0;
  }
  int row_pass(bool equi) {
    row_extremes();
    std::vector<double> f(g.m, 1.0);
    int changed = 0;
    for (int i = 0; i < g.m; ++i) {
      if (rmax[i] == 0.0) continue;
      f[i] = equi ? equi_factor(rmax[i]) : geo_factor(rmin[i] * rmax[i]);
      if (f[i] != 1.0) ++changed;
    }
    apply_rows(f);
    return changed;
  }
  int col_pass(bool equi) {
    int changed = 0;
    for (int j = 0; j < g.n; ++j) {
      double mn = 1e300, mx = 0;
      for (int k = g.acols.beg[j]; k < g.acols.beg[j + 1]; ++k) {
        const double a = std::fabs(g.acols.val[k]);
        mn = std::min(mn, a);
        mx = std::max(mx, a);
      }
      if (mx == 0.0) continue;
      double f = equi ? equi_factor(mx) : geo_factor(mn * mx);
      f = limit_int(j, f);
      if (f != 1.0) {
        scale_col(j, f);
        ++changed;
      }
    }
    return changed;
  }
};

// Scales the objective by a power of two; returns 1 when its range is too wide for that.
int scale_objective(Glp& g) {
  if (!(g.lptool & kToolScaleObjRow)) return 0;
  double cmax = 0, cmin = 1e300;
  for (int j = 0; j < g.n; ++j) {
    const double c = std::fabs(g.cost[j]);
    if (c == 0.0) continue;
    cmax = std::max(cmax, c);
    cmin = std::min(cmin, c);
  }
  if (cmax == 0.0) return 0;
  if (cmax > cmin * 1e8) return 1;
  const double os = equi_factor(cmax);
  if (os <= 0.001 || os == 1.0) return 0;
  g.oscal = os;
  for (int j = 0; j < g.n; ++j) g.cost[j] *= os;
  return 0;
}

int hyb_scaler(Glp& g) {
  Scaler s{g, {}, {}};
  const bool rows = g.scale == 1 || g.scale == 2;
  const bool cols = g.scale == 1 || g.scale == 3;
  double prev = g.infinity;
  for (int pass = 0; pass < 10; ++pass) {
    const double c = s.cond();
    if (pass == 0) g.condsc = c;
    if (prev - c < 0.05 * prev) break;
    prev = c;
    int changed = 0;
    if (rows) changed += s.row_pass(false);
    if (!rows) {
      s.col_pass(false);
      break;
    }
    if (!cols) break;
    changed += s.col_pass(false);
    if (changed * 10 < g.m + g.n) break;
  }
  if (rows) s.row_pass(true);
  if (cols) s.col_pass(true);
  // Bounds, costs and right-hand sides into the scaled space.
  for (int j = 0; j < g.n; ++j) {
    const double cs = g.cscal[j];
    if (g.lb[j] > -g.infinity) g.lb[j] /= cs;
    if (g.ub[j] < g.infinity) g.ub[j] /= cs;
    g.cost[j] *= cs;
  }
  for (int i = 0; i < g.m; ++i) {
    const double rs = g.rscal[i];
    if (g.rhs[i] > -g.infinity && g.rhs[i] < g.infinity) g.rhs[i] *= rs;
    const int jl = g.n + i;
    if (g.lb[jl] > -g.infinity) g.lb[jl] *= rs;
    if (g.ub[jl] < g.infinity) g.ub[jl] *= rs;
  }
  return scale_objective(g);
}

void set_bigm(Glp& g, const char* why) {
  QZlogmod(g.model, g.printlevel > 3 ? 1 : 0, "\n%c%6d %8.0f : new bigM:%e (factor:%e), file=%s(%d)",
           g.itype, g.nfact, g.iter, g.bigM, g.bigM / g.bigM0, why, __LINE__);
}

}  // namespace

void QZI_spx_mscale(Glp& g) {
  int wide = 0;
  g.condsc = g.cond0;
  if (g.scale > 0) wide = hyb_scaler(g);
  double cmax = 0;
  for (int j = 0; j < g.n; ++j) cmax = std::max(cmax, std::fabs(g.cost[j]));
  if (cmax == 0.0) cmax = 1.0;
  const double floor = (std::sqrt(cmax) + 1.0) * 1e-10;
  double cmin = cmax;
  for (int j = 0; j < g.n; ++j) {
    const double c = std::fabs(g.cost[j]);
    if (c >= floor) cmin = std::min(cmin, c);
  }
  g.bigM = g.bigM0;
  if (!wide) {
    g.bigM *= cmax;
    if (cmin * 1e5 < cmax && cmin < 100) g.bigM *= 1000;
  } else {
    double f = 1.0 / cmax;
    while (f < 1e-6) f *= 10;
    while (cmin * f < 1e-6) f *= 10;
    g.oscal = f;
    for (int j = 0; j < g.n; ++j) g.cost[j] *= f;
    cmax *= f;
    cmin *= f;
    QZlogmod(g.model, g.printlevel > 2 ? 1 : 0, "\nRescaling    (c): %g  %g  %g %s (*)", cmin,
             cmax, cmax / cmin, "");
    g.bigM *= cmax;
    if (cmax > cmin * 1e7 && cmax < 1000)
      g.bigM *= 10000;
    else if (cmin * 1e5 < cmax && cmin < 100)
      g.bigM *= 100;
  }
  if (g.bigM != g.bigM0) set_bigm(g, "scale.cpp");
  if (g.oscal < 0.1 && (g.lptool & kToolOscalCeps)) {
    QZlogmod(g.model, g.printlevel > 2 ? 1 : 0,
             "\nWarning: turned off OSCAL_CEPS (scaling of ceps w.r.t. oscal). oscal:%g", g.oscal);
    g.lptool &= ~kToolOscalCeps;
  }
  g.bigMentry = g.bigM;
}

}  // namespace zento
