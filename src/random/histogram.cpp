// Histograms of weighted samples with an automatic bin count.
#include <algorithm>
#include <cmath>
#include <vector>

#include "random/sampler.h"
#include "zento_errors.h"

namespace zento::random {

namespace {

constexpr int kMaxBins = 1000;

// Freedman-Diaconis width 2 IQR n^(-1/3) over the range; Sturges' log2 n + 1 when the
// quartiles coincide.
int auto_bins(const std::vector<double>& sorted, double lo, double hi) {
  const size_t n = sorted.size();
  const double q1 = sorted[n / 4], q3 = sorted[(3 * n) / 4 < n ? (3 * n) / 4 : n - 1];
  const double iqr = q3 - q1;
  int bins;
  if (iqr > 0.0 && hi > lo) {
    const double width = 2.0 * iqr / std::cbrt(static_cast<double>(n));
    bins = static_cast<int>(std::ceil((hi - lo) / width));
  } else {
    bins = static_cast<int>(std::ceil(std::log2(static_cast<double>(n)))) + 1;
  }
  return std::clamp(bins, 1, kMaxBins);
}

}  // namespace

int histogram(int n, const double* vals, const double* weights, double lo, double hi,
              int* pnBins, int* counts, double* probs, double* binLow, double* binHigh) {
  if (vals == nullptr || pnBins == nullptr) return QZERR_ILLEGAL_NULL_POINTER;
  if (n < 1) return QZERR_SAMP_SIZE_TOO_SMALL;
  std::vector<double> sorted(vals, vals + n);
  for (int i = 0; i < n; ++i) {
    if (!std::isfinite(vals[i])) return QZERR_DIST_BAD_VALUE;
    if (weights != nullptr && !(weights[i] >= 0.0 && std::isfinite(weights[i]))) {
      return QZERR_DIST_BAD_VALUE;
    }
  }
  std::sort(sorted.begin(), sorted.end());
  if (!(lo < hi)) {
    lo = sorted.front();
    hi = sorted.back();
  }
  int bins = *pnBins > 0 ? *pnBins : auto_bins(sorted, lo, hi);
  if (!(hi > lo)) {
    // All values equal: one bin around them.
    hi = lo + 1.0;
    bins = std::min(bins, 1);
  }
  *pnBins = bins;
  if (counts == nullptr && probs == nullptr && binLow == nullptr && binHigh == nullptr) return 0;
  std::vector<int> c(bins, 0);
  std::vector<double> w(bins, 0.0);
  double total = 0.0;
  const double width = (hi - lo) / bins;
  for (int i = 0; i < n; ++i) {
    const double v = vals[i];
    if (v < lo || v > hi) continue;
    int b = static_cast<int>((v - lo) / width);
    if (b >= bins) b = bins - 1;
    const double wt = weights ? weights[i] : 1.0;
    ++c[b];
    w[b] += wt;
    total += wt;
  }
  for (int b = 0; b < bins; ++b) {
    if (counts) counts[b] = c[b];
    if (probs) probs[b] = total > 0.0 ? w[b] / total : 0.0;
    if (binLow) binLow[b] = lo + b * width;
    if (binHigh) binHigh[b] = b + 1 == bins ? hi : lo + (b + 1) * width;
  }
  return 0;
}

}  // namespace zento::random
