#include "platform/dialog_text.h"

#include "platform/format.h"

namespace platform {
namespace {

// What a script reads back has the line ends of text files, not of edit controls.
std::string WithPlainLineEnds(const std::string& text) {
  std::string plain;
  for (const char c : text) {
    if (c != '\r') plain += c;
  }
  return plain;
}

}  // namespace

std::string ControlLine(const ControlDescription& control, const std::string& text, bool checked, bool enabled) {
  std::string look = control.text;
  switch (control.kind) {
    case ControlKind::kRadio:
      look = (checked ? "(*) " : "( ) ") + look;
      break;
    case ControlKind::kCheck:
      look = (checked ? "[x] " : "[ ] ") + look;
      break;
    case ControlKind::kEdit:
    case ControlKind::kMultilineEdit:
      look += ": " + WithPlainLineEnds(text);
      break;
    case ControlKind::kButton:
      look = "<" + look + ">";
      break;
  }
  return Format("%5d %s%s\n", control.id, look.c_str(), enabled ? "" : " (disabled)");
}

std::string ControlValue(const ControlDescription& control, const std::string& text, bool checked) {
  switch (control.kind) {
    case ControlKind::kRadio:
    case ControlKind::kCheck:
      return checked ? "1" : "0";
    case ControlKind::kEdit:
    case ControlKind::kMultilineEdit:
      return WithPlainLineEnds(text);
    case ControlKind::kButton:
      break;
  }
  return control.text;
}

}  // namespace platform
