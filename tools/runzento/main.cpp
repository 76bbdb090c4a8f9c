// runzento: the command-line solver, written against the public C interface only.
#include <chrono>
#include <cstdio>
#include <cstring>
#include <string>

#include "options.h"
#include "params.h"
#include "zento.h"

namespace runzento {

namespace {

double now() {
  using namespace std::chrono;
  return duration<double>(steady_clock::now().time_since_epoch()).count();
}

void print_version() {
  char version[64], build[512];
  QZgetVersionInfo(version, build);
  std::printf("runzento %s\n%s\n", version, build);
}

// The library's log lines start with a newline; they go to the terminal as they come.
void log_line(QZmodel, char* line, void*) {
  std::fputs(line, stdout);
  std::fflush(stdout);
}

const char* status_text(int s) {
  static const char* const kText[] = {"OPTIMAL",    "BASIC OPTIMAL",    "INFEASIBLE",
                                      "UNBOUNDED",  "FEASIBLE",         "INFEASIBLE OR UNBOUNDED",
                                      "NEAR OPTIMAL", "LOCAL OPTIMAL",  "LOCAL INFEASIBLE",
                                      "CUTOFF",     "NUMERICAL ERROR",  "UNKNOWN",
                                      "UNLOADED",   "LOADED",           "BOUNDED"};
  return s >= 1 && s <= 15 ? kText[s - 1] : "N/A";
}

bool proven(int s) {
  return s == QZ_STATUS_OPTIMAL || s == QZ_STATUS_BASIC_OPTIMAL || s == QZ_STATUS_INFEASIBLE ||
         s == QZ_STATUS_UNBOUNDED || s == QZ_STATUS_INFORUNB || s == QZ_STATUS_LOCAL_OPTIMAL;
}

std::string message(QZenv env, int rc) {
  char text[1024] = {};
  QZgetErrorMessage(env, rc, text);
  return text;
}

int fail(QZenv env, int rc, const std::string& what, int exitCode) {
  std::fprintf(stderr, "runzento: %s: error %d: %s\n", what.c_str(), rc, message(env, rc).c_str());
  return exitCode;
}

// The extension of the model file without a trailing ".gz", in lower case.
std::string model_extension(std::string name) {
  auto lower = [](std::string s) {
    for (char& c : s)
      if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return s;
  };
  if (name.size() > 3 && lower(name.substr(name.size() - 3)) == ".gz")
    name.resize(name.size() - 3);
  const size_t dot = name.find_last_of('.');
  const size_t slash = name.find_last_of('/');
  if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return "";
  return lower(name.substr(dot));
}

int read_any(QZmodel m, const Options& o) {
  const std::string ext = model_extension(o.model);
  if (ext == ".lp") return QZreadLPFile(m, o.model.c_str());
  if (ext == ".ltx") return QZreadZENTOFile(m, o.model.c_str());
  return QZreadMPSFile(m, o.model.c_str(), o.mpsLayout);
}

int read_model(QZenv env, QZmodel m, const Options& o) {
  const int rc = read_any(m, o);
  if (rc == 0) return kSolved;
  fail(env, rc, "cannot read " + o.model, kReadFailed);
  int line = 0;
  char text[300] = {};
  QZgetFileError(m, &line, text);
  if (line > 0) std::fprintf(stderr, "runzento: %s:%d: %s\n", o.model.c_str(), line, text);
  return kReadFailed;
}

void print_size(QZmodel m, const Options& o) {
  int nVars = 0, nCons = 0, nnz = 0, nCont = 0, nBin = 0, nInt = 0;
  QZgetDimensions(m, &nVars, &nCons, nullptr, &nnz, nullptr, nullptr, nullptr, nullptr, nullptr,
                  nullptr, nullptr);
  QZgetVarTypeCount(m, &nCont, &nBin, &nInt);
  std::printf("\nModel      %s: %d rows, %d columns, %d nonzeros", o.model.c_str(), nCons, nVars,
              nnz);
  if (nBin + nInt > 0) std::printf(" (%d binary, %d integer)", nBin, nInt);
  std::printf("\n");
}

int before_solve(QZenv env, QZmodel m, const Options& o) {
  if (!o.writeMps.empty()) {
    const int rc = QZwriteMPSFile(m, o.writeMps.c_str(), o.writeLayout);
    if (rc != 0) return fail(env, rc, "cannot write " + o.writeMps, kOutputFailed);
  }
  struct Writer {
    const std::string& file;
    int (*write)(QZmodel, const char*);
  };
  const Writer writers[] = {{o.writeLtx, QZwriteZENTOFile}, {o.writeMarlo, QZwriteMARLOFile}};
  for (const Writer& w : writers) {
    if (w.file.empty()) continue;
    const int rc = w.write(m, w.file.c_str());
    if (rc != 0) return fail(env, rc, "cannot write " + w.file, kOutputFailed);
  }
  if (!o.writeDualLtx.empty()) {
    const int rc = QZwriteDualZENTOFile(m, o.writeDualLtx.c_str(), -1);
    if (rc != 0) return fail(env, rc, "cannot write " + o.writeDualLtx, kOutputFailed);
  }
  if (!o.startFile.empty()) {
    const int rc = QZreadVarStartPoint(m, o.startFile.c_str());
    if (rc != 0) return fail(env, rc, "cannot read start point " + o.startFile, kReadFailed);
  }
  if (!o.readBasis.empty()) {
    const int rc = QZreadBasis(m, o.readBasis.c_str(), 1);
    if (rc != 0) return fail(env, rc, "cannot read basis " + o.readBasis, kReadFailed);
  }
  return kSolved;
}

int after_solve(QZenv env, QZmodel m, const Options& o) {
  if (!o.solutionFile.empty()) {
    const int rc = o.solutionStyle < 0
                       ? QZwriteSolution(m, o.solutionFile.c_str())
                       : QZwriteSolutionOfType(m, o.solutionFile.c_str(), o.solutionStyle);
    if (rc != 0) return fail(env, rc, "cannot write solution " + o.solutionFile, kOutputFailed);
  }
  if (!o.writeBasis.empty()) {
    const int rc = QZwriteBasis(m, o.writeBasis.c_str(), o.basisFormat);
    if (rc != 0) return fail(env, rc, "cannot write basis " + o.writeBasis, kOutputFailed);
  }
  return kSolved;
}

// A model with integer columns goes to the MIP entry; its log is the search's iteration log.
int solve_mip(QZenv env, QZmodel m, const Options& o, double readSecs) {
  const double t0 = now();
  int status = QZ_STATUS_UNKNOWN;
  const int rc = QZsolveMIP(m, &status);
  const double secs = now() - t0;
  const bool limit = rc == QZERR_TIME_LIMIT || rc == QZERR_ITER_LIMIT || rc == QZERR_BRANCH_LIMIT ||
                     rc == QZERR_SOL_LIMIT || rc == QZERR_USER_INTERRUPT;
  if (rc != 0 && !limit) {
    std::printf("\nStatus     not solved (error %d: %s)\n", rc, message(env, rc).c_str());
    std::printf("Time       %.2f s solve, %.2f s read\n", secs, readSecs);
    return kSolveFailed;
  }
  if (rc != 0) std::printf("\nStopped    error %d: %s\n", rc, message(env, rc).c_str());
  std::printf("\nStatus     %s\n", status_text(status));
  double obj = 0, bound = 0;
  if (QZgetMIPObjective(m, &obj) == 0)
    std::printf("Objective  %.10e\n", obj);
  else
    std::printf("Objective  n/a\n");
  if (QZgetBestBounds(m, nullptr, &bound) == 0) std::printf("Best bound %.10e\n", bound);
  int branches = 0, lps = 0, iters = 0;
  QZgetInfo(m, QZ_IINFO_MIP_BRANCHCOUNT, &branches);
  QZgetInfo(m, QZ_IINFO_MIP_LPCOUNT, &lps);
  QZgetInfo(m, QZ_IINFO_MIP_SIM_ITER, &iters);
  std::printf("Search     %d branches, %d LPs, %d simplex iterations\n", branches, lps, iters);
  std::printf("Time       %.2f s solve, %.2f s read\n", secs, readSecs);
  const int out = after_solve(env, m, o);
  if (out != kSolved) return out;
  return rc == 0 && proven(status) ? kSolved : kNotProven;
}

int solve(QZenv env, QZmodel m, const Options& o, double readSecs) {
  int nCont = 0, nBin = 0, nInt = 0;
  QZgetVarTypeCount(m, &nCont, &nBin, &nInt);
  if (nBin + nInt > 0 && !o.relax) return solve_mip(env, m, o, readSecs);
  const double t0 = now();
  int status = QZ_STATUS_UNKNOWN;
  const int rc = QZoptimize(m, o.method, &status);
  const double secs = now() - t0;
  if (rc != 0) {
    std::printf("Status     not solved (error %d: %s)\n", rc, message(env, rc).c_str());
    std::printf("Time       %.2f s solve, %.2f s read\n", secs, readSecs);
    return kSolveFailed;
  }
  int method = 0, elapsed = 0, spx = 0, bar = 0, nlp = 0, pst = 0, dst = 0, bst = 0;
  double pobj = 0, dobj = 0, pinf = 0, dinf = 0;
  QZgetSolutionInfo(m, &method, &elapsed, &spx, &bar, &nlp, &pst, &dst, &bst, &pobj, &dobj, &pinf,
                    &dinf);
  std::printf("Status     %s\n", status_text(status));
  double obj = 0;
  if (QZgetObjective(m, &obj) == 0)
    std::printf("Objective  %.10e\n", obj);
  else
    std::printf("Objective  n/a\n");
  std::printf("Iterations %d simplex, %d barrier, %d nlp\n", spx, bar, nlp);
  std::printf("Time       %.2f s solve, %.2f s read\n", secs, readSecs);
  const int out = after_solve(env, m, o);
  if (out != kSolved) return out;
  return proven(status) ? kSolved : kNotProven;
}

int run(QZenv env, const Options& o) {
  int rc = 0;
  QZmodel m = QZcreateModel(env, &rc);
  if (m == nullptr) return fail(env, rc, "cannot create a model", kSolveFailed);
  struct Owner {
    QZmodel& m;
    ~Owner() { QZdeleteModel(&m); }
  } owner{m};
  const bool logging = !o.quiet && o.printLevel != 0;
  if (logging) QZsetModelLogfunc(m, log_line, nullptr);
  int code = apply_parameters(env, m, o);
  if (code != kSolved) return code;
  const double t0 = now();
  code = read_model(env, m, o);
  if (logging) std::printf("\n");
  if (code != kSolved) return code;
  const double readSecs = now() - t0;
  print_size(m, o);
  code = before_solve(env, m, o);
  if (code != kSolved || o.noSolve) return code;
  return solve(env, m, o, readSecs);
}

}  // namespace

}  // namespace runzento

int main(int argc, char** argv) {
  using namespace runzento;
  Options o;
  std::string error;
  if (!parse_options(argc, argv, o, error)) {
    std::fprintf(stderr, "runzento: %s (see --help)\n", error.c_str());
    return kUsage;
  }
  if (o.help) {
    print_help();
    return kSolved;
  }
  if (o.version) {
    print_version();
    return kSolved;
  }
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  if (env == nullptr) {
    std::fprintf(stderr, "runzento: cannot create environment (error %d)\n", rc);
    return kSolveFailed;
  }
  int code = kSolved;
  if (o.listParams) {
    code = list_parameters(env);
  } else if (o.model.empty()) {
    print_help();
    code = kUsage;
  } else {
    code = run(env, o);
  }
  QZdeleteEnv(&env);
  return code;
}
