// Entries of the simplex engine used by the optimize driver and the public solves.
#pragma once

#include <vector>

#include "core/model.h"

namespace zento {

// Builds the working record (none may be attached) and solves; method 1 primal, 2 dual, 11
// runs as the primal.
int QZsplexOptimize(Imodel& model, int method);
// Warm start on the attached record; method 1 primal, anything else dual.
int QZsplexReoptimize(Imodel& model, int method);
// Takes a basis in model statuses into the attached record, building it when absent.
// Returns 0, or 1 when the count of basics was repaired, or an error code.
int qzi_glp_load_basis(Imodel& model, const int* cstat, const int* rstat);
// Whether the attached record holds a usable factorized basis.
bool qzi_glp_has_basis(const Imodel& model);
// Record measures that the driver's acceptance tests read.
struct GlpMeasures {
  bool present = false;
  int scale = 0;
  double iter = 0;
  double ynorm = 0, obj = 0;
  double ppfeas = 0, ddfeas = 0, ppfeas_sc = 0, ddfeas_sc = 0;
  int m = 0;
};
GlpMeasures qzi_glp_measures(const Imodel& model);
// Condition estimate of the final basis of the attached record (made on first request).
double qzi_glp_cond1est(const Imodel& model);

// The method a warm start should take after the data changes the record took: 1 primal,
// 0 no preference.
int qzi_glp_warm_method(const Imodel& model);

// Solves with the final basis in user scale. `dense` selects the dense forms.
int qzi_glp_ftran(Imodel& model, int nnz, const int* idx, const double* val, int* out_nnz,
                  int* out_idx, double* out_val);
int qzi_glp_btran(Imodel& model, int nnz, const int* idx, const double* val, int* out_nnz,
                  int* out_idx, double* out_val);

}  // namespace zento
