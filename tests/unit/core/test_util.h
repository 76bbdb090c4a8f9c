// Shared fixtures for the core tests: an environment and a small LP with names.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "zento.h"
#include "../common/env_fixture.h"

namespace zento::test {


// max 2x + 3y  s.t.  x + y <= 4 (c0),  x + 3y >= 2 (c1),  x - y = 1 (c2); 0 <= x <= 10, y free.
struct SmallLP {
  int nCons = 3, nVars = 2, sense = QZ_MAX;
  double objConst = 1.5;
  std::vector<double> c{2.0, 3.0};
  std::vector<double> b{4.0, 2.0, 1.0};
  std::string types = "LGE";
  std::vector<int> beg{0, 3, 6};
  std::vector<int> rows{0, 1, 2, 0, 1, 2};
  std::vector<double> coef{1.0, 1.0, 1.0, 1.0, 3.0, -1.0};
  std::vector<double> lo{0.0, -QZ_INFINITY};
  std::vector<double> up{10.0, QZ_INFINITY};

  // Empty arrays are passed as null pointers.
  template <class T>
  static const T* ptr(const std::vector<T>& v) {
    return v.empty() ? nullptr : v.data();
  }
  int load(QZmodel m) const {
    return QZloadLPData(m, nCons, nVars, sense, objConst, ptr(c), ptr(b),
                        types.empty() ? nullptr : types.data(), static_cast<int>(coef.size()),
                        ptr(beg), nullptr, ptr(coef), ptr(rows), ptr(lo), ptr(up));
  }
};

inline int load_names(QZmodel m) {
  const char* rn[] = {"cap", "demand", "balance"};
  const char* cn[] = {"x", "y"};
  return QZloadNameData(m, "small", "profit", "rhs", "rng", "bnd", const_cast<char**>(rn),
                        const_cast<char**>(cn), nullptr);
}

}  // namespace zento::test
