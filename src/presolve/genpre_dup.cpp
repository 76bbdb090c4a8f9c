// genpre_dup_row and genpre_dup_col: parallel rows and parallel columns.
//
// Candidates are grouped by a key of their pattern and their values scaled by the first
// entry; the groups come from a sort, never from the order of a hash table, and a pair is
// accepted only after an exact comparison of the ratios. Keys are kept from one round to the
// next and recomputed only for lines whose entries changed, so a round over an unchanged
// model costs a scan and a sort of integers. Parallel rows keep one row with the
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

using Ent = std::pair<int, double>;

uint64_t mix(uint64_t h, uint64_t v) {
  h ^= v + 0x9e3779b97f4a7c15ULL + (h << 6) + (h >> 2);
  return h;
}

// Key of a line sorted by index: its pattern and its values scaled by the first entry.
uint64_t line_key(const Ent* ent, size_t n) {
  uint64_t h = n;
  const double first = ent[0].second;
  for (size_t p = 0; p < n; ++p) {
    h = mix(h, static_cast<uint64_t>(ent[p].first));
    const double q = std::nearbyint(ent[p].second / first * 1e8);
    h = mix(h, static_cast<uint64_t>(static_cast<int64_t>(q)));
  }
  return h;
}

void sort_ents(Ent* b, Ent* e) {
  // Lines are short: an insertion sort beats the general one on them.
  if (e - b > 16) {
    std::sort(b, e);
    return;
  }
  for (Ent* p = b + 1; p < e; ++p) {
    const Ent v = *p;
    Ent* q = p;
    for (; q > b && v < q[-1]; --q) *q = q[-1];
    *q = v;
  }
}

}  // namespace

void Presolver::col_entries(int c, std::vector<std::pair<int, double>>& out) {
  const size_t b = out.size();
  if (dense_order(w.col_len(c), w.nrows)) {
    for (const ColEnt& e : w.col[c]) scatter(e.row, w.val(e));
    gather(w.nrows, out);
    return;
  }
  for (const ColEnt& e : w.col[c]) out.emplace_back(e.row, w.val(e));
  sort_ents(out.data() + b, out.data() + out.size());
}

void Presolver::row_entries(int r, int skip, std::vector<std::pair<int, double>>& out) {
  const size_t b = out.size();
  if (dense_order(w.row_len(r), w.ncols)) {
    for (const RowEnt& e : w.row[r])
      if (e.col != skip) scatter(e.col, e.val);
    gather(w.ncols, out);
    return;
  }
  for (const RowEnt& e : w.row[r])
    if (e.col != skip) out.emplace_back(e.col, e.val);
  sort_ents(out.data() + b, out.data() + out.size());
}

// A long line is put in order by a scan of the index range rather than by a sort, once the
// range is shorter than what the sort would cost.
bool Presolver::dense_order(int len, int range) const {
  return len > 16 && 8L * len >= range;
}

void Presolver::scatter(int i, double v) {
  dupVal_[i] = v;
  dupMark_[i] = 1;
}

void Presolver::gather(int range, std::vector<std::pair<int, double>>& out) {
  for (int i = 0; i < range; ++i)
    if (dupMark_[i]) {
      out.emplace_back(i, dupVal_[i]);
      dupMark_[i] = 0;
    }
}

// Candidates in `dupCand_` (key, id) are sorted, and each group of equal keys offers its
// pairs (first alive member, other) to `visit` when the other is a multiple of the first. The
// entries of an alive line do not change while a stage runs, so the comparison reads them in
// place: the first member is scattered by index, the other checked against it.
template <class Each, class Alive, class Visit, class Settled>
int Presolver::dup_pairs(Each each, Alive alive, Visit visit, Settled settled) {
  std::vector<std::pair<uint64_t, int>>& cand = dupCand_;
  keep_shared_keys();
  std::sort(cand.begin(), cand.end());
  int changed = 0;
  constexpr int kMaxCompare = 8;
  for (size_t g = 0; g < cand.size();) {
    size_t e = g + 1;
    while (e < cand.size() && cand[e].first == cand[g].first) ++e;
    if (e - g > 1 && settled(g, e)) {
      g = e;
      continue;
    }
    for (size_t p = g; p + 1 < e; ++p) {
      const int pid = cand[p].second;
      if (!alive(pid)) continue;
      // The first entry of a line is the one of least index.
      int pLen = 0, pFirst = -1;
      double pFirstVal = 0;
      dupIdx_.clear();
      each(pid, [&](int i, double v) {
        dupVal_[i] = v;
        dupMark_[i] = 1;
        dupIdx_.push_back(i);
        ++pLen;
        if (pFirst < 0 || i < pFirst) {
          pFirst = i;
          pFirstVal = v;
        }
      });
      int compared = 0;
      int rc = 0;
      for (size_t q = p + 1; q < e && compared < kMaxCompare; ++q) {
        const int qid = cand[q].second;
        if (!alive(qid) || !alive(pid)) continue;
        ++compared;
        // q = lambda * p entry by entry, same pattern.
        int qLen = 0, qFirst = -1;
        double qFirstVal = 0;
        each(qid, [&](int i, double v) {
          ++qLen;
          if (qFirst < 0 || i < qFirst) {
            qFirst = i;
            qFirstVal = v;
          }
        });
        if (qLen != pLen || qFirst != pFirst) continue;
        const double lambda = qFirstVal / pFirstVal;
        bool same = true;
        each(qid, [&](int i, double v) {
          if (!same) return;
          if (!dupMark_[i]) {
            same = false;
            return;
          }
          const double want = lambda * dupVal_[i];
          if (std::fabs(v - want) > 1e-12 * std::max(std::fabs(want), std::fabs(v))) same = false;
        });
        if (!same || lambda == 0) continue;
        rc = visit(pid, qid, lambda);
        if (rc < 0) break;
        changed |= rc;
      }
      // A visit may have removed p: clear the marks from the list, not from p.
      for (const int i : dupIdx_) dupMark_[i] = 0;
      if (rc < 0) return -1;
    }
    g = e;
  }
  return changed;
}

void Presolver::dup_scratch() {
  const size_t n = static_cast<size_t>(std::max(w.nrows, w.ncols));
  if (dupMark_.size() < n) {
    dupMark_.assign(n, 0);
    dupVal_.assign(n, 0.0);
    dupLenCount_.assign(n + 1, 0);
  }
}

// Candidates come in as (length, id); a line whose length no other candidate has cannot be
// parallel to any, and leaves before its key is computed.
void Presolver::keep_shared_lengths() {
  for (const auto& [len, id] : dupCand_) ++dupLenCount_[len];
  size_t k = 0;
  for (const auto& pr : dupCand_) {
    if (dupLenCount_[pr.first] > 1)
      dupCand_[k++] = pr;
    else
      dupLenCount_[pr.first] = 0;
  }
  dupCand_.resize(k);
  for (const auto& [len, id] : dupCand_) dupLenCount_[len] = 0;
}

// Drops the candidates whose key no other candidate has, most of them, so that the sort that
// orders the groups sees only the rest. The table only counts: it never orders anything.
void Presolver::keep_shared_keys() {
  size_t cap = 16;
  int bits = 4;
  while (cap < 2 * dupCand_.size()) {
    cap <<= 1;
    ++bits;
  }
  // Counts are left at zero after each use, so the table is cleared by the slots it used.
  if (dupTabCnt_.size() < cap) {
    dupTabKey_.resize(cap);
    dupTabCnt_.assign(cap, 0);
  }
  const size_t mask = cap - 1;
  auto slot = [&](uint64_t key) {
    size_t h = static_cast<size_t>((key * 0x9e3779b97f4a7c15ULL) >> (64 - bits));
    while (dupTabCnt_[h] != 0 && dupTabKey_[h] != key) h = (h + 1) & mask;
    return h;
  };
  for (const auto& [key, id] : dupCand_) {
    const size_t h = slot(key);
    dupTabKey_[h] = key;
    ++dupTabCnt_[h];
  }
  size_t k = 0;
  for (const auto& pr : dupCand_) {
    const size_t h = slot(pr.first);
    if (dupTabCnt_[h] > 1) dupCand_[k++] = pr;
    dupTabMark_.push_back(h);
  }
  dupCand_.resize(k);
  for (const size_t h : dupTabMark_) dupTabCnt_[h] = 0;
  dupTabMark_.clear();
}

int Presolver::genpre_dup_row() {
  // Keys are cached per row together with the slack they leave out, and refreshed when the
  // row's entries or the purity of its slack changed.
  dup_scratch();
  if (rowKey_.size() != static_cast<size_t>(w.nrows)) {
    rowKey_.assign(w.nrows, 0);
    rowKeySkip_.assign(w.nrows, -2);
  }
  dupCand_.clear();
  for (int r = 0; r < w.nrows; ++r) {
    if (!w.rowAlive[r]) continue;
    const int s = w.slackCol[r];
    const int skip = s >= 0 && w.pure_slack(s) ? s : -1;
    const int len = w.row_len(r) - (skip >= 0 ? 1 : 0);
    if (len > 0) dupCand_.emplace_back(len, r);
  }
  keep_shared_lengths();
  for (auto& [key, r] : dupCand_) {
    const int s = w.slackCol[r];
    const int skip = s >= 0 && w.pure_slack(s) ? s : -1;
    if (w.rowEdited[r] || rowKeySkip_[r] != skip) {
      dupEnt_.clear();
      row_entries(r, skip, dupEnt_);
      rowKey_[r] = line_key(dupEnt_.data(), dupEnt_.size());
      rowKeySkip_[r] = skip;
      w.rowEdited[r] = 0;
    }
    key = rowKey_[r];
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
  auto each = [&](int r, auto&& f) {
    const int skip = rowKeySkip_[r];
    for (const RowEnt& e : w.row[r])
      if (e.col != skip) f(e.col, e.val);
  };
  auto settled = [](size_t, size_t) { return false; };
  const int changed = dup_pairs(each, alive, visit, settled);
  if (changed < 0) return -1;
  if (end_stage(kStageDrp, "drp") != 0) return -1;
  return changed;
}

int Presolver::genpre_dup_col() {
  dup_scratch();
  if (colKey_.size() != static_cast<size_t>(w.ncols)) colKey_.assign(w.ncols, 0);
  dupCand_.clear();
  for (int c = 0; c < w.ncols; ++c)
    if (w.colAlive[c] && w.col_len(c) > 0 && !w.pure_slack(c)) dupCand_.emplace_back(w.col_len(c), c);
  keep_shared_lengths();
  for (auto& [key, c] : dupCand_) {
    if (w.colEdited[c]) {
      dupEnt_.clear();
      col_entries(c, dupEnt_);
      colKey_[c] = line_key(dupEnt_.data(), dupEnt_.size());
      w.colEdited[c] = 0;
    }
    key = colKey_[c];
  }
  auto alive = [&](int c) { return w.colAlive[c] != 0; };
  auto each = [&](int c, auto&& f) {
    for (const ColEnt& e : w.col[c]) f(e.row, w.val(e));
  };
  auto visit = [&](int j, int k, double lambda) { return dup_col_pair(j, k, lambda); };
  // A group whose members and their data are those of the last round (which reduced
  // nothing in it, or they would have changed) would be turned down again.
  const long since = dcpTick_;
  const bool sameDual = dcpDual_ == static_cast<int>(dual_on());
  dcpTick_ = w.tick;
  dcpDual_ = dual_on();
  if (dcpGroup_.size() != static_cast<size_t>(w.ncols)) dcpGroup_.assign(w.ncols, 0);
  auto settled = [&](size_t g, size_t e) {
    const int size = static_cast<int>(e - g);
    bool same = sameDual && since >= 0;
    for (size_t p = g; p < e; ++p) {
      const int c = dupCand_[p].second;
      if (w.colTick[c] > since || dcpGroup_[c] != size) same = false;
      dcpGroup_[c] = size;
    }
    return same;
  };
  const int changed = dup_pairs(each, alive, visit, settled);
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
