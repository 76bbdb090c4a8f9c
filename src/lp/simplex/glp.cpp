// Life of the simplex working record.
#include "lp/simplex/glp.h"

#include "core/model.h"

namespace zento {

void freeglp(Glp* g) { delete g; }

void GlpDeleter::operator()(Glp* g) const { freeglp(g); }

}  // namespace zento
