// Micro-benchmarks of the factorization layer: factor and update bases from netlib models and
// random sparse bases up to m = 50,000; fill against a reference sparse LU; FTRAN/BTRAN time for
// sparse and dense right-hand sides, and the entries a unit FTRAN touches.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "factor_testlib.h"
#include "lp/factor/slu.h"
#include "lu_reference.h"

namespace zento::lubench {
namespace {

using lutest::ColMatrix;
using lutest::Shape;

struct Prepared {
  ColMatrix a;
  std::vector<int> rbas;
  int64_t nnzb = 0;
  RefFill ref;
};

RefFill ref_of(const ColMatrix& a, const std::vector<int>& rbas) {
  std::vector<int> beg = {0}, idx;
  std::vector<double> val;
  for (int v : rbas) {
    std::vector<std::pair<int, double>> col;
    if (v >= a.n) {
      col.push_back({v - a.n, 1.0});
    } else {
      for (int k = a.beg[v]; k < a.beg[v + 1]; ++k) col.push_back({a.idx[k], a.val[k]});
    }
    std::sort(col.begin(), col.end());
    for (auto [i, x] : col) {
      idx.push_back(i);
      val.push_back(x);
    }
    beg.push_back(static_cast<int>(idx.size()));
  }
  return reference_fill(a.m, beg, idx, val);
}

// Benchmarks keep their inputs across repetitions; this cache lives in the benchmark only.
std::map<std::string, std::unique_ptr<Prepared>>& cache() {
  static std::map<std::string, std::unique_ptr<Prepared>> c;
  return c;
}

Prepared* netlib(const std::string& name) {
  auto& c = cache();
  auto it = c.find(name);
  if (it != c.end()) return it->second.get();
  auto p = std::make_unique<Prepared>();
  const std::string path = std::string(ZENTO_TEST_DATA_DIR) + "/netlib/" + name + ".mps.gz";
  if (!lutest::load_mps_matrix(path, &p->a)) return nullptr;
  std::mt19937 rng(1);
  // A slack-plus-structural basis: triangular crash, then m well-conditioned pivots.
  p->rbas = lutest::crash_basis(p->a, p->a.m, rng);
  p->nnzb = lutest::basis_nnz(p->a, p->rbas);
  p->ref = ref_of(p->a, p->rbas);
  return (c[name] = std::move(p)).get();
}

Prepared* random_basis(Shape shape, int m) {
  const std::string key = std::string(lutest::shape_name(shape)) + std::to_string(m);
  auto& c = cache();
  auto it = c.find(key);
  if (it != c.end()) return it->second.get();
  auto p = std::make_unique<Prepared>();
  std::mt19937 rng(7u + static_cast<unsigned>(m));
  p->a = lutest::random_matrix(m, shape, 1000, rng);
  p->rbas = lutest::first_m_basis(p->a);
  p->nnzb = lutest::basis_nnz(p->a, p->rbas);
  if (m <= 20000) p->ref = ref_of(p->a, p->rbas);
  return (c[key] = std::move(p)).get();
}

std::unique_ptr<LuFactor> make(Prepared& p, int core) {
  lu::LuOptions opt;
  opt.lucore = core;
  int err = 0;
  return QZI_lu_create(p.a.m, opt, QZI_lu_datacol, &p.a.host, &err);
}

void fill_counters(benchmark::State& st, Prepared& p, LuFactor& lu) {
  const double nb = static_cast<double>(p.nnzb);
  st.counters["m"] = p.a.m;
  st.counters["nnzB"] = nb;
  st.counters["fill"] = static_cast<double>(QZI_lu_num_lnonz(lu) + QZI_lu_num_unonz(lu)) / nb;
  if (p.ref.available) {
    st.counters["fill_klu"] = p.ref.klu;
    st.counters["fill_umf"] = p.ref.umfpack;
    st.counters["klu_ms"] = p.ref.klu_ms;
    st.counters["umf_ms"] = p.ref.umf_ms;
  }
}

void bm_factor(benchmark::State& st, Prepared* p, int core) {
  if (!p) {
    st.SkipWithError("no data");
    return;
  }
  auto lu = make(*p, core);
  for (auto _ : st) {
    if (QZI_lu_fact(*lu, p->rbas.data()) != 0) {
      st.SkipWithError("factorization failed");
      return;
    }
  }
  fill_counters(st, *p, *lu);
}

// One simplex-like step per update: FTRAN of a non-basic column with the spike saved, the
// largest |alpha| as the pivot, the update. Refactorization is outside the timing.
void bm_update(benchmark::State& st, Prepared* p, int core) {
  if (!p) {
    st.SkipWithError("no data");
    return;
  }
  const int m = p->a.m, n = p->a.n, kUpdates = 50;
  auto lu = make(*p, core);
  SpVec in(m), alpha(m);
  std::mt19937 rng(3);
  std::uniform_int_distribution<int> pick(0, n + m - 1);
  int64_t total = 0;
  for (auto _ : st) {
    st.PauseTiming();
    std::vector<int> rbas = p->rbas;
    std::vector<char> basic(n + m, 0);
    for (int v : rbas) basic[v] = 1;
    if (QZI_lu_fact(*lu, rbas.data()) != 0) {
      st.SkipWithError("factorization failed");
      return;
    }
    st.ResumeTiming();
    for (int done = 0, tries = 0; done < kUpdates && tries < 50 * kUpdates; ++tries) {
      const int var = pick(rng);
      if (basic[var]) continue;
      lu::LuColumn col;
      QZI_lu_datacol(&p->a.host, var, &col);
      std::copy(col.idx, col.idx + col.len, in.idx.begin());
      std::copy(col.val, col.val + col.len, in.val.begin());
      in.n = col.len;
      QZI_lu_ftran(*lu, in, alpha, 1);
      int s = -1;
      double best = 0.0;
      const int cnt = alpha.n < 0 ? m : alpha.n;
      for (int k = 0; k < cnt; ++k) {
        const double v = std::fabs(alpha.val[k]);
        if (v > best) {
          best = v;
          s = alpha.n < 0 ? k : alpha.idx[k];
        }
      }
      if (s < 0) continue;
      const double piv = alpha.n < 0 ? alpha.val[s] : alpha.at(s);
      if (QZI_lu_update(*lu, s, piv, 0) != 0) {
        QZI_lu_fact(*lu, rbas.data());
        continue;
      }
      basic[rbas[s]] = 0;
      basic[var] = 1;
      rbas[s] = var;
      ++done;
      ++total;
    }
  }
  // Seconds per update (the timed part is only FTRAN + update).
  st.counters["s_per_update"] = benchmark::Counter(
      static_cast<double>(total), benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
  st.counters["pnonz"] = static_cast<double>(QZI_lu_num_pnonz(*lu));
}

// FTRAN or BTRAN with `nz` random entries per rhs (nz >= m: dense); for SLU also the
// entries touched per nonzero of the result.
void bm_solve(benchmark::State& st, Prepared* p, int core, int nz, bool btran) {
  const int m = p->a.m;
  auto lu = make(*p, core);
  if (QZI_lu_fact(*lu, p->rbas.data()) != 0) {
    st.SkipWithError("factorization failed");
    return;
  }
  std::mt19937 rng(5);
  std::vector<SpVec> rhs(16, SpVec(m));
  for (auto& r : rhs) lutest::random_rhs(m, nz, rng, &r);
  SpVec out(m);
  const auto* slu = dynamic_cast<const lu::Slu*>(&lu->engine());
  int64_t k = 0, res_nnz = 0, work = 0;
  for (auto _ : st) {
    const SpVec& b = rhs[k++ & 15];
    if (btran)
      QZI_lu_btran(*lu, b, out);
    else
      QZI_lu_ftran(*lu, b, out, 0);
    res_nnz += out.n < 0 ? m : out.n;
    if (slu) work += slu->last_ftran_work();
  }
  st.counters["m"] = m;
  st.counters["result_nnz"] = static_cast<double>(res_nnz) / std::max<int64_t>(1, k);
  if (slu) {
    st.counters["touched"] = static_cast<double>(work) / std::max<int64_t>(1, k);
    st.counters["touched_per_nnz"] = static_cast<double>(work) / std::max<int64_t>(1, res_nnz);
    st.counters["touched_over_m"] = static_cast<double>(work) / std::max<int64_t>(1, k) / m;
  }
}

const char* kNetlib[] = {"afiro",  "adlittle", "blend",   "bandm",   "scfxm2",  "ship12s",
                         "25fv47", "bnl1",     "degen2",  "e226",    "fffff800", "greenbeb",
                         "maros",  "maros-r7", "pilot",   "pilot4",  "qap8",    "sctap2",
                         "stocfor2", "80bau3b", "d6cube", "wood1p",  "fit2d",   "shell"};

void register_all() {
  for (const char* name : kNetlib) {
    for (int core : {4, 3}) {
      benchmark::RegisterBenchmark(
          (std::string("NetlibFactor/") + name + (core == 3 ? "/clu" : "/slu")).c_str(),
          [name, core](benchmark::State& st) { bm_factor(st, netlib(name), core); })
          ->Unit(benchmark::kMillisecond);
      benchmark::RegisterBenchmark(
          (std::string("NetlibUpdate50/") + name + (core == 3 ? "/clu" : "/slu")).c_str(),
          [name, core](benchmark::State& st) { bm_update(st, netlib(name), core); })
          ->Unit(benchmark::kMillisecond);
    }
  }
  struct R {
    Shape shape;
    int m;
  };
  // Random bases up to m = 50,000. The shapes with a large random kernel (slackmix, neartri,
  // randdiag) fill like dense matrices at large m and stay at 10,000 and below.
  for (R r : {R{Shape::kHyperSparse, 1000}, R{Shape::kHyperSparse, 10000},
              R{Shape::kHyperSparse, 50000}, R{Shape::kSlackMix, 10000}, R{Shape::kBlock, 10000},
              R{Shape::kBlock, 50000}, R{Shape::kBanded, 50000}, R{Shape::kNearTriangular, 10000},
              R{Shape::kRandomDiag, 2000}, R{Shape::kDenseKernel, 20000}}) {
    const std::string tag = std::string(lutest::shape_name(r.shape)) + "/" + std::to_string(r.m);
    for (int core : {4, 3}) {
      if (core == 3 && r.m > 10000 && r.shape != Shape::kHyperSparse) continue;
      benchmark::RegisterBenchmark(
          ("RandomFactor/" + tag + (core == 3 ? "/clu" : "/slu")).c_str(),
          [r, core](benchmark::State& st) { bm_factor(st, random_basis(r.shape, r.m), core); })
          ->Unit(benchmark::kMillisecond);
    }
    benchmark::RegisterBenchmark(("RandomUpdate50/" + tag + "/slu").c_str(),
                                 [r](benchmark::State& st) {
                                   bm_update(st, random_basis(r.shape, r.m), 4);
                                 })
        ->Unit(benchmark::kMillisecond);
  }
  // Solves: unit, sparse (1% of m) and dense right-hand sides.
  auto solves = [](const std::string& tag, std::function<Prepared*()> get) {
    for (int kind = 0; kind < 3; ++kind) {
      const char* kname = kind == 0 ? "unit" : (kind == 1 ? "sparse1pct" : "dense");
      for (bool bt : {false, true}) {
        benchmark::RegisterBenchmark(
            ((bt ? "Btran/" : "Ftran/") + tag + "/" + kname).c_str(),
            [get, kind, bt](benchmark::State& st) {
              Prepared* p = get();
              if (!p) {
                st.SkipWithError("no data");
                return;
              }
              const int m = p->a.m;
              const int nz = kind == 0 ? 1 : (kind == 1 ? std::max(1, m / 100) : m);
              bm_solve(st, p, 4, nz, bt);
            })
            ->Unit(benchmark::kMicrosecond);
      }
    }
  };
  for (R r : {R{Shape::kHyperSparse, 10000}, R{Shape::kHyperSparse, 50000},
              R{Shape::kBlock, 50000}, R{Shape::kBanded, 50000}}) {
    solves(std::string(lutest::shape_name(r.shape)) + "/" + std::to_string(r.m),
           [r] { return random_basis(r.shape, r.m); });
  }
  for (const char* name : {"80bau3b", "greenbeb", "maros-r7", "pilot", "stocfor2"})
    solves(std::string("netlib/") + name, [name] { return netlib(name); });
}

}  // namespace
}  // namespace zento::lubench

int main(int argc, char** argv) {
  zento::lubench::register_all();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
