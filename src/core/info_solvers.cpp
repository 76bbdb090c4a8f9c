// QZgetInfo for the mixed-integer and global records, and the final-information keys that
// read whichever solver ran last.
#include "core/info.h"
#include "core/optimize.h"

namespace zento {

namespace {

constexpr int kNotAvailable = QZERR_INFO_NOT_AVAILABLE;

int put(InfoValue& v, double x) {
  v.num = x;
  return 0;
}

// During concurrent runs the record points to a better one, which is the answer.
const MipSol& best_mip(const MipSol& ms) { return ms.better ? *ms.better : ms; }

int mip_status(const MipSol& ms) {
  if (ms.overrideStatus != 0) return ms.overrideStatus;
  return ms.MIPstatus != QZ_STATUS_FEASIBLE && ms.nSolutions > 1 ? QZ_STATUS_FEASIBLE
                                                                 : ms.MIPstatus;
}

// An incumbent objective means something only when the search holds a solution.
bool mip_has_solution(const MipSol& ms) {
  const int s = ms.MIPstatus;
  return s == QZ_STATUS_OPTIMAL || s == QZ_STATUS_BASIC_OPTIMAL || s == QZ_STATUS_FEASIBLE ||
         s == QZ_STATUS_LOCAL_OPTIMAL || ms.nSolutions > 1;
}

}  // namespace

int read_mip_key(Imodel& m, int key, InfoValue& v) {
  if (!m.mipsol) return kNotAvailable;
  const MipSol& ms = best_mip(*m.mipsol);
  if (key >= QZ_IINFO_MIP_NUM_TOTAL_CUTS && key <= QZ_IINFO_MIP_CONTRA_CUTS)
    return put(v, ms.cuts[key - QZ_IINFO_MIP_NUM_TOTAL_CUTS]);
  if (key >= QZ_IINFO_MIP_GUB_CONS && key <= QZ_IINFO_MIP_CONT_CONS)
    return put(v, ms.consFound[key - QZ_IINFO_MIP_GUB_CONS]);
  switch (key) {
    case QZ_IINFO_MIP_STATUS: return put(v, mip_status(ms));
    case QZ_DINFO_MIP_OBJ: return mip_has_solution(ms) ? put(v, ms.obj) : kNotAvailable;
    case QZ_DINFO_MIP_PFEAS: return mip_has_solution(ms) ? put(v, ms.pfeas) : kNotAvailable;
    case QZ_DINFO_MIP_INTPFEAS: return mip_has_solution(ms) ? put(v, ms.intpfeas) : kNotAvailable;
    case QZ_DINFO_MIP_BESTBOUND: return put(v, ms.bestBound);
    case QZ_IINFO_MIP_SIM_ITER: return put(v, ms.spxIter);
    case QZ_IINFO_MIP_BAR_ITER: return put(v, ms.barIter);
    case QZ_IINFO_MIP_NLP_ITER: return put(v, ms.nlpIter);
    case QZ_IINFO_MIP_BRANCHCOUNT: return put(v, ms.nodes);
    case QZ_IINFO_MIP_NEWIPSOL: return put(v, ms.newIpSol);
    case QZ_IINFO_MIP_LPCOUNT: return put(v, ms.lpCount);
    case QZ_IINFO_MIP_ACTIVENODES: return put(v, ms.activeNodes);
    case QZ_IINFO_MIP_LTYPE: return put(v, ms.ltype);
    case QZ_IINFO_MIP_AOPTTIMETOSTOP: return put(v, ms.aoptTimeToStop);
    case QZ_DINFO_MIP_TOT_TIME: return put(v, ms.totTime);
    case QZ_DINFO_MIP_OPT_TIME: return put(v, ms.optTime);
    case QZ_DINFO_MIP_HEU_TIME: return put(v, ms.heuTime);
    case QZ_IINFO_MIP_SOLSTATUS_LAST_BRANCH: return put(v, ms.lastBranchStatus);
    case QZ_DINFO_MIP_SOLOBJVAL_LAST_BRANCH: return put(v, ms.lastBranchObj);
    case QZ_IINFO_MIP_HEU_LEVEL: return put(v, ms.heuLevel);
    case QZ_IINFO_MIP_THREADS: return put(v, ms.threads);
    case QZ_SINFO_MIP_THREAD_LOAD: v.str = ms.threadLoad; return 0;
    case QZ_IINFO_MIP_STRATEGY_MASK: return put(v, ms.strategyMask);
    default: return kNotAvailable;
  }
}

int read_gop_key(Imodel& m, int key, InfoValue& v) {
  if (!m.gopsol) return kNotAvailable;
  const GopSol& g = *m.gopsol;
  switch (key) {
    case QZ_DINFO_GOP_OBJ: return put(v, g.obj);
    case QZ_IINFO_GOP_SIM_ITER:
    case QZ_DINFO_GOP_SIM_ITER: return put(v, g.spxIter);
    case QZ_IINFO_GOP_BAR_ITER:
    case QZ_DINFO_GOP_BAR_ITER: return put(v, g.barIter);
    case QZ_IINFO_GOP_NLP_ITER:
    case QZ_DINFO_GOP_NLP_ITER: return put(v, g.nlpIter);
    case QZ_DINFO_GOP_BESTBOUND: return put(v, g.bestBound);
    case QZ_IINFO_GOP_STATUS: return put(v, g.GOPstatus);
    case QZ_IINFO_GOP_LPCOUNT:
    case QZ_DINFO_GOP_LPCOUNT: return put(v, g.lpCount);
    case QZ_IINFO_GOP_NLPCOUNT:
    case QZ_DINFO_GOP_NLPCOUNT: return put(v, g.nlpCount);
    case QZ_IINFO_GOP_MIPCOUNT:
    case QZ_DINFO_GOP_MIPCOUNT: return put(v, g.mipCount);
    case QZ_IINFO_GOP_NEWSOL: return put(v, g.newSol);
    case QZ_IINFO_GOP_BOX: return put(v, g.boxes);
    case QZ_IINFO_GOP_BBITER:
    case QZ_DINFO_GOP_BBITER: return put(v, g.bbIter);
    case QZ_IINFO_GOP_SUBITER:
    case QZ_DINFO_GOP_SUBITER: return put(v, g.subIter);
    case QZ_IINFO_GOP_MIPBRANCH:
    case QZ_DINFO_GOP_MIPBRANCH: return put(v, g.mipBranch);
    case QZ_IINFO_GOP_ACTIVEBOXES: return put(v, g.activeBoxes);
    case QZ_IINFO_GOP_TOT_TIME: return put(v, g.elapsed);
    case QZ_IINFO_GOP_MAXDEPTH: return put(v, g.maxDepth);
    case QZ_DINFO_GOP_FIRST_TIME: return put(v, g.firstTime);
    case QZ_DINFO_GOP_BEST_TIME: return put(v, g.bestTime);
    case QZ_IINFO_GOP_THREADS: return put(v, g.threads);
    case QZ_SINFO_GOP_THREAD_LOAD: v.str = g.threadLoad; return 0;
    default: return kNotAvailable;
  }
}

int read_final_info(Imodel& m, int key, InfoValue& v) {
  if (m.callLevel < 0) return kNotAvailable;
  if (m.gopsol) {
    const GopSol& g = *m.gopsol;
    switch (key) {
      case QZ_DINFO_SUB_OBJ:
      case QZ_DINFO_CUR_OBJ: return put(v, g.obj);
      case QZ_DINFO_SUB_PINF: return kNotAvailable;
      case QZ_IINFO_CUR_ITER:
      case QZ_DINFO_CUR_ITER: return put(v, g.spxIter + g.barIter + g.nlpIter);
      case QZ_DINFO_CUR_BEST_BOUND: return put(v, g.bestBound);
      case QZ_IINFO_CUR_STATUS: return put(v, g.GOPstatus);
      case QZ_IINFO_CUR_LP_COUNT: return put(v, g.lpCount);
      case QZ_IINFO_CUR_BRANCH_COUNT: return put(v, g.mipBranch);
      case QZ_IINFO_CUR_ACTIVE_COUNT: return put(v, g.activeBoxes);
      case QZ_IINFO_CUR_NLP_COUNT: return put(v, g.nlpCount);
      case QZ_IINFO_CUR_MIP_COUNT: return put(v, g.mipCount);
      case QZ_IINFO_CUR_CUT_COUNT: return put(v, 0);
      case QZ_DINFO_CUR_TIME: return put(v, g.elapsed);
      default: return kNotAvailable;
    }
  }
  if (m.mipsol) {
    const MipSol& ms = best_mip(*m.mipsol);
    const bool sol = mip_has_solution(ms);
    switch (key) {
      case QZ_DINFO_SUB_OBJ:
      case QZ_DINFO_CUR_OBJ: return sol ? put(v, ms.obj) : kNotAvailable;
      case QZ_DINFO_SUB_PINF: return sol ? put(v, ms.pfeas) : kNotAvailable;
      case QZ_IINFO_CUR_ITER:
      case QZ_DINFO_CUR_ITER: return put(v, ms.spxIter + ms.barIter + ms.nlpIter);
      case QZ_DINFO_CUR_BEST_BOUND: return put(v, ms.bestBound);
      case QZ_IINFO_CUR_STATUS: return put(v, mip_status(ms));
      case QZ_IINFO_CUR_LP_COUNT: return put(v, ms.lpCount);
      case QZ_IINFO_CUR_BRANCH_COUNT: return put(v, ms.nodes);
      case QZ_IINFO_CUR_ACTIVE_COUNT: return put(v, ms.activeNodes);
      case QZ_IINFO_CUR_NLP_COUNT: return put(v, ms.nlpCount);
      case QZ_IINFO_CUR_MIP_COUNT: return put(v, 1);
      case QZ_IINFO_CUR_CUT_COUNT: return put(v, ms.cuts[0]);
      case QZ_DINFO_CUR_TIME: return put(v, ms.totTime);
      default: return kNotAvailable;
    }
  }
  if (!m.sol) return kNotAvailable;
  const Sol& s = *m.sol;
  // One continuous solve: an LP or an NLP once a solver recorded a method.
  const bool solved = s.method != 0;
  const bool linear = is_linear(m);
  switch (key) {
    case QZ_DINFO_SUB_OBJ:
    case QZ_DINFO_CUR_OBJ: return put(v, s.pobj);
    case QZ_DINFO_SUB_PINF: return put(v, s.pinf);
    case QZ_IINFO_CUR_ITER:
    case QZ_DINFO_CUR_ITER: return put(v, s.spxIter + s.barIter + s.nlpIter);
    case QZ_DINFO_CUR_BEST_BOUND: return put(v, s.dobj);
    case QZ_IINFO_CUR_STATUS: return put(v, s.model_status);
    case QZ_IINFO_CUR_LP_COUNT: return put(v, solved && linear ? 1 : 0);
    case QZ_IINFO_CUR_BRANCH_COUNT:
    case QZ_IINFO_CUR_ACTIVE_COUNT:
    case QZ_IINFO_CUR_MIP_COUNT:
    case QZ_IINFO_CUR_CUT_COUNT: return put(v, 0);
    case QZ_IINFO_CUR_NLP_COUNT: return put(v, solved && !linear ? 1 : 0);
    case QZ_DINFO_CUR_TIME: return put(v, s.elapsed);
    default: return kNotAvailable;
  }
}

int get_final_info(Imodel* m, int key, void* pvResult) {
  if (m == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (pvResult == nullptr) return 0;
  if (key < QZ_DINFO_SUB_OBJ || key > QZ_DINFO_CUR_TIME) return kNotAvailable;
  InfoValue v;
  if (const int rc = read_final_info(*m, key, v)) return rc;
  return put_info(key, v, pvResult);
}

}  // namespace zento
