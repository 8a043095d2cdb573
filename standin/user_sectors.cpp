#include "standin/user_sectors.h"

#include <cstring>

#include "platform/byte_view.h"

namespace standin {
namespace {

constexpr std::size_t kAddressBytes = 12;

std::uint32_t Number(const std::uint8_t* bytes, std::size_t offset) {
  std::uint32_t value = 0;
  return platform::ByteView(bytes, kAddressBytes).Le(offset, 4, &value) ? value : 0;
}

}  // namespace

bool UserSectors::KeepIn(const std::string& path) {
  platform::File existing = platform::File::Open(path, "rb");
  std::uint8_t address[kAddressBytes];
  Content content;
  std::uint64_t size = 0;
  if (existing.Size(&size) && size % (sizeof address + content.size()) != 0) return false;  // what came next was lost
  while (existing.Read(address, sizeof address) && existing.Read(content.data(), content.size())) {
    sectors_[{Number(address, 0), Number(address, 4), Number(address, 8)}] = content;
  }
  file_ = platform::File::Open(path, "ab");
  return file_.IsOpen();
}

bool UserSectors::Write(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector, const std::uint8_t* from) {
  Content& content = sectors_[{cylinder, head, sector}];
  std::memcpy(content.data(), from, content.size());
  if (!file_.IsOpen()) return true;
  std::uint8_t address[kAddressBytes];
  platform::StoreLe(address, 4, cylinder);
  platform::StoreLe(address + 4, 4, head);
  platform::StoreLe(address + 8, 4, sector);
  return file_.Write(address, sizeof address) && file_.Write(content.data(), content.size()) && file_.Flush();
}

const UserSectors::Content* UserSectors::Find(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector) const {
  const auto found = sectors_.find({cylinder, head, sector});
  return found == sectors_.end() ? nullptr : &found->second;
}

}  // namespace standin
