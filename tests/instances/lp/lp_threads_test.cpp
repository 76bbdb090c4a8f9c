// Many models on many threads at once: with no shared mutable state, each solve gives exactly
// the iterations and objective it gives alone.
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "lp_oracle.h"
#include "zento.h"

namespace zento::test {
namespace {

using SolveRun = LpRun;

SolveRun solve_file(QZenv env, const std::string& name) {
  SolveRun r;
  r.rc = -1;
  int rc = 0;
  QZmodel m = QZcreateModel(env, &rc);
  const std::string path = std::string(ZENTO_TEST_DATA) + "/netlib/" + name + ".mps.gz";
  if (rc == 0 && QZreadMPSFile(m, path.c_str(), QZ_MPS_AUTO) == 0) r = solve_lp(m);
  QZdeleteModel(&m);
  return r;
}

TEST(LpThreads, ConcurrentSolvesRepeatTheSerialOnes) {
  const std::vector<std::string> names = {"afiro", "sc105", "share2b", "stocfor1", "adlittle",
                                          "blend", "scagr7", "boeing1", "brandy", "bandm"};
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  ASSERT_EQ(rc, 0);
  std::vector<SolveRun> serial;
  for (const std::string& n : names) serial.push_back(solve_file(env, n));

  // Every model twice, spread over four threads that share the one environment.
  constexpr int kThreads = 4;
  std::vector<std::vector<SolveRun>> got(kThreads);
  std::vector<std::thread> pool;
  for (int t = 0; t < kThreads; ++t)
    pool.emplace_back([&, t] {
      for (size_t k = t; k < 2 * names.size(); k += kThreads)
        got[t].push_back(solve_file(env, names[k % names.size()]));
    });
  for (auto& th : pool) th.join();

  for (int t = 0; t < kThreads; ++t)
    for (size_t i = 0, k = t; k < 2 * names.size(); k += kThreads, ++i) {
      const SolveRun& a = serial[k % names.size()];
      const SolveRun& b = got[t][i];
      SCOPED_TRACE(names[k % names.size()]);
      EXPECT_EQ(a.rc, 0);
      EXPECT_EQ(b.rc, a.rc);
      EXPECT_EQ(b.status, a.status);
      EXPECT_EQ(b.iters, a.iters);
      EXPECT_EQ(b.obj, a.obj);  // bit for bit
    }
  QZdeleteEnv(&env);
}

}  // namespace
}  // namespace zento::test
