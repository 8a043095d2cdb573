#include "standin/drive_geometry.h"

#include "standin/random.h"

namespace standin {

const ZoneRow* DriveGeometry::Zone(std::int32_t head, std::int32_t zone) const {
  const bool inside =
      head >= 0 && zone >= 0 && static_cast<std::uint32_t>(head) < heads && static_cast<std::uint32_t>(zone) < zones;
  return inside ? &rows[static_cast<std::uint32_t>(head) * zones + static_cast<std::uint32_t>(zone)] : nullptr;
}

std::int32_t DriveGeometry::ZoneOf(std::int32_t head, std::int32_t cylinder) const {
  for (std::int32_t zone = 0; const ZoneRow* row = Zone(head, zone); ++zone) {
    if (cylinder >= static_cast<std::int32_t>(row->first_cylinder) &&
        cylinder <= static_cast<std::int32_t>(row->last_cylinder)) {
      return zone;
    }
  }
  return -1;
}

std::uint32_t DriveGeometry::SectorsPerTrack(std::int32_t head, std::int32_t cylinder) const {
  const ZoneRow* row = RowOf(head, cylinder);
  return row == nullptr ? 0 : row->sectors;
}

std::uint32_t DriveGeometry::Skew(std::int32_t head, std::int32_t cylinder) const {
  const ZoneRow* row = RowOf(head, cylinder);
  if (row == nullptr) return 0;
  return TrackSkew(*row, static_cast<std::uint32_t>(head), static_cast<std::uint32_t>(cylinder));
}

std::uint32_t TrackSkew(const ZoneRow& zone, std::uint32_t head, std::uint32_t cylinder) {
  if (zone.sectors == 0) return 0;
  return ((cylinder - zone.first_cylinder) * zone.cylinder_skew + head * zone.head_skew) % zone.sectors;
}

std::uint32_t PhysicalSector(const ZoneRow& zone, std::uint32_t head, std::uint32_t cylinder, std::uint32_t logical) {
  if (zone.sectors == 0) return 0;
  return (logical + zone.sectors - TrackSkew(zone, head, cylinder) + zone.sectors - 1) % zone.sectors + 1;
}

DriveGeometry MakeGeometry(std::uint32_t model, std::uint32_t seed) {
  Random random(seed, model);
  DriveGeometry geometry;
  geometry.heads = 2 + (model * 2 + seed) % 5;
  geometry.zones = 8 + (model + seed) % 9;
  const std::uint32_t outer_sectors = 180 + model * 12;
  const std::uint32_t zone_cylinders = (16000 + model * 600) / geometry.zones;
  for (std::uint32_t head = 0; head < geometry.heads; ++head) {
    std::uint32_t first = kLastReservedCylinder + 1;
    for (std::uint32_t zone = 0; zone < geometry.zones; ++zone) {
      ZoneRow row;
      row.first_cylinder = first;
      // Heads differ: each has its zone boundaries and densities a little elsewhere.
      row.last_cylinder = first + zone_cylinders - 1 + random.Below(zone_cylinders / 20);
      row.sectors =
          static_cast<std::uint16_t>(outer_sectors - zone * outer_sectors / (2 * geometry.zones) - random.Below(4) * 2);
      row.cylinder_skew = static_cast<std::uint8_t>(row.sectors / 12);
      row.head_skew = static_cast<std::uint8_t>(row.sectors / 20);
      geometry.rows.push_back(row);
      first = row.last_cylinder + 1;
    }
  }
  return geometry;
}

}  // namespace standin
