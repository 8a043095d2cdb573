// How the simulated drive identifies itself.
#include <algorithm>
#include <cstring>

#include "platform/format.h"
#include "standin/drive_records.h"
#include "standin/identify_layout.h"
#include "standin/random.h"
#include "standin/record_writer.h"

namespace standin {
namespace {

// Firmware prefix of a family: the one that its drives carry. Index 57 has three characters.
constexpr const char* kPrefixes[] = {
    "KF", "KD", "KC", "KA", "JJ", "JH", "JG", "JE", "JD", "JC", "HK",  "HJ", "HH", "HF", "HE", "HD", "HB", "HB",
    "HA", "WJ", "WH", "WG", "WE", "WD", "WB", "VJ", "WA", "VH", "VF",  "VE", "VD", "VA", "TK", "TJ", "TG", "TF",
    "TE", "TC", "TA", "RK", "RH", "RG", "RF", "RD", "RC", "RA", "0XV", "PK", "PJ", "PG", "PF", "PE", "PB", "PA",
};
constexpr std::uint32_t kFirstModel = 11;
constexpr std::uint32_t kVersionTellsModel = 28;  // shares its prefixes with 27

// What newer drives report of themselves; the older ones leave it to the model table.
constexpr std::uint32_t kFirstThatReports = 58;

std::uint32_t SpindleSpeedOf(std::uint32_t model) {
  return model == 64 ? 3600 : model == 62 ? 7234 : model == 61 ? 7200 : 5400;
}
std::uint32_t ServoWedgesOf(std::uint32_t model) {
  return model == 64 ? 192 : model >= 61 ? 240 : 232;
}

}  // namespace

std::string FirmwareCodeOf(const DriveKind& kind) {
  return platform::Format("%s100-%02u", kPrefixes[kind.model - kFirstModel], kind.seed % 100);
}

std::string FirmwareVersionOf(const DriveKind& kind) {
  const char* line = kind.model == kVersionTellsModel ? "QL400" : "QM100";
  return platform::Format("%s-%02u", line, kind.seed % 100);
}

std::string SerialNumberOf(const DriveKind& kind) {
  const auto number = static_cast<std::uint32_t>(Mix(kind.seed * 1000u + kind.model) % 1'000'000u);
  return platform::Format("S%02uJ%02u%06u", kind.model, kind.seed % 100, number);
}

std::string ModelNameOf(const DriveKind& kind) {
  return platform::Format("WTARN SIMULATED DRIVE %u", kind.model);
}

std::vector<std::uint8_t> IdentifyDataOf(const DriveKind& kind, const DriveGeometry& geometry) {
  const std::size_t used = kIdentifyZones + geometry.rows.size() * kIdentifyZoneBytes;
  RecordWriter data((used + kSectorBytes - 1) / kSectorBytes * kSectorBytes);
  data.PutText(6, FirmwareCodeOf(kind));
  data.Put(30, 2, geometry.heads);
  data.Put(32, 2, geometry.zones);
  data.Put(36, 4, kLastReservedCylinder);
  if (kind.model >= kFirstThatReports) {
    data.Put(34, 2, kind.model * 15);
    data.Put(4896, 2, SpindleSpeedOf(kind.model));
    data.Put(4898, 2, ServoWedgesOf(kind.model));
  }
  data.Put(4918, 2, static_cast<std::uint32_t>(data.size() / kSectorBytes));
  data.PutText(kIdentifySerial, SerialNumberOf(kind));
  data.PutText(kIdentifyVersion, FirmwareVersionOf(kind));
  data.PutText(kIdentifyModel, ModelNameOf(kind));
  std::size_t at = kIdentifyZones;
  for (const ZoneRow& row : geometry.rows) {
    data.Put(at, 4, row.first_cylinder);
    data.Put(at + 4, 4, row.last_cylinder);
    data.Put(at + 8, 2, row.sectors);
    data.Put(at + 10, 1, row.cylinder_skew);
    data.Put(at + 11, 1, row.head_skew);
    at += kIdentifyZoneBytes;
  }
  std::vector<std::uint8_t> bytes = data.Take();
  bytes.resize(data.size());
  return bytes;
}

}  // namespace standin
