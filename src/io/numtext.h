// Numbers as text for the file writers.
#pragma once

#include <string>

namespace zento::io {

// The text of `v` in at most `width` characters (`free_fmt`). The shortest text that reads
// back to the same double comes first when it fits; otherwise precisions from `width` down to
// 6 are tried with %G, or %E for magnitudes below 0.002, and the first that fits is taken.
// Exponents are written as plain integers (1E-5, not 1E-05).
std::string free_fmt(double v, int width);

}  // namespace zento::io
