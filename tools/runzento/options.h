// Command-line options of runzento.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace runzento {

// Exit codes, documented in --help.
enum Exit : int {
  kSolved = 0,        // a proven status (or nothing to solve with --no-solve)
  kUsage = 1,         // bad command line or unknown parameter
  kReadFailed = 2,    // the model file could not be read
  kSolveFailed = 3,   // the library returned an error (for example: not supported)
  kNotProven = 4,     // the solve stopped without a proven status (limit, numerical trouble)
  kOutputFailed = 5,  // a requested output file could not be written
};

struct Options {
  std::string model;
  int mpsLayout = -1;  // QZ_MPS_AUTO
  int method = 0;      // QZ_METHOD_FREE
  double timeLimit = -1;
  double iterLimit = -1;
  int printLevel = -1;  // -1: the library's defaults
  bool quiet = false;
  bool listParams = false;
  bool noSolve = false;
  bool relax = false;  // integer columns ignored: the LP relaxation is solved
  std::vector<std::string> paramFiles;
  std::vector<std::pair<std::string, std::string>> settings;  // NAME=VALUE
  std::string solutionFile;
  int solutionStyle = -1;  // -1: QZwriteSolution and the model's style parameter
  std::string readBasis, writeBasis, startFile, writeMps;
  std::string writeLtx, writeDualLtx, writeMarlo;  // ZENTO, its dual, MARLO
  int basisFormat = 1;
  int writeLayout = 1;  // fixed
  bool help = false, version = false;
};

// Parses argv; on failure returns false with a message in `error`.
bool parse_options(int argc, char** argv, Options& o, std::string& error);
void print_help();

}  // namespace runzento
