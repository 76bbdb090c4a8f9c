// QZgetFormattedInfo: header and data lines built from rows of {key name, label, format}.
//
// Formats from files are host text handed to snprintf, so each is checked first: exactly one
// conversion, whose letter fits the type of the key, with flags, width and precision only.
#include <cstdarg>
#include <algorithm>
#include <cstring>
#include <fstream>
#include <vector>

#include "core/errors.h"
#include "core/info.h"
#include "core/log.h"
#include "core/params/param_access.h"

namespace zento {

namespace {

struct FmtSpec {
  const char* name;
  const char* label;
  const char* fmt;
  const char* fmtSql;
};

#include "core/info_format_tables.inc"

constexpr int kMaxFileRows = 2048;

template <size_t N>
std::vector<FmtRow> rows_of(const FmtSpec (&t)[N]) {
  std::vector<FmtRow> out;
  out.reserve(N);
  for (const FmtSpec& s : t) out.push_back({s.name, s.label, s.fmt, s.fmtSql});
  return out;
}

std::string sformat(const char* fmt, ...) {
  va_list ap;
  va_start(ap, fmt);
  std::string s = vformat(fmt, ap);
  va_end(ap);
  return s;
}

// Where the one conversion of a checked format starts and ends (the letter).
struct Conversion {
  size_t start = 0, precision = std::string_view::npos, letter = 0;
};

bool find_conversion(std::string_view fmt, Conversion& conv) {
  int count = 0;
  for (size_t i = 0; i < fmt.size(); ++i) {
    if (fmt[i] != '%') continue;
    if (i + 1 < fmt.size() && fmt[i + 1] == '%') {
      ++i;
      continue;
    }
    Conversion c;
    c.start = i++;
    while (i < fmt.size() && fmt[i] != '\0' && std::strchr("-+ #0", fmt[i])) ++i;
    // Widths and precisions stay below 1000 so that a line cannot grow without bound.
    auto digits = [&]() {
      size_t n = 0;
      while (i < fmt.size() && fmt[i] >= '0' && fmt[i] <= '9') ++i, ++n;
      return n <= 3;
    };
    if (!digits()) return false;
    if (i < fmt.size() && fmt[i] == '.') {
      c.precision = i++;
      if (!digits()) return false;
    }
    if (i >= fmt.size() || fmt[i] == '\0') return false;
    c.letter = i;
    conv = c;
    ++count;
  }
  return count == 1;
}

// The label is printed through the value's format with an 's' conversion and no precision,
// so that header and data columns line up without cutting the label.
std::string text_format(std::string_view fmt) {
  Conversion c;
  if (!find_conversion(fmt, c)) return "%s,";
  std::string out(fmt.substr(0, c.precision != std::string_view::npos ? c.precision : c.letter));
  out += 's';
  out += fmt.substr(c.letter + 1);
  return out;
}

struct RowValue {
  KeyType type = KeyType::kUnknown;
  bool ok = false;
  int i = 0;
  double d = 0;
  std::string s;
};

// A parameter's current value on the model, as int and as double.
bool read_param_value(Imodel& m, const ParItem& item, RowValue& out) {
  const ParTarget t = ParTarget::of(&m);
  if (item.xxx_type == QZ_INT_PARAMETER_TYPE) {
    if (param_get_int(t, item.xxx_id, &out.i, is_stoc_param(item.xxx_id)) != 0) return false;
    out.d = out.i;
    return true;
  }
  if (param_get_dou(t, item.xxx_id, &out.d, is_stoc_param(item.xxx_id)) != 0) return false;
  out.i = static_cast<int>(out.d);
  return true;
}

int resolve_and_read(Imodel& m, const FmtRow& row, RowValue& out) {
  out.type = key_type_of_name(row.name);
  const bool param = row.name.find("PARAM") != std::string::npos;
  if (out.type == KeyType::kUnknown) return QZERR_ERROR_IN_INPUT;
  if (param) {
    const ParItem* item = param_row_by_name(m.env, row.name.c_str());
    if (item == nullptr) return QZERR_ERROR_IN_INPUT;
    out.ok = read_param_value(m, *item, out);
    return 0;
  }
  const int key = key_by_name(row.name);
  if (key < 0) return QZERR_ERROR_IN_INPUT;
  switch (out.type) {
    case KeyType::kInt:
      out.ok = get_info(&m, key, &out.i) == 0;
      if (out.ok && key == QZ_IINFO_METHOD) out.i += 1000 * m.SplexPam.splex_use_external;
      break;
    case KeyType::kDouble: out.ok = get_info(&m, key, &out.d) == 0; break;
    case KeyType::kString: {
      std::vector<char> buf(QZ_INFO_STRING_MAXLEN, '\0');
      out.ok = get_info(&m, key, buf.data()) == 0;
      if (out.ok) out.s = buf.data();
      break;
    }
    default: return QZERR_ERROR_IN_INPUT;
  }
  return 0;
}

std::vector<std::string> tokens_of(const std::string& line) {
  std::vector<std::string> out;
  size_t i = 0;
  const char* seps = " \t,;\n\r";
  while (i < line.size()) {
    while (i < line.size() && std::strchr(seps, line[i])) ++i;
    if (i >= line.size()) break;
    const size_t j = line.find_first_of(seps, i);
    out.push_back(line.substr(i, j == std::string::npos ? std::string::npos : j - i));
    if (j == std::string::npos) break;
    i = j;
  }
  return out;
}

}  // namespace

bool check_value_format(std::string_view fmt, KeyType type) {
  Conversion c;
  if (!find_conversion(fmt, c)) return false;
  const char letter = fmt[c.letter];
  switch (type) {
    case KeyType::kInt: return std::strchr("diuxXo", letter) != nullptr;
    case KeyType::kDouble: return std::strchr("eEfFgGaA", letter) != nullptr;
    case KeyType::kString: return letter == 's';
    default: return false;
  }
}

int format_rows(Imodel& m, std::span<const FmtRow> rows, std::string& header,
                std::string& data) {
  const bool sql = m.IISPam.fmt_issql == 1;
  for (const FmtRow& row : rows) {
    RowValue v;
    QZ_CALL(resolve_and_read(m, row, v));
    const std::string& fmt = v.type == KeyType::kString && sql ? row.fmtSql : row.fmt;
    if (!check_value_format(fmt, v.type)) return QZERR_ERROR_IN_INPUT;
    const std::string tfmt = text_format(fmt);
    header += sformat(tfmt.c_str(), row.label.c_str());
    if (!v.ok) {
      data += sformat(tfmt.c_str(), "");
      continue;
    }
    switch (v.type) {
      case KeyType::kInt: data += sformat(fmt.c_str(), v.i); break;
      case KeyType::kDouble: data += sformat(fmt.c_str(), v.d); break;
      default: data += sformat(fmt.c_str(), v.s.c_str()); break;
    }
  }
  return 0;
}

int read_format_file(const char* path, std::vector<FmtRow>& rows) {
  std::ifstream in(path);
  if (!in) return QZERR_CANNOT_OPEN_FILE;
  std::string line;
  while (std::getline(in, line)) {
    const std::vector<std::string> tok = tokens_of(line);
    if (tok.empty() || tok[0][0] == '#') continue;
    if (tok.size() > 3) return QZERR_INTERNAL_ERROR;
    if (tok.size() < 3) return QZERR_ERROR_IN_INPUT;
    if (static_cast<int>(rows.size()) >= kMaxFileRows) return QZERR_ARRAY_OUT_OF_BOUNDS;
    // The separators take the format's comma away; the columns get it back.
    rows.push_back({tok[2], tok[0], tok[1] + ",", " '%s', "});
  }
  return 0;
}

namespace {

int copy_formatted(const std::string& header, const std::string& data, char* szHeader,
                   char* szData) {
  if (header.size() >= QZ_FORMATTED_INFO_MAXLEN || data.size() >= QZ_FORMATTED_INFO_MAXLEN)
    return QZERR_ARRAY_OUT_OF_BOUNDS;
  std::memcpy(szHeader, header.c_str(), header.size() + 1);
  std::memcpy(szData, data.c_str(), data.size() + 1);
  return 0;
}

// `bapps_partable`: the parameters a tuning run searches, in identifier order, at most 128.
std::vector<const ParItem*> bapps_partable() {
  std::vector<const ParItem*> out;
  for (const ParItem* it = parlist(); it->xxx_id != 0; ++it)
    if (it->xxx_step >= 0 && it->xxx_class != 0) out.push_back(it);
  std::sort(out.begin(), out.end(),
            [](const ParItem* a, const ParItem* b) { return a->xxx_id < b->xxx_id; });
  if (out.size() > 128) out.resize(128);
  return out;
}

int format_parameter_list(Imodel& m, std::string& header, std::string& data) {
  for (const ParItem* item : bapps_partable()) {
    RowValue v;
    if (!read_param_value(m, *item, v)) continue;
    header += sformat("%s,", item->xxx_szid);
    data += item->xxx_type == QZ_INT_PARAMETER_TYPE ? sformat("%d,", v.i) : sformat("%g,", v.d);
  }
  return 0;
}

}  // namespace

int get_formatted_info(Imodel* m, const char* szFormatFile, char* szHeader, char* szData,
                       int nSelector) {
  if (m == nullptr || szHeader == nullptr || szData == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  szHeader[0] = '\0';
  szData[0] = '\0';
  std::vector<FmtRow> rows;
  if (szFormatFile != nullptr) {
    QZ_CALL(read_format_file(szFormatFile, rows));
  } else {
    switch (nSelector) {
      case 0: rows = rows_of(lp_fmt); break;
      case 1: rows = rows_of(nlp_fmt); break;
      case 2: rows = rows_of(gop_fmt); break;
      case 3: rows = rows_of(mip_fmt); break;
      case 4: rows = rows_of(miprun_fmt); break;
      case 5: rows = rows_of(db_lp_fmt); break;
      case 6: rows = rows_of(db_nlp_fmt); break;
      case 7: rows = rows_of(db_gop_fmt); break;
      case 8: rows = rows_of(db_milp_fmt); break;
      case 9: rows = rows_of(db_minlp_fmt); break;
      case 10: {
        std::string header, data;
        QZ_CALL(format_parameter_list(*m, header, data));
        return copy_formatted(header, data, szHeader, szData);
      }
      case 11:
      case 12: rows = rows_of(model_fmt); break;
      case 13: rows = rows_of(db_iis_fmt); break;
      case 14: rows = rows_of(db_ius_fmt); break;
      case 15: rows = rows_of(sp_fmt); break;
      case 16: rows = rows_of(db_cur_fmt); break;
      default: return QZERR_PARAM_OUT_OF_RANGE;
    }
  }
  std::string header, data;
  QZ_CALL(format_rows(*m, rows, header, data));
  return copy_formatted(header, data, szHeader, szData);
}

}  // namespace zento
