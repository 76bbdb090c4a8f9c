// Creation, clearing, copying and deletion of models.
#include <algorithm>
#include <new>

#include "core/clock.h"
#include "core/env.h"
#include "core/errors.h"
#include "core/load.h"
#include "core/model_ops.h"
#include "core/params/registry.h"

namespace zento {

void initialize_model(Imodel& m) {
  m.modelState = QZ_STATUS_UNLOADED;
  m.lastError = 0;
  m.nCons = m.nVars = m.nAnnz = 0;
  m.lp = LinearData{};
  m.callLevel = 0;
  m.callLevelSaved = 0;
  m.createdWall = lt_get_realtime();
  m.createdCpu = lt_get_cputime();
  m.lastCallbackWall = m.createdWall;
}

int create_model(QZenv env, Imodel** out) {
  *out = nullptr;
  auto* m = new (std::nothrow) Imodel();
  if (m == nullptr) return QZERR_OUT_OF_MEMORY;
  initialize_model(*m);
  try {
    {
      std::lock_guard<std::mutex> lock(env->modelMutex);
      env->modelList.push_back(m);
    }
    m->env = env;
    // A model takes the environment's values of this moment; later changes do not reach it.
    m->SolverPam = env->SolverPam;
    m->SplexPam = env->SplexPam;
    m->BandBPam = env->BandBPam;
    m->NLPPam = env->NLPPam;
    m->GOPPam = env->GOPPam;
    m->IISPam = env->IISPam;
    m->SPPam = env->SPPam;
    const int rc = params_setup_model(m);
    if (rc != 0) {
      delete_model(&m);
      return rc;
    }
  } catch (const std::bad_alloc&) {
    delete_model(&m);
    return QZERR_OUT_OF_MEMORY;
  }
  *out = m;
  return 0;
}

void free_solver_memory(Imodel& m) {
  m.glp.reset();
  m.rowCopy.reset();
  m.presolve.reset();
}

void free_hash_memory(Imodel& m) { m.nameHash = NameHash{}; }

void free_name_data(Imodel& m) {
  m.names = NameData{};
  free_hash_memory(m);
}

void clear_model(Imodel& m) {
  m.sol.reset();
  m.mipsol.reset();
  m.gopsol.reset();
  free_solver_memory(m);
  free_hash_memory(m);
  free_name_data(m);
  m.lp = LinearData{};
  m.nCons = m.nVars = m.nAnnz = 0;
  m.nNLPnnz = m.nNLPobjnnz = 0;
  m.quad = QuadData{};
  m.cones = ConeData{};
  m.posd = POSDData{};
  m.sets = SetsData{};
  m.semicont = SemiContData{};
  m.alldiff = AllDiffData{};
  m.start = StartPoints{};
  m.priorities.clear();
  m.baseStats = BaseStats{};
  m.fileInfo = FileInfo{};
  m.blocks = BlockStructure{};
  m.modelState = QZ_STATUS_UNLOADED;
}

int delete_model(Imodel** pModel) {
  if (pModel == nullptr || *pModel == nullptr) return 0;
  Imodel* m = *pModel;
  if (QZenv env = m->env) {
    std::lock_guard<std::mutex> lock(env->modelMutex);
    auto it = std::find(env->modelList.begin(), env->modelList.end(), m);
    if (it == env->modelList.end()) return QZERR_INTERNAL_ERROR;
    env->modelList.erase(it);
  }
  delete m;
  *pModel = nullptr;
  return 0;
}

int copy_param(Imodel& src, Imodel& dst, int mode) {
  if (mode > 0) return 0;
  dst.SolverPam = src.SolverPam;
  dst.SplexPam = src.SplexPam;
  dst.BandBPam = src.BandBPam;
  dst.NLPPam = src.NLPPam;
  dst.GOPPam = src.GOPPam;
  dst.IISPam = src.IISPam;
  dst.SPPam = src.SPPam;
  dst.cb = src.cb;
  return params_rebind_model(&dst);
}

namespace {

// Collects the pointers of a name pool in the form QZloadNameData takes.
std::vector<char*> name_pointers(NamePool& p) {
  std::vector<char*> out(p.offset.size());
  for (size_t i = 0; i < out.size(); ++i) out[i] = p.pool.data() + p.offset[i];
  return out;
}

int copy_model_data(Imodel& src, Imodel& dst) {
  if (src.modelState != QZ_STATUS_LOADED) return 0;
  // The copy's own load calls log nothing.
  const bool held = dst.holdLog;
  dst.holdLog = true;
  struct Restore {
    Imodel& m;
    bool v;
    ~Restore() { m.holdLog = v; }
  } restore{dst, held};

  const LinearData& s = src.lp;
  std::vector<int> cols, lens, rows;
  std::vector<double> coef;
  compact_columns(src, cols, lens, rows, coef);
  QZ_CALL(load_lp_data(dst, src.nCons, src.nVars, s.dObjSense, s.dObjConst, s.padC.data(),
                       s.padB.data(), s.pszConTypes.data(), src.nAnnz, cols.data(), lens.data(),
                       coef.data(), rows.data(), s.padL.data(), s.padU.data()));
  if (!s.pszVarTypes.empty()) {
    std::vector<char> types = s.pszVarTypes;
    QZ_CALL(load_var_type(dst, types.data()));
  }
  if (src.quad.nnz() > 0) {
    std::vector<int> qr, q1, q2;
    std::vector<double> qc;
    for (int g = 0; g < src.quad.groups(); ++g)
      for (int k = src.quad.beg[g]; k < src.quad.beg[g + 1]; ++k) {
        qr.push_back(src.quad.row[g]);
        q1.push_back(src.quad.col1[k]);
        q2.push_back(src.quad.col2[k]);
        qc.push_back(src.quad.coef[k]);
      }
    QZ_CALL(load_qc_data(dst, static_cast<int>(qc.size()), qr.data(), q1.data(), q2.data(),
                         qc.data()));
  }
  if (src.cones.count() > 0) {
    const ConeData& c = src.cones;
    QZ_CALL(load_cone_data(dst, c.count(), c.type.data(), c.alpha.data(), c.beg.data(),
                           c.cols.data()));
  }
  if (src.posd.count() > 0) {
    std::vector<int> beg{0}, r, c, v;
    for (int b = 0; b < src.posd.count(); ++b) {
      const int n = src.posd.dim[b];
      for (int i = 0; i < n; ++i)
        for (int j = 0; j <= i; ++j) {
          const int var = src.posd.slot[b][i * (i + 1) / 2 + j];
          if (var < 0) continue;
          r.push_back(i);
          c.push_back(j);
          v.push_back(var);
        }
      beg.push_back(static_cast<int>(v.size()));
    }
    QZ_CALL(load_posd_data(dst, src.posd.count(), src.posd.dim.data(), beg.data(), r.data(),
                           c.data(), v.data()));
  }
  if (src.alldiff.count() > 0) {
    const AllDiffData& a = src.alldiff;
    QZ_CALL(load_alldiff_data(dst, a.count(), a.dim.data(), a.lower.data(), a.upper.data(),
                              a.beg.data(), a.vars.data()));
  }
  const StartPoints& sp = src.start;
  if (!sp.primal.empty()) dst.start.primal = sp.primal;
  if (!sp.mip.empty()) dst.start.mip = sp.mip;
  dst.start.partialCols = sp.partialCols;
  dst.start.partialVals = sp.partialVals;
  dst.start.mipPartialCols = sp.mipPartialCols;
  dst.start.mipPartialVals = sp.mipPartialVals;
  dst.priorities = src.priorities;
  if (src.sets.count() > 0) {
    const SetsData& st = src.sets;
    QZ_CALL(load_sets_data(dst, st.count(), st.type.data(), st.card.data(), st.begcol.data(),
                           st.cols.data()));
    dst.sets.state = st.state;
  }
  if (!src.semicont.vars.empty()) {
    std::vector<double> up(src.semicont.vars.size());
    for (size_t k = 0; k < up.size(); ++k) up[k] = s.padU[src.semicont.vars[k]];
    QZ_CALL(load_semicont_data(dst, static_cast<int>(up.size()), src.semicont.vars.data(),
                               src.semicont.lower.data(), up.data()));
  }
  NameData& n = src.names;
  std::vector<char*> rn = name_pointers(n.rows), cn = name_pointers(n.cols),
                     kn = name_pointers(n.cones);
  QZ_CALL(load_name_data(dst, n.title.c_str(), n.objName.c_str(), n.rhsName.c_str(),
                         n.rngName.c_str(), n.bndName.c_str(), rn.empty() ? nullptr : rn.data(),
                         cn.empty() ? nullptr : cn.data(), kn.empty() ? nullptr : kn.data()));
  return 0;
}

}  // namespace

int copy_model(Imodel& src, Imodel** out) {
  *out = nullptr;
  Imodel* dst = nullptr;
  QZ_CALL(create_model(src.env, &dst));
  const int savedLevel = src.SplexPam.lp_printlevel;
  src.SplexPam.lp_printlevel = 0;
  int rc = copy_param(src, *dst, -1);
  if (rc == 0) {
    try {
      rc = copy_model_data(src, *dst);
    } catch (const std::bad_alloc&) {
      rc = QZERR_OUT_OF_MEMORY;
    }
  }
  src.SplexPam.lp_printlevel = savedLevel;
  if (rc != 0) {
    delete_model(&dst);
    return rc;
  }
  dst->SplexPam.lp_printlevel = savedLevel;
  dst->cb = src.cb;
  *out = dst;
  return 0;
}

Sol& ensure_sol(Imodel& m) {
  if (!m.sol) {
    m.sol = std::make_unique<Sol>();
    m.sol->objBound = m.lp.dObjSense * 1e30;
    m.sol->resize(m.nVars, m.nCons);
  }
  return *m.sol;
}

void Sol::resize(int nVars, int nRows) {
  const auto n = static_cast<size_t>(std::max(nVars, 0));
  const auto r = static_cast<size_t>(std::max(nRows, 0));
  colStatus.assign(n, QZ_BASTYPE_ATLO);
  rowStatus.assign(r, QZ_BASTYPE_BAS);
  primal.assign(n, 0.0);
  redcost.assign(n, 0.0);
  dual.assign(r, 0.0);
  slack.assign(r, 0.0);
}

}  // namespace zento
