#include "platform/library_entry.h"

#include "platform/win32/windows_api.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
  try {
    if (reason == DLL_PROCESS_ATTACH) platform::OnLibraryLoad();
    if (reason == DLL_PROCESS_DETACH) platform::OnLibraryUnload();
  } catch (...) {
    return FALSE;  // out of memory; the loader tells the host that the library could not be loaded
  }
  return TRUE;
}
