// Entries that read model data back.
#include <cstring>

#include "api/guard.h"
#include "core/load.h"
#include "core/names.h"

using namespace zento;
using zento::api::check_loaded;
using zento::api::copy_out;

extern "C" {

int QZgetDimensions(QZmodel model, int* pnVars, int* pnCons, int* pnCones, int* pnAnnz,
                    int* pnQCnnz, int* pnConeNnz, int* pnNLPnnz, int* pnNLPobjnnz,
                    int* pnVarNamelen, int* pnConNamelen, int* pnConeNamelen) {
  if (int rc = check_loaded(model)) return rc;
  const Imodel& m = *model;
  if (pnVars) *pnVars = m.nVars;
  if (pnCons) *pnCons = m.nCons;
  if (pnCones) *pnCones = m.cones.count();
  if (pnAnnz) *pnAnnz = m.nAnnz;
  if (pnQCnnz) *pnQCnnz = m.quad.nnz();
  if (pnConeNnz) *pnConeNnz = static_cast<int>(m.cones.cols.size());
  if (pnNLPnnz) *pnNLPnnz = m.nNLPnnz;
  if (pnNLPobjnnz) *pnNLPobjnnz = m.nNLPobjnnz;
  if (pnVarNamelen) *pnVarNamelen = m.names.cols.bytes();
  if (pnConNamelen) *pnConNamelen = m.names.rows.bytes();
  if (pnConeNamelen) *pnConeNamelen = m.names.cones.bytes();
  return 0;
}

int QZgetLPData(QZmodel model, int* pnObjSense, double* pdObjConst, double* padC, double* padB,
                char* pszConTypes, int* paiAcols, int* panAcols, double* padAcoef,
                int* paiArows, double* padL, double* padU) {
  if (int rc = check_loaded(model)) return rc;
  QZ_GUARD({
    const LinearData& lp = model->lp;
    if (pnObjSense) *pnObjSense = lp.dObjSense;
    if (pdObjConst) *pdObjConst = lp.dObjConst;
    copy_out(lp.padC, padC);
    copy_out(lp.padB, padB);
    copy_out(lp.pszConTypes, pszConTypes);
    copy_out(lp.padL, padL);
    copy_out(lp.padU, padU);
    if (paiAcols || panAcols || padAcoef || paiArows) {
      std::vector<int> cols, lens, rows;
      std::vector<double> coef;
      compact_columns(*model, cols, lens, rows, coef);
      copy_out(cols, paiAcols);
      copy_out(lens, panAcols);
      copy_out(rows, paiArows);
      copy_out(coef, padAcoef);
    }
    return 0;
  });
}

int QZgetNameData(QZmodel model, char* pszTitle, char* pszObjName, char* pszRhsName,
                  char* pszRngName, char* pszBndname, char** paszConNames, char* pachConNameData,
                  char** paszVarNames, char* pachVarNameData, char** paszConeNames,
                  char* pachConeNameData) {
  if (int rc = check_loaded(model)) return rc;
  const NameData& n = model->names;
  auto put = [](char* dst, const std::string& s) {
    if (dst) std::memcpy(dst, s.c_str(), s.size() + 1);
  };
  put(pszTitle, n.title);
  put(pszObjName, n.objName);
  put(pszRhsName, n.rhsName);
  put(pszRngName, n.rngName);
  put(pszBndname, n.bndName);
  // The pool is copied into the host's buffer and the pointers point into that buffer.
  auto pool = [](const NamePool& p, char** ptrs, char* data) {
    if (p.empty()) return;
    if (data) std::memcpy(data, p.pool.data(), p.pool.size());
    if (ptrs && data)
      for (size_t i = 0; i < p.offset.size(); ++i) ptrs[i] = data + p.offset[i];
  };
  pool(n.rows, paszConNames, pachConNameData);
  pool(n.cols, paszVarNames, pachVarNameData);
  pool(n.cones, paszConeNames, pachConeNameData);
  return 0;
}

int QZgetConstraintDatai(QZmodel model, int iCon, char* pchType, char* pchIsNlp, double* pdB) {
  if (int rc = check_loaded(model)) return rc;
  if (iCon < 0 || iCon >= model->nCons) return QZERR_INDEX_OUT_OF_RANGE;
  if (pchType) *pchType = model->lp.pszConTypes[iCon];
  if (pchIsNlp) *pchIsNlp = 0;
  if (pdB) *pdB = model->lp.padB[iCon];
  return 0;
}

int QZgetLPVariableDataj(QZmodel model, int iVar, char* pchVartype, double* pdC, double* pdL,
                         double* pdU, int* pnAnnz, int* paiArows, double* padAcoef) {
  if (int rc = check_loaded(model)) return rc;
  if (iVar < 0 || iVar >= model->nVars) return QZERR_INDEX_OUT_OF_RANGE;
  const LinearData& lp = model->lp;
  if (pchVartype) *pchVartype = lp.pszVarTypes.empty() ? 'C' : lp.pszVarTypes[iVar];
  if (pdC) *pdC = lp.padC[iVar];
  if (pdL) *pdL = lp.padL[iVar];
  if (pdU) *pdU = lp.padU[iVar];
  const int b = lp.paiAcols[iVar], len = lp.panAcols[iVar];
  if (pnAnnz) *pnAnnz = len;
  if (paiArows) std::copy(lp.paiArows.begin() + b, lp.paiArows.begin() + b + len, paiArows);
  if (padAcoef) std::copy(lp.padAcoef.begin() + b, lp.padAcoef.begin() + b + len, padAcoef);
  return 0;
}

int QZgetLPConstraintDatai(QZmodel model, int iCon, char* pchType, double* pdB, int* pnNnz,
                           int* paiVar, double* padAcoef) {
  if (int rc = check_loaded(model)) return rc;
  if (iCon < 0 || iCon >= model->nCons) return QZERR_INDEX_OUT_OF_RANGE;
  QZ_GUARD({
    const RowCopy& r = setup_Acolpos(*model);
    if (pchType) *pchType = model->lp.pszConTypes[iCon];
    if (pdB) *pdB = model->lp.padB[iCon];
    const int b = r.begin[iCon], e = r.begin[iCon + 1];
    if (pnNnz) *pnNnz = e - b;
    if (paiVar) std::copy(r.col.begin() + b, r.col.begin() + e, paiVar);
    if (padAcoef) std::copy(r.val.begin() + b, r.val.begin() + e, padAcoef);
    return 0;
  });
}

static int get_column_value(QZmodel model, int iVar, double* pdValue,
                            const std::vector<double> LinearData::*field) {
  if (int rc = check_loaded(model)) return rc;
  if (iVar < 0 || iVar >= model->nVars) return QZERR_INDEX_OUT_OF_RANGE;
  if (pdValue == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  *pdValue = (model->lp.*field)[iVar];
  return 0;
}

int QZgetLowerBoundj(QZmodel model, int iVar, double* pdValue) {
  return get_column_value(model, iVar, pdValue, &LinearData::padL);
}
int QZgetUpperBoundj(QZmodel model, int iVar, double* pdValue) {
  return get_column_value(model, iVar, pdValue, &LinearData::padU);
}
int QZgetObjectivej(QZmodel model, int iVar, double* pdValue) {
  return get_column_value(model, iVar, pdValue, &LinearData::padC);
}

int QZgetVarType(QZmodel model, char* pszVarTypes) {
  if (int rc = check_loaded(model)) return rc;
  if (pszVarTypes == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (model->lp.pszVarTypes.empty())
    std::fill(pszVarTypes, pszVarTypes + model->nVars, 'C');
  else
    copy_out(model->lp.pszVarTypes, pszVarTypes);
  return 0;
}

int QZgetVarTypeCount(QZmodel model, int* pnCont, int* pnBin, int* pnInt) {
  if (int rc = check_loaded(model)) return rc;
  int c = 0, b = 0, i = 0;
  for (int j = 0; j < model->nVars; ++j) {
    const char t = model->lp.pszVarTypes.empty() ? 'C' : model->lp.pszVarTypes[j];
    (t == 'B' ? b : t == 'I' ? i : c)++;
  }
  if (pnCont) *pnCont = c;
  if (pnBin) *pnBin = b;
  if (pnInt) *pnInt = i;
  return 0;
}

static int get_name(QZmodel model, const NamePool& (*pick)(const Imodel&), int count, int idx,
                    char* pszName) {
  if (pszName) pszName[0] = '\0';
  if (int rc = check_loaded(model)) return rc;
  if (idx < 0 || idx >= count) return QZERR_INDEX_OUT_OF_RANGE;
  const NamePool& p = pick(*model);
  if (p.empty()) return QZERR_INFO_NOT_AVAILABLE;
  if (pszName == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  std::strcpy(pszName, p.name(idx));
  return 0;
}

int QZgetVariableNamej(QZmodel model, int iVar, char* pszName) {
  return get_name(model, [](const Imodel& m) -> const NamePool& { return m.names.cols; },
                  model ? model->nVars : 0, iVar, pszName);
}
int QZgetConstraintNamei(QZmodel model, int iCon, char* pszName) {
  return get_name(model, [](const Imodel& m) -> const NamePool& { return m.names.rows; },
                  model ? model->nCons : 0, iCon, pszName);
}
int QZgetConeNamei(QZmodel model, int iCone, char* pszName) {
  return get_name(model, [](const Imodel& m) -> const NamePool& { return m.names.cones; },
                  model ? model->cones.count() : 0, iCone, pszName);
}

int QZgetVariableIndex(QZmodel model, const char* pszName, int* pnIndex) {
  if (int rc = check_loaded(model)) return rc;
  if (pszName == nullptr || pnIndex == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return find_name_index(*model, NameKind::kColumn, pszName, pnIndex); });
}
int QZgetConstraintIndex(QZmodel model, const char* pszName, int* pnIndex) {
  if (int rc = check_loaded(model)) return rc;
  if (pszName == nullptr || pnIndex == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return find_name_index(*model, NameKind::kRow, pszName, pnIndex); });
}
int QZgetConeIndex(QZmodel model, const char* pszName, int* pnIndex) {
  if (int rc = check_loaded(model)) return rc;
  if (pszName == nullptr || pnIndex == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZ_GUARD({ return find_name_index(*model, NameKind::kCone, pszName, pnIndex); });
}

int QZgetSETSData(QZmodel model, int* piNsets, int* piNtnz, char* pszSETStype, int* piCardnum,
                  int* piNnz, int* piBegset, int* piVarndx) {
  if (int rc = check_loaded(model)) return rc;
  const SetsData& s = model->sets;
  if (piNsets) *piNsets = s.count();
  if (piNtnz) *piNtnz = static_cast<int>(s.cols.size());
  copy_out(s.type, pszSETStype);
  copy_out(s.card, piCardnum);
  if (piNnz)
    for (int k = 0; k < s.count(); ++k) piNnz[k] = s.begcol[k + 1] - s.begcol[k];
  if (s.count() > 0) copy_out(s.begcol, piBegset);
  copy_out(s.cols, piVarndx);
  return 0;
}

int QZgetSETSDatai(QZmodel model, int iSet, char* pszSETStype, int* piCardnum, int* piNnz,
                   int* piVarndx) {
  if (int rc = check_loaded(model)) return rc;
  const SetsData& s = model->sets;
  if (iSet < 0 || iSet >= s.count()) return QZERR_INDEX_OUT_OF_RANGE;
  if (pszSETStype) *pszSETStype = s.type[iSet];
  if (piCardnum) *piCardnum = s.card[iSet];
  if (piNnz) *piNnz = s.begcol[iSet + 1] - s.begcol[iSet];
  if (piVarndx)
    std::copy(s.cols.begin() + s.begcol[iSet], s.cols.begin() + s.begcol[iSet + 1], piVarndx);
  return 0;
}

int QZgetSemiContData(QZmodel model, int* piNvars, int* piVarndx, double* padL, double* padU) {
  if (int rc = check_loaded(model)) return rc;
  const SemiContData& s = model->semicont;
  if (piNvars) *piNvars = static_cast<int>(s.vars.size());
  copy_out(s.vars, piVarndx);
  copy_out(s.lower, padL);
  if (padU)
    for (size_t k = 0; k < s.vars.size(); ++k) padU[k] = model->lp.padU[s.vars[k]];
  return 0;
}

int QZgetConeDatai(QZmodel model, int iCone, char* pchConeType, double* pdConeAlpha, int* piNnz,
                   int* piCols) {
  if (int rc = check_loaded(model)) return rc;
  const ConeData& c = model->cones;
  if (iCone < 0 || iCone >= c.count()) return QZERR_INDEX_OUT_OF_RANGE;
  if (pchConeType) *pchConeType = c.type[iCone];
  if (pdConeAlpha) *pdConeAlpha = c.alpha[iCone];
  if (piNnz) *piNnz = c.beg[iCone + 1] - c.beg[iCone];
  if (piCols) std::copy(c.cols.begin() + c.beg[iCone], c.cols.begin() + c.beg[iCone + 1], piCols);
  return 0;
}

int QZgetQCData(QZmodel model, int* paiQCrows, int* paiQCcols1, int* paiQCcols2,
                double* padQCcoef) {
  if (int rc = check_loaded(model)) return rc;
  const QuadData& q = model->quad;
  for (int g = 0; g < q.groups(); ++g)
    for (int k = q.beg[g]; k < q.beg[g + 1]; ++k) {
      if (paiQCrows) paiQCrows[k] = q.row[g];
      if (paiQCcols1) paiQCcols1[k] = q.col1[k];
      if (paiQCcols2) paiQCcols2[k] = q.col2[k];
      if (padQCcoef) padQCcoef[k] = q.coef[k];
    }
  return 0;
}

int QZgetQCDatai(QZmodel model, int iCon, int* pnQCnnz, int* paiQCcols1, int* paiQCcols2,
                 double* padQCcoef) {
  if (int rc = check_loaded(model)) return rc;
  if (iCon < -1 || iCon >= model->nCons) return QZERR_INDEX_OUT_OF_RANGE;
  const QuadData& q = model->quad;
  if (q.nnz() == 0) return QZERR_QCDATA_NOT_LOADED;
  for (int g = 0; g < q.groups(); ++g) {
    if (q.row[g] != iCon) continue;
    if (pnQCnnz) *pnQCnnz = q.beg[g + 1] - q.beg[g];
    for (int k = q.beg[g], t = 0; k < q.beg[g + 1]; ++k, ++t) {
      if (paiQCcols1) paiQCcols1[t] = q.col1[k];
      if (paiQCcols2) paiQCcols2[t] = q.col2[k];
      if (padQCcoef) padQCcoef[t] = q.coef[k];
    }
    return 0;
  }
  if (pnQCnnz) *pnQCnnz = 0;
  return QZERR_NO_QCDATA_IN_ROW;
}

int QZgetPOSDData(QZmodel model, int* pnPOSD, int* paiPOSDdim, int* paiPOSDnnz, int* paiPOSDbeg,
                  int* paiPOSDrowndx, int* paiPOSDcolndx, int* paiPOSDvarndx) {
  if (int rc = check_loaded(model)) return rc;
  const POSDData& d = model->posd;
  if (pnPOSD) *pnPOSD = d.count();
  int pos = 0;
  for (int b = 0; b < d.count(); ++b) {
    if (paiPOSDdim) paiPOSDdim[b] = d.dim[b];
    if (paiPOSDbeg) paiPOSDbeg[b] = pos;
    int nnz = 0;
    for (int r = 0; r < d.dim[b]; ++r)
      for (int c = 0; c <= r; ++c) {
        const int v = d.slot[b][r * (r + 1) / 2 + c];
        if (v < 0) continue;
        if (paiPOSDrowndx) paiPOSDrowndx[pos] = r;
        if (paiPOSDcolndx) paiPOSDcolndx[pos] = c;
        if (paiPOSDvarndx) paiPOSDvarndx[pos] = v;
        ++pos;
        ++nnz;
      }
    if (paiPOSDnnz) paiPOSDnnz[b] = nnz;
  }
  if (paiPOSDbeg && d.count() > 0) paiPOSDbeg[d.count()] = pos;
  return 0;
}

int QZgetPOSDDatai(QZmodel model, int iPOSD, int* pnPOSDdim, int* pnPOSDnnz, int* paiPOSDrowndx,
                   int* paiPOSDcolndx, int* paiPOSDvarndx) {
  if (int rc = check_loaded(model)) return rc;
  const POSDData& d = model->posd;
  if (iPOSD < 0 || iPOSD >= d.count()) return QZERR_INDEX_OUT_OF_RANGE;
  if (pnPOSDdim) *pnPOSDdim = d.dim[iPOSD];
  int pos = 0;
  for (int r = 0; r < d.dim[iPOSD]; ++r)
    for (int c = 0; c <= r; ++c) {
      const int v = d.slot[iPOSD][r * (r + 1) / 2 + c];
      if (v < 0) continue;
      if (paiPOSDrowndx) paiPOSDrowndx[pos] = r;
      if (paiPOSDcolndx) paiPOSDcolndx[pos] = c;
      if (paiPOSDvarndx) paiPOSDvarndx[pos] = v;
      ++pos;
    }
  if (pnPOSDnnz) *pnPOSDnnz = pos;
  return 0;
}

int QZgetALLDIFFData(QZmodel model, int* pinALLDIFF, int* paiAlldiffDim, int* paiAlldiffL,
                     int* paiAlldiffU, int* paiAlldiffBeg, int* paiAlldiffVar) {
  if (int rc = check_loaded(model)) return rc;
  const AllDiffData& a = model->alldiff;
  if (pinALLDIFF) *pinALLDIFF = a.count();
  copy_out(a.dim, paiAlldiffDim);
  copy_out(a.lower, paiAlldiffL);
  copy_out(a.upper, paiAlldiffU);
  copy_out(a.beg, paiAlldiffBeg);
  copy_out(a.vars, paiAlldiffVar);
  return 0;
}

int QZgetALLDIFFDatai(QZmodel model, int iALLDIFF, int* pnAlldiffDim, int* pnAlldiffL,
                      int* pnAlldiffU, int* paiAlldiffVar) {
  if (int rc = check_loaded(model)) return rc;
  const AllDiffData& a = model->alldiff;
  if (iALLDIFF < 0 || iALLDIFF >= a.count()) return QZERR_INDEX_OUT_OF_RANGE;
  if (pnAlldiffDim) *pnAlldiffDim = a.dim[iALLDIFF];
  if (pnAlldiffL) *pnAlldiffL = a.lower[iALLDIFF];
  if (pnAlldiffU) *pnAlldiffU = a.upper[iALLDIFF];
  if (paiAlldiffVar)
    std::copy(a.vars.begin() + a.beg[iALLDIFF], a.vars.begin() + a.beg[iALLDIFF + 1],
              paiAlldiffVar);
  return 0;
}

static int get_start(QZmodel model, const std::vector<double>& v, double* out) {
  if (int rc = check_loaded(model)) return rc;
  if (out == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (v.empty()) return QZERR_INFO_NOT_AVAILABLE;
  copy_out(v, out);
  return 0;
}

int QZgetVarStartPoint(QZmodel model, double* padPrimal) {
  return get_start(model, model ? model->start.primal : std::vector<double>{}, padPrimal);
}
int QZgetMIPVarStartPoint(QZmodel model, double* padPrimal) {
  return get_start(model, model ? model->start.mip : std::vector<double>{}, padPrimal);
}

static int get_start_partial(QZmodel model, bool mip, int* pnCols, int* paiCols,
                             double* padPrimal) {
  if (int rc = check_loaded(model)) return rc;
  const auto& cols = mip ? model->start.mipPartialCols : model->start.partialCols;
  const auto& vals = mip ? model->start.mipPartialVals : model->start.partialVals;
  if (cols.empty()) return QZERR_INFO_NOT_AVAILABLE;
  if (pnCols) *pnCols = static_cast<int>(cols.size());
  copy_out(cols, paiCols);
  copy_out(vals, padPrimal);
  return 0;
}

int QZgetVarStartPointPartial(QZmodel model, int* pnCols, int* paiCols, double* padPrimal) {
  return get_start_partial(model, false, pnCols, paiCols, padPrimal);
}
int QZgetMIPVarStartPointPartial(QZmodel model, int* pnCols, int* paiCols, double* padPrimal) {
  return get_start_partial(model, true, pnCols, paiCols, padPrimal);
}

int QZgetVarPriorities(QZmodel model, int* panCprior) {
  if (int rc = check_loaded(model)) return rc;
  if (panCprior == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (model->priorities.empty()) return QZERR_INFO_NOT_AVAILABLE;
  copy_out(model->priorities, panCprior);
  return 0;
}

int QZgetGOPVariablePriority(QZmodel model, int iVar, int* pnPriority) {
  if (int rc = check_loaded(model)) return rc;
  if (iVar < 0 || iVar >= model->nVars) return QZERR_INDEX_OUT_OF_RANGE;
  if (pnPriority == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  *pnPriority = model->priorities.empty() ? 0 : model->priorities[iVar];
  return 0;
}

}  // extern "C"
