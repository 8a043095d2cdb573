#include "platform/surface_window.h"

#include <atomic>
#include <optional>
#include <vector>

#include "platform/win32/windows_api.h"

namespace platform {

struct SurfaceWindow::Impl {
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second);
  void Paint();

  SurfaceWindowClient* client = nullptr;
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;
  std::atomic<HWND> window = nullptr;  // workers ask for repainting
  bool done = false;
};

LRESULT CALLBACK SurfaceWindow::Impl::Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  auto* impl = reinterpret_cast<Impl*>(GetWindowLongPtrA(window, GWLP_USERDATA));
  if (impl == nullptr) return DefWindowProcA(window, message, first, second);
  switch (message) {
    case WM_KEYDOWN:
      if (const std::optional<KeyPress> press = win32::PressOf(first)) impl->client->OnKey(*press);
      return 0;
    case WM_PAINT:
      impl->Paint();
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_CLOSE:
      impl->done = true;
      return 0;
    case WM_DESTROY:
      impl->done = true;
      impl->window = nullptr;
      break;
    default:
      break;
  }
  return DefWindowProcA(window, message, first, second);
}

void SurfaceWindow::Impl::Paint() {
  const win32::Painting painting(window);  // before the copy: what is drawn after it is painted once more
  client->CopyPixels(pixels.data());
  BITMAPINFO format = {};
  format.bmiHeader.biSize = sizeof format.bmiHeader;
  format.bmiHeader.biWidth = width;
  format.bmiHeader.biHeight = -height;  // top row first
  format.bmiHeader.biPlanes = 1;
  format.bmiHeader.biBitCount = 32;
  SetDIBitsToDevice(painting.context(), 0, 0, static_cast<DWORD>(width), static_cast<DWORD>(height), 0, 0, 0,
                    static_cast<UINT>(height), pixels.data(), &format, DIB_RGB_COLORS);
}

SurfaceWindow::SurfaceWindow() : impl_(std::make_unique<Impl>()) {}
SurfaceWindow::~SurfaceWindow() = default;

bool SurfaceWindow::RunModal(const std::string& caption, int width, int height, SurfaceWindowClient* client) {
  const win32::WindowClass window_class(win32::kSurfaceClass, win32::Sealed<Impl::Procedure>, 0, nullptr);
  constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU;
  impl_->client = client;
  impl_->width = width;
  impl_->height = height;
  impl_->pixels.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0);
  impl_->done = false;
  RECT area = {0, 0, width, height};
  AdjustWindowRect(&area, kStyle, FALSE);
  HWND owner = win32::OwnerWindow();
  impl_->window = CreateWindowExA(0, win32::kSurfaceClass, caption.c_str(), kStyle, 0, 0, area.right - area.left,
                                  area.bottom - area.top, owner, nullptr, win32::ThisModule(), nullptr);
  if (impl_->window == nullptr) return false;
  SetWindowLongPtrA(impl_->window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(impl_.get()));
  {
    const win32::ModalScope modal(impl_->window, [](HWND window) { SendMessageA(window, WM_CLOSE, 0, 0); });
    EnableWindow(owner, FALSE);
    ShowWindow(impl_->window, SW_SHOW);
    SetFocus(impl_->window);
    win32::RunMessageLoop(impl_->done);
    EnableWindow(owner, TRUE);
  }
  if (impl_->window != nullptr) DestroyWindow(impl_->window);
  impl_->window = nullptr;
  SetForegroundWindow(owner);
  return true;
}

void SurfaceWindow::Close() {
  impl_->done = true;
}

void SurfaceWindow::Repaint() {
  HWND window = impl_->window;
  if (window != nullptr) InvalidateRect(window, nullptr, FALSE);
}

}  // namespace platform
