// Reduced-cost fixing, globally from the root LP and locally at each node.
//
// With z the LP bound of a node (min form), d_j the reduced cost of an integer column sitting at
// its lower bound l_j, and P the prune value, every point of the node with x_j >= l_j + s has
// objective at least z + d_j * s; so x_j <= l_j + floor(G / d_j) with G = P - z, and the mirror
// rule for columns at their upper bound. A factor k <= 1 and a small slack keep the fixings on
// the safe side of rounding.
#include <algorithm>
#include <cmath>

#include "core/errors.h"
#include "mip/bnb.h"

namespace zento::mip {

namespace {

double obj_norm_slack(const BnbRecord& b, double base) {
  double c2 = 0;
  for (double c : b.model->lp.padC) c2 += c * c;
  return std::min(0.1, base * std::sqrt(std::max(1.0, std::sqrt(c2) / (b.n_vars + 1))));
}

// Largest number of unit steps away from the bound that the gap allows.
long allowed_steps(double G, double d, double k, double t) {
  const double s = (G + std::max(G, 1.0) * t) / (k * std::fabs(d));
  if (s >= 2e9) return -1;
  return static_cast<long>(std::floor(s));
}

}  // namespace

int bnb_rec_cost_fixing_ini(BnbRecord& b) {
  if (!b.root_rc_valid || b.feas_only) return 0;
  double P = b.prune_obj;
  if (b.use_cutoff) P = std::min(P, b.obj_sign * b.cutoff_obj);
  if (!(P < kInf / 2)) return 0;
  const double G = P - b.root_obj;
  if (G < 0) return -1;
  const BandBParams& prm = b.model->BandBPam;
  double k = std::min(prm.mip_redcostfix_cutoff, 0.99999);
  const double Z = std::fabs(b.has_incumbent ? b.best_obj : b.cutoff_obj);
  const double r = G / (Z + 1);
  if (b.obj_step <= 0) {
    if (r < 1e-4) k = std::min(k, 0.9);
    else if (r < 1e-3) k = std::min(k, 0.99);
    else if (r < 0.01) k = std::min(k, 0.999);
  } else {
    if (r < 1e-4) k = std::min(k, 0.99);
    else if (r < 1e-3) k = std::min(k, 0.999);
    else if (r < 0.01) k = std::min(k, 0.9999);
  }
  k = std::min(k, prm.mip_redcostfix_cutoff);
  if (k <= 0) return 0;
  const double t = obj_norm_slack(b, 1e-5);
  IpData& ip = b.ip;
  for (int q = 0; q < ip.n_ints; ++q) {
    if (ip.top_lb[q] >= ip.top_ub[q]) continue;
    const int j = ip.cols[q];
    const double d = b.root_rc[static_cast<size_t>(j)];
    if (std::fabs(d) <= 1e-9) continue;
    const double x0 = b.root_x[static_cast<size_t>(j)];
    const long s = allowed_steps(G, d, k, t);
    if (s < 0) continue;
    if (d > 0 && ip.root_lb[q] > -kInf / 2 && std::fabs(x0 - ip.root_lb[q]) <= 1e-9) {
      const long nu = static_cast<long>(ip.root_lb[q]) + s;
      if (nu < ip.top_ub[q]) {
        ip.top_ub[q] = static_cast<int>(nu);
        bnb_stack_int(b, q);
        if (ip.top_ub[q] <= ip.top_lb[q]) ++b.n_ints_fixed;
      }
    } else if (d < 0 && ip.root_ub[q] < kInf / 2 && std::fabs(x0 - ip.root_ub[q]) <= 1e-9) {
      const long nl = static_cast<long>(ip.root_ub[q]) - s;
      if (nl > ip.top_lb[q]) {
        ip.top_lb[q] = static_cast<int>(nl);
        bnb_stack_int(b, q);
        if (ip.top_ub[q] <= ip.top_lb[q]) ++b.n_ints_fixed;
      }
    }
    if (ip.top_lb[q] > ip.top_ub[q]) return -1;
  }
  if (b.debug_x) debug_check_node(b, -2);
  return 0;
}

int bnb_rec_cost_fixing(BnbRecord& b, int node, double z, int* count) {
  *count = 0;
  const BandBParams& prm = b.model->BandBPam;
  const double p = prm.mip_redcostfix_cutoff_tree;
  if (p <= 0 || b.feas_only) return 0;
  double P = b.prune_obj;
  if (b.use_cutoff) P = std::min(P, b.obj_sign * b.cutoff_obj);
  if (!(P < kInf / 2)) return 0;
  const double G = P - z;
  if (G <= 0) return 0;
  const double Z = std::fabs(b.has_incumbent ? b.best_obj : b.cutoff_obj);
  const double r = G / (Z + 1);
  double k;
  if (b.obj_step <= 0) {
    k = r < 1e-6 ? 0.1 : r < 1e-5 ? 0.5 : r < 1e-4 ? std::min(p, 0.9) : r < 1e-3 ? std::min(p, 0.95) : std::min(p, 0.99);
  } else {
    k = r < 1e-6 ? 0.5 : r < 1e-5 ? 0.9 : r < 1e-4 ? std::min(p, 0.99) : r < 1e-3 ? std::min(p, 0.999) : r < 0.01 ? std::min(p, 0.9999) : p;
  }
  k = std::min({k, p, 0.99999});
  const double t = obj_norm_slack(b, 1e-4);
  IpData& ip = b.ip;
  for (int q = 0; q < ip.n_ints; ++q) {
    const double l = int_eff_lb(b, q), u = int_eff_ub(b, q);
    if (l >= u) continue;
    const int j = ip.cols[q];
    const double d = b.rc[static_cast<size_t>(j)];
    if (std::fabs(d) <= 1e-9) continue;
    const double x = b.x[static_cast<size_t>(j)];
    const long s = allowed_steps(G, d, k, t);
    if (s < 0) continue;
    if (d > 0 && l > -kInf / 2 && std::fabs(x - l) <= 1e-9) {
      const double nu = l + static_cast<double>(s);
      if (nu < u && nu < kIntInf) {
        QZ_CALL(node_add_local_change(b, node, q, kIntNegInf, static_cast<int>(nu)));
        ++*count;
      }
    } else if (d < 0 && u < kInf / 2 && std::fabs(x - u) <= 1e-9) {
      const double nl = u - static_cast<double>(s);
      if (nl > l && nl > kIntNegInf) {
        QZ_CALL(node_add_local_change(b, node, q, static_cast<int>(nl), kIntInf));
        ++*count;
      }
    }
  }
  return 0;
}

}  // namespace zento::mip
