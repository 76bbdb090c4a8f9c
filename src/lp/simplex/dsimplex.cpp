// The dual simplex method `dsimplex` (placeholder until the dual lands: hands over to the
// primal).
#include "lp/simplex/spx_internal.h"

namespace zento {

int dsimplex(Glp& g) {
  g.itype = 'D';
  g.xstat = XSTAT_SWITCH;
  return 0;
}

}  // namespace zento
