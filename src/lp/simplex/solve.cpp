// One solve on the working record: the method, the switch loop between the methods, the
// solution return into the model's `sol` record, and the public entries that start or
// restart the engine.
#include <algorithm>
#include <cmath>

#include "core/clock.h"
#include "core/log.h"
#include "core/model.h"
#include "core/model_ops.h"
#include "lp/simplex/simplex.h"
#include "lp/simplex/spx_internal.h"

namespace zento {

namespace {

int qzi_spx_ret2err(Imodel& model, int rc) {
  int err = 0;
  switch (rc) {
    case 0: return 0;
    case 2: err = QZERR_OUT_OF_MEMORY; break;
    case 3: err = QZERR_NUMERIC_INSTABILITY; break;
    case 9: err = QZERR_USER_INTERRUPT; break;
    case 10: err = QZERR_SOLPOOL_FULL; break;
    default: err = QZERR_INTERNAL_ERROR; break;
  }
  if (model.sol) model.sol->model_status = QZ_STATUS_LOADED;
  model.lastError = err;
  return err;
}

int run_method(Glp& g) { return g.pord == 1 ? dsimplex(g) : psimplex(g); }

void qzi_spx_switch_pord(Glp& g) { g.pord = g.pord == 0 ? 1 : 0; }

// Crossing bounds decide infeasibility before any iteration.
bool crossing_bounds(const Glp& g) {
  const int N = g.n + g.m;
  for (int j = 0; j < N; ++j)
    if (g.lb[j] > g.ub[j] + g.reps) return true;
  return false;
}

}  // namespace

// x of the working columns in the user's scale and sign.
void compsol(const Glp& g, std::vector<double>& x) {
  const int N = g.n + g.m;
  x.assign(N, 0.0);
  for (int j = 0; j < N; ++j) x[j] = g.cbas[j] >= 0 ? g.rhs1[g.cbas[j]] : nbval(g, j);
  for (int j = 0; j < g.n; ++j) {
    x[j] *= g.cscal[j];
    if (g.flipped[j]) x[j] = -x[j];
  }
  for (int i = 0; i < g.m; ++i) x[g.n + i] /= g.rscal[i];
}

// Writes primal, slack, dual and reduced-cost vectors, basis statuses, objectives and the
// largest violations into the model's `sol` record.
void putsolution(Glp& g, Imodel& model, Sol& s) {
  const LinearData& lp = model.lp;
  const int n = g.n, m = g.m;
  s.resize(n, m);
  compsol(g, g.xvec);
  for (int j = 0; j < n; ++j) s.primal[j] = g.xvec[j];
  // Multipliers and reduced costs from the true costs on the final basis, unless the method
  // has just solved for exactly these.
  if (g.lu.valid() && !g.duals_exact) {
    const int saved = g.pord;
    g.pord = 1;
    compute_dual(g, g.cost0.data());
    g.pord = saved;
    compute_rdc(g, g.cost0.data());
  }
  const double os = g.oscal, sense = g.objsense;
  double ynorm = 0;
  for (int i = 0; i < m; ++i) {
    s.dual[i] = g.dual[i] * g.rscal[i] / os * sense;
    ynorm = std::max(ynorm, std::fabs(s.dual[i]));
  }
  g.ynorm = ynorm;
  // dj stays in the working orientation (mirrored columns unflipped), as the statuses it is
  // tested against; the report turns it into the user's sign.
  std::vector<double> dj(n + m);
  for (int j = 0; j < n; ++j) {
    const double d = g.rdc[j] / (g.cscal[j] * os);
    dj[j] = d;
    s.redcost[j] = (g.flipped[j] ? -d : d) * sense;
  }
  for (int i = 0; i < m; ++i) dj[n + i] = g.rdc[n + i] * g.rscal[i] / os;
  // Slacks b - Ax from the model's own numbers.
  std::vector<double> act(m, 0.0);
  for (int j = 0; j < n; ++j) {
    const double x = s.primal[j];
    if (x == 0.0) continue;
    const int b = lp.paiAcols[j];
    const int len = lp.panAcols.empty() ? lp.paiAcols[j + 1] - b : lp.panAcols[j];
    for (int k = b; k < b + len; ++k) act[lp.paiArows[k]] += lp.padAcoef[k] * x;
  }
  double pinf = 0, pinf_rel = 0;
  const double ptol = g.pertfeastol;
  auto viol = [&](double v, double bound) {
    if (ptol > 0 && std::fabs(bound) > 1) v -= std::fabs(bound) * ptol;
    return std::max(0.0, v);
  };
  for (int i = 0; i < m; ++i) {
    const double b = lp.padB[i];
    s.slack[i] = b - act[i];
    double v = 0;
    switch (g.rtype[i]) {
      case 'E': v = viol(std::fabs(act[i] - b), b); break;
      case 'L': v = viol(act[i] - b, b); break;
      case 'G': v = viol(b - act[i], b); break;
      default: break;
    }
    pinf = std::max(pinf, v);
    pinf_rel = std::max(pinf_rel, v / (1 + std::fabs(b)));
  }
  for (int j = 0; j < n; ++j) {
    const double x = s.primal[j];
    const double lo = lp.padL.empty() ? 0.0 : lp.padL[j];
    const double up = lp.padU.empty() ? QZ_INFINITY : lp.padU[j];
    if (lo > -QZ_INFINITY) pinf = std::max(pinf, viol(lo - x, lo));
    if (up < QZ_INFINITY) pinf = std::max(pinf, viol(x - up, up));
  }
  // Wrong-signed reduced costs, in the working orientation.
  double dinf = 0;
  const int N = n + m;
  for (int j = 0; j < N; ++j) {
    const double d = dj[j];
    double v = 0;
    const int st = g.cbas[j];
    const bool boxed = g.lb[j] > -g.infinity && g.ub[j] < g.infinity;
    if (st >= 0) v = std::fabs(d);
    else if (g.xstat == XSTAT_CUTOFF && boxed) v = 0;  // it may sit at either bound of a bound
    else if (st == kAtLower) v = -d;
    else if (st == kAtUpper) v = d;
    else if (st == kFree) v = std::fabs(d);
    dinf = std::max(dinf, v);
  }
  // Basis statuses in the model's convention.
  for (int j = 0; j < N; ++j) {
    int st = g.cbas[j];
    if (st == kFixed) st = dj[j] >= 0 ? kAtLower : kAtUpper;
    if (j < n && g.flipped[j] && st < 0)
      st = st == kAtLower ? kAtUpper : (st == kAtUpper ? kAtLower : st);
    if (j < n)
      s.colStatus[j] = st;
    else
      s.rowStatus[j - n] = st;
  }
  // Objectives.
  double pobj = lp.dObjConst;
  for (int j = 0; j < n; ++j) pobj += (lp.padC.empty() ? 0.0 : lp.padC[j]) * s.primal[j];
  double dw = 0;
  for (int i = 0; i < m; ++i) dw += g.dual[i] * g.rhs[i];
  for (int j = 0; j < N; ++j)
    if (g.cbas[j] < 0) {
      const double x = nbval(g, j);
      if (x != 0.0) dw += g.rdc[j] * x;
    }
  s.pobj = pobj;
  s.dobj = (dw / os + g.objconst) * sense;
  s.pinf = pinf;
  s.dinf = dinf;
  g.pinf_unscaled = pinf;
  g.dinf_unscaled = dinf;
  s.primalFloor = g.reps;
  s.dualFloor = g.ceps;
  // The condition estimate costs solves; the acceptance tests read it only for an answer
  // that is not clean.
  const bool clean = g.xstat == XSTAT_OPT && pinf <= g.reps0 && dinf <= g.ceps0;
  s.condEst = clean && g.cond1est_stale ? 0.0 : spx_cond1est(g);
}

int qzi_spx_install_sol(Glp& g, Imodel& model) {
  Sol& s = ensure_sol(model);
  const int xs = g.xstat;
  const bool write = xs == XSTAT_OPT || xs == XSTAT_INF || xs == XSTAT_INFORUNB || xs == XSTAT_UNB ||
                     xs == XSTAT_ITERLIM || xs == XSTAT_TIMELIM || xs == XSTAT_CUTOFF;
  if (write && g.lu.valid()) putsolution(g, model, s);
  s.spxIter = g.iter;
  s.basicStatus = xs == XSTAT_OPT ? QZ_STATUS_BASIC_OPTIMAL : QZ_STATUS_LOADED;
  switch (xs) {
    case XSTAT_CONT:
      s.model_status = QZ_STATUS_LOADED;
      s.primalStatus = QZ_STATUS_LOADED;
      return 0;
    case XSTAT_OPT:
      s.model_status = s.primalStatus = QZ_STATUS_BASIC_OPTIMAL;
      s.dualStatus = QZ_STATUS_OPTIMAL;
      return 0;
    case XSTAT_INF:
      s.model_status = s.primalStatus = QZ_STATUS_INFEASIBLE;
      s.dualStatus = QZ_STATUS_INFORUNB;
      s.pobj = g.sumpinf;
      return 0;
    case XSTAT_INFORUNB:
      s.model_status = s.primalStatus = QZ_STATUS_INFORUNB;
      s.dualStatus = QZ_STATUS_INFEASIBLE;
      s.pobj = g.sumdinf;
      return 0;
    case XSTAT_UNB:
      s.model_status = s.primalStatus = QZ_STATUS_UNBOUNDED;
      s.dualStatus = QZ_STATUS_INFEASIBLE;
      s.pobj = -1e30 * g.objsense;
      return 0;
    case XSTAT_ITERLIM:
      s.model_status = QZ_STATUS_LOADED;
      s.primalStatus = s.dualStatus = QZ_STATUS_UNKNOWN;
      return QZERR_ITER_LIMIT;
    case XSTAT_TIMELIM:
      s.model_status = QZ_STATUS_LOADED;
      s.primalStatus = s.dualStatus = QZ_STATUS_UNKNOWN;
      return QZERR_TIME_LIMIT;
    case XSTAT_CTRLC:
      s.model_status = QZ_STATUS_LOADED;
      s.primalStatus = QZ_STATUS_LOADED;
      return QZERR_USER_INTERRUPT;
    case XSTAT_CUTOFF:
      s.model_status = s.primalStatus = s.dualStatus = QZ_STATUS_CUTOFF;
      s.pobj = s.dobj = g.cutoff_bound;
      return 0;
    default:
      QZlogmod(&model, 1, "\nWarning: Unexpected LP status %d in %s", xs, "qzi_spx_install_sol");
      return QZERR_INTERNAL_ERROR;
  }
}

int qzi_spx_solve(Glp& g, Imodel& model, int hint) {
  struct Running {
    Glp& g;
    explicit Running(Glp& gg) : g(gg) { ++g.running; }
    ~Running() { --g.running; }
  } running(g);
  g.changed_costs = g.changed_bounds = false;
  g.tstart = lt_get_realtime();
  g.timlim = model.SplexPam.solver_timlmt;
  g.itrlim = model.SplexPam.lp_itrlmt;
  g.use_cutoff = model.SplexPam.solver_usecutoffval != 0;
  g.cutoff = model.SplexPam.solver_cutoffval;
  g.hint = hint;
  int rc = 0;
  if (crossing_bounds(g)) {
    g.xstat = XSTAT_INF;
    g.sumpinf = 0;
    if (!g.lu.valid()) {
      g.wfact = WFACT_INIT;
      const int r = QZI_spx_bupdate(g);
      if (r == 2) return qzi_spx_ret2err(model, 2);
    }
    if (g.lu.valid()) {
      compute_primal(g);
      retag_all(g);
    }
  } else {
    rc = run_method(g);
    if (rc == 0 && (g.xstat == XSTAT_SWITCH ||
                    (hint == 2 && g.xstat != XSTAT_OPT && g.xstat != XSTAT_ITERLIM &&
                     g.xstat != XSTAT_TIMELIM && g.xstat != XSTAT_CTRLC && g.xstat != XSTAT_CUTOFF))) {
      const bool warm = (g.gflags & kGflagWarm) != 0;
      int pass = 0;
      for (; pass < 10 && g.xstat == XSTAT_SWITCH; ++pass) {
        if (spx_log_on(g, 1))
          QZlogmod(&model, 1, "\nRecovering %sfrom stat=%d, #pass=%d", warm ? "(Reopt) " : "",
                   g.xstat, pass);
        g.xstat = XSTAT_CONT;
        qzi_spx_switch_pord(g);
        if (g.pord == 1 && !warm) {
          g.dpricing_param = 3;
          if (spx_log_on(g, 2)) QZlogmod(&model, 1, "\nUsing dprice=%d in switch-loop", 3);
        }
        rc = run_method(g);
        if (rc != 0) break;
      }
      if (rc == 0 && g.xstat == XSTAT_SWITCH) {
        if (model.sol) model.sol->model_status = warm ? QZ_STATUS_UNKNOWN : QZ_STATUS_LOADED;
        model.lastError = QZERR_NUMERIC_INSTABILITY;
        return QZERR_NUMERIC_INSTABILITY;
      }
    }
  }
  if (rc != 0) {
    const int err = qzi_spx_ret2err(model, rc);
    if (rc == 9) {
      g.xstat = XSTAT_CTRLC;
      qzi_spx_install_sol(g, model);
    }
    return err;
  }
  // An optimum that a method other than the dual reached beyond the cutoff is cut off too.
  if (g.xstat == XSTAT_OPT && g.use_cutoff && g.lu.valid()) {
    const double z = objective_value(g) / g.oscal + g.objconst;
    const double cut = g.cutoff * g.objsense;
    if (z > cut + 1e-9 * (1 + std::fabs(cut))) {
      g.xstat = XSTAT_CUTOFF;
      g.cutoff_bound = z * g.objsense;
    }
  }
  int err = qzi_spx_install_sol(g, model);
  // Tolerances act in the scaled space; when the unscaled answer misses them, tighten the
  // working tolerance by the gap and go on from the optimal basis.
  for (int pass = 0; pass < 3 && err == 0 && g.xstat == XSTAT_OPT && g.lu.valid(); ++pass) {
    const double tolP = model.SplexPam.solver_feastol, tolD = model.SplexPam.solver_opttol;
    const bool dbad = g.dinf_unscaled > tolD, pbad = g.pinf_unscaled > tolP;
    if (!dbad && !pbad) break;
    if (dbad) g.ceps = std::max(g.ceps * tolD / g.dinf_unscaled * 0.5, 1e-12);
    if (pbad) g.reps = std::max(g.reps * tolP / g.pinf_unscaled * 0.5, 1e-12);
    const double ceps_keep = g.ceps, reps_keep = g.reps;
    if (spx_log_on(g, 2))
      QZlogmod(&model, 1, "\nRefining unscaled solution (pinf=%.2e, dinf=%.2e), reps=%g, ceps=%g",
               g.pinf_unscaled, g.dinf_unscaled, g.reps, g.ceps);
    const double it0 = g.iter;
    g.xstat = XSTAT_CONT;
    g.pord = pbad && !dbad ? 1 : 0;
    g.fiter = 0;
    const int rc2 = run_method(g);
    g.ceps = ceps_keep;
    g.reps = reps_keep;
    if (rc2 != 0) return qzi_spx_ret2err(model, rc2);
    if (g.xstat == XSTAT_SWITCH) {
      g.xstat = XSTAT_CONT;
      qzi_spx_switch_pord(g);
      const int rc3 = run_method(g);
      if (rc3 != 0) return qzi_spx_ret2err(model, rc3);
    }
    (void)it0;
    err = qzi_spx_install_sol(g, model);
  }
  g.ceps = g.ceps0;
  g.reps = g.reps0;
  return err;
}

int QZsplexOptimize(Imodel& model, int method) {
  if (model.glp) return QZERR_INTERNAL_ERROR;
  int err = 0;
  Glp* g = lpini(model, &err);
  if (g == nullptr) {
    if (model.sol) model.sol->model_status = QZ_STATUS_LOADED;
    return err;
  }
  model.glp.reset(g);
  g->pord = method == 2 ? 1 : 0;
  if (spx_log_on(*g, 2)) QZlogmod(&model, 1, "\nSolving...");
  const int rc = qzi_spx_solve(*g, model, -1);
  if (spx_log_on(*g, 2) && model.glp) {
    QZlogmod(&model, 1, "\niters/fact          = %8g", g->nfact > 0 ? g->iter / g->nfact : g->iter);
    QZlogmod(&model, 1, "\nlnonz               = %8ld", g->lu.lnonz());
    QZlogmod(&model, 1, "\nunonz               = %8ld", g->lu.unonz());
    QZlogmod(&model, 1, "\npnonz               = %8ld", g->lu.pnonz());
  }
  if (rc == QZERR_OUT_OF_MEMORY) model.glp.reset();
  if (rc != 0) model.lastError = rc;
  return rc;
}

int QZsplexReoptimize(Imodel& model, int method) {
  if (!model.glp) return QZERR_INFO_NOT_AVAILABLE;
  Glp& g = *model.glp;
  model.lastError = 0;
  QZI_spx_param_refresh(g, model);
  if (g.crcflag) {
    g.nfact = 0;
    if (g.wfact == WFACT_NO) g.wfact = WFACT_REFACT;
  }
  if (g.xstat != XSTAT_SWITCH) g.gflags &= ~kGflagFeasible;
  std::fill(std::begin(g.wfactcnt), std::end(g.wfactcnt), 0);
  if (g.xstat != XSTAT_ITERLIM) {
    g.iter = 0;
    g.pord = method == 1 ? 0 : 1;
  } else {
    g.pord = method == 1 ? 0 : (method == 2 ? 1 : g.pord);
  }
  g.dpswitch = 0;
  g.fiter = 0;
  g.gflags |= kGflagWarm;
  const int rc = qzi_spx_solve(g, model, -1);
  if (model.glp) model.glp->gflags &= ~kGflagWarm;
  if (model.glp && model.glp->xstat == XSTAT_CONT && model.sol)
    model.sol->primalStatus = QZ_STATUS_LOADED;
  if (rc == QZERR_OUT_OF_MEMORY) model.glp.reset();
  return rc;
}

}  // namespace zento
