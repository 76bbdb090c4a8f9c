// Random MIPs and their optimum by enumeration of the integers.
#include "mip_oracle.h"

#include <cmath>
#include <cstdio>
#include <random>
#include <sstream>

namespace zento::test {

int MipData::load(QZmodel model) const {
  int rc = QZloadLPData(model, m, n, sense, objconst, c.data(), b.data(), rtypes.data(),
                        static_cast<int>(vals.size()), beg.data(), nullptr, vals.data(),
                        rows.data(), lo.data(), up.data());
  if (rc != 0) return rc;
  std::vector<char> t = vtypes;
  return QZloadVarType(model, t.data());
}

std::string MipData::describe() const {
  std::ostringstream o;
  o << (sense == QZ_MIN ? "min" : "max") << " n=" << n << " m=" << m << "\n c:";
  for (double v : c) o << " " << v;
  o << "\n types: " << std::string(vtypes.begin(), vtypes.end()) << "\n bounds:";
  for (int j = 0; j < n; ++j) o << " [" << lo[j] << "," << up[j] << "]";
  o << "\n rows: " << std::string(rtypes.begin(), rtypes.end()) << " b:";
  for (double v : b) o << " " << v;
  return o.str();
}

MipData random_mip(uint64_t seed, int kind) {
  std::mt19937_64 g(seed);
  auto uni = [&](int a, int b) { return std::uniform_int_distribution<int>(a, b)(g); };
  MipData d;
  const int nint = uni(2, 5);
  const int ncont = (kind % 3 == 0) ? 0 : uni(1, 3);
  d.n = nint + ncont;
  d.m = uni(1, 5);
  d.sense = (kind % 2 == 1) ? QZ_MAX : QZ_MIN;
  d.objconst = uni(-3, 3);
  d.c.resize(d.n);
  d.lo.resize(d.n);
  d.up.resize(d.n);
  d.vtypes.resize(d.n);
  for (int j = 0; j < d.n; ++j) {
    const bool in = j < nint;
    d.vtypes[j] = in ? (uni(0, 2) == 0 ? 'B' : 'I') : 'C';
    d.c[j] = in ? uni(-6, 6) : uni(-12, 12) / 4.0;
    if (d.vtypes[j] == 'B') {
      d.lo[j] = 0;
      d.up[j] = 1;
    } else if (in) {
      d.lo[j] = uni(-2, 1);
      d.up[j] = d.lo[j] + uni(1, 3);
    } else {
      d.lo[j] = 0;
      d.up[j] = uni(2, 8);
      // Some shapes leave continuous columns unbounded above.
      if (kind % 5 == 4 && uni(0, 1)) d.up[j] = 1e30;
    }
  }
  // Fractional bounds on an integer column are allowed: the search rounds them.
  if (kind % 7 == 6) d.up[0] += 0.5;
  d.beg.assign(d.n + 1, 0);
  std::vector<std::vector<std::pair<int, double>>> cols(d.n);
  d.rtypes.resize(d.m);
  d.b.resize(d.m);
  for (int i = 0; i < d.m; ++i) {
    double act = 0;
    int cnt = 0;
    for (int j = 0; j < d.n; ++j) {
      if (uni(0, 99) < 60) {
        const double a = j < nint ? uni(-5, 5) : uni(-10, 10) / 2.0;
        if (a == 0) continue;
        cols[j].push_back({i, a});
        act += a * (d.lo[j] + (d.up[j] < 1e29 ? d.up[j] : d.lo[j] + 4)) / 2;
        ++cnt;
      }
    }
    if (cnt == 0) {
      const int j = uni(0, d.n - 1);
      cols[j].push_back({i, 1.0});
      act += (d.lo[j] + std::min(d.up[j], d.lo[j] + 4)) / 2;
    }
    const int t = uni(0, 9);
    d.rtypes[i] = t < 5 ? 'L' : (t < 8 || kind % 4 != 2 ? 'G' : 'E');
    d.b[i] = std::round(act + uni(-3, 3));
    if (d.rtypes[i] == 'L' && kind % 5 == 4) d.b[i] += 2;
  }
  for (int j = 0; j < d.n; ++j) {
    d.beg[j + 1] = d.beg[j] + static_cast<int>(cols[j].size());
    for (auto& [r, a] : cols[j]) {
      d.rows.push_back(r);
      d.vals.push_back(a);
    }
  }
  if (d.vals.empty()) {
    d.vals.push_back(0);
    d.rows.push_back(0);
  }
  return d;
}

bool rows_ok(const MipData& d, const std::vector<double>& x, double tol) {
  std::vector<double> act(d.m, 0.0);
  for (int j = 0; j < d.n; ++j)
    for (int k = d.beg[j]; k < d.beg[j + 1]; ++k) act[d.rows[k]] += d.vals[k] * x[j];
  for (int i = 0; i < d.m; ++i) {
    const double s = d.b[i] - act[i];
    if (d.rtypes[i] == 'L' && s < -tol) return false;
    if (d.rtypes[i] == 'G' && s > tol) return false;
    if (d.rtypes[i] == 'E' && std::fabs(s) > tol) return false;
  }
  return true;
}

OracleAnswer enumerate_mip(QZenv env, const MipData& d) {
  OracleAnswer ans;
  ans.status = QZ_STATUS_INFEASIBLE;
  std::vector<int> ints, lo, hi;
  bool has_cont = false;
  for (int j = 0; j < d.n; ++j) {
    if (d.vtypes[j] == 'C') {
      has_cont = true;
      continue;
    }
    ints.push_back(j);
    lo.push_back(static_cast<int>(std::ceil(d.lo[j] - 1e-9)));
    hi.push_back(static_cast<int>(std::floor(d.up[j] + 1e-9)));
  }
  const double sign = d.sense == QZ_MAX ? -1.0 : 1.0;
  std::vector<int> v(lo);
  for (size_t k = 0; k < ints.size(); ++k)
    if (lo[k] > hi[k]) return ans;
  for (;;) {
    std::vector<double> x(d.n, 0.0);
    for (size_t k = 0; k < ints.size(); ++k) x[ints[k]] = v[k];
    if (!has_cont) {
      if (rows_ok(d, x, 1e-9)) {
        double obj = d.objconst;
        for (int j = 0; j < d.n; ++j) obj += d.c[j] * x[j];
        if (ans.status != QZ_STATUS_OPTIMAL || sign * obj < sign * ans.obj) {
          ans.status = QZ_STATUS_OPTIMAL;
          ans.obj = obj;
          ans.x = x;
        }
      }
    } else {
      int rc = 0;
      QZmodel lp = QZcreateModel(env, &rc);
      std::vector<double> l = d.lo, u = d.up;
      for (size_t k = 0; k < ints.size(); ++k) l[ints[k]] = u[ints[k]] = v[k];
      QZloadLPData(lp, d.m, d.n, d.sense, d.objconst, d.c.data(), d.b.data(), d.rtypes.data(),
                   static_cast<int>(d.vals.size()), d.beg.data(), nullptr, d.vals.data(),
                   d.rows.data(), l.data(), u.data());
      QZsetModelIntParameter(lp, QZ_IPARAM_LP_PRINTLEVEL, 0);
      int st = 0;
      QZoptimize(lp, QZ_METHOD_PSIMPLEX, &st);
      if (st == QZ_STATUS_UNBOUNDED) {
        ans.status = QZ_STATUS_UNBOUNDED;
        QZdeleteModel(&lp);
        break;
      }
      if (st == QZ_STATUS_OPTIMAL || st == QZ_STATUS_BASIC_OPTIMAL) {
        double obj = 0;
        QZgetObjective(lp, &obj);
        if (ans.status != QZ_STATUS_OPTIMAL || sign * obj < sign * ans.obj - 1e-9) {
          ans.status = QZ_STATUS_OPTIMAL;
          ans.obj = obj;
          ans.x.assign(d.n, 0);
          QZgetPrimalSolution(lp, ans.x.data());
        }
      }
      QZdeleteModel(&lp);
    }
    size_t k = 0;
    while (k < ints.size() && v[k] == hi[k]) {
      v[k] = lo[k];
      ++k;
    }
    if (k == ints.size()) break;
    ++v[k];
  }
  return ans;
}

QZenv test_env() {
  int rc = 0;
  return QZcreateEnv(&rc);
}

void quiet(QZmodel m) {
  QZsetModelIntParameter(m, QZ_IPARAM_LP_PRINTLEVEL, 0);
  QZsetModelIntParameter(m, QZ_IPARAM_MIP_PRINTLEVEL, 0);
}

}  // namespace zento::test
