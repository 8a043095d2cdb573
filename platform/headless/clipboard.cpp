#include "platform/clipboard.h"

#include <new>

#include "platform/headless/desktop.h"

namespace platform {

bool SetClipboardText(std::size_t size, const std::function<void(char*)>& fill) {
  try {
    std::string block(size, '\0');
    fill(block.data());
    headless::Desktop::Instance().clipboard = std::move(block);
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

}  // namespace platform
