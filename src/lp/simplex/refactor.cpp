// Refactorization and update of the basis, recovery of a singular basis, condition checks.
#include <algorithm>
#include <cmath>

#include "core/log.h"
#include "core/model.h"
#include "lp/simplex/spx_internal.h"

namespace zento {

namespace {

constexpr double kBadCond = 4503599627370496.0;  // 2^52

void log_line(Glp& g, int level, const char* text) {
  if (spx_log_on(g, level))
    QZlogmod(g.model, 1, "\n%c%6d %8.0f : %s", g.itype, g.nfact, g.iter, text);
}

// Puts the logical of each deficient row in place of the column the factorization could not
// pivot, until the basis factors. Returns 0 or the recovery result code.
int recover_basis2(Glp& g) {
  for (int round = 0; round <= g.m; ++round) {
    const auto& pairs = g.lu.singular();
    if (pairs.empty()) {
      if (spx_log_on(g, 1))
        QZlogmod(g.model, 1, "\n%c%6d %8.0f : %s: Warning -- no dependent rows/cols were found.",
                 g.itype, g.nfact, g.iter, "recover_basis2");
      return 3;
    }
    int swapped = 0;
    for (const auto& [row, pos] : pairs) {
      const int jl = g.n + row;
      if (g.cbas[jl] >= 0) continue;
      const int out = g.rbas[pos];
      g.cbas[out] = g.lb[out] == g.ub[out] ? kFixed
                    : g.lb[out] > -g.infinity ? kAtLower
                    : g.ub[out] < g.infinity  ? kAtUpper
                                              : kFree;
      g.rbas[pos] = jl;
      g.cbas[jl] = pos;
      ++swapped;
    }
    if (swapped == 0) return 3;
    const int rc = g.lu.factor(g.acols, g.rbas.data());
    if (rc == SpxLu::kOk) {
      if (spx_log_on(g, 2))
        QZlogmod(g.model, 1, "\n Basis recovery (2) terminated (retval=%d). rcond=%g", 0,
                 g.lu.rcond());
      return 0;
    }
    if (rc == SpxLu::kNoMemory) return 2;
    if (spx_log_on(g, 2))
      QZlogmod(g.model, 1,
               "\n%c%6d %8.0f :%s: Repaired basis is still singular... Adding more artificial vars...",
               g.itype, g.nfact, g.iter, "recover_basis2");
  }
  return 1;
}

// Goes back to the fallback basis when it is usable; otherwise repairs in place.
int recover_basis(Glp& g) {
  if (g.basrecov == 1 && !g.crash && !g.oldbas.stale && g.oldbas.uses < 8 &&
      g.iter - g.oldbas.iter >= 1) {
    ++g.oldbas.uses;
    ++g.oldbas_restores;
    qzi_restore_bas(g, g.oldbas);
    const int rc = g.lu.factor(g.acols, g.rbas.data());
    if (rc == SpxLu::kOk) return 0;
    if (rc == SpxLu::kNoMemory) return 2;
  }
  return recover_basis2(g);
}

}  // namespace

void request_fact(Glp& g, int reason) {
  if (g.wfact == WFACT_NO) g.wfact = reason;
}

int QZI_spx_refactor(Glp& g) {
  const int reason = g.wfact;
  g.duals_exact = false;
  if (reason >= 0 && reason < 14) ++g.wfactcnt[reason];
  g.fiter = 0;
  const int N = g.n + g.m;
  for (int j = 0; j < N; ++j) g.cflag[j] &= ~kFlagRejected;
  if (g.rowrej_timer > 0 && --g.rowrej_timer == 0) std::fill(g.rowrej.begin(), g.rowrej.end(), 0);
  g.pcand = g.lu.npcand();
  g.lu.set_pivrel(g.mkweps);
  int rc = g.lu.factor(g.acols, g.rbas.data());
  ++g.nfact;
  if (rc == SpxLu::kNoMemory) return 2;
  if (rc == SpxLu::kSingular) {
    if (spx_log_on(g, 1))
      QZlogmod(g.model, 1,
               "\n%c%6d %8.0f :WARNING: LU factorz returned CLU_SINGULAR(%d), recovering (pivj=%d, "
               "rcond:%g, m=%d, rank=%d, top:%d)",
               g.itype, g.nfact, g.iter, rc, g.pivj, g.lu.rcond(), g.m,
               g.m - static_cast<int>(g.lu.singular().size()), 0);
    if (g.ratrange > 1) --g.ratrange;
    if (g.mkweps + 0.02 <= 0.9) g.mkweps += 0.02;
    const int rr = recover_basis(g);
    if (rr != 0) {
      static const char* const kWords[] = {
          "", "Singularity persists during basis recovery. ",
          "Ran out of memory during basis recovery, quiting...", "Numeric error during basis recovery. ",
          "Ran out of space during basis recovery, quiting..."};
      log_line(g, 1, kWords[std::min(rr, 4)]);
      return rr == 2 ? 2 : 3;
    }
    if (g.refacfrq - 10 >= 50) g.refacfrq -= 10;
    g.norms_valid = false;
  }
  g.rcond = g.lu.rcond();
  g.cond2est = g.lu.cond2est();
  if (g.rcond < 1.4901161193847656e-08 && g.cond2est > kBadCond && spx_log_on(g, 1))
    QZlogmod(g.model, 1,
             "\n%c%6d %8.0f : WARNING: too high cond2est:%g, fiter=%d, pivi=%d, pivj=%d, vleave:%d, %s(%d)",
             g.itype, g.nfact, g.iter, g.cond2est, g.fiter, g.pivi, g.pivj, g.vleave, __FILE__, __LINE__);
  g.crash = 0;
  g.wfact = WFACT_NO;
  QZI_spx_save_curbas(g, g.oldbas);
  return 0;
}

int QZI_spx_pupdate(Glp& g) {
  const int rc = g.lu.update(g.pivi, g.pivcoe);
  if (rc == SpxLu::kNoSpace) {
    g.wfact = WFACT_LUSPACE;
    g.lu.invalidate();
    return 4;
  }
  if (rc != SpxLu::kOk) {
    g.wfact = WFACT_BUPERR;
    g.lu.invalidate();
    return 1;
  }
  if (g.lu.eta_size() >= g.refacfrq) {
    g.wfact = WFACT_LUSPACE;
    return 4;
  }
  return 0;
}

int QZI_spx_bupdate(Glp& g) {
  for (int guard = 0; guard < 4; ++guard) {
    if (g.wfact == WFACT_NO && g.lu.valid()) return 0;
    if (g.wfact == WFACT_NO) g.wfact = WFACT_REFACT;
    const int rc = QZI_spx_refactor(g);
    if (rc == 0) return 0;
    if (rc == 2) return 2;
    if (rc != 1 && rc != 4) return 3;
  }
  return 3;
}

void ftran_col(Glp& g, int j, SVec& out, bool save) {
  out.clear();
  int c = 0;
  for (int k = g.acols.beg[j]; k < g.acols.beg[j + 1]; ++k) {
    const int i = g.acols.idx[k];
    out.val[i] = g.acols.val[k];
    out.idx[c++] = i;
  }
  out.n = c;
  g.lu.ftran(out, save);
}

double spx_cond1est(Glp& g) {
  if (g.cond1est_stale) qzi_get_basis_cond1est(g);
  return g.cond1est;
}

void qzi_get_basis_cond1est(Glp& g) {
  g.cond1est_stale = false;
  if (!g.lu.valid() || g.m == 0) {
    g.cond1est = g.m == 0 ? 1.0 : 1e29;
    return;
  }
  double bnorm = 0;
  for (int p = 0; p < g.m; ++p) {
    const int j = g.rbas[p];
    double s = 0;
    for (int k = g.acols.beg[j]; k < g.acols.beg[j + 1]; ++k) s += std::fabs(g.acols.val[k]);
    bnorm = std::max(bnorm, s);
  }
  // Hager's estimator of the 1-norm of the inverse.
  SVec& x = g.wvec2;
  x.clear();
  for (int i = 0; i < g.m; ++i) x.val[i] = 1.0 / g.m;
  x.n = -1;
  x.pack(0.0);
  double est = 0;
  std::vector<double> sgn(g.m);
  for (int it = 0; it < 5; ++it) {
    g.lu.ftran(x, false);
    double nrm = 0;
    for (int i = 0; i < g.m; ++i) {
      nrm += std::fabs(x.val[i]);
      sgn[i] = x.val[i] >= 0 ? 1.0 : -1.0;
    }
    if (it > 0 && nrm <= est) {
      est = std::max(est, nrm);
      break;
    }
    est = nrm;
    x.clear();
    for (int i = 0; i < g.m; ++i) x.val[i] = sgn[i];
    x.n = -1;
    x.pack(0.0);
    g.lu.btran(x);
    int jmax = 0;
    double zmax = -1;
    for (int i = 0; i < g.m; ++i)
      if (std::fabs(x.val[i]) > zmax) {
        zmax = std::fabs(x.val[i]);
        jmax = i;
      }
    x.set_unit(jmax, 1.0);
  }
  x.clear();
  g.cond1est = std::max(1.0, est * bnorm);
}

int qzi_check_condest(Glp& g) {
  if (!g.lu.fresh()) {
    g.wfact = WFACT_INIT;
    const int rc = QZI_spx_refactor(g);
    if (rc == 2) return 2;
    if (rc != 0) {
      if (spx_log_on(g, 1)) QZlogmod(g.model, 1, " (*unstable*)");
      QZI_spx_set_biden(g);
      g.reps = g.reps0;
      g.ceps = g.ceps0;
      g.cond1est = 1.0;
      g.wfact = WFACT_INIT;
      return 1;
    }
  }
  qzi_get_basis_cond1est(g);
  if (g.cond1est > 1e20 || (g.cond1est > 1e15 && g.cond2est > 1e15)) {
    if (spx_log_on(g, 1)) QZlogmod(g.model, 1, " (*unstable*)");
    QZI_spx_set_biden(g);
    g.reps = g.reps0;
    g.ceps = g.ceps0;
    g.cond1est = 1.0;
    g.wfact = WFACT_INIT;
    return 1;
  }
  double w = g.mkweps;
  if (g.cond1est > 1e10 && g.cond1est < 1e15) w = std::max(0.375, w);
  if (g.cond1est > 1e7 && g.cond1est < 1e10) w = std::max(0.1825, w);
  if (w >= 0.001 && w <= 0.9) g.mkweps = w;
  return 0;
}

}  // namespace zento
