// Dual steepest-edge weights: after any number of dual iterations each row's weight must be
// the squared norm of its row of the basis inverse, as a solve from scratch gives it. A
// safeguard that replaces the updated value (a floor, a reset) shows up as a mismatch on the
// rows of structural columns.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "core/model.h"
#include "lp/simplex/glp.h"
#include "lp_oracle.h"

namespace zento::test {
namespace {

// Largest relative gap between the carried weights and the exact ones of the final basis.
double worst_weight_gap(Glp& g) {
  double worst = 0;
  SVec& r = g.rho;
  for (int p = 0; p < g.m; ++p) {
    r.set_unit(p, 1.0);
    g.lu.btran(r);
    double s = 0;
    for (int k = 0; k < r.n; ++k) s += r.val[r.idx[k]] * r.val[r.idx[k]];
    worst = std::max(worst, std::fabs(g.dual_norm[p] - s) / std::max(1.0, s));
  }
  r.clear();
  return worst;
}

TEST(DualSteepestEdge, CarriedWeightsEqualExactNormsAfterIterations) {
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  ASSERT_EQ(rc, 0);
  int checked = 0;
  for (uint64_t seed = 1; seed <= 40; ++seed) {
    GenOptions o;
    o.m = 30 + static_cast<int>(seed % 11);
    o.n = 40 + static_cast<int>((seed * 7) % 23);
    o.density = 0.15;
    o.degen = 0.1;
    o.ddegen = 0.1;
    const LpData lp = make_planted(seed, o);
    QZmodel m = QZcreateModel(env, &rc);
    ASSERT_EQ(lp.load(m), 0);
    QZsetModelIntParameter(m, QZ_IPARAM_LP_PRELEVEL, 0);
    QZsetModelIntParameter(m, QZ_IPARAM_SPLEX_DPRICING, 2);
    // Stop part way, while the weights are still the updated ones.
    QZsetModelIntParameter(m, QZ_IPARAM_LP_ITRLMT, 12);
    int status = 0;
    QZoptimize(m, QZ_METHOD_DSIMPLEX, &status);
    Glp* g = m->glp.get();
    if (g != nullptr && g->iter >= 12 && g->dpricemode == 1 && g->lu.valid()) {
      EXPECT_LT(worst_weight_gap(*g), 1e-6) << "seed " << seed;
      ++checked;
    }
    QZdeleteModel(&m);
  }
  // Most of these models need more than 12 dual iterations.
  EXPECT_GE(checked, 20);
  QZdeleteEnv(&env);
}

}  // namespace
}  // namespace zento::test
