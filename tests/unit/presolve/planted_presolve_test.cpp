// Generated LPs with a planted optimum (every bound and row type), sparse enough for the
// presolve loop to find work, and salted with structure it must take apart: scaled copies of
// rows, fixed and empty columns, empty and free rows, redundant rows. The optimum is known by
// construction; every presolved answer must reach it with a KKT certificate and a basis on
// the full model.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "presolve_test_util.h"
#include "zento_io.h"

namespace zento::test {
namespace {

TEST(PresolvePlanted, ReachesThePlantedOptimumWithCertificate) {
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  ASSERT_EQ(rc, 0);
  int reopt = 0, reducedAway = 0, total = 0;
  // ZENTO_PRESOLVE_SEED=k runs seed k alone and writes it to /tmp/presolve_seed_k.mps.
  const char* one = std::getenv("ZENTO_PRESOLVE_SEED");
  const uint64_t first = one ? std::strtoull(one, nullptr, 10) : 1, last = one ? first : 300;
  for (uint64_t seed = first; seed <= last; ++seed) {
    const LpData lp = planted_salted(seed);
    SolveRun on;
    solve(env, lp, true, on);
    if (HasFatalFailure()) return;
    if (one) {
      const std::string file = "/tmp/presolve_seed_" + std::to_string(seed) + ".mps";
      QZwriteMPSFile(on.model, file.c_str(), QZ_MPS_FIXED);
    }
    ++total;
    ASSERT_EQ(on.rc, 0) << "seed " << seed;
    ASSERT_EQ(on.status, QZ_STATUS_BASIC_OPTIMAL) << "seed " << seed;
    const KktReport k = check_model(on.model, lp);
    EXPECT_TRUE(k.ok(1e-7)) << "seed " << seed << ": " << k.worst;
    const KktReport b = check_basis(on.model, lp);
    EXPECT_LE(b.pinf, 1e-7) << "seed " << seed << ": " << b.worst;
    EXPECT_LE(b.dinf, 1e-7) << "seed " << seed << ": " << b.worst;
    reopt += on.model->glp != nullptr;
    int rdRows = lp.m;
    QZgetInfo(on.model, QZ_IINFO_NUM_RDCONS, &rdRows);
    reducedAway += rdRows < lp.m;
  }
  std::printf("%d planted models: %d reduced by presolve, %d reoptimized after postsolve\n", total,
              reducedAway, reopt);
  // The salt alone gives every model something to remove; postsolve is clean nearly always.
  EXPECT_EQ(reducedAway, total);
  EXPECT_LE(reopt, total / 20);
  QZdeleteEnv(&env);
}

}  // namespace
}  // namespace zento::test
