#include "platform/shared_library.h"

#include <dlfcn.h>

#include "platform/files.h"

namespace platform {

bool SharedLibrary::Load(const std::string& path, std::string* error) {
  Unload();
  handle_ = dlopen(FullPath(path).c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle_ == nullptr) *error = dlerror();
  return handle_ != nullptr;
}

void SharedLibrary::Unload() {
  if (handle_ != nullptr) dlclose(handle_);
  handle_ = nullptr;
}

void* SharedLibrary::Find(const char* name) const {
  return handle_ == nullptr ? nullptr : dlsym(handle_, name);
}

std::string SharedLibraryFile(const std::string& name) {
  return "lib" + name + ".so";
}

}  // namespace platform
