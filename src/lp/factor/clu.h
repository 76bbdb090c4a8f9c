// CLU, the older factorization engine (lucore 3): column-oriented Markowitz LU and a
// product-form eta file.
//
// The active submatrix is kept by columns with values and by rows as patterns. Each search
// takes the `num_candits` shortest columns (count buckets) and, inside each, the rows whose
// entry passes the column threshold |a_ic| >= eps_pivrel * max_i |a_ic|, minimising the
// Markowitz count (r - 1)(c - 1). Elimination is right-looking, one column of the pivot row
// at a time through a dense work column. Updates append the solved entering column as an eta
// (Dantzig & Orchard-Hays' product form): B_k = B_0 E_1 ... E_k. Solves walk L and U over the
// topological order of the reach of the right-hand side (depth-first search on the transposed
// copies built after the factorization) while the pattern is short, densely otherwise.
#pragma once

#include <cstdint>
#include <vector>

#include "lp/factor/lu_engine.h"

namespace zento::lu {

class Clu final : public LuEngine {
 public:
  Clu(int m, LuOptions* opt, LuColumnFn datacol, void* host) : LuEngine(m, opt, datacol, host) {}

  int factor(const int* rbas) override;
  int ftran(const SpVec& in, SpVec& out, bool save, bool dense_out) override;
  int btran(const SpVec& in, SpVec& out, bool dense_out) override;
  int update(int slot, double pivcoe, int dir) override;
  int64_t lnonz() const override { return static_cast<int64_t>(l_idx_.size()); }
  int64_t unonz() const override { return static_cast<int64_t>(u_idx_.size()) + rank_; }
  int64_t pnonz() const override { return static_cast<int64_t>(e_idx_.size()); }
  int64_t spsize() const override { return saved_ ? static_cast<int64_t>(spike_idx_.size()) : 0; }
  int wfact(int min_frequency) const override;
  int npcand() const override;
  int tpos() override;
  int reset_sparse_work() override;
  int64_t sparse_work_len() const override { return static_cast<int64_t>(rw_.out.size()); }

 private:
  int lufac(const int* rbas);
  bool pick(int* pr, int* pc);
  void eliminate(int r, int c);
  void bucket_put(int c);
  void bucket_take(int c);

  void solve_l(WorkVec& w, bool sparse);
  void solve_lines(WorkVec& w, bool sparse, const std::vector<int>& start,
                   const std::vector<int>& idx, const std::vector<double>& val, double spvtol,
                   bool reverse);
  void solve_u(WorkVec& w, bool sparse);
  void solve_ut(WorkVec& w, bool sparse);
  void solve_lt(WorkVec& w, bool sparse);
  void ensure_work();

  // Active matrix.
  std::vector<std::vector<int>> ac_idx_, ar_pat_;
  std::vector<std::vector<double>> ac_val_;
  std::vector<int> bh_, bn_, bp_, bat_;
  std::vector<int> row_done_, col_done_;
  std::vector<double> dwork_;
  std::vector<int> dmark_;
  int npiv_ = 0;

  // Factors over row ids (as in SLU): L etas, U rows, and the transposed copies.
  std::vector<int> l_start_, l_idx_, l_row_, l_eta_of_row_;
  std::vector<double> l_val_;
  std::vector<int> lt_start_, lt_idx_;
  std::vector<double> lt_val_;
  std::vector<int> u_start_, u_idx_;  // U rows by row id
  std::vector<double> u_val_;
  std::vector<int> ut_start_, ut_idx_;  // U columns by row id
  std::vector<double> ut_val_;
  std::vector<int> order_, slot_of_row_, row_of_slot_;
  std::vector<double> dinv_;
  bool tpos_ok_ = false;

  // Product-form etas over row ids.
  std::vector<int> e_start_, e_idx_, e_row_;
  std::vector<double> e_val_, e_piv_;
  int64_t pool_cap_ = 0;

  bool saved_ = false;
  std::vector<int> spike_idx_;
  std::vector<double> spike_val_;

  WorkVec w_;
  StampMarks mk_;
  ReachWork rw_;
};

}  // namespace zento::lu
