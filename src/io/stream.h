// The stream layer: one object for a plain file, a gzip file, a standard stream, the null
// device or a block of memory, so that every reader and writer has one code path.
#pragma once

#include <cstdarg>

#include <cstddef>
#include <memory>
#include <string>

#include "zento.h"

namespace zento::io {

struct Stream;

struct StreamCloser {
  void operator()(Stream* s) const;
};
using StreamPtr = std::unique_ptr<Stream, StreamCloser>;

// Opens `name` with a mode of "r", "rb", "w", "wb", "a" or "ab". Reading goes through zlib, which
// passes plain files through unchanged, so a gzip file reads like a plain one whatever its name;
// writing compresses when the last dot of the name starts ".gz". "/dev/null" is a stream that
// reads nothing and swallows writes; "/dev/stdin", "/dev/stdout", "/dev/stderr" are the
// standard streams. An invalid mode logs "Error: invalid mode string\n" and gives null.
Stream* qzs_fopen(QZenv env, const char* name, const char* mode);
// A read stream over a copy of `size` bytes (fuzzing, tests).
Stream* qzs_memopen(const void* data, size_t size);
// Closes and frees; 0, or nonzero when buffered output could not be written.
int qzs_fclose(Stream* s);

size_t qzs_fread(void* buf, size_t size, size_t count, Stream* s);
size_t qzs_fwrite(const void* buf, size_t size, size_t count, Stream* s);
// Reads up to n - 1 bytes up to and including a newline; null at the end of the input.
char* qzs_fgets(char* buf, int n, Stream* s);
int qzs_getc(Stream* s);  // EOF (-1) at the end
int qzs_feof(Stream* s);
int qzs_rewind(Stream* s);  // 0 or -1
// Formatted output into the stream; the count of bytes written, or -1.
int qzs_format(Stream* s, const char* fmt, ...) __attribute__((format(__printf__, 2, 3)));
int qzs_puts(Stream* s, const std::string& text);
// Appends printf-style text to `out`, of any length; the writers buffer through it.
void append_vformat(std::string& out, const char* fmt, va_list ap);
// Nonzero once a read or write has failed.
int qzs_ioerr(Stream* s);
// Text of the last system or zlib failure of the stream.
const char* qzs_strerror(Stream* s);
// Text of the last misuse (writing to an input stream, reading from an output stream).
const char* qzs_errmsg(Stream* s);
bool qzs_is_compressed(const Stream* s);

// True for a name whose last dot starts ".gz".
bool has_gz_suffix(const char* name);

// Directory (with its trailing slash), stem and extension (with its dot) of a path.
void QZbreakPathName(const std::string& path, std::string& dir, std::string& stem,
                     std::string& ext);

}  // namespace zento::io
