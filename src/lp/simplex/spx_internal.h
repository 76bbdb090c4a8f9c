// Functions shared by the parts of the simplex engine.
#pragma once

#include "lp/simplex/glp.h"

namespace zento {

// Build and scaling.
Glp* lpini(Imodel& model, int* out_err);
void QZI_spx_param(Glp& g, const Imodel& model);
void QZI_spx_param_refresh(Glp& g, const Imodel& model);
[[nodiscard]] int QZI_spx_mbuild2(Glp& g, const Imodel& model);
[[nodiscard]] int QZI_spx_malloc(Glp& g);
void QZI_spx_mscale(Glp& g);
void qzi_build_rows(Glp& g);

// Basis heads.
void QZI_spx_set_biden(Glp& g);
int countbas(Glp& g, const char* who);
void pcrashbas(Glp& g);
void dcrashbas(Glp& g);
// Takes a basis in model statuses (columns then rows); repairs a wrong count of basics.
int qzi_load_basis(Glp& g, const int* cstat, const int* rstat);
void QZI_spx_save_curbas(Glp& g, BasSnap& s);
void qzi_restore_bas(Glp& g, const BasSnap& s);

// Values of the current basis.
double nbval(const Glp& g, int j);
void compute_primal(Glp& g);
void retag_row(Glp& g, int p);
void retag_all(Glp& g);
void compute_dual(Glp& g, const double* costv);
void compute_rdc(Glp& g, const double* costv);
double tag_cost(const Glp& g, int p);
// y^T a_j over the working column j.
double col_dot(const Glp& g, int j, const std::vector<double>& y);
// Pivot row alpha_j = rho^T a_j for all nonbasic j, row-wise when rho is sparse enough.
void compute_pivrow(Glp& g, const SVec& rho);
double objective_value(const Glp& g);
void compute_sums(Glp& g);

// Factorization.
[[nodiscard]] int QZI_spx_refactor(Glp& g);
[[nodiscard]] int QZI_spx_bupdate(Glp& g);
[[nodiscard]] int QZI_spx_pupdate(Glp& g);
int qzi_check_condest(Glp& g);
void qzi_get_basis_cond1est(Glp& g);
// The estimate of the final basis, made when first asked for: most solves never need it.
double spx_cond1est(Glp& g);
void ftran_col(Glp& g, int j, SVec& out, bool save);
void request_fact(Glp& g, int reason);

// Methods.
[[nodiscard]] int psimplex(Glp& g);
[[nodiscard]] int psimplex_phase1_mode(Glp& g);
[[nodiscard]] int dsimplex(Glp& g);
int spx_check_time(Glp& g);

// Logging.
bool spx_log_on(const Glp& g, int level);
void qzi_exit_msg(Glp& g);

}  // namespace zento
