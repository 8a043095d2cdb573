// The drive commands that the plug-in issues, each inside the command bracket. Cylinders and heads count from 0,
// sectors from 1. The result is the host's code, 0 for success; without a request structure nothing succeeds.
#pragma once

#include <cstdint>

#include "host/commands.h"

namespace pelix {

inline constexpr ECODE kNoDrive = ~ECODE{0};

struct PhysicalAddress {
  std::uint32_t cylinder;
  std::uint32_t head;
  std::uint32_t sector;
};

// The vendor-unique drive information, null when the host has none.
C_DRIVEVUINFO* DriveInfo();
// Heads of the identified drive, 0 when there is none.
std::uint32_t HeadCount();

// Vendor-unique identify into `buffer`, which holds identify data itself when `from_buffer` is set.
ECODE IdentifyDrive(std::uint8_t* buffer, bool from_buffer);
// Reads `count` sectors of a record through the drive's own file system. Offsets count as the identifier says.
ECODE ReadMcfsRecord(FID_TYPE identifier, std::uint16_t offset, std::uint16_t count, std::uint8_t* to);

ECODE ReadPhysical(const PhysicalAddress& address, std::uint32_t count, std::uint8_t* to);
ECODE WritePhysical(const PhysicalAddress& address, std::uint32_t count, const std::uint8_t* from);

ECODE ReadExtendedWord(std::uint16_t address, std::uint16_t* value);
ECODE ResetDrive();

}  // namespace pelix
