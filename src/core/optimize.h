// The optimize driver: dispatch by model class and the solvers it reaches.
#pragma once

#include "core/model.h"

namespace zento {

int QZoptimize_impl(Imodel& m, int nMethod, int* pnStatus);
int QZtrivialOptimizer(Imodel& m);
// The LP path: presolve, simplex, retries, postsolve.
int QZoptimizeLP(Imodel& m, int nMethod);
// Final summary of a top-level solve at a positive print level.
void QZI_DispSolStatsLP(Imodel& m);

// Numeric class of the model: linear 10, quadratic 11, conic 12, nonlinear 14, and
// 15, 16, 17, 19 for the same with integers.
int QZI_get_model_type(const Imodel& m);
const char* QZI_model_type_str(const Imodel& m);
const char* qzi_get_model_szstatus(int status);

bool has_integers(const Imodel& m);
bool is_linear(const Imodel& m);

}  // namespace zento
