#include "platform/keys.h"

#include "platform/format.h"

namespace platform {
namespace {

struct KeyName {
  const char* name;
  Key key;
};
const KeyName kKeyNames[] = {
    {"Esc", Key::kEscape},    {"Up", Key::kUp},       {"Down", Key::kDown},     {"Left", Key::kLeft},
    {"Right", Key::kRight},   {"PgUp", Key::kPageUp}, {"PgDn", Key::kPageDown}, {"Home", Key::kHome},
    {"End", Key::kEnd},       {"Space", Key::kSpace}, {"Enter", Key::kEnter},   {"Insert", Key::kInsert},
    {"Delete", Key::kDelete}, {"F1", Key::kF1},       {"F2", Key::kF2},         {"F3", Key::kF3},
    {"F4", Key::kF4},         {"F5", Key::kF5},       {"F6", Key::kF6},         {"F7", Key::kF7},
    {"F8", Key::kF8},         {"F9", Key::kF9},       {"F10", Key::kF10},       {"F11", Key::kF11},
    {"F12", Key::kF12},       {"C", Key::kC},
};

bool TakePrefix(const std::string& prefix, std::string* text) {
  if (!EqualIgnoringCase(text->substr(0, prefix.size()), prefix)) return false;
  text->erase(0, prefix.size());
  return true;
}

}  // namespace

bool ParseKey(const std::string& name, KeyPress* key) {
  std::string rest = name;
  *key = {};
  for (;;) {
    if (TakePrefix("Shift+", &rest)) {
      key->shift = true;
    } else if (TakePrefix("Ctrl+", &rest)) {
      key->control = true;
    } else {
      break;
    }
  }
  for (const KeyName& row : kKeyNames) {
    if (!EqualIgnoringCase(rest, row.name)) continue;
    key->key = row.key;
    return row.key != Key::kC || key->control;
  }
  return false;
}

}  // namespace platform
