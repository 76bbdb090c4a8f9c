// KLU and UMFPACK fill on the benchmark bases (reference only; never linked into the library).
#include "lu_reference.h"

#include <algorithm>
#include <chrono>

#ifdef ZENTO_BENCH_REFERENCE_LU
#include <klu.h>
#include <umfpack.h>
#endif

namespace zento::lubench {

RefFill reference_fill(int m, const std::vector<int>& colbeg, const std::vector<int>& rowidx,
                       const std::vector<double>& val) {
  RefFill f;
#ifdef ZENTO_BENCH_REFERENCE_LU
  const double nnz = static_cast<double>(rowidx.size());
  int* ap = const_cast<int*>(colbeg.data());
  int* ai = const_cast<int*>(rowidx.data());
  double* ax = const_cast<double*>(val.data());
  using clock = std::chrono::steady_clock;
  auto ms = [](clock::time_point a, clock::time_point b) {
    return std::chrono::duration<double, std::milli>(b - a).count();
  };
  f.klu_ms = f.umf_ms = 1e300;
  for (int rep = 0; rep < 3; ++rep) {
    klu_common kc;
    klu_defaults(&kc);
    const auto t0 = clock::now();
    klu_symbolic* sym = klu_analyze(m, ap, ai, &kc);
    if (sym) {
      klu_numeric* num = klu_factor(ap, ai, ax, sym, &kc);
      f.klu_ms = std::min(f.klu_ms, ms(t0, clock::now()));
      if (num) {
        f.klu = (static_cast<double>(num->lnz) + num->unz - m + num->nzoff) / nnz;
        klu_free_numeric(&num, &kc);
      }
      klu_free_symbolic(&sym, &kc);
    }
    void* usym = nullptr;
    void* unum = nullptr;
    const auto t1 = clock::now();
    if (umfpack_di_symbolic(m, m, ap, ai, ax, &usym, nullptr, nullptr) == UMFPACK_OK &&
        umfpack_di_numeric(ap, ai, ax, usym, &unum, nullptr, nullptr) == UMFPACK_OK) {
      f.umf_ms = std::min(f.umf_ms, ms(t1, clock::now()));
      int lnz = 0, unz = 0, nr = 0, nc = 0, nzud = 0;
      umfpack_di_get_lunz(&lnz, &unz, &nr, &nc, &nzud, unum);
      f.umfpack = (static_cast<double>(lnz) + unz - m) / nnz;
    }
    if (unum) umfpack_di_free_numeric(&unum);
    if (usym) umfpack_di_free_symbolic(&usym);
  }
  f.available = true;
#else
  (void)m;
  (void)colbeg;
  (void)rowidx;
  (void)val;
#endif
  return f;
}

}  // namespace zento::lubench
