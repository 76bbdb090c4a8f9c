// Values of the current basis shared by both methods: primal values and their tags,
// multipliers, reduced costs, the pivot row, objective and infeasibility sums.
#include <algorithm>
#include <cmath>

#include "core/callbacks.h"
#include "core/log.h"
#include "core/model.h"
#include "lp/simplex/spx_internal.h"

namespace zento {

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

void compute_pivrow(Glp& g, const SVec& rho) {
  // Clear the previous row.
  for (int k = 0; k < g.prow_n; ++k) {
    const int j = g.prow_idx[k];
    g.prow[j] = 0.0;
    g.prow_mark[j] = 0;
  }
  g.prow_n = 0;
  long work_row = 0;
  for (int k = 0; k < rho.n; ++k) work_row += g.arows.count(rho.idx[k]);
  if (rho.n >= 0 && work_row * 3 < g.acols.nnz()) {
    for (int k = 0; k < rho.n; ++k) {
      const int i = rho.idx[k];
      const double r = rho.val[i];
      for (int q = g.arows.beg[i]; q < g.arows.beg[i + 1]; ++q) {
        const int j = g.arows.idx[q];
        if (g.cbas[j] >= 0) continue;
        if (!g.prow_mark[j]) {
          g.prow_mark[j] = 1;
          g.prow_idx[g.prow_n++] = j;
        }
        g.prow[j] += r * g.arows.val[q];
      }
    }
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
    return;
  }
  // Dense multipliers: one pass over the nonbasic structurals; a logical's entry is its single
  // coefficient times the multiplier of its row. Entries are stored without a branch on their
  // size (about half of them survive on dense rows, which no predictor guesses).
  const double* rv = rho.val.data();
  const int* cb = g.acols.beg.data();
  const int* ci = g.acols.idx.data();
  const double* cv = g.acols.val.data();
  const int* cbas = g.cbas.data();
  double* prow = g.prow.data();
  char* mark = g.prow_mark.data();
  int* pidx = g.prow_idx.data();
  const double az = g.azero;
  int c = 0;
  for (int j = 0; j < g.n; ++j) {
    if (cbas[j] >= 0) continue;
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
    if (cbas[j] >= 0) continue;
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
