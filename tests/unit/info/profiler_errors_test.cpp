// The profiler's timers and counters, and the error detail entries.
#include <cstring>
#include <string>

#include "core/info_profiler.h"
#include "info_test_util.h"

namespace zento::test {
namespace {

TEST(Profiler, AbsentUnlessAsked) {
  EnvModel em;
  int calls = -1;
  double secs = -1;
  EXPECT_EQ(QZgetProfilerInfo(em.model, 12000, &calls, &secs), QZERR_INFO_NOT_AVAILABLE);
  EXPECT_EQ(QZgetProfilerContext(em.model, 12000), nullptr);
  { ProfScope timed(*em.model, 3); }  // no tables: nothing to charge, no crash
  EXPECT_EQ(QZgetProfilerInfo(nullptr, 12000, &calls, &secs), QZERR_ILLEGAL_NULL_POINTER);
}

TEST(Profiler, RegionsCountCallsAndTime) {
  EnvModel em;
  ASSERT_EQ(QZIprofNew(*em.model), 0);
  for (int k = 0; k < 3; ++k) {
    ProfScope outer(*em.model, 104);
    ProfScope inner(*em.model, 104);  // a region entered again is timed once
  }
  QZIprofEnd(*em.model, 105);  // an end without a begin changes nothing
  QZIprofCount(*em.model, 7, 4);
  int calls = 0;
  double secs = -1;
  ASSERT_EQ(QZgetProfilerInfo(em.model, 12104, &calls, &secs), 0);
  EXPECT_EQ(calls, 6);
  EXPECT_GE(secs, 0.0);
  ASSERT_EQ(QZgetProfilerInfo(em.model, 12105, &calls, &secs), 0);
  EXPECT_EQ(calls, 0);
  EXPECT_EQ(em.model->prof->counters[7].count, 4);
  EXPECT_STREQ(QZgetProfilerContext(em.model, 12104), "mip main bnb loop");
  EXPECT_STREQ(QZgetProfilerContext(em.model, 12125), "sz_context_description_125");
  for (int bad : {11999, 12500, -1})
    EXPECT_EQ(QZgetProfilerInfo(em.model, bad, &calls, &secs), QZERR_INFO_NOT_AVAILABLE) << bad;
  EXPECT_EQ(QZgetProfilerContext(em.model, 12500), nullptr);
}

TEST(Profiler, WorkingCopiesShareAndThreadTablesMerge) {
  EnvModel em;
  int rc = 0;
  QZmodel work = QZcreateModel(em.env, &rc);
  QZmodel thread = QZcreateModel(em.env, &rc);
  QZIprofNew(*em.model);
  QZIprofHook(*work, *em.model);
  { ProfScope t(*work, 61); }
  QZIprofUnHook(*work);
  { ProfScope t(*work, 61); }  // detached: charged nowhere
  QZIprofNew(*thread);
  { ProfScope t(*thread, 61); }
  QZIprofCount(*thread, 2, 5);
  QZIprofAccum(*em.model, *thread);
  EXPECT_EQ(em.model->prof->regions[61].calls, 2);
  EXPECT_EQ(em.model->prof->counters[2].count, 5);
  int first = 0, last = 0;
  QZIprofGetModeRange(256, &first, &last);
  EXPECT_EQ(first, 60);
  EXPECT_EQ(last, 79);
  QZIprofGetModeRange(7, &first, &last);
  EXPECT_EQ(first, 0);
  EXPECT_EQ(last, 499);
}

TEST(Profiler, SolveCreatesTablesAndReportsTheAskedOnes) {
  EnvModel em;
  std::string log;
  QZsetModelLogfunc(em.model, [](QZmodel, char* l, void* d) { *static_cast<std::string*>(d) += l; }, &log);
  ASSERT_EQ(load_trivial(em.model), 0);
  em.model->SplexPam.lp_prtfg = 256 | 2048;
  ASSERT_EQ(QZoptimize(em.model, QZ_METHOD_FREE, nullptr), 0);
  ASSERT_TRUE(em.model->prof);
  QZIprofCount(*em.model, 9, 2);
  { ProfScope t(*em.model, 62); }
  log.clear();
  QZIprofReport(*em.model);
  EXPECT_NE(log.find("\n\nProfiler results covering region f_lu_begin-f_lu_end\n"), std::string::npos) << log;
  EXPECT_NE(log.find("PRF|                      f_lu_update (062)          1"), std::string::npos) << log;
  EXPECT_NE(log.find("\n\nEvent counter results covering region"), std::string::npos) << log;
  EXPECT_NE(log.find("#iters taken by polishing step (009)          2"), std::string::npos) << log;
  // Without a print level nothing is shown.
  em.model->SplexPam.lp_printlevel = 0;
  log.clear();
  QZIprofReport(*em.model);
  EXPECT_EQ(log, "");
}

TEST(ErrorDetails, FileError) {
  EnvModel em;
  int line = -1;
  char text[QZ_FILE_ERROR_TEXT_MAXLEN];
  std::strcpy(text, "junk");
  EXPECT_EQ(QZgetFileError(em.model, &line, text), 0);
  EXPECT_EQ(line, 0);
  EXPECT_STREQ(text, "");
  em.model->fileErrorLine = 17;
  em.model->fileErrorText = std::string(1000, 'q');
  EXPECT_EQ(QZgetFileError(em.model, &line, text), 0);
  EXPECT_EQ(line, 17);
  EXPECT_EQ(std::strlen(text), static_cast<size_t>(QZ_FILE_ERROR_TEXT_MAXLEN - 1));
  line = 5;
  std::strcpy(text, "junk");
  EXPECT_EQ(QZgetFileError(nullptr, &line, text), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(line, 0);
  EXPECT_STREQ(text, "");
  EXPECT_EQ(QZgetFileError(em.model, nullptr, nullptr), 0);
}

TEST(ErrorDetails, ErrorRowNeedsANumericalError) {
  EnvModel em;
  int row = -7;
  EXPECT_EQ(QZgetErrorRowIndex(nullptr, &row), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZgetErrorRowIndex(em.model, nullptr), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZgetErrorRowIndex(em.model, &row), QZERR_INFO_NOT_AVAILABLE);
  ASSERT_EQ(load_trivial(em.model), 0);
  ASSERT_EQ(QZoptimize(em.model, QZ_METHOD_FREE, nullptr), 0);
  EXPECT_EQ(QZgetErrorRowIndex(em.model, &row), QZERR_INFO_NOT_AVAILABLE);
  em.model->sol->model_status = QZ_STATUS_NUMERICAL_ERROR;
  em.model->sol->errorRow = 4;
  EXPECT_EQ(QZgetErrorRowIndex(em.model, &row), 0);
  EXPECT_EQ(row, 4);
}

TEST(ErrorDetails, LibArch) {
  char platform[64];
  char code = 0;
  EXPECT_EQ(QZgetLibArch(platform, &code), 0);
  EXPECT_STREQ(platform, "Linux 64x86");
  EXPECT_EQ(code, 'D');
  EXPECT_EQ(QZgetLibArch(nullptr, &code), 0);
  EXPECT_EQ(QZgetLibArch(nullptr, nullptr), QZERR_ILLEGAL_NULL_POINTER);
}

}  // namespace
}  // namespace zento::test
