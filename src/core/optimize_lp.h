// The LP path of the driver, its outcome classification and its method choice.
#pragma once

#include "core/model.h"

namespace zento {

int ydo_the_lp_opt(Imodel& m, int nMethod);
// Classifies the outcome of a simplex run: 0 accepted, otherwise the event of the retry ladder.
int do_the_event_check(Imodel& m, int result);
// Simplex method to run (1 primal, 2 dual); loads a stored basis when `warm` and no record.
int pick_imethod_lp(Imodel& m, int event, int nMethod, bool warm);
int qzi_accept_priminf(Imodel& m);
int qzi_accept_dualinf(Imodel& m);
// Whether the LP is better solved through its explicit dual.
bool QZI_choose_orient(Imodel& m, int nMethod);
int QZIoptimizeDual(Imodel& m, int nMethod);

}  // namespace zento
