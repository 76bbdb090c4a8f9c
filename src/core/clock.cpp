// Clocks: a monotonic wall clock and the process CPU clock.
#include "core/clock.h"

#include <chrono>
#include <ctime>

namespace zento {

double lt_get_realtime() {
  using namespace std::chrono;
  return duration<double>(steady_clock::now().time_since_epoch()).count();
}

double lt_get_cputime() {
  timespec ts{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &ts);
  return static_cast<double>(ts.tv_sec) + 1e-9 * static_cast<double>(ts.tv_nsec);
}

long lt_get_sec() { return static_cast<long>(lt_get_realtime()); }
long lt_get_dsec() { return static_cast<long>(lt_get_realtime() * 10.0); }
long lt_get_hsec() { return static_cast<long>(lt_get_realtime() * 100.0); }

}  // namespace zento
