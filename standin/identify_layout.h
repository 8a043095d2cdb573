// What stands in the identify data behind the fields that the drive information object documents. Offsets in bytes.
#pragma once

#include <cstddef>

namespace standin {

inline constexpr std::size_t kIdentifySerial = 4920;   // 20 characters and a zero
inline constexpr std::size_t kIdentifyVersion = 4941;  // 8 and a zero
inline constexpr std::size_t kIdentifyModel = 4950;    // 40 and a zero
// A row for every head and zone, heads outermost: first cylinder (32 bits), last cylinder (32), sectors per track
// (16), cylinder skew (8), head skew (8), numbers least significant byte first.
inline constexpr std::size_t kIdentifyZones = 5120;
inline constexpr std::size_t kIdentifyZoneBytes = 12;
// A drive of more heads or zones is one whose zone rows nobody believes.
inline constexpr std::size_t kMostHeads = 32;
inline constexpr std::size_t kMostZones = 64;

}  // namespace standin
