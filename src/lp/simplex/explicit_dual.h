// The explicit dual of a linear model, and the map that carries a basis of the dual back to
// the model.
#pragma once

#include <vector>

#include "core/model.h"

namespace zento {

// Where each part of the model went in its dual.
struct DualMap {
  std::vector<int> rowVar;  // per model row: its dual column, -1 for an 'N' row
  std::vector<int> colRow;  // per model column: its dual row, -1 for a fixed column
  std::vector<int> colBox;  // per model column: the dual column of its range, -1 if not boxed
  std::vector<char> kind;   // per model column: 'L' lower bound only, 'U' upper only, 'B'
                            // boxed, 'F' free, 'X' fixed
};

// Builds the dual of the linear model `m` into `out` (a loaded model of the same environment),
// with the same optimal objective value. Every column is shifted to a finite bound first: a
// column with a lower bound only gives a row a'y <= c, one with an upper bound only a'y >= c,
// a free one a'y = c, a boxed one a'y - w <= c with a range column w >= 0 costing its width;
// fixed columns leave the dual. 'L' rows give y <= 0, 'G' rows y >= 0, 'E' rows free y.
[[nodiscard]] int build_dual_model(const Imodel& m, Imodel& out, DualMap& map);

// Basis statuses of the model read off a basis of its dual (columns, then rows of the dual).
// The count of basics may be off in degenerate cases; loading the basis repairs it.
void dual_basis_build(const Imodel& m, const DualMap& map, const std::vector<int>& dualCols,
                      const std::vector<int>& dualRows, std::vector<int>& cst,
                      std::vector<int>& rst);

}  // namespace zento
