// The invalidation rule, name pools and the layout of the gapped column-wise matrix.
#include <climits>
#include <cstring>

#include "core/errors.h"
#include "core/model_ops.h"
#include "core/modify.h"

namespace zento {

void apply_change_rule(Imodel& m, Change kind, bool keepSolver) {
  m.modelState = QZ_STATUS_LOADED;
  if (m.sol) {
    Sol& s = *m.sol;
    s.model_status = QZ_STATUS_LOADED;
    if (s.basicStatus != QZ_STATUS_UNLOADED) s.basicStatus = QZ_STATUS_LOADED;
    if (s.primalStatus != QZ_STATUS_UNLOADED) s.primalStatus = QZ_STATUS_UNKNOWN;
    s.spxIter = s.barIter = s.nlpIter = 0;
  }
  // A running MIP search changes its own working model and keeps its record.
  if (m.mipsol && !m.SplexPam.in_mip) {
    if (kind == Change::kStructure)
      m.mipsol.reset();
    else
      m.mipsol->MIPstatus = QZ_STATUS_UNKNOWN;
  }
  if (!keepSolver) free_solver_memory(m);
  m.presolve.reset();
  if (kind == Change::kStructure) {
    m.rowCopy.reset();
    free_hash_memory(m);
  }
  m.baseStats.stale = true;
}

void make_empty_loaded(Imodel& m) {
  if (m.modelState != QZ_STATUS_UNLOADED) return;
  m.lp = LinearData{};
  m.lp.paiAcols.assign(1, 0);
  m.lp.rowsSorted = true;
  m.nCons = m.nVars = m.nAnnz = 0;
  m.SolverPam.objsense = m.lp.dObjSense;
  m.modelState = QZ_STATUS_LOADED;
}

int check_names(char** names, int k) {
  if (names == nullptr) return 0;
  for (int i = 0; i < k; ++i)
    if (names[i] == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  return 0;
}

void append_names(NamePool& p, int existing, int k, char** names) {
  if (p.empty() && names == nullptr) return;
  if (p.empty()) {
    p.pool.assign(static_cast<size_t>(existing), '\0');
    p.offset.resize(static_cast<size_t>(existing));
    for (int i = 0; i < existing; ++i) p.offset[i] = i;
  }
  size_t bytes = 0;
  for (int i = 0; i < k; ++i) bytes += (names ? std::strlen(names[i]) : 0) + 1;
  reserve_for(p.pool, p.pool.size() + bytes, 0);
  p.offset.reserve(p.offset.size() + static_cast<size_t>(k));
  for (int i = 0; i < k; ++i) {
    p.offset.push_back(static_cast<int>(p.pool.size()));
    const char* s = names ? names[i] : "";
    p.pool.insert(p.pool.end(), s, s + std::strlen(s) + 1);
  }
}

void compact_names(NamePool& p, const std::vector<int>& map) {
  if (p.empty() || p.offset.size() != map.size()) return;
  size_t out = 0, nOut = 0;
  for (size_t i = 0; i < map.size(); ++i) {
    if (map[i] < 0) continue;
    const size_t from = static_cast<size_t>(p.offset[i]);
    const size_t len = std::strlen(p.pool.data() + from) + 1;
    std::memmove(p.pool.data() + out, p.pool.data() + from, len);
    p.offset[nOut++] = static_cast<int>(out);
    out += len;
  }
  p.pool.resize(out);
  p.offset.resize(nOut);
}

// Sorting by rows goes through the row view and back: rows visited in ascending order refill
// each column from its start, so gaps stay where they were.
int QZtransposeA(Imodel& m) {
  LinearData& lp = m.lp;
  if (lp.rowsSorted) return 0;
  std::vector<int> begin(static_cast<size_t>(m.nCons) + 1, 0);
  for (int j = 0; j < m.nVars; ++j)
    for (int k = lp.paiAcols[j]; k < lp.paiAcols[j] + lp.panAcols[j]; ++k)
      ++begin[lp.paiArows[k] + 1];
  for (int i = 0; i < m.nCons; ++i) begin[i + 1] += begin[i];
  std::vector<int> col(static_cast<size_t>(m.nAnnz));
  std::vector<double> val(static_cast<size_t>(m.nAnnz));
  std::vector<int> next(begin.begin(), begin.end() - 1);
  for (int j = 0; j < m.nVars; ++j)
    for (int k = lp.paiAcols[j]; k < lp.paiAcols[j] + lp.panAcols[j]; ++k) {
      const int pos = next[lp.paiArows[k]]++;
      col[pos] = j;
      val[pos] = lp.padAcoef[k];
    }
  std::vector<int> fill(lp.paiAcols.begin(), lp.paiAcols.end() - 1);
  for (int i = 0; i < m.nCons; ++i)
    for (int p = begin[i]; p < begin[i + 1]; ++p) {
      const int k = fill[col[p]]++;
      lp.paiArows[k] = i;
      lp.padAcoef[k] = val[p];
    }
  lp.rowsSorted = true;
  return 0;
}

int add_empty_spaces_acolumns(Imodel& m, const int* paiColnnz) {
  LinearData& lp = m.lp;
  long long shortTotal = 0;
  for (int j = 0; j < m.nVars; ++j) {
    if (paiColnnz[j] < 0) return QZERR_ERROR_IN_INPUT;
    const int gap = lp.paiAcols[j + 1] - lp.paiAcols[j] - lp.panAcols[j];
    if (paiColnnz[j] > gap) shortTotal += paiColnnz[j] - gap;
  }
  if (shortTotal == 0) return 0;
  const long long size = static_cast<long long>(lp.paiAcols[m.nVars]) + shortTotal;
  if (size > INT_MAX) return QZERR_OUT_OF_MEMORY;
  // New arrays first: a failed allocation leaves the old matrix in place.
  std::vector<int> starts(lp.paiAcols.size());
  std::vector<int> rows;
  std::vector<double> coef;
  rows.reserve(static_cast<size_t>(size) + 100);
  coef.reserve(static_cast<size_t>(size) + 100);
  rows.resize(static_cast<size_t>(size), 0);
  coef.resize(static_cast<size_t>(size), 0.0);
  int pos = lp.paiAcols[0];
  for (int j = 0; j < m.nVars; ++j) {
    starts[j] = pos;
    const int b = lp.paiAcols[j], len = lp.panAcols[j];
    std::copy(lp.paiArows.begin() + b, lp.paiArows.begin() + b + len, rows.begin() + pos);
    std::copy(lp.padAcoef.begin() + b, lp.padAcoef.begin() + b + len, coef.begin() + pos);
    const int span = lp.paiAcols[j + 1] - b;
    pos += std::max(span, len + paiColnnz[j]);
  }
  starts[m.nVars] = pos;
  lp.paiAcols.swap(starts);
  lp.paiArows.swap(rows);
  lp.padAcoef.swap(coef);
  return 0;
}

int ensure_column_room(Imodel& m, int j, int extra) {
  LinearData& lp = m.lp;
  const int gap = lp.paiAcols[j + 1] - lp.paiAcols[j] - lp.panAcols[j];
  if (gap >= extra) return 0;
  // A little more than the shortage, so that a column grown entry by entry moves its
  // successors only now and then.
  const int shortage = extra - gap + 4 + lp.panAcols[j] / 8;
  const long long size = static_cast<long long>(lp.paiAcols[m.nVars]) + shortage;
  if (size > INT_MAX) return QZERR_OUT_OF_MEMORY;
  // Both reservations before any move, so a failure changes nothing.
  reserve_for(lp.paiArows, static_cast<size_t>(size), 100);
  reserve_for(lp.padAcoef, static_cast<size_t>(size), 100);
  const int at = lp.paiAcols[j + 1];
  lp.paiArows.insert(lp.paiArows.begin() + at, static_cast<size_t>(shortage), 0);
  lp.padAcoef.insert(lp.padAcoef.begin() + at, static_cast<size_t>(shortage), 0.0);
  for (int k = j + 1; k <= m.nVars; ++k) lp.paiAcols[k] += shortage;
  return 0;
}

}  // namespace zento
