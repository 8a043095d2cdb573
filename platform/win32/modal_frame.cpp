#include "platform/win32/modal_frame.h"

namespace platform::win32 {

bool ModalFrame::Open(const char* class_name, const std::string& caption, DWORD style, const RECT& place, void* data) {
  owner_ = OwnerWindow();
  done_ = false;
  const int width = static_cast<int>(place.right - place.left);
  const int height = static_cast<int>(place.bottom - place.top);
  window_ = CreateWindowExA(0, class_name, caption.c_str(), style, place.left, place.top, width, height, owner_,
                            nullptr, ThisModule(), nullptr);
  if (window_ == nullptr) return false;
  ++OpenHandles();
  SetWindowLongPtrA(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(data));
  // Once more: the system has cut it to the screen, before the frame's procedure could say what its limits are.
  SetWindowPos(window_, nullptr, place.left, place.top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
  return true;
}

void ModalFrame::Run(HWND focus) {
  const ModalScope modal(window_, [this] { Destroy(); });
  owner_disabled_ = EnableWindow(owner_, FALSE) == 0;
  ShowWindow(window_, SW_SHOW);
  SetFocus(focus);
  RunMessageLoop(done_);
  Destroy();
  SetForegroundWindow(owner_);
}

void ModalFrame::Close() {
  done_ = true;
  PostThreadMessageA(GetCurrentThreadId(), WM_NULL, 0, 0);  // wakes the loop
}

bool ModalFrame::OnMessage(UINT message) {
  if (message == WM_CLOSE) {
    Close();
    return true;
  }
  if (message == WM_DESTROY) {
    window_ = nullptr;
    --OpenHandles();
    EnableOwner();
    Close();
  }
  return false;
}

// The owner first: the system gives the keyboard to the next window that takes input.
void ModalFrame::Destroy() {
  EnableOwner();
  if (window_ != nullptr) DestroyWindow(window_);
}

void ModalFrame::EnableOwner() {
  if (owner_disabled_) EnableWindow(owner_, TRUE);
  owner_disabled_ = false;
}

}  // namespace platform::win32
