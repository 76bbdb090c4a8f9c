// Start-point files (values with optional basis statuses) and branching priorities.
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "core/errors.h"
#include "core/load.h"
#include "core/log.h"
#include "core/names.h"
#include "io/io.h"
#include "io/side_util.h"
#include "io/stream.h"

namespace zento::io {

namespace {

bool parse_double(const std::string& t, double* v) {
  char* end = nullptr;
  *v = std::strtod(t.c_str(), &end);
  return end != t.c_str() && *end == '\0' && std::isfinite(*v);
}

// A data line of a start file, or a comment, a blank line or a line too long to read.
enum class LineKind { kData, kSkip, kBad };

LineKind classify(const RawLine& raw) {
  const char c = first_byte(raw);
  if (c == 0 || c == '!' || c == '*') return LineKind::kSkip;
  if (raw.hasControl || raw.fullLen > kMaxLineBytes) return LineKind::kBad;
  return LineKind::kData;
}

struct StartReader {
  StartReader(Imodel& model, LineReader& reader)
      : m(model), lines(reader), values(static_cast<size_t>(model.nVars), 0.0) {}
  Imodel& m;
  LineReader& lines;
  RawLine raw;
  std::vector<double> values;
  std::vector<int> colStatus, rowStatus;
  bool haveStatus = false;
  int ordinal = 0;  // data lines so far

  int line(const std::vector<std::string>& w) {
    const bool isColumn = ordinal < m.nVars;
    const int position = isColumn ? ordinal : ordinal - m.nVars;
    ++ordinal;
    int index = position;
    const bool hasNames = isColumn ? !m.names.cols.empty() : !m.names.rows.empty();
    if (hasNames) {
      const NameKind kind = isColumn ? NameKind::kColumn : NameKind::kRow;
      if (find_name_index(m, kind, w[0].c_str(), &index) != 0) {
        QZlogmod(&m, base_printlevel(m), "\nSkipping unknown token %s", w[0].c_str());
        return 0;
      }
    }
    double v = 0.0;
    if (!parse_double(w[1], &v)) {
      note_file_error(m, lines, raw);
      return QZERR_BAD_MODEL_FILE;
    }
    const int n = isColumn ? m.nVars : m.nCons;
    if (index < 0 || index >= n) {
      if (isColumn)
        QZlogmod(&m, base_printlevel(m), "\nVariable index %d out of range %s at line %d", index, w[0].c_str(),
                 lines.line_number());
      else
        QZlogmod(&m, base_printlevel(m), "\nConstraint index %d out of range %s at line %d in .sol", index,
                 w[0].c_str(), lines.line_number());
      return 0;
    }
    if (isColumn) values[index] = v;
    if (w.size() < 4) return 0;
    if (!haveStatus) {
      colStatus.assign(static_cast<size_t>(m.nVars), 0);
      rowStatus.assign(static_cast<size_t>(m.nCons), 0);
      haveStatus = true;
    }
    int status = 0;
    if (basis_status_of(w[3].c_str(), &status)) {
      (isColumn ? colStatus : rowStatus)[index] = status;
    } else if (isColumn) {
      QZlogmod(&m, base_printlevel(m), "\nUnknown column basis status %s at line %d", w[3].c_str(),
               lines.line_number());
      colStatus[index] = -1;
    } else {
      QZlogmod(&m, base_printlevel(m), "\nUnknown row basis status %s at line %d", w[3].c_str(),
               lines.line_number());
    }
    return 0;
  }
};

}  // namespace

int read_var_start_point(Imodel& m, const char* pszFname) {
  if (m.modelState == QZ_STATUS_UNLOADED) return QZERR_NO_MODEL_LOADED;
  clear_file_error(m);
  m.start.primal.assign(static_cast<size_t>(m.nVars), 0.0);
  QZlogmod(&m, base_printlevel(m), "\n\nReading initial solution from file %s", pszFname);
  StreamPtr s(qzs_fopen(m.env, pszFname, "r"));
  if (!s) {
    QZlogmod(&m, base_printlevel(m), "\nFailed to open %s", pszFname);
    return QZERR_CANNOT_OPEN_FILE;
  }
  LineReader lines(s.get(), "");
  StartReader r(m, lines);
  while (lines.next(r.raw)) {
    const LineKind kind = classify(r.raw);
    if (kind == LineKind::kSkip) continue;
    if (kind == LineKind::kBad) {
      note_file_error(m, lines, r.raw);
      return QZERR_BAD_MODEL_FILE;
    }
    const std::vector<std::string> w = split_line(r.raw);
    if (w.size() < 2) continue;
    QZ_CALL(r.line(w));
  }
  if (lines.read_failed()) return QZERR_BAD_MODEL_FILE;
  QZ_CALL(load_start_point(m, false, r.values.data()));
  if (r.haveStatus) {
    const int rc = load_basis(m, r.colStatus.data(), r.rowStatus.data());
    if (rc != 0) {
      QZlogmod(&m, base_printlevel(m), "\nFailed loading the given basis in file.");
      return rc;
    }
  }
  return 0;
}

int read_var_priorities(Imodel& m, const char* pszFname) {
  if (m.modelState == QZ_STATUS_UNLOADED) return QZERR_NO_MODEL_LOADED;
  clear_file_error(m);
  StreamPtr s(qzs_fopen(m.env, pszFname, "r"));
  if (!s) return QZERR_CANNOT_OPEN_FILE;
  std::vector<int> prior(static_cast<size_t>(m.nVars), 0);
  LineReader lines(s.get(), "");
  RawLine raw;
  while (lines.next(raw)) {
    if (raw.hasControl || raw.fullLen > kMaxLineBytes) {
      note_file_error(m, lines, raw);
      QZlogmod(&m, base_printlevel(m), "\nWarning: %s (token:'%s', error:%d)", "bad line in priority file", "",
               QZERR_BAD_MODEL_FILE);
      return QZERR_BAD_MODEL_FILE;
    }
    const std::vector<std::string> w = split_line(raw);
    if (w.size() < 2) continue;
    char* end = nullptr;
    const long p = std::strtol(w[1].c_str(), &end, 10);
    if (end == w[1].c_str()) continue;
    int j = -1;
    const int rc = column_by_name(m, w[0], &j, 1);
    if (rc != 0) {
      note_file_error(m, lines, raw);
      QZlogmod(&m, base_printlevel(m), "\nWarning: %s (token:'%s', error:%d)", "unknown column in priority file",
               w[0].c_str(), rc);
      return rc;
    }
    if (p > 0) prior[j] = p > INT32_MAX ? INT32_MAX : static_cast<int>(p);
  }
  return load_var_priorities(m, prior.data());
}

int write_var_priorities(Imodel& m, const char* pszFname, int /*nMode*/) {
  if (m.modelState == QZ_STATUS_UNLOADED || m.priorities.empty()) return QZERR_INFO_NOT_AVAILABLE;
  const char* name = pszFname ? pszFname : "zento.pri";
  StreamPtr s(qzs_fopen(m.env, name, "w"));
  if (!s) return QZERR_CANNOT_OPEN_FILE;
  int w = 0;
  if (!m.names.cols.empty())
    for (int j = 0; j < m.nVars; ++j) w = std::max(w, static_cast<int>(std::strlen(m.names.cols.name(j))));
  w += 5;
  for (int j = 0; j < m.nVars; ++j) {
    if (!m.names.cols.empty())
      qzs_format(s.get(), "%-*s", w, m.names.cols.name(j));
    else
      qzs_format(s.get(), "  C%-7d", j + 1);
    qzs_format(s.get(), "    %12d\n", m.priorities[j]);
  }
  if (qzs_fclose(s.release()) != 0) return QZERR_CANNOT_OPEN_FILE;
  QZlogmod(&m, base_printlevel(m), "\nExported variable priorities as '%s'", name);
  return 0;
}

}  // namespace zento::io
