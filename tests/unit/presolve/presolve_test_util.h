// Shared pieces of the presolve tests: small LPs from dense rows, and one solve of a model
// with presolve on or off, with what the run left behind.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/model.h"
#include "lp_oracle.h"
#include "presolve/presolve.h"
#include "zento.h"

namespace zento::test {

constexpr double kInf = QZ_INFINITY;

// An LP from a dense row-major matrix; zeros are not stored.
inline LpData dense_lp(int sense, std::vector<double> c, std::vector<std::vector<double>> A,
                       std::vector<double> b, std::string types, std::vector<double> lo,
                       std::vector<double> up) {
  LpData lp;
  lp.m = static_cast<int>(A.size());
  lp.n = static_cast<int>(c.size());
  lp.sense = sense;
  lp.c = std::move(c);
  lp.b = std::move(b);
  lp.types = std::move(types);
  lp.lo = std::move(lo);
  lp.up = std::move(up);
  lp.has_opt = false;
  lp.beg.assign(lp.n + 1, 0);
  for (int j = 0; j < lp.n; ++j) {
    for (int i = 0; i < lp.m; ++i)
      if (A[i][j] != 0) {
        lp.rows.push_back(i);
        lp.vals.push_back(A[i][j]);
      }
    lp.beg[j + 1] = static_cast<int>(lp.vals.size());
  }
  if (lp.vals.empty()) {
    lp.vals.push_back(0);
    lp.rows.push_back(0);
  }
  return lp;
}

struct SolveRun {
  QZmodel model = nullptr;
  int rc = -1, status = 0, method = 0, iters = 0;
  double obj = 0;
  ~SolveRun() { QZdeleteModel(&model); }
};

// Loads and solves; the model stays in the run for inspection.
inline void solve(QZenv env, const LpData& lp, bool presolve, SolveRun& r,
                  int method = QZ_METHOD_FREE, int iusol = 0) {
  int rc = 0;
  r.model = QZcreateModel(env, &rc);
  ASSERT_EQ(rc, 0);
  ASSERT_EQ(lp.load(r.model), 0);
  ASSERT_EQ(QZsetModelIntParameter(r.model, QZ_IPARAM_LP_PRELEVEL, presolve ? 254 : 0), 0);
  ASSERT_EQ(QZsetModelIntParameter(r.model, QZ_IPARAM_SOLVER_IUSOL, iusol), 0);
  r.rc = QZoptimize(r.model, method, &r.status);
  QZgetObjective(r.model, &r.obj);
  int el = 0, bi = 0, ni = 0, ps = 0, ds = 0, bs = 0;
  double po = 0, dob = 0, pi = 0, di = 0;
  QZgetSolutionInfo(r.model, &r.method, &el, &r.iters, &bi, &ni, &ps, &ds, &bs, &po, &dob, &pi,
                    &di);
}

// Infeasible and unbounded verdicts agree when one side could not tell them apart.
inline bool same_verdict(int a, int b) {
  auto either = [](int s) { return s == QZ_STATUS_INFEASIBLE || s == QZ_STATUS_UNBOUNDED; };
  return a == b || (a == QZ_STATUS_INFORUNB && either(b)) || (b == QZ_STATUS_INFORUNB && either(a));
}

}  // namespace zento::test
