// The profiler: the schemas of regions and counters, timing, merging and display.
#include "core/info_profiler.h"

#include <array>
#include <string>

#include "core/clock.h"
#include "zento.h"

namespace zento {

namespace {

// `profilerSchema` and `counterSchema`: every slot has a name, unused ones a placeholder.
struct Schema {
  std::array<std::string, kProfSlots> region;
  std::array<std::string, kProfSlots> counter;
  Schema() {
    for (int i = 0; i < kProfSlots; ++i) {
      region[static_cast<size_t>(i)] = "sz_context_description_" + std::to_string(i);
      counter[static_cast<size_t>(i)] = "sz_counter_description_" + std::to_string(i);
    }
#define QZ_PROF_REGION(id, name) region[id] = name;
#define QZ_PROF_COUNTER(id, name) counter[id] = name;
#include "core/info_profiler_schema.inc"
#undef QZ_PROF_REGION
#undef QZ_PROF_COUNTER
  }
};

const Schema& schema() {
  static const Schema s;  // immutable after its first use
  return s;
}

bool valid_id(int id) { return id >= 0 && id < kProfSlots; }

}  // namespace

const char* prof_region_name(int id) {
  return valid_id(id) ? schema().region[static_cast<size_t>(id)].c_str() : nullptr;
}

const char* prof_counter_name(int id) {
  return valid_id(id) ? schema().counter[static_cast<size_t>(id)].c_str() : nullptr;
}

bool QZIprofWanted(const Imodel& m) {
  return m.SolverPam.profiler_level != 0 || (m.SplexPam.lp_prtfg & (128 | 256 | 2048)) != 0;
}

int QZIprofNew(Imodel& m) {
  if (m.prof) return 0;
  auto p = std::make_shared<Profiler>();
  p->regions.resize(kProfSlots);
  p->counters.resize(kProfSlots);
  for (int i = 0; i < kProfSlots; ++i) {
    p->regions[static_cast<size_t>(i)].id = i;
    p->regions[static_cast<size_t>(i)].name = prof_region_name(i);
    p->counters[static_cast<size_t>(i)].id = i;
    p->counters[static_cast<size_t>(i)].name = prof_counter_name(i);
  }
  m.prof = std::move(p);
  return 0;
}

void QZIprofFree(Imodel& m) { m.prof.reset(); }

void QZIprofHook(Imodel& work, const Imodel& source) { work.prof = source.prof; }

void QZIprofUnHook(Imodel& work) { work.prof.reset(); }

void QZIprofAccum(Imodel& dst, const Imodel& src) {
  if (!src.prof || src.prof == dst.prof) return;
  QZIprofNew(dst);
  for (int i = 0; i < kProfSlots; ++i) {
    const auto k = static_cast<size_t>(i);
    dst.prof->regions[k].seconds += src.prof->regions[k].seconds;
    dst.prof->regions[k].calls += src.prof->regions[k].calls;
    dst.prof->counters[k].count += src.prof->counters[k].count;
  }
}

void QZIprofBegin(Imodel& m, int id) {
  if (!m.prof || !valid_id(id)) return;
  ProfRegion& r = m.prof->regions[static_cast<size_t>(id)];
  if (r.depth++ == 0) r.started = lt_get_realtime();
}

void QZIprofEnd(Imodel& m, int id) {
  if (!m.prof || !valid_id(id)) return;
  ProfRegion& r = m.prof->regions[static_cast<size_t>(id)];
  if (r.depth == 0) return;  // an end without its begin
  ++r.calls;
  if (--r.depth == 0) r.seconds += lt_get_realtime() - r.started;
}

void QZIprofCount(Imodel& m, int id, long long n) {
  if (!m.prof || !valid_id(id)) return;
  m.prof->counters[static_cast<size_t>(id)].count += n;
}

void QZIprofGetModeRange(int mode, int* first, int* last) {
  int a = 0, b = 499;
  switch (mode) {
    case 128: a = 0; b = 45; break;
    case 1: a = 49; b = 59; break;
    case 256: a = 60; b = 79; break;
    case 2: a = 101; b = 250; break;
    case 4: a = 251; b = 400; break;
    default: break;
  }
  if (first) *first = a;
  if (last) *last = b;
}

void QZIprofDisplay(Imodel& m, int mode, int last) {
  if (!m.prof || m.cb.logFunc == nullptr || m.SplexPam.lp_printlevel <= 0) return;
  int first = 0, end = 0;
  QZIprofGetModeRange(mode, &first, &end);
  if (last >= 0 && last < kProfSlots) end = last;
  QZlogmod(&m, 1, "\n\nProfiler results covering region %s-%s\n", prof_region_name(first),
           prof_region_name(end));
  QZlogmod(&m, 1, "PRF| %32s (%3s) %10s %10s \n", "region", "id", "calls", "seconds");
  for (int i = first; i <= end; ++i) {
    const ProfRegion& r = m.prof->regions[static_cast<size_t>(i)];
    if (r.calls == 0) continue;
    QZlogmod(&m, 1, "PRF| %32s (%03d) %10d %10.3f\n", r.name, r.id, r.calls, r.seconds);
  }
}

void QZIcounterDisplay(Imodel& m, int first, int last) {
  if (!m.prof || m.cb.logFunc == nullptr || m.SplexPam.lp_printlevel <= 0) return;
  if (first < 0) first = 0;
  if (last < 0 || last >= kProfSlots) last = kProfSlots - 1;
  QZlogmod(&m, 1, "\n\nEvent counter results covering region %s-%s\n", prof_counter_name(first),
           prof_counter_name(last));
  QZlogmod(&m, 1, "PRF| %32s (%3s) %10s \n", "counter", "id", "count");
  for (int i = first; i <= last; ++i) {
    const ProfCounter& c = m.prof->counters[static_cast<size_t>(i)];
    if (c.count == 0) continue;
    QZlogmod(&m, 1, "PRF| %32s (%03d) %10lld\n", c.name, c.id, c.count);
  }
}

void QZIprofReport(Imodel& m) {
  const int bits = m.SplexPam.lp_prtfg;
  if (bits & 128) QZIprofDisplay(m, 128, -1);
  if (bits & 256) QZIprofDisplay(m, 256, -1);
  if (bits & 2048) QZIcounterDisplay(m, 0, kProfLast);
}

}  // namespace zento
