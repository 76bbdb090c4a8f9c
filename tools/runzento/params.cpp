// Parameter options: limits and print level set by identifier, parameter files, and
// NAME=VALUE settings looked up by macro name in the registry.
#include "params.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace runzento {

namespace {

int report(QZenv env, int rc, const std::string& what) {
  char text[QZ_MAX_ERROR_MESSAGE_LENGTH] = {};
  QZgetErrorMessage(env, rc, text);
  std::fprintf(stderr, "runzento: %s: error %d: %s\n", what.c_str(), rc, text);
  return kUsage;
}

// Sets a parameter from its text by the type the registry gives.
int set_by_name(QZenv env, QZmodel m, const std::string& name, const std::string& value) {
  int type = -1, id = 0;
  int rc = QZgetParamMacroID(env, name.c_str(), &type, &id);
  if (rc != 0) return report(env, rc, "unknown parameter " + name);
  char* end = nullptr;
  const double v = std::strtod(value.c_str(), &end);
  if (end == value.c_str() || *end != '\0')
    return report(env, QZERR_ERROR_IN_INPUT, name + "=" + value + " is not a number");
  if (type == QZ_INT_PARAMETER_TYPE) {
    if (v != std::floor(v) || std::fabs(v) > 2147483647.0)
      return report(env, QZERR_ERROR_IN_INPUT, name + " takes an integer");
    rc = QZsetModelIntParameter(m, id, static_cast<int>(v));
  } else if (type == QZ_DOUBLE_PARAMETER_TYPE) {
    rc = QZsetModelDouParameter(m, id, v);
  } else {
    return report(env, QZERR_ERROR_IN_INPUT, name + " is not a numeric parameter");
  }
  return rc == 0 ? kSolved : report(env, rc, "cannot set " + name + "=" + value);
}

int set_double(QZenv env, QZmodel m, int id, double v, const char* what) {
  const int rc = QZsetModelDouParameter(m, id, v);
  return rc == 0 ? kSolved : report(env, rc, what);
}

int set_int(QZenv env, QZmodel m, int id, int v, const char* what) {
  const int rc = QZsetModelIntParameter(m, id, v);
  return rc == 0 ? kSolved : report(env, rc, what);
}

}  // namespace

int apply_parameters(QZenv env, QZmodel m, const Options& o) {
  // Files first, then the options and settings of the command line, which win.
  for (const std::string& f : o.paramFiles) {
    const int rc = QZreadModelParameter(m, f.c_str());
    if (rc != 0) return report(env, rc, "cannot read parameter file " + f);
  }
  int code = kSolved;
  if (o.timeLimit >= 0) {
    code = set_double(env, m, QZ_DPARAM_SOLVER_TIMLMT, o.timeLimit, "cannot set the time limit");
    if (code == kSolved)
      code = set_double(env, m, QZ_DPARAM_MIP_TIMLIM, o.timeLimit, "cannot set the time limit");
    if (code != kSolved) return code;
  }
  if (o.iterLimit >= 0) {
    code = set_double(env, m, QZ_DPARAM_LP_ITRLMT, o.iterLimit, "cannot set the iteration limit");
    if (code != kSolved) return code;
  }
  if (o.printLevel >= 0) {
    const int level = o.printLevel;
    for (int id : {QZ_IPARAM_LP_PRINTLEVEL, QZ_IPARAM_MIP_PRINTLEVEL, QZ_IPARAM_NLP_PRINTLEVEL}) {
      code = set_int(env, m, id, level, "cannot set the print level");
      if (code != kSolved) return code;
    }
  }
  for (const auto& s : o.settings) {
    code = set_by_name(env, m, s.first, s.second);
    if (code != kSolved) return code;
  }
  return kSolved;
}

int list_parameters(QZenv env) {
  int n = 0;
  if (int rc = QZgetParamCount(env, &n)) return report(env, rc, "cannot list the parameters");
  std::printf("%-40s %6s %-6s %14s %14s %14s  %s\n", "NAME", "ID", "TYPE", "VALUE", "MIN", "MAX",
              "MEANING");
  for (int k = 0; k < n; ++k) {
    int id = 0, type = -1;
    if (QZgetParamIdByIndex(env, k, &id) != 0) continue;
    double lo = 0, hi = 0, dfl = 0;
    if (QZgetParamInfo(env, id, &type, nullptr, &lo, &hi, &dfl) != 0) continue;
    const char* name = QZgetParamMacroNamePtr(env, id);
    const char* desc = QZgetParamShortDescPtr(env, id);
    double value = dfl;
    if (type == QZ_INT_PARAMETER_TYPE) {
      int v = 0;
      if (QZgetEnvIntParameter(env, id, &v) == 0) value = v;
    } else if (type == QZ_DOUBLE_PARAMETER_TYPE) {
      QZgetEnvDouParameter(env, id, &value);
    }
    const char* typeText = type == QZ_INT_PARAMETER_TYPE      ? "int"
                           : type == QZ_DOUBLE_PARAMETER_TYPE ? "double"
                                                              : "string";
    std::printf("%-40s %6d %-6s %14.6g %14.6g %14.6g  %s\n", name ? name : "?", id, typeText, value,
                lo, hi, desc ? desc : "");
  }
  return kSolved;
}

}  // namespace runzento
