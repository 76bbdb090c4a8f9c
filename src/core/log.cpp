// Formatting of log lines and their delivery to the host's log functions. Nothing here writes
// to the standard streams: a line reaches the host only through a function it installed or a
// stream it passed in.
#include "core/log.h"

#include <omp.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <mutex>
#include <vector>

#include "core/env.h"
#include "core/model.h"

namespace zento {

namespace {

// The process-wide debug log function. It is set once by a host, so a plain mutex suffices.
struct DebugLog {
  std::mutex mutex;
  QZenvLogFunc_t func = nullptr;
  void* data = nullptr;
};

DebugLog& debug_log() {
  static DebugLog d;
  return d;
}

std::string format_args(const char* fmt, ...) QZ_PRINTF_LIKE(1, 2);
std::string format_args(const char* fmt, ...) {
  va_list ap;
  va_start(ap, fmt);
  std::string s = vformat(fmt, ap);
  va_end(ap);
  return s;
}

void to_debug_log(QZenv env, std::string& line) {
  DebugLog& d = debug_log();
  QZenvLogFunc_t f;
  void* data;
  {
    std::lock_guard<std::mutex> lock(d.mutex);
    f = d.func;
    data = d.data;
  }
  if (f != nullptr) f(env, line.data(), data);
}

void write_stream(std::FILE* stream, const std::string& s) {
  std::fwrite(s.data(), 1, s.size(), stream);
  std::fflush(stream);
}

}  // namespace

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

// `internal_LOG`: the host may read values of the model from inside its log function.
void log_line(Imodel& m, std::string& line) {
  if (m.cb.logFunc == nullptr || m.holdLog) return;
  const int saved = m.callLevel;
  m.callLevel = m.callLevelSaved;
  m.cb.logFunc(&m, line.data(), m.cb.logData);
  m.callLevel = saved;
}

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

using namespace zento;

extern "C" {

int QZlogmod(QZmodel model, int nLevel, const char* fmt, ...) {
  if (fmt == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (nLevel == 0 || model == nullptr) return 0;
  if (model->cb.logFunc == nullptr || model->holdLog) return 0;
  try {
    va_list ap;
    va_start(ap, fmt);
    std::string line = vformat(fmt, ap);
    va_end(ap);
    log_line(*model, line);
  } catch (...) {
    // Logging never fails a solve.
  }
  return 0;
}

int QZlogmodtid(QZmodel model, int nLevel, const char* fmt, ...) {
  if (fmt == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (nLevel == 0 || model == nullptr) return 0;
  if (model->cb.logFunc == nullptr || model->holdLog) return 0;
  try {
    va_list ap;
    va_start(ap, fmt);
    const std::string text = vformat(fmt, ap);
    va_end(ap);
    // A leading new line stays in front of the tag, so tagged lines still start fresh.
    const bool lead = !text.empty() && text[0] == '\n';
    std::string line = lead ? format_args("\nThread%02d: %s", omp_get_thread_num(), text.c_str() + 1)
                            : format_args("Thread%02d: %s", omp_get_thread_num(), text.c_str());
    log_line(*model, line);
  } catch (...) {
  }
  return 0;
}

int QZlogenv(QZenv env, int nLevel, const char* fmt, ...) {
  if (fmt == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (nLevel == 0) return 0;
  try {
    va_list ap;
    va_start(ap, fmt);
    std::string line = vformat(fmt, ap);
    va_end(ap);
    if (env != nullptr && env->logFunc != nullptr)
      env->logFunc(env, line.data(), env->logData);
    else
      to_debug_log(env, line);
  } catch (...) {
  }
  return 0;
}

int QZsetDbgLogfunc(QZenvLogFunc_t pfFunc, void* pvData) {
  DebugLog& d = debug_log();
  std::lock_guard<std::mutex> lock(d.mutex);
  d.func = pfFunc;
  d.data = pfFunc ? pvData : nullptr;
  return 0;
}

int QZprintlog(std::FILE* stream, int nLevel, const char* fmt, ...) {
  if (stream == nullptr || fmt == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (nLevel == 0) return 0;
  try {
    va_list ap;
    va_start(ap, fmt);
    const std::string text = vformat(fmt, ap);
    va_end(ap);
    static constexpr const char* kDay[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    static constexpr const char* kMonth[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                             "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const std::time_t now = std::time(nullptr);
    std::tm t{};
    localtime_r(&now, &t);
    write_stream(stream, format_args("QZdebug|%.3s %.3s%3d %.2d:%.2d:%.2d %d|%s", kDay[t.tm_wday],
                                     kMonth[t.tm_mon], t.tm_mday, t.tm_hour, t.tm_min, t.tm_sec,
                                     t.tm_year + 1900, text.c_str()));
  } catch (...) {
  }
  return 0;
}

int QZdprintf(int nMask, const char* fmt, ...) {
  if (fmt == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (nMask == 0) return 0;
  try {
    va_list ap;
    va_start(ap, fmt);
    std::string line = vformat(fmt, ap);
    va_end(ap);
    to_debug_log(nullptr, line);
  } catch (...) {
  }
  return 0;
}

int QZdfprintf(std::FILE* stream, int nMask, const char* fmt, ...) {
  if (stream == nullptr || fmt == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (nMask == 0) return 0;
  try {
    va_list ap;
    va_start(ap, fmt);
    const std::string text = vformat(fmt, ap);
    va_end(ap);
    // One write per line keeps lines of parallel threads whole.
    write_stream(stream, format_args("\nThread%02d:%s", omp_get_thread_num(), text.c_str()));
  } catch (...) {
  }
  return 0;
}

int QZdsprintf(char* szBuffer, int nBufferSize, const char* fmt, ...) {
  if (szBuffer == nullptr || fmt == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (nBufferSize <= 0) return QZERR_ARRAY_OUT_OF_BOUNDS;
  try {
    va_list ap;
    va_start(ap, fmt);
    const std::string text = vformat(fmt, ap);
    va_end(ap);
    const int n = std::snprintf(szBuffer, static_cast<size_t>(nBufferSize), "Thread%02d:%s",
                                omp_get_thread_num(), text.c_str());
    return n >= nBufferSize ? QZERR_ARRAY_OUT_OF_BOUNDS : 0;
  } catch (...) {
    return QZERR_OUT_OF_MEMORY;
  }
}

}  // extern "C"
