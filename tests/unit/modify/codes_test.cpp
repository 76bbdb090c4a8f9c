// Every modification entry refuses bad input with its code and leaves the model as it was;
// a count of 0 is a no-op even with null arrays.
#include <cmath>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "modify_util.h"

namespace zento::test {
namespace {

// 3 rows (L, G, E), 6 columns, names, a semi-continuous column 5, two sets; either two cones
// or quadratic terms (the two exclude each other).
void build_rich(QZmodel m, bool withQuad) {
  const double c[] = {1, 2, 3, 4, 5, 6}, b[] = {10, 1, 4};
  const int beg[] = {0, 2, 4, 5, 6, 7, 8};
  const int rows[] = {0, 1, 0, 2, 1, 2, 0, 1};
  const double a[] = {1, 1, 2, 1, 1, -1, 3, 1};
  const double lo[] = {0, 0, 0, -5, 0, 0}, up[] = {4, 1, 10, 5, QZ_INFINITY, 8};
  ASSERT_EQ(QZloadLPData(m, 3, 6, QZ_MIN, 0.5, c, b, "LGE", 8, beg, nullptr, a, rows, lo, up), 0);
  const char* rn[] = {"cap", "dem", "bal"};
  const char* cn[] = {"x0", "x1", "x2", "x3", "x4", "x5"};
  ASSERT_EQ(QZloadNameData(m, "rich", nullptr, nullptr, nullptr, nullptr, const_cast<char**>(rn),
                           const_cast<char**>(cn), nullptr),
            0);
  const int scv[] = {5};
  const double scl[] = {2}, scu[] = {8};
  ASSERT_EQ(QZloadSemiContData(m, 1, scv, scl, scu), 0);
  const char st[] = {1, 2};
  const int sb[] = {0, 2, 5}, sc[] = {0, 1, 1, 2, 3};
  ASSERT_EQ(QZloadSETSData(m, 2, st, nullptr, sb, sc), 0);
  if (withQuad) {
    const int qr[] = {-1, -1, 1}, q1[] = {0, 0, 2}, q2[] = {0, 1, 3};
    const double qc[] = {2, 1, 1};
    ASSERT_EQ(QZloadQCData(m, 3, qr, q1, q2, qc), 0);
  } else {
    const int cb[] = {0, 2, 5}, cc[] = {2, 3, 0, 1, 4};
    ASSERT_EQ(QZloadConeData(m, 2, "QR", nullptr, cb, cc), 0);
  }
}

struct Bad {
  const char* what;
  bool withQuad;
  std::function<int(QZmodel)> call;
  int code;
};

// Each call on a fresh rich model gives its code; a refusal (or, with `always`, any call) leaves
// the model as it was.
void expect_codes(EnvFixture& f, const std::vector<Bad>& cases, bool always) {
  for (const Bad& bad : cases) {
    SCOPED_TRACE(bad.what);
    QZmodel m = f.new_model();
    build_rich(m, bad.withQuad);
    const Snapshot before = snapshot(m);
    EXPECT_EQ(bad.call(m), bad.code);
    if (always || bad.code > 0 || std::string(bad.what).find("out of range") != std::string::npos)
      expect_same(snapshot(m), before);
    QZdeleteModel(&m);
  }
}

TEST_F(ModifyFixture, BadInputGivesItsCodeAndChangesNothing) {
  const double nan = std::nan("");
  const int r0[] = {0}, r1[] = {1}, r3[] = {3}, rneg[] = {-1}, c6[] = {6}, c0[] = {0};
  const int c5[] = {5}, c2[] = {2}, c01[] = {0, 1}, dup[] = {1, 1};
  const double one[] = {1.0}, nanv[] = {nan}, infv[] = {HUGE_VAL}, neg[] = {-1.0};
  const int negp[] = {-1};
  const std::vector<Bad> cases = {
      {"Aij row high", false, [&](QZmodel m) { return QZmodifyAij(m, 3, 0, 1.0); }, QZERR_INDEX_OUT_OF_RANGE},
      {"Aij column high", false, [&](QZmodel m) { return QZmodifyAij(m, 0, 6, 1.0); }, QZERR_INDEX_OUT_OF_RANGE},
      {"Aij NaN", false, [&](QZmodel m) { return QZmodifyAij(m, 0, 0, nan); }, QZERR_ERROR_IN_INPUT},
      {"Aj null rows", false, [&](QZmodel m) { return QZmodifyAj(m, 0, 1, nullptr, one); }, QZERR_ILLEGAL_NULL_POINTER},
      {"Aj negative row", false, [&](QZmodel m) { return QZmodifyAj(m, 0, 1, rneg, one); }, QZERR_INDEX_OUT_OF_RANGE},
      {"Aj negative count", false, [&](QZmodel m) { return QZmodifyAj(m, 0, -1, r0, one); }, QZERR_ERROR_IN_INPUT},
      {"deleteAj column", false, [&](QZmodel m) { return QZdeleteAj(m, -1, 1, r0); }, QZERR_INDEX_OUT_OF_RANGE},
      {"rhs row", false, [&](QZmodel m) { return QZmodifyRHS(m, 1, r3, one); }, QZERR_INDEX_OUT_OF_RANGE},
      {"rhs NaN", false, [&](QZmodel m) { return QZmodifyRHS(m, 1, r0, nanv); }, QZERR_ERROR_IN_INPUT},
      {"rhs null values", false, [&](QZmodel m) { return QZmodifyRHS(m, 1, r0, nullptr); }, QZERR_ILLEGAL_NULL_POINTER},
      {"row type letter", false, [&](QZmodel m) { return QZmodifyConstraintType(m, 1, r0, "X"); }, QZERR_PARAM_OUT_OF_RANGE},
      {"row type index", false, [&](QZmodel m) { return QZmodifyConstraintType(m, 1, r3, "E"); }, QZERR_INDEX_OUT_OF_RANGE},
      {"var type letter", false, [&](QZmodel m) { return QZmodifyVariableType(m, 1, c0, "S"); }, QZERR_PARAM_OUT_OF_RANGE},
      {"var type index", false, [&](QZmodel m) { return QZmodifyVariableType(m, 1, c6, "I"); }, QZERR_INDEX_OUT_OF_RANGE},
      {"binary on [0, 10] is taken", false, [&](QZmodel m) { return QZmodifyVariableType(m, 1, c2, "B") == 0 ? -7 : -8; }, -7},
      {"binary on semi-continuous", false, [&](QZmodel m) { return QZmodifyVariableType(m, 1, c5, "B"); }, QZERR_INPUT_OUT_OF_RANGE},
      {"lower bound index", false, [&](QZmodel m) { return QZmodifyLowerBounds(m, 1, c6, one); }, QZERR_INDEX_OUT_OF_RANGE},
      {"lower bound NaN", false, [&](QZmodel m) { return QZmodifyLowerBounds(m, 1, c0, nanv); }, QZERR_ERROR_IN_INPUT},
      {"bound of semi-continuous", false, [&](QZmodel m) { return QZmodifyUpperBounds(m, 1, c5, one); }, QZERR_INPUT_OUT_OF_RANGE},
      {"cost infinite", false, [&](QZmodel m) { return QZmodifyObjective(m, 1, c0, infv); }, QZERR_ERROR_IN_INPUT},
      {"constant NaN", false, [&](QZmodel m) { return QZmodifyObjConstant(m, nan); }, QZERR_ERROR_IN_INPUT},
      {"semicont index", false, [&](QZmodel m) { return QZmodifySemiContVars(m, 1, c6, one); }, QZERR_COLUMN_INDEX_OUT_OF_RANGE},
      {"semicont negative", false, [&](QZmodel m) { return QZmodifySemiContVars(m, 1, c0, neg); }, QZERR_INPUT_OUT_OF_RANGE},
      {"cone index", false, [&](QZmodel m) { return QZmodifyCone(m, 'Q', 2, 1, c5, 0); }, QZERR_INDEX_OUT_OF_RANGE},
      {"cone type", false, [&](QZmodel m) { return QZmodifyCone(m, 'X', 0, 1, c5, 0); }, QZERR_BAD_CONSTRAINT_TYPE},
      {"cone count", false, [&](QZmodel m) { return QZmodifyCone(m, 'E', 0, 2, c01, 0); }, QZERR_BAD_COLUMN_NONZEROS},
      {"cone member of other cone", false, [&](QZmodel m) { return QZmodifyCone(m, 'Q', 0, 1, c0, 0); }, QZERR_COLUMN_INDEX_OUT_OF_RANGE},
      {"set index", false, [&](QZmodel m) { return QZmodifySET(m, 1, 2, 1, c0); }, QZERR_INDEX_OUT_OF_RANGE},
      {"set type", false, [&](QZmodel m) { return QZmodifySET(m, 5, 0, 1, c0); }, QZERR_BAD_CONSTRAINT_TYPE},
      {"set size", false, [&](QZmodel m) { return QZmodifySET(m, 2, 0, 1, c0); }, QZERR_BAD_COLUMN_NONZEROS},
      {"set duplicate", false, [&](QZmodel m) { return QZmodifySET(m, 1, 0, 2, dup); }, QZERR_DUPLICATE_INDEX},
      {"set member range", false, [&](QZmodel m) { return QZmodifySET(m, 1, 0, 1, c6); }, QZERR_COLUMN_INDEX_OUT_OF_RANGE},
      {"priority negative", false, [&](QZmodel m) { return QZmodifyPriorities(m, 1, c0, negp); }, QZERR_INPUT_OUT_OF_RANGE},
      {"priority index", false, [&](QZmodel m) { return QZmodifyPriorities(m, 1, c6, r1); }, QZERR_INDEX_OUT_OF_RANGE},
      {"empty spaces null", false, [&](QZmodel m) { return QZaddEmptySpacesAcolumns(m, nullptr); }, QZERR_ILLEGAL_NULL_POINTER},
      {"add row type", false, [&](QZmodel m) { return QZaddConstraints(m, 1, "X", nullptr, nullptr, nullptr, nullptr, nullptr); }, QZERR_BAD_CONSTRAINT_TYPE},
      {"add row column range", false, [&](QZmodel m) { const int rb[] = {0, 1}; return QZaddConstraints(m, 1, "L", nullptr, rb, one, c6, one); }, QZERR_INDEX_OUT_OF_RANGE},
      {"add row repeated column", false, [&](QZmodel m) { const int rb[] = {0, 2}; const double v[] = {1, 2}; return QZaddConstraints(m, 1, "L", nullptr, rb, v, dup, one); }, QZERR_DUPLICATE_INDEX},
      {"add rows repeated column in second row", false, [&](QZmodel m) { const int rb[] = {0, 1, 3}; const int cc[] = {1, 2, 2}; const double v[] = {1, 2, 3}; return QZaddConstraints(m, 2, "LG", nullptr, rb, v, cc, nullptr); }, QZERR_DUPLICATE_INDEX},
      {"add row decreasing starts", false, [&](QZmodel m) { const int rb[] = {1, 0}; return QZaddConstraints(m, 1, "L", nullptr, rb, one, c0, one); }, QZERR_ERROR_IN_INPUT},
      {"add row null coefficients", false, [&](QZmodel m) { const int rb[] = {0, 1}; return QZaddConstraints(m, 1, "L", nullptr, rb, nullptr, c0, one); }, QZERR_ILLEGAL_NULL_POINTER},
      {"add row null name", false, [&](QZmodel m) { char* nm[] = {nullptr}; return QZaddConstraints(m, 1, "L", nm, nullptr, nullptr, nullptr, nullptr); }, QZERR_ILLEGAL_NULL_POINTER},
      {"add column type", false, [&](QZmodel m) { return QZaddVariables(m, 1, "S", nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr); }, QZERR_PARAM_OUT_OF_RANGE},
      {"add column negative span", false, [&](QZmodel m) { const int cb[] = {1, 0}; return QZaddVariables(m, 1, nullptr, nullptr, cb, nullptr, one, r0, nullptr, nullptr, nullptr); }, QZERR_BAD_COLUMN_BEGIN_VECTOR},
      {"add column length beyond span", false, [&](QZmodel m) { const int cb[] = {0, 1}, ln[] = {2}; return QZaddVariables(m, 1, nullptr, nullptr, cb, ln, one, r0, nullptr, nullptr, nullptr); }, QZERR_BAD_COLUMN_NONZEROS},
      {"add column row range", false, [&](QZmodel m) { const int cb[] = {0, 1}; return QZaddVariables(m, 1, nullptr, nullptr, cb, nullptr, one, r3, nullptr, nullptr, nullptr); }, QZERR_INDEX_OUT_OF_RANGE},
      {"add binary column on [2, 3]", false, [&](QZmodel m) { const double l[] = {2}, u[] = {3}; return QZaddVariables(m, 1, "B", nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, l, u); }, QZERR_INPUT_OUT_OF_RANGE},
      {"add column infinite cost", false, [&](QZmodel m) { return QZaddVariables(m, 1, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, infv, nullptr, nullptr); }, QZERR_ERROR_IN_INPUT},
      {"add cone type", false, [&](QZmodel m) { const int b[] = {0, 1}; return QZaddCones(m, 1, "X", nullptr, nullptr, b, c5); }, QZERR_BAD_CONSTRAINT_TYPE},
      {"add power cone without parameter", false, [&](QZmodel m) { const int b[] = {0, 3}, cc[] = {5, 4, 1}; return QZaddCones(m, 1, "P", nullptr, nullptr, b, cc); }, QZERR_BAD_CONSTRAINT_TYPE},
      {"add empty cone", false, [&](QZmodel m) { const int b[] = {0, 0}; return QZaddCones(m, 1, "Q", nullptr, nullptr, b, c5); }, QZERR_BAD_COLUMN_NONZEROS},
      {"add cone on a member", false, [&](QZmodel m) { const int b[] = {0, 1}; return QZaddCones(m, 1, "Q", nullptr, nullptr, b, c2); }, QZERR_COLUMN_INDEX_OUT_OF_RANGE},
      {"add cone to quadratic model", true, [&](QZmodel m) { const int b[] = {0, 1}; return QZaddCones(m, 1, "Q", nullptr, nullptr, b, c5); }, QZERR_ALREADY_LOADED},
      {"add set type", false, [&](QZmodel m) { const char t[] = {0}; const int b[] = {0, 1}; return QZaddSETS(m, 1, t, nullptr, b, c0); }, QZERR_BAD_CONSTRAINT_TYPE},
      {"add set size", false, [&](QZmodel m) { const char t[] = {2}; const int b[] = {0, 1}; return QZaddSETS(m, 1, t, nullptr, b, c0); }, QZERR_BAD_COLUMN_NONZEROS},
      {"add set member", false, [&](QZmodel m) { const char t[] = {1}; const int b[] = {0, 1}; return QZaddSETS(m, 1, t, nullptr, b, c6); }, QZERR_COLUMN_INDEX_OUT_OF_RANGE},
      {"add cardinality set without limit", false, [&](QZmodel m) { const char t[] = {4}; const int b[] = {0, 1}; return QZaddSETS(m, 1, t, nullptr, b, c0); }, QZERR_ILLEGAL_NULL_POINTER},
      {"add cardinality set negative", false, [&](QZmodel m) { const char t[] = {4}; const int b[] = {0, 1}; return QZaddSETS(m, 1, t, negp, b, c0); }, QZERR_INPUT_OUT_OF_RANGE},
      {"add quadratic row low", true, [&](QZmodel m) { const int r[] = {-2}; return QZaddQCterms(m, 1, r, c0, c0, one); }, QZERR_ROW_INDEX_OUT_OF_RANGE},
      {"add quadratic row high", true, [&](QZmodel m) { return QZaddQCterms(m, 1, r3, c0, c0, one); }, QZERR_ROW_INDEX_OUT_OF_RANGE},
      {"add quadratic column", true, [&](QZmodel m) { return QZaddQCterms(m, 1, r0, c0, c6, one); }, QZERR_COLUMN_INDEX_OUT_OF_RANGE},
      {"add quadratic to conic model", false, [&](QZmodel m) { return QZaddQCterms(m, 1, r0, c0, c0, one); }, QZERR_ALREADY_LOADED},
      {"delete row range", false, [&](QZmodel m) { return QZdeleteConstraints(m, 1, r3); }, QZERR_INDEX_OUT_OF_RANGE},
      {"delete row twice", false, [&](QZmodel m) { return QZdeleteConstraints(m, 2, dup); }, QZERR_DUPLICATE_INDEX},
      {"delete columns all out of range", false, [&](QZmodel m) { const int cc[] = {6, -1, 99}; return QZdeleteVariables(m, 3, cc); }, 0},
      {"delete cone range", false, [&](QZmodel m) { return QZdeleteCones(m, 1, c2); }, QZERR_INDEX_OUT_OF_RANGE},
      {"delete cone twice", false, [&](QZmodel m) { return QZdeleteCones(m, 2, dup); }, QZERR_DUPLICATE_INDEX},
      {"delete set range", false, [&](QZmodel m) { return QZdeleteSETS(m, 1, rneg); }, QZERR_INDEX_OUT_OF_RANGE},
      {"delete semicont range", false, [&](QZmodel m) { return QZdeleteSemiContVars(m, 1, c6); }, QZERR_COLUMN_INDEX_OUT_OF_RANGE},
      {"delete semicont not a member", false, [&](QZmodel m) { return QZdeleteSemiContVars(m, 1, c0); }, 0},
      {"delete quadratic row", true, [&](QZmodel m) { const int r[] = {-2}; return QZdeleteQCterms(m, 1, r); }, QZERR_ROW_INDEX_OUT_OF_RANGE},
      {"nonlinear column entries", false, [&](QZmodel m) { return QZaddNLPAj(m, 0, 1, r0, one); }, QZERR_NOT_SUPPORTED},
      {"nonlinear column index", false, [&](QZmodel m) { return QZaddNLPAj(m, 6, 1, r0, one); }, QZERR_INDEX_OUT_OF_RANGE},
      {"nonlinear objective", false, [&](QZmodel m) { return QZaddNLPobj(m, 1, c0, one); }, QZERR_NOT_SUPPORTED},
      {"nonlinear objective delete", false, [&](QZmodel m) { return QZdeleteNLPobj(m, 1, c0); }, QZERR_NOT_SUPPORTED},
      {"nonlinear gaps", false, [&](QZmodel m) { const int z[6] = {}; return QZaddEmptySpacesNLPAcolumns(m, z); }, QZERR_NOT_SUPPORTED},
      {"remove artificial columns without any", false, [&](QZmodel m) { return QZdelArtColumns(m, 0); }, QZERR_INFO_NOT_AVAILABLE},
      {"artificial columns with a model file", false, [&](QZmodel m) { return QZaddArtColumns(m, 2, 0); }, QZERR_NOT_SUPPORTED},
  };
  expect_codes(*this, cases, false);
}

TEST_F(ModifyFixture, NullModelUnloadedModelAndZeroCounts) {
  const int idx[] = {0};
  const double v[] = {1};
  EXPECT_EQ(QZmodifyRHS(nullptr, 1, idx, v), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZaddConstraints(nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr),
            QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZmodifyAij(nullptr, 0, 0, 1.0), QZERR_ILLEGAL_NULL_POINTER);
  QZmodel m = new_model();
  // Additions may start an empty model, but a refused one leaves it unloaded.
  const int rb[] = {0, 1};
  EXPECT_EQ(QZaddConstraints(m, 1, "L", nullptr, rb, v, idx, v), QZERR_INDEX_OUT_OF_RANGE);
  EXPECT_EQ(QZgetDimensions(m, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                            nullptr, nullptr, nullptr, nullptr),
            QZERR_INFO_NOT_AVAILABLE);
  build_rich(m, false);
  const Snapshot before = snapshot(m);
  const std::vector<std::pair<const char*, std::function<int()>>> zero = {
      {"Aj", [&] { return QZmodifyAj(m, 0, 0, nullptr, nullptr); }},
      {"deleteAj", [&] { return QZdeleteAj(m, 0, 0, nullptr); }},
      {"rhs", [&] { return QZmodifyRHS(m, 0, nullptr, nullptr); }},
      {"row types", [&] { return QZmodifyConstraintType(m, 0, nullptr, nullptr); }},
      {"var types", [&] { return QZmodifyVariableType(m, 0, nullptr, nullptr); }},
      {"lower", [&] { return QZmodifyLowerBounds(m, 0, nullptr, nullptr); }},
      {"upper", [&] { return QZmodifyUpperBounds(m, 0, nullptr, nullptr); }},
      {"costs", [&] { return QZmodifyObjective(m, 0, nullptr, nullptr); }},
      {"semicont", [&] { return QZmodifySemiContVars(m, 0, nullptr, nullptr); }},
      {"priorities", [&] { return QZmodifyPriorities(m, 0, nullptr, nullptr); }},
      {"add rows", [&] { return QZaddConstraints(m, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr); }},
      {"add columns", [&] { return QZaddVariables(m, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr); }},
      {"add cones", [&] { return QZaddCones(m, 0, nullptr, nullptr, nullptr, nullptr, nullptr); }},
      {"add sets", [&] { return QZaddSETS(m, 0, nullptr, nullptr, nullptr, nullptr); }},
      {"add quadratic", [&] { return QZaddQCterms(m, 0, nullptr, nullptr, nullptr, nullptr); }},
      {"nonlinear column", [&] { return QZaddNLPAj(m, 0, 0, nullptr, nullptr); }},
      {"nonlinear objective", [&] { return QZaddNLPobj(m, 0, nullptr, nullptr); }},
      {"delete rows", [&] { return QZdeleteConstraints(m, 0, nullptr); }},
      {"delete columns", [&] { return QZdeleteVariables(m, 0, nullptr); }},
      {"delete cones", [&] { return QZdeleteCones(m, 0, nullptr); }},
      {"delete sets", [&] { return QZdeleteSETS(m, 0, nullptr); }},
      {"delete semicont", [&] { return QZdeleteSemiContVars(m, 0, nullptr); }},
      {"delete quadratic", [&] { return QZdeleteQCterms(m, 0, nullptr); }},
      {"delete nonlinear objective", [&] { return QZdeleteNLPobj(m, 0, nullptr); }},
  };
  for (const auto& [what, call] : zero) {
    SCOPED_TRACE(what);
    EXPECT_EQ(call(), 0);
  }
  expect_same(snapshot(m), before);
  QZdeleteModel(&m);
}

// A list whose last entry is bad is refused as a whole: the good entries before it must not
// have been applied.
TEST_F(ModifyFixture, RefusalAtTheEndOfAListChangesNothing) {
  const double nan = std::nan("");
  const int r03[] = {0, 3}, r01[] = {0, 1}, c06[] = {0, 6}, c01[] = {0, 1}, c05[] = {0, 5};
  const int r010[] = {0, 1, 0}, c56[] = {5, 6}, q0x[] = {-1, 3};
  const double seven[] = {7, 7}, sevenNan[] = {7, nan}, sevenInf[] = {7, HUGE_VAL};
  const int prioBad[] = {3, -1};
  const double scBad[] = {1, -1};
  const std::vector<Bad> cases = {
      {"coefficients, last row out of range", false, [&](QZmodel m) { const int r[] = {1, 3}; return QZmodifyAj(m, 0, 2, r, seven); }, QZERR_INDEX_OUT_OF_RANGE},
      {"coefficients, last value NaN", false, [&](QZmodel m) { const int r[] = {1, 2}; return QZmodifyAj(m, 0, 2, r, sevenNan); }, QZERR_ERROR_IN_INPUT},
      {"entry deletion, last row out of range", false, [&](QZmodel m) { return QZdeleteAj(m, 0, 2, r03); }, QZERR_INDEX_OUT_OF_RANGE},
      {"rhs, last row out of range", false, [&](QZmodel m) { return QZmodifyRHS(m, 2, r03, seven); }, QZERR_INDEX_OUT_OF_RANGE},
      {"rhs, last value NaN", false, [&](QZmodel m) { return QZmodifyRHS(m, 2, r01, sevenNan); }, QZERR_ERROR_IN_INPUT},
      {"row types, last letter bad", false, [&](QZmodel m) { return QZmodifyConstraintType(m, 2, r01, "Nx"); }, QZERR_PARAM_OUT_OF_RANGE},
      {"row types, last row out of range", false, [&](QZmodel m) { return QZmodifyConstraintType(m, 2, r03, "NN"); }, QZERR_INDEX_OUT_OF_RANGE},
      {"column types, last letter bad", false, [&](QZmodel m) { return QZmodifyVariableType(m, 2, c01, "IS"); }, QZERR_PARAM_OUT_OF_RANGE},
      {"column types, last column out of range", false, [&](QZmodel m) { return QZmodifyVariableType(m, 2, c06, "II"); }, QZERR_INDEX_OUT_OF_RANGE},
      {"binary: first would clip its bounds, last is semi-continuous", false, [&](QZmodel m) { return QZmodifyVariableType(m, 2, c05, "BB"); }, QZERR_INPUT_OUT_OF_RANGE},
      {"lower bounds, last column out of range", false, [&](QZmodel m) { return QZmodifyLowerBounds(m, 2, c06, seven); }, QZERR_INDEX_OUT_OF_RANGE},
      {"lower bounds, last value NaN", false, [&](QZmodel m) { return QZmodifyLowerBounds(m, 2, c01, sevenNan); }, QZERR_ERROR_IN_INPUT},
      {"upper bounds, last column semi-continuous", false, [&](QZmodel m) { return QZmodifyUpperBounds(m, 2, c05, seven); }, QZERR_INPUT_OUT_OF_RANGE},
      {"costs, last column out of range", false, [&](QZmodel m) { return QZmodifyObjective(m, 2, c06, seven); }, QZERR_INDEX_OUT_OF_RANGE},
      {"costs, last value infinite", false, [&](QZmodel m) { return QZmodifyObjective(m, 2, c01, sevenInf); }, QZERR_ERROR_IN_INPUT},
      {"priorities, last negative", false, [&](QZmodel m) { return QZmodifyPriorities(m, 2, c01, prioBad); }, QZERR_INPUT_OUT_OF_RANGE},
      {"semi-continuous, last column out of range", false, [&](QZmodel m) { return QZmodifySemiContVars(m, 2, c56, seven); }, QZERR_COLUMN_INDEX_OUT_OF_RANGE},
      {"semi-continuous, last lower negative", false, [&](QZmodel m) { return QZmodifySemiContVars(m, 2, c05, scBad); }, QZERR_INPUT_OUT_OF_RANGE},
      {"rows, second type bad", false, [&](QZmodel m) { return QZaddConstraints(m, 2, "LX", nullptr, nullptr, nullptr, nullptr, seven); }, QZERR_BAD_CONSTRAINT_TYPE},
      {"rows, second row's column out of range", false, [&](QZmodel m) { const int rb[] = {0, 1, 2}, cc[] = {0, 6}; return QZaddConstraints(m, 2, "LG", nullptr, rb, seven, cc, seven); }, QZERR_INDEX_OUT_OF_RANGE},
      {"columns, second type bad", false, [&](QZmodel m) { return QZaddVariables(m, 2, "CS", nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr); }, QZERR_PARAM_OUT_OF_RANGE},
      {"columns, second column's row out of range", false, [&](QZmodel m) { const int cb[] = {0, 1, 2}; return QZaddVariables(m, 2, nullptr, nullptr, cb, nullptr, seven, r03, nullptr, nullptr, nullptr); }, QZERR_INDEX_OUT_OF_RANGE},
      {"cones, second one's member taken", false, [&](QZmodel m) { const int b[] = {0, 1, 2}, cc[] = {5, 2}; return QZaddCones(m, 2, "QQ", nullptr, nullptr, b, cc); }, QZERR_COLUMN_INDEX_OUT_OF_RANGE},
      {"cones, second one's member twice", false, [&](QZmodel m) { const int b[] = {0, 1, 3}, cc[] = {5, 4, 4}; return QZaddCones(m, 2, "QR", nullptr, nullptr, b, cc); }, QZERR_COLUMN_INDEX_OUT_OF_RANGE},
      {"sets, second one's member out of range", false, [&](QZmodel m) { const char t[] = {1, 1}; const int b[] = {0, 1, 2}, cc[] = {0, 6}; return QZaddSETS(m, 2, t, nullptr, b, cc); }, QZERR_COLUMN_INDEX_OUT_OF_RANGE},
      {"quadratic terms, last column out of range", true, [&](QZmodel m) { const int r[] = {0, 0}, a[] = {0, 0}, b[] = {1, 6}; return QZaddQCterms(m, 2, r, a, b, seven); }, QZERR_COLUMN_INDEX_OUT_OF_RANGE},
      {"row deletion, last out of range", false, [&](QZmodel m) { return QZdeleteConstraints(m, 2, r03); }, QZERR_INDEX_OUT_OF_RANGE},
      {"row deletion, a row twice", false, [&](QZmodel m) { return QZdeleteConstraints(m, 3, r010); }, QZERR_DUPLICATE_INDEX},
      {"cone deletion, last out of range", false, [&](QZmodel m) { const int k[] = {0, 2}; return QZdeleteCones(m, 2, k); }, QZERR_INDEX_OUT_OF_RANGE},
      {"set deletion, a set twice", false, [&](QZmodel m) { return QZdeleteSETS(m, 3, r010); }, QZERR_DUPLICATE_INDEX},
      {"set deletion, last out of range", false, [&](QZmodel m) { const int k[] = {1, 2}; return QZdeleteSETS(m, 2, k); }, QZERR_INDEX_OUT_OF_RANGE},
      {"semi-continuous deletion, last out of range", false, [&](QZmodel m) { return QZdeleteSemiContVars(m, 2, c56); }, QZERR_COLUMN_INDEX_OUT_OF_RANGE},
      {"quadratic deletion, last row out of range", true, [&](QZmodel m) { return QZdeleteQCterms(m, 2, q0x); }, QZERR_ROW_INDEX_OUT_OF_RANGE},
  };
  expect_codes(*this, cases, true);
}

// A model with no data refuses every change but the additions with QZERR_NO_MODEL_LOADED and
// stays unloaded.
TEST_F(ModifyFixture, UnloadedModelRefusesEveryChange) {
  const int i0[] = {0};
  const double v[] = {1};
  const char t[] = {1};
  const int b01[] = {0, 1};
  const std::vector<std::pair<const char*, std::function<int(QZmodel)>>> calls = {
      {"Aij", [&](QZmodel m) { return QZmodifyAij(m, 0, 0, 1.0); }},
      {"Aj", [&](QZmodel m) { return QZmodifyAj(m, 0, 1, i0, v); }},
      {"deleteAj", [&](QZmodel m) { return QZdeleteAj(m, 0, 1, i0); }},
      {"rhs", [&](QZmodel m) { return QZmodifyRHS(m, 1, i0, v); }},
      {"row types", [&](QZmodel m) { return QZmodifyConstraintType(m, 1, i0, "L"); }},
      {"column types", [&](QZmodel m) { return QZmodifyVariableType(m, 1, i0, "I"); }},
      {"lower", [&](QZmodel m) { return QZmodifyLowerBounds(m, 1, i0, v); }},
      {"upper", [&](QZmodel m) { return QZmodifyUpperBounds(m, 1, i0, v); }},
      {"costs", [&](QZmodel m) { return QZmodifyObjective(m, 1, i0, v); }},
      {"constant", [&](QZmodel m) { return QZmodifyObjConstant(m, 1.0); }},
      {"semi-continuous", [&](QZmodel m) { return QZmodifySemiContVars(m, 1, i0, v); }},
      {"cone", [&](QZmodel m) { return QZmodifyCone(m, 'Q', 0, 1, i0, 0); }},
      {"set", [&](QZmodel m) { return QZmodifySET(m, 1, 0, 1, i0); }},
      {"priorities", [&](QZmodel m) { return QZmodifyPriorities(m, 1, i0, i0); }},
      {"empty spaces", [&](QZmodel m) { return QZaddEmptySpacesAcolumns(m, i0); }},
      {"quadratic terms", [&](QZmodel m) { return QZaddQCterms(m, 1, i0, i0, i0, v); }},
      {"artificial columns", [&](QZmodel m) { return QZaddArtColumns(m, 0, 0); }},
      {"artificial columns removed", [&](QZmodel m) { return QZdelArtColumns(m, 0); }},
      {"row deletion", [&](QZmodel m) { return QZdeleteConstraints(m, 1, i0); }},
      {"column deletion", [&](QZmodel m) { return QZdeleteVariables(m, 1, i0); }},
      {"cone deletion", [&](QZmodel m) { return QZdeleteCones(m, 1, i0); }},
      {"set deletion", [&](QZmodel m) { return QZdeleteSETS(m, 1, i0); }},
      {"semi-continuous deletion", [&](QZmodel m) { return QZdeleteSemiContVars(m, 1, i0); }},
      {"quadratic deletion", [&](QZmodel m) { return QZdeleteQCterms(m, 1, i0); }},
      {"sets added on no columns", [&](QZmodel m) { return QZaddSETS(m, 1, t, nullptr, b01, i0); }},
      {"cones added on no columns", [&](QZmodel m) { return QZaddCones(m, 1, "Q", nullptr, nullptr, b01, i0); }},
  };
  for (const auto& [what, call] : calls) {
    SCOPED_TRACE(what);
    QZmodel m = new_model();
    const int rc = call(m);
    // Additions of parts that need columns may say so by their own range code.
    if (std::string(what).find("added") != std::string::npos)
      EXPECT_TRUE(rc == QZERR_NO_MODEL_LOADED || rc == QZERR_COLUMN_INDEX_OUT_OF_RANGE) << rc;
    else
      EXPECT_EQ(rc, QZERR_NO_MODEL_LOADED);
    int state = 0;
    EXPECT_EQ(QZgetInfo(m, QZ_IINFO_MODEL_STATUS, &state), 0);
    EXPECT_EQ(state, QZ_STATUS_UNLOADED);
    QZdeleteModel(&m);
  }
}

}  // namespace
}  // namespace zento::test
