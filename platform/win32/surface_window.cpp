#include "platform/surface_window.h"

#include <optional>
#include <vector>

#include "platform/win32/modal_frame.h"

namespace platform {

struct SurfaceWindow::Impl {
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second);
  void Paint();

  SurfaceWindowClient* client = nullptr;
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;
  win32::ModalFrame frame;
};

LRESULT CALLBACK SurfaceWindow::Impl::Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  auto* impl = win32::DataOf<Impl>(window);
  if (impl == nullptr) return DefWindowProcA(window, message, first, second);
  if (impl->frame.OnMessage(message)) return 0;
  switch (message) {
    case WM_SYSKEYDOWN:
      if (first != VK_F10) break;
      [[fallthrough]];
    case WM_KEYDOWN:
      if (const std::optional<KeyPress> press = win32::PressOf(first)) impl->client->OnKey(*press);
      return 0;
    case WM_PAINT:
      impl->Paint();
      return 0;
    case WM_ERASEBKGND:
      return 1;
    default:
      break;
  }
  return DefWindowProcA(window, message, first, second);
}

void SurfaceWindow::Impl::Paint() {
  const win32::Painting painting(frame.window());  // before the copy: what is drawn after it is painted once more
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
  RECT area = {0, 0, width, height};
  AdjustWindowRect(&area, kStyle, FALSE);
  OffsetRect(&area, -area.left, -area.top);
  if (!impl_->frame.Open(win32::kSurfaceClass, caption, kStyle, area, impl_.get())) return false;
  impl_->frame.Run(impl_->frame.window());
  return true;
}

void SurfaceWindow::Close() {
  impl_->frame.Close();
}

void SurfaceWindow::Repaint() {
  HWND window = impl_->frame.window();
  if (window != nullptr) InvalidateRect(window, nullptr, FALSE);
}

}  // namespace platform
