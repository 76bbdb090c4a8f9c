// Parameter blocks: plain fields that the solvers read directly.
//
// Field names are the macro name without its QZ_IPARAM_/QZ_DPARAM_/QZ_SPARAM_ prefix, in lower
// case, so that `QZ_DPARAM_SOLVER_FEASTOL` is `SplexPam.solver_feastol`. Where a limit exists in
// an int and a double form, both names lead to one double field. The initial values are the
// working defaults of a new environment; the registry table (parlist.inc) binds every parameter
// to its field and a unit test holds the two together. Fields that are not parameters (nested-
// call markers and the like) say so in their comment.
#pragma once

#include <string>

namespace zento {

// General settings of the driver, threads, file handling and output.
struct SolverParams {
  // General
  int objsense = 1;
  double callbackfreq = 0.5;
  double objprintmul = 1;
  int check_for_errors = 0;
  int allow_cntrlbreak = 1;
  int decomposition_type = 1;
  int mps_obj_writestyle = 2;
  int sol_report_style = 0;
  int instruct_loadtype = 0;
  int string_lenlmt = 20;
  int use_namedata = 1;
  int copy_mode = 0;
  int sbd_num_threads = 1;
  int num_threads = 1;
  int multithread_mode = -1;
  int find_block = 0;
  int profiler_level = 0;
  int instruct_readmode = 1;
  int instruct_subout = -1;
  int solpool_lim = 20;
  int find_symmetry_level = -1;
  int find_symmetry_print_level = 0;
  int tuner_print_level = 1;
  int default_seed = 1031;

  // Solver
  int solver_concurrent_optmode = 0;
  int solver_method = 0;

  // Barrier
  int ipm_num_threads = 1;
};

// The block the LP engine reads: simplex, barrier, scaling, presolve and factorization.
struct SplexParams {
  // General
  int barrier_solver = 4;

  // Solver
  int solver_iusol = 0;
  double solver_timlmt = -1;  // int and double forms share it
  double solver_cutoffval = -1e30;
  double solver_feastol = 1e-07;
  int solver_restart = 0;
  int solver_ipmsol = 0;
  double solver_opttol = 1e-07;
  int solver_usecutoffval = 0;
  int solver_pre_elim_fill = 1000;
  double solver_pert_feastol = 1e-12;
  int solver_partialsol_level = 0;
  int solver_mode = 0;

  // Barrier
  double ipm_tol_infeas = 1e-10;
  double ipm_tol_path = 1e-08;
  double ipm_tol_pfeas = 1e-08;
  double ipm_tol_rel_step = 0.9999;
  double ipm_tol_psafe = 1;
  double ipm_tol_dfeas = 1e-08;
  double ipm_tol_dsafe = 1;
  double ipm_tol_mu_red = 1e-08;
  double ipm_basis_rel_tol_s = 1e-12;
  double ipm_basis_tol_s = 1e-06;
  double ipm_basis_tol_x = 1e-06;
  double ipm_bi_lu_tol_rel_piv = 0.01;
  double ipm_co_tol_infeas = 1e-12;
  double ipm_co_tol_pfeas = 1e-08;
  double ipm_co_tol_dfeas = 1e-08;
  double ipm_co_tol_mu_red = 1e-08;
  int ipm_max_iterations = 1000;
  int ipm_off_col_trh = 40;
  int ipm_check_convexity = 1;

  // Simplex and presolve
  int lp_scale = -1;
  double lp_itrlmt = -1;  // int and double forms share it
  int splex_ppricing = -1;
  int splex_refacfrq = 200;
  int prob_to_solve = 0;
  int lp_printlevel = 2;
  int splex_dpricing = -1;
  int splex_dual_phase = 0;
  int lp_prelevel = 254;
  int splex_use_external = 0;
  double lp_min_feastol = 1e-09;
  double lp_max_feastol = 1e-05;
  double lp_min_opttol = 1e-09;
  double lp_max_opttol = 1e-05;
  double lp_min_pivtol = 1e-10;
  double lp_max_pivtol = 1e-05;
  double lp_aij_zerotol = 2.220446049250313e-16;
  double lp_piv_zerotol = 1e-08;
  double lp_piv_bigtol = 1e-05;
  double lp_bigm = 1000000;
  double lp_bndinf = 1000000000000000;
  double lp_infinity = 1e30;
  int lp_ppartial = 0;
  int lp_dratio = 1;
  int lp_ratrange = 4;
  int lp_dpswitch = 1;
  int lp_palloc = 5;
  int lp_prtfg = 0;
  int lp_oprfree = 16468;
  int lp_sprint_sub = 0;
  int lp_xmode = 128;  // the registry reports 12
  int lp_pcolal_factor = 0;
  int lp_maxmerge = 0;
  double lp_pertfact = 0;
  double lp_dynobjfact = 0.75;
  int lp_dynobjmode = 0;
  double lp_mergefact = 0.7;
  int lp_umode = 30;  // the registry reports 22
  int lp_sprint_maxpass = 100;
  int lp_sprint_colfact = 10;  // the registry reports 0
  int lp_basrecov_method = 0;
  int lp_baspolish_itrlmt = 0;  // the registry reports -1
  int lp_baspolish_depth = 0;  // the registry reports -1
  int lp_baspolish_mode = 0;

  // Factorization
  int lu_num_candits = 4;
  int lu_max_updates = 500;
  int lu_print_level = 0;
  int lu_update_type = 1;
  int lu_mode = 0;
  int lu_pivmod = 0;
  double lu_eps_diag = 2.220446049250313e-16;
  double lu_eps_nonz = 2.220446049250313e-16;
  double lu_eps_pivabs = 1e-08;
  double lu_eps_pivrel = 0.5;
  double lu_ini_rcond = 0.01;
  double lu_spvtol_update = 0.001;
  double lu_spvtol_ftran = 0.2;
  double lu_spvtol_btran = 0.1;
  int lu_core = 0;

  // Not parameters: set while the model is a subproblem of a running search.
  int in_mip = 0;
  int in_gop = 0;
  int in_msw = 0;
  int in_sp = 0;
  int in_reopt = 0;
};

// Mixed-integer search, including branch-and-price.
struct BandBParams {
  // Mixed-integer
  double mip_timlim = -1;  // int and double forms share it
  double mip_aopttimlim = 100;  // int and double forms share it
  double mip_lsoltimlim = -1;  // int and double forms share it
  int mip_prelevel = 3070;
  int mip_nodeselrule = 4;
  double mip_inttol = 1e-06;
  double mip_relinttol = 8e-06;
  double mip_relopttol = 1e-06;
  double mip_peropttol = 1e-05;
  int mip_maxcutpass_top = 100;
  int mip_maxcutpass_tree = 2;
  double mip_addcutper = 0.75;
  double mip_addcutper_tree = 0.75;
  int mip_maxnonimp_cutpass = 3;
  int mip_cutlevel_top = 57342;
  int mip_cutlevel_tree = 53246;
  double mip_cuttimlim = -1;  // int and double forms share it
  int mip_cutdepth = 5;
  int mip_cutfreq = 10;
  int mip_heulevel = 3;
  int mip_printlevel = 2;
  int mip_preprintlevel = 0;
  double mip_cutoffobj = 1e30;
  int mip_usecutoffobj = 0;
  int mip_strongbranchlevel = 10;
  int mip_treereorderlevel = 10;
  int mip_branchdir = 0;
  int mip_topopt = 0;
  int mip_reopt = 0;
  int mip_solvertype = 0;
  int mip_keepinmem = 0;
  int mip_branchrule = 0;
  double mip_redcostfix_cutoff = 0.99;
  double mip_addcutobjtol = 1.5625e-05;
  double mip_heumintimlim = 0;  // int and double forms share it
  int mip_branch_prio = 0;
  int mip_scaling_bound = 10000;
  double mip_pseudocost_weigt = 6.25;
  double mip_lbigm = 100000;
  double mip_delta = 1e-06;
  int mip_dual_solution = 0;
  int mip_branch_limit = -1;
  double mip_itrlim = -1;
  int mip_aggcutlim_top = -1;
  int mip_aggcutlim_tree = 3;
  double mip_switchfac_sim_ipm_iter = -1;
  int mip_anodes_switch_df = 50000;
  double mip_absopttol = 0;
  double mip_minabsobjstep = 0;
  int mip_pseudocost_rule = 0;
  int mip_enum_heumode = 4;
  int mip_prelevel_tree = 686;
  double mip_redcostfix_cutoff_tree = 0.9;
  int mip_use_int_zero_tol = 0;
  int mip_use_cuts_heu = -1;
  double mip_bigm_for_inttol = 100000000;
  int mip_strongbranchdonum = 3;
  int mip_makecut_inactive_count = 20;
  int mip_pre_elim_fill = 100;
  int mip_heu_mode = 0;
  int mip_fp_mode = -1;
  double mip_fp_weight = 1;
  int mip_fp_opt_method = 0;
  double mip_fp_timlim = 1800;
  int mip_fp_itrlim = 500;
  int mip_fp_heu_mode = 0;
  double mip_obj_threshold = -1e30;
  int mip_localbranchnum = 0;
  double mip_switchfac_sim_ipm_time = -1;
  double mip_itrlim_sim = -1;
  double mip_itrlim_nlp = -1;
  double mip_itrlim_ipm = -1;
  int mip_maxnum_mip_sol_storage = 10;
  int mip_concurrent_topoptmode = 0;
  int mip_concurrent_reoptmode = 0;
  int mip_preheu_level = -1;
  int mip_preheu_pre_level = 10;
  int mip_preheu_print_level = 0;
  int mip_preheu_tc_iterlim = 20000000;
  int mip_preheu_dfe_vstlim = 200;
  int mip_preheu_var_seq = -1;
  int mip_use_partialsol_level = 2;
  int mip_general_mode = 2;
  int mip_num_threads = 1;
  int mip_polish_num_branch_next = 4000;
  int mip_polish_max_branch_count = 2000;
  double mip_polish_alpha_target = 0.6;
  int mip_concurrent_strategy = -1;
  double mip_branch_top_val_diff_weight = 1;
  int mip_bascuts_donum = 3;
  int mip_para_sub = 1;
  double mip_para_rnd_itrlmt = 2;
  double mip_para_init_node = -1;
  int mip_para_itr_mode = 1;
  int mip_para_fp = 1;
  int mip_para_fp_mode = 0;
  int mip_heu_drop_obj = 0;
  double mip_abscuttol = -1;
  int mip_perspective_reform = -1;
  int mip_treereordermode = 2;
  int mip_xsolver = 0;
  int mip_bnb_try_bnp = 0;
  int mip_kbest_use_gop = 0;
  int mip_symmetry_mode = 0;
  int mip_alldiff_method = -1;
  int mip_sollim = -1;

  // Branch-and-price
  double bnp_infbnd = 100000;
  int bnp_level = 1;
  int bnp_print_level = 2;
  double bnp_box_size = 0;
  int bnp_num_threads = 1;
  double bnp_sub_itrlmt = -1;
  int bnp_find_blk = 1;
  int bnp_prelevel = 0;
  double bnp_col_lmt = -1;
  double bnp_timlim = -1;
  double bnp_itrlim_sim = -1;
  double bnp_itrlim_ipm = -1;
  int bnp_branch_limit = -1;
  double bnp_itrlim = -1;
};

// Nonlinear solvers, multistart and the genetic search.
struct NLPParams {
  // Nonlinear
  int nlp_solve_as_lp = 0;
  int nlp_solver = 7;
  int nlp_subsolver = 0;
  int nlp_printlevel = 1;
  double nlp_pstep_finitediff = 5e-07;
  int nlp_deriv_difftype = 0;
  double nlp_feastol = 1e-06;
  double nlp_redgtol = 1e-07;
  int nlp_use_crash = 0;
  int nlp_use_steepedge = 0;
  int nlp_use_slp = 1;
  int nlp_use_selconeval = 0;
  int nlp_prelevel = 0;
  double nlp_itrlmt = 2147480000;  // int and double forms share it
  int nlp_linearz = 0;
  int nlp_linearity = 0;
  int nlp_startpoint = 1;
  int nlp_convexrelax = 0;
  int nlp_cr_alg_reform = 0;
  int nlp_quadchk = 1;
  int nlp_autoderiv = 0;
  int nlp_maxlocalsearch = 5;
  int nlp_convex = 1;
  int nlp_conopt_ver = 3;
  int nlp_use_zento_crash = 0;
  int nlp_stall_itrlmt = 100;
  int nlp_autohess = 0;
  int nlp_feaschk = 0;
  int nlp_maxsup = 2147483647;
  int nlp_msw_solidx = 0;
  int nlp_iters_per_logline = 50;
  int nlp_max_retry = 5;
  int nlp_msw_norm = 2;
  int nlp_msw_popsize = -1;
  int nlp_msw_maxpop = -1;
  int nlp_msw_maxnoimp = -1;
  int nlp_msw_filtmode = -1;
  double nlp_msw_poxdist_thres = 0.01;
  double nlp_msw_eucdist_thres = 0.001;
  double nlp_msw_xnulrad_factor = 0.5;
  double nlp_msw_xkktrad_factor = 0.85;
  int nlp_maxlocalsearch_tree = 1;
  int nlp_msw_num_threads = 1;
  int nlp_msw_rg_seed = 1019;
  int nlp_msw_prepmode = -1;
  int nlp_msw_rmapmode = -1;
  int nlp_xsmode = 197152;
  double nlp_msw_overlap_ratio = 0.1;
  double nlp_inf = 1e30;
  int nlp_ipm2grg = 1;
  int nlp_use_sdp = 1;
  int nlp_linearz_sheet_consistent = 0;
  double nlp_cutoffobj = -1e30;
  int nlp_usecutoffobj = 0;
  int nlp_conic_reform = 1;

  // Genetic
  double ga_cxover_prob = 0.8;
  double ga_xover_spread = 10;
  double ga_ixover_prob = 0.8;
  double ga_cmutat_prob = 0.05;
  double ga_mutat_spread = 20;
  double ga_imutat_prob = 0.1;
  double ga_tol_zero = 1e-14;
  double ga_tol_pfeas = 1e-07;
  double ga_inf = 1000000000000000;
  double ga_infbnd = 100000000;
  double ga_blxa = 5;
  double ga_blxb = 5;
  int ga_cxover_method = -1;
  int ga_ixover_method = -1;
  int ga_cmutat_method = -1;
  int ga_imutat_method = -1;
  int ga_seed = 1031;
  int ga_ngen = 500;
  int ga_popsize = 200;
  int ga_fileout = 0;
  int ga_printlevel = 1;
  int ga_inject_opt = 0;
  int ga_num_threads = 1;
  int ga_objdir = -1;
  double ga_objstop = 1e30;
  double ga_migrate_prob = 0;
  int ga_sspace = 0;
};

struct GOPParams {
  // Global
  double gop_relopttol = 1e-05;
  double gop_flttol = 1e-10;
  double gop_boxtol = 1e-06;
  double gop_widtol = 0.0001;
  double gop_deltatol = 1e-07;
  double gop_bndlim = 10000000000;
  double gop_timlim = -1;  // int and double forms share it
  int gop_optchkmd = 2;
  int gop_branchmd = 5;
  int gop_maxwidmd = 0;
  int gop_prelevel = 1022;
  int gop_postlevel = 14;
  int gop_bbsrchmd = 1;
  int gop_decompptmd = 1;
  int gop_algreformmd = 18;
  int gop_relbrndmd = 0;
  int gop_printlevel = 1;
  int gop_bndlim_mode = 2;
  double gop_branch_limit = -1;  // int and double forms share it
  int gop_corelevel = 30;
  int gop_opt_mode = 1;
  int gop_heu_mode = 0;
  int gop_subout_mode = 1;
  int gop_use_nlpsolve = 1;
  int gop_lsolbranlim = -1;
  int gop_lpsopt = 2;
  int gop_quadmd = 0;
  int gop_lim_mode = 1;
  double gop_itrlim = -1;
  double gop_itrlim_sim = -1;
  double gop_itrlim_ipm = -1;
  double gop_itrlim_nlp = -1;
  double gop_absopttol = 1e-06;
  double gop_peropttol = 0.0001;
  double gop_aopttimlim = 100;
  int gop_linearz = 1;
  int gop_num_threads = 1;
  int gop_multilinear = 1;
  double gop_obj_threshold = -1e30;
  int gop_quad_method = -1;
  int gop_sollim = -1;
  int gop_cminlp = 0;
  int gop_conic_reform = 1;

  int in_gop = 0;  // not a parameter: nested-call marker
};

struct IISParams {
  // Analysis and output
  int iis_analyze_level = 1;
  int ius_analyze_level = 2;
  int iis_topopt = 0;
  int iis_reopt = 0;
  int iis_use_sfilter = 1;
  int iis_print_level = 1;
  int iis_infeas_norm = 0;
  double iis_iter_limit = -1;  // int and double forms share it
  int iis_time_limit = -1;
  int iis_method = 0;
  int iis_use_efilter = 0;
  int iis_use_gop = 0;
  int iis_num_threads = 1;
  int iis_getmode = 0;
  int fmt_issql = 0;

  int in_iis = 0;  // not a parameter: nested-call marker
};

// Stochastic programming and the samplers.
struct SPParams {
  // Stochastic
  int stoc_nsample_spar = -1;
  int stoc_nsample_stage = -1;
  int stoc_rg_seed = 1031;
  int stoc_method = -1;
  int stoc_reopt = 0;
  int stoc_topopt = 0;
  int stoc_iter_lim = -1;
  int stoc_print_level = 2;
  int stoc_deteq_type = -1;
  int stoc_calc_evpi = 1;
  int stoc_samp_cont_only = 0;
  int stoc_bucket_size = -1;
  int stoc_max_numscens = 40000;
  int stoc_share_begstage = -1;
  int stoc_nodelp_prelevel = 0;
  double stoc_time_lim = -1;
  double stoc_relopttol = 1e-07;
  double stoc_absopttol = 1e-07;
  int stoc_debug_mask = 0;
  int stoc_varcontrol_method = 1;
  int stoc_correlation_type = 0;
  int stoc_wsbas = -1;
  int stoc_ald_outer_iter_lim = 200;
  int stoc_ald_inner_iter_lim = 1000;
  double stoc_ald_dual_feastol = 0.0001;
  double stoc_ald_primal_feastol = 0.0001;
  double stoc_ald_dual_steplen = 0.9;
  double stoc_ald_primal_steplen = 0.5;
  int core_order_by_stage = 1;
  std::string stoc_fmt_node_name = "NODE%d";
  std::string stoc_fmt_scenario_name = "SCEN%d";
  int stoc_map_mpi2lp = 0;
  int stoc_autoaggr = 1;
  int stoc_benchmark_scen = -2;
  double stoc_infbnd = 1000000000;
  int stoc_add_mpi = 0;
  int stoc_elim_fxvar = 1;
  double stoc_sbd_objcutval = -1e30;
  int stoc_sbd_objcutflag = 1;
  int stoc_sbd_numcandid = -1;
  double stoc_bigm = 100000000;
  int stoc_namedata_level = 0;
  int stoc_sbd_maxcuts = -1;
  int stoc_deqopt = 0;
  int stoc_ds_subform = -1;
  double stoc_rel_psteptol = 1e-08;
  double stoc_rel_dsteptol = 1e-07;
  int stoc_num_threads = 0;
  int stoc_deteq_nblocks = -1;

  // Sampling
  int samp_ncm_method = 5;
  double samp_ncm_cutobj = -1e30;
  int samp_ncm_dstorage = -1;
  double samp_cdsinc = 1e-06;
  int samp_scale = 0;
  int samp_ncm_iterlim = 100;
  double samp_ncm_opttol = 1e-07;
  int samp_num_threads = 0;
  int samp_rg_buffer_size = 0;
};

// Environment-only settings, not copied into models.
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
  // Internal: what xxx_local points at (ParKind) and the row's handling flags (kPar*).
  int xxx_kind = 0;
  int xxx_flags = 0;
};

}  // namespace zento
