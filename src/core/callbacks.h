// Progress callbacks, limits and interrupts: the checkpoint every solver polls.
#pragma once

#include "core/model.h"

namespace zento {

// Checkpoint of a running solver. Returns < 0 when the host asked to stop, 0 to go on,
// > 0 when the time limit is reached or Ctrl-C was pressed.
int timelapsed(double dTimeLimit, Imodel* model, double tStart, int nLocation, int nForce);

// Runs the host's progress callback at a location (forced: ignoring the frequency gate).
// Returns the host's result, nonzero meaning stop.
int run_progress_callback(Imodel& m, int nLocation, bool force);

// Clears a pending Ctrl-C (QZresetctrlc).
void reset_ctrlc();

}  // namespace zento
