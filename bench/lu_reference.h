// Fill of a reference sparse LU on a basis matrix, when one was found at configure time.
#pragma once

#include <cstdint>
#include <vector>

namespace zento::lubench {

struct RefFill {
  bool available = false;
  double klu = 0.0;      // (nnz(L) + nnz(U) - m + off-block entries) / nnz(B)
  double umfpack = 0.0;  // (nnz(L) + nnz(U) - m) / nnz(B)
  double klu_ms = 0.0;   // analyse + factor, best of a few runs
  double umf_ms = 0.0;
};

// B in compressed columns with sorted row indices.
RefFill reference_fill(int m, const std::vector<int>& colbeg, const std::vector<int>& rowidx,
                       const std::vector<double>& val);

}  // namespace zento::lubench
