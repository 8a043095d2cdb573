#include "platform/win32/windows_api.h"

#include <map>
#include <vector>

#include "platform/shutdown.h"
#include "platform/tree_control.h"

namespace platform {
namespace win32 {

namespace {

std::map<std::string, int>& ClassUsers() {
  static std::map<std::string, int> users;
  return users;
}

struct Modal {
  HWND window;
  std::function<void()> close;
};
std::vector<Modal>& Modals() {
  static std::vector<Modal> modals;
  return modals;
}

}  // namespace

WindowClass::WindowClass(const char* name, WNDPROC procedure, UINT style, HBRUSH background) : name_(name) {
  if (ClassUsers()[name]++ > 0) return;
  WNDCLASSA window_class = {};
  window_class.style = style;
  window_class.lpfnWndProc = procedure;
  window_class.hInstance = ThisModule();
  window_class.hCursor = LoadCursor(nullptr, IDC_ARROW);
  window_class.hbrBackground = background;
  window_class.lpszClassName = name;
  RegisterClassA(&window_class);
}

WindowClass::~WindowClass() {
  if (--ClassUsers()[name_] == 0) UnregisterClassA(name_, ThisModule());
}

OwnedFont MakeFixedFont() {
  constexpr int kPoints = 10;
  const WindowContext screen(nullptr);
  const int height = -MulDiv(kPoints, GetDeviceCaps(screen.get(), LOGPIXELSY), 72);
  return OwnedFont(CreateFontA(height, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                               CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, FIXED_PITCH | FF_MODERN, "FixedSys"));
}

std::string WindowText(HWND window) {
  std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
  const int length = GetWindowTextA(window, text.data(), static_cast<int>(text.size()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

ModalScope::ModalScope(HWND window, std::function<void()> close) {
  Modals().push_back({window, std::move(close)});
  ++OpenHandles();
}

ModalScope::~ModalScope() {
  Modals().pop_back();
  --OpenHandles();
}

HWND OwnerWindow() {
  // Those that the plug-in was told to close are gone before their loops have ended.
  for (std::size_t i = Modals().size(); i > 0; --i) {
    if (IsWindow(Modals()[i - 1].window)) return Modals()[i - 1].window;
  }
  HWND host = static_cast<HWND>(ThreadMainWindow());
  return host != nullptr ? host : GetActiveWindow();  // a host program asks before there is a tree
}

namespace {

struct OwnedDialog {
  HWND owner;
  HWND found;
};

BOOL CALLBACK TakeSystemDialog(HWND window, LPARAM data) {
  auto* wanted = reinterpret_cast<OwnedDialog*>(data);
  char name[16] = {};
  GetClassNameA(window, name, sizeof name);
  const bool is_dialog = GetWindow(window, GW_OWNER) == wanted->owner && name == std::string("#32770");
  if (!is_dialog || !IsWindowVisible(window) || GetDlgItem(window, kProgressBar) != nullptr) return TRUE;
  wanted->found = window;
  return FALSE;
}

// And what it has opened itself, such as a file dialog's question.
void CloseSystemDialog(HWND owner, int answer) {
  OwnedDialog wanted = {owner, nullptr};
  EnumThreadWindows(GetCurrentThreadId(), TakeSystemDialog, reinterpret_cast<LPARAM>(&wanted));
  if (wanted.found == nullptr) return;
  CloseSystemDialog(wanted.found, IDCANCEL);
  SendMessageA(wanted.found, WM_COMMAND, MAKEWPARAM(answer, BN_CLICKED),
               reinterpret_cast<LPARAM>(GetDlgItem(wanted.found, answer)));
}

}  // namespace

SystemDialogScope::SystemDialogScope(int answer)
    : owner_(OwnerWindow()), modal_(owner_, [owner = owner_, answer] { CloseSystemDialog(owner, answer); }) {}

namespace {

// What a dialog needs until it has begun.
struct DialogStart {
  DLGPROC procedure;
  LPARAM data;
  std::optional<ModalScope> modal;
};

INT_PTR CALLBACK StartDialog(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message != WM_INITDIALOG) return FALSE;
  auto* start = reinterpret_cast<DialogStart*>(second);
  start->modal.emplace(window, [window] { EndDialog(window, IDCANCEL); });
  SetWindowLongPtrA(window, DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(start->procedure));
  return start->procedure(window, message, first, start->data);
}

}  // namespace

INT_PTR RunDialog(HINSTANCE module, int resource_id, DLGPROC procedure, LPARAM data) {
  DialogStart start = {procedure, data, std::nullopt};
  return DialogBoxParamA(module, MAKEINTRESOURCEA(resource_id), OwnerWindow(), Sealed<StartDialog>,
                         reinterpret_cast<LPARAM>(&start));
}

void RunMessageLoop(const bool& done) {
  MSG message;
  while (!done) {
    const BOOL got = GetMessageA(&message, nullptr, 0, 0);
    if (got == -1) return;
    if (got == 0) {
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
}

}  // namespace win32

void CloseModalWindows() {
  const std::vector<win32::Modal>& modals = win32::Modals();  // each stays in it until its loop has ended
  for (std::size_t i = modals.size(); i > 0; --i) modals[i - 1].close();
}

}  // namespace platform
