// Small random MIPs and an enumeration oracle: every integer assignment in the box is tried,
// with an LP over the continuous columns (or a direct row check when there are none).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "zento.h"

namespace zento::test {

struct MipData {
  int n = 0, m = 0;
  int sense = QZ_MIN;
  double objconst = 0;
  std::vector<double> c, b, lo, up, vals;
  std::vector<int> beg, rows;
  std::vector<char> rtypes, vtypes;
  int load(QZmodel model) const;
  std::string describe() const;
};

struct OracleAnswer {
  int status = QZ_STATUS_UNKNOWN;  // optimal, infeasible or unbounded
  double obj = 0;
  std::vector<double> x;
};

// Deterministic generator of small models; `kind` varies the shape (pure integer, mixed,
// equality rows, maximization, free continuous columns that may make it unbounded).
MipData random_mip(uint64_t seed, int kind);
OracleAnswer enumerate_mip(QZenv env, const MipData& d);
// Every row of `d` holds at `x` within `tol`.
bool rows_ok(const MipData& d, const std::vector<double>& x, double tol);

// Shared environment helpers.
QZenv test_env();
void quiet(QZmodel m);

}  // namespace zento::test
