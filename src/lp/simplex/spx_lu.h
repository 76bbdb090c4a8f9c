// The simplex engine's view of the basis factorization: factor, solves, column replacement.
//
// Everything the methods ask of the basis matrix goes through this class, which drives the
// `QZI_lu_` layer. Positions 0..m-1 of the basis hold columns rbas[0..m-1] of the working
// matrix (logicals included); vectors are indexed by row on input to ftran and by position on
// output, and the reverse for btran. The engine solves in the simplex's own vectors.
#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "lp/factor/lu.h"
#include "lp/simplex/spmat.h"
#include "lp/simplex/svec.h"

namespace zento {

class SpxLu {
 public:
  enum Status { kOk = 0, kSingular = 1, kNoMemory = 2, kUnstable = 3, kNoSpace = 4 };

  SpxLu() = default;
  SpxLu(const SpxLu&) = delete;
  SpxLu& operator=(const SpxLu&) = delete;

  // `lucore` is the engine number (0 means the default); returns 0 or an error code.
  [[nodiscard]] int init(int m, double pivrel, int lucore, int max_updates);
  // Factorizes the columns named in rbas. Singular pairs (row, position) are kept for recovery.
  int factor(const SpMat& acols, const int* rbas);
  // B x = b in place; with `save` the partial result is kept as the spike of the next update.
  // `dense` tells that the result is expected dense (the engine then skips a doomed sparse
  // search).
  void ftran(SVec& x, bool save, bool dense = false);
  // Two solves in one pass where both run dense: x1 (saved as the spike) is solved now, x2
  // when ftran2_finish is called, with the results of ftran(x1, true) and, at that moment,
  // ftran(x2, false, dense2); solves in between are allowed. ftran2_drop forgets x2.
  void ftran2(SVec& x1, SVec& x2, bool dense2);
  void ftran2_finish(SVec& x2);
  void ftran2_drop();
  // B^T y = c in place.
  void btran(SVec& y, bool dense = false);
  // Replaces the column in position `pos` by the last saved spike.
  int update(int pos, double pivcoe);

  int eta_size() const;
  bool fresh() const { return valid_ && eta_size() == 0; }
  bool valid() const { return valid_; }
  void invalidate() { valid_ = false; }
  double rcond() const;
  double cond2est();
  long lnonz() const;
  long unonz() const;
  long pnonz() const;
  int npcand() const;
  void set_pivrel(double v);
  const std::vector<std::pair<int, int>>& singular() const { return singular_; }
  // Refactorization request of the engine itself: 0, 2 or 10.
  int wfact(int min_frequency) const;

  // The column source of the engine.
  static int datacol(void* host, int var, lu::LuColumn* out);

 private:
  int m_ = 0;
  bool valid_ = false;
  const SpMat* mat_ = nullptr;
  bool dense2_ = false;  // the hint of the pending second vector of ftran2
  std::unique_ptr<LuFactor> f_;
  std::vector<std::pair<int, int>> singular_;
};

}  // namespace zento
