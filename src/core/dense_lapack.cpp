#include "core/dense_lapack.h"

#include <cmath>
#include <cstddef>

extern "C" {
// Fortran entries; the trailing sizes are the hidden lengths of the character arguments.
void dpotrf_(const char* uplo, const int* n, double* a, const int* lda, int* info, std::size_t);
void dsyev_(const char* jobz, const char* uplo, const int* n, double* a, const int* lda,
            double* w, double* work, const int* lwork, int* info, std::size_t, std::size_t);
}

namespace zento {

bool dense_cholesky(std::vector<double>& a, int d, double minPivot) {
  if (d == 0) return true;
  int info = 0;
  // Column-major 'U' of the symmetric a is, read row-major, the lower factor.
  dpotrf_("U", &d, a.data(), &d, &info, 1);
  if (info != 0) return false;
  for (int i = 0; i < d; ++i) {
    const double lii = a[static_cast<std::size_t>(i) * d + i];
    if (!(lii * lii > minPivot)) return false;
    for (int j = i + 1; j < d; ++j) a[static_cast<std::size_t>(i) * d + j] = 0.0;
  }
  return true;
}

bool dense_sym_eigen(const std::vector<double>& a, int d, std::vector<double>& w,
                     std::vector<double>& v) {
  std::vector<double> colmajor(a);
  w.assign(d, 0.0);
  if (d == 0) {
    v.clear();
    return true;
  }
  int info = 0, lwork = -1;
  double query = 0.0;
  dsyev_("V", "U", &d, colmajor.data(), &d, w.data(), &query, &lwork, &info, 1, 1);
  lwork = std::max(1, static_cast<int>(query));
  std::vector<double> work(lwork);
  dsyev_("V", "U", &d, colmajor.data(), &d, w.data(), work.data(), &lwork, &info, 1, 1);
  if (info != 0) return false;
  v.assign(colmajor.size(), 0.0);
  for (int k = 0; k < d; ++k) {
    for (int i = 0; i < d; ++i) {
      v[static_cast<std::size_t>(i) * d + k] = colmajor[static_cast<std::size_t>(k) * d + i];
    }
  }
  return true;
}

}  // namespace zento
