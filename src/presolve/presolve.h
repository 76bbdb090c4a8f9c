// LP presolve and postsolve: the entries the LP path of the driver calls, and the post record
// a model keeps between solves.
//
// `gen_pre` shrinks a copy of the model by a loop of row, column and dual reductions, writes
// the undo records on a post stack and builds the reduced model. After the reduced model has
// been solved, `genpre_postsolv_prob` walks the stack back and rebuilds primal values, row
// multipliers, reduced costs and a basis of the user's model. The model keeps the reduced
// model and the post record until its data change, its presolve options change or
// `QZfreePresolvMemory` releases them, so a repeated solve does not presolve again.
#pragma once

#include "core/model.h"
#include "presolve/post_stack.h"

namespace zento {

// Results of `gen_pre` in `status`.
constexpr int kPreFailed = -3;
constexpr int kPreUnbounded = -2;
constexpr int kPreInfeasible = -1;
constexpr int kPreNothing = 0;
constexpr int kPreReduced = 1;
constexpr int kPreSolved = 2;

// The options a presolved copy was built with; a copy built otherwise is dropped.
struct PresolveOptions {
  int level = 0;
  int fill = 0;
  double feastol = 0, opttol = 0;
  bool operator==(const PresolveOptions&) const = default;
};

struct PresolveRecord {
  presolve::PostStack stack;
  Imodel* reduced = nullptr;  // owned; null when presolve removed everything
  PresolveOptions options;
  int n = 0, m = 0;          // the user's model
  int nWork = 0;             // working columns: the user's and the slacks of inequalities
  int status = kPreNothing;  // the verdict of gen_pre
  bool basisFlag = true;     // postsolve rebuilds a basis
  // A dual argument showed that the model has no optimum (a direction of improvement
  // without end); the verdict waits for the feasibility of the rest.
  bool dualInfeasible = false;
  int reducedStatus = QZ_STATUS_UNKNOWN;
  // Sizes of the reduced model and what the passes removed.
  int redRows = 0, redCols = 0, redNnz = 0;
  int rowsRemoved = 0, colsRemoved = 0, nnzRemoved = 0, passes = 0;
  double elapsed = 0;
  ~PresolveRecord();
};

PresolveOptions presolve_options(const Imodel& m);

// Presolves `model` at `level` into `post`. Returns 0 or an error code (out of memory, time
// limit, user interrupt); `*status` takes one of the kPre* values.
[[nodiscard]] int gen_pre(Imodel& model, PresolveRecord& post, int level, int* status);

// Rebuilds the solution of `model` from the solved reduced model (null when presolve solved
// everything). Returns 0 or an error code; `*error` is 1 when the stack walk failed and the
// rebuilt point has no basis.
[[nodiscard]] int genpre_postsolv_prob(Imodel* reduced, Imodel& model, PresolveRecord& post,
                                       int* error);

// Releases the reduced model and the post record of a model.
void QZfreePresolvMemory(Imodel& model);

// The presolved route of QZoptimizeLP. With `*done` false the caller solves the model itself
// (presolve off, nothing removed, a warm basis to keep, or a verdict dropped for IUSOL);
// otherwise the model holds its answer and the result is returned.
[[nodiscard]] int qzi_lp_presolve_path(Imodel& m, int nMethod, bool* done);
// After postsolve: reoptimizes the model from the rebuilt basis when the point is not clean
// (`solved`: the reduced model had an optimum), and always with QZ_IPARAM_SOLVER_IUSOL.
[[nodiscard]] int qzi_postsolve_check(Imodel& m, bool solved);

}  // namespace zento
