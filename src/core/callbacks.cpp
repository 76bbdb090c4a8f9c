// Progress callbacks and the checkpoint `timelapsed`.
#include "core/callbacks.h"

#include <cstdlib>

#include "core/clock.h"

namespace zento {

int run_progress_callback(Imodel& m, int nLocation, bool force) {
  const double now = lt_get_realtime();
  const double freq = m.SolverPam.callbackfreq;
  if (!force && (freq < 0 || now - m.lastCallbackWall < freq)) return 0;
  int r = 0;
  m.callLevel = m.callLevelSaved;
  if (m.cb.progress) r = m.cb.progress(&m, nLocation, m.cb.progressData);
  if (m.cb.internalProgress) m.cb.internalProgress(&m, nLocation, m.cb.internalProgressData);
  m.callLevel = 0;
  m.lastCallbackWall = now;
  return r;
}

int timelapsed(double dTimeLimit, Imodel* model, double tStart, int nLocation, int nForce) {
  int stop = 0;
  if (dTimeLimit >= 0 && lt_get_realtime() - tStart >= dTimeLimit) stop = 1;
  if (model != nullptr && (model->cb.progress || model->cb.internalProgress)) {
    const int r = run_progress_callback(*model, nLocation, nForce != 0);
    if (r != 0) return -std::abs(r);
  }
  return stop;
}

}  // namespace zento
