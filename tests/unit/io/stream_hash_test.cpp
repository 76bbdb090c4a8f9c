// The stream layer (plain, gzip, null, memory; misuse) and the readers' name table.
#include <gtest/gtest.h>

#include <string>

#include "io/hashtable.h"
#include "io/line_reader.h"
#include "io/stream.h"
#include "io_test_util.h"

namespace zento::test {
namespace {

using namespace zento::io;

TEST(Stream, GzipWrittenByNameReadsBackByContent) {
  Env env;
  ScratchDir dir;
  const std::string text = "line one\nline two\n";
  for (const char* name : {"plain.txt", "packed.gz", "model.mps.gz"}) {
    const std::string f = dir.file(name);
    StreamPtr w(qzs_fopen(env.env, f.c_str(), "w"));
    ASSERT_TRUE(w);
    EXPECT_EQ(qzs_format(w.get(), "line %s\n", "one"), 9);
    EXPECT_EQ(qzs_puts(w.get(), "line two\n"), 9);
    EXPECT_EQ(qzs_fclose(w.release()), 0);
    const bool gz = has_gz_suffix(name);
    EXPECT_EQ(slurp(f).substr(0, 2) == "\x1f\x8b", gz) << name;
    StreamPtr r(qzs_fopen(env.env, f.c_str(), "r"));
    char buf[64];
    ASSERT_NE(qzs_fgets(buf, sizeof buf, r.get()), nullptr);
    EXPECT_STREQ(buf, "line one\n");
    EXPECT_EQ(qzs_getc(r.get()), 'l');
    ASSERT_EQ(qzs_rewind(r.get()), 0);
    char all[64] = {};
    EXPECT_EQ(qzs_fread(all, 1, sizeof all, r.get()), text.size());
    EXPECT_EQ(std::string(all), text);
    EXPECT_EQ(qzs_feof(r.get()), 1);
  }
}

TEST(Stream, ModesDevicesAndMisuse) {
  Env env;
  ScratchDir dir;
  EXPECT_EQ(qzs_fopen(env.env, dir.file("x").c_str(), "rw"), nullptr);
  EXPECT_EQ(qzs_fopen(env.env, dir.file("missing").c_str(), "r"), nullptr);
  StreamPtr null(qzs_fopen(env.env, "/dev/null", "w"));
  ASSERT_TRUE(null);
  EXPECT_EQ(qzs_fwrite("abc", 1, 3, null.get()), 3u);
  StreamPtr in(qzs_fopen(env.env, "/dev/null", "r"));
  char c;
  EXPECT_EQ(qzs_fread(&c, 1, 1, in.get()), 0u);
  EXPECT_EQ(qzs_fwrite("x", 1, 1, in.get()), 0u);
  EXPECT_STREQ(qzs_errmsg(in.get()), "Attempt to write to input stream\n");
  EXPECT_EQ(qzs_fread(&c, 1, 1, null.get()), 0u);
  EXPECT_STREQ(qzs_errmsg(null.get()), "qzs_read: attempt to read from output stream\n");
  EXPECT_NE(qzs_ioerr(null.get()), 0);
  EXPECT_FALSE(has_gz_suffix("model.mps"));
  EXPECT_TRUE(has_gz_suffix("model.mps.gzip"));
}

TEST(Stream, PathPieces) {
  std::string d, s, e;
  QZbreakPathName("/a/b/model.mps.gz", d, s, e);
  EXPECT_EQ(d, "/a/b/");
  EXPECT_EQ(s, "model.mps");
  EXPECT_EQ(e, ".gz");
  QZbreakPathName("plain", d, s, e);
  EXPECT_EQ(d + "|" + s + "|" + e, "|plain|");
}

TEST(LineReader, CountsEveryLineAndKeepsLongLinesMeasured) {
  const std::string text = "* comment\n\nfirst\r\n" + std::string(300, 'x') + "\n  \nlast";
  StreamPtr s(qzs_memopen(text.data(), text.size()));
  LineReader lines(s.get(), "*");
  RawLine raw;
  ASSERT_TRUE(lines.next(raw));
  EXPECT_EQ(lines.line_number(), 3);
  EXPECT_STREQ(raw.text, "first ");
  EXPECT_EQ(raw.fullLen, 5);
  ASSERT_TRUE(lines.next(raw));
  EXPECT_EQ(raw.len, 256);
  EXPECT_EQ(raw.fullLen, 300);
  ASSERT_TRUE(lines.next(raw));
  EXPECT_EQ(lines.line_number(), 6);
  EXPECT_STREQ(raw.text, "last");
  EXPECT_FALSE(lines.next(raw));
}

TEST(LineReader, LinesAcrossBlocks) {
  // Lines that straddle the first block and the full block read whole and in order.
  std::string text;
  int n = 0;
  while (text.size() < 3 * 0x280000 / 2) text += "line " + std::to_string(n++) + "\n";
  StreamPtr s(qzs_memopen(text.data(), text.size()));
  LineReader lines(s.get(), "*");
  RawLine raw;
  int k = 0;
  while (lines.next(raw)) {
    ASSERT_EQ(std::string(raw.text), "line " + std::to_string(k)) << k;
    ++k;
  }
  EXPECT_EQ(k, n);
}

TEST(HashTable, InsertLookupAndClear) {
  // The high nibble is folded down, so long names stay in range.
  EXPECT_LT(HashTable_Hash("a fairly long name that folds"), 0x10000000u);
  HashTable t;
  ASSERT_EQ(HashTable_Initialize(t, 10), 0);
  for (int k = 0; k < 5000; ++k) {
    const std::string name = "R" + std::to_string(k);
    ASSERT_EQ(HashTable_Insert(t, name.c_str()), k);
  }
  EXPECT_EQ(HashTable_Insert(t, "R17"), -1);
  for (int k = 0; k < 5000; k += 7)
    EXPECT_EQ(HashTable_Lookup(t, ("R" + std::to_string(k)).c_str()), k);
  EXPECT_EQ(HashTable_Lookup(t, "R5000"), -1);
  EXPECT_STREQ(HashTable_Name(t, 4999), "R4999");
  EXPECT_EQ(HashTable_Initialize(t, 10), QZERR_INTERNAL_ERROR);
  QZclearHashTable(t);
  EXPECT_EQ(HashTable_Lookup(t, "R1"), -1);
  EXPECT_EQ(HashTable_Insert(t, "R1"), 0);
  HashTable_Delete(t);
  EXPECT_EQ(HashTable_Initialize(t, 10), 0);
}

}  // namespace
}  // namespace zento::test
