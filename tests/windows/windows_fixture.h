// The plug-in's rooms in the test's own process, with real windows in the stand-in's host window.
#pragma once

#include "platform/win32/windows_api.h"
#include "plugin/plugin_entry.h"
#include "tests/support/plugin_test.h"
#include "ui/main_window.h"

namespace pelix {
namespace win32 = platform::win32;

inline std::string ClassOf(HWND window) {
  char name[64] = {};
  GetClassNameA(window, name, sizeof name);
  return name;
}

struct Wanted {
  const char* class_name;
  HWND found;
};
inline BOOL CALLBACK TakeEnabled(HWND window, LPARAM data) {
  auto* wanted = reinterpret_cast<Wanted*>(data);
  if (ClassOf(window) != wanted->class_name || !IsWindowVisible(window) || !IsWindowEnabled(window)) return TRUE;
  wanted->found = window;
  return FALSE;
}

// The topmost window of that class that takes input now.
inline HWND FindEnabled(const char* class_name) {
  Wanted wanted = {class_name, nullptr};
  EnumThreadWindows(GetCurrentThreadId(), TakeEnabled, reinterpret_cast<LPARAM>(&wanted));
  return wanted.found;
}

inline BOOL CALLBACK CountOurs(HWND window, LPARAM data) {
  // The host's window stays, and so do the helpers that the system makes for a thread.
  const std::string name = ClassOf(window);
  if (name.rfind("Pelix", 0) == 0 || name == "#32770") ++*reinterpret_cast<std::size_t*>(data);
  return TRUE;
}

inline std::size_t WindowCount() {
  std::size_t count = 0;
  EnumThreadWindows(GetCurrentThreadId(), CountOurs, reinterpret_cast<LPARAM>(&count));
  return count;
}

inline void Pump() {
  MSG message;
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
}

class WindowsTest : public PluginTest {
 protected:
  ~WindowsTest() override {
    Stop();
    Pump();
    EXPECT_EQ(WindowCount(), 0u);
  }
  MainWindow& MakeWindow() {
    CWnd parent = {};
    parent.window = platform::automation::HostWindow();
    PLUGIN_GetInfoStruct()->create(&parent);
    return *g_main_window;
  }
  HWND Tree() { return GetDlgItem(static_cast<HWND>(platform::automation::HostWindow()), kTreeControlId); }
};

}  // namespace pelix
