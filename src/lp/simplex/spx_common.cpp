// Values of the current basis shared by both methods: primal values and their tags,
// multipliers, reduced costs, the pivot row, objective and infeasibility sums.
#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "core/callbacks.h"
#include "core/log.h"
#include "core/model.h"
#include "lp/simplex/spx_internal.h"

namespace zento {

namespace {
// A row-wise term costs about this many column-wise ones (scattered stores, marks).
constexpr long kRowWiseCost = 2;
}  // namespace

double nbval(const Glp& g, int j) {
  switch (g.cbas[j]) {
    case kAtLower:
    case kFixed: return g.lb[j];
    case kAtUpper: return g.ub[j];
    default: return 0.0;
  }
}

void compute_primal(Glp& g) {
  SVec& w = g.wvec;
  w.clear();
  std::vector<double>& v = w.val;
  for (int i = 0; i < g.m; ++i) v[i] = g.rhs[i] + g.ptotal[i];
  const int N = g.n + g.m;
  for (int j = 0; j < N; ++j) {
    if (g.cbas[j] >= 0) continue;
    const double x = nbval(g, j);
    if (x == 0.0) continue;
    for (int k = g.acols.beg[j]; k < g.acols.beg[j + 1]; ++k) v[g.acols.idx[k]] -= g.acols.val[k] * x;
  }
  w.n = -1;
  w.pack(0.0);
  g.lu.ftran(w, false);
  for (int p = 0; p < g.m; ++p) g.rhs1[p] = w.val[p];
  w.clear();
}

void retag_row(Glp& g, int p) {
  const int j = g.rbas[p];
  const double x = g.rhs1[p], lo = g.lb[j], up = g.ub[j], t = g.reps;
  char s;
  if (lo <= -g.infinity && up >= g.infinity)
    s = 'F';
  else if (x < lo - t)
    s = 'B';
  else if (x > up + t)
    s = 'A';
  else if (x <= lo + t)
    s = lo == up ? 'X' : 'L';
  else if (x >= up - t)
    s = 'U';
  else
    s = 'N';
  g.rstat[p] = s;
}

void retag_all(Glp& g) {
  for (int p = 0; p < g.m; ++p) retag_row(g, p);
  compute_sums(g);
}

void compute_sums(Glp& g) {
  int cnt = 0;
  double sum = 0;
  for (int p = 0; p < g.m; ++p) {
    const int j = g.rbas[p];
    if (g.rstat[p] == 'B') {
      ++cnt;
      sum += g.lb[j] - g.rhs1[p];
    } else if (g.rstat[p] == 'A') {
      ++cnt;
      sum += g.rhs1[p] - g.ub[j];
    }
  }
  g.npinf = cnt;
  g.sumpinf = sum;
}

double tag_cost(const Glp& g, int p) {
  if (g.rstat[p] == 'B') return -g.bigM;
  if (g.rstat[p] == 'A') return g.bigM;
  return 0.0;
}

void compute_dual(Glp& g, const double* costv) {
  SVec& y = g.wvec;
  y.clear();
  for (int p = 0; p < g.m; ++p) y.val[p] = costv[g.rbas[p]] + (g.pord == 0 ? tag_cost(g, p) : 0.0);
  y.n = -1;
  y.pack(0.0);
  g.lu.btran(y);
  std::copy(y.val.begin(), y.val.end(), g.dual.begin());
  y.clear();
}

double col_dot(const Glp& g, int j, const std::vector<double>& y) {
  double s = 0;
  for (int k = g.acols.beg[j]; k < g.acols.beg[j + 1]; ++k) s += g.acols.val[k] * y[g.acols.idx[k]];
  return s;
}

void compute_rdc(Glp& g, const double* costv) {
  const int N = g.n + g.m;
  for (int j = 0; j < N; ++j) g.rdc[j] = g.cbas[j] >= 0 ? 0.0 : costv[j] - col_dot(g, j, g.dual);
}

namespace {

void rowpart_swap(RowPart& rp, int a, int b) {
  if (a == b) return;
  std::swap(rp.col[a], rp.col[b]);
  std::swap(rp.val[a], rp.val[b]);
  std::swap(rp.src[a], rp.src[b]);
  rp.at[rp.src[a]] = a;
  rp.at[rp.src[b]] = b;
}

// Moves the entries of structural j into or out of the basic parts of their rows.
void rowpart_move(Glp& g, int j, bool to_basic) {
  RowPart& rp = g.rowpart;
  const int b = g.acols.beg[j], e = g.acols.beg[j + 1];
  for (int k = b; k < e; ++k) {
    const int i = g.acols.idx[k];
    if (to_basic)
      rowpart_swap(rp, rp.at[k], rp.beg[i] + --rp.nnb[i]);
    else
      rowpart_swap(rp, rp.at[k], rp.beg[i] + rp.nnb[i]++);
  }
  rp.basic[j] = static_cast<char>(to_basic);
  rp.nnz_nb += to_basic ? b - e : e - b;
}

void rowpart_build(Glp& g) {
  RowPart& rp = g.rowpart;
  const int m = g.m, n = g.n;
  const SpMat& A = g.acols;
  const int nnz = A.beg[n];
  rp.beg.assign(m + 1, 0);
  rp.nnb.assign(m, 0);
  rp.cols_sorted = true;
  for (int j = 0; j < n; ++j)
    for (int k = A.beg[j]; k < A.beg[j + 1]; ++k) {
      ++rp.beg[A.idx[k] + 1];
      if (k > A.beg[j] && A.idx[k] <= A.idx[k - 1]) rp.cols_sorted = false;
    }
  for (int i = 0; i < m; ++i) rp.beg[i + 1] += rp.beg[i];
  rp.col.resize(nnz);
  rp.src.resize(nnz);
  rp.val.resize(nnz);
  rp.at.resize(nnz);
  rp.basic.assign(n, 0);
  rp.nnz_nb = 0;
  std::vector<int> fill(rp.beg.begin(), rp.beg.end() - 1);
  for (const bool basic : {false, true})
    for (int j = 0; j < n; ++j) {
      if ((g.cbas[j] >= 0) != basic) continue;
      for (int k = A.beg[j]; k < A.beg[j + 1]; ++k) {
        const int i = A.idx[k];
        const int q = fill[i]++;
        rp.col[q] = j;
        rp.val[q] = A.val[k];
        rp.src[q] = k;
        rp.at[k] = q;
        rp.nnb[i] += !basic;
      }
      rp.basic[j] = static_cast<char>(basic);
      if (!basic) rp.nnz_nb += A.beg[j + 1] - A.beg[j];
    }
  rp.heads = g.rbas;
  rp.built = true;
}

// A column changed sides only if it left or entered some head since the last look.
void rowpart_sync(Glp& g) {
  RowPart& rp = g.rowpart;
  if (!rp.built || static_cast<int>(rp.heads.size()) != g.m ||
      static_cast<int>(rp.at.size()) != g.acols.beg[g.n]) {
    rowpart_build(g);
    return;
  }
  const int* rb = g.rbas.data();
  int* h = rp.heads.data();
  for (int p = 0; p < g.m; ++p) {
    if (h[p] == rb[p]) continue;
    const int out = h[p], in = rb[p];
    h[p] = in;
    if (out < g.n && rp.basic[out] && g.cbas[out] < 0) rowpart_move(g, out, false);
    if (in < g.n && !rp.basic[in] && g.cbas[in] >= 0) rowpart_move(g, in, true);
  }
}

// Entries at or below azero leave the row.
void drop_tiny(Glp& g) {
  int c = 0;
  for (int k = 0; k < g.prow_n; ++k) {
    const int j = g.prow_idx[k];
    if (std::fabs(g.prow[j]) > g.azero) {
      g.prow_idx[c++] = j;
    } else {
      g.prow[j] = 0.0;
      g.prow_mark[j] = 0;
    }
  }
  g.prow_n = c;
}

}  // namespace

void compute_pivrow(Glp& g, const SVec& rho) {
  const int* cb = g.acols.beg.data();
  const double* cv = g.acols.val.data();
  const int* cbas = g.cbas.data();
  double* prow = g.prow.data();
  char* mark = g.prow_mark.data();
  int* pidx = g.prow_idx.data();
  long work_row = 0;
  bool ascending = true;
  for (int k = 0, prev = -1; k < rho.n; ++k) {
    const int i = rho.idx[k];
    work_row += g.arows.count(i);
    ascending &= i > prev;
    prev = i;
  }
  bool row_wise = rho.n >= 0 && work_row * 3 < g.acols.nnz();
  if (rho.n >= 0) {
    rowpart_sync(g);
    // Multipliers in row order over columns in row order: both products add the same terms
    // in the same order, so the cheaper one may be taken.
    if (ascending && g.rowpart.cols_sorted) {
      long work_nb = 0;
      for (int k = 0; k < rho.n; ++k) work_nb += g.rowpart.nnb[rho.idx[k]];
      row_wise = work_nb * kRowWiseCost < g.rowpart.nnz_nb;
    }
  }
  if (row_wise) {
    for (int k = 0; k < g.prow_n; ++k) {
      const int j = pidx[k];
      prow[j] = 0.0;
      mark[j] = 0;
    }
    // Sums run in the order of rho's list, each column's terms in the same order whatever
    // the order of the entries within a row.
    const RowPart& rp = g.rowpart;
    const int* rbeg = rp.beg.data();
    const int* rnnb = rp.nnb.data();
    const int* rcol = rp.col.data();
    const double* rval = rp.val.data();
    int c = 0;
    for (int k = 0; k < rho.n; ++k) {
      const int i = rho.idx[k];
      const double r = rho.val[i];
      for (int q = rbeg[i], e = rbeg[i] + rnnb[i]; q < e; ++q) {
        const int j = rcol[q];
        if (!mark[j]) {
          mark[j] = 1;
          pidx[c++] = j;
        }
        prow[j] += r * rval[q];
      }
      const int jl = g.n + i;
      if (cbas[jl] < 0) {
        mark[jl] = 1;
        pidx[c++] = jl;
        prow[jl] = r * cv[cb[jl]];
      }
    }
    g.prow_n = c;
    drop_tiny(g);
    return;
  }
  // Dense multipliers: one pass over the nonbasic structurals; a logical's entry is its single
  // coefficient times the multiplier of its row. Entries are stored without a branch on their
  // size (about half of them survive on dense rows, which no predictor guesses). Every
  // column's entry is written, a basic one as zero, so the previous row needs no clearing.
  const double* rv = rho.val.data();
  const int* ci = g.acols.idx.data();
  const double az = g.azero;
  int c = 0;
  for (int j = 0; j < g.n; ++j) {
    if (cbas[j] >= 0) {
      prow[j] = 0.0;
      mark[j] = 0;
      continue;
    }
    double a = 0;
    for (int k = cb[j]; k < cb[j + 1]; ++k) a += cv[k] * rv[ci[k]];
    const bool keep = std::fabs(a) > az;
    prow[j] = keep ? a : 0.0;
    mark[j] = static_cast<char>(keep);
    pidx[c] = j;
    c += keep;
  }
  for (int i = 0; i < g.m; ++i) {
    const int j = g.n + i;
    if (cbas[j] >= 0) {
      prow[j] = 0.0;
      mark[j] = 0;
      continue;
    }
    const double a = cv[cb[j]] * rv[i];
    const bool keep = std::fabs(a) > az;
    prow[j] = keep ? a : 0.0;
    mark[j] = static_cast<char>(keep);
    pidx[c] = j;
    c += keep;
  }
  g.prow_n = c;
}

double objective_value(const Glp& g) {
  double s = 0;
  const int N = g.n + g.m;
  for (int j = 0; j < g.n; ++j) {
    if (g.cbas[j] >= 0 || g.cost0[j] == 0.0) continue;
    s += g.cost0[j] * nbval(g, j);
  }
  for (int p = 0; p < g.m; ++p) {
    const int j = g.rbas[p];
    if (j < g.n) s += g.cost0[j] * g.rhs1[p];
  }
  (void)N;
  return s;
}

int spx_check_time(Glp& g) {
  Imodel* m = g.model;
  const int loc = g.pord == 0 ? QZLOC_PRIMAL : QZLOC_DUAL;
  return timelapsed(g.timlim, m, g.tstart, loc, 0);
}

bool spx_log_on(const Glp& g, int level) {
  return g.model != nullptr && g.model->cb.logFunc != nullptr && g.printlevel >= level;
}

void qzi_exit_msg(Glp& g) {
  if (!spx_log_on(g, 2)) return;
  QZlogmod(g.model, 1, "\n%c%6d %8.0f : exit with %s, npinf=%d, ndinf=%d, obj=%.12g", g.itype,
           g.nfact, g.iter, szXSTAT[g.xstat], g.npinf, g.ndinf,
           (objective_value(g) / g.oscal + g.objconst) * g.objsense);
}

}  // namespace zento
