// Node selection: the child and back lists that make the dive, the heap behind them, pruning
// of open nodes, the global bound over them, and the switching between node rules as the
// tree grows.
#include <algorithm>
#include <cmath>

#include "core/errors.h"
#include "mip/bnb.h"

namespace zento::mip {

bool tree_empty(const BnbRecord& b) {
  return b.child_list.empty() && b.back_list.empty() && heap_size(b) == 0;
}

double open_nodes_min_bound(const BnbRecord& b) {
  double m = kInf;
  for (int n : b.child_list) m = std::min(m, node_at(b, n).bound);
  for (int n : b.back_list) m = std::min(m, node_at(b, n).bound);
  for (int n : b.heap.arr) m = std::min(m, node_at(b, n).bound);
  for (const auto& e : b.heap.delay) m = std::min(m, node_at(b, e.first).bound);
  return m;
}

namespace {

void to_heap(BnbRecord& b, int n) {
  node_at(b, n).flags &= static_cast<uint8_t>(~kInList);
  heap_insert(b, n);
}

double prune_value(const BnbRecord& b) {
  double p = b.prune_obj;
  if (b.use_cutoff) p = std::min(p, b.obj_sign * b.cutoff_obj);
  return p;
}

}  // namespace

int bnb_selectNode(BnbRecord& b, int* out, bool* load_basis) {
  *out = -1;
  *load_basis = false;
  if (!b.jump && !b.child_list.empty()) {
    size_t best = 0;
    for (size_t i = 1; i < b.child_list.size(); ++i)
      if (b.heap.cmp(b, b.child_list[i], b.child_list[best])) best = i;
    *out = b.child_list[best];
    b.child_list.erase(b.child_list.begin() + static_cast<long>(best));
    ++b.dive_length;
    node_at(b, *out).flags &= static_cast<uint8_t>(~kInList);
    return 0;
  }
  for (int n : b.child_list) to_heap(b, n);
  b.child_list.clear();
  if (b.has_incumbent) {
    const double lim = 0.99 * b.global_bound + 0.01 * b.obj_sign * b.best_obj;
    std::vector<int> keep;
    for (int n : b.back_list)
      if (node_at(b, n).bound >= lim || b.jump)
        to_heap(b, n);
      else
        keep.push_back(n);
    b.back_list.swap(keep);
  }
  b.jump = false;
  b.dive_length = 1;
  *load_basis = true;
  if (!b.back_list.empty()) {
    *out = b.back_list.back();
    b.back_list.pop_back();
    node_at(b, *out).flags &= static_cast<uint8_t>(~kInList);
    return 0;
  }
  if (heap_size(b) == 0) return 0;
  const int rc = heap_extractBest(b, out);
  return rc == 2002 ? 0 : rc;
}

void bnb_prune_treebds(BnbRecord& b) {
  const double p = prune_value(b);
  if (!(p < kInf / 2)) return;
  std::vector<int> dead;
  auto sweep = [&](std::vector<int>& list) {
    std::vector<int> keep;
    for (int n : list)
      if (node_at(b, n).bound >= p)
        dead.push_back(n);
      else
        keep.push_back(n);
    list.swap(keep);
  };
  sweep(b.child_list);
  sweep(b.back_list);
  std::vector<int> survivors;
  bool heap_hit = false;
  for (int n : b.heap.arr) {
    if (node_at(b, n).bound >= p) {
      dead.push_back(n);
      heap_hit = true;
    } else {
      survivors.push_back(n);
    }
  }
  std::vector<std::pair<int, int>> dkeep;
  for (const auto& e : b.heap.delay) {
    if (node_at(b, e.first).bound >= p)
      dead.push_back(e.first);
    else
      dkeep.push_back(e);
  }
  if (heap_hit) {
    b.heap.arr.clear();
    for (int n : survivors) {
      node_at(b, n).flags &= static_cast<uint8_t>(~kInHeap);
      heap_insert(b, n);
    }
  }
  if (dkeep.size() != b.heap.delay.size()) {
    b.heap.delay.swap(dkeep);
    for (size_t k = 0; k < b.heap.delay.size(); ++k)
      node_at(b, b.heap.delay[k].first).heap_pos = -1 - static_cast<int>(k);
  }
  for (int n : dead) {
    debug_check_node(b, n);
    Node& nd = node_at(b, n);
    nd.flags = static_cast<uint8_t>((nd.flags & ~(kInHeap | kInList)) | kDead);
    nd.heap_pos = -1;
    if (nd.bound < b.prune_obj) b.n_pruned_by_cutoff += 1;
    --b.n_active;
    node_fathom(b, n);
  }
}

void update_globalbound(BnbRecord& b) {
  double m = open_nodes_min_bound(b);
  if (b.current_bound < kInf / 2) m = std::min(m, b.current_bound);
  if (m >= kInf / 2) return;
  m = std::min(m, b.max_global_bound);
  if (m > b.global_bound) b.global_bound = m;
}

int set_node_select_rule(BnbRecord& b) {
  b.ref_bound = b.global_bound;
  const int A = b.n_active;
  const double L = b.n_lps;
  const int D = b.model->BandBPam.mip_anodes_switch_df;
  ++b.rounds;
  b.min_active = std::min(b.min_active, A);
  if (!b.rule_saved && b.heap.cmp != node_largestBound && D >= 0 && A > D) {
    b.saved_rule = b.rule_state;
    b.rule_saved = true;
    b.rule_state = 1;
    heap_crossover(b, node_largestBound);
    return 0;
  }
  if (b.rule_saved && b.rule_state == 1 && D >= 0) {
    if (10 * A < std::max(9 * D, std::min(D / 2, 1000))) {
      b.rule_state = b.saved_rule;
      b.rule_saved = false;
      heap_crossover(b, rule_comparator(b.rule_state));
    }
    return 0;
  }
  if (b.user_rule != 4 && b.user_rule != 6) return 0;
  const bool sol = b.has_incumbent || b.use_cutoff == 2;
  if (!sol) return 0;
  const double ref = b.has_incumbent ? b.best_obj : b.cutoff_obj;
  const double g = std::fabs(ref - b.global_bound * b.obj_sign) / (std::fabs(ref) + 1);
  int switched = 0;
  if (b.rule_state == 5) {
    const double d = L - std::max(b.last_sol_lp, b.switch_lp);
    const double M = std::max(1000, b.ip.n_ints);
    bool go = b.n_branches - b.switch_branch > 5000;
    const bool stall = heap_size(b) >= 2 * b.active_at_last_sol || (d >= 4 * M && g < b.gap_limit) ||
                       (d >= M && A > b.min_active && A < 100) ||
                       (d >= std::max(b.ip.n_ints, 10000) && (A < 100 || A > std::max(1000, 10 * b.min_active))) ||
                       (b.rounds > 100 && d >= 10000);
    if (stall && b.switches > 0 && ((A > b.min_active + 10 && A < 10000) || (A > b.min_active + 50 && A > 10000)))
      go = true;
    if (b.switches == 0 && d >= std::max(10000, b.ip.n_ints)) go = true;
    if (go) {
      b.rule_state = 3;
      heap_crossover(b, b.toggle ? node_smallestBound : node_smallestBound2);
      b.toggle = !b.toggle;
      switched = 1;
    }
  } else if (b.rule_state == 3 && b.n_branches - b.switch_branch >= 2001) {
    const int P = b.pool.used;
    if (!(g > 0 && g <= 0.005 && P <= 200000 && A <= 20000)) {
      bool stay = (g <= 0.0001 && A < 20001) || (g > 0.0001 && A < 5001 && P < 100001) ||
                  L < b.switch_lp + 1000;
      NodeCmp target = nullptr;
      if (P >= 500001 && A >= 7501) {
        target = node_largestBound;
        stay = false;
      }
      const double mm = std::max(b.switch_lp, b.bound_lp);
      if (!stay && !target && L < mm + 10000) {
        if (P > 300000 && A > 10000)
          target = node_largestBound;
        else if (L < mm + 4000)
          stay = true;
      }
      if (!stay) {
        if (!target) target = (A < 5001 && P < 100001) ? node_bestEstimate : node_largestBound;
        b.rule_state = 5;
        heap_crossover(b, target);
        switched = 1;
      }
    }
  }
  if (switched) {
    b.switch_lp = L;
    b.switch_branch = b.n_branches;
    b.min_active = A;
    b.rounds = 0;
    b.active_at_last_sol = A;
    b.gap_limit = g / 3;
    ++b.switches;
  }
  return switched;
}

}  // namespace zento::mip
