// Error messages: the built-in table, the shipped qzerr.txt and overrides from CZENTO.
#include <cstdio>
#include <cstring>
#include <string>

#include "core/messages.h"
#include "info_test_util.h"

namespace zento::test {
namespace {

std::string message(QZenv env, int code, int* rc = nullptr) {
  char buf[QZ_MAX_ERROR_MESSAGE_LENGTH];
  std::memset(buf, 'x', sizeof buf);
  const int r = QZgetErrorMessage(env, code, buf);
  if (rc) *rc = r;
  return buf;
}

// Texts as the users of the library see them, odd spellings and leading blanks included.
struct Expected {
  int code;
  const char* text;
};
constexpr Expected kExact[] = {
    {0, "No errors."},
    {2001, "Could not allocate enough memory."},
    {2009, "Requested information is not available."},
    {2010, "Illegal NULL pointer as argument."},
    {2023, "User interrupt."},
    {2029, "Specified feature is not yet supported or not compatible with the model type."},
    {2041, "Specified variable type is invalid."},
    {2344, "Specified probabability value is invalid."},
    {2383, " No chance-constraints were loaded."},
    {2584, "Extra value in the COLUNMS section of the MPS file."},
    {2593, "Multiple objective funtion rows in the ROWS section of the MPS file."},
    {2700, "Scripting engine error."},
};

TEST(Messages, ExactTextsWithAndWithoutEnvironment) {
  ScopedEnvVar noFile("CZENTO", "/nonexistent-zento-folder");
  EnvModel em;
  for (const Expected& e : kExact) {
    int rc = -1;
    EXPECT_EQ(message(em.env, e.code, &rc), e.text) << e.code;
    EXPECT_EQ(rc, 0);
    EXPECT_EQ(message(nullptr, e.code, &rc), e.text) << e.code;
    EXPECT_EQ(rc, 0);
  }
}

TEST(Messages, CodesOutsideTheRange) {
  struct Case {
    int code;
    const char* text;
    int rc;
  } cases[] = {{0, "No errors.", 0},         {-1, "Unknown error.", QZERR_BAD_ERROR_CODE},
               {2751, "Unknown error.", QZERR_BAD_ERROR_CODE},
               {1 << 30, "Unknown error.", QZERR_BAD_ERROR_CODE},
               {2100, "", 0},                {1, "", 0}};
  EnvModel em;
  for (const Case& c : cases)
    for (QZenv env : {em.env, static_cast<QZenv>(nullptr)}) {
      int rc = -1;
      EXPECT_EQ(message(env, c.code, &rc), c.text) << c.code;
      EXPECT_EQ(rc, c.rc) << c.code;
    }
  EXPECT_EQ(QZgetErrorMessage(em.env, 2001, nullptr), QZERR_ILLEGAL_NULL_POINTER);
}

TEST(Messages, ShippedFileMatchesTheBuiltInTable) {
  std::FILE* f = std::fopen(ZENTO_SOURCE_DIR "/share/qzerr.txt", "rb");
  ASSERT_NE(f, nullptr);
  const std::vector<std::string> records = read_message_records(f);
  std::fclose(f);
  ASSERT_EQ(records.size(), 2751u);
  for (int code = 0; code < 2751; ++code) {
    const char* builtin = builtin_message_text(code);
    EXPECT_EQ(records[static_cast<size_t>(code)], builtin ? builtin : "") << code;
  }
  // Loaded through CZENTO, the shipped file changes no message, with or without environment.
  ScopedEnvVar dir("CZENTO", ZENTO_SOURCE_DIR "/share");
  EnvModel em;
  for (int code = 0; code <= 2750; ++code) {
    const char* builtin = builtin_message_text(code);
    ASSERT_EQ(message(em.env, code), builtin ? builtin : "") << code;
    ASSERT_EQ(message(nullptr, code), builtin ? builtin : "") << code;
  }
}

TEST(Messages, FileInCzentoOverridesRecordByRecord) {
  TempDir dir;
  // Records 0 and 1 replace codes 0 and 1 whatever number they carry; the file ends there,
  // so every later code keeps its built-in text.
  dir.write("qzerr.txt", "comment without records\n{7, \"Alles gut.\"}\n{0,\"Eins\"} trailing\n");
  ScopedEnvVar var("CZENTO", dir.path());
  EnvModel em;
  for (QZenv env : {em.env, static_cast<QZenv>(nullptr)}) {
    EXPECT_EQ(message(env, 1), "Eins");
    EXPECT_EQ(message(env, 2001), "Could not allocate enough memory.");
    EXPECT_EQ(message(env, 2023), "User interrupt.");
  }
  // Code 0 always reads "No errors." through the entry.
  EXPECT_EQ(message(em.env, 0), "No errors.");
  EXPECT_STREQ(message_text(em.env, 0), "Alles gut.");
}

TEST(Messages, MalformedAndOversizedRecords) {
  TempDir dir;
  const std::string longText(5000, 'a');
  const std::string content = "{0, \"zero\"}\n{1, \"" + longText + "\"}\n{2 \"no comma\"}\n{3, \"x\"}\n";
  const std::string path = dir.write("qzerr.txt", content);
  std::FILE* f = std::fopen(path.c_str(), "rb");
  ASSERT_NE(f, nullptr);
  const std::vector<std::string> records = read_message_records(f);
  std::fclose(f);
  // The record without a comma ends the file; the long text is cut to what a buffer holds.
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(records[0], "zero");
  EXPECT_EQ(records[1].size(), static_cast<size_t>(QZ_MAX_ERROR_MESSAGE_LENGTH - 1));

  dir.write("qzerr.txt", "{0, \"zero\"}\n{1, \"never closed");
  ScopedEnvVar var("CZENTO", dir.path());
  EnvModel em;
  EXPECT_STREQ(message_text(em.env, 0), "zero");
  EXPECT_EQ(message(em.env, 1), "");
  EXPECT_EQ(message(em.env, 2010), "Illegal NULL pointer as argument.");
}

TEST(Messages, RecordsBeyondTheTableAreNotRead) {
  TempDir dir;
  std::string content;
  for (int k = 0; k < 3000; ++k) content += "{" + std::to_string(k) + ", \"m" + std::to_string(k) + "\"}\n";
  const std::string path = dir.write("qzerr.txt", content);
  std::FILE* f = std::fopen(path.c_str(), "rb");
  ASSERT_NE(f, nullptr);
  EXPECT_EQ(read_message_records(f).size(), static_cast<size_t>(kMessageSlots));
  std::fclose(f);
  ScopedEnvVar var("CZENTO", dir.path());
  EnvModel em;
  EXPECT_EQ(message(em.env, 2750), "m2750");
}

}  // namespace
}  // namespace zento::test
