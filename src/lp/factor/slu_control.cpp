// SLU outer stability loop, threshold ladder, refactorization requests and trace lines.
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <new>

#include "lp/factor/slu.h"
#include "zento_errors.h"

namespace zento::lu {

namespace {
constexpr double kPivTol[] = {0.01, 0.1, 0.25, 0.35, 0.5, 0.7};

void trace(const LuOptions& o, const char* fmt, ...) __attribute__((format(printf, 2, 3)));
void trace(const LuOptions& o, const char* fmt, ...) {
  if (o.print_level <= 0 || !o.log) return;
  char buf[512];
  va_list ap;
  va_start(ap, fmt);
  std::vsnprintf(buf, sizeof buf, fmt, ap);
  va_end(ap);
  o.log(o.log_user, buf);
}
}  // namespace

std::unique_ptr<LuEngine> make_slu(int m, LuOptions* opt, LuColumnFn datacol, void* host) {
  return std::make_unique<Slu>(m, opt, datacol, host);
}

double next_pivot_threshold(double cur, bool stepped) {
  if (stepped) {
    if (cur < 0.1) return cur * 10.0;
    if (cur < 0.9) return (cur + 1.0) / 2.0;
    if (cur < 0.999) return 0.99999;
    return cur;
  }
  for (double t : kPivTol)
    if (t > cur) return t;
  return std::min(0.999, (kPivTol[5] + 1.0) / 2.0) > cur ? std::min(0.999, (kPivTol[5] + 1.0) / 2.0)
                                                         : cur;
}

void Slu::set_eps_pivrel(double v) {
  eps_pivrel_ = v;
  eps_pivcur_ = std::max(v, eps_pivcur_);
}

void Slu::options_changed() {
  if (opt_->eps_pivrel != eps_pivrel_) set_eps_pivrel(opt_->eps_pivrel);
}

int Slu::factor(const int* rbas) {
  if (m_ == 0) {
    stat_ = kLuNotFactored;
    return stat_;
  }
  const bool stepped = (opt_->mode & 4) != 0;
  const double prev_rcond = rcond_;
  min_rcond_ = opt_->ini_rcond;
  trace(*opt_, "\nLI: i:%06d, min_rcond:%e, rcond_est:%e, eps_pivcur:%e, eps_pivrel:%e", tot,
        min_rcond_, prev_rcond, eps_pivcur_, eps_pivrel_);
  if (stepped && 2.0 * min_rcond_ < prev_rcond) {
    double e = eps_pivrel_;
    while (e < eps_pivcur_) {
      const double nx = next_pivot_threshold(e, true);
      if (nx == e) break;
      e = nx;
    }
    eps_pivcur_ = e;
    min_rcond_ *= 2.0;
  }
  trace(*opt_,
        "\nL0: i:%06d, min_rcond:%e, rcond_est:%e, eps_pivcur:%e, eps_pivrel:%e, tot:%d, ok:%d, "
        "stab:%d",
        tot, min_rcond_, prev_rcond, eps_pivcur_, eps_pivrel_, tot, ok, stab);
  ++tot;
  for (int pass = 1;; ++pass) {
    int st;
    try {
      st = refactor(rbas);
    } catch (const std::bad_alloc&) {
      st = kLuNoMemory;
    }
    if (st < 0) {  // bad column data from the host
      stat_ = kLuNotFactored;
      return st;
    }
    stat_ = st;
    if (st == kLuOk)
      rcond_ = umax_ > min_piv_ ? min_piv_ / umax_ : 1.0;
    else
      rcond_ = 0.0;
    trace(*opt_,
          "\nL%d: i:%06d, min_rcond:%e, rcond_est:%e, eps_pivcur:%e, eps_pivrel:%e, umax:%e, "
          "rank:%d, stat:%d, cond{4,1}=%g,%e",
          pass, tot, min_rcond_, rcond_, eps_pivcur_, eps_pivrel_, umax_, rank_, stat_,
          bmax_ > 0 ? umax_ / bmax_ : 0.0, max_piv_ > 0 && min_piv_ > 0 ? max_piv_ / min_piv_ : 0.0);
    if (st == kLuNoMemory) return st;
    if (st == kLuSingular) {
      trace(*opt_, "\nL%d: i:%06d, min_rcond:%e, rcond_est:%e, eps_pivcur:%e, eps_pivrel:%e (END)",
            pass, tot, min_rcond_, rcond_, eps_pivcur_, eps_pivrel_);
      break;
    }
    if (rcond_ >= min_rcond_) {
      ++stab;
      trace(*opt_, "\nL%d: i:%06d, min_rcond:%e, rcond_est:%e, eps_pivcur:%e, eps_pivrel:%e (OK)",
            pass, tot, min_rcond_, rcond_, eps_pivcur_, eps_pivrel_);
      break;
    }
    const double nx = next_pivot_threshold(eps_pivcur_, stepped);
    if (nx == eps_pivcur_) {
      trace(*opt_, "\nL%d: i:%06d, min_rcond:%e, rcond_est:%e, eps_pivcur:%e, eps_pivrel:%e (END)",
            pass, tot, min_rcond_, rcond_, eps_pivcur_, eps_pivrel_);
      break;
    }
    eps_pivrel_ = eps_pivcur_ = nx;
    opt_->eps_pivrel = nx;
    if (stepped)
      while (min_rcond_ > opt_->ini_rcond) min_rcond_ /= 2.0;
    if (min_rcond_ < 1e-8) {
      if (opt_->log) opt_->log(opt_->log_user, " WARNING: min_rcond too small");
      min_rcond_ = 1e-8;
    }
    trace(*opt_, "\nL%d: i:%06d, min_rcond:%e, rcond_est:%e, eps_pivcur:%e, eps_pivrel:%e (LOOP)",
          pass, tot, min_rcond_, rcond_, eps_pivcur_, eps_pivrel_);
  }
  if (stat_ == kLuOk) {
    ++ok;
    nupdates_ = 0;
  }
  return stat_;
}

int Slu::wfact(int min_frequency) const {
  const int e = nupdates_;
  if (e >= opt_->max_updates) return kWfactRefact;
  if (e > 2 * min_frequency && e >= std::pow(static_cast<double>(m_), 0.45)) {
    const double d = static_cast<double>(lnonz() + unonz()) - 1.5 * m_;
    const double s = static_cast<double>(pnonz());
    if (2.0 * m_ * s - d * d > 0.0) return kWfactDenseta;
  }
  return kWfactNo;
}

int Slu::npcand() const {
  const int64_t p = pnonz();
  if (p == 0 || nupdates_ == 0) return 10;
  return std::max<int>(10, static_cast<int>(0.5 * static_cast<double>(p) / nupdates_));
}

}  // namespace zento::lu
