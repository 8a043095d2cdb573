// How the record source builds its directory: from the drive or record files, from an MCF image, from an MCW image.
#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "drive/commands.h"
#include "drive/configuration.h"
#include "host/decoders.h"
#include "records/fit.h"
#include "records/record_source.h"

namespace pelix {
namespace {

constexpr char kDriveFsiFail[] = "FSI read fail.\nYou need to check M/C location for FSI.";
constexpr char kDriveFitFail[] = "FIT read fail.\nYou need to check M/C location for FIT.";
constexpr char kDirectoryFileAbsent[] = "Cannot find MCFS directory file.";
constexpr char kDirectoryFileUnread[] = "Cannot read MCFS directory file.";
constexpr char kMcwFsiFail[] = "Read FSI fail";
constexpr char kErrorLogMisplaced[] = "This M/C file must locate in sector 1.";

// These have a second copy on drives that keep copies.
constexpr RecordName kTwice[] = {kErrorLog, RecordName("LDSI T  "), RecordName("SLIST   "), RecordName("RLIST   ")};

bool HasSecondCopy(const RecordName& name) {
  for (const RecordName& twice : kTwice) {
    if (name.Matches(twice)) return true;
  }
  return false;
}

std::uint16_t Sectors(std::uint64_t count) {
  return static_cast<std::uint16_t>(std::min<std::uint64_t>(count, 0xFFFF));
}

// Reads the FSI and the FIT behind it; *message says why it failed.
class TableReader {
 public:
  virtual ~TableReader() = default;
  virtual bool ReadFsi(std::uint8_t* to, std::string* message) = 0;
  virtual bool ReadFit(std::uint32_t sectors, std::uint8_t* to, std::string* message) = 0;
};

class DriveTables : public TableReader {
 public:
  bool ReadFsi(std::uint8_t* to, std::string* message) override {
    *message = kDriveFsiFail;
    return ReadMcfsRecord(kFidFsi, 0, 1, to) == 0;
  }
  bool ReadFit(std::uint32_t sectors, std::uint8_t* to, std::string* message) override {
    *message = kDriveFitFail;
    for (std::uint32_t done = 0; done < sectors;) {
      const std::uint32_t piece = std::min(kMostSectorsPerMcfsCommand, sectors - done);
      const ECODE result = ReadMcfsRecord(kFidFit, static_cast<std::uint16_t>(done), static_cast<std::uint16_t>(piece),
                                          to + std::size_t{done} * kSectorBytes);
      if (result != 0) return false;
      done += piece;
    }
    return sectors != 0;
  }
};

// The MCFS directory file: a raw FSI of one sector, then the raw FIT.
class DirectoryFileTables : public TableReader {
 public:
  explicit DirectoryFileTables(const std::string& path) : path_(path) {}
  bool ReadFsi(std::uint8_t* to, std::string* message) override {
    return Explained(ReadFromFile(path_, 0, to, kSectorBytes), message);
  }
  bool ReadFit(std::uint32_t sectors, std::uint8_t* to, std::string* message) override {
    return Explained(ReadFromFile(path_, kSectorBytes, to, std::size_t{sectors} * kSectorBytes), message) &&
           sectors != 0;
  }

 private:
  static bool Explained(Failure failure, std::string* message) {
    *message = failure == kFileOpenFail ? kDirectoryFileAbsent : kDirectoryFileUnread;
    return failure == nullptr;
  }
  std::string path_;
};

class RecordFileTables : public TableReader {
 public:
  bool ReadFsi(std::uint8_t* to, std::string* message) override { return Read("FSI     ", 1, to, message); }
  bool ReadFit(std::uint32_t sectors, std::uint8_t* to, std::string* message) override {
    return Read("FIT     ", sectors, to, message);
  }

 private:
  static bool Read(const char* record, std::uint32_t sectors, std::uint8_t* to, std::string* message) {
    const RecordName name(record);
    const Failure failure = ReadFromFile(name.FileName(false), 0, to, std::size_t{sectors} * kSectorBytes);
    *message = RecordMessage(name, failure == nullptr ? kFileReadFail : failure);
    return failure == nullptr && sectors != 0;
  }
};

bool LoadTables(TableReader* reader, std::vector<std::uint8_t>* fit) {
  std::string message;
  std::vector<std::uint8_t> fsi(kSectorBytes);
  bool loaded = reader->ReadFsi(fsi.data(), &message);
  if (loaded) {
    fit->resize(std::size_t{FormatFsi(fsi.data())} * kSectorBytes);
    loaded = reader->ReadFit(static_cast<std::uint32_t>(fit->size() / kSectorBytes), fit->data(), &message);
  }
  if (!loaded) ShowMessage(message);
  return loaded;
}

bool IsAllZero(const std::uint8_t* data, std::size_t size) {
  return std::all_of(data, data + size, [](std::uint8_t byte) { return byte == 0; });
}

// The error log grows over the tracks that it was given: those whose first sector was written count.
std::uint32_t MeasureErrorLogOnDrive(const DirectoryEntry& entry) {
  if (entry.location != 1) {
    ShowMessage(RecordMessage(entry.name, kErrorLogMisplaced));
    std::exit(1);  // a log read from a wrong place would condemn good drives
  }
  std::uint32_t sectors = 0;
  std::uint8_t first_sector[kSectorBytes];
  for (std::uint32_t track = 0; track < entry.size * HeadCount(); ++track) {
    const PhysicalAddress address = {entry.start_cylinder + track / HeadCount(), track % HeadCount(), 1};
    if (ReadPhysical(address, 1, first_sector) != 0 || IsAllZero(first_sector, sizeof first_sector)) break;
    sectors += kMaintenanceSectorsPerTrack;
  }
  return sectors;
}

std::uint32_t MeasureErrorLog(AccessMode mode, const DirectoryEntry& entry) {
  std::uint64_t bytes = 0;
  switch (mode) {
    case AccessMode::kDisk:
      return MeasureErrorLogOnDrive(entry);
    case AccessMode::kFile:
      return platform::FileSize(entry.name.FileName(false), &bytes) ? Sectors(bytes / kSectorBytes) : 0;
    case AccessMode::kMcf:
    case AccessMode::kMcw:
      break;
  }
  return kMaintenanceSectorsPerTrack * HeadCount();
}

// A descriptor as a directory entry: its size in sectors whatever it was counted in.
DirectoryEntry Scaled(AccessMode mode, DirectoryEntry entry) {
  entry.room = entry.size;
  if ((entry.attributes & kCountedInTracks) == 0) return entry;
  const std::uint32_t heads = (entry.attributes & kOnEveryHead) != 0 ? 1 : HeadCount();
  entry.room = Sectors(std::uint64_t{entry.size} * kMaintenanceSectorsPerTrack * heads);
  entry.size = entry.name.Matches(kErrorLog) ? Sectors(MeasureErrorLog(mode, entry)) : entry.room;
  return entry;
}

// The entries that the drive's own file system does not list.
void AddPseudoEntries(const DriveIdentity& identity, std::vector<DirectoryEntry>* entries) {
  DirectoryEntry identify;
  identify.identifier = kFidIdentifyData;
  identify.name = RecordName("VU_IDFY ");
  identify.size = Sectors(identity.identify_data.size() / kSectorBytes);
  DirectoryEntry expert;
  expert.identifier = kFidExpert;
  expert.name = RecordName("EXPERT  ");
  expert.location = 19;
  expert.size = 8;
  expert.room = 8;
  expert.start_cylinder = 1;
  entries->push_back(identify);
  entries->push_back(expert);
}

}  // namespace

bool RecordSource::LoadDirectory() {
  ForgetDirectory();
  switch (identity_->access.mode) {
    case AccessMode::kDisk:
    case AccessMode::kFile:
      break;
    case AccessMode::kMcf:
      return LoadFromMcf();
    case AccessMode::kMcw:
      return LoadFromMcw();
  }
  return LoadFromDriveOrFiles();
}

bool RecordSource::SetDirectory(std::uint16_t header_flags, std::uint32_t header_sectors,
                                std::vector<DirectoryEntry> entries) {
  identity_->header_flags = header_flags;
  directory_ = std::make_unique<Directory>(header_sectors, std::move(entries));
  return true;
}

bool RecordSource::LoadFromDriveOrFiles() {
  const AccessMode mode = identity_->access.mode;
  DriveTables drive;
  DirectoryFileTables directory_file(identity_->access.directory_file);
  RecordFileTables files;
  TableReader* reader = &drive;
  if (mode == AccessMode::kFile) reader = &files;
  if (mode == AccessMode::kDisk && identity_->use_directory_file) reader = &directory_file;

  std::vector<std::uint8_t> raw;
  if (!LoadTables(reader, &raw)) return false;
  const Fit fit = FormatFit(&raw, 0);
  const bool has_copies = (fit.flags & kHeaderMcfsRead) != 0;
  const std::size_t count =
      std::min(fit.descriptor_count + (has_copies ? 6 : 2), std::uint32_t{Directory::kMostEntries});
  std::vector<DirectoryEntry> entries;
  entries.reserve(count);
  AddPseudoEntries(*identity_, &entries);
  for (const DirectoryEntry& descriptor : fit.descriptors) {
    if (entries.size() >= count) break;
    DirectoryEntry entry = descriptor;
    ++entry.location;  // entries count sectors from 1
    entries.push_back(Scaled(mode, entry));
    if (!has_copies || !HasSecondCopy(entry.name) || entries.size() >= count) continue;
    entries.push_back(entries.back());
    entries.back().identifier |= kFidSecondCopy;
  }
  entries.resize(count);
  return SetDirectory(fit.flags, fit.sectors + 1, std::move(entries));
}

bool RecordSource::LoadFromMcf() {
  if (const Failure failure = mcf_.Open()) {
    ShowMessage(failure);
    return false;
  }
  SetDirectory(0, mcf_.image().header_sectors(), mcf_.image().entries());
  const DirectoryEntry* entry = FindEntry(RecordName("FIT     "), 0, Report::kNo, false);
  if (entry == nullptr || entry->size == 0) return true;  // an image without one has the standard header
  const Record record = FetchRecord(entry->name);
  if (!record) {
    ForgetDirectory();
    return false;
  }
  std::vector<std::uint8_t> raw(record.bytes.get(), record.bytes.get() + record.size);
  identity_->header_flags = FormatFit(&raw, 0).flags;
  return true;
}

bool RecordSource::LoadFromMcw() {
  constexpr std::size_t kFitSectors = 8;
  std::vector<std::uint8_t> raw(kFitSectors * kSectorBytes);
  if (const Failure failure = ReadFromFile(identity_->access.image_file, 0, raw.data(), raw.size())) {
    ShowMessage(failure);
    return false;
  }
  // Old and new tools put different names here, so no name proves anything: every file passes.
  const bool both_names = std::memcmp(raw.data(), "FIT     ", 8) == 0 && std::memcmp(raw.data(), "FIT_DATA", 8) == 0;
  if (both_names) {
    ShowMessage("PELIX doesn't support this format.\nYou should check if this file is really MCW file.");
    return false;
  }
  const std::uint32_t fsi_sector =
      CManagerFIT(raw.data(), static_cast<std::uint32_t>(raw.size())).GetNumberSector("FSI     ");
  std::uint8_t fsi[kSectorBytes];
  if (ReadFromFile(identity_->access.image_file, std::uint64_t{fsi_sector} * kSectorBytes, fsi, sizeof fsi) !=
      nullptr) {
    ShowMessage(kMcwFsiFail);
    return false;
  }
  FormatFsi(fsi);
  constexpr std::uint32_t kExtraEntries = 2;  // where the other directories have their pseudo-entries
  Fit fit = FormatFit(&raw, kExtraEntries);
  for (DirectoryEntry& entry : fit.descriptors) entry = Scaled(AccessMode::kMcw, entry);
  return SetDirectory(fit.flags, fit.sectors + 1, std::move(fit.descriptors));
}

}  // namespace pelix
