// Log lines to the host: through the model's or the environment's log function only.
#pragma once

#include "zento.h"

extern "C" {
// With nLevel 0, a null model or no log function nothing happens.
QZ_API int QZlogmod(QZmodel model, int nLevel, const char* fmt, ...)
    __attribute__((format(printf, 3, 4)));
QZ_API int QZlogenv(QZenv env, int nLevel, const char* fmt, ...)
    __attribute__((format(printf, 3, 4)));
}

namespace zento {
// The print level that gates load statistics: the LP level, and outside nested
// solves the larger of it and the MIP and NLP levels.
int base_printlevel(const Imodel& m);
bool is_nested(const Imodel& m);
}  // namespace zento
