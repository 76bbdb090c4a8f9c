// Progress callbacks, limits and interrupts: the one checkpoint every solver polls.
//
// `timelapsed` is the hub. A solver calls it at its checkpoints as often as it likes: one clock
// reading decides the time limit and whether the host's progress callback is due (at most once
// per `SolverPam.callbackfreq` seconds, every time with frequency 0, only when forced with a
// negative frequency). Inside a MIP search it also offers the host's objective and solution
// callbacks. A pending Ctrl-C is a user stop, exactly like a callback that returns nonzero.
//
// Results: < 0 the user asked to stop (callback or Ctrl-C), map it with `checkpoint_code` to
// QZERR_USER_INTERRUPT; 0 go on; > 0 the time limit is reached (QZERR_TIME_LIMIT or the
// solver's own status).
#pragma once

#include "core/model.h"

namespace zento {

int timelapsed(double dTimeLimit, Imodel* model, double tStart, int nLocation, int nForce);
// `timelapsed` with the model's latched stop: once a checkpoint of a search saw a user stop,
// every later call answers -1 at once, so that all levels of the search unwind.
int bnb_timelapsed(double dTimeLimit, Imodel* model, double tStart, int nLocation, int nForce);
int bnp_timelapsed(double dTimeLimit, Imodel* model, double tStart, int nLocation, int nForce);

// Runs the host's progress callback at a location, subject to the frequency gate unless
// forced, then looks at a pending Ctrl-C. Nonzero means stop: the host's result, or -1 for
// Ctrl-C.
int run_progress_callback(Imodel& m, int nLocation, bool force);

// Clears a pending Ctrl-C (QZresetctrlc).
void reset_ctrlc();

// The code a solver returns for a checkpoint result.
inline int checkpoint_code(int r) {
  return r < 0 ? QZERR_USER_INTERRUPT : (r > 0 ? QZERR_TIME_LIMIT : 0);
}

// New incumbents, reported to the host's MIP and global callbacks (results ignored).
void run_mip_incumbent_callback(Imodel& m, double dObj, const double* padPrimal);
void run_gop_incumbent_callback(Imodel& m, double dObj, const double* padPrimal);

// Objective of a point for the model: constant, linear and quadratic objective terms.
double QZcalObjective(const Imodel& m, const double* x);

// Ctrl-C. The flag is the only mutable state of the process besides the debug log function;
// it is written from the signal handler and stays raised until the last top-level solve
// under way ends, so that nested solves and parallel threads all see it.
bool ctrlc_pending();
// Install the SIGINT handler for the span of a solve, unless the host ignores SIGINT;
// the last solve to leave restores the host's handler and clears the flag.
void interrupt_scope_enter();
void interrupt_scope_leave();

// Everything a top-level solve sets up on its way in and undoes on every way out: the
// Ctrl-C handler, the call level that host functions run at, the latched stop, live figures
// and the profiler. Nested solves (subproblems of a search) pass through untouched.
class SolveScope {
 public:
  explicit SolveScope(Imodel& m, RunClass what = RunClass::kContinuous);
  ~SolveScope();
  SolveScope(const SolveScope&) = delete;
  SolveScope& operator=(const SolveScope&) = delete;

 private:
  Imodel& m_;
  bool top_ = false;
  bool interrupts_ = false;
  int savedCallLevel_ = 0;
};

}  // namespace zento
