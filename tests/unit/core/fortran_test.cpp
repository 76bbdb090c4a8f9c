// The Fortran-style twins pass scalars and handles by reference to the same entries.
#include <gtest/gtest.h>

#include "zento_fortran.h"

namespace {

TEST(FortranTwins, SolveAModelWithoutRowsByReference) {
  int rc = -1;
  QZenv env = qzcreateenv_(&rc);
  ASSERT_EQ(rc, 0);
  QZmodel m = qzcreatemodel_(&env, &rc);
  ASSERT_EQ(rc, 0);
  int nCons = 0, nVars = 2, sense = QZ_MAX, nz = 0;
  double k = 1.0;
  const double c[] = {1.0, 2.0}, lo[] = {0.0, 0.0}, up[] = {3.0, 4.0};
  const int beg[] = {0, 0, 0};
  ASSERT_EQ(qzloadlpdata_(&m, &nCons, &nVars, &sense, &k, c, nullptr, nullptr, &nz, beg, nullptr,
                          nullptr, nullptr, lo, up),
            0);
  int method = QZ_METHOD_FREE, status = 0;
  ASSERT_EQ(qzoptimize_(&m, &method, &status), 0);
  EXPECT_EQ(status, QZ_STATUS_BASIC_OPTIMAL);
  double obj = 0;
  ASSERT_EQ(qzgetobjective_(&m, &obj), 0);
  EXPECT_EQ(obj, 12.0);
  int j = 1;
  double u = 0;
  ASSERT_EQ(qzgetupperboundj_(&m, &j, &u), 0);
  EXPECT_EQ(u, 4.0);
  // The delete twins take the address of the handle, as the plain entries do.
  ASSERT_EQ(qzdeletemodel_(&m), 0);
  EXPECT_EQ(m, nullptr);
  ASSERT_EQ(qzdeleteenv_(&env), 0);
  EXPECT_EQ(env, nullptr);
}

}  // namespace
