// Pieces of the search on hand-made cases: the heap and its comparators, the walk between nodes
// through the common ancestor, the exact restore after strong branching, pseudo-cost updates,
// and the driver's edge cases (LP model, integral root, empty integer interval, branch limit 0,
// hurdle, maximization log).
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/model.h"
#include "mip/bnb.h"
#include "mip_oracle.h"

namespace zento::test {
namespace {

using namespace zento::mip;

// Integer data of `cols` inside their top bounds; the node bounds start unset.
void init_ip(BnbRecord& b, std::vector<int> cols, std::vector<int> top_lb, std::vector<int> top_ub) {
  IpData& ip = b.ip;
  const size_t n = cols.size();
  ip.n_ints = static_cast<int>(n);
  ip.cols = std::move(cols);
  ip.top_lb = std::move(top_lb);
  ip.top_ub = std::move(top_ub);
  ip.lb.assign(n, kIntNegInf);
  ip.ub.assign(n, kIntInf);
  ip.on_stack.assign(n, 0);
  ip.pc_up.assign(n, 0);
  ip.pc_down.assign(n, 0);
  ip.n_up.assign(n, 0);
  ip.n_down.assign(n, 0);
  ip.flags.assign(n, 0);
}

// A node below `parent` (-1: a root) that changes one bound of integer `var` to `value`.
int add_node(BnbRecord& b, int parent, double bound, uint8_t type, int var, int value,
             int old_value) {
  int idx = -1;
  EXPECT_EQ(node_get_freeNode(b, &idx), 0);
  Node& n = node_at(b, idx);
  n.parent = parent;
  n.depth = parent < 0 ? 0 : node_at(b, parent).depth + 1;
  n.bound = bound;
  n.type = type;
  n.branch_var = var;
  n.new_value = value;
  if (var >= 0) n.old_value = old_value;
  if (parent >= 0) {
    Node& p = node_at(b, parent);
    (p.child[0] < 0 ? p.child[0] : p.child[1]) = idx;
  }
  return idx;
}

// A record with `n` integer columns on [0, 5] and a pool of nodes, without a model LP.
struct Tree {
  BandBParams params;
  Imodel model;
  BnbRecord b;
  explicit Tree(int n) {
    b.model = &model;
    init_ip(b, std::vector<int>(n), std::vector<int>(n, 0), std::vector<int>(n, 5));
    for (int k = 0; k < n; ++k) b.ip.cols[k] = k;
    b.ip.lb.assign(n, 0);
    b.ip.ub.assign(n, 5);
    b.heap.cmp = node_smallestBound;
  }
  int add(int parent, double bound, uint8_t type = kModNone, int var = -1, int value = 0) {
    return add_node(b, parent, bound, type, var, value, type == kModUpper ? 5 : 0);
  }
};

TEST(HeapTest, ExtractsInBoundOrderAndReportsEmpty) {
  Tree t(1);
  const double bounds[] = {5, 1, 4, 2, 3, 0.5, 7};
  for (double v : bounds) heap_insert(t.b, t.add(-1, v));
  std::vector<double> got;
  int idx = -1;
  while (heap_extractBest(t.b, &idx) == 0) got.push_back(node_at(t.b, idx).bound);
  EXPECT_EQ(got, (std::vector<double>{0.5, 1, 2, 3, 4, 5, 7}));
  EXPECT_EQ(heap_extractBest(t.b, &idx), 2002);
}

TEST(HeapTest, CrossoverToWorstBoundReordersAndBenignGoLast) {
  Tree t(1);
  std::vector<int> nodes;
  for (double v : {1.0, 3.0, 2.0}) {
    nodes.push_back(t.add(-1, v));
    heap_insert(t.b, nodes.back());
  }
  heap_crossover(t.b, node_largestBound);
  int idx = -1;
  ASSERT_EQ(heap_extractBest(t.b, &idx), 0);
  EXPECT_EQ(node_at(t.b, idx).bound, 3.0);
  // A heap of benign nodes only still gives one of them.
  Tree u(1);
  const int a = u.add(-1, 1), c = u.add(-1, 2);
  node_pushBenignNode(u.b, a);
  node_pushBenignNode(u.b, c);
  ASSERT_EQ(heap_extractBest(u.b, &idx), 0);
  EXPECT_TRUE(idx == a || idx == c);
}

TEST(ComparatorTest, DirectionAndIncumbentTieBreaks) {
  Tree t(1);
  const int root = t.add(-1, 0);
  const int up = t.add(root, 1.0, kModLower, 0, 3);
  const int dn = t.add(root, 1.0, kModUpper, 0, 2);
  node_at(t.b, up).frac = 0.7f;
  node_at(t.b, dn).frac = 0.3f;
  struct Case {
    int dir;
    bool up_first;
  } cases[] = {{1, true}, {2, false}, {0, true}};
  for (const Case& c : cases) {
    t.model.BandBPam.mip_branchdir = c.dir;
    EXPECT_EQ(node_smallestBound(t.b, up, dn), c.up_first) << "dir " << c.dir;
  }
  // Towards the incumbent: its value 1 lies in the down child.
  t.model.BandBPam.mip_branchdir = 3;
  t.b.has_incumbent = true;
  t.b.best_x = {1.0};
  EXPECT_FALSE(node_smallestBound(t.b, up, dn));
  EXPECT_TRUE(node_smallestBound(t.b, dn, up));
  // Depth first: deeper wins outright.
  const int deep = t.add(up, 9.0, kModUpper, 0, 4);
  EXPECT_TRUE(node_depthfirst_smallestBound(t.b, deep, dn));
}

// Moves between nodes with a real LP behind them: the LP bounds always equal the path's.
class WalkTest : public ::testing::Test {
 protected:
  void SetUp() override {
    env_ = test_env();
    int rc = 0;
    m_ = QZcreateModel(env_, &rc);
    d_ = random_mip(5, 0);
    ASSERT_EQ(d_.load(m_), 0);
    quiet(m_);
  }
  void TearDown() override {
    QZdeleteModel(&m_);
    QZdeleteEnv(&env_);
  }
  QZenv env_ = nullptr;
  QZmodel m_ = nullptr;
  MipData d_;
};

TEST_F(WalkTest, SiblingMoveTouchesTwoChangesAndBoundsFollowThePath) {
  BnbRecord b;
  b.model = m_;
  b.n_vars = d_.n;
  b.n_cons = d_.m;
  IpData& ip = b.ip;
  std::vector<int> cols, top_lb, top_ub;
  for (int j = 0; j < d_.n; ++j)
    if (d_.vtypes[j] != 'C') {
      cols.push_back(j);
      top_lb.push_back(static_cast<int>(d_.lo[j]));
      top_ub.push_back(static_cast<int>(d_.up[j]));
    }
  ip.col2int.assign(d_.n, -1);
  for (size_t k = 0; k < cols.size(); ++k) ip.col2int[cols[k]] = static_cast<int>(k);
  init_ip(b, cols, top_lb, top_ub);
  ASSERT_EQ(bnb_create_lp(b), 0);
  auto mk = [&](int parent, uint8_t type, int k, int value) {
    return add_node(b, parent, 0, type, k, value, type == kModUpper ? kIntInf : kIntNegInf);
  };
  const int root = mk(-1, kModNone, -1, 0);
  const int a = mk(root, kModUpper, 0, static_cast<int>(d_.lo[0]));
  const int c = mk(root, kModLower, 0, static_cast<int>(d_.lo[0]) + 1);
  const int a1 = mk(a, kModUpper, 1, static_cast<int>(d_.lo[1]));
  int inf = -1;
  ASSERT_EQ(node_constructLP(b, -1, a1, &inf), 0);
  const int j0 = ip.cols[0], j1 = ip.cols[1];
  EXPECT_EQ(b.lp->lp.padU[j0], d_.lo[0]);
  EXPECT_EQ(b.lp->lp.padU[j1], d_.lo[1]);
  ASSERT_EQ(node_constructLP(b, a1, c, &inf), 0);
  EXPECT_EQ(inf, -1);
  EXPECT_EQ(b.lp->lp.padL[j0], d_.lo[0] + 1);
  EXPECT_EQ(b.lp->lp.padU[j0], d_.up[0]);
  EXPECT_EQ(b.lp->lp.padU[j1], d_.up[1]);
  // A change that leaves an empty interval is reported, the LP still follows the path.
  const int bad = mk(c, kModUpper, 0, static_cast<int>(d_.lo[0]));
  ASSERT_EQ(node_constructLP(b, c, bad, &inf), 0);
  EXPECT_EQ(inf, bad);
  ASSERT_EQ(node_constructLP(b, bad, root, &inf), 0);
  EXPECT_EQ(b.lp->lp.padL[j0], d_.lo[0]);
  EXPECT_EQ(b.lp->lp.padU[j0], d_.up[0]);
  bnb_destroy_lp(b);
}

MipData tiny(bool integer);

TEST_F(WalkTest, StrongBranchingLeavesBoundsAndBasisAsFound) {
  QZmodel m = nullptr;
  int rc = 0;
  m = QZcreateModel(env_, &rc);
  // max 3x + 2y, 2x + y <= 4.5, x + 2y <= 4.5: the root (1.5, 1.5) has four feasible sides.
  MipData d = tiny(true);
  d.c = {3, 2};
  d.b = {4.5, 4.5};
  d.vals = {2, 1, 1, 2};
  ASSERT_EQ(d.load(m), 0);
  quiet(m);
  m->mipsol = std::make_unique<MipSol>();
  BnbRecord b;
  b.model = m;
  b.n_vars = 2;
  b.n_cons = 2;
  b.obj_sign = -1;
  IpData& ip = b.ip;
  init_ip(b, {0, 1}, {0, 0}, {3, 3});
  ip.col2int = {0, 1};
  ip.colsum.assign(2, 3);
  ASSERT_EQ(bnb_create_lp(b), 0);
  for (int k = 0; k < 2; ++k) bnb_stack_int(b, k);
  int root = -1;
  ASSERT_EQ(node_get_freeNode(b, &root), 0);
  b.root_node = b.cur_node = b.prev_node = root;
  LpResult r;
  ASSERT_EQ(bnb_optimizeLP(b, true, -1, false, r), 0);
  ASSERT_EQ(r.status, QZ_STATUS_BASIC_OPTIMAL);
  bnb_read_lp_point(b);
  ipdata_compute_fracs(b);
  ASSERT_EQ(b.fracs.size(), 2u);
  const std::vector<double> lo = b.lp->lp.padL, up = b.lp->lp.padU, x = b.x;
  StrongResult sr;
  ASSERT_EQ(node_strong_branch(b, b.obj_sign * r.obj, 0, sr), 0);
  EXPECT_GE(sr.pick, 0);
  EXPECT_FALSE(sr.changed);
  EXPECT_EQ(ip.n_up[0] + ip.n_down[0] + ip.n_up[1] + ip.n_down[1], 4);  // every probe observed
  EXPECT_EQ(b.lp->lp.padL, lo);
  EXPECT_EQ(b.lp->lp.padU, up);
  EXPECT_EQ(b.x, x);
  // The node's LP comes back at once from the restored basis.
  LpResult again;
  ASSERT_EQ(bnb_optimizeLP(b, false, -1, false, again), 0);
  EXPECT_NEAR(again.obj, r.obj, 1e-12);
  EXPECT_EQ(again.iters, 0);
  bnb_destroy_lp(b);
  QZdeleteModel(&m);
}

TEST(PseudoCostTest, FirstObservationWholeThenSmoothedNegativeClipped) {
  Tree t(1);
  const int root = t.add(-1, 10);
  const int up = t.add(root, 14, kModLower, 0, 1);
  node_at(t.b, up).frac = 0.6f;  // the column moved 1 - 0.6 = 0.4 up
  node_update_pseudocosts(t.b, up, 0);
  EXPECT_NEAR(t.b.ip.pc_up[0], 10.0, 1e-5);
  node_at(t.b, up).bound = 12;
  node_update_pseudocosts(t.b, up, 0);
  EXPECT_NEAR(t.b.ip.pc_up[0], 0.5 * 10 + 0.5 * 5, 1e-5);
  const int dn = t.add(root, 9, kModUpper, 0, 0);
  node_update_pseudocosts(t.b, dn, 0);
  EXPECT_EQ(t.b.ip.pc_down[0], 0.0f);
  // An infeasible child without incumbent or hurdle teaches nothing.
  const int dn2 = t.add(root, 10, kModUpper, 0, 0);
  t.b.ip.flags[0] = 0;
  t.b.ip.pc_down[0] = 3;
  node_update_pseudocosts(t.b, dn2, -1);
  EXPECT_EQ(t.b.ip.pc_down[0], 3.0f);
}

void capture_line(QZmodel, char* line, void* data) { *static_cast<std::string*>(data) += line; }

class DriverTest : public ::testing::Test {
 protected:
  void SetUp() override { env_ = test_env(); }
  void TearDown() override { QZdeleteEnv(&env_); }
  QZmodel load(const MipData& d) {
    int rc = 0;
    QZmodel m = QZcreateModel(env_, &rc);
    EXPECT_EQ(d.load(m), 0);
    quiet(m);
    return m;
  }
  QZenv env_ = nullptr;
};

MipData tiny(bool integer) {
  // max x + y, x + 2y <= 3.5, 2x + y <= 3.5, x, y in [0, 3]
  MipData d;
  d.n = 2;
  d.m = 2;
  d.sense = QZ_MAX;
  d.c = {1, 1};
  d.lo = {0, 0};
  d.up = {3, 3};
  d.vtypes = integer ? std::vector<char>{'I', 'I'} : std::vector<char>{'C', 'C'};
  d.rtypes = {'L', 'L'};
  d.b = {3.5, 3.5};
  d.beg = {0, 2, 4};
  d.rows = {0, 1, 0, 1};
  d.vals = {1, 2, 2, 1};
  return d;
}

// Solves `d` to optimality with the search log at level 2, from `start` when given; returns
// the model (the caller deletes it) and the log.
QZmodel solve_logged(QZenv env, const MipData& d, std::string* log,
                     const std::vector<double>& start = {}) {
  int rc = 0;
  QZmodel m = QZcreateModel(env, &rc);
  EXPECT_EQ(d.load(m), 0);
  quiet(m);
  QZsetModelLogfunc(m, capture_line, log);
  QZsetModelIntParameter(m, QZ_IPARAM_MIP_PRINTLEVEL, 2);
  if (!start.empty()) {
    EXPECT_EQ(QZloadMIPVarStartPoint(m, start.data()), 0);
  }
  int status = 0;
  EXPECT_EQ(QZsolveMIP(m, &status), 0);
  EXPECT_EQ(status, QZ_STATUS_OPTIMAL);
  return m;
}

TEST_F(DriverTest, LpModelIsSolvedAtTheRootWithItsNotice) {
  std::string log;
  QZmodel m = solve_logged(env_, tiny(false), &log);
  double obj = 0;
  QZgetMIPObjective(m, &obj);
  EXPECT_NEAR(obj, 7.0 / 3.0, 1e-9);
  EXPECT_NE(log.find("\n\nThe problem is an LP.\n\n"), std::string::npos);
  EXPECT_NE(log.find("(*T)"), std::string::npos);
  QZdeleteModel(&m);
}

TEST_F(DriverTest, MaximizationLogAndRecordInTheModelSense) {
  std::string log;
  QZmodel m = solve_logged(env_, tiny(true), &log);
  double obj = 0, bound = 0;
  QZgetMIPObjective(m, &obj);
  QZgetBestBounds(m, nullptr, &bound);
  EXPECT_EQ(obj, 2.0);
  EXPECT_EQ(bound, 2.0);
  EXPECT_NE(log.find("#BRANCHs  #NODEs    #LPs    BEST BOUND      BEST  IP     RGAP    TIME  OPTIME"),
            std::string::npos);
  EXPECT_NE(log.find("Initial continuous objective: 2.333333"), std::string::npos);
  EXPECT_NE(log.find(" 2.000000e+00"), std::string::npos);
  EXPECT_EQ(log.find("-2.000000e+00"), std::string::npos);
  QZdeleteModel(&m);
}

TEST_F(DriverTest, FeasibleStartPointStandsAsTheFirstIncumbent) {
  struct Case {
    std::vector<double> x;
    const char* report;
    bool tagged;
  } cases[] = {{{1, 1}, "\nStartpoint info (*):", true},
               {{3, 3}, "\nStartpoint info (not feasible):", false},
               {{0.5, 1}, "\nStartpoint info (not feasible):", false}};
  for (const Case& c : cases) {
    std::string log;
    QZmodel m = solve_logged(env_, tiny(true), &log, c.x);
    EXPECT_NE(log.find(c.report), std::string::npos) << log;
    EXPECT_EQ(log.find("(*H)") != std::string::npos, c.tagged) << log;
    QZdeleteModel(&m);
  }
}

TEST_F(DriverTest, EdgeCasesOfTheFrame) {
  // An integer column whose bounds hold no integer: infeasible without an LP.
  MipData d = tiny(true);
  d.lo[0] = 0.2;
  d.up[0] = 0.8;
  QZmodel m = load(d);
  int status = 0;
  ASSERT_EQ(QZsolveMIP(m, &status), 0);
  EXPECT_EQ(status, QZ_STATUS_INFEASIBLE);
  int lps = -1;
  QZgetInfo(m, QZ_IINFO_MIP_LPCOUNT, &lps);
  EXPECT_EQ(lps, 0);
  QZdeleteModel(&m);

  // Branch limit 0: the root is solved, then the limit.
  m = load(tiny(true));
  QZsetModelIntParameter(m, QZ_IPARAM_MIP_BRANCH_LIMIT, 0);
  EXPECT_EQ(QZsolveMIP(m, &status), QZERR_BRANCH_LIMIT);
  QZdeleteModel(&m);

  // A hurdle no solution beats: infeasible, bound at the hurdle.
  m = load(tiny(true));
  QZsetModelIntParameter(m, QZ_IPARAM_MIP_USECUTOFFOBJ, 1);
  QZsetModelDouParameter(m, QZ_DPARAM_MIP_CUTOFFOBJ, 2.5);
  ASSERT_EQ(QZsolveMIP(m, &status), 0);
  EXPECT_EQ(status, QZ_STATUS_INFEASIBLE);
  // A hurdle below the optimum leaves it found.
  QZsetModelDouParameter(m, QZ_DPARAM_MIP_CUTOFFOBJ, 1.5);
  ASSERT_EQ(QZsolveMIP(m, &status), 0);
  EXPECT_EQ(status, QZ_STATUS_OPTIMAL);
  QZdeleteModel(&m);

  // Unsupported model parts say so.
  m = load(tiny(true));
  const int cols[] = {0, 1}, beg[] = {0, 2};
  char type[] = {'1'};
  int card[] = {1};
  type[0] = 1;
  ASSERT_EQ(QZloadSETSData(m, 1, type, card, beg, cols), 0);
  EXPECT_EQ(QZsolveMIP(m, &status), QZERR_NOT_SUPPORTED);
  QZdeleteModel(&m);
  EXPECT_EQ(QZsolveMIP(nullptr, &status), QZERR_ILLEGAL_NULL_POINTER);
  m = load(tiny(true));
  QZsetModelIntParameter(m, QZ_IPARAM_MIP_SOLVERTYPE, 2);
  EXPECT_EQ(QZsolveMIP(m, &status), QZERR_NOT_SUPPORTED);
  QZsetModelIntParameter(m, QZ_IPARAM_MIP_SOLVERTYPE, 0);
  QZsetModelIntParameter(m, QZ_IPARAM_MIP_XSOLVER, 3);
  EXPECT_EQ(QZsolveMIP(m, &status), QZERR_XSOLVER_LIB_NOT_INSTALLED);
  QZdeleteModel(&m);
}

}  // namespace
}  // namespace zento::test
