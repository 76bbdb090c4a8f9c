// Shared helpers of the file-format tests: models with owners, manifests, scratch files.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "zento.h"

namespace zento::test {

inline std::string data_dir() { return ZENTO_TEST_DATA; }
inline std::string instances_dir() { return ZENTO_TEST_INSTANCES; }

struct Env {
  QZenv env = nullptr;
  Env() {
    int rc = 0;
    env = QZcreateEnv(&rc);
  }
  ~Env() { QZdeleteEnv(&env); }
};

struct Model {
  QZmodel m = nullptr;
  explicit Model(QZenv env) {
    int rc = 0;
    m = QZcreateModel(env, &rc);
  }
  ~Model() { QZdeleteModel(&m); }
  operator QZmodel() const { return m; }
};

// A scratch folder removed with its content at the end of the test.
struct ScratchDir {
  std::filesystem::path path;
  ScratchDir() {
    char tmpl[] = "/tmp/zento_io_XXXXXX";
    path = mkdtemp(tmpl);
  }
  ~ScratchDir() {
    std::error_code ec;
    std::filesystem::remove_all(path, ec);
  }
  std::string file(const std::string& name) const { return (path / name).string(); }
  std::string write(const std::string& name, const std::string& text) const {
    std::ofstream(file(name), std::ios::binary) << text;
    return file(name);
  }
};

inline std::string slurp(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream ss;
  ss << in.rdbuf();
  return ss.str();
}

// A row of a hostile-file table: file, reader or layout, expected code and line.
struct HostileRow {
  std::string file, kind;
  int code = 0, line = 0;
};

inline std::vector<HostileRow> hostile_rows(const std::string& csv) {
  std::vector<HostileRow> out;
  std::ifstream in(instances_dir() + "/hostile/" + csv);
  std::string row;
  std::getline(in, row);
  while (std::getline(in, row)) {
    std::stringstream ss(row);
    HostileRow c;
    std::string code, line;
    std::getline(ss, c.file, ',');
    std::getline(ss, c.kind, ',');
    std::getline(ss, code, ',');
    std::getline(ss, line, ',');
    c.code = std::stoi(code);
    c.line = std::stoi(line);
    out.push_back(c);
  }
  return out;
}

struct ManifestRow {
  std::string name, file;
  int rows = 0, cols = 0, nonzeros = 0, integers = 0;
  std::string optimum, sense;
};

// Rows of a collection's MANIFEST.csv (name,file,rows,cols,nonzeros,integers,optimum,sense,...).
inline std::vector<ManifestRow> read_manifest(const std::string& collection) {
  std::vector<ManifestRow> out;
  std::ifstream in(data_dir() + "/" + collection + "/MANIFEST.csv");
  std::string line;
  std::getline(in, line);
  while (std::getline(in, line)) {
    std::vector<std::string> f;
    std::string cur;
    bool quoted = false;
    for (char c : line) {
      if (c == '"') {
        quoted = !quoted;
      } else if (c == ',' && !quoted) {
        f.push_back(cur);
        cur.clear();
      } else {
        cur += c;
      }
    }
    f.push_back(cur);
    if (f.size() < 8) continue;
    const bool mps = f[1].find(".mps") != std::string::npos || f[1].find(".qps") != std::string::npos;
    if (!mps) continue;
    ManifestRow r;
    r.name = f[0];
    r.file = data_dir() + "/" + collection + "/" + f[1];
    r.rows = std::stoi(f[2]);
    r.cols = std::stoi(f[3]);
    r.nonzeros = std::stoi(f[4]);
    r.integers = std::stoi(f[5]);
    r.optimum = f[6];
    r.sense = f[7];
    out.push_back(r);
  }
  return out;
}

// Everything a model holds that a file carries, for value-by-value comparison.
struct Snapshot {
  int nVars = 0, nCons = 0, nnz = 0, sense = 0;
  double objConst = 0;
  std::vector<double> c, b, l, u;
  std::vector<char> rowTypes, varTypes;
  std::vector<std::vector<std::pair<int, double>>> cols;
  std::vector<std::string> rowNames, colNames;
  std::vector<int> qcRows, qc1, qc2;
  std::vector<double> qcCoef;
  int nSC = 0;
  std::vector<int> scVars;
  std::vector<double> scL, scU;
};

inline Snapshot snapshot(QZmodel m) {
  Snapshot s;
  int nQC = 0;
  QZgetDimensions(m, &s.nVars, &s.nCons, nullptr, &s.nnz, &nQC, nullptr, nullptr, nullptr,
                  nullptr, nullptr, nullptr);
  s.c.resize(s.nVars);
  s.b.resize(s.nCons);
  s.l.resize(s.nVars);
  s.u.resize(s.nVars);
  s.rowTypes.resize(s.nCons);
  std::vector<int> beg(s.nVars + 1), len(s.nVars), rows(s.nnz + 1);
  std::vector<double> val(s.nnz + 1);
  QZgetLPData(m, &s.sense, &s.objConst, s.c.data(), s.b.data(), s.rowTypes.data(), beg.data(),
              len.data(), val.data(), rows.data(), s.l.data(), s.u.data());
  s.cols.resize(s.nVars);
  for (int j = 0; j < s.nVars; ++j)
    for (int k = beg[j]; k < beg[j] + len[j]; ++k) s.cols[j].push_back({rows[k], val[k]});
  s.varTypes.resize(s.nVars + 1);
  QZgetVarType(m, s.varTypes.data());
  s.varTypes.resize(s.nVars);
  char name[1024];
  for (int i = 0; i < s.nCons; ++i) {
    QZgetConstraintNamei(m, i, name);
    s.rowNames.push_back(name);
  }
  for (int j = 0; j < s.nVars; ++j) {
    QZgetVariableNamej(m, j, name);
    s.colNames.push_back(name);
  }
  if (nQC > 0) {
    s.qcRows.resize(nQC);
    s.qc1.resize(nQC);
    s.qc2.resize(nQC);
    s.qcCoef.resize(nQC);
    QZgetQCData(m, s.qcRows.data(), s.qc1.data(), s.qc2.data(), s.qcCoef.data());
  }
  QZgetSemiContData(m, &s.nSC, nullptr, nullptr, nullptr);
  if (s.nSC > 0) {
    s.scVars.resize(s.nSC);
    s.scL.resize(s.nSC);
    s.scU.resize(s.nSC);
    QZgetSemiContData(m, &s.nSC, s.scVars.data(), s.scL.data(), s.scU.data());
  }
  return s;
}

// Names the first difference of two snapshots, or "" when they agree value for value.
inline std::string first_difference(const Snapshot& a, const Snapshot& b) {
  if (a.nVars != b.nVars || a.nCons != b.nCons || a.nnz != b.nnz) return "dimensions";
  if (a.sense != b.sense) return "sense";
  if (a.objConst != b.objConst) return "objective constant";
  for (int j = 0; j < a.nVars; ++j) {
    if (a.c[j] != b.c[j]) return "cost of " + a.colNames[j];
    if (a.l[j] != b.l[j]) return "lower bound of " + a.colNames[j];
    if (a.u[j] != b.u[j]) return "upper bound of " + a.colNames[j];
    if (a.varTypes[j] != b.varTypes[j]) return "type of " + a.colNames[j];
    if (a.cols[j] != b.cols[j]) return "column " + a.colNames[j];
    if (a.colNames[j] != b.colNames[j]) return "name of column " + a.colNames[j];
  }
  for (int i = 0; i < a.nCons; ++i) {
    if (a.b[i] != b.b[i]) return "rhs of " + a.rowNames[i];
    if (a.rowTypes[i] != b.rowTypes[i]) return "type of " + a.rowNames[i];
    if (a.rowNames[i] != b.rowNames[i]) return "name of row " + a.rowNames[i];
  }
  if (a.qcRows != b.qcRows || a.qc1 != b.qc1 || a.qc2 != b.qc2 || a.qcCoef != b.qcCoef)
    return "quadratic terms";
  if (a.scVars != b.scVars || a.scL != b.scL || a.scU != b.scU) return "semi-continuous data";
  return "";
}

// A ZENTO file read by the line machine into `out`; the grammar reader must give the same model.
inline void read_ltx_both(QZenv env, const std::string& file, Snapshot* out) {
  Model line(env), grammar(env);
  ASSERT_EQ(QZreadZENTOFile(line, file.c_str()), 0);
  ASSERT_EQ(QZreadZENTOFileX(grammar, file.c_str()), 0);
  *out = snapshot(line);
  EXPECT_EQ(first_difference(*out, snapshot(grammar)), "");
}

#ifdef ZENTO_RUNZENTO
// One run of the command-line solver: its exit code and everything it printed.
struct CliRun {
  int code = -1;
  std::string out;
};

inline CliRun run_cli(const std::string& args) {
  CliRun r;
  const std::string cmd = std::string(ZENTO_RUNZENTO) + " " + args + " 2>&1";
  FILE* p = popen(cmd.c_str(), "r");
  char buf[4096];
  while (p && std::fgets(buf, sizeof buf, p)) r.out += buf;
  const int rc = p ? pclose(p) : -1;
  r.code = WIFEXITED(rc) ? WEXITSTATUS(rc) : -1;
  return r;
}
#endif

}  // namespace zento::test
