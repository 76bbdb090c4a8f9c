// Rebuilding a node's relaxation from the one last solved, through the common ancestor; node
// removal; the pool of stored bases.
//
// Invariant: the integer intervals in IpData are those of the path from the root to the node
// the LP mirrors. Every node carries one change (its own bound) and optionally a list of extra
// changes made while it was current (fixings); undo restores the recorded old values, so the
// walk up and down touches each change once and the LP sees one batched flush.
#include <algorithm>
#include <cmath>

#include "core/errors.h"
#include "mip/bnb.h"

namespace zento::mip {

namespace {

void apply_own(BnbRecord& b, const Node& n) {
  if (n.type == kModUpper) {
    b.ip.ub[n.branch_var] = n.new_value;
    bnb_stack_int(b, n.branch_var);
  } else if (n.type == kModLower) {
    b.ip.lb[n.branch_var] = n.new_value;
    bnb_stack_int(b, n.branch_var);
  }
}

void undo_own(BnbRecord& b, const Node& n) {
  if (n.type == kModUpper) {
    b.ip.ub[n.branch_var] = n.old_value;
    bnb_stack_int(b, n.branch_var);
  } else if (n.type == kModLower) {
    b.ip.lb[n.branch_var] = n.old_value;
    bnb_stack_int(b, n.branch_var);
  }
}

// Extra changes are kept newest first; apply goes oldest first.
void apply_bins(BnbRecord& b, const Node& n) {
  std::vector<int> order;
  for (int e = n.bin_list; e >= 0; e = b.pool.bins[static_cast<size_t>(e)].next) order.push_back(e);
  for (auto it = order.rbegin(); it != order.rend(); ++it) {
    BinNode& e = b.pool.bins[static_cast<size_t>(*it)];
    e.old_lb = b.ip.lb[e.k];
    e.old_ub = b.ip.ub[e.k];
    b.ip.lb[e.k] = std::max(e.lb, e.old_lb);
    b.ip.ub[e.k] = std::min(e.ub, e.old_ub);
    bnb_stack_int(b, e.k);
  }
}

void undo_bins(BnbRecord& b, const Node& n) {
  for (int e = n.bin_list; e >= 0; e = b.pool.bins[static_cast<size_t>(e)].next) {
    const BinNode& be = b.pool.bins[static_cast<size_t>(e)];
    b.ip.lb[be.k] = be.old_lb;
    b.ip.ub[be.k] = be.old_ub;
    bnb_stack_int(b, be.k);
  }
}

bool interval_empty(const BnbRecord& b, int k) {
  return std::max(b.ip.lb[k], b.ip.top_lb[k]) > std::min(b.ip.ub[k], b.ip.top_ub[k]);
}

bool node_leaves_empty(const BnbRecord& b, const Node& n) {
  if ((n.type == kModUpper || n.type == kModLower) && interval_empty(b, n.branch_var)) return true;
  for (int e = n.bin_list; e >= 0; e = b.pool.bins[static_cast<size_t>(e)].next)
    if (interval_empty(b, b.pool.bins[static_cast<size_t>(e)].k)) return true;
  return false;
}

}  // namespace

int node_constructLP(BnbRecord& b, int prev, int cur, int* first_infeasible) {
  *first_infeasible = -1;
  if (prev == cur || cur < 0) return 0;
  std::vector<int> down;  // from cur up to the common ancestor (exclusive)
  int a = prev, c = cur;
  auto depth = [&](int i) { return node_at(b, i).depth; };
  if (a >= 0) {
    std::vector<int> up;
    while (a != c) {
      if (a >= 0 && (c < 0 || depth(a) >= depth(c))) {
        up.push_back(a);
        a = node_at(b, a).parent;
      } else if (c >= 0) {
        down.push_back(c);
        c = node_at(b, c).parent;
      }
      if (a < 0 && c < 0) return QZERR_INTERNAL_ERROR;  // two roots: a corrupted tree
    }
    for (int u : up) {
      const Node& n = node_at(b, u);
      undo_bins(b, n);
      undo_own(b, n);
    }
  } else {
    for (int p = cur; p >= 0; p = node_at(b, p).parent) down.push_back(p);
  }
  for (auto it = down.rbegin(); it != down.rend(); ++it) {
    const Node& n = node_at(b, *it);
    apply_own(b, n);
    apply_bins(b, n);
    if (*first_infeasible < 0 && node_leaves_empty(b, n)) *first_infeasible = *it;
  }
  return bnb_update_bounds_stack(b);
}

int node_add_local_change(BnbRecord& b, int idx, int k, int lb, int ub) {
  int e = -1;
  QZ_CALL(node_get_freebinNode(b, &e));
  BinNode& be = b.pool.bins[static_cast<size_t>(e)];
  Node& n = node_at(b, idx);
  be.k = k;
  be.lb = lb;
  be.ub = ub;
  be.old_lb = b.ip.lb[k];
  be.old_ub = b.ip.ub[k];
  be.next = n.bin_list;
  n.bin_list = e;
  b.ip.lb[k] = std::max(lb, be.old_lb);
  b.ip.ub[k] = std::min(ub, be.old_ub);
  bnb_stack_int(b, k);
  return 0;
}

void debug_check_node(BnbRecord& b, int idx) {
  if (!b.debug_x) return;
  const double tol = 1e-6 * (std::fabs(b.debug_obj) + 1);
  if (b.has_incumbent && b.obj_sign * b.best_obj <= b.obj_sign * b.debug_obj + tol) return;
  const std::vector<double>& x = *b.debug_x;
  auto xk = [&](int k) { return x[static_cast<size_t>(b.ip.cols[k])]; };
  for (int k = 0; k < b.ip.n_ints; ++k)
    if (xk(k) < b.ip.top_lb[k] - 1e-6 || xk(k) > b.ip.top_ub[k] + 1e-6) {
      ++b.debug_violations;  // a global fixing removed it
      return;
    }
  if (idx == -2) return;
  if (idx < 0) {
    for (int k = 0; k < b.ip.n_ints; ++k)
      if (xk(k) < b.ip.lb[k] - 1e-6 || xk(k) > b.ip.ub[k] + 1e-6) return;
    ++b.debug_violations;
    return;
  }
  for (int p = idx; p >= 0; p = node_at(b, p).parent) {
    const Node& n = node_at(b, p);
    if (n.type == kModUpper && xk(n.branch_var) > n.new_value + 1e-6) return;
    if (n.type == kModLower && xk(n.branch_var) < n.new_value - 1e-6) return;
    for (int e = n.bin_list; e >= 0; e = b.pool.bins[static_cast<size_t>(e)].next) {
      const BinNode& be = b.pool.bins[static_cast<size_t>(e)];
      if (xk(be.k) < be.lb - 1e-6 || xk(be.k) > be.ub + 1e-6) return;
    }
  }
  ++b.debug_violations;
}

void node_fathom(BnbRecord& b, int idx) {
  // Free the node and every ancestor left without a live child. The path of the LP may run
  // through freed nodes, so the LP is first moved to the nearest surviving ancestor when it
  // mirrors a node about to go.
  int node = idx;
  while (node >= 0) {
    Node& n = node_at(b, node);
    if (n.child[0] >= 0 || n.child[1] >= 0) break;
    const int parent = n.parent;
    if (parent >= 0) {
      Node& p = node_at(b, parent);
      if (p.child[0] == node) {
        p.child[0] = -1;
        p.flags &= static_cast<uint8_t>(~kChild0);
      }
      if (p.child[1] == node) {
        p.child[1] = -1;
        p.flags &= static_cast<uint8_t>(~kChild1);
      }
    }
    if (node == b.prev_node || node == b.cur_node) {
      // Keep the record of the node the LP mirrors: undo its changes so the LP steps to the
      // parent's state, then release it.
      undo_bins(b, n);
      undo_own(b, n);
      if (node == b.prev_node) b.prev_node = parent;
      if (node == b.cur_node) b.cur_node = parent;
    }
    if (node == b.root_node) b.root_node = -1;
    node_free_Node(b, node);
    // An open ancestor (a node still waiting in the heap) keeps its place.
    if (parent >= 0 && !(node_at(b, parent).flags & kDead)) break;
    node = parent;
  }
}

// ---- bases ----

void node_drop_basis(BnbRecord& b, int node) {
  Node& n = node_at(b, node);
  if (n.basis_index < 0) return;
  b.bases[static_cast<size_t>(n.basis_index)].reset();
  b.bases_free.push_back(n.basis_index);
  n.basis_index = -1;
}

void bnb_storebasic_pool(BnbRecord& b, int node) {
  // Memory guard: about 64M status words in all.
  const double per = static_cast<double>(b.n_vars + b.n_cons);
  const double held = static_cast<double>(b.bases.size() - b.bases_free.size()) * per;
  if (held + per > 64e6) return;
  auto basis = std::make_shared<std::vector<int>>();
  bnb_get_basis(b, *basis);
  node_drop_basis(b, node);
  if (basis->empty()) return;
  int slot;
  if (!b.bases_free.empty()) {
    slot = b.bases_free.back();
    b.bases_free.pop_back();
  } else {
    slot = static_cast<int>(b.bases.size());
    b.bases.emplace_back();
  }
  b.bases[static_cast<size_t>(slot)] = std::move(basis);
  node_at(b, node).basis_index = slot;
}

int bnb_loadbasic_pool(BnbRecord& b, int node) {
  QZ_CALL(bnb_update_bounds_stack(b));
  // The basis is the one of the nearest ancestor that stored one.
  for (int p = node_at(b, node).parent; p >= 0; p = node_at(b, p).parent) {
    const Node& n = node_at(b, p);
    if (n.basis_index >= 0 && b.bases[static_cast<size_t>(n.basis_index)])
      return bnb_load_basis(b, *b.bases[static_cast<size_t>(n.basis_index)]);
  }
  return 0;
}

}  // namespace zento::mip
