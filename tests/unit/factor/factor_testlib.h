// Test and benchmark helpers of the factorization layer: column matrices with logicals, random
// sparse bases of several shapes, a minimal MPS matrix loader, a crash basis, residuals.
#pragma once

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "lp/factor/lu.h"

namespace zento::lutest {

// Matrix with n structural columns over m rows; variable n+i is the logical of row i.
struct ColMatrix {
  int m = 0, n = 0;
  std::vector<int> beg, idx;
  std::vector<double> val;
  lu::LuCscHost host;

  // Points the LuCscHost at the arrays (call after the arrays are final).
  void bind();
  int nnz_of(int var) const { return var < n ? beg[var + 1] - beg[var] : 1; }
  // y += x_var * column(var)
  void axpy(int var, double x, std::vector<double>& y) const;
  double dot(int var, const std::vector<double>& y) const;
};

// kHyperSparse: mostly unit columns and a few short structurals, the shape of LP bases whose
// solves stay hyper-sparse.
enum class Shape {
  kSlackMix,
  kRandomDiag,
  kBanded,
  kBlock,
  kNearTriangular,
  kDenseKernel,
  kHyperSparse
};
const char* shape_name(Shape s);
inline constexpr Shape kAllShapes[] = {Shape::kSlackMix,  Shape::kRandomDiag,
                                       Shape::kBanded,    Shape::kBlock,
                                       Shape::kNearTriangular, Shape::kDenseKernel};

// A random matrix whose first m structural columns form a nonsingular basis with probability
// one; `extra` more structural columns serve as entering candidates.
ColMatrix random_matrix(int m, Shape shape, int extra, std::mt19937& rng);
std::vector<int> first_m_basis(const ColMatrix& a);

// Reads the matrix of an MPS file (.mps or .mps.gz) through the library's reader.
bool load_mps_matrix(const std::string& path, ColMatrix* a);

// Slack basis with structurals pivoted in by a triangular crash, then `npivots` random pivots
// that keep the basis well conditioned (|alpha_s| >= 0.5 max |alpha|), chosen with engine SLU.
std::vector<int> crash_basis(const ColMatrix& a, int npivots, std::mt19937& rng);

// max_i |(B x - b)_i| / max(1, max |b|) for x by slot, b by row.
double ftran_residual(const ColMatrix& a, const std::vector<int>& rbas,
                      const std::vector<double>& x, const std::vector<double>& b);
// max_j |(B^T y - c)_j| / max(1, max |c|) for y by row, c by slot.
double btran_residual(const ColMatrix& a, const std::vector<int>& rbas,
                      const std::vector<double>& y, const std::vector<double>& c);

int64_t basis_nnz(const ColMatrix& a, const std::vector<int>& rbas);

// Random right-hand side with `nz` nonzeros (nz >= m gives a dense one), in list form.
void random_rhs(int m, int nz, std::mt19937& rng, SpVec* v);

// One simplex-like step: FTRAN of column var with save, choose the slot by the ratio rule
// above (or `slot` when >= 0), update. Returns the slot replaced or -1 when no pivot was usable,
// and the engine status in *st.
int random_replace(LuFactor& lu, const ColMatrix& a, std::vector<int>& rbas, int var,
                   std::mt19937& rng, int* st);

// A caller vector for the in-place solves: values by position and the list of nonzero
// positions (n = -1 when dense).
struct Scattered {
  std::vector<double> val;
  std::vector<int> idx;
  int n = 0;
  explicit Scattered(int m) : val(m, 0.0), idx(m, 0) {}
  void load(const SpVec& v) {
    std::fill(val.begin(), val.end(), 0.0);
    if (v.n < 0) {
      std::copy(v.val.begin(), v.val.begin() + val.size(), val.begin());
      n = -1;
      return;
    }
    n = v.n;
    for (int k = 0; k < v.n; ++k) {
      idx[k] = v.idx[k];
      val[v.idx[k]] = v.val[k];
    }
  }
  lu::SvRef ref(bool dense_u = false) { return lu::SvRef{val.data(), idx.data(), &n, dense_u}; }
};

}  // namespace zento::lutest
