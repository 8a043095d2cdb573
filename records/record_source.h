// The one object through which records are read and written, wherever they come from.
//
// Operations that can fail return false or nothing and have shown their message then. Sizes and offsets count sectors
// of 512 bytes. Everything runs on the host's user-interface thread.
#pragma once

#include <memory>

#include "drive/drive_identity.h"
#include "drive/host_services.h"
#include "records/record_origin.h"

namespace pelix {

// A whole record, or nothing.
struct Record {
  std::unique_ptr<std::uint8_t[]> bytes;
  std::size_t size = 0;

  explicit operator bool() const { return bytes != nullptr; }
  ByteView View() const { return {bytes.get(), size}; }
};

// Uninitialised room for an entry's whole record, nothing when there is no memory for it.
Record MakeRecord(const DirectoryEntry& entry);

inline constexpr char kNoDirectory[] =
    "MCFS is not initialized.\nYou need to turn on \"Use MCFS\" flag on PELIX Configuration dialog box.";

enum class Report { kNo, kYes };

class RecordSource : public RecordDirectory {
 public:
  // Keeps a pointer to the identity, which holds the access mode and the names of the image and directory files, and
  // receives the header flags.
  explicit RecordSource(DriveIdentity* identity);

  // Builds the directory for the current mode. A failure leaves none.
  bool LoadDirectory() override;
  void ForgetDirectory() override;
  // Null while none is loaded.
  const Directory* directory() const { return directory_.get(); }

  // The index-th entry of that name, null when there is none; tells the user why only when asked to, but always that
  // there is no directory.
  DirectoryEntry* FindEntry(const RecordName& name, std::uint32_t index, Report report, bool second_copy);

  bool ReadSectors(const DirectoryEntry& entry, SectorRange range, std::uint8_t* to);
  bool WriteSectors(const DirectoryEntry& entry, SectorRange range, std::uint8_t* from);

  // The whole record, under a progress window. A name that is not in the directory, or has no sectors, gives nothing,
  // silently.
  Record FetchRecord(const RecordName& name, std::uint32_t index = 0, bool second_copy = false);
  // Into a caller's buffer that has room for the entry's size, or for `range`.
  bool ReadWhole(const RecordName& name, std::uint8_t* to, std::uint32_t index = 0, bool second_copy = false);
  bool ReadPart(const RecordName& name, SectorRange range, std::uint8_t* to, std::uint32_t index = 0,
                bool second_copy = false);
  // First copies only.
  bool WriteWhole(const RecordName& name, std::uint8_t* from, std::uint32_t index = 0);
  bool WritePart(const RecordName& name, SectorRange range, std::uint8_t* from, std::uint32_t index = 0);

  // Reads the record from the current source and writes it as a record file.
  bool SaveRecordToFile(const RecordName& name, bool second_copy);

  // Change the mode, open the image and leave its identify data as a file for identification. False when the image
  // cannot be opened; missing identify data is no failure.
  bool SwitchToMcf();
  bool SwitchToMcw();

  // Copies every record of the current directory, or from an image to the drive every record of the image to where the
  // current directory, the drive's, has it. What cannot be read, or has no room there, is left out with a line in the
  // host's output; the first record that cannot be written ends the copy.
  bool CopyAllRecords(AccessMode source, AccessMode destination);

 private:
  struct TableOfContents;  // FSI and FIT, formatted

  RecordOrigin& Origin(AccessMode mode);
  Failure ReadRange(AccessMode source, const DirectoryEntry& entry, SectorRange range, std::uint8_t* to);
  Failure ReadWholeEntry(AccessMode source, DirectoryEntry* entry, std::uint8_t* to);

  bool LoadFromDriveOrFiles();
  bool LoadFromMcf();
  bool LoadFromMcw();
  bool SetDirectory(std::uint16_t header_flags, std::uint32_t header_sectors, std::vector<DirectoryEntry> entries);
  std::string CopyEntries(AccessMode source, AccessMode destination, Directory* directory);
  Failure ReadForCopy(AccessMode source, DirectoryEntry entry, Record* record);
  bool FileIsImage(const DirectoryEntry& entry) const;
  void LeaveIdentifyData(const std::string& path, const Record& record) const;
  std::vector<DirectoryEntry> ImageEntriesOnDrive(Directory* drive);

  DriveIdentity* identity_;
  std::unique_ptr<Directory> directory_;  // null while none is loaded
  DiskOrigin disk_;
  McfOrigin mcf_;
  FileOrigin files_;
  McwOrigin mcw_;
};

inline platform::ProcessWide<RecordSource> g_records;

// The commands of the data menu. Those that work on an image ask for its name first.
void CopyDiskToMcf();
void CopyDiskToFiles();
void CopyMcfToDisk();
void CopyMcfToFiles();

}  // namespace pelix
