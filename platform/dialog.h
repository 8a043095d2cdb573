// A modal dialog whose controls are described as data and whose behaviour is its owner's.
#pragma once

#include <memory>
#include <span>
#include <string>

namespace platform {

enum class ControlKind { kRadio, kCheck, kEdit, kMultilineEdit, kButton };

// Radio controls of one description form one group: checking one unchecks the others.
struct ControlDescription {
  int id;
  ControlKind kind;
  const char* text;  // label, or the edit's name for those who cannot see its place
};

inline constexpr int kDialogOk = 1;
inline constexpr int kDialogCancel = 2;

// Called by the platform on the dialog's thread. Must not throw.
class DialogEvents {
 public:
  virtual ~DialogEvents() = default;
  virtual void OnOpen() = 0;
  // A button was pressed or a check or radio was changed by the user; OK and Cancel come here too (Enter and Esc).
  virtual void OnClick(int id) = 0;
};

class Dialog {
 public:
  Dialog();
  ~Dialog();
  Dialog(const Dialog&) = delete;
  Dialog& operator=(const Dialog&) = delete;

  // Opens the dialog resource of that id and returns what End was given.
  int RunModal(int resource_id, const char* title, std::span<const ControlDescription> controls, DialogEvents* events);

  void SetText(int id, const std::string& text);
  std::string Text(int id) const;
  void SetChecked(int id, bool checked);
  bool IsChecked(int id) const;
  void Enable(int id, bool enabled);
  void End(int result);

  struct Impl;

 private:
  std::unique_ptr<Impl> impl_;
};

// Installs a module as the one whose resources dialogs use (0: the library's own); returns the one before.
std::uintptr_t InstallResourceModule(std::uintptr_t module);

}  // namespace platform
