// The parameter registry `parlist` and its per-object copies.
#pragma once

#include "zento.h"

namespace zento {

// Copies the registry into the environment and binds each row to the environment's blocks.
int params_setup_env(QZenv env);
// Copies the environment's registry into the model and binds it to the model's blocks.
int params_setup_model(Imodel* model);
// Rebinds a model's registry copy after its blocks were copied (QZcopyParam).
int params_rebind_model(Imodel* model);

}  // namespace zento
