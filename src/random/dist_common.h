// Argument checks and small helpers shared by the distribution files.
#pragma once

#include <cmath>

#include "core/errors.h"
#include "random/distrib.h"
#include "zento_errors.h"

namespace zento::random {

inline bool positive(double v) { return v > 0.0 && std::isfinite(v); }
inline int check_x(double x) { return std::isnan(x) ? QZERR_DIST_BAD_VALUE : 0; }
inline int check_p(double p) { return (p >= 0.0 && p <= 1.0) ? 0 : QZERR_DIST_BAD_PROBABILITY; }
inline int check_scale(double s) { return positive(s) ? 0 : QZERR_DIST_SCALE_OUT_OF_RANGE; }
inline int check_shape(double s) { return positive(s) ? 0 : QZERR_DIST_SHAPE_OUT_OF_RANGE; }
inline int check_finite(double v) { return std::isfinite(v) ? 0 : QZERR_DIST_BAD_PARAMS; }
// An infinite result in the library's convention.
inline double clip_inf(double v) {
  if (v >= kDistInf) return kDistInf;
  if (v <= -kDistInf) return -kDistInf;
  return v;
}

}  // namespace zento::random
