// genpre_dup_row and genpre_dup_col: parallel rows and parallel columns.
//
// Candidates are grouped by a key of their pattern and their values scaled by the first
// entry; the groups come from a sort, never from the order of a hash table, and a pair is
// accepted only after an exact comparison of the ratios. Parallel rows keep one row with the
// intersection of both ranges (the ranges live in the rows' slack columns); parallel columns
// with proportional costs merge into one column, and otherwise the cost difference may show
// that one of them sits at a bound.
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "presolve/genpre_internal.h"
#include "presolve/records.h"

namespace zento::presolve {

namespace {

struct Line {
  uint64_t key = 0;
  int id = 0;
  std::vector<std::pair<int, double>> ent;  // sorted by index
};

uint64_t mix(uint64_t h, uint64_t v) {
  h ^= v + 0x9e3779b97f4a7c15ULL + (h << 6) + (h >> 2);
  return h;
}

void make_key(Line& l) {
  std::sort(l.ent.begin(), l.ent.end());
  uint64_t h = l.ent.size();
  const double first = l.ent[0].second;
  for (const auto& [idx, v] : l.ent) {
    h = mix(h, static_cast<uint64_t>(idx));
    const double q = std::nearbyint(v / first * 1e8);
    h = mix(h, static_cast<uint64_t>(static_cast<int64_t>(q)));
  }
  l.key = h;
}

// a = lambda * b entry by entry, same pattern; returns lambda or 0.
double parallel(const Line& a, const Line& b) {
  if (a.ent.size() != b.ent.size()) return 0;
  const double lambda = a.ent[0].second / b.ent[0].second;
  for (size_t p = 0; p < a.ent.size(); ++p) {
    if (a.ent[p].first != b.ent[p].first) return 0;
    const double want = lambda * b.ent[p].second;
    if (std::fabs(a.ent[p].second - want) >
        1e-12 * std::max(std::fabs(want), std::fabs(a.ent[p].second)))
      return 0;
  }
  return lambda;
}

// Groups of equal keys, each pair (first alive member, other) offered to `visit`.
template <class Alive, class Visit>
int for_pairs(std::vector<Line>& lines, Alive alive, Visit visit) {
  std::sort(lines.begin(), lines.end(), [](const Line& x, const Line& y) {
    return x.key != y.key ? x.key < y.key : x.id < y.id;
  });
  int changed = 0;
  constexpr int kMaxCompare = 8;
  for (size_t g = 0; g < lines.size();) {
    size_t e = g + 1;
    while (e < lines.size() && lines[e].key == lines[g].key) ++e;
    for (size_t p = g; p < e; ++p) {
      if (!alive(lines[p].id)) continue;
      int compared = 0;
      for (size_t q = p + 1; q < e && compared < kMaxCompare; ++q) {
        if (!alive(lines[q].id) || !alive(lines[p].id)) continue;
        ++compared;
        const double lambda = parallel(lines[q], lines[p]);
        if (lambda == 0) continue;
        const int r = visit(lines[p].id, lines[q].id, lambda);
        if (r < 0) return -1;
        changed |= r;
      }
    }
    g = e;
  }
  return changed;
}

}  // namespace

int Presolver::genpre_dup_row() {
  std::vector<Line> lines;
  for (int r = 0; r < w.nrows; ++r) {
    if (!w.rowAlive[r]) continue;
    const int s = w.slackCol[r];
    const bool pure = s >= 0 && w.pure_slack(s);
    Line l;
    l.id = r;
    for (const RowEnt& e : w.row[r])
      if (!(pure && e.col == s)) l.ent.emplace_back(e.col, e.val);
    if (l.ent.empty()) continue;
    make_key(l);
    lines.push_back(std::move(l));
  }
  auto alive = [&](int r) { return w.rowAlive[r] != 0; };
  auto visit = [&](int r, int q, double lambda) -> int {
    // Row q is lambda times row r in the structural part.
    const int sr0 = w.slackCol[r], sq0 = w.slackCol[q];
    int sr = sr0 >= 0 && w.pure_slack(sr0) ? sr0 : -1;
    int sq = sq0 >= 0 && w.pure_slack(sq0) ? sq0 : -1;
    // An equation is the row kept.
    if (sr >= 0 && sq < 0) {
      std::swap(r, q);
      std::swap(sr, sq);
      lambda = 1 / lambda;
    }
    const double br = w.rhs[r], bq = w.rhs[q];
    if (sr < 0) {
      // Row r is an equation: row q holds exactly or the model is infeasible.
      const double resid = bq - lambda * br;
      if (sq < 0) {
        if (std::fabs(resid) > tol_infeas(bq)) return infeasible();
        delete_row_rec(q, -1);
        return 1;
      }
      const double v = resid / w.slackSign[sq];
      if (v < w.lo[sq] - tol_infeas(w.lo[sq]) || v > w.up[sq] + tol_infeas(w.up[sq]))
        return infeasible();
      delete_row_rec(q, sq);
      return 1;
    }
    // Both carry their range in a slack: s_r = alpha + beta s_q.
    const int sgr = w.slackSign[sr], sgq = w.slackSign[sq];
    const double alpha = (br - bq / lambda) / sgr, beta = sgq / (lambda * sgr);
    const double lq = w.lo[sq], uq = w.up[sq];
    double tlo, tup;
    if (beta > 0) {
      tlo = finite_lo(lq) ? alpha + beta * lq : -kInf;
      tup = finite_up(uq) ? alpha + beta * uq : kInf;
    } else {
      tlo = finite_up(uq) ? alpha + beta * uq : -kInf;
      tup = finite_lo(lq) ? alpha + beta * lq : kInf;
    }
    double nlo = w.lo[sr], nup = w.up[sr];
    int flags = 0;
    if (!take_borrowed_bounds(tlo, tup, nlo, nup, flags)) return infeasible();
    post_.push_int(r);
    post_.push_int(q);
    post_.push_int(sr);
    post_.push_int(sq);
    post_.push_int(sgr);
    post_.push_int(sgq);
    post_.push_int(flags);
    post_.push_dbl(lambda);
    post_.push_dbl(br);
    post_.push_dbl(bq);
    post_.push_dbl(lq);
    post_.push_dbl(uq);
    post_.push_type(kRecDupRow);
    w.set_bounds(sr, nlo, nup);
    w.delete_row(q);
    w.delete_col(sq);
    ++reductions_;
    return 1;
  };
  const int changed = for_pairs(lines, alive, visit);
  if (changed < 0) return -1;
  if (end_stage(kStageDrp, "drp") != 0) return -1;
  return changed;
}

int Presolver::genpre_dup_col() {
  std::vector<Line> lines;
  for (int c = 0; c < w.ncols; ++c) {
    if (!w.colAlive[c] || w.col_len(c) == 0 || w.pure_slack(c)) continue;
    Line l;
    l.id = c;
    for (const ColEnt& e : w.col[c]) l.ent.emplace_back(e.row, w.val(e));
    make_key(l);
    lines.push_back(std::move(l));
  }
  auto alive = [&](int c) { return w.colAlive[c] != 0; };
  auto visit = [&](int j, int k, double lambda) { return dup_col_pair(j, k, lambda); };
  const int changed = for_pairs(lines, alive, visit);
  if (changed < 0) return -1;
  if (end_stage(kStageDcp, "dcp") != 0) return -1;
  return changed;
}

// Column k is lambda times column j.
int Presolver::dup_col_pair(int j, int k, double lambda) {
  const double cj = w.cost[j], ck = w.cost[k];
  const double delta = ck - lambda * cj;
  const double t = std::max(reps_, ceps_);
  if (std::fabs(delta) <= 1e-12 * (1 + std::fabs(ck))) {
    // x' = x_j + lambda x_k takes both.
    const double lj = w.lo[j], uj = w.up[j], lk = w.lo[k], uk = w.up[k];
    const double klo = lambda > 0 ? lk : uk, kup = lambda > 0 ? uk : lk;
    const bool loF = finite_lo(lj) && finite_lo(klo) && finite_up(klo);
    const bool upF = finite_up(uj) && finite_lo(kup) && finite_up(kup);
    const double nlo = loF ? lj + lambda * klo : -kInf;
    const double nup = upF ? uj + lambda * kup : kInf;
    // A merged column without bounds may end nonbasic at zero, which two columns with a bound
    // between them cannot share back: merge free columns only with free columns.
    const bool jFree = !finite_lo(lj) && !finite_up(uj), kFree = !finite_lo(lk) && !finite_up(uk);
    if (!loF && !upF && !(jFree && kFree)) return 0;
    post_.push_int(j);
    post_.push_int(k);
    post_.push_dbl(lambda);
    post_.push_dbl(lj);
    post_.push_dbl(uj);
    post_.push_dbl(lk);
    post_.push_dbl(uk);
    post_.push_type(kRecDupCol);
    w.set_bounds(j, nlo, nup);
    w.delete_col(k);
    ++reductions_;
    return 1;
  }
  if (!dual_on() || std::fabs(delta) <= t * (1 + std::fabs(ck))) return 0;
  // d_k = lambda d_j + delta: the sign of d_j known from a missing bound of x_j fixes x_k.
  auto decide = [&](int a, int b, double lam, double del) -> int {
    const bool nonneg = !finite_up(w.up[a]), nonpos = !finite_lo(w.lo[a]);
    int side = 0;  // 1 lower, 2 upper
    if (nonneg && lam > 0 && del > 0) side = 1;
    if (nonneg && lam < 0 && del < 0) side = 2;
    if (nonpos && lam > 0 && del < 0) side = 2;
    if (nonpos && lam < 0 && del > 0) side = 1;
    if (side == 0) return 0;
    const double v = side == 1 ? w.lo[b] : w.up[b];
    if (side == 1 ? !finite_lo(v) : !finite_up(v)) {
      dual_infeasible();
      return 0;
    }
    fix_col_rec(b, v, -1);
    return 1;
  };
  if (decide(j, k, lambda, delta)) return 1;
  if (!dual_on()) return 0;
  return decide(k, j, 1 / lambda, -delta / lambda);
}

bool Presolver::take_borrowed_bounds(double tlo, double tup, double& nlo, double& nup,
                                     int& flags) const {
  if (tlo > nlo + 1e-12 * (1 + std::fabs(nlo))) {
    nlo = tlo;
    flags |= kLowerFromRemoved;
  }
  if (tup < nup - 1e-12 * (1 + std::fabs(nup))) {
    nup = tup;
    flags |= kUpperFromRemoved;
  }
  if (nlo > nup) {
    if (nlo - nup > tol_infeas(std::max(std::fabs(nlo), std::fabs(nup)))) return false;
    // Crossed by rounding: one point, taken from the borrowed side.
    if (flags & kUpperFromRemoved) {
      nlo = nup;
      flags &= ~kLowerFromRemoved;
    } else {
      nup = nlo;
      flags &= ~kUpperFromRemoved;
    }
  }
  return true;
}

}  // namespace zento::presolve
