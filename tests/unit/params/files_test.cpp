// Parameter files: round trips, the line rules, malformed files and the AsciiDoc listing.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "core/env.h"
#include "core/model.h"
#include "core/params/param_access.h"
#include "core/params/param_files.h"
#include "param_test_util.h"

namespace zento::test {
namespace {

class ParamFiles : public EnvFixture {
 protected:
  std::string dir;
  void SetUp() override {
    EnvFixture::SetUp();
    char tmpl[] = "/tmp/zento_params_XXXXXX";
    ASSERT_NE(mkdtemp(tmpl), nullptr);
    dir = tmpl;
  }
  void TearDown() override {
    std::error_code ec;
    std::filesystem::remove_all(dir, ec);
    EnvFixture::TearDown();
  }
  std::string path(const char* name) { return dir + "/" + name; }
  std::string write(const char* name, const std::string& text) {
    const std::string p = path(name);
    std::ofstream(p) << text;
    return p;
  }
  static std::string slurp(const std::string& p) {
    std::ifstream in(p);
    std::stringstream ss;
    ss << in.rdbuf();
    return ss.str();
  }
  // Gives every model-settable row a value other than its default.
  void change_everything(QZmodel m) {
    for (const ParItem& r : registry_rows()) {
      if (!settable_at(r, QZ_PARCLASS_MODEL)) continue;
      if (is_string(r)) {
        ASSERT_EQ(QZsetModelStocParameterChar(m, r.xxx_id, "X%03d"), 0);
        continue;
      }
      auto v = other_value(r);
      if (!v) continue;
      int iv = static_cast<int>(*v);
      double dv = *v;
      ASSERT_EQ(QZsetModelParameter(m, r.xxx_id,
                                    r.xxx_type == QZ_INT_PARAMETER_TYPE
                                        ? static_cast<void*>(&iv)
                                        : static_cast<void*>(&dv)),
                0)
          << r.xxx_szid;
    }
  }
  static std::vector<std::string> texts(QZmodel m) {
    std::vector<std::string> out;
    for (const ParItem& it : m->AllPamItems) out.push_back(param_value_text(it));
    return out;
  }
};

TEST_F(ParamFiles, WrittenFileReadIntoAFreshModelReproducesEveryValue) {
  QZmodel src = new_model();
  change_everything(src);
  // Values that need every digit to survive the trip.
  ASSERT_EQ(QZsetModelDouParameter(src, QZ_DPARAM_MIP_RELOPTTOL, 0.1234567890123456789), 0);
  ASSERT_EQ(QZsetModelIntParameter(src, QZ_IPARAM_SOLVER_USECUTOFFVAL, 0), 0);
  const std::string file = path("all.par");
  ASSERT_EQ(QZwriteModelParameter(src, file.c_str()), 0);
  QZmodel dst = new_model();
  ASSERT_EQ(QZreadModelParameter(dst, file.c_str()), 0);
  EXPECT_EQ(snapshot(dst->AllPamItems), snapshot(src->AllPamItems));
  EXPECT_EQ(texts(dst), texts(src));
  EXPECT_EQ(dst->SplexPam.solver_usecutoffval, 0);

  // Unchanged models write only comments, and reading that back is a no-op.
  QZmodel plain = new_model();
  const std::string quiet = path("quiet.par");
  ASSERT_EQ(QZwriteModelParameter(plain, quiet.c_str()), 0);
  const std::string text = slurp(quiet);
  EXPECT_EQ(text.rfind("!!!!!!!!", 0), 0u);
  EXPECT_NE(text.find("ZENTO API 1300. Each line contains"), std::string::npos);
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);)
    EXPECT_TRUE(line.empty() || line[0] == '!') << line;
  const auto before = snapshot(src->AllPamItems);
  ASSERT_EQ(QZreadModelParameter(src, quiet.c_str()), 0);
  EXPECT_EQ(snapshot(src->AllPamItems), before);
  for (QZmodel* m : {&src, &dst, &plain}) QZdeleteModel(m);
}

TEST_F(ParamFiles, LineRules) {
  QZmodel m = new_model();
  const std::string file = write("rules.par",
                                 "! a comment line\n"
                                 "QZ_IPARAM_LP_SCALE 2\n"               // no "=": not a setting
                                 "   QZ_IPARAM_MIP_PRINTLEVEL=7   \n"    // blanks are optional
                                 "QZ_IPARAM_MIP_PRINTLEVEL = 9\n"        // the first line counts
                                 "qz_iparam_lp_printlevel = 5\n"         // the case must match
                                 "QZ_DPARAM_SOLVER_FEASTOL = 1e-8 ! tighter\n"
                                 "QZ_IPARAM_NOT_A_PARAMETER = 3\n"
                                 "QZ_IPARAM_DEFAULT_SEED = 99\n"         // environment only
                                 "QZ_IPARAM_VER_MAJOR = 99\n"            // read only
                                 "QZ_SPARAM_STOC_FMT_NODE_NAME = ND%05d\n");
  ASSERT_EQ(QZreadModelParameter(m, file.c_str()), 0);
  EXPECT_EQ(m->SplexPam.lp_scale, -1);
  EXPECT_EQ(m->BandBPam.mip_printlevel, 7);
  EXPECT_EQ(m->SplexPam.lp_printlevel, 2);
  EXPECT_EQ(m->SplexPam.solver_feastol, 1e-8);
  EXPECT_EQ(m->SolverPam.default_seed, 1031);
  EXPECT_EQ(m->SPPam.stoc_fmt_node_name, "ND%05d");
  EXPECT_EQ(m->fileErrorLine, 0);

  const std::string comments = write("comments.par", "! only\n!comments\n\n");
  const auto before = snapshot(m->AllPamItems);
  EXPECT_EQ(QZreadModelParameter(m, comments.c_str()), 0);
  EXPECT_EQ(snapshot(m->AllPamItems), before);
  EXPECT_EQ(QZreadModelParameter(m, path("missing.par").c_str()), QZERR_CANNOT_OPEN_FILE);
  EXPECT_EQ(QZreadModelParameter(m, nullptr), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZreadModelParameter(nullptr, file.c_str()), QZERR_ILLEGAL_NULL_POINTER);
  QZdeleteModel(&m);
}

TEST_F(ParamFiles, MalformedAndRefusedLinesReportTheirLine) {
  QZmodel m = new_model();
  struct Case {
    const char* text;
    int code;
    int line;
    bool anyChange;
  };
  const Case cases[] = {
      {"! x\nQZ_IPARAM_LP_SCALE = 1\nQZ_IPARAM_MIP_PRINTLEVEL = abc\n", QZERR_ERROR_IN_INPUT, 3,
       false},
      {"QZ_IPARAM_LP_SCALE = 1.5\n", QZERR_ERROR_IN_INPUT, 1, false},
      {"\n\nQZ_DPARAM_MIP_INTTOL = \n", QZERR_ERROR_IN_INPUT, 3, false},
      {"QZ_IPARAM_LP_SCALE = 2 3\n", QZERR_ERROR_IN_INPUT, 1, false},
      {"QZ_IPARAM_LP_SCALE = 99999999999\n", QZERR_ERROR_IN_INPUT, 1, false},
      // Well formed but out of range: the other settings still apply.
      {"QZ_IPARAM_MIP_PRINTLEVEL = 4\n\nQZ_IPARAM_LP_SCALE = 9\n", QZERR_PARAM_OUT_OF_RANGE, 3,
       true},
      {"QZ_IPARAM_OBJSENSE = 0\n", QZERR_BAD_OBJECTIVE_SENSE, 1, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    const std::string file = write("bad.par", c.text);
    const auto before = snapshot(m->AllPamItems);
    EXPECT_EQ(QZreadModelParameter(m, file.c_str()), c.code);
    EXPECT_EQ(m->fileErrorLine, c.line);
    EXPECT_FALSE(m->fileErrorText.empty());
    EXPECT_EQ(snapshot(m->AllPamItems) != before, c.anyChange);
    EXPECT_EQ(m->SplexPam.lp_scale, -1);
  }
  EXPECT_EQ(m->fileErrorText, "QZ_IPARAM_OBJSENSE = 0");
  EXPECT_EQ(m->BandBPam.mip_printlevel, 4);
  QZdeleteModel(&m);
}

TEST_F(ParamFiles, EnvironmentFiles) {
  ASSERT_EQ(QZsetEnvIntParameter(env, QZ_IPARAM_LP_SCALE, 3), 0);
  const std::string file = path("env.par");
  ASSERT_EQ(QZwriteEnvParameter(env, file.c_str()), 0);
  const std::string text = slurp(file);
  EXPECT_NE(text.find("ZENTO API. Each line contains"), std::string::npos);
  EXPECT_NE(text.find("!QZ_IPARAM_LP_SCALE"), std::string::npos);
  EXPECT_EQ(text.find("\nQZ_"), std::string::npos);  // every setting commented out

  const std::string in = write("envin.par",
                               "QZ_IPARAM_DEFAULT_SEED = 77\n"
                               "QZ_IPARAM_OBJSENSE = -1\n"  // model only
                               "QZ_DPARAM_MIP_INTTOL = 1e-7\n");
  ASSERT_EQ(QZreadEnvParameter(env, in.c_str()), 0);
  EXPECT_EQ(env->SolverPam.default_seed, 77);
  EXPECT_EQ(env->SolverPam.objsense, 1);
  EXPECT_EQ(env->BandBPam.mip_inttol, 1e-7);
  QZmodel m = new_model();
  EXPECT_EQ(m->BandBPam.mip_inttol, 1e-7);
  EXPECT_EQ(QZreadEnvParameter(env, write("bad.par", "QZ_DPARAM_MIP_INTTOL = x\n").c_str()),
            QZERR_ERROR_IN_INPUT);
  EXPECT_EQ(env->BandBPam.mip_inttol, 1e-7);
  QZdeleteModel(&m);
}

TEST_F(ParamFiles, NumericFileArgumentLogsValuesOnce) {
  QZmodel m = new_model();
  const std::filesystem::path home = std::filesystem::current_path();
  std::filesystem::current_path(dir);
  const int rc = QZwriteModelParameter(m, "17.5");
  std::filesystem::current_path(home);
  ASSERT_EQ(rc, 0);
  const std::string csv = slurp(path("17.param.csv"));
  std::istringstream lines(csv);
  std::string names, values;
  std::getline(lines, names);
  std::getline(lines, values);
  EXPECT_EQ(names.rfind("QZ_IPARAM_OBJSENSE,", 0), 0u);
  EXPECT_EQ(values.rfind("1,0.5,", 0), 0u);
  // An existing log is left alone.
  write("17.param.csv", "keep");
  std::filesystem::current_path(dir);
  const int again = QZwriteModelParameter(m, "17.5");
  std::filesystem::current_path(home);
  ASSERT_EQ(again, 0);
  EXPECT_EQ(slurp(path("17.param.csv")), "keep");
  m->isWorkingCopy = true;  // internal copies write nothing
  EXPECT_EQ(QZwriteModelParameter(m, path("none.par").c_str()), 0);
  EXPECT_FALSE(std::ifstream(path("none.par")).good());
  EXPECT_EQ(QZwriteModelParameter(m, nullptr), 0);
  m->isWorkingCopy = false;
  EXPECT_EQ(QZwriteModelParameter(m, nullptr), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZwriteModelParameter(m, (dir + "/no/such/dir.par").c_str()), QZERR_CANNOT_OPEN_FILE);
  QZdeleteModel(&m);
}

TEST_F(ParamFiles, ReferenceModelLimitsTheLog) {
  std::vector<std::string> lines;
  QZmodel m = new_model();
  ASSERT_EQ(QZsetModelLogfunc(
                m,
                [](QZmodel, char* line, void* data) {
                  static_cast<std::vector<std::string>*>(data)->push_back(line);
                },
                &lines),
            0);
  const std::string file = write("two.par",
                                 "QZ_IPARAM_MIP_PRINTLEVEL = 3\n"
                                 "QZ_DPARAM_MIP_INTTOL = 1e-6\n");
  ASSERT_EQ(QZreadModelParameter(m, file.c_str()), 0);
  auto count = [&](const char* what) {
    int n = 0;
    for (const auto& l : lines) n += l.find(what) != std::string::npos;
    return n;
  };
  EXPECT_EQ(count("MIP print level"), 1);
  EXPECT_EQ(count("MIP integrality tolerance"), 1);
  QZmodel ref = new_model();
  ASSERT_EQ(QZsetParModel(m, ref), 0);
  lines.clear();
  ASSERT_EQ(QZreadModelParameter(m, file.c_str()), 0);
  EXPECT_EQ(count("MIP print level"), 1);          // differs from the reference
  EXPECT_EQ(count("MIP integrality tolerance"), 0);  // equals it
  QZdeleteModel(&ref);
  QZdeleteModel(&m);
}

TEST_F(ParamFiles, AsciiDocListsEveryParameter) {
  const std::string file = path("params.adoc");
  ASSERT_EQ(QZwriteParameterAsciiDoc(env, file.c_str()), 0);
  const std::string text = slurp(file);
  for (const ParItem& r : registry_rows())
    EXPECT_NE(text.find(std::string("`") + r.xxx_szid + "`"), std::string::npos) << r.xxx_szid;
  EXPECT_NE(text.find("== Mixed-integer"), std::string::npos);
  EXPECT_EQ(QZwriteParameterAsciiDoc(env, nullptr), QZERR_ILLEGAL_NULL_POINTER);
}

TEST_F(ParamFiles, TunerFormsReadAnyCaseAndKeepOutOfRangeValues) {
  QZmodel m = new_model();
  const std::string file = write("tuner.par",
                                 "! comment\n"
                                 "qz_iparam_lp_scale = 2\n"
                                 "QZ_IPARAM_MIP_NODESELRULE = 11\n"
                                 "QZ_DPARAM_MIP_RELOPTTOL = 0.001\n");
  ASSERT_EQ(QZI_ReadParFile(m->AllPamItems, file.c_str(), env), 0);
  EXPECT_EQ(m->SplexPam.lp_scale, 2);
  EXPECT_EQ(m->BandBPam.mip_nodeselrule, 11);
  EXPECT_EQ(m->BandBPam.mip_relopttol, 0.001);
  EXPECT_EQ(QZI_ReadParFile(m->AllPamItems, path("none").c_str(), env), QZERR_CANNOT_OPEN_FILE);
  FILE* out = std::tmpfile();
  ASSERT_NE(out, nullptr);
  ASSERT_EQ(QZI_WritePar(m->AllPamItems, out), 0);
  EXPECT_EQ(std::ftell(out) > 454 * 40, true);
  std::fclose(out);
  QZdeleteModel(&m);
}

}  // namespace
}  // namespace zento::test
