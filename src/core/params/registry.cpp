// Registry copies of the environment and of each model.
#include "core/params/registry.h"

#include "core/env.h"
#include "core/model.h"

namespace zento {

int params_setup_env(QZenv env) {
  env->AllPamItems.clear();
  return 0;
}

int params_setup_model(Imodel* model) {
  model->AllPamItems = model->env->AllPamItems;
  return params_rebind_model(model);
}

int params_rebind_model(Imodel* /*model*/) { return 0; }

}  // namespace zento
