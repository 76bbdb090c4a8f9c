// The linear core of a model: QZloadLPData, variable types, names, starts, bases and
// loaded solutions.
#include "core/load.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "core/env.h"
#include "core/errors.h"
#include "core/log.h"
#include "core/model_ops.h"

namespace zento {

namespace {

bool finite_data(const double* p, int n) {
  for (int i = 0; i < n; ++i)
    if (!std::isfinite(p[i])) return false;
  return true;
}

bool no_nan(const double* p, int n) {
  for (int i = 0; i < n; ++i)
    if (std::isnan(p[i])) return false;
  return true;
}

int fill_linear_data(Imodel& m, int nCons, int nVars, int dObjSense, double dObjConst,
                     const double* padC, const double* padB, const char* pszConTypes, int nAnnz,
                     const int* paiAcols, const int* panAcols, const double* padAcoef,
                     const int* paiArows, const double* padL, const double* padU) {
  if (nCons < 0 || nVars < 0) return QZERR_ERROR_IN_INPUT;
  if (nAnnz < 0) return QZERR_BAD_TOTAL_NONZEROS;
  if ((nVars > 0 && padC == nullptr) || (nCons > 0 && (padB == nullptr || pszConTypes == nullptr)) ||
      (nAnnz > 0 && (paiArows == nullptr || padAcoef == nullptr)) || paiAcols == nullptr)
    return QZERR_ILLEGAL_NULL_POINTER;

  m.nCons = nCons;
  m.nVars = nVars;
  m.nAnnz = nAnnz;
  const int span = paiAcols[nVars];
  if (span < nAnnz) return QZERR_BAD_TOTAL_NONZEROS;
  if (paiAcols[0] < 0) return QZERR_BAD_COLUMN_BEGIN_VECTOR;
  if (dObjSense != QZ_MIN && dObjSense != QZ_MAX) return QZERR_BAD_OBJECTIVE_SENSE;

  LinearData& lp = m.lp;
  lp.dObjSense = dObjSense;
  if (std::isnan(dObjConst)) return QZERR_ERROR_IN_INPUT;
  lp.dObjConst = dObjConst;
  if (nVars > 0 && !finite_data(padC, nVars)) return QZERR_ERROR_IN_INPUT;
  lp.padC.assign(padC, padC + nVars);
  if (nCons > 0 && !no_nan(padB, nCons)) return QZERR_ERROR_IN_INPUT;
  lp.padB.assign(padB, padB + nCons);
  lp.pszConTypes.assign(pszConTypes, pszConTypes + nCons);
  for (char t : lp.pszConTypes)
    if (t != 'E' && t != 'L' && t != 'G' && t != 'N') return QZERR_BAD_CONSTRAINT_TYPE;

  lp.paiAcols.assign(paiAcols, paiAcols + nVars + 1);
  lp.panAcols.assign(static_cast<size_t>(nVars), 0);
  for (int j = 0; j < nVars; ++j) {
    const int colSpan = paiAcols[j + 1] - paiAcols[j];
    if (panAcols == nullptr) {
      if (colSpan < 0) return QZERR_BAD_COLUMN_BEGIN_VECTOR;
      lp.panAcols[j] = colSpan;
    } else {
      if (colSpan < 0) return QZERR_BAD_COLUMN_BEGIN_VECTOR;
      if (panAcols[j] < 0 || panAcols[j] > colSpan) return QZERR_BAD_COLUMN_NONZEROS;
      lp.panAcols[j] = panAcols[j];
    }
  }
  long long total = 0;
  for (int j = 0; j < nVars; ++j) total += lp.panAcols[j];
  if (total != nAnnz) return QZERR_BAD_TOTAL_NONZEROS;

  lp.paiArows.assign(static_cast<size_t>(span), 0);
  lp.padAcoef.assign(static_cast<size_t>(span), 0.0);
  for (int j = 0; j < nVars; ++j) {
    const int b = paiAcols[j];
    const int len = lp.panAcols[j];
    if (len == 0) continue;
    std::copy(paiArows + b, paiArows + b + len, lp.paiArows.begin() + b);
    std::copy(padAcoef + b, padAcoef + b + len, lp.padAcoef.begin() + b);
  }

  std::vector<int> mark(static_cast<size_t>(nCons) + 1, 0);
  int removed = 0;
  for (int j = 0; j < nVars; ++j) {
    const int b = lp.paiAcols[j];
    const int len = lp.panAcols[j];
    QZ_CALL(check_column_entries(lp.paiArows.data() + b, lp.padAcoef.data() + b, len, nCons));
    lp.panAcols[j] = merge_duplicate_rows(lp.paiArows.data() + b, lp.padAcoef.data() + b, len, mark);
    removed += len - lp.panAcols[j];
  }
  m.nAnnz = nAnnz - removed;
  lp.rowsSorted = false;

  lp.padL.assign(static_cast<size_t>(nVars), 0.0);
  lp.padU.assign(static_cast<size_t>(nVars), QZ_INFINITY);
  if (padL != nullptr) {
    if (!no_nan(padL, nVars)) return QZERR_ERROR_IN_INPUT;
    for (int j = 0; j < nVars; ++j) lp.padL[j] = padL[j] <= -QZ_INFINITY ? -QZ_INFINITY : padL[j];
  }
  if (padU != nullptr) {
    if (!no_nan(padU, nVars)) return QZERR_ERROR_IN_INPUT;
    for (int j = 0; j < nVars; ++j) lp.padU[j] = padU[j] > QZ_INFINITY ? QZ_INFINITY : padU[j];
  }
  return 0;
}

}  // namespace

int check_column_entries(const int* rows, const double* coef, int len, int nCons) {
  for (int k = 0; k < len; ++k) {
    if (rows[k] < 0 || rows[k] >= nCons) return QZERR_INDEX_OUT_OF_RANGE;
    if (!std::isfinite(coef[k])) return QZERR_ERROR_IN_INPUT;
  }
  return 0;
}

// Linear in the entries: `mark` holds position + 1 of a row's entry in this column and is
// zero again on return.
int merge_duplicate_rows(int* rows, double* coef, int len, std::vector<int>& mark) {
  int out = 0;
  for (int k = 0; k < len; ++k) {
    const int i = rows[k];
    if (mark[i] != 0) {
      coef[mark[i] - 1] += coef[k];
      continue;
    }
    rows[out] = i;
    coef[out] = coef[k];
    mark[i] = out + 1;
    ++out;
  }
  for (int k = 0; k < out; ++k) mark[rows[k]] = 0;
  return out;
}

int binary_bounds(double& lo, double& up, char& type) {
  if (up < 0.0 || lo > 1.0) return QZERR_INPUT_OUT_OF_RANGE;
  up = std::min(up, 1.0);
  lo = std::max(lo, 0.0);
  if (lo == up) type = 'C';
  return 0;
}

int load_lp_data(Imodel& m, int nCons, int nVars, int dObjSense, double dObjConst,
                 const double* padC, const double* padB, const char* pszConTypes, int nAnnz,
                 const int* paiAcols, const int* panAcols, const double* padAcoef,
                 const int* paiArows, const double* padL, const double* padU) {
  if (m.nCons > 0 || m.nVars > 0) return QZERR_ALREADY_LOADED;
  int rc = 0;
  try {
    rc = fill_linear_data(m, nCons, nVars, dObjSense, dObjConst, padC, padB, pszConTypes, nAnnz,
                          paiAcols, panAcols, padAcoef, paiArows, padL, padU);
  } catch (const std::bad_alloc&) {
    rc = QZERR_OUT_OF_MEMORY;
  }
  if (rc != 0) {
    clear_model(m);
    return rc;
  }
  m.SolverPam.objsense = m.lp.dObjSense;
  m.modelState = QZ_STATUS_LOADED;
  compute_base_stats(m);
  log_base_stats(m);
  return 0;
}

void invalidate_results(Imodel& m) {
  if (m.sol) {
    Sol& s = *m.sol;
    s.model_status = QZ_STATUS_LOADED;
    if (s.primalStatus != QZ_STATUS_UNLOADED) s.primalStatus = QZ_STATUS_UNKNOWN;
    s.method = 0;
    s.resize(m.nVars, m.nCons);
  }
  if (!m.SplexPam.in_mip) m.mipsol.reset();
  free_solver_memory(m);
}

int load_var_type(Imodel& m, char* pszVarTypes) {
  if (pszVarTypes == nullptr) {
    m.lp.pszVarTypes.clear();
    return 0;
  }
  LinearData& lp = m.lp;
  const bool haveBounds = !lp.padL.empty();
  std::vector<int> semicont;
  int rc = 0;
  for (int j = 0; j < m.nVars && rc == 0; ++j) {
    switch (pszVarTypes[j]) {
      case 'C':
      case 'I':
        break;
      case 'B':
        if (haveBounds) rc = binary_bounds(lp.padL[j], lp.padU[j], pszVarTypes[j]);
        break;
      case 'S':
        semicont.push_back(j);
        break;
      default:
        rc = QZERR_BAD_VARIABLE_TYPE;
    }
  }
  m.mipsol.reset();
  if (rc != 0) {
    lp.pszVarTypes.clear();
    return rc;
  }
  lp.pszVarTypes.assign(pszVarTypes, pszVarTypes + m.nVars);
  if (!semicont.empty()) {
    std::vector<double> lo, up;
    for (int j : semicont) {
      lp.pszVarTypes[j] = 'C';
      lo.push_back(lp.padL[j]);
      up.push_back(lp.padU[j]);
    }
    rc = load_semicont_data(m, static_cast<int>(semicont.size()), semicont.data(), lo.data(),
                            up.data());
    if (rc != 0) {
      lp.pszVarTypes.clear();
      return rc;
    }
  }
  compute_base_stats(m);
  QZlogmod(&m, base_printlevel(m) > 0 && !m.holdLog,
           "\nBinary variables     :%8d (in %d constraints)", m.baseStats.nBin,
           m.baseStats.nBinRows);
  QZlogmod(&m, base_printlevel(m) > 0 && !m.holdLog,
           "\nInteger variables    :%8d (in %d constraints)\n", m.baseStats.nInt,
           m.baseStats.nIntRows);
  return 0;
}

int load_name_data(Imodel& m, const char* pszTitle, const char* pszObjName,
                   const char* pszRhsName, const char* pszRngName, const char* pszBndname,
                   char** paszConNames, char** paszVarNames, char** paszConeNames) {
  NameData& n = m.names;
  if (pszTitle) n.title = pszTitle;
  if (pszObjName) n.objName = pszObjName;
  if (pszRhsName) n.rhsName = pszRhsName;
  if (pszRngName) n.rngName = pszRngName;
  if (pszBndname) n.bndName = pszBndname;
  auto fill = [](NamePool& p, char** names, int count) -> int {
    size_t bytes = 0;
    for (int i = 0; i < count; ++i) {
      if (names[i] == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
      bytes += std::strlen(names[i]) + 1;
    }
    std::vector<char> pool;
    pool.reserve(std::max(bytes, p.pool.capacity()));
    std::vector<int> offset(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i) {
      if (pool.size() > static_cast<size_t>(INT32_MAX)) return QZERR_OUT_OF_MEMORY;
      offset[i] = static_cast<int>(pool.size());
      pool.insert(pool.end(), names[i], names[i] + std::strlen(names[i]) + 1);
    }
    p.pool = std::move(pool);
    p.offset = std::move(offset);
    return 0;
  };
  if (paszConNames && m.nCons > 0) QZ_CALL(fill(n.rows, paszConNames, m.nCons));
  if (paszVarNames && m.nVars > 0) QZ_CALL(fill(n.cols, paszVarNames, m.nVars));
  if (paszConeNames && m.cones.count() > 0)
    QZ_CALL(fill(n.cones, paszConeNames, m.cones.count()));
  free_hash_memory(m);
  return 0;
}

int load_start_point(Imodel& m, bool mip, const double* padPrimal) {
  std::vector<double>& dst = mip ? m.start.mip : m.start.primal;
  if (padPrimal == nullptr) {
    dst.clear();
    return 0;
  }
  if (!no_nan(padPrimal, m.nVars)) return QZERR_ERROR_IN_INPUT;
  dst.assign(padPrimal, padPrimal + m.nVars);
  return 0;
}

int load_start_point_partial(Imodel& m, bool mip, int nCols, const int* paiCols,
                             const double* padPrimal) {
  std::vector<int>& cols = mip ? m.start.mipPartialCols : m.start.partialCols;
  std::vector<double>& vals = mip ? m.start.mipPartialVals : m.start.partialVals;
  if (nCols <= 0 || paiCols == nullptr || padPrimal == nullptr) {
    if (nCols < 0) return QZERR_ERROR_IN_INPUT;
    if (nCols > 0) return QZERR_ILLEGAL_NULL_POINTER;
    cols.clear();
    vals.clear();
    return 0;
  }
  for (int k = 0; k < nCols; ++k)
    if (paiCols[k] < 0 || paiCols[k] >= m.nVars) return QZERR_COLUMN_INDEX_OUT_OF_RANGE;
  if (!no_nan(padPrimal, nCols)) return QZERR_ERROR_IN_INPUT;
  cols.assign(paiCols, paiCols + nCols);
  vals.assign(padPrimal, padPrimal + nCols);
  return 0;
}

int load_var_priorities(Imodel& m, const int* panCprior) {
  if (panCprior == nullptr) {
    m.priorities.clear();
    return 0;
  }
  for (int j = 0; j < m.nVars; ++j)
    if (panCprior[j] < 0) return QZERR_INPUT_OUT_OF_RANGE;
  m.priorities.assign(panCprior, panCprior + m.nVars);
  return 0;
}

int load_basis(Imodel& m, const int* panCstatus, const int* panRstatus) {
  if ((panCstatus == nullptr && m.nVars != 0) || (panRstatus == nullptr && m.nCons != 0)) {
    free_solver_memory(m);
    if (m.sol) {
      Sol& s = *m.sol;
      s.basicStatus = QZ_STATUS_UNLOADED;
      if (s.primalStatus == QZ_STATUS_BASIC_OPTIMAL) {
        s.primalStatus = QZ_STATUS_OPTIMAL;
        s.model_status = QZ_STATUS_OPTIMAL;
      }
    }
    return 0;
  }
  if (m.glp) {
    int nBasic = 0;
    for (int j = 0; j < m.nVars; ++j) nBasic += panCstatus[j] >= 0;
    for (int i = 0; i < m.nCons; ++i) nBasic += panRstatus[i] >= 0;
    // The simplex record takes the basis on its next start; any running state is dropped.
    free_solver_memory(m);
    if (nBasic != m.nCons) {
      if (m.sol) m.sol->basicStatus = QZ_STATUS_UNLOADED;
      return QZERR_BAD_BASIS;
    }
  }
  Sol& s = ensure_sol(m);
  const LinearData& lp = m.lp;
  std::vector<int> cs(panCstatus, panCstatus + m.nVars);
  for (int j = 0; j < m.nVars; ++j) {
    const int st = cs[j];
    if (st >= 0 || st == QZ_BASTYPE_SBAS) continue;
    const bool loFinite = lp.padL[j] > -QZ_INFINITY;
    const bool upFinite = lp.padU[j] < QZ_INFINITY;
    if (st == QZ_BASTYPE_ATLO && !loFinite) return QZERR_BAD_VARIABLE_BASIS_VALUE;
    if (st == QZ_BASTYPE_ATUP && !upFinite) return QZERR_BAD_VARIABLE_BASIS_VALUE;
    if (st == QZ_BASTYPE_FNUL && (loFinite || upFinite)) return QZERR_BAD_VARIABLE_BASIS_VALUE;
    if (st < QZ_BASTYPE_SBAS) return QZERR_INTERNAL_ERROR;
  }
  for (int i = 0; i < m.nCons; ++i) {
    const int st = panRstatus[i];
    if (st >= 0 || st == QZ_BASTYPE_ATLO || st == QZ_BASTYPE_FNUL || st == QZ_BASTYPE_SBAS)
      continue;
    return QZERR_INTERNAL_ERROR;
  }
  s.colStatus = std::move(cs);
  s.rowStatus.assign(panRstatus, panRstatus + m.nCons);
  s.basicStatus = QZ_STATUS_LOADED;
  return 0;
}

void compute_row_activity(const Imodel& m, const double* x, double* activity) {
  std::fill(activity, activity + m.nCons, 0.0);
  const LinearData& lp = m.lp;
  for (int j = 0; j < m.nVars; ++j) {
    const double xj = x[j];
    if (xj == 0.0) continue;
    for (int k = lp.paiAcols[j]; k < lp.paiAcols[j] + lp.panAcols[j]; ++k)
      activity[lp.paiArows[k]] += lp.padAcoef[k] * xj;
  }
}

double compute_objective(const Imodel& m, const double* x) {
  double obj = m.lp.dObjConst;
  for (int j = 0; j < m.nVars; ++j) obj += m.lp.padC[j] * x[j];
  return obj;
}

int load_primal_solution(Imodel& m, const int* pnStatus, const double* pdObj,
                         const double* padPrimal, const double* padSlack, const double* pdPinf) {
  if (pnStatus == nullptr || padPrimal == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  m.sol.reset();
  Sol& s = ensure_sol(m);
  const int st = *pnStatus;
  if (st < 1 || st > 13 || st == 9) return QZERR_ERROR_IN_INPUT;
  s.primalStatus = st;
  if (st == QZ_STATUS_UNLOADED) return 0;
  s.model_status = st;
  s.primal.assign(padPrimal, padPrimal + m.nVars);
  if (padSlack != nullptr) {
    s.slack.assign(padSlack, padSlack + m.nCons);
  } else {
    std::vector<double> act(static_cast<size_t>(m.nCons));
    compute_row_activity(m, padPrimal, act.data());
    for (int i = 0; i < m.nCons; ++i) s.slack[i] = m.lp.padB[i] - act[i];
  }
  s.pobj = pdObj ? *pdObj : compute_objective(m, padPrimal);
  if (pdPinf != nullptr) {
    s.pinf = *pdPinf;
  } else {
    const double tol = m.SplexPam.solver_feastol;
    double sum = 0;
    for (int i = 0; i < m.nCons; ++i) {
      const double sl = s.slack[i];
      switch (m.lp.pszConTypes[i]) {
        case 'G':
          if (sl > tol) sum += sl;
          break;
        case 'L':
          if (sl < -tol) sum -= sl;
          break;
        case 'E':
          if (std::fabs(sl) > tol) sum += std::fabs(sl);
          break;
        default:
          break;
      }
    }
    s.pinf = sum;
  }
  return 0;
}

int load_dual_solution(Imodel& m, const int* pnStatus, const double* pdDobj,
                       const double* padDual, const double* padRedcost, const double* pdDinf) {
  if (pnStatus == nullptr || padDual == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  const int st = *pnStatus;
  if (st < 1 || st > 13 || st == 9) return QZERR_ERROR_IN_INPUT;
  Sol& s = ensure_sol(m);
  s.dualStatus = st;
  s.dual.assign(padDual, padDual + m.nCons);
  if (padRedcost != nullptr) {
    s.redcost.assign(padRedcost, padRedcost + m.nVars);
  } else {
    // d = c - A'y
    const LinearData& lp = m.lp;
    for (int j = 0; j < m.nVars; ++j) {
      double d = lp.padC[j];
      for (int k = lp.paiAcols[j]; k < lp.paiAcols[j] + lp.panAcols[j]; ++k)
        d -= lp.padAcoef[k] * padDual[lp.paiArows[k]];
      s.redcost[j] = d;
    }
  }
  if (pdDobj != nullptr) s.dobj = *pdDobj;
  if (pdDinf != nullptr) s.dinf = *pdDinf;
  return 0;
}

int load_model_status(Imodel& m, const int* pnModelStatus, const int* pnErrorCode) {
  if (pnModelStatus == nullptr || pnErrorCode == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  const int err = *pnErrorCode;
  const int st = *pnModelStatus;
  if (!(err == 0 || (err >= 2001 && err <= 2750))) return QZERR_ERROR_IN_INPUT;
  const bool okStatus = (st >= 1 && st <= 7) || st == 10 || st == 11 || st == 12 || st == 14;
  if (!okStatus) return QZERR_ERROR_IN_INPUT;
  m.lastError = err;
  // A model that has never been solved gets a record, so the status can be read back.
  ensure_sol(m).model_status = st;
  return 0;
}

void compact_columns(const Imodel& m, std::vector<int>& cols, std::vector<int>& lens,
                     std::vector<int>& rows, std::vector<double>& coef) {
  const LinearData& lp = m.lp;
  cols.assign(static_cast<size_t>(m.nVars) + 1, 0);
  lens.assign(static_cast<size_t>(m.nVars), 0);
  rows.clear();
  coef.clear();
  rows.reserve(static_cast<size_t>(m.nAnnz));
  coef.reserve(static_cast<size_t>(m.nAnnz));
  for (int j = 0; j < m.nVars; ++j) {
    cols[j] = static_cast<int>(rows.size());
    const int b = lp.paiAcols[j];
    rows.insert(rows.end(), lp.paiArows.begin() + b, lp.paiArows.begin() + b + lp.panAcols[j]);
    coef.insert(coef.end(), lp.padAcoef.begin() + b, lp.padAcoef.begin() + b + lp.panAcols[j]);
    lens[j] = lp.panAcols[j];
  }
  cols[m.nVars] = static_cast<int>(rows.size());
}

const RowCopy& setup_Acolpos(Imodel& m) {
  if (m.rowCopy) return *m.rowCopy;
  auto rc = std::make_unique<RowCopy>();
  const LinearData& lp = m.lp;
  rc->begin.assign(static_cast<size_t>(m.nCons) + 1, 0);
  for (int j = 0; j < m.nVars; ++j)
    for (int k = lp.paiAcols[j]; k < lp.paiAcols[j] + lp.panAcols[j]; ++k)
      ++rc->begin[lp.paiArows[k] + 1];
  for (int i = 0; i < m.nCons; ++i) rc->begin[i + 1] += rc->begin[i];
  rc->col.resize(static_cast<size_t>(m.nAnnz));
  rc->val.resize(static_cast<size_t>(m.nAnnz));
  std::vector<int> next(rc->begin.begin(), rc->begin.end() - 1);
  for (int j = 0; j < m.nVars; ++j)
    for (int k = lp.paiAcols[j]; k < lp.paiAcols[j] + lp.panAcols[j]; ++k) {
      const int pos = next[lp.paiArows[k]]++;
      rc->col[pos] = j;
      rc->val[pos] = lp.padAcoef[k];
    }
  m.rowCopy = std::move(rc);
  return *m.rowCopy;
}

}  // namespace zento
