// The message table of the environment.
#pragma once

#include <string>

#include "zento.h"

namespace zento {

// Fills env->msgPool/msgIndex from `path` when that file exists, else from the built-in table.
int load_message_table(QZenv env, const std::string& path);
// Text of a code, or nullptr when the code has none.
const char* message_text(QZenv env, int code);
// Where the environment looks for the message file.
std::string message_file_path();

}  // namespace zento
