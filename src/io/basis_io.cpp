// Basis files: binary status arrays, a text list, the basis matrix as an MPS model and as a
// coordinate list.
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "core/errors.h"
#include "core/load.h"
#include "core/log.h"
#include "core/names.h"
#include "core/optimize.h"
#include "io/io.h"
#include "io/numtext.h"
#include "io/side_util.h"
#include "io/stream.h"

namespace zento::io {

namespace {

struct Basis {
  std::vector<int> cols, rows;
};

int stored_basis(const Imodel& m, Basis& b) {
  if (!m.sol || m.sol->basicStatus == QZ_STATUS_UNLOADED) return QZERR_INFO_NOT_AVAILABLE;
  if (static_cast<int>(m.sol->colStatus.size()) < m.nVars ||
      static_cast<int>(m.sol->rowStatus.size()) < m.nCons)
    return QZERR_INFO_NOT_AVAILABLE;
  b.cols.assign(m.sol->colStatus.begin(), m.sol->colStatus.begin() + m.nVars);
  b.rows.assign(m.sol->rowStatus.begin(), m.sol->rowStatus.begin() + m.nCons);
  return 0;
}

// Parameters a basis solve changes, restored on every way out.
struct BasisSolveScope {
  Imodel& m;
  int prelevel, threads, decomposition;
  explicit BasisSolveScope(Imodel& model)
      : m(model),
        prelevel(model.SplexPam.lp_prelevel),
        threads(model.SolverPam.num_threads),
        decomposition(model.SolverPam.decomposition_type) {
    m.SplexPam.lp_prelevel = 0;
    m.SolverPam.num_threads = 1;
    m.SolverPam.decomposition_type = 1;
  }
  ~BasisSolveScope() {
    m.SplexPam.lp_prelevel = prelevel;
    m.SolverPam.num_threads = threads;
    m.SolverPam.decomposition_type = decomposition;
  }
};

int solved_basis(Imodel& m, Basis& b) {
  if (stored_basis(m, b) == 0) return 0;
  QZlogmod(&m, base_printlevel(m), "\nDBG| Warning: glp structure not available. Constructing optimal basis..\n");
  BasisSolveScope scope(m);
  int status = 0;
  QZ_CALL(QZoptimize_impl(m, QZ_METHOD_FREE, &status));
  return stored_basis(m, b);
}

bool linear_only(const Imodel& m) {
  return m.quad.nnz() == 0 && m.cones.cols.empty() && m.nNLPnnz == 0 && m.nNLPobjnnz == 0;
}

int count_basic(const Basis& b) {
  int n = 0;
  for (int s : b.cols) n += s >= 0;
  for (int s : b.rows) n += s >= 0;
  return n;
}

int write_binary(Stream* s, const Basis& b) {
  if (!b.cols.empty() && qzs_fwrite(b.cols.data(), sizeof(int), b.cols.size(), s) != b.cols.size())
    return QZERR_INTERNAL_ERROR;
  if (!b.rows.empty() && qzs_fwrite(b.rows.data(), sizeof(int), b.rows.size(), s) != b.rows.size())
    return QZERR_INTERNAL_ERROR;
  return 0;
}

int write_text(Stream* s, const Imodel& m, const Basis& b) {
  int w = 8;
  if (!m.names.cols.empty())
    for (int j = 0; j < m.nVars; ++j) w = std::max(w, static_cast<int>(std::strlen(m.names.cols.name(j))));
  if (!m.names.rows.empty())
    for (int i = 0; i < m.nCons; ++i) w = std::max(w, static_cast<int>(std::strlen(m.names.rows.name(i))));
  for (int j = 0; j < m.nVars; ++j) {
    if (!m.names.cols.empty())
      qzs_format(s, "   %-*s", w, m.names.cols.name(j));
    else
      qzs_format(s, "  C%-7d", j + 1);
    qzs_format(s, "%22s\n", basis_status_text(b.cols[j]));
  }
  for (int i = 0; i < m.nCons; ++i) {
    if (!m.names.rows.empty())
      qzs_format(s, "   %-*s", w, m.names.rows.name(i));
    else
      qzs_format(s, "R%-7d", i + 2);
    qzs_format(s, "%22s\n", basis_status_text(b.rows[i]));
  }
  return qzs_ioerr(s) ? QZERR_INTERNAL_ERROR : 0;
}

double logical_coef(const Imodel& m, int i) { return m.lp.pszConTypes[i] == 'G' ? -1.0 : 1.0; }

int write_mtx(Stream* s, const Imodel& m, const Basis& b) {
  if (count_basic(b) != m.nCons) return QZERR_BAD_BASIS;
  long long entries = 0;
  for (int j = 0; j < m.nVars; ++j)
    if (b.cols[j] >= 0) entries += m.lp.panAcols[j];
  for (int i = 0; i < m.nCons; ++i) entries += b.rows[i] >= 0;
  qzs_format(s, "%12d %12d %12lld\n", m.nCons, m.nCons, entries);
  int col = 0;
  for (int j = 0; j < m.nVars; ++j) {
    if (b.cols[j] < 0) continue;
    ++col;
    const int beg = m.lp.paiAcols[j];
    for (int k = beg; k < beg + m.lp.panAcols[j]; ++k)
      qzs_format(s, "%12d %12d %26.16e\n", m.lp.paiArows[k] + 1, col, m.lp.padAcoef[k]);
  }
  for (int i = 0; i < m.nCons; ++i)
    if (b.rows[i] >= 0) qzs_format(s, "%12d %12d %26.16e\n", i + 1, ++col, logical_coef(m, i));
  return qzs_ioerr(s) ? QZERR_INTERNAL_ERROR : 0;
}

int write_mps_basis(Stream* s, const Imodel& m, const Basis& b) {
  const std::string obj = m.names.objName.empty() ? "OBJ" : m.names.objName;
  qzs_format(s, "NAME           %8s\n", m.names.title.c_str());
  qzs_format(s, "ROWS\n N  %8s\n", obj.c_str());
  for (int i = 0; i < m.nCons; ++i) qzs_format(s, " E  %8s\n", QZI_getConstraintNamei(m, i).c_str());
  qzs_puts(s, "COLUMNS\n");
  std::vector<std::string> names;
  auto pairs = [&](const std::string& col, const std::vector<std::pair<std::string, double>>& e) {
    for (size_t k = 0; k < e.size(); k += 2) {
      qzs_format(s, "    %8s  %8s  %12s", col.c_str(), e[k].first.c_str(),
                 free_fmt(e[k].second, 12).c_str());
      if (k + 1 < e.size())
        qzs_format(s, "   %8s  %12s", e[k + 1].first.c_str(), free_fmt(e[k + 1].second, 12).c_str());
      qzs_puts(s, "\n");
    }
  };
  for (int j = 0; j < m.nVars; ++j) {
    if (b.cols[j] < 0) continue;
    std::vector<std::pair<std::string, double>> e;
    if (m.lp.padC[j] != 0.0) e.push_back({obj, m.lp.padC[j]});
    const int beg = m.lp.paiAcols[j];
    for (int k = beg; k < beg + m.lp.panAcols[j]; ++k)
      e.push_back({QZI_getConstraintNamei(m, m.lp.paiArows[k]), m.lp.padAcoef[k]});
    if (e.empty()) e.push_back({obj, 0.0});
    names.push_back(QZI_getVariableNamej(m, j));
    pairs(names.back(), e);
  }
  for (int i = 0; i < m.nCons; ++i) {
    if (b.rows[i] < 0) continue;
    char name[32];
    std::snprintf(name, sizeof name, "A%07d", i);
    names.push_back(name);
    pairs(name, {{QZI_getConstraintNamei(m, i), logical_coef(m, i)}});
  }
  qzs_puts(s, "RHS\nBOUNDS\n");
  for (const std::string& n : names) qzs_format(s, " FR BND1      %s\n", n.c_str());
  qzs_puts(s, "ENDATA\n");
  return qzs_ioerr(s) ? QZERR_INTERNAL_ERROR : 0;
}

}  // namespace

int write_basis(Imodel& m, const char* pszFname, int nFormat) {
  if (m.modelState == QZ_STATUS_UNLOADED) return QZERR_INFO_NOT_AVAILABLE;
  const int layout = nFormat < 0 ? -nFormat : nFormat;
  if (layout < 1 || layout > 4) return QZERR_PARAM_OUT_OF_RANGE;
  Basis b;
  if (layout == 2) {
    if (!linear_only(m)) return QZERR_INTERNAL_ERROR;
    QZ_CALL(solved_basis(m, b));
  } else {
    QZ_CALL(stored_basis(m, b));
    if ((layout == 3 || layout == 4) && !linear_only(m)) return QZERR_INTERNAL_ERROR;
  }
  StreamPtr s(qzs_fopen(m.env, pszFname, layout == 1 ? "wb" : "w"));
  if (!s) return QZERR_CANNOT_OPEN_FILE;
  int rc = 0;
  switch (layout) {
    case 1:
      rc = write_binary(s.get(), b);
      break;
    case 2:
      rc = write_mps_basis(s.get(), m, b);
      break;
    case 3:
      rc = write_text(s.get(), m, b);
      break;
    default:
      rc = write_mtx(s.get(), m, b);
      break;
  }
  if (qzs_fclose(s.release()) != 0 && rc == 0) rc = QZERR_INTERNAL_ERROR;
  return rc;
}

int read_basis(Imodel& m, const char* pszFname, int nFormat) {
  if (nFormat != 1 && nFormat != -1) return QZERR_PARAM_OUT_OF_RANGE;
  if (m.modelState == QZ_STATUS_UNLOADED) return QZERR_NO_MODEL_LOADED;
  StreamPtr s(qzs_fopen(m.env, pszFname, "rb"));
  if (!s) return QZERR_CANNOT_OPEN_FILE;
  Basis b;
  b.cols.resize(static_cast<size_t>(m.nVars));
  b.rows.resize(static_cast<size_t>(m.nCons));
  if (m.nVars > 0 && qzs_fread(b.cols.data(), sizeof(int), b.cols.size(), s.get()) != b.cols.size())
    return QZERR_INTERNAL_ERROR;
  if (m.nCons > 0 && qzs_fread(b.rows.data(), sizeof(int), b.rows.size(), s.get()) != b.rows.size())
    return QZERR_INTERNAL_ERROR;
  return load_basis(m, b.cols.data(), b.rows.data());
}

}  // namespace zento::io
