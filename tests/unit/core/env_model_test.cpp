// Environments and models: lifecycle, the model list, copies and threads.
#include <atomic>
#include <cstring>
#include <thread>

#include "test_util.h"

namespace zento::test {
namespace {

using EnvModel = EnvFixture;

TEST_F(EnvModel, ModelListKeepsCreationOrderAcrossDeletes) {
  QZmodel a = new_model(), b = new_model(), c = new_model();
  int n = 0;
  ASSERT_EQ(QZgetEnvModelCount(env, &n), 0);
  EXPECT_EQ(n, 3);
  QZmodel list[3] = {};
  ASSERT_EQ(QZgetEnvModelList(env, list), 0);
  EXPECT_EQ(list[0], a);
  EXPECT_EQ(list[1], b);
  EXPECT_EQ(list[2], c);

  ASSERT_EQ(QZdeleteModel(&a), 0);
  EXPECT_EQ(a, nullptr);
  ASSERT_EQ(QZgetEnvModelCount(env, &n), 0);
  EXPECT_EQ(n, 2);
  ASSERT_EQ(QZgetEnvModelList(env, list), 0);
  EXPECT_EQ(list[0], b);
  EXPECT_EQ(list[1], c);
  QZdeleteModel(&b);
  QZdeleteModel(&c);
}

TEST_F(EnvModel, NullHandlesGiveTheirCodes) {
  QZmodel none = nullptr;
  EXPECT_EQ(QZdeleteModel(nullptr), 0);
  EXPECT_EQ(QZdeleteModel(&none), 0);
  QZenv noEnv = nullptr;
  EXPECT_EQ(QZdeleteEnv(&noEnv), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZdeleteEnv(nullptr), QZERR_ILLEGAL_NULL_POINTER);
  int rc = 0;
  EXPECT_EQ(QZcreateModel(nullptr, &rc), nullptr);
  EXPECT_EQ(rc, QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZcreateModel(env, nullptr), nullptr);
  int n = 0;
  EXPECT_EQ(QZgetEnvModelCount(nullptr, &n), QZERR_INFO_NOT_AVAILABLE);
  EXPECT_EQ(QZgetEnvModelCount(env, nullptr), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZgetModelEnv(nullptr, nullptr), QZERR_INFO_NOT_AVAILABLE);
  EXPECT_EQ(QZcopyEnv(env, nullptr), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZcopyModel(nullptr, &rc), nullptr);
  EXPECT_EQ(rc, QZERR_ILLEGAL_NULL_POINTER);
}

TEST_F(EnvModel, LogModelIsFirstWithALogFunction) {
  QZmodel a = new_model(), b = new_model(), c = new_model();
  EXPECT_EQ(QZgetEnvLogModel(env), nullptr);
  auto sink = [](QZmodel, char*, void*) {};
  ASSERT_EQ(QZsetModelLogfunc(c, sink, nullptr), 0);
  ASSERT_EQ(QZsetModelLogfunc(b, sink, nullptr), 0);
  EXPECT_EQ(QZgetEnvLogModel(env), b);
  QZdeleteModel(&a);
  QZdeleteModel(&b);
  QZdeleteModel(&c);
}

TEST_F(EnvModel, DeletingTheEnvironmentDeletesLiveModels) {
  SmallLP lp;
  for (int i = 0; i < 5; ++i) ASSERT_EQ(lp.load(new_model()), 0);
  EXPECT_EQ(QZdeleteEnv(&env), 0);
  EXPECT_EQ(env, nullptr);
}

TEST_F(EnvModel, CopyCarriesDataNamesAndCallbacksButLogsNothing) {
  QZmodel src = new_model();
  SmallLP lp;
  ASSERT_EQ(lp.load(src), 0);
  ASSERT_EQ(load_names(src), 0);
  char types[] = "CI";
  ASSERT_EQ(QZloadVarType(src, types), 0);
  int lines = 0;
  ASSERT_EQ(QZsetModelLogfunc(
                src, [](QZmodel, char*, void* d) { ++*static_cast<int*>(d); }, &lines),
            0);
  int rc = -1;
  QZmodel dst = QZcopyModel(src, &rc);
  ASSERT_EQ(rc, 0);
  ASSERT_NE(dst, nullptr);
  EXPECT_EQ(lines, 0);

  int nv = 0, nc = 0, nz = 0;
  ASSERT_EQ(QZgetDimensions(dst, &nv, &nc, nullptr, &nz, nullptr, nullptr, nullptr, nullptr,
                            nullptr, nullptr, nullptr),
            0);
  EXPECT_EQ(nv, 2);
  EXPECT_EQ(nc, 3);
  EXPECT_EQ(nz, 6);
  char name[64];
  ASSERT_EQ(QZgetConstraintNamei(dst, 2, name), 0);
  EXPECT_STREQ(name, "balance");
  char got[3] = {};
  ASSERT_EQ(QZgetVarType(dst, got), 0);
  EXPECT_EQ(std::string(got, 2), "CI");
  EXPECT_EQ(QZgetEnvLogModel(env), src);

  // The copy keeps the log function, so its own later loads do log.
  double c0 = 0;
  ASSERT_EQ(QZgetObjectivej(dst, 1, &c0), 0);
  EXPECT_EQ(c0, 3.0);
  QZdeleteModel(&src);
  EXPECT_EQ(QZgetEnvLogModel(env), dst);
  QZdeleteModel(&dst);
}

TEST_F(EnvModel, CopyParamWithPositiveModeDoesNothing) {
  QZmodel a = new_model(), b = new_model();
  int counter = 0;
  auto cb = [](QZmodel, int, void* d) {
    ++*static_cast<int*>(d);
    return 0;
  };
  ASSERT_EQ(QZsetCallback(a, cb, &counter), 0);
  EXPECT_EQ(QZcopyParam(a, b, 1), 0);
  const double c[] = {1.0};
  const int beg[] = {0, 0};
  ASSERT_EQ(QZloadLPData(b, 0, 1, QZ_MIN, 0, c, nullptr, nullptr, 0, beg, nullptr, nullptr,
                         nullptr, nullptr, nullptr),
            0);
  ASSERT_EQ(QZoptimize(b, QZ_METHOD_FREE, nullptr), 0);
  EXPECT_EQ(counter, 0);
  EXPECT_EQ(QZcopyParam(a, b, 0), 0);
  ASSERT_EQ(QZoptimize(b, QZ_METHOD_FREE, nullptr), 0);
  EXPECT_GT(counter, 0);
  QZdeleteModel(&a);
  QZdeleteModel(&b);
}

TEST_F(EnvModel, ModelsCreatedAndDeletedOnManyThreadsKeepTheListIntact) {
  QZmodel keep = new_model();
  constexpr int kThreads = 8, kRounds = 200;
  std::atomic<int> failures{0};
  std::vector<std::thread> pool;
  for (int t = 0; t < kThreads; ++t)
    pool.emplace_back([&] {
      SmallLP lp;
      for (int r = 0; r < kRounds; ++r) {
        int rc = 0;
        QZmodel m = QZcreateModel(env, &rc);
        if (rc != 0 || lp.load(m) != 0 || QZdeleteModel(&m) != 0) ++failures;
      }
    });
  for (auto& th : pool) th.join();
  EXPECT_EQ(failures.load(), 0);
  int n = 0;
  ASSERT_EQ(QZgetEnvModelCount(env, &n), 0);
  EXPECT_EQ(n, 1);
  QZmodel list[1] = {};
  ASSERT_EQ(QZgetEnvModelList(env, list), 0);
  EXPECT_EQ(list[0], keep);
  QZdeleteModel(&keep);
}

TEST(Version, VersionStringHasFourParts) {
  char v[64], build[512];
  ASSERT_EQ(QZgetVersionInfo(v, build), 0);
  EXPECT_STREQ(v, "13.0.4099.270");
  EXPECT_NE(std::strstr(build, "Platform Linux 64x86 (D)"), nullptr);
  EXPECT_EQ(QZgetVersionInfo(nullptr, nullptr), 0);
}

}  // namespace
}  // namespace zento::test
