// The windows of a headless run: which are open, what was asked and shown. Lives in the shared library that the
// plug-in and the host program both load, as on Windows both load the system's window library.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "platform/automation.h"
#include "platform/keys.h"

namespace platform {
class TreeControl;
}

namespace platform::headless {

// A window that takes events until it is closed.
class ModalWindow {
 public:
  virtual ~ModalWindow() = default;
  virtual void OnKey(const KeyPress& key) = 0;
  virtual std::string Show() = 0;
  virtual automation::Outcome SetControl(int id, const std::string& text);
  virtual automation::Outcome ClickControl(int id);
  virtual automation::Outcome GetControl(int id, std::string* text);
  virtual automation::Outcome SavePicture(const std::string& path);
  // What Esc or the close box does.
  virtual void Close() { closed_ = true; }

  // Takes events from the desktop's source until the window is closed.
  void RunModal();

 private:
  bool closed_ = false;
};

struct Answer {
  automation::AnswerKind kind;
  std::string text;
};

struct Desktop {
  static Desktop& Instance();

  // Takes the next queued answer; false when there is none.
  bool TakeAnswer(Answer* answer);
  // Tells the host how a question was answered.
  void Tell(const std::string& line) const;

  std::function<void(const std::string&)> message_sink;
  std::function<void(const std::string&)> question_sink;
  std::function<bool()> event_source;
  std::deque<Answer> answers;
  std::vector<ModalWindow*> modals;  // the topmost last
  std::vector<TreeControl*> trees;
  std::uintptr_t resource_module = 0;
  std::string clipboard;  // the block as it was set, zeros and all
};

}  // namespace platform::headless
