// Solution files: the report (a commented header and one line a column and a row, which reads
// back as a start point with its basis) and the plain list.
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "core/errors.h"
#include "core/log.h"
#include "core/names.h"
#include "core/optimize.h"
#include "io/io.h"
#include "io/side_util.h"
#include "io/stream.h"

namespace zento::io {

namespace {

// What a report or list shows, from `sol` or from `mipsol`.
struct SolutionView {
  bool mip = false;
  int status = QZ_STATUS_UNKNOWN;
  double obj = 0.0;
  const std::vector<double>* primal = nullptr;
  const std::vector<double>* slack = nullptr;
  const std::vector<double>* dual = nullptr;
  const std::vector<double>* redcost = nullptr;
  const std::vector<int>* colStatus = nullptr;
  const std::vector<int>* rowStatus = nullptr;
};

bool filled(const std::vector<double>* v, int n) {
  return v != nullptr && static_cast<int>(v->size()) >= n;
}

int view_of(const Imodel& m, bool mip, SolutionView& v) {
  v.mip = mip;
  if (mip) {
    if (!m.mipsol) return QZERR_INFO_NOT_AVAILABLE;
    const MipSol& s = m.mipsol->better ? *m.mipsol->better : *m.mipsol;
    if (s.MIPstatus != QZ_STATUS_OPTIMAL && s.MIPstatus != QZ_STATUS_BASIC_OPTIMAL &&
        s.MIPstatus != QZ_STATUS_FEASIBLE)
      return QZERR_INFO_NOT_AVAILABLE;
    v.status = s.MIPstatus;
    v.obj = s.obj;
    v.primal = &s.primal;
    v.slack = &s.slack;
    v.dual = &s.dual;
    v.redcost = &s.redcost;
    v.colStatus = &s.colStatus;
    v.rowStatus = &s.rowStatus;
  } else {
    if (!m.sol || m.sol->primalStatus == QZ_STATUS_UNLOADED ||
        m.sol->primalStatus == QZ_STATUS_LOADED)
      return QZERR_INFO_NOT_AVAILABLE;
    const Sol& s = *m.sol;
    v.status = s.primalStatus;
    v.obj = s.pobj;
    v.primal = &s.primal;
    v.slack = &s.slack;
    v.dual = &s.dual;
    v.redcost = &s.redcost;
    if (s.basicStatus != QZ_STATUS_UNLOADED) {
      v.colStatus = &s.colStatus;
      v.rowStatus = &s.rowStatus;
    }
  }
  if (!filled(v.primal, m.nVars)) return QZERR_INFO_NOT_AVAILABLE;
  return 0;
}

std::string value_text(double v) {
  char buf[64];
  const double a = std::fabs(v);
  if (a >= 1e12 || (a > 0 && a < 1e-4))
    std::snprintf(buf, sizeof buf, "%22.14e", v);
  else
    std::snprintf(buf, sizeof buf, "%22.9f", v);
  return buf;
}

const char* verdict(int status) {
  switch (status) {
    case QZ_STATUS_OPTIMAL:
    case QZ_STATUS_BASIC_OPTIMAL:
      return "*   %s GLOBAL OPTIMUM FOUND\n* \n";
    case QZ_STATUS_LOCAL_OPTIMAL:
      return "*   %s LOCAL OPTIMUM FOUND\n* \n";
    case QZ_STATUS_UNBOUNDED:
      return "*   %s SOLUTION UNBOUNDED\n* \n";
    case QZ_STATUS_INFEASIBLE:
    case QZ_STATUS_LOCAL_INFEASIBLE:
      return "*   %s SOLUTION INFEASIBLE\n* \n";
    default:
      return "*   %s SOLUTION MAY BE NONOPTIMAL\n* \n";
  }
}

void report_header(Stream* f, const Imodel& m, const SolutionView& v) {
  int date = 0;
  double secs = 0;
  date_stamp(&date, &secs);
  char version[64] = {}, build[512] = {};
  QZgetVersionInfo(version, build);
  if (char* nl = std::strchr(build, '\n')) *nl = '\0';
  qzs_puts(f, "* -----------------------------------------------------------------");
  qzs_puts(f, "\n*                    SOLUTION REPORT");
  qzs_format(f, "\n*                    %08d:%.3f", date, secs);
  qzs_format(f, "\n* ZENTO API Version %s built on %s\n*", version, build);
  qzs_puts(f, "\n");
  qzs_format(f, "* PROBLEM NAME     %s\n* \n", m.names.title.c_str());
  qzs_format(f, verdict(v.status), QZI_model_type_str(m));
  const Sol* s = m.sol.get();
  const double spx = v.mip ? m.mipsol->spxIter : (s ? s->spxIter : 0);
  const double bar = v.mip ? m.mipsol->barIter : (s ? s->barIter : 0);
  const double nlp = v.mip ? m.mipsol->nlpIter : (s ? s->nlpIter : 0);
  qzs_format(f, "*   ITERATIONS BY SIMPLEX METHOD = %11.0f\n", spx);
  qzs_format(f, "*   ITERATIONS BY BARRIER METHOD = %11.0f\n", bar);
  qzs_format(f, "*   ITERATIONS BY NLP METHOD     = %11.0f\n", nlp);
  qzs_format(f, "*   TIME ELAPSED (s)             = %11d\n* \n",
             static_cast<int>(s ? std::lround(s->elapsed) : 0));
  qzs_puts(f, "*   OBJECTIVE FUNCTION VALUE\n* \n");
  qzs_format(f, std::fabs(v.obj) >= 1e12 ? "*    1)      %22.14e\n* \n" : "*    1)      %22.9f\n* \n",
             v.obj);
  if (v.mip) qzs_format(f, "*   TOTAL BRANCHES CREATED          = %11d\n* \n",
                        static_cast<int>(m.mipsol->nodes));
}

// Column and row lines: name, value, reduced cost or dual, basis status; the lines read back
// through QZreadVarStartPoint, which takes the value and the status.
void report_tables(Stream* f, const Imodel& m, const SolutionView& v) {
  int w = 12;
  std::vector<std::string> cols(static_cast<size_t>(m.nVars)), rows(static_cast<size_t>(m.nCons));
  for (int j = 0; j < m.nVars; ++j) {
    cols[j] = QZI_getVariableNamej(m, j);
    w = std::max(w, static_cast<int>(cols[j].size()));
  }
  for (int i = 0; i < m.nCons; ++i) {
    rows[i] = QZI_getConstraintNamei(m, i);
    w = std::max(w, static_cast<int>(rows[i].size()));
  }
  const bool redcost = filled(v.redcost, m.nVars);
  const bool dual = filled(v.dual, m.nCons);
  const bool slack = filled(v.slack, m.nCons);
  const bool basis = v.colStatus && static_cast<int>(v.colStatus->size()) >= m.nVars &&
                     v.rowStatus && static_cast<int>(v.rowStatus->size()) >= m.nCons;
  if (!dual && m.nCons > 0) {
    qzs_format(f, "\n*  Error %d in computing dual solution.\n", QZERR_INFO_NOT_AVAILABLE);
    qzs_puts(f, "*  Computation of dual solution is skipped.\n* \n");
  }
  qzs_format(f, "*  %-*s  %22s  %22s  %s\n* \n", w, "VARIABLES", "VALUE", "REDUCED COST",
             "BASIS STATUS");
  for (int j = 0; j < m.nVars; ++j) {
    qzs_format(f, "   %-*s  %s  %s", w, cols[j].c_str(), value_text((*v.primal)[j]).c_str(),
               value_text(redcost ? (*v.redcost)[j] : 0.0).c_str());
    if (basis) qzs_format(f, "  %s", basis_status_text((*v.colStatus)[j]));
    qzs_puts(f, "\n");
  }
  qzs_format(f, "* \n*  %-*s  %22s  %22s  %s\n* \n", w, "CONSTRAINTS", "SLACK OR SURPLUS",
             "DUAL PRICES", "BASIS STATUS");
  for (int i = 0; i < m.nCons; ++i) {
    qzs_format(f, "   %-*s  %s  %s", w, rows[i].c_str(),
               value_text(slack ? (*v.slack)[i] : 0.0).c_str(),
               value_text(dual ? (*v.dual)[i] : 0.0).c_str());
    if (basis) qzs_format(f, "  %s", basis_status_text((*v.rowStatus)[i]));
    qzs_puts(f, "\n");
  }
  qzs_puts(f, "* \n* END OF REPORT\n");
}

int write_report(Imodel& m, const char* pszFname, bool mip) {
  SolutionView v;
  QZ_CALL(view_of(m, mip, v));
  QZlogmod(&m, base_printlevel(m), "\nWriting model solution.");
  StreamPtr s(qzs_fopen(m.env, pszFname, "w"));
  if (!s) return QZERR_CANNOT_OPEN_FILE;
  report_header(s.get(), m, v);
  report_tables(s.get(), m, v);
  if (qzs_fclose(s.release()) != 0) return QZERR_CANNOT_OPEN_FILE;
  QZlogmod(&m, base_printlevel(m), "\nFinished writing model solution.");
  return 0;
}

int QZ_save_sol_file(Imodel& m, const char* pszFname, bool mip) {
  SolutionView v;
  QZ_CALL(view_of(m, mip, v));
  StreamPtr s(qzs_fopen(m.env, pszFname, "w"));
  if (!s) return QZERR_CANNOT_OPEN_FILE;
  Stream* f = s.get();
  int date = 0;
  double secs = 0;
  date_stamp(&date, &secs);
  char stamp[64];
  std::snprintf(stamp, sizeof stamp, "%08d:%.3f", date, secs);
  const bool optimal = v.status == QZ_STATUS_OPTIMAL || v.status == QZ_STATUS_BASIC_OPTIMAL;
  if (optimal)
    qzs_format(f, "SOLUTION %s (OPTIMAL)\n", stamp);
  else if (v.status == QZ_STATUS_INFEASIBLE)
    qzs_format(f, "SOLUTION  %s (INFEASIBLE)\n", stamp);
  else if (v.status == QZ_STATUS_UNBOUNDED)
    qzs_format(f, "SOLUTION %s (UNBOUNDED)\n", stamp);
  else
    qzs_format(f, "SOLUTION %s \n", stamp);
  qzs_format(f, "PROBLEM NAME        %s\n", m.names.title.c_str());
  qzs_format(f, "OBJECTIVE VALUE     %16.10e\n", v.obj);
  qzs_puts(f, "\n\nNUMBER  ......COLUMNS...... AT ...ACTIVITY...\n");
  for (int j = 0; j < m.nVars; ++j) {
    const char type[2] = {m.lp.pszVarTypes.empty() ? 'C' : m.lp.pszVarTypes[j], '\0'};
    qzs_format(f, "%6u  %-20s%2s   %16.10e\n", static_cast<unsigned>(m.nCons + j + 1),
               QZI_getVariableNamej(m, j).c_str(), type, (*v.primal)[j]);
  }
  return qzs_fclose(s.release()) != 0 ? QZERR_CANNOT_OPEN_FILE : 0;
}

}  // namespace

int write_solution_of_type(Imodel& m, const char* pszFname, int nFormat) {
  if (m.modelState == QZ_STATUS_UNLOADED) return QZERR_INFO_NOT_AVAILABLE;
  switch (nFormat) {
    case 0:
    case 2:
      return write_report(m, pszFname, false);
    case 1:
      return write_report(m, pszFname, true);
    case 3:
      return QZ_save_sol_file(m, pszFname, false);
    case 4:
      return QZ_save_sol_file(m, pszFname, true);
    default:
      return QZERR_PARAM_OUT_OF_RANGE;
  }
}

int write_solution(Imodel& m, const char* pszFname) {
  if (m.modelState == QZ_STATUS_UNLOADED) return QZERR_INFO_NOT_AVAILABLE;
  const bool mip = m.mipsol != nullptr;
  if (m.SolverPam.sol_report_style == 1) return QZ_save_sol_file(m, pszFname, mip);
  return write_report(m, pszFname, mip);
}

}  // namespace zento::io
