#include "platform/text_window.h"

#include <algorithm>
#include <optional>

#include "platform/win32/modal_frame.h"

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
  void Turn(int delta);
  void DragTo(int row);
  std::string VisibleText();

  TextWindowShape shape;
  TextWindowClient* client = nullptr;
  TextWindowMetrics metrics = {};
  OwnedFont font;
  win32::ModalFrame frame;
  HWND body = nullptr;
  int wheel = 0;     // turned and not yet a whole line
  int dragged = -1;  // row on which the mouse is held
};

LRESULT CALLBACK TextWindow::Impl::FrameProcedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  auto* impl = win32::DataOf<Impl>(window);
  if (impl == nullptr) return DefWindowProcA(window, message, first, second);
  if (impl->frame.OnMessage(message)) return 0;
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
    case WM_DESTROY:
      impl->body = nullptr;
      break;
    default:
      break;
  }
  return DefWindowProcA(window, message, first, second);
}

LRESULT CALLBACK TextWindow::Impl::BodyProcedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  auto* impl = win32::DataOf<Impl>(window);
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
      Turn(static_cast<short>(HIWORD(first)));
      return 0;
    case WM_LBUTTONDOWN:
      SetFocus(body);
      SetCapture(body);
      dragged = RowAt(second);
      client->OnRowClick(dragged, (first & MK_SHIFT) != 0 ? RowClick::kShiftClick : RowClick::kClick);
      return 0;
    case WM_MOUSEMOVE:
      if ((first & MK_LBUTTON) != 0 && GetCapture() == body) DragTo(RowAt(second));
      return 0;
    case WM_LBUTTONUP:
      if (GetCapture() == body) ReleaseCapture();
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
      return static_cast<LRESULT>(VisibleText().size());
    case WM_GETTEXT: {
      if (first == 0) return 0;
      const std::string text = VisibleText().substr(0, first - 1);
      std::copy_n(text.c_str(), text.size() + 1, reinterpret_cast<char*>(second));
      return static_cast<LRESULT>(text.size());
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

// The row at a point of the body, -1 above the first and the number of rows below the last.
int TextWindow::Impl::RowAt(LPARAM point) const {
  const int y = static_cast<short>(HIWORD(point)) - 1;
  return y < -1 ? -1 : std::min(y / metrics.line_height, shape.body_rows);
}

// Three lines a notch of the wheel; fine wheels send parts of one.
void TextWindow::Impl::Turn(int delta) {
  constexpr int kLine = WHEEL_DELTA / 3;
  wheel += delta;
  for (; wheel >= kLine; wheel -= kLine) client->OnScroll(ScrollAction::kLineUp, 0);
  for (; wheel <= -kLine; wheel += kLine) client->OnScroll(ScrollAction::kLineDown, 0);
}

// Selects up to the row under the mouse; above and below the rows it goes on with every move.
void TextWindow::Impl::DragTo(int row) {
  if (row == dragged && row >= 0 && row < shape.body_rows) return;
  dragged = row;
  client->OnRowClick(row, RowClick::kShiftClick);
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
                      frame.window(), reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), win32::ThisModule(), nullptr);
  SendMessageA(block, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), 0);
  return block;
}

// Header at the top, footer at the bottom, the body between them.
void TextWindow::Impl::Arrange() {
  RECT area;
  GetClientRect(frame.window(), &area);
  const int header_height = shape.header_lines * metrics.line_height;
  const int footer_height = shape.footer_lines * metrics.line_height;
  const int body_height = area.bottom - header_height - footer_height;
  const auto place = [&](int id, int top, int height) {
    MoveWindow(GetDlgItem(frame.window(), id), 0, top, area.right, height, TRUE);
  };
  place(win32::kHeaderId, 0, header_height);
  place(win32::kBodyId, header_height, body_height);
  place(win32::kFooterId, area.bottom - footer_height, footer_height);
}

bool TextWindow::Impl::Open(const std::string& system_item) {
  constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_CLIPCHILDREN;
  const RECT place = {shape.x, shape.y, shape.x + shape.width, shape.y + shape.height};
  if (!frame.Open(win32::kListClass, shape.caption, kStyle, place, this)) return false;
  InsertMenuA(GetSystemMenu(frame.window(), FALSE), win32::kSystemItemPosition, MF_BYPOSITION | MF_STRING,
              win32::kSystemItem, system_item.c_str());
  if (shape.header_lines > 0) AddBlock(shape.header, win32::kHeaderId);
  if (shape.footer_lines > 0) AddBlock(shape.footer, win32::kFooterId);
  body = CreateWindowExA(0, win32::kListBodyClass, "", WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_TABSTOP, 0, 0, 0, 0,
                         frame.window(), reinterpret_cast<HMENU>(static_cast<INT_PTR>(win32::kBodyId)),
                         win32::ThisModule(), nullptr);
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
  impl_->wheel = 0;
  const bool opened = impl_->Open(system_item);
  if (opened) {
    client->OnScroll(ScrollAction::kThumb, 0);  // the client says how many lines there are
    impl_->frame.Run(impl_->body);
  }
  impl_->font.Reset();
  return opened;
}

void TextWindow::Close() {
  impl_->frame.Close();
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
  SetWindowPos(impl_->frame.window(), topmost ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
}

void TextWindow::RenameSystemItem(const std::string& text) {
  ModifyMenuA(GetSystemMenu(impl_->frame.window(), FALSE), win32::kSystemItem, MF_BYCOMMAND | MF_STRING,
              win32::kSystemItem, text.c_str());
}

}  // namespace platform
