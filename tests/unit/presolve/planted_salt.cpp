// Structure added to planted LPs for the presolve loop to take apart.
#include <algorithm>
#include <random>

#include "presolve_test_util.h"

namespace zento::test {

// Adds structure that keeps the planted optimum (shifted by the fixed columns' costs).
void salt(LpData& lp, uint64_t seed) {
  std::mt19937_64 rng(seed * 7919 + 17);
  std::uniform_real_distribution<double> U(0.0, 1.0);
  auto pick = [&](int k) { return static_cast<int>(U(rng) * k) % k; };
  // Row-wise view to copy rows.
  std::vector<std::vector<std::pair<int, double>>> rows(lp.m);
  for (int j = 0; j < lp.n; ++j)
    for (int k = lp.beg[j]; k < lp.beg[j + 1]; ++k)
      if (lp.vals[k] != 0) rows[lp.rows[k]].push_back({j, lp.vals[k]});
  std::vector<std::vector<std::pair<int, double>>> cols(lp.n);
  for (int i = 0; i < lp.m; ++i)
    for (auto& [j, v] : rows[i]) cols[j].push_back({i, v});
  auto add_row = [&](char t, double b, const std::vector<std::pair<int, double>>& ent) {
    const int i = lp.m++;
    lp.types.push_back(t);
    lp.b.push_back(b);
    for (auto& [j, v] : ent) cols[j].push_back({i, v});
  };
  const double sg = lp.sense == QZ_MAX ? -1.0 : 1.0;
  // Scaled copies of rows: the feasible set stays.
  const int copies = pick(3), m0 = lp.m;
  for (int c = 0; c < copies && m0 > 0; ++c) {
    const int i = pick(m0);
    if (lp.types[i] == 'N' || rows[i].empty()) continue;
    const double lambda = (U(rng) < 0.3 ? -1 : 1) * (1 + pick(4));
    std::vector<std::pair<int, double>> ent;
    for (auto& [j, v] : rows[i]) ent.push_back({j, lambda * v});
    char t = lp.types[i];
    if (lambda < 0 && t != 'E') t = t == 'L' ? 'G' : 'L';
    add_row(t, lambda * lp.b[i], ent);
  }
  // A fixed column in a few rows, the right-hand sides moved along.
  if (U(rng) < 0.6 && lp.m > 0) {
    const int j = lp.n++;
    const double v = pick(5) - 2.0, cost = pick(7) - 3.0;
    lp.c.push_back(cost);
    lp.lo.push_back(v);
    lp.up.push_back(v);
    cols.emplace_back();
    for (int k = 0; k < 2; ++k) {
      const int i = pick(lp.m);
      bool seen = false;
      for (auto& e : cols[j]) seen |= e.first == i;
      if (seen) continue;
      const double a = pick(5) + 1.0;
      cols[j].push_back({i, a});
      lp.b[i] += a * v;
    }
    lp.opt += cost * v;
  }
  // An empty column with a cost toward its finite bound.
  if (U(rng) < 0.5) {
    const double l = pick(5) - 2.0, cost = (pick(4) + 1.0) * sg;
    lp.c.push_back(cost);
    lp.lo.push_back(l);
    lp.up.push_back(U(rng) < 0.5 ? QZ_INFINITY : l + 3);
    cols.emplace_back();
    ++lp.n;
    lp.opt += cost * l;
  }
  // An empty equation, a free row and a row no optimum comes near.
  if (U(rng) < 0.4) add_row('E', 0, {});
  if (U(rng) < 0.4 && lp.n > 1) add_row('N', 3, {{0, 1.0}, {1, -2.0}});
  if (U(rng) < 0.5 && lp.n > 0) {
    const int j = pick(lp.n);
    add_row('L', 1e4, {{j, 1.0}});
  }
  lp.beg.assign(lp.n + 1, 0);
  lp.rows.clear();
  lp.vals.clear();
  for (int j = 0; j < lp.n; ++j) {
    std::sort(cols[j].begin(), cols[j].end());
    for (auto& [i, v] : cols[j]) {
      lp.rows.push_back(i);
      lp.vals.push_back(v);
    }
    lp.beg[j + 1] = static_cast<int>(lp.rows.size());
  }
  if (lp.vals.empty()) {
    lp.vals.push_back(0);
    lp.rows.push_back(0);
  }
}

LpData planted_salted(uint64_t seed) {
  GenOptions o;
  o.m = 4 + static_cast<int>(seed % 23);
  o.n = 5 + static_cast<int>((seed * 7) % 29);
  o.density = 0.08 + 0.04 * static_cast<double>(seed % 6);
  o.wide_scale = seed % 5 == 0;
  LpData lp = make_planted(seed, o);
  salt(lp, seed);
  return lp;
}

}  // namespace zento::test
