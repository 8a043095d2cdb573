// What the simulated drive keeps in its maintenance area: every record that the analysis menus name, where it stands,
// and what it says.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "host/commands.h"
#include "standin/defect_map.h"
#include "standin/drive_geometry.h"

namespace standin {

// A drive of one family, as it is asked for.
struct DriveKind {
  std::uint32_t model = 64;  // 11 to 64
  bool common_header = false;
  std::uint32_t seed = 1;
};

// Model boundaries of the drives: from here on they have the MCFS read command with second copies, and block offsets.
inline constexpr std::uint32_t kFirstWithMcfsRead = 43;
inline constexpr std::uint32_t kFirstWithBlockOffsets = 58;

enum class Content {
  kFsi,
  kFit,
  kPlain,
  kErrorLog,
  kDefects,
  kDefectsHeader,
  kNothing,
  kSlips,
  kSlipsHeader,
  kReassigned,
  kReassignedHeader,
  kTracks,
  kServo,
  kServoHeader,
  kScript,
  kScriptHeader,
  kResult,
  kCapacitySelect,
  kSerialNumber,
  kIdentify,
};

// A record of the FIT and the sectors that it takes. Sizes and locations as the FIT counts them.
struct StoredRecord {
  const char* name;  // eight characters
  Content content;
  RECORD_FID_DESCRIPTOR descriptor;  // numbers least significant byte first
  std::uint32_t sectors;             // really taken
  bool has_second_copy;
};

// Cylinder where the second copies stand, known to the drive alone.
inline constexpr std::uint8_t kSecondCopyCylinder = 20;

std::vector<StoredRecord> ListRecords(const DriveKind& kind, const DriveGeometry& geometry);

// What identification texts say.
std::string FirmwareCodeOf(const DriveKind& kind);
std::string FirmwareVersionOf(const DriveKind& kind);
std::string SerialNumberOf(const DriveKind& kind);
std::string ModelNameOf(const DriveKind& kind);
// Identify data of whole blocks: the drive information object's image.
std::vector<std::uint8_t> IdentifyDataOf(const DriveKind& kind, const DriveGeometry& geometry);

struct RecordSetting {
  const DriveKind& kind;
  const DriveGeometry& geometry;
  std::function<const DefectMap&()> defects;  // made when a record first needs it
  const std::vector<StoredRecord>& records;
};
// The record as the drive stores it, at most sectors x 512 bytes; zeros follow. `second_copy` holds logical sectors
// where the first has physical ones.
std::vector<std::uint8_t> FillRecord(const RecordSetting& setting, const StoredRecord& record, bool second_copy);

}  // namespace standin
