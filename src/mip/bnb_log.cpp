// The iteration log of the search, the figures it publishes to the solution record, and the
// objective lattice that lifts node bounds to attainable objective values.
#include <algorithm>
#include <cmath>
#include <numeric>

#include "core/clock.h"
#include "mip/bnb.h"

namespace zento::mip {

const char* incumbent_tag(int code) {
  switch (code) {
    case 2: return "(*K)";
    case 3: return "(*SB)";
    case 4: return "(*SRH)";
    case 5: return "(*T)";
    case 6: return "(*C)";
    case 7: return "(*AH)";
    case 8: return "(*AB)";
    case 9: return "(*SE)";
    case 10: return "(*SBB)";
    case 11: return "(*AHI)";
    case 12: return "(*FP)";
    case 13: return "(*USER)";
    default: return "(*)";
  }
}

void bnb_publish(BnbRecord& b) {
  MipSol& ms = *b.model->mipsol;
  ms.nodes = b.n_branches;
  ms.lpCount = b.n_lps;
  ms.activeNodes = b.n_active;
  ms.spxIter = b.spx_iters;
  const double shown = std::min(b.global_bound, b.max_global_bound);
  ms.bestBound = b.obj_sign * shown;
  ms.totTime = lt_get_realtime() - b.t_start;
  const double g = bnb_gap_rel(b);
  ms.bestRelGap = g;
  ms.newIpSol = b.n_solutions;
  b.model->run.live.valid = true;
  b.model->run.live.pobj = b.has_incumbent ? b.best_obj : b.obj_sign * kInf;
  b.model->run.live.dobj = ms.bestBound;
  b.model->run.live.spxIter = b.spx_iters;
}

void print_banner(BnbRecord& b, int mode, int code) {
  bnb_publish(b);
  if (b.print_level <= 0 || !b.model->cb.logFunc) return;
  Imodel* m = b.model;
  const bool wide = b.print_level >= 5;
  if (b.log_lines % 25 == 0) {
    if (wide) {
      QZlogmod(m, 1, "\n\n#BRANCHs  #NODEs    #LPs    BEST BOUND      BEST  IP     RGAP  ITER/NODE  #FRAC  TIME  OPTIME\n");
      QZlogmod(m, 1, "(CUTPASS) (NUMCUT)            (SUMFP)                                                  (CODE)\n");
    } else {
      QZlogmod(m, 1, "\n\n#BRANCHs  #NODEs    #LPs    BEST BOUND      BEST  IP     RGAP    TIME  OPTIME\n");
      QZlogmod(m, 1, "(CUTPASS) (NUMCUT)            (SUMFP)                                   (CODE)\n");
    }
  }
  ++b.log_lines;
  const double mul = m->SolverPam.objprintmul;
  const double shown = std::min(b.global_bound, b.max_global_bound);
  const double bound = b.obj_sign * shown * mul;
  const double t = lt_get_realtime() - b.t_start;
  const unsigned br = static_cast<unsigned>(b.n_branches);
  const unsigned nodes = static_cast<unsigned>(std::max(0, b.n_active));
  const unsigned lps = static_cast<unsigned>(b.n_lps);
  const bool first = b.log_lines == 1;
  const char* tag = mode == 1 ? incumbent_tag(code)
                    : (first && b.has_incumbent && b.incumbent_code == kStartPointCode) ? "(*H)"
                                                                                        : "";
  std::string note;
  if (b.has_incumbent && b.aopt_time >= 0 && t < b.aopt_time) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "(%.2fopt)", b.aopt_time - t);
    note = buf;
  }
  if (!b.has_incumbent) {
    QZlogmod(m, 1, "\n %8u %6u %8u  % e                         %.2f  %.2f %s", br, nodes, lps, bound,
             t, b.t_in_lp, tag);
    return;
  }
  const double gap = std::min(bnb_gap_rel(b), 9.9e99);
  if (wide) {
    char ipn[16] = "      ", frac[16] = "    ";
    if (b.n_lps > 0) std::snprintf(ipn, sizeof ipn, "%6.2f", b.spx_iters / b.n_lps);
    if (b.last_nf >= 0) std::snprintf(frac, sizeof frac, "%4d", b.last_nf);
    QZlogmod(m, 1, "\n %8u %6u %8u  % e  % e %2.1e  %s  %s  %.2f  %.2f %s %s", br, nodes, lps, bound,
             b.best_obj * mul, gap, ipn, frac, t, b.t_in_lp, tag, note.c_str());
  } else {
    QZlogmod(m, 1, "\n %8u %6u %8u  % e  % e %2.1e  %.2f  %.2f %s %s", br, nodes, lps, bound,
             b.best_obj * mul, gap, t, b.t_in_lp, tag, note.c_str());
  }
}

namespace {

// Greatest common divisor of positive magnitudes that are multiples of 10^-p for a p up to 5;
// 0 when none is.
double real_gcd(const std::vector<double>& mags) {
  if (mags.empty()) return 0;
  double mx = 0;
  for (double v : mags) mx = std::max(mx, v);
  for (int p = 0; p <= 5; ++p) {
    const double s = std::pow(10.0, p);
    if (mx * s > 1e15) break;
    bool ok = true;
    long long g = 0;
    for (double v : mags) {
      const double w = v * s;
      const double r = std::round(w);
      if (std::fabs(w - r) > 1e-7 * std::max(1.0, w)) {
        ok = false;
        break;
      }
      g = std::gcd(g, static_cast<long long>(r));
    }
    if (ok && g > 0) return static_cast<double>(g) / s;
  }
  return 0;
}

}  // namespace

void bnb_init_objective_lattice(BnbRecord& b) {
  b.obj_gcd = b.obj_step = 0;
  const LinearData& d = b.model->lp;
  double base = d.dObjConst;
  std::vector<double> mags;
  for (int j = 0; j < b.n_vars; ++j) {
    const double c = d.padC[static_cast<size_t>(j)];
    if (std::fabs(c) <= b.zero_tol) continue;
    const int k = b.ip.col2int[static_cast<size_t>(j)];
    const double l = k >= 0 ? int_eff_lb(b, k) : d.padL[static_cast<size_t>(j)];
    const double u = k >= 0 ? int_eff_ub(b, k) : d.padU[static_cast<size_t>(j)];
    if (l == u) {
      base += c * l;
      continue;
    }
    if (k < 0) return;  // a continuous column with a cost: no lattice
    mags.push_back(std::fabs(c));
  }
  b.obj_const = b.obj_sign * base;
  const double g = real_gcd(mags);
  if (g <= 0) return;
  b.obj_gcd = g;
  const double t = std::max(b.int_tol, 0.001);
  b.obj_step = std::max(0.0, g >= 100 ? g * (1 - t) : g - t);
}

}  // namespace zento::mip
