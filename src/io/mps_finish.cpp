// The end of an MPS read: repeated entries, pending integer types, sets, range slacks and
// indicator rows are settled, and the model is loaded through the load entries.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "core/load.h"
#include "core/log.h"
#include "core/model_ops.h"
#include "io/mps_reader.h"

namespace zento::io {

namespace {

// Column-wise matrix without repeated rows: of a row repeated in a column the first entry
// stays.
struct Matrix {
  std::vector<int> beg, row;
  std::vector<double> val;
};

Matrix first_occurrences(const MpsReader& r, int nCols, int nRows) {
  Matrix a;
  a.beg.reserve(static_cast<size_t>(nCols) + 1);
  a.row.reserve(r.aRow.size());
  a.val.reserve(r.aRow.size());
  std::vector<int> stamp(static_cast<size_t>(nRows), -1);
  a.beg.push_back(0);
  for (int j = 0; j < nCols; ++j) {
    for (int k = r.colBeg[j]; k < r.colBeg[j + 1]; ++k) {
      const int i = r.aRow[k];
      if (stamp[i] == j) continue;
      stamp[i] = j;
      a.row.push_back(i);
      a.val.push_back(r.aVal[k]);
    }
    a.beg.push_back(static_cast<int>(a.row.size()));
  }
  return a;
}

// Indicator rows made linear with a coefficient on the binary column, which is exact for a
// binary column when the row's activity is bounded on the side the indicator switches off.
// An equality row qualifies when its bounds make it one-sided.
struct Addition {
  int col, row;
  double val;
};

int linearize_indicators(MpsReader& r, const Matrix& a, std::vector<Addition>& add) {
  const int nRows = static_cast<int>(r.rowType.size());
  std::vector<char> marked(static_cast<size_t>(nRows), 0);
  for (const Indicator& ind : r.indicators) marked[ind.row] = 1;
  std::vector<double> minAct(static_cast<size_t>(nRows), 0.0), maxAct(minAct);
  const double inf = QZ_INFINITY;
  const int nCols = static_cast<int>(a.beg.size()) - 1;
  for (int j = 0; j < nCols; ++j) {
    for (int k = a.beg[j]; k < a.beg[j + 1]; ++k) {
      const int i = a.row[k];
      if (!marked[i]) continue;
      const double v = a.val[k], l = r.lo[j], u = r.up[j];
      const double lb = v > 0 ? (l <= -inf ? -inf : v * l) : (u >= inf ? -inf : v * u);
      const double ub = v > 0 ? (u >= inf ? inf : v * u) : (l <= -inf ? inf : v * l);
      minAct[i] = (minAct[i] <= -inf || lb <= -inf) ? -inf : minAct[i] + lb;
      maxAct[i] = (maxAct[i] >= inf || ub >= inf) ? inf : maxAct[i] + ub;
    }
  }
  for (const Indicator& ind : r.indicators) {
    auto fail = [&](const char* why) {
      r.errLine = ind.line;
      r.errText = ind.text;
      r.reason = why;
      return QZERR_NOT_SUPPORTED;
    };
    for (int k = a.beg[ind.col]; k < a.beg[ind.col + 1]; ++k)
      if (a.row[k] == ind.row) return fail("the indicator column stands in its own row");
    char& t = r.rowType[ind.row];
    double& b = r.rhs[ind.row];
    if (t == 'E' && minAct[ind.row] >= b) t = 'L';
    if (t == 'E' && maxAct[ind.row] <= b) t = 'G';
    if (t == 'L') {
      if (maxAct[ind.row] >= inf) return fail("the indicator row has no finite activity bound");
      const double bigM = std::max(0.0, maxAct[ind.row] - b);
      add.push_back({ind.col, ind.row, ind.value == 1 ? bigM : -bigM});
      if (ind.value == 1) b += bigM;
    } else if (t == 'G') {
      if (minAct[ind.row] <= -inf) return fail("the indicator row has no finite activity bound");
      const double bigM = std::max(0.0, b - minAct[ind.row]);
      add.push_back({ind.col, ind.row, ind.value == 1 ? -bigM : bigM});
      if (ind.value == 1) b -= bigM;
    } else {
      return fail("an indicator on a two-sided or free row is not supported");
    }
  }
  return 0;
}

Matrix with_additions(const Matrix& a, std::vector<Addition>& add) {
  std::stable_sort(add.begin(), add.end(),
                   [](const Addition& x, const Addition& y) { return x.col < y.col; });
  Matrix out;
  const int nCols = static_cast<int>(a.beg.size()) - 1;
  out.beg.push_back(0);
  size_t p = 0;
  for (int j = 0; j < nCols; ++j) {
    for (int k = a.beg[j]; k < a.beg[j + 1]; ++k) {
      out.row.push_back(a.row[k]);
      out.val.push_back(a.val[k]);
    }
    for (; p < add.size() && add[p].col == j; ++p) {
      out.row.push_back(add[p].row);
      out.val.push_back(add[p].val);
    }
    out.beg.push_back(static_cast<int>(out.row.size()));
  }
  return out;
}

// One slack column per ranged row; the row becomes an equality.
int add_range_slacks(MpsReader& r, Matrix& a, NamePool& colNames) {
  int nSlacks = 0;
  const int nRows = static_cast<int>(r.rowType.size());
  for (int i = 0; i < nRows; ++i) {
    const char t = r.rowType[i];
    const double rg = r.range[i];
    if (t == 'N' || !(rg != 0.0 || (r.rangeCount[i] > 0 && t != 'E'))) continue;
    double coef = 0.0;
    if (t == 'E')
      coef = rg > 0 ? -1.0 : 1.0;
    else
      coef = t == 'L' ? 1.0 : -1.0;
    char name[32];
    std::snprintf(name, sizeof name, "slk%05d", nSlacks++);
    colNames.offset.push_back(static_cast<int>(colNames.pool.size()));
    colNames.pool.insert(colNames.pool.end(), name, name + std::strlen(name) + 1);
    a.row.push_back(i);
    a.val.push_back(coef);
    a.beg.push_back(static_cast<int>(a.row.size()));
    r.cost.push_back(0.0);
    r.lo.push_back(0.0);
    r.up.push_back(std::fabs(rg));
    r.type.push_back('C');
    r.rowType[i] = 'E';
  }
  return nSlacks;
}

int check_cones(MpsReader& r, int nCols) {
  if (r.coneType.empty()) return 0;
  r.coneBeg.push_back(static_cast<int>(r.coneCols.size()));
  std::vector<char> mark(static_cast<size_t>(nCols), 0);
  for (int j : r.coneCols) {
    if (mark[j]) {
      QZlogmod(&r.m, r.m.SplexPam.lp_printlevel > 199, "\nMPS Reader: Invalid cone mark.");
      return mps_bad(r, "a column stands in two cones");
    }
    mark[j] = 1;
  }
  return 0;
}

int load_sets(MpsReader& r) {
  const int nSets = static_cast<int>(r.setType.size());
  if (nSets == 0 || r.setCol.empty()) return 0;
  // Counting sort of (column, set) pairs by set; sets left without members are dropped.
  std::vector<int> count(static_cast<size_t>(nSets), 0);
  for (int s : r.setOf) ++count[s];
  std::vector<int> newIndex(static_cast<size_t>(nSets), -1);
  std::vector<char> types;
  std::vector<int> beg{0};
  for (int s = 0; s < nSets; ++s) {
    if (count[s] == 0) continue;
    newIndex[s] = static_cast<int>(types.size());
    types.push_back(r.setType[s]);
    beg.push_back(beg.back() + count[s]);
  }
  std::vector<int> fill(beg.begin(), beg.end() - 1), cols(r.setCol.size());
  for (size_t k = 0; k < r.setCol.size(); ++k) cols[fill[newIndex[r.setOf[k]]]++] = r.setCol[k];
  return load_sets_data(r.m, static_cast<int>(types.size()), types.data(), nullptr, beg.data(),
                        cols.data());
}

int load_quadratic(MpsReader& r) {
  std::vector<int> rows, c1, c2;
  std::vector<double> v;
  for (size_t k = 0; k < r.qRow.size(); ++k) {
    if (r.qRow[k] == -2) continue;
    rows.push_back(r.qRow[k]);
    c1.push_back(r.qCol1[k]);
    c2.push_back(r.qCol2[k]);
    v.push_back(r.qVal[k]);
  }
  if (rows.empty()) return 0;
  return load_qc_data(r.m, static_cast<int>(rows.size()), rows.data(), c1.data(), c2.data(),
                      v.data());
}

// The multi-objective pool of the model is not part of this build: the rows are read and
// their costs gathered, and the read goes on with a warning.
void hand_over_objectives(MpsReader& r) {
  int ranked = 0;
  for (const ExtObjective& e : r.extObj)
    if (e.rank >= 0 && e.ordinal != r.nObjIndex) ++ranked;
  if (ranked == 0) return;
  QZlogmod(&r.m, base_printlevel(r.m),
           "\nWarning: MPS reader failed to add %d objs to objpool (ierr:%d)..", ranked,
           QZERR_NOT_SUPPORTED);
}

int load_model(MpsReader& r, Matrix& a, NamePool& colNames, int nFileCols, int nSlacks) {
  Imodel& m = r.m;
  const int nRows = static_cast<int>(r.rowType.size());
  const int nVars = static_cast<int>(a.beg.size()) - 1;
  QZ_CALL(load_lp_data(m, nRows, nVars, r.sense, r.objConst, r.cost.data(), r.rhs.data(),
                       r.rowType.data(), static_cast<int>(a.row.size()), a.beg.data(), nullptr,
                       a.val.data(), a.row.data(), r.lo.data(), r.up.data()));
  bool typed = false;
  for (char& t : r.type) {
    if (t == 'Z') t = 'I';
    typed = typed || t != 'C';
  }
  if (typed) QZ_CALL(load_var_type(m, r.type.data()));
  if (!r.scVars.empty()) {
    std::vector<double> upper;
    for (int j : r.scVars) upper.push_back(r.up[j]);
    QZ_CALL(load_semicont_data(m, static_cast<int>(r.scVars.size()), r.scVars.data(),
                               r.scLower.data(), upper.data()));
  }
  QZ_CALL(load_sets(r));
  if (!r.coneType.empty())
    QZ_CALL(load_cone_data(m, static_cast<int>(r.coneType.size()), r.coneType.data(),
                           r.coneAlpha.data(), r.coneBeg.data(), r.coneCols.data()));
  QZ_CALL(load_quadratic(r));

  NameData& n = m.names;
  n.title = r.title;
  n.objName = r.objName;
  n.rhsName = r.rhsSet;
  n.rngName = r.rngSet;
  n.bndName = r.bndSet;
  n.rows = std::move(r.rowTab.names);
  n.cols = std::move(colNames);
  if (!r.coneType.empty()) n.cones = std::move(r.coneTab.names);
  free_hash_memory(m);
  m.fileInfo.nFileVars = nFileCols;
  m.fileInfo.nRangeSlacks = nSlacks;
  m.NLPPam.nlp_linearity = m.quad.nnz() == 0 && m.nNLPnnz == 0 && m.nNLPobjnnz == 0 ? 1 : 0;
  return 0;
}

}  // namespace

int mps_finish(MpsReader& r) {
  mps_close_columns(r);
  const int nCols = r.colTab.nCount;
  const int nRows = static_cast<int>(r.rowType.size());
  if (r.colBeg.empty()) r.colBeg.push_back(0);
  QZ_CALL(check_cones(r, nCols));
  for (int j = 0; j < nCols; ++j)
    if (r.type[j] == 'Z') r.type[j] = (r.lo[j] == 0.0 && r.up[j] == 1.0) ? 'B' : 'I';
  Matrix a = first_occurrences(r, nCols, nRows);
  int nIndicatorNnz = 0;
  if (!r.indicators.empty()) {
    std::vector<Addition> add;
    QZ_CALL(linearize_indicators(r, a, add));
    nIndicatorNnz = static_cast<int>(add.size());
    a = with_additions(a, add);
  }
  NamePool colNames = std::move(r.colTab.names);
  const int nSlacks = add_range_slacks(r, a, colNames);
  QZ_CALL(load_model(r, a, colNames, nCols, nSlacks));
  r.m.fileInfo.nIndicatorNnz = nIndicatorNnz;
  hand_over_objectives(r);
  return 0;
}

}  // namespace zento::io
