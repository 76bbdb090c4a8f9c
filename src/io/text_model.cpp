// The model under construction of the text readers and its hand-over to the model.
#include "io/text_model.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "core/errors.h"
#include "core/load.h"
#include "core/log.h"
#include "core/model_ops.h"
#include "io/lp_tokens.h"

namespace zento::io {

TextModel::TextModel(Imodel& model) : m(model) {
  (void)HashTable_Initialize(cols, 10000);
  curCol.reserve(10000);
  curVal.reserve(10000);
  rowNames.pool.reserve(10000);
}

int TextModel::column(const char* name, bool insert) {
  const int j = HashTable_Lookup(cols, name);
  if (j >= 0 || !insert) return j;
  const int k = HashTable_Insert(cols, name);
  if (!lo.empty()) {
    lo.push_back(0.0);
    up.push_back(QZ_INFINITY);
  }
  if (!type.empty()) type.push_back('C');
  return k;
}

void TextModel::ensure_bounds() {
  if (!lo.empty() || ncols() == 0) {
    lo.resize(static_cast<size_t>(ncols()), 0.0);
    up.resize(static_cast<size_t>(ncols()), QZ_INFINITY);
    return;
  }
  lo.assign(static_cast<size_t>(ncols()), 0.0);
  up.assign(static_cast<size_t>(ncols()), QZ_INFINITY);
}

void TextModel::ensure_types() { type.resize(static_cast<size_t>(ncols()), 'C'); }

namespace {

// Appends the current terms as one row, repeated columns summed in their first position.
void append_row(TextModel& t, bool dropZeros) {
  const size_t n = static_cast<size_t>(t.ncols());
  if (t.scratchPos.size() < n) {
    t.scratchPos.resize(n, -1);
    t.scratch.resize(n, 0.0);
  }
  std::vector<int> order;
  order.reserve(t.curCol.size());
  for (size_t k = 0; k < t.curCol.size(); ++k) {
    const int j = t.curCol[k];
    if (t.scratchPos[j] < 0) {
      t.scratchPos[j] = static_cast<int>(order.size());
      order.push_back(j);
      t.scratch[j] = t.curVal[k];
    } else {
      t.scratch[j] += t.curVal[k];
    }
  }
  for (int j : order) {
    const double v = t.scratch[j];
    t.scratchPos[j] = -1;
    t.scratch[j] = 0.0;
    if (dropZeros && v == 0.0) continue;
    t.rowCol.push_back(j);
    t.rowVal.push_back(v);
  }
  t.rowBeg.push_back(static_cast<int>(t.rowCol.size()));
  t.clear_row();
}

}  // namespace

void TextModel::put_objective() {
  if (haveObjective) return;  // the readers store one objective, before any constraint
  haveObjective = true;
  append_row(*this, false);
}

void TextModel::put_constraint(char t, double b, const std::string& name) {
  if (!haveObjective) put_objective();
  append_row(*this, true);
  rowType.push_back(t);
  rhs.push_back(b);
  rowNames.offset.push_back(static_cast<int>(rowNames.pool.size()));
  if (name.empty()) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "R%07d", nrows() - 1);
    rowNames.pool.insert(rowNames.pool.end(), buf, buf + std::strlen(buf) + 1);
  } else {
    rowNames.pool.insert(rowNames.pool.end(), name.begin(), name.end());
    rowNames.pool.push_back('\0');
  }
}

int TextModel::finish() {
  if (!haveObjective) put_objective();
  const int nCols = ncols(), nRows = nrows();
  std::vector<double> cost(static_cast<size_t>(nCols), 0.0);
  for (int k = rowBeg[0]; k < rowBeg[1]; ++k) cost[rowCol[k]] += rowVal[k];
  // Counting pass over the constraint rows.
  std::vector<int> beg(static_cast<size_t>(nCols) + 1, 0);
  const int first = rowBeg[1];
  const int nnz = static_cast<int>(rowCol.size()) - first;
  for (int k = first; k < static_cast<int>(rowCol.size()); ++k) ++beg[rowCol[k] + 1];
  for (int j = 0; j < nCols; ++j) beg[j + 1] += beg[j];
  std::vector<int> fill(beg.begin(), beg.end() - 1), aRow(static_cast<size_t>(nnz));
  std::vector<double> aVal(static_cast<size_t>(nnz));
  for (int i = 0; i < nRows; ++i) {
    for (int k = rowBeg[i + 1]; k < rowBeg[i + 2]; ++k) {
      const int p = fill[rowCol[k]]++;
      aRow[p] = i;
      aVal[p] = rowVal[k];
    }
  }
  ensure_bounds();
  QZ_CALL(load_lp_data(m, nRows, nCols, sense, objConst, cost.data(), rhs.data(), rowType.data(),
                       nnz, beg.data(), nullptr, aVal.data(), aRow.data(), lo.data(), up.data()));
  bool typed = false;
  for (char c : type) typed = typed || c != 'C';
  if (typed) {
    ensure_types();
    QZ_CALL(load_var_type(m, type.data()));
  }
  NameData& n = m.names;
  if (n.title.empty()) n.title = title;
  n.rows = std::move(rowNames);
  n.cols = std::move(cols.names);
  HashTable_Delete(cols);
  free_hash_memory(m);
  m.fileInfo.nFileVars = nCols;
  m.NLPPam.nlp_linearity = 1;
  return 0;
}

namespace {

char row_type(char sense) { return sense == '<' ? 'L' : sense == '>' ? 'G' : 'E'; }

}  // namespace

int read_terms(TextModel& t, TermState& s, const char* p, bool objective, const char* nameStart,
               const char* nameEnd) {
  std::string name;
  while (*p != '\0') {
    if (is_white(*p)) {
      ++p;
      continue;
    }
    double v = 0.0;
    bool signOnly = false, hasSign = false;
    if (s.haveSense) {  // the right-hand side
      if (qzi_isInfinity(p)) {
        v = qzi_readInfinity(&p);
      } else if (!qzi_readValue(&p, &v, &signOnly, &hasSign) || signOnly) {
        return QZERR_ERROR_IN_INPUT;
      }
      t.put_constraint(row_type(s.sense), v, s.rowName);
      s.reset();
      continue;
    }
    if (is_sense_char(*p)) {
      // A pending value has no column; a sign alone is dropped (an empty row when alone).
      if (objective || s.haveNum) return QZERR_ERROR_IN_INPUT;
      s.sense = qzi_readSense(&p);
      s.haveSense = true;
      s.sign = 1.0;
      continue;
    }
    const bool dotName = *p == '.' && !(p[1] >= '0' && p[1] <= '9');
    if (is_value_start(*p) && !dotName) {
      if (qzi_isInfinity(p) || !qzi_readValue(&p, &v, &signOnly, &hasSign))
        return QZERR_ERROR_IN_INPUT;
      s.anyTerm = true;
      if (s.haveNum) {  // a second value: the first was a constant of the objective
        if (!objective || !hasSign) return QZERR_ERROR_IN_INPUT;
        t.objConst += s.num;
        s.haveNum = false;
        s.sign = 1.0;
      }
      if (signOnly) {
        s.sign *= v;
      } else {
        s.num = s.sign * v;
        s.haveNum = true;
        s.sign = 1.0;
      }
      continue;
    }
    if (is_name_start(*p, nameStart)) {
      const char* b = p;
      while (*p != '\0' && std::strchr(nameEnd, *p) == nullptr) ++p;
      name.assign(b, static_cast<size_t>(p - b));
      const int j = t.column(name.c_str(), true);
      if (j < 0) return QZERR_OUT_OF_MEMORY;
      t.add_term(j, s.haveNum ? s.num : s.sign);
      s.anyTerm = true;
      s.haveNum = false;
      s.sign = 1.0;
      continue;
    }
    return QZERR_ERROR_IN_INPUT;
  }
  return 0;
}

int end_objective(TextModel& t, TermState& s) {
  if (s.haveNum) t.objConst += s.num;
  t.put_objective();
  s.reset();
  return 0;
}

int qzi_file2str(QZenv env, const char* fname, std::string& out) {
  StreamPtr s(qzs_fopen(env, fname, "r"));
  if (!s) return QZERR_CANNOT_OPEN_FILE;
  out.clear();
  char buf[65536];
  size_t got = 0;
  while ((got = qzs_fread(buf, 1, sizeof buf, s.get())) > 0) out.append(buf, got);
  if (qzs_ioerr(s.get())) return QZERR_CANNOT_OPEN_FILE;
  return 0;
}

bool TextLines::next(std::string& line, bool* tooLong) {
  *tooLong = false;
  if (p_ >= end_) return false;
  ++line_;
  const void* nl = std::memchr(p_, '\n', static_cast<size_t>(end_ - p_));
  const char* e = nl ? static_cast<const char*>(nl) : end_;
  const size_t len = static_cast<size_t>(e - p_);
  *tooLong = len > static_cast<size_t>(kMaxTextLine);
  const void* zero = std::memchr(p_, '\0', len);
  line.assign(p_, zero ? static_cast<size_t>(static_cast<const char*>(zero) - p_) : len);
  p_ = nl ? e + 1 : end_;
  return true;
}

int text_printlevel(const Imodel& m) {
  return std::max(m.SplexPam.lp_printlevel, m.BandBPam.mip_printlevel);
}

void text_read_failed(Imodel& m, int line) {
  char text[64];
  std::snprintf(text, sizeof text, "Error at line %d.", line);
  m.fileErrorLine = line;
  m.fileErrorText = text;
  QZlogmod(&m, text_printlevel(m) > 1, "\n%s", text);
  clear_model(m);
}

}  // namespace zento::io
