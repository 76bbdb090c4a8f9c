// Fuzz target of the MPS reader: the first byte picks the layout and the free-row handling,
// the rest is the file. A model that reads is written back, to a null stream.
#include <cstddef>
#include <cstdint>

#include "core/model.h"
#include "io/io.h"
#include "io/mps_reader.h"
#include "io/stream.h"
#include "fuzz_common.h"
#include "zento.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  const int layout = data[0] % 5 - 1;
  const int keepFree = (data[0] >> 3) & 1;
  const int objIndex = (data[0] >> 4) & 1;
  int rc = 0;
  QZmodel m = QZcreateModel(shared_env(), &rc);
  if (m == nullptr) return 0;
  zento::io::StreamPtr s(zento::io::qzs_memopen(data + 1, size - 1));
  if (zento::io::read_mps_stream(*m, s.get(), layout, objIndex, keepFree, "fuzz") == 0) {
    (void)zento::io::write_mps_file(*m, "/dev/null", data[0] & 1);
  } else {
    int line = 0;
    char text[300];
    QZgetFileError(m, &line, text);
  }
  QZdeleteModel(&m);
  return 0;
}
