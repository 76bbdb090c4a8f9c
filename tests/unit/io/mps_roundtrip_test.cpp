// Every model of the LP and MIP collections writes and reads back the same, value for value,
// in both layouts and compressed.
#include <gtest/gtest.h>

#include "io_test_util.h"

namespace zento::test {
namespace {

class RoundTrip : public ::testing::TestWithParam<std::string> {};

TEST_P(RoundTrip, WritesAndReadsBackValueForValue) {
  Env env;
  ScratchDir dir;
  struct Style {
    const char* file;
    int layout;
  };
  const Style styles[] = {{"out_fixed.mps", QZ_MPS_FIXED}, {"out_free.mps", QZ_MPS_FREE},
                          {"out_free.mps.gz", QZ_MPS_FREE}};
  int skipped = 0;
  for (const ManifestRow& r : read_manifest(GetParam())) {
    SCOPED_TRACE(r.name);
    Model m(env.env);
    ASSERT_EQ(QZreadMPSFile(m, r.file.c_str(), QZ_MPS_AUTO), 0);
    const Snapshot before = snapshot(m);
    bool blanks = false, longNames = false;
    // The free layout splits at blanks and takes '$' and '!' for the start of a comment.
    auto note = [&](const std::string& n) {
      blanks |= n.find(' ') != std::string::npos || n[0] == '$' || n[0] == '!';
      longNames |= n.size() > 8;
    };
    for (const auto& n : before.colNames) note(n);
    for (const auto& n : before.rowNames) note(n);
    for (const Style& st : styles) {
      SCOPED_TRACE(st.file);
      // Such a name cannot stand in the free layout, nor a long one in the fixed.
      if ((st.layout == QZ_MPS_FREE && blanks) || (st.layout == QZ_MPS_FIXED && longNames)) {
        ++skipped;
        continue;
      }
      const std::string out = dir.file(st.file);
      ASSERT_EQ(QZwriteMPSFile(m, out.c_str(), st.layout), 0);
      Model back(env.env);
      ASSERT_EQ(QZreadMPSFile(back, out.c_str(), st.layout), 0);
      EXPECT_EQ(first_difference(before, snapshot(back)), "");
    }
  }
  // forplan (blanks), pang ('$' names) and the long-named MIPLIB 2017 models are the skips.
  EXPECT_LE(skipped, 10);
}

INSTANTIATE_TEST_SUITE_P(Data, RoundTrip,
                         ::testing::Values("netlib", "netlib_infeasible", "miplib3", "miplib2017",
                                           "examples"));

}  // namespace
}  // namespace zento::test
