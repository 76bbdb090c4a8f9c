// The dual simplex method `dsimplex`.
//
// Bounded dual simplex on the working form (Koberstein, "The dual simplex method, techniques
// for a fast and stable implementation", 2005). Phase 1 solves the auxiliary problem whose
// bounds are -1, 0, 1 by the kind of each column (the subproblem approach): its optimum is a
// dual feasible basis of the true problem or proves dual infeasibility. Phase 2 chooses the
// leaving row by dual steepest edge (exact initial norms), dual Devex or Dantzig, forms the
// pivot row row-wise when the multiplier vector is sparse, and runs the long-step
// (bound-flipping) ratio test with a Harris pass for a large pivot, or the plain two-pass
// Harris test. Small dual infeasibilities are absorbed by cost shifts; when they are taken out
// at the end and the basis is no longer dual feasible, the primal method finishes.
#include <algorithm>
#include <cmath>

#include "core/log.h"
#include "core/model.h"
#include "lp/simplex/spx_internal.h"

namespace zento {

namespace {

struct Cand {
  int j;
  double ratio;
  double abs_alpha;
};

struct Dual {
  Glp& g;
  std::vector<double> costeff;
  std::vector<Cand> cands;
  std::vector<int> flips;
  bool phase1 = false;
  std::vector<double> save_lb, save_ub, save_rhs;

  explicit Dual(Glp& gg) : g(gg) {}

  // Running mean lengths of the solved unit row and of its DSE solve: once they run dense the
  // engine is told, and goes straight to its dense triangular loops.
  static constexpr double kDenseRho = 0.15, kDenseTau = 0.3;
  double rho_mean = 0, tau_mean = 0;

  double dtol() const {
    double t = g.ceps;
    if (g.lptool & kToolOscalCeps) t *= g.oscal;
    return t;
  }
  bool boxed(int j) const { return g.lb[j] > -g.infinity && g.ub[j] < g.infinity; }

  void set_costeff() {
    const int N = g.n + g.m;
    costeff.resize(N);
    for (int j = 0; j < N; ++j) costeff[j] = g.cost[j] + g.rdcshift[j];
  }

  void recompute_duals() {
    set_costeff();
    compute_dual(g, costeff.data());
    compute_rdc(g, costeff.data());
    g.duals_exact = !g.dperturbed && !phase1;
  }

  // Wrong-signed reduced costs beyond the tolerance, boxed columns included.
  int count_dual_infeasibilities() {
    const int N = g.n + g.m;
    const double t = dtol();
    int cnt = 0;
    for (int j = 0; j < N; ++j) {
      const int s = g.cbas[j];
      if (s >= 0 || s == kFixed) continue;
      const double d = g.rdc[j];
      const double viol = s == kAtLower ? -d : (s == kAtUpper ? d : std::fabs(d));
      cnt += viol > t;
    }
    return cnt;
  }

  // Flips boxed columns to the side their reduced cost likes; counts and optionally shifts the
  // other dual infeasibilities. Returns the number of those left unshifted.
  int fix_dual_infeasibilities(bool shift) {
    const int N = g.n + g.m;
    const double t = dtol();
    int left = 0;
    bool flipped = false;
    double sum = 0;
    for (int j = 0; j < N; ++j) {
      const int s = g.cbas[j];
      if (s >= 0 || s == kFixed) continue;
      const double d = g.rdc[j];
      double viol = 0;
      if (s == kAtLower) viol = -d;
      else if (s == kAtUpper) viol = d;
      else viol = std::fabs(d);
      if (viol <= t) continue;
      if (boxed(j) && s != kFree) {
        g.cbas[j] = s == kAtLower ? kAtUpper : kAtLower;
        flipped = true;
        continue;
      }
      if (shift) {
        const double target = (s == kAtLower ? 1.0 : (s == kAtUpper ? -1.0 : 0.0)) * g.urand() * t;
        g.rdcshift[j] += target - d;
        g.rdc[j] = target;
        g.dperturbed = 1;
        g.duals_exact = false;
      } else {
        ++left;
        sum += viol;
      }
    }
    g.ndinf = left;
    g.sumdinf = sum;
    return flipped ? -1 - left : left;
  }

  // Row weights. Weights of the same basis under the same rule are kept from the last run;
  // a warm start without them takes unit weights rather than m solves.
  void init_norms() {
    if (g.norms_valid && g.norms_mode == g.dpricemode) return;
    std::fill(g.dual_norm.begin(), g.dual_norm.end(), 1.0);
    g.norms_valid = true;
    g.norms_mode = g.dpricemode;
    if (g.dpricemode != 1 || g.crash) return;
    if (g.gflags & kGflagWarm) {
      if (spx_log_on(g, 3)) QZlogmod(g.model, 1, "\nSetting dual norms to unity for reopt...");
      return;
    }
    if (spx_log_on(g, 3)) QZlogmod(g.model, 1, "\nInitializing dual norms...");
    SVec& r = g.rho;
    for (int p = 0; p < g.m; ++p) {
      r.set_unit(p, 1.0);
      g.lu.btran(r);
      double s = 0;
      for (int k = 0; k < r.n; ++k) s += r.val[r.idx[k]] * r.val[r.idx[k]];
      g.dual_norm[p] = std::max(s, 1e-8);
    }
    r.clear();
  }

  // Primal infeasibility, kept row by row as the values move: the signed violation of each
  // row and the list of violated rows, so that the choice of the leaving row never scans the
  // feasible ones.
  std::vector<double> pdelta;
  std::vector<int> inlist, inpos;
  // Sorted candidate list: the best rows of the list at its last build, plus rows that turned
  // infeasible since; rebuilt after a share of its size in picks.
  std::vector<int> cand, fresh;
  int cand_picks = 0;
  bool cand_valid = false;

  void set_row(int p) {
    const int j = g.rbas[p];
    const double x = g.rhs1[p], t = g.reps;
    double d = 0;
    if (x < g.lb[j] - t) d = x - g.lb[j];
    else if (x > g.ub[j] + t) d = x - g.ub[j];
    pdelta[p] = d;
    if (d != 0) {
      if (inpos[p] < 0) {
        inpos[p] = static_cast<int>(inlist.size());
        inlist.push_back(p);
        fresh.push_back(p);
      }
    } else if (inpos[p] >= 0) {
      const int k = inpos[p], last = inlist.back();
      inlist[k] = last;
      inpos[last] = k;
      inlist.pop_back();
      inpos[p] = -1;
    }
  }

  void rebuild_infeas() {
    pdelta.assign(g.m, 0.0);
    inpos.assign(g.m, -1);
    inlist.clear();
    fresh.clear();
    for (int p = 0; p < g.m; ++p) set_row(p);
    cand_valid = false;
  }

  // Values of the basic variables afresh, and the infeasibility list with them.
  void primal() {
    compute_primal(g);
    rebuild_infeas();
  }

  double score(int p) const {
    const double d = pdelta[p];
    return d * d / (g.dpricemode == 0 ? 1.0 : g.dual_norm[p]);
  }

  // Best row of a list by the pricing rule; ties go to the lower row.
  int best_of(const std::vector<int>& rows, int best, double* bs) const {
    for (int p : rows) {
      if (pdelta[p] == 0 || g.rowrej[p]) continue;
      const double sc = score(p);
      if (sc > *bs || (sc == *bs && best >= 0 && p < best)) {
        *bs = sc;
        best = p;
      }
    }
    return best;
  }

  int list_size() const {
    return std::max(20, static_cast<int>(std::pow(static_cast<double>(g.m), 0.7)));
  }

  // Leaving row by the pricing rule; -1 when no row is violated (or all violated rows are
  // rejected).
  int chuzr(double* delta) {
    g.npinf = static_cast<int>(inlist.size());
    const int K = list_size();
    double bs = 0;
    int best = -1;
    if (g.npinf <= K) {
      fresh.clear();
      cand_valid = false;
      best = best_of(inlist, -1, &bs);
    } else {
      if (!cand_valid || cand_picks >= K / 4 || static_cast<int>(fresh.size()) > K) {
        cand = inlist;
        auto better = [&](int a, int b) {
          const double sa = score(a), sb = score(b);
          return sa > sb || (sa == sb && a < b);
        };
        std::nth_element(cand.begin(), cand.begin() + K, cand.end(), better);
        cand.resize(K);
        fresh.clear();
        cand_picks = 0;
        cand_valid = true;
      }
      ++cand_picks;
      best = best_of(cand, -1, &bs);
      best = best_of(fresh, best, &bs);
      // Every candidate turned feasible or rejected: the whole list decides.
      if (best < 0) best = best_of(inlist, -1, &bs);
    }
    if (best >= 0) *delta = pdelta[best];
    return best;
  }

  // Count and sum of the primal infeasibilities, for the progress test and the trace.
  void chuzr_counts() {
    g.npinf = static_cast<int>(inlist.size());
    double sum = 0;
    for (int p : inlist) sum += std::fabs(pdelta[p]);
    g.sumpinf = sum;
  }

  // Long-step ratio test on the pivot row; returns the entering column or -1, with the
  // columns to flip in `flips`.
  int ratio_test(double delta, int s, double* step) {
    cands.clear();
    flips.clear();
    const double t = dtol();
    for (int k = 0; k < g.prow_n; ++k) {
      const int j = g.prow_idx[k];
      const int st = g.cbas[j];
      if (st >= 0 || st == kFixed || (g.cflag[j] & kFlagRejected)) continue;
      const double a = s * g.prow[j];
      if (std::fabs(a) <= g.pvteps) continue;
      double dd;  // dual slack, >= -t when dual feasible
      if (st == kAtLower) {
        if (a >= 0) continue;
        dd = g.rdc[j];
      } else if (st == kAtUpper) {
        if (a <= 0) continue;
        dd = -g.rdc[j];
      } else {
        dd = a < 0 ? g.rdc[j] : -g.rdc[j];
      }
      cands.push_back({j, std::max(dd, 0.0) / std::fabs(a), std::fabs(a)});
    }
    if (cands.empty()) return -1;
    // The long step passes candidates in increasing ratio. Those within the Harris bound come
    // first and are few; only when the step passes all of them are the others sorted too.
    auto before = [](const Cand& x, const Cand& y) {
      return x.ratio < y.ratio || (x.ratio == y.ratio && x.j < y.j);
    };
    double T0 = 1e300;
    for (const Cand& c : cands) T0 = std::min(T0, c.ratio + t / c.abs_alpha);
    const auto nearEnd = std::partition(cands.begin(), cands.end(),
                                        [T0](const Cand& c) { return c.ratio <= T0; });
    std::sort(cands.begin(), nearEnd, before);
    size_t sorted = static_cast<size_t>(nearEnd - cands.begin());
    size_t stop = 0;
    if (g.dratio == 1 || g.dratio == 2) {
      double slope = std::fabs(delta);
      for (;;) {
        if (stop == sorted) {
          if (sorted == cands.size()) break;
          std::sort(cands.begin() + sorted, cands.end(), before);
          sorted = cands.size();
        }
        if (stop + 1 == cands.size()) break;
        const int j = cands[stop].j;
        if (!boxed(j) || g.cbas[j] == kFree) break;
        const double dec = cands[stop].abs_alpha * (g.ub[j] - g.lb[j]);
        if (slope - dec <= 0) break;
        slope -= dec;
        flips.push_back(j);
        ++stop;
      }
    }
    // Harris pass over the candidates not passed: the largest pivot among those within the
    // tolerance of the smallest relaxed ratio; ties go to the smaller ratio, then index.
    double T = 1e300;
    for (size_t k = stop; k < cands.size(); ++k)
      T = std::min(T, cands[k].ratio + t / cands[k].abs_alpha);
    size_t pick = cands.size();
    for (size_t k = stop; k < cands.size(); ++k) {
      const Cand& c = cands[k];
      if (c.ratio > T) continue;
      if (pick == cands.size() || c.abs_alpha > cands[pick].abs_alpha ||
          (c.abs_alpha == cands[pick].abs_alpha && before(c, cands[pick])))
        pick = k;
    }
    *step = cands[pick].ratio;
    g.nflip_d = static_cast<int>(flips.size()) + 1;
    return cands[pick].j;
  }

  // Lagrangian bound of the true costs at y = B^-T c_B: valid for any basis, primal feasible
  // or not, and whatever shifts the method holds. Wrong-signed reduced costs within the
  // optimality tolerance on an infinite side count as zero; beyond it there is no bound.
  bool lagrangian_bound(double* out) {
    SVec& y = g.wvec2;
    y.clear();
    for (int p = 0; p < g.m; ++p) y.val[p] = g.cost[g.rbas[p]];
    y.n = -1;
    y.pack(0.0);
    g.lu.btran(y);
    double L = 0;
    for (int i = 0; i < g.m; ++i) L += g.rhs[i] * y.val[i];
    const int N = g.n + g.m;
    const double t = dtol();
    bool ok = true;
    for (int j = 0; j < N && ok; ++j) {
      if (g.cbas[j] >= 0) continue;
      const double d = g.cost[j] - col_dot(g, j, y.val);
      if (d == 0.0) continue;
      const double bnd = d > 0 ? g.lb[j] : g.ub[j];
      if (std::fabs(bnd) >= g.infinity) {
        if (std::fabs(d) > t) ok = false;
        continue;
      }
      L += d * bnd;
    }
    y.clear();
    *out = L;
    return ok;
  }

  // Whether the bound has passed the cutoff (both in the user's sense).
  bool cutoff_reached() {
    double L = 0;
    if (!lagrangian_bound(&L)) return false;
    const double z = L / g.oscal + g.objconst;
    const double cut = g.cutoff * g.objsense;
    if (!(z > cut + 1e-9 * (1 + std::fabs(cut)))) return false;
    g.cutoff_bound = z * g.objsense;
    if (spx_log_on(g, 2)) QZlogmod(g.model, 1, "\nWarning: stopping at cutoff obj=%e ", z * g.objsense);
    return true;
  }

  double objective() const {
    double s = 0;
    const int N = g.n + g.m;
    for (int j = 0; j < N; ++j) {
      const double x = g.cbas[j] >= 0 ? g.rhs1[g.cbas[j]] : nbval(g, j);
      if (x != 0.0) s += g.cost0[j] * x;
    }
    return s;
  }

  void log_trace() {
    if (!spx_log_on(g, 3)) return;
    QZlogmod(g.model, 1, "\n%c%6d %8.0f %16.8e %6d %12.4e %6d%s", g.itype, g.nfact, g.iter,
             (objective() / g.oscal + g.objconst) * g.objsense, g.npinf, g.sumpinf, g.ndinf,
             phase1 ? " (ph1)" : (g.dperturbed ? " (pert)" : ""));
  }

  // One iteration on leaving row p. Returns 0, or 1 when the row was rejected.
  int iterate(int p, double delta) {
    g.duals_exact = false;
    const int s = delta < 0 ? 1 : -1;  // 1: leaves to its lower bound
    SVec& rho = g.rho;
    rho.set_unit(p, 1.0);
    g.lu.btran(rho, rho_mean > kDenseRho * g.m);
    rho_mean = 0.95 * rho_mean + 0.05 * rho.n;
    double beta = 0;
    for (int k = 0; k < rho.n; ++k) beta += rho.val[rho.idx[k]] * rho.val[rho.idx[k]];
    g.pivnorm2 = beta;
    compute_pivrow(g, rho);
    double step = 0;
    const int q = ratio_test(delta, s, &step);
    if (q < 0) {
      if (!g.lu.fresh()) {
        request_fact(g, WFACT_CHKFSB);
        return 0;
      }
      g.xstat = phase1 ? XSTAT_OPT : XSTAT_INF;
      if (phase1) g.xstat = XSTAT_INFORUNB;
      return 0;
    }
    SVec& col = g.col;
    ftran_col(g, q, col, true);
    const double apq = col.val[p];
    const double arow = g.prow[q];
    if (std::fabs(apq) < 1e-12 || std::fabs(apq - arow) > 1e-6 * (1 + std::fabs(apq))) {
      if (!g.lu.fresh()) {
        request_fact(g, WFACT_NUMERR);
        return 0;
      }
      g.rowrej[p] = 1;
      g.rowrej_timer = 5;
      return 1;
    }
    // Bound flips: one solve for all of them.
    if (!flips.empty()) {
      SVec& w = g.wvec;
      w.clear();
      std::vector<char>& mark = g.rowmark;
      int cnt = 0;
      for (int j : flips) {
        const double dx = g.cbas[j] == kAtLower ? g.ub[j] - g.lb[j] : g.lb[j] - g.ub[j];
        g.cbas[j] = g.cbas[j] == kAtLower ? kAtUpper : kAtLower;
        for (int k = g.acols.beg[j]; k < g.acols.beg[j + 1]; ++k) {
          const int i = g.acols.idx[k];
          if (!mark[i]) {
            mark[i] = 1;
            w.idx[cnt++] = i;
          }
          w.val[i] += g.acols.val[k] * dx;
        }
      }
      for (int k = 0; k < cnt; ++k) mark[w.idx[k]] = 0;
      w.n = cnt;
      g.lu.ftran(w, false);
      for (int k = 0; k < w.n; ++k) {
        g.rhs1[w.idx[k]] -= w.val[w.idx[k]];
        set_row(w.idx[k]);
      }
      w.clear();
    }
    // DSE needs B^-1 rho.
    const bool dse = g.dpricemode == 1;
    if (dse) {
      g.tau.copy_from(rho);
      g.lu.ftran(g.tau, false, tau_mean > kDenseTau * g.m);
      tau_mean = 0.95 * tau_mean + 0.05 * g.tau.n;
    }
    // Primal step.
    const int out = g.rbas[p];
    const double bound = s > 0 ? g.lb[out] : g.ub[out];
    const double theta = (g.rhs1[p] - bound) / apq;
    const double xq = nbval(g, q) + theta;
    for (int k = 0; k < col.n; ++k) {
      const int i = col.idx[k];
      g.rhs1[i] -= theta * col.val[i];
    }
    // Dual step, and shifts for the small wrong signs the Harris tolerance let through.
    const double t = step;
    const double ts = t * s;
    for (int k = 0; k < g.prow_n; ++k) {
      const int j = g.prow_idx[k];
      double& d = g.rdc[j];
      d += ts * g.prow[j];
      const int st = g.cbas[j];
      if (j == q || st == kFixed) continue;
      if ((st == kAtLower && d < 0) || (st == kAtUpper && d > 0) || (st == kFree && d != 0)) {
        g.rdcshift[j] -= d;
        d = 0;
        g.dperturbed = 1;
      }
    }
    g.rdc[out] = s * t;
    g.rdc[q] = 0.0;
    if (std::fabs(t) <= g.ceps) ++g.ndegen;
    // Weights.
    const double w_p = g.dual_norm[p];
    if (g.dpricemode == 1) {
      const double bp = beta / (apq * apq);
      for (int k = 0; k < col.n; ++k) {
        const int i = col.idx[k];
        if (i == p) continue;
        const double r = col.val[i] / apq;
        const double w = g.dual_norm[i] + r * r * beta - 2 * r * g.tau.val[i];
        // The exact update; a floor of 1 + r^2 (right only for logical rows) would blur the
        // pricing on structural rows, whose weights may be well below 1.
        g.dual_norm[i] = std::max(w, 1e-8);
      }
      g.dual_norm[p] = std::max(bp, 1e-8);
      g.tau.clear();
    } else if (g.dpricemode == 3) {
      for (int k = 0; k < col.n; ++k) {
        const int i = col.idx[k];
        if (i == p) continue;
        const double r = col.val[i] / apq;
        g.dual_norm[i] = std::max(g.dual_norm[i], w_p * r * r);
      }
      g.dual_norm[p] = std::max(w_p / (apq * apq), 1.0);
    }
    // Basis change.
    g.pivi = p;
    g.pivj = q;
    g.vleave = out;
    g.pivcoe = apq;
    g.mrat = t;
    g.cbas[out] = g.lb[out] == g.ub[out] ? kFixed : (s > 0 ? kAtLower : kAtUpper);
    if (g.cbas[out] == kAtLower && g.lb[out] <= -g.infinity) g.cbas[out] = kAtUpper;
    if (g.cbas[out] == kAtUpper && g.ub[out] >= g.infinity) g.cbas[out] = kAtLower;
    g.cbas[q] = p;
    g.rbas[p] = q;
    g.rhs1[p] = xq;
    for (int k = 0; k < col.n; ++k) set_row(col.idx[k]);
    set_row(p);
    g.iter += 1;
    g.fiter += 1;
    (void)QZI_spx_pupdate(g);
    if (g.lu.wfact(g.refacfrq) != 0 && (g.lptool & kToolLuWfact)) request_fact(g, WFACT_REFACT);
    return 0;
  }

  // Bounds of the auxiliary problem of phase 1.
  void enter_phase1() {
    phase1 = true;
    save_lb = g.lb;
    save_ub = g.ub;
    save_rhs = g.rhs;
    const int N = g.n + g.m;
    for (int j = 0; j < N; ++j) {
      const bool li = save_lb[j] <= -g.infinity, ui = save_ub[j] >= g.infinity;
      if (li && ui) { g.lb[j] = -1; g.ub[j] = 1; }
      else if (li) { g.lb[j] = -1; g.ub[j] = 0; }
      else if (ui) { g.lb[j] = 0; g.ub[j] = 1; }
      else { g.lb[j] = 0; g.ub[j] = 0; }
      if (g.cbas[j] < 0) g.cbas[j] = g.lb[j] == g.ub[j] ? kFixed : kAtLower;
    }
    std::fill(g.rhs.begin(), g.rhs.end(), 0.0);
    if (spx_log_on(g, 2)) QZlogmod(g.model, 1, "\nPhase 1 started:");
  }

  void leave_phase1() {
    phase1 = false;
    g.lb = save_lb;
    g.ub = save_ub;
    g.rhs = save_rhs;
    const int N = g.n + g.m;
    for (int j = 0; j < N; ++j) {
      if (g.cbas[j] >= 0) continue;
      const bool li = g.lb[j] <= -g.infinity, ui = g.ub[j] >= g.infinity;
      if (!li && !ui && g.lb[j] == g.ub[j]) g.cbas[j] = kFixed;
      else if (li && ui) g.cbas[j] = kFree;
      else if (li) g.cbas[j] = kAtUpper;
      else if (ui) g.cbas[j] = kAtLower;
      else g.cbas[j] = g.rdc[j] >= 0 ? kAtLower : kAtUpper;
    }
    if (spx_log_on(g, 2)) QZlogmod(g.model, 1, "\nPhase 2 started:");
  }

  // Cost perturbation of the dual-degenerate nonbasic columns (reduced cost within the
  // tolerance): each moves into its feasible side by an amount that grows with its cost and a
  // random factor, so that ties in the ratio test break. `boost` scales a repeated one.
  void dperturb(int reason, double boost) {
    const int N = g.n + g.m;
    double p = 1e300;
    for (int j = 0; j < N; ++j) {
      if (g.cbas[j] >= 0 || g.cbas[j] == kFixed) continue;
      const double a = std::fabs(g.rdc[j]);
      if (a > g.ceps) p = std::min(p, a);
    }
    p = std::clamp(p, 0.0005, 0.05);
    int cnt = 0;
    for (int j = 0; j < N; ++j) {
      const int st = g.cbas[j];
      if (st >= 0 || st == kFixed || st == kFree) continue;
      // The first perturbation moves the dual-degenerate columns only; a repeated, boosted
      // one also reaches those an earlier one moved, as far as they stay below its largest
      // amount.
      const double base = (std::fabs(g.cost[j]) * p + p) * p;
      const double have = st == kAtLower ? g.rdc[j] : -g.rdc[j];
      if (boost <= 1.0 ? std::fabs(g.rdc[j]) >= g.ceps : have >= (2 * base + g.ceps) * boost)
        continue;
      const int R = g.irand(N);
      const double amt = (base * (static_cast<double>(R + N) / N) + g.ceps) * boost;
      const double target = st == kAtLower ? amt : -amt;
      g.rdcshift[j] += target - g.rdc[j];
      g.rdc[j] = target;
      ++cnt;
    }
    if (cnt == 0) return;
    g.duals_exact = false;
    if (spx_log_on(g, 2)) {
      const char* what = reason < 0 ? "Dual pre-perturbation..."
                         : reason == 1 ? "dual perturbation due to stalling..."
                                       : "dual perturbation due to degeneracy...";
      const char* again = reason < 0 ? "" : (g.dperturbed ? "Restarting " : "Starting ");
      QZlogmod(g.model, 1, "\n%s%s (cols=%d, boost=%g)", again, what, cnt, boost);
    }
    g.dperturbed = 1;
  }

  // Progress at a refactorization on the shifted objective, which the dual never lowers: a run
  // of refactorizations without a rise means ties are cycling, and the perturbation grows.
  void check_progress() {
    double z = 0;
    const int N = g.n + g.m;
    for (int j = 0; j < N; ++j) {
      const double x = g.cbas[j] >= 0 ? g.rhs1[g.cbas[j]] : nbval(g, j);
      if (x != 0.0) z += (g.cost[j] + g.rdcshift[j]) * x;
    }
    // Harris shifts let the shifted objective creep without a real step: a rise counts only
    // beyond a relative 1e-7, or when the primal infeasibility falls to a new low.
    if (z > zmark + 1e-7 * (1 + std::fabs(z)) || g.npinf < npinf_mark ||
        g.sumpinf < 0.999 * sumpinf_mark) {
      nstall = 0;
    } else if (++nstall >= 3 && !no_perturb) {
      nstall = 0;
      npert = std::min(npert + 1, 4);
      dperturb(1, std::pow(10.0, npert));
    }
    zmark = std::max(zmark, z);
    npinf_mark = std::min(npinf_mark, g.npinf);
    sumpinf_mark = std::min(sumpinf_mark, g.sumpinf);
  }

  int nstall = 0, npert = 0, npinf_mark = 1 << 30;
  // Phase 1 ends only on true costs; shifts put back after each removal would loop, so after
  // a few removals no new ones come.
  int phase1_removals = 0;
  bool no_perturb = false;

  void reset_progress() {
    nstall = 0;
    zmark = -1e300;
    sumpinf_mark = 1e300;
    npinf_mark = 1 << 30;
  }
  double zmark = -1e300, sumpinf_mark = 1e300;
};

int dlpini(Glp& g, Dual& D) {
  g.itype = 'D';
  g.pord = 1;
  g.fiter = 0;
  g.dpricemode = g.dpricing_param == 0 || g.dpricing_param == 1 ? 0
                 : g.dpricing_param == 3 ? 3
                 : g.dpricing_param == 4 ? 3
                                          : 1;
  if (g.mip_relax) g.dpricemode = 3;
  std::fill(g.rdcshift.begin(), g.rdcshift.end(), 0.0);
  std::fill(g.rowrej.begin(), g.rowrej.end(), 0);
  g.dperturbed = 0;
  g.dualbad = 0;
  if (g.crash && !g.lu.valid()) {
    dcrashbas(g);
    if (qzi_check_condest(g) == 2) return 1;
  } else if (!g.lu.fresh()) {
    if (countbas(g, "dsetbas") != 0) QZI_spx_set_biden(g);
    const int rc = qzi_check_condest(g);
    if (rc == 2) return 1;
    if (rc == 1) {
      dcrashbas(g);
      if (qzi_check_condest(g) == 2) return 1;
    }
  }
  if (!g.lu.valid()) {
    g.wfact = WFACT_INIT;
    const int rc = QZI_spx_bupdate(g);
    if (rc != 0) return rc == 2 ? 1 : 2;
  }
  g.wfact = WFACT_NO;
  (void)D;
  return 0;
}

}  // namespace

int dsimplex(Glp& g) {
  Dual D(g);
  const int entry_xstat = g.xstat;
  const int rc0 = dlpini(g, D);
  if (rc0 == 1) return 2;
  if (rc0 == 2) {
    g.xstat = XSTAT_SWITCH;
    return 0;
  }
  const double ceps_in = g.ceps, pvteps_in = g.pvteps;
  if (spx_log_on(g, 2))
    QZlogmod(g.model, 1,
             "\n%s dual simplex.  (LP=%d, m=%d, n=%d, nonz=%ld, nint=%d, xstat = %d, time:%d, tlim:%g, ilim:%g)",
             g.iter > 0 ? "Reentering" : "Entering", 1, g.m, g.n, g.nonz, 0, entry_xstat, 0,
             g.timlim, g.itrlim);
  g.xstat = XSTAT_CONT;
  int code = 0;
  bool started = false;
  const double iter0 = g.iter;
  g.fiter = 0;
  while (g.xstat == XSTAT_CONT) {
    if (g.wfact != WFACT_NO || !g.lu.valid()) {
      const int rc = QZI_spx_bupdate(g);
      if (rc != 0) {
        if (rc == 2) return 2;
        if (++g.dualbad > 4 || g.mip_relax) {
          code = 3;
        } else {
          g.xstat = XSTAT_SWITCH;
        }
        break;
      }
      g.fiter = 0;
    }
    if (g.fiter == 0) {
      g.crcflag = 0;
      D.recompute_duals();
      if (!started) {
        started = true;
        int left = D.fix_dual_infeasibilities(false);
        if (left < 0) left = -1 - left;
        if (left > 0 && g.dphase != 3) {
          D.enter_phase1();
          D.recompute_duals();
          D.fix_dual_infeasibilities(true);
        }
        if (g.umode & 8) D.dperturb(-1, 1.0);
        D.init_norms();
      } else {
        int left = D.fix_dual_infeasibilities(!D.phase1);
        if (left < 0) left = -1 - left;
        if (D.phase1 && left > 0) D.fix_dual_infeasibilities(true);
      }
      D.primal();
      D.chuzr_counts();
      D.check_progress();
      D.log_trace();
      if (!D.phase1 && g.use_cutoff && g.lu.fresh() && D.cutoff_reached()) {
        g.xstat = XSTAT_CUTOFF;
        break;
      }
      // A dual that has run far longer than the size of the model is stalling: the primal
      // finishes from this basis.
      if (g.iter - iter0 > 10.0 * (g.m + g.n) && !g.mip_relax) {
        g.xstat = XSTAT_SWITCH;
        break;
      }
    }
    double delta = 0;
    const int p = D.chuzr(&delta);
    if (p < 0) {
      if (!g.lu.fresh() || g.fiter > 0) {
        request_fact(g, WFACT_CHKOPT);
        continue;
      }
      if (D.phase1 && g.dperturbed) {
        // An optimum of shifted costs decides nothing: the shifts go, every column of the
        // auxiliary problem is boxed, so flips restore dual feasibility, and phase 1 goes on
        // with the true costs.
        std::fill(g.rdcshift.begin(), g.rdcshift.end(), 0.0);
        g.dperturbed = 0;
        D.no_perturb = ++D.phase1_removals >= 3;
        D.reset_progress();
        D.recompute_duals();
        D.fix_dual_infeasibilities(false);
        D.primal();
        continue;
      }
      if (D.phase1) {
        // The auxiliary optimum: dual feasible for the true problem unless some non-boxed
        // column keeps a wrong-signed reduced cost.
        std::fill(g.rdcshift.begin(), g.rdcshift.end(), 0.0);
        D.leave_phase1();
        D.recompute_duals();
        int left = D.fix_dual_infeasibilities(false);
        if (left < 0) left = -1 - left;
        if (left > 0) {
          g.xstat = XSTAT_INFORUNB;
          break;
        }
        g.fiter = 0;
        D.primal();
        if (g.umode & 8) D.dperturb(-1, 1.0);
        D.no_perturb = false;
        D.reset_progress();
        // The row weights depend on the basis only: those updated through phase 1 carry on.
        D.init_norms();
        continue;
      }
      if (g.dperturbed) {
        // The shifts go. Reduced costs that turn wrong-signed are left to the primal, which
        // starts from this primal feasible basis; flipping boxed columns instead would throw
        // the point far from feasibility for a few tiny reduced costs.
        std::fill(g.rdcshift.begin(), g.rdcshift.end(), 0.0);
        g.dperturbed = 0;
        D.recompute_duals();
        g.ndinf = D.count_dual_infeasibilities();
        if (g.ndinf > 0) {
          if (spx_log_on(g, 2))
            QZlogmod(g.model, 1, "\nEnding perturbation. wfact=%d, stat=%d, npinf=%d, ndinf=%d",
                     g.wfact, g.xstat, g.npinf, g.ndinf);
          g.xstat = XSTAT_SWITCH;
          break;
        }
      }
      g.xstat = g.use_cutoff && D.cutoff_reached() ? XSTAT_CUTOFF : XSTAT_OPT;
      break;
    }
    D.iterate(p, delta);
    if (g.xstat == XSTAT_INF && g.dperturbed) {
      // Infeasibility proofs do not depend on costs; keep the status.
    }
    if (g.xstat != XSTAT_CONT) break;
    if (g.itrlim >= 0 && g.iter + g.iterbase >= g.itrlim) {
      g.xstat = XSTAT_ITERLIM;
      break;
    }
    const int tl = spx_check_time(g);
    if (tl > 0) {
      g.xstat = XSTAT_TIMELIM;
    } else if (tl < 0) {
      g.xstat = XSTAT_CTRLC;
      code = 9;
    }
  }
  if (D.phase1) {
    std::fill(g.rdcshift.begin(), g.rdcshift.end(), 0.0);
    D.leave_phase1();
    if (g.lu.valid()) compute_primal(g);
  }
  if (g.lu.valid() && (g.xstat == XSTAT_ITERLIM || g.xstat == XSTAT_TIMELIM || g.xstat == XSTAT_CTRLC ||
                       g.xstat == XSTAT_INF || g.xstat == XSTAT_CUTOFF)) {
    compute_primal(g);
    retag_all(g);
  }
  std::fill(g.rdcshift.begin(), g.rdcshift.end(), 0.0);
  g.dperturbed = 0;
  if (g.xstat == XSTAT_INF) {
    g.pord = 0;
    retag_all(g);
  }
  if (code == 0) g.cond1est_stale = true;
  qzi_exit_msg(g);
  if (g.xstat != XSTAT_SWITCH) {
    g.ceps = ceps_in;
    g.pvteps = pvteps_in;
  }
  g.pord = 1;
  return code;
}

}  // namespace zento
