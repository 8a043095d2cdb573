#include "records/fit.h"

#include <algorithm>
#include <cstring>

#include "drive/commands.h"

namespace pelix {
namespace {

std::uint32_t Word(const std::vector<std::uint8_t>& bytes, std::size_t offset) {
  std::uint32_t value = 0;
  return ByteView(bytes.data(), bytes.size()).Le(offset, 2, &value) ? value : 0;
}

// Descriptors that stand wholly inside the FIT's sectors.
std::uint32_t DescriptorsThatFit(const Fit& fit, std::uint32_t counted) {
  const std::uint32_t bytes = fit.sectors * kSectorBytes;
  if (fit.first_descriptor > bytes) return 0;
  const auto room = static_cast<std::uint32_t>((bytes - fit.first_descriptor) / Directory::kEntryBytes);
  return std::min(counted, room);
}

}  // namespace

std::uint32_t FormatFsi(std::uint8_t* fsi) {
  if (DriveInfo() == nullptr) return 0;
  DriveInfo()->MCFS_FormatFSI(fsi);
  std::uint32_t sectors = 0;
  return ByteView(fsi, kSectorBytes).Le(16, 2, &sectors) ? sectors : 0;
}

Fit FormatFit(std::vector<std::uint8_t>* raw, std::uint32_t extra) {
  Fit fit;
  if (raw->size() < kSectorBytes || DriveInfo() == nullptr) return fit;
  DriveInfo()->MCFS_FormatFIT(raw->data());
  fit.flags = static_cast<std::uint16_t>(Word(*raw, 10));
  constexpr std::uint32_t kMostSectors = 0xFFFE;  // the directory takes one more and counts them in 16 bits
  fit.sectors = std::min({Word(*raw, 18), static_cast<std::uint32_t>(raw->size() / kSectorBytes), kMostSectors});
  fit.first_descriptor = Word(*raw, 24);
  fit.descriptor_count = DescriptorsThatFit(fit, Word(*raw, 20));
  fit.descriptors.resize(fit.descriptor_count + extra);
  for (std::size_t i = 0; i < fit.descriptors.size(); ++i) {
    const std::size_t at = fit.first_descriptor + i * Directory::kEntryBytes;
    if (!ByteView(raw->data(), raw->size()).Holds(at, Directory::kEntryBytes)) break;
    RECORD_FID_DESCRIPTOR descriptor;
    std::memcpy(&descriptor, raw->data() + at, sizeof descriptor);
    DriveInfo()->MCFS_FormatFID_Descriptor(&descriptor);
    fit.descriptors[i] = DecodeEntry(reinterpret_cast<const std::uint8_t*>(&descriptor));
  }
  return fit;
}

}  // namespace pelix
