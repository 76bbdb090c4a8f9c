// The LP path of the driver. The simplex engine is not part of this build yet, so an LP
// with rows and columns is reported as not supported rather than answered.
#include "core/optimize.h"

namespace zento {

int QZoptimizeLP(Imodel& m, int nMethod) {
  switch (nMethod) {
    case QZ_METHOD_FREE:
    case QZ_METHOD_PSIMPLEX:
    case QZ_METHOD_DSIMPLEX:
    case QZ_METHOD_SPRINT:
    case QZ_METHOD_BARRIER:
      return QZERR_NOT_SUPPORTED;
    default:
      return QZERR_BAD_SOLVER_TYPE;
  }
}

}  // namespace zento
