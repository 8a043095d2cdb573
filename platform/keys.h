// Keys as the windows of the plug-in receive them.
#pragma once

#include <string>

namespace platform {

enum class Key {
  kEscape,
  kUp,
  kDown,
  kLeft,
  kRight,
  kPageUp,
  kPageDown,
  kHome,
  kEnd,
  kSpace,
  kEnter,
  kInsert,
  kDelete,
  kF1,
  kF2,
  kF3,
  kF4,
  kF5,
  kF6,
  kF7,
  kF8,
  kF9,
  kF10,
  kF11,
  kF12,
  kC,  // only as Ctrl+C
};

struct KeyPress {
  Key key;
  bool shift = false;
  bool control = false;
  bool operator==(const KeyPress&) const = default;
};

// Reads "Home", "Shift+PgDn", "Ctrl+C" and the like, whatever the case. False for any other text.
bool ParseKey(const std::string& name, KeyPress* key);

}  // namespace platform
