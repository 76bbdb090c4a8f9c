// What a host may ask from inside its callbacks: live figures of the running solver, model
// generation and presolve progress, and the current best across solvers.
#include "core/callbacks.h"
#include "core/clock.h"
#include "core/info.h"

namespace zento {

namespace {

constexpr int kNotAvailable = QZERR_INFO_NOT_AVAILABLE;

bool is_gen_key(int key) { return key >= QZ_DINFO_GEN_PERCENT && key <= QZ_IINFO_GEN_VAR_NL; }
bool is_presolve_key(int key) {
  return key >= QZ_IINFO_PRE_NUM_RED_ROWS && key <= QZ_DINFO_PRE_ELAPSED;
}
bool is_cur_key(int key) { return key >= QZ_DINFO_SUB_OBJ && key <= QZ_DINFO_CUR_TIME; }

// Locations where a continuous solver or the search around it reports.
bool solver_location(int loc) { return (loc >= 0 && loc <= 6) || loc == 13 || loc == 14; }

// Solution keys that a running solver keeps current in its live figures.
bool live_value(const LiveFigures& f, int key, InfoValue& v) {
  switch (key) {
    case QZ_DINFO_POBJ: v.num = f.pobj; return true;
    case QZ_DINFO_DOBJ: v.num = f.dobj; return true;
    case QZ_DINFO_PINFEAS: v.num = f.pinf; return true;
    case QZ_DINFO_DINFEAS: v.num = f.dinf; return true;
    case QZ_IINFO_SIM_ITER: v.num = f.spxIter; return true;
    case QZ_IINFO_BAR_ITER: v.num = f.barIter; return true;
    case QZ_IINFO_NLP_ITER: v.num = f.nlpIter; return true;
    case QZ_IINFO_MODEL_STATUS: v.num = f.status; return true;
    default: return false;
  }
}

// Iteration counts that grow with the subsolve an outer search runs now.
double sub_iterations(const RunState& r, int key) {
  switch (key) {
    case QZ_IINFO_GOP_SIM_ITER:
    case QZ_DINFO_GOP_SIM_ITER: return r.subSpxIter;
    case QZ_IINFO_GOP_BAR_ITER:
    case QZ_DINFO_GOP_BAR_ITER: return r.subBarIter;
    case QZ_IINFO_GOP_NLP_ITER:
    case QZ_DINFO_GOP_NLP_ITER: return r.subNlpIter;
    case QZ_IINFO_CUR_ITER:
    case QZ_DINFO_CUR_ITER: return r.subSpxIter + r.subBarIter + r.subNlpIter;
    default: return 0;
  }
}

int finish(int key, int rc, const InfoValue& v, void* pvResult) {
  return rc != 0 ? rc : put_info(key, v, pvResult);
}

}  // namespace

int get_callback_info(Imodel* m, int nLocation, int key, void* pvResult) {
  if (m == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (pvResult == nullptr) return 0;
  if (nLocation < 0 || key_type(key) == KeyType::kUnknown) return kNotAvailable;
  if (nLocation >= QZLOC_OBJPOOL) return get_info(m, key, pvResult);
  if (nLocation >= QZLOC_GEN_START && nLocation <= QZLOC_GEN_END && !is_gen_key(key))
    return kNotAvailable;
  if (nLocation == QZLOC_PRESOLVE && !(is_presolve_key(key) && m->run.pre.active))
    return kNotAvailable;
  if (m->callLevel < 0) return kNotAvailable;
  InfoValue v;
  if (solver_location(nLocation) && m->run.live.valid && live_value(m->run.live, key, v))
    return put_info(key, v, pvResult);
  int rc = read_info(*m, key, v);
  if (rc == 0) v.num += sub_iterations(m->run, key);
  return finish(key, rc, v, pvResult);
}

int get_mip_callback_info(Imodel* m, int key, void* pvResult) {
  if (m == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (pvResult == nullptr) return 0;
  if (key != QZ_DINFO_PINFEAS && (key < 11300 || key >= 11400)) return kNotAvailable;
  return get_info(m, key, pvResult);
}

int get_quickback_info(Imodel* m, int nLocation, int key, void* pvResult) {
  if (m == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (!is_cur_key(key)) return get_callback_info(m, nLocation, key, pvResult);
  if (pvResult == nullptr) return 0;
  const RunState& r = m->run;
  switch (r.what) {
    case RunClass::kNone: return get_final_info(m, key, pvResult);
    case RunClass::kSp:
    case RunClass::kIis:
    case RunClass::kIus: return kNotAvailable;  // those solvers report through their records
    case RunClass::kMip:
    case RunClass::kGop: {
      InfoValue v;
      const int rc = read_final_info(*m, key, v);
      if (rc == 0) v.num += sub_iterations(r, key);
      return finish(key, rc, v, pvResult);
    }
    case RunClass::kContinuous: break;
  }
  if (m->callLevel < 0) return kNotAvailable;
  InfoValue v;
  if (!r.live.valid) {
    const int rc = read_final_info(*m, key, v);
    if (rc == 0 && key == QZ_DINFO_CUR_TIME) v.num = lt_get_realtime() - r.startWall;
    return finish(key, rc, v, pvResult);
  }
  const LiveFigures& f = r.live;
  const double obj = nLocation == QZLOC_DUAL ? f.dobj : f.pobj;
  switch (key) {
    case QZ_DINFO_SUB_OBJ:
    case QZ_DINFO_CUR_OBJ:
    case QZ_DINFO_CUR_BEST_BOUND: v.num = obj; break;
    case QZ_DINFO_SUB_PINF: v.num = f.pinf; break;
    case QZ_IINFO_CUR_ITER:
    case QZ_DINFO_CUR_ITER: v.num = f.spxIter + f.barIter + f.nlpIter; break;
    case QZ_IINFO_CUR_STATUS: v.num = f.status; break;
    case QZ_DINFO_CUR_TIME: v.num = lt_get_realtime() - r.startWall; break;
    default: {
      const int rc = read_final_info(*m, key, v);
      return finish(key, rc, v, pvResult);
    }
  }
  return put_info(key, v, pvResult);
}

}  // namespace zento
