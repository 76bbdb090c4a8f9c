// The frame of the mixed-integer solver: parameter save and restore on every way out, the
// search record's load and unload, the root relaxation and its verdicts, the hand-over to the
// loop, and the mapping of the outcome onto the model status and the error code.
//
// Presolve, cuts and heuristics are stages of their own that this build does not have; their
// parameters are read and the stages are skipped, which leaves the search exact (it only has
// less help). An LP relaxation that is unbounded is settled by a second search on the zero
// objective: a feasible integer point then proves the MIP unbounded (rational data), none
// proves it infeasible.
#include <algorithm>
#include <cmath>

#include "core/callbacks.h"
#include "core/clock.h"
#include "core/errors.h"
#include "core/messages.h"
#include "core/model_ops.h"
#include "core/modify.h"
#include "core/optimize.h"
#include "mip/bnb.h"
#include "mip/mip.h"

namespace zento::mip {

namespace {

// Everything the solver changes on the model comes back on every way out.
struct ParamScope {
  Imodel& m;
  SolverParams solver;
  SplexParams splex;
  BandBParams bandb;
  NLPParams nlp;
  explicit ParamScope(Imodel& model)
      : m(model), solver(model.SolverPam), splex(model.SplexPam), bandb(model.BandBPam),
        nlp(model.NLPPam) {}
  ~ParamScope() {
    m.SolverPam = solver;
    m.SplexPam = splex;
    m.BandBPam = bandb;
    m.NLPPam = nlp;
  }
  ParamScope(const ParamScope&) = delete;
  ParamScope& operator=(const ParamScope&) = delete;
};

struct LpOwner {
  BnbRecord& b;
  ~LpOwner() { bnb_destroy_lp(b); }
};

// Integer bounds beyond the int range stand for infinite ones (or, for a lower bound above it,
// for one no integer meets).
int round_int_lb(double v, double tol) {
  if (v <= -2.0e9) return kIntNegInf;
  if (v >= 2.0e9) return kIntInf;
  return static_cast<int>(std::ceil(v - tol));
}
int round_int_ub(double v, double tol) {
  if (v >= 2.0e9) return kIntInf;
  if (v <= -2.0e9) return kIntNegInf;
  return static_cast<int>(std::floor(v + tol));
}

int bnb_load(BnbRecord& b, Imodel& m) {
  const BandBParams& p = m.BandBPam;
  b.model = &m;
  b.n_vars = m.nVars;
  b.n_cons = m.nCons;
  b.obj_sign = m.lp.dObjSense == QZ_MAX ? -1.0 : 1.0;
  b.int_tol = p.mip_inttol;
  b.rel_opt_tol = p.mip_relopttol;
  b.abs_opt_tol = p.mip_absopttol;
  b.perc_opt_tol = p.mip_peropttol;
  b.aopt_time = p.mip_aopttimlim;
  b.obj_threshold = p.mip_obj_threshold;
  b.min_abs_obj_step = p.mip_minabsobjstep;
  b.lsol_time = p.mip_lsoltimlim;
  b.feas_tol = m.SplexPam.solver_feastol;
  b.opt_tol = m.SplexPam.solver_opttol;
  b.time_limit = p.mip_timlim;
  b.sol_limit = p.mip_sollim;
  b.branch_limit = p.mip_branch_limit;
  b.itr_limit = p.mip_itrlim;
  b.print_level = p.mip_printlevel;
  b.user_rule = p.mip_nodeselrule == 0 ? 4 : p.mip_nodeselrule;
  b.rule_state = b.user_rule == 4 ? 3 : (b.user_rule == 6 ? 5 : b.user_rule);
  b.heap.radius = p.mip_localbranchnum;
  b.heap.limit = p.mip_localbranchnum;
  if (p.mip_usecutoffobj) {
    b.use_cutoff = 1;
    b.cutoff_obj = p.mip_cutoffobj;
  }
  b.t_start = lt_get_realtime();

  IpData& ip = b.ip;
  ip.col2int.assign(static_cast<size_t>(b.n_vars), -1);
  const LinearData& d = m.lp;
  for (int j = 0; j < b.n_vars; ++j) {
    const char t = d.pszVarTypes.empty() ? 'C' : d.pszVarTypes[static_cast<size_t>(j)];
    if (t != 'B' && t != 'I') continue;
    ip.col2int[static_cast<size_t>(j)] = static_cast<int>(ip.cols.size());
    ip.cols.push_back(j);
  }
  const int n = ip.n_ints = static_cast<int>(ip.cols.size());
  ip.lb.assign(static_cast<size_t>(n), kIntNegInf);
  ip.ub.assign(static_cast<size_t>(n), kIntInf);
  ip.top_lb.resize(static_cast<size_t>(n));
  ip.top_ub.resize(static_cast<size_t>(n));
  ip.on_stack.assign(static_cast<size_t>(n), 0);
  ip.pc_up.assign(static_cast<size_t>(n), 0);
  ip.pc_down.assign(static_cast<size_t>(n), 0);
  ip.n_up.assign(static_cast<size_t>(n), 0);
  ip.n_down.assign(static_cast<size_t>(n), 0);
  ip.flags.assign(static_cast<size_t>(n), 0);
  ip.colsum.assign(static_cast<size_t>(n), 0);
  ip.root_lb.assign(static_cast<size_t>(n), -kInf);
  ip.root_ub.assign(static_cast<size_t>(n), kInf);
  for (int k = 0; k < n; ++k) {
    const int j = ip.cols[k];
    ip.top_lb[k] = round_int_lb(d.padL[j], b.int_tol);
    ip.top_ub[k] = round_int_ub(d.padU[j], b.int_tol);
    if (ip.top_lb[k] >= 0 && ip.top_ub[k] <= 1) ++ip.n_bins;
    const int len = d.panAcols.empty() ? d.paiAcols[j + 1] - d.paiAcols[j] : d.panAcols[j];
    for (int t = d.paiAcols[j]; t < d.paiAcols[j] + len; ++t) ip.colsum[k] += std::fabs(d.padAcoef[t]);
  }
  if (!m.priorities.empty() && p.mip_branch_prio != 3) {
    ip.prio.resize(static_cast<size_t>(n));
    for (int k = 0; k < n; ++k) ip.prio[k] = m.priorities[static_cast<size_t>(ip.cols[k])];
  } else if (p.mip_branch_prio == 4 && ip.n_bins > 0 && ip.n_bins < n) {
    ip.prio.resize(static_cast<size_t>(n));
    for (int k = 0; k < n; ++k) ip.prio[k] = (ip.top_lb[k] >= 0 && ip.top_ub[k] <= 1) ? 1 : 0;
  }
  return bnb_create_lp(b);
}

void fill_solution_record(BnbRecord& b) {
  Imodel& m = *b.model;
  MipSol& ms = *m.mipsol;
  bnb_publish(b);
  if (!b.has_incumbent) return;
  ms.primal = b.best_x;
  ms.obj = b.best_obj;
  ms.nSolutions = b.n_solutions;
  // Slacks, duals and reduced costs from the LP with the integers fixed at the incumbent.
  std::vector<double> act(static_cast<size_t>(b.n_cons), 0.0);
  const LinearData& d = m.lp;
  double pinf = 0, iinf = 0;
  for (int j = 0; j < b.n_vars; ++j) {
    const double x = b.best_x[static_cast<size_t>(j)];
    pinf = std::max({pinf, d.padL[j] - x, x - d.padU[j]});
    const int len = d.panAcols.empty() ? d.paiAcols[j + 1] - d.paiAcols[j] : d.panAcols[j];
    for (int t = d.paiAcols[j]; t < d.paiAcols[j] + len; ++t) act[d.paiArows[t]] += d.padAcoef[t] * x;
  }
  ms.slack.assign(static_cast<size_t>(b.n_cons), 0.0);
  for (int i = 0; i < b.n_cons; ++i) {
    const double s = d.padB[i] - act[i];
    ms.slack[i] = s;
    const char t = d.pszConTypes[i];
    if (t == 'E') pinf = std::max(pinf, std::fabs(s));
    if (t == 'L') pinf = std::max(pinf, -s);
    if (t == 'G') pinf = std::max(pinf, s);
  }
  for (int k = 0; k < b.ip.n_ints; ++k) {
    const double x = b.best_x[static_cast<size_t>(b.ip.cols[k])];
    if (std::fabs(x) < 1e8) iinf = std::max(iinf, std::fabs(x - std::round(x)));
  }
  ms.pfeas = pinf;
  ms.intpfeas = iinf;
  ms.dual.assign(static_cast<size_t>(b.n_cons), 0.0);
  ms.redcost.assign(static_cast<size_t>(b.n_vars), 0.0);
  ms.colStatus.clear();
  ms.rowStatus.clear();
  if (!b.lp) return;
  std::vector<int> cols(b.ip.cols.begin(), b.ip.cols.end());
  std::vector<double> v(cols.size());
  for (size_t k = 0; k < cols.size(); ++k) v[k] = std::round(b.best_x[static_cast<size_t>(cols[k])]);
  Imodel& lp = *b.lp;
  lp.SplexPam.solver_usecutoffval = 0;
  if (modify_bounds(lp, false, static_cast<int>(cols.size()), cols.data(), v.data()) != 0) return;
  if (modify_bounds(lp, true, static_cast<int>(cols.size()), cols.data(), v.data()) != 0) return;
  if (b.feas_only) return;
  int status = 0;
  if (QZoptimize_impl(lp, QZ_METHOD_DSIMPLEX, &status) != 0) return;
  if (status != QZ_STATUS_OPTIMAL && status != QZ_STATUS_BASIC_OPTIMAL) return;
  ms.dual = lp.sol->dual;
  ms.redcost = lp.sol->redcost;
  ms.colStatus = lp.sol->colStatus;
  ms.rowStatus = lp.sol->rowStatus;
}

// A loaded MIP start point that is feasible becomes the resident incumbent; its report says
// whether it was taken.
int check_start_point(BnbRecord& b) {
  Imodel& m = *b.model;
  const std::vector<double>& x = m.start.mip;
  if (static_cast<int>(x.size()) != b.n_vars) return 0;
  const LinearData& d = m.lp;
  double pinf = 0, iinf = 0;
  std::vector<double> act(static_cast<size_t>(b.n_cons), 0.0);
  for (int j = 0; j < b.n_vars; ++j) {
    pinf = std::max({pinf, d.padL[j] - x[j], x[j] - d.padU[j]});
    const int len = d.panAcols.empty() ? d.paiAcols[j + 1] - d.paiAcols[j] : d.panAcols[j];
    for (int t = d.paiAcols[j]; t < d.paiAcols[j] + len; ++t) act[d.paiArows[t]] += d.padAcoef[t] * x[j];
  }
  for (int i = 0; i < b.n_cons; ++i) {
    const double s = d.padB[i] - act[i];
    const char t = d.pszConTypes[i];
    if (t == 'E') pinf = std::max(pinf, std::fabs(s));
    if (t == 'L') pinf = std::max(pinf, -s);
    if (t == 'G') pinf = std::max(pinf, s);
  }
  for (int k = 0; k < b.ip.n_ints; ++k) {
    const double v = x[static_cast<size_t>(b.ip.cols[k])];
    iinf = std::max(iinf, std::fabs(v - std::round(v)));
  }
  double obj = d.dObjConst;
  for (int j = 0; j < b.n_vars; ++j) obj += d.padC[j] * x[j];
  const bool hurdle_ok = !b.use_cutoff || b.obj_sign * obj < b.obj_sign * b.cutoff_obj;
  const bool ok = pinf <= b.feas_tol && iinf <= b.int_tol && hurdle_ok;
  if (b.print_level > 0) {
    QZlogmod(&m, 1, ok ? "\nStartpoint info (*):" : "\nStartpoint info (not feasible):");
    QZlogmod(&m, 1, "\nObjvalue                         : %e  (startpoint)", obj);
    QZlogmod(&m, 1, "\nInfeasibility of solution        : %2.1e", pinf);
    QZlogmod(&m, 1, "\nInteger infeasibility of solution: %2.1e\n\n", iinf);
  }
  if (!ok) return 0;
  return bnb_update_ipsol(b, obj, x, kStartPointCode);
}

// The root relaxation and its verdicts; returns the code that ends the run, or 0 to search.
int bnb_root(BnbRecord& b, LpResult& root, bool* done) {
  *done = false;
  const int pl = b.print_level;
  if (pl > 2) QZlogmod(b.model, 1, "\n-------------------------BEGIN ROOT OPTIMIZATION----------------------\n");
  int rc = bnb_optimizeLP(b, true, -1, true, root);
  if (pl > 2) QZlogmod(b.model, 1, "\n-------------------------END   ROOT OPTIMIZATION----------------------\n");
  b.root_time = lt_get_realtime() - b.t_start;
  if (rc != 0) {
    if (rc == QZERR_TIME_LIMIT) b.term_code = 1;
    if (rc == QZERR_USER_INTERRUPT) b.term_code = 2;
    if (rc == QZERR_ITER_LIMIT) b.term_code = 7;
    *done = true;
    return rc;
  }
  switch (root.status) {
    case QZ_STATUS_INFEASIBLE:
    case QZ_STATUS_CUTOFF:
      b.mip_status = b.has_incumbent ? 4 : 2;
      if (b.use_cutoff && !b.has_incumbent) b.global_bound = b.obj_sign * b.cutoff_obj;
      *done = true;
      return 0;
    case QZ_STATUS_UNBOUNDED: {
      // Search for any integer point on the zero objective.
      b.feas_only = true;
      std::vector<int> cols(static_cast<size_t>(b.n_vars));
      for (int j = 0; j < b.n_vars; ++j) cols[j] = j;
      std::vector<double> zero(static_cast<size_t>(b.n_vars), 0.0);
      QZ_CALL(modify_objective(*b.lp, b.n_vars, cols.data(), zero.data()));
      QZ_CALL(bnb_optimizeLP(b, true, -1, false, root));
      if (root.status == QZ_STATUS_INFEASIBLE) {
        b.mip_status = 2;
        *done = true;
      }
      return 0;
    }
    case QZ_STATUS_OPTIMAL:
    case QZ_STATUS_BASIC_OPTIMAL:
      if (pl > 0) QZlogmod(b.model, 1, "\nInitial continuous objective: %f\n", root.obj);
      return 0;
    default:
      if (pl > 0) QZlogmod(b.model, 1, "Solver failed at the root node.\n");
      b.term_code = 5;
      *done = true;
      return QZERR_NUMERIC_INSTABILITY;
  }
}

int bnb_solve(BnbRecord& b) {
  // Integer intervals that rounding left empty: infeasible without an LP.
  for (int k = 0; k < b.ip.n_ints; ++k) {
    if (b.ip.top_lb[k] > b.ip.top_ub[k]) {
      b.mip_status = 2;
      return 0;
    }
    bnb_stack_int(b, k);
  }
  QZ_CALL(bnb_update_bounds_stack(b));
  b.term_code = 3;
  int root = -1;
  QZ_CALL(node_get_freeNode(b, &root));
  b.root_node = root;
  node_at(b, root).bound = -kInf;
  b.n_active = 1;
  bnb_init_objective_lattice(b);

  QZ_CALL(check_start_point(b));
  LpResult r;
  bool done = false;
  QZ_CALL(bnb_root(b, r, &done));
  if (done) {
    node_at(b, root).flags |= kDead;
    b.n_active = 0;
    return 0;
  }
  if (b.branch_limit == 0) {
    b.term_code = 1;
    return QZERR_BRANCH_LIMIT;
  }
  node_at(b, root).flags |= kInList;
  b.child_list.push_back(root);
  b.prev_node = root;
  b.next_log_branch = 0;
  const int rc = bnb_loop(b, &r);
  update_globalbound(b);
  if (rc != 0) return rc;
  if (b.feas_only) {
    b.mip_status = b.has_incumbent ? 1 : 2;
    return 0;
  }
  b.term_code = 0;
  if (tree_empty(b)) {
    b.n_active = 0;
    if (b.has_incumbent) {
      b.global_bound = std::max(b.global_bound, b.obj_sign * b.best_obj);
    } else if (b.use_cutoff) {
      b.global_bound = std::max(b.global_bound, b.obj_sign * b.cutoff_obj);
    }
  }
  if (b.has_incumbent) {
    if (b.mip_status != 5) b.mip_status = 4;
    // A bound within one objective step of the incumbent shows the incumbent.
    if (b.global_bound + b.obj_step >= b.obj_sign * b.best_obj)
      b.global_bound = std::max(b.global_bound, b.obj_sign * b.best_obj);
  } else {
    b.mip_status = 2;
  }
  return 0;
}

int final_status(const BnbRecord& b) {
  switch (b.mip_status) {
    case 1: return QZ_STATUS_UNBOUNDED;
    case 2: return QZ_STATUS_INFEASIBLE;
    case 3: return QZ_STATUS_FEASIBLE;
    case 4:
    case 5: return QZ_STATUS_OPTIMAL;
    default: return QZ_STATUS_UNKNOWN;
  }
}

bool supported(const Imodel& m) {
  return is_linear(m) && m.sets.count() == 0 && m.semicont.vars.empty() && m.alldiff.count() == 0;
}

}  // namespace

int solve_mip(Imodel& m, int* status) { return solve_mip(m, status, nullptr); }

int solve_mip(Imodel& m, int* status, SearchDebug* debug) {
  if (status) *status = QZ_STATUS_UNKNOWN;
  if (m.modelState == QZ_STATUS_UNLOADED) return QZERR_NO_MODEL_LOADED;
  SolveScope solveScope(m, RunClass::kMip);
  ParamScope params(m);
  m.SplexPam.solver_iusol = 0;
  m.SplexPam.solver_timlmt = -1;
  if (!m.mipsol) m.mipsol = std::make_unique<MipSol>();
  *m.mipsol = MipSol{};
  MipSol& ms = *m.mipsol;
  if (!supported(m)) {
    ms.MIPstatus = QZ_STATUS_UNKNOWN;
    return QZERR_NOT_SUPPORTED;
  }
  // No outside MIP solver is attached, and the enumerator-only solver type does not exist.
  if (m.BandBPam.mip_xsolver == 3) return QZERR_XSOLVER_LIB_NOT_INSTALLED;
  if (m.BandBPam.mip_solvertype == 2) return QZERR_NOT_SUPPORTED;
  const int pl = m.BandBPam.mip_printlevel;
  if (!has_integers(m) && pl > 0) QZlogmod(&m, 1, "\n\nThe problem is an LP.\n\n");
  if (pl > 0) {
    int nip = 0;
    for (char t : m.lp.pszVarTypes) nip += (t == 'B' || t == 'I');
    QZlogmod(&m, 1, "\nOri. size (m, n, nz,  nip): %6d, %6d, %8d,  %6u\n", m.nCons, m.nVars, m.nAnnz,
             static_cast<unsigned>(nip));
  }

  BnbRecord b;
  LpOwner owner{b};
  int rc = bnb_load(b, m);
  if (debug && static_cast<int>(debug->x.size()) == m.nVars) {
    b.debug_x = &debug->x;
    b.debug_obj = debug->obj;
  }
  if (rc == 0) {
    try {
      rc = bnb_solve(b);
    } catch (const std::bad_alloc&) {
      rc = QZERR_OUT_OF_MEMORY;
    }
  }
  if (rc == QZERR_SOL_LIMIT || rc == QZERR_TIME_LIMIT || rc == QZERR_BRANCH_LIMIT ||
      rc == QZERR_ITER_LIMIT || rc == QZERR_USER_INTERRUPT) {
    // A limit hit after a tolerance was met counts as success.
    if (rc != QZERR_USER_INTERRUPT && b.has_incumbent && bnb_check_if_opt(b)) {
      rc = 0;
      b.mip_status = 4;
    } else if (b.has_incumbent) {
      b.mip_status = 3;
    } else {
      b.mip_status = 0;
    }
  }
  if (rc == QZERR_NUMERIC_INSTABILITY && b.mip_status != 3) b.mip_status = 0;
  if (b.model) {
    print_banner(b, 0, 0);  // the closing line of the log
    fill_solution_record(b);
  }
  ms.MIPstatus = final_status(b);
  ms.nSolutions = b.n_solutions;
  if (pl > 0 && b.term_code == 1 && b.lsol_state == 2)
    QZlogmod(&m, 1, "Stopped due to time limit from last MIP sol.\n");
  if (rc != 0 && pl > 0) QZlogmod(&m, 1, "\nError %d: %s\n", rc, [&] { const char* t = message_text(m.env, rc); return t ? t : ""; }());
  if (pl > 0 && m.cb.logFunc) {
    QZlogmod(&m, 1, "\n\nBranch count: %.0f, LP count: %.0f, simplex iterations: %.0f",
             b.n_branches, b.n_lps, b.spx_iters);
  }
  m.lastError = rc;
  if (debug) debug->violations = b.debug_violations;
  if (status) *status = ms.MIPstatus;
  if (m.cb.progress && run_progress_callback(m, QZLOC_EXIT_SOLVER, true) != 0 && rc == 0)
    rc = QZERR_USER_INTERRUPT;
  return rc;
}

}  // namespace zento::mip
