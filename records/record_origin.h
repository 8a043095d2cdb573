// The four places that records come from, behind one pair of operations. An origin knows how to reach the sectors of
// an entry; which record is meant, whether the range is right and what the user is told is the record source's.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

#include "drive/drive_identity.h"
#include "platform/files.h"
#include "records/directory.h"

namespace pelix {

// The fixed text that says what went wrong; null when nothing did.
using Failure = const char*;

struct SectorRange {
  std::uint32_t offset;  // sectors from the record's start
  std::uint32_t count;   // sectors
  std::uint64_t OffsetBytes() const { return std::uint64_t{offset} * kSectorBytes; }
  std::size_t Bytes() const { return std::size_t{count} * kSectorBytes; }
};

inline constexpr std::uint32_t kSectorsPerBlock = 0x40;
// Whether offsets into the entry count blocks on its drive.
inline bool CountsBlocks(const DirectoryEntry& entry, const DriveIdentity& identity) {
  return (identity.header_flags & kHeaderBlockOffsets) != 0 && (entry.identifier & kFidBlockOffsets) != 0;
}

class RecordOrigin {
 public:
  virtual ~RecordOrigin() = default;
  // Both move range.Bytes() bytes. The range lies inside the entry.
  virtual Failure Read(const DirectoryEntry& entry, SectorRange range, std::uint8_t* to) = 0;
  // May leave the bytes of `from` swapped pairwise.
  virtual Failure Write(const DirectoryEntry& entry, SectorRange range, std::uint8_t* from) = 0;
};

// DISK I/O: the drive, by its own file system or physically, with the checks that the entry's attributes ask for.
class DiskOrigin : public RecordOrigin {
 public:
  explicit DiskOrigin(const DriveIdentity* identity) : identity_(identity) {}
  Failure Read(const DirectoryEntry& entry, SectorRange range, std::uint8_t* to) override;
  Failure Write(const DirectoryEntry& entry, SectorRange range, std::uint8_t* from) override;

 private:
  Failure ReadRaw(const DirectoryEntry& entry, SectorRange range, std::uint8_t* to) const;
  Failure ReadIdentifyData(SectorRange range, std::uint8_t* to) const;
  Failure ReadMcfs(const DirectoryEntry& entry, SectorRange range, std::uint8_t* to) const;

  const DriveIdentity* identity_;
};

// MCF I/O: an image file, its own header first, the records one after another in the header's order.
class McfOrigin : public RecordOrigin {
 public:
  explicit McfOrigin(const RecordAccess* access) : access_(access) {}

  // Reads the image's header. What it holds stays known until the next Open.
  Failure Open();
  const Directory& image() const { return image_; }

  // Starts a new image with a header of that directory, to be filled by Append in the directory's order.
  Failure Create(const Directory& directory);
  // Writes a whole record behind the ones before it and notes where it stands.
  Failure Append(DirectoryEntry* entry, const std::uint8_t* from);
  // Writes the header again, as the directory stands now.
  Failure RewriteHeader(const Directory& directory);

  Failure Read(const DirectoryEntry& entry, SectorRange range, std::uint8_t* to) override;
  Failure Write(const DirectoryEntry& entry, SectorRange range, std::uint8_t* from) override;

 private:
  struct Place {
    std::uint64_t position;  // bytes
    std::uint32_t size;      // sectors
  };
  Failure FindPlace(const DirectoryEntry& entry, SectorRange range, std::uint64_t* position) const;

  const RecordAccess* access_;
  Directory image_;
  std::unordered_map<std::string, Place> places_;  // by the name and identifier of an entry
  std::uint64_t end_ = 0;                          // where Append continues, bytes
};

// FILE I/O: one file for each record in the current folder.
class FileOrigin : public RecordOrigin {
 public:
  Failure Read(const DirectoryEntry& entry, SectorRange range, std::uint8_t* to) override;
  Failure Write(const DirectoryEntry& entry, SectorRange range, std::uint8_t* from) override;
};

// MCW I/O: an image file with a raw FIT at its start and the records at the sectors that it names. Read only.
class McwOrigin : public RecordOrigin {
 public:
  explicit McwOrigin(const RecordAccess* access) : access_(access) {}
  Failure Read(const DirectoryEntry& entry, SectorRange range, std::uint8_t* to) override;
  Failure Write(const DirectoryEntry& entry, SectorRange range, std::uint8_t* from) override;

 private:
  const RecordAccess* access_;
};

// Opens, positions, moves the bytes and closes; the file is closed on failure too.
Failure ReadFromFile(const std::string& path, std::uint64_t position, void* to, std::size_t bytes);
Failure WriteToFile(const std::string& path, const char* mode, std::uint64_t position, const void* from,
                    std::size_t bytes);

inline constexpr char kFileOpenFail[] = "File open fail";
inline constexpr char kFileReadFail[] = "File read fail";
inline constexpr char kFileSeekFail[] = "File seek fail";
inline constexpr char kFileWriteFail[] = "File write fail";
inline constexpr char kSizeMismatch[] = "File size doesn't match";
inline constexpr char kNotInImage[] = "PELIX cannot find this in MCF file";

}  // namespace pelix
