// Files and folders by the names that users and records give them.
//
// Paths may use "\" on every platform, and names match whatever their case, as on Windows. Relative paths start at
// the current folder. Nothing here shows a message: results say how it went.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

namespace platform {

// An open file, closed at the latest by the destructor. A failure sticks until the file is closed.
class File {
 public:
  File() = default;

  // `mode` as for fopen: "rb", "wb", "r+b", "ab", or the text modes "r", "w", "a".
  static File Open(const std::string& path, const char* mode);

  // Takes over an open file; null gives one that is not open.
  static File Adopt(std::FILE* open);

  bool IsOpen() const { return file_ != nullptr; }
  // Whether the last read stopped at the end of the file and not at a failure.
  bool AtEnd() const { return file_ != nullptr && std::ferror(file_.get()) == 0; }
  // Reads up to `size` bytes; how many came.
  std::size_t ReadSome(void* to, std::size_t size);
  [[nodiscard]] bool Read(void* to, std::size_t size) { return ReadSome(to, size) == size; }
  [[nodiscard]] bool Write(const void* from, std::size_t size);
  [[nodiscard]] bool Write(const std::string& text) { return Write(text.data(), text.size()); }
  [[nodiscard]] bool Seek(std::uint64_t position);
  [[nodiscard]] bool Size(std::uint64_t* size);
  // Hands what was written to the system. False when it or an earlier write failed: a full disk shows here.
  [[nodiscard]] bool Flush();
  // As Flush, then closes. False when nothing was open.
  [[nodiscard]] bool Close();

 private:
  struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  std::unique_ptr<std::FILE, Closer> file_;
  bool failed_ = false;
};

// A file that replaces another: written beside it under a name that nothing else has, checked to the last flush and
// close, and renamed over it. Until Commit succeeds the old file stays as it was; its rights pass to the new one, and a
// link is followed. What is no regular file (a device) is written directly.
class ReplacingFile {
 public:
  ReplacingFile() = default;
  ReplacingFile(const ReplacingFile&) = delete;
  ReplacingFile& operator=(const ReplacingFile&) = delete;
  ~ReplacingFile();

  // `mode` is "w" (text) or "wb".
  [[nodiscard]] bool Open(const std::string& path, const char* mode);
  [[nodiscard]] bool Write(const std::string& text) { return file_.Write(text); }
  [[nodiscard]] bool Write(const void* from, std::size_t size) { return file_.Write(from, size); }
  [[nodiscard]] bool Commit();

 private:
  std::string path_;       // as the system names it
  std::string temporary_;  // empty when the file is written directly
  File file_;
};

bool FileExists(const std::string& path);  // a file or a folder
[[nodiscard]] bool FileSize(const std::string& path, std::uint64_t* size);
// The whole file, at most `limit` bytes; false when it is longer or cannot be read.
[[nodiscard]] bool ReadWholeFile(const std::string& path, std::size_t limit, std::string* content);

enum class RemoveResult { kRemoved, kAbsent, kFailed };
RemoveResult RemoveFile(const std::string& path);

// One level. True when the folder is there afterwards.
[[nodiscard]] bool MakeFolder(const std::string& path);

std::string CurrentFolder();
std::string FullPath(const std::string& path);
// Whether both name one file, however it is written. False when one of them is not there.
bool IsSameFile(const std::string& path, const std::string& other);
// The folder of the running program, without a separator at its end.
std::string ProgramFolder();
// The same of the library that this code is part of; of the program where it is part of that.
std::string LibraryFolder();

// The name that the system has for a path: separators turned, and each part in the case in which it exists.
std::string SystemPath(const std::string& path);

// A name that came with data, made fit to be a file's name: what `allowed` does not accept becomes "_", and a name
// that some system reserves for a device gets "_" in front.
std::string SafeFileName(const std::string& name, bool (*allowed)(char));

}  // namespace platform
