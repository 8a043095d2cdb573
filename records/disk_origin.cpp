#include <algorithm>
#include <cstring>

#include "drive/commands.h"
#include "drive/configuration.h"
#include "records/record_origin.h"

namespace pelix {
namespace {

constexpr char kMcfsReadFail[] = "MGET command fail";
constexpr char kPhysicalReadFail[] = "PHRD command fail";
constexpr char kPhysicalWriteFail[] = "PHWR command fail";
constexpr char kHeaderMismatch[] = "Header does not match";

// The error log's name as some drives of the other byte order leave it, which is not each pair exchanged.
constexpr RecordName kErrorLogOddlySwapped("IB_RELGO");

bool StartsWithName(const DirectoryEntry& entry, const std::uint8_t* data) {
  const RecordName found(data);
  return entry.name.Matches(found) || (entry.name == kErrorLog && found == kErrorLogOddlySwapped);
}

// Moves `count` sectors in commands of at most the configured size. Read and write differ only in the command.
using Transfer = ECODE (*)(const PhysicalAddress& address, std::uint32_t count, std::uint8_t* data);

bool MovePieces(Transfer transfer, const PhysicalAddress& start, std::uint32_t count, std::uint8_t* data) {
  for (std::uint32_t done = 0; done < count;) {
    const std::uint32_t piece = std::min(kMostSectorsPerPhysicalCommand, count - done);
    const PhysicalAddress address = {start.cylinder, start.head, start.sector + done};
    if (transfer(address, piece, data + std::size_t{done} * kSectorBytes) != 0) return false;
    done += piece;
  }
  return true;
}

// Walks the tracks that the range covers, from the record's start cylinder on, head by head.
bool MoveAlongTracks(Transfer transfer, const DirectoryEntry& entry, SectorRange range, std::uint8_t* data) {
  constexpr std::uint32_t kTrack = kMaintenanceSectorsPerTrack;
  const std::uint32_t heads = HeadCount();
  const std::uint32_t first = entry.location + range.offset;
  if (heads == 0 || first == 0) return range.count == 0;
  for (std::uint32_t done = 0; done < range.count;) {
    const std::uint32_t sector_index = first + done - 1;
    const std::uint32_t track = sector_index / kTrack;
    const std::uint32_t sector = sector_index % kTrack + 1;
    const std::uint32_t count = std::min(kTrack - sector + 1, range.count - done);
    const PhysicalAddress address = {entry.start_cylinder + track / heads, track % heads, sector};
    if (!MovePieces(transfer, address, count, data + std::size_t{done} * kSectorBytes)) return false;
    done += count;
  }
  return true;
}

PhysicalAddress OnHead(const DirectoryEntry& entry, SectorRange range, std::uint32_t head) {
  return {entry.start_cylinder, head, entry.location + range.offset};
}

bool ReadFromAnyHead(const DirectoryEntry& entry, SectorRange range, std::uint8_t* to) {
  for (std::uint32_t head = 0; head < HeadCount(); ++head) {
    if (MovePieces(ReadPhysical, OnHead(entry, range, head), range.count, to)) return true;
  }
  return false;
}

ECODE WritePiece(const PhysicalAddress& address, std::uint32_t count, std::uint8_t* data) {
  return WritePhysical(address, count, data);
}

bool WriteOnEveryHead(const DirectoryEntry& entry, SectorRange range, std::uint8_t* from) {
  for (std::uint32_t head = 0; head < HeadCount(); ++head) {
    if (!MovePieces(WritePiece, OnHead(entry, range, head), range.count, from)) return false;
  }
  return HeadCount() > 0;
}

}  // namespace

Failure DiskOrigin::Read(const DirectoryEntry& entry, SectorRange range, std::uint8_t* to) {
  if (entry.Fid() == kFidIdentifyData) return ReadIdentifyData(range, to);
  if (range.count == 0) return nullptr;
  const Failure failure = ReadRaw(entry, range, to);
  if (failure != nullptr) return failure;
  if ((entry.attributes & kWordsSwapped) != 0) platform::SwapWords(to, range.Bytes());
  if ((entry.attributes & kStartsWithName) != 0 && !StartsWithName(entry, to)) return kHeaderMismatch;
  return nullptr;
}

Failure DiskOrigin::ReadRaw(const DirectoryEntry& entry, SectorRange range, std::uint8_t* to) const {
  const bool known_to_drive = entry.Fid() != kFidExpert;
  if ((identity_->header_flags & kHeaderMcfsRead) != 0 && known_to_drive) return ReadMcfs(entry, range, to);
  const bool read = (entry.attributes & kOnEveryHead) != 0 ? ReadFromAnyHead(entry, range, to)
                                                           : MoveAlongTracks(ReadPhysical, entry, range, to);
  return read ? nullptr : kPhysicalReadFail;
}

Failure DiskOrigin::ReadIdentifyData(SectorRange range, std::uint8_t* to) const {
  const ByteView data(identity_->identify_data.data(), identity_->identify_data.size());
  const auto offset = static_cast<std::size_t>(range.OffsetBytes());
  if (!data.Holds(offset, range.Bytes())) return kSizeMismatch;
  if (range.count != 0) std::memcpy(to, data.data() + offset, range.Bytes());
  return nullptr;
}

Failure DiskOrigin::ReadMcfs(const DirectoryEntry& entry, SectorRange range, std::uint8_t* to) const {
  const bool in_blocks = CountsBlocks(entry, *identity_);
  for (std::uint32_t done = 0; done < range.count;) {
    const std::uint32_t piece = std::min(kMostSectorsPerMcfsCommand, range.count - done);
    const std::uint32_t position = (range.offset + done) / (in_blocks ? kSectorsPerBlock : 1);
    const ECODE result = ReadMcfsRecord(entry.identifier, static_cast<std::uint16_t>(position),
                                        static_cast<std::uint16_t>(piece), to + std::size_t{done} * kSectorBytes);
    if (result != 0) return kMcfsReadFail;
    done += piece;
  }
  return nullptr;
}

Failure DiskOrigin::Write(const DirectoryEntry& entry, SectorRange range, std::uint8_t* from) {
  if (entry.Fid() == kFidIdentifyData || range.count == 0) return nullptr;
  if ((entry.attributes & kStartsWithName) != 0 && !StartsWithName(entry, from)) return kHeaderMismatch;
  if ((entry.attributes & kWordsSwapped) != 0) platform::SwapWords(from, range.Bytes());
  const bool written = (entry.attributes & kOnEveryHead) != 0 ? WriteOnEveryHead(entry, range, from)
                                                              : MoveAlongTracks(WritePiece, entry, range, from);
  return written ? nullptr : kPhysicalWriteFail;
}

}  // namespace pelix
