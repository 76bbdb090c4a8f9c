// The search record of one branch-and-bound run and the types every stage of the search shares.
//
// The search works on a private LP copy of the model (`BnbRecord::lp`), whose column types are
// all continuous. The LP always mirrors one node of the tree: integer bounds live as ints in
// `IpData` (the node's interval) and in the top-level arrays (global fixings); the LP bound of
// an integer column is the intersection of both. Moving between nodes undoes and applies the
// one change each node carries, stacks the touched integers and flushes them in one batch of
// bound modifications, which the modification layer passes to the resident simplex record so
// that the next dual simplex starts warm.
//
// All comparisons are made in minimization form: `obj_sign` times an objective.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "core/model.h"

namespace zento::mip {

constexpr int kIntInf = 2147483645;
constexpr int kIntNegInf = -2147483646;
constexpr double kInf = 1e30;
// Incumbent source of a solution that existed before the search.
constexpr int kStartPointCode = 14;

// Node flags.
constexpr uint8_t kInList = 1, kInHeap = 2, kBenign = 4, kDead = 0x20, kChild0 = 0x40,
                  kChild1 = 0x80;
// Node modification types used by this search.
constexpr uint8_t kModNone = 0, kModUpper = 1, kModLower = 2;

struct Node {
  int parent = -1;
  int child[2] = {-1, -1};
  int depth = 0;
  double bound = -kInf;
  int16_t ninf = 0;
  float frac = 0.5f;
  float est = 0;
  int old_value = 0, new_value = 0;
  int branch_var = -1;  // integer index
  int heap_pos = -1;    // -1 - k in the delay pool
  uint8_t type = kModNone;
  uint8_t flags = 0;
  int mark = 0;
  uint8_t state = 0;
  int basis_index = -1;
  int bin_list = -1;  // head of extra bound changes made at this node
};

// Extra integer bound changes recorded at a node (reduced-cost and strong-branch fixings).
struct BinNode {
  int k = 0;  // integer index
  int lb = 0, ub = 0, old_lb = 0, old_ub = 0;
  int next = -1;
};

struct NodePool {
  std::vector<Node> nodes;
  std::vector<int> free_list;
  int used = 0;
  std::vector<BinNode> bins;
  std::vector<int> bin_free;
};

struct BnbRecord;
// Returns true when node a comes before node b.
using NodeCmp = bool (*)(const BnbRecord& b, int a, int c);

struct Heap {
  std::vector<int> arr;
  NodeCmp cmp = nullptr;
  // Delay pool of nodes far (in integer distance) from the incumbent.
  int radius = 0, limit = 0;
  std::vector<std::pair<int, int>> delay;  // node, key
};

// Integer columns and their node and top-level intervals.
struct IpData {
  int n_ints = 0, n_bins = 0;
  std::vector<int> cols;     // integer index -> column
  std::vector<int> col2int;  // column -> integer index or -1
  std::vector<int> lb, ub;   // node interval
  std::vector<int> top_lb, top_ub;
  std::vector<int> stacked;  // integer indices waiting for the flush
  std::vector<char> on_stack;
  // Pseudo-costs and their observation counts; flag bits 1 up, 2 down, 0x10 branched,
  // 0x20 fixed at the top.
  std::vector<float> pc_up, pc_down;
  std::vector<int> n_up, n_down;
  std::vector<int> flags;
  std::vector<double> colsum;  // sum of |a_ij| over the column
  std::vector<int> prio;
  std::vector<double> root_lb, root_ub;  // effective bounds when the root LP was solved
};

struct FracEntry {
  int k;     // integer index
  double f;  // signed fractional part: positive above v, negative below
  int v;     // integer part the child bounds are built on
};

// Statistics of a node LP.
struct LpResult {
  int status = QZ_STATUS_UNKNOWN;  // simplex codes; 20 failed
  double obj = 0;                  // model sense
  double iters = 0;
};

struct BnbRecord {
  Imodel* model = nullptr;  // the user's model
  Imodel* lp = nullptr;     // working LP copy, owned
  double obj_sign = 1;
  int n_vars = 0, n_cons = 0;
  double obj_const = 0;
  IpData ip;
  NodePool pool;
  Heap heap;
  std::vector<int> child_list, back_list;
  int forced_next = -1;
  int dive_length = 0;
  bool jump = false;

  // Bounds and incumbent.
  double best_obj = kInf;  // model sense
  std::vector<double> best_x;
  double prune_obj = kInf;  // min form
  double global_bound = -kInf;
  double max_global_bound = kInf;
  double current_bound = kInf;
  double obj_step = 0, obj_gcd = 0;
  int use_cutoff = 0;
  double cutoff_obj = kInf;  // model sense
  bool has_incumbent = false;
  int incumbent_code = 0;
  double root_obj = 0;  // min form
  std::vector<double> root_x, root_rc;  // root point and reduced costs (min form)
  bool root_rc_valid = false;

  // Tolerances.
  double int_tol = 1e-6, rel_opt_tol = 1e-6, abs_opt_tol = 0, perc_opt_tol = 1e-5,
         feas_tol = 1e-7, opt_tol = 1e-7, zero_tol = 1e-10, aopt_time = 100,
         obj_threshold = -kInf, min_abs_obj_step = 0, lsol_time = -1;

  int mip_status = 0;  // 0 none, 1 unbounded, 2 infeasible, 3 feasible, 4 optimal, 5/-5 near
  int term_code = 0;
  bool prune_flag = false;
  bool feas_only = false;  // objective dropped: the first incumbent ends the run

  int cur_node = -1, prev_node = -1, root_node = -1;
  std::vector<double> x;       // LP point of the current node
  std::vector<double> rc;      // reduced costs of the current node, min form
  std::vector<FracEntry> fracs;
  int last_nf = -1;

  // Counters.
  double n_lps = 0, n_branches = 0, n_pruned_by_cutoff = 0, spx_iters = 0;
  int n_active = 0;
  int n_solutions = 0;
  double last_sol_lp = 0;
  int active_at_last_sol = 0;
  int n_ints_fixed = 0;
  int n_strong = 0;

  // Time.
  double t_start = 0, t_last_sol = 0, time_limit = -1, t_in_lp = 0, root_time = 0;
  int lsol_state = -1;

  // Node rule state.
  int user_rule = 4, rule_state = 3, saved_rule = 0;
  bool rule_saved = false, toggle = false;
  double switch_lp = 0, switch_branch = 0, bound_lp = 0, gap_limit = 0;
  int min_active = 0, rounds = 0, switches = 0;
  double ref_bound = -kInf;

  // Stored bases, shared by a node and its children.
  std::vector<std::shared_ptr<std::vector<int>>> bases;
  std::vector<int> bases_free;
  int basis_state = 0;

  // Log.
  int log_lines = 0;
  int log_interval = 200;
  double next_log_branch = 0;
  int print_level = 2;

  // Limits.
  int sol_limit = -1;
  double branch_limit = -1, itr_limit = -1;

  // Watched optimal point (tests only); see SearchDebug.
  const std::vector<double>* debug_x = nullptr;
  double debug_obj = 0;
  int debug_violations = 0;
};

// Counts a violation when node `idx` (or, with idx -1, the current LP box) holds the watched
// point while no incumbent is as good as it.
void debug_check_node(BnbRecord& b, int idx);

// --- relaxation (bnb_lp.cpp) ---
[[nodiscard]] int bnb_create_lp(BnbRecord& b);
void bnb_destroy_lp(BnbRecord& b);
// Solves the relaxation of the current node; `lp_status` gets the simplex status, or 20 when
// the LP could not be solved. Returns a limit or interrupt code, else 0.
[[nodiscard]] int bnb_optimizeLP(BnbRecord& b, bool root, double iter_limit, bool use_cutoff,
                                 LpResult& out);
// Pushes the stacked integer bounds into the LP in one batch per side.
[[nodiscard]] int bnb_update_bounds_stack(BnbRecord& b);
void bnb_stack_int(BnbRecord& b, int k);
// Effective LP bounds of an integer.
double int_eff_lb(const BnbRecord& b, int k);
double int_eff_ub(const BnbRecord& b, int k);
// Basis of the LP in model statuses; loads one back into the resident simplex.
void bnb_get_basis(const BnbRecord& b, std::vector<int>& basis);
[[nodiscard]] int bnb_load_basis(BnbRecord& b, const std::vector<int>& basis);
// Reads the LP point into b.x and min-form reduced costs into b.rc.
void bnb_read_lp_point(BnbRecord& b);

// --- nodes and tree (node_pool.cpp, node_select.cpp, node_construct.cpp) ---
[[nodiscard]] int node_get_freeNode(BnbRecord& b, int* out);
void node_free_Node(BnbRecord& b, int idx);
[[nodiscard]] int node_get_freebinNode(BnbRecord& b, int* out);
Node& node_at(BnbRecord& b, int idx);
const Node& node_at(const BnbRecord& b, int idx);
void heap_insert(BnbRecord& b, int node);
// 0, or 2002 when heap and delay pool are empty.
int heap_extractBest(BnbRecord& b, int* out);
void heap_remove(BnbRecord& b, int node);
void heap_crossover(BnbRecord& b, NodeCmp cmp);
void heap_update_delay_pool_LB_val(BnbRecord& b);
int heap_size(const BnbRecord& b);
void node_pushBenignNode(BnbRecord& b, int node);
NodeCmp rule_comparator(int rule);
bool node_smallestBound(const BnbRecord& b, int a, int c);
bool node_smallestBound2(const BnbRecord& b, int a, int c);
bool node_depthfirst_smallestBound(const BnbRecord& b, int a, int c);
bool node_largestBound(const BnbRecord& b, int a, int c);
bool node_bestEstimate(const BnbRecord& b, int a, int c);
bool node_worstEstimate(const BnbRecord& b, int a, int c);
// Chooses the next node; -1 when the tree is empty. `load_basis` asks for the stored basis.
[[nodiscard]] int bnb_selectNode(BnbRecord& b, int* out, bool* load_basis);
int set_node_select_rule(BnbRecord& b);
bool tree_empty(const BnbRecord& b);
// Minimum bound over every open node; 1e30 for an empty tree.
double open_nodes_min_bound(const BnbRecord& b);
// Walks all open nodes and kills those at or above prune_obj.
void bnb_prune_treebds(BnbRecord& b);
// Removes a finished node and its childless ancestors.
void node_fathom(BnbRecord& b, int idx);
// Moves the LP from node prev to node cur; `first_infeasible` gets the first node whose change
// leaves an empty interval, or -1.
[[nodiscard]] int node_constructLP(BnbRecord& b, int prev, int cur, int* first_infeasible);
// Records an integer bound change at node `idx` (already current) and applies it.
[[nodiscard]] int node_add_local_change(BnbRecord& b, int idx, int k, int lb, int ub);
void bnb_storebasic_pool(BnbRecord& b, int node);
[[nodiscard]] int bnb_loadbasic_pool(BnbRecord& b, int node);
void node_drop_basis(BnbRecord& b, int node);

// --- branching (branching.cpp, strong_branch.cpp, redcost_fix.cpp) ---
void ipdata_compute_fracs(BnbRecord& b);
void bnb_init_Pseudo_cost(BnbRecord& b);
void node_update_pseudocosts(BnbRecord& b, int node, int mode);
// Picks the branching integer among b.fracs by the branching rule; -1 when none.
int node_select_branch_var(BnbRecord& b, double z, int depth);
struct StrongResult {
  int pick = -1;             // index into b.fracs
  double down = -kInf, up = -kInf;  // child bounds, min form
  bool node_infeasible = false;
  bool changed = false;  // bounds of the node changed: re-solve
};
[[nodiscard]] int node_strong_branch(BnbRecord& b, double z, int depth, StrongResult& res);
// Creates the children of the current node on b.fracs[pick]; bounds are min form.
[[nodiscard]] int make_sons(BnbRecord& b, int node, int pick, double down_bound, double up_bound);
[[nodiscard]] int node_branchandSpawnChildren_no_fracs(BnbRecord& b, int node);
// Top-level fixing by root reduced costs; -1 when nothing better can exist.
[[nodiscard]] int bnb_rec_cost_fixing_ini(BnbRecord& b);
// Local fixing at the current node by its reduced costs; `count` gets the number of fixings.
[[nodiscard]] int bnb_rec_cost_fixing(BnbRecord& b, int node, double z, int* count);

// --- search loop (bnb_loop.cpp, bnb_bounds.cpp, bnb_log.cpp) ---
// `root_result` is the root LP already solved by the caller, or null.
[[nodiscard]] int bnb_loop(BnbRecord& b, const LpResult* root_result);
[[nodiscard]] int bnb_update_ipsol(BnbRecord& b, double obj, const std::vector<double>& x,
                                   int code);
bool bnb_check_if_opt(const BnbRecord& b);
int bnb_check_approx_opt(BnbRecord& b);
void update_globalbound(BnbRecord& b);
double bnb_local_bound_obj(const BnbRecord& b, double z);
void bnb_init_objective_lattice(BnbRecord& b);
double bnb_gap_rel(const BnbRecord& b);
void print_banner(BnbRecord& b, int mode, int code);
void bnb_publish(BnbRecord& b);
const char* incumbent_tag(int code);

}  // namespace zento::mip
