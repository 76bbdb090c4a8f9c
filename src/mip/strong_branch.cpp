// Strong branching: both children of the best-scored candidates are solved with a small
// iteration budget from the node's basis; bounds and basis are restored exactly afterwards, so
// the node's LP is left as it was found.
//
// A side that proves infeasible (or reaches the prune value) fixes the candidate to the other
// side at the node, which then asks for a re-solve. Results feed the pseudo-costs, which makes
// later nodes trust columns observed often enough (reliability branching in the sense of
// Achterberg, Koch and Martin, 2005).
#include <algorithm>
#include <cmath>
#include <numeric>

#include "core/errors.h"
#include "mip/bnb.h"

namespace zento::mip {

namespace {

constexpr int kTrust = 7;

bool integral_point(const BnbRecord& b, const std::vector<double>& x) {
  for (int k = 0; k < b.ip.n_ints; ++k) {
    const double v = x[static_cast<size_t>(b.ip.cols[k])];
    if (std::fabs(v - std::round(v)) > b.int_tol) return false;
  }
  return true;
}

// Solves one side; returns the child's bound in min form (+inf when infeasible or cut off,
// -inf when nothing is known).
int probe(BnbRecord& b, int k, bool up, int v, double iter_limit, double* bound) {
  *bound = -kInf;
  int& side = up ? b.ip.lb[k] : b.ip.ub[k];
  const int old = side;
  side = up ? v + 1 : v;
  bnb_stack_int(b, k);
  if (int_eff_lb(b, k) > int_eff_ub(b, k)) {
    *bound = kInf;
  } else {
    LpResult r;
    const int rc = bnb_optimizeLP(b, false, iter_limit, true, r);
    if (rc != 0) {
      side = old;
      bnb_stack_int(b, k);
      return rc;
    }
    if (r.status == QZ_STATUS_INFEASIBLE || r.status == QZ_STATUS_CUTOFF) {
      *bound = kInf;
    } else if (r.status == QZ_STATUS_OPTIMAL || r.status == QZ_STATUS_BASIC_OPTIMAL) {
      *bound = bnb_local_bound_obj(b, b.obj_sign * r.obj);
      if (*bound >= b.prune_obj) {
        *bound = kInf;
      } else {
        const std::vector<double>& x = b.lp->sol->primal;
        if (integral_point(b, x)) {
          std::vector<double> xs(x.begin(), x.end());
          QZ_CALL(bnb_update_ipsol(b, r.obj, xs, 3));
        }
      }
    }
  }
  side = old;
  bnb_stack_int(b, k);
  return 0;
}

void observe(BnbRecord& b, int k, bool up, double dist, double z, double bound) {
  if (!(bound > -kInf / 2) || bound >= kInf / 2) return;
  float& pc = up ? b.ip.pc_up[k] : b.ip.pc_down[k];
  int& cnt = up ? b.ip.n_up[k] : b.ip.n_down[k];
  const int bit = up ? 1 : 2;
  const double obs = std::max(bound - z, 0.0) / std::max(dist, 1e-5);
  const double w = (b.ip.flags[k] & bit) ? 0.5 : 1.0;
  b.ip.flags[k] |= bit;
  pc = static_cast<float>(std::min((1 - w) * pc + w * obs, 1e20));
  ++cnt;
}

}  // namespace

int node_strong_branch(BnbRecord& b, double z, int depth, StrongResult& res) {
  res = StrongResult{};
  if (b.fracs.empty()) return 0;
  const BandBParams& p = b.model->BandBPam;
  const bool root = depth == 0;
  int limit = root ? 50 : (depth < 10 ? 12 : 8);
  if (b.n_active > 1000 || depth > 4) limit = std::max(4, limit / 2);
  if (depth > 3 * std::max(1, p.mip_strongbranchlevel)) limit = std::min(limit, 4);

  // Order candidates by the pseudo-cost score; the rule's own pick goes first.
  std::vector<int> order(b.fracs.size());
  std::iota(order.begin(), order.end(), 0);
  auto est = [&](int i) {
    const FracEntry& e = b.fracs[static_cast<size_t>(i)];
    const double D = b.ip.pc_down[e.k] * e.f, U = b.ip.pc_up[e.k] * (1 - e.f);
    return 6.25 * std::min(D, U) + std::max(D, U) + 0.48 * std::min(e.f, 1 - e.f);
  };
  std::vector<double> key(order.size());
  for (size_t i = 0; i < order.size(); ++i) key[i] = est(static_cast<int>(i));
  std::stable_sort(order.begin(), order.end(), [&](int a, int c) { return key[a] > key[c]; });
  const int first = node_select_branch_var(b, z, depth);
  if (first >= 0) {
    auto it = std::find(order.begin(), order.end(), first);
    std::rotate(order.begin(), it, it + 1);
  }

  std::vector<int> basis;
  bnb_get_basis(b, basis);
  const std::vector<double> x_keep = b.x, rc_keep = b.rc;
  const double iter_limit = root ? 5000 : 1000;

  double best_min = -kInf, best_max = -kInf;
  int tried = 0, since_best = 0;
  int rc = 0;
  for (int i : order) {
    if (tried >= limit || since_best >= 8) break;
    const FracEntry e = b.fracs[static_cast<size_t>(i)];
    const int k = e.k;
    double dn, upb;
    const bool trusted = b.ip.n_up[k] >= kTrust && b.ip.n_down[k] >= kTrust;
    if (trusted) {
      dn = z + b.ip.pc_down[k] * e.f;
      upb = z + b.ip.pc_up[k] * (1 - e.f);
    } else {
      ++tried;
      ++b.n_strong;
      rc = probe(b, k, false, e.v, iter_limit, &dn);
      if (rc == 0 && !basis.empty()) rc = bnb_load_basis(b, basis);
      if (rc == 0) rc = probe(b, k, true, e.v, iter_limit, &upb);
      if (rc == 0 && !basis.empty()) rc = bnb_load_basis(b, basis);
      if (rc != 0) break;
      observe(b, k, false, e.f, z, dn);
      observe(b, k, true, 1 - e.f, z, upb);
      const bool dinf = dn >= kInf / 2, uinf = upb >= kInf / 2;
      if (dinf && uinf) {
        res.node_infeasible = true;
        break;
      }
      if (dinf || uinf) {
        // One side is empty: the other holds for the whole node.
        const int lo = dinf ? e.v + 1 : kIntNegInf, hi = dinf ? kIntInf : e.v;
        rc = node_add_local_change(b, b.cur_node, k, lo, hi);
        if (rc != 0) break;
        res.changed = true;
        continue;
      }
    }
    const double mn = std::min(dn, upb), mx = std::max(dn, upb);
    if (res.pick < 0 || mn > best_min + 1e-5 * (std::fabs(best_min) + 1) ||
        (std::fabs(mn - best_min) <= 1e-5 * (std::fabs(best_min) + 1) && mx > best_max)) {
      res.pick = i;
      // Pseudo-cost estimates rank candidates but bound nothing.
      res.down = !trusted && dn > -kInf / 2 ? dn : -kInf;
      res.up = !trusted && upb > -kInf / 2 ? upb : -kInf;
      best_min = mn;
      best_max = mx;
      since_best = 0;
    } else {
      ++since_best;
    }
  }
  // Exact restore of the node's LP: bounds are back (each probe undid its change) and the
  // node's basis is loaded again.
  int frc = bnb_update_bounds_stack(b);
  if (rc == 0) rc = frc;
  if (rc == 0 && !basis.empty()) rc = bnb_load_basis(b, basis);
  b.x = x_keep;
  b.rc = rc_keep;
  if (b.print_level >= 3 && tried > 0)
    QZlogmod(b.model, 1, "\nSB completed, b_index=%d, max_tc=%d, lift=%d mfn=%d cmfn=%d bs=%e mfs=%e ",
             res.pick >= 0 ? b.ip.cols[b.fracs[static_cast<size_t>(res.pick)].k] : -1, limit,
             res.changed ? 1 : 0, static_cast<int>(b.fracs.size()), tried, best_min, best_max);
  return rc;
}

}  // namespace zento::mip
