// Work vector of the simplex engine: values by position plus the list of nonzero positions.
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

namespace zento {

// `n` counts the listed entries; a negative count marks a vector whose values are valid but
// whose list is not (a dense result); `pack` rebuilds the list from the values.
struct SVec {
  int n = 0;
  std::vector<int> idx;
  std::vector<double> val;

  int dim() const { return static_cast<int>(val.size()); }
  void resize(int m) {
    idx.assign(static_cast<size_t>(m), 0);
    val.assign(static_cast<size_t>(m), 0.0);
    n = 0;
  }
  void clear() {
    if (n < 0 || n * 4 > dim())
      std::fill(val.begin(), val.end(), 0.0);
    else
      for (int k = 0; k < n; ++k) val[idx[k]] = 0.0;
    n = 0;
  }
  void set_unit(int i, double v) {
    clear();
    val[i] = v;
    idx[0] = i;
    n = 1;
  }
  // Values below `tol` in magnitude become exact zeros and leave the list.
  void pack(double tol) {
    int c = 0;
    const int m = dim();
    for (int i = 0; i < m; ++i) {
      if (std::fabs(val[i]) > tol)
        idx[c++] = i;
      else
        val[i] = 0.0;
    }
    n = c;
  }
  // Drops tiny listed entries without a full pass.
  void tidy(double tol) {
    if (n < 0) {
      pack(tol);
      return;
    }
    int c = 0;
    for (int k = 0; k < n; ++k) {
      const int i = idx[k];
      if (std::fabs(val[i]) > tol)
        idx[c++] = i;
      else
        val[i] = 0.0;
    }
    n = c;
  }
  void copy_from(const SVec& o) {
    clear();
    if (o.n < 0) {
      val = o.val;
      n = -1;
      return;
    }
    for (int k = 0; k < o.n; ++k) {
      idx[k] = o.idx[k];
      val[o.idx[k]] = o.val[o.idx[k]];
    }
    n = o.n;
  }
};

}  // namespace zento
