// Fuzz targets of the side-file readers, one per reader (chosen at build time): the input is
// the file, read into a small named model with rows, columns and bounds.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include "fuzz_common.h"
#include "zento.h"

namespace {

// The file is rewritten for every input.
const std::string& scratch_file() {
  static const std::string path = scratch_path("zento_fuzz_side_");
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
