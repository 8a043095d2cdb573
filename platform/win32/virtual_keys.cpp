#include "platform/win32/windows_api.h"

namespace platform::win32 {
namespace {

struct VirtualKey {
  WPARAM code;
  Key key;
};
const VirtualKey kVirtualKeys[] = {
    {VK_ESCAPE, Key::kEscape}, {VK_UP, Key::kUp},        {VK_DOWN, Key::kDown},     {VK_LEFT, Key::kLeft},
    {VK_RIGHT, Key::kRight},   {VK_PRIOR, Key::kPageUp}, {VK_NEXT, Key::kPageDown}, {VK_HOME, Key::kHome},
    {VK_END, Key::kEnd},       {VK_SPACE, Key::kSpace},  {VK_RETURN, Key::kEnter},  {VK_INSERT, Key::kInsert},
    {VK_DELETE, Key::kDelete}, {VK_F1, Key::kF1},        {VK_F2, Key::kF2},         {VK_F3, Key::kF3},
    {VK_F4, Key::kF4},         {VK_F5, Key::kF5},        {VK_F6, Key::kF6},         {VK_F7, Key::kF7},
    {VK_F8, Key::kF8},         {VK_F9, Key::kF9},        {VK_F10, Key::kF10},       {VK_F11, Key::kF11},
    {VK_F12, Key::kF12},       {'C', Key::kC},
};

}  // namespace

std::optional<KeyPress> PressOf(WPARAM code) {
  const bool shift = GetKeyState(VK_SHIFT) < 0;
  const bool control = GetKeyState(VK_CONTROL) < 0;
  for (const VirtualKey& row : kVirtualKeys) {
    if (row.code == code && (row.key != Key::kC || control)) return KeyPress{row.key, shift, control};
  }
  return std::nullopt;
}

WPARAM VirtualKeyOf(Key key) {
  for (const VirtualKey& row : kVirtualKeys) {
    if (row.key == key) return row.code;
  }
  return 0;
}

}  // namespace platform::win32
