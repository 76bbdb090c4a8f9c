// The presolved route of the LP path: the kept copy and when it goes, progress reports and
// stops during presolve, and the reoptimization from a rebuilt basis that is not clean.
#include <gtest/gtest.h>

#include <string>

#include "../common/env_fixture.h"
#include "presolve_test_util.h"
#include "zento_modify.h"

namespace zento::test {
namespace {

LpData sample(uint64_t seed) {
  GenOptions o;
  o.m = 18;
  o.n = 25;
  o.density = 0.12;
  return make_planted(seed, o);
}

using PathTest = EnvFixture;

TEST_F(PathTest, KeptCopyServesTheNextSolve) {
  const LpData lp = sample(3);
  SolveRun r;
  solve(env, lp, true, r);
  ASSERT_EQ(r.status, QZ_STATUS_BASIC_OPTIMAL);
  const PresolveRecord* kept = r.model->presolve.get();
  ASSERT_NE(kept, nullptr);
  int status = 0, iters = -1;
  ASSERT_EQ(QZoptimize(r.model, QZ_METHOD_FREE, &status), 0);
  QZgetInfo(r.model, QZ_IINFO_SIM_ITER, &iters);
  EXPECT_EQ(r.model->presolve.get(), kept) << "presolve ran again";
  EXPECT_EQ(iters, 0);
  double obj = 0;
  QZgetObjective(r.model, &obj);
  EXPECT_NEAR(obj, lp.opt, 1e-7 * (1 + std::fabs(lp.opt)));
}

TEST_F(PathTest, OtherLevelDropsTheCopyAndStartsFromTheBasis) {
  const LpData lp = sample(4);
  SolveRun r;
  solve(env, lp, true, r);
  ASSERT_NE(r.model->presolve, nullptr);
  ASSERT_EQ(QZsetModelIntParameter(r.model, QZ_IPARAM_LP_PRELEVEL, 126), 0);
  int status = 0, iters = -1;
  ASSERT_EQ(QZoptimize(r.model, QZ_METHOD_PSIMPLEX, &status), 0);
  EXPECT_EQ(r.model->presolve, nullptr);
  QZgetInfo(r.model, QZ_IINFO_SIM_ITER, &iters);
  EXPECT_LE(iters, 2) << "the postsolved basis is optimal";
  EXPECT_TRUE(check_model(r.model, lp).ok(1e-7));
}

TEST_F(PathTest, ModificationDropsTheCopy) {
  LpData lp = sample(5);
  SolveRun r;
  solve(env, lp, true, r);
  ASSERT_NE(r.model->presolve, nullptr);
  // Loosen then tighten a bound: the answer must be the cold answer of the changed model.
  int col = 0;
  for (int j = 0; j < lp.n; ++j)
    if (lp.up[j] < kInf && lp.lo[j] < lp.up[j]) col = j;
  const double nu = lp.up[col] - 0.5;
  ASSERT_EQ(QZmodifyUpperBounds(r.model, 1, &col, &nu), 0);
  EXPECT_EQ(r.model->presolve, nullptr);
  int status = 0;
  ASSERT_EQ(QZoptimize(r.model, QZ_METHOD_FREE, &status), 0);
  LpData changed = LpData::from_model(r.model);
  SolveRun cold;
  solve(env, changed, false, cold);
  ASSERT_TRUE(same_verdict(status, cold.status)) << status << " vs " << cold.status;
  if (status == QZ_STATUS_BASIC_OPTIMAL) {
    double obj = 0;
    QZgetObjective(r.model, &obj);
    EXPECT_NEAR(obj, cold.obj, 1e-7 * (1 + std::fabs(cold.obj)));
    EXPECT_TRUE(check_model(r.model, changed).ok(1e-7));
  }
}

TEST_F(PathTest, LoadedBasisSkipsPresolve) {
  const LpData lp = sample(6);
  SolveRun first;
  solve(env, lp, false, first);
  std::vector<int> cst(lp.n), rst(lp.m);
  ASSERT_EQ(QZgetBasis(first.model, cst.data(), rst.data()), 0);
  // The loader takes an equation's logical at its lower bound only.
  for (int& s : rst)
    if (s == QZ_BASTYPE_ATUP) s = QZ_BASTYPE_ATLO;
  int rc = 0;
  QZmodel m = QZcreateModel(env, &rc);
  ASSERT_EQ(lp.load(m), 0);
  ASSERT_EQ(QZloadBasis(m, cst.data(), rst.data()), 0);
  int status = 0, iters = -1;
  ASSERT_EQ(QZoptimize(m, QZ_METHOD_FREE, &status), 0);
  QZgetInfo(m, QZ_IINFO_SIM_ITER, &iters);
  EXPECT_EQ(m->presolve, nullptr);
  EXPECT_EQ(status, QZ_STATUS_BASIC_OPTIMAL);
  EXPECT_LE(iters, 1);
  QZdeleteModel(&m);
}

struct Progress {
  int calls = 0, badReads = 0, maxRows = 0, stopAt = -1;
  int lastStage = 0;
  double elapsed = -1;
};

int on_progress(QZmodel model, int loc, void* data) {
  auto* p = static_cast<Progress*>(data);
  if (loc != QZLOC_PRESOLVE) return 0;
  ++p->calls;
  int rows = 0, cols = 0, nonz = 0, passes = 0, stage = 0;
  double secs = 0;
  p->badReads += QZgetCallbackInfo(model, loc, QZ_IINFO_PRE_NUM_RED_ROWS, &rows) != 0;
  p->badReads += QZgetCallbackInfo(model, loc, QZ_IINFO_PRE_NUM_RED_COLS, &cols) != 0;
  p->badReads += QZgetCallbackInfo(model, loc, QZ_IINFO_PRE_NUM_RED_NONZ, &nonz) != 0;
  p->badReads += QZgetCallbackInfo(model, loc, QZ_IINFO_PRE_NUM_PASSES, &passes) != 0;
  p->badReads += QZgetCallbackInfo(model, loc, QZ_IINFO_PRE_LAST_STAGE, &stage) != 0;
  p->badReads += QZgetCallbackInfo(model, loc, QZ_DINFO_PRE_ELAPSED, &secs) != 0;
  if (rows < 0 || cols < 0 || stage < 1 || secs < 0) ++p->badReads;
  p->maxRows = std::max(p->maxRows, rows);
  p->lastStage = stage;
  p->elapsed = secs;
  return p->calls == p->stopAt ? 1 : 0;
}

TEST_F(PathTest, ProgressDuringPresolve) {
  const LpData lp = sample(7);
  int rc = 0;
  QZmodel m = QZcreateModel(env, &rc);
  ASSERT_EQ(lp.load(m), 0);
  ASSERT_EQ(QZsetModelDouParameter(m, QZ_DPARAM_CALLBACKFREQ, 0.0), 0);
  Progress p;
  ASSERT_EQ(QZsetCallback(m, on_progress, &p), 0);
  int status = 0;
  ASSERT_EQ(QZoptimize(m, QZ_METHOD_FREE, &status), 0);
  EXPECT_GT(p.calls, 2);
  EXPECT_EQ(p.badReads, 0);
  int rdRows = lp.m;
  QZgetInfo(m, QZ_IINFO_NUM_RDCONS, &rdRows);
  EXPECT_EQ(p.maxRows, lp.m - rdRows) << "the last report shows what was removed";
  EXPECT_GE(p.elapsed, 0);
  // After the solve the presolve keys are no longer live.
  int rows = 0;
  EXPECT_NE(QZgetCallbackInfo(m, QZLOC_PRESOLVE, QZ_IINFO_PRE_NUM_RED_ROWS, &rows), 0);
  QZdeleteModel(&m);
}

TEST_F(PathTest, StopsDuringPresolveLeaveTheModelUnchanged) {
  const LpData lp = sample(8);
  int rc = 0;
  QZmodel m = QZcreateModel(env, &rc);
  ASSERT_EQ(lp.load(m), 0);
  ASSERT_EQ(QZsetModelDouParameter(m, QZ_DPARAM_CALLBACKFREQ, 0.0), 0);
  Progress p;
  p.stopAt = 2;
  ASSERT_EQ(QZsetCallback(m, on_progress, &p), 0);
  int status = 0;
  EXPECT_EQ(QZoptimize(m, QZ_METHOD_FREE, &status), QZERR_USER_INTERRUPT);
  EXPECT_EQ(p.calls, 2);
  EXPECT_EQ(m->presolve, nullptr);
  ASSERT_EQ(QZsetCallback(m, nullptr, nullptr), 0);
  // A time limit that is already over ends presolve the same way.
  ASSERT_EQ(QZsetModelDouParameter(m, QZ_DPARAM_SOLVER_TIMLMT, 0.0), 0);
  EXPECT_EQ(QZoptimize(m, QZ_METHOD_FREE, &status), QZERR_TIME_LIMIT);
  EXPECT_EQ(m->presolve, nullptr);
  ASSERT_EQ(QZsetModelDouParameter(m, QZ_DPARAM_SOLVER_TIMLMT, -1.0), 0);
  ASSERT_EQ(QZoptimize(m, QZ_METHOD_FREE, &status), 0);
  EXPECT_EQ(status, QZ_STATUS_BASIC_OPTIMAL);
  EXPECT_TRUE(check_model(m, lp).ok(1e-7));
  QZdeleteModel(&m);
}

void collect(QZmodel, char* line, void* data) { *static_cast<std::string*>(data) += line; }

// A rebuilt point that is not clean goes back to the simplex, from its basis, with the
// method the kind of infeasibility asks for.
TEST_F(PathTest, UncleanPostsolveIsReoptimized) {
  for (int kind = 0; kind < 2; ++kind) {
    GenOptions o;
    o.m = 30;
    o.n = 40;
    o.density = 0.2;
    const LpData lp = make_planted(9 + kind, o);
    SolveRun r;
    solve(env, lp, true, r);
    ASSERT_EQ(r.status, QZ_STATUS_BASIC_OPTIMAL);
    Imodel& m = *r.model;
    ASSERT_NE(m.presolve, nullptr);
    Imodel* red = m.presolve->reduced;
    ASSERT_NE(red, nullptr);
    ASSERT_GT(red->nCons, 0);
    Sol& rs = *red->sol;
    // Spoil the reduced answer: a wrong multiplier, or a value off its bound.
    if (kind == 0) {
      for (double& y : rs.dual) y += 10;
    } else {
      for (double& x : rs.primal) x += 0.25;
    }
    int walkError = 0;
    ASSERT_EQ(genpre_postsolv_prob(red, m, *m.presolve, &walkError), 0);
    EXPECT_EQ(walkError, 0);
    EXPECT_GT(kind == 0 ? m.sol->dinf : m.sol->pinf, 1e-3);
    std::string log;
    ASSERT_EQ(QZsetModelLogfunc(r.model, collect, &log), 0);
    ASSERT_EQ(QZsetModelIntParameter(r.model, QZ_IPARAM_LP_PRINTLEVEL, 1), 0);
    ASSERT_EQ(qzi_postsolve_check(m, true), 0);
    EXPECT_NE(log.find(kind == 0 ? "Postsolve leads to dual infeasibility"
                                 : "Postsolve leads to primal infeasibility"),
              std::string::npos)
        << log;
    EXPECT_NE(log.find("Performing postsolve reoptimization ..."), std::string::npos);
    EXPECT_EQ(m.sol->model_status, QZ_STATUS_BASIC_OPTIMAL);
    EXPECT_TRUE(check_model(r.model, lp).ok(1e-7)) << check_model(r.model, lp).worst;
  }
}

TEST_F(PathTest, IusolAlwaysReoptimizesTheFullModel) {
  const LpData lp = sample(11);
  SolveRun r;
  int rc = 0;
  r.model = QZcreateModel(env, &rc);
  ASSERT_EQ(lp.load(r.model), 0);
  std::string log;
  ASSERT_EQ(QZsetModelLogfunc(r.model, collect, &log), 0);
  ASSERT_EQ(QZsetModelIntParameter(r.model, QZ_IPARAM_LP_PRINTLEVEL, 1), 0);
  ASSERT_EQ(QZsetModelIntParameter(r.model, QZ_IPARAM_SOLVER_IUSOL, 1), 0);
  int status = 0;
  ASSERT_EQ(QZoptimize(r.model, QZ_METHOD_FREE, &status), 0);
  EXPECT_EQ(status, QZ_STATUS_BASIC_OPTIMAL);
  EXPECT_NE(log.find("Loaded reduced model"), std::string::npos);
  EXPECT_NE(log.find("Performing postsolve reoptimization ..."), std::string::npos);
  EXPECT_NE(r.model->glp, nullptr);
  EXPECT_TRUE(check_model(r.model, lp).ok(1e-7));
}

// The low-memory route: the cheap stages only, its own log lines, the same certified answer,
// and a verdict that names what the route can tell.
TEST_F(PathTest, LowMemoryRoute) {
  const LpData lp = planted_salted(21);
  SolveRun r;
  std::string log;
  solve_at(env, lp, 8192 | 254, r, QZ_METHOD_FREE, 0, &log);
  ASSERT_EQ(r.rc, 0);
  ASSERT_EQ(r.status, QZ_STATUS_BASIC_OPTIMAL);
  EXPECT_NEAR(r.obj, lp.opt, 1e-7 * (1 + std::fabs(lp.opt)));
  EXPECT_TRUE(check_model(r.model, lp).ok(1e-7));
  EXPECT_NE(log.find("Presolving in low memory mode ..."), std::string::npos) << log;
  EXPECT_NE(log.find("Preprocessing retval:"), std::string::npos) << log;
  for (const StageLine& l : stage_table(log))
    EXPECT_TRUE(l.tag != "drp" && l.tag != "dcp" && l.tag != "eli") << l.tag;
  // The level is restored after the call.
  int level = 0;
  ASSERT_EQ(QZgetModelIntParameter(r.model, QZ_IPARAM_LP_PRELEVEL, &level), 0);
  EXPECT_EQ(level, 8192 | 254);

  const LpData bad =
      dense_lp(QZ_MIN, {1, 1, 1}, {{1, 1, 0}, {0, 1, 1}}, {5, 1}, "GG", {0, 0, 0}, {2, 2, kInf});
  SolveRun v;
  solve_at(env, bad, 8192, v);
  ASSERT_EQ(v.rc, 0);
  EXPECT_EQ(v.status, QZ_STATUS_INFEASIBLE);
  EXPECT_EQ(v.method, -1);
  int ps = 0, ds = 0;
  QZgetInfo(v.model, QZ_IINFO_PRIMAL_STATUS, &ps);
  QZgetInfo(v.model, QZ_IINFO_DUAL_STATUS, &ds);
  EXPECT_EQ(ps, QZ_STATUS_INFEASIBLE);
  EXPECT_EQ(ds, QZ_STATUS_UNBOUNDED);
}

// The environment goes first while a model still holds its presolved copy.
TEST(PresolveLifetime, EnvironmentDeletedWithAKeptCopy) {
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  QZmodel m = QZcreateModel(env, &rc);
  const LpData lp = sample(12);
  ASSERT_EQ(lp.load(m), 0);
  int status = 0;
  ASSERT_EQ(QZoptimize(m, QZ_METHOD_FREE, &status), 0);
  ASSERT_NE(m->presolve, nullptr);
  int count = -1;
  ASSERT_EQ(QZgetEnvModelCount(env, &count), 0);
  EXPECT_EQ(count, 1) << "the reduced model is not the environment's";
  EXPECT_EQ(QZdeleteEnv(&env), 0);
}

}  // namespace
}  // namespace zento::test
