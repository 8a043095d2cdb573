#include "platform/dialog.h"

#include <utility>

#include "platform/win32/windows_api.h"

namespace platform {
namespace {

constexpr WPARAM kLongestText = 32000;

std::uintptr_t resource_module;  // whose resources dialogs use; 0: this library's own

// The host's module where it has such a dialog, else the library's own.
HINSTANCE ModuleWithDialog(int resource_id) {
  HINSTANCE asked = reinterpret_cast<HINSTANCE>(resource_module);
  const bool there = asked != nullptr && FindResourceA(asked, MAKEINTRESOURCEA(resource_id), RT_DIALOG) != nullptr;
  return there ? asked : win32::ThisModule();
}

}  // namespace

struct Dialog::Impl {
  static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second);
  void Open(HWND opened);

  HWND window = nullptr;
  const char* title = "";
  std::span<const ControlDescription> controls;
  DialogEvents* events = nullptr;
};

INT_PTR CALLBACK Dialog::Impl::Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrA(window, DWLP_USER, second);
    reinterpret_cast<Impl*>(second)->Open(window);
    return TRUE;
  }
  auto* impl = reinterpret_cast<Impl*>(GetWindowLongPtrA(window, DWLP_USER));
  if (impl == nullptr) return FALSE;
  if (message == WM_COMMAND && HIWORD(first) == BN_CLICKED) {
    impl->events->OnClick(LOWORD(first));
    return TRUE;
  }
  if (message == WM_DESTROY) RemovePropA(window, win32::kControlsProperty);
  return FALSE;
}

void Dialog::Impl::Open(HWND opened) {
  window = opened;
  SetWindowTextA(window, title);
  SetPropA(window, win32::kControlsProperty, &controls);
  for (const ControlDescription& control : controls) {
    const bool edit = control.kind == ControlKind::kEdit || control.kind == ControlKind::kMultilineEdit;
    if (edit) SendDlgItemMessageA(window, control.id, EM_SETLIMITTEXT, kLongestText, 0);
  }
  events->OnOpen();
}

Dialog::Dialog() : impl_(std::make_unique<Impl>()) {}
Dialog::~Dialog() = default;

int Dialog::RunModal(int resource_id, const char* title, std::span<const ControlDescription> controls,
                     DialogEvents* events) {
  impl_->title = title;
  impl_->controls = controls;
  impl_->events = events;
  const INT_PTR result = win32::RunDialog(ModuleWithDialog(resource_id), resource_id, win32::Sealed<Impl::Procedure>,
                                          reinterpret_cast<LPARAM>(impl_.get()));
  impl_->window = nullptr;
  return result <= 0 ? kDialogCancel : static_cast<int>(result);
}

void Dialog::SetText(int id, const std::string& text) {
  SetDlgItemTextA(impl_->window, id, text.c_str());
}

std::string Dialog::Text(int id) const {
  return win32::WindowText(GetDlgItem(impl_->window, id));
}

void Dialog::SetChecked(int id, bool checked) {
  for (const ControlDescription& control : impl_->controls) {
    if (control.id != id || control.kind != ControlKind::kRadio || !checked) continue;
    for (const ControlDescription& other : impl_->controls) {
      if (other.kind == ControlKind::kRadio) CheckDlgButton(impl_->window, other.id, BST_UNCHECKED);
    }
  }
  CheckDlgButton(impl_->window, id, checked ? BST_CHECKED : BST_UNCHECKED);
}

bool Dialog::IsChecked(int id) const {
  return IsDlgButtonChecked(impl_->window, id) == BST_CHECKED;
}

void Dialog::Enable(int id, bool enabled) {
  EnableWindow(GetDlgItem(impl_->window, id), enabled);
}

void Dialog::End(int result) {
  EndDialog(impl_->window, result);
}

std::uintptr_t InstallResourceModule(std::uintptr_t module) {
  return std::exchange(resource_module, module);
}

}  // namespace platform
