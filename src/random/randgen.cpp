// Generators: creation from the environment's parameters, seeding, draws and the buffer of
// the threaded variant.
#include "random/randgen.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <new>

#include "core/env.h"
#include "random/sampler.h"

namespace zento::random {

namespace {

template <class E>
double draw_locked(QZrandGen_s& g) {
  std::lock_guard<std::mutex> lock(g.mutex);
  return std::get<E>(g.engine).next();
}

double draw_sys(QZrandGen_s& g) {
  std::lock_guard<std::mutex> lock(g.mutex);
  return std::get<SysRand>(g.engine).next() / 2147483647.0;
}

double draw_mt(QZrandGen_s& g) { return std::get<Mt19937>(g.engine).genrand_real2(); }

double draw_buffered(QZrandGen_s& g) {
  std::lock_guard<std::mutex> lock(g.mutex);
  if (g.bufferPos >= g.buffer.size()) {
    if (fill_buffer(&g) != 0) return 0.5;
  }
  return g.buffer[g.bufferPos++];
}

void seed_engine(QZrandGen_s& g, int s) {
  switch (g.kind) {
    case 0: std::get<SysRand>(g.engine).seed(static_cast<uint32_t>(s)); break;
    case 1: std::get<Mrg32k3a>(g.engine).seed(s); break;
    case 2: std::get<LcgPair>(g.engine).seed(s); break;
    case 3: std::get<ShuffleLcg>(g.engine).seed(s); break;
    case 4: std::get<Subtractive>(g.engine).seed(s); break;
    case 5: std::get<LagFib>(g.engine).seed(s); break;
    default: std::get<Mt19937>(g.engine).init_genrand(static_cast<uint32_t>(s)); break;
  }
  for (size_t t = 0; t < g.states.size(); ++t) {
    if (t == 0) {
      g.states[t].init_genrand(static_cast<uint32_t>(s));
    } else {
      const uint32_t key[2] = {static_cast<uint32_t>(s), static_cast<uint32_t>(t)};
      g.states[t].init_by_array(key, 2);
    }
  }
  g.bufferPos = g.buffer.size();
}

void set_seed_slot(QZrandGen_s& g, int s) {
  std::lock_guard<std::mutex> lock(g.mutex);
  seed_engine(g, s);
}

int draw_int_slot(QZrandGen_s& g, int lo, int hi) {
  if (lo >= hi) return lo;
  const double u = g.draw(g);
  const double r = lo + std::trunc((1.0 - lo + static_cast<double>(hi)) * u);
  return r >= hi ? hi : static_cast<int>(r);
}

}  // namespace

QZrandGen create_rg(QZenv env, int kind, bool threaded) {
  if (kind == -1) kind = 6;
  if (kind < 0 || kind > 6) return nullptr;
  if (threaded && kind != 6) return nullptr;
  auto* g = new (std::nothrow) QZrandGen_s();
  if (g == nullptr) return nullptr;
  g->kind = kind;
  switch (kind) {
    case 0: g->engine = SysRand{}; g->draw = draw_sys; break;
    case 1: g->engine = Mrg32k3a{}; g->draw = draw_locked<Mrg32k3a>; break;
    case 2: g->engine = LcgPair{}; g->draw = draw_locked<LcgPair>; break;
    case 3: g->engine = ShuffleLcg{}; g->draw = draw_locked<ShuffleLcg>; break;
    case 4: g->engine = Subtractive{}; g->draw = draw_locked<Subtractive>; break;
    case 5: g->engine = LagFib{}; g->draw = draw_locked<LagFib>; break;
    default: g->engine = Mt19937{}; g->draw = draw_mt; break;
  }
  g->set_seed = set_seed_slot;
  g->draw_int = draw_int_slot;
  int seed = kDefaultSeed;
  if (env != nullptr) {
    seed = env->SolverPam.default_seed;
    if (threaded) {
      g->nthreads = std::max(1, env->SPPam.samp_num_threads);
      if (env->SPPam.samp_rg_buffer_size > 0) g->bufferSize = env->SPPam.samp_rg_buffer_size;
    }
  }
  if (threaded) {
    try {
      g->threaded = true;
      g->states.resize(g->nthreads);
      g->draw = draw_buffered;
    } catch (const std::bad_alloc&) {
      delete g;
      return nullptr;
    }
  }
  seed_rg(g, seed);
  return g;
}

void dispose_rg(QZrandGen* prg) {
  if (prg == nullptr || *prg == nullptr) return;
  QZrandGen g = *prg;
  {
    std::lock_guard<std::mutex> lock(g->mutex);
    for (QZsample_s* s : g->users) {
      s->rg = nullptr;
      if (s->genRg == g) {
        s->genRg = nullptr;
        s->flags &= ~kPointsCurrent;
      }
    }
    g->users.clear();
  }
  g->distr.reset();
  delete g;
  *prg = nullptr;
}

void seed_rg(QZrandGen rg, int seed) {
  if (seed == 0) {
    // The time in seconds, kept positive and inside int.
    const long long t = static_cast<long long>(std::time(nullptr));
    seed = static_cast<int>(std::llabs(t) % 2147483647);
    if (seed == 0) seed = 1;
  }
  rg->set_seed(*rg, seed);
  rg->seed = seed;
  ++rg->epoch;
}

double draw_uniform(QZrandGen rg) { return rg->draw(*rg); }

int draw_int(QZrandGen rg, int lo, int hi) { return rg->draw_int(*rg, lo, hi); }

double draw_open(QZrandGen rg) {
  const double u = rg->draw(*rg);
  constexpr double kLo = 0x1p-53;
  if (u < kLo) return kLo;
  if (u > 1.0 - kLo) return 1.0 - kLo;
  return u;
}

int fill_buffer(QZrandGen rg) {
  try {
    if (rg->buffer.size() != rg->bufferSize) rg->buffer.assign(rg->bufferSize, 0.0);
  } catch (const std::bad_alloc&) {
    return QZERR_OUT_OF_MEMORY;
  }
  double* buf = rg->buffer.data();
  const size_t n = rg->buffer.size();
  if (rg->threaded) {
    // Block b comes from state b mod T, in order, whichever thread runs it.
    const int T = rg->nthreads;
    const size_t nblocks = (n + kBufferBlock - 1) / kBufferBlock;
#pragma omp parallel for num_threads(T) schedule(static, 1)
    for (int t = 0; t < T; ++t) {
      Mt19937& st = rg->states[t];
      for (size_t b = t; b < nblocks; b += T) {
        const size_t end = std::min(n, (b + 1) * kBufferBlock);
        for (size_t i = b * kBufferBlock; i < end; ++i) buf[i] = st.genrand_real2();
      }
    }
  } else {
    for (size_t i = 0; i < n; ++i) buf[i] = rg->draw(*rg);
  }
  rg->bufferPos = 0;
  return 0;
}

void randperm(QZrandGen rg, std::vector<int>& perm, int n) {
  perm.resize(n);
  for (int i = 0; i < n; ++i) perm[i] = i + 1;
  for (int i = 1; i <= n; ++i) {
    const int j = draw_int(rg, i, n);
    std::swap(perm[i - 1], perm[j - 1]);
  }
}

void rg_add_user(QZrandGen rg, QZsample_s* s) {
  std::lock_guard<std::mutex> lock(rg->mutex);
  if (std::find(rg->users.begin(), rg->users.end(), s) == rg->users.end()) {
    rg->users.push_back(s);
  }
}

void rg_remove_user(QZrandGen rg, QZsample_s* s) {
  std::lock_guard<std::mutex> lock(rg->mutex);
  rg->users.erase(std::remove(rg->users.begin(), rg->users.end(), s), rg->users.end());
}

}  // namespace zento::random
