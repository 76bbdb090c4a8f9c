// Test oracle for LP answers: generated LPs with a planted optimal primal-dual pair, and an
// independent check of the KKT conditions of a reported solution.
#pragma once

#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "zento.h"

namespace zento::test {

struct LpData {
  int m = 0, n = 0, sense = QZ_MIN;
  double objconst = 0;
  std::vector<double> c, b, lo, up;
  std::string types;
  std::vector<int> beg, rows;
  std::vector<double> vals;
  double opt = 0;           // planted optimum (user sense)
  bool has_opt = true;      // false: no known optimum, the certificate alone decides
  int expect = QZ_STATUS_BASIC_OPTIMAL;

  int load(QZmodel model) const;
  // Reads the data of a loaded linear model (no optimum known).
  static LpData from_model(QZmodel model);
  // Fixed-format MPS text of the model (for the peers).
  std::string to_mps(const std::string& name) const;
};

struct GenOptions {
  int m = 10, n = 15;
  double density = 0.3;
  double degen = 0.2;      // share of basic variables put on a bound (primal degeneracy)
  double ddegen = 0.2;     // share of nonbasic columns with zero reduced cost
  bool wide_scale = false; // coefficients over many orders of magnitude
  bool allow_max = true;
};

// LP whose optimum is known by construction; all bound and row types appear.
LpData make_planted(uint64_t seed, const GenOptions& opt);

struct KktReport {
  double pinf = 0, dinf = 0, compl_ = 0, objgap = 0;
  std::string worst;
  bool ok(double tol) const { return pinf <= tol && dinf <= tol && compl_ <= tol && objgap <= tol; }
};

// Checks x, y, d, slacks read from the model against the data, in relative measures.
KktReport check_kkt(const LpData& lp, const std::vector<double>& x, const std::vector<double>& y,
                    const std::vector<double>& d, const std::vector<double>& slack, double pobj);

// Reads the solution of a solved model and checks it.
KktReport check_model(QZmodel model, const LpData& lp);

// Checks the basis that comes with a solution: m basic statuses, nonbasic columns on the
// bound their status names and nonbasic inequalities tight (in `pinf`), zero reduced costs
// of basic columns and zero multipliers of basic rows (in `dinf`), in relative measures.
KktReport check_basis(QZmodel model, const LpData& lp);

// An LP from a dense row-major matrix; zeros are not stored, no optimum is known.
LpData dense_lp(int sense, std::vector<double> c, std::vector<std::vector<double>> A,
                std::vector<double> b, std::string types, std::vector<double> lo,
                std::vector<double> up);

inline bool is_optimal(int s) { return s == QZ_STATUS_OPTIMAL || s == QZ_STATUS_BASIC_OPTIMAL; }

// Infeasible and unbounded verdicts agree when one side could not tell them apart.
inline bool same_verdict(int a, int b) {
  auto either = [](int s) { return s == QZ_STATUS_INFEASIBLE || s == QZ_STATUS_UNBOUNDED; };
  return a == b || (a == QZ_STATUS_INFORUNB && either(b)) || (b == QZ_STATUS_INFORUNB && either(a));
}

// One row of an instance table `<folder>/<collection>.csv`: model, status, published objective.
struct TableRow {
  std::string collection, model, status;
  bool has_obj = false;
  double obj = 0;
};
std::vector<TableRow> read_lp_table(const std::string& folder, const std::string& collection);

// A model name as a test name: every character but letters and digits becomes '_'.
std::string test_name(std::string s);

// One solve by `method` with its outcome.
struct LpRun {
  int rc = 0, status = 0, iters = 0;
  double obj = 0, secs = 0;
};
LpRun solve_lp(QZmodel model, int method = QZ_METHOD_FREE);

}  // namespace zento::test
