// Copying every record from one origin to another, and the menu commands made of it.
#include "drive/configuration.h"
#include "platform/prompts.h"
#include "records/record_source.h"

namespace pelix {
namespace {

constexpr char kCannotWrite[] = "PELIX cannot write this item into MCF file.";
constexpr std::size_t kLongestFileName = 260;

std::string Shown(const DirectoryEntry& entry) {
  return entry.name.Shown();
}

void TellLeftOut(const DirectoryEntry& entry, const char* why) {
  Output("\"%s\" was left out : %s\n", Shown(entry).c_str(), why);
}

}  // namespace

bool RecordSource::CopyAllRecords(AccessMode source, AccessMode destination) {
  if (directory_ == nullptr) {
    ShowMessage(kNoDirectory);
    return false;
  }
  // A copy of the directory takes the places and sizes in the new image; the loaded one stays that of its source.
  Directory directory = *directory_;
  std::string problem;
  {
    const SwitchScope quiet(&g_host->interactive, false);
    problem = CopyEntries(source, destination, &directory);
  }
  ShowMessage(problem.empty() ? "DONE" : problem);
  return problem.empty();
}

// The message that says what stopped the copy, empty when nothing did.
std::string RecordSource::CopyEntries(AccessMode source, AccessMode destination, Directory* directory) {
  const bool to_image = destination == AccessMode::kMcf;
  if (source == AccessMode::kMcf) {
    if (const Failure failure = mcf_.Open()) return failure;
  }
  if (to_image) {
    if (const Failure failure = mcf_.Create(*directory)) return failure;
  }
  std::vector<DirectoryEntry>* entries = &directory->entries();
  std::vector<DirectoryEntry> on_drive;
  if (source == AccessMode::kMcf && destination == AccessMode::kDisk) {
    on_drive = ImageEntriesOnDrive(directory);
    entries = &on_drive;
  }
  Progress progress("");
  for (DirectoryEntry& entry : *entries) {
    if (entry.size == 0) continue;
    progress.SetText(platform::Format("Reading \"%s\"", Shown(entry).c_str()));
    progress.SetPosition(0);
    Record record;
    if (source == AccessMode::kMcf && destination == AccessMode::kFile && FileIsImage(entry)) {
      TellLeftOut(entry, "its file would replace the image");
      continue;
    }
    if (const Failure failure = ReadForCopy(source, entry, &record)) {
      TellLeftOut(entry, failure);
      entry.size = 0;
      continue;
    }
    progress.SetPosition(50);
    const SectorRange whole = {0, entry.size};
    const Failure failure = to_image ? mcf_.Append(&entry, record.bytes.get())
                                     : Origin(destination).Write(entry, whole, record.bytes.get());
    if (failure != nullptr) return RecordMessage(entry.name, kCannotWrite);
    progress.SetPosition(100);
  }
  if (to_image) {
    if (const Failure failure = mcf_.RewriteHeader(*directory)) return failure;
  }
  return "";
}

// The records of the opened image, as large as they are there, where the drive has them. Second copies are the drive's
// own to write: their entries name the place of the first.
std::vector<DirectoryEntry> RecordSource::ImageEntriesOnDrive(Directory* drive) {
  std::vector<DirectoryEntry> entries;
  for (const DirectoryEntry& stored : mcf_.image().entries()) {
    if (stored.size == 0 || stored.IsSecondCopy()) continue;
    DirectoryEntry* entry = nullptr;
    for (std::uint32_t i = 0; (entry = drive->Find(stored.name, i, false)) != nullptr; ++i) {
      if (entry->Fid() == stored.Fid()) break;
    }
    if (entry == nullptr || (stored.size > entry->room && stored.Fid() != kFidIdentifyData)) {
      TellLeftOut(stored, entry == nullptr ? "the drive has no such record" : kSizeMismatch);
      continue;
    }
    entries.push_back(*entry);
    entries.back().size = stored.size;
  }
  return entries;
}

// Whether the record's file is the image itself.
bool RecordSource::FileIsImage(const DirectoryEntry& entry) const {
  return platform::IsSameFile(entry.name.FileName(entry.IsSecondCopy()), identity_->access.image_file);
}

// A drive that addresses in blocks does so only where one command cannot carry the record.
Failure RecordSource::ReadForCopy(AccessMode source, DirectoryEntry entry, Record* record) {
  const bool in_blocks = source == AccessMode::kDisk && entry.size > kMostSectorsPerMcfsCommand &&
                         (identity_->header_flags & kHeaderBlockOffsets) != 0;
  if (in_blocks) entry.identifier |= kFidBlockOffsets;
  *record = MakeRecord(entry);
  if (!*record) return "there is not enough memory for it";
  return ReadRange(source, entry, {0, entry.size}, record->bytes.get());
}

namespace {

bool AskForImageName() {
  return platform::AskText("Enter MCF file name.", kLongestFileName, &g_identity->access.image_file);
}

// Loads the directory of a copy's source; the access mode is what it was afterwards. Without "Use MCFS" there is none,
// which the copy then says. The drive is identified again: its geometry is needed, and its identify data is copied.
bool LoadDirectoryOf(AccessMode source) {
  const ValueScope mode(&g_identity->access.mode, source);
  if (source == AccessMode::kDisk) return Identify(&*g_identity, true);
  if (g_identity->use_mcfs) return g_records->LoadDirectory();
  g_records->ForgetDirectory();
  return true;
}

}  // namespace

void CopyDiskToMcf() {
  if (AskForImageName() && LoadDirectoryOf(AccessMode::kDisk)) {
    g_records->CopyAllRecords(AccessMode::kDisk, AccessMode::kMcf);
  }
}

void CopyDiskToFiles() {
  if (LoadDirectoryOf(AccessMode::kDisk)) g_records->CopyAllRecords(AccessMode::kDisk, AccessMode::kFile);
}

void CopyMcfToDisk() {
  if (!AskForImageName()) return;
  bool opened = false;
  {
    const ValueScope mode(&g_identity->access.mode, AccessMode::kMcf);
    opened = g_records->SwitchToMcf() && Identify(&*g_identity, true);
  }
  // Where the records go is the drive's to say: an image keeps its own places only.
  if (opened && LoadDirectoryOf(AccessMode::kDisk)) {
    g_records->CopyAllRecords(AccessMode::kMcf, AccessMode::kDisk);
  }
}

void CopyMcfToFiles() {
  if (AskForImageName() && LoadDirectoryOf(AccessMode::kMcf)) {
    g_records->CopyAllRecords(AccessMode::kMcf, AccessMode::kFile);
  }
}

}  // namespace pelix
