// Entries on the environment and model objects.
#include <omp.h>

#include <cstdio>
#include <cstring>

#include "api/guard.h"
#include "core/env.h"
#include "core/model_ops.h"
#include "core/params/registry.h"
#include "core/version.h"

using namespace zento;

extern "C" {

QZenv QZcreateEnv(int* pnErrorcode) {
  QZenv env = nullptr;
  const int rc = api::guarded([&] { return create_env(&env); });
  if (pnErrorcode) *pnErrorcode = rc;
  return rc == 0 ? env : nullptr;
}

int QZdeleteEnv(QZenv* pEnv) {
  QZ_GUARD({ return delete_env(pEnv); });
}

QZmodel QZcreateModel(QZenv env, int* pnErrorcode) {
  if (env == nullptr || pnErrorcode == nullptr) {
    if (pnErrorcode) *pnErrorcode = QZERR_ILLEGAL_NULL_POINTER;
    return nullptr;
  }
  Imodel* m = nullptr;
  *pnErrorcode = api::guarded([&] { return create_model(env, &m); });
  return *pnErrorcode == 0 ? m : nullptr;
}

int QZdeleteModel(QZmodel* pModel) {
  QZ_GUARD({ return delete_model(pModel); });
}

QZmodel QZcopyModel(QZmodel src, int* pnErrorcode) {
  if (src == nullptr || pnErrorcode == nullptr) {
    if (pnErrorcode) *pnErrorcode = QZERR_ILLEGAL_NULL_POINTER;
    return nullptr;
  }
  Imodel* dst = nullptr;
  *pnErrorcode = api::guarded([&] { return copy_model(*src, &dst); });
  return *pnErrorcode == 0 ? dst : nullptr;
}

int QZcopyParam(QZmodel src, QZmodel dst, int mode) {
  if (src == nullptr || dst == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return copy_param(*src, *dst, mode); });
}

int QZcopyAllPam(QZmodel src, QZmodel dst) {
  if (src == nullptr || dst == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({
    dst->AllPamItems = src->AllPamItems;
    return params_rebind_model(dst);
  });
}

int QZcopyStocParam(QZmodel src, QZmodel dst) {
  if (src == nullptr || dst == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  dst->SPPam = src->SPPam;
  return 0;
}

int QZcopyEnv(QZenv src, QZenv dst) {
  if (src == nullptr || dst == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  dst->infinity = src->infinity;
  return 0;
}

int QZgetModelEnv(QZmodel model, QZenv* pEnv) {
  if (model == nullptr) return QZERR_INFO_NOT_AVAILABLE;
  if (pEnv) *pEnv = model->env;
  return 0;
}

int QZgetEnvModelCount(QZenv env, int* pnCount) {
  if (env == nullptr) return QZERR_INFO_NOT_AVAILABLE;
  if (pnCount == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  std::lock_guard<std::mutex> lock(env->modelMutex);
  *pnCount = static_cast<int>(env->modelList.size());
  return 0;
}

int QZgetEnvModelList(QZenv env, QZmodel* paModels) {
  if (env == nullptr) return QZERR_INFO_NOT_AVAILABLE;
  if (paModels == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  std::lock_guard<std::mutex> lock(env->modelMutex);
  std::copy(env->modelList.begin(), env->modelList.end(), paModels);
  return 0;
}

QZmodel QZgetEnvLogModel(QZenv env) {
  if (env == nullptr) return nullptr;
  std::lock_guard<std::mutex> lock(env->modelMutex);
  for (Imodel* m : env->modelList)
    if (m->cb.logFunc != nullptr) return m;
  return nullptr;
}

QZmodel QZgetMasterModel(QZmodel model) {
  if (model == nullptr) return nullptr;
  if (model->masterModel) return model->masterModel;
  if (model->parentModel) return model->parentModel->masterModel;
  return nullptr;
}

int QZgetVersionInfo(char* szVersion, char* szBuildData) {
  if (szVersion)
    std::sprintf(szVersion, "%d.%d.%d.%03d", kVerMajor, kVerMinor, kVerBuild, kVerRevision);
  if (szBuildData)
    std::sprintf(szBuildData, "%s %s\n%s, %s\nPlatform %s (%c)", __DATE__, __TIME__,
                 "Barrier: built-in interior point", "NLP: built-in", kPlatformText,
                 kPlatformCode);
  return 0;
}

int QZgetThreadNum(void) { return omp_get_thread_num(); }

int QZfreeSolverMemory(QZmodel model) {
  if (model) free_solver_memory(*model);
  return 0;
}

void QZfreeHashMemory(QZmodel model) {
  if (model) free_hash_memory(*model);
}
void QZfreeSolutionMemory(QZmodel model) {
  if (model) model->sol.reset();
}
void QZfreeMIPSolutionMemory(QZmodel model) {
  if (model) model->mipsol.reset();
}
void QZfreeGOPSolutionMemory(QZmodel model) {
  if (model) model->gopsol.reset();
}
void QZfreeNLPSolverMemory(QZmodel) {}
void QZfreeStocMemory(QZmodel) {}
void QZfreeStocHashMemory(QZmodel) {}
void QZfreeCutpool(QZmodel) {}
void QZfreeNameData(QZmodel model) {
  if (model) free_name_data(*model);
}

int QZsetEnvExitFunc(QZenv env, QZexitFunc_t pfFunc, void* pvData) {
  if (env == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  env->exitFunc = pfFunc;
  env->exitData = pvData;
  return 0;
}

int qzi_set_error_callback(QZenv env, QZerrorFunc_t pfFunc, void* pvData) {
  if (env == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  env->errFunc = pfFunc;
  if (pfFunc != nullptr) env->errData = pvData;
  return 0;
}

}  // extern "C"
