// The LP instance tables: every model read through the public MPS reader, solved with
// presolve off by the primal and by the default (dual) method, the feasible ones also
// through their explicit dual, and all with presolve on; the status is compared with the
// table and an optimal answer checked by a KKT certificate built from the model's own data
// and by a check of the basis that comes with it (a presolved answer's basis must also start
// the model without presolve at its optimum).
#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "lp_oracle.h"
#include "zento.h"

#ifndef ZENTO_TEST_DATA
#error "ZENTO_TEST_DATA must name the test data folder"
#endif
#ifndef ZENTO_LP_TABLES
#error "ZENTO_LP_TABLES must name the folder of the instance tables"
#endif

namespace zento::test {
namespace {

struct Case {
  TableRow row;
  int method;
  bool through_dual = false;  // solved through its explicit dual
  bool presolve = false;      // presolve on (default level)
};

std::vector<Case> cases(const std::string& collection) {
  std::vector<Case> out;
  const std::vector<TableRow> rows = read_lp_table(ZENTO_LP_TABLES, collection);
  for (const TableRow& r : rows)
    for (int method : {QZ_METHOD_PSIMPLEX, QZ_METHOD_FREE}) out.push_back({r, method});
  // The explicit dual's route on the feasible collection.
  if (collection == "netlib")
    for (const TableRow& r : rows) out.push_back({r, QZ_METHOD_FREE, true});
  for (const TableRow& r : rows) out.push_back({r, QZ_METHOD_FREE, false, true});
  return out;
}

std::string case_name(const ::testing::TestParamInfo<Case>& info) {
  return test_name(info.param.row.model +
                   (info.param.presolve       ? "_presolved"
                    : info.param.through_dual ? "_dualmodel"
                    : info.param.method == QZ_METHOD_FREE ? "_default" : "_primal"));
}

class LpInstance : public ::testing::TestWithParam<Case> {};

TEST_P(LpInstance, SolvesWithCertificate) {
  const Case& c = GetParam();
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  ASSERT_EQ(rc, 0);
  QZmodel model = QZcreateModel(env, &rc);
  ASSERT_EQ(rc, 0);
  const std::string path =
      std::string(ZENTO_TEST_DATA) + "/" + c.row.collection + "/" + c.row.model + ".mps.gz";
  ASSERT_EQ(QZreadMPSFile(model, path.c_str(), QZ_MPS_AUTO), 0) << path;
  if (!c.presolve) {
    ASSERT_EQ(QZsetModelIntParameter(model, QZ_IPARAM_LP_PRELEVEL, 0), 0);
  }
  if (c.through_dual) {
    ASSERT_EQ(QZsetModelIntParameter(model, QZ_IPARAM_PROB_TO_SOLVE, 2), 0);
  }
  const LpRun run = solve_lp(model, c.method);
  int status = run.status;
  int rdRows = 0, rdCols = 0, rdNnz = 0;
  QZgetInfo(model, QZ_IINFO_NUM_RDCONS, &rdRows);
  QZgetInfo(model, QZ_IINFO_NUM_RDVARS, &rdCols);
  QZgetInfo(model, QZ_IINFO_NUM_RDNONZ, &rdNnz);
  std::printf("%-10s %-9s status=%d iters=%d time=%.3f reduced=%dx%d/%d\n", c.row.model.c_str(),
              c.presolve       ? "presolved"
              : c.through_dual ? "dualmodel"
              : c.method == QZ_METHOD_FREE ? "default" : "primal",
              status, run.iters, run.secs, rdRows, rdCols, rdNnz);
  EXPECT_EQ(run.rc, 0);
  if (c.row.status == "infeasible") {
    EXPECT_TRUE(status == QZ_STATUS_INFEASIBLE || status == QZ_STATUS_INFORUNB) << status;
  } else if (c.row.status == "unbounded") {
    EXPECT_TRUE(status == QZ_STATUS_UNBOUNDED || status == QZ_STATUS_INFORUNB) << status;
  } else {
    ASSERT_TRUE(is_optimal(status)) << status;
    LpData lp = LpData::from_model(model);
    if (c.row.has_obj) {
      lp.has_opt = true;
      lp.opt = c.row.obj;
    }
    // The published optima carry 11 digits: 1e-6 relative is the bar for the objective, the
    // optimality conditions themselves must hold to 1e-7.
    const KktReport k = check_model(model, lp);
    EXPECT_LE(k.pinf, 1e-7) << k.worst;
    EXPECT_LE(k.dinf, 1e-7) << k.worst;
    EXPECT_LE(k.compl_, 1e-7) << k.worst;
    EXPECT_LE(k.objgap, 1e-6) << k.worst;
    // The basis that comes with the answer: m basics, values on their bounds, and a warm
    // solve of the model from it without presolve stays where it is.
    const KktReport b = check_basis(model, lp);
    EXPECT_LE(b.pinf, 1e-7) << b.worst;
    EXPECT_LE(b.dinf, 1e-7) << b.worst;
    if (c.presolve) {
      ASSERT_EQ(QZsetModelIntParameter(model, QZ_IPARAM_LP_PRELEVEL, 0), 0);
      ASSERT_EQ(QZoptimize(model, QZ_METHOD_PSIMPLEX, &status), 0);
      int again = -1;
      QZgetInfo(model, QZ_IINFO_SIM_ITER, &again);
      EXPECT_EQ(status, QZ_STATUS_BASIC_OPTIMAL);
      EXPECT_LE(again, 2) << "iterations from the postsolved basis";
    }
  }
  QZdeleteModel(&model);
  QZdeleteEnv(&env);
}

INSTANTIATE_TEST_SUITE_P(Netlib, LpInstance, ::testing::ValuesIn(cases("netlib")), case_name);
INSTANTIATE_TEST_SUITE_P(NetlibInfeasible, LpInstance,
                         ::testing::ValuesIn(cases("netlib_infeasible")), case_name);

}  // namespace
}  // namespace zento::test
