// The clipboard, plain text only.
#pragma once

#include <cstddef>
#include <functional>

namespace platform {

// Puts a zero-initialised block of `size` bytes on the clipboard as plain text, after `fill` has written into it.
// False when there is no room for it or the clipboard cannot be had.
bool SetClipboardText(std::size_t size, const std::function<void(char* block)>& fill);

}  // namespace platform
