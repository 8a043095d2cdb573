// Message boxes, prompts and file dialogs of a headless run: the host's script has queued the answers.
#include "platform/prompts.h"

#include "platform/headless/desktop.h"
#include "platform/message_box.h"

namespace platform {

using automation::AnswerKind;
using headless::Answer;
using headless::Desktop;

int ShowMessageBox(const std::string& text, MessageStyle style) {
  Desktop& desktop = Desktop::Instance();
  if (desktop.message_sink != nullptr) desktop.message_sink(text);
  if (style == MessageStyle::kOk) return kAnswerOk;
  Answer answer;
  if (!desktop.TakeAnswer(&answer)) return kAnswerYes;
  switch (answer.kind) {
    case AnswerKind::kYes:
    case AnswerKind::kText:
      return kAnswerYes;
    case AnswerKind::kNo:
    case AnswerKind::kCancel:
      break;
  }
  return kAnswerNo;
}

bool AskText(const std::string& title, std::size_t longest, std::string* value) {
  Desktop& desktop = Desktop::Instance();
  Answer answer;
  bool confirmed = true;
  if (desktop.TakeAnswer(&answer)) {
    confirmed = answer.kind == AnswerKind::kText || answer.kind == AnswerKind::kYes;
    if (answer.kind == AnswerKind::kText) *value = answer.text.substr(0, longest);
  }
  desktop.Tell(title + ": " + (confirmed ? "\"" + *value + "\"" : "cancelled"));
  return confirmed;
}

namespace {

bool AskFile(const FileDialog& dialog, std::string* path) {
  Desktop& desktop = Desktop::Instance();
  Answer answer;
  const bool chosen = desktop.TakeAnswer(&answer) && answer.kind == AnswerKind::kText && !answer.text.empty();
  if (chosen) *path = answer.text;
  desktop.Tell(std::string(dialog.title) + ": " + (chosen ? "\"" + *path + "\"" : "cancelled"));
  return chosen;
}

}  // namespace

bool AskFileToOpen(const FileDialog& dialog, std::string* path) {
  return AskFile(dialog, path);
}

bool AskNewName(const FileDialog& dialog, std::string* path) {
  if (!AskFile(dialog, path)) return false;
  const std::string name = path->substr(path->find_last_of("\\/") + 1);
  if (name.find('.') == std::string::npos) *path += std::string(".") + dialog.default_extension;
  return true;
}

}  // namespace platform
