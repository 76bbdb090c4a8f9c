// Shared pieces of the presolve tests: small LPs from dense rows, and one solve of a model
// with presolve on or off, with what the run left behind.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "core/model.h"
#include "lp_oracle.h"
#include "presolve/presolve.h"
#include "zento.h"

namespace zento::test {

constexpr double kInf = QZ_INFINITY;

struct SolveRun {
  QZmodel model = nullptr;
  int rc = -1, status = 0, method = 0, iters = 0;
  double obj = 0;
  ~SolveRun() { QZdeleteModel(&model); }
};

inline void append_line(QZmodel, char* line, void* data) {
  *static_cast<std::string*>(data) += line;
}

// Loads and solves at a presolve level; the model stays in the run for inspection. With
// `log` the run's log lines are appended there.
inline void solve_at(QZenv env, const LpData& lp, int level, SolveRun& r,
                     int method = QZ_METHOD_FREE, int iusol = 0, std::string* log = nullptr) {
  int rc = 0;
  r.model = QZcreateModel(env, &rc);
  ASSERT_EQ(rc, 0);
  ASSERT_EQ(lp.load(r.model), 0);
  if (log) {
    ASSERT_EQ(QZsetModelLogfunc(r.model, append_line, log), 0);
    ASSERT_EQ(QZsetModelIntParameter(r.model, QZ_IPARAM_LP_PRINTLEVEL, 1), 0);
  }
  ASSERT_EQ(QZsetModelIntParameter(r.model, QZ_IPARAM_LP_PRELEVEL, level), 0);
  ASSERT_EQ(QZsetModelIntParameter(r.model, QZ_IPARAM_SOLVER_IUSOL, iusol), 0);
  r.rc = QZoptimize(r.model, method, &r.status);
  QZgetObjective(r.model, &r.obj);
  int el = 0, bi = 0, ni = 0, ps = 0, ds = 0, bs = 0;
  double po = 0, dob = 0, pi = 0, di = 0;
  QZgetSolutionInfo(r.model, &r.method, &el, &r.iters, &bi, &ni, &ps, &ds, &bs, &po, &dob, &pi,
                    &di);
}

inline void solve(QZenv env, const LpData& lp, bool presolve, SolveRun& r,
                  int method = QZ_METHOD_FREE, int iusol = 0) {
  solve_at(env, lp, presolve ? 254 : 0, r, method, iusol);
}

// Adds structure that keeps the planted optimum of `lp` (shifted by the costs of the columns
// it fixes): scaled copies of rows, fixed and empty columns, empty, free and redundant rows.
void salt(LpData& lp, uint64_t seed);
// The planted set of the presolve tests: a planted LP of a size drawn from `seed`, salted.
LpData planted_salted(uint64_t seed);

// One line of the presolve stage table.
struct StageLine {
  std::string tag;
  long rows = 0, cols = 0, nnz = 0;
};

// The stage table of a presolve log, in order.
inline std::vector<StageLine> stage_table(const std::string& log) {
  std::vector<StageLine> v;
  size_t p = log.find("tpre       ncons      nvars         nnzA      time");
  while (p != std::string::npos) {
    p = log.find('\n', p);
    if (p == std::string::npos) break;
    StageLine s;
    char tag[8] = {0};
    double t = 0;
    if (std::sscanf(log.c_str() + p, "\n %7s %ld %ld %ld %lf", tag, &s.rows, &s.cols, &s.nnz, &t) !=
            5 ||
        std::strlen(tag) != 3)
      break;
    s.tag = tag;
    v.push_back(s);
    ++p;
  }
  return v;
}

}  // namespace zento::test
