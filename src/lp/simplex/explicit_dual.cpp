// Construction of the explicit dual of a linear model and the way back from a dual basis.
#include "lp/simplex/explicit_dual.h"

#include <cmath>

#include "core/load.h"

namespace zento {

namespace {

char column_kind(double lo, double up) {
  const bool lf = lo > -QZ_INFINITY, uf = up < QZ_INFINITY;
  if (lf && uf) return lo == up ? 'X' : 'B';
  if (lf) return 'L';
  if (uf) return 'U';
  return 'F';
}

}  // namespace

int build_dual_model(const Imodel& m, Imodel& out, DualMap& map) {
  const LinearData& lp = m.lp;
  const int n = m.nVars, rows = m.nCons;
  const double sg = lp.dObjSense == QZ_MAX ? -1.0 : 1.0;  // to minimization form
  auto cost = [&](int j) { return lp.padC.empty() ? 0.0 : sg * lp.padC[j]; };
  auto lower = [&](int j) { return lp.padL.empty() ? 0.0 : lp.padL[j]; };
  auto upper = [&](int j) { return lp.padU.empty() ? QZ_INFINITY : lp.padU[j]; };
  auto col_range = [&](int j, int* b, int* e) {
    *b = lp.paiAcols[j];
    *e = *b + (lp.panAcols.empty() ? lp.paiAcols[j + 1] - *b : lp.panAcols[j]);
  };

  map.rowVar.assign(rows, -1);
  map.colRow.assign(n, -1);
  map.colBox.assign(n, -1);
  map.kind.assign(n, 'F');
  int ny = 0;
  for (int i = 0; i < rows; ++i)
    if (lp.pszConTypes[i] != 'N') map.rowVar[i] = ny++;
  int nrow = 0, nbox = 0;
  for (int j = 0; j < n; ++j) {
    map.kind[j] = column_kind(lower(j), upper(j));
    if (map.kind[j] == 'X') continue;
    map.colRow[j] = nrow++;
    if (map.kind[j] == 'B') map.colBox[j] = ny + nbox++;
  }
  const int ncol = ny + nbox;

  // Each column moves to its finite bound; the right-hand sides and the constant follow.
  std::vector<double> b(lp.padB.begin(), lp.padB.end()), mag(rows);
  for (int i = 0; i < rows; ++i) mag[i] = std::fabs(b[i]);
  double constant = sg * lp.dObjConst;
  for (int j = 0; j < n; ++j) {
    const char k = map.kind[j];
    const double s = k == 'U' ? upper(j) : (k == 'F' ? 0.0 : lower(j));
    if (s == 0.0) continue;
    constant += cost(j) * s;
    int cb, ce;
    col_range(j, &cb, &ce);
    for (int q = cb; q < ce; ++q) {
      const int i = lp.paiArows[q];
      b[i] -= lp.padAcoef[q] * s;
      mag[i] += std::fabs(lp.padAcoef[q] * s);
    }
  }
  // What the shifts cancel to rounding level is zero, not a cost of 1e-19 that would stretch
  // the dual's range of costs by twenty orders.
  for (int i = 0; i < rows; ++i)
    if (std::fabs(b[i]) <= 1e-14 * mag[i]) b[i] = 0.0;

  // The dual's columns are the model's rows: count, then fill by the model's columns.
  std::vector<int> beg(ncol + 1, 0);
  for (int j = 0; j < n; ++j) {
    if (map.colRow[j] < 0) continue;
    int cb, ce;
    col_range(j, &cb, &ce);
    for (int q = cb; q < ce; ++q) {
      const int y = map.rowVar[lp.paiArows[q]];
      if (y >= 0 && lp.padAcoef[q] != 0.0) ++beg[y + 1];
    }
    if (map.colBox[j] >= 0) ++beg[map.colBox[j] + 1];
  }
  for (int k = 0; k < ncol; ++k) beg[k + 1] += beg[k];
  const int nnz = beg[ncol];
  std::vector<int> idx(std::max(nnz, 1)), fill(beg.begin(), beg.end() - 1);
  std::vector<double> val(std::max(nnz, 1));
  for (int j = 0; j < n; ++j) {
    const int r = map.colRow[j];
    if (r < 0) continue;
    int cb, ce;
    col_range(j, &cb, &ce);
    for (int q = cb; q < ce; ++q) {
      const int y = map.rowVar[lp.paiArows[q]];
      if (y < 0 || lp.padAcoef[q] == 0.0) continue;
      idx[fill[y]] = r;
      val[fill[y]++] = lp.padAcoef[q];
    }
    if (map.colBox[j] >= 0) {
      idx[fill[map.colBox[j]]] = r;
      val[fill[map.colBox[j]]++] = -1.0;
    }
  }

  // A maximization whose value is the model's optimum, turned into a minimization when the
  // model maximizes, so that both report the same value.
  const double out_sg = sg;  // +1: the dual stays a maximization
  std::vector<double> c(ncol), lo(ncol), up(ncol), rhs(nrow);
  std::vector<char> types(nrow);
  for (int i = 0; i < rows; ++i) {
    const int y = map.rowVar[i];
    if (y < 0) continue;
    c[y] = out_sg * b[i];
    switch (lp.pszConTypes[i]) {
      case 'L': lo[y] = -QZ_INFINITY; up[y] = 0; break;
      case 'G': lo[y] = 0; up[y] = QZ_INFINITY; break;
      default: lo[y] = -QZ_INFINITY; up[y] = QZ_INFINITY; break;
    }
  }
  for (int j = 0; j < n; ++j) {
    const int r = map.colRow[j];
    if (r < 0) continue;
    rhs[r] = cost(j);
    const char k = map.kind[j];
    types[r] = k == 'U' ? 'G' : (k == 'F' ? 'E' : 'L');
    if (map.colBox[j] >= 0) {
      const int w = map.colBox[j];
      c[w] = -out_sg * (upper(j) - lower(j));
      lo[w] = 0;
      up[w] = QZ_INFINITY;
    }
  }
  const int sense = out_sg > 0 ? QZ_MAX : QZ_MIN;
  return load_lp_data(out, nrow, ncol, sense, out_sg * constant, c.data(), rhs.data(),
                      types.data(), nnz, beg.data(), nullptr, val.data(), idx.data(), lo.data(),
                      up.data());
}

void dual_basis_build(const Imodel& m, const DualMap& map, const std::vector<int>& dualCols,
                      const std::vector<int>& dualRows, std::vector<int>& cst,
                      std::vector<int>& rst) {
  const int n = m.nVars, rows = m.nCons;
  rst.assign(rows, QZ_BASTYPE_BAS);
  cst.assign(n, QZ_BASTYPE_ATLO);
  // A basic multiplier holds its row at a bound; a nonbasic one leaves the slack basic.
  for (int i = 0; i < rows; ++i) {
    const int y = map.rowVar[i];
    if (y >= 0 && dualCols[y] >= 0) rst[i] = QZ_BASTYPE_ATLO;
  }
  // A dual row with a basic slack is a column at a bound; a tight one is basic, unless its
  // range column is basic, which puts it at its upper bound.
  for (int j = 0; j < n; ++j) {
    const int r = map.colRow[j];
    if (r < 0) continue;
    const bool boxAtUpper = map.colBox[j] >= 0 && dualCols[map.colBox[j]] >= 0;
    if (dualRows[r] >= 0 || boxAtUpper) {
      switch (map.kind[j]) {
        case 'U': cst[j] = QZ_BASTYPE_ATUP; break;
        case 'F': cst[j] = QZ_BASTYPE_FNUL; break;
        case 'B': cst[j] = boxAtUpper ? QZ_BASTYPE_ATUP : QZ_BASTYPE_ATLO; break;
        default: cst[j] = QZ_BASTYPE_ATLO; break;
      }
    } else {
      cst[j] = QZ_BASTYPE_BAS;
    }
  }
}

}  // namespace zento
