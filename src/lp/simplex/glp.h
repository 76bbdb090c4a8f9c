// The working record of the simplex engine, at most one per model.
//
// Bounded working form. Columns 0..n-1 are the structurals, column n+i is the logical of row
// i, with coefficient +1 (-1 for a 'G' row), so that every row reads A x + s = rhs (A x - s =
// rhs for 'G'). Everything in the record is in scaled space; vectors leave it only through
// `putsolution` and the public solves. A structural whose only finite bound is the upper one
// is mirrored (x := -x) so that every non-free nonbasic column has a finite lower bound.
#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "lp/simplex/spmat.h"
#include "lp/simplex/spx_lu.h"
#include "lp/simplex/svec.h"

struct Imodel;

namespace zento {

enum Xstat {
  XSTAT_NA = 0,
  XSTAT_CONT = 1,
  XSTAT_OPT = 2,
  XSTAT_INF = 3,
  XSTAT_INFORUNB = 4,
  XSTAT_UNB = 5,
  XSTAT_ITERLIM = 6,
  XSTAT_SWITCH = 7,
  XSTAT_TIMELIM = 8,
  XSTAT_CTRLC = 9,
  XSTAT_CUTOFF = 10,
};

enum Wfact {
  WFACT_NO = 0,
  WFACT_INIT = 1,
  WFACT_REFACT = 2,
  WFACT_MAXDMERGE = 3,
  WFACT_CHKOPT = 4,
  WFACT_CHKFSB = 5,
  WFACT_NUMERR = 6,
  WFACT_CHKUNB = 7,
  WFACT_PHASECHG = 8,
  WFACT_ENDPERT = 9,
  WFACT_DENSETA = 10,
  WFACT_LUSPACE = 11,
  WFACT_BUPERR = 12,
  WFACT_CYCLING = 13,
};

extern const char* const szXSTAT[11];
extern const char* const szWFACT[14];

// Nonbasic states of `cbas`; a value >= 0 is the basis position.
constexpr int kAtLower = -1;
constexpr int kAtUpper = -2;
constexpr int kFree = -3;
constexpr int kFixed = -4;

// Column flags of `cflag`.
constexpr int kFlagRejected = 1;
constexpr int kFlagEmpty = 2;
constexpr int kFlagExcluded = 4;
constexpr int kFlagFree = 8;

// Bits of `lptool` (QZ_IPARAM_LP_OPRFREE).
constexpr int kToolDropShifts = 1;
constexpr int kToolExpand = 2;
constexpr int kToolHarrisShift = 4;
constexpr int kToolPhase2Shift = 8;
constexpr int kToolOscalCeps = 16;
constexpr int kToolHalveReps2 = 32;
constexpr int kToolScaleObjRow = 64;
constexpr int kToolKeepPert = 128;
constexpr int kToolNoEps2Cond = 0x400;
constexpr int kToolDegenByObj = 0x1000;
constexpr int kToolDynCeps = 0x2000;
constexpr int kToolDynPvteps = 0x4000;
constexpr int kToolLuWfact = 0x8000;

// Bits of `gflags`.
constexpr int kGflagWarm = 2;
constexpr int kGflagPhase1Mode = 8;
constexpr int kGflagFeasible = 0x10;
constexpr int kGflagImproved = 0x100;
constexpr int kGflagPendingFact = 0x200;
constexpr int kGflagReopt = 0x400;

constexpr double kMachEps = 2.220446049250313e-16;

// A saved basis head.
struct BasSnap {
  std::vector<int> cbas;
  bool stale = true;
  int uses = 0;
  double iter = 0;
  double cond2est = 0;
  double rcond = 0;
};

// Row-wise copy of the structural columns for the pivot row, each row's nonbasic entries
// first, so that the row-wise product never reads a basic column. compute_pivrow keeps it in
// step with the basis heads it last saw; `at` maps an entry of acols to its place here.
struct RowPart {
  bool built = false;
  bool cols_sorted = false;  // every column's entries in increasing row order
  std::vector<int> beg, nnb;  // row i is [beg[i], beg[i+1]); its first nnb[i] are nonbasic
  std::vector<int> col, src, at;
  std::vector<double> val;
  std::vector<int> heads;    // rbas at the last sync
  std::vector<char> basic;   // structural column held in the basic parts
  long nnz_nb = 0;           // entries of the nonbasic structurals
};

struct Glp {
  Imodel* model = nullptr;

  // Problem data.
  int m = 0, n = 0;
  long nonz = 0;
  int objsense = 1;
  double objconst = 0;
  SpMat acols;  // n + m columns, logicals included
  SpMat arows;  // m rows over the n + m columns
  std::vector<double> cost, cost0, rhs, lb, ub, lb0, ub0;
  std::vector<double> shift;
  std::vector<int> shifted;
  int nshift = 0;
  std::vector<int> cflag;
  std::vector<char> flipped;
  std::vector<int> fliplist;
  int nflip = 0;
  std::vector<char> rtype;    // row type letters of the model
  std::vector<char> isint;    // integer structurals
  std::vector<double> rscal, cscal;
  double oscal = 1.0;
  int scale = 0;
  double cond0 = 1.0, condsc = 1.0;
  double maxoc = 0;  // largest |c_j| of the model

  // Basis.
  std::vector<int> cbas, rbas;
  std::vector<char> rstat;
  std::vector<double> rhs1, dual, rdc, xvec;
  bool duals_exact = false;  // dual and rdc were just solved for cost0 on this basis
  int nsuper = 0;
  std::vector<int> superidx;
  std::vector<double> superval;
  BasSnap oldbas, bestbas;
  bool rhs1_rel_lb = false;  // not used: the dual keeps full values

  // Status and progress.
  int pord = 0;
  int xstat = XSTAT_CONT;
  int wfact = WFACT_INIT;
  int wfactcnt[14] = {};
  int fiter = 0;
  int nfact = 0;
  double iter = 0, iterbase = 0;
  int npinf = 0, ndinf = 0;
  double sumpinf = 0, sumdinf = 0;
  int pivi = 0, pivj = -1, vleave = -1;
  double pivcoe = 0;
  int cbasin = 0, cbasout = 0;
  int crash = 1;
  int crcflag = 1;
  char itype = 'P';
  int gflags = 0;
  int dpswitch = 1;
  double objval = 0;
  double itrlim = -1;
  double timlim = -1;
  double tstart = 0;
  int hint = -1;
  int running = 0;              // a solve is under way on this record
  bool changed_costs = false;   // data changes taken since the last solve
  bool changed_bounds = false;

  // Tolerances and numeric state, with start values.
  double reps = 1e-7, reps0 = 1e-7, reps2 = 1e-7;
  double ceps = 1e-7, ceps0 = 1e-7;
  double pvteps = 1e-8, pvteps0 = 1e-8;
  double pvtbig = 1e-5;
  double azero = kMachEps;
  double bigM = 1e6, bigM0 = 1e6, bigMentry = 1e6;
  double mkweps = 0.5;
  int ratrange = 4, ratrange0 = 4;
  double ptval = 0.0002;
  int refacfrq = 200, refacfrq0 = 200;
  double pcolal = 0.1;
  double pertfact = 0;
  double rcond = 1.0, cond1est = 1.0, cond2est = 1.0;
  bool cond1est_stale = false;  // the basis moved since cond1est: spx_cond1est renews it
  double minfeastol = 1e-9, maxfeastol = 1e-5, minopttol = 1e-9, maxopttol = 1e-5;
  double minpivtol = 1e-10, maxpivtol = 1e-5;
  double infinity = 1e30, bndinf = 1e15;
  double pertfeastol = 1e-12;
  int lptool = 16468, umode = 30, xmode = 128;
  int basrecov = 1;
  int printlevel = 0;
  int prtfg = 0;
  int ppricing_param = -1, dpricing_param = -1, ppartial_param = 0;
  int dratio = 1, dphase_param = 0;
  bool use_cutoff = false;
  double cutoff = -1e30;
  double cutoff_bound = 0;  // the bound that passed the cutoff (user's sense)
  bool mip_relax = false;
  int oldbas_restores = 0;
  int rowrej_timer = 0;
  double ynorm = 0;
  double pinf_unscaled = 0, dinf_unscaled = 0;
  double pinf_scaled = 0, dinf_scaled = 0;

  // Primal method.
  int pricemode = 0;
  int ppricing = -1;
  int ppartial = 2;
  int ppmode = 1;
  std::vector<int> plist;
  int plistpos = 0, plistend = 0;
  int pcand = 10;
  int dualstate = 0;
  double pivrdc = 0;
  int dir = 0;
  double mrat = 0;
  int pert = 0, pertcnt = 0;
  std::vector<double> ptotal;
  int ndegen = 0, ndegen0 = 0;
  double degmark_iter = 0;
  int noimp = 0, nworse = 0, badnum = 0;
  int nrej = 0, nexcl = 0, kcycle = 0;
  int xray = -1;
  int passes = 0;
  std::vector<double> pweight;
  std::vector<int> cyc_enter, cyc_leave;  // recent pivots for cycle detection
  double best_composite = 1e300;
  double best_sinf = 1e300;
  double last_obj = 1e300, last_sinf = 1e300;
  bool last_valid = false;
  int nstretch = 0;
  bool fullscan = false;
  int pperiod = 5000, pperiod_cnt = 0;
  double touch_cnt = 0;

  // Dual method.
  int dphase = 0;
  int dpricemode = 1;
  std::vector<double> dual_norm;
  std::vector<double> rdcshift;
  int dperturbed = 0;
  int dpickrow = 1;
  int leavedir = -1;
  double pivcoe_d = 0;
  double pivnorm2 = 0;
  int nflip_d = 0;
  int dualbad = 0;
  int dstall = 0, dworse = 0;
  double dbest = -1e300;
  double dmark_obj = 0, dmark_sinf = 0, dmark_sinf_min = -1, dmark_sdinf = 0;
  int dmark_npinf = 0, dmark_pmin = 0;
  double dmark_iter = 0;
  int dmark_degen = 0;
  bool norms_valid = false;  // dual_norm belongs to the current basis
  int norms_mode = -1;       // the pricing rule they were made for
  std::vector<char> rowrej;
  std::vector<double> aux_lb, aux_ub;  // bounds of the dual phase-1 problem
  double mean_colcnt = 0;

  // Work vectors.
  SVec col, row, rho, tau, wvec, wvec2;
  std::vector<double> prow;     // pivot row values by column
  std::vector<int> prow_idx;    // columns listed in the pivot row
  int prow_n = 0;
  std::vector<char> prow_mark;
  RowPart rowpart;
  std::vector<char> rowmark;    // scratch marks over rows, all zero between uses
  std::vector<double> dwork;

  SpxLu lu;
  std::mt19937 rng{10007u};

  double urand() { return std::uniform_real_distribution<double>(0.0, 1.0)(rng); }
  int irand(int k) { return k <= 1 ? 0 : std::uniform_int_distribution<int>(0, k - 1)(rng); }
  bool is_logical(int j) const { return j >= n; }
};

void freeglp(Glp* g);

}  // namespace zento
