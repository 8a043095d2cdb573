// What every fuzz target needs: an empty folder of its own and no rights to spoil anything outside it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace fuzz {

// Enters a fresh folder, gives up root's rights, and keeps the target's own files in it.
inline void EnterSandbox() {
  constexpr uid_t kNobody = 65534;
  std::string folder = (std::filesystem::temp_directory_path() / "pelix-fuzz-XXXXXX").string();
  if (mkdtemp(folder.data()) == nullptr || chdir(folder.c_str()) != 0) std::abort();
  if (geteuid() != 0) return;
  const bool gave_up = chown(".", kNobody, kNobody) == 0 && setgid(kNobody) == 0 && setuid(kNobody) == 0;
  if (!gave_up) std::abort();
}

inline void EmptyFolder() {
  std::error_code ignored;
  for (const auto& entry : std::filesystem::directory_iterator(".", ignored)) {
    std::filesystem::remove_all(entry.path(), ignored);
  }
}

}  // namespace fuzz
