// Wall-clock and processor-clock stamps used by every solver for limits and reports.
#pragma once

namespace zento {

double lt_get_realtime();  // wall seconds since an arbitrary epoch
double lt_get_cputime();   // processor seconds of this process
inline double lt_diff_time(double later, double earlier) { return later - earlier; }
long lt_get_sec();     // whole wall seconds
long lt_get_dsec();    // wall tenths of seconds
long lt_get_hsec();    // wall hundredths of seconds

}  // namespace zento
