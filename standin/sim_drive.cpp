#include "standin/sim_drive.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "standin/random.h"
#include "standin/record_writer.h"

namespace standin {
namespace {

// The register that shows the gain, by model.
std::uint32_t GainRegister(std::uint32_t model) {
  if (model == 58 || model == 59) return 171;
  return model >= 60 && model <= 62 ? 152 : 23;
}

struct DriveVariable {
  std::uint32_t model, address, value;
};
// Where a family keeps its servo wedge count, as its drives count it.
constexpr DriveVariable kDriveVariables[] = {
    {29, 0x9005, 124}, {31, 0x9005, 148}, {43, 0xA505, 184}, {44, 0xA505, 184}};

constexpr std::uint32_t kMostSectorsPerCommand = 128;

}  // namespace

std::unique_ptr<SimDrive> SimDrive::Open(const DriveKind& kind, const std::string& folder, std::string* error) {
  DriveKind wanted = kind;
  if (!folder.empty() && !ReadDriveKind(folder, &wanted, error)) return nullptr;
  std::unique_ptr<SimDrive> drive(new SimDrive(wanted));
  drive->maintenance_ =
      folder.empty() ? MakeMemoryArea(drive->design_) : OpenFolderArea(folder, drive->design_.geometry, error);
  if (drive->maintenance_ == nullptr) return nullptr;
  if (!folder.empty() && !drive->user_sectors_.KeepIn(folder + "/user.bin")) {
    *error = "\"" + folder + "\" cannot be written";
    return nullptr;
  }
  for (const DriveVariable& variable : kDriveVariables) {
    if (variable.model == wanted.model) drive->extended_words_[variable.address] = variable.value;
  }
  return drive;
}

bool SimDrive::Exists(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector, std::uint32_t count) const {
  if (head >= design_.geometry.heads || sector == 0 || count == 0 || count > kMostSectorsPerCommand) return false;
  const std::uint32_t sectors =
      IsMaintenance(cylinder)
          ? kMaintenanceSectors
          : design_.geometry.SectorsPerTrack(static_cast<std::int32_t>(head), static_cast<std::int32_t>(cylinder));
  return sector <= sectors && count <= sectors - sector + 1;
}

// A bad sector fails the more often the deeper its defect and the further the head is off the track; retries and
// correction save most reads of shallow ones.
bool SimDrive::ReadFails(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector) {
  const std::uint32_t depth = design_.defects().DepthNear(cylinder, head, sector);
  const auto distance = static_cast<std::uint32_t>(std::abs(offtrack_));
  std::uint32_t percent = depth * 9 + distance * distance / 40;
  if (retry_ > 0) percent = percent > 60 ? percent - 40 : percent / 8;
  if (correction_ > 0 && percent < 30) percent /= 2;
  const std::uint64_t roll = Mix(++attempts_ ^ Mix(std::uint64_t{cylinder} << 24 ^ head << 20 ^ sector));
  return roll % 100 < percent;
}

std::uint32_t SimDrive::Gain(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector,
                             std::int32_t offtrack) const {
  const std::uint64_t noise = Mix(std::uint64_t{cylinder} << 24 ^ head << 20 ^ sector ^ design_.kind.seed);
  const auto distance = static_cast<std::uint32_t>(std::abs(offtrack));
  const std::uint32_t depth = design_.defects().DepthNear(cylinder, head, sector);
  const std::uint32_t gain =
      90 + head * 3 + cylinder / 4000 + static_cast<std::uint32_t>(noise % 5) + depth * 7 + distance * distance / 64;
  return std::min(gain, 255u);
}

ECODE SimDrive::ReadPhysical(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector, std::uint32_t count,
                             std::uint8_t* to) {
  if (!Exists(cylinder, head, sector, count)) return kNotFound;
  if (IsMaintenance(cylinder)) {
    return maintenance_->Read(cylinder, head, sector, count, to) ? kSuccess : kStoreFailed;
  }
  for (std::uint32_t i = 0; i < count; ++i) {
    if (VerifyPhysical(cylinder, head, sector + i, 1) != kSuccess) return kUncorrectable;
    const UserSectors::Content* written = user_sectors_.Find(cylinder, head, sector + i);
    std::uint8_t* at = to + std::size_t{i} * kSectorBytes;
    std::memset(at, 0, kSectorBytes);
    if (written != nullptr) std::copy(written->begin(), written->end(), at);
  }
  return kSuccess;
}

ECODE SimDrive::WritePhysical(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector, std::uint32_t count,
                              const std::uint8_t* from) {
  if (!Exists(cylinder, head, sector, count)) return kNotFound;
  if (IsMaintenance(cylinder)) {
    return maintenance_->Write(cylinder, head, sector, count, from) ? kSuccess : kStoreFailed;
  }
  for (std::uint32_t i = 0; i < count; ++i) {
    if (!user_sectors_.Write(cylinder, head, sector + i, from + std::size_t{i} * kSectorBytes)) return kStoreFailed;
  }
  return kSuccess;
}

ECODE SimDrive::VerifyPhysical(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector, std::uint32_t count) {
  if (!Exists(cylinder, head, sector, count)) return kNotFound;
  if (IsMaintenance(cylinder)) return kSuccess;
  for (std::uint32_t i = 0; i < count; ++i) {
    gain_ = Gain(cylinder, head, sector + i, offtrack_);
    if (ReadFails(cylinder, head, sector + i)) return kUncorrectable;
  }
  return kSuccess;
}

ECODE SimDrive::ReadRecord(FID_TYPE identifier, std::uint32_t offset, std::uint32_t count, std::uint8_t* to) {
  constexpr std::uint32_t kSectorsPerBlock = 64;
  constexpr std::uint8_t kOnEveryHead = 0x01;
  const bool second_copy = (identifier & kFidSecondCopy) != 0;
  const std::uint32_t first = offset * ((identifier & kFidBlockOffsets) != 0 ? kSectorsPerBlock : 1);
  const auto wanted = static_cast<FID_TYPE>(identifier & ~(kFidSecondCopy | kFidBlockOffsets));
  if (count > kMostSectorsPerCommand) return kBadArgument;
  for (const StoredRecord& record : design_.records) {
    if (record.descriptor.identifier != wanted || (second_copy && !record.has_second_copy)) continue;
    if (first > record.sectors || count > record.sectors - first) return kNotFound;
    const bool one_head = (record.descriptor.attributes & kOnEveryHead) != 0;
    const std::uint32_t start = second_copy ? kSecondCopyCylinder : record.descriptor.start_cylinder;
    for (std::uint32_t done = 0; done < count; ++done) {
      const std::uint32_t at = record.descriptor.location + first + done;
      const std::uint32_t track = at / kMaintenanceSectors;
      const std::uint32_t cylinder = one_head ? start : start + track / design_.geometry.heads;
      const std::uint32_t head = one_head ? 0 : track % design_.geometry.heads;
      if (!maintenance_->Read(cylinder, head, at % kMaintenanceSectors + 1, 1, to + std::size_t{done} * kSectorBytes)) {
        return kStoreFailed;
      }
    }
    return kSuccess;
  }
  return kNotFound;
}

ECODE SimDrive::ReadChannelRegister(std::uint32_t number, std::uint32_t* value) {
  *value = number == GainRegister(design_.kind.model) ? gain_ : channel_registers_[number];
  return kSuccess;
}

ECODE SimDrive::WriteChannelRegister(std::uint32_t number, std::uint32_t value) {
  channel_registers_[number] = value & 0xFFFF;
  return kSuccess;
}

ECODE SimDrive::ReadExtendedWord(std::uint32_t address, std::uint32_t* value) {
  *value = extended_words_[address];
  return kSuccess;
}

ECODE SimDrive::WriteExtendedWord(std::uint32_t address, std::uint32_t value) {
  extended_words_[address] = value & 0xFFFF;
  return kSuccess;
}

// Function 132: reads every sector of the track as often as the high byte says and leaves the failures in the buffer.
ECODE SimDrive::FormatFunction(std::uint32_t cylinder, std::uint32_t head, std::uint32_t function) {
  constexpr std::uint32_t kCountFailures = 132;
  if ((function & 0xFF) != kCountFailures) return kBadArgument;
  const std::uint32_t sectors =
      design_.geometry.SectorsPerTrack(static_cast<std::int32_t>(head), static_cast<std::int32_t>(cylinder));
  if (sectors == 0) return kNotFound;
  std::fill(buffer_.begin(), buffer_.end(), std::uint8_t{0});
  for (std::uint32_t sector = 1; sector <= std::min<std::size_t>(sectors, buffer_.size()); ++sector) {
    for (std::uint32_t i = 0; i < (function >> 8 & 0xFF); ++i) {
      if (ReadFails(cylinder, head, sector)) ++buffer_[sector - 1];
    }
  }
  return kSuccess;
}

ECODE SimDrive::ReadBuffer(std::uint32_t bytes, std::uint8_t* to) const {
  if (bytes > buffer_.size()) return kBadArgument;
  std::memcpy(to, buffer_.data(), bytes);
  return kSuccess;
}

ECODE SimDrive::WriteBuffer(std::uint32_t bytes, const std::uint8_t* from) {
  if (bytes > buffer_.size()) return kBadArgument;
  std::memcpy(buffer_.data(), from, bytes);
  return kSuccess;
}

ECODE SimDrive::Smart(std::uint32_t feature, std::uint32_t count, std::uint32_t number, std::uint8_t* to) {
  // Features and log addresses of the ATA standard's SMART command.
  constexpr std::uint32_t kReadData = 0xD0, kReadLog = 0xD5, kEnable = 0xD8, kDisable = 0xD9, kSelftestLog = 6;
  if (feature == kEnable || feature == kDisable) {
    smart_enabled_ = feature == kEnable;
    return kSuccess;
  }
  const bool data = feature == kReadData;
  const bool log = feature == kReadLog && number == kSelftestLog && count == 1;
  if (!smart_enabled_ || (!data && !log)) return kBadArgument;
  std::memset(to, 0, kSectorBytes);
  data ? FillSmartData(to) : FillSelftestLog(to);
  std::uint8_t sum = 0;
  for (std::size_t i = 0; i + 1 < kSectorBytes; ++i) sum = static_cast<std::uint8_t>(sum + to[i]);
  to[kSectorBytes - 1] = static_cast<std::uint8_t>(-sum);
  return kSuccess;
}

void SimDrive::FillSmartData(std::uint8_t* to) const {
  constexpr std::uint8_t kAttributes[] = {1, 3, 4, 5, 7, 8, 9, 10, 12, 194, 195, 196, 197, 198, 199, 200, 201};
  const auto defects = static_cast<std::uint32_t>(design_.defects().defects().size());
  platform::StoreLe(to, 2, 16);  // revision of the structure
  std::uint8_t* entry = to + 2;
  for (const std::uint8_t id : kAttributes) {
    Random random(design_.kind.seed, id);
    entry[0] = id;
    entry[3] = static_cast<std::uint8_t>(random.Between(90, 100));
    entry[4] = static_cast<std::uint8_t>(random.Between(80, entry[3]));
    const std::uint32_t raw = id == 5 || id == 196 ? defects / 40 : id == 194 ? 34 : random.Below(3000);
    platform::StoreLe(entry + 5, 4, raw);
    entry += 12;
  }
}

void SimDrive::FillSelftestLog(std::uint8_t* to) const {
  const Defect& failing = design_.defects().defects().front();
  platform::StoreLe(to, 2, 1);
  const struct {
    std::uint8_t test, status;
    std::uint16_t hours;
  } entries[] = {{1, 0x00, 12}, {2, 0x00, 13}, {1, 0x10, 70}, {2, 0x74, 92}};
  std::uint8_t* entry = to + 2;
  for (const auto& row : entries) {
    entry[0] = row.test;
    entry[1] = row.status;
    platform::StoreLe(entry + 2, 2, row.hours);
    platform::StoreLe(entry + 5, 4, row.status == 0x74 ? failing.cylinder * 1000 + failing.logical : 0xFFFFFFFF);
    entry += 24;
  }
  to[508] = static_cast<std::uint8_t>(std::size(entries));
}

void SimDrive::Reset() {
  offtrack_ = 0;
  retry_ = 255;
  second_retry_ = 0;
  correction_ = 1;
}

}  // namespace standin
