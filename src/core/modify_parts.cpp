// Model parts: cones, sets, semi-continuous marks, quadratic terms and artificial columns.
#include <cmath>

#include "core/errors.h"
#include "core/load.h"
#include "core/log.h"
#include "core/model_ops.h"
#include "core/modify.h"

namespace zento {

namespace {

// A list of part indices to delete: range and repeats are refused before anything changes.
int deletion_mask(int n, const int* idx, int count, std::vector<char>& keep) {
  keep.assign(static_cast<size_t>(count), 1);
  for (int k = 0; k < n; ++k) {
    const int i = idx[k];
    if (i < 0 || i >= count) return QZERR_INDEX_OUT_OF_RANGE;
    if (!keep[i]) return QZERR_DUPLICATE_INDEX;
    keep[i] = 0;
  }
  return 0;
}

// Replaces members [beg[i], beg[i+1]) of a packed list by `cols`, moving later starts.
void replace_members(std::vector<int>& beg, std::vector<int>& list, int i, const int* cols,
                     int n) {
  const int b = beg[i], e = beg[i + 1];
  list.erase(list.begin() + b, list.begin() + e);
  list.insert(list.begin() + b, cols, cols + n);
  const int shift = n - (e - b);
  for (size_t k = static_cast<size_t>(i) + 1; k < beg.size(); ++k) beg[k] += shift;
}

}  // namespace

void drop_cones(Imodel& m, const std::vector<char>& keep) {
  ConeData& c = m.cones;
  ConeData out;
  out.beg.push_back(0);
  std::vector<int> map(keep.size(), -1);
  int next = 0;
  for (int i = 0; i < c.count(); ++i) {
    if (!keep[i]) continue;
    map[i] = next++;
    out.type.push_back(c.type[i]);
    out.alpha.push_back(c.alpha[i]);
    out.cols.insert(out.cols.end(), c.cols.begin() + c.beg[i], c.cols.begin() + c.beg[i + 1]);
    out.beg.push_back(static_cast<int>(out.cols.size()));
  }
  compact_names(m.names.cones, map);
  if (next == 0) {
    c = ConeData{};
    m.names.cones = NamePool{};
  } else {
    c = std::move(out);
  }
}

void drop_sets(Imodel& m, const std::vector<char>& keep) {
  SetsData& d = m.sets;
  SetsData out;
  out.begcol.push_back(0);
  for (int s = 0; s < d.count(); ++s) {
    if (!keep[s]) continue;
    out.type.push_back(d.type[s]);
    out.card.push_back(d.card[s]);
    if (!d.state.empty()) out.state.push_back(d.state[s]);
    out.cols.insert(out.cols.end(), d.cols.begin() + d.begcol[s], d.cols.begin() + d.begcol[s + 1]);
    out.begcol.push_back(static_cast<int>(out.cols.size()));
  }
  d = out.type.empty() ? SetsData{} : std::move(out);
}

int add_cones(Imodel& m, int nCones, const char* pszConeTypes, const double* padConeAlpha,
              char** paszConeNames, const int* paiConebegcol, const int* paiConecols) {
  if (nCones < 0) return QZERR_ERROR_IN_INPUT;
  if (nCones == 0) return 0;
  if (m.nNLPnnz > 0 || m.nNLPobjnnz > 0 || m.quad.nnz() > 0) return QZERR_ALREADY_LOADED;
  if (pszConeTypes == nullptr || paiConebegcol == nullptr || paiConecols == nullptr)
    return QZERR_ILLEGAL_NULL_POINTER;
  if (paiConebegcol[0] < 0) return QZERR_BAD_COLUMN_NONZEROS;
  QZ_CALL(check_names(paszConeNames, nCones));
  ConeData& c = m.cones;
  std::vector<char> used(static_cast<size_t>(m.nVars), 0);
  for (int j : c.cols) used[j] = 1;
  QZ_CALL(check_cones(m, nCones, pszConeTypes, padConeAlpha, paiConebegcol, paiConecols, used));
  const int old = c.count();
  if (old == 0) c.beg.assign(1, 0);
  for (int i = 0; i < nCones; ++i) {
    c.type.push_back(pszConeTypes[i]);
    c.alpha.push_back(padConeAlpha ? padConeAlpha[i] : 0.0);
    c.cols.insert(c.cols.end(), paiConecols + paiConebegcol[i], paiConecols + paiConebegcol[i + 1]);
    c.beg.push_back(static_cast<int>(c.cols.size()));
  }
  append_names(m.names.cones, old, nCones, paszConeNames);
  apply_change_rule(m, Change::kStructure);
  return 0;
}

int modify_cone(Imodel& m, char cConeType, int iCone, int nNnz, const int* paiCols,
                double dConeAlpha) {
  ConeData& c = m.cones;
  if (iCone < 0 || iCone >= c.count()) return QZERR_INDEX_OUT_OF_RANGE;
  if (nNnz > 0 && paiCols == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (std::isnan(dConeAlpha)) return QZERR_ERROR_IN_INPUT;
  // The cone is tested as a cone of its own against the members of all the others.
  std::vector<char> used(static_cast<size_t>(m.nVars), 0);
  for (int i = 0; i < c.count(); ++i)
    if (i != iCone)
      for (int k = c.beg[i]; k < c.beg[i + 1]; ++k) used[c.cols[k]] = 1;
  const int beg[2] = {0, std::max(nNnz, 0)};
  QZ_CALL(check_cones(m, 1, &cConeType, &dConeAlpha, beg, paiCols, used));
  c.type[iCone] = cConeType;
  c.alpha[iCone] = dConeAlpha;
  replace_members(c.beg, c.cols, iCone, paiCols, nNnz);
  apply_change_rule(m, Change::kStructure);
  return 0;
}

int delete_cones(Imodel& m, int nCones, const int* paiCones) {
  if (nCones < 0) return QZERR_ERROR_IN_INPUT;
  if (nCones == 0) return 0;
  std::vector<char> keep;
  QZ_CALL(deletion_mask(nCones, paiCones, m.cones.count(), keep));
  drop_cones(m, keep);
  apply_change_rule(m, Change::kStructure);
  return 0;
}

int add_sets(Imodel& m, int nSETS, const char* pszSETStype, const int* paiCARDnum,
             const int* paiSETSbegcol, const int* paiSETScols) {
  if (nSETS < 0) return QZERR_ERROR_IN_INPUT;
  if (nSETS == 0) return 0;
  if (pszSETStype == nullptr || paiSETSbegcol == nullptr || paiSETScols == nullptr)
    return QZERR_ILLEGAL_NULL_POINTER;
  if (paiSETSbegcol[0] < 0) return QZERR_BAD_COLUMN_NONZEROS;
  QZ_CALL(check_sets(m, nSETS, pszSETStype, paiCARDnum, paiSETSbegcol, paiSETScols, nullptr));
  SetsData& d = m.sets;
  if (d.count() == 0) d.begcol.assign(1, 0);
  for (int s = 0; s < nSETS; ++s) {
    const int t = pszSETStype[s];
    d.type.push_back(static_cast<char>(t));
    d.card.push_back(t == 1 ? 1 : (t == 4 ? paiCARDnum[s] : 0));
    if (!d.state.empty()) d.state.push_back(1);
    d.cols.insert(d.cols.end(), paiSETScols + paiSETSbegcol[s], paiSETScols + paiSETSbegcol[s + 1]);
    d.begcol.push_back(static_cast<int>(d.cols.size()));
  }
  apply_change_rule(m, Change::kStructure);
  return 0;
}

int modify_set(Imodel& m, char cSetType, int iSet, int nNnz, const int* paiCols) {
  SetsData& d = m.sets;
  if (iSet < 0 || iSet >= d.count()) return QZERR_INDEX_OUT_OF_RANGE;
  const int t = cSetType;
  if (t < 1 || t > 4) return QZERR_BAD_CONSTRAINT_TYPE;
  if (nNnz < 0 || ((t == 1 || t == 3) && nNnz < 1) || (t == 2 && nNnz < 2))
    return QZERR_BAD_COLUMN_NONZEROS;
  if (nNnz > 0 && paiCols == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  std::vector<char> seen(static_cast<size_t>(m.nVars), 0);
  for (int k = 0; k < nNnz; ++k) {
    const int j = paiCols[k];
    if (j < 0 || j >= m.nVars) return QZERR_COLUMN_INDEX_OUT_OF_RANGE;
    if (seen[j]) return QZERR_DUPLICATE_INDEX;
    seen[j] = 1;
  }
  // A set that becomes a cardinality set keeps its old limit, or limits nothing yet.
  int card = 0;
  if (t == 1) card = 1;
  if (t == 4) card = d.type[iSet] == 4 ? d.card[iSet] : nNnz;
  d.type[iSet] = static_cast<char>(t);
  d.card[iSet] = card;
  replace_members(d.begcol, d.cols, iSet, paiCols, nNnz);
  apply_change_rule(m, Change::kStructure);
  return 0;
}

int delete_sets(Imodel& m, int nSETS, const int* paiSETS) {
  if (nSETS < 0) return QZERR_ERROR_IN_INPUT;
  if (nSETS == 0) return 0;
  std::vector<char> keep;
  QZ_CALL(deletion_mask(nSETS, paiSETS, m.sets.count(), keep));
  drop_sets(m, keep);
  apply_change_rule(m, Change::kStructure);
  return 0;
}

int modify_semicont_vars(Imodel& m, int nVars, const int* paiVars, const double* padL) {
  if (nVars < 0) return QZERR_ERROR_IN_INPUT;
  if (nVars == 0) return 0;
  SemiContData& sc = m.semicont;
  if (sc.vars.empty()) return QZERR_COLUMN_INDEX_OUT_OF_RANGE;
  for (int k = 0; k < nVars; ++k) {
    if (paiVars[k] < 0 || paiVars[k] >= m.nVars) return QZERR_COLUMN_INDEX_OUT_OF_RANGE;
    if (std::isnan(padL[k])) return QZERR_ERROR_IN_INPUT;
    if (padL[k] < 0.0) return QZERR_INPUT_OUT_OF_RANGE;
  }
  std::vector<int> where(static_cast<size_t>(m.nVars), -1);
  for (size_t p = 0; p < sc.vars.size(); ++p) where[sc.vars[p]] = static_cast<int>(p);
  for (int k = 0; k < nVars; ++k) {
    const int j = paiVars[k];
    if (where[j] < 0) {
      // A new member holds [0, upper] in the column, as a load makes it.
      where[j] = static_cast<int>(sc.vars.size());
      sc.vars.push_back(j);
      sc.lower.push_back(padL[k]);
      m.lp.padL[j] = 0.0;
    } else {
      sc.lower[where[j]] = padL[k];
    }
  }
  apply_change_rule(m, Change::kData);
  return 0;
}

int delete_semicont_vars(Imodel& m, int nVars, const int* paiVars) {
  if (nVars < 0) return QZERR_ERROR_IN_INPUT;
  if (nVars == 0) return 0;
  SemiContData& sc = m.semicont;
  if (sc.vars.empty()) return QZERR_COLUMN_INDEX_OUT_OF_RANGE;
  std::vector<char> drop(static_cast<size_t>(m.nVars), 0);
  for (int k = 0; k < nVars; ++k) {
    if (paiVars[k] < 0 || paiVars[k] >= m.nVars) return QZERR_COLUMN_INDEX_OUT_OF_RANGE;
    drop[paiVars[k]] = 1;
  }
  size_t out = 0;
  for (size_t p = 0; p < sc.vars.size(); ++p) {
    if (drop[sc.vars[p]]) continue;
    sc.vars[out] = sc.vars[p];
    sc.lower[out++] = sc.lower[p];
  }
  if (out == sc.vars.size()) return 0;
  sc.vars.resize(out);
  sc.lower.resize(out);
  apply_change_rule(m, Change::kData);
  return 0;
}

int add_qc_terms(Imodel& m, int nQCnnz, const int* paiQCrows, const int* paiQCcols1,
                 const int* paiQCcols2, const double* padQCcoef) {
  if (nQCnnz < 0) return QZERR_ERROR_IN_INPUT;
  if (nQCnnz == 0) return 0;
  if (!paiQCrows || !paiQCcols1 || !paiQCcols2 || !padQCcoef) return QZERR_ILLEGAL_NULL_POINTER;
  for (int k = 0; k < nQCnnz; ++k) {
    if (paiQCrows[k] < -1 || paiQCrows[k] >= m.nCons) return QZERR_ROW_INDEX_OUT_OF_RANGE;
    if (paiQCcols1[k] < 0 || paiQCcols1[k] >= m.nVars || paiQCcols2[k] < 0 ||
        paiQCcols2[k] >= m.nVars)
      return QZERR_COLUMN_INDEX_OUT_OF_RANGE;
    if (!std::isfinite(padQCcoef[k])) return QZERR_ERROR_IN_INPUT;
  }
  if (!m.cones.cols.empty()) return QZERR_ALREADY_LOADED;
  // Old and new terms go through the grouping of a load together, so a model built by
  // additions holds what one load of all its terms would hold.
  const QuadData& q = m.quad;
  std::vector<int> rows, c1, c2;
  std::vector<double> coef;
  const size_t total = static_cast<size_t>(q.nnz()) + static_cast<size_t>(nQCnnz);
  rows.reserve(total);
  c1.reserve(total);
  c2.reserve(total);
  coef.reserve(total);
  for (int g = 0; g < q.groups(); ++g)
    for (int k = q.beg[g]; k < q.beg[g + 1]; ++k) {
      rows.push_back(q.row[g]);
      c1.push_back(q.col1[k]);
      c2.push_back(q.col2[k]);
      coef.push_back(q.coef[k]);
    }
  rows.insert(rows.end(), paiQCrows, paiQCrows + nQCnnz);
  c1.insert(c1.end(), paiQCcols1, paiQCcols1 + nQCnnz);
  c2.insert(c2.end(), paiQCcols2, paiQCcols2 + nQCnnz);
  coef.insert(coef.end(), padQCcoef, padQCcoef + nQCnnz);
  QuadData out;
  QZ_CALL(build_quad_data(m, static_cast<int>(coef.size()), rows.data(), c1.data(), c2.data(),
                          coef.data(), out));
  if (!out.coef.empty()) {
    reserve_for(out.row, out.row.size(), 100);
    reserve_for(out.beg, out.beg.size(), 100);
    for (auto* v : {&out.col1, &out.col2}) reserve_for(*v, v->size(), 1000);
    reserve_for(out.coef, out.coef.size(), 1000);
  }
  m.quad = std::move(out);
  apply_change_rule(m, Change::kStructure);
  return 0;
}

int delete_qc_terms(Imodel& m, int nCons, const int* paiCons) {
  if (nCons < 0) return QZERR_ERROR_IN_INPUT;
  if (nCons == 0) return 0;
  std::vector<char> drop(static_cast<size_t>(m.nCons) + 1, 0);
  for (int k = 0; k < nCons; ++k) {
    if (paiCons[k] < -1 || paiCons[k] >= m.nCons) return QZERR_ROW_INDEX_OUT_OF_RANGE;
    drop[paiCons[k] + 1] = 1;
  }
  QuadData& q = m.quad;
  QuadData out;
  out.beg.push_back(0);
  for (int g = 0; g < q.groups(); ++g) {
    if (drop[q.row[g] + 1]) continue;
    out.row.push_back(q.row[g]);
    out.col1.insert(out.col1.end(), q.col1.begin() + q.beg[g], q.col1.begin() + q.beg[g + 1]);
    out.col2.insert(out.col2.end(), q.col2.begin() + q.beg[g], q.col2.begin() + q.beg[g + 1]);
    out.coef.insert(out.coef.end(), q.coef.begin() + q.beg[g], q.coef.begin() + q.beg[g + 1]);
    out.beg.push_back(static_cast<int>(out.coef.size()));
  }
  if (out.groups() == q.groups()) return 0;
  if (out.coef.empty()) {
    m.quad = QuadData{};
  } else {
    quad_counts(m, out);
    m.quad = std::move(out);
  }
  apply_change_rule(m, Change::kStructure);
  return 0;
}

// One artificial column per row that the reference point violates, with coefficient +1 or -1
// so that the column takes up the violation at a penalty in the objective.
int add_art_columns(Imodel& m, int nFlags, double dPenalty) {
  if (!m.artCols.empty()) return QZERR_ART_COLUMNS_PRESENT;
  // Writing the model files of these columns needs the text writer, which is not in this build.
  if (nFlags & 2) return QZERR_NOT_SUPPORTED;
  const double penalty = dPenalty > 0 ? dPenalty : 1e8;
  const LinearData& lp = m.lp;
  std::vector<double> x(static_cast<size_t>(m.nVars), 0.0);
  for (int j = 0; j < m.nVars; ++j) {
    if (lp.padL[j] > 0)
      x[j] = lp.padL[j];
    else if (lp.padU[j] < 0)
      x[j] = lp.padU[j];
  }
  std::vector<double> act(static_cast<size_t>(m.nCons));
  compute_row_activity(m, x.data(), act.data());
  std::vector<int> beg{0}, rows;
  std::vector<double> coef;
  for (int i = 0; i < m.nCons; ++i) {
    const double slack = lp.padB[i] - act[i];
    const char t = lp.pszConTypes[i];
    double sign = 0;
    if ((t == 'G' || t == 'E') && slack > 0) sign = 1;
    if ((t == 'L' || t == 'E') && slack < 0) sign = -1;
    if (sign == 0) continue;
    rows.push_back(i);
    coef.push_back(sign);
    beg.push_back(static_cast<int>(rows.size()));
  }
  const int n = static_cast<int>(rows.size());
  const int first = m.nVars;
  if (n > 0) {
    const std::vector<double> c(static_cast<size_t>(n), lp.dObjSense * penalty);
    QZ_CALL(add_variables(m, n, nullptr, nullptr, beg.data(), nullptr, coef.data(), rows.data(),
                          c.data(), nullptr, nullptr));
  }
  for (int k = 0; k < n; ++k) m.artCols.push_back(first + k);
  QZlogmod(&m, base_printlevel(m) > 0, "\nAdded %d artificial cols with penalty '%g'", n,
           penalty);
  return 0;
}

int del_art_columns(Imodel& m, int nFlags) {
  if (m.artCols.empty()) return QZERR_INFO_NOT_AVAILABLE;
  if (nFlags & 2) return QZERR_NOT_SUPPORTED;
  const std::vector<int> cols = m.artCols;
  QZ_CALL(delete_variables(m, static_cast<int>(cols.size()), cols.data()));
  m.artCols.clear();
  QZlogmod(&m, base_printlevel(m) > 0, "\nRemoved artificial %d cols",
           static_cast<int>(cols.size()));
  return 0;
}

}  // namespace zento
