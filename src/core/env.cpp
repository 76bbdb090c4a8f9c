// Creation and deletion of the environment, version data and internal assertions.
#include "core/env.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

extern "C" {
#include <lauxlib.h>
#include <lua.h>
#include <lualib.h>
}

#include "core/errors.h"
#include "core/log.h"
#include "core/messages.h"
#include "core/model.h"
#include "core/model_ops.h"
#include "core/params/registry.h"
#include "core/version.h"
#include "random/sampler.h"

namespace zento {

namespace {

int open_lua_state(QZenv env) {
  lua_State* L = luaL_newstate();
  if (L == nullptr) return QZERR_OUT_OF_MEMORY;
  lua_gc(L, LUA_GCSTOP, 0);
  luaL_openlibs(L);
  lua_gc(L, LUA_GCRESTART, 0);
  if (const char* dir = std::getenv("LUA_DIR")) {
    std::string chunk = "package.path = package.path .. ';;";
    for (const char* pat : {"/?.lua", "/lua/?.lua", "/lua/?/?.lua", "/lua/?/init.lua"}) {
      chunk += ';';
      chunk += dir;
      chunk += pat;
    }
    chunk += "'";
    // A bad LUA_DIR only limits what scripts can require; it does not fail the environment.
    if (luaL_loadbuffer(L, chunk.data(), chunk.size(), "dbginit") == 0) lua_pcall(L, 0, 0, 0);
  }
  env->luaState = L;
  return 0;
}

}  // namespace

int create_env(QZenv* out) {
  *out = nullptr;
  auto* env = new (std::nothrow) QZenv_s();
  if (env == nullptr) return QZERR_OUT_OF_MEMORY;
  int rc = 0;
  try {
    env->infinity = QZ_INFINITY;
    env->mutexReady = 1;
    rc = load_message_table(env, message_file_path());
    if (rc == 0) {
      env->CommonPam.expr_lib_name = kExprLibName;
      rc = params_setup_env(env);
    }
    if (rc == 0) rc = open_lua_state(env);
  } catch (const std::bad_alloc&) {
    rc = QZERR_OUT_OF_MEMORY;
  }
  if (rc != 0) {
    delete_env(&env);
    return rc;
  }
  *out = env;
  return 0;
}

int delete_env(QZenv* pEnv) {
  if (pEnv == nullptr || *pEnv == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZenv env = *pEnv;
  // Solver memory first: a model may be the working copy of another.
  std::vector<Imodel*> models;
  {
    std::lock_guard<std::mutex> lock(env->modelMutex);
    models = env->modelList;
  }
  for (Imodel* m : models) free_solver_memory(*m);
  for (Imodel* m : models) {
    Imodel* handle = m;
    const int rc = delete_model(&handle);
    if (rc != 0) return rc;
  }
  random::free_env_samplers(env);
  if (env->luaState != nullptr) lua_close(env->luaState);
  env->luaState = nullptr;
  delete env;
  *pEnv = nullptr;
  return 0;
}

namespace {

const char* last_path_component(const char* file) {
  const char* slash = std::strrchr(file, '\\');
  if (slash == nullptr) slash = std::strrchr(file, '/');
  return slash ? slash + 1 : file;
}

void report_assertion(QZenv env, const char* expr, const char* file, int line,
                      const char* where_fmt) {
  if (env == nullptr) return;
  env->errFile = file;
  env->errLine = line;
  QZlogenv(env, 1, "\nAssertion failed: %s", expr);
  QZlogenv(env, 1, where_fmt, last_path_component(file), line);
  if (env->errFunc != nullptr) env->errFunc(env, QZERR_INTERNAL_ERROR, expr, env->errData);
}

}  // namespace

void qzi_xassert(QZenv env, const char* expr, const char* file, int line) {
  report_assertion(env, expr, file, line, "\nError detected in file %s at line %d\n");
  if (env != nullptr) delete_env(&env);
  std::exit(1);
}

void qzi_wassert(QZenv env, const char* expr, const char* file, int line) {
  report_assertion(env, expr, file, line,
                   "\nWarning: unexpected value detected in file %s at line %d\n");
}

}  // namespace zento
