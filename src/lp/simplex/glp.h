// The working record of the simplex engine, at most one per model.
#pragma once

namespace zento {

struct Glp {};

void freeglp(Glp* g);

}  // namespace zento
