// Solution records of a model: `sol` for continuous solves, `mipsol`, `gopsol`.
#pragma once

#include <string>
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

  // Figures reported through the information keys.
  double ipmPobj = 0, ipmDobj = 0, ipmPinf = 0, ipmDinf = 0;
  double mswPobj = 0;
  int mswPass = 0, mswNsol = 0;
  double nlpCallFun = 0, nlpCallDev = 0, nlpCallHes = 0;
  int barThreads = 1, nlpThreads = 1, simThreads = 1;
  std::string threadLoad;
  int lpTool = 0;
  // Size of the model the solver saw after presolve; -1: no reduction was made.
  int rdCons = -1, rdVars = -1, rdNonz = -1, rdInt = -1;

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

  // Figures reported through the information keys.
  double lpCount = 0, newIpSol = 0, activeNodes = 0;
  int ltype = 0, aoptTimeToStop = 0;
  // Cuts added: [0] all, then by family in key order from QZ_IINFO_MIP_GUB_COVER_CUTS.
  int cuts[16] = {};
  // Constraints found by class, in key order from QZ_IINFO_MIP_GUB_CONS.
  int consFound[9] = {};
  double totTime = 0, optTime = 0, heuTime = 0;
  int lastBranchStatus = QZ_STATUS_UNKNOWN;
  double lastBranchObj = 0;
  int heuLevel = 0;
  double pfeas = 0, intpfeas = 0;
  int threads = 1;
  std::string threadLoad;
  int strategyMask = 0;
  double nlpCount = 0;
  // An objective and bound offered by the host's MIP objective callback, not yet taken.
  bool hasPending = false;
  double pendingObj = 0, pendingBound = 0;
  // Buffer the new-solution callback writes into, allocated on first use.
  std::vector<double> offerBuffer;
};

struct GopSol {
  int GOPstatus = QZ_STATUS_UNKNOWN;
  double obj = 0;
  std::vector<double> primal;
  std::vector<std::vector<double>> posdPrimal;
  double spxIter = 0, barIter = 0, nlpIter = 0;
  double elapsed = 0;

  // Figures reported through the information keys.
  double bestBound = 0;
  double lpCount = 0, nlpCount = 0, mipCount = 0, newSol = 0, boxes = 0, bbIter = 0,
         subIter = 0, mipBranch = 0, activeBoxes = 0;
  int maxDepth = 0;
  double firstTime = 0, bestTime = 0;
  int threads = 1;
  std::string threadLoad;
};

}  // namespace zento
