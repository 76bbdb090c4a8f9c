// SLU, the default factorization engine: threshold Markowitz LU, Forrest-Tomlin update,
// hyper-sparse solves.
//
// Factorization. Basis columns are loaded into a row-wise value store with a column-wise
// pattern store. Column singletons are pivoted first (no elimination), then row singletons (an
// L column, no fill), then the kernel: count buckets of rows and columns, row and column
// singletons first, else a Markowitz search over at most `num_candits` rows and columns of the
// smallest counts, accepting |a_ij| >= eps_pivcur * max_j |a_ij| (row-wise threshold) and
// minimising (r - 1)(c - 1) (Markowitz 1957; the limited search follows Zlatev 1980 and Suhl &
// Suhl 1990). Once the active part is mostly full it is finished as a dense array with partial
// pivoting. Eliminated rows receive fill at their end; a row without room moves to the end of
// the pool, which is compacted before it grows. Values that cancel to rounding level are
// dropped, so that a numerically dependent set of columns shows up as unpivoted rows and slots.
//
// Representation. Every pivot pairs a row r with a slot s; U is kept over row ids on both
// sides (entry (r, r') sits in slot slot_of_row[r']), row-wise and column-wise, with the
// diagonal apart. `order` lists the rows by pivot position, U is upper triangular in it.
// L^-1 is a sequence of column etas in elimination order, with a row-wise copy for BTRAN.
// Forrest-Tomlin (1972) replaces a slot's U column by the spike R L^-1 a, eliminates the old
// row against the rows it passes with one row eta, and shifts the positions cyclically, so
// R_k..R_1 L^-1 B = U holds after every update.
//
// Solves. A sparse right-hand side is solved over its reach in the graph of L, U or U^T found by
// depth-first search (Gilbert & Peierls 1988), so the work is proportional to the entries
// touched; when the reach grows beyond the density thresholds the solve finishes with the plain
// dense loops.
#pragma once

#include <cstdint>
#include <vector>

#include "lp/factor/line_store.h"
#include "lp/factor/lu_engine.h"

namespace zento::lu {

class Slu final : public LuEngine {
 public:
  Slu(int m, LuOptions* opt, LuColumnFn datacol, void* host);

  int factor(const int* rbas) override;
  int ftran(const SpVec& in, SpVec& out, bool save, bool dense_out) override;
  int btran(const SpVec& in, SpVec& out, bool dense_out) override;
  int ftran_sv(SvRef v, bool save, bool pos_order, double drop, int* cnt_out) override;
  int btran_sv(SvRef v, bool pos_order, double drop, int* cnt_out) override;
  int ftran2_sv(SvRef v1, bool pos1, SvRef v2, double drop, int* cnt1) override;
  int ftran2_finish(SvRef v2, bool pos2, double drop, int* cnt2) override;
  void ftran2_drop() override;
  int update(int slot, double pivcoe, int dir) override;
  int64_t lnonz() const override { return static_cast<int64_t>(l_idx_.size()); }
  int64_t unonz() const override { return ur_.nnz() + rank_; }
  int64_t pnonz() const override {
    return static_cast<int64_t>(r_idx_.size() + e_idx_.size());
  }
  int64_t spsize() const override { return spike_n_ < 0 ? (spike_n_ == -1 ? m_ : 0) : spike_n_; }
  int wfact(int min_frequency) const override;
  int npcand() const override;
  void options_changed() override;
  double condest2() const override;

  // Touched entries of the last FTRAN (for the hyper-sparsity measurement).
  int64_t last_ftran_work() const { return work_count_; }
  double eps_pivrel() const { return eps_pivrel_; }
  double eps_pivcur() const { return eps_pivcur_; }
  double min_rcond() const { return min_rcond_; }
  void set_eps_pivrel(double v);

 private:
  // slu_factor.cpp
  int refactor(const int* rbas);
  int init_factor(const int* rbas);
  void init_buckets();
  void row_bucket_put(int r);
  void row_bucket_take(int r);
  void col_bucket_put(int c);
  void col_bucket_take(int c);
  double row_max(int r);
  bool pivot_col_singleton(int c);
  bool pivot_row_singleton(int r);
  bool pivot_general(int r, int c);
  bool pick_pivot(int* pr, int* pc);
  void record_pivot(int r, int c, double v);
  bool finish_factor();
  // slu_dense.cpp
  bool dense_worthwhile() const;
  bool dense_kernel();
  void build_lt();

  // slu_solve.cpp
  void ftran_work(bool save, bool dense_u);
  void btran_work(bool dense_u);
  void ftran_l(WorkVec& w, bool sparse);
  bool ftran_l_sparse(WorkVec& w);  // false when the reach grows past the limit
  void ftran_l_dense(WorkVec& w);
  void ftran_l_dense2(WorkVec& a, WorkVec& b);
  void ftran_r(WorkVec& w);
  void ftran_r_dense2(WorkVec& a, WorkVec& b);
  void solve_u(WorkVec& w, bool sparse, const LineStore& st, double spvtol, bool reverse);
  bool solve_u_sparse(WorkVec& w, const LineStore& st, double spvtol);
  void solve_u_dense(WorkVec& w, const LineStore& st, bool reverse);
  void ftran_u_dense2(WorkVec& a, WorkVec& b);
  void ftran_u(WorkVec& w, bool sparse);
  void ftran_pf(WorkVec& w);
  void btran_pf(WorkVec& w);
  void btran_u(WorkVec& w, bool sparse);
  void btran_r(WorkVec& w);
  void btran_l(WorkVec& w, bool sparse);
  void save_spike(const WorkVec& w);
  void relist(WorkVec& w);

  // slu_update.cpp
  int ft_update(int slot, double pivcoe);
  int eta_update(int slot, double pivcoe);

  double eps_pivrel_ = 0.5;
  double eps_pivcur_ = 0.5;
  double min_rcond_ = 0.01;
  int64_t work_count_ = 0;
  int update_type_ = 1;  // fixed at each factorization

  // Active matrix during factorization; ur_ keeps the U rows afterwards.
  LineStore ur_;  // rows: (slot during factorization, row id after) and values
  LineStore ac_;  // column patterns during factorization
  LineStore uc_;  // U columns over row ids, with values
  std::vector<int> rb_head_, rb_next_, rb_prev_, rb_at_;
  std::vector<int> cb_head_, cb_next_, cb_prev_, cb_at_;
  std::vector<double> rowmax_;
  std::vector<int> row_done_, col_done_;
  std::vector<int> colmap_, seen_;
  std::vector<int> piv_idx_, elim_rows_;
  std::vector<double> piv_val_;
  int seen_stamp_ = 0;
  int npiv_ = 0;
  std::vector<int> prow_, pcol_;
  std::vector<double> pval_;

  // L etas in elimination order and their row-wise copy.
  std::vector<int> l_start_, l_idx_, l_row_, l_eta_of_row_;
  std::vector<double> l_val_;
  std::vector<int> lr_start_, lr_idx_;
  std::vector<double> lr_val_;

  // Pivot order and maps.
  std::vector<int> order_, pos_, row_step_, slot_of_row_, row_of_slot_;
  std::vector<double> diag_, dinv_;

  // Forrest-Tomlin row etas: row r_row_[k] -= sum r_val * x[r_idx].
  std::vector<int> r_start_, r_idx_, r_row_;
  // The same etas by column: for each row, a chain through the eta entries that read it
  // (entry q belongs to eta r_eta_of_[q]), so that a sparse vector visits only the etas its
  // nonzeros reach. r_mark_ flags etas to visit; all clear between solves.
  std::vector<int> r_head_, r_next_, r_eta_of_;
  std::vector<char> r_mark_;
  std::vector<double> r_val_;
  // Product-form etas over slots (update type 0): column e_slot_[k] of the updated inverse.
  std::vector<int> e_start_, e_idx_, e_slot_;
  std::vector<double> e_val_, e_piv_;

  // Saved spike: -2 none, -1 dense (spike_dense_), else list of spike_n_ entries.
  int spike_n_ = -2;
  std::vector<int> spike_idx_;
  std::vector<double> spike_val_, spike_dense_;

  WorkVec w_, w2_;
  bool pending2_ = false;  // w2_ holds the second result of ftran2_sv
  StampMarks mk_;
  ReachWork rw_;
  std::vector<int> heap_;
};

}  // namespace zento::lu
