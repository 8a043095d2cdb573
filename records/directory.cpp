#include "records/directory.h"

#include <algorithm>
#include <cstring>

namespace pelix {
namespace {

constexpr char kSignature[8] = "MCFRHDR";

std::uint32_t Number(ByteView bytes, std::size_t offset, std::size_t width) {
  std::uint32_t value = 0;
  return bytes.Le(offset, width, &value) ? value : 0;
}

void EncodeEntry(const DirectoryEntry& entry, std::uint8_t* to) {
  platform::StoreLe(to, 2, entry.identifier);
  std::memcpy(to + 2, entry.name.bytes.data(), entry.name.bytes.size());
  platform::StoreLe(to + 10, 2, entry.location);
  platform::StoreLe(to + 12, 2, entry.size);
  to[14] = entry.start_cylinder;
  to[15] = entry.attributes;
}

}  // namespace

DirectoryEntry DecodeEntry(const std::uint8_t* bytes) {
  const ByteView view(bytes, Directory::kEntryBytes);
  DirectoryEntry entry;
  entry.identifier = static_cast<FID_TYPE>(Number(view, 0, 2));
  entry.name = RecordName(bytes + 2);
  entry.location = static_cast<std::uint16_t>(Number(view, 10, 2));
  entry.size = static_cast<std::uint16_t>(Number(view, 12, 2));
  entry.start_cylinder = bytes[14];
  entry.attributes = bytes[15];
  return entry;
}

Directory::Directory(std::uint32_t header_sectors, std::vector<DirectoryEntry> entries)
    : header_sectors_(header_sectors), entries_(std::move(entries)) {
  for (std::uint32_t i = 0; i < entries_.size(); ++i) by_name_[entries_[i].name.Key()].push_back(i);
}

bool Directory::HasSignature(ByteView first_sector) {
  constexpr std::size_t kCompared = 7;
  return first_sector.Holds(0, kCompared) && std::memcmp(first_sector.data(), kSignature, kCompared) == 0;
}

std::uint32_t Directory::HeaderSectors(ByteView first_sector) {
  return Number(first_sector, 10, 2);
}

Directory Directory::Decode(ByteView sectors) {
  const std::size_t room = sectors.size() < kHeaderBytes ? 0 : (sectors.size() - kHeaderBytes) / kEntryBytes;
  std::vector<DirectoryEntry> entries(std::min<std::size_t>(Number(sectors, 14, 2), room));
  for (std::size_t i = 0; i < entries.size(); ++i) {
    entries[i] = DecodeEntry(sectors.data() + kHeaderBytes + i * kEntryBytes);
  }
  return Directory(HeaderSectors(sectors), std::move(entries));
}

std::vector<std::uint8_t> Directory::Encode() const {
  std::vector<std::uint8_t> bytes(std::size_t{header_sectors_} * kSectorBytes);
  const std::size_t room = bytes.size() < kHeaderBytes ? 0 : (bytes.size() - kHeaderBytes) / kEntryBytes;
  const std::size_t count = std::min(entries_.size(), room);
  if (bytes.size() < kHeaderBytes) return bytes;
  std::memcpy(bytes.data(), kSignature, sizeof kSignature);
  platform::StoreLe(bytes.data() + 10, 2, header_sectors_);
  platform::StoreLe(bytes.data() + 12, 2, kEntryBytes);
  platform::StoreLe(bytes.data() + 14, 2, static_cast<std::uint32_t>(count));
  for (std::size_t i = 0; i < count; ++i) EncodeEntry(entries_[i], bytes.data() + kHeaderBytes + i * kEntryBytes);
  return bytes;
}

DirectoryEntry* Directory::Find(const RecordName& name, std::uint32_t index, bool second_copy) {
  const auto found = by_name_.find(name.Key());
  if (found == by_name_.end()) return nullptr;
  for (const std::uint32_t at : found->second) {
    if (entries_[at].IsSecondCopy() == second_copy && index-- == 0) return &entries_[at];
  }
  return nullptr;
}

}  // namespace pelix
