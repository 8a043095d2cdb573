// The simulated drive: what the stand-in's command layer talks to.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "standin/maintenance_area.h"
#include "standin/user_sectors.h"

namespace standin {

// Result codes of drive commands, as the stand-in's command layer returns them.
enum DriveResult : ECODE {
  kSuccess = 0,
  kBadArgument = 0x01,    // a number that the command does not take
  kNotFound = 0x10,       // no such sector, track or record
  kUncorrectable = 0x40,  // the sector cannot be read
  kStoreFailed = 0x7F,    // the simulated drive's own files failed
  kInjected = 0xFE,       // a fault rule without a code of its own
};

class HOST_API SimDrive {
 public:
  // `folder` is empty for a drive in memory.
  static std::unique_ptr<SimDrive> Open(const DriveKind& kind, const std::string& folder, std::string* error);

  const DriveDesign& design() const { return design_; }

  ECODE ReadPhysical(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector, std::uint32_t count,
                     std::uint8_t* to);
  ECODE WritePhysical(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector, std::uint32_t count,
                      const std::uint8_t* from);
  ECODE VerifyPhysical(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector, std::uint32_t count);
  ECODE ReadRecord(FID_TYPE identifier, std::uint32_t offset, std::uint32_t count, std::uint8_t* to);

  ECODE ReadChannelRegister(std::uint32_t number, std::uint32_t* value);
  ECODE WriteChannelRegister(std::uint32_t number, std::uint32_t value);
  ECODE ReadExtendedWord(std::uint32_t address, std::uint32_t* value);
  ECODE WriteExtendedWord(std::uint32_t address, std::uint32_t value);
  // In the drive's steps, a signed 16-bit number of them.
  void SetOfftrack(std::int32_t position) { offtrack_ = static_cast<std::int16_t>(position); }
  void SetRetry(std::uint32_t count) { retry_ = count; }
  void SetSecondRetry(std::uint32_t value) { second_retry_ = value; }
  void SetCorrection(std::uint32_t level) { correction_ = level; }
  ECODE FormatFunction(std::uint32_t cylinder, std::uint32_t head, std::uint32_t function);
  ECODE ReadBuffer(std::uint32_t bytes, std::uint8_t* to) const;
  ECODE WriteBuffer(std::uint32_t bytes, const std::uint8_t* from);
  // SMART: `to` has room for `count` sectors.
  ECODE Smart(std::uint32_t feature, std::uint32_t count, std::uint32_t number, std::uint8_t* to);
  void Reset();

  // What the read channel's gain loop settles at on a sector: higher where the signal is weak.
  std::uint32_t Gain(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector, std::int32_t offtrack) const;

 private:
  explicit SimDrive(const DriveKind& kind) : design_(kind) {}

  bool IsMaintenance(std::uint32_t cylinder) const { return cylinder <= kLastReservedCylinder; }
  // Whether the sectors exist, on a maintenance or a user track.
  bool Exists(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector, std::uint32_t count) const;
  bool ReadFails(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector);
  void FillSmartData(std::uint8_t* to) const;
  void FillSelftestLog(std::uint8_t* to) const;

  DriveDesign design_;
  std::unique_ptr<MaintenanceArea> maintenance_;
  UserSectors user_sectors_;
  std::map<std::uint32_t, std::uint32_t> channel_registers_;
  std::map<std::uint32_t, std::uint32_t> extended_words_;
  std::vector<std::uint8_t> buffer_ = std::vector<std::uint8_t>(4096);
  std::int32_t offtrack_ = 0;
  std::uint32_t retry_ = 255;
  std::uint32_t second_retry_ = 0;
  std::uint32_t correction_ = 1;
  bool smart_enabled_ = true;
  std::uint32_t gain_ = 0;      // of the sector read last
  std::uint64_t attempts_ = 0;  // reads so far: a weak sector fails now and then
};

}  // namespace standin
