#include "platform/win32/windows_api.h"

namespace platform::win32 {

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

}  // namespace platform::win32
