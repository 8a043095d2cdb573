// The windowed host's frame: the plug-in's tree at the left, the host's output at the right, a line for statements and
// a button for scripts below.
#pragma once

#include <functional>
#include <string>

#include "platform/win32/windows_api.h"

namespace standin {

class HostFrame {
 public:
  struct Events {
    std::function<void(const std::string& statement)> on_statement;
    std::function<void()> on_run_script;
    // The user wants to end. The frame goes when this has returned and no window of the plug-in is open any more.
    std::function<void()> on_close;
  };

  explicit HostFrame(Events events) : events_(std::move(events)) {}
  HostFrame(const HostFrame&) = delete;
  HostFrame& operator=(const HostFrame&) = delete;

  // Opens it where the placement says, or where the system likes when it says nothing that can be used.
  bool Open(const std::string& placement);
  HWND window() const { return window_; }
  // Gives the tree, once the plug-in has made it, its place.
  void Arrange();
  void AddOutput(const std::string& text);

  // Where the frame stood when it was closed: show state, then left, top, right, bottom, then flags.
  const std::string& placement() const { return placement_; }

  // Handles messages until the frame is gone.
  void Run();

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second);
  LRESULT Handle(UINT message, WPARAM first, LPARAM second, bool* handled);
  HWND AddChild(const char* class_name, const char* text, DWORD style, int id);
  void OnCommand(int id);

  Events events_;
  HWND window_ = nullptr;
  HWND output_ = nullptr;
  HWND statement_ = nullptr;
  HWND focus_ = nullptr;  // what had the keyboard when another window took it
  platform::win32::OwnedFont font_;
  bool closing_ = false;
  std::string placement_;
};

}  // namespace standin
