#include "platform/prompts.h"

#include <algorithm>
#include <vector>

#include "platform/files.h"
#include "platform/format.h"
#include "platform/win32/windows_api.h"

namespace platform {
namespace {

struct Prompt {
  const char* title;
  std::size_t longest;
  std::string value;
};

INT_PTR CALLBACK PromptProcedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  auto* prompt = reinterpret_cast<Prompt*>(GetWindowLongPtrA(window, DWLP_USER));
  switch (message) {
    case WM_INITDIALOG:
      prompt = reinterpret_cast<Prompt*>(second);
      SetWindowLongPtrA(window, DWLP_USER, second);
      SetPropA(window, win32::kPromptProperty, prompt);
      SetWindowTextA(window, prompt->title);
      SendDlgItemMessageA(window, win32::kPromptEdit, EM_SETLIMITTEXT, prompt->longest, 0);
      SetDlgItemTextA(window, win32::kPromptEdit, prompt->value.c_str());
      SendDlgItemMessageA(window, win32::kPromptEdit, EM_SETSEL, 0, -1);
      return TRUE;
    case WM_COMMAND:
      if (LOWORD(first) != IDOK && LOWORD(first) != IDCANCEL) return FALSE;
      if (LOWORD(first) == IDOK) prompt->value = win32::WindowText(GetDlgItem(window, win32::kPromptEdit));
      EndDialog(window, LOWORD(first));
      return TRUE;
    case WM_DESTROY:
      RemovePropA(window, win32::kPromptProperty);
      return FALSE;
    default:
      return FALSE;
  }
}

// A path inside the current folder as a name in it.
std::string FromCurrentFolder(const std::string& path) {
  const std::string folder = CurrentFolder() + "\\";
  return EqualIgnoringCase(path.substr(0, folder.size()), folder) ? path.substr(folder.size()) : path;
}

bool AskFile(const FileDialog& dialog, BOOL(WINAPI* ask)(LPOPENFILENAMEA), std::string* path) {
  std::vector<char> name(32768);
  std::string filter = dialog.filter;
  std::replace(filter.begin(), filter.end(), '|', '\0');
  const std::string folder = CurrentFolder();
  const win32::SystemDialogScope open(IDCANCEL);
  OPENFILENAMEA request = {};
  request.lStructSize = sizeof request;
  request.hwndOwner = open.owner();
  request.lpstrFilter = filter.c_str();
  request.lpstrFile = name.data();
  request.nMaxFile = static_cast<DWORD>(name.size());
  request.lpstrInitialDir = folder.c_str();
  request.lpstrTitle = dialog.title;
  request.lpstrDefExt = dialog.default_extension;
  request.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  const bool chosen = ask(&request) != 0;
  SetCurrentDirectoryA(folder.c_str());  // some systems' open dialog changes it all the same
  const bool scripted = RemovePropA(open.owner(), win32::kScriptedProperty) != nullptr;
  // What a script has typed is to read the same on every system and in every folder.
  if (chosen) *path = scripted ? FromCurrentFolder(name.data()) : name.data();
  return chosen;
}

}  // namespace

bool AskText(const std::string& title, std::size_t longest, std::string* value) {
  Prompt prompt = {title.c_str(), longest, *value};
  const INT_PTR result = win32::RunDialog(win32::ThisModule(), win32::kPromptDialog, win32::Sealed<PromptProcedure>,
                                          reinterpret_cast<LPARAM>(&prompt));
  if (result == IDOK) *value = prompt.value;
  return result == IDOK;
}

bool AskFileToOpen(const FileDialog& dialog, std::string* path) {
  return AskFile(dialog, GetOpenFileNameA, path);
}

bool AskNewName(const FileDialog& dialog, std::string* path) {
  return AskFile(dialog, GetSaveFileNameA, path);
}

}  // namespace platform
