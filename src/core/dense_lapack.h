// Small dense symmetric kernels through LAPACK: Cholesky and the eigen-decomposition.
// Matrices are row-major d x d; being symmetric, they need no transposition on the way in.
#pragma once

#include <vector>

namespace zento {

// a = l l' with l lower triangular, written row-major over a. False when a is not positive
// definite or a pivot falls to minPivot or below (then a is left partly overwritten).
[[nodiscard]] bool dense_cholesky(std::vector<double>& a, int d, double minPivot);

// a = v diag(w) v': eigenvalues ascending in w, eigenvector k in column k of the row-major v.
// False when LAPACK reports no convergence.
[[nodiscard]] bool dense_sym_eigen(const std::vector<double>& a, int d, std::vector<double>& w,
                                   std::vector<double>& v);

}  // namespace zento
