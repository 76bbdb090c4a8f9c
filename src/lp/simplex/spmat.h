// Compressed sparse storage of the working matrix: one pool of indices and values, one slice
// per column (or per row for the row-wise copy).
#pragma once

#include <vector>

namespace zento {

struct SpMat {
  std::vector<int> beg;  // slice k is [beg[k], beg[k+1])
  std::vector<int> idx;
  std::vector<double> val;
  int count(int k) const { return beg[k + 1] - beg[k]; }
  int slices() const { return beg.empty() ? 0 : static_cast<int>(beg.size()) - 1; }
  int nnz() const { return beg.empty() ? 0 : beg.back(); }
};

}  // namespace zento
