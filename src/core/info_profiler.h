// The profiler: per-model timers of solver regions and event counters.
//
// A model carries a profiler only when asked (`SolverPam.profiler_level` nonzero, or the table
// bits 128, 256, 2048 of `SplexPam.lp_prtfg`), so the cost elsewhere is one null test per
// region. Region ids are fixed and grouped: 0..45 simplex, 49..59 infeasibility analysis,
// 60..79 factorization, 101..250 mixed-integer, 251..400 further solvers; 500 closes the table.
// Times are wall seconds: they stay meaningful for regions that run threads.
#pragma once

#include <memory>
#include <vector>

#include "core/model.h"

namespace zento {

inline constexpr int kProfSlots = 501;
inline constexpr int kProfLast = 500;

struct ProfRegion {
  double seconds = 0;
  int calls = 0;
  int id = 0;
  const char* name = nullptr;
  double started = 0;
  int depth = 0;  // a region entered again before it ended is timed once, from the outer entry
};

struct ProfCounter {
  long long count = 0;
  int id = 0;
  const char* name = nullptr;
};

struct Profiler {
  std::vector<ProfRegion> regions;
  std::vector<ProfCounter> counters;
};

const char* prof_region_name(int id);
const char* prof_counter_name(int id);

bool QZIprofWanted(const Imodel& m);
// Creates the model's tables from the schemas when it has none.
int QZIprofNew(Imodel& m);
void QZIprofFree(Imodel& m);
// A working model charges the source's tables (a presolved copy runs on the same clock).
void QZIprofHook(Imodel& work, const Imodel& source);
void QZIprofUnHook(Imodel& work);
// Adds the calls, times and counts of `src` to `dst` (thread-local tables after a parallel run).
void QZIprofAccum(Imodel& dst, const Imodel& src);

void QZIprofBegin(Imodel& m, int id);
void QZIprofEnd(Imodel& m, int id);
void QZIprofCount(Imodel& m, int id, long long n = 1);

// Range of region ids a display mode covers: 128 simplex, 1 analysis, 256 factorization,
// 2 mixed-integer, 4 further solvers, anything else all.
void QZIprofGetModeRange(int mode, int* first, int* last);
// Logs the regions of a mode with calls, up to `last` (-1: the end of the mode's range).
void QZIprofDisplay(Imodel& m, int mode, int last);
void QZIcounterDisplay(Imodel& m, int first, int last);
// The tables that the bits of `SplexPam.lp_prtfg` ask for.
void QZIprofReport(Imodel& m);

// Times one region for the life of the scope.
class ProfScope {
 public:
  ProfScope(Imodel& m, int id) : m_(m.prof ? &m : nullptr), id_(id) {
    if (m_) QZIprofBegin(*m_, id_);
  }
  ~ProfScope() {
    if (m_) QZIprofEnd(*m_, id_);
  }
  ProfScope(const ProfScope&) = delete;
  ProfScope& operator=(const ProfScope&) = delete;

 private:
  Imodel* m_;
  int id_;
};

}  // namespace zento
