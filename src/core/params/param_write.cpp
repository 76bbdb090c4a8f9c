// Writing parameter files and the AsciiDoc listing of the registry.
#include <sys/stat.h>

#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "core/env.h"
#include "core/errors.h"
#include "core/log.h"
#include "core/model.h"
#include "core/model_ops.h"
#include "core/params/param_access.h"
#include "core/params/param_files.h"
#include "core/version.h"

namespace zento {

namespace {

struct FileCloser {
  void operator()(FILE* f) const { std::fclose(f); }
};
using FilePtr = std::unique_ptr<FILE, FileCloser>;

const char kBang79[] =
    "!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!\n";

void write_header(FILE* fp, bool withVersion) {
  std::fputs(kBang79, fp);
  std::fputs("!\n", fp);
  if (withVersion)
    std::fprintf(fp,
                 "! This is the parameter file for use with ZENTO API %d. Each line contains\n",
                 kVerNumber);
  else
    std::fputs("! This is the parameter file for use with ZENTO API. Each line contains\n", fp);
  std::fputs("! a parameter setting, where by default, all values are commented out with <!>\n",
             fp);
  std::fputs("! character. To enable a particular parameter setting, simply remove the <!>\n",
             fp);
  std::fputs("! character in front of it.\n", fp);
  std::fputs("!\n", fp);
  std::fputs("! You can use QZreadModelParameter() and/or QZreadEnvParameter() functions\n", fp);
  std::fputs("! to read parameter settings into your application.\n", fp);
  std::fputs("!\n", fp);
  std::fputs("! <runzento.exe> driver program reads <zento.par> file.\n", fp);
  std::fputs("!\n", fp);
  std::fputs(kBang79, fp);
}

void write_help(FILE* fp, const char* help) {
  if (help == nullptr) return;
  const char* p = help;
  while (*p != '\0') {
    const char* nl = std::strchr(p, '\n');
    const size_t len = nl ? static_cast<size_t>(nl - p) : std::strlen(p);
    std::fprintf(fp, "!%.*s\n", static_cast<int>(len), p);
    p += len;
    if (*p == '\n') ++p;
  }
}

void write_setting(FILE* fp, const ParItem& row, const std::string& value, bool active) {
  char line[512];
  std::snprintf(line, sizeof line, "%s%-42s = %s", active ? "" : "!", row.xxx_szid,
                value.c_str());
  write_help(fp, row.xxx_help);
  std::fprintf(fp, "%s\n\n\n", line);
}

// Rows that a parameter file carries: not the version constants, not reserved identifiers.
bool in_files(const ParItem& row) {
  return !(row.xxx_id >= 990 && row.xxx_id <= 999) && row.xxx_class != QZ_PARCLASS_NOTIMPL;
}

bool differs(const ParItem& a, const ParItem& b) {
  if (a.xxx_type == QZ_STRING_PARAMETER_TYPE) return param_value_text(a) != param_value_text(b);
  if (a.xxx_type == QZ_INT_PARAMETER_TYPE) return par_value(a) != par_value(b);
  return std::fabs(par_value(a) - par_value(b)) > DBL_EPSILON;
}

// A cutoff value written as a setting takes its switch along: reading the value back turns the
// switch on, and the switch's own line must then restore what the model had.
bool is_switch_of_active_cutoff(int id, bool solverCutoffActive, bool mipCutoffActive) {
  return (id == QZ_IPARAM_SOLVER_USECUTOFFVAL && solverCutoffActive) ||
         (id == QZ_IPARAM_MIP_USECUTOFFOBJ && mipCutoffActive);
}

// A file argument that is a number names no parameter file.
bool is_number_text(const char* s) {
  char* end = nullptr;
  std::strtod(s, &end);
  return end != s && *end == '\0';
}

bool file_exists(const std::string& path) {
  struct stat st;
  return ::stat(path.c_str(), &st) == 0;
}

struct ModelDeleter {
  void operator()(Imodel* m) const {
    Imodel* h = m;
    delete_model(&h);
  }
};

}  // namespace

int write_model_params(Imodel& m, const char* file) {
  if (m.isWorkingCopy) return 0;
  if (file == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  const bool csvOnly = is_number_text(file);
  FilePtr fp;
  if (!csvOnly) {
    fp.reset(std::fopen(file, "w"));
    if (!fp) return QZERR_CANNOT_OPEN_FILE;
    write_header(fp.get(), true);
  }
  Imodel* scratchRaw = nullptr;
  QZ_CALL(create_model(m.env, &scratchRaw));
  std::unique_ptr<Imodel, ModelDeleter> scratch(scratchRaw);
  scratch->isWorkingCopy = true;

  std::vector<ParItem>& mine = m.AllPamItems;
  std::vector<ParItem>& envRows = m.env->AllPamItems;
  std::vector<ParItem>& ref = scratch->AllPamItems;
  std::string names, values;
  bool solverCutoff = false, mipCutoff = false;
  for (size_t i = 0; i < mine.size(); ++i) {
    const ParItem& row = mine[i];
    if (!in_files(row)) continue;
    const bool fromEnv = (row.xxx_class & QZ_PARCLASS_MODEL) == 0;
    const ParItem& src = fromEnv ? envRows[i] : row;
    bool active = !fromEnv && differs(src, ref[i]);
    active = active || is_switch_of_active_cutoff(row.xxx_id, solverCutoff, mipCutoff);
    if (row.xxx_id == QZ_DPARAM_SOLVER_CUTOFFVAL) solverCutoff = active;
    if (row.xxx_id == QZ_DPARAM_MIP_CUTOFFOBJ) mipCutoff = active;
    const std::string value = param_value_text(src);
    if (fp) write_setting(fp.get(), row, value, active);
    names += row.xxx_szid;
    names += ',';
    values += value;
    values += ',';
  }
  const int level = base_printlevel(m);
  if (csvOnly) {
    std::string path(file);
    const size_t dot = path.rfind('.');
    if (dot != std::string::npos) path.resize(dot);
    path += ".param.csv";
    if (!file_exists(path)) {
      FilePtr csv(std::fopen(path.c_str(), "w"));
      if (!csv) return QZERR_CANNOT_OPEN_FILE;
      std::fprintf(csv.get(), "%s\n%s\n", names.c_str(), values.c_str());
      QZlogmod(&m, level, "\nLogged model parameters to %s", path.c_str());
    }
    return 0;
  }
  if (std::ferror(fp.get())) return QZERR_CANNOT_OPEN_FILE;
  QZlogmod(&m, level, "\nWritten model parameters to %s", file);
  return 0;
}

int write_env_params(QZenv env, const char* file) {
  if (file == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  FilePtr fp(std::fopen(file, "w"));
  if (!fp) return QZERR_CANNOT_OPEN_FILE;
  write_header(fp.get(), false);
  for (const ParItem& row : env->AllPamItems) {
    if (!in_files(row)) continue;
    write_setting(fp.get(), row, param_value_text(row), false);
  }
  if (std::ferror(fp.get())) return QZERR_CANNOT_OPEN_FILE;
  QZlogenv(env, 1, "\nWritten env parameters to %s", file);
  return 0;
}

namespace {

struct Group {
  int lo, hi;
  const char* title;
};

const Group kGroups[] = {
    {900, 1000, "Version"},
    {1000, 1200, "General"},
    {1200, 1500, "Solver"},
    {1500, 2500, "Infeasibility and unboundedness analysis, output"},
    {2500, 3100, "Nonlinear"},
    {3100, 4000, "Barrier"},
    {4000, 4800, "Simplex and presolve"},
    {4800, 5000, "Factorization"},
    {5000, 6400, "Mixed-integer"},
    {6400, 6600, "Global"},
    {6600, 7700, "Stochastic"},
    {7700, 8000, "Sampling"},
    {8000, 8500, "Branch-and-price"},
    {8500, 10000, "Genetic"},
};

const char* type_word(int type) {
  switch (type) {
    case QZ_INT_PARAMETER_TYPE:
      return "int";
    case QZ_DOUBLE_PARAMETER_TYPE:
      return "double";
    default:
      return "string";
  }
}

// Table cells must not hold a bare "|".
std::string cell(const char* s) {
  std::string out;
  for (const char* p = s ? s : ""; *p != '\0'; ++p) {
    if (*p == '|') out += '\\';
    out += *p == '\n' ? ' ' : *p;
  }
  return out;
}

std::string num_text(double v, int type) {
  char buf[64];
  if (type == QZ_INT_PARAMETER_TYPE)
    std::snprintf(buf, sizeof buf, "%.0f", v);
  else
    std::snprintf(buf, sizeof buf, "%g", v);
  return buf;
}

}  // namespace

int write_params_asciidoc(QZenv env, const char* file) {
  if (file == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  FilePtr fp(std::fopen(file, "w"));
  if (!fp) return QZERR_CANNOT_OPEN_FILE;
  FILE* f = fp.get();
  std::fprintf(f, "= Zento parameters\n\nVersion %d.%d, %d parameters.\n", kVerMajor, kVerMinor,
               static_cast<int>(env->AllPamItems.size()));
  for (const Group& g : kGroups) {
    bool open = false;
    for (const ParItem& row : env->AllPamItems) {
      if (row.xxx_id < g.lo || row.xxx_id >= g.hi) continue;
      if (!open) {
        std::fprintf(f, "\n== %s\n\n[cols=\"4,1,1,2,2,6\",options=\"header\"]\n|===\n", g.title);
        std::fprintf(f, "|Name |Id |Type |Range |Default |Description\n");
        open = true;
      }
      std::string range = "not implemented";
      if (row.xxx_class != QZ_PARCLASS_NOTIMPL)
        range = row.xxx_type == QZ_STRING_PARAMETER_TYPE
                    ? std::string("text")
                    : num_text(row.xxx_min, row.xxx_type) + " .. " +
                          num_text(row.xxx_max, row.xxx_type);
      const std::string dfl = row.xxx_type == QZ_STRING_PARAMETER_TYPE
                                  ? cell(param_value_text(row).c_str())
                                  : num_text(row.xxx_dfl, row.xxx_type);
      std::fprintf(f, "\n|`%s` |%d |%s |%s |%s |%s\n", row.xxx_szid, row.xxx_id,
                   type_word(row.xxx_type), range.c_str(), dfl.c_str(),
                   cell(row.xxx_help).c_str());
    }
    if (open) std::fprintf(f, "|===\n");
  }
  return std::ferror(f) ? QZERR_CANNOT_OPEN_FILE : 0;
}

int QZI_WritePar(const std::vector<ParItem>& items, FILE* fp) {
  if (fp == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  for (const ParItem& row : items) std::fprintf(fp, "!%-42s = %g\n", row.xxx_szid, par_value(row));
  return std::ferror(fp) ? QZERR_CANNOT_OPEN_FILE : 0;
}

void QZI_PrintParSteps(QZenv env, const std::vector<ParItem>& items) {
  for (const ParItem& row : items) {
    if (row.xxx_step < 0) continue;
    QZlogenv(env, 1, "\n%-42s min=%g max=%g default=%g step=%g%s", row.xxx_szid, row.xxx_min,
             row.xxx_max, row.xxx_dfl, row.xxx_step,
             (row.xxx_class & QZ_PARCLASS_MULTSTEP) ? " (multiplicative)" : "");
  }
}

}  // namespace zento
