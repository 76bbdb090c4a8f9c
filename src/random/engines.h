// The uniform generators behind QZrandGen, each a plain value type with its own state.
//
// Kind 0 is the additive feedback generator r[i] = r[i-3] + r[i-31] (mod 2^32) of the GNU C
// library's rand(), seeded by the Park-Miller recurrence and warmed up by 310 steps, with its
// state kept in the object instead of the process. Kind 1 is L'Ecuyer's MRG32k3a, evaluated
// in doubles with each multiplier split in two so that every product is exact; the state is a
// ring of three words per component and a phase that names the oldest. Kind 2 chains two
// Schrage-form multiplicative steps modulo 2^31 - 1. Kind 3 is L'Ecuyer's combination of two
// congruential generators with a Bays-Durham shuffle table of 32. Kind 4 is Knuth's
// subtractive generator (table of 55, lag 24). Kind 5 is the lagged subtraction x[n] =
// x[n-55] - x[n-24] (mod 1) on doubles that are multiples of 2^-53, so every step is exact.
// Kind 6 is Matsumoto and Nishimura's MT19937 with the 2002 initialisation.
#pragma once

#include <array>
#include <cstdint>

namespace zento::random {

struct SysRand {
  std::array<int32_t, 31> r{};
  int front = 3, rear = 0;
  void seed(uint32_t s);
  int32_t next();  // in [0, 2^31 - 1]
};

struct Mrg32k3a {
  std::array<double, 3> s1{12345, 12345, 12345};
  std::array<double, 3> s2{12345, 12345, 12345};
  int phase = 0;
  void seed(int s);
  double next();  // in (0, 1)
};

struct LcgPair {
  int32_t x = 1;
  void seed(int s);
  double next();
};

struct ShuffleLcg {
  int64_t x = 123456789, y = 0, z = 0;
  std::array<int64_t, 32> table{};
  void seed(int s);
  double next();  // at most 0.99999988
};

struct Subtractive {
  std::array<int32_t, 56> ma{};
  int inext = 0, inextp = 31;
  void seed(int s);
  double next();
};

struct Mt19937 {
  std::array<uint32_t, 624> mt{};
  int mti = 625;
  void init_genrand(uint32_t s);
  void init_by_array(const uint32_t* key, int len);
  uint32_t genrand_int32();
  double genrand_real2() { return genrand_int32() * (1.0 / 4294967296.0); }
  double genrand_res53();
};

struct LagFib {
  std::array<double, 55> t{};
  int pos = 55;
  void seed(int s);
  double next();
};

}  // namespace zento::random
