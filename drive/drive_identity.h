// Which drive is in front of us, and what of it is configured.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "drive/model_table.h"
#include "platform/process_wide.h"

namespace pelix {

// Where records come from, by the number that the configuration stores.
enum class AccessMode { kDisk = 0, kMcf = 1, kFile = 2, kMcw = 3 };

// The part of the configuration that says where records come from.
struct RecordAccess {
  AccessMode mode = AccessMode::kDisk;
  std::string image_file = "DEFAULT.MCF";      // MCF or MCW image
  std::string directory_file = "DEFAULT.MCD";  // MCFS directory file
};

// What identification asks of the record source.
class RecordDirectory {
 public:
  virtual ~RecordDirectory() = default;
  virtual bool LoadDirectory() = 0;  // false when it failed; the message has been shown
  virtual void ForgetDirectory() = 0;
};

// Bits of the FIT's flags word.
inline constexpr std::uint16_t kHeaderCommon = 0x0002;        // the drive's records use the Common Header
inline constexpr std::uint16_t kHeaderMcfsRead = 0x0004;      // records are read by the MCFS command; some have copies
inline constexpr std::uint16_t kHeaderBlockOffsets = 0x0008;  // large records are addressed in blocks of 64 sectors

// Filled by each successful identification; the rest of its life it holds what was configured.
struct DriveIdentity {
  std::int32_t model_index = 29;  // 11 to 64, 0 when no row matched
  std::uint32_t generation = 0;
  const char* family_name = "UNKNOWN MODEL";
  std::uint32_t model_value_1 = 0;
  std::uint32_t servo_wedge_address = 0;  // drive variable that holds the count, 0: none
  std::int32_t servo_wedges = 232;        // per revolution
  std::uint32_t model_value_2 = 0;
  std::int32_t spindle_speed = 5400;  // revolutions per minute
  std::uint32_t model_value_3 = 4;
  std::uint32_t model_value_4 = 256;
  std::uint32_t model_value_5 = 0;
  const char* prefixes = "";
  std::uint16_t header_flags = 0;  // the FIT's flags word, 0 while no directory is loaded
  bool update_spindle_speed = true;
  bool update_servo_wedges = true;
  bool use_mcfs = true;
  bool update_model = true;
  bool use_directory_file = false;
  bool display_serial_number = false;
  RecordAccess access;
  RecordDirectory* records = nullptr;       // not owned
  std::vector<std::uint8_t> identify_data;  // vendor-unique identify data, whole blocks of 512 bytes

  bool UsesCommonHeader() const { return (header_flags & kHeaderCommon) != 0; }
};

inline platform::ProcessWide<DriveIdentity> g_identity;

// Texts that the drive reported, as they came; empty when there is no drive.
std::string SerialNumber();
std::string FirmwareVersion();
std::string ModelName();
std::string FirmwareCode();

// Index of the family of that name, trailing blanks aside and whatever the case; 0 when there is none.
std::int32_t ModelIndexByName(const std::string& name);
// Without trailing blanks; "Unknown" when no row has that index.
std::string FamilyNameOf(std::int32_t model_index);

// Fills the identity from the model table and returns its model index. The maintenance-cylinder file system is used
// only with `with_directory`.
std::int32_t MatchModel(DriveIdentity* identity, const std::string& code, const std::string& version,
                        bool with_directory);

// Identifies the drive, or the identify data file when records do not come from the drive, and then loads the record
// directory or has it forgotten. False when that failed; the message has been shown and the identity kept.
bool Identify(DriveIdentity* identity, bool with_directory);

}  // namespace pelix
