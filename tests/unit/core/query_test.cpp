// Reading model data back: dimensions, the LP arrays, names and index lookups.
#include <cstring>

#include "test_util.h"

namespace zento::test {
namespace {

using Query = EnvFixture;

TEST_F(Query, EveryPieceReadsBackAsLoaded) {
  QZmodel m = new_model();
  SmallLP lp;
  ASSERT_EQ(lp.load(m), 0);
  ASSERT_EQ(load_names(m), 0);

  int nv = 0, nc = 0, nz = 0, vlen = 0, clen = 0;
  ASSERT_EQ(QZgetDimensions(m, &nv, &nc, nullptr, &nz, nullptr, nullptr, nullptr, nullptr, &vlen,
                            &clen, nullptr),
            0);
  EXPECT_EQ(vlen, 4);   // "x\0y\0"
  EXPECT_EQ(clen, 19);  // "cap\0demand\0balance\0"

  int sense = 0;
  double k = 0;
  std::vector<double> c(nv), b(nc), coef(nz), lo(nv), up(nv);
  std::vector<int> beg(nv + 1), len(nv), rows(nz);
  std::string types(nc, ' ');
  ASSERT_EQ(QZgetLPData(m, &sense, &k, c.data(), b.data(), types.data(), beg.data(), len.data(),
                        coef.data(), rows.data(), lo.data(), up.data()),
            0);
  EXPECT_EQ(sense, lp.sense);
  EXPECT_EQ(k, lp.objConst);
  EXPECT_EQ(c, lp.c);
  EXPECT_EQ(b, lp.b);
  EXPECT_EQ(types, lp.types);
  EXPECT_EQ(beg, lp.beg);
  EXPECT_EQ(rows, lp.rows);
  EXPECT_EQ(coef, lp.coef);
  EXPECT_EQ(lo, lp.lo);
  EXPECT_EQ(up, lp.up);

  char type = 0;
  double rhs = 0;
  int n = 0;
  int vars[2];
  double vals[2];
  ASSERT_EQ(QZgetLPConstraintDatai(m, 1, &type, &rhs, &n, vars, vals), 0);
  EXPECT_EQ(type, 'G');
  EXPECT_EQ(rhs, 2.0);
  ASSERT_EQ(n, 2);
  EXPECT_EQ(vars[0], 0);
  EXPECT_EQ(vars[1], 1);
  EXPECT_EQ(vals[0], 1.0);
  EXPECT_EQ(vals[1], 3.0);

  char vt = 0;
  double cj = 0, lj = 0, uj = 0;
  int rj[3];
  double aj[3];
  ASSERT_EQ(QZgetLPVariableDataj(m, 1, &vt, &cj, &lj, &uj, &n, rj, aj), 0);
  EXPECT_EQ(vt, 'C');
  EXPECT_EQ(n, 3);
  EXPECT_EQ(aj[2], -1.0);

  char title[32], obj[32], rhsName[32], rng[32], bnd[32];
  std::vector<char*> cn(nc), vn(nv);
  std::vector<char> cpool(clen), vpool(vlen);
  ASSERT_EQ(QZgetNameData(m, title, obj, rhsName, rng, bnd, cn.data(), cpool.data(), vn.data(),
                          vpool.data(), nullptr, nullptr),
            0);
  EXPECT_STREQ(title, "small");
  EXPECT_STREQ(obj, "profit");
  EXPECT_STREQ(cn[1], "demand");
  EXPECT_STREQ(vn[1], "y");
  QZdeleteModel(&m);
}

TEST_F(Query, IndexLookupsAndUnknownNames) {
  QZmodel m = new_model();
  ASSERT_EQ(SmallLP().load(m), 0);
  int idx = 7;
  // No names loaded: lookups fail and name queries clear the buffer.
  EXPECT_EQ(QZgetVariableIndex(m, "x", &idx), QZERR_COLUMN_TOKEN_NOT_FOUND);
  EXPECT_EQ(idx, -1);
  char buf[16] = "junk";
  EXPECT_EQ(QZgetVariableNamej(m, 0, buf), QZERR_INFO_NOT_AVAILABLE);
  EXPECT_STREQ(buf, "");

  ASSERT_EQ(load_names(m), 0);
  EXPECT_EQ(QZgetConstraintIndex(m, "balance", &idx), 0);
  EXPECT_EQ(idx, 2);
  EXPECT_EQ(QZgetVariableIndex(m, "y", &idx), 0);
  EXPECT_EQ(idx, 1);
  EXPECT_EQ(QZgetConstraintIndex(m, "nope", &idx), QZERR_ROW_TOKEN_NOT_FOUND);
  EXPECT_EQ(idx, -1);
  EXPECT_EQ(QZgetVariableNamej(m, 2, buf), QZERR_INDEX_OUT_OF_RANGE);

  // New names replace the old ones and the lookup follows.
  const char* cn[] = {"u", "v"};
  ASSERT_EQ(QZloadNameData(m, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                           const_cast<char**>(cn), nullptr),
            0);
  EXPECT_EQ(QZgetVariableIndex(m, "v", &idx), 0);
  EXPECT_EQ(idx, 1);
  EXPECT_EQ(QZgetVariableIndex(m, "y", &idx), QZERR_COLUMN_TOKEN_NOT_FOUND);
  QZdeleteModel(&m);
}

TEST_F(Query, QueriesOnAnUnloadedModel) {
  QZmodel m = new_model();
  double v = 0;
  char t[4];
  int n = 0;
  EXPECT_EQ(QZgetObjectivej(m, 0, &v), QZERR_INFO_NOT_AVAILABLE);
  EXPECT_EQ(QZgetVarType(m, t), QZERR_INFO_NOT_AVAILABLE);
  EXPECT_EQ(QZgetSETSData(m, &n, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr),
            QZERR_INFO_NOT_AVAILABLE);
  EXPECT_EQ(QZgetObjectivej(nullptr, 0, &v), QZERR_ILLEGAL_NULL_POINTER);
  ASSERT_EQ(SmallLP().load(m), 0);
  EXPECT_EQ(QZgetObjectivej(m, 2, &v), QZERR_INDEX_OUT_OF_RANGE);
  EXPECT_EQ(QZgetConstraintDatai(m, -1, t, nullptr, &v), QZERR_INDEX_OUT_OF_RANGE);
  QZdeleteModel(&m);
}

TEST_F(Query, SetsConesAndStartPointsReadBack) {
  QZmodel m = new_model();
  ASSERT_EQ(SmallLP().load(m), 0);
  char types[] = {2, 4};
  std::vector<int> card{0, 1}, beg{0, 2, 4}, cols{0, 1, 1, 0};
  ASSERT_EQ(QZloadSETSData(m, 2, types, card.data(), beg.data(), cols.data()), 0);
  int ns = 0, ntnz = 0, gcard[2], gnnz[2], gbeg[3], gcols[4];
  char gt[2];
  ASSERT_EQ(QZgetSETSData(m, &ns, &ntnz, gt, gcard, gnnz, gbeg, gcols), 0);
  EXPECT_EQ(ns, 2);
  EXPECT_EQ(ntnz, 4);
  EXPECT_EQ(gt[1], 4);
  EXPECT_EQ(gcard[0], 0);
  EXPECT_EQ(gcard[1], 1);
  EXPECT_EQ(gcols[2], 1);
  EXPECT_EQ(QZsetSETSStatei(m, 1, 1), 0);
  EXPECT_EQ(QZsetSETSStatei(m, 1, 2), QZERR_ERROR_IN_INPUT);
  EXPECT_EQ(QZsetSETSStatei(m, 2, 1), QZERR_INDEX_OUT_OF_RANGE);

  const double x0[] = {1.0, 2.0};
  ASSERT_EQ(QZloadVarStartPoint(m, x0), 0);
  double back[2];
  ASSERT_EQ(QZgetVarStartPoint(m, back), 0);
  EXPECT_EQ(back[1], 2.0);
  ASSERT_EQ(QZloadVarStartPoint(m, nullptr), 0);
  EXPECT_EQ(QZgetVarStartPoint(m, back), QZERR_INFO_NOT_AVAILABLE);
  const int pc[] = {1};
  const double pv[] = {4.0};
  ASSERT_EQ(QZloadMIPVarStartPointPartial(m, 1, pc, pv), 0);
  int np = 0, gpc = -1;
  double gpv = 0;
  ASSERT_EQ(QZgetMIPVarStartPointPartial(m, &np, &gpc, &gpv), 0);
  EXPECT_EQ(np, 1);
  EXPECT_EQ(gpc, 1);
  EXPECT_EQ(gpv, 4.0);
  QZdeleteModel(&m);
}

}  // namespace
}  // namespace zento::test
