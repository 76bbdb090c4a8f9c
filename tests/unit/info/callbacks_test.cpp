// The checkpoint hub: frequency gate, host and internal slots, stops, MIP offers and the
// queries a host makes from inside its callbacks.
#include <vector>

#include "core/callbacks.h"
#include "core/clock.h"
#include "info_test_util.h"

namespace zento::test {
namespace {

struct Recorder {
  std::vector<int> locations;
  int answer = 0;
  int callLevelSeen = -99;
  double pobjSeen = 0;
  int pobjRc = -1;
};

int record(QZmodel m, int loc, void* data) {
  auto* r = static_cast<Recorder*>(data);
  r->locations.push_back(loc);
  r->callLevelSeen = m->callLevel;
  r->pobjRc = QZgetInfo(m, QZ_DINFO_POBJ, &r->pobjSeen);
  return r->answer;
}

class Hub : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(load_trivial(em.model), 0);
    ASSERT_EQ(QZsetCallback(em.model, record, &rec), 0);
  }
  int poll(int loc, int force = 0) { return timelapsed(-1, em.model, lt_get_realtime(), loc, force); }
  EnvModel em;
  Recorder rec;
};

TEST_F(Hub, FrequencyGate) {
  struct Case {
    double freq;
    int force;
    size_t calls;
  } cases[] = {{0.0, 0, 5}, {1e9, 0, 0}, {1e9, 1, 5}, {-1.0, 0, 0}, {-1.0, 1, 5}};
  for (const Case& c : cases) {
    rec.locations.clear();
    em.model->SolverPam.callbackfreq = c.freq;
    em.model->lastCallbackWall = lt_get_realtime();
    for (int k = 0; k < 5; ++k) EXPECT_EQ(poll(QZLOC_DUAL, c.force), 0);
    EXPECT_EQ(rec.locations.size(), c.calls) << c.freq << " " << c.force;
    for (int loc : rec.locations) EXPECT_EQ(loc, QZLOC_DUAL);
  }
}

TEST_F(Hub, DueAfterTheIntervalHasPassed) {
  em.model->SolverPam.callbackfreq = 0.5;
  em.model->lastCallbackWall = lt_get_realtime() - 1.0;
  EXPECT_EQ(poll(QZLOC_PRIMAL), 0);
  EXPECT_EQ(poll(QZLOC_PRIMAL), 0);
  EXPECT_EQ(rec.locations.size(), 1u);
}

TEST_F(Hub, NonzeroAnswersStopAsUserRequests) {
  em.model->SolverPam.callbackfreq = 0;
  for (int answer : {5, -3, 1}) {
    rec.answer = answer;
    const int r = poll(QZLOC_PRIMAL);
    EXPECT_EQ(r, answer > 0 ? -answer : answer);
    EXPECT_EQ(checkpoint_code(r), QZERR_USER_INTERRUPT);
  }
  EXPECT_EQ(checkpoint_code(0), 0);
  EXPECT_EQ(checkpoint_code(1), QZERR_TIME_LIMIT);
}

TEST_F(Hub, TimeLimit) {
  em.model->SolverPam.callbackfreq = -1;
  const double now = lt_get_realtime();
  EXPECT_EQ(timelapsed(0.0, em.model, now, QZLOC_PRIMAL, 0), 1);
  EXPECT_EQ(timelapsed(1.0, em.model, now - 2.0, QZLOC_PRIMAL, 0), 1);
  EXPECT_EQ(timelapsed(100.0, em.model, now, QZLOC_PRIMAL, 0), 0);
  EXPECT_EQ(timelapsed(-1.0, em.model, now - 1e6, QZLOC_PRIMAL, 0), 0);
  EXPECT_EQ(timelapsed(0.0, nullptr, now, QZLOC_PRIMAL, 0), 1);
  // A stop of the host wins over the limit.
  em.model->SolverPam.callbackfreq = 0;
  rec.answer = 2;
  EXPECT_EQ(timelapsed(0.0, em.model, now, QZLOC_PRIMAL, 0), -2);
}

TEST_F(Hub, ExitReportOfANodeModelIsLeftToItsSearch) {
  em.model->SolverPam.callbackfreq = 0;
  em.model->SplexPam.in_mip = 1;
  EXPECT_EQ(poll(QZLOC_EXIT_SOLVER, 1), 0);
  EXPECT_EQ(poll(QZLOC_DUAL, 1), 0);
  ASSERT_EQ(rec.locations.size(), 1u);
  EXPECT_EQ(rec.locations[0], QZLOC_DUAL);
}

TEST_F(Hub, InternalSlotRunsAfterTheHostFromModelOrParent) {
  em.model->SolverPam.callbackfreq = 0;
  std::vector<int> order;
  struct Ctx {
    std::vector<int>* order;
    int tag;
  } host{&order, 1}, own{&order, 2}, parent{&order, 3};
  auto push = [](QZmodel, int, void* d) {
    auto* c = static_cast<Ctx*>(d);
    c->order->push_back(c->tag);
    return 0;
  };
  QZsetCallback(em.model, push, &host);
  int rc = 0;
  QZmodel par = QZcreateModel(em.env, &rc);
  par->cb.internalProgress = push;
  par->cb.internalProgressData = &parent;
  em.model->parentModel = par;
  poll(QZLOC_PRIMAL);
  em.model->cb.internalProgress = push;
  em.model->cb.internalProgressData = &own;
  poll(QZLOC_PRIMAL);
  EXPECT_EQ(order, (std::vector<int>{1, 3, 1, 2}));
  em.model->parentModel = nullptr;
}

TEST_F(Hub, LatchedStopOfASearch) {
  em.model->SolverPam.callbackfreq = 0;
  const double now = lt_get_realtime();
  EXPECT_EQ(bnb_timelapsed(-1, em.model, now, QZLOC_MIP, 0), 0);
  rec.answer = 4;
  EXPECT_EQ(bnb_timelapsed(-1, em.model, now, QZLOC_MIP, 0), -4);
  rec.answer = 0;
  const size_t calls = rec.locations.size();
  EXPECT_EQ(bnb_timelapsed(-1, em.model, now, QZLOC_MIP, 0), -1);
  EXPECT_EQ(bnp_timelapsed(-1, em.model, now, QZLOC_MIP, 0), -1);
  EXPECT_EQ(rec.locations.size(), calls);
  // A new top-level solve clears the latch.
  { SolveScope scope(*em.model); }
  EXPECT_EQ(bnb_timelapsed(-1, em.model, now, QZLOC_MIP, 0), 0);
}

TEST_F(Hub, OptimizeStopsOnTheCallbackAndStaysUsable) {
  rec.answer = 5;
  int status = 0;
  EXPECT_EQ(QZoptimize(em.model, QZ_METHOD_FREE, &status), QZERR_USER_INTERRUPT);
  ASSERT_FALSE(rec.locations.empty());
  EXPECT_EQ(rec.locations[0], QZLOC_PRIMAL);
  // Inside the callback the solution could be read; outside no call level is left behind.
  EXPECT_EQ(rec.callLevelSeen, 1);
  EXPECT_EQ(rec.pobjRc, 0);
  EXPECT_DOUBLE_EQ(rec.pobjSeen, kTrivialObjective);
  EXPECT_EQ(em.model->callLevel, 0);
  EXPECT_EQ(em.model->callLevelSaved, 0);
  rec.answer = 0;
  rec.locations.clear();
  EXPECT_EQ(QZoptimize(em.model, QZ_METHOD_FREE, &status), 0);
  EXPECT_EQ(status, QZ_STATUS_BASIC_OPTIMAL);
  EXPECT_EQ(rec.locations, (std::vector<int>{QZLOC_PRIMAL, QZLOC_EXIT_SOLVER}));
}

TEST(SetEntries, NullModelAndClearing) {
  EXPECT_EQ(QZsetCallback(nullptr, nullptr, nullptr), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZsetMIPCallback(nullptr, nullptr, nullptr), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZsetMIPCallbackInsMIPSol(nullptr, nullptr, nullptr), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZsetMIPCallbackInsMIPObj(nullptr, nullptr, nullptr), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZsetGOPCallback(nullptr, nullptr, nullptr), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZsetModelLogfunc(nullptr, nullptr, nullptr), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZsetEnvLogfunc(nullptr, nullptr, nullptr), QZERR_ILLEGAL_NULL_POINTER);
  EnvModel em;
  int data = 0;
  auto cb = [](QZmodel, int, void*) { return 0; };
  ASSERT_EQ(QZsetCallback(em.model, cb, &data), 0);
  EXPECT_EQ(em.model->cb.progressData, &data);
  ASSERT_EQ(QZsetCallback(em.model, nullptr, &data), 0);
  EXPECT_EQ(em.model->cb.progress, nullptr);
  EXPECT_EQ(em.model->cb.progressData, nullptr);
}

// The MIP search offers the host's objective and solution at its checkpoints.
class MipOffers : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(load_small_mip(em.model), 0);
    em.model->SolverPam.callbackfreq = 0;
    em.model->mipsol = std::make_unique<MipSol>();
    ms().MIPstatus = QZ_STATUS_FEASIBLE;
    ms().obj = -1;
    ms().primal = {1, 0};
  }
  MipSol& ms() { return *em.model->mipsol; }
  void poll() { timelapsed(-1, em.model, lt_get_realtime(), QZLOC_MIP, 0); }
  EnvModel em;
};

struct Offer {
  double x0, x1;
  double seenValue = 0;
};

int offer_point(QZmodel, void* data, double dBest, double* x) {
  auto* o = static_cast<Offer*>(data);
  o->seenValue = dBest;
  x[0] = o->x0;
  x[1] = o->x1;
  return 1;
}

TEST_F(MipOffers, SolutionIsTakenOnlyWhenFeasibleIntegralAndBetter) {
  struct Case {
    double x0, x1;
    bool taken;
  } cases[] = {
      {0.5, 2.0, false},        // fractional beyond the integer tolerance
      {3.0, 1.0, false},        // row x0 + x1 <= 3 violated
      {6.0, -3.0, false},       // outside the bounds
      {1.0, 0.0, false},        // not better than the incumbent -1
      {1.0 + 1e-9, 2.0, true},  // integral within the tolerance, objective -3
  };
  for (const Case& c : cases) {
    Offer o{c.x0, c.x1};
    QZsetMIPCallbackInsMIPSol(em.model, offer_point, &o);
    const double before = ms().obj;
    poll();
    EXPECT_DOUBLE_EQ(o.seenValue, before) << c.x0 << "," << c.x1;  // minimization: sense 1
    if (c.taken) {
      EXPECT_NEAR(ms().obj, -3.0, 1e-8);
      EXPECT_EQ(ms().primal[1], 2.0);
      ASSERT_EQ(ms().slack.size(), 1u);
      EXPECT_NEAR(ms().slack[0], 0.0, 1e-8);
    } else {
      EXPECT_EQ(ms().obj, before) << c.x0 << "," << c.x1;
    }
  }
}

TEST_F(MipOffers, NoIncumbentOffersAgainstInfinity) {
  ms().MIPstatus = QZ_STATUS_UNKNOWN;
  Offer o{0, 0};
  QZsetMIPCallbackInsMIPSol(em.model, offer_point, &o);
  poll();
  EXPECT_EQ(o.seenValue, 1e30);
  EXPECT_EQ(ms().MIPstatus, QZ_STATUS_FEASIBLE);
  EXPECT_EQ(ms().obj, 0.0);
}

TEST_F(MipOffers, ObjectiveAndBoundBecomePending) {
  auto offer = [](QZmodel, void* d, double* obj, double* bound) {
    const double want = *static_cast<double*>(d);
    *obj = want;
    *bound = want - 1;
    return 1;
  };
  double want = 0.0;  // worse than -1: refused
  QZsetMIPCallbackInsMIPObj(em.model, offer, &want);
  poll();
  EXPECT_FALSE(ms().hasPending);
  want = -2.0;
  poll();
  EXPECT_TRUE(ms().hasPending);
  EXPECT_EQ(ms().pendingObj, -2.0);
  EXPECT_EQ(ms().pendingBound, -3.0);
}

TEST_F(MipOffers, OffersOnlyAtSearchCheckpoints) {
  Offer o{1, 2};
  QZsetMIPCallbackInsMIPSol(em.model, offer_point, &o);
  timelapsed(-1, em.model, lt_get_realtime(), QZLOC_DUAL, 0);
  EXPECT_EQ(ms().obj, -1.0);
}

TEST_F(MipOffers, IncumbentCallbacks) {
  struct Seen {
    double obj = 0;
    double x1 = 0;
    int level = -1;
  } seen;
  auto cb = [](QZmodel m, void* d, double obj, double* x) {
    auto* s = static_cast<Seen*>(d);
    s->obj = obj;
    s->x1 = x[1];
    s->level = m->callLevel;
    return 0;
  };
  QZsetMIPCallback(em.model, cb, &seen);
  em.model->callLevelSaved = 1;
  const double x[] = {1, 2};
  run_mip_incumbent_callback(*em.model, -3, x);
  EXPECT_EQ(seen.obj, -3);
  EXPECT_EQ(seen.x1, 2);
  EXPECT_EQ(seen.level, 1);
  QZsetGOPCallback(em.model, cb, &seen);
  run_gop_incumbent_callback(*em.model, 7, x);
  EXPECT_EQ(seen.obj, 7);
  EXPECT_EQ(em.model->callLevel, 0);
}

class CallbackQueries : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(load_trivial(em.model), 0);
    ASSERT_EQ(QZoptimize(em.model, QZ_METHOD_FREE, nullptr), 0);
  }
  EnvModel em;
  double d = 0;
  int n = 0;
};

TEST_F(CallbackQueries, GenerationLocationsTakeOnlyGenerationKeys) {
  for (int loc : {QZLOC_GEN_START, QZLOC_GEN_PROCESSING, QZLOC_GEN_END}) {
    EXPECT_EQ(QZgetCallbackInfo(em.model, loc, QZ_DINFO_POBJ, &d), QZERR_INFO_NOT_AVAILABLE);
    EXPECT_EQ(QZgetCallbackInfo(em.model, loc, QZ_DINFO_GEN_PERCENT, &d), QZERR_INFO_NOT_AVAILABLE);
  }
  em.model->run.gen = GenProgress{true, 42.5, 10, 4, 2, 3};
  EXPECT_EQ(QZgetCallbackInfo(em.model, QZLOC_GEN_PROCESSING, QZ_DINFO_GEN_PERCENT, &d), 0);
  EXPECT_EQ(d, 42.5);
  EXPECT_EQ(QZgetCallbackInfo(em.model, QZLOC_GEN_PROCESSING, QZ_IINFO_GEN_VAR_NL, &n), 0);
  EXPECT_EQ(n, 3);
}

TEST_F(CallbackQueries, PresolveKeysOnlyWhilePresolveRuns) {
  EXPECT_EQ(QZgetCallbackInfo(em.model, QZLOC_PRESOLVE, QZ_IINFO_PRE_NUM_RED_ROWS, &n),
            QZERR_INFO_NOT_AVAILABLE);
  em.model->run.pre.active = true;
  em.model->run.pre.rowsRemoved = 12;
  EXPECT_EQ(QZgetCallbackInfo(em.model, QZLOC_PRESOLVE, QZ_IINFO_PRE_NUM_RED_ROWS, &n), 0);
  EXPECT_EQ(n, 12);
  EXPECT_EQ(QZgetCallbackInfo(em.model, QZLOC_PRESOLVE, QZ_DINFO_POBJ, &d), QZERR_INFO_NOT_AVAILABLE);
}

TEST_F(CallbackQueries, SolverLocationsReadLiveFigures) {
  EXPECT_EQ(QZgetCallbackInfo(em.model, QZLOC_PRIMAL, QZ_DINFO_POBJ, &d), 0);
  EXPECT_DOUBLE_EQ(d, kTrivialObjective);
  LiveFigures& f = em.model->run.live;
  f.valid = true;
  f.pobj = 10;
  f.dobj = 7;
  f.spxIter = 33;
  f.status = QZ_STATUS_UNKNOWN;
  EXPECT_EQ(QZgetCallbackInfo(em.model, QZLOC_DUAL, QZ_DINFO_POBJ, &d), 0);
  EXPECT_EQ(d, 10);
  EXPECT_EQ(QZgetCallbackInfo(em.model, QZLOC_DUAL, QZ_IINFO_SIM_ITER, &n), 0);
  EXPECT_EQ(n, 33);
  // Outside the solver locations the records answer.
  EXPECT_EQ(QZgetCallbackInfo(em.model, QZLOC_OBJPOOL, QZ_DINFO_POBJ, &d), 0);
  EXPECT_DOUBLE_EQ(d, kTrivialObjective);
  // The progress form: the dual objective at the dual simplex, the primal one elsewhere.
  em.model->run.depth = 1;
  em.model->run.what = RunClass::kContinuous;
  EXPECT_EQ(QZgetProgressInfo(em.model, QZLOC_DUAL, QZ_DINFO_CUR_OBJ, &d), 0);
  EXPECT_EQ(d, 7);
  EXPECT_EQ(QZgetQuickbackInfo(em.model, QZLOC_PRIMAL, QZ_DINFO_CUR_OBJ, &d), 0);
  EXPECT_EQ(d, 10);
  EXPECT_EQ(QZgetQuickbackInfo(em.model, QZLOC_PRIMAL, QZ_IINFO_CUR_ITER, &n), 0);
  EXPECT_EQ(n, 33);
  em.model->run = RunState{};
  // Outside a solve the progress form reads the final figures.
  EXPECT_EQ(QZgetQuickbackInfo(em.model, QZLOC_DUAL, QZ_DINFO_CUR_OBJ, &d), 0);
  EXPECT_DOUBLE_EQ(d, kTrivialObjective);
}

TEST_F(CallbackQueries, GlobalIterationsGrowWithTheSubsolve) {
  em.model->gopsol = std::make_unique<GopSol>();
  em.model->gopsol->spxIter = 100;
  em.model->run.subSpxIter = 7;
  EXPECT_EQ(QZgetCallbackInfo(em.model, QZLOC_GOP, QZ_IINFO_GOP_SIM_ITER, &n), 0);
  EXPECT_EQ(n, 107);
  EXPECT_EQ(QZgetInfo(em.model, QZ_IINFO_GOP_SIM_ITER, &n), 0);
  EXPECT_EQ(n, 100);
}

TEST_F(CallbackQueries, MipCallbackInfoTakesMipKeysOnly) {
  EXPECT_EQ(QZgetMIPCallbackInfo(em.model, QZ_IINFO_NUM_VARS, &n), QZERR_INFO_NOT_AVAILABLE);
  EXPECT_EQ(QZgetMIPCallbackInfo(em.model, QZ_DINFO_PINFEAS, &d), 0);
  EXPECT_EQ(QZgetMIPCallbackInfo(em.model, QZ_IINFO_MIP_STATUS, &n), QZERR_INFO_NOT_AVAILABLE);
  em.model->mipsol = std::make_unique<MipSol>();
  EXPECT_EQ(QZgetMIPCallbackInfo(em.model, QZ_IINFO_MIP_STATUS, &n), 0);
  EXPECT_EQ(n, QZ_STATUS_UNKNOWN);
}

TEST_F(CallbackQueries, BadInput) {
  EXPECT_EQ(QZgetCallbackInfo(nullptr, 0, QZ_DINFO_POBJ, &d), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZgetMIPCallbackInfo(nullptr, QZ_IINFO_MIP_STATUS, &n), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZgetQuickbackInfo(nullptr, 0, QZ_DINFO_CUR_OBJ, &d), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZgetCallbackInfo(em.model, -1, QZ_DINFO_POBJ, &d), QZERR_INFO_NOT_AVAILABLE);
  EXPECT_EQ(QZgetCallbackInfo(em.model, 0, 424242, &d), QZERR_INFO_NOT_AVAILABLE);
  EXPECT_EQ(QZgetCallbackInfo(em.model, 0, QZ_DINFO_POBJ, nullptr), 0);
}

}  // namespace
}  // namespace zento::test
