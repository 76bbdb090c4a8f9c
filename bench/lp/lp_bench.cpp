// LP timing against the peers: every MPS file of a folder is solved by runzento and, where they
// are installed, by `clp -dualSimplex` and `glpsol`, one process at a time (each single
// threaded). Per model it prints status, objective and wall time (read and solve, as each
// process takes it), and our time over each peer's; then the shifted geometric mean of those
// ratios (shift 0.1 s) over the models both solved to optimality with the same objective.
//   bench_lp <runzento> <folder> [time limit in seconds, default 600] [runzento arguments...]
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr double kShift = 0.1;

struct Result {
  std::string status = "-";  // optimal, infeasible, unbounded, limit, error
  double obj = NAN;
  double secs = NAN;
};

struct Capture {
  std::string out;
  double secs = 0;
  int code = 0;
};

Capture run(const std::string& cmd) {
  Capture c;
  const auto t0 = std::chrono::steady_clock::now();
  FILE* p = popen((cmd + " 2>&1").c_str(), "r");
  if (p == nullptr) {
    c.code = -1;
    return c;
  }
  char buf[4096];
  while (std::fgets(buf, sizeof buf, p)) c.out += buf;
  const int rc = pclose(p);
  c.secs = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
  c.code = WIFEXITED(rc) ? WEXITSTATUS(rc) : -1;
  return c;
}

bool on_path(const char* exe) {
  return std::system((std::string("command -v ") + exe + " >/dev/null 2>&1").c_str()) == 0;
}

std::string quote(const std::string& s) { return "'" + s + "'"; }

std::string value_after(const std::string& out, const std::string& key) {
  const size_t at = out.find(key);
  if (at == std::string::npos) return "";
  const size_t end = out.find('\n', at);
  return out.substr(at + key.size(), end == std::string::npos ? std::string::npos : end - at - key.size());
}

Result run_zento(const std::string& exe, const std::string& file, double limit,
                 const std::string& extra) {
  const Capture c = run("timeout " + std::to_string(limit + 5) + " " + quote(exe) + " -q -t " +
                        std::to_string(limit) + " " + extra + " " + quote(file));
  Result r;
  r.secs = c.secs;
  const std::string st = value_after(c.out, "Status     ");
  if (st == "OPTIMAL" || st == "BASIC OPTIMAL") r.status = "optimal";
  else if (st == "INFEASIBLE") r.status = "infeasible";
  else if (st == "UNBOUNDED") r.status = "unbounded";
  else if (st == "INFEASIBLE OR UNBOUNDED") r.status = "inf/unb";
  else r.status = c.code == 124 ? "limit" : "error";
  if (r.status == "optimal") r.obj = std::strtod(value_after(c.out, "Objective  ").c_str(), nullptr);
  return r;
}

Result run_clp(const std::string& file, double limit) {
  const Capture c = run("timeout " + std::to_string(limit) + " clp " + quote(file) +
                        " -dualSimplex");
  Result r;
  r.secs = c.secs;
  if (c.out.find("Optimal objective ") != std::string::npos) {
    r.status = "optimal";
    r.obj = std::strtod(value_after(c.out, "Optimal objective ").c_str(), nullptr);
  } else if (c.out.find("PrimalInfeasible") != std::string::npos) {
    r.status = "infeasible";
  } else if (c.out.find("DualInfeasible") != std::string::npos) {
    r.status = "unbounded";
  } else {
    r.status = c.code == 124 ? "limit" : "error";
  }
  return r;
}

Result run_glpsol(const std::string& file, double limit, const std::string& solfile) {
  Capture c;
  // Free layout first; files whose names hold blanks need the fixed one.
  for (const char* layout : {"--freemps", "--mps"}) {
    c = run("timeout " + std::to_string(limit) + " glpsol " + layout + " " + quote(file) +
            " -w " + quote(solfile));
    if (c.out.find("SOLUTION") != std::string::npos || c.code == 124) break;
  }
  Result r;
  r.secs = c.secs;
  if (c.out.find("OPTIMAL") != std::string::npos && c.out.find("SOLUTION FOUND") != std::string::npos) {
    r.status = "optimal";
    std::ifstream in(solfile);
    std::string line;
    while (std::getline(in, line))
      if (line.rfind("s bas", 0) == 0) {
        std::istringstream ss(line.substr(5));
        int m, n;
        std::string ps, ds;
        ss >> m >> n >> ps >> ds >> r.obj;
      }
  } else if (c.out.find("NO PRIMAL FEASIBLE") != std::string::npos) {
    r.status = "infeasible";
  } else if (c.out.find("UNBOUNDED") != std::string::npos ||
             c.out.find("NO DUAL FEASIBLE") != std::string::npos) {
    r.status = "unbounded";
  } else {
    r.status = c.code == 124 ? "limit" : "error";
  }
  return r;
}

bool same_answer(const Result& a, const Result& b) {
  if (a.status != "optimal" || b.status != "optimal") return false;
  return std::fabs(a.obj - b.obj) <= 1e-6 * std::max(1.0, std::fabs(b.obj));
}

struct Mean {
  double logsum = 0;
  int count = 0;
  double ours = 0, theirs = 0;
  void add(double a, double b) {
    logsum += std::log((a + kShift) / (b + kShift));
    ours += a;
    theirs += b;
    ++count;
  }
  double value() const { return count ? std::exp(logsum / count) : NAN; }
};

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr, "usage: bench_lp runzento folder [time limit] [runzento arguments...]\n");
    return 2;
  }
  const std::string zento = argv[1];
  const double limit = argc > 3 ? std::strtod(argv[3], nullptr) : 600.0;
  std::string extra;
  for (int k = 4; k < argc; ++k) extra += quote(argv[k]) + " ";
  std::vector<std::string> files;
  for (const auto& e : fs::directory_iterator(argv[2])) {
    const std::string p = e.path().string();
    if (p.find(".mps") != std::string::npos) files.push_back(p);
  }
  std::sort(files.begin(), files.end());
  const bool haveClp = on_path("clp"), haveGlpk = on_path("glpsol");
  const std::string solfile = (fs::temp_directory_path() / "bench_lp_glpsol.sol").string();
  std::printf("%-10s | %-9s %15s %8s | %-9s %8s %7s | %-9s %8s %7s\n", "model", "zento", "objective",
              "time", "clp", "time", "ratio", "glpsol", "time", "ratio");
  Mean clpMean, glpkMean;
  int mismatches = 0;
  for (const std::string& f : files) {
    std::string name = fs::path(f).filename().string();
    name = name.substr(0, name.find(".mps"));
    const Result z = run_zento(zento, f, limit, extra);
    std::printf("%-10s | %-9s %15.8e %8.3f |", name.c_str(), z.status.c_str(), z.obj, z.secs);
    for (int peer = 0; peer < 2; ++peer) {
      if (!(peer == 0 ? haveClp : haveGlpk)) {
        std::printf(" %-9s %8s %7s |", "absent", "-", "-");
        continue;
      }
      const Result p = peer == 0 ? run_clp(f, limit) : run_glpsol(f, limit, solfile);
      std::string ratio = "-";
      if (same_answer(z, p)) {
        char buf[32];
        std::snprintf(buf, sizeof buf, "%.2f", (z.secs + kShift) / (p.secs + kShift));
        ratio = buf;
        (peer == 0 ? clpMean : glpkMean).add(z.secs, p.secs);
      } else if (z.status != p.status) {
        ++mismatches;
      }
      std::printf(" %-9s %8.3f %7s |", p.status.c_str(), p.secs, ratio.c_str());
    }
    std::printf("\n");
    std::fflush(stdout);
  }
  std::remove(solfile.c_str());
  std::printf("\nshifted geometric mean of zento/peer time (shift %.1f s):\n", kShift);
  if (haveClp)
    std::printf("  clp -dualSimplex: %.3f over %d models (total %.2f s vs %.2f s)\n", clpMean.value(),
                clpMean.count, clpMean.ours, clpMean.theirs);
  if (haveGlpk)
    std::printf("  glpsol:           %.3f over %d models (total %.2f s vs %.2f s)\n",
                glpkMean.value(), glpkMean.count, glpkMean.ours, glpkMean.theirs);
  std::printf("status differences: %d\n", mismatches);
  return 0;
}
