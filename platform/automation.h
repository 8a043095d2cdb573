// Driving the plug-in's windows from outside, as a user would: for the host programs' script language and for tests.
// Nothing of the product calls it.
#pragma once

#include <functional>
#include <string>

#include "platform/keys.h"

namespace platform::automation {

enum class Outcome {
  kDone,
  kNoTarget,  // there is no window, or no such control, to take it
  kRefused,   // the control is disabled or is not of that kind
};

// The host's window that is to contain the plug-in's. Made when it is first asked for, unless the host has named one of
// its own before; it counts as the thread's main window.
void* HostWindow();
void UseHostWindow(void* window);

// Called for the text of every message box.
void SetMessageSink(std::function<void(const std::string& text)> sink);
// Called with a line about a question that was answered, for the host's diagnostics.
void SetQuestionSink(std::function<void(const std::string& line)> sink);
// Called over and over while a modal window waits for events; false when there are no more, which closes the window.
void SetEventSource(std::function<bool()> source);

// Replies to the next prompt, file dialog or question. With none queued a question gets yes, a prompt keeps its
// preset and a file dialog is cancelled.
enum class AnswerKind { kText, kYes, kNo, kCancel };
void QueueAnswer(AnswerKind kind, const std::string& text);
void ClearAnswers();

// The topmost modal window.
Outcome SendKey(const KeyPress& key);
Outcome Show(std::string* text);
Outcome SetControl(int id, const std::string& text);
Outcome ClickControl(int id);
Outcome GetControl(int id, std::string* text);
// Saves the picture of the topmost graphic view as its save command does.
Outcome SavePicture(const std::string& path);

// The clipboard's block of plain text as it was set, zeros and all; empty when there is none.
std::string ClipboardBlock();

// The tree below the host's window. Paths as in tree_path.h.
Outcome ActivateItem(const std::string& path);  // no target while a modal window is open: the tree is behind it
Outcome TreeText(std::string* text);            // two blanks a level, "+ " or "- ", the item's text, a line each

}  // namespace platform::automation
