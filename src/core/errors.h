// Error propagation inside the library: codes, never exceptions, across the C boundary.
#pragma once

#include "zento.h"

// Returns from the calling function when `expr` yields a nonzero code.
#define QZ_CALL(expr)                  \
  do {                                 \
    const int qz_call_rc_ = (expr);    \
    if (qz_call_rc_ != 0) return qz_call_rc_; \
  } while (0)

namespace zento {

// Fatal internal check: logs, calls the error callback, deletes the environment, exits.
[[noreturn]] void qzi_xassert(QZenv env, const char* expr, const char* file, int line);
// Non-fatal twin: logs and calls the error callback, then returns.
void qzi_wassert(QZenv env, const char* expr, const char* file, int line);

}  // namespace zento

#define QZ_XASSERT(env, cond) \
  do { if (!(cond)) ::zento::qzi_xassert((env), #cond, __FILE__, __LINE__); } while (0)
#define QZ_WASSERT(env, cond) \
  do { if (!(cond)) ::zento::qzi_wassert((env), #cond, __FILE__, __LINE__); } while (0)
