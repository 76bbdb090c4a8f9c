// Every presolve level against the answer without presolve, over all of netlib and the
// planted set: the same optimum within 1e-7 relative, a KKT certificate of the postsolved
// point on the user's model, and a basis of m members that matches it. Infeasible netlib
// models must stay infeasible at every level.
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "presolve_test_util.h"

#ifndef ZENTO_TEST_DATA
#error "ZENTO_TEST_DATA must name the test data folder"
#endif
#ifndef ZENTO_LP_TABLES
#error "ZENTO_LP_TABLES must name the folder of the instance tables"
#endif

namespace zento::test {
namespace {

// Each stage alone, the scans with the bound passes, all stages, the default, the default
// with the pass limit, and the low-memory route.
constexpr int kLevels[] = {2, 6, 8, 16, 32, 64, 30, 126, 254, 254 | 1024, 8192};

std::vector<TableRow> all_rows() {
  std::vector<TableRow> v = read_lp_table(ZENTO_LP_TABLES, "netlib");
  for (const TableRow& r : read_lp_table(ZENTO_LP_TABLES, "netlib_infeasible")) v.push_back(r);
  return v;
}

bool close(double a, double b, double rel) {
  return std::fabs(a - b) <= rel * std::max(1.0, std::fabs(b));
}

// Compares one presolved solve of `model` with the reference; returns a failure text or "".
std::string compare(QZmodel model, const LpData& lp, int level, int status, int refStatus,
                    double refObj) {
  char buf[256];
  if (!is_optimal(refStatus)) {
    if (same_verdict(status, refStatus)) return "";
    std::snprintf(buf, sizeof buf, "level %d: status %d, without presolve %d", level, status,
                  refStatus);
    return buf;
  }
  if (!is_optimal(status)) {
    std::snprintf(buf, sizeof buf, "level %d: status %d", level, status);
    return buf;
  }
  double obj = 0;
  QZgetObjective(model, &obj);
  if (!close(obj, refObj, 1e-7)) {
    std::snprintf(buf, sizeof buf, "level %d: objective %.12g, without presolve %.12g", level, obj,
                  refObj);
    return buf;
  }
  const KktReport k = check_model(model, lp);
  if (!k.ok(1e-7)) return "level " + std::to_string(level) + " KKT: " + k.worst;
  const KktReport b = check_basis(model, lp);
  if (b.pinf > 1e-7 || b.dinf > 1e-7)
    return "level " + std::to_string(level) + " basis: " + b.worst;
  return "";
}

class PresolveLevelsNetlib : public ::testing::TestWithParam<TableRow> {};

TEST_P(PresolveLevelsNetlib, SameOptimumAtEveryLevel) {
  const TableRow& row = GetParam();
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  ASSERT_EQ(rc, 0);
  const std::string path =
      std::string(ZENTO_TEST_DATA) + "/" + row.collection + "/" + row.model + ".mps.gz";
  auto run = [&](int level, QZmodel* out, int* status) {
    *out = QZcreateModel(env, &rc);
    ASSERT_EQ(rc, 0);
    ASSERT_EQ(QZreadMPSFile(*out, path.c_str(), QZ_MPS_AUTO), 0) << path;
    ASSERT_EQ(QZsetModelIntParameter(*out, QZ_IPARAM_LP_PRELEVEL, level), 0);
    ASSERT_EQ(QZoptimize(*out, QZ_METHOD_FREE, status), 0) << "level " << level;
  };
  QZmodel ref = nullptr;
  int refStatus = 0;
  run(0, &ref, &refStatus);
  if (HasFatalFailure()) return;
  double refObj = 0;
  QZgetObjective(ref, &refObj);
  if (row.status == "optimal") {
    ASSERT_TRUE(is_optimal(refStatus)) << refStatus;
  }
  const LpData lp = LpData::from_model(ref);
  QZdeleteModel(&ref);
  for (int level : kLevels) {
    QZmodel m = nullptr;
    int status = 0;
    const auto t0 = std::chrono::steady_clock::now();
    run(level, &m, &status);
    if (HasFatalFailure()) return;
    const double secs =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
    int rdRows = 0, rdCols = 0;
    QZgetInfo(m, QZ_IINFO_NUM_RDCONS, &rdRows);
    QZgetInfo(m, QZ_IINFO_NUM_RDVARS, &rdCols);
    std::printf("%-10s level %5d status %d reduced %dx%d time %.3f\n", row.model.c_str(), level,
                status, rdRows, rdCols, secs);
    const std::string err = compare(m, lp, level, status, refStatus, refObj);
    EXPECT_TRUE(err.empty()) << row.model << " " << err;
    QZdeleteModel(&m);
  }
  QZdeleteEnv(&env);
}

INSTANTIATE_TEST_SUITE_P(Netlib, PresolveLevelsNetlib, ::testing::ValuesIn(all_rows()),
                         [](const auto& info) { return test_name(info.param.model); });

// The planted set: each model at each level against its solve without presolve.
TEST(PresolveLevelsPlanted, SameOptimumAtEveryLevel) {
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  ASSERT_EQ(rc, 0);
  int failures = 0;
  for (uint64_t seed = 1; seed <= 300; ++seed) {
    const LpData lp = planted_salted(seed);
    SolveRun ref;
    solve_at(env, lp, 0, ref);
    if (HasFatalFailure()) return;
    ASSERT_EQ(ref.rc, 0);
    ASSERT_TRUE(is_optimal(ref.status)) << "seed " << seed;
    for (int level : kLevels) {
      SolveRun on;
      solve_at(env, lp, level, on);
      if (HasFatalFailure()) return;
      ASSERT_EQ(on.rc, 0) << "seed " << seed << " level " << level;
      const std::string err = compare(on.model, lp, level, on.status, ref.status, ref.obj);
      EXPECT_TRUE(err.empty()) << "seed " << seed << " " << err;
      failures += !err.empty();
      if (failures > 10) return;
    }
  }
  QZdeleteEnv(&env);
}

}  // namespace
}  // namespace zento::test
