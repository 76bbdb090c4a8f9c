// Planted LPs solved under every pricing and scaling setting, each answer checked by an
// independent KKT certificate.
#include <gtest/gtest.h>

#include <tuple>

#include "../common/env_fixture.h"
#include "core/model.h"
#include "lp_oracle.h"

namespace zento::test {
namespace {

struct Setting {
  const char* name;
  int method;
  int scale;
  int ppricing;
  int dpricing;
  int dratio;
  int dphase;
};

using Planted = EnvParamFixture<Setting>;

void apply(QZmodel m, const Setting& s) {
  m->SplexPam.lp_scale = s.scale;
  m->SplexPam.splex_ppricing = s.ppricing;
  m->SplexPam.splex_dpricing = s.dpricing;
  m->SplexPam.lp_dratio = s.dratio;
  m->SplexPam.splex_dual_phase = s.dphase;
}

TEST_P(Planted, OptimalWithKktCertificate) {
  const Setting st = GetParam();
  int failures = 0;
  for (uint64_t seed = 1; seed <= 60; ++seed) {
    GenOptions o;
    o.m = 4 + static_cast<int>(seed % 17);
    o.n = 3 + static_cast<int>((seed * 7) % 23);
    o.density = 0.15 + 0.05 * (seed % 5);
    o.degen = (seed % 3) * 0.25;
    o.ddegen = (seed % 4) * 0.2;
    o.wide_scale = seed % 7 == 0;
    const LpData lp = make_planted(seed, o);
    int rc = 0;
    QZmodel m = QZcreateModel(env, &rc);
    ASSERT_EQ(lp.load(m), 0);
    apply(m, st);
    int status = 0;
    rc = QZoptimize(m, st.method, &status);
    EXPECT_EQ(rc, 0) << "seed " << seed;
    EXPECT_EQ(status, QZ_STATUS_BASIC_OPTIMAL) << "seed " << seed;
    if (rc == 0 && status == QZ_STATUS_BASIC_OPTIMAL) {
      const KktReport r = check_model(m, lp);
      EXPECT_TRUE(r.ok(1e-7)) << "seed " << seed << " worst " << r.worst;
      if (!r.ok(1e-7)) ++failures;
    } else {
      ++failures;
    }
    QZdeleteModel(&m);
    if (failures > 3) break;
  }
}

const Setting kSettings[] = {
    {"primal_auto", 1, -1, -1, -1, 1, 0},   {"primal_partial", 1, -1, 0, -1, 1, 0},
    {"primal_devex", 1, -1, 2, -1, 1, 0},   {"primal_devex1", 1, -1, 1, -1, 1, 0},
    {"primal_devex3", 1, -1, 3, -1, 1, 0},  {"primal_unscaled", 1, 0, -1, -1, 1, 0},
    {"primal_rows", 1, 2, -1, -1, 1, 0},    {"primal_cols", 1, 3, -1, -1, 1, 0},
    {"dual_auto", 2, -1, -1, -1, 1, 0},     {"dual_dantzig", 2, -1, -1, 0, 1, 0},
    {"dual_steep", 2, -1, -1, 2, 1, 0},     {"dual_devex", 2, -1, -1, 3, 1, 0},
    {"dual_harris", 2, -1, -1, -1, 0, 0},   {"dual_unscaled", 2, 0, -1, -1, 1, 0},
    {"free_default", 0, -1, -1, -1, 1, 0},
};

INSTANTIATE_TEST_SUITE_P(Settings, Planted, ::testing::ValuesIn(kSettings),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace zento::test
