// Data lines of the quadratic, conic and indicator sections of the MPS reader.
#include <cstring>

#include "io/mps_reader.h"

namespace zento::io {

namespace {

int column_of(MpsReader& r, const char* name) {
  const int j = HashTable_Lookup(r.colTab, name);
  return j >= 0 ? j : mps_new_column(r, name);
}

}  // namespace

int mps_do_quad(MpsReader& r) {
  const MpsLine& l = r.line;
  if (l.f[1]) return mps_bad(r, "a type field on a quadratic data line");
  if (!l.f[2] && !l.f[3] && !l.f[4]) return 0;
  if (!l.f[2] || !l.f[3] || !l.f[4])
    return mps_bad(r, "a quadratic term needs two columns and a value");
  double v = 0.0;
  if (!parse_number(l.f[4], &v)) return mps_bad(r, "the value is not a finite number");
  const int a = column_of(r, l.f[2]);
  const int b = column_of(r, l.f[3]);
  r.qRow.push_back(r.qCurRow);
  r.qCol1.push_back(std::max(a, b));
  r.qCol2.push_back(std::min(a, b));
  r.qVal.push_back(v);
  return 0;
}

int mps_do_cone(MpsReader& r) {
  const MpsLine& l = r.line;
  if (l.f[1]) return mps_bad(r, "a type field on a cone member line");
  if (l.f[2] == nullptr) return 0;
  r.coneCols.push_back(column_of(r, l.f[2]));
  return 0;
}

int mps_do_indicator(MpsReader& r) {
  const MpsLine& l = r.line;
  if (!iequals(l.f[1], "IF") || !l.f[2] || !l.f[3] || !l.f[4])
    return mps_bad(r, "an indicator line is IF, a row, a binary column and 0 or 1");
  const int row = HashTable_Lookup(r.rowTab, l.f[2]);
  if (row < 0) return mps_bad(r, "the indicator names an unknown row");
  const int col = HashTable_Lookup(r.colTab, l.f[3]);
  if (col < 0) return mps_bad(r, "the indicator names an unknown column");
  double v = 0.0;
  if (!parse_number(l.f[4], &v) || (v != 0.0 && v != 1.0))
    return mps_bad(r, "the indicator value must be 0 or 1");
  const bool binary = r.type[col] == 'B' ||
                      ((r.type[col] == 'I' || r.type[col] == 'Z') && r.lo[col] == 0.0 &&
                       r.up[col] == 1.0);
  if (!binary) return mps_bad(r, "the indicator column must be binary");
  Indicator ind;
  ind.row = row;
  ind.col = col;
  ind.value = static_cast<int>(v);
  ind.line = r.lines.line_number();
  ind.text.assign(r.raw.text, static_cast<size_t>(r.raw.len));
  r.indicators.push_back(std::move(ind));
  return 0;
}

}  // namespace zento::io
