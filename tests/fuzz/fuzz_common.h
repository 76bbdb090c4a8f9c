// Pieces shared by the fuzz targets: one environment for the whole run, and a scratch file for
// readers that take a path (in a memory-backed folder when there is one).
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <string>

#include "zento.h"

inline QZenv shared_env() {
  static QZenv env = [] {
    int rc = 0;
    return QZcreateEnv(&rc);
  }();
  return env;
}

inline std::string scratch_path(const char* stem) {
  const char* env = std::getenv("ZENTO_FUZZ_SCRATCH");
  const std::string dir = env ? env : access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
  return dir + "/" + stem + std::to_string(getpid());
}
