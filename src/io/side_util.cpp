// Shared pieces of the side files.
#include "io/side_util.h"

#include <sys/time.h>

#include <cstdlib>
#include <cstring>
#include <ctime>

#include "core/names.h"

namespace zento::io {

namespace {
constexpr const char* kStatusText[] = {"QZ_BASTYPE_BAS", "QZ_BASTYPE_ATLO", "QZ_BASTYPE_ATUP",
                                       "QZ_BASTYPE_FNUL", "QZ_BASTYPE_SBAS"};
}

const char* basis_status_text(int status) {
  if (status >= 0) return kStatusText[0];
  if (status >= -4) return kStatusText[-status];
  return "QZ_BASTYPE_UNKNOWN";
}

bool basis_status_of(const char* text, int* status) {
  for (int k = 0; k < 5; ++k) {
    if (std::strcmp(text, kStatusText[k]) == 0) {
      *status = -k;
      return true;
    }
  }
  return false;
}

std::vector<std::string> split_line(const RawLine& raw) {
  std::vector<std::string> words;
  int k = 0;
  while (k < raw.len) {
    while (k < raw.len && (raw.text[k] == ' ' || raw.text[k] == '\t')) ++k;
    const int start = k;
    while (k < raw.len && raw.text[k] != ' ' && raw.text[k] != '\t') ++k;
    if (k > start) words.emplace_back(raw.text + start, static_cast<size_t>(k - start));
  }
  return words;
}

char first_byte(const RawLine& raw) {
  for (int k = 0; k < raw.len; ++k)
    if (raw.text[k] != ' ' && raw.text[k] != '\t') return raw.text[k];
  return 0;
}

void note_file_error(Imodel& m, const LineReader& lines, const RawLine& raw) {
  m.fileErrorLine = lines.line_number();
  m.fileErrorText.assign(raw.text, static_cast<size_t>(raw.len));
}

void clear_file_error(Imodel& m) {
  m.fileErrorLine = 0;
  m.fileErrorText.clear();
}

void date_stamp(int* yyyymmdd, double* seconds) {
  timeval tv{};
  gettimeofday(&tv, nullptr);
  const time_t now = tv.tv_sec;
  tm local{};
  localtime_r(&now, &local);
  *yyyymmdd = (local.tm_year + 1900) * 10000 + (local.tm_mon + 1) * 100 + local.tm_mday;
  *seconds = local.tm_hour * 3600.0 + local.tm_min * 60.0 + local.tm_sec + tv.tv_usec * 1e-6;
}

namespace {

int default_name_index(const std::string& name, char letter, int base, int count, int* index) {
  if (name.size() < 2 || name[0] != letter) return -1;
  for (size_t k = 1; k < name.size(); ++k)
    if (name[k] < '0' || name[k] > '9') return -1;
  const long n = std::strtol(name.c_str() + 1, nullptr, 10) - base;
  if (n < 0 || n >= count) return -1;
  *index = static_cast<int>(n);
  return 0;
}

}  // namespace

int column_by_name(Imodel& m, const std::string& name, int* index, int base) {
  *index = -1;
  if (m.names.cols.empty())
    return default_name_index(name, 'C', base, m.nVars, index) == 0 ? 0
                                                                     : QZERR_COLUMN_TOKEN_NOT_FOUND;
  return find_name_index(m, NameKind::kColumn, name.c_str(), index);
}

int row_by_name(Imodel& m, const std::string& name, int* index, int base) {
  *index = -1;
  if (m.names.rows.empty())
    return default_name_index(name, 'R', base, m.nCons, index) == 0 ? 0 : QZERR_ROW_TOKEN_NOT_FOUND;
  return find_name_index(m, NameKind::kRow, name.c_str(), index);
}

}  // namespace zento::io
