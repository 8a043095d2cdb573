// The MCFR directory: every record that the current source holds. It is also the head of an MCF image file.
//
// Layout, numbers least significant byte first: 0 "MCFRHDR" and a zero byte; 8 zero (16 bits); 10 header size in
// sectors (16); 12 entry size, 16 (16); 14 number of entries (16); 16 unused; 32 the entries. An entry: 0 identifier
// (16); 2 name (8 bytes); 10 location (16); 12 size in sectors (16); 14 start cylinder (8); 15 attributes (8).
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "host/commands.h"
#include "platform/byte_view.h"
#include "records/record_name.h"

namespace pelix {

using platform::ByteView;

// Attribute bits of an entry.
inline constexpr std::uint8_t kOnEveryHead = 0x01;  // one track, the same on every head
inline constexpr std::uint8_t kCountedInTracks = 0x02;
inline constexpr std::uint8_t kStartsWithName = 0x08;
inline constexpr std::uint8_t kWordsSwapped = 0x10;

// Identifiers of the two entries that the drive's own file system does not know.
inline constexpr FID_TYPE kFidIdentifyData = 0x8001;  // served from memory
inline constexpr FID_TYPE kFidExpert = 0x8002;        // read physically

struct DirectoryEntry {
  FID_TYPE identifier = 0;
  RecordName name;
  std::uint16_t location = 0;  // drive: sector index from 1; MCW: sector in the image; MCF: as when it was written
  std::uint16_t size = 0;      // sectors
  std::uint16_t room = 0;      // sectors that it may take where it stands; known of drives only, in no file
  std::uint8_t start_cylinder = 0;
  std::uint8_t attributes = 0;

  bool operator==(const DirectoryEntry&) const = default;
  bool IsSecondCopy() const { return (identifier & kFidSecondCopy) != 0; }
  // The identifier without the bit that only chooses how offsets count.
  FID_TYPE Fid() const { return identifier & static_cast<FID_TYPE>(~kFidBlockOffsets); }
};

// One descriptor or directory entry of 16 bytes, numbers least significant byte first.
DirectoryEntry DecodeEntry(const std::uint8_t* bytes);

class Directory {
 public:
  static constexpr std::size_t kHeaderBytes = 32;
  static constexpr std::size_t kEntryBytes = 16;
  static constexpr std::size_t kMostEntries = 0xFFFF;

  Directory() = default;
  Directory(std::uint32_t header_sectors, std::vector<DirectoryEntry> entries);

  // Whether a file's first sector is that of an MCF image.
  static bool HasSignature(ByteView first_sector);
  // Header size in sectors that the first sector names.
  static std::uint32_t HeaderSectors(ByteView first_sector);
  // Reads `sectors`, the whole header; the number of entries is cut to what it holds.
  static Directory Decode(ByteView sectors);
  // The header as it stands in an image file: header_sectors() x 512 bytes.
  std::vector<std::uint8_t> Encode() const;

  std::uint32_t header_sectors() const { return header_sectors_; }
  std::vector<DirectoryEntry>& entries() { return entries_; }
  const std::vector<DirectoryEntry>& entries() const { return entries_; }

  // The index-th entry, from 0, of that name (or its swapped form) and copy; null when there is none.
  DirectoryEntry* Find(const RecordName& name, std::uint32_t index, bool second_copy);

 private:
  std::uint32_t header_sectors_ = 1;
  std::vector<DirectoryEntry> entries_;
  std::unordered_map<std::uint64_t, std::vector<std::uint32_t>> by_name_;  // indexes in entries_ by RecordName::Key
};

}  // namespace pelix
