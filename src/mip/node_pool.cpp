// Node pool, the heap of open nodes with its delay pool, and the node comparators.
//
// Nodes are addressed by index into one growing array, never by pointer. The heap is a binary
// heap ordered by the comparator of the current node rule (0 at the top). With a delay radius
// (QZ_IPARAM_MIP_LOCALBRANCHNUM) nodes whose integer distance from the incumbent exceeds the
// current key limit wait in a side pool until the heap runs dry.
#include <algorithm>
#include <cmath>

#include "core/errors.h"
#include "mip/bnb.h"

namespace zento::mip {

Node& node_at(BnbRecord& b, int idx) { return b.pool.nodes[static_cast<size_t>(idx)]; }
const Node& node_at(const BnbRecord& b, int idx) { return b.pool.nodes[static_cast<size_t>(idx)]; }

int node_get_freeNode(BnbRecord& b, int* out) {
  NodePool& p = b.pool;
  if (p.free_list.empty()) {
    const size_t old = p.nodes.size();
    const size_t grow = std::max<size_t>(old, 1024);
    p.nodes.resize(old + grow);
    for (size_t k = old + grow; k > old; --k) p.free_list.push_back(static_cast<int>(k - 1));
  }
  const int idx = p.free_list.back();
  p.free_list.pop_back();
  p.nodes[static_cast<size_t>(idx)] = Node{};
  ++p.used;
  *out = idx;
  return 0;
}

void node_free_Node(BnbRecord& b, int idx) {
  Node& n = node_at(b, idx);
  node_drop_basis(b, idx);
  for (int e = n.bin_list; e >= 0;) {
    const int next = b.pool.bins[static_cast<size_t>(e)].next;
    b.pool.bin_free.push_back(e);
    e = next;
  }
  n = Node{};
  n.flags = kDead;
  b.pool.free_list.push_back(idx);
  --b.pool.used;
}

int node_get_freebinNode(BnbRecord& b, int* out) {
  NodePool& p = b.pool;
  if (p.bin_free.empty()) {
    p.bin_free.push_back(static_cast<int>(p.bins.size()));
    p.bins.emplace_back();
  }
  *out = p.bin_free.back();
  p.bin_free.pop_back();
  p.bins[static_cast<size_t>(*out)] = BinNode{};
  return 0;
}

// ---- comparators ----

namespace {

bool benign(const Node& n) { return (n.flags & kBenign) != 0; }

// The child whose interval holds the incumbent's value of the branching column; 1 for a, -1
// for c, 0 when the rule does not apply.
int incumbent_tiebreak(const BnbRecord& b, const Node& a, const Node& c, bool near_bound) {
  if (!b.has_incumbent || b.best_x.empty()) return 0;
  const int dir = b.model->BandBPam.mip_branchdir;
  if (!(dir == 3 || (dir == 0 && near_bound))) return 0;
  if (a.parent != c.parent || a.branch_var != c.branch_var || a.branch_var < 0) return 0;
  if ((a.type != kModUpper && a.type != kModLower) || (c.type != kModUpper && c.type != kModLower))
    return 0;
  if (a.bound != c.bound) return 0;
  const double v = b.best_x[static_cast<size_t>(b.ip.cols[a.branch_var])];
  auto holds = [v](const Node& n) {
    return n.type == kModUpper ? v <= n.new_value + 1e-6 : n.new_value <= v + 1e-6;
  };
  if (holds(c)) return -1;
  if (holds(a)) return 1;
  return 0;
}

bool direction_tiebreak(const BnbRecord& b, const Node& a, const Node& c) {
  const int dir = b.model->BandBPam.mip_branchdir;
  if (dir == 1) return a.type == kModLower && c.type != kModLower;
  if (dir == 2) return a.type == kModUpper && c.type != kModUpper;
  if (dir == 0 || dir == 3) return std::fabs(a.frac) > std::fabs(c.frac);
  return false;
}

bool smallest_bound_band(const BnbRecord& b, const Node& a, const Node& c, int band, bool both_near) {
  const double tol = std::min(b.rel_opt_tol, 1e-8) * (std::max(std::fabs(a.bound), std::fabs(c.bound)) + 1);
  if (std::fabs(a.bound - c.bound) > tol) return a.bound < c.bound;
  const bool near = both_near ? (a.bound <= b.ref_bound && c.bound <= b.ref_bound)
                              : std::min(a.bound, c.bound) <= b.ref_bound + tol;
  if (a.ninf != c.ninf && b.model->BandBPam.mip_branchrule == 2) return a.ninf < c.ninf;
  const int da = a.depth, dc = c.depth;
  const bool x_case = (da < dc && near) || (da > dc && !near) || da == dc;
  auto ninf_rule = [&](bool* decided) {
    const int m = std::min(a.ninf, c.ninf);
    const int diff = std::abs(a.ninf - c.ninf);
    if ((m < 25 && diff > 5) || (m >= 25 && diff > 15)) {
      *decided = true;
      return a.ninf < c.ninf;
    }
    *decided = false;
    return false;
  };
  bool decided = false;
  if (x_case) {
    if ((da > dc + band && !near) || (da < dc - band && near)) return true;
    const bool r = ninf_rule(&decided);
    if (decided) return r;
  } else {
    if ((da < dc - band && !near) || (da > dc + band && near)) return false;
    const bool r = ninf_rule(&decided);
    if (decided) return r;
  }
  if ((da > dc && !near) || (da < dc && near)) return true;
  if (da != dc) return false;
  return direction_tiebreak(b, a, c);
}

}  // namespace

bool node_smallestBound(const BnbRecord& b, int ia, int ic) {
  const Node& a = node_at(b, ia);
  const Node& c = node_at(b, ic);
  const double gb = b.global_bound > -kInf / 2 ? std::fabs(b.global_bound) : 0.0;
  const bool near = a.bound <= b.global_bound + b.rel_opt_tol * (gb + 1);
  const int t = incumbent_tiebreak(b, a, c, near);
  if (t != 0) return t > 0;
  return smallest_bound_band(b, a, c, 10, false);
}

bool node_depthfirst_smallestBound(const BnbRecord& b, int ia, int ic) {
  const Node& a = node_at(b, ia);
  const Node& c = node_at(b, ic);
  if (a.depth != c.depth) return a.depth > c.depth;
  const double gb = b.global_bound > -kInf / 2 ? std::fabs(b.global_bound) : 0.0;
  const bool near = a.bound <= b.global_bound + b.rel_opt_tol * (gb + 1);
  const int t = incumbent_tiebreak(b, a, c, near);
  if (t != 0) return t > 0;
  if (a.bound != c.bound) return a.bound < c.bound;
  return smallest_bound_band(b, a, c, 20, true);
}

bool node_largestBound(const BnbRecord& b, int ia, int ic) {
  const Node& a = node_at(b, ia);
  const Node& c = node_at(b, ic);
  if (benign(a) != benign(c)) return !benign(a);
  if (b.prune_obj < kInf / 2) {
    const double w = std::clamp(b.rel_opt_tol, 1e-6, 1e-4);
    const double lim = b.prune_obj - w * (std::fabs(b.prune_obj) + 1) * 50;
    const bool ab = a.bound < lim, cb = c.bound < lim;
    if (ab != cb) return ab;
  }
  const bool near = std::fabs(a.bound - b.global_bound) <= b.rel_opt_tol;
  const int t = incumbent_tiebreak(b, a, c, near);
  if (t != 0) return t > 0;
  const double gb = b.global_bound > -kInf / 2 ? std::fabs(b.global_bound) : 0.0;
  const double tt = b.rel_opt_tol * (gb + 1);
  if (std::fabs(a.bound - c.bound) < tt) {
    if (a.depth != c.depth) return a.depth > c.depth;
    return direction_tiebreak(b, a, c);
  }
  return a.bound > c.bound;
}

bool node_smallestBound2(const BnbRecord& b, int ia, int ic) {
  const Node& a = node_at(b, ia);
  const Node& c = node_at(b, ic);
  if (benign(a) != benign(c)) return !benign(a);
  if (a.bound != c.bound) return a.bound < c.bound;
  if (a.depth != c.depth) return a.depth < c.depth;
  const bool near = std::fabs(a.bound - b.global_bound) <= b.rel_opt_tol;
  const int t = incumbent_tiebreak(b, a, c, near);
  if (t != 0) return t > 0;
  return direction_tiebreak(b, a, c);
}

bool node_bestEstimate(const BnbRecord& b, int ia, int ic) {
  const Node& a = node_at(b, ia);
  const Node& c = node_at(b, ic);
  if (benign(a) != benign(c)) return !benign(a);
  const double ka = a.bound + a.est, kc = c.bound + c.est;
  if (ka == kc) {
    if (a.depth != c.depth) return a.depth > c.depth;
    return std::fabs(a.frac) < std::fabs(c.frac) ? false : direction_tiebreak(b, a, c);
  }
  return ka < kc;
}

bool node_worstEstimate(const BnbRecord& b, int ia, int ic) {
  const Node& a = node_at(b, ia);
  const Node& c = node_at(b, ic);
  if (benign(a) != benign(c)) return !benign(a);
  const double ka = a.bound + a.est, kc = c.bound + c.est;
  if (ka == kc) {
    if (a.depth != c.depth) return a.depth < c.depth;
    return direction_tiebreak(b, a, c);
  }
  return ka > kc;
}

NodeCmp rule_comparator(int rule) {
  switch (rule) {
    case 1: return node_depthfirst_smallestBound;
    case 2: return node_largestBound;
    case 5:
    case 6: return node_bestEstimate;
    case 7: return node_worstEstimate;
    default: return node_smallestBound;
  }
}

// ---- heap ----

namespace {

void heap_set(BnbRecord& b, size_t pos, int node) {
  b.heap.arr[pos] = node;
  node_at(b, node).heap_pos = static_cast<int>(pos);
}

void sift_up(BnbRecord& b, size_t pos) {
  const int node = b.heap.arr[pos];
  while (pos > 0) {
    const size_t parent = (pos - 1) / 2;
    if (!b.heap.cmp(b, node, b.heap.arr[parent])) break;
    heap_set(b, pos, b.heap.arr[parent]);
    pos = parent;
  }
  heap_set(b, pos, node);
}

void sift_down(BnbRecord& b, size_t pos) {
  const size_t n = b.heap.arr.size();
  const int node = b.heap.arr[pos];
  for (;;) {
    size_t best = pos;
    int bestNode = node;
    const size_t l = 2 * pos + 1, r = 2 * pos + 2;
    if (l < n && b.heap.cmp(b, b.heap.arr[l], bestNode)) {
      best = l;
      bestNode = b.heap.arr[l];
    }
    if (r < n && b.heap.cmp(b, b.heap.arr[r], bestNode)) {
      best = r;
      bestNode = b.heap.arr[r];
    }
    if (best == pos) break;
    heap_set(b, pos, bestNode);
    pos = best;
  }
  heap_set(b, pos, node);
}

void heap_remove_at(BnbRecord& b, size_t pos) {
  const int last = b.heap.arr.back();
  b.heap.arr.pop_back();
  if (pos < b.heap.arr.size()) {
    heap_set(b, pos, last);
    sift_up(b, pos);
    sift_down(b, static_cast<size_t>(node_at(b, last).heap_pos));
  }
}

// Integer distance of the incumbent from a node's current interval (0 without incumbent).
int delay_key(BnbRecord& b, int node) {
  if (!b.has_incumbent || b.best_x.empty()) return 0;
  // The interval of a node is known only along its path; the key is measured on the node's
  // own change, which is the one that moves it away from the incumbent's branch.
  const Node& n = node_at(b, node);
  int key = 0;
  for (int p = node; p >= 0; p = node_at(b, p).parent) {
    const Node& q = node_at(b, p);
    if (q.type != kModUpper && q.type != kModLower) continue;
    const double v = b.best_x[static_cast<size_t>(b.ip.cols[q.branch_var])];
    double d = 0;
    if (q.type == kModUpper && v > q.new_value) d = v - q.new_value;
    if (q.type == kModLower && v < q.new_value) d = q.new_value - v;
    key += static_cast<int>(std::min(d + b.int_tol, 1.0e6));
  }
  (void)n;
  return key;
}

void heap_push_plain(BnbRecord& b, int node) {
  Node& n = node_at(b, node);
  n.flags |= kInHeap;
  b.heap.arr.push_back(node);
  sift_up(b, b.heap.arr.size() - 1);
}

}  // namespace

void heap_insert(BnbRecord& b, int node) {
  Heap& h = b.heap;
  if (h.radius > 0 && h.limit > 0) {
    const int key = delay_key(b, node);
    if (h.limit < key) {
      Node& n = node_at(b, node);
      n.flags |= kInHeap;
      n.heap_pos = -1 - static_cast<int>(h.delay.size());
      h.delay.emplace_back(node, key);
      return;
    }
  }
  heap_push_plain(b, node);
}

int heap_size(const BnbRecord& b) {
  return static_cast<int>(b.heap.arr.size() + b.heap.delay.size());
}

namespace {

void release_delay(BnbRecord& b, int limit) {
  Heap& h = b.heap;
  std::vector<std::pair<int, int>> keep;
  for (auto& [node, key] : h.delay)
    if (limit < 0 || key <= limit)
      heap_push_plain(b, node);
    else
      keep.emplace_back(node, key);
  h.delay.swap(keep);
  for (size_t k = 0; k < h.delay.size(); ++k) node_at(b, h.delay[k].first).heap_pos = -1 - static_cast<int>(k);
}

}  // namespace

int heap_extractBest(BnbRecord& b, int* out) {
  Heap& h = b.heap;
  if (h.arr.empty() && h.delay.empty()) return 2002;
  if (h.arr.empty()) {
    int kmin = h.delay[0].second;
    for (auto& e : h.delay) kmin = std::min(kmin, e.second);
    h.limit = kmin + h.radius;
    if (h.limit > std::max(20, 4 * h.radius)) {
      h.limit = 0;
      release_delay(b, -1);
    } else {
      release_delay(b, h.limit);
    }
  }
  // Benign nodes at the top are stepped over.
  size_t pos = 0;
  while (pos < h.arr.size() && (node_at(b, h.arr[pos]).flags & kBenign)) ++pos;
  if (pos >= h.arr.size()) pos = h.arr.size() - 1;
  *out = h.arr[pos];
  heap_remove_at(b, pos);
  Node& n = node_at(b, *out);
  n.flags &= static_cast<uint8_t>(~kInHeap);
  n.heap_pos = -1;
  return 0;
}

void heap_remove(BnbRecord& b, int node) {
  Node& n = node_at(b, node);
  if (!(n.flags & kInHeap)) return;
  Heap& h = b.heap;
  if (n.heap_pos >= 0) {
    heap_remove_at(b, static_cast<size_t>(n.heap_pos));
  } else {
    const size_t k = static_cast<size_t>(-1 - n.heap_pos);
    h.delay[k] = h.delay.back();
    h.delay.pop_back();
    if (k < h.delay.size()) node_at(b, h.delay[k].first).heap_pos = -1 - static_cast<int>(k);
  }
  n.flags &= static_cast<uint8_t>(~kInHeap);
  n.heap_pos = -1;
}

void heap_crossover(BnbRecord& b, NodeCmp cmp) {
  b.heap.cmp = cmp;
  std::vector<int> all;
  all.swap(b.heap.arr);
  for (int node : all) heap_push_plain(b, node);
}

void heap_update_delay_pool_LB_val(BnbRecord& b) {
  if (b.heap.radius <= 0) return;
  b.heap.limit = b.heap.radius;
  release_delay(b, -1);
}

void node_pushBenignNode(BnbRecord& b, int node) {
  node_at(b, node).flags |= kBenign;
  heap_insert(b, node);
}

}  // namespace zento::mip
