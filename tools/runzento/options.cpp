// Parsing of runzento's command line.
#include "options.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace runzento {

namespace {

struct MethodName {
  const char* name;
  int id;
};
constexpr MethodName kMethods[] = {{"free", 0},   {"primal", 1}, {"dual", 2},   {"barrier", 3},
                                   {"nlp", 4},    {"mip", 5},    {"multis", 6}, {"gop", 7},
                                   {"sprint", 11}, {"ga", 12}};

bool to_int(const char* s, int* v) {
  char* end = nullptr;
  const long x = std::strtol(s, &end, 10);
  if (end == s || *end != '\0' || x < -2147483647L || x > 2147483647L) return false;
  *v = static_cast<int>(x);
  return true;
}

bool to_double(const char* s, double* v) {
  char* end = nullptr;
  *v = std::strtod(s, &end);
  return end != s && *end == '\0';
}

bool parse_method(const char* s, int* id) {
  for (const MethodName& m : kMethods)
    if (std::strcmp(s, m.name) == 0) {
      *id = m.id;
      return true;
    }
  return to_int(s, id) && *id >= 0 && *id <= 12;
}

}  // namespace

void print_help() {
  std::printf(
      "Usage: runzento [options] model[.gz] [NAME=VALUE ...]\n"
      "\n"
      "Reads a model (plain or gzip), solves it and prints the model size, the status,\n"
      "the objective, the iterations and the time. The format follows the extension:\n"
      ".lp the LP format, .ltx the ZENTO format, anything else MPS (fixed or free).\n"
      "Set QZ_IPARAM_COPY_MODE=1024 to read ZENTO files with the grammar reader.\n"
      "\n"
      "Solving:\n"
      "  -m, --method M        free (default), primal, dual, barrier, sprint, nlp, mip,\n"
      "                        or a method number\n"
      "  -t, --time-limit S    wall-clock limit in seconds\n"
      "  -i, --iter-limit N    simplex iteration limit\n"
      "      --no-solve        read (and write) the model, do not solve\n"
      "      --relax           solve the LP relaxation of an integer model\n"
      "Parameters:\n"
      "  NAME=VALUE            set a parameter by its macro name, e.g. QZ_IPARAM_LP_SCALE=0\n"
      "  -f, --param-file F    read parameters from a file (may be repeated)\n"
      "      --params          list the parameters with their values and ranges, then exit\n"
      "Input and output:\n"
      "      --layout L        layout of the model file: auto (default), free, fixed\n"
      "  -s, --solution F      write the solution report to F\n"
      "      --solution-style N  0 report (default), 3 plain list, 1/4 the MIP forms\n"
      "      --start F         read a start point (and basis statuses) before solving\n"
      "      --read-basis F    read a binary basis before solving\n"
      "      --write-basis F   write the basis after solving\n"
      "      --basis-format N  1 binary (default), 2 MPS matrix, 3 text, 4 coordinates\n"
      "      --write-mps F     write the model as MPS (.gz compresses)\n"
      "      --write-free      write the model in the free layout (default fixed)\n"
      "      --write-ltx F     write the model in ZENTO format (.gz compresses)\n"
      "      --write-dual-ltx F  write the dual of a linear model in ZENTO format\n"
      "      --write-marlo F   write the model as MARLO text\n"
      "Output:\n"
      "  -p, --print-level N   library log level (0 silent); log lines go to the terminal\n"
      "  -q, --quiet           no library log, only the summary\n"
      "  -h, --help            this help\n"
      "  -v, --version         library version\n"
      "\n"
      "Exit codes:\n"
      "  0  solved with a proven status (optimal, infeasible, unbounded), or --no-solve\n"
      "  1  bad usage or an unknown parameter\n"
      "  2  the model file could not be read (the line is reported)\n"
      "  3  the library returned an error while solving (e.g. method not supported)\n"
      "  4  the solve stopped without a proven status (limit, numerical trouble)\n"
      "  5  an output file could not be written\n");
}

bool parse_options(int argc, char** argv, Options& o, std::string& error) {
  for (int i = 1; i < argc; ++i) {
    const std::string a = argv[i];
    auto value = [&](const char** out) {
      if (i + 1 >= argc) {
        error = "option " + a + " needs a value";
        return false;
      }
      *out = argv[++i];
      return true;
    };
    const char* v = nullptr;
    if (a == "-h" || a == "--help") {
      o.help = true;
    } else if (a == "-v" || a == "--version") {
      o.version = true;
    } else if (a == "-m" || a == "--method") {
      if (!value(&v)) return false;
      if (!parse_method(v, &o.method)) return error = "unknown method " + std::string(v), false;
    } else if (a == "-t" || a == "--time-limit") {
      if (!value(&v)) return false;
      if (!to_double(v, &o.timeLimit)) return error = "bad time limit " + std::string(v), false;
    } else if (a == "-i" || a == "--iter-limit") {
      if (!value(&v)) return false;
      if (!to_double(v, &o.iterLimit)) return error = "bad iteration limit " + std::string(v), false;
    } else if (a == "-p" || a == "--print-level") {
      if (!value(&v)) return false;
      if (!to_int(v, &o.printLevel)) return error = "bad print level " + std::string(v), false;
    } else if (a == "-q" || a == "--quiet") {
      o.quiet = true;
    } else if (a == "-f" || a == "--param-file") {
      if (!value(&v)) return false;
      o.paramFiles.push_back(v);
    } else if (a == "--params") {
      o.listParams = true;
    } else if (a == "--no-solve") {
      o.noSolve = true;
    } else if (a == "--relax") {
      o.relax = true;
    } else if (a == "--layout") {
      if (!value(&v)) return false;
      const std::string l = v;
      if (l == "auto")
        o.mpsLayout = -1;
      else if (l == "free")
        o.mpsLayout = 0;
      else if (l == "fixed")
        o.mpsLayout = 1;
      else
        return error = "unknown layout " + l, false;
    } else if (a == "-s" || a == "--solution") {
      if (!value(&v)) return false;
      o.solutionFile = v;
    } else if (a == "--solution-style") {
      if (!value(&v)) return false;
      if (!to_int(v, &o.solutionStyle)) return error = "bad solution style " + std::string(v), false;
    } else if (a == "--start") {
      if (!value(&v)) return false;
      o.startFile = v;
    } else if (a == "--read-basis") {
      if (!value(&v)) return false;
      o.readBasis = v;
    } else if (a == "--write-basis") {
      if (!value(&v)) return false;
      o.writeBasis = v;
    } else if (a == "--basis-format") {
      if (!value(&v)) return false;
      if (!to_int(v, &o.basisFormat)) return error = "bad basis format " + std::string(v), false;
    } else if (a == "--write-mps") {
      if (!value(&v)) return false;
      o.writeMps = v;
    } else if (a == "--write-ltx") {
      if (!value(&v)) return false;
      o.writeLtx = v;
    } else if (a == "--write-dual-ltx") {
      if (!value(&v)) return false;
      o.writeDualLtx = v;
    } else if (a == "--write-marlo") {
      if (!value(&v)) return false;
      o.writeMarlo = v;
    } else if (a == "--write-free") {
      o.writeLayout = 0;
    } else if (!a.empty() && a[0] == '-') {
      error = "unknown option " + a;
      return false;
    } else if (a.find('=') != std::string::npos && a.rfind("QZ_", 0) == 0) {
      const size_t eq = a.find('=');
      o.settings.push_back({a.substr(0, eq), a.substr(eq + 1)});
    } else if (o.model.empty()) {
      o.model = a;
    } else {
      error = "more than one model file: " + o.model + " and " + a;
      return false;
    }
  }
  return true;
}

}  // namespace runzento
