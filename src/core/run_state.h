// What a running solver shows to the host's callbacks: live figures, the subsolve under way,
// model generation and presolve progress, and the latched stop of a search.
#pragma once

struct Imodel;

namespace zento {

// Which solver runs on the model; queries from callbacks read the matching record.
enum class RunClass { kNone = 0, kContinuous, kMip, kGop, kIis, kIus, kSp };

struct LiveFigures {
  bool valid = false;  // a solver keeps these up to date while it runs
  double pobj = 0, dobj = 0, pinf = 0, dinf = 0;
  double spxIter = 0, barIter = 0, nlpIter = 0;
  int status = 12;  // QZ_STATUS_UNKNOWN
};

struct GenProgress {
  bool active = false;
  double percent = 0;
  int nonzTotal = 0, nonzNl = 0, rowsNl = 0, varsNl = 0;
};

struct PresolveProgress {
  bool active = false;
  int rowsRemoved = 0, colsRemoved = 0, nonzRemoved = 0, passes = 0, lastStage = 0;
  double elapsed = 0;
};

struct RunState {
  int depth = 0;  // top-level solves under way on this model (0 or 1)
  RunClass what = RunClass::kNone;
  double startWall = 0;  // wall clock at the start of the top-level solve
  LiveFigures live;
  // Iterations of the subsolve that an outer search runs now; added to the outer counts.
  double subSpxIter = 0, subBarIter = 0, subNlpIter = 0;
  GenProgress gen;
  PresolveProgress pre;
  // The working model of a global solve; keys of the global family read it.
  Imodel* gopWorking = nullptr;
  // Once a checkpoint of a search saw a stop, every later one answers stop at once.
  bool stopLatched = false;
};

}  // namespace zento
