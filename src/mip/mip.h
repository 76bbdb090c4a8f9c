// Entries of the mixed-integer solver used by the public shims and other solvers.
#pragma once

#include <vector>

#include "core/model.h"

namespace zento::mip {

// Solves the model as a MIP; `status` gets the model status. Returns 0 or a QZERR_* code
// (limits, interrupts and unsupported model parts included).
int solve_mip(Imodel& m, int* status);

// A known optimal point watched during a search: every node closed or pruned, and every
// global fixing, while no incumbent is as good as it counts as a violation when the point
// lies inside the node. Tests use it to show that no pruning removes a recorded optimum.
struct SearchDebug {
  std::vector<double> x;
  double obj = 0;
  int violations = 0;
};
int solve_mip(Imodel& m, int* status, SearchDebug* debug);

}  // namespace zento::mip
