// Shared fixtures of the information, message, callback and log tests.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "core/env.h"
#include "core/model.h"
#include "zento.h"

namespace zento::test {

// An environment and one model, deleted on every way out.
struct EnvModel {
  QZenv env = nullptr;
  QZmodel model = nullptr;
  EnvModel() {
    int rc = 0;
    env = QZcreateEnv(&rc);
    EXPECT_EQ(rc, 0);
    model = QZcreateModel(env, &rc);
    EXPECT_EQ(rc, 0);
  }
  ~EnvModel() { QZdeleteEnv(&env); }
  EnvModel(const EnvModel&) = delete;
  EnvModel& operator=(const EnvModel&) = delete;
};

// min -x0 + 2 x1 + 0 x2 + 5, no rows: x0 at its upper bound 4, x1 at its lower bound 1,
// x2 free at 0. Objective -4 + 2 + 5 = 3.
inline int load_trivial(QZmodel m) {
  const double c[] = {-1, 2, 0};
  const double l[] = {0, 1, -QZ_INFINITY};
  const double u[] = {4, 3, QZ_INFINITY};
  const int beg[] = {0, 0, 0, 0};
  return QZloadLPData(m, 0, 3, QZ_MIN, 5.0, c, nullptr, nullptr, 0, beg, nullptr, nullptr,
                      nullptr, l, u);
}

inline constexpr double kTrivialObjective = 3.0;

// One row x0 + x1 <= 3 over two integers in [0, 5]: the model the MIP callbacks are offered.
inline int load_small_mip(QZmodel m) {
  const double c[] = {-1, -1};
  const double b[] = {3};
  const char types[] = "L";
  const int beg[] = {0, 1, 2};
  const double a[] = {1, 1};
  const int rows[] = {0, 0};
  const double l[] = {0, 0};
  const double u[] = {5, 5};
  int rc = QZloadLPData(m, 1, 2, QZ_MIN, 0.0, c, b, types, 2, beg, nullptr, a, rows, l, u);
  if (rc != 0) return rc;
  char vt[] = "II";
  return QZloadVarType(m, vt);
}

// Sets an environment variable for the life of the object.
class ScopedEnvVar {
 public:
  ScopedEnvVar(const char* name, const std::string& value) : name_(name) {
    if (const char* old = std::getenv(name)) {
      had_ = true;
      old_ = old;
    }
    setenv(name, value.c_str(), 1);
  }
  ~ScopedEnvVar() {
    if (had_)
      setenv(name_, old_.c_str(), 1);
    else
      unsetenv(name_);
  }

 private:
  const char* name_;
  bool had_ = false;
  std::string old_;
};

// A fresh directory under the system's temporary folder, removed with its files.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  const std::string& path() const { return path_; }
  std::string write(const std::string& name, const std::string& content) const;

 private:
  std::string path_;
};

}  // namespace zento::test
