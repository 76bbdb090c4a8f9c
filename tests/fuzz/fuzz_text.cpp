// Fuzz targets of the text readers, one per reader (FUZZ_LP, FUZZ_LTX, FUZZ_LTX_GRAMMAR): the
// input is the text. A model that reads is written in ZENTO format and read back by the line
// machine, which must give the same dimensions; the MARLO writer runs on it too.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "core/model.h"
#include "fuzz_common.h"
#include "io/text_formats.h"
#include "zento.h"

namespace {

const std::string& scratch() {
  static const std::string path = scratch_path("zento_fuzz_text_") + ".ltx";
  return path;
}

int read(Imodel& m, const uint8_t* data, size_t size) {
  const char* text = reinterpret_cast<const char*>(data);
#if defined(FUZZ_LP)
  return zento::io::read_lp_stream(m, text, static_cast<int>(size), "fuzz");
#elif defined(FUZZ_LTX)
  return zento::io::read_ltx_stream(m, text, static_cast<int>(size), "fuzz");
#else
  return zento::io::read_ltx_text_x(m, text, size, "fuzz");
#endif
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  int rc = 0;
  QZmodel m = QZcreateModel(shared_env(), &rc);
  if (m == nullptr) return 0;
  QZsetModelIntParameter(m, QZ_IPARAM_LP_PRINTLEVEL, 0);
  QZsetModelIntParameter(m, QZ_IPARAM_MIP_PRINTLEVEL, 0);
  if (read(*m, data, size) == 0) {
    (void)zento::io::write_marlo_file(*m, "/dev/null");
    if (zento::io::write_ltx_file(*m, scratch().c_str()) == 0) {
      QZmodel back = QZcreateModel(shared_env(), &rc);
      if (zento::io::read_ltx_file(*back, scratch().c_str()) != 0 || back->nVars != m->nVars ||
          back->nCons != m->nCons || back->nAnnz != m->nAnnz)
        std::abort();
      QZdeleteModel(&back);
    }
  } else {
    int line = 0;
    char text[300];
    QZgetFileError(m, &line, text);
  }
  QZdeleteModel(&m);
  return 0;
}
