// QZgetFormattedInfo: the selector tables, format files and their faults.
#include <algorithm>
#include <string>
#include <vector>

#include "core/info.h"
#include "info_test_util.h"

namespace zento::test {
namespace {

struct Lines {
  std::vector<char> header = std::vector<char>(QZ_FORMATTED_INFO_MAXLEN, 'x');
  std::vector<char> data = std::vector<char>(QZ_FORMATTED_INFO_MAXLEN, 'x');
  int rc = 0;
  Lines(QZmodel m, const char* file, int selector) {
    rc = QZgetFormattedInfo(m, file, header.data(), data.data(), selector);
  }
  std::string h() const { return header.data(); }
  std::string d() const { return data.data(); }
};

// Each value ends its column with a comma (string columns in SQL mode excepted).
size_t columns(const std::string& s) { return static_cast<size_t>(std::count(s.begin(), s.end(), ',')); }

class Formatted : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(load_trivial(em.model), 0);
    ASSERT_EQ(QZoptimize(em.model, QZ_METHOD_FREE, nullptr), 0);
  }
  EnvModel em;
  TempDir dir;
};

TEST_F(Formatted, EverySelectorGivesHeaderAndDataOfItsColumns) {
  struct Case {
    int selector;
    size_t columns;
    const char* firstLabel;
  } cases[] = {{0, 13, "n_cons"},  {1, 18, "n_cons"},   {2, 22, "status"},  {3, 24, "n_vars"},
               {4, 19, "MIPstatus"}, {5, 18, "sNAME"},  {6, 18, "sNAME"},   {7, 27, "sNAME"},
               {8, 22, "sNAME"},   {9, 23, "sNAME"},    {11, 35, "sNAME"},  {12, 35, "sNAME"},
               {13, 23, "sNAME"},  {14, 17, "sNAME"},   {15, 20, "sNAME"},  {16, 19, "sNAME"}};
  for (const Case& c : cases) {
    Lines l(em.model, nullptr, c.selector);
    ASSERT_EQ(l.rc, 0) << c.selector;
    EXPECT_EQ(columns(l.h()), c.columns) << c.selector << ": " << l.h();
    EXPECT_EQ(columns(l.d()), c.columns) << c.selector << ": " << l.d();
    EXPECT_NE(l.h().find(c.firstLabel), std::string::npos) << c.selector;
    // Labels take the width of their values, so the columns line up.
    EXPECT_EQ(l.h().size(), l.d().size()) << c.selector << "\n" << l.h() << "\n" << l.d();
  }
}

TEST_F(Formatted, LpTableCarriesTheSolution) {
  Lines l(em.model, nullptr, 0);
  ASSERT_EQ(l.rc, 0);
  EXPECT_EQ(l.h().substr(0, 26), "      n_cons,      n_vars,");
  EXPECT_EQ(l.d().substr(0, 26), "           0,           3,");
  EXPECT_NE(l.d().find("3.00000000e+00,"), std::string::npos) << l.d();
}

TEST_F(Formatted, MissingRecordsLeaveEmptyColumns) {
  Lines l(em.model, nullptr, 4);  // MIP figures of a model that ran no MIP
  ASSERT_EQ(l.rc, 0);
  EXPECT_EQ(l.d().substr(0, 13), "            ,");
}

TEST_F(Formatted, BadSelectors) {
  for (int s : {-1, 17, 1000}) EXPECT_EQ(Lines(em.model, nullptr, s).rc, QZERR_PARAM_OUT_OF_RANGE) << s;
}

TEST_F(Formatted, ParameterListFollowsTheModelsValues) {
  ASSERT_EQ(QZsetModelDouParameter(em.model, QZ_DPARAM_SOLVER_FEASTOL, 2.5e-8), 0);
  Lines l(em.model, nullptr, 10);
  ASSERT_EQ(l.rc, 0);
  const std::string h = l.h(), d = l.d();
  const size_t at = h.find("QZ_DPARAM_SOLVER_FEASTOL,");
  ASSERT_NE(at, std::string::npos) << h;
  // The value sits in the same column of the data line as the name in the header.
  const size_t column = static_cast<size_t>(std::count(h.begin(), h.begin() + at, ','));
  size_t pos = 0;
  for (size_t k = 0; k < column; ++k) pos = d.find(',', pos) + 1;
  EXPECT_EQ(d.substr(pos, d.find(',', pos) - pos), "2.5e-08");
  EXPECT_EQ(std::count(h.begin(), h.end(), ','), std::count(d.begin(), d.end(), ','));
}

TEST_F(Formatted, NullArguments) {
  char h[64], d[64];
  EXPECT_EQ(QZgetFormattedInfo(nullptr, nullptr, h, d, 0), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZgetFormattedInfo(em.model, nullptr, nullptr, d, 0), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZgetFormattedInfo(em.model, nullptr, h, nullptr, 0), QZERR_ILLEGAL_NULL_POINTER);
}

TEST_F(Formatted, FormatFileRows) {
  struct Case {
    const char* what;
    const char* content;
    const char* header;  // nullptr: not checked
    const char* data;
  };
  const Case cases[] = {
      {"plain", "# label format key\nvars %5d QZ_IINFO_NUM_VARS\n\nobj;%8.3f;QZ_DINFO_POBJ\n"
                "kind\t%4s\tQZ_SINFO_MODEL_TYPE\nnorm %3d QZ_IPARAM_IIS_INFEAS_NORM\n"
                "lu %4d QZ_IPARAM_LU_NUM_CANDITS\n",
       " vars,     obj,kind,norm,  lu,", "    3,   3.000,  LP,  0,   4,"},
      // SQL mode quotes text.
      {"sql", "kind %s QZ_SINFO_MODEL_TYPE\n", nullptr, " 'LP', "},
      // The method carries the external solver's mark.
      {"external", "m %d QZ_IINFO_METHOD\n", nullptr, "2000,"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    em.model->IISPam.fmt_issql = std::string(c.what) == "sql";
    em.model->SplexPam.splex_use_external = std::string(c.what) == "external" ? 2 : 0;
    const std::string f = dir.write("rows.fmt", c.content);
    Lines l(em.model, f.c_str(), 999);  // the selector is not looked at
    ASSERT_EQ(l.rc, 0);
    if (c.header) {
      EXPECT_EQ(l.h(), c.header);
    }
    EXPECT_EQ(l.d(), c.data);
  }
}

TEST_F(Formatted, MalformedFormatFiles) {
  struct Case {
    const char* content;
    int rc;
  } cases[] = {
      {"a %d QZ_IINFO_NUM_VARS extra\n", QZERR_INTERNAL_ERROR},
      {"a %d\n", QZERR_ERROR_IN_INPUT},
      {"a %d QZ_IINFO_NO_SUCH_KEY\n", QZERR_ERROR_IN_INPUT},
      {"a %d QZ_IPARAM_NO_SUCH_PARAM\n", QZERR_ERROR_IN_INPUT},
      {"a %d SOMETHING_ELSE\n", QZERR_ERROR_IN_INPUT},
      {"a %s QZ_IINFO_NUM_VARS\n", QZERR_ERROR_IN_INPUT},
      {"a %d QZ_DINFO_POBJ\n", QZERR_ERROR_IN_INPUT},
      {"a %n QZ_IINFO_NUM_VARS\n", QZERR_ERROR_IN_INPUT},
      {"a %d%d QZ_IINFO_NUM_VARS\n", QZERR_ERROR_IN_INPUT},
      {"a %*d QZ_IINFO_NUM_VARS\n", QZERR_ERROR_IN_INPUT},
      {"a %ld QZ_IINFO_NUM_VARS\n", QZERR_ERROR_IN_INPUT},
      {"a %99999d QZ_IINFO_NUM_VARS\n", QZERR_ERROR_IN_INPUT},
      {"a plain QZ_IINFO_NUM_VARS\n", QZERR_ERROR_IN_INPUT},
      {"a %% QZ_IINFO_NUM_VARS\n", QZERR_ERROR_IN_INPUT},
      {"a %5.2%d QZ_IINFO_NUM_VARS\n", QZERR_ERROR_IN_INPUT},
  };
  for (const Case& c : cases) {
    const std::string f = dir.write("bad.fmt", c.content);
    Lines l(em.model, f.c_str(), 0);
    EXPECT_EQ(l.rc, c.rc) << c.content;
    EXPECT_EQ(l.h(), "") << c.content;
  }
  EXPECT_EQ(Lines(em.model, (dir.path() + "/missing.fmt").c_str(), 0).rc, QZERR_CANNOT_OPEN_FILE);
}

TEST_F(Formatted, OutputBeyondTheBufferLimitIsRefused) {
  std::string content;
  for (int i = 0; i < 1500; ++i) content += "label" + std::to_string(i) + " %12d QZ_IINFO_NUM_VARS\n";
  const std::string f = dir.write("big.fmt", content);
  Lines l(em.model, f.c_str(), 0);
  EXPECT_EQ(l.rc, QZERR_ARRAY_OUT_OF_BOUNDS);
}

TEST(ValueFormats, AcceptedConversions) {
  struct Case {
    const char* fmt;
    KeyType type;
    bool ok;
  } cases[] = {{"%d,", KeyType::kInt, true},        {"%-8i,", KeyType::kInt, true},
               {"%08x", KeyType::kInt, true},       {"%+.3e,", KeyType::kDouble, true},
               {"%g%%,", KeyType::kDouble, true},   {"%-24s,", KeyType::kString, true},
               {"%f", KeyType::kInt, false},        {"%d", KeyType::kString, false},
               {"%s", KeyType::kDouble, false},     {"", KeyType::kInt, false},
               {"%", KeyType::kInt, false},         {"%1000d", KeyType::kInt, false},
               {"%lf", KeyType::kDouble, false},    {"%p", KeyType::kInt, false}};
  for (const Case& c : cases) EXPECT_EQ(check_value_format(c.fmt, c.type), c.ok) << c.fmt;
}

}  // namespace
}  // namespace zento::test
