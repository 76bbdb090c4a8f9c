// Lifecycle of environments and models, and the release of derived memory.
#pragma once

#include "core/model.h"

namespace zento {

int create_env(QZenv* out);
int delete_env(QZenv* pEnv);

int create_model(QZenv env, Imodel** out);
int delete_model(Imodel** pModel);
void initialize_model(Imodel& m);
void clear_model(Imodel& m);
int copy_model(Imodel& src, Imodel** out);
int copy_param(Imodel& src, Imodel& dst, int mode);

void free_solver_memory(Imodel& m);
void free_hash_memory(Imodel& m);
void free_name_data(Imodel& m);

// Makes sure `sol` exists, sized for the model, fresh statuses when new.
Sol& ensure_sol(Imodel& m);

}  // namespace zento
