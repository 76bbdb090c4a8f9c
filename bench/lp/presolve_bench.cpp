// Presolve on a folder of LPs: per model the size before and after presolve (rows, columns,
// nonzeros), the solve time and iterations without presolve (level 0) and with the default
// level, each the fastest of a few solves in this process (reading not counted), and whether
// both reach the same objective. Ends with the totals and the shifted geometric mean
// (shift 0.01 s) of the time ratio. Output is a markdown table.
//   bench_lp_presolve <folder> [repeats, default 3] [level, default 254]
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "zento.h"

namespace {

namespace fs = std::filesystem;

constexpr double kShift = 0.01;

struct Run {
  int status = 0, iters = 0, rows = 0, cols = 0, nnz = 0;
  double obj = NAN, secs = INFINITY;
};

bool solve(QZenv env, const std::string& path, int level, int repeats, Run& r) {
  for (int k = 0; k < repeats; ++k) {
    int rc = 0;
    QZmodel m = QZcreateModel(env, &rc);
    if (rc != 0 || QZreadMPSFile(m, path.c_str(), QZ_MPS_AUTO) != 0) {
      QZdeleteModel(&m);
      return false;
    }
    QZsetModelIntParameter(m, QZ_IPARAM_LP_PRELEVEL, level);
    const auto t0 = std::chrono::steady_clock::now();
    rc = QZoptimize(m, QZ_METHOD_FREE, &r.status);
    const double secs =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
    r.secs = std::min(r.secs, secs);
    QZgetObjective(m, &r.obj);
    QZgetInfo(m, QZ_IINFO_SIM_ITER, &r.iters);
    QZgetInfo(m, QZ_IINFO_NUM_RDCONS, &r.rows);
    QZgetInfo(m, QZ_IINFO_NUM_RDVARS, &r.cols);
    QZgetInfo(m, QZ_IINFO_NUM_RDNONZ, &r.nnz);
    if (level == 0) {
      QZgetInfo(m, QZ_IINFO_NUM_CONS, &r.rows);
      QZgetInfo(m, QZ_IINFO_NUM_VARS, &r.cols);
      QZgetInfo(m, QZ_IINFO_NUM_NONZ, &r.nnz);
    }
    QZdeleteModel(&m);
    if (rc != 0) return false;
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: %s <folder> [repeats] [level]\n", argv[0]);
    return 1;
  }
  const int repeats = argc > 2 ? std::max(1, std::atoi(argv[2])) : 3;
  const int level = argc > 3 ? std::atoi(argv[3]) : 254;
  std::vector<fs::path> files;
  for (const auto& e : fs::directory_iterator(argv[1])) {
    const std::string n = e.path().filename().string();
    if (n.size() > 4 && (n.ends_with(".mps") || n.ends_with(".mps.gz"))) files.push_back(e.path());
  }
  std::sort(files.begin(), files.end());
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  if (rc != 0) return 2;
  std::printf(
      "| model | rows | cols | nnz | rows after | cols after | nnz after | iters off | "
      "iters on | s off | s on | same optimum |\n");
  std::printf("|---|---|---|---|---|---|---|---|---|---|---|---|\n");
  long tr = 0, tc = 0, tn = 0, ar = 0, ac = 0, an = 0;
  double toff = 0, ton = 0, lsum = 0;
  int n = 0, same = 0;
  for (const fs::path& f : files) {
    Run off, on;
    if (!solve(env, f.string(), 0, repeats, off) || !solve(env, f.string(), level, repeats, on))
      continue;
    std::string name = f.filename().string();
    name = name.substr(0, name.find(".mps"));
    const bool opt = off.status == QZ_STATUS_BASIC_OPTIMAL || off.status == QZ_STATUS_OPTIMAL;
    // A model presolve solved alone or decided reports no reduced size: everything went.
    if (on.status != QZ_STATUS_BASIC_OPTIMAL && on.status != QZ_STATUS_OPTIMAL) {
      on.rows = on.cols = on.nnz = 0;
    }
    const bool agree = opt ? std::fabs(on.obj - off.obj) <= 1e-7 * std::max(1.0, std::fabs(off.obj))
                           : on.status == off.status;
    std::printf("| %s | %d | %d | %d | %d | %d | %d | %d | %d | %.4f | %.4f | %s |\n", name.c_str(),
                off.rows, off.cols, off.nnz, on.rows, on.cols, on.nnz, off.iters, on.iters,
                off.secs, on.secs, agree ? "yes" : "NO");
    tr += off.rows;
    tc += off.cols;
    tn += off.nnz;
    ar += on.rows;
    ac += on.cols;
    an += on.nnz;
    toff += off.secs;
    ton += on.secs;
    lsum += std::log((on.secs + kShift) / (off.secs + kShift));
    ++n;
    same += agree;
  }
  if (n > 0) {
    std::printf(
        "| **total (%d models)** | %ld | %ld | %ld | %ld | %ld | %ld | | | %.3f | %.3f | "
        "%d/%d |\n",
        n, tr, tc, tn, ar, ac, an, toff, ton, same, n);
    std::printf(
        "\nRemoved: %.1f%% of rows, %.1f%% of columns, %.1f%% of nonzeros. Time with "
        "presolve over time without: total %.3f, shifted geometric mean %.3f.\n",
        100.0 * (tr - ar) / std::max(1L, tr), 100.0 * (tc - ac) / std::max(1L, tc),
        100.0 * (tn - an) / std::max(1L, tn), ton / std::max(1e-9, toff), std::exp(lsum / n));
  }
  QZdeleteEnv(&env);
  return 0;
}
