#include "platform/dialog.h"

#include <map>
#include <utility>

#include "platform/dialog_text.h"
#include "platform/headless/desktop.h"

namespace platform {

using automation::Outcome;

struct Dialog::Impl : headless::ModalWindow {
  struct Control {
    std::string text;
    bool checked = false;
    bool enabled = true;
  };

  void OnKey(const KeyPress& key) override {
    if (key.key == Key::kEnter) events->OnClick(kDialogOk);
    if (key.key == Key::kEscape) events->OnClick(kDialogCancel);
  }
  std::string Show() override;
  Outcome SetControl(int id, const std::string& text) override;
  Outcome ClickControl(int id) override;
  Outcome GetControl(int id, std::string* text) override;

  const ControlDescription* Find(int id) const {
    for (const ControlDescription& control : controls) {
      if (control.id == id) return &control;
    }
    return nullptr;
  }
  void Check(int id, bool checked);

  std::string title;
  std::span<const ControlDescription> controls;
  DialogEvents* events = nullptr;
  std::map<int, Control> states;
  int result = kDialogCancel;
};

std::string Dialog::Impl::Show() {
  std::string text = title + "\n";
  for (const ControlDescription& control : controls) {
    const Control& state = states[control.id];
    text += ControlLine(control, state.text, state.checked, state.enabled);
  }
  return text;
}

void Dialog::Impl::Check(int id, bool checked) {
  const ControlDescription* control = Find(id);
  if (control != nullptr && control->kind == ControlKind::kRadio && checked) {
    for (const ControlDescription& other : controls) {
      if (other.kind == ControlKind::kRadio) states[other.id].checked = false;
    }
  }
  states[id].checked = checked;
}

Outcome Dialog::Impl::SetControl(int id, const std::string& text) {
  const ControlDescription* control = Find(id);
  if (control == nullptr) return Outcome::kNoTarget;
  if (control->kind != ControlKind::kEdit && control->kind != ControlKind::kMultilineEdit) return Outcome::kRefused;
  if (!states[id].enabled) return Outcome::kRefused;
  states[id].text = text;
  return Outcome::kDone;
}

Outcome Dialog::Impl::ClickControl(int id) {
  const ControlDescription* control = Find(id);
  if (control == nullptr) return Outcome::kNoTarget;
  if (!states[id].enabled) return Outcome::kRefused;
  switch (control->kind) {
    case ControlKind::kRadio:
      Check(id, true);
      break;
    case ControlKind::kCheck:
      Check(id, !states[id].checked);
      break;
    case ControlKind::kButton:
      break;
    case ControlKind::kEdit:
    case ControlKind::kMultilineEdit:
      return Outcome::kRefused;
  }
  events->OnClick(id);
  return Outcome::kDone;
}

Outcome Dialog::Impl::GetControl(int id, std::string* text) {
  const ControlDescription* control = Find(id);
  if (control == nullptr) return Outcome::kNoTarget;
  *text = ControlValue(*control, states[id].text, states[id].checked);
  return Outcome::kDone;
}

Dialog::Dialog() : impl_(std::make_unique<Impl>()) {}
Dialog::~Dialog() = default;

int Dialog::RunModal(int, const char* title, std::span<const ControlDescription> controls, DialogEvents* events) {
  impl_->title = title;
  impl_->controls = controls;
  impl_->events = events;
  impl_->result = kDialogCancel;
  events->OnOpen();
  impl_->RunModal();
  return impl_->result;
}

void Dialog::SetText(int id, const std::string& text) {
  impl_->states[id].text = text;
}
std::string Dialog::Text(int id) const {
  return impl_->states[id].text;
}
void Dialog::SetChecked(int id, bool checked) {
  impl_->Check(id, checked);
}
bool Dialog::IsChecked(int id) const {
  return impl_->states[id].checked;
}
void Dialog::Enable(int id, bool enabled) {
  impl_->states[id].enabled = enabled;
}
void Dialog::End(int result) {
  impl_->result = result;
  impl_->Close();
}

std::uintptr_t InstallResourceModule(std::uintptr_t module) {
  return std::exchange(headless::Desktop::Instance().resource_module, module);
}

}  // namespace platform
