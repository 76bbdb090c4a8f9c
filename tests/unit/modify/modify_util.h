// Shared pieces of the modification tests: an environment fixture and a snapshot of a model
// taken through the query entries only, so that two models compare by what a host can see.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "zento.h"
#include "../common/env_fixture.h"

namespace zento::test {

using ModifyFixture = EnvFixture;

using Entries = std::vector<std::pair<int, double>>;

struct Snapshot {
  int nVars = -1, nCons = -1, nnz = -1, nCones = -1, qcNnz = -1, coneNnz = -1;
  int sense = 0;
  double objConst = 0;
  std::vector<double> c, b, lo, up;
  std::string conTypes, varTypes;
  std::vector<Entries> cols, rows;  // each sorted by index
  std::vector<std::string> colNames, rowNames, coneNames;
  std::vector<std::vector<int>> sets;  // type, card, members...
  std::vector<int> scVars;
  std::vector<double> scLower;
  std::vector<std::vector<double>> cones;  // type, alpha, members...
  std::vector<std::tuple<int, int, int, double>> quad;  // row, col1, col2, coef; sorted
  std::vector<int> priorities;
};

inline std::vector<std::string> names_of(QZmodel m, int n,
                                         int (*get)(QZmodel, int, char*)) {
  std::vector<std::string> out;
  char buf[256];
  for (int i = 0; i < n; ++i) {
    const int rc = get(m, i, buf);
    if (rc == QZERR_INFO_NOT_AVAILABLE) return {};
    EXPECT_EQ(rc, 0);
    out.emplace_back(buf);
  }
  return out;
}

inline Snapshot snapshot(QZmodel m) {
  Snapshot s;
  EXPECT_EQ(QZgetDimensions(m, &s.nVars, &s.nCons, &s.nCones, &s.nnz, &s.qcNnz, &s.coneNnz,
                            nullptr, nullptr, nullptr, nullptr, nullptr),
            0);
  s.c.resize(s.nVars);
  s.lo.resize(s.nVars);
  s.up.resize(s.nVars);
  s.b.resize(s.nCons);
  s.conTypes.assign(s.nCons, ' ');
  s.varTypes.assign(s.nVars, ' ');
  EXPECT_EQ(QZgetLPData(m, &s.sense, &s.objConst, s.c.data(), s.b.data(), s.conTypes.data(),
                        nullptr, nullptr, nullptr, nullptr, s.lo.data(), s.up.data()),
            0);
  if (s.nVars > 0) {
    EXPECT_EQ(QZgetVarType(m, s.varTypes.data()), 0);
  }
  std::vector<int> idx(std::max(s.nVars, s.nCons) + 1);
  std::vector<double> val(idx.size());
  for (int j = 0; j < s.nVars; ++j) {
    int n = -1;
    EXPECT_EQ(QZgetLPVariableDataj(m, j, nullptr, nullptr, nullptr, nullptr, &n, idx.data(),
                                   val.data()),
              0);
    Entries e;
    for (int k = 0; k < n; ++k) e.emplace_back(idx[k], val[k]);
    std::sort(e.begin(), e.end());
    s.cols.push_back(e);
  }
  for (int i = 0; i < s.nCons; ++i) {
    int n = -1;
    EXPECT_EQ(QZgetLPConstraintDatai(m, i, nullptr, nullptr, &n, idx.data(), val.data()), 0);
    Entries e;
    for (int k = 0; k < n; ++k) e.emplace_back(idx[k], val[k]);
    std::sort(e.begin(), e.end());
    s.rows.push_back(e);
  }
  s.colNames = names_of(m, s.nVars, QZgetVariableNamej);
  s.rowNames = names_of(m, s.nCons, QZgetConstraintNamei);
  s.coneNames = names_of(m, s.nCones, QZgetConeNamei);
  int nSets = 0, nSetNz = 0;
  EXPECT_EQ(QZgetSETSData(m, &nSets, &nSetNz, nullptr, nullptr, nullptr, nullptr, nullptr), 0);
  for (int k = 0; k < nSets; ++k) {
    char t = 0;
    int card = 0, n = 0;
    std::vector<int> mem(s.nVars + 1);
    EXPECT_EQ(QZgetSETSDatai(m, k, &t, &card, &n, mem.data()), 0);
    std::vector<int> row{t, card};
    row.insert(row.end(), mem.begin(), mem.begin() + n);
    s.sets.push_back(row);
  }
  int nSc = 0;
  EXPECT_EQ(QZgetSemiContData(m, &nSc, nullptr, nullptr, nullptr), 0);
  s.scVars.resize(nSc);
  s.scLower.resize(nSc);
  EXPECT_EQ(QZgetSemiContData(m, &nSc, s.scVars.data(), s.scLower.data(), nullptr), 0);
  for (int k = 0; k < s.nCones; ++k) {
    char t = 0;
    double a = 0;
    int n = 0;
    std::vector<int> mem(s.nVars + 1);
    EXPECT_EQ(QZgetConeDatai(m, k, &t, &a, &n, mem.data()), 0);
    std::vector<double> row{static_cast<double>(t), a};
    row.insert(row.end(), mem.begin(), mem.begin() + n);
    s.cones.push_back(row);
  }
  if (s.qcNnz > 0) {
    std::vector<int> r(s.qcNnz), c1(s.qcNnz), c2(s.qcNnz);
    std::vector<double> q(s.qcNnz);
    EXPECT_EQ(QZgetQCData(m, r.data(), c1.data(), c2.data(), q.data()), 0);
    for (int k = 0; k < s.qcNnz; ++k) s.quad.emplace_back(r[k], c1[k], c2[k], q[k]);
    std::sort(s.quad.begin(), s.quad.end());
  }
  s.priorities.resize(s.nVars);
  if (s.nVars == 0 || QZgetVarPriorities(m, s.priorities.data()) != 0) s.priorities.clear();
  return s;
}

inline void expect_same(const Snapshot& a, const Snapshot& b) {
  EXPECT_EQ(a.nVars, b.nVars);
  EXPECT_EQ(a.nCons, b.nCons);
  EXPECT_EQ(a.nnz, b.nnz);
  EXPECT_EQ(a.sense, b.sense);
  EXPECT_EQ(a.objConst, b.objConst);
  EXPECT_EQ(a.c, b.c);
  EXPECT_EQ(a.b, b.b);
  EXPECT_EQ(a.lo, b.lo);
  EXPECT_EQ(a.up, b.up);
  EXPECT_EQ(a.conTypes, b.conTypes);
  EXPECT_EQ(a.varTypes, b.varTypes);
  EXPECT_EQ(a.cols, b.cols);
  EXPECT_EQ(a.rows, b.rows);
  EXPECT_EQ(a.colNames, b.colNames);
  EXPECT_EQ(a.rowNames, b.rowNames);
  EXPECT_EQ(a.coneNames, b.coneNames);
  EXPECT_EQ(a.sets, b.sets);
  EXPECT_EQ(a.scVars, b.scVars);
  EXPECT_EQ(a.scLower, b.scLower);
  EXPECT_EQ(a.cones, b.cones);
  EXPECT_EQ(a.quad, b.quad);
  EXPECT_EQ(a.priorities, b.priorities);
}

}  // namespace zento::test
