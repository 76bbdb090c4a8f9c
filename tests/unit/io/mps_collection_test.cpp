// Every model of the LP and MIP collections reads with the published sizes, and writes and
// reads back the same, in both layouts and compressed.
#include <gtest/gtest.h>

#include <cmath>

#include "core/model.h"
#include "io_test_util.h"

namespace zento::test {
namespace {

class Collection : public ::testing::TestWithParam<std::string> {};

int count_integers(QZmodel m) {
  int nc = 0, nb = 0, ni = 0;
  QZgetVarTypeCount(m, &nc, &nb, &ni);
  return nb + ni;
}

TEST_P(Collection, ReadsWithManifestSizes) {
  Env env;
  const auto rows = read_manifest(GetParam());
  ASSERT_FALSE(rows.empty());
  for (const ManifestRow& r : rows) {
    SCOPED_TRACE(r.name);
    Model m(env.env);
    ASSERT_EQ(QZreadMPSFile(m, r.file.c_str(), QZ_MPS_AUTO), 0);
    int nVars = 0, nCons = 0, nnz = 0;
    QZgetDimensions(m, &nVars, &nCons, nullptr, &nnz, nullptr, nullptr, nullptr, nullptr,
                    nullptr, nullptr, nullptr);
    const FileInfo& fi = m.m->fileInfo;
    EXPECT_EQ(nCons, r.rows);
    EXPECT_EQ(fi.nFileVars, r.cols);
    EXPECT_EQ(nVars, fi.nFileVars + fi.nRangeSlacks);
    EXPECT_EQ(nnz - fi.nRangeSlacks - fi.nIndicatorNnz, r.nonzeros);
    EXPECT_EQ(count_integers(m), r.integers);
  }
}

INSTANTIATE_TEST_SUITE_P(Data, Collection,
                         ::testing::Values("netlib", "netlib_infeasible", "miplib3", "miplib2017",
                                           "examples"));

TEST(CollectionQuirks, ObjectiveRowRightHandSideIsAConstant) {
  Env env;
  Model m(env.env);
  ASSERT_EQ(QZreadMPSFile(m, (data_dir() + "/netlib/e226.mps.gz").c_str(), QZ_MPS_AUTO), 0);
  int sense = 0;
  double c0 = 0;
  QZgetLPData(m, &sense, &c0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
              nullptr, nullptr);
  EXPECT_EQ(c0, 7.113);
}

TEST(CollectionQuirks, GzipAndPlainReadTheSame) {
  Env env;
  Model plain(env.env), gz(env.env);
  ASSERT_EQ(QZreadMPSFile(plain, (data_dir() + "/examples/tiny_lp.mps").c_str(), QZ_MPS_AUTO), 0);
  ASSERT_EQ(QZreadMPSFile(gz, (data_dir() + "/examples/tiny_lp.mps.gz").c_str(), QZ_MPS_AUTO), 0);
  EXPECT_EQ(first_difference(snapshot(plain), snapshot(gz)), "");
}

TEST(CollectionQuirks, NamesWithBlanksNeedTheFixedLayout) {
  Env env;
  const std::string f = data_dir() + "/netlib/forplan.mps.gz";
  Model fixed(env.env), free(env.env), automatic(env.env);
  EXPECT_EQ(QZreadMPSFile(fixed, f.c_str(), QZ_MPS_FIXED), 0);
  EXPECT_EQ(QZreadMPSFile(free, f.c_str(), QZ_MPS_FREE), QZERR_BAD_MODEL_FILE);
  EXPECT_EQ(QZreadMPSFile(automatic, f.c_str(), QZ_MPS_AUTO), 0);
  EXPECT_EQ(first_difference(snapshot(fixed), snapshot(automatic)), "");
}

}  // namespace
}  // namespace zento::test
