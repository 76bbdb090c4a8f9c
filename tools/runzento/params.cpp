// Parameter options. The parameter entries are not part of this library build yet, so the
// options that need them are refused rather than ignored.
#include "params.h"

#include <cstdio>

namespace runzento {

namespace {
int unavailable(const char* what) {
  std::fprintf(stderr, "runzento: %s needs the parameter entries, which this build lacks\n", what);
  return kUsage;
}
}  // namespace

int apply_parameters(QZenv, QZmodel, const Options& o) {
  if (o.timeLimit >= 0) return unavailable("--time-limit");
  if (o.iterLimit >= 0) return unavailable("--iter-limit");
  if (o.printLevel > 0) return unavailable("--print-level");
  if (!o.paramFiles.empty()) return unavailable("--param-file");
  if (!o.settings.empty()) return unavailable("NAME=VALUE");
  return kSolved;
}

int list_parameters(QZenv) { return unavailable("--params"); }

}  // namespace runzento
