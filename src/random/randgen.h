// The generator record behind QZrandGen: one engine, its seed, the function slots, the
// per-thread states and buffer of the threaded variant, and an optional sampler.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <variant>
#include <vector>

#include "random/engines.h"
#include "zento.h"

namespace zento::random {
struct SampleDeleter {
  void operator()(QZsample_s* s) const;
};
}  // namespace zento::random

struct QZrandGen_s {
  int kind = 6;
  int seed = 0;
  // Bumped at every seeding, so that samplers can tell a fresh stream from a used one.
  uint64_t epoch = 0;

  double (*draw)(QZrandGen_s&) = nullptr;
  void (*set_seed)(QZrandGen_s&, int) = nullptr;
  int (*draw_int)(QZrandGen_s&, int, int) = nullptr;

  std::variant<zento::random::SysRand, zento::random::Mrg32k3a, zento::random::LcgPair,
               zento::random::ShuffleLcg, zento::random::Subtractive, zento::random::LagFib,
               zento::random::Mt19937>
      engine;

  // Threaded variant: one state per thread and a buffer read by QZgetDoubleRV.
  bool threaded = false;
  int nthreads = 1;
  std::vector<zento::random::Mt19937> states;
  std::vector<double> buffer;
  size_t bufferSize = 65536;
  size_t bufferPos = 0;

  std::unique_ptr<QZsample_s, zento::random::SampleDeleter> distr;
  // Samplers that draw from this generator; cleared when it is disposed.
  std::vector<QZsample_s*> users;
  // Serialises draws of kinds 0 to 5, buffer reads and the user list.
  std::mutex mutex;
};

namespace zento::random {

inline constexpr int kDefaultSeed = 1031;
inline constexpr size_t kBufferBlock = 4096;

// Null for an unknown kind. env may be null.
QZrandGen create_rg(QZenv env, int kind, bool threaded);
void dispose_rg(QZrandGen* prg);
void seed_rg(QZrandGen rg, int seed);
// Uniform in [0, 1) (kinds 0 and 1 may give 1.0 and 0.0 exactly as documented).
double draw_uniform(QZrandGen rg);
int draw_int(QZrandGen rg, int lo, int hi);
// Uniform strictly inside (0, 1), for quantile transforms.
double draw_open(QZrandGen rg);
[[nodiscard]] int fill_buffer(QZrandGen rg);
// Random permutation of 1..n (qz_randperm).
void randperm(QZrandGen rg, std::vector<int>& perm, int n);

void rg_add_user(QZrandGen rg, QZsample_s* s);
void rg_remove_user(QZrandGen rg, QZsample_s* s);

}  // namespace zento::random
