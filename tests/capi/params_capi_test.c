/* Parameters from plain C: environment defaults reach new models, names resolve in any case,
 * refused values change nothing, and a parameter file written and read back restores every
 * value. Exits nonzero on the first mismatch, naming it. */
#include <stdio.h>
#include <string.h>

#include "zento.h"

static int failures = 0;

#define CHECK(cond)                                                            \
  do {                                                                         \
    if (!(cond)) {                                                             \
      fprintf(stderr, "%s:%d: check failed: %s\n", __FILE__, __LINE__, #cond); \
      ++failures;                                                              \
    }                                                                          \
  } while (0)

int main(int argc, char** argv) {
  const char* file = argc > 1 ? argv[1] : "params_capi_test.par";
  int rc = -1, n = 0, type = 0, id = 0, iv = 0;
  double dv = 0, lo = 0, hi = 0, dfl = 0;
  char name[QZ_MAX_PARAM_NAME_LENGTH];
  QZenv env = QZcreateEnv(&rc);
  QZmodel early, late, copy;
  CHECK(rc == 0 && env != NULL);

  CHECK(QZgetParamCount(env, &n) == 0 && n == 454);
  CHECK(QZgetParamMacroID(env, "qz_dparam_mip_relopttol", &type, &id) == 0);
  CHECK(id == QZ_DPARAM_MIP_RELOPTTOL && type == QZ_DOUBLE_PARAMETER_TYPE);
  CHECK(QZgetParamMacroName(env, QZ_IPARAM_LP_SCALE, name) == 0);
  CHECK(strcmp(name, "QZ_IPARAM_LP_SCALE") == 0);
  CHECK(QZgetParamInfo(env, QZ_IPARAM_MIP_NODESELRULE, &type, NULL, &lo, &hi, &dfl) == 0);
  CHECK(type == QZ_INT_PARAMETER_TYPE && lo == 0 && hi == 7 && dfl == 4);

  early = QZcreateModel(env, &rc);
  CHECK(QZsetEnvIntParameter(env, QZ_IPARAM_MIP_PRINTLEVEL, 5) == 0);
  late = QZcreateModel(env, &rc);
  CHECK(QZgetModelIntParameter(early, QZ_IPARAM_MIP_PRINTLEVEL, &iv) == 0 && iv == 2);
  CHECK(QZgetModelIntParameter(late, QZ_IPARAM_MIP_PRINTLEVEL, &iv) == 0 && iv == 5);

  CHECK(QZsetModelDouParameter(late, QZ_DPARAM_SOLVER_FEASTOL, 1.0) == QZERR_PARAM_OUT_OF_RANGE);
  CHECK(QZgetModelDouParameter(late, QZ_DPARAM_SOLVER_FEASTOL, &dv) == 0 && dv == 1e-7);
  CHECK(QZsetModelDouParameter(late, QZ_DPARAM_SOLVER_FEASTOL, 3.25e-9) == 0);
  CHECK(QZsetModelIntParameter(late, QZ_IPARAM_OBJSENSE, QZ_MAX) == 0);
  CHECK(QZsetModelStocParameterChar(late, QZ_SPARAM_STOC_FMT_SCENARIO_NAME, "SC%03d") == 0);

  CHECK(QZwriteModelParameter(late, file) == 0);
  copy = QZcreateModel(env, &rc);
  CHECK(QZsetModelIntParameter(copy, QZ_IPARAM_MIP_PRINTLEVEL, 0) == 0);
  CHECK(QZreadModelParameter(copy, file) == 0);
  CHECK(QZgetModelDouParameter(copy, QZ_DPARAM_SOLVER_FEASTOL, &dv) == 0 && dv == 3.25e-9);
  CHECK(QZgetModelIntParameter(copy, QZ_IPARAM_OBJSENSE, &iv) == 0 && iv == QZ_MAX);
  /* Equal to the environment's value, so written as a comment: the read leaves it alone. */
  CHECK(QZgetModelIntParameter(copy, QZ_IPARAM_MIP_PRINTLEVEL, &iv) == 0 && iv == 0);
  CHECK(QZgetModelStocParameterChar(copy, QZ_SPARAM_STOC_FMT_SCENARIO_NAME, name) == 0);
  CHECK(strcmp(name, "SC%03d") == 0);
  remove(file);

  QZdeleteModel(&copy);
  QZdeleteModel(&late);
  QZdeleteModel(&early);
  QZdeleteEnv(&env);
  if (failures == 0) printf("params capi: all checks passed\n");
  return failures == 0 ? 0 : 1;
}
