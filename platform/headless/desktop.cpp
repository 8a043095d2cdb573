#include "platform/headless/desktop.h"

#include <algorithm>

#include "platform/shutdown.h"
#include "platform/tree_control.h"
#include "platform/tree_path.h"

namespace platform {
namespace headless {

using automation::Outcome;

Outcome ModalWindow::SetControl(int, const std::string&) {
  return Outcome::kNoTarget;
}
Outcome ModalWindow::ClickControl(int) {
  return Outcome::kNoTarget;
}
Outcome ModalWindow::GetControl(int, std::string*) {
  return Outcome::kNoTarget;
}
Outcome ModalWindow::SavePicture(const std::string&) {
  return Outcome::kNoTarget;
}

void ModalWindow::RunModal() {
  Desktop& desktop = Desktop::Instance();
  desktop.modals.push_back(this);
  while (!closed_) {
    if (desktop.event_source == nullptr || !desktop.event_source()) Close();
  }
  std::erase(desktop.modals, this);
}

Desktop& Desktop::Instance() {
  // Never destroyed: windows may still be closing while the program ends.
  static Desktop& desktop = *new Desktop;
  return desktop;
}

bool Desktop::TakeAnswer(Answer* answer) {
  if (answers.empty()) return false;
  *answer = answers.front();
  answers.pop_front();
  return true;
}

void Desktop::Tell(const std::string& line) const {
  if (question_sink != nullptr) question_sink(line);
}

}  // namespace headless

void CloseModalWindows() {
  std::vector<headless::ModalWindow*> open = headless::Desktop::Instance().modals;
  for (; !open.empty(); open.pop_back()) open.back()->Close();
}

int CountOpenHandles() {
  const headless::Desktop& desktop = headless::Desktop::Instance();
  return static_cast<int>(desktop.modals.size() + desktop.trees.size());
}

namespace automation {
namespace {

using headless::Desktop;

int own_window;  // only its address matters
void* host_window = &own_window;

headless::ModalWindow* Topmost() {
  const Desktop& desktop = Desktop::Instance();
  return desktop.modals.empty() ? nullptr : desktop.modals.back();
}

}  // namespace

void* HostWindow() {
  return host_window;
}
void UseHostWindow(void* window) {
  host_window = window;
}

void SetMessageSink(std::function<void(const std::string&)> sink) {
  Desktop::Instance().message_sink = std::move(sink);
}
void SetQuestionSink(std::function<void(const std::string&)> sink) {
  Desktop::Instance().question_sink = std::move(sink);
}
void SetEventSource(std::function<bool()> source) {
  Desktop::Instance().event_source = std::move(source);
}
void QueueAnswer(AnswerKind kind, const std::string& text) {
  Desktop::Instance().answers.push_back({kind, text});
}

void ClearAnswers() {
  Desktop::Instance().answers.clear();
}

Outcome SendKey(const KeyPress& key) {
  headless::ModalWindow* window = Topmost();
  if (window == nullptr) return Outcome::kNoTarget;
  window->OnKey(key);
  return Outcome::kDone;
}

Outcome Show(std::string* text) {
  headless::ModalWindow* window = Topmost();
  if (window == nullptr) return Outcome::kNoTarget;
  *text = window->Show();
  return Outcome::kDone;
}

Outcome SetControl(int id, const std::string& text) {
  headless::ModalWindow* window = Topmost();
  return window == nullptr ? Outcome::kNoTarget : window->SetControl(id, text);
}

Outcome ClickControl(int id) {
  headless::ModalWindow* window = Topmost();
  return window == nullptr ? Outcome::kNoTarget : window->ClickControl(id);
}

Outcome GetControl(int id, std::string* text) {
  headless::ModalWindow* window = Topmost();
  return window == nullptr ? Outcome::kNoTarget : window->GetControl(id, text);
}

Outcome SavePicture(const std::string& path) {
  headless::ModalWindow* window = Topmost();
  return window == nullptr ? Outcome::kNoTarget : window->SavePicture(path);
}

std::string ClipboardBlock() {
  return Desktop::Instance().clipboard;
}

Outcome TreeText(std::string* text) {
  text->clear();
  if (Desktop::Instance().trees.empty()) return Outcome::kNoTarget;
  *text = TreeLines(Desktop::Instance().trees.back()->Walk());
  return Outcome::kDone;
}

}  // namespace automation
}  // namespace platform
