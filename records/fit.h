// The drive's file information table (FIT) and file-system information (FSI), as far as a directory is built of them.
//
// FSI, one sector: 16 the FIT's size in sectors. FIT: 10 the flags word; 18 its size in sectors; 20 the number of
// descriptors; 24 the byte offset of the first. All 16 bits, least significant byte first once the host has formatted
// them. Descriptors have 16 bytes.
#pragma once

#include <vector>

#include "records/directory.h"

namespace pelix {

struct Fit {
  std::uint16_t flags = 0;
  std::uint32_t sectors = 0;                // as the FIT says, at most what was read
  std::uint32_t first_descriptor = 0;       // bytes
  std::uint32_t descriptor_count = 0;       // those that fit the FIT's sectors
  std::vector<DirectoryEntry> descriptors;  // as stored: sizes not scaled, locations not shifted
};

// Formats a raw FSI of one sector in place and returns the FIT's size in sectors.
std::uint32_t FormatFsi(std::uint8_t* fsi);

// Formats a raw FIT of whole sectors in place and decodes it. `extra` descriptors behind the counted ones are decoded
// too, zeros where the FIT holds none.
Fit FormatFit(std::vector<std::uint8_t>* raw, std::uint32_t extra);

}  // namespace pelix
