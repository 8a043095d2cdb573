#include "platform/shared_library.h"

#include "platform/files.h"
#include "platform/format.h"
#include "platform/win32/windows_api.h"

namespace platform {

bool SharedLibrary::Load(const std::string& path, std::string* error) {
  Unload();
  // By its full path, and what it needs in turn from beside it: a name alone would be found in the current folder.
  const std::string full = FullPath(path);
  const UINT mode = SetErrorMode(SEM_FAILCRITICALERRORS);
  handle_ = LoadLibraryExA(full.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  const DWORD code = GetLastError();
  SetErrorMode(mode);
  if (handle_ == nullptr) *error = Format("cannot load \"%s\": error %u", full.c_str(), static_cast<unsigned>(code));
  return handle_ != nullptr;
}

void SharedLibrary::Unload() {
  if (handle_ != nullptr) FreeLibrary(static_cast<HMODULE>(handle_));
  handle_ = nullptr;
}

void* SharedLibrary::Find(const char* name) const {
  if (handle_ == nullptr) return nullptr;
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle_), name));
}

std::string SharedLibraryFile(const std::string& name) {
  return name + ".dll";
}

}  // namespace platform
