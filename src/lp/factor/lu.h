// The basis factorization layer: one object per simplex record, two engines behind it.
//
// The simplex keeps a basis header `rbas` (the variable basic in each slot 0..m-1) and asks
// this layer to factor B = [A_rbas[0] ... A_rbas[m-1]], to solve B x = b (FTRAN) and
// B^T y = c (BTRAN), and to replace one slot by a new column (update). The simplex never sees
// which engine runs:
//
//   lucore 4 (default, 0 means 4): SLU, a threshold-Markowitz LU with singleton passes, row- and
//     column-wise copies of U, a Forrest-Tomlin update with a row eta file, and hyper-sparse
//     triangular solves (Gilbert-Peierls reach by depth-first search, dense loops above a
//     density threshold).
//   lucore 3: CLU, the older engine: column Markowitz with its own candidate search, product-form
//     eta update, topological sparse solves.
//   anything else: QZI_lu_create fails with QZERR_NOT_SUPPORTED.
//
// Vectors travel in the sparse-or-dense record `SpVec`: n >= 0 lists n entries (idx[k], val[k]
// by list slot), n < 0 means dense (val indexed by row or slot, all m valid). FTRAN takes a
// vector indexed by row and returns one indexed by slot; BTRAN takes one indexed by slot and
// returns one indexed by row.
//
// Basis columns are pulled through a callback that points into the host's own (scaled) matrix,
// so no copy of B is ever built by the simplex. Codes: functions return 0, a QZERR_* code, or
// for the solving calls the engine status (LuStat) when the factor is not usable.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace zento::lu {

// Engine status `stat`.
enum LuStat : int {
  kLuOk = 0,
  kLuSingular = 1,
  kLuNoMemory = 2,
  kLuUpdateFailed = 3,  // the caller refactorizes from the current basis
  kLuNoSpace = 4,       // CLU eta pool full: refactorize
  kLuNotFactored = 5,
};

// Refactorization requests (values of `wfact` in the simplex record).
inline constexpr int kWfactNo = 0;
inline constexpr int kWfactRefact = 2;
inline constexpr int kWfactDenseta = 10;

inline constexpr int kLuCoreClu = 3;
inline constexpr int kLuCoreSlu = 4;

// Engine option ids, accepted by QZI_lu_set_ipar / QZI_lu_set_dpar.
inline constexpr int SLU_IPAR_NUM_CANDITS = 1000;
inline constexpr int SLU_IPAR_MAX_UPDATES = 1001;
inline constexpr int SLU_IPAR_PRINT_LEVEL = 1002;
inline constexpr int SLU_IPAR_UPDATE_TYPE = 1003;
inline constexpr int SLU_IPAR_USE_PIVCOL = 1004;
inline constexpr int SLU_IPAR_MEM_EXP = 1005;
inline constexpr int SLU_IPAR_MODE = 1007;
inline constexpr int SLU_IPAR_PROFILE = 1008;
inline constexpr int SLU_DPAR_EPS_DIAG = 1100;
inline constexpr int SLU_DPAR_EPS_NONZ = 1101;
inline constexpr int SLU_DPAR_EPS_PIVABS = 1102;
inline constexpr int SLU_DPAR_EPS_PIVREL = 1103;
inline constexpr int SLU_DPAR_INI_RCOND = 1104;
inline constexpr int SLU_DPAR_SPVTOL_UPDATE = 1105;
inline constexpr int SLU_DPAR_SPVTOL_FTRAN = 1106;
inline constexpr int SLU_DPAR_SPVTOL_BTRAN = 1107;

// Information keys: 3001/3002 quick-back values stored at each factorization, 3003 the
// direction of the entering column, 3101 the pivot element of the coming update.
inline constexpr int SLU_IINFO_QUICKBACK1 = 3001;
inline constexpr int SLU_IINFO_QUICKBACK2 = 3002;
inline constexpr int SLU_IINFO_DIR = 3003;
inline constexpr int SLU_DINFO_PIVCOE = 3101;

// Parameter ids of the simplex block that feed the options (see lu_options_set_param).
inline constexpr int kParLuNumCandits = 4800;
inline constexpr int kParLuMaxUpdates = 4801;
inline constexpr int kParLuPrintLevel = 4802;
inline constexpr int kParLuUpdateType = 4803;
inline constexpr int kParLuMode = 4804;
inline constexpr int kParLuPivmod = 4806;
inline constexpr int kParLuEpsDiag = 4900;
inline constexpr int kParLuEpsNonz = 4901;
inline constexpr int kParLuEpsPivabs = 4902;
inline constexpr int kParLuEpsPivrel = 4903;
inline constexpr int kParLuIniRcond = 4904;
inline constexpr int kParLuSpvtolUpdate = 4905;
inline constexpr int kParLuSpvtolFtran = 4906;
inline constexpr int kParLuSpvtolBtran = 4907;
inline constexpr int kParLuCore = 4908;

// Trace sink: one ready line (starting with "\n") per call.
using LuLogFn = void (*)(void* user, const char* line);

// Working options of one factor object. Defaults are those of the parameter table.
struct LuOptions {
  int lucore = kLuCoreSlu;
  int num_candits = 4;
  int max_updates = 500;
  int print_level = 0;
  int update_type = 1;  // 1 Forrest-Tomlin, 0 product-form eta
  int mode = 0;         // bit 1: pivot column as eta, bit 4: stepped threshold rule
  int pivmod = 0;       // stored only
  int mem_exp = 5;
  int profile = 0;
  double eps_diag = 2.220446049250313e-16;
  double eps_nonz = 2.220446049250313e-16;
  double eps_pivabs = 1e-8;  // stored and shown; no factorization step compares against it
  double eps_pivrel = 0.5;
  double ini_rcond = 0.01;
  double spvtol_update = 0.001;
  double spvtol_ftran = 0.2;
  double spvtol_btran = 0.1;
  LuLogFn log = nullptr;
  void* log_user = nullptr;
};

// Sets one option from a simplex parameter id (4800..4908). Negative values select the default
// where the parameter has one; returns QZERR_PARAM_OUT_OF_RANGE or QZERR_INDEX_OUT_OF_RANGE.
[[nodiscard]] int lu_options_set_param(LuOptions& opt, int param_id, double value);

}  // namespace zento::lu

namespace zento {
struct SplexParams;
}

namespace zento::lu {

// Fills the options from the lu_* fields of the simplex parameter block (ids 4800..4908). The
// log sink and the stepped-rule bit of the simplex print mask stay the caller's to set.
[[nodiscard]] int lu_options_from_params(const SplexParams& p, LuOptions* opt);

// A basis column in host storage: `len` entries, row indices `idx`, values `val`.
struct LuColumn {
  const int* idx = nullptr;
  const double* val = nullptr;
  int len = 0;
};

// Delivers the column of basic variable `var` (the encoding of structurals and logicals is the
// host's). Points `out` into host storage valid until the next call; returns 0 or an error code.
using LuColumnFn = int (*)(void* host, int var, LuColumn* out);

// Ready-made host for a column-sparse matrix: var < ncols is column var of the matrix, var =
// ncols + i is the logical of row i with coefficient logical_sign[i] (+1 when null).
struct LuCscHost {
  int nrows = 0;
  int ncols = 0;
  const int* colbeg = nullptr;   // ncols + 1 starts
  const int* collen = nullptr;   // optional lengths (gaps allowed)
  const int* rowidx = nullptr;
  const double* val = nullptr;
  const double* logical_sign = nullptr;
  std::vector<int> unit_idx;     // filled by init_logicals(): 0..nrows-1
  std::vector<double> unit_val;  // +-1 per row
  void init_logicals();
};

// Sparse-or-dense vector record used by every solve.
struct SpVec {
  int n = 0;                // listed entries; negative: dense
  std::vector<int> idx;     // positions of listed entries
  std::vector<double> val;  // by list slot when sparse, by position when dense
  int ndense = 0;           // solves that left this vector dense / sparse
  int nsparse = 0;

  SpVec() = default;
  explicit SpVec(int m) { resize(m); }
  void resize(int m) {
    idx.assign(m, 0);
    val.assign(m, 0.0);
    n = 0;
  }
  int dim() const { return static_cast<int>(val.size()); }
  bool dense() const { return n < 0; }
  void clear() { n = 0; }
  // Dense zero vector.
  void set_dense_zero();
  // Unit vector e_i in list form.
  void set_unit(int i, double v = 1.0) {
    n = 1;
    idx[0] = i;
    val[0] = v;
  }
  // Value at a position, whatever the form (linear in the list length when sparse).
  double at(int i) const;
  // Copies into a dense array of dim() values.
  void to_dense(double* out) const;
};

// A vector in the caller's storage, solved in place: values by position (all m valid, zero
// where not listed) and the list of the nonzero positions; *n < 0 marks a dense vector whose
// list is not valid. Results always come back listed.
struct SvRef {
  double* val;
  int* idx;
  int* n;
  // The caller expects a dense result: the U stage skips its reach search, which would only
  // be abandoned past the density threshold.
  bool dense_u = false;
};

class LuEngine;

// The factor object owned by the simplex record.
class LuFactor {
 public:
  LuFactor(int m, const LuOptions& opt, LuColumnFn datacol, void* host);
  ~LuFactor();
  LuFactor(const LuFactor&) = delete;
  LuFactor& operator=(const LuFactor&) = delete;

  // Builds the engine named by options().lucore; 0 or QZERR_NOT_SUPPORTED.
  [[nodiscard]] int make_engine();
  // New row count: the engine is rebuilt and must factor again.
  [[nodiscard]] int redim(int m);
  int m() const { return m_; }
  // Read freely; change through QZI_lu_set_ipar / QZI_lu_set_dpar, which tell the engine.
  LuOptions& options() { return opt_; }
  const LuOptions& options() const { return opt_; }
  LuEngine& engine() { return *engine_; }
  const LuEngine& engine() const { return *engine_; }
  LuColumnFn datacol() const { return datacol_; }
  void* host() const { return host_; }

  // Running mean lengths of FTRAN and BTRAN results: they choose list or dense output.
  double ftran_mean = 0.0;
  double btran_mean = 0.0;
  int quickback[2] = {0, 0};
  int dir = 0;
  double pivcoe = 0.0;
  // Profile counters.
  int64_t nftran = 0, nftran_dense = 0, nbtran = 0, nbtran_dense = 0, nupdate = 0, nfact = 0;

 private:
  int m_;
  LuOptions opt_;
  LuColumnFn datacol_;
  void* host_;
  std::unique_ptr<LuEngine> engine_;
};

// Scale factors of the scaled basis for the user-scale solves below.
struct LuUserScale {
  int m = 0;
  int n = 0;
  const double* rscal = nullptr;  // m; null means 1
  const double* cscal = nullptr;  // n; null means 1
  const int* flipped = nullptr;   // n; null means none
  const int* rbas = nullptr;      // m
};

}  // namespace zento::lu

namespace zento {

using lu::LuFactor;
using lu::SpVec;

// Creates the factor object; null with *err set on failure (QZERR_NOT_SUPPORTED for an unknown
// engine, QZERR_OUT_OF_MEMORY, QZERR_PARAM_OUT_OF_RANGE for bad options).
[[nodiscard]] std::unique_ptr<LuFactor> QZI_lu_create(int m, const lu::LuOptions& opt,
                                                      lu::LuColumnFn datacol, void* host,
                                                      int* err);
void QZI_lu_delete(std::unique_ptr<LuFactor>& lu);

// The default column callback for an LuCscHost.
int QZI_lu_datacol(void* host, int var, lu::LuColumn* out);

// Factors the columns rbas[0..m-1]. Returns the engine status (0 OK, 1 singular, 2 no memory,
// 5 for m = 0), or minus a QZERR_* code when the host delivered a bad column (an unknown
// variable, a row index out of range, a value that is not finite).
int QZI_lu_fact(LuFactor& lu, const int* rbas);
// B x = b. `save` 1 keeps the partial result as the spike of the next update.
int QZI_lu_ftran(LuFactor& lu, const SpVec& in, SpVec& out, int save);
// The same solves on a vector in the caller's storage (input by row for FTRAN, by slot for
// BTRAN; output the other way). Entries at or below `drop` (and the engine's zero tolerance)
// leave the result. No copy through list-slot records, so a dense result costs two passes.
int QZI_lu_ftran_sv(LuFactor& lu, lu::SvRef v, int save, double drop);
int QZI_lu_btran_sv(LuFactor& lu, lu::SvRef v, double drop);
// Two FTRANs in one pass over the factors where both run dense: v1 (saved as the spike) comes
// back at once, v2 by QZI_lu_ftran2_finish, which counts as a solve made at that moment, so
// that solves in between see the same state as if v2 came last. QZI_lu_ftran2_drop forgets v2.
int QZI_lu_ftran2_sv(LuFactor& lu, lu::SvRef v1, lu::SvRef v2, double drop);
int QZI_lu_ftran2_finish(LuFactor& lu, lu::SvRef v2, double drop);
void QZI_lu_ftran2_drop(LuFactor& lu);
// Two right-hand sides; the first may be saved as the spike.
int QZI_lu_ftran2(LuFactor& lu, const SpVec& in1, SpVec& out1, const SpVec& in2, SpVec& out2,
                  int save1);
// B^T y = c.
int QZI_lu_btran(LuFactor& lu, const SpVec& in, SpVec& out);
// Replaces slot `pivi` by the column of the last saved FTRAN; `pivcoe` is the simplex pivot
// element (0: unknown) and `dir` 1 when it was negated. Returns the engine status.
int QZI_lu_update(LuFactor& lu, int pivi, double pivcoe, int dir);
// 0, WFACT_REFACT (2) or WFACT_DENSETA (10).
int QZI_lu_get_wfact(const LuFactor& lu, int min_frequency);
int QZI_lu_npcand(const LuFactor& lu);

int QZI_lu_eta_size(const LuFactor& lu);
int64_t QZI_lu_num_lnonz(const LuFactor& lu);
int64_t QZI_lu_num_unonz(const LuFactor& lu);  // off-diagonal plus diagonal
int64_t QZI_lu_num_pnonz(const LuFactor& lu);  // update (eta) file
int64_t QZI_lu_num_spsize(const LuFactor& lu);  // entries of the saved spike

double QZI_lu_get_rcond(const LuFactor& lu);
// 1: 1-norm estimate of cond(B) (a few solves), 2: largest/smallest |pivot|, 4: growth
// umax / max |B entry|. Other selectors give -1.
double QZI_lu_get_condest(LuFactor& lu, int which);
int QZI_lu_get_rank(const LuFactor& lu);
int QZI_lu_sing_num(const LuFactor& lu);
// Fills rows[k], slots[k] for the dependent pairs; the simplex puts the logical of rows[k] into
// slots[k]. Returns the number of pairs.
int QZI_lu_sing_idx(const LuFactor& lu, int* rows, int* slots);

int QZI_lu_set_ipar(LuFactor& lu, int id, int value);
int QZI_lu_set_dpar(LuFactor& lu, int id, double value);
int QZI_lu_get_ipar(const LuFactor& lu, int id, int* value);
int QZI_lu_get_dpar(const LuFactor& lu, int id, double* value);
// Stores an information value (keys 3001..3003 as ints, 3101 as a double).
int QZI_lu_set_vinfo(LuFactor& lu, int key, double value);
int QZI_lu_get_iinfo(const LuFactor& lu, int key, int* value);
int QZI_lu_get_dinfo(const LuFactor& lu, int key, double* value);

// Compresses a dense vector into list form when fewer than m*tol entries exceed 2.22e-16.
void QZI_lu_sparsify(int m, SpVec& v, double tol);

// Resizes the object for a new row count; the factor must be rebuilt.
int QZI_lu_redim(LuFactor& lu, int m);
// Engine status and its error code (0, or QZERR_OUT_OF_MEMORY for 2).
int QZI_lu_stat(const LuFactor& lu);
int QZI_lu_map_stat(int stat);
int QZI_lu_disp_params(const LuFactor& lu);
int QZI_lu_dump(const LuFactor& lu);
int QZI_lu_profiles(const LuFactor& lu);
int64_t QZI_lu_num_profiled(const LuFactor& lu);
// CLU keeps transposed copies and sparse work between solves; these rebuild and release them.
int QZI_lu_tpos(LuFactor& lu);
int QZI_lu_reset_lusp(LuFactor& lu);
int64_t QZI_lu_lusp_len(const LuFactor& lu);

// Solves in the user's scale given the scaled factor, for QZdoFTRAN / QZdoBTRAN. The scaled
// basis is R B C with R = diag(rscal) on rows and, per slot j with v = rbas[j], C_jj = cscal[v]
// (negated when flipped[v]) for a structural (v < n) and 1/rscal[v-n] for a logical. Input and
// output are (count, indices, values); outputs have room for m entries. Codes: 0,
// QZERR_INDEX_OUT_OF_RANGE (count < 0 or > m, or an index out of range), an engine status
// mapped through QZI_lu_map_stat, or QZERR_INFO_NOT_AVAILABLE when the factor is not usable.
[[nodiscard]] int lu_user_ftran(LuFactor& lu, const lu::LuUserScale& sc, int cnt, const int* idx,
                                const double* val, int* out_cnt, int* out_idx, double* out_val);
[[nodiscard]] int lu_user_btran(LuFactor& lu, const lu::LuUserScale& sc, int cnt, const int* idx,
                                const double* val, int* out_cnt, int* out_idx, double* out_val);

}  // namespace zento
