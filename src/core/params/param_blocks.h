// Parameter blocks: plain fields that the solvers read directly.
//
// Field names are the macro name without its QZ_IPARAM_/QZ_DPARAM_ prefix, in lower case,
// so that `QZ_DPARAM_SOLVER_FEASTOL` is `SplexPam.solver_feastol`. Fields that are not
// parameters (nested-call markers and the like) say so in their comment.
#pragma once

#include <string>

namespace zento {

struct SolverParams {
  int objsense = 1;
  double callbackfreq = 0.5;
  int allow_cntrlbreak = 1;
  int decomposition_type = 1;
  int instruct_loadtype = 0;
  int copy_mode = 0;
  int num_threads = 1;
  int multithread_mode = -1;
  int solver_method = 0;
  int ipm_num_threads = 1;
  int mps_obj_writestyle = 2;
  int sol_report_style = 0;
  int profiler_level = 0;
};

struct SplexParams {
  int solver_iusol = 0;
  double solver_timlmt = -1;
  double solver_cutoffval = -1e30;
  double solver_feastol = 1e-7;
  int solver_restart = 0;
  int solver_ipmsol = 0;
  double solver_opttol = 1e-7;
  int lp_scale = -1;
  int prob_to_solve = 0;
  int lp_printlevel = 2;
  int lp_prelevel = 126;
  int lp_itrlmt = -1;
  // Simplex engine.
  int splex_refacfrq = 200;
  int splex_ppricing = -1;
  int splex_dpricing = -1;
  int lp_ppartial = 0;
  int lp_dpswitch = 1;
  int lp_oprfree = 16468;
  int lp_palloc = 5;
  double lp_infinity = 1e30;
  double lp_bndinf = 1e15;
  double solver_pert_feastol = 1e-12;
  double lp_min_feastol = 1e-9;
  double lp_max_feastol = 1e-5;
  double lp_min_opttol = 1e-9;
  double lp_max_opttol = 1e-5;
  double lp_min_pivtol = 1e-10;
  double lp_max_pivtol = 1e-5;
  double lp_piv_zerotol = 1e-8;
  double lp_piv_bigtol = 1e-5;
  double lp_aij_zerotol = 2.220446049250313e-16;
  int lp_ratrange = 4;
  double lp_bigm = 1e6;
  int lp_prtfg = 0;
  int solver_usecutoffval = 0;
  int lp_dratio = 1;
  int splex_dual_phase = 0;
  int lp_xmode = 128;
  int lp_pcolal_factor = 0;
  int lp_maxmerge = 0;
  double lp_pertfact = 0.0;
  double lp_mergefact = 0.7;
  int lp_umode = 30;
  int lp_basrecov_method = 0;
  int lp_dynobjmode = 0;
  int lu_core = 0;
  double lu_eps_pivrel = 0.5;
  int solver_mode = 0;
  int splex_use_external = 0;
  // Not parameters: set while the model is a subproblem of a running search.
  int in_mip = 0;
  int in_gop = 0;
  int in_msw = 0;
  int in_sp = 0;
  int in_reopt = 0;
};

struct BandBParams {
  int mip_printlevel = 2;
  double mip_inttol = 1e-6;
};

struct NLPParams {
  int nlp_solve_as_lp = 0;
  int nlp_printlevel = 1;
  int nlp_linearz = 0;
  int nlp_solver = 7;
  int nlp_linearity = 0;
};

struct GOPParams {
  int in_gop = 0;  // not a parameter: nested-call marker
};

struct IISParams {
  int in_iis = 0;  // not a parameter: nested-call marker
  int iis_infeas_norm = 0;
  int iis_method = 0;
  int fmt_issql = 0;
};

struct SPParams {
  int stoc_method = -1;
};

struct CommonParams {
  std::string expr_lib_name;
};

// One row of the parameter registry `parlist` and of its per-object copies `AllPamItems`.
struct ParItem {
  int xxx_pos = 0;
  int xxx_id = 0;
  const char* xxx_szid = nullptr;
  const char* xxx_name = nullptr;
  const char* xxx_help = nullptr;
  int xxx_type = 0;
  int xxx_class = 0;
  double xxx_min = 0;
  double xxx_max = 0;
  double xxx_dfl = 0;
  double xxx_val = 0;
  double xxx_step = -99;
  void* xxx_local = nullptr;
};

}  // namespace zento
