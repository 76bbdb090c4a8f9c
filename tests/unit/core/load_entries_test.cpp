// Every load entry against bad input: null handles and arrays, counts, indices and order.
// A refused call leaves the model as it was and usable.
#include <functional>

#include "test_util.h"

namespace zento::test {
namespace {

using LoadEntries = EnvFixture;

struct EntryCase {
  const char* what;
  std::function<int(QZmodel)> call;
  int code;
};

TEST_F(LoadEntries, EachEntryRefusesBadInputWithItsOwnCode) {
  const int beg1[] = {0, 1}, col0[] = {0}, col5[] = {5}, neg[] = {-1};
  const double one[] = {1.0}, two[] = {1.0, 2.0};
  const int st1[] = {-1, 0}, rowsBad[] = {0, -2, 0};
  const std::vector<EntryCase> cases = {
      {"var type null model", [](QZmodel) { return QZloadVarType(nullptr, nullptr); },
       QZERR_ILLEGAL_NULL_POINTER},
      {"sc null arrays", [&](QZmodel m) { return QZloadSemiContData(m, 1, nullptr, one, one); },
       QZERR_ILLEGAL_NULL_POINTER},
      {"sc negative count", [&](QZmodel m) { return QZloadSemiContData(m, -1, col0, one, one); },
       QZERR_ERROR_IN_INPUT},
      {"sets null types", [&](QZmodel m) { return QZloadSETSData(m, 1, nullptr, nullptr, beg1, col0); },
       QZERR_ILLEGAL_NULL_POINTER},
      {"sets negative count",
       [&](QZmodel m) { return QZloadSETSData(m, -3, "\1", nullptr, beg1, col0); },
       QZERR_ERROR_IN_INPUT},
      {"sets member out of range",
       [&](QZmodel m) { return QZloadSETSData(m, 1, "\1", nullptr, beg1, col5); },
       QZERR_COLUMN_INDEX_OUT_OF_RANGE},
      {"cardinality below zero",
       [&](QZmodel m) { return QZloadSETSData(m, 1, "\4", neg, beg1, col0); },
       QZERR_INPUT_OUT_OF_RANGE},
      {"cone null members", [&](QZmodel m) { return QZloadConeData(m, 1, "Q", nullptr, beg1, nullptr); },
       QZERR_ILLEGAL_NULL_POINTER},
      {"cone unknown type", [&](QZmodel m) { return QZloadConeData(m, 1, "Z", nullptr, beg1, col0); },
       QZERR_BAD_CONSTRAINT_TYPE},
      {"posd null arrays",
       [&](QZmodel m) { return QZloadPOSDData(m, 1, nullptr, beg1, col0, col0, col0); },
       QZERR_ILLEGAL_NULL_POINTER},
      {"alldiff lower above upper",
       [&](QZmodel m) {
         const int dim[] = {1}, lo[] = {3}, up[] = {2};
         return QZloadALLDIFFData(m, 1, dim, lo, up, beg1, col0);
       },
       QZERR_INPUT_OUT_OF_RANGE},
      {"alldiff member out of range",
       [&](QZmodel m) {
         const int dim[] = {1}, lo[] = {0}, up[] = {2};
         return QZloadALLDIFFData(m, 1, dim, lo, up, beg1, col5);
       },
       QZERR_COLUMN_INDEX_OUT_OF_RANGE},
      {"qc null arrays", [&](QZmodel m) { return QZloadQCData(m, 1, nullptr, col0, col0, one); },
       QZERR_ILLEGAL_NULL_POINTER},
      {"qc negative count", [&](QZmodel m) { return QZloadQCData(m, -1, neg, col0, col0, one); },
       QZERR_ERROR_IN_INPUT},
      {"names null model",
       [](QZmodel) {
         return QZloadNameData(nullptr, "t", nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                               nullptr);
       },
       QZERR_ILLEGAL_NULL_POINTER},
      {"partial start out of range",
       [&](QZmodel m) { return QZloadVarStartPointPartial(m, 1, col5, one); },
       QZERR_COLUMN_INDEX_OUT_OF_RANGE},
      {"partial start negative count",
       [&](QZmodel m) { return QZloadMIPVarStartPointPartial(m, -1, col0, one); },
       QZERR_ERROR_IN_INPUT},
      {"priorities below zero",
       [&](QZmodel m) {
         const int p[] = {1, -2};
         return QZloadVarPriorities(m, p);
       },
       QZERR_INPUT_OUT_OF_RANGE},
      {"basis row at upper",
       [&](QZmodel m) { return QZloadBasis(m, st1, rowsBad); }, QZERR_INTERNAL_ERROR},
      {"primal solution null point",
       [&](QZmodel m) {
         const int s = 1;
         return QZloadPrimalSolution(m, &s, nullptr, nullptr, nullptr, nullptr);
       },
       QZERR_ILLEGAL_NULL_POINTER},
      {"dual solution bad status",
       [&](QZmodel m) {
         const int s = 99;
         const double y[] = {0, 0, 0};
         return QZloadDualSolution(m, &s, nullptr, y, two, nullptr);
       },
       QZERR_ERROR_IN_INPUT},
      {"model status null", [](QZmodel m) { return QZloadModelStatus(m, nullptr, nullptr); },
       QZERR_ILLEGAL_NULL_POINTER},
  };
  for (const EntryCase& c : cases) {
    SCOPED_TRACE(c.what);
    QZmodel m = new_model();
    ASSERT_EQ(SmallLP().load(m), 0);
    EXPECT_EQ(c.call(m), c.code);
    // The model keeps its data and still answers queries and solves its parts.
    int nv = 0;
    EXPECT_EQ(QZgetDimensions(m, &nv, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                              nullptr, nullptr, nullptr, nullptr),
              0);
    EXPECT_EQ(nv, 2);
    QZdeleteModel(&m);
  }
}

TEST_F(LoadEntries, PartsNeedTheLinearCoreFirst) {
  QZmodel m = new_model();
  const int beg1[] = {0, 1}, col0[] = {0};
  const double one[] = {1.0};
  char types[] = "C";
  EXPECT_EQ(QZloadVarType(m, types), QZERR_NO_MODEL_LOADED);
  EXPECT_EQ(QZloadSemiContData(m, 1, col0, one, one), QZERR_NO_MODEL_LOADED);
  EXPECT_EQ(QZloadConeData(m, 1, "Q", nullptr, beg1, col0), QZERR_NO_MODEL_LOADED);
  EXPECT_EQ(QZloadQCData(m, 1, col0, col0, col0, one), QZERR_NO_MODEL_LOADED);
  EXPECT_EQ(QZloadBasis(m, col0, col0), QZERR_NO_MODEL_LOADED);
  EXPECT_EQ(QZloadVarStartPoint(m, one), QZERR_NO_MODEL_LOADED);
  QZdeleteModel(&m);
}

}  // namespace
}  // namespace zento::test
