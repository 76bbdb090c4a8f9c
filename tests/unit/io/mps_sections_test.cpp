// The MPS sections and markers, each on small models whose meaning is known.
#include <gtest/gtest.h>

#include <functional>

#include "core/model.h"
#include "io_test_util.h"

namespace zento::test {
namespace {

class MpsSections : public ::testing::Test {
 protected:
  Env env;
  ScratchDir dir;
  int read(Model& m, const std::string& text, int layout = QZ_MPS_FREE, int objIndex = 0,
           int keepFree = 0) {
    const std::string f = dir.write("model.mps", text);
    return QZreadMPSFileFR(m, f.c_str(), layout, objIndex, keepFree);
  }
};

const char* kHead =
    "NAME TEST\n"
    "ROWS\n"
    " N obj\n"
    " L lim\n"
    " G low\n"
    " E eq\n"
    "COLUMNS\n"
    " x obj 1 lim 1\n"
    " x low 1 eq 1\n"
    " y obj 2 lim 1\n"
    " y eq -1\n";

TEST_F(MpsSections, RangesBecomeSlackColumns) {
  struct Case {
    const char* ranges;
    const char* row;
    double coef, upper;
  };
  // Range r on a row with right-hand side b: L gives [b-|r|, b], G [b, b+|r|], E by sign.
  const Case cases[] = {
      {" RNG lim 3\n", "lim", 1.0, 3.0},   {" RNG lim -3\n", "lim", 1.0, 3.0},
      {" RNG low 2\n", "low", -1.0, 2.0},  {" RNG eq 5\n", "eq", -1.0, 5.0},
      {" RNG eq -5\n", "eq", 1.0, 5.0},    {" RNG lim 0\n", "lim", 1.0, 0.0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.ranges);
    Model m(env.env);
    ASSERT_EQ(read(m, std::string(kHead) + "RHS\n RHS lim 4 eq 1\nRANGES\n" + c.ranges + "ENDATA\n"), 0);
    Snapshot s = snapshot(m);
    ASSERT_EQ(s.nVars, 3);
    EXPECT_EQ(m.m->fileInfo.nRangeSlacks, 1);
    EXPECT_EQ(s.colNames[2], "slk00000");
    int row = -1;
    QZgetConstraintIndex(m, c.row, &row);
    ASSERT_EQ(s.cols[2].size(), 1u);
    EXPECT_EQ(s.cols[2][0].first, row);
    EXPECT_EQ(s.cols[2][0].second, c.coef);
    EXPECT_EQ(s.l[2], 0.0);
    EXPECT_EQ(s.u[2], c.upper);
    EXPECT_EQ(s.rowTypes[row], 'E');
  }
  Model m(env.env);
  ASSERT_EQ(read(m, std::string(kHead) + "RHS\nRANGES\n RNG eq 0\nENDATA\n"), 0);
  EXPECT_EQ(snapshot(m).nVars, 2);  // a zero range leaves an equality alone
}

TEST_F(MpsSections, BoundTypes) {
  struct Case {
    const char* bounds;
    double l, u;
    char type;
  };
  const double inf = QZ_INFINITY;
  const Case cases[] = {
      {" UP B x 4\n", 0, 4, 'C'},
      {" LO B x -2\n", -2, inf, 'C'},
      {" FX B x 3.5\n", 3.5, 3.5, 'C'},
      {" FR B x\n", -inf, inf, 'C'},
      {" MI B x\n", -inf, inf, 'C'},
      {" MI B x\n UP B x 5\n", -inf, 5, 'C'},
      {" UP B x 5\n PL B x\n", 0, inf, 'C'},
      {" BV B x\n", 0, 1, 'B'},
      {" LI B x 1.5\n", 2, inf, 'I'},
      {" UI B x 7.9\n", 0, 7, 'I'},
      {" UI B x 7\n", 0, 7, 'I'},
      {" UP B x 1e29\n", 0, inf, 'C'},
      {" UP x 4\n", 0, 4, 'C'},          // free layout without a set name
      {" XX B x 4\n", 0, inf, 'C'},      // unknown tags are passed over
      {" UP B x 4\n UP OTHER x 9\n", 0, 4, 'C'},  // lines of another bound set are ignored
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.bounds);
    Model m(env.env);
    ASSERT_EQ(read(m, std::string(kHead) + "RHS\nBOUNDS\n" + c.bounds + "ENDATA\n"), 0);
    Snapshot s = snapshot(m);
    EXPECT_EQ(s.l[0], c.l);
    EXPECT_EQ(s.u[0], c.u);
    EXPECT_EQ(s.varTypes[0], c.type);
  }
}

TEST_F(MpsSections, BoundOnUnknownColumnCreatesIt) {
  Model m(env.env);
  ASSERT_EQ(read(m, std::string(kHead) + "RHS\nBOUNDS\n UP B z 3\nENDATA\n"), 0);
  Snapshot s = snapshot(m);
  ASSERT_EQ(s.nVars, 3);
  EXPECT_EQ(s.colNames[2], "z");
  EXPECT_TRUE(s.cols[2].empty());
  EXPECT_EQ(s.u[2], 3.0);
}

TEST_F(MpsSections, SemiContinuousBounds) {
  struct Case {
    const char* bounds;
    int nSC;
    double scLower, u, l;
  };
  const Case cases[] = {
      {" SC B x 5\n", 1, 0.0, 5, 0},
      {" LO B x 3\n SC B x 5\n", 1, 1.0, 5, 0},  // the lower bound before SC caps at 1
      {" SC B x 5\n LO B x 3\n", 1, 3.0, 5, 0},  // after SC it is the semi-continuous lower
      {" SC B x 0\n", 0, 0, 0, 0},                // SC 0 fixes at zero
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.bounds);
    Model m(env.env);
    ASSERT_EQ(read(m, std::string(kHead) + "RHS\nBOUNDS\n" + c.bounds + "ENDATA\n"), 0);
    Snapshot s = snapshot(m);
    ASSERT_EQ(s.nSC, c.nSC);
    if (c.nSC) {
      EXPECT_EQ(s.scL[0], c.scLower);
    }
    EXPECT_EQ(s.u[0], c.u);
    EXPECT_EQ(s.l[0], c.l);
  }
  for (const char* bad : {" SC B x 5\n UP B x 3\n", " SC B x 5\n LO B x -1\n", " SC B x -1\n"}) {
    Model m(env.env);
    EXPECT_EQ(read(m, std::string(kHead) + "RHS\nBOUNDS\n" + bad + "ENDATA\n"),
              QZERR_BAD_MODEL_FILE);
  }
}

TEST_F(MpsSections, IntegerMarkersByFormat) {
  const std::string text =
      "NAME\nROWS\n N obj\n L r\nCOLUMNS\n"
      " M1 'MARKER' 'INTORG'\n x obj 1 r 1\n y r 1\n z r 1\n M2 'MARKER' 'INTEND'\n w r 1\n"
      "RHS\nBOUNDS\n UP B y 5\n LO B z 0\n UP B z 1\nENDATA\n";
  struct Case {
    int layout;
    char x, y, z;
    double ux;
  };
  // Format 2 takes a marked column without bounds as binary; a bound tag makes it integer.
  const Case cases[] = {{QZ_MPS_FREE, 'I', 'I', 'I', QZ_INFINITY},
                        {QZ_MPS_FREE_IBIN, 'B', 'I', 'I', 1.0}};
  for (const Case& c : cases) {
    Model m(env.env);
    ASSERT_EQ(read(m, text, c.layout), 0);
    Snapshot s = snapshot(m);
    EXPECT_EQ(s.varTypes[0], c.x);
    EXPECT_EQ(s.varTypes[1], c.y);
    EXPECT_EQ(s.varTypes[2], c.z);
    EXPECT_EQ(s.varTypes[3], 'C');
    EXPECT_EQ(s.u[0], c.ux);
  }
}

TEST_F(MpsSections, SetMarkers) {
  const std::string text =
      "NAME\nROWS\n N obj\n L r\nCOLUMNS\n"
      " S1 SOS1 'MARKER' 'SOSORG'\n a r 1\n b r 1\n SOS1 'MARKER' 'SOSEND'\n"
      " S2 SOS2 'MARKER' 'SOSORG'\n c r 1\n d r 1\n e r 1\n SOS2 'MARKER' 'SOSEND'\n"
      " SOS3 'MARKER' 'SOSORG'\n f r 1\n SOS3 'MARKER' 'SOSEND'\n"
      " g r 1\nRHS\nENDATA\n";
  for (int layout : {QZ_MPS_FREE, QZ_MPS_FREE_IBIN}) {
    Model m(env.env);
    ASSERT_EQ(read(m, text, layout), 0);
    int nSets = 0, nnz = 0;
    char types[3];
    int card[3], nz[3], beg[4], vars[6];
    ASSERT_EQ(QZgetSETSData(m, &nSets, &nnz, types, card, nz, beg, vars), 0);
    ASSERT_EQ(nSets, 3);
    EXPECT_EQ(nnz, 6);
    EXPECT_EQ(types[0], 1);
    EXPECT_EQ(types[1], 2);
    EXPECT_EQ(types[2], layout == QZ_MPS_FREE ? 3 : 1);
    EXPECT_EQ(std::vector<int>(vars, vars + 6), (std::vector<int>{0, 1, 2, 3, 4, 5}));
  }
  Model bad(env.env);
  EXPECT_EQ(read(bad, "NAME\nROWS\n N obj\nCOLUMNS\n CA s 'MARKER' 'SOSORG'\nRHS\nENDATA\n"),
            QZERR_BAD_MODEL_FILE);
}

TEST_F(MpsSections, QuadraticSections) {
  const std::string text =
      "NAME\nROWS\n N obj\n L r\n N spare\nCOLUMNS\n x r 1\n y r 1\n"
      "QMATRIX\n x x 2\n x y 1\n y x 3\n"  // both triangles: their mean is kept
      "QCMATRIX r\n y y 4\n z z 1\n"      // a new column z enters here
      "QSECTION spare\n x x 9\n"            // terms of a free row are dropped
      "RHS\n RHS r 1\nENDATA\n";
  Model m(env.env);
  ASSERT_EQ(read(m, text), 0);
  Snapshot s = snapshot(m);
  ASSERT_EQ(s.nVars, 3);
  EXPECT_EQ(s.colNames[2], "z");
  EXPECT_EQ(s.qcRows, (std::vector<int>{-1, -1, 0, 0}));
  EXPECT_EQ(s.qc1, (std::vector<int>{0, 0, 1, 2}));
  EXPECT_EQ(s.qc2, (std::vector<int>{0, 1, 1, 2}));
  EXPECT_EQ(s.qcCoef, (std::vector<double>{2, 2, 4, 1}));
  EXPECT_EQ(m.m->NLPPam.nlp_linearity, 0);
  Model bad(env.env);
  EXPECT_EQ(read(bad, "NAME\nROWS\n N obj\nCOLUMNS\n x obj 1\nQSECTION nowhere\n x x 1\nENDATA\n"),
            QZERR_BAD_MODEL_FILE);
}

TEST_F(MpsSections, ConicSections) {
  const std::string good =
      "NAME\nROWS\n N obj\nCOLUMNS\n t obj 1\nRHS\n"
      "CSECTION k1 0 QUAD\n t\n u\n v\n"
      "CSECTION k2 0.3 PPOW\n a\n b\n c\nENDATA\n";
  Model m(env.env);
  ASSERT_EQ(read(m, good), 0);
  char type = 0;
  double alpha = 0;
  int nnz = 0, cols[3];
  ASSERT_EQ(QZgetConeDatai(m, 1, &type, &alpha, &nnz, cols), 0);
  EXPECT_EQ(type, 'P');
  EXPECT_EQ(alpha, 0.3);
  EXPECT_EQ(nnz, 3);
  char name[64];
  QZgetConeNamei(m, 0, name);
  EXPECT_STREQ(name, "k1");
  struct Bad {
    const char* text;
    int layout;
  };
  const Bad bad[] = {
      {"CSECTION k1 0 PEXP\n a\n b\nENDATA\n", QZ_MPS_FREE},         // three members needed
      {"CSECTION k1 0 QUAD\n a\nCSECTION k2 0 QUAD\n a\nENDATA\n", QZ_MPS_FREE},  // two cones
      {"CSECTION k1 0 CUBE\n a\nENDATA\n", QZ_MPS_FREE},
      {"CSECTION k1 x QUAD\n a\nENDATA\n", QZ_MPS_FREE},
      {"CSECTION k1 0 QUAD\n a\nENDATA\n", QZ_MPS_FIXED},  // the header needs the free layout
  };
  for (const Bad& b : bad) {
    SCOPED_TRACE(b.text);
    Model mb(env.env);
    EXPECT_EQ(read(mb, std::string("NAME\nROWS\n N obj\nCOLUMNS\n    t         obj                1\nRHS\n") +
                           b.text,
                   b.layout),
              QZERR_BAD_MODEL_FILE);
  }
}

TEST_F(MpsSections, ObjectiveSenseAndConstant) {
  const char* body = "ROWS\n N obj\n L r\nCOLUMNS\n x obj 1 r 1\nRHS\n RHS obj -2.5 r 1\nENDATA\n";
  const std::pair<std::string, int> cases[] = {
      {"NAME\n", QZ_MIN},
      {"NAME\nOBJSENSE\n MAX\n", QZ_MAX},
      {"NAME\nOBJSENSE\n    MAXIMIZE\n", QZ_MAX},
      {"NAME\nOBJSENCE\n MAX\n", QZ_MAX},
      {"NAME\nOBJSENSE MAX\n", QZ_MAX},
      {"NAME\nOBJSENSE\n MIN\n", QZ_MIN},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.first);
    Model m(env.env);
    ASSERT_EQ(read(m, c.first + body), 0);
    Snapshot s = snapshot(m);
    EXPECT_EQ(s.sense, c.second);
    EXPECT_EQ(s.objConst, 2.5);
  }
  Model bad(env.env);
  EXPECT_EQ(read(bad, std::string("NAME\nOBJSENSE\n") + body), QZERR_BAD_MODEL_FILE);
}

TEST_F(MpsSections, FreeRowsAndTheObjectiveIndex) {
  const std::string text =
      "NAME\nROWS\n N first\n N second\n L r\nCOLUMNS\n"
      " x first 1 second 5\n x r 1\nRHS\n RHS r 1 second 3\nENDATA\n";
  Model m0(env.env), m1(env.env), keep(env.env);
  ASSERT_EQ(read(m0, text, QZ_MPS_FREE, 0, 0), 0);
  ASSERT_EQ(read(m1, text, QZ_MPS_FREE, 1, 0), 0);
  ASSERT_EQ(read(keep, text, QZ_MPS_FREE, 0, 1), 0);
  EXPECT_EQ(snapshot(m0).c[0], 1.0);
  EXPECT_EQ(snapshot(m0).nCons, 1);
  EXPECT_EQ(snapshot(m1).c[0], 5.0);
  Snapshot k = snapshot(keep);
  ASSERT_EQ(k.nCons, 2);
  EXPECT_EQ(k.rowTypes[0], 'N');
  EXPECT_EQ(k.b[0], 3.0);
  EXPECT_EQ(k.cols[0].size(), 2u);
}

// Small files, each read in the free layout to the model its check names.
TEST_F(MpsSections, SmallFilesReadToTheirModel) {
  const std::string head = "NAME\nROWS\n N obj\n L r\nCOLUMNS\n";
  struct Case {
    const char* what;
    std::string text;
    std::function<void(const Snapshot&)> check;
  };
  const Case cases[] = {
      {"extended objective rows change nothing",
       "NAME\nROWS\n N obj\n N second 1 0.5 0 0.01 -1\n L r\nCOLUMNS\n"
       " x obj 1 second 5\n x r 1\nRHS\n RHS r 1\nENDATA\n",
       [](const Snapshot& s) {
         EXPECT_EQ(s.nCons, 1);
         EXPECT_EQ(s.c[0], 1.0);
       }},
      {"a repeated row in a column keeps the first value", head + " x r 2 r 7\nRHS\nENDATA\n",
       [](const Snapshot& s) {
         ASSERT_EQ(s.cols[0].size(), 1u);
         EXPECT_EQ(s.cols[0][0].second, 2.0);
       }},
      {"no RHS section", head + " x obj 1 r 1\nENDATA\n",
       [](const Snapshot& s) { EXPECT_EQ(s.c[0], 1.0); }},
      {"no RHS section before BOUNDS", head + " x obj 1 r 1\nBOUNDS\n UP B x 2\nENDATA\n",
       [](const Snapshot& s) { EXPECT_EQ(s.u[0], 2.0); }},
      {"no RHS section before RANGES", head + " x obj 1 r 1\nRANGES\n R r 1\nENDATA\n",
       [](const Snapshot& s) { EXPECT_EQ(s.c[0], 1.0); }},
      {"comments", "NAME\n* a comment line\nROWS\n N obj\n L r\nCOLUMNS\n x r 2 $ trailing words\n"
                   " y r 1 ! more\nRHS\nENDATA\n",
       [](const Snapshot& s) { EXPECT_EQ(s.nVars, 2); }},
      {"a quadratic section before RHS",
       head + " x r 1\nQUADOBJ\n x x 2\nRHS\n r 4\nBOUNDS\n UP B x 3\nENDATA\n",
       [](const Snapshot& s) {
         EXPECT_EQ(s.b[0], 4.0);
         EXPECT_EQ(s.u[0], 3.0);
         EXPECT_EQ(s.qcCoef, (std::vector<double>{2.0}));
       }},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    Model m(env.env);
    ASSERT_EQ(read(m, c.text), 0);
    c.check(snapshot(m));
  }
}

TEST_F(MpsSections, IndicatorRowsBecomeLinear) {
  // x + y >= 1 when z = 0 and x <= 0 when z = 1, all binary: exact with a coefficient on z.
  const std::string text =
      "NAME\nROWS\n N obj\n G a\n E b\nCOLUMNS\n x obj 1 a 1\n x b 1\n y obj 1 a 1\n"
      " z obj 1\nRHS\n RHS a 1\nBOUNDS\n BV B x\n BV B y\n BV B z\n"
      "INDICATORS\n IF a z 0\n IF b z 1\nENDATA\n";
  Model m(env.env);
  ASSERT_EQ(read(m, text), 0);
  Snapshot s = snapshot(m);
  EXPECT_EQ(m.m->fileInfo.nIndicatorNnz, 2);
  // a: x + y + z >= 1;  b (x <= 0 when z = 1): x + z <= 1.
  EXPECT_EQ(s.cols[2], (std::vector<std::pair<int, double>>{{0, 1.0}, {1, 1.0}}));
  EXPECT_EQ(s.rowTypes[1], 'L');
  EXPECT_EQ(s.b[1], 1.0);
  Model bad(env.env);
  EXPECT_EQ(read(bad, "NAME\nROWS\n N obj\n G a\nCOLUMNS\n x a 1\n z obj 1\nRHS\nBOUNDS\n"
                      " FR B x\n BV B z\nINDICATORS\n IF a z 1\nENDATA\n"),
            QZERR_NOT_SUPPORTED);
  int line = 0;
  char txt[300];
  QZgetFileError(bad, &line, txt);
  EXPECT_EQ(line, 13);
}

}  // namespace
}  // namespace zento::test
