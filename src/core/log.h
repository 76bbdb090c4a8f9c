// Log lines to the host: through the model's or the environment's log function only.
// The public printers (QZlogmod, QZlogmodtid, QZlogenv, QZprintlog, ...) are in zento_info.h.
#pragma once

#include <cstdarg>
#include <string>

#include "zento.h"

namespace zento {
// The print level that gates load statistics: the LP level, and outside nested
// solves the larger of it and the MIP and NLP levels.
int base_printlevel(const Imodel& m);
bool is_nested(const Imodel& m);

// C-style formatting into a string; an invalid format gives an empty string.
std::string vformat(const char* fmt, va_list ap);
// Hands a finished line to the model's log function (no level test).
void log_line(Imodel& m, std::string& line);
}  // namespace zento
