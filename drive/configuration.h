// The configuration as it is kept in the host application's profile, section "PELIX_CFG".
#pragma once

#include <string>

#include "drive/drive_identity.h"

namespace pelix {

// Constants of the maintenance area and of the drive's commands.
inline constexpr std::uint32_t kMaintenanceStartSector = 0;
inline constexpr std::uint32_t kMaintenanceEndSector = 200;
inline constexpr std::uint32_t kMaintenanceSectorsPerTrack = kMaintenanceEndSector - kMaintenanceStartSector;
inline constexpr std::uint32_t kMostSectorsPerPhysicalCommand = 128;
inline constexpr std::uint32_t kMostSectorsPerMcfsCommand = 128;

// Keys that the profile lacks get their defaults; an access mode that does not exist reads as DISK I/O.
void LoadConfiguration(const std::string& profile_path, DriveIdentity* identity);
// False when the profile cannot be written; it is then as it was.
[[nodiscard]] bool SaveConfiguration(const std::string& profile_path, const DriveIdentity& identity);

}  // namespace pelix
