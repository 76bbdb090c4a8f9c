// Basis heads: the slack basis, the primal and dual crashes, loading a host basis (with the
// repair of a wrong count of basics), and saved snapshots.
#include <algorithm>
#include <cmath>

#include "core/log.h"
#include "core/model.h"
#include "lp/simplex/spx_internal.h"

namespace zento {

namespace {

int nonbasic_state(const Glp& g, int j) {
  const bool loInf = g.lb[j] <= -g.infinity, upInf = g.ub[j] >= g.infinity;
  if (!loInf && !upInf && g.lb[j] == g.ub[j]) return kFixed;
  if (!loInf) return kAtLower;
  if (!upInf) return kAtUpper;
  return kFree;
}

// A requested nonbasic state made consistent with the bounds.
int fit_state(const Glp& g, int j, int want) {
  const bool loInf = g.lb[j] <= -g.infinity, upInf = g.ub[j] >= g.infinity;
  if (!loInf && !upInf && g.lb[j] == g.ub[j]) return kFixed;
  if (want == kAtUpper && !upInf) return kAtUpper;
  if (want == kAtLower && !loInf) return kAtLower;
  return nonbasic_state(g, j);
}

}  // namespace

void QZI_spx_set_biden(Glp& g) {
  const int N = g.n + g.m;
  for (int j = 0; j < g.n; ++j) g.cbas[j] = nonbasic_state(g, j);
  for (int i = 0; i < g.m; ++i) {
    g.cbas[g.n + i] = i;
    g.rbas[i] = g.n + i;
  }
  (void)N;
  g.crash = 1;
  g.norms_valid = false;
  g.duals_exact = false;
  g.lu.invalidate();
}

int countbas(Glp& g, const char* who) {
  const int N = g.n + g.m;
  int k = 0;
  for (int j = 0; j < N; ++j) {
    const int p = g.cbas[j];
    if (p < 0) continue;
    if (p >= g.m || g.rbas[p] != j) {
      QZlogmod(g.model, spx_log_on(g, 1) ? 1 : 0, "\n%s: inconsistent basis head at column %d", who, j);
      return -1;
    }
    ++k;
  }
  return k == g.m ? 0 : -1;
}

void QZI_spx_save_curbas(Glp& g, BasSnap& s) {
  s.cbas = g.cbas;
  s.stale = false;
  s.uses = 0;
  s.iter = g.iter;
  s.cond2est = g.cond2est;
  s.rcond = g.rcond;
}

void qzi_restore_bas(Glp& g, const BasSnap& s) {
  const int N = g.n + g.m;
  g.cbas = s.cbas;
  for (int j = 0; j < N; ++j) {
    if (g.cbas[j] >= 0)
      g.rbas[g.cbas[j]] = j;
    else
      g.cbas[j] = fit_state(g, j, g.cbas[j]);
  }
  g.norms_valid = false;
  g.duals_exact = false;
  g.lu.invalidate();
  g.wfact = WFACT_REFACT;
  g.fiter = 0;
}

// Slack basis plus a triangular set of structurals in the rows whose logical is fixed.
void pcrashbas(Glp& g) {
  QZI_spx_set_biden(g);
  const int m = g.m, n = g.n;
  std::vector<char> open(m, 0);
  int nopen = 0;
  for (int i = 0; i < m; ++i)
    if (g.lb[n + i] == g.ub[n + i]) {
      open[i] = 1;
      ++nopen;
    }
  if (nopen == 0) return;
  // Candidate columns: nonbasic, not fixed, fewer than 10 entries, bucketed by length.
  std::vector<int> key(n, 2 * m + 10);
  std::vector<std::vector<int>> bylen(10);
  for (int j = 0; j < n; ++j) {
    if (g.cbas[j] == kFixed || (g.cflag[j] & kFlagEmpty)) continue;
    const int len = g.acols.count(j);
    if (len >= 10) continue;
    int touch = 0;
    for (int k = g.acols.beg[j]; k < g.acols.beg[j + 1]; ++k) touch += open[g.acols.idx[k]];
    if (touch == 0) continue;
    key[j] = touch - 1;
    bylen[len].push_back(j);
  }
  for (int L = 1; L <= 9; ++L) {
    for (int lim = 0; lim < L; ++lim) {
      for (int j : bylen[L]) {
        if (g.cbas[j] >= 0 || key[j] < 0 || key[j] > lim) continue;
        int best = -1;
        double bv = 0;
        for (int k = g.acols.beg[j]; k < g.acols.beg[j + 1]; ++k) {
          const int i = g.acols.idx[k];
          if (open[i] && std::fabs(g.acols.val[k]) > bv) {
            bv = std::fabs(g.acols.val[k]);
            best = i;
          }
        }
        if (best < 0 || bv < 1e-3) continue;
        const int jl = n + best;
        g.cbas[j] = best;
        g.rbas[best] = j;
        g.cbas[jl] = kFixed;
        g.crash = 0;
        for (int k = g.acols.beg[j]; k < g.acols.beg[j + 1]; ++k) {
          const int i = g.acols.idx[k];
          if (!open[i]) continue;
          open[i] = 0;
          for (int q = g.arows.beg[i]; q < g.arows.beg[i + 1]; ++q) {
            const int jj = g.arows.idx[q];
            if (jj < n && key[jj] < 2 * m + 10) --key[jj];
          }
        }
      }
    }
  }
  g.lu.invalidate();
}

// Slack basis chosen for dual feasibility: every structural at the bound its cost likes,
// and singleton columns brought into rows whose logical is fixed when that removes dual
// infeasibility.
void dcrashbas(Glp& g) {
  QZI_spx_set_biden(g);
  const int m = g.m, n = g.n;
  for (int j = 0; j < n; ++j) {
    const int s = g.cbas[j];
    if (s == kFree && g.dphase == 3) g.cbas[j] = kAtLower;
    if (s == kAtLower && g.ub[j] < g.infinity && g.cost[j] < 0) g.cbas[j] = kAtUpper;
  }
  std::vector<double>& d = g.dwork;
  for (int j = 0; j < n + m; ++j) d[j] = g.cbas[j] >= 0 ? 0.0 : g.cost[j];
  auto infeas = [&](int k, double v) {
    if (g.cbas[k] == kFixed || g.cbas[k] >= 0) return 0.0;
    if (g.ub[k] < g.infinity && g.lb[k] > -g.infinity) return 0.0;
    if (g.lb[k] > -g.infinity) return std::max(0.0, -v);
    if (g.ub[k] < g.infinity) return std::max(0.0, v);
    return std::fabs(v);
  };
  for (int i = 0; i < m; ++i) {
    const int jl = n + i;
    if (g.lb[jl] != g.ub[jl] || g.cbas[jl] < 0) continue;
    int best = -1;
    double bscore = -0.001;
    double bpiv = 0;
    for (int q = g.arows.beg[i]; q < g.arows.beg[i + 1]; ++q) {
      const int j = g.arows.idx[q];
      if (j >= n || g.cbas[j] >= 0 || g.acols.count(j) != 1 || g.ub[j] < g.infinity) continue;
      const double aij = g.arows.val[q];
      if (std::fabs(aij) < 1e-3) continue;
      double score = infeas(j, d[j]);
      for (int q2 = g.arows.beg[i]; q2 < g.arows.beg[i + 1]; ++q2) {
        const int k = g.arows.idx[q2];
        if (k == j || k >= n) continue;
        const double dk2 = d[k] - g.arows.val[q2] * d[j] / aij;
        score += infeas(k, d[k]) - infeas(k, dk2);
      }
      if (score > bscore) {
        bscore = score;
        best = j;
        bpiv = aij;
      }
    }
    if (best < 0) continue;
    const double dj = d[best];
    for (int q = g.arows.beg[i]; q < g.arows.beg[i + 1]; ++q) {
      const int k = g.arows.idx[q];
      d[k] -= g.arows.val[q] * dj / bpiv;
    }
    d[best] = 0;
    g.cbas[best] = i;
    g.rbas[i] = best;
    g.cbas[jl] = kFixed;
    g.crash = 0;
  }
  g.lu.invalidate();
}

int qzi_load_basis(Glp& g, const int* cstat, const int* rstat) {
  const int m = g.m, n = g.n, N = n + m;
  std::vector<int> want(N);
  for (int j = 0; j < n; ++j) {
    int s = cstat[j];
    if (s < 0 && g.flipped[j]) s = s == kAtLower ? kAtUpper : (s == kAtUpper ? kAtLower : s);
    want[j] = s;
  }
  for (int i = 0; i < m; ++i) want[n + i] = rstat[i];
  int nb = 0;
  for (int j = 0; j < N; ++j) nb += want[j] >= 0;
  if (nb != m) {
    QZlogmod(g.model, spx_log_on(g, 1) ? 1 : 0, "\n%s is fixing resident basis... ", "qzi_minifix_bas");
    if (nb < m) {
      QZlogmod(g.model, spx_log_on(g, 1) ? 1 : 0,
               "\n%c%6d %8.0f :WARNING: adding %d slack columns (m=%d,#basics=%d)", g.itype, g.nfact,
               g.iter, m - nb, m, nb);
      for (int i = 0; i < m && nb < m; ++i)
        if (want[n + i] < 0) {
          want[n + i] = 0;
          ++nb;
        }
    } else {
      QZlogmod(g.model, spx_log_on(g, 1) ? 1 : 0,
               "\n%c%6d %8.0f :WARNING: dropping %d basic columns (m=%d,#basics=%d)", g.itype,
               g.nfact, g.iter, nb - m, m, nb);
      for (int j = n - 1; j >= 0 && nb > m; --j)
        if (want[j] >= 0) {
          want[j] = kAtLower;
          --nb;
        }
      for (int i = m - 1; i >= 0 && nb > m; --i)
        if (want[n + i] >= 0) {
          want[n + i] = kAtLower;
          --nb;
        }
    }
  }
  int p = 0;
  for (int j = 0; j < N; ++j) {
    if (want[j] >= 0) {
      g.cbas[j] = p;
      g.rbas[p] = j;
      ++p;
    } else {
      g.cbas[j] = fit_state(g, j, want[j] == QZ_BASTYPE_SBAS ? kAtLower : want[j]);
    }
  }
  g.crash = 0;
  g.crcflag = 1;
  g.norms_valid = false;
  g.duals_exact = false;
  g.lu.invalidate();
  g.wfact = WFACT_INIT;
  g.fiter = 0;
  return nb == m ? 0 : 1;
}

}  // namespace zento
