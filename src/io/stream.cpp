// Stream objects over stdio, zlib and memory.
#include "io/stream.h"

#include <zlib.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <vector>

#include "core/log.h"

namespace zento::io {

enum class Kind { kNull, kFile, kStd, kGz, kMemory };

struct Stream {
  Kind kind = Kind::kNull;
  bool input = true;
  bool eof = false;
  bool failed = false;
  FILE* file = nullptr;
  gzFile gz = nullptr;
  std::vector<char> mem;
  size_t memPos = 0;
  std::string lastError;
  std::string misuse;
};

void StreamCloser::operator()(Stream* s) const { qzs_fclose(s); }

bool has_gz_suffix(const char* name) {
  const char* dot = std::strrchr(name, '.');
  return dot != nullptr && std::strncmp(dot, ".gz", 3) == 0;
}

namespace {

bool valid_mode(const char* mode) {
  static const char* const kModes[] = {"r", "rb", "w", "wb", "a", "ab"};
  for (const char* m : kModes)
    if (std::strcmp(mode, m) == 0) return true;
  return false;
}

void note_errno(Stream* s) {
  s->failed = true;
  s->lastError = std::strerror(errno);
}

void note_gz(Stream* s) {
  s->failed = true;
  int code = 0;
  const char* text = s->gz ? gzerror(s->gz, &code) : "zlib failure";
  s->lastError = code == Z_ERRNO ? std::strerror(errno) : text;
}

}  // namespace

Stream* qzs_fopen(QZenv env, const char* name, const char* mode) {
  if (name == nullptr || mode == nullptr) return nullptr;
  if (!valid_mode(mode)) {
    QZlogenv(env, 1, "Error: invalid mode string\n");
    return nullptr;
  }
  auto s = std::make_unique<Stream>();
  s->input = mode[0] == 'r';
  if (std::strcmp(name, "/dev/null") == 0) {
    s->kind = Kind::kNull;
    return s.release();
  }
  if (std::strcmp(name, "/dev/stdin") == 0 || std::strcmp(name, "/dev/stdout") == 0 ||
      std::strcmp(name, "/dev/stderr") == 0) {
    s->kind = Kind::kStd;
    s->file = name[5] == 's' && name[8] == 'i' ? stdin : (name[8] == 'o' ? stdout : stderr);
    return s.release();
  }
  if (s->input || has_gz_suffix(name)) {
    // zlib reads plain files transparently; it only compresses when asked to write.
    const char* zmode = s->input ? "rb" : (mode[0] == 'a' ? "ab" : "wb");
    s->gz = gzopen(name, zmode);
    if (s->gz == nullptr) return nullptr;
    gzbuffer(s->gz, 1 << 17);
    s->kind = Kind::kGz;
    return s.release();
  }
  s->file = std::fopen(name, mode[0] == 'a' ? "ab" : "wb");
  if (s->file == nullptr) return nullptr;
  s->kind = Kind::kFile;
  return s.release();
}

Stream* qzs_memopen(const void* data, size_t size) {
  auto s = std::make_unique<Stream>();
  s->kind = Kind::kMemory;
  const char* p = static_cast<const char*>(data);
  s->mem.assign(p, p + size);
  return s.release();
}

int qzs_fclose(Stream* s) {
  if (s == nullptr) return 0;
  int rc = s->failed && !s->input ? -1 : 0;
  switch (s->kind) {
    case Kind::kFile:
      if (std::fclose(s->file) != 0) rc = -1;
      break;
    case Kind::kStd:
      if (!s->input && std::fflush(s->file) != 0) rc = -1;
      break;
    case Kind::kGz:
      if (gzclose(s->gz) != Z_OK && !s->input) rc = -1;
      break;
    case Kind::kNull:
    case Kind::kMemory:
      break;
  }
  delete s;
  return rc;
}

size_t qzs_fread(void* buf, size_t size, size_t count, Stream* s) {
  if (s == nullptr || size == 0 || count == 0) return 0;
  if (!s->input) {
    s->misuse = "qzs_read: attempt to read from output stream\n";
    s->failed = true;
    return 0;
  }
  const size_t want = size * count;
  size_t got = 0;
  switch (s->kind) {
    case Kind::kNull:
      break;
    case Kind::kMemory: {
      got = std::min(want, s->mem.size() - s->memPos);
      if (got > 0) std::memcpy(buf, s->mem.data() + s->memPos, got);
      s->memPos += got;
      break;
    }
    case Kind::kStd:
    case Kind::kFile:
      got = std::fread(buf, 1, want, s->file);
      if (got < want && std::ferror(s->file)) note_errno(s);
      break;
    case Kind::kGz: {
      char* out = static_cast<char*>(buf);
      while (got < want) {
        const unsigned chunk = static_cast<unsigned>(std::min<size_t>(want - got, 1u << 30));
        const int n = gzread(s->gz, out + got, chunk);
        if (n < 0) {
          note_gz(s);
          break;
        }
        if (n == 0) break;
        got += static_cast<size_t>(n);
      }
      break;
    }
  }
  if (got < want) s->eof = true;
  return got / size;
}

size_t qzs_fwrite(const void* buf, size_t size, size_t count, Stream* s) {
  if (s == nullptr || size == 0 || count == 0) return 0;
  if (s->input) {
    s->misuse = "Attempt to write to input stream\n";
    s->failed = true;
    return 0;
  }
  const size_t want = size * count;
  switch (s->kind) {
    case Kind::kNull:
      return count;
    case Kind::kMemory:
      return 0;
    case Kind::kStd:
    case Kind::kFile: {
      const size_t put = std::fwrite(buf, 1, want, s->file);
      if (put < want) note_errno(s);
      return put / size;
    }
    case Kind::kGz: {
      const char* in = static_cast<const char*>(buf);
      size_t put = 0;
      while (put < want) {
        const unsigned chunk = static_cast<unsigned>(std::min<size_t>(want - put, 1u << 30));
        const int n = gzwrite(s->gz, in + put, chunk);
        if (n <= 0) {
          note_gz(s);
          break;
        }
        put += static_cast<size_t>(n);
      }
      return put / size;
    }
  }
  return 0;
}

int qzs_getc(Stream* s) {
  unsigned char c = 0;
  return qzs_fread(&c, 1, 1, s) == 1 ? c : EOF;
}

char* qzs_fgets(char* buf, int n, Stream* s) {
  if (s == nullptr || buf == nullptr || n <= 1) return nullptr;
  if (s->kind == Kind::kGz && s->input) {
    char* r = gzgets(s->gz, buf, n);
    if (r == nullptr) s->eof = true;
    return r;
  }
  int k = 0;
  while (k < n - 1) {
    const int c = qzs_getc(s);
    if (c == EOF) break;
    buf[k++] = static_cast<char>(c);
    if (c == '\n') break;
  }
  buf[k] = '\0';
  return k == 0 ? nullptr : buf;
}

int qzs_feof(Stream* s) { return s != nullptr && s->eof ? 1 : 0; }

int qzs_rewind(Stream* s) {
  if (s == nullptr) return -1;
  s->eof = false;
  switch (s->kind) {
    case Kind::kNull:
      return 0;
    case Kind::kMemory:
      s->memPos = 0;
      return 0;
    case Kind::kStd:
      return -1;
    case Kind::kFile:
      std::rewind(s->file);
      return 0;
    case Kind::kGz:
      return gzrewind(s->gz) == 0 ? 0 : -1;
  }
  return -1;
}

int qzs_puts(Stream* s, const std::string& text) {
  if (text.empty()) return 0;
  return qzs_fwrite(text.data(), 1, text.size(), s) == text.size()
             ? static_cast<int>(text.size())
             : -1;
}

int qzs_format(Stream* s, const char* fmt, ...) {
  char small[512];
  va_list ap;
  va_start(ap, fmt);
  va_list copy;
  va_copy(copy, ap);
  const int n = std::vsnprintf(small, sizeof small, fmt, ap);
  va_end(ap);
  if (n < 0) {
    va_end(copy);
    return -1;
  }
  if (n < static_cast<int>(sizeof small)) {
    va_end(copy);
    return qzs_fwrite(small, 1, static_cast<size_t>(n), s) == static_cast<size_t>(n) ? n : -1;
  }
  std::vector<char> big(static_cast<size_t>(n) + 1);
  std::vsnprintf(big.data(), big.size(), fmt, copy);
  va_end(copy);
  return qzs_fwrite(big.data(), 1, static_cast<size_t>(n), s) == static_cast<size_t>(n) ? n : -1;
}

int qzs_ioerr(Stream* s) { return s != nullptr && s->failed ? 1 : 0; }

const char* qzs_strerror(Stream* s) { return s ? s->lastError.c_str() : ""; }

const char* qzs_errmsg(Stream* s) { return s ? s->misuse.c_str() : ""; }

bool qzs_is_compressed(const Stream* s) {
  return s != nullptr && s->kind == Kind::kGz && gzdirect(s->gz) == 0;
}

void QZbreakPathName(const std::string& path, std::string& dir, std::string& stem,
                     std::string& ext) {
  const size_t slash = path.find_last_of("/\\");
  dir = slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
  const std::string base = slash == std::string::npos ? path : path.substr(slash + 1);
  const size_t dot = base.find_last_of('.');
  if (dot == std::string::npos || dot == 0) {
    stem = base;
    ext.clear();
  } else {
    stem = base.substr(0, dot);
    ext = base.substr(dot);
  }
}

void append_vformat(std::string& out, const char* fmt, va_list ap) {
  char small[1024];
  va_list copy;
  va_copy(copy, ap);
  const int n = std::vsnprintf(small, sizeof small, fmt, ap);
  if (n >= 0 && n < static_cast<int>(sizeof small)) {
    out.append(small, static_cast<size_t>(n));
  } else if (n > 0) {
    std::vector<char> big(static_cast<size_t>(n) + 1);
    std::vsnprintf(big.data(), big.size(), fmt, copy);
    out.append(big.data(), static_cast<size_t>(n));
  }
  va_end(copy);
}

}  // namespace zento::io
