// QZgetInfo: keys of the model, of the continuous solution, text and version keys.
#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>

#include "core/info.h"
#include "core/load.h"
#include "core/optimize.h"
#include "core/version.h"

namespace zento {

namespace {

constexpr int kNotAvailable = QZERR_INFO_NOT_AVAILABLE;

int put(InfoValue& v, double x) {
  v.num = x;
  return 0;
}

int put_text(InfoValue& v, const std::string& s) {
  v.str = s;
  return 0;
}

int count_types(const Imodel& m, char a, char b) {
  int n = 0;
  for (char t : m.lp.pszVarTypes)
    if (t == a || t == b) ++n;
  return n;
}

// Members of the sets of one type (1, 2, 3 SOS; 4 cardinality).
int set_members(const Imodel& m, char type) {
  int n = 0;
  for (int s = 0; s < m.sets.count(); ++s)
    if (m.sets.type[static_cast<size_t>(s)] == type) n += m.sets.begcol[s + 1] - m.sets.begcol[s];
  return n;
}

// Smallest or largest nonzero magnitude of the matrix, with its column and row.
int matrix_extreme(const Imodel& m, bool largest, int what, InfoValue& v) {
  double best = 0;
  int col = -1, row = -1;
  const LinearData& lp = m.lp;
  for (int j = 0; j < m.nVars; ++j)
    for (int k = lp.paiAcols[j]; k < lp.paiAcols[j] + lp.panAcols[j]; ++k) {
      const double a = std::fabs(lp.padAcoef[k]);
      if (a == 0.0) continue;
      if (col < 0 || (largest ? a > best : a < best)) {
        best = a;
        col = j;
        row = lp.paiArows[k];
      }
    }
  return put(v, what == 0 ? best : (what == 1 ? col : row));
}

}  // namespace

int read_info_without_model(int key, InfoValue& v) {
  switch (key) {
    case QZ_IINFO_VER_MAJOR: return put(v, kVerMajor);
    case QZ_IINFO_VER_MINOR: return put(v, kVerMinor);
    case QZ_IINFO_VER_BUILD: return put(v, kVerBuild);
    case QZ_IINFO_VER_REVISION: return put(v, kVerRevision);
    case QZ_IINFO_ARCH_ID: return put(v, kPlatformCode);
    case QZ_SINFO_MODEL_TYPE: return put_text(v, "*?*");
    default: return QZERR_ILLEGAL_NULL_POINTER;
  }
}

int read_model_key(Imodel& m, int key, InfoValue& v) {
  if (m.baseStats.stale) compute_base_stats(m);
  const BaseStats& bs = m.baseStats;
  const Sol* s = m.sol.get();
  const int nInt = count_types(m, 'B', 'I');
  switch (key) {
    case QZ_IINFO_NUM_CONS: return put(v, m.nCons);
    case QZ_IINFO_NUM_VARS: return put(v, m.nVars);
    case QZ_IINFO_NUM_NONZ: return put(v, m.nAnnz);
    case QZ_IINFO_NUM_BIN: return put(v, count_types(m, 'B', 'B'));
    case QZ_IINFO_NUM_INT: return put(v, count_types(m, 'I', 'I'));
    case QZ_IINFO_NUM_CONT: return put(v, m.nVars - nInt);
    case QZ_IINFO_NUM_QC_NONZ: return put(v, m.quad.nnz());
    case QZ_IINFO_NUM_NLP_NONZ: return put(v, m.nNLPnnz);
    case QZ_IINFO_NUM_NLPOBJ_NONZ: return put(v, m.nNLPobjnnz);
    // Without a reduction the solver saw the model as it is.
    case QZ_IINFO_NUM_RDCONS: return put(v, s && s->rdCons >= 0 ? s->rdCons : m.nCons);
    case QZ_IINFO_NUM_RDVARS: return put(v, s && s->rdVars >= 0 ? s->rdVars : m.nVars);
    case QZ_IINFO_NUM_RDNONZ: return put(v, s && s->rdNonz >= 0 ? s->rdNonz : m.nAnnz);
    case QZ_IINFO_NUM_RDINT: return put(v, s && s->rdInt >= 0 ? s->rdInt : nInt);
    case QZ_IINFO_LEN_VARNAMES: return put(v, m.names.cols.bytes());
    case QZ_IINFO_LEN_CONNAMES: return put(v, m.names.rows.bytes());
    case QZ_IINFO_LEN_CONENAMES: return put(v, m.names.cones.bytes());
    case QZ_IINFO_NUM_NLP_CONS: return put(v, m.nNLPcons);
    case QZ_IINFO_NUM_NLP_VARS: return put(v, m.nNLPvars);
    case QZ_IINFO_NUM_CONES: return put(v, m.cones.count());
    case QZ_IINFO_NUM_CONE_NONZ: return put(v, static_cast<double>(m.cones.cols.size()));
    case QZ_DINFO_INST_VAL_MIN_COEF: return matrix_extreme(m, false, 0, v);
    case QZ_IINFO_INST_VARNDX_MIN_COEF: return matrix_extreme(m, false, 1, v);
    case QZ_IINFO_INST_CONNDX_MIN_COEF: return matrix_extreme(m, false, 2, v);
    case QZ_DINFO_INST_VAL_MAX_COEF: return matrix_extreme(m, true, 0, v);
    case QZ_IINFO_INST_VARNDX_MAX_COEF: return matrix_extreme(m, true, 1, v);
    case QZ_IINFO_INST_CONNDX_MAX_COEF: return matrix_extreme(m, true, 2, v);
    case QZ_IINFO_NUM_VARS_CARD: return put(v, set_members(m, QZ_SOSC));
    case QZ_IINFO_NUM_VARS_SOS1: return put(v, set_members(m, QZ_SOS1));
    case QZ_IINFO_NUM_VARS_SOS2: return put(v, set_members(m, QZ_SOS2));
    case QZ_IINFO_NUM_VARS_SOS3: return put(v, set_members(m, QZ_SOS3));
    case QZ_IINFO_NUM_VARS_SCONT: return put(v, static_cast<double>(m.semicont.vars.size()));
    case QZ_IINFO_NUM_CONS_L: return put(v, bs.nL);
    case QZ_IINFO_NUM_CONS_E: return put(v, bs.nE);
    case QZ_IINFO_NUM_CONS_G: return put(v, bs.nG);
    case QZ_IINFO_NUM_CONS_R: return put(v, bs.nRanged);
    case QZ_IINFO_NUM_CONS_N: return put(v, bs.nN);
    case QZ_IINFO_NUM_VARS_LB: return put(v, bs.nLower);
    case QZ_IINFO_NUM_VARS_UB: return put(v, bs.nUpper);
    case QZ_IINFO_NUM_VARS_LUB: return put(v, bs.nBoxed);
    case QZ_IINFO_NUM_VARS_FR: return put(v, bs.nFree);
    case QZ_IINFO_NUM_VARS_FX: return put(v, bs.nFixed);
    // Infeasibility and unboundedness analysis and stochastic data keep their own records,
    // which this model does not carry.
    default: return kNotAvailable;
  }
}

int read_sol_key(Imodel& m, int key, InfoValue& v) {
  if (key == QZ_IINFO_ARCH_ID) return put(v, kPlatformCode);
  if (!m.sol) return key == QZ_IINFO_MODEL_STATUS ? put(v, m.modelState) : kNotAvailable;
  const Sol& s = *m.sol;
  switch (key) {
    case QZ_IINFO_METHOD: return put(v, std::max(-1, s.method - 1));
    case QZ_DINFO_POBJ: return put(v, s.pobj);
    case QZ_DINFO_DOBJ: return put(v, s.dobj);
    case QZ_DINFO_PINFEAS: return put(v, s.pinf);
    case QZ_DINFO_DINFEAS: return put(v, s.dinf);
    case QZ_IINFO_MODEL_STATUS: return put(v, s.model_status);
    case QZ_IINFO_PRIMAL_STATUS: return put(v, s.primalStatus);
    case QZ_IINFO_DUAL_STATUS: return put(v, s.dualStatus);
    case QZ_IINFO_BASIC_STATUS: return put(v, s.basicStatus);
    case QZ_IINFO_BAR_ITER: return put(v, s.barIter);
    case QZ_IINFO_SIM_ITER: return put(v, s.spxIter);
    case QZ_IINFO_NLP_ITER: return put(v, s.nlpIter);
    case QZ_IINFO_ELAPSED_TIME: return put(v, s.elapsed);
    case QZ_DINFO_MSW_POBJ: return put(v, s.mswPobj);
    case QZ_IINFO_MSW_PASS: return put(v, s.mswPass);
    case QZ_IINFO_MSW_NSOL: return put(v, s.mswNsol);
    case QZ_IINFO_IPM_STATUS: return put(v, s.ipmStatus);
    case QZ_DINFO_IPM_POBJ: return put(v, s.ipmPobj);
    case QZ_DINFO_IPM_DOBJ: return put(v, s.ipmDobj);
    case QZ_DINFO_IPM_PINFEAS: return put(v, s.ipmPinf);
    case QZ_DINFO_IPM_DINFEAS: return put(v, s.ipmDinf);
    case QZ_IINFO_NLP_CALL_FUN: return put(v, s.nlpCallFun);
    case QZ_IINFO_NLP_CALL_DEV: return put(v, s.nlpCallDev);
    case QZ_IINFO_NLP_CALL_HES: return put(v, s.nlpCallHes);
    case QZ_IINFO_BAR_THREADS: return put(v, s.barThreads);
    case QZ_IINFO_NLP_THREADS: return put(v, s.nlpThreads);
    case QZ_IINFO_SIM_THREADS: return put(v, s.simThreads);
    case QZ_SINFO_NLP_THREAD_LOAD: return put_text(v, s.threadLoad);
    case QZ_IINFO_LPTOOL: return put(v, s.lpTool);
    default: return kNotAvailable;
  }
}

int read_info(Imodel& m, int key, InfoValue& v) {
  const bool resultKey = (key >= 11200 && key < 11900) || key == QZ_IINFO_ERR_OPTIM;
  if (resultKey && m.callLevel < 0 && key != QZ_IINFO_ARCH_ID) return kNotAvailable;
  if (key >= 11010 && key < 11100) return read_model_key(m, key, v);
  if (key >= 11200 && key < 11300) return read_sol_key(m, key, v);
  if (key >= 11300 && key < 11400) return read_mip_key(m, key, v);
  if (key >= 11600 && key < 11700) {
    // While a global solve runs on a working model, its record is the live one.
    Imodel* w = m.run.gopWorking;
    return read_gop_key(w != nullptr ? *w : m, key, v);
  }
  if (key >= 11700 && key <= 11713) return read_final_info(m, key, v);
  const GenProgress& g = m.run.gen;
  const PresolveProgress& p = m.run.pre;
  switch (key) {
    case QZ_IINFO_VER_MAJOR:
    case QZ_IINFO_VER_MINOR:
    case QZ_IINFO_VER_BUILD:
    case QZ_IINFO_VER_REVISION: return read_info_without_model(key, v);
    case QZ_IINFO_OBJSENSE: return put(v, m.lp.dObjSense);
    case QZ_IINFO_ERR_OPTIM: return put(v, m.lastError);
    case QZ_DINFO_GEN_PERCENT: return g.active ? put(v, g.percent) : kNotAvailable;
    case QZ_IINFO_GEN_NONZ_TTL: return g.active ? put(v, g.nonzTotal) : kNotAvailable;
    case QZ_IINFO_GEN_NONZ_NL: return g.active ? put(v, g.nonzNl) : kNotAvailable;
    case QZ_IINFO_GEN_ROW_NL: return g.active ? put(v, g.rowsNl) : kNotAvailable;
    case QZ_IINFO_GEN_VAR_NL: return g.active ? put(v, g.varsNl) : kNotAvailable;
    case QZ_IINFO_PRE_NUM_RED_ROWS: return p.active ? put(v, p.rowsRemoved) : kNotAvailable;
    case QZ_IINFO_PRE_NUM_RED_COLS: return p.active ? put(v, p.colsRemoved) : kNotAvailable;
    case QZ_IINFO_PRE_NUM_RED_NONZ: return p.active ? put(v, p.nonzRemoved) : kNotAvailable;
    case QZ_IINFO_PRE_NUM_PASSES: return p.active ? put(v, p.passes) : kNotAvailable;
    case QZ_IINFO_PRE_LAST_STAGE: return p.active ? put(v, p.lastStage) : kNotAvailable;
    case QZ_DINFO_PRE_ELAPSED: return p.active ? put(v, p.elapsed) : kNotAvailable;
    case QZ_SINFO_MODEL_FILENAME: return put_text(v, m.modelFileName);
    case QZ_SINFO_MODEL_SOURCE: return put_text(v, m.modelSource);
    case QZ_SINFO_STOC_FILENAME: return put_text(v, m.stocFileName);
    case QZ_IINFO_MODEL_TYPE: return put(v, QZI_get_model_type(m));
    case QZ_SINFO_MODEL_TYPE:
      // The text lives in the model, so a host may keep the pointer it was copied from.
      m.modelTypeText = QZI_model_type_str(m);
      return put_text(v, m.modelTypeText);
    default: return kNotAvailable;  // analysis and stochastic records are not carried
  }
}

int put_info(int key, const InfoValue& v, void* pvResult) {
  switch (key_type(key)) {
    case KeyType::kInt: {
      // Counts held as doubles are truncated; values beyond the int range saturate.
      const double t = std::trunc(v.num);
      int out = 0;
      if (std::isnan(t))
        out = 0;
      else if (t >= static_cast<double>(INT_MAX))
        out = INT_MAX;
      else if (t <= static_cast<double>(INT_MIN))
        out = INT_MIN;
      else
        out = static_cast<int>(t);
      *static_cast<int*>(pvResult) = out;
      return 0;
    }
    case KeyType::kDouble: *static_cast<double*>(pvResult) = v.num; return 0;
    case KeyType::kString: {
      const size_t n = std::min(v.str.size(), static_cast<size_t>(QZ_INFO_STRING_MAXLEN - 1));
      std::memcpy(pvResult, v.str.data(), n);
      static_cast<char*>(pvResult)[n] = '\0';
      return 0;
    }
    default: return kNotAvailable;
  }
}

int get_info(Imodel* m, int key, void* pvResult) {
  if (pvResult == nullptr) return 0;
  InfoValue v;
  if (m == nullptr) {
    if (const int rc = read_info_without_model(key, v)) return rc;
    return put_info(key, v, pvResult);
  }
  if (key_type(key) == KeyType::kUnknown) return kNotAvailable;
  if (const int rc = read_info(*m, key, v)) return rc;
  return put_info(key, v, pvResult);
}

}  // namespace zento
