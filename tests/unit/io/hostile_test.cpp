// Hostile model files for every reader: each fails with its file error at the right line,
// leaves the model unloaded, and the same model then reads a good file.
#include <gtest/gtest.h>
#include <zlib.h>

#include <cstring>

#include "io_test_util.h"

namespace zento::test {
namespace {

// Line `n` (from 1) of a file as QZgetFileError gives it: at most 255 bytes, CR as a blank.
std::string line_of(const std::string& path, int n) {
  gzFile gz = gzopen(path.c_str(), "rb");
  std::string all;
  char buf[4096];
  int got = 0;
  while (gz && (got = gzread(gz, buf, sizeof buf)) > 0) all.append(buf, static_cast<size_t>(got));
  if (gz) gzclose(gz);
  std::stringstream in(all);
  std::string s;
  for (int k = 0; k < n && std::getline(in, s); ++k) {
  }
  for (char& c : s)
    if (c == '\r') c = ' ';
  return s.substr(0, QZ_FILE_ERROR_TEXT_MAXLEN - 1);
}

// The reader a table row names: an MPS layout, or one of the text readers.
int read_with(QZmodel m, const std::string& kind, const std::string& path) {
  if (kind == "lp") return QZreadLPFile(m, path.c_str());
  if (kind == "ltx") return QZreadZENTOFile(m, path.c_str());
  if (kind == "grammar") return QZreadZENTOFileX(m, path.c_str());
  const int layout = kind == "free" ? QZ_MPS_FREE : kind == "fixed" ? QZ_MPS_FIXED : QZ_MPS_AUTO;
  return QZreadMPSFile(m, path.c_str(), layout);
}

TEST(Hostile, EachFileGivesItsErrorAndLine) {
  Env env;
  ScratchDir dir;
  const std::string goodMps = data_dir() + "/examples/tiny_lp.mps";
  const std::string goodLp = data_dir() + "/examples/all_constructs.lp";
  const std::string goodLtx = dir.write("good.ltx", "MIN\n x\nST\n x > 1\nEND\n");
  for (const char* csv : {"hostile.csv", "text_hostile.csv"}) {
    const bool mps = std::strcmp(csv, "hostile.csv") == 0;
    const auto table = hostile_rows(csv);
    ASSERT_GE(table.size(), 30u) << csv;
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
      if (mps) {
        // The text is the line as read (up to a zero byte, for a binary line).
        const std::string expect = line_of(path, c.line);
        EXPECT_EQ(std::string(text), expect.substr(0, std::strlen(text)));
        EXPECT_TRUE(std::strlen(text) == expect.size() || expect.find('\0') != std::string::npos);
      } else {
        EXPECT_EQ(std::string(text), "Error at line " + std::to_string(c.line) + ".");
      }
      int nVars = -1;
      EXPECT_EQ(QZgetDimensions(m, &nVars, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                nullptr, nullptr, nullptr, nullptr),
                QZERR_INFO_NOT_AVAILABLE);
      // Still usable: the next read succeeds and clears the error.
      const std::string& good = mps ? goodMps : c.kind == "lp" ? goodLp : goodLtx;
      ASSERT_EQ(read_with(m, mps ? "auto" : c.kind, good), 0);
      QZgetFileError(m, &line, text);
      EXPECT_EQ(line, 0);
    }
  }
}

TEST(Hostile, MissingFilesAndBadArguments) {
  Env env;
  Model m(env.env);
  EXPECT_EQ(QZreadMPSFile(m, "/nonexistent/dir/model.mps", QZ_MPS_AUTO), QZERR_CANNOT_OPEN_FILE);
  EXPECT_EQ(QZreadLPFile(m, "/nonexistent/x.lp"), QZERR_CANNOT_OPEN_FILE);
  EXPECT_EQ(QZreadZENTOFile(m, "/nonexistent/x.ltx"), QZERR_CANNOT_OPEN_FILE);
  EXPECT_EQ(QZreadZENTOFileX(m, "/nonexistent/x.ltx"), QZERR_CANNOT_OPEN_FILE);
  EXPECT_EQ(QZreadMPSFile(nullptr, "x.mps", 0), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZreadLPFile(nullptr, "x.lp"), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZreadMPSFile(m, nullptr, 0), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZreadZENTOFile(m, nullptr), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZwriteZENTOFile(m, "/dev/null"), QZERR_NO_MODEL_LOADED);
  EXPECT_EQ(QZwriteMARLOFile(m, "/dev/null"), QZERR_INFO_NOT_AVAILABLE);
  EXPECT_EQ(QZwriteDualZENTOFile(m, "/dev/null", 1), QZERR_INFO_NOT_AVAILABLE);
  const std::string good = data_dir() + "/examples/tiny_lp.mps";
  EXPECT_EQ(QZreadMPSFile(m, good.c_str(), 7), QZERR_PARAM_OUT_OF_RANGE);
  ASSERT_EQ(QZreadMPSFile(m, good.c_str(), QZ_MPS_FREE), 0);
  EXPECT_EQ(QZreadMPSFile(m, good.c_str(), QZ_MPS_FREE), QZERR_ALREADY_LOADED);
  int line = 5;
  char text[300] = "x";
  QZgetFileError(nullptr, &line, text);
  EXPECT_EQ(line, 0);
  EXPECT_STREQ(text, "");
  // The Fortran twins pass through.
  Model f(env.env);
  QZmodel handle = f.m;
  int layout = QZ_MPS_AUTO, fixed = QZ_MPS_FIXED;
  EXPECT_EQ(qzreadmpsfile_(&handle, good.c_str(), &layout), 0);
  EXPECT_EQ(qzreadmpsfile_(&handle, good.c_str(), &layout), QZERR_ALREADY_LOADED);
  EXPECT_EQ(qzwritempsfile_(&handle, "/dev/null", &fixed), 0);
}

}  // namespace
}  // namespace zento::test
