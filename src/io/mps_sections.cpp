// Section lines and the linear sections of the MPS reader: ROWS, COLUMNS, RHS, RANGES, BOUNDS.
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "core/env.h"
#include "core/log.h"
#include "io/mps_reader.h"

namespace zento::io {

namespace {

bool kw(const char* w, const char* k) { return w != nullptr && iequals(w, k); }

bool is_quad_header(const char* w) {
  return kw(w, "QSECTION") || kw(w, "QCMATRIX") || kw(w, "QMATRIX") || kw(w, "QUADS") ||
         kw(w, "QUADOBJ");
}

// The row a quadratic section addresses: a row index, -1 the objective, -2 a free row.
int quad_header(MpsReader& r) {
  const MpsLine& l = r.line;
  const char* head = l.f[1];
  if (kw(head, "QMATRIX") || kw(head, "QUADS") || kw(head, "QUADOBJ")) {
    const char* named = l.nword > 1 ? l.word[1] : nullptr;
    if (named && kw(head, "QMATRIX"))
      mps_log(r, base_printlevel(r.m), "\nWarning: ignoring QMATRIX row name '%s'", named);
    r.qCurRow = -1;
    r.state = kQuadObj;
    return 0;
  }
  const char* name = nullptr;
  if (r.fixed)
    name = l.f[3] ? l.f[3] : (l.nword == 2 ? l.word[1] : nullptr);
  else if (l.nword == 2)
    name = l.word[1];
  if (name == nullptr) return mps_bad(r, "a quadratic section needs exactly one row name");
  const int row = HashTable_Lookup(r.rowTab, name);
  if (row >= 0)
    r.qCurRow = row;
  else if (r.haveObj && r.objName == name)
    r.qCurRow = -1;
  else if (HashTable_Lookup(r.freeTab, name) >= 0)
    r.qCurRow = -2;
  else
    return mps_bad(r, "the quadratic section names an unknown row");
  r.state = kQuadRow;
  return 0;
}

int cone_header(MpsReader& r) {
  const MpsLine& l = r.line;
  if (r.fixed) return mps_bad(r, "conic sections are read in the free layout only");
  if (l.nword != 4) return mps_bad(r, "a CSECTION line needs a name, a number and a cone type");
  double alpha = 0.0;
  if (!parse_number(l.word[2], &alpha)) return mps_bad(r, "the cone parameter is not a number");
  char type = 0;
  if (kw(l.word[3], "QUAD"))
    type = 'Q';
  else if (kw(l.word[3], "RQUAD"))
    type = 'R';
  else if (kw(l.word[3], "PEXP"))
    type = 'E';
  else if (kw(l.word[3], "PPOW"))
    type = 'P';
  else
    return mps_bad(r, "unknown cone type");
  if (!r.coneTab.initialized) QZ_CALL(HashTable_Initialize(r.coneTab, 29));
  if (HashTable_Insert(r.coneTab, l.word[1]) < 0) return mps_bad(r, "duplicate cone name");
  r.coneType.push_back(type);
  r.coneAlpha.push_back(type == 'P' ? alpha : 0.0);
  r.coneBeg.push_back(static_cast<int>(r.coneCols.size()));
  r.state = kCone;
  return 0;
}

// The last cone must have the members its type needs.
int check_last_cone(MpsReader& r) {
  if (r.coneType.empty()) return 0;
  const char t = r.coneType.back();
  const int n = static_cast<int>(r.coneCols.size()) - r.coneBeg.back();
  const bool ok = (t == 'Q' && n >= 1) || (t == 'R' && n >= 2) || ((t == 'E' || t == 'P') && n == 3);
  return ok ? 0 : mps_bad(r, "the cone has the wrong number of members for its type");
}

// Moves to a section after COLUMNS; returns false for a word that opens none of them.
bool enter_later_section(MpsReader& r, const char* w, int* rc, bool allowRhs, bool allowRanges,
                         bool allowBounds) {
  if (allowRhs && kw(w, "RHS")) {
    r.state = kRhs;
  } else if (allowRanges && kw(w, "RANGES")) {
    r.state = kRanges;
  } else if (allowBounds && kw(w, "BOUNDS")) {
    r.state = kBounds;
  } else if (kw(w, "ENDATA")) {
    r.state = kEnd;
  } else if (kw(w, "INDICATORS")) {
    r.state = kIndicators;
  } else if (is_quad_header(w)) {
    *rc = quad_header(r);
  } else if (kw(w, "CSECTION")) {
    *rc = cone_header(r);
  } else {
    return false;
  }
  return true;
}

void set_default_row(MpsReader& r, char type) {
  r.rowType.push_back(type);
  r.rhs.push_back(0.0);
  r.range.push_back(0.0);
  r.rangeCount.push_back(0);
}

// The set name of an RHS, RANGES or BOUNDS line: the first data line fixes it, and lines of
// other sets are passed over.
bool same_set(std::string& set, bool& fixedOnce, const char* name) {
  const char* n = name ? name : "";
  if (!fixedOnce) {
    set = n;
    fixedOnce = true;
    return true;
  }
  return set == n;
}

int rhs_like_pair(MpsReader& r, const char* rowName, const char* valueText, bool ranges) {
  double v = 0.0;
  if (valueText == nullptr) return mps_bad(r, "a row name without its value");
  if (!line_number(r.line, valueText, &v)) return mps_bad(r, "the value is not a finite number");
  const int row = HashTable_Lookup(r.rowTab, rowName);
  if (row >= 0) {
    if (ranges) {
      r.range[row] = v;
      ++r.rangeCount[row];
    } else {
      r.rhs[row] = v;
    }
    return 0;
  }
  if (r.haveObj && r.objName == rowName) {
    if (!ranges) {
      r.objConst = 0.0 - v;
      mps_log(r, r.m.SplexPam.lp_printlevel > 0,
               "\nMPS Warning: Objective function has a constant term of %g\nMPS Warning: ZENTO "
               "API accounts for this term when reporting the objective value.\nMPS Warning: "
               "Third-party solvers may ignore such constant terms.\n",
               r.objConst);
    }
    return 0;
  }
  if (HashTable_Lookup(r.freeTab, rowName) >= 0) return 0;
  return mps_bad(r, "unknown row name");
}

int rhs_like(MpsReader& r, bool ranges) {
  const MpsLine& l = r.line;
  if (l.f[1]) return mps_bad(r, "a type field on a data line of this section");
  if (!same_set(ranges ? r.rngSet : r.rhsSet, ranges ? r.rngSetFixed : r.rhsSetFixed, l.f[2]))
    return 0;
  if (l.f[3] == nullptr) return mps_bad(r, "a value without its row name");
  QZ_CALL(rhs_like_pair(r, l.f[3], l.f[4], ranges));
  if (l.f[5] || l.f[6]) {
    if (!l.f[5]) return mps_bad(r, "a value without its row name");
    QZ_CALL(rhs_like_pair(r, l.f[5], l.f[6], ranges));
  }
  return 0;
}

int add_entry(MpsReader& r, const char* rowName, const char* valueText) {
  double v = 0.0;
  if (!line_number(r.line, valueText, &v)) return mps_bad(r, "the value is not a finite number");
  if (r.haveObj && r.objName == rowName) {
    r.cost[r.curCol] = v;
    return 0;
  }
  const int row = HashTable_Lookup(r.rowTab, rowName);
  if (row >= 0) {
    if (r.aRow.size() == r.aRow.capacity()) {
      // Large steps: pages are touched only when written, so the unused tail costs address
      // space alone, while doubling would copy (and fault in) twice the final size.
      const size_t cap = r.aRow.capacity() < 4096 ? 4096 : 4 * r.aRow.capacity();
      r.aRow.reserve(cap);
      r.aVal.reserve(cap);
    }
    r.aRow.push_back(row);
    r.aVal.push_back(v);
    return 0;
  }
  const int free = HashTable_Lookup(r.freeTab, rowName);
  if (free >= 0) {
    const int e = r.freeExt[free];
    if (e >= 0) {
      std::vector<double>& c = r.extObj[e].cost;
      if (c.size() <= static_cast<size_t>(r.curCol)) c.resize(static_cast<size_t>(r.curCol) + 1);
      c[r.curCol] = v;
    }
    return 0;
  }
  return mps_bad(r, "unknown row name");
}

int column_marker(MpsReader& r) {
  const MpsLine& l = r.line;
  const char* kind = l.f[5];
  if (kind == nullptr) return mps_bad(r, "a marker line without its kind");
  if (l.f[1]) {
    const bool s1 = kw(l.f[1], "S1"), s2 = kw(l.f[1], "S2");
    if (!s1 && !s2) return mps_bad(r, "unknown set marker tag");
    if (std::strcmp(kind, "'SOSORG'") == 0) {
      r.setType.push_back(s1 ? 1 : 2);
      r.openSet = static_cast<int>(r.setType.size()) - 1;
    } else if (std::strcmp(kind, "'SOSEND'") == 0) {
      r.openSet = -1;
    } else {
      return mps_bad(r, "a set marker must be 'SOSORG' or 'SOSEND'");
    }
    return 0;
  }
  if (std::strcmp(kind, "'SOSEND'") == 0) {
    r.openSet = -1;
  } else if (std::strcmp(kind, "'SOSORG'") == 0) {
    if (r.openSet < 0) {
      r.setType.push_back(r.intBinary ? 1 : 3);
      r.openSet = static_cast<int>(r.setType.size()) - 1;
    }
  } else if (std::strcmp(kind, "'INTORG'") == 0) {
    r.intMode = r.intBinary ? 2 : 1;
  } else {
    r.intMode = 0;
  }
  return 0;
}

}  // namespace

int mps_new_column(MpsReader& r, const char* name) {
  const int j = HashTable_Insert(r.colTab, name);
  if (j < 0) return -1;
  if (r.colBeg.empty()) r.colBeg.push_back(0);
  r.colBeg.push_back(static_cast<int>(r.aRow.size()));
  r.cost.push_back(0.0);
  r.lo.push_back(0.0);
  r.up.push_back(QZ_INFINITY);
  r.type.push_back('C');
  r.scPos.push_back(-1);
  return j;
}

void mps_close_columns(MpsReader& r) {
  if (r.columnsClosed) return;
  r.columnsClosed = true;
  r.openSet = -1;
  for (size_t j = 0; j < r.type.size(); ++j)
    if (r.type[j] == 'Z') r.up[j] = 1.0;
}

int mps_do_section_line(MpsReader& r) {
  const MpsLine& l = r.line;
  const char* w = l.f[1];
  int rc = 0;
  // Leaving a cone: it must be complete.
  if (r.state == kCone) QZ_CALL(check_last_cone(r));
  switch (r.state) {
    case kStart:
      if (w == nullptr || std::strncmp(w, "NAME", 4) != 0)
        return mps_bad(r, "the file must start with a NAME line");
      if (l.f[3])
        r.title = l.f[3];
      else if (r.fixed && l.nword > 1)
        r.title = l.word[1];
      r.state = kBeforeRows;
      return 0;
    case kBeforeRows:
      if (kw(w, "ROWS")) {
        r.sense = QZ_MIN;
        r.state = kRows;
      } else if (kw(w, "OBJSENSE") || kw(w, "OBJSENCE")) {
        r.state = kObjSense;
        if (l.nword > 1) {
          if (kw(l.word[1], "MAX") || kw(l.word[1], "MAXIMIZE"))
            r.sense = QZ_MAX;
          else if (kw(l.word[1], "MIN") || kw(l.word[1], "MINIMIZE"))
            r.sense = QZ_MIN;
          else
            return mps_bad(r, "the objective sense must be MAX or MIN");
          r.haveObjSenseLine = true;
        }
      } else {
        return mps_bad(r, "ROWS or OBJSENSE expected after NAME");
      }
      return 0;
    case kObjSense:
      if (!kw(w, "ROWS") || !r.haveObjSenseLine)
        return mps_bad(r, "an OBJSENSE section needs MAX or MIN before ROWS");
      r.state = kRows;
      return 0;
    case kRows:
      if (!kw(w, "COLUMNS")) return mps_bad(r, "COLUMNS expected after ROWS");
      r.state = kColumns;
      r.freeExt.resize(static_cast<size_t>(r.freeTab.nCount), -1);
      return 0;
    case kColumns:
      mps_close_columns(r);
      if (!enter_later_section(r, w, &rc, true, true, true))
        return mps_bad(r, "unknown section after COLUMNS");
      return rc;
    case kRhs:
      if (!enter_later_section(r, w, &rc, false, true, true))
        return mps_bad(r, "unknown section after RHS");
      return rc;
    case kRanges:
      if (!enter_later_section(r, w, &rc, false, false, true))
        return mps_bad(r, "unknown section after RANGES");
      return rc;
    case kBounds:
      if (!enter_later_section(r, w, &rc, false, false, false))
        return mps_bad(r, "unknown section after BOUNDS");
      return rc;
    case kQuadObj:
    case kQuadRow:
    case kCone:
      if (!enter_later_section(r, w, &rc, true, true, true))
        return mps_bad(r, "unknown section");
      return rc;
    case kIndicators:
      if (!kw(w, "ENDATA")) return mps_bad(r, "ENDATA expected after INDICATORS");
      r.state = kEnd;
      return 0;
    default:
      return mps_bad(r, "unexpected section line");
  }
}

int mps_do_rows(MpsReader& r) {
  const MpsLine& l = r.line;
  if (l.f[1] == nullptr || l.f[2] == nullptr) return mps_bad(r, "a row needs a type and a name");
  if (std::strlen(l.f[1]) != 1) return mps_bad(r, "unknown row type");
  const char t = static_cast<char>(std::toupper(static_cast<unsigned char>(l.f[1][0])));
  const char* name = l.f[2];
  const bool clash = (r.haveObj && r.objName == name) || HashTable_Lookup(r.rowTab, name) >= 0 ||
                     HashTable_Lookup(r.freeTab, name) >= 0;
  if (clash) return mps_bad(r, "duplicate row name");
  if (t == 'E' || t == 'G' || t == 'L') {
    HashTable_Insert(r.rowTab, name);
    set_default_row(r, t);
    return 0;
  }
  if (t != 'N') return mps_bad(r, "unknown row type");
  const int ordinal = r.nNrows++;
  if (l.f[3]) {  // an extended objective row: rank, weight, tolerances, sense
    ExtObjective e;
    e.ordinal = ordinal;
    e.name = name;
    e.rank = std::atoi(l.f[3]);
    e.weight = l.f[4] ? std::atof(l.f[4]) : 0.0;
    e.absTol = l.f[5] ? std::atof(l.f[5]) : 0.0;
    e.relTol = l.f[6] ? std::atof(l.f[6]) : 0.0;
    e.sense = l.f[7] ? std::atoi(l.f[7]) : 1;
    r.extObj.push_back(std::move(e));
  }
  if (ordinal == r.nObjIndex && !r.haveObj) {
    r.objName = name;
    r.haveObj = true;
  } else if (r.keepFreeRows) {
    HashTable_Insert(r.rowTab, name);
    set_default_row(r, 'N');
  } else {
    HashTable_Insert(r.freeTab, name);
    const bool ext = !r.extObj.empty() && r.extObj.back().ordinal == ordinal;
    r.freeExt.push_back(ext ? static_cast<int>(r.extObj.size()) - 1 : -1);
  }
  return 0;
}

int mps_do_columns(MpsReader& r) {
  const MpsLine& l = r.line;
  if (l.f[3] && std::strcmp(l.f[3], "'MARKER'") == 0) return column_marker(r);
  if (l.f[1]) return mps_bad(r, "a type field on a COLUMNS data line");
  if (!l.f[2] || !l.f[3] || !l.f[4]) return mps_bad(r, "a COLUMNS line needs a column, a row and a value");
  if (r.curCol < 0 || std::strcmp(HashTable_Name(r.colTab, r.curCol), l.f[2]) != 0) {
    const int j = mps_new_column(r, l.f[2]);
    if (j < 0) return mps_bad(r, "the column appeared before (its lines must be together)");
    r.curCol = j;
    r.type[j] = r.intMode == 1 ? 'I' : (r.intMode == 2 ? 'Z' : 'C');
    if (r.openSet >= 0) {
      r.setCol.push_back(j);
      r.setOf.push_back(r.openSet);
    }
  }
  QZ_CALL(add_entry(r, l.f[3], l.f[4]));
  if (l.f[5] || l.f[6]) {
    if (!l.f[5] || !l.f[6]) return mps_bad(r, "the second row of the line needs its value");
    QZ_CALL(add_entry(r, l.f[5], l.f[6]));
  }
  r.colBeg[r.curCol + 1] = static_cast<int>(r.aRow.size());
  return 0;
}

int mps_do_rhs(MpsReader& r) { return rhs_like(r, false); }

int mps_do_ranges(MpsReader& r) { return rhs_like(r, true); }

int mps_do_bounds(MpsReader& r) {
  const MpsLine& l = r.line;
  if (l.f[1] == nullptr || l.f[3] == nullptr) return 0;
  if (!same_set(r.bndSet, r.bndSetFixed, l.f[2])) return 0;
  int j = HashTable_Lookup(r.colTab, l.f[3]);
  if (j < 0) j = mps_new_column(r, l.f[3]);
  double v = 0.0;
  if (l.f[4] && !line_number(l, l.f[4], &v)) return mps_bad(r, "the bound is not a finite number");
  const double inf = r.m.env ? r.m.env->infinity : QZ_INFINITY;
  const char* tag = l.f[1];
  const bool sc = r.scPos[j] >= 0;
  double& lo = r.lo[j];
  double& up = r.up[j];
  auto pending_to_int = [&] {
    if (r.type[j] == 'Z') r.type[j] = 'I';
  };
  const char* onSc = "only LO may follow SC on a semi-continuous column";
  if (kw(tag, "SC")) {
    if (v == 0.0) {
      lo = up = 0.0;
      return 0;
    }
    if (v < 0.0) return mps_bad(r, "a negative SC bound");
    up = v;
    const double scLow = std::min(std::min(v, 1.0), lo);
    lo = 0.0;
    if (!sc) {
      r.scPos[j] = static_cast<int>(r.scVars.size());
      r.scVars.push_back(j);
      r.scLower.push_back(scLow);
    } else {
      r.scLower[r.scPos[j]] = scLow;
    }
  } else if (kw(tag, "LO")) {
    if (sc) {
      if (v < 0.0) return mps_bad(r, "a negative lower bound on a semi-continuous column");
      r.scLower[r.scPos[j]] = v;
    } else {
      lo = v;
    }
    pending_to_int();
  } else if (kw(tag, "UP")) {
    if (sc) return mps_bad(r, onSc);
    up = v > 1e28 ? QZ_INFINITY : v;
    pending_to_int();
  } else if (kw(tag, "FX")) {
    if (sc) return mps_bad(r, onSc);
    lo = up = v;
    pending_to_int();
  } else if (kw(tag, "FR")) {
    if (sc) return mps_bad(r, onSc);
    lo = -inf;
    up = inf;
    pending_to_int();
  } else if (kw(tag, "MI")) {
    if (sc) return mps_bad(r, onSc);
    lo = -inf;
    pending_to_int();
  } else if (kw(tag, "PL")) {
    if (sc) return mps_bad(r, onSc);
    up = inf;
    pending_to_int();
  } else if (kw(tag, "BV")) {
    if (sc) return mps_bad(r, onSc);
    lo = 0.0;
    up = 1.0;
    r.type[j] = 'B';
  } else if (kw(tag, "LI") || kw(tag, "UI")) {
    if (sc) return mps_bad(r, onSc);
    const double near = std::round(v);
    const bool integral = std::fabs(v - near) <= 1e-15;
    if (kw(tag, "LI"))
      lo = integral ? near : std::ceil(v);
    else
      up = integral ? near : std::floor(v);
    r.type[j] = 'I';
  }
  return 0;
}

}  // namespace zento::io
