#include "drive/drive_identity.h"

#include <algorithm>
#include <cstring>

#include "drive/commands.h"
#include "drive/host_services.h"
#include "platform/files.h"

namespace pelix {
namespace {

constexpr char kIdentifyFile[] = "VU_IDFY.bin";

template <std::size_t kRoom>
std::string TextOf(const char (&field)[kRoom]) {
  return std::string(field, std::find(field, field + kRoom, '\0'));
}

const IDENTIFY_RECORD* IdentifyRecord() {
  return g_host->request == nullptr ? nullptr : g_host->request->identify;
}

bool IsLetter(char c) {
  return platform::UpperAscii(c) >= 'A' && platform::UpperAscii(c) <= 'Z';
}
bool IsLetterOrDigit(char c) {
  return IsLetter(c) || (c >= '0' && c <= '9');
}

// What a row's prefixes must contain: two characters after a letter, three after a digit, none after anything else.
std::string SearchKey(const std::string& code, const std::string& version) {
  const std::string& source = code.empty() ? version : code;
  if (source.empty() || !IsLetterOrDigit(source[0])) return "";
  std::string key = source.substr(0, IsLetter(source[0]) ? 2 : 3);
  std::transform(key.begin(), key.end(), key.begin(), platform::UpperAscii);
  return key;
}

constexpr HostWord kSharedPrefixModel = 28;  // told from the next row, which has the same prefixes, by its version
constexpr char kSharedPrefixVersion[] = "QL400";

const ModelRow* FindRowByFirmware(const std::string& code, const std::string& version) {
  const std::string key = SearchKey(code, version);
  for (const ModelRow& row : kModelTable) {
    if (std::strstr(row.prefixes, key.c_str()) == nullptr) continue;
    if (row.model_index == kSharedPrefixModel && version.find(kSharedPrefixVersion) == std::string::npos) continue;
    return &row;
  }
  return nullptr;
}

const ModelRow* FindRowByIndex(std::int32_t index) {
  for (const ModelRow& row : kModelTable) {
    if (static_cast<std::int32_t>(row.model_index) == index) return &row;
  }
  return nullptr;
}

// Korean in code page 949: the model is set manually, data and results may be wrong.
constexpr char kManualModelMessage[] =
    "Update model is set manually. Drive data and test result might be wrong with this mode. \n"
    "\xB8\xF0\xB5\xA8 \xBE\xF7\xB5\xA5\xC0\xCC\xC6\xAE\xB0\xA1 \xBC\xF6\xB5\xBF\xC0\xB8\xB7\xCE "
    "\xBC\xB3\xC1\xA4\xB5\xC7\xBE\xEE \xC0\xD6\xBD\xC0\xB4\xCF\xB4\xD9. \xC0\xCC "
    "\xB8\xF0\xB5\xE5\xBF\xA1\xBC\xAD\xB4\xC2 \xB5\xE5\xB6\xF3\xC0\xCC\xBA\xEA "
    "\xB5\xA5\xC0\xCC\xC5\xCD\xBF\xCD \xC5\xD7\xBD\xBA\xC6\xAE \xB0\xE1\xB0\xFA\xB0\xA1 "
    "\xC0\xDF\xB8\xF8\xB5\xC9 \xBC\xF6 \xC0\xD6\xBD\xC0\xB4\xCF\xB4\xD9.";

void SetUnknownModel(DriveIdentity* identity) {
  identity->model_index = 0;
  identity->generation = 0;
  identity->family_name = "UNKNOWN MODEL";
  identity->model_value_1 = 0;
  identity->servo_wedge_address = 0;
  identity->servo_wedges = 0;
  identity->model_value_2 = 0;
  identity->spindle_speed = 0;
  identity->model_value_3 = 4;
  identity->model_value_4 = 256;
  identity->model_value_5 = 0;
  identity->prefixes = "";
}

std::int32_t FindServoWedges(const DriveIdentity& identity, const ModelRow& row, bool with_directory) {
  const C_DRIVEVUINFO* drive = DriveInfo();
  if (drive != nullptr && drive->servo_wedges != 0) return drive->servo_wedges;
  std::uint16_t counted = 0;
  const bool on_drive = row.servo_wedge_address != 0 && with_directory && identity.access.mode == AccessMode::kDisk;
  if (on_drive && ReadExtendedWord(static_cast<std::uint16_t>(row.servo_wedge_address), &counted) == 0) return counted;
  return static_cast<std::int32_t>(row.servo_wedges);
}

constexpr HostWord kFasterWithThreeHeads = 30;
constexpr std::int32_t kFasterSpindleSpeed = 5760;

void SetSpindleSpeed(const ModelRow& row, DriveIdentity* identity) {
  const C_DRIVEVUINFO* drive = DriveInfo();
  if (drive != nullptr && drive->spindle_speed != 0) {
    identity->spindle_speed = drive->spindle_speed;
    identity->model_value_1 = drive->model_value;
  } else if (row.model_index == kFasterWithThreeHeads && drive != nullptr && drive->heads >= 3) {
    identity->spindle_speed = kFasterSpindleSpeed;
  } else {
    identity->spindle_speed = static_cast<std::int32_t>(row.spindle_speed);
  }
}

// The first work buffer, filled from the identify data file and zeros behind. False when there is no such file, or
// nothing in it.
bool LoadIdentifyFile() {
  std::string content;
  if (!platform::ReadWholeFile(kIdentifyFile, kWorkBufferBytes, &content) || content.empty()) return false;
  std::uint8_t* buffer = g_host->work_buffers[0].get();
  std::memset(buffer, 0, kWorkBufferBytes);
  std::memcpy(buffer, content.data(), content.size());
  return true;
}

// False, and a message, when the drive cannot take a command now.
bool DriveIsReady() {
  TASKFILE registers = {};
  GetTaskFile(&registers);
  if ((registers.status & kStatusBusy) != 0) {
    ShowMessage("DRIVE IS BUSY");
    return false;
  }
  if ((registers.status & kStatusReady) == 0) {
    ShowMessage("DRIVE IS NOT READY");
    return false;
  }
  return true;
}

}  // namespace

std::string SerialNumber() {
  return IdentifyRecord() == nullptr ? "" : TextOf(IdentifyRecord()->serial_number);
}
std::string FirmwareVersion() {
  return IdentifyRecord() == nullptr ? "" : TextOf(IdentifyRecord()->firmware_version);
}
std::string ModelName() {
  return IdentifyRecord() == nullptr ? "" : TextOf(IdentifyRecord()->model_name);
}
std::string FirmwareCode() {
  return DriveInfo() == nullptr ? "" : TextOf(DriveInfo()->firmware_code);
}

std::int32_t ModelIndexByName(const std::string& name) {
  for (const ModelRow& row : kModelTable) {
    if (platform::EqualIgnoringCase(platform::WithoutTrailingBlanks(row.family_name), name)) {
      return static_cast<std::int32_t>(row.model_index);
    }
  }
  return 0;
}

std::string FamilyNameOf(std::int32_t model_index) {
  const ModelRow* row = FindRowByIndex(model_index);
  return row == nullptr ? "Unknown" : platform::WithoutTrailingBlanks(row->family_name);
}

std::int32_t MatchModel(DriveIdentity* identity, const std::string& code, const std::string& version,
                        bool with_directory) {
  const ModelRow* row = nullptr;
  if (identity->update_model) {
    row = FindRowByFirmware(code, version);
  } else {
    // Not through ShowMessage: whoever runs without a screen must find this in the log too.
    platform::ShowMessageBox(kManualModelMessage, platform::MessageStyle::kOk);
    row = FindRowByIndex(identity->model_index);
  }
  if (row == nullptr) {
    SetUnknownModel(identity);
    return 0;
  }
  identity->model_index = static_cast<std::int32_t>(row->model_index);
  identity->generation = static_cast<std::uint32_t>(row->generation);
  identity->family_name = row->family_name;
  identity->model_value_1 = static_cast<std::uint32_t>(row->model_value_1);
  if (identity->update_servo_wedges) {
    identity->servo_wedge_address = static_cast<std::uint32_t>(row->servo_wedge_address);
    identity->servo_wedges = FindServoWedges(*identity, *row, with_directory);
  }
  identity->model_value_2 = static_cast<std::uint32_t>(row->model_value_2);
  if (identity->update_spindle_speed) SetSpindleSpeed(*row, identity);
  identity->model_value_3 = static_cast<std::uint32_t>(row->model_value_3);
  identity->model_value_4 = static_cast<std::uint32_t>(row->model_value_4);
  identity->model_value_5 = static_cast<std::uint32_t>(row->model_value_5);
  identity->prefixes = row->prefixes;
  return identity->model_index;
}

bool Identify(DriveIdentity* identity, bool with_directory) {
  const bool use_directory = with_directory && identity->use_mcfs;
  const bool from_drive = identity->access.mode == AccessMode::kDisk;
  if (from_drive && !DriveIsReady()) return false;
  std::uint8_t* buffer = g_host->work_buffers[0].get();
  const bool identified = (from_drive || LoadIdentifyFile()) && IdentifyDrive(buffer, !from_drive) == 0;
  if (!identified) {
    ShowMessage("IDENTIFY COMMAND FAIL");
    return false;
  }
  const std::size_t bytes = std::min<std::size_t>(DriveInfo()->identify_blocks * kSectorBytes, kWorkBufferBytes);
  identity->identify_data.assign(buffer, buffer + bytes);
  MatchModel(identity, FirmwareCode(), FirmwareVersion(), use_directory);
  if (!use_directory) {
    identity->records->ForgetDirectory();
    return true;
  }
  return identity->records->LoadDirectory();
}

}  // namespace pelix
