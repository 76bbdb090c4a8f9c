// Log functions and printers: levels, tags, the environment fallback and the debug streams.
#include <cstdio>
#include <regex>
#include <string>
#include <vector>

#include "core/info_profiler.h"
#include "info_test_util.h"

namespace zento::test {
namespace {

struct Sink {
  std::vector<std::string> lines;
  double pobjSeen = 0;
  int pobjRc = -1;
  std::string all() const {
    std::string s;
    for (const std::string& l : lines) s += l;
    return s;
  }
};

void model_sink(QZmodel m, char* line, void* data) {
  auto* s = static_cast<Sink*>(data);
  s->lines.emplace_back(line);
  s->pobjRc = QZgetInfo(m, QZ_DINFO_POBJ, &s->pobjSeen);
}

void env_sink(QZenv, char* line, void* data) { static_cast<Sink*>(data)->lines.emplace_back(line); }

TEST(ModelLog, LinesAtTheLevelSetAndNoneAtZero) {
  struct Case {
    int level;
    bool expectLines;
  } cases[] = {{0, false}, {1, true}, {3, true}};
  for (const Case& c : cases) {
    EnvModel em;
    Sink sink;
    ASSERT_EQ(QZsetModelLogfunc(em.model, model_sink, &sink), 0);
    em.model->SplexPam.lp_printlevel = c.level;
    em.model->BandBPam.mip_printlevel = c.level;
    em.model->NLPPam.nlp_printlevel = c.level;
    ASSERT_EQ(load_trivial(em.model), 0);
    ASSERT_EQ(QZoptimize(em.model, QZ_METHOD_FREE, nullptr), 0);
    if (!c.expectLines) {
      EXPECT_TRUE(sink.lines.empty()) << sink.all();
      continue;
    }
    const std::string text = sink.all();
    EXPECT_NE(text.find("\nUsed Method        = 0 "), std::string::npos) << text;
    EXPECT_NE(text.find("\nBasic solution is optimal.\n"), std::string::npos) << text;
    // Lines begin with a new line and arrive whole, one call each.
    for (const std::string& l : sink.lines) EXPECT_FALSE(l.empty());
    // The log function may read results of the model it is called for.
    EXPECT_EQ(sink.pobjRc, 0);
  }
}

TEST(ModelLog, DirectCalls) {
  EnvModel em;
  Sink sink;
  QZsetModelLogfunc(em.model, model_sink, &sink);
  EXPECT_EQ(QZlogmod(em.model, 0, "\nhidden %d", 1), 0);
  EXPECT_EQ(QZlogmod(em.model, 2, "\nshown %d %s %.2f", 7, "x", 0.5), 0);
  EXPECT_EQ(QZlogmod(nullptr, 2, "\nnowhere"), 0);
  EXPECT_EQ(QZlogmod(em.model, 2, nullptr), QZERR_ILLEGAL_NULL_POINTER);
  const std::string longText(3000, 'z');
  QZlogmod(em.model, 1, "%s", longText.c_str());
  ASSERT_EQ(sink.lines.size(), 2u);
  EXPECT_EQ(sink.lines[0], "\nshown 7 x 0.50");
  EXPECT_EQ(sink.lines[1], longText);
  QZsetModelLogfunc(em.model, nullptr, nullptr);
  QZlogmod(em.model, 1, "\ngone");
  EXPECT_EQ(sink.lines.size(), 2u);
}

TEST(ModelLog, ThreadTagKeepsTheLeadingNewLineInFront) {
  EnvModel em;
  Sink sink;
  QZsetModelLogfunc(em.model, model_sink, &sink);
  QZlogmodtid(em.model, 1, "\nnode %d", 5);
  QZlogmodtid(em.model, 1, "tail");
  QZlogmodtid(em.model, 0, "\nhidden");
  ASSERT_EQ(sink.lines.size(), 2u);
  EXPECT_EQ(sink.lines[0], "\nThread00: node 5");
  EXPECT_EQ(sink.lines[1], "Thread00: tail");
}

TEST(EnvLog, EnvironmentThenDebugFunctionAndOtherwiseSilent) {
  EnvModel em;
  Sink envSink, dbgSink;
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  QZlogenv(em.env, 1, "\nnobody listens");
  QZdprintf(1, "\nnobody listens either");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  ASSERT_EQ(QZsetDbgLogfunc(env_sink, &dbgSink), 0);
  QZlogenv(em.env, 1, "\nto debug %d", 1);
  QZlogenv(nullptr, 1, "\nno env %d", 2);
  QZdprintf(1, "\ndprintf %d", 3);
  QZdprintf(0, "\nmasked");
  QZsetEnvLogfunc(em.env, env_sink, &envSink);
  QZlogenv(em.env, 1, "\nto env");
  QZlogenv(em.env, 0, "\nlevel zero");
  QZsetDbgLogfunc(nullptr, nullptr);
  EXPECT_EQ(dbgSink.lines, (std::vector<std::string>{"\nto debug 1", "\nno env 2", "\ndprintf 3"}));
  EXPECT_EQ(envSink.lines, (std::vector<std::string>{"\nto env"}));
  EXPECT_EQ(QZlogenv(em.env, 1, nullptr), QZERR_ILLEGAL_NULL_POINTER);
}

std::string read_back(std::FILE* f) {
  std::rewind(f);
  std::string s;
  char buf[256];
  size_t n;
  while ((n = std::fread(buf, 1, sizeof buf, f)) > 0) s.append(buf, n);
  return s;
}

TEST(DebugPrinters, StreamsAndBuffers) {
  std::FILE* f = std::tmpfile();
  ASSERT_NE(f, nullptr);
  EXPECT_EQ(QZprintlog(f, 1, "value %d", 42), 0);
  EXPECT_EQ(QZprintlog(f, 0, "hidden"), 0);
  const std::string logged = read_back(f);
  EXPECT_TRUE(std::regex_match(
      logged, std::regex(R"(QZdebug\|[A-Z][a-z]{2} [A-Z][a-z]{2}[ 0-9]{3} \d\d:\d\d:\d\d \d{4}\|value 42)")))
      << logged;
  std::fclose(f);

  f = std::tmpfile();
  EXPECT_EQ(QZdfprintf(f, 1, "x=%d", 9), 0);
  EXPECT_EQ(read_back(f), "\nThread00:x=9");
  std::fclose(f);

  char small[13];
  EXPECT_EQ(QZdsprintf(small, sizeof small, "%s", "abc"), 0);
  EXPECT_STREQ(small, "Thread00:abc");
  EXPECT_EQ(QZdsprintf(small, sizeof small, "%s", "abcdefgh"), QZERR_ARRAY_OUT_OF_BOUNDS);
  EXPECT_STREQ(small, "Thread00:abc");
  EXPECT_EQ(QZdsprintf(small, 0, "x"), QZERR_ARRAY_OUT_OF_BOUNDS);
  EXPECT_EQ(QZdsprintf(nullptr, 10, "x"), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZprintlog(nullptr, 1, "x"), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZdfprintf(nullptr, 1, "x"), QZERR_ILLEGAL_NULL_POINTER);
}

}  // namespace
}  // namespace zento::test
