#include "platform/system_files.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/files.h"
#include "platform/format.h"

namespace platform {

std::string WithSystemSeparators(const std::string& path) {
  std::string name = path;
  std::replace(name.begin(), name.end(), '\\', '/');
  return name;
}

std::FILE* OpenSystemFile(const std::string& path, const char* mode) {
  std::FILE* file = std::fopen(path.c_str(), mode);
  struct stat status;
  if (file == nullptr || fstat(fileno(file), &status) != 0 || !S_ISDIR(status.st_mode)) return file;
  std::fclose(file);  // "r" opens folders
  return nullptr;
}

bool SeekSystemFile(std::FILE* file, std::uint64_t position) {
  return position <= static_cast<std::uint64_t>(INT64_MAX) && fseeko(file, static_cast<off_t>(position), SEEK_SET) == 0;
}

bool SystemFileSize(std::FILE* file, std::uint64_t* size) {
  struct stat status;
  if (fstat(fileno(file), &status) != 0) return false;
  *size = static_cast<std::uint64_t>(status.st_size);
  return true;
}

bool IsReplaceable(const std::string& path) {
  struct stat status;
  return stat(path.c_str(), &status) != 0 || S_ISREG(status.st_mode);
}

std::FILE* CreateBeside(const std::string& path, const char* mode, std::string* name) {
  constexpr int kMostTries = 1000;
  struct stat status;
  const mode_t rights = stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0666;
  for (int i = 0; i < kMostTries; ++i) {
    *name = Format("%s.%d-%d.new", path.c_str(), static_cast<int>(getpid()), i);
    const int file = open(name->c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, rights);
    if (file < 0 && errno == EEXIST) continue;
    if (file < 0) break;
    if (rights != 0666) (void)!fchmod(file, rights);  // where it may not, the new file is the stricter one
    return fdopen(file, mode);
  }
  name->clear();
  return nullptr;
}

std::string WithoutLinks(const std::string& path) {
  char target[PATH_MAX];
  return realpath(path.c_str(), target) != nullptr ? target : path;
}

const char* LineEnd() {
  return "\n";
}

bool RenameOver(const std::string& from, const std::string& to) {
  return std::rename(from.c_str(), to.c_str()) == 0;
}

bool FileExists(const std::string& path) {
  struct stat status;
  return stat(SystemPath(path).c_str(), &status) == 0;
}

RemoveResult RemoveFile(const std::string& path) {
  if (unlink(SystemPath(path).c_str()) == 0) return RemoveResult::kRemoved;
  return errno == ENOENT || errno == ENOTDIR ? RemoveResult::kAbsent : RemoveResult::kFailed;
}

bool MakeFolder(const std::string& path) {
  const std::string name = SystemPath(path);
  if (mkdir(name.c_str(), 0777) == 0) return true;
  struct stat status;
  return errno == EEXIST && stat(name.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::string CurrentFolder() {
  char path[PATH_MAX];
  return getcwd(path, sizeof path) != nullptr ? path : ".";
}

std::string FullPath(const std::string& path) {
  const std::string name = SystemPath(path);
  return !name.empty() && name[0] == '/' ? name : CurrentFolder() + "/" + name;
}

bool IsSameFile(const std::string& path, const std::string& other) {
  struct stat one;
  struct stat two;
  if (stat(SystemPath(path).c_str(), &one) != 0 || stat(SystemPath(other).c_str(), &two) != 0) return false;
  return one.st_dev == two.st_dev && one.st_ino == two.st_ino;
}

std::string ProgramFolder() {
  char path[PATH_MAX];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
  if (length <= 0 || static_cast<std::size_t>(length) == sizeof path) return ".";
  const std::string program(path, static_cast<std::size_t>(length));
  return program.substr(0, program.find_last_of('/'));
}

std::string LibraryFolder() {
  Dl_info library = {};
  if (dladdr(reinterpret_cast<const void*>(&LibraryFolder), &library) == 0) return ProgramFolder();
  const std::string path = library.dli_fname;
  return path[0] == '/' ? path.substr(0, path.find_last_of('/')) : ProgramFolder();
}

namespace {

struct FolderCloser {
  void operator()(DIR* folder) const { closedir(folder); }
};

// The entry of `folder` that is called `name` but for its case; `name` itself when there is none.
std::string MatchingEntry(const std::string& folder, const std::string& name) {
  const std::unique_ptr<DIR, FolderCloser> entries(opendir(folder.empty() ? "." : folder.c_str()));
  if (entries == nullptr) return name;
  while (const dirent* entry = readdir(entries.get())) {
    if (EqualIgnoringCase(entry->d_name, name)) return entry->d_name;
  }
  return name;
}

}  // namespace

std::string SystemPath(const std::string& path) {
  const std::string name = WithSystemSeparators(path);
  struct stat status;
  if (stat(name.c_str(), &status) == 0) return name;
  std::string found;
  for (std::size_t at = 0; at < name.size();) {
    const std::size_t end = std::min(name.find('/', at), name.size());
    const std::string part = name.substr(at, end - at);
    const bool exists = part.empty() || stat((found + part).c_str(), &status) == 0;
    found += exists ? part : MatchingEntry(found, part);
    if (end < name.size()) found += '/';
    at = end + 1;
  }
  return found;
}

}  // namespace platform
