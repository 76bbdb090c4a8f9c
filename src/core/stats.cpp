// Load statistics (`baseStats`) and the model summary lines of the log.
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "core/load.h"
#include "core/log.h"

namespace zento {

namespace {

constexpr double kFiniteLimit = 1e30;
enum RangeSlot { kMatrix = 0, kObj = 1, kRhs = 2, kLower = 3, kUpper = 4 };

// Largest and smallest nonzero finite magnitudes of a vector (`coemax2`).
void coemax2(const double* v, size_t n, double& mx, double& mn) {
  mx = 0;
  mn = 0;
  bool any = false;
  for (size_t i = 0; i < n; ++i) {
    const double a = std::fabs(v[i]);
    if (a == 0.0 || a >= kFiniteLimit) continue;
    if (!any) {
      mx = mn = a;
      any = true;
    } else {
      mx = std::max(mx, a);
      mn = std::min(mn, a);
    }
  }
}

std::string fmt_range(double v) {
  char buf[32];
  std::snprintf(buf, sizeof buf, "%12.5e", v);
  return buf;
}

}  // namespace

void compute_base_stats(Imodel& m) {
  BaseStats s;
  const LinearData& lp = m.lp;
  for (int j = 0; j < m.nVars; ++j) {
    const bool lo = lp.padL[j] > -kFiniteLimit, up = lp.padU[j] < kFiniteLimit;
    if (lo && up) {
      if (lp.padL[j] == lp.padU[j])
        ++s.nFixed;
      else
        ++s.nBoxed;
    } else if (lo) {
      ++s.nLower;
    } else if (up) {
      ++s.nUpper;
    } else {
      ++s.nFree;
      if (lp.panAcols[j] == 0 && lp.padC[j] != 0.0) ++s.nFreeEmptyWithCost;
    }
    const int len = lp.panAcols[j];
    if (len == 1) ++s.nCol1;
    if (len == 2) ++s.nCol2;
    s.densestCol = std::max(s.densestCol, len);
  }
  std::vector<int> rowLen(static_cast<size_t>(m.nCons), 0);
  for (int j = 0; j < m.nVars; ++j)
    for (int k = lp.paiAcols[j]; k < lp.paiAcols[j] + lp.panAcols[j]; ++k) ++rowLen[lp.paiArows[k]];
  for (int i = 0; i < m.nCons; ++i) {
    switch (lp.pszConTypes[i]) {
      case 'L': ++s.nL; break;
      case 'E': ++s.nE; if (rowLen[i] == 2) ++s.nE2; break;
      case 'G': ++s.nG; break;
      default: ++s.nN; break;
    }
    if (rowLen[i] == 1) ++s.nRow1;
    s.densestRow = std::max(s.densestRow, rowLen[i]);
  }
  auto geo_mean = [](auto begin, auto end) {
    double sum = 0;
    int n = 0;
    for (auto it = begin; it != end; ++it)
      if (*it > 0) {
        sum += std::log(static_cast<double>(*it));
        ++n;
      }
    return n ? std::exp(sum / n) : 0.0;
  };
  s.rowLenGeoMean = geo_mean(rowLen.begin(), rowLen.end());
  s.colLenGeoMean = geo_mean(lp.panAcols.begin(), lp.panAcols.end());

  std::vector<double> coef;
  coef.reserve(static_cast<size_t>(m.nAnnz));
  for (int j = 0; j < m.nVars; ++j)
    for (int k = lp.paiAcols[j]; k < lp.paiAcols[j] + lp.panAcols[j]; ++k)
      coef.push_back(lp.padAcoef[k]);
  coemax2(coef.data(), coef.size(), s.absMax[kMatrix], s.absMin[kMatrix]);
  coemax2(lp.padC.data(), lp.padC.size(), s.absMax[kObj], s.absMin[kObj]);
  coemax2(lp.padB.data(), lp.padB.size(), s.absMax[kRhs], s.absMin[kRhs]);
  coemax2(lp.padL.data(), lp.padL.size(), s.absMax[kLower], s.absMin[kLower]);
  coemax2(lp.padU.data(), lp.padU.size(), s.absMax[kUpper], s.absMin[kUpper]);
  for (int r = 0; r < 5; ++r) s.ratio[r] = s.absMin[r] > 0 ? s.absMax[r] / s.absMin[r] : 0.0;
  if (s.ratio[kMatrix] > 999999999.9999999) s.badScale |= 1;
  if (s.ratio[kRhs] > 1e12) s.badScale |= 2;
  if (s.ratio[kLower] > 1e12) s.badScale |= 4;
  if (s.ratio[kUpper] > 1e12) s.badScale |= 8;
  if (s.ratio[kObj] > 1e12) s.badScale |= 16;

  if (!lp.pszVarTypes.empty()) {
    std::vector<char> binRow(static_cast<size_t>(m.nCons), 0), intRow(static_cast<size_t>(m.nCons), 0);
    for (int j = 0; j < m.nVars; ++j) {
      const char t = lp.pszVarTypes[j];
      if (t != 'B' && t != 'I') continue;
      (t == 'B' ? s.nBin : s.nInt)++;
      auto& mark = t == 'B' ? binRow : intRow;
      for (int k = lp.paiAcols[j]; k < lp.paiAcols[j] + lp.panAcols[j]; ++k) mark[lp.paiArows[k]] = 1;
    }
    s.nBinRows = static_cast<int>(std::count(binRow.begin(), binRow.end(), 1));
    s.nIntRows = static_cast<int>(std::count(intRow.begin(), intRow.end(), 1));
  }
  m.baseStats = s;
}

void log_base_stats(Imodel& m) {
  if (m.holdLog || base_printlevel(m) <= 0 || m.cb.logFunc == nullptr) return;
  const BaseStats& s = m.baseStats;
  const double density =
      (m.nCons > 0 && m.nVars > 0) ? 100.0 * m.nAnnz / (double(m.nCons) * double(m.nVars)) : 0.0;
  QZlogmod(&m, 1, "\nNumber of constraints:%8d    le:%8d, ge:%8d, eq:%8d, rn:%8d (ne:%d)", m.nCons,
           s.nL, s.nG, s.nE, s.nRanged, s.nN);
  QZlogmod(&m, 1, "\nNumber of variables  :%8d    lb:%8d, ub:%8d, fr:%8d, bx:%8d (fx:%d)", m.nVars,
           s.nLower, s.nUpper, s.nFree, s.nBoxed, s.nFixed);
  QZlogmod(&m, 1, "\nNumber of nonzeroes  :%8d    density:%8.2g(%%)     , sb:%8d, dir:%s\n", m.nAnnz,
           density, s.nRow1, m.lp.dObjSense == QZ_MIN ? "min" : "max");
  QZlogmod(&m, 1, "\nAbs. Ranges     : %12s  %12s  %12s", "Min.", "Max.", "Condition.");
  static constexpr const char* kRows[5] = {
      "\nMatrix Coef. (A): %s  %s  %s %s", "\nObj. Vector  (c): %s  %s  %s %s",
      "\nRHS Vector   (b): %s  %s  %s %s", "\nLower Bounds (l): %s  %s  %s %s",
      "\nUpper Bounds (u): %s  %s  %s %s"};
  static constexpr int kBit[5] = {1, 16, 2, 4, 8};
  for (int r = 0; r < 5; ++r)
    QZlogmod(&m, 1, kRows[r], fmt_range(s.absMin[r]).c_str(), fmt_range(s.absMax[r]).c_str(),
             fmt_range(s.ratio[r]).c_str(), (s.badScale & kBit[r]) ? "*" : "");
  QZlogmod(&m, 1, "\nBadScale Measure: %d", s.badScale);
}

}  // namespace zento
