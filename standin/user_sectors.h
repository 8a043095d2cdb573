// Sectors of the simulated drive's user area that somebody has written; the others read as zeros.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>

#include "host/commands.h"
#include "platform/files.h"

namespace standin {

class UserSectors {
 public:
  using Content = std::array<std::uint8_t, kSectorBytes>;

  // Keeps what is written in a file too, and begins with what stands there: entries of cylinder, head and sector (32
  // bits each, least significant byte first) and 512 bytes; of several for one sector the last counts.
  bool KeepIn(const std::string& path);

  // False when the file cannot take it.
  bool Write(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector, const std::uint8_t* from);
  // Null for a sector that nobody has written.
  const Content* Find(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector) const;

 private:
  using Address = std::array<std::uint32_t, 3>;

  std::map<Address, Content> sectors_;
  platform::File file_;
};

}  // namespace standin
