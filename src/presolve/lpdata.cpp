// The presolver's working copy: loading, entry moves, row activities and work queues.
#include "presolve/lpdata.h"

#include <algorithm>
#include <cmath>

namespace zento::presolve {

int LpWork::load(const Imodel& m) {
  const LinearData& lp = m.lp;
  n0 = ncols = m.nVars;
  m0 = nrows = m.nCons;
  sense = lp.dObjSense == QZ_MAX ? -1.0 : 1.0;
  objConst = sense * lp.dObjConst;
  row.assign(nrows, {});
  col.assign(ncols, {});
  cost.assign(ncols, 0.0);
  lo.assign(ncols, 0.0);
  up.assign(ncols, kInf);
  rhs.assign(nrows, 0.0);
  rowAlive.assign(nrows, 1);
  colAlive.assign(ncols, 1);
  rowType.assign(lp.pszConTypes.begin(), lp.pszConTypes.begin() + nrows);
  slackCol.assign(nrows, -1);
  slackRow.assign(ncols, -1);
  slackSign.assign(ncols, 0);
  act_.assign(nrows, Activity{});
  rowQueued_.assign(nrows, 0);
  colQueued_.assign(ncols, 0);
  rowEdited.assign(nrows, 1);
  colEdited.assign(ncols, 1);
  colTick.assign(ncols, 0);
  rowsAlive = nrows;
  colsAlive = ncols;
  nnz = 0;
  for (int i = 0; i < nrows; ++i) {
    const double b = lp.padB[i];
    if (!std::isfinite(b) && std::fabs(b) < QZ_INFINITY) return QZERR_ERROR_IN_INPUT;
    rhs[i] = b;
  }
  std::vector<int> len(nrows, 0);
  for (int j = 0; j < ncols; ++j) {
    const int b = lp.paiAcols[j];
    const int n = lp.panAcols.empty() ? lp.paiAcols[j + 1] - b : lp.panAcols[j];
    for (int k = b; k < b + n; ++k)
      if (lp.padAcoef[k] != 0.0) ++len[lp.paiArows[k]];
  }
  for (int i = 0; i < nrows; ++i) row[i].reserve(len[i] + 1);
  for (int j = 0; j < ncols; ++j) {
    const double c = lp.padC.empty() ? 0.0 : lp.padC[j];
    double l = lp.padL.empty() ? 0.0 : lp.padL[j];
    double u = lp.padU.empty() ? QZ_INFINITY : lp.padU[j];
    if (std::isnan(c) || std::isnan(l) || std::isnan(u) || std::isinf(c))
      return QZERR_ERROR_IN_INPUT;
    cost[j] = sense * c;
    lo[j] = l <= -QZ_INFINITY ? -kInf : l;
    up[j] = u >= QZ_INFINITY ? kInf : u;
    const int b = lp.paiAcols[j];
    const int n = lp.panAcols.empty() ? lp.paiAcols[j + 1] - b : lp.panAcols[j];
    col[j].reserve(n);
    for (int k = b; k < b + n; ++k) {
      const double v = lp.padAcoef[k];
      if (v == 0.0) continue;
      if (!std::isfinite(v)) return QZERR_ERROR_IN_INPUT;
      add_entry(lp.paiArows[k], j, v);
    }
  }
  queue_all();
  return 0;
}

int LpWork::add_column(double c, double l, double u) {
  const int j = ncols++;
  col.emplace_back();
  cost.push_back(c);
  lo.push_back(l);
  up.push_back(u);
  colAlive.push_back(1);
  slackRow.push_back(-1);
  slackSign.push_back(0);
  colQueued_.push_back(0);
  colEdited.push_back(1);
  colTick.push_back(++tick);
  ++colsAlive;
  return j;
}

void LpWork::add_entry(int r, int c, double v) {
  row[r].push_back(RowEnt{c, static_cast<int>(col[c].size()), v});
  col[c].push_back(ColEnt{r, static_cast<int>(row[r].size()) - 1});
  ++nnz;
  act_[r].stale = true;
  rowEdited[r] = 1;
  colEdited[c] = 1;
  colTick[c] = ++tick;
}

void LpWork::erase_at(int r, int p) {
  const RowEnt e = row[r][p];
  std::vector<ColEnt>& cl = col[e.col];
  if (e.cpos + 1 < static_cast<int>(cl.size())) {
    const ColEnt lastC = cl.back();
    cl[e.cpos] = lastC;
    row[lastC.row][lastC.rpos].cpos = e.cpos;
  }
  cl.pop_back();
  std::vector<RowEnt>& rl = row[r];
  if (p + 1 < static_cast<int>(rl.size())) {
    const RowEnt lastR = rl.back();
    rl[p] = lastR;
    col[lastR.col][lastR.cpos].rpos = p;
  }
  rl.pop_back();
  --nnz;
  act_[r].stale = true;
  rowEdited[r] = 1;
  colEdited[e.col] = 1;
  colTick[e.col] = ++tick;
}

void LpWork::set_val(int r, int p, double v) {
  row[r][p].val = v;
  act_[r].stale = true;
  rowEdited[r] = 1;
  colEdited[row[r][p].col] = 1;
  colTick[row[r][p].col] = ++tick;
}

int LpWork::find_in_row(int r, int c) const {
  if (col[c].size() < row[r].size()) {
    for (const ColEnt& e : col[c])
      if (e.row == r) return e.rpos;
    return -1;
  }
  for (size_t p = 0; p < row[r].size(); ++p)
    if (row[r][p].col == c) return static_cast<int>(p);
  return -1;
}

void LpWork::delete_row(int r) {
  while (!row[r].empty()) {
    const int p = static_cast<int>(row[r].size()) - 1;
    queue_col(row[r][p].col);
    erase_at(r, p);
  }
  rowAlive[r] = 0;
  --rowsAlive;
}

void LpWork::delete_col(int c) {
  while (!col[c].empty()) {
    const ColEnt e = col[c].back();
    queue_row(e.row);
    erase_at(e.row, e.rpos);
  }
  colAlive[c] = 0;
  colTick[c] = ++tick;
  --colsAlive;
}

void LpWork::fix_col(int c, double v) {
  if (v != 0.0) {
    for (const ColEnt& e : col[c]) rhs[e.row] -= val(e) * v;
    objConst += cost[c] * v;
  }
  delete_col(c);
}

void LpWork::set_bounds(int c, double l, double u) {
  lo[c] = l;
  up[c] = u;
  colTick[c] = ++tick;
  queue_col(c);
  for (const ColEnt& e : col[c]) {
    act_[e.row].stale = true;
    queue_row(e.row);
  }
}

bool LpWork::pure_slack(int c) const {
  return slackRow[c] >= 0 && colAlive[c] && col[c].size() == 1 && col[c][0].row == slackRow[c] &&
         cost[c] == 0.0;
}

const Activity& LpWork::activity(int r) {
  Activity& a = act_[r];
  if (!a.stale) return a;
  a = Activity{};
  for (const RowEnt& e : row[r]) {
    const double l = lo[e.col], u = up[e.col], v = e.val;
    const double atMin = v > 0 ? l : u, atMax = v > 0 ? u : l;
    if (finite_lo(atMin) && finite_up(atMin)) {
      a.min += v * atMin;
      a.mag += std::fabs(v * atMin);
    } else {
      ++a.infMin;
    }
    if (finite_lo(atMax) && finite_up(atMax)) {
      a.max += v * atMax;
      a.mag += std::fabs(v * atMax);
    } else {
      ++a.infMax;
    }
    a.amax = std::max(a.amax, std::fabs(v));
  }
  a.stale = false;
  return a;
}

namespace {
constexpr int kLongRow = 64;
}  // namespace

void LpWork::activity_without(int r, int c, double& mn, double& mx) {
  if (row_len(r) > kLongRow) {
    const Activity& a = activity(r);
    const int p = find_in_row(r, c);
    const double v = p >= 0 ? row[r][p].val : 0.0;
    const double atMin = v > 0 ? lo[c] : up[c], atMax = v > 0 ? up[c] : lo[c];
    const bool minInf = p >= 0 && !(finite_lo(atMin) && finite_up(atMin));
    const bool maxInf = p >= 0 && !(finite_lo(atMax) && finite_up(atMax));
    mn = a.infMin - (minInf ? 1 : 0) > 0 ? -kInf : a.min - (p >= 0 && !minInf ? v * atMin : 0.0);
    mx = a.infMax - (maxInf ? 1 : 0) > 0 ? kInf : a.max - (p >= 0 && !maxInf ? v * atMax : 0.0);
    // Taking one term out of a long sum may cancel; a difference whose rounding could
    // exceed the tight tolerances of the callers is summed afresh.
    const double err = 4e-16 * row_len(r) * a.mag;
    const bool mnOk = mn <= -kInf || err <= 1e-10 * (1 + std::fabs(mn));
    const bool mxOk = mx >= kInf || err <= 1e-10 * (1 + std::fabs(mx));
    if (mnOk && mxOk) return;
  }
  mn = mx = 0;
  bool infMin = false, infMax = false;
  for (const RowEnt& e : row[r]) {
    if (e.col == c) continue;
    const double l = lo[e.col], u = up[e.col], v = e.val;
    const double atMin = v > 0 ? l : u, atMax = v > 0 ? u : l;
    if (finite_lo(atMin) && finite_up(atMin))
      mn += v * atMin;
    else
      infMin = true;
    if (finite_lo(atMax) && finite_up(atMax))
      mx += v * atMax;
    else
      infMax = true;
  }
  if (infMin) mn = -kInf;
  if (infMax) mx = kInf;
}

void LpWork::queue_row(int r) {
  if (!rowAlive[r] || rowQueued_[r]) return;
  rowQueued_[r] = 1;
  rowQueue_.push_back(r);
}

void LpWork::queue_col(int c) {
  if (!colAlive[c] || colQueued_[c]) return;
  colQueued_[c] = 1;
  colQueue_.push_back(c);
}

void LpWork::queue_all() {
  for (int r = 0; r < nrows; ++r) queue_row(r);
  for (int c = 0; c < ncols; ++c) queue_col(c);
}

bool LpWork::pop_row(int& r) {
  while (rowHead_ < rowQueue_.size()) {
    r = rowQueue_[rowHead_++];
    rowQueued_[r] = 0;
    if (rowAlive[r]) return true;
  }
  rowQueue_.clear();
  rowHead_ = 0;
  return false;
}

bool LpWork::pop_col(int& c) {
  while (colHead_ < colQueue_.size()) {
    c = colQueue_[colHead_++];
    colQueued_[c] = 0;
    if (colAlive[c]) return true;
  }
  colQueue_.clear();
  colHead_ = 0;
  return false;
}

}  // namespace zento::presolve
