// Driving the plug-in's real windows by real messages, from the host's side: found as any program finds them.
//
// A timer of the thread runs in whatever message loop is current. While a modal window is open it hands the window the
// next event of the host's script, and answers questions from the queue.
#include "platform/automation.h"

#include <cstring>
#include <deque>
#include <memory>
#include <optional>
#include <span>

#include "platform/dialog_text.h"
#include "platform/prompts.h"
#include "platform/win32/windows_api.h"

namespace platform::automation {
namespace {

using win32::WindowText;

constexpr UINT kTickMilliseconds = 10;
constexpr int kTreeId = 10000;
constexpr char kDialogClass[] = "#32770";
constexpr char kHostClass[] = "WtarnHostWindow";
// Controls by which the system's own dialogs are known: the text of a message box, the name in a file dialog.
constexpr int kMessageText = 0xFFFF;
constexpr int kFileNameCombo = 0x47C;
constexpr int kFileNameEdit = 0x480;

struct Answer {
  AnswerKind kind;
  std::string text;
};

struct Driver {
  HWND host = nullptr;
  UINT_PTR timer = 0;
  std::function<void(const std::string&)> message_sink;
  std::function<void(const std::string&)> question_sink;
  std::function<bool()> event_source;
  std::deque<Answer> answers;
};

Driver& TheDriver() {
  static Driver& driver = *new Driver;
  return driver;
}

std::string ClassOf(HWND window) {
  char name[64] = {};
  GetClassNameA(window, name, sizeof name);
  return name;
}

BOOL CALLBACK TakeModal(HWND window, LPARAM found) {
  const std::string name = ClassOf(window);
  const bool ours = name == win32::kListClass || name == win32::kSurfaceClass || name == kDialogClass;
  const bool modal =
      ours && IsWindowVisible(window) && IsWindowEnabled(window) && GetDlgItem(window, win32::kProgressBar) == nullptr;
  if (!modal) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

// The modal window that takes input now: the others are disabled.
HWND Topmost() {
  HWND found = nullptr;
  EnumThreadWindows(GetCurrentThreadId(), TakeModal, reinterpret_cast<LPARAM>(&found));
  return found;
}

bool IsDescribedDialog(HWND window) {
  return GetPropA(window, win32::kControlsProperty) != nullptr;
}
bool IsPrompt(HWND window) {
  return GetPropA(window, win32::kPromptProperty) != nullptr;
}
HWND FileNameOf(HWND window) {
  HWND edit = GetDlgItem(window, kFileNameCombo);
  return edit != nullptr ? edit : GetDlgItem(window, kFileNameEdit);
}
bool IsMessageBox(HWND window) {
  return ClassOf(window) == kDialogClass && GetDlgItem(window, kMessageText) != nullptr &&
         FileNameOf(window) == nullptr && !IsDescribedDialog(window) && !IsPrompt(window);
}

std::optional<Answer> TakeAnswer() {
  std::deque<Answer>& answers = TheDriver().answers;
  if (answers.empty()) return std::nullopt;
  Answer answer = answers.front();
  answers.pop_front();
  return answer;
}

void Press(HWND dialog, int id) {
  PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
}

void AnswerMessageBox(HWND box) {
  const Driver& driver = TheDriver();
  if (driver.message_sink != nullptr) driver.message_sink(WindowText(GetDlgItem(box, kMessageText)));
  if (GetDlgItem(box, IDYES) == nullptr) return Press(box, IDOK);
  const std::optional<Answer> answer = TakeAnswer();
  const bool no = answer && (answer->kind == AnswerKind::kNo || answer->kind == AnswerKind::kCancel);
  Press(box, no ? IDNO : IDYES);
}

void Tell(HWND dialog, bool confirmed, const std::string& value) {
  const Driver& driver = TheDriver();
  if (driver.question_sink == nullptr) return;
  driver.question_sink(WindowText(dialog) + ": " + (confirmed ? "\"" + value + "\"" : "cancelled"));
}

void AnswerPrompt(HWND prompt) {
  const std::optional<Answer> answer = TakeAnswer();
  const bool confirmed = !answer || answer->kind == AnswerKind::kText || answer->kind == AnswerKind::kYes;
  HWND edit = GetDlgItem(prompt, win32::kPromptEdit);
  if (answer && answer->kind == AnswerKind::kText) {
    const auto longest = static_cast<std::size_t>(SendMessageA(edit, EM_GETLIMITTEXT, 0, 0));
    SetWindowTextA(edit, answer->text.substr(0, longest).c_str());
  }
  Tell(prompt, confirmed, WindowText(edit));
  Press(prompt, confirmed ? IDOK : IDCANCEL);
}

void AnswerFileDialog(HWND dialog) {
  const std::optional<Answer> answer = TakeAnswer();
  const bool chosen = answer && answer->kind == AnswerKind::kText && !answer->text.empty();
  if (chosen) SetWindowTextA(FileNameOf(dialog), answer->text.c_str());
  SetPropA(GetWindow(dialog, GW_OWNER), win32::kScriptedProperty, dialog);
  Tell(dialog, chosen, chosen ? answer->text : "");
  Press(dialog, chosen ? IDOK : IDCANCEL);
}

void CALLBACK OnTick(HWND, UINT, UINT_PTR, DWORD) {
  HWND top = Topmost();
  if (top == nullptr) return;
  if (IsMessageBox(top)) return AnswerMessageBox(top);
  if (IsPrompt(top)) return AnswerPrompt(top);
  if (FileNameOf(top) != nullptr) return AnswerFileDialog(top);
  const std::function<bool()>& source = TheDriver().event_source;
  if (source != nullptr && source()) return;
  top = Topmost();
  if (top != nullptr) PostMessageA(top, WM_CLOSE, 0, 0);
}

// Every window in `window`, at any depth, that is the plug-in's tree.
BOOL CALLBACK TakeTree(HWND window, LPARAM found) {
  if (GetDlgCtrlID(window) != kTreeId) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

HWND Tree() {
  HWND found = nullptr;
  EnumChildWindows(static_cast<HWND>(HostWindow()), TakeTree, reinterpret_cast<LPARAM>(&found));
  return found;
}

// The keys that the thread sees as held down, as long as the object lives.
class HeldKeys {
 public:
  explicit HeldKeys(const KeyPress& key) {
    GetKeyboardState(before_);
    BYTE now[256];
    std::copy(std::begin(before_), std::end(before_), std::begin(now));
    now[VK_SHIFT] = key.shift ? 0x80 : 0;
    now[VK_CONTROL] = key.control ? 0x80 : 0;
    SetKeyboardState(now);
  }
  ~HeldKeys() { SetKeyboardState(before_); }
  HeldKeys(const HeldKeys&) = delete;
  HeldKeys& operator=(const HeldKeys&) = delete;

 private:
  BYTE before_[256];
};

// A control of the topmost dialog; null, and why, when there is none that takes input.
const ControlDescription* FindControl(int id, HWND* control, Outcome* outcome) {
  HWND top = Topmost();
  *outcome = Outcome::kNoTarget;
  if (top == nullptr || !IsDescribedDialog(top)) return nullptr;
  const auto& controls = *static_cast<std::span<const ControlDescription>*>(GetPropA(top, win32::kControlsProperty));
  for (const ControlDescription& description : controls) {
    if (description.id != id) continue;
    *control = GetDlgItem(top, id);
    *outcome = Outcome::kDone;
    return &description;
  }
  return nullptr;
}

bool IsEdit(const ControlDescription& control) {
  return control.kind == ControlKind::kEdit || control.kind == ControlKind::kMultilineEdit;
}

bool IsChecked(HWND control) {
  return SendMessageA(control, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

std::string ShowList(HWND window) {
  std::string text = WindowText(window) + "\n";
  for (const int id : {win32::kHeaderId, win32::kBodyId, win32::kFooterId}) {
    HWND part = GetDlgItem(window, id);
    if (part == nullptr) continue;
    text += WindowText(part);
    if (id != win32::kBodyId) text += "\n";
  }
  return text;
}

std::string ShowDialog(HWND window) {
  std::string text = WindowText(window) + "\n";
  const auto& controls = *static_cast<std::span<const ControlDescription>*>(GetPropA(window, win32::kControlsProperty));
  for (const ControlDescription& control : controls) {
    HWND item = GetDlgItem(window, control.id);
    text += ControlLine(control, WindowText(item), IsChecked(item), IsWindowEnabled(item) != 0);
  }
  return text;
}

}  // namespace

void* HostWindow() {
  Driver& driver = TheDriver();
  if (driver.host != nullptr) return driver.host;
  WNDCLASSA host_class = {};
  host_class.lpfnWndProc = DefWindowProcA;
  host_class.hInstance = win32::ThisModule();
  host_class.lpszClassName = kHostClass;
  RegisterClassA(&host_class);
  driver.host = CreateWindowExA(0, kHostClass, "wtarn", WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, 400,
                                600, nullptr, nullptr, win32::ThisModule(), nullptr);
  return driver.host;
}

void UseHostWindow(void* window) {
  TheDriver().host = static_cast<HWND>(window);
}

void SetMessageSink(std::function<void(const std::string&)> sink) {
  TheDriver().message_sink = std::move(sink);
}
void SetQuestionSink(std::function<void(const std::string&)> sink) {
  TheDriver().question_sink = std::move(sink);
}

void SetEventSource(std::function<bool()> source) {
  Driver& driver = TheDriver();
  driver.event_source = std::move(source);
  if (driver.timer != 0) KillTimer(nullptr, driver.timer);
  driver.timer = driver.event_source == nullptr ? 0 : SetTimer(nullptr, 0, kTickMilliseconds, OnTick);
}

void QueueAnswer(AnswerKind kind, const std::string& text) {
  TheDriver().answers.push_back({kind, text});
}
void ClearAnswers() {
  TheDriver().answers.clear();
}

Outcome SendKey(const KeyPress& key) {
  HWND top = Topmost();
  if (top == nullptr) return Outcome::kNoTarget;
  const HeldKeys held(key);
  if (IsDescribedDialog(top)) {
    // Enter and Esc are the dialog's own loop's to see.
    HWND focus = GetFocus();
    PostMessageA(focus != nullptr && IsChild(top, focus) ? focus : top, WM_KEYDOWN, win32::VirtualKeyOf(key.key), 1);
    return Outcome::kDone;
  }
  HWND body = GetDlgItem(top, win32::kBodyId);
  SendMessageA(body != nullptr ? body : top, WM_KEYDOWN, win32::VirtualKeyOf(key.key), 1);
  return Outcome::kDone;
}

Outcome Show(std::string* text) {
  HWND top = Topmost();
  if (top == nullptr) return Outcome::kNoTarget;
  if (ClassOf(top) == win32::kListClass) {
    *text = ShowList(top);
  } else {
    *text = IsDescribedDialog(top) ? ShowDialog(top) : WindowText(top) + "\n";
  }
  return Outcome::kDone;
}

Outcome SetControl(int id, const std::string& text) {
  HWND control = nullptr;
  Outcome outcome;
  const ControlDescription* description = FindControl(id, &control, &outcome);
  if (description == nullptr) return outcome;
  if (!IsEdit(*description) || !IsWindowEnabled(control)) return Outcome::kRefused;
  SetWindowTextA(control, text.c_str());
  return Outcome::kDone;
}

Outcome ClickControl(int id) {
  HWND control = nullptr;
  Outcome outcome;
  const ControlDescription* description = FindControl(id, &control, &outcome);
  if (description == nullptr) return outcome;
  if (IsEdit(*description) || !IsWindowEnabled(control)) return Outcome::kRefused;
  SendMessageA(control, BM_CLICK, 0, 0);
  return Outcome::kDone;
}

Outcome GetControl(int id, std::string* text) {
  HWND control = nullptr;
  Outcome outcome;
  const ControlDescription* description = FindControl(id, &control, &outcome);
  if (description != nullptr) *text = ControlValue(*description, WindowText(control), IsChecked(control));
  return outcome;
}

Outcome SavePicture(const std::string&) {
  return Outcome::kNoTarget;
}

std::string ClipboardBlock() {
  std::string block;
  if (!OpenClipboard(TheDriver().host)) return block;
  if (HANDLE data = GetClipboardData(CF_TEXT)) {
    block.assign(static_cast<const char*>(GlobalLock(data)), GlobalSize(data));
    GlobalUnlock(data);
  }
  CloseClipboard();
  return block;
}

Outcome ActivateItem(const std::string& path) {
  HWND tree = Tree();
  if (tree == nullptr || Topmost() != nullptr) return Outcome::kNoTarget;  // a modal window is in front
  auto item = static_cast<HTREEITEM>(FindTreeItem(win32::WalkTree(tree), path));
  if (item == nullptr) return Outcome::kNoTarget;
  TreeView_SelectItem(tree, item);
  TreeView_EnsureVisible(tree, item);
  RECT place = {};
  std::memcpy(&place, &item, sizeof item);  // the message takes the item where it puts the rectangle
  SendMessageA(tree, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&place));
  SendMessageA(tree, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(place.left + 2, place.top + 2));
  return Outcome::kDone;
}

Outcome TreeText(std::string* text) {
  text->clear();
  HWND tree = Tree();
  if (tree == nullptr) return Outcome::kNoTarget;
  *text = TreeLines(win32::WalkTree(tree));
  return Outcome::kDone;
}

}  // namespace platform::automation
