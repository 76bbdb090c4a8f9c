// Further model parts: semi-continuous variables, sets, cones, semidefinite blocks,
// all-different groups and quadratic terms.
#include <algorithm>
#include <cmath>

#include "core/errors.h"
#include "core/load.h"
#include "core/log.h"
#include "core/model_ops.h"

namespace zento {

namespace {

void log_part(Imodel& m, const char* fmt, int a, int b = 0, int c = 0) {
  if (m.holdLog) return;
  QZlogmod(&m, base_printlevel(m) > 0, fmt, a, b, c);
}

}  // namespace

int check_sets(const Imodel& m, int nSETS, const char* pszSETStype, const int* paiCARDnum,
               const int* paiSETSbegcol, const int* paiSETScols, int* count) {
  std::vector<int> mark(static_cast<size_t>(m.nVars), -1);
  for (int s = 0; s < nSETS; ++s) {
    const int type = pszSETStype[s];
    if (type < 1 || type > 4) return QZERR_BAD_CONSTRAINT_TYPE;
    if (type == 4) {
      if (paiCARDnum == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
      if (paiCARDnum[s] < 0) return QZERR_INPUT_OUT_OF_RANGE;
    }
    const int n = paiSETSbegcol[s + 1] - paiSETSbegcol[s];
    if (n < 0) return QZERR_BAD_COLUMN_NONZEROS;
    if (((type == 1 || type == 3) && n < 1) || (type == 2 && n < 2))
      return QZERR_BAD_COLUMN_NONZEROS;
    for (int k = paiSETSbegcol[s]; k < paiSETSbegcol[s + 1]; ++k) {
      const int j = paiSETScols[k];
      if (j < 0 || j >= m.nVars || mark[j] == s) return QZERR_COLUMN_INDEX_OUT_OF_RANGE;
      mark[j] = s;
    }
    if (count) count[type] += n;
  }
  return 0;
}

int check_cones(const Imodel& m, int nCone, const char* pszConeTypes, const double* padConeAlpha,
                const int* paiConebegcone, const int* paiConecols, std::vector<char>& used) {
  for (int c = 0; c < nCone; ++c) {
    const char t = pszConeTypes[c];
    if (t != 'Q' && t != 'R' && t != 'E' && t != 'P') return QZERR_BAD_CONSTRAINT_TYPE;
    if (t == 'P' && padConeAlpha == nullptr) return QZERR_BAD_CONSTRAINT_TYPE;
    const int n = paiConebegcone[c + 1] - paiConebegcone[c];
    const bool countOk = (t == 'Q' && n >= 1) || (t == 'R' && n >= 2) ||
                         ((t == 'E' || t == 'P') && n == 3);
    if (!countOk) return QZERR_BAD_COLUMN_NONZEROS;
    for (int k = paiConebegcone[c]; k < paiConebegcone[c + 1]; ++k) {
      const int j = paiConecols[k];
      if (j < 0 || j >= m.nVars || used[j]) return QZERR_COLUMN_INDEX_OUT_OF_RANGE;
      used[j] = 1;
    }
  }
  return 0;
}

int load_semicont_data(Imodel& m, int nSC, const int* paiVars, const double* padL,
                       const double* padU) {
  if (nSC == 0) return 0;
  if (nSC < 0) return QZERR_ERROR_IN_INPUT;
  if (!m.semicont.vars.empty()) return QZERR_ALREADY_LOADED;
  if (paiVars == nullptr || padL == nullptr || padU == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  std::vector<char> seen(static_cast<size_t>(m.nVars), 0);
  for (int k = 0; k < nSC; ++k) {
    const int j = paiVars[k];
    if (j < 0 || j >= m.nVars) return QZERR_COLUMN_INDEX_OUT_OF_RANGE;
    if (seen[j]) return QZERR_DUPLICATE_INDEX;
    seen[j] = 1;
    if (std::isnan(padL[k]) || std::isnan(padU[k])) return QZERR_ERROR_IN_INPUT;
  }
  m.semicont.vars.assign(paiVars, paiVars + nSC);
  m.semicont.lower.assign(padL, padL + nSC);
  // The column holds [0, upper]; the list keeps the positive lower value.
  for (int k = 0; k < nSC; ++k) {
    const int j = paiVars[k];
    m.lp.padU[j] = std::min(padU[k], QZ_INFINITY);
    if (m.lp.padL[j] != 0.0) m.lp.padL[j] = 0.0;
  }
  invalidate_results(m);
  log_part(m, "\nSemicont variables   :%8d\n", nSC);
  return 0;
}

int load_sets_data(Imodel& m, int nSETS, const char* pszSETStype, const int* paiCARDnum,
                   const int* paiSETSbegcol, const int* paiSETScols) {
  if (nSETS == 0) return 0;
  if (nSETS < 0) return QZERR_ERROR_IN_INPUT;
  if (m.sets.count() > 0) return QZERR_ALREADY_LOADED;
  if (pszSETStype == nullptr || paiSETSbegcol == nullptr || paiSETScols == nullptr)
    return QZERR_ILLEGAL_NULL_POINTER;
  int count[5] = {0, 0, 0, 0, 0};
  QZ_CALL(check_sets(m, nSETS, pszSETStype, paiCARDnum, paiSETSbegcol, paiSETScols, count));
  SetsData& d = m.sets;
  d.type.assign(pszSETStype, pszSETStype + nSETS);
  d.card.assign(static_cast<size_t>(nSETS), 0);
  for (int s = 0; s < nSETS; ++s)
    d.card[s] = d.type[s] == 1 ? 1 : (d.type[s] == 4 ? paiCARDnum[s] : 0);
  const int base = paiSETSbegcol[0];
  d.begcol.resize(static_cast<size_t>(nSETS) + 1);
  for (int s = 0; s <= nSETS; ++s) d.begcol[s] = paiSETSbegcol[s] - base;
  d.cols.assign(paiSETScols + base, paiSETScols + paiSETSbegcol[nSETS]);
  d.state.clear();
  invalidate_results(m);
  log_part(m, "\nSOS variables        : type-1:%d, type-2:%d, type-3:%d", count[1], count[2],
           count[3]);
  if (count[4] > 0) log_part(m, "\nCardinality variables: %8d\n", count[4]);
  return 0;
}

int set_sets_state(Imodel& m, int iSet, int nState) {
  if (iSet < 0 || iSet >= m.sets.count()) return QZERR_INDEX_OUT_OF_RANGE;
  if (nState != 0 && nState != 1) return QZERR_ERROR_IN_INPUT;
  if (m.sets.state.empty()) m.sets.state.assign(static_cast<size_t>(m.sets.count()), 1);
  m.sets.state[iSet] = 1 - nState;
  return 0;
}

int load_cone_data(Imodel& m, int nCone, const char* pszConeTypes, const double* padConeAlpha,
                   const int* paiConebegcone, const int* paiConecols) {
  if (nCone == 0) return 0;
  if (nCone < 0) return QZERR_ERROR_IN_INPUT;
  if (m.nNLPnnz > 0 || m.nNLPobjnnz > 0) return QZERR_ALREADY_LOADED;
  if (m.cones.count() > 0) return QZERR_ALREADY_LOADED;
  if (pszConeTypes == nullptr || paiConebegcone == nullptr || paiConecols == nullptr)
    return QZERR_ILLEGAL_NULL_POINTER;
  std::vector<char> used(static_cast<size_t>(m.nVars), 0);
  QZ_CALL(check_cones(m, nCone, pszConeTypes, padConeAlpha, paiConebegcone, paiConecols, used));
  ConeData& d = m.cones;
  d.type.assign(pszConeTypes, pszConeTypes + nCone);
  d.alpha.assign(static_cast<size_t>(nCone), 0.0);
  if (padConeAlpha) d.alpha.assign(padConeAlpha, padConeAlpha + nCone);
  const int base = paiConebegcone[0];
  d.beg.resize(static_cast<size_t>(nCone) + 1);
  for (int c = 0; c <= nCone; ++c) d.beg[c] = paiConebegcone[c] - base;
  d.cols.assign(paiConecols + base, paiConecols + paiConebegcone[nCone]);
  invalidate_results(m);
  log_part(m, "\nQuadratic nonzeroes  :%8d\nConic nonzeroes      :%8d\n", m.quad.nnz(),
           static_cast<int>(d.cols.size()));
  return 0;
}

int load_posd_data(Imodel& m, int nPOSD, const int* paiPOSDdim, const int* paiPOSDbeg,
                   const int* paiPOSDrowndx, const int* paiPOSDcolndx,
                   const int* paiPOSDvarndx) {
  if (nPOSD == 0) return 0;
  if (nPOSD < 0) return QZERR_ERROR_IN_INPUT;
  if (!paiPOSDdim || !paiPOSDbeg || !paiPOSDrowndx || !paiPOSDcolndx || !paiPOSDvarndx)
    return QZERR_ILLEGAL_NULL_POINTER;
  POSDData d;
  std::vector<char> used(static_cast<size_t>(m.nVars), 0);
  for (int b = 0; b < nPOSD; ++b) {
    const int n = paiPOSDdim[b];
    if (n <= 0 || n > 46340) return QZERR_INDEX_OUT_OF_RANGE;
    std::vector<int> slot(static_cast<size_t>(n) * (n + 1) / 2, -1);
    for (int k = paiPOSDbeg[b]; k < paiPOSDbeg[b + 1]; ++k) {
      const int r = paiPOSDrowndx[k], c = paiPOSDcolndx[k], v = paiPOSDvarndx[k];
      if (r < 0 || r >= n || c < 0 || c > r || v < 0 || v >= m.nVars)
        return QZERR_INDEX_OUT_OF_RANGE;
      if (used[v]) return QZERR_DUPLICATE_INDEX;
      used[v] = 1;
      slot[static_cast<size_t>(r) * (r + 1) / 2 + c] = v;
    }
    d.dim.push_back(n);
    d.slot.push_back(std::move(slot));
  }
  m.posd = std::move(d);
  invalidate_results(m);
  return 0;
}

int load_alldiff_data(Imodel& m, int nALLDIFF, const int* paiAlldiffDim, const int* paiAlldiffL,
                      const int* paiAlldiffU, const int* paiAlldiffBeg,
                      const int* paiAlldiffVar) {
  if (nALLDIFF == 0) return 0;
  if (nALLDIFF < 0) return QZERR_ERROR_IN_INPUT;
  if (!paiAlldiffDim || !paiAlldiffL || !paiAlldiffU || !paiAlldiffBeg || !paiAlldiffVar)
    return QZERR_ILLEGAL_NULL_POINTER;
  for (int g = 0; g < nALLDIFF; ++g) {
    if (paiAlldiffBeg[g + 1] - paiAlldiffBeg[g] != paiAlldiffDim[g] || paiAlldiffDim[g] < 0)
      return QZERR_BAD_COLUMN_NONZEROS;
    if (paiAlldiffL[g] > paiAlldiffU[g]) return QZERR_INPUT_OUT_OF_RANGE;
    for (int k = paiAlldiffBeg[g]; k < paiAlldiffBeg[g + 1]; ++k)
      if (paiAlldiffVar[k] < 0 || paiAlldiffVar[k] >= m.nVars)
        return QZERR_COLUMN_INDEX_OUT_OF_RANGE;
  }
  AllDiffData& d = m.alldiff;
  d.dim.assign(paiAlldiffDim, paiAlldiffDim + nALLDIFF);
  d.lower.assign(paiAlldiffL, paiAlldiffL + nALLDIFF);
  d.upper.assign(paiAlldiffU, paiAlldiffU + nALLDIFF);
  const int base = paiAlldiffBeg[0];
  d.beg.resize(static_cast<size_t>(nALLDIFF) + 1);
  for (int g = 0; g <= nALLDIFF; ++g) d.beg[g] = paiAlldiffBeg[g] - base;
  d.vars.assign(paiAlldiffVar + base, paiAlldiffVar + paiAlldiffBeg[nALLDIFF]);
  // Members become integers within the group's range.
  if (m.lp.pszVarTypes.empty() && m.nVars > 0) m.lp.pszVarTypes.assign(m.nVars, 'C');
  for (int g = 0; g < nALLDIFF; ++g)
    for (int k = d.beg[g]; k < d.beg[g + 1]; ++k) {
      const int j = d.vars[k];
      if (m.lp.pszVarTypes[j] == 'C') m.lp.pszVarTypes[j] = 'I';
      m.lp.padL[j] = std::max(m.lp.padL[j], static_cast<double>(d.lower[g]));
      m.lp.padU[j] = std::min(m.lp.padU[j], static_cast<double>(d.upper[g]));
    }
  invalidate_results(m);
  return 0;
}

int load_qc_data(Imodel& m, int QCnonzeros, const int* QCrowndx, const int* QCcolndx1,
                 const int* QCcolndx2, const double* QCcoef) {
  if (QCnonzeros == 0) return 0;
  if (QCnonzeros < 0) return QZERR_ERROR_IN_INPUT;
  if (!QCrowndx || !QCcolndx1 || !QCcolndx2 || !QCcoef) return QZERR_ILLEGAL_NULL_POINTER;
  if (!m.cones.cols.empty()) return QZERR_ALREADY_LOADED;
  m.quad = QuadData{};
  QuadData q;
  QZ_CALL(build_quad_data(m, QCnonzeros, QCrowndx, QCcolndx1, QCcolndx2, QCcoef, q));
  if (q.coef.empty()) return 0;
  m.quad = std::move(q);
  invalidate_results(m);
  log_part(m, "\nQuadratic variables  :%8d\nQuadratic constraints:%8d", m.quad.nQuadVars,
           m.quad.nQuadRows);
  return 0;
}

int build_quad_data(const Imodel& m, int QCnonzeros, const int* QCrowndx, const int* QCcolndx1,
                    const int* QCcolndx2, const double* QCcoef, QuadData& q) {
  q = QuadData{};
  q.convex = true;

  // Validate; count terms per group (row + 1, objective at 0).
  std::vector<int> groupCount(static_cast<size_t>(m.nCons) + 1, 0);
  for (int k = 0; k < QCnonzeros; ++k) {
    const int r = QCrowndx[k];
    if (r + 1 < 0 || r + 1 > m.nCons) return QZERR_ROW_INDEX_OUT_OF_RANGE;
    if (QCcolndx1[k] < 0 || QCcolndx1[k] >= m.nVars || QCcolndx2[k] < 0 ||
        QCcolndx2[k] >= m.nVars)
      return QZERR_COLUMN_INDEX_OUT_OF_RANGE;
    if (!std::isfinite(QCcoef[k])) return QZERR_ERROR_IN_INPUT;
    if (QCcoef[k] == 0.0) continue;
    if (r >= 0 && m.lp.pszConTypes[r] == 'E') q.convex = false;
    ++groupCount[r + 1];
  }
  std::vector<int> start(groupCount.size() + 1, 0);
  for (size_t g = 0; g < groupCount.size(); ++g) start[g + 1] = start[g] + groupCount[g];
  const int total = start.back();
  std::vector<int> c1(static_cast<size_t>(total)), c2(static_cast<size_t>(total));
  std::vector<double> cf(static_cast<size_t>(total));
  {
    std::vector<int> next(start.begin(), start.end() - 1);
    for (int k = 0; k < QCnonzeros; ++k) {
      if (QCcoef[k] == 0.0) continue;
      const int pos = next[QCrowndx[k] + 1]++;
      c1[pos] = std::min(QCcolndx1[k], QCcolndx2[k]);
      c2[pos] = std::max(QCcolndx1[k], QCcolndx2[k]);
      cf[pos] = QCcoef[k];
    }
  }

  // Per group: stable bucket pass on the first index (buckets in order of first appearance),
  // then duplicates of (i, j) merged to the mean of their coefficients.
  std::vector<int> bucketOf(static_cast<size_t>(m.nVars), -1);
  std::vector<int> slotOf(static_cast<size_t>(m.nVars), -1);
  std::vector<int> dupCount(static_cast<size_t>(m.nVars), 0);
  q.beg.push_back(0);
  for (size_t g = 0; g < groupCount.size(); ++g) {
    const int b = start[g], e = start[g + 1];
    if (b == e) continue;
    std::vector<int> order;  // distinct first indices by first appearance
    std::vector<std::vector<int>> members;
    for (int k = b; k < e; ++k) {
      int& bk = bucketOf[c1[k]];
      if (bk < 0) {
        bk = static_cast<int>(order.size());
        order.push_back(c1[k]);
        members.emplace_back();
      }
      members[bk].push_back(k);
    }
    for (size_t bi = 0; bi < order.size(); ++bi) {
      const size_t firstOut = q.coef.size();
      for (int k : members[bi]) {
        int& slot = slotOf[c2[k]];
        if (slot < 0) {
          slot = static_cast<int>(q.coef.size());
          q.col1.push_back(c1[k]);
          q.col2.push_back(c2[k]);
          q.coef.push_back(cf[k]);
          dupCount[c2[k]] = 1;
        } else {
          q.coef[slot] += cf[k];
          ++dupCount[c2[k]];
        }
      }
      for (size_t t = firstOut; t < q.coef.size(); ++t) {
        q.coef[t] /= dupCount[q.col2[t]];
        slotOf[q.col2[t]] = -1;
        dupCount[q.col2[t]] = 0;
      }
      bucketOf[order[bi]] = -1;
    }
    q.row.push_back(static_cast<int>(g) - 1);
    q.beg.push_back(static_cast<int>(q.coef.size()));
  }
  if (q.coef.empty()) {
    q = QuadData{};
    return 0;
  }
  quad_counts(m, q);
  return 0;
}

void quad_counts(const Imodel& m, QuadData& q) {
  q.termsPerVar.assign(static_cast<size_t>(m.nVars), 0);
  q.nQuadVars = q.nQuadRows = 0;
  q.objHasTerms = false;
  q.convex = true;
  for (size_t t = 0; t < q.coef.size(); ++t) {
    ++q.termsPerVar[q.col1[t]];
    if (q.col2[t] != q.col1[t]) ++q.termsPerVar[q.col2[t]];
  }
  for (int j = 0; j < m.nVars; ++j) q.nQuadVars += q.termsPerVar[j] > 0;
  for (int r : q.row) {
    if (r < 0) {
      q.objHasTerms = true;
    } else {
      ++q.nQuadRows;
      if (m.lp.pszConTypes[r] == 'E') q.convex = false;
    }
  }
}

}  // namespace zento
