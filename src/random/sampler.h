// The sampler record behind QZsample and the operations on it.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "random/distrib.h"
#include "zento.h"

namespace zento::random {

// Target of one correlation induction, shared by the samplers it arranged.
struct CorrGroup {
  int type = 0;
  int dim = 0;
  std::vector<double> target;  // dim x dim, as given (before conversion to scores)
};

// Interpolation table of QZsampEvalDistrLI: nodes x with their F and f.
struct LiTable {
  std::vector<double> x, F, f;
};

inline constexpr int kMaxParams = 5;
inline constexpr unsigned kPointsCurrent = 1u << 16;
inline constexpr int kLiNodes = 5000;

}  // namespace zento::random

struct QZsample_s {
  QZenv env = nullptr;
  int dist = 0;
  const zento::random::DistInfo* info = nullptr;  // null for tables and user laws
  std::array<double, zento::random::kMaxParams> params{};
  unsigned setMask = 0;
  int nParams = 0;

  std::vector<double> points;
  std::vector<double> ciPoints;
  QZrandGen rg = nullptr;
  unsigned flags = 0;
  int method = -1;
  QZrandGen genRg = nullptr;  // generator and stream epoch of the current points
  uint64_t genEpoch = 0;
  double maxAbs = 0.0;
  int used = 0;

  user_pdf_t userFunc = nullptr;
  void* userData = nullptr;
  std::vector<QZsample_s*> children;

  // Discrete table, sorted by value, with cumulative probabilities.
  std::vector<double> tableVals, tableProbs, tableCum;

  std::shared_ptr<zento::random::CorrGroup> corr;
  int corrIndex = -1;
  std::unique_ptr<zento::random::LiTable> li;
};

namespace zento::random {

// Samplers made through create_sample are listed in their environment.
QZsample create_sample(QZenv env, int dist, bool listed, int* err);
[[nodiscard]] int delete_sample(QZsample* ps);
// Deletes every sampler still listed in the environment (at QZdeleteEnv).
void free_env_samplers(QZenv env);

int param_count(const QZsample_s& s);
[[nodiscard]] int set_param(QZsample s, int i, double v);
[[nodiscard]] int set_rg(QZsample s, QZrandGen rg);
[[nodiscard]] int load_table(QZsample s, int n, const double* probs, const double* vals);
[[nodiscard]] int eval(QZsample s, int kind, double x, double* out);
[[nodiscard]] int eval_li(QZsample s, int kind, double x, double* out);
[[nodiscard]] int eval_user(QZsample s, int kind, const double* in, int nin, double* out);
[[nodiscard]] int add_child(QZsample s, QZsample child);
[[nodiscard]] int generate(QZsample s, int method, int n);
[[nodiscard]] int load_points(QZsample s, int n, const double* pts);
[[nodiscard]] int next_point(QZsample s, double* out);
[[nodiscard]] int sample_info(const QZsample_s& s, int key, void* out);
// Points the correlated view reads: the correlated points when present, else the points.
const std::vector<double>& view_points(const QZsample_s& s);

// Correlation (correlation.cpp).
[[nodiscard]] int induce_correlation(QZsample* samples, int dim, int type, int nnz,
                                     const int* rows, const int* cols, const double* vals);
[[nodiscard]] int correlation_matrix(QZsample* samples, int dim, int type, double* out);
[[nodiscard]] int correlation_diff(QZsample* samples, int dim, int kind, double* out);
// Sample correlation of two equally long columns.
double corr_pearson(const std::vector<double>& a, const std::vector<double>& b);
double corr_spearman(const std::vector<double>& a, const std::vector<double>& b);
double corr_kendall(const std::vector<double>& a, const std::vector<double>& b);

// Histogram (histogram.cpp).
[[nodiscard]] int histogram(int n, const double* vals, const double* weights, double lo,
                            double hi, int* pnBins, int* counts, double* probs,
                            double* binLow, double* binHigh);

}  // namespace zento::random
