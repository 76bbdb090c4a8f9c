// Formatting of log lines and their delivery to the host's log functions.
#include "core/log.h"

#include <cstdarg>
#include <cstdio>
#include <string>
#include <vector>

#include "core/env.h"
#include "core/model.h"

namespace {

std::string vformat(const char* fmt, va_list ap) {
  char small[512];
  va_list copy;
  va_copy(copy, ap);
  const int n = std::vsnprintf(small, sizeof small, fmt, copy);
  va_end(copy);
  if (n < 0) return std::string();
  if (n < static_cast<int>(sizeof small)) return std::string(small, static_cast<size_t>(n));
  std::vector<char> big(static_cast<size_t>(n) + 1);
  std::vsnprintf(big.data(), big.size(), fmt, ap);
  return std::string(big.data(), static_cast<size_t>(n));
}

// Lets the host read values from inside its log function.
void internal_LOG(Imodel* m, std::string& line) {
  const int saved = m->callLevel;
  m->callLevel = m->callLevelSaved;
  m->cb.logFunc(m, line.data(), m->cb.logData);
  m->callLevel = saved;
}

}  // namespace

extern "C" int QZlogmod(QZmodel model, int nLevel, const char* fmt, ...) {
  if (nLevel == 0 || model == nullptr || fmt == nullptr) return 0;
  if (model->cb.logFunc == nullptr || model->holdLog) return 0;
  try {
    va_list ap;
    va_start(ap, fmt);
    std::string line = vformat(fmt, ap);
    va_end(ap);
    internal_LOG(model, line);
  } catch (...) {
    // Logging never fails a solve.
  }
  return 0;
}

extern "C" int QZlogenv(QZenv env, int nLevel, const char* fmt, ...) {
  if (nLevel == 0 || env == nullptr || fmt == nullptr || env->logFunc == nullptr) return 0;
  try {
    va_list ap;
    va_start(ap, fmt);
    std::string line = vformat(fmt, ap);
    va_end(ap);
    env->logFunc(env, line.data(), env->logData);
  } catch (...) {
  }
  return 0;
}

namespace zento {

bool is_nested(const Imodel& m) {
  const SplexParams& s = m.SplexPam;
  return s.in_mip || s.in_gop || s.in_msw || s.in_sp || m.GOPPam.in_gop || m.IISPam.in_iis ||
         m.inNested;
}

int base_printlevel(const Imodel& m) {
  int level = m.SplexPam.lp_printlevel;
  if (!is_nested(m)) {
    level = std::max(level, m.BandBPam.mip_printlevel);
    level = std::max(level, m.NLPPam.nlp_printlevel);
  }
  return level;
}

}  // namespace zento
