#include "platform/shutdown.h"
#include "platform/win32/windows_api.h"

namespace platform {

int CountOpenHandles() {
  return win32::OpenHandles();
}

namespace win32 {

int& OpenHandles() {
  static int count = 0;
  return count;
}

HINSTANCE ThisModule() {
  HMODULE module = nullptr;
  GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCSTR>(&ThisModule), &module);
  return module;
}

}  // namespace win32
}  // namespace platform
