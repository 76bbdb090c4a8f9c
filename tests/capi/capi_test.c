/* The C interface used from plain C: load an LP with names, read every piece back, copy the
 * model, solve a model without rows, and delete everything. Exits nonzero on the first
 * mismatch, naming it. */
#include <math.h>
#include <stdio.h>
#include <string.h>

#include "zento.h"

static int failures = 0;

#define CHECK(cond)                                              \
  do {                                                           \
    if (!(cond)) {                                               \
      fprintf(stderr, "%s:%d: check failed: %s\n", __FILE__, __LINE__, #cond); \
      ++failures;                                                \
    }                                                            \
  } while (0)

/* min x + 2y + 3z  s.t.  x + y >= 1 (r1),  y + z <= 4 (r2);  bounds 0 <= x, y, z <= 10 */
static const double c[] = {1.0, 2.0, 3.0};
static const double b[] = {1.0, 4.0};
static const char types[] = "GL";
static const int beg[] = {0, 1, 3, 4};
static const int rows[] = {0, 0, 1, 1};
static const double coef[] = {1.0, 1.0, 1.0, 1.0};
static const double lo[] = {0.0, 0.0, 0.0};
static const double up[] = {10.0, 10.0, 10.0};

static void check_model(QZmodel m) {
  int nv = 0, nc = 0, nz = 0, vlen = 0, clen = 0, sense = 0, i;
  double k = 0, gc[3], gb[2], gcoef[4], gl[3], gu[3];
  int gbeg[4], glen[3], grows[4], idx = -1;
  char gtypes[3] = {0}, name[32], title[32];
  char* cnames[2];
  char* vnames[3];
  char cpool[32], vpool[32];

  CHECK(QZgetDimensions(m, &nv, &nc, NULL, &nz, NULL, NULL, NULL, NULL, &vlen, &clen, NULL) == 0);
  CHECK(nv == 3 && nc == 2 && nz == 4);
  CHECK(QZgetLPData(m, &sense, &k, gc, gb, gtypes, gbeg, glen, gcoef, grows, gl, gu) == 0);
  CHECK(sense == QZ_MIN && k == 0.5);
  for (i = 0; i < 3; ++i) CHECK(gc[i] == c[i] && gl[i] == lo[i] && gu[i] == up[i]);
  for (i = 0; i < 4; ++i) CHECK(gbeg[i] == beg[i] && grows[i] == rows[i] && gcoef[i] == coef[i]);
  CHECK(gb[0] == 1.0 && gb[1] == 4.0 && gtypes[0] == 'G' && gtypes[1] == 'L');
  CHECK(QZgetVariableNamej(m, 2, name) == 0 && strcmp(name, "z") == 0);
  CHECK(QZgetConstraintNamei(m, 1, name) == 0 && strcmp(name, "r2") == 0);
  CHECK(QZgetVariableIndex(m, "y", &idx) == 0 && idx == 1);
  CHECK(QZgetConstraintIndex(m, "r1", &idx) == 0 && idx == 0);
  CHECK(QZgetVariableIndex(m, "w", &idx) == QZERR_COLUMN_TOKEN_NOT_FOUND && idx == -1);
  CHECK(vlen == 6 && clen == 6);
  CHECK(QZgetNameData(m, title, NULL, NULL, NULL, NULL, cnames, cpool, vnames, vpool, NULL,
                      NULL) == 0);
  CHECK(strcmp(title, "capi") == 0 && strcmp(cnames[1], "r2") == 0 &&
        strcmp(vnames[0], "x") == 0);
}

int main(void) {
  int rc = -1, status = 0;
  const char* cn[] = {"r1", "r2"};
  const char* vn[] = {"x", "y", "z"};
  QZenv env = QZcreateEnv(&rc);
  QZmodel m, copy, free_cols;
  double x[2], obj = 0;
  const int nobeg[] = {0, 0, 0};
  const double fc[] = {1.0, -1.0};
  const double flo[] = {-3.0, -3.0};
  const double fup[] = {3.0, 3.0};
  char msg[512];

  CHECK(env != NULL && rc == 0);
  m = QZcreateModel(env, &rc);
  CHECK(m != NULL && rc == 0);
  CHECK(QZloadLPData(m, 2, 3, QZ_MIN, 0.5, c, b, types, 4, beg, NULL, coef, rows, lo, up) == 0);
  CHECK(QZloadNameData(m, "capi", "cost", NULL, NULL, NULL, (char**)cn, (char**)vn, NULL) == 0);
  check_model(m);

  copy = QZcopyModel(m, &rc);
  CHECK(copy != NULL && rc == 0);
  check_model(copy);

  /* A model with rows and columns waits for the simplex; a model without rows solves now. */
  free_cols = QZcreateModel(env, &rc);
  CHECK(QZloadLPData(free_cols, 0, 2, QZ_MIN, 0.0, fc, NULL, NULL, 0, nobeg, NULL, NULL, NULL,
                     flo, fup) == 0);
  CHECK(QZoptimize(free_cols, QZ_METHOD_FREE, &status) == 0);
  CHECK(status == QZ_STATUS_BASIC_OPTIMAL);
  CHECK(QZgetPrimalSolution(free_cols, x) == 0 && x[0] == -3.0 && x[1] == 3.0);
  CHECK(QZgetObjective(free_cols, &obj) == 0 && fabs(obj + 6.0) < 1e-12);

  CHECK(QZgetErrorMessage(env, QZERR_OUT_OF_MEMORY, msg) == 0);
  CHECK(strcmp(msg, "Could not allocate enough memory.") == 0);

  CHECK(QZdeleteModel(&copy) == 0 && copy == NULL);
  CHECK(QZdeleteModel(&m) == 0);
  CHECK(QZdeleteEnv(&env) == 0 && env == NULL);
  if (failures) fprintf(stderr, "%d checks failed\n", failures);
  return failures ? 1 : 0;
}
