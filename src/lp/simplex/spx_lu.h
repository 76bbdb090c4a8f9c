// The simplex engine's view of the basis factorization: factor, solves, column replacement.
//
// Everything the methods ask of the basis matrix goes through this class, so the engine behind
// it can change without touching them. Positions 0..m-1 of the basis hold columns rbas[0..m-1]
// of the working matrix; vectors are indexed by row on input to ftran and by position on
// output, and the reverse for btran.
#pragma once

#include <utility>
#include <vector>

#include "lp/simplex/spmat.h"
#include "lp/simplex/svec.h"

namespace zento {

class SpxLu {
 public:
  enum Status { kOk = 0, kSingular = 1, kNoMemory = 2, kUnstable = 3, kNoSpace = 4 };

  void init(int m, double pivrel);
  // Factorizes the columns named in rbas. Singular pairs (row, position) are kept for recovery.
  int factor(const SpMat& acols, const int* rbas);
  // B x = b in place; with `save` the partial result is kept as the spike of the next update.
  void ftran(SVec& x, bool save);
  // B^T y = c in place.
  void btran(SVec& y);
  // Replaces the column in position `pos` by the last saved spike.
  int update(int pos);

  int eta_size() const { return static_cast<int>(eta_pos_.size()); }
  bool fresh() const { return valid_ && eta_pos_.empty(); }
  bool valid() const { return valid_; }
  void invalidate() { valid_ = false; }
  double rcond() const { return rcond_; }
  double cond2est() const { return cond2_; }
  long lnonz() const { return lnz_; }
  long unonz() const { return unz_; }
  long pnonz() const { return static_cast<long>(eta_idx_.size()); }
  int npcand() const;
  double pivrel() const { return pivrel_; }
  void set_pivrel(double v) { pivrel_ = v; }
  const std::vector<std::pair<int, int>>& singular() const { return singular_; }

 private:
  int m_ = 0;
  double pivrel_ = 0.5;
  bool valid_ = false;
  double rcond_ = 1.0, cond2_ = 1.0;
  long lnz_ = 0, unz_ = 0;
  // Dense LU of the refactorized basis: P B Q = L U with the row order in perm_ and the
  // position order in qperm_.
  std::vector<double> lu_;
  std::vector<int> perm_, qperm_, rowstep_;
  std::vector<double> work_;
  // Product-form etas of the updates since the factorization.
  std::vector<int> eta_pos_, eta_beg_, eta_idx_;
  std::vector<double> eta_piv_, eta_val_;
  std::vector<double> spike_;
  bool spike_ok_ = false;
  std::vector<std::pair<int, int>> singular_;
};

}  // namespace zento
