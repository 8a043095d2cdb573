// The system's own header, always included the same way, and the wrappers that own its handles.
#pragma once

#ifndef WINVER
#define WINVER 0x0501
#endif
#ifndef _WIN32_WINNT
#define _WIN32_WINNT 0x0501
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
// Windows first: the others need its types.
#include <commctrl.h>
#include <commdlg.h>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "platform/keys.h"
#include "platform/tree_path.h"

namespace platform::win32 {

// Handles and windows of ours that are open now, in this module: zero when all is closed.
int& OpenHandles();

// Owns a handle until the end of its life.
template <class Handle, auto kClose>
class Owned {
 public:
  Owned() = default;
  explicit Owned(Handle handle) : handle_(handle) { Count(1); }
  Owned(Owned&& other) noexcept : handle_(std::exchange(other.handle_, Handle{})) {}
  Owned& operator=(Owned&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~Owned() { Reset(); }

  Handle get() const { return handle_; }
  // Gives it away.
  Handle Release() {
    Count(-1);
    return std::exchange(handle_, Handle{});
  }
  explicit operator bool() const { return handle_ != Handle{}; }
  void Reset() {
    if (!*this) return;
    kClose(handle_);
    Count(-1);
    handle_ = Handle{};
  }

 private:
  void Count(int change) {
    if (*this) OpenHandles() += change;
  }
  Handle handle_{};
};

inline void CloseGdiObject(HGDIOBJ object) {
  DeleteObject(object);
}
inline void CloseImageList(HIMAGELIST list) {
  ImageList_Destroy(list);
}
using OwnedFont = Owned<HFONT, CloseGdiObject>;
using OwnedBrush = Owned<HBRUSH, CloseGdiObject>;
using OwnedImageList = Owned<HIMAGELIST, CloseImageList>;

// The module that this code is part of: the plug-in library, or a program.
HINSTANCE ThisModule();

// A window class that is registered while at least one of these lives.
class WindowClass {
 public:
  WindowClass(const char* name, WNDPROC procedure, UINT style, HBRUSH background);
  ~WindowClass();
  WindowClass(const WindowClass&) = delete;
  WindowClass& operator=(const WindowClass&) = delete;

 private:
  const char* name_;
};

// A window or dialog procedure out of which no exception gets into the system's frames. It can only be short of memory:
// that is heard, and the message counts as handled.
template <auto kProcedure>
auto CALLBACK Sealed(HWND window, UINT message, WPARAM first, LPARAM second) {
  using Result = decltype(kProcedure(window, message, first, second));
  try {
    return kProcedure(window, message, first, second);
  } catch (const std::exception&) {
    MessageBeep(MB_ICONHAND);
    return Result{0};
  }
}

// Painting a window: what was to be painted counts as painted when the object goes.
class Painting {
 public:
  explicit Painting(HWND window) : window_(window), context_(BeginPaint(window, &paint_)) {}
  ~Painting() { EndPaint(window_, &paint_); }
  Painting(const Painting&) = delete;
  Painting& operator=(const Painting&) = delete;
  HDC context() const { return context_; }

 private:
  HWND window_;
  PAINTSTRUCT paint_ = {};
  HDC context_;
};

// A tool of a device context, put back when the object goes.
class Selected {
 public:
  Selected(HDC context, HGDIOBJ tool) : context_(context), before_(SelectObject(context, tool)) {}
  ~Selected() { SelectObject(context_, before_); }
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;

 private:
  HDC context_;
  HGDIOBJ before_;
};

// A device context of a window, or of the whole screen, while the object lives.
class WindowContext {
 public:
  explicit WindowContext(HWND window) : window_(window), context_(GetDC(window)) {}
  ~WindowContext() { ReleaseDC(window_, context_); }
  WindowContext(const WindowContext&) = delete;
  WindowContext& operator=(const WindowContext&) = delete;
  HDC get() const { return context_; }

 private:
  HWND window_;
  HDC context_;
};

// The font of lists and outputs: FixedSys, 10 points at the display's resolution.
OwnedFont MakeFixedFont();

// The whole text of a window or control.
std::string WindowText(HWND window);

// Windows of the plug-in that take all input until they close, the topmost last.
class ModalScope {
 public:
  // `close` takes the window off the screen; it is called when the plug-in is told to go.
  ModalScope(HWND window, std::function<void()> close);
  ~ModalScope();
  ModalScope(const ModalScope&) = delete;
  ModalScope& operator=(const ModalScope&) = delete;
};
// What a new window of ours is to be owned by: the topmost modal one, else the host's.
HWND OwnerWindow();

// A dialog of the system's own, a message box or a file dialog, while it is open.
class SystemDialogScope {
 public:
  // `answer` is the button that closes it when the plug-in is told to go.
  explicit SystemDialogScope(int answer);
  HWND owner() const { return owner_; }

 private:
  HWND owner_;
  ModalScope modal_;
};

// The items of a tree control, whoever made it.
TreeWalk WalkTree(HWND tree);

// Handles messages until `done` is true. A request to end the program ends it too and is passed on.
void RunMessageLoop(const bool& done);

// Runs a dialog resource modally; what it was ended with, or -1 when it could not be made.
INT_PTR RunDialog(HINSTANCE module, int resource_id, DLGPROC procedure, LPARAM data);

// Keys by the system's codes. PressOf takes Shift and Ctrl as they are now; nothing for a key that nobody handles.
WPARAM VirtualKeyOf(Key key);
std::optional<KeyPress> PressOf(WPARAM code);

// Names and ids by which the host programs recognise the plug-in's windows.
inline constexpr char kListClass[] = "PelixListWindow";
inline constexpr char kListBodyClass[] = "PelixListBody";
inline constexpr char kSurfaceClass[] = "PelixSurfaceWindow";
inline constexpr char kControlsProperty[] = "PelixControls";  // a dialog's description, a span of ControlDescription
inline constexpr char kPromptProperty[] = "PelixPrompt";
inline constexpr char kScriptedProperty[] = "PelixScripted";  // of a file dialog's owner: a script has answered it
inline constexpr int kHeaderId = 1;
inline constexpr int kBodyId = 2;
inline constexpr int kFooterId = 3;
inline constexpr int kPromptDialog = 162;
inline constexpr int kPromptEdit = 1000;
inline constexpr int kProgressDialog = 163;
inline constexpr int kProgressText = 1001;
inline constexpr int kProgressBar = 1002;
inline constexpr UINT kSystemItem = 135;
inline constexpr UINT kSystemItemPosition = 5;

}  // namespace platform::win32
