// Solves with the scaled factor for vectors in the user's scale (QZdoFTRAN, QZdoBTRAN).
//
// The simplex factors Bs = R B C: rows scaled by rscal, and per slot j the basic variable's
// column factor C_jj (cscal of a structural, negated when it was mirrored; 1/rscal of a logical,
// whose scaled column stays a unit vector). Then B x = b is x = C Bs^-1 (R b) and B^T y = c is
// y = R Bs^-T (C c).
#include <cmath>

#include "lp/factor/lu.h"
#include "lp/factor/lu_engine.h"
#include "zento_errors.h"

namespace zento {

namespace {

double slot_factor(const lu::LuUserScale& sc, int j) {
  const int v = sc.rbas[j];
  if (v < sc.n) {
    const double c = sc.cscal ? sc.cscal[v] : 1.0;
    return sc.flipped && sc.flipped[v] ? -c : c;
  }
  return sc.rscal ? 1.0 / sc.rscal[v - sc.n] : 1.0;
}

int check(const LuFactor& lu, const lu::LuUserScale& sc, int cnt, const int* idx,
          const double* val) {
  if (sc.m != lu.m() || !sc.rbas) return QZERR_INFO_NOT_AVAILABLE;
  if (cnt < 0 || cnt > sc.m) return QZERR_INDEX_OUT_OF_RANGE;
  if (cnt > 0 && (!idx || !val)) return QZERR_INDEX_OUT_OF_RANGE;
  for (int k = 0; k < cnt; ++k)
    if (idx[k] < 0 || idx[k] >= sc.m) return QZERR_INDEX_OUT_OF_RANGE;
  for (int j = 0; j < sc.m; ++j)
    if (sc.rbas[j] < 0 || sc.rbas[j] >= sc.n + sc.m) return QZERR_INFO_NOT_AVAILABLE;
  return 0;
}

int solve_status(int rc) {
  if (rc == 0) return 0;
  if (rc == lu::kLuNoMemory) return QZERR_OUT_OF_MEMORY;
  return rc >= 2000 ? rc : QZERR_INFO_NOT_AVAILABLE;
}

}  // namespace

int lu_user_ftran(LuFactor& lu, const lu::LuUserScale& sc, int cnt, const int* idx,
                  const double* val, int* out_cnt, int* out_idx, double* out_val) {
  *out_cnt = 0;
  if (const int rc = check(lu, sc, cnt, idx, val)) return rc;
  SpVec in(sc.m), out(sc.m);
  for (int k = 0; k < cnt; ++k) {
    in.idx[k] = idx[k];
    in.val[k] = val[k] * (sc.rscal ? sc.rscal[idx[k]] : 1.0);
  }
  in.n = cnt;
  if (const int rc = solve_status(QZI_lu_ftran(lu, in, out, 0))) return rc;
  int n = 0;
  if (out.n < 0) {
    for (int j = 0; j < sc.m; ++j) {
      if (out.val[j] == 0.0) continue;
      out_idx[n] = j;
      out_val[n++] = out.val[j] * slot_factor(sc, j);
    }
  } else {
    for (int k = 0; k < out.n; ++k) {
      out_idx[n] = out.idx[k];
      out_val[n++] = out.val[k] * slot_factor(sc, out.idx[k]);
    }
  }
  *out_cnt = n;
  return 0;
}

int lu_user_btran(LuFactor& lu, const lu::LuUserScale& sc, int cnt, const int* idx,
                  const double* val, int* out_cnt, int* out_idx, double* out_val) {
  *out_cnt = 0;
  if (const int rc = check(lu, sc, cnt, idx, val)) return rc;
  SpVec in(sc.m), out(sc.m);
  for (int k = 0; k < cnt; ++k) {
    in.idx[k] = idx[k];
    in.val[k] = val[k] * slot_factor(sc, idx[k]);
  }
  in.n = cnt;
  if (const int rc = solve_status(QZI_lu_btran(lu, in, out))) return rc;
  int n = 0;
  auto put = [&](int i, double v) {
    out_idx[n] = i;
    out_val[n++] = v * (sc.rscal ? sc.rscal[i] : 1.0);
  };
  if (out.n < 0) {
    for (int i = 0; i < sc.m; ++i)
      if (out.val[i] != 0.0) put(i, out.val[i]);
  } else {
    for (int k = 0; k < out.n; ++k) put(out.idx[k], out.val[k]);
  }
  *out_cnt = n;
  return 0;
}

}  // namespace zento
