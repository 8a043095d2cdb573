#include "records/record_source.h"

#include <new>

#include "drive/configuration.h"

namespace pelix {
namespace {

constexpr char kNotInDirectory[] = "PELIX cannot find this in MCFR directory";
constexpr char kSizeIsZero[] = "File size is zero";
constexpr char kMisaligned[] = " Offset is not a multiple of 0x40.\n ";

// False, and the message about that record, when something failed.
bool Succeeded(const RecordName& name, Failure failure) {
  if (failure == nullptr) return true;
  ShowMessage(RecordMessage(name, failure));
  return false;
}

std::string ReadingText(const RecordName& name) {
  return platform::Format("Reading \"%s\"", name.Shown().c_str());
}

SectorRange Whole(const DirectoryEntry& entry) {
  return {0, entry.size};
}

}  // namespace

Record MakeRecord(const DirectoryEntry& entry) {
  Record record;
  record.size = Whole(entry).Bytes();
  record.bytes.reset(new (std::nothrow) std::uint8_t[record.size]);
  return record;
}

RecordSource::RecordSource(DriveIdentity* identity)
    : identity_(identity), disk_(identity), mcf_(&identity->access), mcw_(&identity->access) {}

RecordOrigin& RecordSource::Origin(AccessMode mode) {
  switch (mode) {
    case AccessMode::kDisk:
      break;
    case AccessMode::kMcf:
      return mcf_;
    case AccessMode::kFile:
      return files_;
    case AccessMode::kMcw:
      return mcw_;
  }
  return disk_;
}

void RecordSource::ForgetDirectory() {
  directory_.reset();
  identity_->header_flags = 0;
}

DirectoryEntry* RecordSource::FindEntry(const RecordName& name, std::uint32_t index, Report report, bool second_copy) {
  const bool tell = report == Report::kYes;
  if (directory_ == nullptr) {
    ShowMessage(kNoDirectory);  // whoever looks is to know what to turn on
    return nullptr;
  }
  DirectoryEntry* entry = directory_->Find(name, index, second_copy);
  if (entry == nullptr) {
    if (tell) Succeeded(name, kNotInDirectory);
  } else if (entry->size == 0 && tell) {
    Succeeded(name, kSizeIsZero);
    return nullptr;
  }
  return entry;
}

Failure RecordSource::ReadRange(AccessMode source, const DirectoryEntry& entry, SectorRange range, std::uint8_t* to) {
  if (CountsBlocks(entry, *identity_) && range.offset % kSectorsPerBlock != 0) return kMisaligned;
  if (std::uint64_t{range.offset} + range.count > entry.size) return kSizeMismatch;
  return Origin(source).Read(entry, range, to);
}

bool RecordSource::ReadSectors(const DirectoryEntry& entry, SectorRange range, std::uint8_t* to) {
  return Succeeded(entry.name, ReadRange(identity_->access.mode, entry, range, to));
}

bool RecordSource::WriteSectors(const DirectoryEntry& entry, SectorRange range, std::uint8_t* from) {
  if (std::uint64_t{range.offset} + range.count > entry.size) return Succeeded(entry.name, kSizeMismatch);
  return Succeeded(entry.name, Origin(identity_->access.mode).Write(entry, range, from));
}

// Reads a whole record; on a drive that addresses large ones in blocks, by blocks.
Failure RecordSource::ReadWholeEntry(AccessMode source, DirectoryEntry* entry, std::uint8_t* to) {
  if (source == AccessMode::kDisk && (identity_->header_flags & kHeaderBlockOffsets) != 0) {
    entry->identifier |= kFidBlockOffsets;
  }
  return ReadRange(source, *entry, Whole(*entry), to);
}

Record RecordSource::FetchRecord(const RecordName& name, std::uint32_t index, bool second_copy) {
  Progress progress(ReadingText(name));
  progress.SetPosition(0);
  const DirectoryEntry* found = FindEntry(name, index, Report::kNo, second_copy);
  if (found == nullptr || found->size == 0) return {};
  DirectoryEntry entry = *found;
  Record record = MakeRecord(entry);
  if (!record || !Succeeded(name, ReadWholeEntry(identity_->access.mode, &entry, record.bytes.get()))) return {};
  progress.SetPosition(100);
  return record;
}

bool RecordSource::ReadWhole(const RecordName& name, std::uint8_t* to, std::uint32_t index, bool second_copy) {
  const DirectoryEntry* entry = FindEntry(name, index, Report::kYes, second_copy);
  return entry != nullptr && ReadSectors(*entry, Whole(*entry), to);
}

bool RecordSource::ReadPart(const RecordName& name, SectorRange range, std::uint8_t* to, std::uint32_t index,
                            bool second_copy) {
  const DirectoryEntry* entry = FindEntry(name, index, Report::kYes, second_copy);
  return entry != nullptr && ReadSectors(*entry, range, to);
}

bool RecordSource::WriteWhole(const RecordName& name, std::uint8_t* from, std::uint32_t index) {
  const DirectoryEntry* entry = FindEntry(name, index, Report::kYes, false);
  return entry != nullptr && WriteSectors(*entry, Whole(*entry), from);
}

bool RecordSource::WritePart(const RecordName& name, SectorRange range, std::uint8_t* from, std::uint32_t index) {
  const DirectoryEntry* entry = FindEntry(name, index, Report::kYes, false);
  return entry != nullptr && WriteSectors(*entry, range, from);
}

bool RecordSource::SaveRecordToFile(const RecordName& name, bool second_copy) {
  DirectoryEntry* entry = FindEntry(name, 0, Report::kYes, second_copy);
  if (entry == nullptr) return false;
  if (identity_->access.mode == AccessMode::kMcf && FileIsImage(*entry)) return Succeeded(name, kFileWriteFail);
  const Record record = MakeRecord(*entry);
  if (!record || !Succeeded(name, ReadWholeEntry(identity_->access.mode, entry, record.bytes.get()))) return false;
  return Succeeded(name, files_.Write(*entry, Whole(*entry), record.bytes.get()));
}

// What identification reads when records do not come from the drive. Left unwritten when anything fails.
void RecordSource::LeaveIdentifyData(const std::string& path, const Record& record) const {
  if (platform::IsSameFile(path, identity_->access.image_file)) return;  // it would replace the image
  if (WriteToFile(path, "wb", 0, record.bytes.get(), record.size) == nullptr) return;
  platform::RemoveFile(path);  // half of it would be taken for a drive without serial number and zones
}

bool RecordSource::SwitchToMcf() {
  identity_->access.mode = AccessMode::kMcf;
  if (!LoadDirectory()) return false;
  const RecordName name("VU_IDFY ");
  const DirectoryEntry* entry = FindEntry(name, 0, Report::kNo, false);
  const Record record = FetchRecord(name);
  if (record) LeaveIdentifyData(entry->name.FileName(false), record);
  return true;
}

bool RecordSource::SwitchToMcw() {
  identity_->access.mode = AccessMode::kMcw;
  if (!LoadDirectory()) return false;
  const Record record = FetchRecord(RecordName("IDENTIFY"));
  if (record) LeaveIdentifyData("VU_IDFY.BIN", record);
  return true;
}

}  // namespace pelix
