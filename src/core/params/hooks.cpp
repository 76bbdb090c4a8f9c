// Default hooks that other subsystems replace with their own definitions.
//
// The interrupt layer owns the Ctrl-C state (QZresetctrlc) and the information-key layer owns
// the key table. Until they are linked in, a parameter set that clears the interrupt has
// nothing to clear and no information key is known.
#include "core/callbacks.h"
#include "core/info_keys.h"

extern "C" int QZresetctrlc(void) __attribute__((weak));

namespace zento {

[[gnu::weak]] void reset_ctrlc() {
  if (QZresetctrlc != nullptr) QZresetctrlc();
}

[[gnu::weak]] int info_key_type(int /*key*/) { return -1; }

}  // namespace zento
