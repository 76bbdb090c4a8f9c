// Public entries of the simplex engine: cold and warm runs, and solves with the final basis.
#include <vector>

#include "api/guard.h"
#include "core/callbacks.h"
#include "core/model_ops.h"
#include "core/optimize.h"
#include "core/errors.h"
#include "lp/simplex/explicit_dual.h"
#include "lp/simplex/simplex.h"

using namespace zento;

namespace {

int check_run(QZmodel m, int nMethod) {
  if (m == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (m->modelState == QZ_STATUS_UNLOADED) return QZERR_NO_MODEL_LOADED;
  if (!is_linear(*m)) return QZERR_NOT_SUPPORTED;
  if (nMethod < QZ_METHOD_FREE || (nMethod > QZ_METHOD_DSIMPLEX && nMethod != QZ_METHOD_SPRINT))
    return QZERR_BAD_SOLVER_TYPE;
  return 0;
}

// Statuses of a run about to start, as the driver sets them.
void start_run(Imodel& m) {
  m.lastError = 0;
  Sol& s = ensure_sol(m);
  if (static_cast<int>(s.primal.size()) != m.nVars || static_cast<int>(s.dual.size()) != m.nCons)
    s.resize(m.nVars, m.nCons);
  s.model_status = QZ_STATUS_UNKNOWN;
  s.method = 0;
  s.spxIter = 0;
  if (s.primalStatus != QZ_STATUS_UNLOADED) s.primalStatus = s.dualStatus = QZ_STATUS_LOADED;
}

int finish_run(Imodel& m, int nMethod, int rc) {
  if (m.sol) {
    m.sol->method = (nMethod == QZ_METHOD_DSIMPLEX || nMethod == QZ_METHOD_FREE ? 2 : 1) + 1;
    m.sol->totSpxIter += m.sol->spxIter;
  }
  if (rc != 0) m.lastError = rc;
  return rc;
}

int run(Imodel& m, int nMethod, bool warm) {
  SolveScope scope(m);
  start_run(m);
  if (m.nCons == 0 || m.nVars == 0) return QZtrivialOptimizer(m);
  const int method = nMethod == QZ_METHOD_FREE ? QZ_METHOD_DSIMPLEX : nMethod;
  int rc;
  if (warm && m.glp) {
    rc = zento::QZsplexReoptimize(m, method);
  } else {
    free_solver_memory(m);
    rc = zento::QZsplexOptimize(m, method);
  }
  return finish_run(m, method, rc);
}

int check_solve_args(QZmodel m) {
  if (m == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (m->modelState == QZ_STATUS_UNLOADED) return QZERR_INFO_NOT_AVAILABLE;
  return 0;
}

int dense_solve(QZmodel m, const double* in, double* out, bool ftran) {
  if (int rc = check_solve_args(m)) return rc;
  const int rows = m->nCons;
  if (rows > 0 && (in == nullptr || out == nullptr)) return QZERR_ILLEGAL_NULL_POINTER;
  std::vector<int> idx(rows), oidx(rows);
  std::vector<double> val(rows), oval(rows);
  int nnz = 0;
  for (int i = 0; i < rows; ++i)
    if (in[i] != 0.0) {
      idx[nnz] = i;
      val[nnz++] = in[i];
    }
  int onnz = 0;
  const int rc = ftran ? qzi_glp_ftran(*m, nnz, idx.data(), val.data(), &onnz, oidx.data(), oval.data())
                       : qzi_glp_btran(*m, nnz, idx.data(), val.data(), &onnz, oidx.data(), oval.data());
  if (rc != 0) return rc;
  std::fill(out, out + rows, 0.0);
  for (int k = 0; k < onnz; ++k) out[oidx[k]] = oval[k];
  return 0;
}

int sparse_solve(QZmodel m, int nInc, const int* idx, const double* val, int* pnOut, int* oidx,
                 double* oval, bool ftran) {
  if (int rc = check_solve_args(m)) return rc;
  if (nInc < 0 || nInc > m->nCons) return QZERR_INDEX_OUT_OF_RANGE;
  if (pnOut == nullptr || (m->nCons > 0 && (oidx == nullptr || oval == nullptr)) ||
      (nInc > 0 && (idx == nullptr || val == nullptr)))
    return QZERR_ILLEGAL_NULL_POINTER;
  return ftran ? qzi_glp_ftran(*m, nInc, idx, val, pnOut, oidx, oval)
               : qzi_glp_btran(*m, nInc, idx, val, pnOut, oidx, oval);
}

}  // namespace

extern "C" {

int QZsplexOptimize(QZmodel model, int nMethod) {
  if (int rc = check_run(model, nMethod)) return rc;
  QZ_GUARD({ return run(*model, nMethod, false); });
}

int QZsplexReoptimize(QZmodel model, int nMethod) {
  if (int rc = check_run(model, nMethod)) return rc;
  QZ_GUARD({ return run(*model, nMethod, true); });
}

QZmodel QZgetDualModel(QZmodel model, int* pnErrorcode) {
  int dummy = 0;
  int& err = pnErrorcode ? *pnErrorcode : dummy;
  err = 0;
  if (model == nullptr) {
    err = QZERR_ILLEGAL_NULL_POINTER;
    return nullptr;
  }
  if (model->modelState == QZ_STATUS_UNLOADED) {
    err = QZERR_NO_MODEL_LOADED;
    return nullptr;
  }
  if (!is_linear(*model)) {
    err = QZERR_NOT_SUPPORTED;
    return nullptr;
  }
  Imodel* dual = nullptr;
  err = api::guarded([&]() -> int {
    QZ_CALL(create_model(model->env, &dual));
    DualMap map;
    const int rc = build_dual_model(*model, *dual, map);
    if (rc != 0) delete_model(&dual);
    return rc;
  });
  if (err != 0 && dual != nullptr) delete_model(&dual);
  return dual;
}

int QZdoFTRAN(QZmodel model, int nInc, const int* paiInc, const double* padInc, int* pnOut,
              int* paiOut, double* padOut) {
  QZ_GUARD({ return sparse_solve(model, nInc, paiInc, padInc, pnOut, paiOut, padOut, true); });
}

int QZdoBTRAN(QZmodel model, int nInc, const int* paiInc, const double* padInc, int* pnOut,
              int* paiOut, double* padOut) {
  QZ_GUARD({ return sparse_solve(model, nInc, paiInc, padInc, pnOut, paiOut, padOut, false); });
}

int QZdoDenseFTRAN(QZmodel model, const double* padB, double* padX) {
  QZ_GUARD({ return dense_solve(model, padB, padX, true); });
}

int QZdoDenseBTRAN(QZmodel model, const double* padC, double* padY) {
  QZ_GUARD({ return dense_solve(model, padC, padY, false); });
}

}  // extern "C"
