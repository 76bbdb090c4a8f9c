// The presolver's state and stages, shared by the files of gen_pre.
//
// The loop follows the classical LP presolve of Andersen and Andersen (1995) and Gondzio
// (1997): cheap row and column scans first (empty, singleton, fixed, forcing and redundant
// rows, implied free column singletons), then dual arguments (bounds on the row multipliers
// from column singletons fix dominated columns), duplicate rows and columns, and last the
// eliminator (doubleton equations and implied free columns substituted out with a fill
// limit). Each reduction pushes its undo record before the working copy changes.
//
// Bounds are never tightened from row activities alone: implied bounds serve only to decide
// that a column or a row side is free. Only a doubleton equation moves the bounds of the
// eliminated column onto the kept one, and its record says which bound came over, so that
// postsolve can move the basic status back to the eliminated column when the kept one ends
// on a borrowed bound.
#pragma once

#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "presolve/lpdata.h"
#include "presolve/post_stack.h"
#include "presolve/presolve.h"

namespace zento::presolve {

// Stage tags and the numbers the `last stage` information key reports.
enum Stage : int {
  kStageIni = 1,
  kStageSp1 = 2,
  kStageSpb = 3,
  kStageSdb = 4,
  kStageDrp = 5,
  kStageDcp = 6,
  kStageEli = 7,
  kStageEnd = 8,
};

// Level bits.
constexpr int kBitSimple = 2;
constexpr int kBitBounds = 4;
constexpr int kBitDual = 8;
constexpr int kBitEliminate = 16;
constexpr int kBitDupCol = 32;
constexpr int kBitDupRow = 64;
constexpr int kBitPassLimit = 1024;

class Presolver {
 public:
  Presolver(Imodel& m, PresolveRecord& rec, int level);
  // Runs the loop and builds the reduced model; returns 0 or an error code.
  int run(int* status);

  LpWork w;

 private:
  friend struct StageScope;
  // Stages (genpre.cpp, genpre_simple.cpp, genpre_dual.cpp, genpre_dup.cpp, geneli.cpp).
  int make_slacks_into_vars();
  int gen_pre_loop();
  int simple_spre();
  int check_row(int r);
  int check_col(int c);
  int singleton_col(int c);
  int genpre_dual_fixing();
  int genpre_dup_row();
  int genpre_dup_col();
  int dup_col_pair(int j, int k, double lambda);
  template <class Each, class Alive, class Visit, class Settled>
  int dup_pairs(Each each, Alive alive, Visit visit, Settled settled);
  void dup_scratch();
  void keep_shared_lengths();
  void keep_shared_keys();
  // Entries sorted by index appended to `out` (a row without its column `skip`).
  void col_entries(int c, std::vector<std::pair<int, double>>& out);
  void row_entries(int r, int skip, std::vector<std::pair<int, double>>& out);
  bool dense_order(int len, int range) const;
  void scatter(int i, double v);
  void gather(int range, std::vector<std::pair<int, double>>& out);
  int genpre_eliminator(bool doubletonOnly);
  int eliminate_doubleton(int r);
  int eliminate_implied_free(int c);
  // Whether row r implies the bounds of column c (coefficient a) from the others' bounds.
  bool implied_free(int c, int r, double a);
  int remove_slacks_vars();
  int setup_red_model();

  // Reductions with their records.
  void delete_row_rec(int r, int slack);
  void fix_col_rec(int c, double v, int row);
  void force_row_rec(int r, bool atMin);
  // Eliminates column c through row r (a doubleton when `k` >= 0 names the other column);
  // returns -1 when the bounds moved onto k cross.
  int eliminate_rec(int c, int r, int k);
  // Substitutes column c out of the rows it meets, through row r.
  void substitute(int c, int r);

  // Verdicts and tolerances.
  int infeasible();
  void dual_infeasible();
  double tol_infeas(double scale) const { return 10 * reps_ * (1 + std::fabs(scale)); }
  // Tightens [nlo, nup] by bounds [tlo, tup] borrowed from a removed row, marking the sides
  // taken in `flags`; bounds crossed by rounding meet at the borrowed side. False: infeasible.
  bool take_borrowed_bounds(double tlo, double tup, double& nlo, double& nup, int& flags) const;
  double tol_tight(double scale) const { return 1e-2 * reps_ * (1 + std::fabs(scale)); }
  bool dual_on() const { return (level_ & kBitDual) && !rec_.dualInfeasible; }

  // Bookkeeping of a stage: log line, progress, clock and callback.
  int end_stage(int stage, const char* tag);
  int poll();

  Imodel& m_;
  PresolveRecord& rec_;
  PostStack& post_;
  int level_;
  double reps_, ceps_;
  double tStart_, tlimit_;
  int status_ = 0;       // -1 infeasible
  int err_ = 0;          // time limit or interrupt seen by a poll
  long reductions_ = 0;  // records other than the slack bookkeeping
  long fillBudget_ = 0;
  int dupRowRounds_ = 2;
  int polls_ = 0;
  std::vector<int> pos_;         // scratch: position of a column in a row, -1 elsewhere
  std::vector<char> converted_;  // per column: slack turned back into a row bound
  std::vector<char> redType_;    // per row: type of the row in the reduced model
  std::vector<double> redRhs_;
  // Scratch of the reductions and their records, kept to spare an allocation per reduction.
  std::vector<int> recInts_, recInts2_, recMarked_;
  std::vector<double> recDbls_, recDbls2_;
  std::vector<RowEnt> recRow_;
  std::vector<ColEnt> recCol_;
  // Duplicate searches: cached keys (a row's with the slack it leaves out, -2 before the
  // first) and reused scratch.
  std::vector<uint64_t> colKey_, rowKey_;
  std::vector<int> rowKeySkip_;
  std::vector<std::pair<uint64_t, int>> dupCand_;
  std::vector<std::pair<int, double>> dupEnt_;
  std::vector<double> dupVal_;  // a line scattered by index, marked in dupMark_
  std::vector<char> dupMark_;
  std::vector<int> dupIdx_;
  std::vector<int> dupLenCount_;
  std::vector<uint64_t> dupTabKey_;
  std::vector<int> dupTabCnt_;
  std::vector<size_t> dupTabMark_;
  // Duplicate columns: the clock at the start of the last search, the dual state it ran
  // with, and per column the size of the group it was last seen in.
  long dcpTick_ = -1;
  int dcpDual_ = -1;
  std::vector<int> dcpGroup_;
  // Dual fixing: the multiplier bounds of the last run and the clock at its start.
  long sdbTick_ = -1;
  std::vector<double> sdbYlo_, sdbYup_, sdbPrevLo_, sdbPrevUp_;
  std::vector<char> sdbLook_;
};

}  // namespace zento::presolve
