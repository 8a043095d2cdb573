// The parts of the file services that are the same on every platform.
#include "platform/files.h"

#include "platform/format.h"
#include "platform/system_files.h"

namespace platform {

File File::Open(const std::string& path, const char* mode) {
  File file;
  // What is only to be read is there as named, nearly always; another case is looked for when it is not.
  const bool exists_already = mode[0] == 'r';
  if (exists_already) file.file_.reset(OpenSystemFile(WithSystemSeparators(path), mode));
  if (file.file_ == nullptr) file.file_.reset(OpenSystemFile(SystemPath(path), mode));
  return file;
}

File File::Adopt(std::FILE* open) {
  File file;
  file.file_.reset(open);
  return file;
}

std::size_t File::ReadSome(void* to, std::size_t size) {
  return file_ == nullptr ? 0 : std::fread(to, 1, size, file_.get());
}

bool File::Write(const void* from, std::size_t size) {
  if (file_ == nullptr || std::fwrite(from, 1, size, file_.get()) != size) failed_ = true;
  return !failed_;
}

bool File::Seek(std::uint64_t position) {
  return file_ != nullptr && SeekSystemFile(file_.get(), position);
}

bool File::Size(std::uint64_t* size) {
  return file_ != nullptr && SystemFileSize(file_.get(), size);
}

bool File::Flush() {
  if (file_ == nullptr || std::fflush(file_.get()) != 0) failed_ = true;
  return !failed_;
}

bool File::Close() {
  if (file_ == nullptr) return false;
  const bool flushed = Flush();
  failed_ = false;
  return std::fclose(file_.release()) == 0 && flushed;
}

ReplacingFile::~ReplacingFile() {
  if (!file_.IsOpen()) return;
  file_ = File();
  if (!temporary_.empty()) RemoveFile(temporary_);
}

bool ReplacingFile::Open(const std::string& path, const char* mode) {
  path_ = WithoutLinks(SystemPath(path));
  temporary_.clear();
  if (IsReplaceable(path_)) {
    file_ = File::Adopt(CreateBeside(path_, mode, &temporary_));
  } else {
    file_ = File::Open(path_, mode);
  }
  return file_.IsOpen();
}

bool ReplacingFile::Commit() {
  const bool written = file_.Close();
  if (temporary_.empty()) return written;
  if (written && RenameOver(temporary_, path_)) return true;
  RemoveFile(temporary_);
  return false;
}

bool FileSize(const std::string& path, std::uint64_t* size) {
  File file = File::Open(path, "rb");
  return file.Size(size);
}

bool ReadWholeFile(const std::string& path, std::size_t limit, std::string* content) {
  content->clear();
  File file = File::Open(path, "rb");
  if (!file.IsOpen()) return false;
  char piece[16384];
  for (;;) {
    const std::size_t got = file.ReadSome(piece, sizeof piece);
    if (got == 0) return file.AtEnd();
    if (got > limit - content->size()) return false;
    content->append(piece, got);
  }
}

namespace {

// Names that Windows keeps for devices, alone or before an extension.
bool IsDeviceName(const std::string& name) {
  const std::string stem = name.substr(0, name.find('.'));
  for (const char* device : {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"}) {
    if (EqualIgnoringCase(stem, device)) return true;
  }
  if (stem.size() != 4 || stem[3] < '0' || stem[3] > '9') return false;
  return EqualIgnoringCase(stem.substr(0, 3), "COM") || EqualIgnoringCase(stem.substr(0, 3), "LPT");
}

}  // namespace

std::string SafeFileName(const std::string& name, bool (*allowed)(char)) {
  std::string safe = name;
  for (char& c : safe) {
    if (!allowed(c)) c = '_';
  }
  return IsDeviceName(safe) ? "_" + safe : safe;
}

}  // namespace platform
