// Growth: capacities, name pools, new rows and new columns.
#include <climits>
#include <cmath>

#include "core/errors.h"
#include "core/load.h"
#include "core/model_ops.h"
#include "core/modify.h"

namespace zento {

namespace {

// Zeroes the scratch counts of QZaddConstraints on every way out, so they are zero between
// calls without a pass over all columns.
struct ScratchReset {
  std::vector<int>& scratch;
  const int* cols;
  int from, to, nVars;
  ~ScratchReset() {
    for (int p = from; p < to; ++p) {
      const int j = cols[p];
      if (j >= 0 && j < nVars) scratch[2 * j] = scratch[2 * j + 1] = 0;
    }
  }
};

template <class T>
void reserve_if_used(std::vector<T>& v, int cap) {
  if (!v.empty() && cap > 0) v.reserve(static_cast<size_t>(cap));
}

// The status of a new column: nonbasic at a finite bound, else free.
int resting_status(double lo, double up) {
  if (lo > -QZ_INFINITY) return QZ_BASTYPE_ATLO;
  if (up < QZ_INFINITY) return QZ_BASTYPE_ATUP;
  return QZ_BASTYPE_FNUL;
}

double resting_value(double lo, double up) {
  if (lo > -QZ_INFINITY) return lo;
  if (up < QZ_INFINITY) return up;
  return 0.0;
}

}  // namespace

int set_prob_alloc_sizes(Imodel& m, int nColsAlloc, int nRowsAlloc, int nQCAlloc, int nNzAlloc,
                         int nQCnzAlloc, int nNLPnzAlloc) {
  // 0 and negative sizes leave a family alone; a capacity never falls below its count.
  auto cap = [](int size, int count) { return size <= 0 ? 0 : std::max(size, count); };
  LinearData& lp = m.lp;
  if (const int c = cap(nColsAlloc, m.nVars)) {
    lp.padC.reserve(c);
    lp.padL.reserve(c);
    lp.padU.reserve(c);
    lp.panAcols.reserve(c);
    lp.paiAcols.reserve(static_cast<size_t>(c) + 1);
    reserve_if_used(lp.pszVarTypes, c);
    reserve_if_used(m.priorities, c);
    reserve_if_used(m.start.primal, c);
    reserve_if_used(m.start.mip, c);
    reserve_if_used(m.names.cols.offset, c);
    if (Sol* s = m.sol.get()) {
      reserve_if_used(s->colStatus, c);
      reserve_if_used(s->primal, c);
      reserve_if_used(s->redcost, c);
    }
  }
  if (const int r = cap(nRowsAlloc, m.nCons)) {
    lp.padB.reserve(r);
    lp.pszConTypes.reserve(r);
    reserve_if_used(m.names.rows.offset, r);
    if (Sol* s = m.sol.get()) {
      reserve_if_used(s->rowStatus, r);
      reserve_if_used(s->dual, r);
      reserve_if_used(s->slack, r);
    }
  }
  if (const int q = cap(nQCAlloc, m.quad.groups())) {
    m.quad.row.reserve(q);
    m.quad.beg.reserve(static_cast<size_t>(q) + 1);
  }
  if (const int z = cap(nNzAlloc, lp.paiAcols.empty() ? 0 : lp.paiAcols[m.nVars])) {
    lp.paiArows.reserve(z);
    lp.padAcoef.reserve(z);
  }
  if (const int q = cap(nQCnzAlloc, m.quad.nnz())) {
    m.quad.col1.reserve(q);
    m.quad.col2.reserve(q);
    m.quad.coef.reserve(q);
  }
  // Nonlinear column structure is not held by this build's models; nothing to reserve.
  (void)nNLPnzAlloc;
  return 0;
}

int set_prob_name_alloc_sizes(Imodel& m, int nColNameBytes, int nRowNameBytes) {
  // A pool created here gives every existing item an empty name.
  auto create = [](NamePool& p, int bytes, int count) {
    if (bytes <= 0) return;
    if (p.empty()) {
      p.pool.assign(static_cast<size_t>(count), '\0');
      p.offset.resize(static_cast<size_t>(count));
      for (int i = 0; i < count; ++i) p.offset[i] = i;
    }
    p.pool.reserve(std::max(static_cast<size_t>(bytes), p.pool.size()));
  };
  create(m.names.cols, nColNameBytes, m.nVars);
  create(m.names.rows, nRowNameBytes, m.nCons);
  free_hash_memory(m);
  return 0;
}

int add_constraints(Imodel& m, int nNew, const char* pszConTypes, char** paszConNames,
                    const int* paiRows, const double* padAcoef, const int* paiCols,
                    const double* padB) {
  if (nNew < 0) return QZERR_ERROR_IN_INPUT;
  if (nNew == 0) return 0;
  if (pszConTypes)
    for (int r = 0; r < nNew; ++r) {
      const char t = pszConTypes[r];
      if (t != 'E' && t != 'G' && t != 'L' && t != 'N') return QZERR_BAD_CONSTRAINT_TYPE;
    }
  if (padB)
    for (int r = 0; r < nNew; ++r)
      if (std::isnan(padB[r])) return QZERR_ERROR_IN_INPUT;
  QZ_CALL(check_names(paszConNames, nNew));
  if (static_cast<long long>(m.nCons) + nNew > INT_MAX) return QZERR_OUT_OF_MEMORY;

  int from = 0, to = 0;
  if (paiRows) {
    if (paiRows[0] < 0) return QZERR_ERROR_IN_INPUT;
    for (int r = 0; r < nNew; ++r)
      if (paiRows[r + 1] < paiRows[r]) return QZERR_ERROR_IN_INPUT;
    from = paiRows[0];
    to = paiRows[nNew];
    if (to > from && (padAcoef == nullptr || paiCols == nullptr))
      return QZERR_ILLEGAL_NULL_POINTER;
  }
  const long long total = to - from;
  std::vector<int>& scr = m.addScratch;
  if (scr.size() < 2 * static_cast<size_t>(m.nVars)) scr.resize(2 * static_cast<size_t>(m.nVars), 0);
  ScratchReset reset{scr, paiCols, from, to, m.nVars};
  // Per column: the last new row seen (duplicate test) and the count of new entries.
  for (int r = 0; r < nNew; ++r)
    for (int p = paiRows ? paiRows[r] : 0; p < (paiRows ? paiRows[r + 1] : 0); ++p) {
      const int j = paiCols[p];
      if (j < 0 || j >= m.nVars) return QZERR_INDEX_OUT_OF_RANGE;
      if (!std::isfinite(padAcoef[p])) return QZERR_ERROR_IN_INPUT;
      if (scr[2 * j] == r + 1) return QZERR_DUPLICATE_INDEX;
      scr[2 * j] = r + 1;
      ++scr[2 * j + 1];
    }
  // Entries passed the checks, so columns exist and the matrix arrays with them.
  if (total > 0 && (static_cast<long long>(m.nAnnz) + total > INT_MAX ||
                    static_cast<long long>(m.lp.paiAcols[m.nVars]) + total > INT_MAX))
    return QZERR_OUT_OF_MEMORY;

  make_empty_loaded(m);
  LinearData& lp = m.lp;
  const int oldRows = m.nCons, newRows = m.nCons + nNew;
  reserve_for(lp.padB, newRows, 100);
  reserve_for(lp.pszConTypes, newRows, 100);
  if (!m.names.rows.empty() || paszConNames) reserve_for(m.names.rows.offset, newRows, 100);
  Sol* s = m.sol.get();
  if (s) {
    reserve_for(s->rowStatus, newRows, 100);
    reserve_for(s->dual, newRows, 100);
    reserve_for(s->slack, newRows, 100);
  }

  if (total > 0) {
    // Sum the shortage over all columns first, so that adding k rows widens the matrix once.
    long long shortage = 0;
    for (int p = from; p < to; ++p) {
      const int j = paiCols[p];
      if (scr[2 * j] == 0) continue;
      scr[2 * j] = 0;
      const int gap = lp.paiAcols[j + 1] - lp.paiAcols[j] - lp.panAcols[j];
      if (scr[2 * j + 1] > gap) shortage += scr[2 * j + 1] - gap;
    }
    if (shortage > 0) {
      // The matrix is copied anyway: every column gets room for later rows too (2 plus an
      // eighth of its length), so that a loop adding rows one by one widens rarely.
      std::vector<int> need(static_cast<size_t>(m.nVars));
      for (int j = 0; j < m.nVars; ++j) need[j] = 2 + lp.panAcols[j] / 8;
      for (int p = from; p < to; ++p) {
        const int j = paiCols[p];
        need[j] = scr[2 * j + 1] + 2 + lp.panAcols[j] / 8;
      }
      QZ_CALL(add_empty_spaces_acolumns(m, need.data()));
    }
    // New rows have the largest indices, so columns that were sorted stay sorted.
    for (int r = 0; r < nNew; ++r)
      for (int p = paiRows[r]; p < paiRows[r + 1]; ++p) {
        const int j = paiCols[p];
        const int pos = lp.paiAcols[j] + lp.panAcols[j]++;
        lp.paiArows[pos] = oldRows + r;
        lp.padAcoef[pos] = padAcoef[p];
      }
    m.nAnnz += static_cast<int>(total);
  }

  for (int r = 0; r < nNew; ++r) {
    lp.padB.push_back(padB ? padB[r] : 0.0);
    lp.pszConTypes.push_back(pszConTypes ? pszConTypes[r] : 'E');
  }
  append_names(m.names.rows, oldRows, nNew, paszConNames);

  // The basis keeps its shape: each new row's logical is basic in its own position.
  if (s) {
    s->model_status = QZ_STATUS_LOADED;
    if (s->basicStatus == QZ_STATUS_BASIC_OPTIMAL || s->basicStatus == QZ_STATUS_LOADED)
      s->basicStatus = QZ_STATUS_LOADED;
    if (s->primalStatus != QZ_STATUS_UNLOADED) s->primalStatus = QZ_STATUS_UNKNOWN;
    if (static_cast<int>(s->rowStatus.size()) == oldRows)
      for (int r = 0; r < nNew; ++r) s->rowStatus.push_back(oldRows + r);
    for (auto* v : {&s->dual, &s->slack, &s->ipmDual, &s->ipmSlack})
      if (static_cast<int>(v->size()) == oldRows) v->resize(newRows, 0.0);
  }
  if (MipSol* ms = m.mipsol.get(); ms && m.SplexPam.in_mip) {
    if (static_cast<int>(ms->rowStatus.size()) == oldRows)
      for (int r = 0; r < nNew; ++r) ms->rowStatus.push_back(oldRows + r);
    for (auto* v : {&ms->dual, &ms->slack})
      if (static_cast<int>(v->size()) == oldRows) v->resize(newRows, 0.0);
  }
  m.nCons = newRows;
  apply_change_rule(m, Change::kStructure);
  return 0;
}

int add_variables(Imodel& m, int nNew, const char* pszVarTypes, char** paszVarNames,
                  const int* paiAcols, const int* panAcols, const double* padAcoef,
                  const int* paiArows, const double* padC, const double* padL,
                  const double* padU) {
  if (nNew < 0) return QZERR_ERROR_IN_INPUT;
  if (nNew == 0) return 0;
  if (static_cast<long long>(m.nVars) + nNew > INT_MAX / 2) return QZERR_OUT_OF_MEMORY;
  std::vector<double> lo(static_cast<size_t>(nNew), 0.0), up(static_cast<size_t>(nNew), QZ_INFINITY);
  std::vector<char> type(static_cast<size_t>(nNew), 'C');
  for (int j = 0; j < nNew; ++j) {
    if (padC && !std::isfinite(padC[j])) return QZERR_ERROR_IN_INPUT;
    if (padL) {
      if (std::isnan(padL[j])) return QZERR_ERROR_IN_INPUT;
      lo[j] = padL[j] <= -QZ_INFINITY ? -QZ_INFINITY : padL[j];
    }
    if (padU) {
      if (std::isnan(padU[j])) return QZERR_ERROR_IN_INPUT;
      up[j] = padU[j] > QZ_INFINITY ? QZ_INFINITY : padU[j];
    }
    if (pszVarTypes) {
      type[j] = pszVarTypes[j];
      if (type[j] != 'C' && type[j] != 'I' && type[j] != 'B') return QZERR_PARAM_OUT_OF_RANGE;
      if (type[j] == 'B') QZ_CALL(binary_bounds(lo[j], up[j], type[j]));
    }
  }
  QZ_CALL(check_names(paszVarNames, nNew));
  std::vector<int> len(static_cast<size_t>(nNew), 0);
  long long total = 0;
  if (paiAcols) {
    for (int j = 0; j < nNew; ++j) {
      const int span = paiAcols[j + 1] - paiAcols[j];
      if (span < 0 || paiAcols[j] < 0) return QZERR_BAD_COLUMN_BEGIN_VECTOR;
      len[j] = panAcols ? panAcols[j] : span;
      if (len[j] < 0 || len[j] > span) return QZERR_BAD_COLUMN_NONZEROS;
      total += len[j];
    }
    if (total > 0 && (paiArows == nullptr || padAcoef == nullptr)) return QZERR_ILLEGAL_NULL_POINTER;
    for (int j = 0; j < nNew; ++j)
      QZ_CALL(check_column_entries(paiArows + paiAcols[j], padAcoef + paiAcols[j], len[j], m.nCons));
  }
  make_empty_loaded(m);
  LinearData& lp = m.lp;
  const long long end = static_cast<long long>(lp.paiAcols[m.nVars]) + total;
  if (end > INT_MAX) return QZERR_OUT_OF_MEMORY;

  // Entries go after the last column's span; repeated rows are summed as a load does.
  reserve_for(lp.paiArows, static_cast<size_t>(end), 100);
  reserve_for(lp.padAcoef, static_cast<size_t>(end), 100);
  const int oldCols = m.nVars, newCols = m.nVars + nNew;
  std::vector<int> mark;
  if (total > 0) mark.assign(static_cast<size_t>(m.nCons) + 1, 0);
  bool sorted = true;
  int added = 0;
  for (int j = 0; j < nNew; ++j) {
    const int start = lp.paiAcols[oldCols + j];
    if (len[j] > 0) {
      lp.paiArows.insert(lp.paiArows.end(), paiArows + paiAcols[j], paiArows + paiAcols[j] + len[j]);
      lp.padAcoef.insert(lp.padAcoef.end(), padAcoef + paiAcols[j], padAcoef + paiAcols[j] + len[j]);
    }
    const int n = len[j] > 0 ? merge_duplicate_rows(lp.paiArows.data() + start,
                                                    lp.padAcoef.data() + start, len[j], mark)
                             : 0;
    lp.paiArows.resize(static_cast<size_t>(start) + n);
    lp.padAcoef.resize(static_cast<size_t>(start) + n);
    for (int k = start + 1; k < start + n; ++k) sorted = sorted && lp.paiArows[k - 1] < lp.paiArows[k];
    lp.panAcols.push_back(n);
    lp.paiAcols.push_back(start + n);
    added += n;
  }
  m.nAnnz += added;
  if (!sorted) lp.rowsSorted = false;

  for (int j = 0; j < nNew; ++j) {
    lp.padC.push_back(padC ? padC[j] : 0.0);
    lp.padL.push_back(lo[j]);
    lp.padU.push_back(up[j]);
  }
  // The type array is created on first use; an existing one grows with every addition.
  if (pszVarTypes || !lp.pszVarTypes.empty()) {
    lp.pszVarTypes.resize(static_cast<size_t>(oldCols), 'C');
    lp.pszVarTypes.insert(lp.pszVarTypes.end(), type.begin(), type.end());
  }
  append_names(m.names.cols, oldCols, nNew, paszVarNames);
  if (!m.priorities.empty()) m.priorities.resize(newCols, 0);
  if (!m.quad.termsPerVar.empty()) m.quad.termsPerVar.resize(newCols, 0);

  // New columns rest at a bound, so a basis keeps its shape; their reduced costs follow from
  // the stored duals.
  if (Sol* s = m.sol.get()) {
    const bool haveDuals = static_cast<int>(s->dual.size()) == m.nCons;
    if (static_cast<int>(s->colStatus.size()) == oldCols)
      for (int j = 0; j < nNew; ++j) s->colStatus.push_back(resting_status(lo[j], up[j]));
    if (static_cast<int>(s->primal.size()) == oldCols)
      for (int j = 0; j < nNew; ++j) s->primal.push_back(resting_value(lo[j], up[j]));
    if (static_cast<int>(s->redcost.size()) == oldCols)
      for (int j = 0; j < nNew; ++j) {
        const int c = oldCols + j;
        double d = lp.padC[c];
        if (haveDuals)
          for (int k = lp.paiAcols[c]; k < lp.paiAcols[c] + lp.panAcols[c]; ++k)
            d -= lp.padAcoef[k] * s->dual[lp.paiArows[k]];
        s->redcost.push_back(d);
      }
    for (auto* v : {&s->ipmPrimal, &s->ipmRedcost, &s->coneRedcost})
      if (static_cast<int>(v->size()) == oldCols) v->resize(newCols, 0.0);
  }
  if (m.SplexPam.in_mip) {
    if (MipSol* ms = m.mipsol.get()) {
      if (static_cast<int>(ms->colStatus.size()) == oldCols)
        for (int j = 0; j < nNew; ++j) ms->colStatus.push_back(resting_status(lo[j], up[j]));
      for (auto* v : {&ms->primal, &ms->redcost})
        if (static_cast<int>(v->size()) == oldCols) v->resize(newCols, 0.0);
    }
    for (auto* v : {&m.start.primal, &m.start.mip})
      if (!v->empty()) v->resize(newCols, 0.0);
  } else {
    m.start = StartPoints{};
  }
  if (GopSol* gs = m.gopsol.get(); gs && static_cast<int>(gs->primal.size()) == oldCols)
    gs->primal.resize(newCols, 0.0);
  m.nVars = newCols;
  if (m.addScratch.size() < 2 * static_cast<size_t>(newCols))
    m.addScratch.resize(2 * static_cast<size_t>(newCols), 0);
  apply_change_rule(m, Change::kStructure);
  return 0;
}

}  // namespace zento
