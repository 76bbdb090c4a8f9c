// The MARLO model writer: an algebraic text with one bracketed row per constraint, quadratic
// terms in a parenthesized block, and @-functions for bounds and integer columns.
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "core/errors.h"
#include "io/text_formats.h"
#include "io/text_write.h"

namespace zento::io {

namespace {

std::string marlo_name(const NamePool& pool, int k, const char* fallback) {
  std::string s;
  if (!pool.empty()) s = pool.name(k);
  if (s.empty()) {
    char buf[32];
    std::snprintf(buf, sizeof buf, fallback, k);
    return buf;
  }
  for (char& c : s)
    if (std::string(" \t\n\r+-<>=!.]").find(c) != std::string::npos) c = '_';
  return s;
}

// The quadratic terms of one group (`row` -1 is the objective).
void append_qmatrix(const Imodel& m, TextWriter& w, int row, const std::vector<std::string>& cols) {
  const QuadData& q = m.quad;
  for (int g = 0; g < q.groups(); ++g) {
    if (q.row[g] != row) continue;
    w.put("   %+f%c%s\n", 0.5, '*', "(");
    int written = 0;
    for (int k = q.beg[g]; k < q.beg[g + 1]; ++k) {
      const double c = q.col1[k] == q.col2[k] ? q.coef[k] : 2.0 * q.coef[k];
      w.put("   %+f%c%s%c%s\n", c, '*', cols[q.col1[k]].c_str(), '*', cols[q.col2[k]].c_str());
      if (++written % 5 == 0) w.put("\n");
    }
    w.put("  %s ", ")");
  }
}

void write_body(const Imodel& m, TextWriter& w) {
  const LinearData& lp = m.lp;
  std::vector<std::string> cols(static_cast<size_t>(m.nVars));
  for (int j = 0; j < m.nVars; ++j) cols[j] = marlo_name(m.names.cols, j, "C%07d");
  w.put("model:\n");
  w.put(lp.dObjSense == QZ_MAX ? "[OBJ] max=\n" : "[OBJ] min=\n");
  for (int j = 0; j < m.nVars; ++j)
    if (lp.padC[j] != 0.0) w.put("   %+f * %s\n", lp.padC[j], cols[j].c_str());
  if (lp.dObjConst != 0.0) w.put("%+f\n", lp.dObjConst);
  append_qmatrix(m, w, -1, cols);
  w.put(";\n");
  const RowView rv = row_view(m);
  for (int i = 0; i < m.nCons; ++i) {
    w.put("[%s]\n", marlo_name(m.names.rows, i, "R%07d").c_str());
    for (int k = rv.beg[i]; k < rv.beg[i + 1]; ++k)
      w.put("   %+f * %s\n", rv.val[k], cols[rv.col[k]].c_str());
    if (rv.beg[i] == rv.beg[i + 1]) w.put("   0");
    append_qmatrix(m, w, i, cols);
    const char t = lp.pszConTypes[i];
    w.put("   %c %f;\n", t == 'L' ? '<' : t == 'E' ? '=' : '>', lp.padB[i]);
  }
  for (int j = 0; j < m.nVars; ++j) {
    const double l = lp.padL[j], u = lp.padU[j];
    if (l <= -QZ_INFINITY && u >= QZ_INFINITY) {
      w.put("@FREE (%8s);\n", cols[j].c_str());
    } else if (!(l == 0.0 && u >= QZ_INFINITY)) {
      w.put("@BND  (%f,%8s,%f);\n", std::max(l, -1e20), cols[j].c_str(), std::min(u, 1e20));
    }
  }
  if (!lp.pszVarTypes.empty()) {
    for (int j = 0; j < m.nVars; ++j) {
      const char t = lp.pszVarTypes[j];
      if (t != 'B' && t != 'I') continue;
      const bool binary = t == 'B' || (lp.padL[j] == 0.0 && lp.padU[j] == 1.0);
      w.put(binary ? "@BIN (%8s);\n" : "@GIN (%8s);\n", cols[j].c_str());
    }
  }
  w.put("\nend\n");
}

}  // namespace

int write_marlo_file(const Imodel& m, const char* fname) {
  if (m.modelState == QZ_STATUS_UNLOADED) return QZERR_INFO_NOT_AVAILABLE;
  if (m.lp.dObjSense != QZ_MIN && m.lp.dObjSense != QZ_MAX) return QZERR_BAD_OBJECTIVE_SENSE;
  for (char t : m.lp.pszConTypes)
    if (t != 'L' && t != 'E' && t != 'G') return QZERR_BAD_CONSTRAINT_TYPE;
  TextWriter w;
  QZ_CALL(w.open(m.env, fname));
  write_body(m, w);
  return w.close();
}

}  // namespace zento::io
