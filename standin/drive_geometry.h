// The shape of the simulated drive: heads, zones, sectors and skew of the user area, and the maintenance area before
// it.
#pragma once

#include <cstdint>
#include <vector>

#include "host/host_api.h"

namespace standin {

// The maintenance area is the reserved cylinders, 200 sectors on every track whatever the zone.
inline constexpr std::uint32_t kMaintenanceSectors = 200;
inline constexpr std::uint32_t kLastReservedCylinder = 31;

struct ZoneRow {
  std::uint32_t first_cylinder = 0;
  std::uint32_t last_cylinder = 0;
  std::uint16_t sectors = 0;       // per track
  std::uint8_t cylinder_skew = 0;  // sectors by which each cylinder's first sector lags the one before
  std::uint8_t head_skew = 0;      // sectors by which each head's lags the one before
};

// Sectors by which the first sector of a track of the zone lags.
HOST_API std::uint32_t TrackSkew(const ZoneRow& zone, std::uint32_t head, std::uint32_t cylinder);
// Physical sector, from 1, of a logical one on such a track.
HOST_API std::uint32_t PhysicalSector(const ZoneRow& zone, std::uint32_t head, std::uint32_t cylinder,
                                      std::uint32_t logical);

struct HOST_API DriveGeometry {
  std::uint32_t heads = 0;
  std::uint32_t zones = 0;
  std::vector<ZoneRow> rows;  // by head, then zone

  const ZoneRow* Zone(std::int32_t head, std::int32_t zone) const;  // null outside the drive
  // Zone of a user cylinder, -1 outside.
  std::int32_t ZoneOf(std::int32_t head, std::int32_t cylinder) const;
  std::uint32_t SectorsPerTrack(std::int32_t head, std::int32_t cylinder) const;  // 0 outside
  std::uint32_t Skew(std::int32_t head, std::int32_t cylinder) const;             // 0 outside
  // Null outside the user area.
  const ZoneRow* RowOf(std::int32_t head, std::int32_t cylinder) const { return Zone(head, ZoneOf(head, cylinder)); }
};

HOST_API DriveGeometry MakeGeometry(std::uint32_t model, std::uint32_t seed);

}  // namespace standin
