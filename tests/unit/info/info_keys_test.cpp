// QZgetInfo: every key of `key_lookup` on a solved model, absent records, bad input.
#include <climits>
#include <cmath>
#include <cstring>

#include "core/info.h"
#include "info_test_util.h"

namespace zento::test {
namespace {

// Keys whose records a solved LP does not carry: analysis, stochastic, MIP and global results,
// and the progress of runs that are not under way.
bool absent_on_solved_lp(int key) {
  switch (key) {
    case QZ_IINFO_NUM_SUF_ROWS:
    case QZ_IINFO_NUM_IIS_ROWS:
    case QZ_IINFO_NUM_SUF_BNDS:
    case QZ_IINFO_NUM_IIS_BNDS:
    case QZ_IINFO_NUM_SUF_COLS:
    case QZ_IINFO_NUM_IUS_COLS:
    case QZ_IINFO_NUM_SUF_INTS:
    case QZ_IINFO_NUM_IIS_INTS:
    case QZ_IINFO_NUM_SPARS: return true;
    default: break;
  }
  return (key >= 11300 && key < 11400) || (key >= 11600 && key < 11700) ||
         (key >= 11800 && key < 11999) || key >= 13000;
}

// Writes a key into a buffer full of a marker and tells how many bytes changed.
struct Probe {
  unsigned char buf[QZ_INFO_STRING_MAXLEN + 16];
  int rc;
  Probe(QZmodel m, int key) {
    std::memset(buf, 0xA5, sizeof buf);
    rc = QZgetInfo(m, key, buf);
  }
  size_t touched() const {
    size_t last = 0;
    for (size_t i = 0; i < sizeof buf; ++i)
      if (buf[i] != 0xA5) last = i + 1;
    return last;
  }
  int i() const { int v; std::memcpy(&v, buf, sizeof v); return v; }
  double d() const { double v; std::memcpy(&v, buf, sizeof v); return v; }
  const char* s() const { return reinterpret_cast<const char*>(buf); }
};

class SolvedTrivial : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(load_trivial(em.model), 0);
    int status = 0;
    ASSERT_EQ(QZoptimize(em.model, QZ_METHOD_FREE, &status), 0);
    ASSERT_EQ(status, QZ_STATUS_BASIC_OPTIMAL);
  }
  EnvModel em;
};

TEST_F(SolvedTrivial, EveryKeyAnswersWithItsType) {
  int answered = 0;
  for (const KeyRow& row : key_lookup()) {
    Probe p(em.model, row.key);
    if (absent_on_solved_lp(row.key)) {
      EXPECT_EQ(p.rc, QZERR_INFO_NOT_AVAILABLE) << row.name;
      EXPECT_EQ(p.touched(), 0u) << row.name;
      continue;
    }
    ASSERT_EQ(p.rc, 0) << row.name;
    ++answered;
    switch (key_type(row.key)) {
      case KeyType::kInt: EXPECT_LE(p.touched(), sizeof(int)) << row.name; break;
      case KeyType::kDouble:
        EXPECT_LE(p.touched(), sizeof(double)) << row.name;
        EXPECT_TRUE(std::isfinite(p.d())) << row.name;
        break;
      case KeyType::kString:
        EXPECT_NE(std::memchr(p.buf, '\0', QZ_INFO_STRING_MAXLEN), nullptr) << row.name;
        break;
      default: ADD_FAILURE() << row.name << " has no type";
    }
  }
  EXPECT_GT(answered, 90);
}

TEST_F(SolvedTrivial, ValuesOfTheSolution) {
  double obj = 0;
  ASSERT_EQ(QZgetObjective(em.model, &obj), 0);
  EXPECT_EQ(Probe(em.model, QZ_DINFO_POBJ).d(), obj);
  EXPECT_DOUBLE_EQ(obj, kTrivialObjective);
  struct IntCase {
    int key, value;
  } ints[] = {{QZ_IINFO_NUM_VARS, 3},          {QZ_IINFO_NUM_CONS, 0},
              {QZ_IINFO_NUM_CONT, 3},          {QZ_IINFO_NUM_VARS_LUB, 2},
              {QZ_IINFO_NUM_VARS_FR, 1},       {QZ_IINFO_MODEL_STATUS, QZ_STATUS_BASIC_OPTIMAL},
              {QZ_IINFO_PRIMAL_STATUS, 2},     {QZ_IINFO_BASIC_STATUS, 2},
              {QZ_IINFO_METHOD, 0},            {QZ_IINFO_ERR_OPTIM, 0},
              {QZ_IINFO_VER_MAJOR, 13},        {QZ_IINFO_VER_BUILD, 4099},
              {QZ_IINFO_OBJSENSE, QZ_MIN},     {QZ_IINFO_MODEL_TYPE, 10},
              {QZ_IINFO_ARCH_ID, 'D'},         {QZ_IINFO_CUR_LP_COUNT, 1},
              {QZ_IINFO_CUR_STATUS, 2},        {QZ_IINFO_NUM_RDVARS, 3}};
  for (const IntCase& c : ints) EXPECT_EQ(Probe(em.model, c.key).i(), c.value) << key_name(c.key);
  EXPECT_EQ(Probe(em.model, QZ_DINFO_CUR_OBJ).d(), obj);
  EXPECT_STREQ(Probe(em.model, QZ_SINFO_MODEL_TYPE).s(), "LP");
  EXPECT_EQ(em.model->modelTypeText, "LP");
}

TEST(InfoKeys, WithoutAModel) {
  struct Case {
    int key, value;
  } cases[] = {{QZ_IINFO_VER_MAJOR, 13},
               {QZ_IINFO_VER_MINOR, 0},
               {QZ_IINFO_VER_BUILD, 4099},
               {QZ_IINFO_VER_REVISION, 270},
               {QZ_IINFO_ARCH_ID, 'D'}};
  for (const Case& c : cases) {
    Probe p(nullptr, c.key);
    EXPECT_EQ(p.rc, 0);
    EXPECT_EQ(p.i(), c.value);
  }
  EXPECT_STREQ(Probe(nullptr, QZ_SINFO_MODEL_TYPE).s(), "*?*");
  EXPECT_EQ(Probe(nullptr, QZ_DINFO_POBJ).rc, QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZgetInfo(nullptr, QZ_IINFO_VER_MAJOR, nullptr), 0);
}

TEST(InfoKeys, UnknownKeysAndNullResult) {
  EnvModel em;
  ASSERT_EQ(load_trivial(em.model), 0);
  for (int key : {-1, 0, 5, 11057, 11299, 12000, 99999}) {
    Probe p(em.model, key);
    EXPECT_EQ(p.rc, QZERR_INFO_NOT_AVAILABLE) << key;
    EXPECT_EQ(p.touched(), 0u) << key;
  }
  EXPECT_EQ(QZgetInfo(em.model, QZ_DINFO_POBJ, nullptr), 0);
}

TEST(InfoKeys, ModelStatusWithoutSolveAndUnloaded) {
  EnvModel em;
  EXPECT_EQ(Probe(em.model, QZ_IINFO_MODEL_STATUS).i(), QZ_STATUS_UNLOADED);
  ASSERT_EQ(load_trivial(em.model), 0);
  EXPECT_EQ(Probe(em.model, QZ_IINFO_MODEL_STATUS).i(), QZ_STATUS_LOADED);
  EXPECT_EQ(Probe(em.model, QZ_DINFO_POBJ).rc, QZERR_INFO_NOT_AVAILABLE);
  EXPECT_EQ(Probe(em.model, QZ_DINFO_CUR_OBJ).rc, QZERR_INFO_NOT_AVAILABLE);
}

TEST(InfoKeys, ModelClassAndMatrixExtremes) {
  EnvModel em;
  ASSERT_EQ(load_small_mip(em.model), 0);
  EXPECT_STREQ(Probe(em.model, QZ_SINFO_MODEL_TYPE).s(), "MILP");
  EXPECT_EQ(Probe(em.model, QZ_IINFO_MODEL_TYPE).i(), 15);
  EXPECT_EQ(Probe(em.model, QZ_IINFO_NUM_INT).i(), 2);
  EXPECT_EQ(Probe(em.model, QZ_IINFO_NUM_CONT).i(), 0);
  EXPECT_EQ(Probe(em.model, QZ_IINFO_NUM_CONS_L).i(), 1);
  EXPECT_EQ(Probe(em.model, QZ_DINFO_INST_VAL_MAX_COEF).d(), 1.0);
  EXPECT_EQ(Probe(em.model, QZ_IINFO_INST_VARNDX_MIN_COEF).i(), 0);
  EXPECT_EQ(Probe(em.model, QZ_IINFO_INST_CONNDX_MAX_COEF).i(), 0);
}

TEST(InfoKeys, CountsAreTruncatedAndSaturate) {
  EnvModel em;
  ASSERT_EQ(load_trivial(em.model), 0);
  ASSERT_EQ(QZoptimize(em.model, QZ_METHOD_FREE, nullptr), 0);
  em.model->sol->spxIter = 41.9;
  em.model->sol->barIter = 3e10;
  em.model->sol->nlpIter = -3e10;
  EXPECT_EQ(Probe(em.model, QZ_IINFO_SIM_ITER).i(), 41);
  EXPECT_EQ(Probe(em.model, QZ_IINFO_BAR_ITER).i(), INT_MAX);
  EXPECT_EQ(Probe(em.model, QZ_IINFO_NLP_ITER).i(), INT_MIN);
}

TEST(InfoKeys, ResultsHiddenWhileTheRecordsAreRebuilt) {
  EnvModel em;
  ASSERT_EQ(load_trivial(em.model), 0);
  ASSERT_EQ(QZoptimize(em.model, QZ_METHOD_FREE, nullptr), 0);
  em.model->callLevel = -1;
  EXPECT_EQ(Probe(em.model, QZ_DINFO_POBJ).rc, QZERR_INFO_NOT_AVAILABLE);
  EXPECT_EQ(Probe(em.model, QZ_DINFO_CUR_OBJ).rc, QZERR_INFO_NOT_AVAILABLE);
  EXPECT_EQ(Probe(em.model, QZ_IINFO_NUM_VARS).i(), 3);
  em.model->callLevel = 0;
}

TEST(InfoKeys, MipRecordAndItsBetterTwin) {
  EnvModel em;
  ASSERT_EQ(load_small_mip(em.model), 0);
  em.model->mipsol = std::make_unique<MipSol>();
  MipSol& ms = *em.model->mipsol;
  ms.obj = -3;
  ms.bestBound = -3.5;
  ms.cuts[QZ_IINFO_MIP_GOMORY_CUTS - QZ_IINFO_MIP_NUM_TOTAL_CUTS] = 7;
  // No incumbent yet: the objective is not an answer.
  EXPECT_EQ(Probe(em.model, QZ_DINFO_MIP_OBJ).rc, QZERR_INFO_NOT_AVAILABLE);
  EXPECT_EQ(Probe(em.model, QZ_DINFO_MIP_BESTBOUND).d(), -3.5);
  EXPECT_EQ(Probe(em.model, QZ_IINFO_MIP_GOMORY_CUTS).i(), 7);
  ms.MIPstatus = QZ_STATUS_FEASIBLE;
  EXPECT_EQ(Probe(em.model, QZ_DINFO_MIP_OBJ).d(), -3);
  EXPECT_EQ(Probe(em.model, QZ_DINFO_CUR_OBJ).d(), -3);
  EXPECT_EQ(Probe(em.model, QZ_IINFO_CUR_MIP_COUNT).i(), 1);
  MipSol better;
  better.MIPstatus = QZ_STATUS_OPTIMAL;
  better.obj = -4;
  ms.better = &better;
  EXPECT_EQ(Probe(em.model, QZ_DINFO_MIP_OBJ).d(), -4);
  EXPECT_EQ(Probe(em.model, QZ_IINFO_MIP_STATUS).i(), QZ_STATUS_OPTIMAL);
  ms.better = nullptr;
  EXPECT_EQ(Probe(em.model, QZ_DINFO_GOP_OBJ).rc, QZERR_INFO_NOT_AVAILABLE);
}

TEST(InfoKeys, GlobalKeysReadTheWorkingModelWhileItRuns) {
  EnvModel em;
  ASSERT_EQ(load_trivial(em.model), 0);
  int rc = 0;
  QZmodel work = QZcreateModel(em.env, &rc);
  work->gopsol = std::make_unique<GopSol>();
  work->gopsol->obj = 11;
  work->gopsol->lpCount = 4;
  EXPECT_EQ(Probe(em.model, QZ_DINFO_GOP_OBJ).rc, QZERR_INFO_NOT_AVAILABLE);
  em.model->run.gopWorking = work;
  EXPECT_EQ(Probe(em.model, QZ_DINFO_GOP_OBJ).d(), 11);
  EXPECT_EQ(Probe(em.model, QZ_DINFO_GOP_LPCOUNT).d(), 4);
  EXPECT_EQ(Probe(em.model, QZ_IINFO_GOP_LPCOUNT).i(), 4);
  em.model->run.gopWorking = nullptr;
  QZdeleteModel(&work);
}

TEST(InfoKeys, FinalInfoEntry) {
  EnvModel em;
  ASSERT_EQ(load_trivial(em.model), 0);
  ASSERT_EQ(QZoptimize(em.model, QZ_METHOD_FREE, nullptr), 0);
  double d = 0;
  int n = 0;
  EXPECT_EQ(QZgetFinalInfo(em.model, QZ_DINFO_CUR_OBJ, &d), 0);
  EXPECT_DOUBLE_EQ(d, kTrivialObjective);
  EXPECT_EQ(QZgetFinalInfo(em.model, QZ_IINFO_CUR_STATUS, &n), 0);
  EXPECT_EQ(n, QZ_STATUS_BASIC_OPTIMAL);
  EXPECT_EQ(QZgetFinalInfo(em.model, QZ_DINFO_POBJ, &d), QZERR_INFO_NOT_AVAILABLE);
  EXPECT_EQ(QZgetFinalInfo(nullptr, QZ_DINFO_CUR_OBJ, &d), QZERR_ILLEGAL_NULL_POINTER);
}

TEST(InfoKeys, KeyNamesRoundTrip) {
  for (const KeyRow& row : key_lookup()) {
    EXPECT_EQ(key_by_name(row.name), row.key) << row.name;
    EXPECT_STREQ(key_name(row.key), row.name);
  }
  EXPECT_EQ(key_by_name("QZ_DINFO_NO_SUCH_KEY"), -1);
}

}  // namespace
}  // namespace zento::test

#include "zento_fortran.h"

namespace zento::test {
namespace {

TEST(InfoTwins, ScalarsAndHandlesByReference) {
  EnvModel em;
  ASSERT_EQ(load_trivial(em.model), 0);
  ASSERT_EQ(QZoptimize(em.model, QZ_METHOD_FREE, nullptr), 0);
  int key = QZ_DINFO_POBJ;
  double obj = 0;
  ASSERT_EQ(qzgetinfo_(&em.model, &key, &obj), 0);
  EXPECT_DOUBLE_EQ(obj, kTrivialObjective);
  int loc = QZLOC_PRIMAL;
  key = QZ_IINFO_NUM_VARS;
  int n = 0;
  ASSERT_EQ(qzgetcallbackinfo_(&em.model, &loc, &key, &n), 0);
  EXPECT_EQ(n, 3);
  int code = QZERR_USER_INTERRUPT;
  char msg[QZ_MAX_ERROR_MESSAGE_LENGTH];
  ASSERT_EQ(qzgeterrormessage_(&em.env, &code, msg), 0);
  EXPECT_STREQ(msg, "User interrupt.");
  int sel = 0;
  char h[QZ_FORMATTED_INFO_MAXLEN], d[QZ_FORMATTED_INFO_MAXLEN];
  EXPECT_EQ(qzgetformattedinfo_(&em.model, nullptr, h, d, &sel), 0);
}

}  // namespace
}  // namespace zento::test
