// One model of a MIP instance table: solved through QZsolveMIP with presolve, cuts and
// heuristics off (this build has none), checked against the published optimum of the
// collection's MANIFEST.csv: status optimal, objective equal, best bound within the gap.
//
// Usage: mip_instance_check <collection dir> <model name> <time limit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "zento.h"

namespace {

bool published_optimum(const std::string& dir, const std::string& name, std::string* file,
                       double* opt) {
  std::ifstream in(dir + "/MANIFEST.csv");
  std::string line;
  std::getline(in, line);
  while (std::getline(in, line)) {
    std::stringstream ss(line);
    std::string f[7];
    for (auto& s : f) std::getline(ss, s, ',');
    if (f[0] != name) continue;
    *file = dir + "/" + f[1];
    if (f[6].empty()) return false;
    *opt = std::atof(f[6].c_str());
    return true;
  }
  return false;
}

int fail(const char* what) {
  std::printf("%s\n0 passed, 1 failed\n", what);
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 4) return fail("usage: mip_instance_check <dir> <name> <time limit>");
  std::string file;
  double opt = 0;
  if (!published_optimum(argv[1], argv[2], &file, &opt)) return fail("no published optimum");
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  QZmodel m = QZcreateModel(env, &rc);
  if ((rc = QZreadMPSFile(m, file.c_str(), 0)) != 0) return fail("cannot read the model");
  QZsetModelIntParameter(m, QZ_IPARAM_LP_PRINTLEVEL, 0);
  QZsetModelIntParameter(m, QZ_IPARAM_MIP_PRINTLEVEL, 0);
  QZsetModelIntParameter(m, QZ_IPARAM_MIP_PRELEVEL, 0);
  QZsetModelIntParameter(m, QZ_IPARAM_MIP_CUTLEVEL_TOP, 0);
  QZsetModelIntParameter(m, QZ_IPARAM_MIP_CUTLEVEL_TREE, 0);
  QZsetModelIntParameter(m, QZ_IPARAM_MIP_HEULEVEL, 0);
  QZsetModelDouParameter(m, QZ_DPARAM_MIP_TIMLIM, std::atof(argv[3]));
  int status = 0;
  rc = QZsolveMIP(m, &status);
  double obj = 0, bound = 0;
  int branches = 0;
  QZgetMIPObjective(m, &obj);
  QZgetBestBounds(m, nullptr, &bound);
  QZgetInfo(m, QZ_IINFO_MIP_BRANCHCOUNT, &branches);
  double relopt = 0;
  QZgetModelDouParameter(m, QZ_DPARAM_MIP_RELOPTTOL, &relopt);
  std::printf("%s: rc %d status %d objective %.10g (published %.10g) bound %.10g branches %d\n",
              argv[2], rc, status, obj, opt, bound, branches);
  QZdeleteModel(&m);
  QZdeleteEnv(&env);
  const double scale = std::max(1.0, std::fabs(opt));
  if (rc != 0 || status != QZ_STATUS_OPTIMAL) return fail("not solved to optimality");
  if (std::fabs(obj - opt) > 1e-6 * scale) return fail("objective differs from the published optimum");
  if (std::fabs(bound - obj) > 2 * relopt * std::max(1.0, std::fabs(obj)) + 1e-9)
    return fail("best bound not within the gap");
  std::printf("1 passed, 0 failed\n");
  return 0;
}
