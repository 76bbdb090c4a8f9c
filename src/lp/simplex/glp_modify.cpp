// Fallback hooks until the simplex record can take changes in place: every answer is "cannot",
// so a change releases the record and the next solve starts from the stored basis.
#include "lp/simplex/glp_modify.h"

namespace zento {

bool glp_is_idle(const Imodel&) { return false; }
int glp_take_rhs(Imodel&, int, double) { return 1; }
int glp_take_bounds(Imodel&, int, double, double) { return 1; }
int glp_take_cost(Imodel&, int, double) { return 1; }
int glp_take_contype(Imodel&, int, char, char) { return 1; }

}  // namespace zento
