#include "platform/library_entry.h"

#include <cstdio>

namespace {

// Functions, not an object: at the program's exit the library's static objects are gone before the second one runs.
__attribute__((constructor)) void Loaded() {
  try {
    platform::OnLibraryLoad();
  } catch (...) {
    std::fputs("PELIX: start-up failed for want of memory\n", stderr);
  }
}

__attribute__((destructor)) void Unloaded() {
  try {
    platform::OnLibraryUnload();
  } catch (...) {
    std::fputs("PELIX: shut-down failed for want of memory\n", stderr);
  }
}

}  // namespace
