// Ctrl-C: the handler is in place during a solve, a pending interrupt stops the solver loop
// as a user request, and the host's own SIGINT handling comes back afterwards.
#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "core/callbacks.h"
#include "core/clock.h"
#include "info_test_util.h"

namespace zento::test {
namespace {

std::atomic<int> g_hostCalls{0};
void host_handler(int) { ++g_hostCalls; }

// Current SIGINT disposition as a plain handler pointer (ours is a three-argument one).
bool ours_installed() {
  struct sigaction cur {};
  sigaction(SIGINT, nullptr, &cur);
  return (cur.sa_flags & SA_SIGINFO) != 0;
}

struct HostDisposition {
  struct sigaction saved {};
  explicit HostDisposition(void (*h)(int)) {
    g_hostCalls = 0;
    struct sigaction act {};
    act.sa_handler = h;
    sigemptyset(&act.sa_mask);
    sigaction(SIGINT, &act, &saved);
  }
  ~HostDisposition() { sigaction(SIGINT, &saved, nullptr); }
  void (*current() const)(int) {
    struct sigaction cur {};
    sigaction(SIGINT, nullptr, &cur);
    return cur.sa_handler;
  }
};

// A solver loop: polls the checkpoint until it says stop, at most for `seconds`.
int solver_loop(QZmodel m, double seconds, long* polls) {
  const double start = lt_get_realtime();
  int r = 0;
  *polls = 0;
  while ((r = timelapsed(seconds, m, start, QZLOC_PRIMAL, 0)) == 0) ++*polls;
  return r;
}

TEST(CtrlC, RaisedSignalStopsTheLoopAsUserInterrupt) {
  HostDisposition host(host_handler);
  EnvModel em;
  ASSERT_EQ(QZresetctrlc(), 0);
  EXPECT_EQ(QZcheckctrlc(), 0);
  EXPECT_TRUE(ours_installed());
  ASSERT_EQ(raise(SIGINT), 0);
  EXPECT_EQ(QZcheckctrlc(), 1);
  EXPECT_EQ(g_hostCalls.load(), 0);  // the first Ctrl-C belongs to the solve
  long polls = 0;
  const int r = solver_loop(em.model, 10.0, &polls);
  EXPECT_LT(r, 0);
  EXPECT_EQ(checkpoint_code(r), QZERR_USER_INTERRUPT);
  EXPECT_EQ(polls, 0);
  // The flag stays up for every level of the solve until it is reset.
  EXPECT_EQ(QZcheckctrlc(), 1);
  EXPECT_EQ(QZresetctrlc(), 0);
  EXPECT_EQ(QZcheckctrlc(), 0);
}

TEST(CtrlC, IgnoredWhenTheModelDoesNotAllowIt) {
  HostDisposition host(host_handler);
  EnvModel em;
  QZresetctrlc();
  em.model->SolverPam.allow_cntrlbreak = 0;
  raise(SIGINT);
  const double now = lt_get_realtime();
  EXPECT_EQ(timelapsed(-1, em.model, now, QZLOC_PRIMAL, 0), 0);
  EXPECT_EQ(timelapsed(0.0, em.model, now, QZLOC_PRIMAL, 0), 1);
  QZresetctrlc();
}

TEST(CtrlC, SignalFromAnotherThreadEndsALongLoop) {
  HostDisposition host(host_handler);
  EnvModel em;
  em.model->SolverPam.callbackfreq = 0;
  SolveScope scope(*em.model);
  ASSERT_TRUE(ours_installed());
  std::thread sender([] {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    kill(getpid(), SIGINT);
  });
  long polls = 0;
  const double start = lt_get_realtime();
  const int r = solver_loop(em.model, 20.0, &polls);
  sender.join();
  EXPECT_EQ(checkpoint_code(r), QZERR_USER_INTERRUPT);
  EXPECT_LT(lt_get_realtime() - start, 10.0);
  EXPECT_GT(polls, 0);
  EXPECT_EQ(g_hostCalls.load(), 0);
}

TEST(CtrlC, SolveRestoresTheHostHandlerAndClearsTheFlag) {
  HostDisposition host(host_handler);
  EnvModel em;
  {
    SolveScope scope(*em.model);
    EXPECT_TRUE(ours_installed());
    raise(SIGINT);
    EXPECT_EQ(QZcheckctrlc(), 1);
  }
  EXPECT_EQ(host.current(), host_handler);
  EXPECT_EQ(QZcheckctrlc(), 0);
  EXPECT_EQ(g_hostCalls.load(), 0);
}

TEST(CtrlC, SecondSignalWhilePendingGoesToTheHost) {
  HostDisposition host(host_handler);
  EnvModel em;
  SolveScope scope(*em.model);
  raise(SIGINT);
  EXPECT_EQ(g_hostCalls.load(), 0);
  raise(SIGINT);
  EXPECT_EQ(g_hostCalls.load(), 1);
  EXPECT_EQ(QZcheckctrlc(), 1);
}

TEST(CtrlC, HostThatIgnoresSigintKeepsIgnoringIt) {
  HostDisposition host(SIG_IGN);
  EnvModel em;
  SolveScope scope(*em.model);
  EXPECT_FALSE(ours_installed());
  raise(SIGINT);
  EXPECT_EQ(QZcheckctrlc(), 0);
}

TEST(CtrlC, NestedAndOverlappingSolvesShareTheHandler) {
  HostDisposition host(host_handler);
  EnvModel a, b;
  auto outer = std::make_unique<SolveScope>(*a.model);
  {
    SolveScope second(*b.model);
    raise(SIGINT);
  }
  // The other solve still runs: its interrupt must not be lost.
  EXPECT_TRUE(ours_installed());
  EXPECT_EQ(QZcheckctrlc(), 1);
  outer.reset();
  EXPECT_EQ(host.current(), host_handler);
  EXPECT_EQ(QZcheckctrlc(), 0);
}

int raise_once(QZmodel, int, void* data) {
  auto* raised = static_cast<int*>(data);
  if ((*raised)++ == 0) raise(SIGINT);
  return 0;
}

TEST(CtrlC, OptimizeEndsWithUserInterruptAndTheModelStaysUsable) {
  HostDisposition host(host_handler);
  EnvModel em;
  ASSERT_EQ(load_trivial(em.model), 0);
  int raised = 0;
  QZsetCallback(em.model, raise_once, &raised);
  int status = 0;
  EXPECT_EQ(QZoptimize(em.model, QZ_METHOD_FREE, &status), QZERR_USER_INTERRUPT);
  EXPECT_EQ(QZcheckctrlc(), 0);
  EXPECT_EQ(host.current(), host_handler);
  EXPECT_EQ(QZoptimize(em.model, QZ_METHOD_FREE, &status), 0);
  EXPECT_EQ(status, QZ_STATUS_BASIC_OPTIMAL);
  double obj = 0;
  EXPECT_EQ(QZgetObjective(em.model, &obj), 0);
  EXPECT_DOUBLE_EQ(obj, kTrivialObjective);
  EXPECT_EQ(g_hostCalls.load(), 0);
}

}  // namespace
}  // namespace zento::test
