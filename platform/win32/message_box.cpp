#include "platform/message_box.h"

#include "platform/win32/windows_api.h"

namespace platform {

int ShowMessageBox(const std::string& text, MessageStyle style) {
  const UINT buttons = style == MessageStyle::kYesNo ? MB_YESNO | MB_ICONQUESTION : MB_OK | MB_ICONEXCLAMATION;
  const win32::SystemDialogScope open(style == MessageStyle::kYesNo ? IDNO : IDOK);
  return MessageBoxA(open.owner(), text.c_str(), "PELIX", buttons | MB_TASKMODAL);
}

}  // namespace platform
