// Branching: the fractional list, pseudo-costs, the variable-selection rules and the making of
// children.
//
// Pseudo-costs are per-unit objective degradations observed when a child's LP is solved,
// smoothed with weight 0.5 after a first observation that is taken whole; they start at the
// magnitude of the column's reduced cost at the root. The default score combines the smaller
// and larger estimated degradation with weights w_min and w_max derived from
// QZ_DPARAM_MIP_PSEUDOCOST_WEIGT, a fractionality term that rules while pseudo-costs are
// still empty, and a pull towards columns that moved far from the root point.
#include <algorithm>
#include <cmath>

#include "core/errors.h"
#include "mip/bnb.h"

namespace zento::mip {

void ipdata_compute_fracs(BnbRecord& b) {
  b.fracs.clear();
  for (int k = 0; k < b.ip.n_ints; ++k) {
    const double l = int_eff_lb(b, k), u = int_eff_ub(b, k);
    if (l >= u) continue;
    const double x = b.x[static_cast<size_t>(b.ip.cols[k])];
    const double r = std::round(x);
    // Values beyond the int range cannot carry integer bounds; they count as integral.
    if (std::fabs(x - r) <= b.int_tol || std::fabs(x) >= 2.0e9) continue;
    const double v = std::floor(x);
    b.fracs.push_back({k, x - v, static_cast<int>(v)});
  }
}

void bnb_init_Pseudo_cost(BnbRecord& b) {
  IpData& ip = b.ip;
  for (int k = 0; k < ip.n_ints; ++k) {
    const int j = ip.cols[k];
    const float v = static_cast<float>(std::min(std::fabs(b.rc.empty() ? 0.0 : b.rc[j]), 1e20));
    ip.pc_up[k] = ip.pc_down[k] = v;
    ip.n_up[k] = ip.n_down[k] = 0;
    ip.flags[k] &= ~3;
  }
}

void node_update_pseudocosts(BnbRecord& b, int node, int mode) {
  const Node& n = node_at(b, node);
  if ((n.type != kModUpper && n.type != kModLower) || n.parent < 0 || n.branch_var < 0) return;
  const Node& p = node_at(b, n.parent);
  const int k = n.branch_var;
  const bool up = n.type == kModLower;
  const int bit = up ? 1 : 2;
  float& pc = up ? b.ip.pc_up[k] : b.ip.pc_down[k];
  int& cnt = up ? b.ip.n_up[k] : b.ip.n_down[k];
  const bool has_p = b.prune_obj < kInf / 2;
  const double dist = std::max(1.0 - static_cast<double>(n.frac), 1e-5);
  double obs;
  if (mode < 0) {
    if (!has_p) return;
    obs = std::max(b.prune_obj - p.bound, 0.0) / dist;
  } else {
    obs = (n.bound - p.bound) / dist;
    if (obs < -1e-8) obs = 0;
    obs = std::max(obs, 0.0);
  }
  const double cap = 1e20;
  const double w = (b.ip.flags[k] & bit) ? 0.5 : 1.0;
  b.ip.flags[k] |= bit;
  pc = static_cast<float>(std::min((1 - w) * pc + w * obs, cap));
  ++cnt;
}

namespace {

void weights(const BnbRecord& b, double* wmin, double* wmax) {
  const BandBParams& p = b.model->BandBPam;
  if (p.mip_pseudocost_rule == 1) {
    *wmin = 6.25;
    *wmax = 0;
  } else if (p.mip_pseudocost_rule == 2) {
    *wmin = 0;
    *wmax = 6.25;
  } else {
    const double W = p.mip_pseudocost_weigt;
    const double s = 6.25 / std::max(W, 1.0);
    *wmax = s;
    *wmin = W * s;
  }
}

int column_rows(const BnbRecord& b, int j) {
  const LinearData& d = b.model->lp;
  return d.panAcols.empty() ? d.paiAcols[j + 1] - d.paiAcols[j] : d.panAcols[j];
}

// Candidates of the highest priority class among those not nearly integral.
std::vector<int> priority_tail(const BnbRecord& b) {
  std::vector<int> idx(b.fracs.size());
  for (size_t i = 0; i < idx.size(); ++i) idx[i] = static_cast<int>(i);
  if (b.ip.prio.empty() || b.model->BandBPam.mip_branch_prio == 3) return idx;
  int best = INT32_MIN;
  for (const FracEntry& e : b.fracs)
    if (std::min(e.f, 1 - e.f) > 1e-4) best = std::max(best, b.ip.prio[e.k]);
  if (best == INT32_MIN) return idx;
  std::vector<int> tail;
  for (size_t i = 0; i < b.fracs.size(); ++i)
    if (b.ip.prio[b.fracs[i].k] == best) tail.push_back(static_cast<int>(i));
  return tail.empty() ? idx : tail;
}

double score_var2(const BnbRecord& b, const FracEntry& e, double z, double wmin, double wmax,
                  int rule) {
  const IpData& ip = b.ip;
  const int k = e.k, j = ip.cols[k];
  const double f = e.f, v = e.v;
  const double lb = int_eff_lb(b, k), ub = int_eff_ub(b, k);
  double r = ub - lb;
  if (r > 1) r = std::max(1.0, std::min({v - lb, ub - v, r / 2}));
  if (!(r >= 1) || r > 1e9) r = r > 1e9 ? 1e9 : 1;
  const double D = ip.pc_down[k] * f, U = ip.pc_up[k] * (1 - f);
  const double m = std::min(D, U), M = std::max(D, U), q = std::min(f, 1 - f);
  double s;
  if (rule == 1 || rule == 2) {
    s = m * wmin + q * std::max(wmin, wmax) / (std::sqrt(r) * 100) + M * wmax;
  } else {
    s = m * wmin + std::max(wmin, wmax) * (0.48 / std::sqrt(r)) * q + M * wmax;
    const double eps = (std::fabs(b.global_bound < -kInf / 2 ? 0 : b.global_bound) + 1) * 1e-5;
    if (m > eps) s *= 1.0005;
    if ((rule == 0 || rule == 3) && b.prune_obj < kInf / 2) {
      const double g = std::fabs(z - b.prune_obj) + b.obj_step;
      if (g / (std::fabs(b.prune_obj) + 1) > 1e-5 && g / 10 < M && g > 0) {
        const double c = std::min(g, M), t = std::max(c - m, 0.0);
        s += c * 0.75 * wmin * t / g - wmax * t;
      }
    }
    const double a = (D + U) / 2;
    if (D > 0.2 * a && U > 0.2 * a) s += wmin * a;
    if (q > 5e-6 * std::fabs(v + 1)) s *= 50;
  }
  if (!b.root_x.empty()) {
    const double x0 = b.root_x[static_cast<size_t>(j)];
    const double v0 = std::floor(x0), f0 = x0 - v0;
    s += (std::fabs(f - f0) + std::fabs(v - v0)) * b.model->BandBPam.mip_branch_top_val_diff_weight /
         (std::fabs(v + v0) / 2 + 1);
  }
  const int rows = column_rows(b, j);
  if (rows > 5) s *= std::sqrt(std::sqrt(static_cast<double>(rows - 5)));
  return s;
}

int select_var2(const BnbRecord& b, const std::vector<int>& cand, double z) {
  double wmin, wmax;
  weights(b, &wmin, &wmax);
  const int rule = b.model->BandBPam.mip_branchrule;
  int best = -1;
  double bs = -1;
  for (int i : cand) {
    const double s = score_var2(b, b.fracs[i], z, wmin, wmax, rule);
    const bool bin = b.ip.lb[b.fracs[i].k] >= 0 && b.ip.top_ub[b.fracs[i].k] <= 1;
    if (best < 0 || s > bs || (s == bs && bin)) {
      best = i;
      bs = s;
    }
  }
  return best;
}

// Maximum infeasibility with a 5% band decided by the smaller pseudo-cost degradation.
int select_var_feas(const BnbRecord& b, const std::vector<int>& cand) {
  int best = -1;
  double bq = 0, bp = 0;
  for (int i : cand) {
    const FracEntry& e = b.fracs[i];
    const double q = std::min(e.f, 1 - e.f);
    const double pcm = std::min(b.ip.pc_down[e.k] * e.f, b.ip.pc_up[e.k] * (1 - e.f));
    if (best < 0 || q > 1.05 * bq || (q * 1.05 >= bq && pcm > bp)) {
      best = i;
      bq = q;
      bp = pcm;
    }
  }
  return best;
}

int select_var_coef(const BnbRecord& b, const std::vector<int>& cand) {
  int best = -1;
  double bs = -1;
  for (int i : cand) {
    const double s = b.ip.colsum[b.fracs[i].k];
    if (s > bs) {
      bs = s;
      best = i;
    }
  }
  return best;
}

// Candidates that share rows with the column branched on at the parent; the count of shared
// rows decides, and no clear winner falls back to the general rule.
int select_var_previous(const BnbRecord& b, const std::vector<int>& cand, double z) {
  const int node = b.cur_node;
  const int parent_var = node >= 0 ? node_at(b, node).branch_var : -1;
  if (parent_var < 0) return select_var2(b, cand, z);
  const LinearData& d = b.model->lp;
  const int jp = b.ip.cols[parent_var];
  std::vector<char> mark(static_cast<size_t>(b.n_cons), 0);
  const int len = d.panAcols.empty() ? d.paiAcols[jp + 1] - d.paiAcols[jp] : d.panAcols[jp];
  for (int t = d.paiAcols[jp]; t < d.paiAcols[jp] + len; ++t) mark[d.paiArows[t]] = 1;
  int best = -1, bc = 0, ties = 0;
  for (int i : cand) {
    const int j = b.ip.cols[b.fracs[i].k];
    const int l = d.panAcols.empty() ? d.paiAcols[j + 1] - d.paiAcols[j] : d.panAcols[j];
    int c = 0;
    for (int t = d.paiAcols[j]; t < d.paiAcols[j] + l; ++t) c += mark[d.paiArows[t]];
    if (c > bc) {
      bc = c;
      best = i;
      ties = 1;
    } else if (c == bc && c > 0) {
      ++ties;
    }
  }
  if (best < 0 || ties > 1) return select_var2(b, cand, z);
  return best;
}

}  // namespace

int node_select_branch_var(BnbRecord& b, double z, int depth) {
  if (b.fracs.empty()) return -1;
  const std::vector<int> cand = priority_tail(b);
  switch (b.model->BandBPam.mip_branchrule) {
    case 2: return select_var_feas(b, cand);
    case 4: return select_var_coef(b, cand);
    case 5: return select_var_previous(b, cand, z);
    default: return select_var2(b, cand, z);
  }
}

int make_sons(BnbRecord& b, int node, int pick, double down_bound, double up_bound) {
  const FracEntry e = b.fracs[static_cast<size_t>(pick)];
  const int k = e.k;
  const Node parent = node_at(b, node);
  const int nf = static_cast<int>(std::min<size_t>(b.fracs.size(), 32767));
  int up = -1, dn = -1;
  QZ_CALL(node_get_freeNode(b, &up));
  QZ_CALL(node_get_freeNode(b, &dn));
  Node& nu = node_at(b, up);
  nu.parent = node;
  nu.depth = parent.depth + 1;
  nu.bound = std::max(parent.bound, up_bound);
  nu.ninf = static_cast<int16_t>(nf);
  nu.frac = static_cast<float>(e.f);
  nu.est = static_cast<float>((1 - e.f) * b.ip.pc_up[k]);
  nu.type = kModLower;
  nu.branch_var = k;
  nu.old_value = b.ip.lb[k];
  nu.new_value = e.v + 1;
  nu.mark = 2;
  Node& nd = node_at(b, dn);
  nd.parent = node;
  nd.depth = parent.depth + 1;
  nd.bound = std::max(parent.bound, down_bound);
  nd.ninf = static_cast<int16_t>(nf);
  nd.frac = static_cast<float>(1 - e.f);
  nd.est = static_cast<float>(e.f * b.ip.pc_down[k]);
  nd.type = kModUpper;
  nd.branch_var = k;
  nd.old_value = b.ip.ub[k];
  nd.new_value = e.v;
  nd.mark = 2;
  Node& p = node_at(b, node);
  p.child[0] = up;
  p.child[1] = dn;
  p.flags |= kChild0 | kChild1;
  b.ip.flags[k] |= 0x10;
  b.n_active += 2;
  // Children of the node just done make the dive; older list entries step back.
  for (int c : b.child_list) b.back_list.push_back(c);
  b.child_list.clear();
  while (b.back_list.size() > 4) {
    const int old = b.back_list.front();
    b.back_list.erase(b.back_list.begin());
    node_at(b, old).flags &= static_cast<uint8_t>(~kInList);
    heap_insert(b, old);
  }
  for (int c : {up, dn}) {
    node_at(b, c).flags |= kInList;
    b.child_list.push_back(c);
  }
  return 0;
}

int node_branchandSpawnChildren_no_fracs(BnbRecord& b, int node) {
  // A node without a trusted LP: split the first integer with a free interval in halves.
  for (int k = 0; k < b.ip.n_ints; ++k) {
    const double l = int_eff_lb(b, k), u = int_eff_ub(b, k);
    if (l >= u) continue;
    double mid;
    if (l <= -kInf / 2 && u >= kInf / 2)
      mid = 0;
    else if (l <= -kInf / 2)
      mid = u - 1;
    else if (u >= kInf / 2)
      mid = l;
    else
      mid = std::floor((l + u) / 2);
    b.fracs.clear();
    b.fracs.push_back({k, 0.5, static_cast<int>(mid)});
    const double bd = node_at(b, node).bound;
    return make_sons(b, node, 0, bd, bd);
  }
  return QZERR_NUMERIC_INSTABILITY;
}

}  // namespace zento::mip
