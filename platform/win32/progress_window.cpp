#include "platform/progress_window.h"

#include "platform/win32/windows_api.h"

namespace platform {
namespace {

void CloseWindowHandle(HWND window) {
  DestroyWindow(window);
}

INT_PTR CALLBACK ProgressProcedure(HWND, UINT message, WPARAM, LPARAM) {
  return message == WM_INITDIALOG;
}

}  // namespace

struct ProgressWindow::Impl {
  win32::Owned<HWND, CloseWindowHandle> window;
};

ProgressWindow::ProgressWindow(const std::string& text) : impl_(std::make_unique<Impl>()) {
  const INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_PROGRESS_CLASS};
  InitCommonControlsEx(&controls);
  impl_->window = win32::Owned<HWND, CloseWindowHandle>(CreateDialogParamA(
      win32::ThisModule(), MAKEINTRESOURCEA(win32::kProgressDialog), win32::OwnerWindow(), ProgressProcedure, 0));
  SetText(text);
  ShowWindow(impl_->window.get(), SW_SHOWNOACTIVATE);
  UpdateWindow(impl_->window.get());
}

ProgressWindow::~ProgressWindow() = default;

void ProgressWindow::SetText(const std::string& text) {
  SetDlgItemTextA(impl_->window.get(), win32::kProgressText, text.c_str());
  UpdateWindow(GetDlgItem(impl_->window.get(), win32::kProgressText));
}

void ProgressWindow::SetPosition(int percent) {
  SendDlgItemMessageA(impl_->window.get(), win32::kProgressBar, PBM_SETPOS, static_cast<WPARAM>(percent), 0);
  UpdateWindow(GetDlgItem(impl_->window.get(), win32::kProgressBar));
}

}  // namespace platform
