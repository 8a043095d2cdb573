// Libraries loaded at run time.
#pragma once

#include <string>

namespace platform {

// A loaded library; unloaded by the destructor.
class SharedLibrary {
 public:
  SharedLibrary() = default;
  SharedLibrary(const SharedLibrary&) = delete;
  SharedLibrary& operator=(const SharedLibrary&) = delete;
  ~SharedLibrary() { Unload(); }

  // Loads the file of that name (a path with a folder; never searched for). False, and *error says why, when it
  // cannot be loaded.
  bool Load(const std::string& path, std::string* error);
  // Loads a library that may be absent, by name, from the program's folder or the one that this code was loaded from;
  // never from the current one.
  bool LoadOptional(const std::string& name);
  void Unload();
  bool IsLoaded() const { return handle_ != nullptr; }

  // Address of an exported function, null when there is none of that name.
  void* Find(const char* name) const;

 private:
  void* handle_ = nullptr;
};

// What the system calls a library's file: "libpelix.so", "pelix.dll".
std::string SharedLibraryFile(const std::string& name);

}  // namespace platform
