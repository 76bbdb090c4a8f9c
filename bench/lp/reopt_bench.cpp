// Warm re-solve timing, the pattern of a branch-and-bound search: after the optimum of an LP,
// rounds of one bound change on a basic structural (down to the floor of half its value, or
// up again) each followed by a warm re-solve. Prints iterations and time per re-solve.
//   bench_lp_reopt <model.mps[.gz]> [rounds, default 200]
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "core/model.h"
#include "zento.h"

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: bench_lp_reopt model.mps [rounds]\n");
    return 2;
  }
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 200;
  int rc = 0;
  QZenv env = QZcreateEnv(&rc);
  QZmodel m = QZcreateModel(env, &rc);
  if (QZreadMPSFile(m, argv[1], QZ_MPS_AUTO) != 0) return 1;
  QZsetModelIntParameter(m, QZ_IPARAM_LP_PRELEVEL, 0);
  int status = 0;
  auto t0 = std::chrono::steady_clock::now();
  QZoptimize(m, QZ_METHOD_FREE, &status);
  const double cold = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
  int coldIters = 0;
  QZgetInfo(m, QZ_IINFO_SIM_ITER, &coldIters);
  const int n = m->nVars;
  std::vector<double> x(n);
  std::vector<int> cst(n), rst(m->nCons);
  double total = 0, iters = 0;
  int solved = 0;
  for (int r = 0; r < rounds; ++r) {
    QZgetPrimalSolution(m, x.data());
    QZgetBasis(m, cst.data(), rst.data());
    // A basic structural chosen by the round number, as a search would walk its candidates.
    int j = -1;
    for (int k = 0; k < n && j < 0; ++k) {
      const int c = (k + 7919 * r) % n;
      if (cst[c] >= 0 && std::fabs(x[c] - std::floor(x[c])) > 1e-6) j = c;
    }
    if (j < 0) break;
    const double keep = m->lp.padU[j];
    const double up = std::floor(x[j]);
    const double tight = std::max(up, m->lp.padL[j]);
    QZmodifyUpperBounds(m, 1, &j, &tight);
    t0 = std::chrono::steady_clock::now();
    QZoptimize(m, QZ_METHOD_FREE, &status);
    total += std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
    int it = 0;
    QZgetInfo(m, QZ_IINFO_SIM_ITER, &it);
    iters += it;
    ++solved;
    // Every other round the bound goes back, as the search returns to a sibling.
    if (r % 2 == 1 || status != QZ_STATUS_BASIC_OPTIMAL) {
      QZmodifyUpperBounds(m, 1, &j, &keep);
      t0 = std::chrono::steady_clock::now();
      QZoptimize(m, QZ_METHOD_FREE, &status);
      total += std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
      QZgetInfo(m, QZ_IINFO_SIM_ITER, &it);
      iters += it;
      ++solved;
    }
  }
  std::printf("cold: %d iterations, %.4f s; %d warm re-solves: %.1f iterations, %.3f ms each\n",
              coldIters, cold, solved, solved ? iters / solved : 0.0,
              solved ? 1000 * total / solved : 0.0);
  QZdeleteEnv(&env);
  return 0;
}
