#include "drive/configuration.h"

#include "platform/files.h"
#include "platform/profile.h"

namespace pelix {
namespace {

constexpr char kSection[] = "PELIX_CFG";

// A key and the one value that it stands for; the other two pointers are null.
struct Key {
  const char* name;
  bool DriveIdentity::*flag;
  std::int32_t DriveIdentity::*number;
  std::string RecordAccess::*text;
};

constexpr char kModeKey[] = "MC_ACCESS";

// Read and written in this order, after the access mode.
const Key kKeys[] = {
    {"MC_FILENAME", nullptr, nullptr, &RecordAccess::image_file},
    {"UPDATE_RPM", &DriveIdentity::update_spindle_speed, nullptr, nullptr},
    {"UPDATE_SERVO_EDGE", &DriveIdentity::update_servo_wedges, nullptr, nullptr},
    {"USE_MCFS", &DriveIdentity::use_mcfs, nullptr, nullptr},
    {"UPDATE_MODEL", &DriveIdentity::update_model, nullptr, nullptr},
    {"USE_MCFS_DIRECTORY", &DriveIdentity::use_directory_file, nullptr, nullptr},
    {"DISPLAY_SN", &DriveIdentity::display_serial_number, nullptr, nullptr},
    {"RPM", nullptr, &DriveIdentity::spindle_speed, nullptr},
    {"SERVO_EDGE", nullptr, &DriveIdentity::servo_wedges, nullptr},
    {"MODEL_ID", nullptr, &DriveIdentity::model_index, nullptr},
    {"MCD_FILENAME", nullptr, nullptr, &RecordAccess::directory_file},
};

AccessMode ModeOf(int number) {
  const bool known = number >= 0 && number <= static_cast<int>(AccessMode::kMcw);
  return known ? static_cast<AccessMode>(number) : AccessMode::kDisk;
}

}  // namespace

void LoadConfiguration(const std::string& profile_path, DriveIdentity* identity) {
  platform::Profile profile;
  profile.Load(profile_path);  // without one, every key has its default
  const DriveIdentity defaults;
  identity->access.mode = ModeOf(profile.GetInt(kSection, kModeKey, static_cast<int>(defaults.access.mode)));
  for (const Key& key : kKeys) {
    if (key.flag != nullptr) {
      identity->*key.flag = profile.GetInt(kSection, key.name, defaults.*key.flag ? 1 : 0) != 0;
    } else if (key.number != nullptr) {
      identity->*key.number = profile.GetInt(kSection, key.name, defaults.*key.number);
    } else {
      identity->access.*key.text = profile.GetString(kSection, key.name, (defaults.access.*key.text).c_str());
    }
  }
}

bool SaveConfiguration(const std::string& profile_path, const DriveIdentity& identity) {
  platform::Profile profile;
  profile.Load(profile_path);  // without one, a new one is made
  profile.SetInt(kSection, kModeKey, static_cast<int>(identity.access.mode));
  for (const Key& key : kKeys) {
    if (key.flag != nullptr) {
      profile.SetInt(kSection, key.name, identity.*key.flag ? 1 : 0);
    } else if (key.number != nullptr) {
      profile.SetInt(kSection, key.name, identity.*key.number);
    } else {
      profile.SetString(kSection, key.name, identity.access.*key.text);
    }
  }
  return profile.Save(profile_path);
}

}  // namespace pelix
