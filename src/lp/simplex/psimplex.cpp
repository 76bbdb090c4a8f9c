// The primal simplex method `psimplex`.
//
// One composite objective replaces the two phases: every infeasible basic variable costs
// `bigM` per unit of violation, so the method walks towards feasibility and optimality at
// once from any basis (Wolfe's composite method, as in Maros, "Computational Techniques of
// the Simplex Method", ch. 9). Pricing is partial (a list ordered by attractiveness, priced
// afresh from the multipliers) or a Devex reference framework with updated reduced costs.
// The ratio test is the two-pass Harris test; boxed entering columns may swap bounds without
// a basis change. Degeneracy is broken by a random perturbation of the right-hand side,
// removed before any final status, and a final status is only declared on a fresh
// factorization. When the composite optimum still holds infeasibility, a pure feasibility
// run (all costs zero) confirms or refutes it before infeasibility is reported.
#include <algorithm>
#include <cmath>

#include "core/log.h"
#include "core/model.h"
#include "lp/simplex/primal.h"
#include "lp/simplex/spx_internal.h"

namespace zento {

namespace {

// Pivot size, relative to the largest entry of the column, below which a blocking entry may
// be noise (see the ratio test in iterate).
constexpr double kRayPivot = 1e-7;

struct Primal {
  Glp& g;
  std::vector<double> zero;
  const double* costv = nullptr;
  bool feas_mode = false;
  bool feas_checked = false;
  std::vector<char> inref;
  std::vector<int> tagpos;
  std::vector<double> tagdelta;
  std::vector<int> bins;

  explicit Primal(Glp& gg) : g(gg) {}

  double threshold() const {
    double t = g.ceps;
    if (g.lptool & kToolOscalCeps) t *= g.oscal;
    if (g.npinf > 0) t *= g.bigM;
    return t;
  }
  // Reduced cost turned so that negative means attractive.
  double signed_rdc(int j, double d) const {
    switch (g.cbas[j]) {
      case kAtLower: return d;
      case kAtUpper: return -d;
      case kFree: return -std::fabs(d);
      default: return 0.0;
    }
  }
  bool priceable(int j) const {
    const int s = g.cbas[j];
    if (s >= 0 || s == kFixed) return false;
    return (g.cflag[j] & (kFlagRejected | kFlagExcluded)) == 0;
  }
  double fresh_rdc(int j) const { return costv[j] - col_dot(g, j, g.dual); }

  void reset_weights() {
    const int N = g.n + g.m;
    inref.assign(N, 0);
    for (int j = 0; j < N; ++j) {
      const bool nb = g.cbas[j] < 0;
      inref[j] = nb;
      g.pweight[j] = nb ? (g.ppricing == 3 ? g.acols.count(j) + 1.0 : 1.0) : 0.0;
    }
    g.pperiod_cnt = 0;
  }

  void log_trace() {
    if (!spx_log_on(g, 3)) return;
    QZlogmod(g.model, 1, "\n%c%6d %8.0f %16.8e %6d %12.4e %6d %s", g.itype, g.nfact, g.iter,
             (objective_value(g) / g.oscal + g.objconst) * g.objsense, g.npinf, g.sumpinf, g.ndinf,
             g.pert ? "(pert)" : "");
  }

  // Full recomputation on a fresh factorization.
  void pcalc() {
    compute_primal(g);
    retag_all(g);
    compute_dual(g, costv);
    compute_rdc(g, costv);
    const double t = threshold();
    const int N = g.n + g.m;
    int nd = 0;
    double sd = 0;
    for (int j = 0; j < N; ++j) {
      if (!priceable(j)) continue;
      const double s = signed_rdc(j, g.rdc[j]);
      if (s < -t) {
        ++nd;
        sd -= s;
      }
    }
    g.ndinf = nd;
    g.sumdinf = sd;
    if (g.npinf == 0) g.gflags |= kGflagFeasible;
    g.dualstate = 1;
    if (g.pricemode == 0) build_plist();
  }

  // Partial pricing list: all columns by bins of their signed reduced cost, most attractive
  // first; basic and fixed columns last.
  void build_plist() {
    const int N = g.n + g.m;
    bins.assign(N, 0);
    std::vector<int> cnt(101, 0);
    const double t = threshold();
    for (int j = 0; j < N; ++j) {
      int b = 0;
      if (priceable(j) || (g.cbas[j] < 0 && g.cbas[j] != kFixed)) {
        const double d = g.rdc[j];
        if (g.cbas[j] == kFree) {
          b = std::fabs(d) > t ? 100 : 99;
        } else {
          const double s = signed_rdc(j, d);
          int e = 0;
          const double a = std::fabs(s);
          if (a >= 33554432.0) e = 25;
          else if (a < 2.98023223876953125e-08) e = -25;
          else e = std::ilogb(a);
          b = s >= 0 ? 25 - e : 75 + e;
          b = std::clamp(b, 1, 98);
        }
      }
      bins[j] = b;
      ++cnt[b];
    }
    std::vector<int> start(101, 0);
    int pos = 0;
    for (int b = 100; b >= 0; --b) {
      start[b] = pos;
      pos += cnt[b];
    }
    for (int j = 0; j < N; ++j) g.plist[start[bins[j]]++] = j;
    g.plistpos = 0;
  }

  // Candidate by partial pricing; -1 when none.
  int choose_partial(double* dq) {
    const int N = g.n + g.m;
    const double t = threshold();
    int best = -1;
    double bests = 0, bestd = 0;
    int scanned = 0;
    int pos = g.plistpos;
    for (int step = 0; step < N; ++step, ++pos) {
      if (pos >= N) pos = 0;
      const int j = g.plist[pos];
      ++scanned;
      if (priceable(j)) {
        const double d = fresh_rdc(j);
        const double s = signed_rdc(j, d);
        if (s < -t && s < bests) {
          bests = s;
          bestd = d;
          best = j;
        }
      }
      if (best >= 0 && scanned > g.pcand) {
        ++pos;
        break;
      }
    }
    g.plistpos = pos >= N ? 0 : pos;
    *dq = bestd;
    return best;
  }

  // Candidate by the reference framework; -1 when none.
  int choose_devex(double* dq) {
    const int N = g.n + g.m;
    const double t = threshold();
    int best = -1;
    double bscore = 0;
    int bestfree = -1;
    double bfree = 0;
    for (int j = 0; j < N; ++j) {
      if (!priceable(j)) continue;
      const double s = signed_rdc(j, g.rdc[j]);
      if (s >= -t) continue;
      const double sc = s * s / std::max(g.pweight[j], 1e-12);
      if (g.cbas[j] == kFree) {
        if (std::fabs(s) > bfree) {
          bfree = std::fabs(s);
          bestfree = j;
        }
      }
      if (sc > bscore) {
        bscore = sc;
        best = j;
      }
    }
    if (bestfree >= 0 && best >= 0 && bestfree != best) {
      const double sb = std::fabs(g.rdc[best]);
      if (!(g.npinf == 0 && bfree < sb / 100)) best = bestfree;
    }
    *dq = best >= 0 ? g.rdc[best] : 0.0;
    return best;
  }

  void pperturb() {
    const bool again = g.pertcnt > 0;
    if (again && g.ptval * 0.2 > kMachEps) g.ptval *= 0.2;
    for (int p = 0; p < g.m; ++p) {
      const char t = g.rstat[p];
      if (t != 'L' && t != 'U') continue;
      const int j = g.rbas[p];
      const double u = g.urand();
      const int k = g.irand(g.m);
      double f = 1.0;
      if (g.ub[j] < g.infinity && g.lb[j] > -g.infinity) f = std::min(1.0, (g.ub[j] - g.lb[j]) / 2);
      double step = (k + u * (k + 1)) * g.ptval * f / g.m / 2;
      step = std::max(step, g.ptval * 1e-3 * f);
      if (t == 'U') step = -step;
      g.rhs1[p] += step;
      for (int q = g.acols.beg[j]; q < g.acols.beg[j + 1]; ++q)
        g.ptotal[g.acols.idx[q]] += g.acols.val[q] * step;
      retag_row(g, p);
    }
    compute_sums(g);
    g.pert = 1;
    ++g.pertcnt;
    if (spx_log_on(g, 2))
      QZlogmod(g.model, 1,
               "\n%c%6d %8.0f : %s perturbation(%d), ptval=%e, fiter=%d, file=%s(%d)", g.itype,
               g.nfact, g.iter, again ? "restarting" : "starting  ", g.pertcnt, g.ptval, g.fiter,
               "psimplex.cpp", __LINE__);
    g.ndegen0 = g.ndegen;
    g.degmark_iter = g.iter;
  }

  void end_perturbation() {
    if (spx_log_on(g, 2))
      QZlogmod(g.model, 1, "\n%c%6d %8.0f : removing perturbation(%d), file=%s(%d)", g.itype,
               g.nfact, g.iter, g.pertcnt, "psimplex.cpp", __LINE__);
    std::fill(g.ptotal.begin(), g.ptotal.end(), 0.0);
    g.pert = 0;
    g.wfact = WFACT_ENDPERT;
  }

  // Progress at a refactorization; may perturb.
  void pprogress() {
    const double obj = feas_mode ? 0.0 : objective_value(g);
    const double comp = obj + g.bigM * g.sumpinf;
    if (g.last_valid) {
      double delta, ref;
      if (std::fabs(g.sumpinf - g.last_sinf) > 1e-10) {
        delta = g.sumpinf - g.last_sinf;
        ref = std::fabs(g.last_sinf);
      } else {
        delta = comp - g.last_obj;
        ref = std::fabs(g.last_obj);
      }
      const bool noimp = std::fabs(delta) < 1e-12 * ref ||
                         (std::fabs(delta) < 1e-10 && std::fabs(delta) < 1e-6 * std::max(1e-4, ref));
      if (noimp && g.iter > g.degmark_iter) {
        ++g.noimp;
        if (g.noimp > 10 && g.ptval > 1e-10) {
          if (spx_log_on(g, 2))
            QZlogmod(g.model, 1, "\n%c%6d %8.0f : no improvements (cnt=%d).. ptval=%e", g.itype,
                     g.nfact, g.iter, g.noimp, g.ptval);
          pperturb();
          g.noimp = 0;
        }
      } else {
        g.noimp = 0;
      }
    }
    // Many degenerate pivots since the mark also call for a perturbation.
    const double its = g.iter - g.degmark_iter;
    if (!g.pert && its > 50 && g.ndegen - g.ndegen0 > 0.9 * its && g.ptval > 1e-12) {
      if (spx_log_on(g, 2))
        QZlogmod(g.model, 1, "\n%c%6d %8.0f : too many degenerate iterations.(%d/%g)", g.itype,
                 g.nfact, g.iter, g.ndegen - g.ndegen0, its);
      pperturb();
    }
    if (g.nfact % 20 == 1) {
      g.ndegen0 = g.ndegen;
      g.degmark_iter = g.iter;
    }
    g.last_obj = comp;
    g.last_sinf = g.sumpinf;
    g.last_valid = true;
  }

  void set_costs(bool feasibility) {
    feas_mode = feasibility;
    costv = feasibility ? zero.data() : g.cost.data();
    if (feasibility) {
      g.bigM = 1.0;
    } else {
      g.bigM = g.bigMentry;
    }
    g.last_valid = false;
  }

  // No attractive column on a fresh factorization.
  void no_candidate_fresh() {
    if (g.pert) {
      end_perturbation();
      return;
    }
    if (g.npinf == 0) {
      if (feas_mode) {
        // Feasible again: back to the true costs, with a heavier weight of infeasibility.
        g.bigMentry = std::min(g.bigMentry * 100, 1e15);
        set_costs(false);
        g.wfact = WFACT_PHASECHG;
        return;
      }
      g.xstat = XSTAT_OPT;
      return;
    }
    if (!feas_mode) {
      // Verify infeasibility with the costs taken out.
      feas_checked = true;
      set_costs(true);
      g.wfact = WFACT_CHKFSB;
      return;
    }
    g.xstat = XSTAT_INF;
  }

  // Contribution of basic position p to the infeasibility count and sum.
  double infeas_of(int p) const {
    const int j = g.rbas[p];
    if (g.rstat[p] == 'B') return g.lb[j] - g.rhs1[p];
    if (g.rstat[p] == 'A') return g.rhs1[p] - g.ub[j];
    return 0.0;
  }
  void drop_infeas(int p) {
    if (g.rstat[p] != 'B' && g.rstat[p] != 'A') return;
    --g.npinf;
    g.sumpinf -= infeas_of(p);
  }
  void add_infeas(int p) {
    if (g.rstat[p] != 'B' && g.rstat[p] != 'A') return;
    ++g.npinf;
    g.sumpinf += infeas_of(p);
  }

  void update_weights(int q, int p, const SVec& col, double alpha_r) {
    double gamma = inref[q] ? 1.0 : 0.0;
    for (int k = 0; k < col.n; ++k) {
      const int i = col.idx[k];
      if (inref[g.rbas[i]]) gamma += col.val[i] * col.val[i];
    }
    gamma = std::max(gamma, 1.0);
    const double ar2 = alpha_r * alpha_r;
    for (int k = 0; k < g.prow_n; ++k) {
      const int j = g.prow_idx[k];
      const double r = g.prow[j] / alpha_r;
      const double w = r * r * gamma;
      if (w > g.pweight[j]) g.pweight[j] = w;
    }
    const int out = g.rbas[p];
    g.pweight[out] = std::max(gamma / ar2, 1.0);
    if (++g.pperiod_cnt >= g.pperiod) reset_weights();
  }

  // Bound swap or pivot of column q with reduced cost dq.
  int iterate(int q, double dq) {
    const double sgn = g.cbas[q] == kAtUpper ? -1.0 : (g.cbas[q] == kFree && dq > 0 ? -1.0 : 1.0);
    SVec& col = g.col;
    ftran_col(g, q, col, true);
    g.pivj = q;
    g.dir = sgn < 0 ? 1 : 0;
    double ratio = g.infinity, bigpiv = 0;
    int p = primal_ratio(g, col, sgn, g.pvteps, &ratio, &bigpiv);
    bool ray = false;
    // Entries this small are rounding noise on an exact zero as often as not: when only they
    // block a feasible basis, the column is taken as a ray within that tolerance (checked on
    // a fresh factor), rather than a huge step on a tiny pivot that throws the values toward
    // infinity and the basis toward singularity.
    const double raytol = kRayPivot * std::max(1.0, bigpiv);
    if (p >= 0 && g.npinf == 0 && std::fabs(col.val[p]) < raytol && g.pvteps < raytol) {
      double r1 = g.infinity, bp1 = 0;
      const int p1 = primal_ratio(g, col, sgn, raytol, &r1, &bp1);
      if (p1 >= 0) {
        p = p1;
        ratio = r1;
      } else if (!g.lu.fresh()) {
        request_fact(g, WFACT_NUMERR);
        return 0;
      } else {
        p = -2;
        ray = true;
      }
    }
    if (!ray && (p == -2 || p == -3)) {
      double r0 = g.infinity, bp0 = 0;
      const int p0 = primal_ratio(g, col, sgn, 0.0, &r0, &bp0);
      if (p0 >= 0) {
        if (!g.lu.fresh()) {
          request_fact(g, WFACT_NUMERR);
          return 0;
        }
        if (std::fabs(col.val[p0]) > g.minpivtol) {
          p = p0;
          ratio = r0;
        } else {
          g.cflag[q] |= kFlagRejected;
          ++g.nrej;
          return 0;
        }
      } else {
        p = -2;
      }
    }
    const double box = (g.lb[q] > -g.infinity && g.ub[q] < g.infinity) ? g.ub[q] - g.lb[q] : g.infinity;
    if (p >= 0 && ratio < 0) ratio = 0;
    bool swap = false;
    double theta = ratio;
    if (p < 0 || box < ratio) {
      if (box >= g.infinity) {
        // Nothing blocks.
        if (g.npinf > 0) {
          g.cflag[q] |= kFlagRejected;
          ++g.nrej;
          return 0;
        }
        g.xray = q;
        if (g.pert) {
          end_perturbation();
          return 0;
        }
        if (!g.lu.fresh()) {
          request_fact(g, WFACT_CHKUNB);
          return 0;
        }
        g.xstat = XSTAT_UNB;
        return 0;
      }
      swap = true;
      theta = box;
    }
    // Primal values along the column.
    const int m = g.m;
    tagpos.clear();
    tagdelta.clear();
    const bool devex = g.pricemode == 2;
    double alpha_r = 0;
    int out = -1;
    char oldtag_p = 0;
    if (!swap) {
      alpha_r = col.val[p];
      out = g.rbas[p];
      oldtag_p = g.rstat[p];
      if (devex) {
        g.rho.set_unit(p, 1.0);
        g.lu.btran(g.rho);
        compute_pivrow(g, g.rho);
        update_weights(q, p, col, alpha_r);
      }
    }
    // The sums of infeasibility change only in the rows the column touches.
    for (int k = 0; k < col.n; ++k) drop_infeas(col.idx[k]);
    const double step = sgn * theta;
    if (step != 0.0) {
      for (int k = 0; k < col.n; ++k) {
        const int i = col.idx[k];
        g.rhs1[i] -= step * col.val[i];
      }
    }
    double deg = std::fabs(theta) * (swap ? 1.0 : std::fabs(alpha_r));
    if (deg < std::min(g.pvteps, g.reps) && g.cbas[q] != kFree) ++g.ndegen;
    // Tags of the rows the column touches.
    for (int k = 0; k < col.n; ++k) {
      const int i = col.idx[k];
      if (!swap && i == p) continue;
      const double before = tag_cost(g, i);
      retag_row(g, i);
      const double after = tag_cost(g, i);
      if (after != before) {
        tagpos.push_back(i);
        tagdelta.push_back(after - before);
      }
    }
    (void)m;
    g.iter += 1;
    g.fiter += 1;
    if (swap) {
      g.pivi = -1;
      g.cbas[q] = g.cbas[q] == kAtLower ? kAtUpper : kAtLower;
    } else {
      g.pivi = p;
      // Leaving state from the direction of its move and its tag.
      const double a = sgn * alpha_r;
      int st;
      if (g.lb[out] == g.ub[out])
        st = kFixed;
      else if (a > 0)
        st = oldtag_p == 'A' ? kAtUpper : kAtLower;
      else
        st = oldtag_p == 'B' ? kAtLower : kAtUpper;
      if (st == kAtLower && g.lb[out] <= -g.infinity) st = g.ub[out] < g.infinity ? kAtUpper : kFree;
      if (st == kAtUpper && g.ub[out] >= g.infinity) st = g.lb[out] > -g.infinity ? kAtLower : kFree;
      const double xq = nbval(g, q) + step;
      g.cbasout = st;
      g.vleave = out;
      g.pivcoe = alpha_r;
      g.cbasin = g.cbas[q];
      g.cbas[out] = st;
      g.cbas[q] = p;
      g.rbas[p] = q;
      g.rhs1[p] = xq;
      retag_row(g, p);
      const double tq = tag_cost(g, p);
      const int urc = QZI_spx_pupdate(g);
      // Multipliers and reduced costs.
      if (devex) {
        const double thd = dq / alpha_r;
        for (int k = 0; k < g.prow_n; ++k) {
          const int j = g.prow_idx[k];
          g.rdc[j] -= thd * g.prow[j];
        }
        const double oldtc = oldtag_p == 'B' ? -g.bigM : (oldtag_p == 'A' ? g.bigM : 0.0);
        g.rdc[out] = -thd - oldtc;
        g.rdc[q] = 0.0;
        if (tq != 0.0) {
          tagpos.push_back(p);
          tagdelta.push_back(tq);
        }
      } else {
        tagpos.push_back(p);
        tagdelta.push_back(dq + tq);
      }
      if (urc != 0) {
        for (int k = 0; k < col.n; ++k) add_infeas(col.idx[k]);
        return 0;
      }
    }
    for (int k = 0; k < col.n; ++k) add_infeas(col.idx[k]);
    if (!tagpos.empty() && g.lu.valid()) {
      SVec& r = g.tau;
      r.clear();
      for (size_t k = 0; k < tagpos.size(); ++k) {
        r.val[tagpos[k]] += tagdelta[k];
        r.idx[k] = tagpos[k];  // the rows are distinct
      }
      r.n = static_cast<int>(tagpos.size());
      g.lu.btran(r);
      for (int k = 0; k < r.n; ++k) g.dual[r.idx[k]] += r.val[r.idx[k]];
      if (devex) {
        compute_pivrow(g, r);
        for (int k = 0; k < g.prow_n; ++k) {
          const int j = g.prow_idx[k];
          g.rdc[j] -= g.prow[j];
        }
      }
      r.clear();
    }
    return 0;
  }

  void choose_pricing() {
    if (g.ppricing == -1 && g.iter > 0) {
      const double its = g.iter - g.degmark_iter;
      const double R = its > 0 ? (g.ndegen - g.ndegen0) / its : 0.0;
      const double D = g.m > 0 ? std::pow(g.lu.lnonz() + g.lu.unonz() - 1.5 * g.m, 2) /
                                     std::max(1.0, static_cast<double>(g.nonz)) / g.m
                               : 0.0;
      // A wide model keeps partial pricing: reference pricing forms the pivot row over all
      // columns each iteration, where partial pricing looks at a handful of them.
      const bool wide = g.n > 4 * g.m;
      if (g.pricemode == 0 && !wide && (R + D > 1.2 || g.iter > g.n + g.m)) {
        if (spx_log_on(g, 2))
          QZlogmod(g.model, 1, "\n%c%6d %8.0f : switch to devex", g.itype, g.nfact, g.iter);
        g.pricemode = 2;
        reset_weights();
      }
    }
  }
};

int plpini(Glp& g, Primal& P) {
  g.itype = 'P';
  g.pord = 0;
  g.norms_valid = false;  // the primal moves the basis without the dual's weights
  g.duals_exact = false;
  g.pcand = 10;
  g.fiter = 0;
  g.xray = -1;
  g.crcflag = 1;
  g.reps2 = g.reps;
  g.kcycle = 5;
  g.pperiod = 5000;
  g.pert = 0;
  g.nrej = 0;
  g.noimp = g.nworse = g.badnum = 0;
  g.last_valid = false;
  std::fill(g.ptotal.begin(), g.ptotal.end(), 0.0);
  g.ppartial = g.ppartial_param == 0 ? 2 : g.ppartial_param;
  g.ppricing = g.ppricing_param;
  if (g.ppricing == -1)
    g.pricemode = g.dpswitch < 2 ? 0 : 2;
  else
    g.pricemode = g.ppricing == 0 ? 0 : 2;
  P.zero.assign(g.n + g.m, 0.0);
  P.set_costs(false);
  g.bigMentry = g.bigM;
  if (g.crash && !g.lu.valid()) {
    g.dphase = 0;
    pcrashbas(g);
    const int rc = qzi_check_condest(g);
    if (rc == 2) return 1;
  } else if (!g.lu.fresh()) {
    if (countbas(g, "psetbas") != 0) {
      if (spx_log_on(g, 1)) {
        QZlogmod(g.model, 1, "\nWARNING: psetbas purging invalid initial basis, k2=%d, m=%d, #ncalls=%d", 0, g.m, 1);
        QZlogmod(g.model, 1, "\nWARNING: and reverting back to identity matrix");
      }
      QZI_spx_set_biden(g);
    }
    const int rc = qzi_check_condest(g);
    if (rc == 2) return 1;
    if (rc == 1) {
      pcrashbas(g);
      if (qzi_check_condest(g) == 2) return 1;
    }
  }
  QZI_spx_save_curbas(g, g.oldbas);
  P.reset_weights();
  g.wfact = g.lu.fresh() ? WFACT_NO : WFACT_INIT;
  g.fiter = 0;
  g.degmark_iter = g.iter;
  g.ndegen0 = g.ndegen;
  return 0;
}

}  // namespace

int psimplex(Glp& g) {
  Primal P(g);
  const int entry_xstat = g.xstat;
  if (plpini(g, P) != 0) return 2;
  const double reps_in = g.reps, ceps_in = g.ceps, pvteps_in = g.pvteps, ptval_in = g.ptval;
  if (spx_log_on(g, 2))
    QZlogmod(g.model, 1,
             "\n%s primal simplex. (LP=%d, m=%d, n=%d, nonz=%ld, nint=%d, xstat=%d, time:%d, tlim:%g, "
             "ilim:%g, shifts=%d, nfixbas:%d, pertmode:%d)",
             g.iter > 0 ? "Reentering" : "Entering", 1, g.m, g.n, g.nonz, 0, entry_xstat,
             static_cast<int>(0), g.timlim, g.itrlim, g.nshift, 0, g.umode & 32 ? 1 : 0);
  g.pivi = 0;
  g.pivj = -1;
  g.xstat = XSTAT_CONT;
  int code = 0;
  while (g.xstat == XSTAT_CONT) {
    if (g.wfact != WFACT_NO || !g.lu.valid()) {
      const int rc = QZI_spx_bupdate(g);
      if (rc != 0) {
        if (rc == 2) return 2;
        if (g.dpswitch < 3 && !g.mip_relax) {
          ++g.dpswitch;
          g.xstat = XSTAT_SWITCH;
        } else {
          code = 3;
        }
        break;
      }
      g.fiter = 0;
    }
    if (g.fiter == 0) {
      P.pcalc();
      P.pprogress();
      P.choose_pricing();
      P.log_trace();
      g.crcflag = 0;
      if (g.wfact != WFACT_NO) continue;
      if (P.feas_mode && g.npinf == 0) {
        P.no_candidate_fresh();
        continue;
      }
    }
    double dq = 0;
    const int q = g.pricemode == 2 ? P.choose_devex(&dq) : P.choose_partial(&dq);
    if (q < 0) {
      if (!g.lu.fresh()) {
        request_fact(g, g.npinf > 0 ? WFACT_CHKFSB : WFACT_CHKOPT);
      } else if (g.nrej > 0 && g.npinf > 0 && !P.feas_mode) {
        // Only columns along which the objective falls without limit remain, while rows are
        // infeasible: that proves nothing. Decide feasibility with the costs taken out.
        g.nrej = 0;
        P.no_candidate_fresh();
      } else if (g.nrej > 0) {
        // Only columns with tiny pivots remain attractive.
        g.nrej = 0;
        if (g.dpswitch < 3 && !g.mip_relax) {
          ++g.dpswitch;
          g.xstat = XSTAT_SWITCH;
        } else {
          g.xstat = g.npinf > 0 ? XSTAT_INF : XSTAT_UNB;
        }
      } else {
        P.no_candidate_fresh();
      }
    } else {
      const int rc = P.iterate(q, dq);
      if (rc != 0) {
        code = rc;
        break;
      }
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
  if (g.pert) {
    std::fill(g.ptotal.begin(), g.ptotal.end(), 0.0);
    g.pert = 0;
    if (g.xstat == XSTAT_ITERLIM || g.xstat == XSTAT_TIMELIM || g.xstat == XSTAT_CTRLC) {
      if (g.lu.valid()) {
        compute_primal(g);
        retag_all(g);
      }
    }
  }
  if (P.feas_mode && g.xstat != XSTAT_INF) {
    P.set_costs(false);
    if (g.lu.valid()) compute_dual(g, g.cost.data());
  }
  if (g.xstat == XSTAT_UNB && g.ndinf == 0 && g.sumdinf < g.ceps * g.oscal) {
    if (spx_log_on(g, 1))
      QZlogmod(g.model, 1, "\nWARNING: overridden unboundedness signal, set xstat:%d", XSTAT_OPT);
  }
  if (code == 0) g.cond1est_stale = true;
  if (code == 3 && spx_log_on(g, 1))
    QZlogmod(g.model, 1, "\n%c%6d %8.0f : numerical difficulties", g.itype, g.nfact, g.iter);
  qzi_exit_msg(g);
  g.bigM = g.bigMentry;
  if (g.xstat != XSTAT_SWITCH) {
    g.ptval = ptval_in;
    g.ceps = ceps_in;
    g.reps = reps_in;
    g.pvteps = pvteps_in;
  }
  if (g.xstat == XSTAT_OPT && g.wfact != WFACT_NO) g.gflags |= kGflagPendingFact;
  return code;
}

int psimplex_phase1_mode(Glp& g) { return psimplex(g); }

}  // namespace zento
