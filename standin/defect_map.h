// Where the simulated drive's media is bad: scratches, thermal asperities and single spots, the same in every list and
// in every live test.
#pragma once

#include <cstdint>
#include <vector>

#include "standin/drive_geometry.h"

namespace standin {

inline constexpr std::uint8_t kThermalAsperity = 0x80;
inline constexpr std::uint8_t kScratch = 0xF0;

struct Defect {
  std::uint32_t cylinder;
  std::uint8_t head;
  std::uint8_t type;
  std::uint16_t sector;   // physical, from 1
  std::uint16_t logical;  // the same sector, unskewed
  std::uint8_t error_number;
  std::uint8_t error_code;
  std::uint8_t depth;  // how bad: 1 to 15
};

class HOST_API DefectMap {
 public:
  DefectMap(const DriveGeometry& geometry, std::uint32_t model, std::uint32_t seed);

  // By cylinder, then head, then sector; no sector twice.
  const std::vector<Defect>& defects() const { return defects_; }
  // The defect of a physical sector, null when it is good.
  const Defect* At(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector) const;
  // How bad the worst of the sector and its neighbours on the track is, 0 for a good spot.
  std::uint32_t DepthNear(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector) const;

 private:
  void AddScratch(std::uint32_t stream);
  void AddAsperity(std::uint32_t stream);
  void AddSpot(std::uint32_t stream);
  // Adds a bad sector at a fraction of the track, in 65536ths from the first logical sector.
  void Add(std::uint32_t cylinder, std::uint32_t head, std::uint32_t fraction, std::uint8_t type, std::uint32_t depth);

  const DriveGeometry& geometry_;
  std::uint64_t seed_;
  std::vector<Defect> defects_;
};

}  // namespace standin
