// Helpers of the factorization tests and benchmarks.
#include "factor_testlib.h"

#include "zento.h"
#include "zento_io.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>

namespace zento::lutest {

void ColMatrix::bind() {
  host.nrows = m;
  host.ncols = n;
  host.colbeg = beg.data();
  host.collen = nullptr;
  host.rowidx = idx.data();
  host.val = val.data();
  host.logical_sign = nullptr;
  host.init_logicals();
}

void ColMatrix::axpy(int var, double x, std::vector<double>& y) const {
  if (var >= n) {
    y[var - n] += x;
    return;
  }
  for (int k = beg[var]; k < beg[var + 1]; ++k) y[idx[k]] += x * val[k];
}

double ColMatrix::dot(int var, const std::vector<double>& y) const {
  if (var >= n) return y[var - n];
  double s = 0.0;
  for (int k = beg[var]; k < beg[var + 1]; ++k) s += val[k] * y[idx[k]];
  return s;
}

const char* shape_name(Shape s) {
  switch (s) {
    case Shape::kSlackMix: return "slackmix";
    case Shape::kRandomDiag: return "randdiag";
    case Shape::kBanded: return "banded";
    case Shape::kBlock: return "block";
    case Shape::kNearTriangular: return "neartri";
    case Shape::kDenseKernel: return "densekernel";
    case Shape::kHyperSparse: return "hypersparse";
  }
  return "?";
}

namespace {

// Magnitude log-uniform in [0.1, 10], random sign.
double rand_val(std::mt19937& rng) {
  std::uniform_real_distribution<double> e(-1.0, 1.0);
  std::bernoulli_distribution sign(0.5);
  const double v = std::pow(10.0, e(rng));
  return sign(rng) ? v : -v;
}

// Adds column entries (row, value), summing duplicates.
void add_col(ColMatrix& a, std::map<int, double>& col) {
  for (const auto& [r, v] : col) {
    if (v == 0.0) continue;
    a.idx.push_back(r);
    a.val.push_back(v);
  }
  a.beg.push_back(static_cast<int>(a.idx.size()));
  ++a.n;
  col.clear();
}

}  // namespace

ColMatrix random_matrix(int m, Shape shape, int extra, std::mt19937& rng) {
  ColMatrix a;
  a.m = m;
  a.beg.push_back(0);
  std::vector<int> rp(m), cp(m);
  for (int i = 0; i < m; ++i) rp[i] = cp[i] = i;
  std::shuffle(rp.begin(), rp.end(), rng);
  std::shuffle(cp.begin(), cp.end(), rng);
  std::uniform_int_distribution<int> row(0, std::max(0, m - 1));
  std::uniform_real_distribution<double> u01(0.0, 1.0);
  std::map<int, double> col;
  const int kdense = std::min(m, 60);
  const int blk = 12;
  std::vector<std::map<int, double>> cols(m);
  for (int jj = 0; jj < m; ++jj) {
    const int j = cp[jj];  // logical column position before shuffling
    auto& c = cols[jj];
    switch (shape) {
      case Shape::kSlackMix:
        c[rp[j]] = 8.0 * rand_val(rng);
        if (u01(rng) > 0.3) {
          const int k = 1 + static_cast<int>(u01(rng) * 5);
          for (int q = 0; q < k; ++q) c[row(rng)] += rand_val(rng);
        }
        break;
      case Shape::kRandomDiag: {
        c[rp[j]] = 2.0 * rand_val(rng);
        const int k = 1 + static_cast<int>(u01(rng) * 7);
        for (int q = 0; q < k; ++q) c[row(rng)] += 0.5 * rand_val(rng);
        break;
      }
      case Shape::kBanded:
        for (int d = -3; d <= 3; ++d)
          if (j + d >= 0 && j + d < m) c[rp[j + d]] = rand_val(rng) * (d == 0 ? 4.0 : 1.0);
        break;
      case Shape::kBlock: {
        const int b0 = (j / blk) * blk, b1 = std::min(m, b0 + blk);
        for (int i = b0; i < b1; ++i)
          if (i == j || u01(rng) < 0.4) c[rp[i]] = rand_val(rng);
        if (u01(rng) < 0.1) c[row(rng)] += rand_val(rng);
        break;
      }
      case Shape::kNearTriangular:
        // Dominant diagonal keeps the triangular inverse from growing geometrically.
        c[rp[j]] = 20.0 * (u01(rng) < 0.5 ? 1.0 : -1.0) * (1.0 + u01(rng));
        for (int q = 0; q < 3; ++q) {
          const int i = j + 1 + static_cast<int>(u01(rng) * 20);
          if (i < m) c[rp[i]] += 0.3 * rand_val(rng);
        }
        if (u01(rng) < 0.05) c[row(rng)] += rand_val(rng);
        break;
      case Shape::kHyperSparse:
        c[rp[j]] = 4.0 * rand_val(rng);
        if (u01(rng) < 0.15) c[row(rng)] += rand_val(rng);
        break;
      case Shape::kDenseKernel:
        c[rp[j]] = 20.0 * rand_val(rng);
        if (j < kdense) {
          for (int i = 0; i < kdense; ++i)
            if (u01(rng) < 0.7) c[rp[i]] += rand_val(rng);
        } else if (j + 1 < m) {
          c[rp[j + 1 + static_cast<int>(u01(rng) * (m - j - 1))]] += 0.1 * rand_val(rng);
        }
        break;
    }
  }
  for (int jj = 0; jj < m; ++jj) add_col(a, cols[jj]);
  for (int e = 0; e < extra; ++e) {
    const int k = 1 + static_cast<int>(u01(rng) * 8);
    for (int q = 0; q < k; ++q) col[row(rng)] += rand_val(rng);
    add_col(a, col);
  }
  a.bind();
  return a;
}

std::vector<int> first_m_basis(const ColMatrix& a) {
  std::vector<int> rbas(a.m);
  for (int j = 0; j < a.m; ++j) rbas[j] = j;
  return rbas;
}

bool load_mps_matrix(const std::string& path, ColMatrix* out) {
  int err = 0;
  QZenv env = QZcreateEnv(&err);
  if (!env) return false;
  QZmodel model = QZcreateModel(env, &err);
  bool ok = model && QZreadMPSFile(model, path.c_str(), QZ_MPS_AUTO) == 0;
  int m = 0, n = 0, nz = 0;
  ok = ok && QZgetInfo(model, QZ_IINFO_NUM_CONS, &m) == 0 &&
       QZgetInfo(model, QZ_IINFO_NUM_VARS, &n) == 0 && QZgetInfo(model, QZ_IINFO_NUM_NONZ, &nz) == 0;
  ColMatrix a;
  if (ok) {
    std::vector<int> beg(n + 1), len(n), rows(nz);
    std::vector<double> vals(nz);
    ok = QZgetLPData(model, nullptr, nullptr, nullptr, nullptr, nullptr, beg.data(), len.data(),
                     vals.data(), rows.data(), nullptr, nullptr) == 0;
    a.m = m;
    a.beg.push_back(0);
    std::map<int, double> col;
    for (int j = 0; ok && j < n; ++j) {
      for (int k = beg[j]; k < beg[j] + len[j]; ++k) col[rows[k]] += vals[k];
      add_col(a, col);
    }
  }
  if (model) QZdeleteModel(&model);
  QZdeleteEnv(&env);
  if (!ok || a.m == 0) return false;
  *out = std::move(a);
  out->bind();
  return true;
}

std::vector<int> crash_basis(const ColMatrix& a, int npivots, std::mt19937& rng) {
  const int m = a.m, n = a.n;
  std::vector<int> rbas(m);
  for (int i = 0; i < m; ++i) rbas[i] = n + i;
  // Triangular crash: shortest columns first, pivot on a large entry in a row no chosen
  // column touches yet; then every row of the column closes.
  std::vector<int> order(n);
  for (int j = 0; j < n; ++j) order[j] = j;
  std::stable_sort(order.begin(), order.end(),
                   [&](int x, int y) { return a.nnz_of(x) < a.nnz_of(y); });
  std::vector<char> closed(m, 0);
  std::vector<char> basic(n + m, 0);
  for (int i = 0; i < m; ++i) basic[n + i] = 1;
  for (int j : order) {
    double cmax = 0.0;
    for (int k = a.beg[j]; k < a.beg[j + 1]; ++k) cmax = std::max(cmax, std::fabs(a.val[k]));
    int best = -1;
    double bv = 0.0;
    for (int k = a.beg[j]; k < a.beg[j + 1]; ++k) {
      const int i = a.idx[k];
      if (!closed[i] && std::fabs(a.val[k]) >= 0.5 * cmax && std::fabs(a.val[k]) > bv) {
        best = i;
        bv = std::fabs(a.val[k]);
      }
    }
    if (best < 0) continue;
    basic[rbas[best]] = 0;
    rbas[best] = j;
    basic[j] = 1;
    for (int k = a.beg[j]; k < a.beg[j + 1]; ++k) closed[a.idx[k]] = 1;
  }
  if (npivots <= 0 || n == 0) return rbas;
  int err = 0;
  lu::LuOptions opt;
  auto lu = QZI_lu_create(m, opt, QZI_lu_datacol, const_cast<lu::LuCscHost*>(&a.host), &err);
  if (!lu || QZI_lu_fact(*lu, rbas.data()) != 0) return rbas;
  std::uniform_int_distribution<int> pick(0, n - 1);
  int done = 0;
  for (int tries = 0; done < npivots && tries < 4 * npivots; ++tries) {
    const int var = pick(rng);
    if (basic[var]) continue;
    int st = 0;
    const std::vector<int> before = rbas;
    const int s = random_replace(*lu, a, rbas, var, rng, &st);
    if (s >= 0 && st == 0) {
      basic[before[s]] = 0;
      basic[var] = 1;
      ++done;
    }
    if (st != 0 || QZI_lu_eta_size(*lu) >= 50) {
      if (st != 0) rbas = before;
      if (QZI_lu_fact(*lu, rbas.data()) != 0) break;
    }
  }
  return rbas;
}

double ftran_residual(const ColMatrix& a, const std::vector<int>& rbas,
                      const std::vector<double>& x, const std::vector<double>& b) {
  std::vector<double> r(b.size(), 0.0);
  for (size_t j = 0; j < rbas.size(); ++j)
    if (x[j] != 0.0) a.axpy(rbas[j], x[j], r);
  double e = 0.0, nb = 0.0;
  for (size_t i = 0; i < b.size(); ++i) {
    e = std::max(e, std::fabs(r[i] - b[i]));
    nb = std::max(nb, std::fabs(b[i]));
  }
  return e / std::max(nb, 1e-300);
}

double btran_residual(const ColMatrix& a, const std::vector<int>& rbas,
                      const std::vector<double>& y, const std::vector<double>& c) {
  double e = 0.0, nc = 0.0;
  for (size_t j = 0; j < rbas.size(); ++j) {
    e = std::max(e, std::fabs(a.dot(rbas[j], y) - c[j]));
    nc = std::max(nc, std::fabs(c[j]));
  }
  return e / std::max(nc, 1e-300);
}

int64_t basis_nnz(const ColMatrix& a, const std::vector<int>& rbas) {
  int64_t s = 0;
  for (int v : rbas) s += a.nnz_of(v);
  return s;
}

void random_rhs(int m, int nz, std::mt19937& rng, SpVec* v) {
  if (v->dim() < m) v->resize(m);
  if (nz >= m) {
    for (int i = 0; i < m; ++i) v->val[i] = rand_val(rng);
    v->n = -1;
    return;
  }
  std::uniform_int_distribution<int> row(0, m - 1);
  std::vector<char> used(m, 0);
  int k = 0;
  while (k < nz) {
    const int i = row(rng);
    if (used[i]) continue;
    used[i] = 1;
    v->idx[k] = i;
    v->val[k++] = rand_val(rng);
  }
  v->n = k;
}

int random_replace(LuFactor& lu, const ColMatrix& a, std::vector<int>& rbas, int var,
                   std::mt19937& rng, int* st) {
  const int m = a.m;
  SpVec in(m), alpha(m);
  lu::LuColumn col;
  QZI_lu_datacol(const_cast<lu::LuCscHost*>(&a.host), var, &col);
  for (int k = 0; k < col.len; ++k) {
    in.idx[k] = col.idx[k];
    in.val[k] = col.val[k];
  }
  in.n = col.len;
  *st = QZI_lu_ftran(lu, in, alpha, 1);
  if (*st != 0) return -1;
  std::vector<double> al(m);
  alpha.to_dense(al.data());
  double amax = 0.0;
  for (double v : al) amax = std::max(amax, std::fabs(v));
  if (amax == 0.0) return -1;
  std::vector<int> cand;
  for (int s = 0; s < m; ++s)
    if (std::fabs(al[s]) >= 0.5 * amax) cand.push_back(s);
  std::uniform_int_distribution<int> pick(0, static_cast<int>(cand.size()) - 1);
  const int s = cand[pick(rng)];
  *st = QZI_lu_update(lu, s, al[s], 0);
  if (*st != 0) return -1;
  rbas[s] = var;
  return s;
}

}  // namespace zento::lutest
