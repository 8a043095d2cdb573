#include "platform/system_files.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include "platform/files.h"
#include "platform/format.h"
#include "platform/win32/windows_api.h"

namespace platform {
namespace {

bool IsFolder(const std::string& path) {
  const DWORD attributes = GetFileAttributesA(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

void CloseFileHandle(HANDLE handle) {
  CloseHandle(handle);
}
using OwnedHandle = win32::Owned<HANDLE, CloseFileHandle>;

// An existing file, to be asked about; nothing when it is not there or may not be opened.
OwnedHandle OpenToAsk(const std::string& path) {
  const HANDLE file = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                  nullptr, OPEN_EXISTING, 0, nullptr);
  return file == INVALID_HANDLE_VALUE ? OwnedHandle() : OwnedHandle(file);
}

}  // namespace

std::string WithSystemSeparators(const std::string& path) {
  std::string name = path;
  for (char& c : name) {
    if (c == '/') c = '\\';
  }
  return name;
}

std::FILE* OpenSystemFile(const std::string& path, const char* mode) {
  return std::fopen(path.c_str(), mode);
}

bool SeekSystemFile(std::FILE* file, std::uint64_t position) {
  return position <= static_cast<std::uint64_t>(INT64_MAX) &&
         _fseeki64(file, static_cast<std::int64_t>(position), SEEK_SET) == 0;
}

bool SystemFileSize(std::FILE* file, std::uint64_t* size) {
  const std::int64_t length = _filelengthi64(_fileno(file));
  if (length < 0) return false;
  *size = static_cast<std::uint64_t>(length);
  return true;
}

bool IsReplaceable(const std::string& path) {
  if (GetFileAttributesA(path.c_str()) == INVALID_FILE_ATTRIBUTES) return true;
  const OwnedHandle file = OpenToAsk(path);
  return !file || GetFileType(file.get()) == FILE_TYPE_DISK;
}

std::FILE* CreateBeside(const std::string& path, const char* mode, std::string* name) {
  constexpr int kMostTries = 1000;
  const int text = std::strchr(mode, 'b') == nullptr ? _O_TEXT : _O_BINARY;
  for (int i = 0; i < kMostTries; ++i) {
    *name = Format("%s.%u-%d.new", path.c_str(), static_cast<unsigned>(GetCurrentProcessId()), i);
    const int file = _open(name->c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | text, _S_IREAD | _S_IWRITE);
    if (file >= 0) return _fdopen(file, mode);
    if (errno != EEXIST) break;
  }
  name->clear();
  return nullptr;
}

std::string WithoutLinks(const std::string& path) {
  return path;
}

const char* LineEnd() {
  return "\r\n";
}

bool RenameOver(const std::string& from, const std::string& to) {
  return MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

bool FileExists(const std::string& path) {
  return GetFileAttributesA(SystemPath(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

RemoveResult RemoveFile(const std::string& path) {
  if (DeleteFileA(SystemPath(path).c_str())) return RemoveResult::kRemoved;
  const DWORD error = GetLastError();
  const bool absent = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
  return absent ? RemoveResult::kAbsent : RemoveResult::kFailed;
}

bool MakeFolder(const std::string& path) {
  return CreateDirectoryA(SystemPath(path).c_str(), nullptr) || IsFolder(SystemPath(path));
}

std::string CurrentFolder() {
  std::string path(32768, '\0');
  path.resize(GetCurrentDirectoryA(static_cast<DWORD>(path.size()), path.data()));
  return path;
}

std::string FullPath(const std::string& path) {
  std::string full(32768, '\0');
  const DWORD length =
      GetFullPathNameA(SystemPath(path).c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
  if (length == 0 || length >= full.size()) return path;
  full.resize(length);
  return full;
}

namespace {

// What the system knows a file by; false when it is not there.
bool FindIdentity(const std::string& path, BY_HANDLE_FILE_INFORMATION* identity) {
  const OwnedHandle file = OpenToAsk(SystemPath(path));
  return file && GetFileInformationByHandle(file.get(), identity) != 0;
}

std::string FolderOf(HMODULE module) {
  std::string path(32768, '\0');
  path.resize(GetModuleFileNameA(module, path.data(), static_cast<DWORD>(path.size())));
  return path.substr(0, path.find_last_of("\\/"));
}

}  // namespace

bool IsSameFile(const std::string& path, const std::string& other) {
  BY_HANDLE_FILE_INFORMATION one;
  BY_HANDLE_FILE_INFORMATION two;
  return FindIdentity(path, &one) && FindIdentity(other, &two) &&
         one.dwVolumeSerialNumber == two.dwVolumeSerialNumber && one.nFileIndexHigh == two.nFileIndexHigh &&
         one.nFileIndexLow == two.nFileIndexLow;
}

std::string ProgramFolder() {
  return FolderOf(nullptr);
}

std::string LibraryFolder() {
  return FolderOf(win32::ThisModule());
}

// The system itself matches names whatever their case.
std::string SystemPath(const std::string& path) {
  return WithSystemSeparators(path);
}

}  // namespace platform
