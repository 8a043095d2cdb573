#include "platform/shared_library.h"

#include "platform/files.h"

namespace platform {

bool SharedLibrary::LoadOptional(const std::string& name) {
  std::string error;  // it may be absent
  for (const std::string& folder : {ProgramFolder(), LibraryFolder()}) {
    if (Load(folder + "/" + SharedLibraryFile(name), &error)) return true;
  }
  return false;
}

}  // namespace platform
