// What the file services need of the operating system. Paths are the system's own (SystemPath has made them so).
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

namespace platform {

// A path with the system's separators, its parts in the case in which they were given.
std::string WithSystemSeparators(const std::string& path);
// Null for a folder too.
std::FILE* OpenSystemFile(const std::string& path, const char* mode);
bool SeekSystemFile(std::FILE* file, std::uint64_t position);
bool SystemFileSize(std::FILE* file, std::uint64_t* size);
// Whether a file of that name may be replaced by renaming another over it: there is none, or a regular one.
bool IsReplaceable(const std::string& path);
// A new file in the same folder, under a name that no file had and with the rights of the file at `path`.
std::FILE* CreateBeside(const std::string& path, const char* mode, std::string* name);
// The file that a link at `path` leads to; `path` itself when it is none.
std::string WithoutLinks(const std::string& path);
// What ends a line of a text file here.
const char* LineEnd();
bool RenameOver(const std::string& from, const std::string& to);

}  // namespace platform
