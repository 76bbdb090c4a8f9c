// Warm reoptimization over netlib: after the optimum, one basic structural gets an upper bound
// below its value; the warm re-solve must reach the optimum of a cold solve of the changed
// model, in far fewer iterations, and with a cutoff between the old and the new optimum the
// warm re-solve must stop with QZ_STATUS_CUTOFF.
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "core/model.h"
#include "lp_oracle.h"
#include "zento.h"

namespace zento::test {
namespace {

std::vector<std::string> netlib_models() {
  std::vector<std::string> out;
  std::ifstream in(std::string(ZENTO_LP_TABLES) + "/netlib.csv");
  std::string line;
  bool header = true;
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#') continue;
    if (header) {
      header = false;
      continue;
    }
    out.push_back(line.substr(0, line.find(',')));
  }
  return out;
}

struct Outcome {
  int rc = 0, status = 0, iters = 0;
  double obj = 0, secs = 0;
};

Outcome solve(QZmodel m) {
  Outcome r;
  const auto t0 = std::chrono::steady_clock::now();
  r.rc = QZoptimize(m, QZ_METHOD_FREE, &r.status);
  r.secs = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
  QZgetInfo(m, QZ_IINFO_SIM_ITER, &r.iters);
  QZgetObjective(m, &r.obj);
  return r;
}

QZmodel read(QZenv env, const std::string& name) {
  int rc = 0;
  QZmodel m = QZcreateModel(env, &rc);
  const std::string path = std::string(ZENTO_TEST_DATA) + "/netlib/" + name + ".mps.gz";
  if (QZreadMPSFile(m, path.c_str(), QZ_MPS_AUTO) != 0) return nullptr;
  QZsetModelIntParameter(m, QZ_IPARAM_LP_PRELEVEL, 0);
  return m;
}

void set_upper(QZmodel m, int j, double u) { ASSERT_EQ(QZmodifyUpperBounds(m, 1, &j, &u), 0); }

bool optimal(int s) { return s == QZ_STATUS_OPTIMAL || s == QZ_STATUS_BASIC_OPTIMAL; }

TEST(LpWarm, TightenedBoundReoptimizesAndCutsOff) {
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  ASSERT_EQ(rc, 0);
  double sumWarm = 0, sumCold = 0, logRatio = 0;
  int counted = 0, cutoffs = 0;
  std::printf("%-10s %8s %8s %8s %9s %9s  %s\n", "model", "cold", "warm", "ratio", "cold s",
              "warm s", "status");
  for (const std::string& name : netlib_models()) {
    QZmodel a = read(env, name);
    ASSERT_NE(a, nullptr) << name;
    const Outcome first = solve(a);
    ASSERT_TRUE(first.rc == 0 && optimal(first.status)) << name;
    // The most interior basic structural, relative to its magnitude.
    int n = 0, mrows = 0;
    QZgetDimensions(a, &n, &mrows, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                    nullptr, nullptr);
    std::vector<double> x(n);
    std::vector<int> cst(n), rst(mrows);
    QZgetPrimalSolution(a, x.data());
    QZgetBasis(a, cst.data(), rst.data());
    int jbest = -1;
    double best = 1e-6;
    for (int j = 0; j < n; ++j) {
      if (cst[j] < 0) continue;
      const double lo = a->lp.padL[j], up = a->lp.padU[j];
      const double room = std::min(lo > -QZ_INFINITY ? x[j] - lo : 1e30,
                                   up < QZ_INFINITY ? up - x[j] : 1e30) /
                          (1 + std::fabs(x[j]));
      if (room > best) {
        best = room;
        jbest = j;
      }
    }
    if (jbest < 0) {
      QZdeleteModel(&a);
      continue;
    }
    const double xj = x[jbest], lo = a->lp.padL[jbest], oldUp = a->lp.padU[jbest];
    const double newUp = xj - 0.5 * std::min(lo > -QZ_INFINITY ? xj - lo : 1e30, 1 + std::fabs(xj));
    set_upper(a, jbest, newUp);
    const Outcome warm = solve(a);

    QZmodel b = read(env, name);
    set_upper(b, jbest, newUp);
    const Outcome cold = solve(b);

    EXPECT_EQ(warm.rc, 0) << name;
    EXPECT_EQ(warm.status, cold.status) << name;
    if (optimal(cold.status) && optimal(warm.status)) {
      EXPECT_NEAR(warm.obj, cold.obj, 1e-6 * std::max(1.0, std::fabs(cold.obj))) << name;
      const KktReport k = check_model(a, LpData::from_model(a));
      EXPECT_TRUE(k.ok(1e-7)) << name << ": " << k.worst;
    }
    const double ratio = (warm.iters + 1.0) / (cold.iters + 1.0);
    sumWarm += warm.iters;
    sumCold += cold.iters;
    logRatio += std::log(ratio);
    ++counted;
    std::printf("%-10s %8d %8d %8.3f %9.4f %9.4f  %d\n", name.c_str(), cold.iters, warm.iters,
                ratio, cold.secs, warm.secs, warm.status);

    // Back to the first optimum warm, then the same tightening under a cutoff that the new
    // optimum passes: the dual must stop at the cutoff.
    if (optimal(cold.status) &&
        std::fabs(cold.obj - first.obj) > 1e-5 * std::max(1.0, std::fabs(first.obj))) {
      set_upper(a, jbest, oldUp);
      const Outcome back = solve(a);
      EXPECT_TRUE(optimal(back.status)) << name;
      EXPECT_NEAR(back.obj, first.obj, 1e-6 * std::max(1.0, std::fabs(first.obj))) << name;
      QZsetModelIntParameter(a, QZ_IPARAM_SOLVER_USECUTOFFVAL, 1);
      QZsetModelDouParameter(a, QZ_DPARAM_SOLVER_CUTOFFVAL, 0.5 * (first.obj + cold.obj));
      set_upper(a, jbest, newUp);
      const Outcome cut = solve(a);
      EXPECT_EQ(cut.rc, 0) << name;
      EXPECT_EQ(cut.status, QZ_STATUS_CUTOFF) << name;
      ++cutoffs;
    }
    QZdeleteModel(&a);
    QZdeleteModel(&b);
  }
  std::printf("warm/cold iterations over %d models: total %.0f/%.0f = %.4f, geometric mean of "
              "ratios %.4f; %d cutoff runs\n",
              counted, sumWarm, sumCold, sumWarm / sumCold, std::exp(logRatio / counted), cutoffs);
  EXPECT_LT(sumWarm, 0.2 * sumCold);
  QZdeleteEnv(&env);
}

}  // namespace
}  // namespace zento::test
