// A window of ours that takes all input until it closes: made, run and destroyed the same way whatever it shows.
#pragma once

#include <atomic>
#include <string>

#include "platform/win32/windows_api.h"

namespace platform::win32 {

class ModalFrame {
 public:
  ModalFrame() = default;
  ~ModalFrame() { Destroy(); }
  ModalFrame(const ModalFrame&) = delete;
  ModalFrame& operator=(const ModalFrame&) = delete;

  // Makes it, hidden, owned by the topmost modal window or the host's. Its procedure finds `data` with DataOf.
  bool Open(const char* class_name, const std::string& caption, DWORD style, const RECT& place, void* data);
  // Shows it and handles messages until it is closed; it is destroyed then.
  void Run(HWND focus);
  // Ends Run, also from inside a message that another thread has sent.
  void Close();

  // What the frame's procedure hands over first: true when it was about closing and nothing is left to do.
  bool OnMessage(UINT message);
  // Null while it is not open. Any thread may ask.
  HWND window() const { return window_; }

 private:
  void Destroy();
  void EnableOwner();

  std::atomic<HWND> window_ = nullptr;
  HWND owner_ = nullptr;
  bool owner_disabled_ = false;  // by this window: the host may have had reasons of its own
  bool done_ = false;
};

// Null until the window is wholly made.
template <class Data>
Data* DataOf(HWND window) {
  return reinterpret_cast<Data*>(GetWindowLongPtrA(window, GWLP_USERDATA));
}

}  // namespace platform::win32
