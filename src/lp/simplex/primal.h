// Pieces of the primal method shared by its files.
#pragma once

#include "lp/simplex/glp.h"

namespace zento {

int primal_ratio(Glp& g, const SVec& col, double sgn, double pivtol, double* out_ratio,
                 double* out_bigpiv);

}  // namespace zento
