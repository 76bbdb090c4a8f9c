// The model record `Imodel`: problem data, parameter copies, solution records and the
// working memory of the solvers that ran on it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/params/param_blocks.h"
#include "core/run_state.h"
#include "core/solution.h"
#include "zento.h"

namespace zento {
struct Profiler;
struct Glp;
struct GlpDeleter {
  void operator()(Glp* g) const;
};
struct PresolveRecord;
struct PresolveRecordDeleter {
  void operator()(PresolveRecord* p) const;
};
}  // namespace zento

namespace zento {

// Column-wise matrix with optional gaps: column j occupies
// [paiAcols[j], paiAcols[j] + panAcols[j]) and its span may be larger.
struct LinearData {
  int dObjSense = QZ_MIN;
  double dObjConst = 0.0;
  std::vector<double> padC;
  std::vector<double> padB;
  std::vector<char> pszConTypes;
  std::vector<int> paiAcols;
  std::vector<int> panAcols;
  std::vector<double> padAcoef;
  std::vector<int> paiArows;
  std::vector<double> padL;
  std::vector<double> padU;
  std::vector<char> pszVarTypes;  // empty: all continuous
  // Row indices ascend within every column. Capacities of the families are the capacities of
  // these vectors (QZsetProbAllocSizes reserves them).
  bool rowsSorted = false;
};

// Row-wise copy of the matrix, built on demand (`setup_Acolpos`).
struct RowCopy {
  std::vector<int> begin;  // nCons + 1
  std::vector<int> col;
  std::vector<double> val;
};

struct NamePool {
  std::vector<char> pool;   // zero-terminated names one after the other
  std::vector<int> offset;  // start of each name in pool
  bool empty() const { return offset.empty(); }
  const char* name(int i) const { return pool.data() + offset[i]; }
  int bytes() const { return static_cast<int>(pool.size()); }
};

struct NameData {
  std::string title, objName, rhsName, rngName, bndName;
  NamePool rows, cols, cones;
};

// Name-to-index tables, built the first time a lookup needs them.
struct NameHash {
  std::unique_ptr<std::unordered_map<std::string, int>> rows, cols, cones;
};

struct SetsData {
  std::vector<char> type;  // bytes 1..4
  std::vector<int> card;
  std::vector<int> begcol;  // nSETS + 1
  std::vector<int> cols;
  std::vector<int> state;  // complement of the state set by QZsetSETSStatei; empty until used
  int count() const { return static_cast<int>(type.size()); }
};

struct SemiContData {
  std::vector<int> vars;
  std::vector<double> lower;
};

struct ConeData {
  std::vector<char> type;
  std::vector<double> alpha;
  std::vector<int> beg;  // nCones + 1
  std::vector<int> cols;
  int count() const { return static_cast<int>(type.size()); }
};

struct POSDData {
  std::vector<int> dim;
  // Lower triangle by rows: slot r(r+1)/2 + c holds the variable at (r, c), -1 for none.
  std::vector<std::vector<int>> slot;
  int count() const { return static_cast<int>(dim.size()); }
};

struct AllDiffData {
  std::vector<int> dim, lower, upper, beg, vars;
  int count() const { return static_cast<int>(dim.size()); }
};

// Quadratic terms grouped by row, objective (-1) first; each term has col1 <= col2.
struct QuadData {
  std::vector<int> row;  // per group
  std::vector<int> beg;  // per group + 1
  std::vector<int> col1, col2;
  std::vector<double> coef;
  std::vector<int> termsPerVar;
  int nQuadVars = 0;
  int nQuadRows = 0;  // constraint rows with terms
  bool objHasTerms = false;
  bool convex = true;
  int nnz() const { return static_cast<int>(coef.size()); }
  int groups() const { return static_cast<int>(row.size()); }
};

struct StartPoints {
  std::vector<double> primal, mip;
  std::vector<int> partialCols, mipPartialCols;
  std::vector<double> partialVals, mipPartialVals;
};

// Statistics computed at load (`baseStats`).
struct BaseStats {
  int nLower = 0, nUpper = 0, nBoxed = 0, nFixed = 0, nFree = 0;
  int nFreeEmptyWithCost = 0, nCol1 = 0, nCol2 = 0;
  int nL = 0, nE = 0, nG = 0, nN = 0, nRow1 = 0, nE2 = 0, nRanged = 0;
  int densestRow = 0, densestCol = 0;
  double rowLenGeoMean = 0, colLenGeoMean = 0;
  // max, min, ratio of absolute values: matrix, objective, rhs, lower, upper
  double absMax[5] = {0, 0, 0, 0, 0};
  double absMin[5] = {0, 0, 0, 0, 0};
  double ratio[5] = {0, 0, 0, 0, 0};
  int badScale = 0;
  int nBin = 0, nInt = 0, nBinRows = 0, nIntRows = 0;
  bool stale = false;  // data changed since the statistics were computed
};

// Block or time structure of rows and columns (block numbers from 0), with the names of the
// blocks when a file gave them; `type` 1 is a time structure given by first members (LP).
struct BlockStructure {
  int nBlocks = 0;
  int type = 0;
  std::vector<int> rowBlock, colBlock;
  std::vector<std::string> names;
};

// Where the model was read from and what the reader added to the file's own columns.
struct FileInfo {
  std::string dir, stem, ext;
  int nFileVars = 0;      // columns of the file, before range slacks
  int nRangeSlacks = 0;   // one column and one nonzero each
  int nIndicatorNnz = 0;  // nonzeros added when indicator rows were made linear
};

struct Callbacks {
  QZcallback_t progress = nullptr;
  void* progressData = nullptr;
  QZcallback_t internalProgress = nullptr;  // for bridges; result ignored
  void* internalProgressData = nullptr;
  QZlogFunc_t logFunc = nullptr;
  void* logData = nullptr;
  void* fde = nullptr;
  void* fdeData = nullptr;
  void* funcalc = nullptr;
  void* funcalcData = nullptr;
  void* gradcalc = nullptr;
  void* gradcalcData = nullptr;
  void* hesscalc = nullptr;
  void* hesscalcData = nullptr;
  void* usercalc = nullptr;
  void* usercalcData = nullptr;
  QZmipCallback_t mipFunc = nullptr;
  void* mipData = nullptr;
  QZmipInsSolCallback_t mipSolFunc = nullptr;
  void* mipSolData = nullptr;
  QZmipInsObjCallback_t mipObjFunc = nullptr;
  void* mipObjData = nullptr;
  QZgopCallback_t gopFunc = nullptr;
  void* gopData = nullptr;
};

}  // namespace zento

struct Imodel {
  QZenv env = nullptr;
  zento::Callbacks cb;
  int lastError = 0;
  int modelState = QZ_STATUS_UNLOADED;

  std::unique_ptr<zento::Sol> sol;
  std::unique_ptr<zento::MipSol> mipsol;
  std::unique_ptr<zento::GopSol> gopsol;

  zento::SolverParams SolverPam;
  zento::SplexParams SplexPam;
  zento::BandBParams BandBPam;
  zento::NLPParams NLPPam;
  zento::GOPParams GOPPam;
  zento::IISParams IISPam;
  zento::SPParams SPPam;
  std::vector<zento::ParItem> AllPamItems;

  // Solver working memory.
  std::unique_ptr<zento::Glp, zento::GlpDeleter> glp;
  bool holdLog = false;       // a copy in progress logs nothing
  bool isWorkingCopy = false;  // internal scratch model
  int inNested = 0;            // the model's own nested-call marker

  zento::NameData names;
  zento::NameHash nameHash;

  int nCons = 0;
  int nVars = 0;
  int nAnnz = 0;
  int nNLPnnz = 0;
  int nNLPobjnnz = 0;
  zento::LinearData lp;
  std::unique_ptr<zento::RowCopy> rowCopy;

  zento::QuadData quad;
  zento::ConeData cones;
  zento::POSDData posd;
  zento::SetsData sets;
  zento::SemiContData semicont;
  zento::AllDiffData alldiff;
  zento::StartPoints start;
  std::vector<int> priorities;
  zento::BaseStats baseStats;

  Imodel* masterModel = nullptr;
  Imodel* parentModel = nullptr;
  int callLevel = 0;
  int callLevelSaved = 0;

  double createdWall = 0;
  double createdCpu = 0;
  double lastCallbackWall = 0;
  std::string modelTypeText;

  // The most recent file error: line number and text.
  int fileErrorLine = 0;
  std::string fileErrorText;

  zento::FileInfo fileInfo;
  zento::BlockStructure blocks;
  // Parameter values of the reference model of QZsetParModel, by registry row; empty if none.
  std::vector<double> parRefValues;

  // What a running solver reports to callbacks, and the latched stop of a search.
  zento::RunState run;
  // Timers and counters; shared with working copies hooked to this model.
  std::shared_ptr<zento::Profiler> prof;
  // Where the model came from: file name, reader, stochastic file name.
  std::string modelFileName, modelSource, stocFileName;
  int nNLPcons = 0;  // rows and columns that appear in nonlinear terms
  int nNLPvars = 0;
  // Per column, zero between calls: duplicate marks and counts of QZaddConstraints.
  std::vector<int> addScratch;
  // Columns added by QZaddArtColumns, in model numbering.
  std::vector<int> artCols;
  // The reduced model and post stack of the LP presolve, kept for later solves.
  std::unique_ptr<zento::PresolveRecord, zento::PresolveRecordDeleter> presolve;
};
