// Numbers that look random and are the same in every run: everything the simulated drive holds comes from its seed.
#pragma once

#include <cstdint>

namespace standin {

// Mixes a number thoroughly (the finaliser of the SplitMix64 generator, Steele et al. 2014).
constexpr std::uint64_t Mix(std::uint64_t x) {
  x += 0x9E3779B97F4A7C15u;
  x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9u;
  x = (x ^ (x >> 27)) * 0x94D049BB133111EBu;
  return x ^ (x >> 31);
}

class Random {
 public:
  Random(std::uint64_t seed, std::uint64_t stream) : state_(Mix(seed) ^ Mix(stream * 0x51ED2701u + 1)) {}
  std::uint32_t Next() { return static_cast<std::uint32_t>(Mix(state_++) >> 32); }
  // From 0 to limit - 1.
  std::uint32_t Below(std::uint32_t limit) { return limit == 0 ? 0 : Next() % limit; }
  std::uint32_t Between(std::uint32_t low, std::uint32_t high) { return low + Below(high - low + 1); }

 private:
  std::uint64_t state_;
};

}  // namespace standin
