#include "standin/win32/host_frame.h"

#include <algorithm>
#include <cstdio>

#include "platform/format.h"

namespace standin {
namespace {

using platform::win32::WindowText;

constexpr char kFrameClass[] = "WtarnFrame";
constexpr int kTreeId = 10000;
constexpr int kOutputId = 100;
constexpr int kStatementId = 101;
constexpr int kRunScriptId = 102;
constexpr UINT kFinish = WM_APP + 1;  // the rest of closing, when the plug-in's windows have let go
constexpr int kTreePercent = 42;
constexpr std::size_t kMostOutput = 4u << 20;  // characters that the pane keeps

// Lengths in the units of the interface's font, for any resolution.
int FontHeight(HWND window, HFONT font) {
  const platform::win32::WindowContext context(window);
  const platform::win32::Selected font_selected(context.get(), font);
  TEXTMETRICA metrics = {};
  GetTextMetricsA(context.get(), &metrics);
  return static_cast<int>(metrics.tmHeight);
}

std::string WithWindowsLineEnds(const std::string& text) {
  std::string lines;
  for (const char c : text) {
    if (c == '\n') lines += '\r';
    lines += c;
  }
  return lines;
}

}  // namespace

LRESULT CALLBACK HostFrame::Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  auto* frame = reinterpret_cast<HostFrame*>(GetWindowLongPtrA(window, GWLP_USERDATA));
  bool handled = frame != nullptr;
  const LRESULT result = handled ? frame->Handle(message, first, second, &handled) : 0;
  return handled ? result : DefWindowProcA(window, message, first, second);
}

LRESULT HostFrame::Handle(UINT message, WPARAM first, LPARAM, bool* handled) {
  switch (message) {
    case WM_SIZE:
      Arrange();
      return 0;
    case WM_ACTIVATE:
      if (LOWORD(first) == WA_INACTIVE && IsChild(window_, GetFocus())) focus_ = GetFocus();
      break;
    case WM_SETFOCUS:
      SetFocus(IsWindow(focus_) ? focus_ : GetDlgItem(window_, kTreeId));
      return 0;
    case WM_COMMAND:
      OnCommand(LOWORD(first));
      return 0;
    case WM_CLOSE:
      if (closing_) return 0;
      closing_ = true;
      // A window of the plug-in may be open, and its messages be handled further up: it is told to close, and returns
      // before the message that finishes is handled.
      events_.on_close();
      PostMessageA(window_, kFinish, 0, 0);
      return 0;
    case kFinish: {
      WINDOWPLACEMENT place = {};
      place.length = sizeof place;
      GetWindowPlacement(window_, &place);
      const RECT& at = place.rcNormalPosition;
      placement_ = platform::Format("%d,%d,%d,%d,%d,%d", static_cast<int>(place.showCmd), static_cast<int>(at.left),
                                    static_cast<int>(at.top), static_cast<int>(at.right), static_cast<int>(at.bottom),
                                    static_cast<int>(place.flags));
      DestroyWindow(window_);
      return 0;
    }
    case WM_DESTROY:
      PostQuitMessage(0);
      return 0;
    default:
      break;
  }
  *handled = false;
  return 0;
}

HWND HostFrame::AddChild(const char* class_name, const char* text, DWORD style, int id) {
  HWND child = CreateWindowExA(
      class_name == std::string("EDIT") ? WS_EX_CLIENTEDGE : 0, class_name, text, WS_CHILD | WS_VISIBLE | style, 0, 0,
      0, 0, window_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), platform::win32::ThisModule(), nullptr);
  SendMessageA(child, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
  return child;
}

bool HostFrame::Open(const std::string& placement) {
  WNDCLASSA frame_class = {};
  frame_class.lpfnWndProc = platform::win32::Sealed<Procedure>;
  frame_class.hInstance = platform::win32::ThisModule();
  frame_class.hCursor = LoadCursor(nullptr, IDC_ARROW);
  frame_class.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  frame_class.lpszClassName = kFrameClass;
  RegisterClassA(&frame_class);
  window_ = CreateWindowExA(0, kFrameClass, "wtarn", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT,
                            CW_USEDEFAULT, 900, 640, nullptr, nullptr, platform::win32::ThisModule(), nullptr);
  if (window_ == nullptr) return false;
  SetWindowLongPtrA(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  output_ = AddChild("EDIT", "", ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | ES_AUTOHSCROLL | WS_VSCROLL | WS_HSCROLL,
                     kOutputId);
  font_ = platform::win32::MakeFixedFont();
  SendMessageA(output_, WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), FALSE);
  SendMessageA(output_, EM_SETLIMITTEXT, 2 * kMostOutput, 0);
  statement_ = AddChild("EDIT", "", ES_AUTOHSCROLL | WS_TABSTOP, kStatementId);
  AddChild("BUTTON", "Run", BS_DEFPUSHBUTTON | WS_TABSTOP, IDOK);
  AddChild("BUTTON", "Run script...", BS_PUSHBUTTON | WS_TABSTOP, kRunScriptId);
  WINDOWPLACEMENT place = {};
  place.length = sizeof place;
  int at[6] = {};
  const bool known =
      std::sscanf(placement.c_str(), "%d,%d,%d,%d,%d,%d", &at[0], &at[1], &at[2], &at[3], &at[4], &at[5]) == 6 &&
      at[3] > at[1] && at[4] > at[2];
  place.showCmd = known && at[0] == SW_SHOWMAXIMIZED ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL;
  place.rcNormalPosition = {at[1], at[2], at[3], at[4]};
  // A place that no screen shows any more is none.
  const bool visible = known && MonitorFromRect(&place.rcNormalPosition, MONITOR_DEFAULTTONULL) != nullptr;
  if (visible) {
    SetWindowPlacement(window_, &place);
  } else {
    ShowWindow(window_, SW_SHOWNORMAL);
  }
  Arrange();
  return true;
}

void HostFrame::Arrange() {
  RECT area;
  GetClientRect(window_, &area);
  const int unit = FontHeight(window_, static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT)));
  const int gap = unit / 3;
  const int row = unit + 2 * gap;
  const int bottom = std::max(static_cast<int>(area.bottom) - row - 2 * gap, 0);
  const int middle = area.right * kTreePercent / 100;
  const int script_width = 8 * unit;
  const int run_width = 5 * unit;
  const int script_left = area.right - script_width - gap;
  const int run_left = script_left - run_width - gap;
  MoveWindow(GetDlgItem(window_, kTreeId), gap, gap, middle - 2 * gap, bottom - gap, TRUE);
  MoveWindow(output_, middle, gap, area.right - middle - gap, bottom - gap, TRUE);
  MoveWindow(statement_, gap, bottom + gap, std::max(run_left - 2 * gap, 0), row, TRUE);
  MoveWindow(GetDlgItem(window_, IDOK), run_left, bottom + gap, run_width, row, TRUE);
  MoveWindow(GetDlgItem(window_, kRunScriptId), script_left, bottom + gap, script_width, row, TRUE);
}

void HostFrame::AddOutput(const std::string& text) {
  const std::size_t length = static_cast<std::size_t>(GetWindowTextLengthA(output_));
  if (length + text.size() > kMostOutput) {
    SendMessageA(output_, EM_SETSEL, 0, static_cast<LPARAM>(length / 2));
    SendMessageA(output_, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(""));
  }
  const auto end = static_cast<WPARAM>(GetWindowTextLengthA(output_));
  SendMessageA(output_, EM_SETSEL, end, static_cast<LPARAM>(end));
  SendMessageA(output_, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(WithWindowsLineEnds(text).c_str()));
}

void HostFrame::OnCommand(int id) {
  if (id == kRunScriptId) events_.on_run_script();
  if (id != IDOK) return;
  const std::string statement = WindowText(statement_);
  if (statement.empty()) return;
  SetWindowTextA(statement_, "");
  events_.on_statement(statement);
}

void HostFrame::Run() {
  MSG message;
  while (GetMessageA(&message, nullptr, 0, 0) > 0) {
    if (IsWindow(window_) && IsDialogMessageA(window_, &message)) continue;
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
}

}  // namespace standin
