// What parameters need from the interrupt layer and the information keys.
#include "core/callbacks.h"
#include "core/info.h"
#include "core/info_keys.h"

namespace zento {

void reset_ctrlc() { QZresetctrlc(); }

int info_key_type(int key) {
  switch (key_type(key)) {
    case KeyType::kInt:
      return 4;
    case KeyType::kDouble:
      return 8;
    case KeyType::kString:
      return 0;
    default:
      return -1;
  }
}

}  // namespace zento
