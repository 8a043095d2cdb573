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
  Progress progress("");
  for (DirectoryEntry& entry : directory->entries()) {
    if (entry.size == 0) continue;
    // Second copies are the drive's own to write; their entries name the place of the first.
    if (destination == AccessMode::kDisk && entry.IsSecondCopy()) continue;
    progress.SetText(platform::Format("Reading \"%s\"", Shown(entry).c_str()));
    progress.SetPosition(0);
    const Record record = ReadForCopy(source, entry);
    if (!record) {
      entry.size = 0;
      continue;
    }
    progress.SetPosition(50);
    const SectorRange whole = {0, entry.size};
    const Failure failure = to_image ? mcf_.Append(&entry, record.bytes.get())
                                     : Origin(destination).Write(entry, whole, record.bytes.get());
    if (failure != nullptr) return platform::Format("\"%s\" : %s", Shown(entry).c_str(), kCannotWrite);
    progress.SetPosition(100);
  }
  if (to_image) {
    if (const Failure failure = mcf_.RewriteHeader(*directory)) return failure;
  }
  return "";
}

// A drive that addresses in blocks does so only where one command cannot carry the record. Nothing when the record
// cannot be read.
Record RecordSource::ReadForCopy(AccessMode source, DirectoryEntry entry) {
  const bool in_blocks = source == AccessMode::kDisk && entry.size > kMostSectorsPerMcfsCommand &&
                         (identity_->header_flags & kHeaderBlockOffsets) != 0;
  if (in_blocks) entry.identifier |= kFidBlockOffsets;
  Record record = MakeRecord(entry);
  if (!record || ReadRange(source, entry, {0, entry.size}, record.bytes.get()) != nullptr) return {};
  return record;
}

namespace {

bool AskForImageName() {
  return platform::AskText("Enter MCF file name.", kLongestFileName, &g_identity->access.image_file);
}

// Loads the directory of a copy's source; the access mode is what it was afterwards. Without "Use MCFS" there is none,
// which the copy then says. The drive is identified again: its geometry is needed, and its identify data is copied.
bool LoadDirectoryOf(AccessMode source) {
  const AccessMode before = g_identity->access.mode;
  g_identity->access.mode = source;
  bool loaded = true;
  if (source == AccessMode::kDisk) {
    loaded = Identify(&*g_identity, true);
  } else if (g_identity->use_mcfs) {
    loaded = g_records->LoadDirectory();
  } else {
    g_records->ForgetDirectory();
  }
  g_identity->access.mode = before;
  return loaded;
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
  const AccessMode before = g_identity->access.mode;
  const bool opened = g_records->SwitchToMcf() && Identify(&*g_identity, true);
  g_identity->access.mode = before;
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
