// Information keys as other subsystems see them.
#pragma once

namespace zento {

// Type of an information key: 4 int, 8 double, 0 string, -1 when the key is unknown.
int info_key_type(int key);

}  // namespace zento
