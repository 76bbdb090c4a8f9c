// Default hooks that other subsystems replace with their own definitions.
//
// The interrupt layer owns the Ctrl-C state and the information-key layer owns the key table;
// until they link in their definitions, a parameter set that clears the interrupt has nothing
// to clear and no information key is known.
#include "core/callbacks.h"
#include "core/info_keys.h"

namespace zento {

[[gnu::weak]] void reset_ctrlc() {}

[[gnu::weak]] int info_key_type(int /*key*/) { return -1; }

}  // namespace zento
