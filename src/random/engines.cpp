// The uniform generators: seeding and one step of each.
#include "random/engines.h"

#include <cmath>
#include <cstdlib>

namespace zento::random {

// ---- Kind 0 ----
void SysRand::seed(uint32_t s) {
  if (s == 0) s = 1;
  r[0] = static_cast<int32_t>(s);
  int32_t word = static_cast<int32_t>(s);
  for (int i = 1; i < 31; ++i) {
    // 16807 * word mod (2^31 - 1) in Schrage's form.
    const int64_t hi = word / 127773;
    const int64_t lo = word % 127773;
    int64_t w = 16807 * lo - 2836 * hi;
    if (w < 0) w += 2147483647;
    word = static_cast<int32_t>(w);
    r[i] = word;
  }
  front = 3;
  rear = 0;
  for (int k = 0; k < 310; ++k) next();
}

int32_t SysRand::next() {
  const uint32_t val = static_cast<uint32_t>(r[front]) + static_cast<uint32_t>(r[rear]);
  r[front] = static_cast<int32_t>(val);
  if (++front >= 31) {
    front = 0;
    ++rear;
  } else if (++rear >= 31) {
    rear = 0;
  }
  return static_cast<int32_t>(val >> 1);
}

// ---- Kind 1 ----
namespace {
constexpr double kM1 = 4294967087.0;

uint64_t splitmix64(uint64_t& x) {
  uint64_t z = (x += 0x9E3779B97F4A7C15ull);
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
  return z ^ (z >> 31);
}
}  // namespace

void Mrg32k3a::seed(int s) {
  // Any state with a nonzero word in each component is valid; spread the seed over all six.
  uint64_t x = static_cast<uint64_t>(static_cast<int64_t>(s));
  for (int i = 0; i < 3; ++i) s1[i] = static_cast<double>(splitmix64(x) % 4294967087ull);
  for (int i = 0; i < 3; ++i) s2[i] = static_cast<double>(splitmix64(x) % 4294944443ull);
  if (s1[0] == 0 && s1[1] == 0 && s1[2] == 0) s1[0] = 1;
  if (s2[0] == 0 && s2[1] == 0 && s2[2] == 0) s2[0] = 1;
  phase = 0;
}

double Mrg32k3a::next() {
  const int k = phase, k1 = (phase + 1) % 3, k2 = (phase + 2) % 3;
  // The recursions x = 1403580 x[-2] - 810728 x[-3] (mod m1) and y = 527612 y[-1] -
  // 1370589 y[-3] (mod m2) in 64-bit integers: every product is below 2^63, so this is the
  // exact value that the split-multiplier double form computes, without its fmod calls.
  constexpr int64_t m1 = 4294967087LL, m2 = 4294944443LL;
  int64_t u = (1403580LL * static_cast<int64_t>(s1[k1]) - 810728LL * static_cast<int64_t>(s1[k])) % m1;
  if (u < 0) u += m1;
  int64_t v = (527612LL * static_cast<int64_t>(s2[k2]) - 1370589LL * static_cast<int64_t>(s2[k])) % m2;
  if (v < 0) v += m2;
  s1[k] = static_cast<double>(u);
  s2[k] = static_cast<double>(v);
  phase = k1;
  const double diff = static_cast<double>(u - v);
  return (diff > 0 ? diff : diff + kM1) * (1.0 / (kM1 + 1.0));
}

// ---- Kind 2 ----
void LcgPair::seed(int s) {
  int64_t v = std::llabs(static_cast<int64_t>(s));
  if (v >= 2147483647) v -= 2147483647;
  // Zero is a fixed point of a multiplicative step.
  x = static_cast<int32_t>(v == 0 ? 1 : v);
}

double LcgPair::next() {
  int32_t v = -5245 * (x / 100778) + 21309 * (x % 100778);
  v += (v >> 31) & 2147483647;
  v = -8838 * (v / 61594) + 34865 * (v % 61594);
  v += (v >> 31) & 2147483647;
  x = v;
  return v * 4.656612875e-10;
}

// ---- Kind 3 ----
void ShuffleLcg::seed(int s) {
  int64_t v = std::llabs(static_cast<int64_t>(s));
  if (v == 0) v = 1;
  y = v;
  x = v;
  for (int j = 39; j >= 0; --j) {
    x = 40014 * (x % 53668) - 12211 * (x / 53668);
    if (x < 0) x += 2147483563;
    if (j < 32) table[j] = x;
  }
  z = table[0];
}

double ShuffleLcg::next() {
  x = 40014 * (x % 53668) - 12211 * (x / 53668);
  if (x < 0) x += 2147483563;
  y = 40692 * (y % 52774) - 3791 * (y / 52774);
  if (y < 0) y += 2147483399;
  const int j = static_cast<int>(z / 67108862);
  z = table[j] - y;
  table[j] = x;
  if (z < 1) z += 2147483562;
  const double r = z * 4.656613057391769e-10;
  return r > 0.99999988 ? 0.99999988 : r;
}

// ---- Kind 4 ----
void Subtractive::seed(int s) {
  constexpr int32_t kBig = 1000000000;
  int64_t mj = std::llabs(161803398 - std::llabs(static_cast<int64_t>(s))) % kBig;
  ma[55] = static_cast<int32_t>(mj);
  int64_t mk = 1;
  for (int i = 1; i <= 54; ++i) {
    const int ii = (21 * i) % 55;
    ma[ii] = static_cast<int32_t>(mk);
    mk = mj - mk;
    if (mk < 0) mk += kBig;
    mj = ma[ii];
  }
  for (int k = 1; k <= 4; ++k) {
    for (int i = 1; i <= 55; ++i) {
      ma[i] -= ma[1 + (i + 30) % 55];
      if (ma[i] < 0) ma[i] += kBig;
    }
  }
  inext = 0;
  inextp = 31;
}

double Subtractive::next() {
  if (++inext == 56) inext = 1;
  if (++inextp == 56) inextp = 1;
  int32_t mj = ma[inext] - ma[inextp];
  if (mj < 0) mj += 1000000000;
  ma[inext] = mj;
  return mj * 1e-9;
}

// ---- Kind 6 ----
void Mt19937::init_genrand(uint32_t s) {
  mt[0] = s;
  for (int i = 1; i < 624; ++i) {
    mt[i] = 1812433253u * (mt[i - 1] ^ (mt[i - 1] >> 30)) + static_cast<uint32_t>(i);
  }
  mti = 624;
}

void Mt19937::init_by_array(const uint32_t* key, int len) {
  init_genrand(19650218u);
  int i = 1, j = 0;
  for (int k = (624 > len ? 624 : len); k > 0; --k) {
    mt[i] = (mt[i] ^ ((mt[i - 1] ^ (mt[i - 1] >> 30)) * 1664525u)) + key[j] +
            static_cast<uint32_t>(j);
    ++i;
    ++j;
    if (i >= 624) {
      mt[0] = mt[623];
      i = 1;
    }
    if (j >= len) j = 0;
  }
  for (int k = 623; k > 0; --k) {
    mt[i] = (mt[i] ^ ((mt[i - 1] ^ (mt[i - 1] >> 30)) * 1566083941u)) - static_cast<uint32_t>(i);
    ++i;
    if (i >= 624) {
      mt[0] = mt[623];
      i = 1;
    }
  }
  mt[0] = 0x80000000u;
}

uint32_t Mt19937::genrand_int32() {
  constexpr uint32_t kUpper = 0x80000000u, kLower = 0x7fffffffu, kMatrix = 0x9908b0dfu;
  if (mti >= 624) {
    if (mti == 625) init_genrand(5489u);
    int kk = 0;
    for (; kk < 624 - 397; ++kk) {
      const uint32_t y = (mt[kk] & kUpper) | (mt[kk + 1] & kLower);
      mt[kk] = mt[kk + 397] ^ (y >> 1) ^ ((y & 1u) ? kMatrix : 0u);
    }
    for (; kk < 623; ++kk) {
      const uint32_t y = (mt[kk] & kUpper) | (mt[kk + 1] & kLower);
      mt[kk] = mt[kk - (624 - 397)] ^ (y >> 1) ^ ((y & 1u) ? kMatrix : 0u);
    }
    const uint32_t y = (mt[623] & kUpper) | (mt[0] & kLower);
    mt[623] = mt[396] ^ (y >> 1) ^ ((y & 1u) ? kMatrix : 0u);
    mti = 0;
  }
  uint32_t y = mt[mti++];
  y ^= y >> 11;
  y ^= (y << 7) & 0x9d2c5680u;
  y ^= (y << 15) & 0xefc60000u;
  y ^= y >> 18;
  return y;
}

double Mt19937::genrand_res53() {
  const uint32_t a = genrand_int32() >> 5, b = genrand_int32() >> 6;
  return (a * 67108864.0 + b) * (1.0 / 9007199254740992.0);
}

// ---- Kind 5 ----
void LagFib::seed(int s) {
  Mt19937 mt;
  mt.init_genrand(static_cast<uint32_t>(s));
  for (double& v : t) v = mt.genrand_res53();
  // An odd last bit somewhere keeps the generator on its longest cycle.
  const double scaled = std::floor(t[0] * 9007199254740992.0);
  t[0] = (static_cast<double>(static_cast<uint64_t>(scaled) | 1u)) / 9007199254740992.0;
  pos = 55;
}

double LagFib::next() {
  if (pos >= 55) {
    for (int i = 0; i < 24; ++i) {
      double d = t[i] - t[i + 31];
      if (d < 0) d += 1.0;
      t[i] = d;
    }
    for (int i = 24; i < 55; ++i) {
      double d = t[i] - t[i - 24];
      if (d < 0) d += 1.0;
      t[i] = d;
    }
    pos = 0;
  }
  return t[pos++];
}

}  // namespace zento::random
