// The ZENTO format writer and its dual twin.
//
// Every column is written in the objective, also with cost 0, so that the column order
// survives a write and a read. Numbers are "%+.16f" without trailing zeros, or, when that text
// does not read back to the same double, the shortest fixed text that does; the format has no
// exponents. Names are made readable by both readers of the format: characters other than
// letters, digits, '_' and '.' become '_', a name that would not start a name (a digit, a '.')
// or that reads as a keyword gets a leading '_', and a name taken already gets a suffix.
#include <charconv>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>
#include <unordered_set>
#include <vector>

#include "core/errors.h"
#include "core/model_ops.h"
#include "io/text_formats.h"
#include "io/text_write.h"
#include "lp/simplex/explicit_dual.h"

namespace zento::io {

namespace {

constexpr size_t kMaxLtxName = 255;

bool is_alpha(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool is_digit(char c) { return c >= '0' && c <= '9'; }

std::string lower(std::string s) {
  for (char& c : s)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return s;
}

bool prefix_of(const std::string& s, const char* word, size_t min) {
  return s.size() >= min && s.size() <= std::strlen(word) &&
         std::strncmp(word, s.c_str(), s.size()) == 0;
}

// Names that the grammar reader's scanner would take for a keyword.
bool reads_as_keyword(const std::string& name) {
  const std::string s = lower(name);
  if (s.rfind("title", 0) == 0) return true;
  if (prefix_of(s, "minimize", 3) || prefix_of(s, "maximize", 3) || prefix_of(s, "integer", 3))
    return true;
  for (const char* k : {"st", "st.", "s.t.", "end", "free", "gin", "slb", "sub", "qcp"})
    if (s == k) return true;
  return false;
}

bool all_digits(const std::string& s) {
  for (char c : s)
    if (!is_digit(c)) return false;
  return !s.empty();
}

}  // namespace

std::string ltx_number(double v) {
  char buf[400];
  std::snprintf(buf, sizeof buf, "%+.16f", v);
  char* dot = std::strchr(buf, '.');
  if (dot != nullptr) {
    char* e = buf + std::strlen(buf);
    while (e > dot + 1 && e[-1] == '0') --e;
    *e = '\0';
  }
  if (std::strtod(buf, nullptr) == v) return buf;
  buf[0] = v < 0 ? '-' : '+';
  const auto r =
      std::to_chars(buf + 1, buf + sizeof buf - 2, v < 0 ? -v : v, std::chars_format::fixed);
  *r.ptr = '\0';
  if (std::strchr(buf, '.') == nullptr) std::strcat(buf, ".");
  return buf;
}

std::vector<std::string> ltx_names(const Imodel& m, bool rows) {
  const int n = rows ? m.nCons : m.nVars;
  const NamePool& pool = rows ? m.names.rows : m.names.cols;
  std::vector<std::string> out(static_cast<size_t>(n));
  std::unordered_set<std::string> used;
  for (int k = 0; k < n; ++k) {
    std::string s = pool.empty() ? std::string() : std::string(pool.name(k));
    if (s.empty()) {
      char buf[32];
      std::snprintf(buf, sizeof buf, rows ? "R%07d" : "C%07d", k);
      s = buf;
    }
    // Long names are cut so that a term line stays well inside the readers' line limit.
    if (s.size() > kMaxLtxName) s.resize(kMaxLtxName);
    for (char& c : s)
      if (!is_alpha(c) && !is_digit(c) && c != '_' && c != '.') c = '_';
    const bool starts = is_alpha(s[0]) || s[0] == '_' || (rows && all_digits(s));
    if (!starts || reads_as_keyword(s)) s.insert(s.begin(), '_');
    if (!used.insert(s).second) {
      for (int suffix = 1;; ++suffix) {
        const std::string t = s + "_" + std::to_string(suffix);
        if (used.insert(t).second) {
          s = t;
          break;
        }
      }
    }
    out[static_cast<size_t>(k)] = std::move(s);
  }
  return out;
}

void TextWriter::put(const char* fmt, ...) {
  va_list ap;
  va_start(ap, fmt);
  append_vformat(buf_, fmt, ap);
  va_end(ap);
  if (buf_.size() > (1u << 20)) flush();
}

bool TextWriter::flush() {
  if (!buf_.empty() && qzs_puts(s_.get(), buf_) < 0) failed_ = true;
  buf_.clear();
  return !failed_;
}

int TextWriter::open(QZenv env, const char* fname) {
  s_.reset(qzs_fopen(env, fname, "w"));
  return s_ ? 0 : QZERR_CANNOT_OPEN_FILE;
}

int TextWriter::close() {
  flush();
  if (qzs_fclose(s_.release()) != 0) failed_ = true;
  return failed_ ? QZERR_CANNOT_OPEN_FILE : 0;
}

RowView row_view(const Imodel& m) {
  RowView r;
  const LinearData& lp = m.lp;
  r.beg.assign(static_cast<size_t>(m.nCons) + 1, 0);
  for (int j = 0; j < m.nVars; ++j)
    for (int k = lp.paiAcols[j]; k < lp.paiAcols[j] + lp.panAcols[j]; ++k)
      ++r.beg[lp.paiArows[k] + 1];
  for (int i = 0; i < m.nCons; ++i) r.beg[i + 1] += r.beg[i];
  r.col.resize(static_cast<size_t>(r.beg[m.nCons]));
  r.val.resize(r.col.size());
  std::vector<int> fill(r.beg.begin(), r.beg.end() - 1);
  for (int j = 0; j < m.nVars; ++j)
    for (int k = lp.paiAcols[j]; k < lp.paiAcols[j] + lp.panAcols[j]; ++k) {
      const int p = fill[lp.paiArows[k]]++;
      r.col[p] = j;
      r.val[p] = lp.padAcoef[k];
    }
  return r;
}

namespace {

bool linear_only(const Imodel& m) {
  return m.quad.nnz() == 0 && m.cones.count() == 0 && m.sets.count() == 0 &&
         m.semicont.vars.empty() && m.nNLPnnz == 0 && m.nNLPobjnnz == 0 && m.posd.count() == 0;
}

void write_body(const Imodel& m, TextWriter& w) {
  const LinearData& lp = m.lp;
  const std::vector<std::string> cols = ltx_names(m, false), rows = ltx_names(m, true);
  w.put(lp.dObjSense == QZ_MAX ? "MAXIMIZE\n" : "MINIMIZE\n");
  for (int j = 0; j < m.nVars; ++j)
    w.put("   %s %s\n", ltx_number(lp.padC[j]).c_str(), cols[j].c_str());
  if (lp.dObjConst != 0.0) w.put("   %s\n", ltx_number(lp.dObjConst).c_str());
  w.put("\nSUBJECT TO\n");
  const RowView rv = row_view(m);
  for (int i = 0; i < m.nCons; ++i) {
    const char t = lp.pszConTypes[i];
    const char* lead = t == 'N' ? "!" : "";
    w.put("%s%s)\n", lead, rows[i].c_str());
    for (int k = rv.beg[i]; k < rv.beg[i + 1]; ++k)
      w.put("%s   %s %s\n", lead, ltx_number(rv.val[k]).c_str(), cols[rv.col[k]].c_str());
    const char sense = t == 'L' ? '<' : t == 'E' ? '=' : t == 'G' ? '>' : '~';
    w.put("%s   %c %s \n", lead, sense, ltx_number(lp.padB[i]).c_str());
  }
  w.put("\nEND\n");
  for (int j = 0; j < m.nVars; ++j) {
    const double l = lp.padL[j], u = lp.padU[j];
    if (l <= -QZ_INFINITY && u >= QZ_INFINITY) {
      w.put("FREE %8s\n", cols[j].c_str());
      continue;
    }
    if (l != 0.0) w.put("SLB   %8s %s\n", cols[j].c_str(), ltx_number(l).c_str());
    if (u < QZ_INFINITY) w.put("SUB   %s %s\n", cols[j].c_str(), ltx_number(u).c_str());
  }
  if (lp.pszVarTypes.empty()) return;
  for (int j = 0; j < m.nVars; ++j) {
    const char t = lp.pszVarTypes[j];
    if (t != 'B' && t != 'I') continue;
    const bool binary = t == 'B' || (lp.padL[j] == 0.0 && lp.padU[j] == 1.0);
    w.put(binary ? "INT  %8s\n" : "GIN  %8s\n", cols[j].c_str());
  }
}

}  // namespace

int write_ltx_file(const Imodel& m, const char* fname) {
  if (m.modelState == QZ_STATUS_UNLOADED) return QZERR_NO_MODEL_LOADED;
  if (m.lp.dObjSense != QZ_MIN && m.lp.dObjSense != QZ_MAX) return QZERR_BAD_OBJECTIVE_SENSE;
  // The format holds linear and integer data only; anything else would be lost.
  if (!linear_only(m)) return QZERR_NOT_SUPPORTED;
  TextWriter w;
  QZ_CALL(w.open(m.env, fname));
  write_body(m, w);
  return w.close();
}

int write_dual_model(Imodel& m, int nObjSense, const std::function<int(const Imodel&)>& write) {
  if (m.modelState == QZ_STATUS_UNLOADED) return QZERR_INFO_NOT_AVAILABLE;
  if (nObjSense != 1 && nObjSense != -1) return QZERR_BAD_OBJECTIVE_SENSE;
  // Only a continuous linear model has a dual of this kind.
  if (!linear_only(m)) return QZERR_NOT_SUPPORTED;
  for (char t : m.lp.pszVarTypes)
    if (t != 'C') return QZERR_NOT_SUPPORTED;
  Imodel* dual = nullptr;
  QZ_CALL(create_model(m.env, &dual));
  struct Owner {
    Imodel*& p;
    ~Owner() { delete_model(&p); }
  } owner{dual};
  DualMap map;
  QZ_CALL(build_dual_model(m, *dual, map));
  if (nObjSense == 1)
    for (double& c : dual->lp.padC) c = -c;
  return write(*dual);
}

int write_dual_ltx_file(Imodel& m, const char* fname, int nObjSense) {
  return write_dual_model(m, nObjSense, [&](const Imodel& d) { return write_ltx_file(d, fname); });
}

}  // namespace zento::io
