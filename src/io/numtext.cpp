// Number texts of the writers.
#include "io/numtext.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace zento::io {

namespace {

// "1.5E-05" -> "1.5E-5", "2E+10" -> "2E10"; the mantissa is left alone.
std::string plain_exponent(const std::string& s) {
  const size_t e = s.find_first_of("eE");
  if (e == std::string::npos) return s;
  const int exponent = std::atoi(s.c_str() + e + 1);
  char buf[16];
  std::snprintf(buf, sizeof buf, "%d", exponent);
  return s.substr(0, e) + "E" + buf;
}

// "0.25" -> ".25", "-0.25" -> "-.25": one character less for a tight field.
std::string drop_leading_zero(const std::string& s) {
  if (s.size() > 2 && s[0] == '0' && s[1] == '.') return s.substr(1);
  if (s.size() > 3 && s[0] == '-' && s[1] == '0' && s[2] == '.') return "-" + s.substr(2);
  return s;
}

std::string shortest(double v) {
  char buf[64];
  const auto res = std::to_chars(buf, buf + sizeof buf, v);
  std::string s(buf, res.ptr);
  return plain_exponent(s);
}

}  // namespace

std::string free_fmt(double v, int width) {
  if (v == 0.0) return "0";
  const std::string best = shortest(v);
  if (static_cast<int>(best.size()) <= width) return best;
  const std::string tight = drop_leading_zero(best);
  if (static_cast<int>(tight.size()) <= width) return tight;
  char buf[400];
  std::string text;
  for (int p = width; p >= 6; --p) {
    if (std::fabs(v) < 0.002)
      std::snprintf(buf, sizeof buf, "%.*E", p - 1, v);
    else
      std::snprintf(buf, sizeof buf, "%.*G", p, v);
    text = plain_exponent(buf);
    if (static_cast<int>(text.size()) <= width) return text;
  }
  return text;
}

}  // namespace zento::io
