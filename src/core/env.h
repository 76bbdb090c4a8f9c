// The environment record: what all models of one environment share.
#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "core/params/param_blocks.h"
#include "zento.h"

struct lua_State;

struct QZenv_s {
  // Message table: the text of code k starts at msgPool[msgIndex[k]], -1 when none.
  std::string msgPool;
  std::vector<int> msgIndex;

  zento::SolverParams SolverPam;
  zento::SplexParams SplexPam;
  zento::BandBParams BandBPam;
  zento::NLPParams NLPPam;
  zento::GOPParams GOPPam;
  zento::IISParams IISPam;
  zento::CommonParams CommonPam;
  zento::SPParams SPPam;
  std::vector<zento::ParItem> AllPamItems;
  std::vector<int> parNameIndex;
  int nParSorted = 0;
  int nParTotal = 0;
  int parNameBytes = 0;

  // Models in creation order; guarded by modelMutex.
  std::vector<Imodel*> modelList;
  std::mutex modelMutex;
  int mutexReady = 1;

  double infinity = QZ_INFINITY;

  QZenvLogFunc_t logFunc = nullptr;
  void* logData = nullptr;
  QZexitFunc_t exitFunc = nullptr;
  void* exitData = nullptr;
  QZerrorFunc_t errFunc = nullptr;
  void* errData = nullptr;
  std::string errFile;
  int errLine = 0;

  // State of the command-line option scanner.
  int optErr = 1;
  int optInd = 1;
  int optOpt = 0;
  char* optArg = nullptr;

  lua_State* luaState = nullptr;

  // Samplers made in this environment; deleted with it. Guarded by sampleMutex.
  std::vector<QZsample> sampleList;
  std::mutex sampleMutex;
};
