// Hostile model files: each fails with its file error at the right line, leaves the model
// unloaded, and the same model then reads a good file.
#include <gtest/gtest.h>
#include <zlib.h>

#include <cstring>
#include <fstream>

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

int layout_of(const std::string& name) {
  if (name == "free") return QZ_MPS_FREE;
  if (name == "fixed") return QZ_MPS_FIXED;
  return QZ_MPS_AUTO;
}

TEST(MpsHostile, EachFileGivesItsErrorAndLine) {
  Env env;
  const auto table = hostile_rows("hostile.csv");
  ASSERT_GE(table.size(), 30u);
  const std::string good = data_dir() + "/examples/tiny_lp.mps";
  for (const HostileRow& c : table) {
    SCOPED_TRACE(c.file + " " + c.kind);
    const std::string path = instances_dir() + "/hostile/" + c.file;
    Model m(env.env);
    EXPECT_EQ(QZreadMPSFile(m, path.c_str(), layout_of(c.kind)), c.code);
    int line = -1;
    char text[300];
    ASSERT_EQ(QZgetFileError(m, &line, text), 0);
    EXPECT_EQ(line, c.line);
    if (c.code == 0) {
      EXPECT_EQ(std::string(text), "");
      continue;
    }
    // The text is the line as read (up to a zero byte, for a binary line).
    const std::string expect = line_of(path, c.line);
    EXPECT_EQ(std::string(text), expect.substr(0, std::strlen(text)));
    EXPECT_TRUE(std::strlen(text) == expect.size() || expect.find('\0') != std::string::npos);
    int nVars = -1;
    EXPECT_EQ(QZgetDimensions(m, &nVars, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                              nullptr, nullptr, nullptr, nullptr),
              QZERR_INFO_NOT_AVAILABLE);
    // Still usable: the next read succeeds and clears the error.
    ASSERT_EQ(QZreadMPSFile(m, good.c_str(), QZ_MPS_AUTO), 0);
    QZgetFileError(m, &line, text);
    EXPECT_EQ(line, 0);
  }
}

TEST(MpsHostile, MissingFileAndBadArguments) {
  Env env;
  Model m(env.env);
  EXPECT_EQ(QZreadMPSFile(m, "/nonexistent/dir/model.mps", QZ_MPS_AUTO), QZERR_CANNOT_OPEN_FILE);
  EXPECT_EQ(QZreadMPSFile(nullptr, "x.mps", 0), QZERR_ILLEGAL_NULL_POINTER);
  EXPECT_EQ(QZreadMPSFile(m, nullptr, 0), QZERR_ILLEGAL_NULL_POINTER);
  const std::string good = data_dir() + "/examples/tiny_lp.mps";
  EXPECT_EQ(QZreadMPSFile(m, good.c_str(), 7), QZERR_PARAM_OUT_OF_RANGE);
  ASSERT_EQ(QZreadMPSFile(m, good.c_str(), QZ_MPS_FREE), 0);
  EXPECT_EQ(QZreadMPSFile(m, good.c_str(), QZ_MPS_FREE), QZERR_ALREADY_LOADED);
  int line = 5;
  char text[300] = "x";
  QZgetFileError(nullptr, &line, text);
  EXPECT_EQ(line, 0);
  EXPECT_STREQ(text, "");
}

TEST(MpsHostile, FortranTwinsPassThrough) {
  Env env;
  Model m(env.env);
  QZmodel handle = m.m;
  int layout = QZ_MPS_AUTO;
  const std::string good = data_dir() + "/examples/tiny_lp.mps";
  EXPECT_EQ(qzreadmpsfile_(&handle, good.c_str(), &layout), 0);
  EXPECT_EQ(qzreadmpsfile_(&handle, good.c_str(), &layout), QZERR_ALREADY_LOADED);
  int fixed = QZ_MPS_FIXED;
  EXPECT_EQ(qzwritempsfile_(&handle, "/dev/null", &fixed), 0);
}

}  // namespace
}  // namespace zento::test
