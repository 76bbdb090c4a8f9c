// Progress callbacks and the checkpoint `timelapsed`.
#include "core/callbacks.h"

#include <climits>
#include <cmath>

#include "core/clock.h"
#include "core/info_profiler.h"
#include "core/log.h"

namespace zento {

namespace {

// Host functions run at the call level a solver set, so that they may read results.
struct CallLevelScope {
  Imodel& m;
  int saved;
  explicit CallLevelScope(Imodel& model) : m(model), saved(model.callLevel) {
    m.callLevel = m.callLevelSaved;
  }
  ~CallLevelScope() { m.callLevel = saved; }
};

// Steps of the progress report proper: host slot, then the internal slot of the model or of
// its parent. The exit report of a node model is left to the search that owns it.
int call_progress(Imodel& m, int nLocation, double now) {
  if (nLocation == QZLOC_EXIT_SOLVER && m.SplexPam.in_mip) return 0;
  Imodel* owner = m.cb.internalProgress ? &m : m.parentModel;
  const bool internal = owner != nullptr && owner->cb.internalProgress != nullptr;
  if (m.cb.progress == nullptr && !internal) return 0;
  int r = 0;
  {
    CallLevelScope level(m);
    if (m.cb.progress) r = m.cb.progress(&m, nLocation, m.cb.progressData);
    if (internal) owner->cb.internalProgress(owner, nLocation, owner->cb.internalProgressData);
  }
  m.lastCallbackWall = now;
  return r;
}

// A point the host offers is taken only when it is a solution: finite, integral within the
// integer tolerance, inside the bounds and the rows (linear and quadratic parts) within the
// feasibility tolerance.
bool offered_point_ok(const Imodel& m, const double* x, std::vector<double>& activity) {
  const LinearData& lp = m.lp;
  const double inttol = m.BandBPam.mip_inttol;
  const double feastol = std::max(m.SplexPam.solver_feastol, 1e-6);
  for (int j = 0; j < m.nVars; ++j) {
    if (!std::isfinite(x[j])) return false;
    if (!lp.pszVarTypes.empty()) {
      const char t = lp.pszVarTypes[static_cast<size_t>(j)];
      if ((t == 'B' || t == 'I') && std::fabs(x[j] - std::nearbyint(x[j])) > inttol) return false;
    }
    if (x[j] < lp.padL[static_cast<size_t>(j)] - feastol * (1 + std::fabs(lp.padL[j])) ||
        x[j] > lp.padU[static_cast<size_t>(j)] + feastol * (1 + std::fabs(lp.padU[j])))
      return false;
  }
  activity.assign(static_cast<size_t>(m.nCons), 0.0);
  for (int j = 0; j < m.nVars; ++j)
    for (int k = lp.paiAcols[j]; k < lp.paiAcols[j] + lp.panAcols[j]; ++k)
      activity[static_cast<size_t>(lp.paiArows[k])] += lp.padAcoef[k] * x[j];
  const QuadData& q = m.quad;
  for (int g = 0; g < q.groups(); ++g) {
    const int row = q.row[static_cast<size_t>(g)];
    if (row < 0) continue;
    for (int t = q.beg[g]; t < q.beg[g + 1]; ++t) {
      const double f = q.col1[t] == q.col2[t] ? 0.5 : 1.0;
      activity[static_cast<size_t>(row)] += f * q.coef[t] * x[q.col1[t]] * x[q.col2[t]];
    }
  }
  for (int i = 0; i < m.nCons; ++i) {
    const double b = lp.padB[static_cast<size_t>(i)], a = activity[static_cast<size_t>(i)];
    const double tol = feastol * (1 + std::fabs(b));
    switch (lp.pszConTypes[static_cast<size_t>(i)]) {
      case 'L': if (a > b + tol) return false; break;
      case 'G': if (a < b - tol) return false; break;
      case 'E': if (std::fabs(a - b) > tol) return false; break;
      default: break;
    }
  }
  return true;
}

// The MIP objective and solution callbacks of a checkpoint of the search.
void offer_mip_callbacks(Imodel& m) {
  if ((m.cb.mipObjFunc == nullptr && m.cb.mipSolFunc == nullptr) || !m.mipsol) return;
  MipSol& ms = *m.mipsol;
  const double sense = m.lp.dObjSense;
  const double value = ms.MIPstatus == QZ_STATUS_FEASIBLE ? sense * ms.obj : 1e30;
  if (m.cb.mipObjFunc) {
    double obj = value, bound = sense * ms.bestBound;
    int rc;
    {
      CallLevelScope level(m);
      rc = m.cb.mipObjFunc(&m, m.cb.mipObjData, &obj, &bound);
    }
    if (rc != 0 && std::isfinite(obj) && sense * obj < value) {
      ms.hasPending = true;
      ms.pendingObj = obj;
      ms.pendingBound = bound;
    }
  }
  if (m.cb.mipSolFunc) {
    ms.offerBuffer.resize(static_cast<size_t>(m.nVars), 0.0);
    int rc;
    {
      CallLevelScope level(m);
      rc = m.cb.mipSolFunc(&m, m.cb.mipSolData, value, ms.offerBuffer.data());
    }
    if (rc == 0) return;
    std::vector<double> activity;
    if (!offered_point_ok(m, ms.offerBuffer.data(), activity)) return;
    const double obj = QZcalObjective(m, ms.offerBuffer.data());
    if (!(sense * obj < value)) return;
    ms.primal = ms.offerBuffer;
    ms.slack.resize(static_cast<size_t>(m.nCons));
    for (int i = 0; i < m.nCons; ++i)
      ms.slack[static_cast<size_t>(i)] = m.lp.padB[static_cast<size_t>(i)] - activity[static_cast<size_t>(i)];
    ms.obj = obj;
    ms.MIPstatus = QZ_STATUS_FEASIBLE;
    ++ms.nSolutions;
  }
}

}  // namespace

double QZcalObjective(const Imodel& m, const double* x) {
  double obj = m.lp.dObjConst;
  for (int j = 0; j < m.nVars; ++j) obj += m.lp.padC[static_cast<size_t>(j)] * x[j];
  // Objective terms are stored once per pair with col1 <= col2 and mean 0.5 x'Qx.
  const QuadData& q = m.quad;
  for (int g = 0; g < q.groups(); ++g) {
    if (q.row[static_cast<size_t>(g)] != -1) continue;
    for (int t = q.beg[g]; t < q.beg[g + 1]; ++t) {
      const double f = q.col1[t] == q.col2[t] ? 0.5 : 1.0;
      obj += f * q.coef[t] * x[q.col1[t]] * x[q.col2[t]];
    }
  }
  return obj;
}

int timelapsed(double dTimeLimit, Imodel* model, double tStart, int nLocation, int nForce) {
  const double now = lt_get_realtime();
  const int stop = dTimeLimit >= 0 && now - tStart >= dTimeLimit ? 1 : 0;
  if (model == nullptr) return stop;
  Imodel& m = *model;
  const double freq = m.SolverPam.callbackfreq;
  int r = 0;
  if (freq >= 0 || nForce != 0) {
    if (nForce != 0 || now - m.lastCallbackWall >= freq) r = call_progress(m, nLocation, now);
    if (nLocation == QZLOC_MIP) offer_mip_callbacks(m);
  }
  if (r != 0) return r < 0 ? r : -r;
  if (stop == 0 && m.SolverPam.allow_cntrlbreak && ctrlc_pending()) return -1;
  return stop;
}

int bnb_timelapsed(double dTimeLimit, Imodel* model, double tStart, int nLocation, int nForce) {
  if (model != nullptr && model->run.stopLatched) return -1;
  const int r = timelapsed(dTimeLimit, model, tStart, nLocation, nForce);
  if (r < 0 && model != nullptr) model->run.stopLatched = true;
  return r;
}

int bnp_timelapsed(double dTimeLimit, Imodel* model, double tStart, int nLocation, int nForce) {
  return bnb_timelapsed(dTimeLimit, model, tStart, nLocation, nForce);
}

int run_progress_callback(Imodel& m, int nLocation, bool force) {
  const double now = lt_get_realtime();
  const double freq = m.SolverPam.callbackfreq;
  int r = 0;
  if (force || (freq >= 0 && now - m.lastCallbackWall >= freq)) r = call_progress(m, nLocation, now);
  if (r != 0) return r;
  return m.SolverPam.allow_cntrlbreak && ctrlc_pending() ? -1 : 0;
}

void run_mip_incumbent_callback(Imodel& m, double dObj, const double* padPrimal) {
  if (m.cb.mipFunc == nullptr) return;
  CallLevelScope level(m);
  m.cb.mipFunc(&m, m.cb.mipData, dObj, const_cast<double*>(padPrimal));
}

void run_gop_incumbent_callback(Imodel& m, double dObj, const double* padPrimal) {
  if (m.cb.gopFunc == nullptr) return;
  CallLevelScope level(m);
  m.cb.gopFunc(&m, m.cb.gopData, dObj, const_cast<double*>(padPrimal));
}

SolveScope::SolveScope(Imodel& m, RunClass what) : m_(m) {
  if (is_nested(m) || m.run.depth > 0) return;
  top_ = true;
  m.run.depth = 1;
  m.run.what = what;
  m.run.startWall = lt_get_realtime();
  m.run.stopLatched = false;
  m.run.live = LiveFigures{};
  m.run.subSpxIter = m.run.subBarIter = m.run.subNlpIter = 0;
  savedCallLevel_ = m.callLevelSaved;
  if (m.callLevelSaved == 0) m.callLevelSaved = 1;
  if (m.SolverPam.allow_cntrlbreak) {
    interrupt_scope_enter();
    interrupts_ = true;
  }
  if (QZIprofWanted(m)) QZIprofNew(m);
}

SolveScope::~SolveScope() {
  if (!top_) return;
  if (m_.prof) QZIprofReport(m_);
  if (interrupts_) interrupt_scope_leave();
  m_.callLevelSaved = savedCallLevel_;
  m_.run.depth = 0;
  m_.run.what = RunClass::kNone;
  m_.run.live.valid = false;
  m_.run.gen.active = false;
  m_.run.pre.active = false;
}

}  // namespace zento
