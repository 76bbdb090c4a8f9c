// gen_pre: the presolve loop, the slack columns of inequality rows, the reduced model and the
// record a model keeps.
#include <algorithm>
#include <cmath>
#include <new>

#include "core/callbacks.h"
#include "core/clock.h"
#include "core/errors.h"
#include "core/load.h"
#include "core/log.h"
#include "core/model_ops.h"
#include "core/params/registry.h"
#include "presolve/genpre_internal.h"
#include "presolve/records.h"

namespace zento {

PresolveRecord::~PresolveRecord() { delete reduced; }

void PresolveRecordDeleter::operator()(PresolveRecord* p) const { delete p; }

void QZfreePresolvMemory(Imodel& model) { model.presolve.reset(); }

PresolveOptions presolve_options(const Imodel& m) {
  PresolveOptions o;
  o.level = m.SplexPam.lp_prelevel;
  o.fill = m.SplexPam.solver_pre_elim_fill;
  o.feastol = m.SplexPam.solver_feastol;
  o.opttol = m.SplexPam.solver_opttol;
  return o;
}

int gen_pre(Imodel& model, PresolveRecord& post, int level, int* status) {
  *status = kPreNothing;
  int rc = 0;
  try {
    presolve::Presolver p(model, post, level);
    rc = p.run(status);
  } catch (const std::bad_alloc&) {
    rc = QZERR_OUT_OF_MEMORY;
  }
  model.run.pre.active = false;
  if (rc != 0) {
    post.stack.clear();
    delete post.reduced;
    post.reduced = nullptr;
  }
  return rc;
}

}  // namespace zento

namespace zento::presolve {

namespace {
int log_level(const Imodel& m) { return m.SplexPam.lp_printlevel > 0 ? 1 : 0; }
}  // namespace

Presolver::Presolver(Imodel& m, PresolveRecord& rec, int level)
    : m_(m), rec_(rec), post_(rec.stack), level_(level) {
  reps_ = m.SplexPam.solver_feastol;
  ceps_ = m.SplexPam.solver_opttol;
  tlimit_ = m.SplexPam.solver_timlmt;
  tStart_ = lt_get_realtime();
  fillBudget_ = std::max(0, m.SplexPam.solver_pre_elim_fill);
}

int Presolver::poll() {
  const int r = timelapsed(tlimit_, &m_, tStart_, QZLOC_PRESOLVE, 0);
  if (r > 0) err_ = QZERR_TIME_LIMIT;
  if (r < 0) err_ = QZERR_USER_INTERRUPT;
  return err_;
}

int Presolver::end_stage(int stage, const char* tag) {
  PresolveProgress& p = m_.run.pre;
  int userCols = 0;
  for (int j = 0; j < w.n0; ++j) userCols += w.colAlive[j];
  p.rowsRemoved = w.m0 - w.rowsAlive;
  p.colsRemoved = w.n0 - userCols;
  p.nonzRemoved = m_.nAnnz - static_cast<int>(std::min<long>(w.nnz, m_.nAnnz));
  p.passes = rec_.passes;
  p.lastStage = stage;
  p.elapsed = lt_get_realtime() - tStart_;
  QZlogmod(&m_, log_level(m_), "\n %s      %6u     %6u     %8u      %.2f", tag,
           static_cast<unsigned>(w.rowsAlive), static_cast<unsigned>(w.colsAlive),
           static_cast<unsigned>(w.nnz), p.elapsed);
  return poll();
}

int Presolver::infeasible() {
  status_ = -1;
  return -1;
}

void Presolver::dual_infeasible() { rec_.dualInfeasible = true; }

int Presolver::run(int* status) {
  QZ_CALL(w.load(m_));
  // Dense linking rows (far longer than the average row) make substitutions fill most: the
  // fill budget of such a model is cut.
  long maxRow = 0;
  for (int r = 0; r < w.nrows; ++r) maxRow = std::max<long>(maxRow, w.row_len(r));
  const double avgRow = w.nrows > 0 ? static_cast<double>(w.nnz) / w.nrows : 0.0;
  if (maxRow > 1000 && maxRow > 100 * avgRow && fillBudget_ > 100)
    fillBudget_ = std::max(100L, fillBudget_ / 10);
  rec_.n = w.n0;
  rec_.m = w.m0;
  PresolveProgress& p = m_.run.pre;
  p = PresolveProgress{};
  p.active = true;
  QZlogmod(&m_, log_level(m_), "\n\ntpre       ncons      nvars         nnzA      time");
  QZ_CALL(make_slacks_into_vars());
  rec_.nWork = w.ncols;
  const int rc = gen_pre_loop();
  if (err_ != 0) return err_;
  if (rc < 0 && status_ == 0) return QZERR_INTERNAL_ERROR;
  if (status_ < 0) {
    *status = kPreInfeasible;
    return 0;
  }
  if (reductions_ == 0) {
    *status = kPreNothing;
    return 0;
  }
  QZ_CALL(remove_slacks_vars());
  QZ_CALL(setup_red_model());
  post_.shrink();
  const bool solved = rec_.redRows == 0 && rec_.redCols == 0;
  if (rec_.dualInfeasible)
    *status = solved ? kPreUnbounded : kPreReduced;
  else
    *status = solved ? kPreSolved : kPreReduced;
  rec_.rowsRemoved = w.m0 - rec_.redRows;
  rec_.colsRemoved = w.n0 - rec_.redCols;
  rec_.nnzRemoved = m_.nAnnz - rec_.redNnz;
  rec_.elapsed = lt_get_realtime() - tStart_;
  return 0;
}

// Every inequality row gets a slack column, so that every later stage sees equalities; 'N'
// rows leave at once.
int Presolver::make_slacks_into_vars() {
  for (int r = 0; r < w.nrows; ++r) {
    const char t = w.rowType[r];
    if (t == 'N') {
      delete_row_rec(r, -1);
      continue;
    }
    if (t != 'L' && t != 'G') continue;
    const int sigma = t == 'L' ? 1 : -1;
    const int s = w.add_column(0.0, 0.0, kInf);
    w.add_entry(r, s, sigma);
    w.slackCol[r] = s;
    w.slackRow[s] = r;
    w.slackSign[s] = static_cast<signed char>(sigma);
    w.queue_col(s);
    post_.push_int(r);
    post_.push_int(s);
    post_.push_int(sigma);
    post_.push_type(kRecSlackMade);
  }
  pos_.assign(w.ncols, -1);
  converted_.assign(w.ncols, 0);
  return end_stage(kStageIni, "ini");
}

int Presolver::gen_pre_loop() {
  const bool simple = (level_ & kBitSimple) != 0;
  if (simple && simple_spre() < 0) return -1;
  const int maxPass = (level_ & kBitPassLimit) ? 10 : 100;
  bool fullElim = false;
  for (int pass = 0; pass < maxPass; ++pass) {
    ++rec_.passes;
    bool changed = false;
    int r = 0;
    if (dual_on()) {
      if ((r = genpre_dual_fixing()) < 0) return -1;
      changed |= r > 0;
    }
    if ((level_ & kBitDupRow) && dupRowRounds_ > 0) {
      --dupRowRounds_;
      if ((r = genpre_dup_row()) < 0) return -1;
      changed |= r > 0;
    }
    if (level_ & kBitDupCol) {
      if ((r = genpre_dup_col()) < 0) return -1;
      changed |= r > 0;
    }
    if (changed) {
      if (simple && simple_spre() < 0) return -1;
      continue;
    }
    if (level_ & kBitEliminate) {
      if ((r = genpre_eliminator(!fullElim)) < 0) return -1;
      if (r == 0 && !fullElim) {
        fullElim = true;
        if ((r = genpre_eliminator(false)) < 0) return -1;
      }
      if (r > 0) {
        if (simple && simple_spre() < 0) return -1;
        continue;
      }
    }
    break;
  }
  return 0;
}

// A surviving slack column alone in its row goes back into the row as a right-hand side,
// unless both its bounds are needed.
int Presolver::remove_slacks_vars() {
  redType_.assign(w.nrows, 'E');
  redRhs_.assign(w.rhs.begin(), w.rhs.end());
  for (int r = 0; r < w.nrows; ++r) {
    if (!w.rowAlive[r]) continue;
    const int s = w.slackCol[r];
    if (s < 0 || !w.pure_slack(s)) continue;
    const double sl = w.lo[s], su = w.up[s], b = w.rhs[r];
    const int sigma = w.slackSign[s];
    bool keepUpper;
    if (finite_lo(sl) && !finite_up(su)) {
      keepUpper = false;
    } else if (!finite_lo(sl) && finite_up(su)) {
      keepUpper = true;
    } else if (finite_lo(sl) && finite_up(su)) {
      // s = (b - a x) / sigma over the range of a x.
      double mn, mx;
      w.activity_without(r, s, mn, mx);
      double smin, smax;
      if (sigma > 0) {
        smin = mx >= kInf ? -kInf : b - mx;
        smax = mn <= -kInf ? kInf : b - mn;
      } else {
        smin = mn <= -kInf ? -kInf : mn - b;
        smax = mx >= kInf ? kInf : mx - b;
      }
      if (smax <= su + tol_tight(su) && std::fabs(sl) < 1e8)
        keepUpper = false;
      else if (smin >= sl - tol_tight(sl) && std::fabs(su) < 1e8)
        keepUpper = true;
      else
        continue;
    } else {
      continue;
    }
    // a x + sigma s = b with s at the kept bound v.
    const double v = keepUpper ? su : sl;
    const double bRed = b - sigma * v;
    const bool lessEq = (sigma > 0) != keepUpper;  // a x <= bRed
    redType_[r] = lessEq ? 'L' : 'G';
    redRhs_[r] = bRed;
    converted_[s] = 1;
    post_.push_int(r);
    post_.push_int(s);
    post_.push_int(keepUpper ? 1 : 0);
    post_.push_int(sigma);
    post_.push_dbl(b);
    post_.push_dbl(bRed);
    post_.push_type(kRecSlackToBound);
  }
  return end_stage(kStageEnd, "end");
}

int Presolver::setup_red_model() {
  std::vector<int> rows, cols;
  for (int r = 0; r < w.nrows; ++r)
    if (w.rowAlive[r]) rows.push_back(r);
  for (int c = 0; c < w.ncols; ++c)
    if (w.colAlive[c] && !converted_[c]) cols.push_back(c);
  post_.push_ints(rows);
  post_.push_type(kRecReducedRows);
  post_.push_ints(cols);
  post_.push_type(kRecReducedCols);
  const int nr = static_cast<int>(rows.size()), nc = static_cast<int>(cols.size());
  rec_.redRows = nr;
  rec_.redCols = nc;
  rec_.redNnz = 0;
  if (nr == 0 && nc == 0) return 0;

  // Columns come out sorted by row when the rows are walked in order: a count and a fill,
  // no sort.
  std::vector<int> colMap(w.ncols, -1);
  for (int k = 0; k < nc; ++k) colMap[cols[k]] = k;
  std::vector<int> beg(nc + 1, 0);
  for (int k = 0; k < nc; ++k) beg[k + 1] = beg[k] + w.col_len(cols[k]);
  std::vector<int> idx(beg[nc]), fill(beg.begin(), beg.end() - 1);
  std::vector<double> val(beg[nc]), c(nc), l(nc), u(nc), b(nr);
  std::vector<char> types(nr + 1, 0);
  for (int i = 0; i < nr; ++i)
    for (const RowEnt& e : w.row[rows[i]]) {
      const int k = colMap[e.col];
      if (k < 0) continue;
      idx[fill[k]] = i;
      val[fill[k]++] = e.val;
    }
  for (int k = 0; k < nc; ++k) {
    const int j = cols[k];
    c[k] = w.sense * w.cost[j];
    l[k] = w.lo[j] <= -kInf ? -QZ_INFINITY : w.lo[j];
    u[k] = w.up[j] >= kInf ? QZ_INFINITY : w.up[j];
  }
  for (int i = 0; i < nr; ++i) {
    types[i] = redType_[rows[i]];
    b[i] = redRhs_[rows[i]];
  }
  rec_.redNnz = static_cast<int>(idx.size());
  if (idx.empty()) {
    idx.push_back(0);
    val.push_back(0.0);
  }
  c.resize(std::max(nc, 1));
  l.resize(std::max(nc, 1));
  u.resize(std::max(nc, 1));
  b.resize(std::max(nr, 1));
  beg.resize(std::max(nc + 1, 2), 0);

  // The reduced model is the presolve record's own: it is not listed in the environment, so
  // that deleting the environment meets it only through the user's model.
  Imodel* red = new Imodel();
  rec_.reduced = red;
  initialize_model(*red);
  red->env = m_.env;
  QZ_CALL(params_setup_model(red));
  QZ_CALL(copy_param(m_, *red, 0));
  red->isWorkingCopy = true;
  red->parentModel = &m_;
  red->SplexPam.lp_prelevel = 0;
  red->holdLog = true;
  const int rc = load_lp_data(*red, nr, nc, m_.lp.dObjSense, w.sense * w.objConst, c.data(),
                              b.data(), types.data(), rec_.redNnz, beg.data(), nullptr, val.data(),
                              idx.data(), l.data(), u.data());
  red->holdLog = false;
  if (rc != 0) return rc;
  QZlogmod(&m_, log_level(m_), "\nLoaded reduced model (n_cons:%d, n_vars:%d, objsense:%d)", nr, nc,
           m_.lp.dObjSense);
  return 0;
}

}  // namespace zento::presolve
