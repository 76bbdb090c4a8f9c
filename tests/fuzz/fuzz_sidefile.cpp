// Fuzz targets of the side-file readers, one per reader (chosen at build time): the input is
// the file, read into a small named model with rows, columns and bounds.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "zento.h"

namespace {

QZenv shared_env() {
  static QZenv env = [] {
    int rc = 0;
    return QZcreateEnv(&rc);
  }();
  return env;
}

const std::string& scratch_file() {
  // The file is rewritten for every input: a memory-backed folder when there is one.
  static const std::string dir = std::getenv("ZENTO_FUZZ_SCRATCH")   ? std::getenv("ZENTO_FUZZ_SCRATCH")
                                 : access("/dev/shm", W_OK) == 0 ? "/dev/shm"
                                                                   : "/tmp";
  static const std::string path = dir + "/zento_fuzz_side_" + std::to_string(getpid());
  return path;
}

QZmodel small_model() {
  int rc = 0;
  QZmodel m = QZcreateModel(shared_env(), &rc);
  const double c[] = {1, 2, -1}, b[] = {4, 1, 7}, a[] = {1, 1, 1, -1, 1}, l[] = {0, -1e30, 0},
               u[] = {4, 1e30, 1e30};
  const int beg[] = {0, 2, 4, 5}, rows[] = {0, 1, 0, 2, 2};
  QZloadLPData(m, 3, 3, QZ_MIN, 0.0, c, b, "LGE", 5, beg, nullptr, a, rows, l, u);
  char r0[] = "LIM1", r1[] = "LIM2", r2[] = "MYEQN", c0[] = "X1", c1[] = "X2", c2[] = "X3";
  char* rn[] = {r0, r1, r2};
  char* cn[] = {c0, c1, c2};
  QZloadNameData(m, "SIDE", "COST", nullptr, nullptr, nullptr, rn, cn, nullptr);
  return m;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string& path = scratch_file();
  FILE* f = std::fopen(path.c_str(), "wb");
  if (f == nullptr) return 0;
  std::fwrite(data, 1, size, f);
  std::fclose(f);
  QZmodel m = small_model();
#if defined(FUZZ_START)
  QZreadVarStartPoint(m, path.c_str());
#elif defined(FUZZ_PRIORITIES)
  if (QZreadVarPriorities(m, path.c_str()) == 0) QZwriteVarPriorities(m, "/dev/null", 0);
#elif defined(FUZZ_BLOCK)
  if (QZreadBlockStructure(m, path.c_str()) == 0) QZwriteBlockStructure(m, "/dev/null");
#elif defined(FUZZ_BASIS)
  if (QZreadBasis(m, path.c_str(), 1) == 0) {
    QZwriteBasis(m, "/dev/null", QZ_BASIS_TEXT);
    QZwriteBasis(m, "/dev/null", QZ_BASIS_MTX);
  }
#endif
  QZdeleteModel(&m);
  return 0;
}
