// What prompts ask is the same on every platform.
#include "platform/prompts.h"

#include "platform/files.h"
#include "platform/format.h"
#include "platform/message_box.h"

namespace platform {

bool AskNumber(const std::string& title, int* value) {
  constexpr std::size_t kLongestNumber = 11;
  std::string text = Format("%d", *value);
  if (!AskText(title, kLongestNumber, &text)) return false;
  *value = ReadDecimal(text);
  return true;
}

bool AskFileToSave(const FileDialog& dialog, std::string* path) {
  if (!AskNewName(dialog, path)) return false;
  if (!FileExists(*path)) return true;
  const std::string question = *path + " already exists.\nDo you want to replace it?";
  return ShowMessageBox(question, MessageStyle::kYesNo) == kAnswerYes;
}

}  // namespace platform
