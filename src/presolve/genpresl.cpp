// genpre_postsolv_prob: the walk back over the post stack (`gen_undo_pre_stack`) and the
// solution of the user's model it rebuilds.
//
// The walk starts from the reduced model's answer mapped to working numbers (records 6 and
// 11 are on top) and undoes one record at a time. Each step sets the values, multipliers,
// reduced costs and statuses of what it restores; a multiplier is chosen so that the
// restored basic column has a zero reduced cost, or, for a forcing row, so that every column
// fixed by the row keeps a reduced cost of the right sign. At the bottom the slack records
// hand each inequality's status to its row, and the reduced costs and slacks are computed
// anew from the user's data.
#include <algorithm>
#include <cmath>

#include "core/model_ops.h"
#include "presolve/lpdata.h"
#include "presolve/presolve.h"
#include "presolve/records.h"

namespace zento::presolve {

namespace {

struct Undo {
  std::vector<double> x, d, y;
  std::vector<Bs> cs, rs;
  std::vector<int> redRowStat;   // per working row: status of the reduced row's logical
  std::vector<double> redSlack;  // per working row: reduced model's slack b' - a x
  std::vector<Bs> finalRow;      // per row: status handed over by the slack record
  std::vector<char> hasSlack;
  double sense = 1;
};

Bs status_at(double v, double lo, double up, double d) {
  if (lo == up) return d >= 0 ? Bs::kLower : Bs::kUpper;
  if (v == lo) return Bs::kLower;
  if (v == up) return Bs::kUpper;
  return Bs::kZero;
}

Bs from_user(int code) {
  switch (code) {
    case QZ_BASTYPE_ATLO:
      return Bs::kLower;
    case QZ_BASTYPE_ATUP:
      return Bs::kUpper;
    case QZ_BASTYPE_FNUL:
    case QZ_BASTYPE_SBAS:
      return Bs::kZero;
    default:
      return code >= 0 ? Bs::kBasic : Bs::kUnset;
  }
}

// Reduced columns: values, reduced costs and statuses in working numbers.
void undo_reduced_cols(PostReader& rd, const Imodel* red, Undo& u) {
  std::vector<int> cols;
  rd.pop_ints(cols);
  if (red == nullptr || !red->sol || red->sol->primal.size() < cols.size()) return;
  const Sol& s = *red->sol;
  for (size_t p = 0; p < cols.size(); ++p) {
    const int j = cols[p];
    u.x[j] = s.primal[p];
    u.d[j] = u.sense * s.redcost[p];
    u.cs[j] = from_user(s.colStatus[p]);
  }
}

void undo_reduced_rows(PostReader& rd, const Imodel* red, Undo& u) {
  std::vector<int> rows;
  rd.pop_ints(rows);
  if (red == nullptr || !red->sol || red->sol->dual.size() < rows.size()) return;
  const Sol& s = *red->sol;
  for (size_t p = 0; p < rows.size(); ++p) {
    const int r = rows[p];
    u.y[r] = u.sense * s.dual[p];
    u.redRowStat[r] = s.rowStatus[p];
    u.redSlack[r] = s.slack[p];
    u.rs[r] = s.rowStatus[p] >= 0 ? Bs::kBasic : Bs::kLower;
  }
}

void undo_delete_row(PostReader& rd, Undo& u) {
  std::vector<int> cols;
  std::vector<double> vals;
  rd.pop_dbls(vals);
  const double b = rd.pop_dbl();
  rd.pop_ints(cols);
  const int s = rd.pop_int();
  const int r = rd.pop_int();
  if (rd.failed()) return;
  u.y[r] = 0;
  if (s < 0) {
    u.rs[r] = Bs::kBasic;
    return;
  }
  double sum = 0, as = 0;
  for (size_t p = 0; p < cols.size(); ++p) {
    if (cols[p] == s)
      as = vals[p];
    else
      sum += vals[p] * u.x[cols[p]];
  }
  u.x[s] = as != 0 ? (b - sum) / as : 0.0;
  u.d[s] = 0;
  u.cs[s] = Bs::kBasic;
  u.rs[r] = Bs::kLower;
}

void undo_fix_col(PostReader& rd, Undo& u) {
  std::vector<int> rows;
  std::vector<double> vals;
  rd.pop_dbls(vals);
  const double up = rd.pop_dbl(), lo = rd.pop_dbl(), c = rd.pop_dbl(), v = rd.pop_dbl();
  rd.pop_ints(rows);
  const int row = rd.pop_int();
  const int j = rd.pop_int();
  if (rd.failed()) return;
  u.x[j] = v;
  double s = 0, ar = 0;
  for (size_t p = 0; p < rows.size(); ++p) {
    if (rows[p] == row)
      ar = vals[p];
    else
      s += vals[p] * u.y[rows[p]];
  }
  if (row >= 0 && ar != 0) {
    // The singleton row's multiplier makes the column basic.
    u.y[row] = (c - s) / ar;
    u.d[j] = 0;
    u.cs[j] = Bs::kBasic;
    u.rs[row] = Bs::kLower;
    return;
  }
  u.d[j] = c - s;
  u.cs[j] = status_at(v, lo, up, u.d[j]);
}

void undo_eliminate(PostReader& rd, Undo& u) {
  std::vector<int> rowCols, colRows;
  std::vector<double> rowVals, colVals;
  rd.pop_dbls(colVals);
  rd.pop_dbls(rowVals);
  const double up = rd.pop_dbl(), lo = rd.pop_dbl(), cc = rd.pop_dbl(), b = rd.pop_dbl(),
               a = rd.pop_dbl();
  rd.pop_ints(colRows);
  rd.pop_ints(rowCols);
  const int flags = rd.pop_int(), k = rd.pop_int(), r = rd.pop_int(), c = rd.pop_int();
  if (rd.failed() || rowCols.size() != rowVals.size() || colRows.size() != colVals.size()) return;
  double sumRow = 0, ak = 0;
  for (size_t p = 0; p < rowCols.size(); ++p) {
    sumRow += rowVals[p] * u.x[rowCols[p]];
    if (rowCols[p] == k) ak = rowVals[p];
  }
  double s = 0;
  for (size_t p = 0; p < colRows.size(); ++p) s += colVals[p] * u.y[colRows[p]];
  const bool caseB = k >= 0 && ak != 0 &&
                     ((u.cs[k] == Bs::kLower && (flags & kLowerFromRemoved)) ||
                      (u.cs[k] == Bs::kUpper && (flags & kUpperFromRemoved)));
  u.rs[r] = Bs::kLower;
  if (!caseB) {
    u.x[c] = (b - sumRow) / a;
    u.y[r] = (cc - s) / a;
    u.d[c] = 0;
    u.cs[c] = Bs::kBasic;
    return;
  }
  // The kept column sits on a bound it borrowed: the eliminated column is the one at its
  // bound, and the kept one becomes basic.
  const double dc = -(a / ak) * u.d[k];
  const bool sameSide = -ak / a > 0;
  const bool atLower = (u.cs[k] == Bs::kLower) == sameSide;
  u.cs[c] = atLower ? Bs::kLower : Bs::kUpper;
  u.x[c] = atLower ? lo : up;
  u.d[c] = dc;
  u.y[r] = (cc - s - dc) / a;
  u.cs[k] = Bs::kBasic;
  u.d[k] = 0;
}

void undo_dup_col(PostReader& rd, Undo& u) {
  const double uk = rd.pop_dbl(), lk = rd.pop_dbl(), uj = rd.pop_dbl(), lj = rd.pop_dbl(),
               lambda = rd.pop_dbl();
  const int k = rd.pop_int(), j = rd.pop_int();
  if (rd.failed()) return;
  const double xp = u.x[j];
  const Bs st = u.cs[j];
  u.d[k] = lambda * u.d[j];
  const Bs kAtXLower = lambda > 0 ? Bs::kLower : Bs::kUpper;
  const Bs kAtXUpper = lambda > 0 ? Bs::kUpper : Bs::kLower;
  if (st == Bs::kLower || st == Bs::kUpper) {
    const bool low = st == Bs::kLower;
    u.x[j] = low ? lj : uj;
    u.cs[k] = low ? kAtXLower : kAtXUpper;
    u.x[k] = u.cs[k] == Bs::kLower ? lk : uk;
    return;
  }
  auto inside = [](double v, double l, double h) {
    return v >= l - 1e-9 * (1 + std::fabs(l)) && v <= h + 1e-9 * (1 + std::fabs(h));
  };
  // One of the two stays basic (or free at zero), the other goes to a bound.
  for (int side = 0; side < 2; ++side) {
    const double xk = side == 0 ? lk : uk;
    if (std::fabs(xk) >= kBigBound) continue;
    const double xj = xp - lambda * xk;
    if (inside(xj, lj, uj)) {
      u.x[k] = xk;
      u.cs[k] = side == 0 ? Bs::kLower : Bs::kUpper;
      u.x[j] = xj;
      return;
    }
  }
  for (int side = 0; side < 2; ++side) {
    const double xj = side == 0 ? lj : uj;
    if (std::fabs(xj) >= kBigBound) continue;
    const double xk = (xp - xj) / lambda;
    if (inside(xk, lk, uk)) {
      u.x[j] = xj;
      u.cs[j] = side == 0 ? Bs::kLower : Bs::kUpper;
      u.x[k] = xk;
      u.cs[k] = st;
      return;
    }
  }
  const double xk = std::min(std::max(0.0, lk), uk);
  u.x[k] = xk;
  u.cs[k] = xk == lk ? Bs::kLower : (xk == uk ? Bs::kUpper : Bs::kZero);
  u.x[j] = xp - lambda * xk;
}

void undo_force_row(PostReader& rd, Undo& u) {
  const int count = rd.pop_int(), side = rd.pop_int(), r = rd.pop_int();
  if (rd.failed() || count < 0) return;
  struct Col {
    int k;
    double a, v, lo, up, d0;
  };
  std::vector<Col> cols(count);
  std::vector<int> rows;
  std::vector<double> vals;
  for (int p = count - 1; p >= 0; --p) {
    rd.pop_dbls(vals);
    const double up = rd.pop_dbl(), lo = rd.pop_dbl(), c = rd.pop_dbl(), v = rd.pop_dbl(),
                 a = rd.pop_dbl();
    rd.pop_ints(rows);
    const int k = rd.pop_int();
    if (rd.failed() || rows.size() != vals.size()) return;
    double s = 0;
    for (size_t q = 0; q < rows.size(); ++q) s += vals[q] * u.y[rows[q]];
    cols[p] = Col{k, a, v, lo, up, c - s};
  }
  // At the minimum activity every column needs y <= d0 / a; at the maximum y >= d0 / a.
  const bool atMin = side == 0;
  int star = -1;
  double t = 0;
  for (int p = 0; p < count; ++p) {
    const Col& c = cols[p];
    if (c.lo == c.up || c.a == 0) continue;
    const double ratio = c.d0 / c.a;
    if (atMin ? ratio < t : ratio > t) {
      t = ratio;
      star = p;
    }
  }
  u.y[r] = star >= 0 ? t : 0.0;
  u.rs[r] = star >= 0 ? Bs::kLower : Bs::kBasic;
  for (int p = 0; p < count; ++p) {
    const Col& c = cols[p];
    u.x[c.k] = c.v;
    if (p == star) {
      u.d[c.k] = 0;
      u.cs[c.k] = Bs::kBasic;
      continue;
    }
    u.d[c.k] = c.d0 - c.a * u.y[r];
    u.cs[c.k] = status_at(c.v, c.lo, c.up, u.d[c.k]);
  }
}

void undo_dup_row(PostReader& rd, Undo& u) {
  const double uq = rd.pop_dbl(), lq = rd.pop_dbl(), bq = rd.pop_dbl(), br = rd.pop_dbl(),
               lambda = rd.pop_dbl();
  const int flags = rd.pop_int(), sgq = rd.pop_int(), sgr = rd.pop_int(), sq = rd.pop_int(),
            sr = rd.pop_int(), q = rd.pop_int(), r = rd.pop_int();
  if (rd.failed()) return;
  const double alpha = (br - bq / lambda) / sgr, beta = sgq / (lambda * sgr);
  const Bs st = u.cs[sr];
  const bool qActive = (st == Bs::kLower && (flags & kLowerFromRemoved)) ||
                       (st == Bs::kUpper && (flags & kUpperFromRemoved));
  u.rs[q] = Bs::kLower;
  if (!qActive) {
    u.x[sq] = (u.x[sr] - alpha) / beta;
    u.y[q] = 0;
    u.d[sq] = 0;
    u.cs[sq] = Bs::kBasic;
    return;
  }
  // Row q holds the active bound: it takes the multiplier and its slack the bound.
  const Bs sqSide = (beta > 0) == (st == Bs::kLower) ? Bs::kLower : Bs::kUpper;
  u.cs[sq] = sqSide;
  u.x[sq] = sqSide == Bs::kLower ? lq : uq;
  u.y[q] = u.y[r] / lambda;
  u.y[r] = 0;
  u.d[sq] = -sgq * u.y[q];
  u.cs[sr] = Bs::kBasic;
  u.d[sr] = 0;
}

void undo_slack_made(PostReader& rd, Undo& u) {
  rd.pop_int();  // sigma
  const int s = rd.pop_int(), r = rd.pop_int();
  if (rd.failed()) return;
  u.hasSlack[r] = 1;
  u.finalRow[r] = u.rs[r] == Bs::kBasic || u.cs[s] == Bs::kBasic ? Bs::kBasic : u.cs[s];
}

void undo_slack_to_bound(PostReader& rd, Undo& u) {
  const double bRed = rd.pop_dbl(), b = rd.pop_dbl();
  const int sigma = rd.pop_int(), keepUpper = rd.pop_int(), s = rd.pop_int(), r = rd.pop_int();
  if (rd.failed()) return;
  const double ax = bRed - u.redSlack[r];
  u.x[s] = (b - ax) / sigma;
  const int st = u.redRowStat[r];
  if (st >= 0)
    u.cs[s] = Bs::kBasic;
  else
    u.cs[s] = (st == QZ_BASTYPE_ATUP) != (keepUpper != 0) ? Bs::kUpper : Bs::kLower;
  u.d[s] = -sigma * u.y[r];
  u.rs[r] = Bs::kLower;
}

// Returns false when the stack does not read back cleanly.
bool gen_undo_pre_stack(const PostStack& stack, const Imodel* red, Undo& u) {
  PostReader rd(stack);
  while (!rd.done()) {
    const int type = rd.next_type();
    switch (type) {
      case kRecDeleteRow:
        undo_delete_row(rd, u);
        break;
      case kRecFixCol:
        undo_fix_col(rd, u);
        break;
      case kRecEliminate:
        undo_eliminate(rd, u);
        break;
      case kRecReducedCols:
        undo_reduced_cols(rd, red, u);
        break;
      case kRecDupCol:
        undo_dup_col(rd, u);
        break;
      case kRecReducedRows:
        undo_reduced_rows(rd, red, u);
        break;
      case kRecForceRow:
        undo_force_row(rd, u);
        break;
      case kRecDupRow:
        undo_dup_row(rd, u);
        break;
      case kRecSlackMade:
        undo_slack_made(rd, u);
        break;
      case kRecSlackToBound:
        undo_slack_to_bound(rd, u);
        break;
      default:
        return false;
    }
    if (rd.failed()) return false;
  }
  return true;
}

int user_code(Bs b) {
  switch (b) {
    case Bs::kBasic:
      return QZ_BASTYPE_BAS;
    case Bs::kLower:
      return QZ_BASTYPE_ATLO;
    case Bs::kUpper:
      return QZ_BASTYPE_ATUP;
    case Bs::kZero:
      return QZ_BASTYPE_FNUL;
    default:
      return QZ_BASTYPE_ATLO;
  }
}

// Fills the user's solution record from the walk; returns false when the basis is unusable.
bool install_postsolved(Imodel& model, const Undo& u, Sol& s) {
  const LinearData& lp = model.lp;
  const int n = model.nVars, m = model.nCons;
  s.resize(n, m);
  bool basisOk = true;
  int basics = 0;
  for (int j = 0; j < n; ++j) {
    s.primal[j] = u.x[j];
    if (u.cs[j] == Bs::kUnset) basisOk = false;
    s.colStatus[j] = user_code(u.cs[j]);
    basics += u.cs[j] == Bs::kBasic;
  }
  for (int i = 0; i < m; ++i) {
    s.dual[i] = u.sense * u.y[i];
    const Bs b = u.hasSlack[i] ? u.finalRow[i] : u.rs[i];
    if (b == Bs::kUnset) basisOk = false;
    int code = user_code(b);
    const char t = lp.pszConTypes[i];
    // An equation's logical is fixed: its side follows the sign of its reduced cost -y.
    if (t == 'E' && b != Bs::kBasic) code = -u.y[i] >= 0 ? QZ_BASTYPE_ATLO : QZ_BASTYPE_ATUP;
    if (t == 'N') code = QZ_BASTYPE_BAS;
    s.rowStatus[i] = code;
    basics += code >= 0;
  }
  if (basics != m) basisOk = false;

  // Slacks, reduced costs and objectives from the user's data.
  std::vector<double> act(m, 0.0);
  for (int j = 0; j < n; ++j) {
    const int b = lp.paiAcols[j];
    const int len = lp.panAcols.empty() ? lp.paiAcols[j + 1] - b : lp.panAcols[j];
    double aty = 0;
    for (int k = b; k < b + len; ++k) {
      act[lp.paiArows[k]] += lp.padAcoef[k] * s.primal[j];
      aty += lp.padAcoef[k] * s.dual[lp.paiArows[k]];
    }
    s.redcost[j] = (lp.padC.empty() ? 0.0 : lp.padC[j]) - aty;
  }
  double pobj = lp.dObjConst, dobj = lp.dObjConst, pinf = 0, dinf = 0;
  for (int j = 0; j < n; ++j) {
    const double x = s.primal[j], c = lp.padC.empty() ? 0.0 : lp.padC[j];
    pobj += c * x;
    dobj += s.redcost[j] * x;
    const double lo = lp.padL.empty() ? 0.0 : lp.padL[j];
    const double up = lp.padU.empty() ? QZ_INFINITY : lp.padU[j];
    if (lo > -QZ_INFINITY) pinf = std::max(pinf, lo - x);
    if (up < QZ_INFINITY) pinf = std::max(pinf, x - up);
    const double d = u.sense * s.redcost[j];  // minimization form
    switch (s.colStatus[j]) {
      case QZ_BASTYPE_ATLO:
        dinf = std::max(dinf, lo == up ? 0.0 : -d);
        break;
      case QZ_BASTYPE_ATUP:
        dinf = std::max(dinf, lo == up ? 0.0 : d);
        break;
      default:
        dinf = std::max(dinf, std::fabs(d));
        break;
    }
  }
  for (int i = 0; i < m; ++i) {
    const double b = lp.padB[i];
    s.slack[i] = b - act[i];
    dobj += s.dual[i] * b;
    const double y = u.sense * s.dual[i];  // minimization form
    const char t = lp.pszConTypes[i];
    const bool basic = s.rowStatus[i] >= 0;
    switch (t) {
      case 'L':
        pinf = std::max(pinf, act[i] - b);
        dinf = std::max(dinf, basic ? std::fabs(y) : y);
        if (!basic) pinf = std::max(pinf, std::fabs(s.slack[i]));
        break;
      case 'G':
        pinf = std::max(pinf, b - act[i]);
        dinf = std::max(dinf, basic ? std::fabs(y) : -y);
        if (!basic) pinf = std::max(pinf, std::fabs(s.slack[i]));
        break;
      case 'E':
        pinf = std::max(pinf, std::fabs(s.slack[i]));
        if (basic) dinf = std::max(dinf, std::fabs(y));
        break;
      default:
        dinf = std::max(dinf, std::fabs(y));
        break;
    }
  }
  s.pobj = pobj;
  s.dobj = dobj;
  s.pinf = pinf;
  s.dinf = dinf;
  return basisOk;
}

}  // namespace

}  // namespace zento::presolve

namespace zento {

int genpre_postsolv_prob(Imodel* reduced, Imodel& model, PresolveRecord& post, int* error) {
  using namespace presolve;
  *error = 0;
  Sol& s = ensure_sol(model);
  Undo u;
  u.sense = model.lp.dObjSense == QZ_MAX ? -1.0 : 1.0;
  const int nw = post.nWork, m = post.m;
  u.x.assign(nw, 0.0);
  u.d.assign(nw, 0.0);
  u.cs.assign(nw, Bs::kUnset);
  u.y.assign(m, 0.0);
  u.rs.assign(m, Bs::kUnset);
  u.redRowStat.assign(m, QZ_BASTYPE_BAS);
  u.redSlack.assign(m, 0.0);
  u.finalRow.assign(m, Bs::kUnset);
  u.hasSlack.assign(m, 0);
  const bool walked = gen_undo_pre_stack(post.stack, reduced, u);
  const bool basisOk = install_postsolved(model, u, s) && walked;
  if (!walked) *error = 1;
  // Statuses follow the reduced model's answer; a model presolve solved alone is optimal.
  const Sol* rs = reduced && reduced->sol ? reduced->sol.get() : nullptr;
  s.model_status = rs ? rs->model_status : QZ_STATUS_BASIC_OPTIMAL;
  s.primalStatus = rs ? rs->primalStatus : QZ_STATUS_BASIC_OPTIMAL;
  s.dualStatus = rs ? rs->dualStatus : QZ_STATUS_OPTIMAL;
  const bool optimal =
      s.primalStatus == QZ_STATUS_BASIC_OPTIMAL || s.primalStatus == QZ_STATUS_OPTIMAL;
  s.basicStatus =
      basisOk && post.basisFlag && optimal ? QZ_STATUS_BASIC_OPTIMAL : QZ_STATUS_UNLOADED;
  if (rs) {
    s.primalFloor = rs->primalFloor;
    s.dualFloor = rs->dualFloor;
    s.condEst = rs->condEst;
  }
  return 0;
}

}  // namespace zento
