// Shrinkage: deleting rows and columns, and keeping every part that refers to them in step.
#include <algorithm>
#include <tuple>

#include "core/errors.h"
#include "core/load.h"
#include "core/model_ops.h"
#include "core/modify.h"

namespace zento {

namespace {

// Turns a deletion mark (-1 deleted, 0 kept) into old -> new indices; returns the new count.
int number_kept(std::vector<int>& map) {
  int next = 0;
  for (int& v : map) v = v < 0 ? -1 : next++;
  return next;
}

// Basic positions must stay below the row count; when they no longer do, they are renumbered
// in their old order.
void renumber_basic_positions(std::vector<int>& cs, std::vector<int>& rs, int nRows) {
  bool outside = false;
  for (int v : cs) outside = outside || v >= nRows;
  for (int v : rs) outside = outside || v >= nRows;
  if (!outside) return;
  std::vector<std::tuple<int, int, int*>> basic;
  for (size_t j = 0; j < cs.size(); ++j)
    if (cs[j] >= 0) basic.emplace_back(cs[j], static_cast<int>(j), &cs[j]);
  for (size_t i = 0; i < rs.size(); ++i)
    if (rs[i] >= 0) basic.emplace_back(rs[i], static_cast<int>(cs.size() + i), &rs[i]);
  std::sort(basic.begin(), basic.end(), [](const auto& a, const auto& b) {
    return std::tie(std::get<0>(a), std::get<1>(a)) < std::tie(std::get<0>(b), std::get<1>(b));
  });
  for (size_t k = 0; k < basic.size(); ++k) *std::get<2>(basic[k]) = static_cast<int>(k);
}

// The basis survives when every deleted entry had the status that keeps its shape: a deleted
// row must have had its logical basic, a deleted column must have been nonbasic.
void settle_basis(Sol& s, const std::vector<int>& status, const std::vector<int>& map,
                  bool rows) {
  if (s.basicStatus != QZ_STATUS_BASIC_OPTIMAL && s.basicStatus != QZ_STATUS_LOADED) return;
  bool lost = status.size() != map.size();
  for (size_t k = 0; k < map.size() && !lost; ++k)
    if (map[k] < 0) lost = rows ? status[k] < 0 : status[k] >= 0;
  if (lost) {
    s.basicStatus = QZ_STATUS_UNLOADED;
    s.ipmStatus = QZ_STATUS_UNLOADED;
  } else {
    s.basicStatus = QZ_STATUS_LOADED;
  }
}

void shrink_quad_rows(Imodel& m, const std::vector<int>& map) {
  QuadData& q = m.quad;
  QuadData out;
  out.beg.push_back(0);
  for (int g = 0; g < q.groups(); ++g) {
    const int r = q.row[g];
    if (r >= 0 && map[r] < 0) continue;
    out.row.push_back(r < 0 ? r : map[r]);
    for (int k = q.beg[g]; k < q.beg[g + 1]; ++k) {
      out.col1.push_back(q.col1[k]);
      out.col2.push_back(q.col2[k]);
      out.coef.push_back(q.coef[k]);
    }
    out.beg.push_back(static_cast<int>(out.coef.size()));
  }
  q = std::move(out);
}

void shrink_quad_cols(Imodel& m, const std::vector<int>& map) {
  QuadData& q = m.quad;
  QuadData out;
  out.beg.push_back(0);
  for (int g = 0; g < q.groups(); ++g) {
    const size_t before = out.coef.size();
    for (int k = q.beg[g]; k < q.beg[g + 1]; ++k) {
      if (map[q.col1[k]] < 0 || map[q.col2[k]] < 0) continue;
      out.col1.push_back(map[q.col1[k]]);
      out.col2.push_back(map[q.col2[k]]);
      out.coef.push_back(q.coef[k]);
    }
    if (out.coef.size() == before) continue;
    out.row.push_back(q.row[g]);
    out.beg.push_back(static_cast<int>(out.coef.size()));
  }
  q = std::move(out);
}

// Cones lose deleted members; a cone goes when a member that defines it goes (the first of
// 'Q', the first or second of 'R') or when it falls below its member count ('E' and 'P' need
// all three).
void shrink_cones(Imodel& m, const std::vector<int>& map) {
  ConeData& c = m.cones;
  std::vector<char> keep(static_cast<size_t>(c.count()), 1);
  for (int i = 0; i < c.count(); ++i) {
    const int b = c.beg[i], n = c.beg[i + 1] - b;
    int left = 0;
    for (int k = b; k < b + n; ++k) left += map[c.cols[k]] >= 0;
    const char t = c.type[i];
    if (t == 'Q') keep[i] = map[c.cols[b]] >= 0;
    if (t == 'R') keep[i] = map[c.cols[b]] >= 0 && map[c.cols[b + 1]] >= 0;
    if (t == 'E' || t == 'P') keep[i] = left == n;
  }
  drop_cones(m, keep);
  std::vector<int> cols;
  std::vector<int> beg{0};
  for (int i = 0; i < c.count(); ++i) {
    for (int k = c.beg[i]; k < c.beg[i + 1]; ++k)
      if (map[c.cols[k]] >= 0) cols.push_back(map[c.cols[k]]);
    beg.push_back(static_cast<int>(cols.size()));
  }
  if (c.count() > 0) {
    c.cols = std::move(cols);
    c.beg = std::move(beg);
  }
}

// Sets lose deleted members and go when too few are left to constrain anything.
void shrink_sets(Imodel& m, const std::vector<int>& map) {
  SetsData& d = m.sets;
  std::vector<char> keep(static_cast<size_t>(d.count()), 1);
  for (int s = 0; s < d.count(); ++s) {
    int left = 0;
    for (int k = d.begcol[s]; k < d.begcol[s + 1]; ++k) left += map[d.cols[k]] >= 0;
    const int t = d.type[s];
    keep[s] = (t == 2 && left >= 3) || (t == 1 && left >= 2) || ((t == 3 || t == 4) && left > 0);
  }
  drop_sets(m, keep);
  std::vector<int> cols;
  std::vector<int> beg{0};
  for (int s = 0; s < d.count(); ++s) {
    for (int k = d.begcol[s]; k < d.begcol[s + 1]; ++k)
      if (map[d.cols[k]] >= 0) cols.push_back(map[d.cols[k]]);
    beg.push_back(static_cast<int>(cols.size()));
  }
  if (d.count() > 0) {
    d.cols = std::move(cols);
    d.begcol = std::move(beg);
  }
}

void shrink_index_list(std::vector<int>& idx, const std::vector<int>& map,
                       std::vector<double>* vals = nullptr) {
  size_t out = 0;
  for (size_t k = 0; k < idx.size(); ++k) {
    if (map[idx[k]] < 0) continue;
    if (vals) (*vals)[out] = (*vals)[k];
    idx[out++] = map[idx[k]];
  }
  idx.resize(out);
  if (vals) vals->resize(out);
}

void shrink_col_parts(Imodel& m, const std::vector<int>& map) {
  if (m.cones.count() > 0) shrink_cones(m, map);
  if (m.sets.count() > 0) shrink_sets(m, map);
  shrink_index_list(m.semicont.vars, map, &m.semicont.lower);
  if (m.quad.nnz() > 0) shrink_quad_cols(m, map);
  for (auto& slot : m.posd.slot)
    for (int& v : slot)
      if (v >= 0) v = map[v];
  AllDiffData& a = m.alldiff;
  if (a.count() > 0) {
    AllDiffData out;
    out.beg.push_back(0);
    for (int g = 0; g < a.count(); ++g) {
      const size_t before = out.vars.size();
      for (int k = a.beg[g]; k < a.beg[g + 1]; ++k)
        if (map[a.vars[k]] >= 0) out.vars.push_back(map[a.vars[k]]);
      if (out.vars.size() == before) continue;
      out.dim.push_back(static_cast<int>(out.vars.size() - before));
      out.lower.push_back(a.lower[g]);
      out.upper.push_back(a.upper[g]);
      out.beg.push_back(static_cast<int>(out.vars.size()));
    }
    a = out.dim.empty() ? AllDiffData{} : std::move(out);
  }
  compact_by_map(m.start.primal, map);
  compact_by_map(m.start.mip, map);
  shrink_index_list(m.start.partialCols, map, &m.start.partialVals);
  shrink_index_list(m.start.mipPartialCols, map, &m.start.mipPartialVals);
  compact_by_map(m.priorities, map);
  shrink_index_list(m.artCols, map);
}

}  // namespace

int delete_constraints(Imodel& m, int nDel, const int* paiCons) {
  if (nDel < 0) return QZERR_ERROR_IN_INPUT;
  if (nDel == 0) return 0;
  std::vector<int> map(static_cast<size_t>(m.nCons), 0);
  int lowest = m.nCons;
  for (int k = 0; k < nDel; ++k) {
    const int i = paiCons[k];
    if (i < 0 || i >= m.nCons) return QZERR_INDEX_OUT_OF_RANGE;
    if (map[i] < 0) return QZERR_DUPLICATE_INDEX;
    map[i] = -1;
    lowest = std::min(lowest, i);
  }
  const int newRows = number_kept(map);
  LinearData& lp = m.lp;

  if (Sol* s = m.sol.get()) {
    settle_basis(*s, s->rowStatus, map, true);
    if (s->primalStatus != QZ_STATUS_UNLOADED) s->primalStatus = QZ_STATUS_UNKNOWN;
    for (auto* v : {&s->dual, &s->slack, &s->ipmDual, &s->ipmSlack}) compact_by_map(*v, map);
    compact_by_map(s->rowStatus, map);
    if (s->basicStatus == QZ_STATUS_LOADED)
      renumber_basic_positions(s->colStatus, s->rowStatus, newRows);
  }
  if (MipSol* ms = m.mipsol.get(); ms && m.SplexPam.in_mip) {
    for (auto* v : {&ms->dual, &ms->slack}) compact_by_map(*v, map);
    compact_by_map(ms->rowStatus, map);
  }
  compact_by_map(lp.padB, map);
  compact_by_map(lp.pszConTypes, map);
  compact_names(m.names.rows, map);
  bool quadTouched = false;
  for (int r : m.quad.row) quadTouched = quadTouched || r >= lowest;
  if (quadTouched) shrink_quad_rows(m, map);

  // Entries of deleted rows become gap at the end of their column.
  int removed = 0;
  for (int j = 0; j < m.nVars; ++j) {
    const int b = lp.paiAcols[j], len = lp.panAcols[j];
    int out = b;
    for (int k = b; k < b + len; ++k) {
      const int to = map[lp.paiArows[k]];
      if (to < 0) continue;
      lp.paiArows[out] = to;
      lp.padAcoef[out++] = lp.padAcoef[k];
    }
    removed += b + len - out;
    lp.panAcols[j] = out - b;
  }
  m.nAnnz -= removed;
  m.nCons = newRows;
  if (m.quad.nnz() > 0)
    quad_counts(m, m.quad);
  else
    m.quad = QuadData{};
  apply_change_rule(m, Change::kStructure);
  return 0;
}

int delete_variables(Imodel& m, int nDel, const int* paiVars) {
  if (nDel < 0) return QZERR_ERROR_IN_INPUT;
  if (nDel == 0) return 0;
  // Indices out of range and repeated ones are passed over.
  std::vector<int> map(static_cast<size_t>(m.nVars), 0);
  int marked = 0;
  for (int k = 0; k < nDel; ++k) {
    const int j = paiVars[k];
    if (j < 0 || j >= m.nVars || map[j] < 0) continue;
    map[j] = -1;
    ++marked;
  }
  if (marked == 0) return 0;
  const int newCols = number_kept(map);
  LinearData& lp = m.lp;

  if (Sol* s = m.sol.get()) {
    settle_basis(*s, s->colStatus, map, false);
    if (s->primalStatus != QZ_STATUS_UNLOADED) s->primalStatus = QZ_STATUS_UNKNOWN;
    for (auto* v : {&s->primal, &s->redcost, &s->ipmPrimal, &s->ipmRedcost, &s->coneRedcost})
      compact_by_map(*v, map);
    compact_by_map(s->colStatus, map);
  }
  if (MipSol* ms = m.mipsol.get(); ms && m.SplexPam.in_mip) {
    for (auto* v : {&ms->primal, &ms->redcost}) compact_by_map(*v, map);
    compact_by_map(ms->colStatus, map);
  }
  if (GopSol* gs = m.gopsol.get()) compact_by_map(gs->primal, map);
  shrink_col_parts(m, map);

  // Kept columns move down with their own gaps; spans of deleted columns disappear.
  int pos = lp.paiAcols[0], removed = 0;
  for (int j = 0; j < m.nVars; ++j) {
    const int b = lp.paiAcols[j], span = lp.paiAcols[j + 1] - b;
    if (map[j] < 0) {
      removed += lp.panAcols[j];
      continue;
    }
    if (pos != b) {
      std::copy(lp.paiArows.begin() + b, lp.paiArows.begin() + b + span, lp.paiArows.begin() + pos);
      std::copy(lp.padAcoef.begin() + b, lp.padAcoef.begin() + b + span, lp.padAcoef.begin() + pos);
    }
    lp.paiAcols[map[j]] = pos;
    pos += span;
  }
  lp.paiAcols[newCols] = pos;
  lp.paiAcols.resize(static_cast<size_t>(newCols) + 1);
  lp.paiArows.resize(static_cast<size_t>(pos));
  lp.padAcoef.resize(static_cast<size_t>(pos));
  compact_by_map(lp.panAcols, map);
  compact_by_map(lp.padC, map);
  compact_by_map(lp.padL, map);
  compact_by_map(lp.padU, map);
  compact_by_map(lp.pszVarTypes, map);
  compact_names(m.names.cols, map);
  m.nAnnz -= removed;
  m.nVars = newCols;
  if (m.quad.nnz() > 0)
    quad_counts(m, m.quad);
  else
    m.quad = QuadData{};
  apply_change_rule(m, Change::kStructure);
  return 0;
}

}  // namespace zento
