#include "platform/text_window.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "platform/win32/windows_api.h"

namespace platform {
namespace {

using win32::OwnedBrush;
using win32::OwnedFont;

constexpr COLORREF kNormalText = RGB(0, 0, 0);
constexpr COLORREF kCurrentText = RGB(0, 0, 255);
constexpr COLORREF kBackground = RGB(255, 255, 255);
constexpr COLORREF kSelectedBackground = RGB(204, 224, 255);
constexpr COLORREF kHighlight = RGB(255, 255, 0);

}  // namespace

struct TextWindow::Impl {
  static LRESULT CALLBACK FrameProcedure(HWND window, UINT message, WPARAM first, LPARAM second);
  static LRESULT CALLBACK BodyProcedure(HWND window, UINT message, WPARAM first, LPARAM second);

  bool Open(const std::string& system_item);
  HWND AddBlock(const std::string& text, int id);
  void Arrange();
  LRESULT OnBody(UINT message, WPARAM first, LPARAM second, bool* handled);
  void Paint();
  void PaintRow(HDC context, int row);
  void Scroll(WORD action);
  int RowAt(LPARAM point) const;
  std::string VisibleText();

  TextWindowShape shape;
  TextWindowClient* client = nullptr;
  TextWindowMetrics metrics = {};
  OwnedFont font;
  HWND frame = nullptr;
  HWND body = nullptr;
  bool done = false;
  std::string shown;  // what WM_GETTEXT hands out in pieces
};

LRESULT CALLBACK TextWindow::Impl::FrameProcedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  auto* impl = reinterpret_cast<Impl*>(GetWindowLongPtrA(window, GWLP_USERDATA));
  if (impl == nullptr) return DefWindowProcA(window, message, first, second);
  switch (message) {
    case WM_SYSCOMMAND:
      if (first != win32::kSystemItem) break;  // exactly: the low bits of ours would be masked away
      impl->client->OnSystemItem();
      return 0;
    case WM_SETFOCUS:
      SetFocus(impl->body);
      return 0;
    case WM_SIZE:
      impl->Arrange();
      return 0;
    case WM_GETMINMAXINFO: {
      // It can be made wider for long lines; how many lines it shows is fixed.
      auto* limits = reinterpret_cast<MINMAXINFO*>(second);
      limits->ptMinTrackSize.y = impl->shape.height;
      limits->ptMaxTrackSize.y = impl->shape.height;
      return 0;
    }
    case WM_CLOSE:
      impl->done = true;
      return 0;
    case WM_DESTROY:
      impl->done = true;
      impl->frame = nullptr;
      break;
    default:
      break;
  }
  return DefWindowProcA(window, message, first, second);
}

LRESULT CALLBACK TextWindow::Impl::BodyProcedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  auto* impl = reinterpret_cast<Impl*>(GetWindowLongPtrA(window, GWLP_USERDATA));
  bool handled = impl != nullptr;
  const LRESULT result = handled ? impl->OnBody(message, first, second, &handled) : 0;
  return handled ? result : DefWindowProcA(window, message, first, second);
}

LRESULT TextWindow::Impl::OnBody(UINT message, WPARAM first, LPARAM second, bool* handled) {
  switch (message) {
    case WM_GETDLGCODE:
      return DLGC_WANTALLKEYS;
    case WM_SYSKEYDOWN:
      if (first != VK_F10) break;  // the key for menus; a list's F10 is a key like others
      [[fallthrough]];
    case WM_KEYDOWN:
      if (const std::optional<KeyPress> press = win32::PressOf(first)) client->OnKey(*press);
      return 0;
    case WM_VSCROLL:
      Scroll(LOWORD(first));
      return 0;
    case WM_MOUSEWHEEL:
      for (int i = 0; i < 3; ++i) {
        client->OnScroll(static_cast<short>(HIWORD(first)) > 0 ? ScrollAction::kLineUp : ScrollAction::kLineDown, 0);
      }
      return 0;
    case WM_LBUTTONDOWN:
      SetFocus(body);
      client->OnRowClick(RowAt(second), (first & MK_SHIFT) != 0 ? RowClick::kShiftClick : RowClick::kClick);
      return 0;
    case WM_LBUTTONDBLCLK:
      client->OnRowClick(RowAt(second), RowClick::kDoubleClick);
      return 0;
    case WM_PAINT:
      Paint();
      return 0;
    case WM_ERASEBKGND:
      return 1;  // Paint covers everything
    // Whoever reads the screen aloud, or drives it, gets the visible lines.
    case WM_GETTEXTLENGTH:
      shown = VisibleText();
      return static_cast<LRESULT>(shown.size());
    case WM_GETTEXT: {
      if (first == 0) return 0;
      const std::size_t length = std::min<std::size_t>(shown.size(), first - 1);
      std::memcpy(reinterpret_cast<char*>(second), shown.c_str(), length);
      reinterpret_cast<char*>(second)[length] = '\0';
      return static_cast<LRESULT>(length);
    }
    default:
      break;
  }
  *handled = false;
  return 0;
}

std::string TextWindow::Impl::VisibleText() {
  std::string text;
  for (int row = 0; row < shape.body_rows; ++row) {
    const TextRow content = client->Row(row);
    text += content.current ? '>' : ' ';
    for (const TextSpan& span : content.spans) text += span.text;
    text += '\n';
  }
  return text;
}

int TextWindow::Impl::RowAt(LPARAM point) const {
  const int y = static_cast<short>(HIWORD(point)) - 1;
  return std::clamp(y / metrics.line_height, 0, std::max(shape.body_rows - 1, 0));
}

void TextWindow::Impl::Scroll(WORD action) {
  SCROLLINFO info = {};
  info.cbSize = sizeof info;
  info.fMask = SIF_TRACKPOS;
  switch (action) {
    case SB_LINEUP:
      return client->OnScroll(ScrollAction::kLineUp, 0);
    case SB_LINEDOWN:
      return client->OnScroll(ScrollAction::kLineDown, 0);
    case SB_PAGEUP:
      return client->OnScroll(ScrollAction::kPageUp, 0);
    case SB_PAGEDOWN:
      return client->OnScroll(ScrollAction::kPageDown, 0);
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
      GetScrollInfo(body, SB_VERT, &info);
      return client->OnScroll(ScrollAction::kThumb, info.nTrackPos);
    default:
      return;
  }
}

void TextWindow::Impl::PaintRow(HDC context, int row) {
  const TextRow content = client->Row(row);
  RECT client_area;
  GetClientRect(body, &client_area);
  const int top = row * metrics.line_height + 1;
  const RECT line = {0, top, client_area.right, top + metrics.line_height};
  const OwnedBrush background(CreateSolidBrush(content.selected ? kSelectedBackground : kBackground));
  FillRect(context, &line, background.get());
  SetTextColor(context, content.current ? kCurrentText : kNormalText);
  SetBkColor(context, kHighlight);
  for (const TextSpan& span : content.spans) {
    SetBkMode(context, span.highlighted ? OPAQUE : TRANSPARENT);
    TextOutA(context, span.column * metrics.character_width, top, span.text.data(), static_cast<int>(span.text.size()));
  }
}

void TextWindow::Impl::Paint() {
  const win32::Painting painting(body);
  HDC context = painting.context();
  const win32::Selected font_selected(context, font.get());
  for (int row = 0; row < shape.body_rows; ++row) PaintRow(context, row);
  RECT area;
  GetClientRect(body, &area);
  const OwnedBrush background(CreateSolidBrush(kBackground));
  const RECT above = {0, 0, area.right, 1};
  const RECT below = {0, shape.body_rows * metrics.line_height + 1, area.right, area.bottom};
  FillRect(context, &above, background.get());
  FillRect(context, &below, background.get());
}

HWND TextWindow::Impl::AddBlock(const std::string& text, int id) {
  HWND block =
      CreateWindowExA(0, "STATIC", text.c_str(), WS_CHILD | WS_VISIBLE | SS_LEFTNOWORDWRAP | SS_NOPREFIX, 0, 0, 0, 0,
                      frame, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), win32::ThisModule(), nullptr);
  SendMessageA(block, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), 0);
  return block;
}

// Header at the top, footer at the bottom, the body between them.
void TextWindow::Impl::Arrange() {
  RECT area;
  GetClientRect(frame, &area);
  const int header_height = shape.header_lines * metrics.line_height;
  const int footer_height = shape.footer_lines * metrics.line_height;
  const int body_height = area.bottom - header_height - footer_height;
  MoveWindow(GetDlgItem(frame, win32::kHeaderId), 0, 0, area.right, header_height, TRUE);
  MoveWindow(GetDlgItem(frame, win32::kBodyId), 0, header_height, area.right, body_height, TRUE);
  MoveWindow(GetDlgItem(frame, win32::kFooterId), 0, area.bottom - footer_height, area.right, footer_height, TRUE);
}

bool TextWindow::Impl::Open(const std::string& system_item) {
  frame = CreateWindowExA(0, win32::kListClass, shape.caption.c_str(),
                          WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_CLIPCHILDREN, shape.x, shape.y,
                          shape.width, shape.height, win32::OwnerWindow(), nullptr, win32::ThisModule(), nullptr);
  if (frame == nullptr) return false;
  SetWindowLongPtrA(frame, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  InsertMenuA(GetSystemMenu(frame, FALSE), win32::kSystemItemPosition, MF_BYPOSITION | MF_STRING, win32::kSystemItem,
              system_item.c_str());
  if (shape.header_lines > 0) AddBlock(shape.header, win32::kHeaderId);
  if (shape.footer_lines > 0) AddBlock(shape.footer, win32::kFooterId);
  body =
      CreateWindowExA(0, win32::kListBodyClass, "", WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_TABSTOP, 0, 0, 0, 0, frame,
                      reinterpret_cast<HMENU>(static_cast<INT_PTR>(win32::kBodyId)), win32::ThisModule(), nullptr);
  if (body == nullptr) return false;
  SetWindowLongPtrA(body, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  Arrange();
  return true;
}

TextWindow::TextWindow() : impl_(std::make_unique<Impl>()) {}
TextWindow::~TextWindow() = default;

TextWindowMetrics TextWindow::Metrics() {
  const OwnedFont font = win32::MakeFixedFont();
  const win32::WindowContext screen(nullptr);
  const win32::Selected font_selected(screen.get(), font.get());
  TEXTMETRICA text = {};
  GetTextMetricsA(screen.get(), &text);
  return {.character_width = static_cast<int>(text.tmAveCharWidth),
          .line_height = static_cast<int>(text.tmHeight),
          .scroll_bar_width = GetSystemMetrics(SM_CXVSCROLL),
          .side_edges = 2 * (GetSystemMetrics(SM_CXEDGE) + GetSystemMetrics(SM_CXSIZEFRAME)),
          .top_edges = 2 * (GetSystemMetrics(SM_CYEDGE) + GetSystemMetrics(SM_CYSIZEFRAME)),
          .caption_height = GetSystemMetrics(SM_CYCAPTION)};
}

bool TextWindow::RunModal(const TextWindowShape& shape, const std::string& system_item, TextWindowClient* client) {
  const win32::WindowClass frame_class(win32::kListClass, win32::Sealed<Impl::FrameProcedure>, 0,
                                       reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1));
  const win32::WindowClass body_class(win32::kListBodyClass, win32::Sealed<Impl::BodyProcedure>, CS_DBLCLKS, nullptr);
  impl_->shape = shape;
  impl_->client = client;
  impl_->metrics = Metrics();
  impl_->font = win32::MakeFixedFont();
  impl_->done = false;
  HWND owner = win32::OwnerWindow();
  const bool opened = impl_->Open(system_item);
  if (opened) {
    const win32::ModalScope modal(impl_->frame, [](HWND window) { SendMessageA(window, WM_CLOSE, 0, 0); });
    EnableWindow(owner, FALSE);
    client->OnScroll(ScrollAction::kThumb, 0);  // the client says how many lines there are
    ShowWindow(impl_->frame, SW_SHOW);
    SetFocus(impl_->body);
    win32::RunMessageLoop(impl_->done);
    EnableWindow(owner, TRUE);
  }
  if (impl_->frame != nullptr) DestroyWindow(impl_->frame);
  impl_->frame = nullptr;
  impl_->body = nullptr;
  impl_->font.Reset();
  SetForegroundWindow(owner);
  return opened;
}

void TextWindow::Close() {
  impl_->done = true;
}

void TextWindow::Refresh(int position, int lines) {
  if (impl_->body == nullptr) return;
  SCROLLINFO info = {};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_POS | SIF_DISABLENOSCROLL;
  info.nMax = std::max(lines - 1, 0);
  info.nPos = position;
  SetScrollInfo(impl_->body, SB_VERT, &info, TRUE);
  InvalidateRect(impl_->body, nullptr, FALSE);
}

void TextWindow::SetTopmost(bool topmost) {
  SetWindowPos(impl_->frame, topmost ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
}

void TextWindow::RenameSystemItem(const std::string& text) {
  ModifyMenuA(GetSystemMenu(impl_->frame, FALSE), win32::kSystemItem, MF_BYCOMMAND | MF_STRING, win32::kSystemItem,
              text.c_str());
}

}  // namespace platform
