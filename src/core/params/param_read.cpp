// Reading parameter files into a model, the environment or a bare registry copy.
#include <strings.h>

#include <algorithm>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <unordered_map>

#include "core/env.h"
#include "core/errors.h"
#include "core/log.h"
#include "core/messages.h"
#include "core/model.h"
#include "core/params/param_access.h"
#include "core/params/param_files.h"

namespace zento {

namespace {

constexpr size_t kLineMax = 255;  // characters of a line that are read

struct FileCloser {
  void operator()(FILE* f) const { std::fclose(f); }
};
using FilePtr = std::unique_ptr<FILE, FileCloser>;

struct Setting {
  int line = 0;
  std::string text;   // the line as read
  std::string value;  // the text after "=", blanks trimmed
};
using SettingMap = std::unordered_map<std::string, Setting>;

bool is_blank(char c) { return c == ' ' || c == '\t'; }
bool is_name_char(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

// Reads one line of any length; false at the end of the file.
bool read_line(FILE* fp, std::string& line) {
  line.clear();
  char buf[512];
  while (std::fgets(buf, sizeof buf, fp) != nullptr) {
    line += buf;
    if (!line.empty() && line.back() == '\n') break;
  }
  if (line.empty()) return false;
  while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.pop_back();
  if (line.size() > kLineMax) line.resize(kLineMax);
  return true;
}

// Splits "name = value"; false for a line of any other shape, which is a comment.
bool split_setting(const std::string& line, std::string& name, std::string& value) {
  size_t p = 0;
  while (p < line.size() && is_blank(line[p])) ++p;
  const size_t b = p;
  while (p < line.size() && is_name_char(line[p])) ++p;
  if (p == b) return false;
  name.assign(line, b, p - b);
  while (p < line.size() && is_blank(line[p])) ++p;
  if (p >= line.size() || line[p] != '=') return false;
  ++p;
  size_t e = line.size();
  while (p < e && is_blank(line[p])) ++p;
  while (e > p && is_blank(line[e - 1])) --e;
  value.assign(line, p, e - p);
  return true;
}

// The first setting of every name in the file; later ones for the same name do not count.
int scan_settings(const char* file, SettingMap& out) {
  FilePtr fp(std::fopen(file, "r"));
  if (!fp) return QZERR_CANNOT_OPEN_FILE;
  std::string line, name, value;
  for (int lineNo = 1; read_line(fp.get(), line); ++lineNo) {
    if (!split_setting(line, name, value)) continue;
    out.try_emplace(name, Setting{lineNo, line, value});
  }
  return 0;
}

// A number, optionally followed by blanks and a "!" comment.
bool parse_number(const std::string& s, double* out) {
  const char* b = s.c_str();
  char* end = nullptr;
  const double v = std::strtod(b, &end);
  if (end == b) return false;
  while (is_blank(*end)) ++end;
  if (*end != '\0' && *end != '!') return false;
  *out = v;
  return true;
}

bool parse_int(const std::string& s, double* out) {
  double v = 0;
  if (!parse_number(s, &v) || v != std::floor(v) || v < INT_MIN || v > INT_MAX) return false;
  *out = v;
  return true;
}

// One setting of the file, checked for its form and ready to apply.
struct Pending {
  ParItem* row;
  const Setting* setting;
  double number;
};

// Matches the file's settings to the registry rows, in identifier order. The names must match
// exactly. A value of the wrong form stops the read before anything is set, so that a
// malformed file leaves every parameter as it was.
int match_settings(std::vector<ParItem>& items, const SettingMap& settings,
                   std::vector<Pending>& out, const Setting** bad) {
  for (ParItem& it : items) {
    auto f = settings.find(it.xxx_szid);
    if (f == settings.end()) continue;
    Pending p{&it, &f->second, 0};
    bool ok = true;
    switch (it.xxx_type) {
      case QZ_INT_PARAMETER_TYPE:
        ok = parse_int(f->second.value, &p.number);
        break;
      case QZ_DOUBLE_PARAMETER_TYPE:
        ok = parse_number(f->second.value, &p.number);
        break;
      case QZ_STRING_PARAMETER_TYPE:
        break;
      default:
        return QZERR_INDEX_OUT_OF_RANGE;
    }
    if (!ok) {
      *bad = &f->second;
      return QZERR_ERROR_IN_INPUT;
    }
    out.push_back(p);
  }
  return 0;
}

int apply_setting(const ParTarget& t, const Pending& p) {
  const int id = p.row->xxx_id;
  const bool stoc = is_stoc_param(id);
  if (p.row->xxx_type == QZ_INT_PARAMETER_TYPE) {
    const int v = static_cast<int>(p.number);
    return param_set(t, id, &v, stoc);
  }
  if (p.row->xxx_type == QZ_DOUBLE_PARAMETER_TYPE) return param_set(t, id, &p.number, stoc);
  return param_set(t, id, p.setting->value.c_str(), stoc);
}

// Codes that mean "not for this level" rather than a failure of the file.
bool tolerated(int rc) { return rc == QZERR_PARAM_CANNOT_BE_SET || rc == QZERR_NOT_SUPPORTED; }

const char* text_of(QZenv env, int code) {
  const char* s = message_text(env, code);
  return s != nullptr ? s : "";
}

}  // namespace

int read_model_params(Imodel& m, const char* file) {
  if (file == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  const int level = base_printlevel(m);
  QZlogmod(&m, level, "\nReading model parameters from %s", file);
  m.fileErrorLine = 0;
  m.fileErrorText.clear();
  SettingMap settings;
  QZ_CALL(scan_settings(file, settings));

  std::vector<Pending> todo;
  const Setting* bad = nullptr;
  int rc = match_settings(m.AllPamItems, settings, todo, &bad);
  if (rc != 0) {
    if (bad != nullptr) {
      m.fileErrorLine = bad->line;
      m.fileErrorText = bad->text;
      QZlogmod(&m, level, "\n*** Error: bad value at line %d of %s: %s\n", bad->line, file,
               bad->text.c_str());
    }
    return rc;
  }

  const ParTarget t = ParTarget::of(&m);
  int result = 0;
  bool logged = false;
  for (const Pending& p : todo) {
    ParItem& row = *p.row;
    rc = apply_setting(t, p);
    if (tolerated(rc)) continue;
    if (rc != 0) {
      if (row.xxx_type == QZ_INT_PARAMETER_TYPE)
        QZlogmod(&m, level, "\n*** Warning: Model failed to set %s to %d\n", row.xxx_szid,
                 static_cast<int>(p.number));
      else
        QZlogmod(&m, level, "\n*** Warning: Model failed to set %s to %g\n", row.xxx_szid,
                 p.number);
      QZlogmod(&m, level, "%s", text_of(m.env, rc));
      if (result == 0) {
        result = rc;
        m.fileErrorLine = p.setting->line;
        m.fileErrorText = p.setting->text;
      }
      continue;
    }
    if (row.xxx_name == nullptr || row.xxx_name[0] == '\0') continue;
    const size_t pos = static_cast<size_t>(&row - m.AllPamItems.data());
    const double v = par_value(row);
    if (pos < m.parRefValues.size() && std::fabs(v - m.parRefValues[pos]) <= DBL_EPSILON)
      continue;
    if (row.xxx_type == QZ_INT_PARAMETER_TYPE)
      QZlogmod(&m, level, "\n%s: %d", row.xxx_name, static_cast<int>(v));
    else if (row.xxx_type == QZ_DOUBLE_PARAMETER_TYPE)
      QZlogmod(&m, level, "\n%s: %2.1e", row.xxx_name, v);
    else
      QZlogmod(&m, level, "\n%s: %s", row.xxx_name, p.setting->value.c_str());
    logged = true;
  }
  if (logged) QZlogmod(&m, level, "\n\n");
  if (result != 0 && level >= 1)
    QZlogmod(&m, level, "\nWarning: %s (error:%d)", text_of(m.env, result), result);
  return result;
}

int read_env_params(QZenv env, const char* file) {
  if (file == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  QZlogenv(env, 1, "\nReading environment parameters from %s\n", file);
  SettingMap settings;
  QZ_CALL(scan_settings(file, settings));

  std::vector<Pending> todo;
  const Setting* bad = nullptr;
  int rc = match_settings(env->AllPamItems, settings, todo, &bad);
  if (rc != 0) {
    if (bad != nullptr)
      QZlogenv(env, 1, "\n*** Error: bad value at line %d of %s: %s\n", bad->line, file,
               bad->text.c_str());
    return rc;
  }

  const ParTarget t = ParTarget::of(env);
  int result = 0;
  for (const Pending& p : todo) {
    ParItem& row = *p.row;
    rc = apply_setting(t, p);
    if (tolerated(rc)) continue;
    if (rc != 0) {
      if (row.xxx_type == QZ_INT_PARAMETER_TYPE)
        QZlogenv(env, 1, "*** Warning: Env failed to set %s to %d\n", row.xxx_szid,
                 static_cast<int>(p.number));
      else
        QZlogenv(env, 1, "*** Warning: Env failed to set %s to %g\n", row.xxx_szid, p.number);
      QZlogenv(env, 1, "%s", text_of(env, rc));
      if (result == 0) result = rc;
      continue;
    }
    if (row.xxx_id == QZ_DPARAM_MIP_CUTOFFOBJ || row.xxx_name == nullptr) continue;
    if (row.xxx_type == QZ_INT_PARAMETER_TYPE)
      QZlogenv(env, 1, "\n%s: %d", row.xxx_name, static_cast<int>(par_value(row)));
    else if (row.xxx_type == QZ_DOUBLE_PARAMETER_TYPE)
      QZlogenv(env, 1, "\n%s: %2.1e", row.xxx_name, par_value(row));
  }
  return result;
}

int set_par_model(Imodel& m, Imodel* ref) {
  m.parRefValues.clear();
  if (ref == nullptr) return 0;
  m.parRefValues.reserve(ref->AllPamItems.size());
  for (const ParItem& it : ref->AllPamItems) m.parRefValues.push_back(par_value(it));
  return 0;
}

int QZI_ReadPar(std::vector<ParItem>& items, FILE* fp, QZenv env) {
  if (fp == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  char buf[256];
  while (std::fgets(buf, sizeof buf, fp) != nullptr) {
    char* p = buf;
    while (is_blank(*p)) ++p;
    if (*p == '!' || *p == '\n' || *p == '\r' || *p == '\0') continue;
    char* save = nullptr;
    const char* name = strtok_r(p, "= \t\r\n", &save);
    const char* value = strtok_r(nullptr, "= \t\r\n", &save);
    if (name == nullptr || value == nullptr) continue;
    ParItem* it = gss_getitem_by_szid(items, name);
    if (it == nullptr || it->xxx_kind == kKindNone || it->xxx_kind == kKindString) continue;
    double v = std::atof(value);
    if (std::isnan(v)) continue;
    if (it->xxx_type == QZ_INT_PARAMETER_TYPE) {
      v = std::clamp(std::trunc(v), static_cast<double>(INT_MIN), static_cast<double>(INT_MAX));
      if ((v < it->xxx_min || v > it->xxx_max) && v != it->xxx_dfl)
        QZlogenv(env, 1, "\n***Warning: '%s = %d' out of range (%d,%d)", it->xxx_szid,
                 static_cast<int>(v), static_cast<int>(it->xxx_min),
                 static_cast<int>(it->xxx_max));
    } else if ((v < it->xxx_min || v > it->xxx_max) && v != it->xxx_dfl) {
      QZlogenv(env, 1, "\n***Warning: '%s = %g' out of range (%g,%g)", it->xxx_szid, v,
               it->xxx_min, it->xxx_max);
    }
    it->xxx_val = v;
    if (it->xxx_kind == kKindInt) *static_cast<int*>(it->xxx_local) = static_cast<int>(v);
    if (it->xxx_kind == kKindDouble) *static_cast<double*>(it->xxx_local) = v;
  }
  return 0;
}

int QZI_ReadParFile(std::vector<ParItem>& items, const char* file, QZenv env) {
  if (file == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  FilePtr fp(std::fopen(file, "r"));
  if (!fp) return QZERR_CANNOT_OPEN_FILE;
  return QZI_ReadPar(items, fp.get(), env);
}

}  // namespace zento
