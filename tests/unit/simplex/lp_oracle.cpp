// Generated LPs with a planted optimum and an independent KKT certificate.
#include "lp_oracle.h"

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace zento::test {

int LpData::load(QZmodel model) const {
  return QZloadLPData(model, m, n, sense, objconst, c.data(), b.data(), types.data(),
                      static_cast<int>(vals.size()), beg.data(), nullptr, vals.data(), rows.data(),
                      lo.data(), up.data());
}

LpData LpData::from_model(QZmodel model) {
  LpData lp;
  lp.has_opt = false;
  int nnz = 0;
  if (QZgetDimensions(model, &lp.n, &lp.m, nullptr, &nnz, nullptr, nullptr, nullptr, nullptr,
                      nullptr, nullptr, nullptr) != 0)
    return lp;
  lp.c.resize(lp.n);
  lp.lo.resize(lp.n);
  lp.up.resize(lp.n);
  lp.b.resize(lp.m);
  lp.types.assign(lp.m, ' ');
  lp.beg.resize(lp.n + 1);
  std::vector<int> lens(lp.n);
  lp.rows.resize(std::max(nnz, 1));
  lp.vals.resize(std::max(nnz, 1));
  QZgetLPData(model, &lp.sense, &lp.objconst, lp.c.data(), lp.b.data(), lp.types.data(),
              lp.beg.data(), lens.data(), lp.vals.data(), lp.rows.data(), lp.lo.data(),
              lp.up.data());
  // Close gaps between columns so that beg[j+1] ends column j.
  std::vector<int> rows, beg(lp.n + 1, 0);
  std::vector<double> vals;
  for (int j = 0; j < lp.n; ++j) {
    for (int k = lp.beg[j]; k < lp.beg[j] + lens[j]; ++k) {
      rows.push_back(lp.rows[k]);
      vals.push_back(lp.vals[k]);
    }
    beg[j + 1] = static_cast<int>(rows.size());
  }
  lp.rows = rows;
  lp.vals = vals;
  lp.beg = beg;
  return lp;
}

std::string LpData::to_mps(const std::string& name) const {
  std::ostringstream o;
  o.precision(17);
  o << "NAME          " << name << "\n";
  if (sense == QZ_MAX) o << "OBJSENSE\n    MAX\n";
  o << "ROWS\n N  OBJ\n";
  for (int i = 0; i < m; ++i) o << " " << types[i] << "  R" << i << "\n";
  o << "COLUMNS\n";
  for (int j = 0; j < n; ++j) {
    o << "    C" << j << "  OBJ  " << c[j] << "\n";
    for (int k = beg[j]; k < beg[j + 1]; ++k) o << "    C" << j << "  R" << rows[k] << "  " << vals[k] << "\n";
  }
  o << "RHS\n";
  for (int i = 0; i < m; ++i)
    if (b[i] != 0) o << "    RHS  R" << i << "  " << b[i] << "\n";
  if (objconst != 0) o << "    RHS  OBJ  " << -objconst << "\n";
  o << "BOUNDS\n";
  for (int j = 0; j < n; ++j) {
    const bool li = lo[j] <= -QZ_INFINITY, ui = up[j] >= QZ_INFINITY;
    if (li && ui) {
      o << " FR BND  C" << j << "\n";
    } else if (!li && !ui && lo[j] == up[j]) {
      o << " FX BND  C" << j << "  " << lo[j] << "\n";
    } else {
      if (li) o << " MI BND  C" << j << "\n";
      else if (lo[j] != 0) o << " LO BND  C" << j << "  " << lo[j] << "\n";
      if (!ui) o << " UP BND  C" << j << "  " << up[j] << "\n";
    }
  }
  o << "ENDATA\n";
  return o.str();
}

LpData make_planted(uint64_t seed, const GenOptions& opt) {
  std::mt19937_64 rng(seed);
  std::uniform_real_distribution<double> U(0.0, 1.0);
  auto ri = [&](int k) { return static_cast<int>(U(rng) * k) % k; };
  auto mag = [&]() {
    if (opt.wide_scale) return std::pow(10.0, -3 + 6 * U(rng)) * (U(rng) < 0.5 ? -1 : 1);
    return std::round((U(rng) * 18 - 9)) / 2 + (U(rng) < 0.3 ? U(rng) : 0.0);
  };
  LpData lp;
  const int m = opt.m, n = opt.n;
  lp.m = m;
  lp.n = n;
  lp.sense = opt.allow_max && U(rng) < 0.5 ? QZ_MAX : QZ_MIN;
  lp.objconst = std::round(U(rng) * 10 - 5);
  // Matrix, at least one entry per row and column most of the time.
  std::vector<std::vector<std::pair<int, double>>> cols(n);
  for (int j = 0; j < n; ++j) {
    for (int i = 0; i < m; ++i)
      if (U(rng) < opt.density) {
        double v = mag();
        if (v == 0) v = 1;
        cols[j].push_back({i, v});
      }
  }
  for (int i = 0; i < m; ++i) {
    bool any = false;
    for (int j = 0; j < n && !any; ++j)
      for (auto& e : cols[j]) any |= e.first == i;
    if (!any && n > 0 && U(rng) < 0.9) {
      const int j = ri(n);
      cols[j].push_back({i, mag() + 0.5});
    }
  }
  // Column kinds: 0 lower only, 1 upper only (mirrored), 2 boxed, 3 free, 4 fixed.
  std::vector<double> x(n), d(n, 0.0);
  lp.lo.resize(n);
  lp.up.resize(n);
  for (int j = 0; j < n; ++j) {
    const int kind = ri(10) < 3 ? 0 : ri(5);
    const double l = std::round(U(rng) * 8 - 4), w = 1 + std::round(U(rng) * 6);
    // Position: 0 at lower, 1 at upper, 2 inside.
    int posn = ri(3);
    switch (kind) {
      case 0: lp.lo[j] = l; lp.up[j] = QZ_INFINITY; if (posn == 1) posn = 0; break;
      case 1: lp.lo[j] = -QZ_INFINITY; lp.up[j] = l; if (posn == 0) posn = 1; break;
      case 2: lp.lo[j] = l; lp.up[j] = l + w; break;
      case 3: lp.lo[j] = -QZ_INFINITY; lp.up[j] = QZ_INFINITY; posn = 2; break;
      default: lp.lo[j] = l; lp.up[j] = l; posn = 0; break;
    }
    const double dd = (U(rng) < opt.ddegen) ? 0.0 : 0.5 + std::round(U(rng) * 6);
    if (kind == 4) {
      x[j] = l;
      d[j] = (U(rng) < 0.5 ? -1 : 1) * dd;
    } else if (posn == 0) {
      x[j] = lp.lo[j];
      d[j] = dd;
    } else if (posn == 1) {
      x[j] = lp.up[j];
      d[j] = -dd;
    } else {
      const double lo = lp.lo[j] > -QZ_INFINITY ? lp.lo[j] : lp.up[j] - 10;
      const double hi = lp.up[j] < QZ_INFINITY ? lp.up[j] : lo + 10;
      x[j] = (U(rng) < opt.degen) ? lo : lo + std::round(U(rng) * (hi - lo) * 4) / 4;
      if (lp.lo[j] <= -QZ_INFINITY && lp.up[j] >= QZ_INFINITY) x[j] = std::round(U(rng) * 20 - 10);
      d[j] = 0;
    }
  }
  // Rows: activity, type, dual.
  std::vector<double> act(m, 0.0), y(m, 0.0);
  for (int j = 0; j < n; ++j)
    for (auto& e : cols[j]) act[e.first] += e.second * x[j];
  lp.types.resize(m);
  lp.b.resize(m);
  for (int i = 0; i < m; ++i) {
    const int t = ri(10);
    const bool active = U(rng) < 0.6;
    const double yv = (U(rng) < opt.ddegen) ? 0.0 : 0.5 + std::round(U(rng) * 6);
    if (t < 3) {
      lp.types[i] = 'L';
      lp.b[i] = active ? act[i] : act[i] + 1 + std::round(U(rng) * 5);
      y[i] = active ? -yv : 0.0;
    } else if (t < 6) {
      lp.types[i] = 'G';
      lp.b[i] = active ? act[i] : act[i] - 1 - std::round(U(rng) * 5);
      y[i] = active ? yv : 0.0;
    } else if (t < 9) {
      lp.types[i] = 'E';
      lp.b[i] = act[i];
      y[i] = (U(rng) < 0.5 ? -1 : 1) * yv;
    } else {
      lp.types[i] = 'N';
      lp.b[i] = std::round(U(rng) * 10);
      y[i] = 0;
    }
  }
  // Costs c = A^T y + d (minimization form).
  std::vector<double> cmin(n);
  for (int j = 0; j < n; ++j) {
    double s = d[j];
    for (auto& e : cols[j]) s += e.second * y[e.first];
    cmin[j] = s;
  }
  lp.c.resize(n);
  double obj = 0;
  for (int j = 0; j < n; ++j) {
    lp.c[j] = lp.sense == QZ_MAX ? -cmin[j] : cmin[j];
    obj += lp.c[j] * x[j];
  }
  lp.opt = obj + lp.objconst;
  lp.beg.assign(n + 1, 0);
  for (int j = 0; j < n; ++j) {
    std::sort(cols[j].begin(), cols[j].end());
    lp.beg[j + 1] = lp.beg[j] + static_cast<int>(cols[j].size());
    for (auto& e : cols[j]) {
      lp.rows.push_back(e.first);
      lp.vals.push_back(e.second);
    }
  }
  if (lp.vals.empty()) {
    lp.vals.push_back(0.0);
    lp.rows.push_back(0);
  }
  return lp;
}

KktReport check_kkt(const LpData& lp, const std::vector<double>& x, const std::vector<double>& y,
                    const std::vector<double>& d, const std::vector<double>& slack, double pobj) {
  KktReport r;
  const double sg = lp.sense == QZ_MAX ? -1.0 : 1.0;  // to minimization form
  char buf[160];
  auto note = [&](double& slot, double v, const char* what, int k) {
    if (v > slot) {
      slot = v;
      std::snprintf(buf, sizeof buf, "%s %d: %.3e", what, k, v);
      r.worst = buf;
    }
  };
  std::vector<double> act(lp.m, 0.0), aty(lp.n, 0.0);
  for (int j = 0; j < lp.n; ++j)
    for (int k = lp.beg[j]; k < lp.beg[j + 1]; ++k) {
      act[lp.rows[k]] += lp.vals[k] * x[j];
      aty[j] += lp.vals[k] * y[lp.rows[k]];
    }
  double cmag = 1, ymag = 1;
  for (int j = 0; j < lp.n; ++j) cmag = std::max(cmag, std::fabs(lp.c[j]));
  for (int i = 0; i < lp.m; ++i) ymag = std::max(ymag, std::fabs(y[i]));
  for (int j = 0; j < lp.n; ++j) {
    const double scale = 1 + std::fabs(x[j]);
    if (lp.lo[j] > -QZ_INFINITY) note(r.pinf, (lp.lo[j] - x[j]) / scale, "lower bound", j);
    if (lp.up[j] < QZ_INFINITY) note(r.pinf, (x[j] - lp.up[j]) / scale, "upper bound", j);
    const double dj = sg * (lp.c[j] - aty[j]);
    note(r.dinf, std::fabs(dj - sg * d[j]) / (cmag + ymag), "reduced cost mismatch", j);
    const bool atl = lp.lo[j] > -QZ_INFINITY && std::fabs(x[j] - lp.lo[j]) <= 1e-7 * scale;
    const bool atu = lp.up[j] < QZ_INFINITY && std::fabs(x[j] - lp.up[j]) <= 1e-7 * scale;
    double v = 0;
    if (!(atl && atu)) {
      if (atl) v = -dj;
      else if (atu) v = dj;
      else v = std::fabs(dj);
    }
    note(r.dinf, v / (cmag + ymag), "dual sign col", j);
    double gap = 1e300;
    if (lp.lo[j] > -QZ_INFINITY) gap = std::fabs(x[j] - lp.lo[j]);
    if (lp.up[j] < QZ_INFINITY) gap = std::min(gap, std::fabs(x[j] - lp.up[j]));
    note(r.compl_, std::min(gap, 1.0) * std::fabs(dj) / (cmag + ymag), "complementarity col", j);
  }
  for (int i = 0; i < lp.m; ++i) {
    const double scale = 1 + std::fabs(lp.b[i]);
    const double yi = sg * y[i];
    note(r.pinf, std::fabs(slack[i] - (lp.b[i] - act[i])) / scale, "slack mismatch", i);
    double v = 0, dv = 0;
    switch (lp.types[i]) {
      case 'L': v = act[i] - lp.b[i]; dv = yi; break;
      case 'G': v = lp.b[i] - act[i]; dv = -yi; break;
      case 'E': v = std::fabs(act[i] - lp.b[i]); break;
      default: dv = std::fabs(yi); break;
    }
    note(r.pinf, v / scale, "row", i);
    note(r.dinf, dv / (cmag + ymag), "dual sign row", i);
    if (lp.types[i] == 'L' || lp.types[i] == 'G')
      note(r.compl_, std::min(std::fabs(act[i] - lp.b[i]), 1.0) * std::fabs(yi) / (cmag + ymag),
           "complementarity row", i);
  }
  double obj = lp.objconst;
  for (int j = 0; j < lp.n; ++j) obj += lp.c[j] * x[j];
  note(r.objgap, std::fabs(obj - pobj) / (1 + std::fabs(obj)), "reported objective", -1);
  if (lp.has_opt)
    note(r.objgap, std::fabs(obj - lp.opt) / (1 + std::fabs(lp.opt)), "planted optimum", -1);
  return r;
}

KktReport check_model(QZmodel model, const LpData& lp) {
  std::vector<double> x(lp.n), y(lp.m), d(lp.n), s(lp.m);
  double obj = 0;
  KktReport bad;
  bad.pinf = 1e30;
  if (QZgetPrimalSolution(model, x.data()) || QZgetDualSolution(model, y.data()) ||
      QZgetReducedCosts(model, d.data()) || QZgetSlacks(model, s.data()) ||
      QZgetObjective(model, &obj)) {
    bad.worst = "solution not available";
    return bad;
  }
  return check_kkt(lp, x, y, d, s, obj);
}

KktReport check_basis(QZmodel model, const LpData& lp) {
  std::vector<double> x(lp.n), y(lp.m), d(lp.n), s(lp.m);
  std::vector<int> cst(lp.n), rst(lp.m);
  KktReport r;
  if (QZgetPrimalSolution(model, x.data()) || QZgetDualSolution(model, y.data()) ||
      QZgetReducedCosts(model, d.data()) || QZgetSlacks(model, s.data()) ||
      QZgetBasis(model, cst.data(), rst.data())) {
    r.pinf = 1e30;
    r.worst = "basis not available";
    return r;
  }
  char buf[160];
  auto note = [&](double& slot, double v, const char* what, int k) {
    if (v > slot) {
      slot = v;
      std::snprintf(buf, sizeof buf, "%s %d: %.3e", what, k, v);
      r.worst = buf;
    }
  };
  double cmag = 1, ymag = 1;
  for (int j = 0; j < lp.n; ++j) cmag = std::max(cmag, std::fabs(lp.c[j]));
  for (int i = 0; i < lp.m; ++i) ymag = std::max(ymag, std::fabs(y[i]));
  int basics = 0;
  for (int j = 0; j < lp.n; ++j) {
    const double scale = 1 + std::fabs(x[j]);
    switch (cst[j]) {
      case QZ_BASTYPE_ATLO: note(r.pinf, std::fabs(x[j] - lp.lo[j]) / scale, "column off its lower bound", j); break;
      case QZ_BASTYPE_ATUP: note(r.pinf, std::fabs(x[j] - lp.up[j]) / scale, "column off its upper bound", j); break;
      case QZ_BASTYPE_FNUL: note(r.pinf, std::fabs(x[j]), "free column off zero", j); break;
      default:
        if (cst[j] >= 0) {
          ++basics;
          note(r.dinf, std::fabs(d[j]) / (cmag + ymag), "basic column with a reduced cost", j);
        }
        break;
    }
  }
  for (int i = 0; i < lp.m; ++i) {
    if (rst[i] >= 0) {
      ++basics;
      note(r.dinf, std::fabs(y[i]) / (cmag + ymag), "basic row with a multiplier", i);
    } else if (lp.types[i] == 'L' || lp.types[i] == 'G') {
      note(r.pinf, std::fabs(s[i]) / (1 + std::fabs(lp.b[i])), "nonbasic row not tight", i);
    }
  }
  if (basics != lp.m) {
    r.pinf = 1e30;
    r.worst = "basics " + std::to_string(basics) + " of " + std::to_string(lp.m);
  }
  return r;
}

LpData dense_lp(int sense, std::vector<double> c, std::vector<std::vector<double>> A,
                std::vector<double> b, std::string types, std::vector<double> lo,
                std::vector<double> up) {
  LpData lp;
  lp.m = static_cast<int>(A.size());
  lp.n = static_cast<int>(c.size());
  lp.sense = sense;
  lp.c = std::move(c);
  lp.b = std::move(b);
  lp.types = std::move(types);
  lp.lo = std::move(lo);
  lp.up = std::move(up);
  lp.has_opt = false;
  lp.beg.assign(lp.n + 1, 0);
  for (int j = 0; j < lp.n; ++j) {
    for (int i = 0; i < lp.m; ++i)
      if (A[i][j] != 0) {
        lp.rows.push_back(i);
        lp.vals.push_back(A[i][j]);
      }
    lp.beg[j + 1] = static_cast<int>(lp.vals.size());
  }
  if (lp.vals.empty()) {
    lp.vals.push_back(0);
    lp.rows.push_back(0);
  }
  return lp;
}

std::vector<TableRow> read_lp_table(const std::string& folder, const std::string& collection) {
  std::vector<TableRow> rows;
  std::ifstream in(folder + "/" + collection + ".csv");
  std::string line;
  bool header = true;
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#') continue;
    if (header) {
      header = false;
      continue;
    }
    std::stringstream ss(line);
    TableRow r;
    r.collection = collection;
    std::string obj;
    std::getline(ss, r.model, ',');
    std::getline(ss, r.status, ',');
    std::getline(ss, obj, ',');
    r.has_obj = !obj.empty();
    if (r.has_obj) r.obj = std::strtod(obj.c_str(), nullptr);
    rows.push_back(r);
  }
  return rows;
}

std::string test_name(std::string s) {
  for (char& c : s)
    if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
  return s;
}

LpRun solve_lp(QZmodel model, int method) {
  LpRun r;
  const auto t0 = std::chrono::steady_clock::now();
  r.rc = QZoptimize(model, method, &r.status);
  r.secs = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
  QZgetInfo(model, QZ_IINFO_SIM_ITER, &r.iters);
  QZgetObjective(model, &r.obj);
  return r;
}

}  // namespace zento::test
