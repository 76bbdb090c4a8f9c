// Solution records of a model: `sol` for continuous solves, `mipsol`, `gopsol`.
#pragma once

#include <vector>

#include "zento.h"

namespace zento {

struct Sol {
  int model_status = QZ_STATUS_UNKNOWN;
  int primalStatus = QZ_STATUS_UNLOADED;  // 13: no primal solution held
  int dualStatus = QZ_STATUS_UNLOADED;
  int basicStatus = QZ_STATUS_UNLOADED;  // 13: no basis, 14: loaded or computed basis
  int ipmStatus = QZ_STATUS_UNLOADED;

  double pobj = 0;
  double dobj = 0;
  double pinf = 0;
  double dinf = 0;
  double objBound = 0;  // set to sense * 1e30 at allocation

  std::vector<int> colStatus, rowStatus;
  std::vector<double> primal, dual, slack, redcost;
  std::vector<double> ipmPrimal, ipmDual, ipmSlack, ipmRedcost;
  std::vector<double> coneRedcost;
  std::vector<std::vector<double>> posdPrimal, posdDual;

  // Method record: 0 none, -1 presolve decided, otherwise the used method plus 1.
  int method = 0;
  double elapsed = 0;  // seconds of the last solve
  double spxIter = 0, barIter = 0, nlpIter = 0;
  double totSpxIter = 0, totBarIter = 0, totNlpIter = 0;

  // Floors and condition estimate kept from the last solve, for the acceptance tests.
  double primalFloor = 0, dualFloor = 0, condEst = 0;
  int errorRow = -1;

  void resize(int nVars, int nRows);
};

struct MipSol {
  int MIPstatus = QZ_STATUS_UNKNOWN;
  int overrideStatus = 0;
  int relaxStatus = QZ_STATUS_UNKNOWN;
  double obj = 0;
  double bestBound = 0;
  double bestRelGap = 1e30;
  int nSolutions = 0;
  std::vector<double> primal, slack, dual, redcost;
  std::vector<int> colStatus, rowStatus;
  double nodes = 0, spxIter = 0, barIter = 0, nlpIter = 0;
  MipSol* better = nullptr;  // kept during concurrent solves
};

struct GopSol {
  int GOPstatus = QZ_STATUS_UNKNOWN;
  double obj = 0;
  std::vector<double> primal;
  std::vector<std::vector<double>> posdPrimal;
  double spxIter = 0, barIter = 0, nlpIter = 0;
  double elapsed = 0;
};

}  // namespace zento
