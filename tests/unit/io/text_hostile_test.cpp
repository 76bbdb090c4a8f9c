// Hostile LP and ZENTO files: each gives its code and its line through QZgetFileError, leaves
// the model empty, and the same model then reads a good file.
#include <gtest/gtest.h>

#include <fstream>

#include "io_test_util.h"

namespace zento::test {
namespace {


int read_with(QZmodel m, const std::string& reader, const std::string& path) {
  if (reader == "lp") return QZreadLPFile(m, path.c_str());
  if (reader == "ltx") return QZreadZENTOFile(m, path.c_str());
  return QZreadZENTOFileX(m, path.c_str());
}

TEST(TextHostile, EachFileGivesItsErrorAndLine) {
  Env env;
  const auto table = hostile_rows("text_hostile.csv");
  ASSERT_GE(table.size(), 30u);
  const std::string goodLp = data_dir() + "/examples/all_constructs.lp";
  ScratchDir dir;
  const std::string goodLtx = dir.write("good.ltx", "MIN\n x\nST\n x > 1\nEND\n");
  for (const HostileRow& c : table) {
    SCOPED_TRACE(c.file + " " + c.kind);
    const std::string path = instances_dir() + "/hostile/" + c.file;
    Model m(env.env);
    QZsetModelIntParameter(m, QZ_IPARAM_LP_PRINTLEVEL, 0);
    QZsetModelIntParameter(m, QZ_IPARAM_MIP_PRINTLEVEL, 0);
    EXPECT_EQ(read_with(m, c.kind, path), c.code);
    int line = -1;
    char text[QZ_FILE_ERROR_TEXT_MAXLEN];
    ASSERT_EQ(QZgetFileError(m, &line, text), 0);
    EXPECT_EQ(line, c.line);
    if (c.code == 0) {
      EXPECT_EQ(std::string(text), "");
      continue;
    }
    EXPECT_EQ(std::string(text), "Error at line " + std::to_string(c.line) + ".");
    // The model is left empty: it takes a good file.
    EXPECT_EQ(read_with(m, c.kind, c.kind == "lp" ? goodLp : goodLtx), 0);
  }
}

TEST(TextHostile, MissingFilesAndNullArguments) {
  Env env;
  Model m(env.env);
  EXPECT_EQ(QZreadLPFile(m, "/nonexistent/x.lp"), QZERR_CANNOT_OPEN_FILE);
  EXPECT_EQ(QZreadZENTOFile(m, "/nonexistent/x.ltx"), QZERR_CANNOT_OPEN_FILE);
  EXPECT_EQ(QZreadZENTOFileX(m, "/nonexistent/x.ltx"), QZERR_CANNOT_OPEN_FILE);
  EXPECT_EQ(QZreadLPFile(nullptr, "x.lp"), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZreadZENTOFile(m, nullptr), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZwriteZENTOFile(m, "/dev/null"), QZERR_NO_MODEL_LOADED);
  EXPECT_EQ(QZwriteMARLOFile(m, "/dev/null"), QZERR_INFO_NOT_AVAILABLE);
  EXPECT_EQ(QZwriteDualZENTOFile(m, "/dev/null", 1), QZERR_INFO_NOT_AVAILABLE);
}

}  // namespace
}  // namespace zento::test
