// The post stack reads back what was pushed, record by record from the top, and a reader
// that runs past the bottom or meets a wrong count reports failure instead of inventing data.
#include "presolve/post_stack.h"

#include <gtest/gtest.h>

namespace zento::presolve {
namespace {

TEST(PostStack, RecordsReadBackInReverse) {
  PostStack s;
  // Record 7: an int, a list of ints, a double, a list of doubles.
  s.push_int(41);
  s.push_ints({1, 2, 3});
  s.push_dbl(2.5);
  s.push_dbls({-1.0, 0.5});
  s.push_type(7);
  // Record 9: empty lists.
  s.push_ints({});
  s.push_dbls({});
  s.push_type(9);
  EXPECT_EQ(s.records(), 2);
  EXPECT_EQ(s.count(7), 1);
  EXPECT_EQ(s.count(9), 1);

  PostReader rd(s);
  ASSERT_EQ(rd.next_type(), 9);
  std::vector<int> vi{5};
  std::vector<double> vd{5};
  rd.pop_dbls(vd);
  rd.pop_ints(vi);
  EXPECT_TRUE(vi.empty());
  EXPECT_TRUE(vd.empty());
  ASSERT_EQ(rd.next_type(), 7);
  rd.pop_dbls(vd);
  EXPECT_EQ(vd, (std::vector<double>{-1.0, 0.5}));
  EXPECT_EQ(rd.pop_dbl(), 2.5);
  rd.pop_ints(vi);
  EXPECT_EQ(vi, (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(rd.pop_int(), 41);
  EXPECT_TRUE(rd.done());
  EXPECT_FALSE(rd.failed());
}

TEST(PostStack, ReaderFailsInsteadOfRunningDry) {
  PostStack s;
  s.push_int(1000);  // a count larger than the stack
  s.push_type(3);
  PostReader rd(s);
  ASSERT_EQ(rd.next_type(), 3);
  std::vector<double> vd;
  rd.pop_dbls(vd);
  EXPECT_TRUE(rd.failed());
  EXPECT_TRUE(vd.empty());
  PostReader dry(s);
  dry.next_type();
  dry.pop_int();
  EXPECT_FALSE(dry.failed());
  EXPECT_EQ(dry.pop_int(), 0);
  EXPECT_TRUE(dry.failed());
  s.clear();
  EXPECT_EQ(s.count(3), 0);
  EXPECT_TRUE(s.empty());
}

}  // namespace
}  // namespace zento::presolve
