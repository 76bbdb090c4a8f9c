// The dispatch layer: engine choice, options, refactorization requests, vector forms, the
// user-scale solves and the hyper-sparse work bound.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "core/params/param_blocks.h"
#include "factor_testlib.h"
#include "lp/factor/slu.h"
#include "zento_errors.h"

namespace zento::lutest {
namespace {

TEST(Create, EngineChoice) {
  ColMatrix a;
  a.m = 3;
  a.beg = {0};
  a.bind();
  struct Row {
    int lucore;
    int err;
  };
  for (Row r : {Row{0, 0}, Row{3, 0}, Row{4, 0}, Row{5, QZERR_NOT_SUPPORTED},
                Row{6, QZERR_NOT_SUPPORTED}, Row{1, QZERR_NOT_SUPPORTED},
                Row{-2, QZERR_NOT_SUPPORTED}, Row{99, QZERR_NOT_SUPPORTED}}) {
    lu::LuOptions opt;
    opt.lucore = r.lucore;
    int err = -1;
    auto lu = QZI_lu_create(3, opt, QZI_lu_datacol, &a.host, &err);
    EXPECT_EQ(err, r.err) << r.lucore;
    EXPECT_EQ(lu != nullptr, r.err == 0) << r.lucore;
    if (lu && r.lucore == 0) {
      EXPECT_EQ(lu->options().lucore, lu::kLuCoreSlu);
    }
  }
  lu::LuOptions bad;
  bad.num_candits = 0;
  int err = 0;
  EXPECT_FALSE(QZI_lu_create(3, bad, QZI_lu_datacol, &a.host, &err));
  EXPECT_EQ(err, QZERR_PARAM_OUT_OF_RANGE);
}

TEST(Options, ParametersAndEngineIds) {
  lu::LuOptions o;
  struct P {
    int id;
    double v;
    int rc;
  };
  for (P p : {P{lu::kParLuNumCandits, 0, QZERR_PARAM_OUT_OF_RANGE},
              P{lu::kParLuNumCandits, 7, 0}, P{lu::kParLuMaxUpdates, 100, 0},
              P{lu::kParLuUpdateType, 0, 0}, P{lu::kParLuMode, 8, QZERR_PARAM_OUT_OF_RANGE},
              P{lu::kParLuEpsPivrel, 0.3, 0}, P{lu::kParLuEpsPivrel, 1.5, QZERR_PARAM_OUT_OF_RANGE},
              P{lu::kParLuSpvtolFtran, 0.05, 0}, P{lu::kParLuCore, 0, 0}, P{4999, 1, QZERR_INDEX_OUT_OF_RANGE}})
    EXPECT_EQ(lu::lu_options_set_param(o, p.id, p.v), p.rc) << p.id << " " << p.v;
  EXPECT_EQ(o.num_candits, 7);
  EXPECT_EQ(o.max_updates, 100);
  EXPECT_EQ(o.update_type, 0);
  EXPECT_DOUBLE_EQ(o.eps_pivrel, 0.3);
  EXPECT_EQ(o.lucore, lu::kLuCoreSlu);
  // Negative values select the defaults.
  EXPECT_EQ(lu::lu_options_set_param(o, lu::kParLuNumCandits, -1), 0);
  EXPECT_EQ(lu::lu_options_set_param(o, lu::kParLuEpsPivrel, -1), 0);
  EXPECT_EQ(o.num_candits, 4);
  EXPECT_DOUBLE_EQ(o.eps_pivrel, 0.5);
  // From the simplex parameter block: the engine id maps, values out of range are refused.
  SplexParams sp;
  sp.lu_core = 3;
  lu::LuOptions from;
  ASSERT_EQ(lu::lu_options_from_params(sp, &from), 0);
  EXPECT_EQ(from.lucore, lu::kLuCoreClu);
  sp.lu_num_candits = 0;
  EXPECT_EQ(lu::lu_options_from_params(sp, &from), QZERR_PARAM_OUT_OF_RANGE);

  std::mt19937 rng(1);
  ColMatrix a = random_matrix(20, Shape::kRandomDiag, 0, rng);
  int err = 0;
  auto lu = QZI_lu_create(20, lu::LuOptions{}, QZI_lu_datacol, &a.host, &err);
  ASSERT_TRUE(lu);
  EXPECT_EQ(QZI_lu_set_ipar(*lu, lu::SLU_IPAR_NUM_CANDITS, 0), QZERR_PARAM_OUT_OF_RANGE);
  EXPECT_EQ(QZI_lu_set_ipar(*lu, lu::SLU_IPAR_MEM_EXP, 1), 0);
  int iv = 0;
  EXPECT_EQ(QZI_lu_get_ipar(*lu, lu::SLU_IPAR_MEM_EXP, &iv), 0);
  EXPECT_EQ(iv, 5);
  EXPECT_EQ(QZI_lu_set_dpar(*lu, lu::SLU_DPAR_EPS_PIVREL, 0.9), 0);
  double dv = 0;
  EXPECT_EQ(QZI_lu_get_dpar(*lu, lu::SLU_DPAR_EPS_PIVREL, &dv), 0);
  EXPECT_DOUBLE_EQ(dv, 0.9);
  auto& slu = dynamic_cast<lu::Slu&>(lu->engine());
  EXPECT_DOUBLE_EQ(slu.eps_pivcur(), 0.9);
  // Lowering the caller's threshold keeps the one in force.
  EXPECT_EQ(QZI_lu_set_dpar(*lu, lu::SLU_DPAR_EPS_PIVREL, 0.2), 0);
  EXPECT_DOUBLE_EQ(slu.eps_pivrel(), 0.2);
  EXPECT_DOUBLE_EQ(slu.eps_pivcur(), 0.9);
  EXPECT_EQ(QZI_lu_set_vinfo(*lu, 9999, 1), QZERR_INDEX_OUT_OF_RANGE);
}

TEST(Factor, EmptyAndSlackBases) {
  for (int core : {4, 3}) {
    ColMatrix a;
    a.m = 0;
    a.beg = {0};
    a.bind();
    lu::LuOptions opt;
    opt.lucore = core;
    int err = 0;
    auto lu0 = QZI_lu_create(0, opt, QZI_lu_datacol, &a.host, &err);
    ASSERT_TRUE(lu0);
    EXPECT_EQ(QZI_lu_fact(*lu0, nullptr), lu::kLuNotFactored);

    // Unit columns with a spread of sizes: U is the diagonal, rcond = smallest / largest.
    const std::vector<double> d = {2.0, -4.0, 0.5, 1.0};
    ColMatrix s;
    s.m = 4;
    s.beg = {0};
    for (int j = 0; j < 4; ++j) {
      s.idx.push_back(j);
      s.val.push_back(d[j]);
      s.beg.push_back(j + 1);
      ++s.n;
    }
    s.bind();
    std::vector<int> rbas = {2, 0, 3, 1};
    auto lu = QZI_lu_create(4, opt, QZI_lu_datacol, &s.host, &err);
    ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0);
    EXPECT_EQ(QZI_lu_num_lnonz(*lu), 0);
    EXPECT_EQ(QZI_lu_num_unonz(*lu), 4);
    EXPECT_DOUBLE_EQ(QZI_lu_get_rcond(*lu), 0.125);
    EXPECT_DOUBLE_EQ(QZI_lu_get_condest(*lu, 2), 8.0);
    EXPECT_NEAR(QZI_lu_get_condest(*lu, 1), 8.0, 1e-12);  // exact for a diagonal
    EXPECT_DOUBLE_EQ(QZI_lu_get_condest(*lu, 4), 1.0);
    // Logicals with signs: the identity up to sign.
    std::vector<double> sign = {1, -1, 1, -1};
    s.host.logical_sign = sign.data();
    s.host.init_logicals();
    rbas = {4, 5, 6, 7};
    ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0);
    EXPECT_DOUBLE_EQ(QZI_lu_get_rcond(*lu), 1.0);
    SpVec b(4), x(4);
    b.set_unit(1, 3.0);
    ASSERT_EQ(QZI_lu_ftran(*lu, b, x, 0), 0);
    EXPECT_DOUBLE_EQ(x.at(1), -3.0);
    // Count 0 in, count 0 out.
    b.n = 0;
    ASSERT_EQ(QZI_lu_ftran(*lu, b, x, 0), 0);
    EXPECT_EQ(x.n, 0);
  }
}

TEST(Factor, BadColumnDataIsAnError) {
  ColMatrix a;
  a.m = 2;
  a.beg = {0, 1, 2};
  a.idx = {0, 5};  // row 5 does not exist
  a.val = {1.0, 1.0};
  a.n = 2;
  a.bind();
  for (int core : {4, 3}) {
    lu::LuOptions opt;
    opt.lucore = core;
    int err = 0;
    auto lu = QZI_lu_create(2, opt, QZI_lu_datacol, &a.host, &err);
    std::vector<int> rbas = {0, 1};
    EXPECT_EQ(QZI_lu_fact(*lu, rbas.data()), -QZERR_INDEX_OUT_OF_RANGE);
    rbas = {0, 7};  // no such variable
    EXPECT_EQ(QZI_lu_fact(*lu, rbas.data()), -QZERR_INDEX_OUT_OF_RANGE);
    EXPECT_EQ(QZI_lu_stat(*lu), lu::kLuNotFactored);
  }
}

TEST(Refactor, RequestsAtTheLimitAndForDenseEtas) {
  std::mt19937 rng(4);
  ColMatrix a = random_matrix(300, Shape::kSlackMix, 300, rng);
  for (int core : {4, 3}) {
    std::vector<int> rbas = first_m_basis(a);
    lu::LuOptions opt;
    opt.lucore = core;
    opt.max_updates = 5;
    int err = 0;
    auto lu = QZI_lu_create(a.m, opt, QZI_lu_datacol, &a.host, &err);
    ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0);
    EXPECT_EQ(QZI_lu_npcand(*lu), 10);
    int done = 0;
    for (int var = a.m; done < 5; ++var) {
      EXPECT_EQ(QZI_lu_get_wfact(*lu, 0), 0) << done;
      int st = 0;
      if (random_replace(*lu, a, rbas, var, rng, &st) >= 0) ++done;
      ASSERT_EQ(st, 0);
    }
    EXPECT_EQ(QZI_lu_eta_size(*lu), 5);
    EXPECT_EQ(QZI_lu_get_wfact(*lu, 0), lu::kWfactRefact);
    EXPECT_GE(QZI_lu_npcand(*lu), 10);
    ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0);
    EXPECT_EQ(QZI_lu_eta_size(*lu), 0);
    EXPECT_EQ(QZI_lu_get_wfact(*lu, 0), 0);
  }
  // Dense etas: many updates with long entering columns on a small factor.
  std::vector<int> rbas(a.m);
  for (int i = 0; i < a.m; ++i) rbas[i] = a.n + i;
  lu::LuOptions opt;
  int err = 0;
  auto lu = QZI_lu_create(a.m, opt, QZI_lu_datacol, &a.host, &err);
  ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0);
  int w = 0;
  for (int var = 0; var < a.n && w == 0; ++var) {
    int st = 0;
    random_replace(*lu, a, rbas, var, rng, &st);
    if (st != 0) {
      ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0);
    }
    w = QZI_lu_get_wfact(*lu, 0);
  }
  EXPECT_EQ(w, lu::kWfactDenseta);
}

TEST(SpVecForms, SparsifyAndRunningMean) {
  SpVec v(10);
  v.set_dense_zero();
  v.val[3] = 2.0;
  v.val[7] = -1.0;
  v.val[8] = 1e-20;  // below the zero tolerance
  QZI_lu_sparsify(10, v, 0.5);
  ASSERT_EQ(v.n, 2);
  EXPECT_EQ(v.idx[0], 3);
  EXPECT_EQ(v.val[1], -1.0);
  SpVec d(10);
  d.set_dense_zero();
  for (int i = 0; i < 6; ++i) d.val[i] = 1.0;
  QZI_lu_sparsify(10, d, 0.5);
  EXPECT_LT(d.n, 0);

  // Solves with long results switch the output to the dense form, and back.
  std::mt19937 rng(8);
  ColMatrix a = random_matrix(200, Shape::kDenseKernel, 0, rng);
  std::vector<int> rbas = first_m_basis(a);
  int err = 0;
  auto lu = QZI_lu_create(a.m, lu::LuOptions{}, QZI_lu_datacol, &a.host, &err);
  ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0);
  SpVec b(a.m), x(a.m);
  for (int k = 0; k < 60; ++k) {
    random_rhs(a.m, a.m, rng, &b);
    ASSERT_EQ(QZI_lu_ftran(*lu, b, x, 0), 0);
  }
  EXPECT_LT(x.n, 0);
  EXPECT_GT(x.ndense, 0);
}

// User scale: Bs = R B C with powers of two, mirrored columns and logicals.
TEST(UserScale, FtranAndBtranUndoTheScaling) {
  std::mt19937 rng(12);
  const int m = 80;
  ColMatrix a = random_matrix(m, Shape::kRandomDiag, 40, rng);
  std::uniform_int_distribution<int> e(-6, 6);
  std::vector<double> rscal(m), cscal(a.n);
  std::vector<int> flipped(a.n);
  for (double& r : rscal) r = std::ldexp(1.0, e(rng));
  for (int j = 0; j < a.n; ++j) {
    cscal[j] = std::ldexp(1.0, e(rng));
    flipped[j] = j % 5 == 0;
  }
  ColMatrix s = a;
  for (int j = 0; j < a.n; ++j)
    for (int k = a.beg[j]; k < a.beg[j + 1]; ++k)
      s.val[k] = a.val[k] * rscal[a.idx[k]] * cscal[j] * (flipped[j] ? -1.0 : 1.0);
  s.bind();
  const std::vector<int> rbas = crash_basis(a, 20, rng);  // structurals and logicals
  for (int core : {4, 3}) {
    lu::LuOptions opt;
    opt.lucore = core;
    int err = 0;
    auto lu = QZI_lu_create(m, opt, QZI_lu_datacol, &s.host, &err);
    ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0);
    lu::LuUserScale sc{m, a.n, rscal.data(), cscal.data(), flipped.data(), rbas.data()};
    std::vector<int> idx = {3, 17, 40}, oi(m);
    std::vector<double> val = {1.5, -2.0, 0.25}, ov(m);
    int cnt = 0;
    ASSERT_EQ(lu_user_ftran(*lu, sc, 3, idx.data(), val.data(), &cnt, oi.data(), ov.data()), 0);
    std::vector<double> x(m, 0.0), b(m, 0.0);
    for (int k = 0; k < cnt; ++k) x[oi[k]] = ov[k];
    for (int k = 0; k < 3; ++k) b[idx[k]] = val[k];
    EXPECT_LE(ftran_residual(a, rbas, x, b), 1e-9) << core;
    ASSERT_EQ(lu_user_btran(*lu, sc, 3, idx.data(), val.data(), &cnt, oi.data(), ov.data()), 0);
    std::vector<double> y(m, 0.0), c(m, 0.0);
    for (int k = 0; k < cnt; ++k) y[oi[k]] = ov[k];
    for (int k = 0; k < 3; ++k) c[idx[k]] = val[k];
    EXPECT_LE(btran_residual(a, rbas, y, c), 1e-9) << core;
    // Bad counts and indices; an empty vector gives an empty result.
    EXPECT_EQ(lu_user_ftran(*lu, sc, -1, idx.data(), val.data(), &cnt, oi.data(), ov.data()),
              QZERR_INDEX_OUT_OF_RANGE);
    EXPECT_EQ(lu_user_ftran(*lu, sc, m + 1, idx.data(), val.data(), &cnt, oi.data(), ov.data()),
              QZERR_INDEX_OUT_OF_RANGE);
    idx[1] = m;
    EXPECT_EQ(lu_user_btran(*lu, sc, 3, idx.data(), val.data(), &cnt, oi.data(), ov.data()),
              QZERR_INDEX_OUT_OF_RANGE);
    ASSERT_EQ(lu_user_ftran(*lu, sc, 0, idx.data(), val.data(), &cnt, oi.data(), ov.data()), 0);
    EXPECT_EQ(cnt, 0);
  }
}

// FTRAN of a unit vector on a large hyper-sparse basis touches entries in proportion to the
// result, not to m; a dense right-hand side falls back to the dense loops.
TEST(HyperSparse, UnitFtranWorkFollowsTheResult) {
  std::mt19937 rng(21);
  const int m = 12000;
  ColMatrix a = random_matrix(m, Shape::kHyperSparse, 0, rng);
  std::vector<int> rbas = first_m_basis(a);
  int err = 0;
  auto lu = QZI_lu_create(m, lu::LuOptions{}, QZI_lu_datacol, &a.host, &err);
  ASSERT_EQ(QZI_lu_fact(*lu, rbas.data()), 0);
  const auto& slu = dynamic_cast<const lu::Slu&>(lu->engine());
  SpVec b(m), x(m);
  std::uniform_int_distribution<int> row(0, m - 1);
  int64_t work = 0, nnz = 0;
  for (int k = 0; k < 200; ++k) {
    b.set_unit(row(rng));
    ASSERT_EQ(QZI_lu_ftran(*lu, b, x, 0), 0);
    ASSERT_GE(x.n, 1);
    work += slu.last_ftran_work();
    nnz += x.n;
    EXPECT_LE(slu.last_ftran_work(), 8 * x.n + 16);
  }
  EXPECT_LT(work, 200LL * m / 50);
  random_rhs(m, m, rng, &b);
  ASSERT_EQ(QZI_lu_ftran(*lu, b, x, 0), 0);
  EXPECT_GE(slu.last_ftran_work(), m);
}

}  // namespace
}  // namespace zento::lutest
