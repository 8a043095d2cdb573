#include "standin/defect_map.h"

#include <algorithm>

#include "standin/random.h"

namespace standin {
namespace {

constexpr std::uint32_t kWholeTrack = 65536;
constexpr std::uint8_t kSpotTypes[] = {0x11, 0x1F, 0x7E, 0x13};

std::uint64_t SectorKey(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector) {
  return std::uint64_t{cylinder} << 32 | std::uint64_t{head} << 16 | sector;
}

std::uint64_t KeyOf(const Defect& defect) {
  return SectorKey(defect.cylinder, defect.head, defect.sector);
}

std::uint32_t LastCylinder(const DriveGeometry& geometry, std::uint32_t head) {
  return geometry.rows[(head + 1) * geometry.zones - 1].last_cylinder;
}

}  // namespace

DefectMap::DefectMap(const DriveGeometry& geometry, std::uint32_t model, std::uint32_t seed)
    : geometry_(geometry), seed_(Mix(model) ^ seed) {
  Random random(seed_, 0);
  const std::uint32_t scratches = random.Between(4, 7);
  const std::uint32_t asperities = random.Between(10, 20);
  const std::uint32_t spots = random.Between(60, 120);
  for (std::uint32_t i = 0; i < scratches; ++i) AddScratch(1000 + i);
  for (std::uint32_t i = 0; i < asperities; ++i) AddAsperity(2000 + i);
  for (std::uint32_t i = 0; i < spots; ++i) AddSpot(3000 + i);
  std::stable_sort(defects_.begin(), defects_.end(),
                   [](const Defect& a, const Defect& b) { return KeyOf(a) < KeyOf(b); });
  const auto twice = std::unique(defects_.begin(), defects_.end(),
                                 [](const Defect& a, const Defect& b) { return KeyOf(a) == KeyOf(b); });
  defects_.erase(twice, defects_.end());
}

void DefectMap::Add(std::uint32_t cylinder, std::uint32_t head, std::uint32_t fraction, std::uint8_t type,
                    std::uint32_t depth) {
  const ZoneRow* zone = geometry_.RowOf(static_cast<std::int32_t>(head), static_cast<std::int32_t>(cylinder));
  if (zone == nullptr) return;
  Defect defect = {};
  defect.cylinder = cylinder;
  defect.head = static_cast<std::uint8_t>(head);
  defect.type = type;
  defect.logical = static_cast<std::uint16_t>(fraction % kWholeTrack * zone->sectors / kWholeTrack + 1);
  defect.sector = static_cast<std::uint16_t>(PhysicalSector(*zone, head, cylinder, defect.logical));
  defect.depth = static_cast<std::uint8_t>(std::clamp(depth, 1u, 15u));
  defect.error_number = defect.depth;
  defect.error_code = static_cast<std::uint8_t>(type == kThermalAsperity ? 0x1D : 0x10 + depth % 8);
  defects_.push_back(defect);
}

// A line across neighbouring tracks at a slowly turning angle.
void DefectMap::AddScratch(std::uint32_t stream) {
  Random random(seed_, stream);
  const std::uint32_t head = random.Below(geometry_.heads);
  const std::uint32_t length = random.Between(40, 250);
  const std::uint32_t first = random.Between(kLastReservedCylinder + 1, LastCylinder(geometry_, head) - length);
  const std::uint32_t turn = random.Between(20, 120);
  std::uint32_t fraction = random.Below(kWholeTrack);
  for (std::uint32_t i = 0; i < length; ++i, fraction += turn) {
    if (random.Below(8) == 0) continue;  // the head skipped
    Add(first + i, head, fraction, kScratch, random.Between(4, 12));
  }
}

// A small hard spot: the same angle on a few tracks, worst in the middle.
void DefectMap::AddAsperity(std::uint32_t stream) {
  Random random(seed_, stream);
  const std::uint32_t head = random.Below(geometry_.heads);
  const std::uint32_t radius = random.Between(1, 5);
  const std::uint32_t centre = random.Between(kLastReservedCylinder + 10, LastCylinder(geometry_, head) - 10);
  const std::uint32_t fraction = random.Below(kWholeTrack);
  for (std::uint32_t i = 0; i <= 2 * radius; ++i) {
    const std::uint32_t distance = i > radius ? i - radius : radius - i;
    Add(centre - radius + i, head, fraction, kThermalAsperity, 15 - 2 * distance);
  }
}

void DefectMap::AddSpot(std::uint32_t stream) {
  Random random(seed_, stream);
  const std::uint32_t head = random.Below(geometry_.heads);
  const std::uint32_t cylinder = random.Between(kLastReservedCylinder + 1, LastCylinder(geometry_, head));
  Add(cylinder, head, random.Below(kWholeTrack), kSpotTypes[random.Below(4)], random.Between(1, 9));
}

const Defect* DefectMap::At(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector) const {
  const std::uint64_t key = SectorKey(cylinder, head, sector);
  const auto found =
      std::lower_bound(defects_.begin(), defects_.end(), key,
                       [](const Defect& defect, std::uint64_t wanted) { return KeyOf(defect) < wanted; });
  return found == defects_.end() || KeyOf(*found) != key ? nullptr : &*found;
}

std::uint32_t DefectMap::DepthNear(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector) const {
  std::uint32_t depth = 0;
  for (std::uint32_t neighbour = sector - 1; neighbour <= sector + 1; ++neighbour) {
    const Defect* defect = At(cylinder, head, neighbour);
    if (defect == nullptr) continue;
    depth = std::max<std::uint32_t>(depth, neighbour == sector ? defect->depth : defect->depth / 2u);
  }
  return depth;
}

}  // namespace standin
