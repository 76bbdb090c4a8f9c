// The branch-and-bound loop: select a node, rebuild its LP, solve, then prune, accept an
// integral point, or branch. Closing the tree proves optimality; the gap tests may end it
// earlier within the user's tolerances.
#include <algorithm>
#include <cmath>

#include "core/callbacks.h"
#include "core/clock.h"
#include "core/errors.h"
#include "mip/bnb.h"

namespace zento::mip {

namespace {

double hurdle_min(const BnbRecord& b) {
  return b.use_cutoff ? b.obj_sign * b.cutoff_obj : kInf;
}

// Finishes a node that needs no children.
void close_node(BnbRecord& b, int cur, int pc_mode) {
  debug_check_node(b, cur);
  Node& n = node_at(b, cur);
  if (!(n.flags & kDead)) {
    n.flags |= kDead;
    --b.n_active;
  }
  if (pc_mode <= 0) node_update_pseudocosts(b, cur, pc_mode);
  node_fathom(b, cur);
}

// Jump test: a dive whose LP bound drifted far above the global bound goes back to the heap.
void jump_test(BnbRecord& b, double z, int nf) {
  if (!(b.has_incumbent || b.use_cutoff == 2)) return;
  if (b.rule_state != 3 && b.rule_state != 5) return;
  if (nf <= 2 || b.heap.cmp == node_depthfirst_smallestBound) return;
  const double T = b.prune_obj + 2 * b.obj_step, G = b.global_bound;
  if (!(T < kInf / 2) || !(G > -kInf / 2)) return;
  const double r = std::fabs(G - T) / (std::fabs(T) + 1);
  const int A = b.n_active;
  double w;
  if (r > 1e-4)
    w = A <= 5000 ? 0.5 : 0.1;
  else if (r >= 1e-6)
    w = A <= 10000 ? 0.99 : 0;
  else
    w = 0;
  const double p = (1 - w) * G + w * T;
  if (z > p) b.jump = true;
}

// Strong branching is used near the top of the tree, and while no solution exists on nodes
// with few fractionals.
bool want_strong(const BnbRecord& b, int depth, int nf) {
  const int L = b.model->BandBPam.mip_strongbranchlevel;
  if (L <= 0) return false;
  const int A = b.n_active;
  const int f = A > 20000 ? 5 : (A > 10000 ? 3 : 1);
  return depth < f * L || (nf < 5 && !b.has_incumbent && !b.use_cutoff);
}

int process_node(BnbRecord& b, int cur, const LpResult* given) {
  for (int round = 0; round < 50; ++round) {
    Node& n0 = node_at(b, cur);
    const bool is_root = cur == b.root_node && n0.depth == 0;
    b.n_branches += 1;
    LpResult r;
    if (given && round == 0) {
      r = *given;
    } else {
      QZ_CALL(bnb_optimizeLP(b, false, -1, true, r));
    }
    if (b.model->mipsol) {
      b.model->mipsol->lastBranchStatus = r.status == 20 ? QZ_STATUS_UNKNOWN : r.status;
      b.model->mipsol->lastBranchObj = r.obj;
    }
    if (r.status == QZ_STATUS_INFEASIBLE || r.status == QZ_STATUS_CUTOFF) {
      close_node(b, cur, -1);
      return 0;
    }
    if (r.status != QZ_STATUS_OPTIMAL && r.status != QZ_STATUS_BASIC_OPTIMAL) {
      // No usable LP: split on an open integer with the bound the node inherited.
      Node& n = node_at(b, cur);
      n.flags |= kDead;
      --b.n_active;
      const int rc = node_branchandSpawnChildren_no_fracs(b, cur);
      if (rc == QZERR_NUMERIC_INSTABILITY) {
        b.term_code = 5;
        return rc;
      }
      return rc;
    }
    bnb_read_lp_point(b);
    const double z = b.obj_sign * r.obj;
    double bound = std::clamp(bnb_local_bound_obj(b, z), -kInf, kInf);
    Node& n = node_at(b, cur);
    n.bound = std::max(n.bound, bound);
    bound = n.bound;
    b.current_bound = bound;
    ipdata_compute_fracs(b);
    const int nf = static_cast<int>(b.fracs.size());
    if (is_root && b.root_x.empty()) {
      b.root_x = b.x;
      b.root_rc = b.rc;
      b.root_rc_valid = true;
      b.root_obj = z;
      for (int k = 0; k < b.ip.n_ints; ++k) {
        b.ip.root_lb[k] = int_eff_lb(b, k);
        b.ip.root_ub[k] = int_eff_ub(b, k);
      }
      bnb_init_Pseudo_cost(b);
    }
    node_update_pseudocosts(b, cur, 0);
    if (nf == 0) {
      if (b.feas_only || (z < b.prune_obj && z < hurdle_min(b) + 1e-9 * (std::fabs(z) + 1)))
        QZ_CALL(bnb_update_ipsol(b, r.obj, b.x, is_root ? 5 : 0));
      close_node(b, cur, 1);
      return 0;
    }
    if (bound >= b.prune_obj || bound >= hurdle_min(b)) {
      if (bound < b.prune_obj) b.n_pruned_by_cutoff += 1;
      close_node(b, cur, 1);
      return 0;
    }
    int fixed = 0;
    QZ_CALL(bnb_rec_cost_fixing(b, cur, bound, &fixed));
    if (fixed > 0) ipdata_compute_fracs(b);
    if (b.fracs.empty()) continue;
    jump_test(b, z, nf);
    b.last_nf = nf ? nf : -1;
    bnb_storebasic_pool(b, cur);

    double down = bound, up = bound;
    int pick = -1;
    if (want_strong(b, n.depth, nf)) {
      StrongResult sr;
      QZ_CALL(node_strong_branch(b, z, n.depth, sr));
      if (sr.node_infeasible || node_at(b, cur).bound >= b.prune_obj) {
        close_node(b, cur, -1);
        return 0;
      }
      if (sr.changed) continue;  // fixings at the node: solve it again
      pick = sr.pick;
      if (pick >= 0 && b.has_incumbent) {
        down = std::max(bound, sr.down);
        up = std::max(bound, sr.up);
      }
    }
    if (pick < 0) pick = node_select_branch_var(b, bound, n.depth);
    if (pick < 0) continue;
    Node& nb = node_at(b, cur);
    nb.flags |= kDead;
    --b.n_active;
    return make_sons(b, cur, pick, down, up);
  }
  return QZERR_NUMERIC_INSTABILITY;
}

// A point offered by the host through the solution callback, adopted as the incumbent.
int adopt_outside_solution(BnbRecord& b) {
  MipSol* ms = b.model->mipsol.get();
  if (!ms || ms->nSolutions <= b.n_solutions || ms->primal.size() != static_cast<size_t>(b.n_vars))
    return 0;
  const double z = b.obj_sign * ms->obj;
  b.n_solutions = ms->nSolutions;
  if (b.has_incumbent && z >= b.obj_sign * b.best_obj) return 0;
  std::vector<double> x = ms->primal;
  --b.n_solutions;
  return bnb_update_ipsol(b, ms->obj, x, 13);
}

}  // namespace

double bnb_gap_rel(const BnbRecord& b) {
  if (!b.has_incumbent && b.use_cutoff != 2) return kInf;
  double best = b.has_incumbent ? b.obj_sign * b.best_obj : kInf;
  if (b.use_cutoff == 2) best = std::min(best, b.obj_sign * b.cutoff_obj);
  const double bound = b.global_bound;
  if (bound >= best) return 0;
  if (bound <= -kInf / 2) return kInf;
  return std::fabs(best - bound) / std::max({std::fabs(best), std::fabs(bound), 1.0});
}

bool bnb_check_if_opt(const BnbRecord& b) {
  if (!b.has_incumbent && b.use_cutoff != 2) return false;
  const double g = bnb_gap_rel(b);
  if (g < b.rel_opt_tol) return true;
  if (b.abs_opt_tol > 0 && b.has_incumbent &&
      std::fabs(b.global_bound - b.obj_sign * b.best_obj) < b.abs_opt_tol)
    return true;
  return false;
}

int bnb_check_approx_opt(BnbRecord& b) {
  const bool sol = b.has_incumbent || b.use_cutoff == 2;
  if (!sol) return 0;
  const double now = lt_get_realtime() - b.t_start;
  if (b.aopt_time >= 0 && now >= b.aopt_time && bnb_gap_rel(b) < b.perc_opt_tol) return 1;
  if (bnb_check_if_opt(b)) return 1;
  if (b.has_incumbent && b.aopt_time >= 0 && b.obj_threshold > -kInf / 2 &&
      b.obj_sign * b.best_obj <= b.obj_sign * b.obj_threshold + b.rel_opt_tol * (std::fabs(b.obj_threshold) + 1))
    return 2;
  if (b.lsol_time >= 0 && b.has_incumbent && lt_get_realtime() - b.t_last_sol >= b.lsol_time)
    return 3;
  return 0;
}

double bnb_local_bound_obj(const BnbRecord& b, double z) {
  if (b.obj_step <= 0 || b.obj_gcd <= 0 || b.feas_only) return z;
  const double c = b.obj_const;
  if (std::fabs(z) > 1e8 || std::fabs(z - c) > 1e8) return z;
  const double r = (z - c) - (std::fabs(z - c) + 1) * 1e-6;
  const double k = std::ceil(r / b.obj_gcd - std::max(b.int_tol, 1e-4));
  return std::max(z, c + k * b.obj_gcd);
}

int bnb_update_ipsol(BnbRecord& b, double obj, const std::vector<double>& x, int code) {
  if (std::fabs(obj) < 1e-10) obj = 0;
  const double z = b.obj_sign * obj;
  if (b.has_incumbent && !(z < b.obj_sign * b.best_obj - 1e-10 * (std::fabs(b.best_obj) + 1)))
    return 0;
  if (b.use_cutoff && !b.feas_only && z > std::min(b.prune_obj, b.obj_sign * b.cutoff_obj) + 1e-9 * (std::fabs(z) + 1))
    return 0;
  b.has_incumbent = true;
  b.incumbent_code = code;
  b.best_obj = obj;
  b.best_x = x;
  b.lsol_state = 1;
  b.t_last_sol = lt_get_realtime();
  ++b.n_solutions;
  if (b.mip_status < 3) b.mip_status = 3;

  // Prune value: any better solution must beat z by the objective step.
  double zz = z;
  if (b.use_cutoff) zz = std::min(zz, b.obj_sign * b.cutoff_obj);
  double p;
  if (std::fabs(zz) >= 1e8) {
    p = std::min(b.prune_obj, zz);
  } else {
    const double gb = b.global_bound > -kInf / 2 ? std::fabs(b.global_bound) : std::fabs(zz);
    p = std::min({b.prune_obj, zz + 1e-5 * std::fabs(zz) - b.obj_step,
                  zz - std::min(b.rel_opt_tol, 1e-10) * (std::min(std::fabs(zz), gb) + 1)});
    if (b.obj_step < b.min_abs_obj_step) p = std::max(p, zz - 0.9999 * b.min_abs_obj_step);
  }
  if (b.feas_only) p = -kInf;
  b.prune_obj = p;
  heap_update_delay_pool_LB_val(b);

  // Solution record and the host's incumbent callback.
  MipSol& ms = *b.model->mipsol;
  ms.primal = x;
  ms.obj = obj;
  ms.MIPstatus = QZ_STATUS_FEASIBLE;
  ms.nSolutions = b.n_solutions;
  ms.newIpSol = b.n_solutions;
  bnb_publish(b);
  int cb = 0;
  if (b.model->cb.mipFunc) {
    Imodel& m = *b.model;
    const int saved = m.callLevel;
    m.callLevel = m.callLevelSaved;
    cb = m.cb.mipFunc(&m, m.cb.mipData, obj, const_cast<double*>(x.data()));
    m.callLevel = saved;
  }
  if (code != kStartPointCode) print_banner(b, 1, code);
  b.last_sol_lp = b.n_lps;
  b.active_at_last_sol = heap_size(b);
  if (cb != 0) {
    b.model->run.stopLatched = true;
    b.term_code = 2;
    return QZERR_USER_INTERRUPT;
  }
  if (b.feas_only) return 0;
  bnb_prune_treebds(b);
  if (bnb_rec_cost_fixing_ini(b) < 0) {
    // Nothing better than the incumbent exists.
    b.global_bound = std::max(b.global_bound, std::min(b.prune_obj, z));
  }
  if (b.sol_limit > 0 && b.n_solutions >= b.sol_limit) {
    b.term_code = 1;
    return QZERR_SOL_LIMIT;
  }
  return 0;
}

int bnb_loop(BnbRecord& b, const LpResult* root_result) {
  b.heap.cmp = rule_comparator(b.rule_state);
  double rounds = 0;
  const LpResult* given = root_result;
  while (!tree_empty(b)) {
    rounds += 1;
    if (b.branch_limit >= 0 && b.n_branches >= b.branch_limit) {
      b.term_code = 1;
      return QZERR_BRANCH_LIMIT;
    }
    if (b.feas_only && b.has_incumbent) break;
    if (bnb_check_if_opt(b)) break;
    int cur = -1;
    bool load = false;
    QZ_CALL(bnb_selectNode(b, &cur, &load));
    if (cur < 0) break;
    b.cur_node = cur;
    const Node& n = node_at(b, cur);
    if (n.bound >= b.prune_obj || n.bound >= hurdle_min(b)) {
      if (n.bound < b.prune_obj) b.n_pruned_by_cutoff += 1;
      close_node(b, cur, 1);
      continue;
    }
    int infeasible = -1;
    QZ_CALL(node_constructLP(b, b.prev_node, cur, &infeasible));
    b.prev_node = cur;
    if (b.print_level > 10)
      QZlogmod(b.model, 1, "\nApplied node specific modifications, current:%d, prev:%d, num_infeas:%d",
               cur, b.prev_node, infeasible >= 0 ? 1 : 0);
    if (infeasible >= 0) {
      close_node(b, cur, -1);
      continue;
    }
    if (load && !given) QZ_CALL(bnb_loadbasic_pool(b, cur));
    const int rc = process_node(b, cur, given);
    given = nullptr;
    b.current_bound = kInf;
    if (rc != 0) {
      if (rc == QZERR_TIME_LIMIT) b.term_code = 1;
      if (rc == QZERR_USER_INTERRUPT) b.term_code = 2;
      if (rc == QZERR_ITER_LIMIT) b.term_code = 7;
      return rc;
    }
    if (b.feas_only && b.has_incumbent) break;
    if (static_cast<long long>(rounds) % 64 == 0) update_globalbound(b);
    if (b.n_branches >= b.next_log_branch) {
      update_globalbound(b);
      print_banner(b, 0, 0);
      b.next_log_branch = b.n_branches + b.log_interval;
    }
    if (b.child_list.empty() && b.back_list.empty() && set_node_select_rule(b) == 1) {
      b.bound_lp = b.n_lps;
    }
    const int approx = bnb_check_approx_opt(b);
    if (approx == 3) {
      b.lsol_state = 2;
      b.term_code = 1;
      return QZERR_TIME_LIMIT;
    }
    if (approx == 1 || approx == 2) {
      if (!bnb_check_if_opt(b)) {
        QZlogmod(b.model, b.print_level > 0, "\nUser optimality tolerance satisfied.\n");
        b.mip_status = 5;
      }
      break;
    }
    const int t = bnb_timelapsed(b.time_limit, b.model, b.t_start, QZLOC_MIP, 0);
    if (t > 0) {
      b.term_code = 1;
      return QZERR_TIME_LIMIT;
    }
    if (t < 0) {
      b.term_code = 2;
      return QZERR_USER_INTERRUPT;
    }
    QZ_CALL(adopt_outside_solution(b));
  }
  return 0;
}

}  // namespace zento::mip
