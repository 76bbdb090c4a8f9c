// Changes of values: matrix coefficients, right-hand sides, row and column types, bounds,
// costs, the objective constant and branching priorities.
#include <algorithm>
#include <cmath>
#include <utility>

#include "core/errors.h"
#include "core/load.h"
#include "core/model_ops.h"
#include "core/modify.h"
#include "lp/simplex/glp_modify.h"

namespace zento {

namespace {

int check_indices(const int* idx, int n, int limit) {
  for (int k = 0; k < n; ++k)
    if (idx[k] < 0 || idx[k] >= limit) return QZERR_INDEX_OUT_OF_RANGE;
  return 0;
}

// Applies the rule for a change of values and offers each changed entry to an idle simplex
// record; the first refusal releases solver memory.
template <class Take>
void offer_to_glp(Imodel& m, int n, Take take) {
  const bool live = m.glp && glp_is_idle(m);
  apply_change_rule(m, Change::kData, live);
  if (!live) return;
  for (int k = 0; k < n; ++k)
    if (take(k) != 0) {
      free_solver_memory(m);
      return;
    }
}

// The requested entries of one column by ascending row; a row asked twice takes its last value.
std::vector<std::pair<int, double>> sorted_request(int n, const int* rows, const double* vals) {
  std::vector<std::pair<int, double>> req(static_cast<size_t>(n));
  bool ascending = true;
  for (int k = 0; k < n; ++k) {
    req[k] = {rows[k], vals ? vals[k] : 0.0};
    if (k > 0 && rows[k] <= rows[k - 1]) ascending = false;
  }
  if (ascending) return req;
  std::stable_sort(req.begin(), req.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  size_t out = 0;
  for (size_t k = 0; k < req.size(); ++k) {
    if (out > 0 && req[out - 1].first == req[k].first)
      req[out - 1].second = req[k].second;
    else
      req[out++] = req[k];
  }
  req.resize(out);
  return req;
}

// A nonbasic column keeps to a real bound after one of its bounds moved.
void move_status_for_bound(int& st, bool upper, double oldL, double oldU, double v) {
  if (st >= 0 || st == QZ_BASTYPE_SBAS) return;
  if (oldL == oldU) {
    st = upper ? QZ_BASTYPE_ATLO : QZ_BASTYPE_ATUP;
    return;
  }
  if (!upper) {
    if (st == QZ_BASTYPE_ATLO && v <= -QZ_INFINITY)
      st = oldU < QZ_INFINITY ? QZ_BASTYPE_ATUP : QZ_BASTYPE_FNUL;
    else if (st == QZ_BASTYPE_FNUL && v > -QZ_INFINITY)
      st = QZ_BASTYPE_ATLO;
  } else {
    if (st == QZ_BASTYPE_ATUP && v >= QZ_INFINITY)
      st = oldL > -QZ_INFINITY ? QZ_BASTYPE_ATLO : QZ_BASTYPE_FNUL;
    else if (st == QZ_BASTYPE_FNUL && v < QZ_INFINITY)
      st = QZ_BASTYPE_ATUP;
  }
}

}  // namespace

int modify_aj(Imodel& m, int iCol, int nRows, const int* paiRows, const double* padAj) {
  if (iCol < 0 || iCol >= m.nVars) return QZERR_INDEX_OUT_OF_RANGE;
  QZ_CALL(check_indices(paiRows, nRows, m.nCons));
  if (padAj)
    for (int k = 0; k < nRows; ++k)
      if (!std::isfinite(padAj[k])) return QZERR_ERROR_IN_INPUT;
  QZ_CALL(QZtransposeA(m));
  auto req = sorted_request(nRows, paiRows, padAj);

  // First pass: rows present take their value and are marked done; one forward scan.
  LinearData& lp = m.lp;
  const int b = lp.paiAcols[iCol], len = lp.panAcols[iCol];
  int fresh = 0;
  for (int p = b, q = 0; q < static_cast<int>(req.size()); ++q) {
    while (p < b + len && lp.paiArows[p] < req[q].first) ++p;
    if (p < b + len && lp.paiArows[p] == req[q].first) {
      lp.padAcoef[p] = req[q].second;
      req[q].first = ~req[q].first;
    } else {
      ++fresh;
    }
  }
  if (fresh > 0) {
    QZ_CALL(ensure_column_room(m, iCol, fresh));
    // Second pass: merge the new rows from the back so nothing is overwritten early.
    const int bb = lp.paiAcols[iCol];
    int r = bb + len - 1, w = bb + len + fresh - 1;
    for (int q = static_cast<int>(req.size()) - 1; q >= 0 && w > r;) {
      if (req[q].first < 0) {
        --q;
        continue;
      }
      if (r >= bb && lp.paiArows[r] > req[q].first) {
        lp.paiArows[w] = lp.paiArows[r];
        lp.padAcoef[w] = lp.padAcoef[r];
        --r;
      } else {
        lp.paiArows[w] = req[q].first;
        lp.padAcoef[w] = req[q].second;
        --q;
      }
      --w;
    }
    lp.panAcols[iCol] += fresh;
    m.nAnnz += fresh;
  }
  apply_change_rule(m, Change::kData);
  m.rowCopy.reset();
  return 0;
}

int delete_aj(Imodel& m, int iCol, int nRows, const int* paiRows) {
  if (iCol < 0 || iCol >= m.nVars) return QZERR_INDEX_OUT_OF_RANGE;
  QZ_CALL(check_indices(paiRows, nRows, m.nCons));
  QZ_CALL(QZtransposeA(m));
  const auto req = sorted_request(nRows, paiRows, nullptr);
  LinearData& lp = m.lp;
  const int b = lp.paiAcols[iCol], len = lp.panAcols[iCol];
  int out = b;
  size_t q = 0;
  for (int p = b; p < b + len; ++p) {
    while (q < req.size() && req[q].first < lp.paiArows[p]) ++q;
    if (q < req.size() && req[q].first == lp.paiArows[p]) continue;
    lp.paiArows[out] = lp.paiArows[p];
    lp.padAcoef[out] = lp.padAcoef[p];
    ++out;
  }
  const int removed = b + len - out;
  if (removed == 0) return 0;
  // The freed places become part of the column's gap.
  std::fill(lp.paiArows.begin() + out, lp.paiArows.begin() + b + len, 0);
  std::fill(lp.padAcoef.begin() + out, lp.padAcoef.begin() + b + len, 0.0);
  lp.panAcols[iCol] = out - b;
  m.nAnnz -= removed;
  apply_change_rule(m, Change::kData);
  m.rowCopy.reset();
  return 0;
}

int modify_rhs(Imodel& m, int nRows, const int* paiRows, const double* padB) {
  QZ_CALL(check_indices(paiRows, nRows, m.nCons));
  for (int k = 0; k < nRows; ++k)
    if (std::isnan(padB[k])) return QZERR_ERROR_IN_INPUT;
  for (int k = 0; k < nRows; ++k) m.lp.padB[paiRows[k]] = padB[k];
  offer_to_glp(m, nRows, [&](int k) { return glp_take_rhs(m, paiRows[k], padB[k]); });
  return 0;
}

int modify_constraint_type(Imodel& m, int nRows, const int* paiRows, const char* pszTypes) {
  QZ_CALL(check_indices(paiRows, nRows, m.nCons));
  for (int k = 0; k < nRows; ++k) {
    const char t = pszTypes[k];
    if (t != 'E' && t != 'G' && t != 'L' && t != 'N') return QZERR_PARAM_OUT_OF_RANGE;
  }
  std::vector<char> old(static_cast<size_t>(nRows));
  for (int k = 0; k < nRows; ++k) {
    old[k] = m.lp.pszConTypes[paiRows[k]];
    m.lp.pszConTypes[paiRows[k]] = pszTypes[k];
  }
  if (m.quad.nnz() > 0) quad_counts(m, m.quad);
  offer_to_glp(m, nRows, [&](int k) {
    return old[k] == pszTypes[k] ? 0 : glp_take_contype(m, paiRows[k], old[k], pszTypes[k]);
  });
  return 0;
}

int modify_bounds(Imodel& m, bool upper, int nCols, const int* paiCols, const double* padV) {
  QZ_CALL(check_indices(paiCols, nCols, m.nVars));
  for (int k = 0; k < nCols; ++k)
    if (std::isnan(padV[k])) return QZERR_ERROR_IN_INPUT;
  if (!m.semicont.vars.empty()) {
    std::vector<char> sc(static_cast<size_t>(m.nVars), 0);
    for (int j : m.semicont.vars) sc[j] = 1;
    for (int k = 0; k < nCols; ++k)
      if (sc[paiCols[k]]) return QZERR_INPUT_OUT_OF_RANGE;
  }
  LinearData& lp = m.lp;
  std::vector<double>& bound = upper ? lp.padU : lp.padL;
  auto clip = [upper](double v) {
    if (upper) return v > QZ_INFINITY ? QZ_INFINITY : v;
    return v <= -QZ_INFINITY ? -QZ_INFINITY : v;
  };
  bool differs = false;
  for (int k = 0; k < nCols && !differs; ++k) differs = bound[paiCols[k]] != clip(padV[k]);
  if (!differs) return 0;
  Sol* s = m.sol.get();
  for (int k = 0; k < nCols; ++k) {
    const int j = paiCols[k];
    const double v = clip(padV[k]);
    if (bound[j] == v) continue;
    if (s && s->basicStatus != QZ_STATUS_UNLOADED && j < static_cast<int>(s->colStatus.size()))
      move_status_for_bound(s->colStatus[j], upper, lp.padL[j], lp.padU[j], v);
    bound[j] = v;
  }
  offer_to_glp(m, nCols,
               [&](int k) { return glp_take_bounds(m, paiCols[k], lp.padL[paiCols[k]],
                                                   lp.padU[paiCols[k]]); });
  return 0;
}

int modify_variable_type(Imodel& m, int nCols, const int* paiCols, const char* pszTypes) {
  for (int k = 0; k < nCols; ++k) {
    const char t = pszTypes[k];
    if (t != 'C' && t != 'B' && t != 'I') return QZERR_PARAM_OUT_OF_RANGE;
  }
  QZ_CALL(check_indices(paiCols, nCols, m.nVars));
  LinearData& lp = m.lp;
  std::vector<char> sc;
  if (!m.semicont.vars.empty()) {
    sc.assign(static_cast<size_t>(m.nVars), 0);
    for (int j : m.semicont.vars) sc[j] = 1;
  }
  std::vector<int> toUp, toLo;
  for (int k = 0; k < nCols; ++k) {
    if (pszTypes[k] != 'B') continue;
    const int j = paiCols[k];
    if (lp.padU[j] < 1.0 || lp.padL[j] > 0.0) return QZERR_INPUT_OUT_OF_RANGE;
    const bool clips = lp.padU[j] > 1.0 || lp.padL[j] < 0.0;
    if (clips && !sc.empty() && sc[j]) return QZERR_INPUT_OUT_OF_RANGE;
    if (lp.padU[j] > 1.0) toUp.push_back(j);
    if (lp.padL[j] < 0.0) toLo.push_back(j);
  }
  if (lp.pszVarTypes.empty()) lp.pszVarTypes.assign(static_cast<size_t>(m.nVars), 'C');
  int changes = 0;
  for (int k = 0; k < nCols; ++k) {
    char& t = lp.pszVarTypes[paiCols[k]];
    changes += t != pszTypes[k];
    t = pszTypes[k];
  }
  if (changes > 0) {
    if (!m.SplexPam.in_mip) m.mipsol.reset();
    m.baseStats.stale = true;
  }
  if (!toUp.empty()) {
    const std::vector<double> one(toUp.size(), 1.0);
    QZ_CALL(modify_bounds(m, true, static_cast<int>(toUp.size()), toUp.data(), one.data()));
  }
  if (!toLo.empty()) {
    const std::vector<double> zero(toLo.size(), 0.0);
    QZ_CALL(modify_bounds(m, false, static_cast<int>(toLo.size()), toLo.data(), zero.data()));
  }
  return 0;
}

int modify_objective(Imodel& m, int nCols, const int* paiCols, const double* padC) {
  QZ_CALL(check_indices(paiCols, nCols, m.nVars));
  for (int k = 0; k < nCols; ++k)
    if (!std::isfinite(padC[k])) return QZERR_ERROR_IN_INPUT;
  for (int k = 0; k < nCols; ++k) m.lp.padC[paiCols[k]] = padC[k];
  offer_to_glp(m, nCols, [&](int k) { return glp_take_cost(m, paiCols[k], padC[k]); });
  return 0;
}

int modify_obj_constant(Imodel& m, double dObjConst) {
  if (!std::isfinite(dObjConst)) return QZERR_ERROR_IN_INPUT;
  const double diff = dObjConst - m.lp.dObjConst;
  m.lp.dObjConst = dObjConst;
  // Stored objective values move with the constant where the status says they hold one.
  if (Sol* s = m.sol.get()) {
    const int st = s->model_status;
    if (st == 1 || st == 2 || st == 7 || st == 8 || st == 12) {
      s->pobj += diff;
      s->dobj += diff;
    }
  }
  if (MipSol* s = m.mipsol.get()) {
    const int st = s->MIPstatus;
    if (st == 1 || st == 2 || st == 5 || st == 8) {
      s->obj += diff;
      s->bestBound += diff;
    }
  }
  free_solver_memory(m);
  return 0;
}

int modify_priorities(Imodel& m, int nCols, const int* paiCols, const int* paiPriorities) {
  QZ_CALL(check_indices(paiCols, nCols, m.nVars));
  for (int k = 0; k < nCols; ++k)
    if (paiPriorities[k] < 0) return QZERR_INPUT_OUT_OF_RANGE;
  if (m.priorities.empty()) m.priorities.assign(static_cast<size_t>(m.nVars), 0);
  for (int k = 0; k < nCols; ++k) m.priorities[paiCols[k]] = paiPriorities[k];
  return 0;
}

}  // namespace zento
