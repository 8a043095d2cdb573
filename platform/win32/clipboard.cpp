#include "platform/clipboard.h"

#include "platform/win32/windows_api.h"

namespace platform {
namespace {

void CloseMemory(HGLOBAL memory) {
  GlobalFree(memory);
}

// The clipboard, open while the object lives.
class OpenedClipboard {
 public:
  OpenedClipboard() : open_(OpenClipboard(win32::OwnerWindow()) != 0) {}
  ~OpenedClipboard() {
    if (open_) CloseClipboard();
  }
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;
  bool IsOpen() const { return open_; }

 private:
  bool open_;
};

}  // namespace

bool SetClipboardText(std::size_t size, const std::function<void(char*)>& fill) {
  HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size);
  if (memory == nullptr) return false;
  fill(static_cast<char*>(GlobalLock(memory)));
  GlobalUnlock(memory);
  const OpenedClipboard clipboard;
  // Once it is set the block belongs to the clipboard.
  if (clipboard.IsOpen() && EmptyClipboard() && SetClipboardData(CF_TEXT, memory) != nullptr) return true;
  CloseMemory(memory);
  return false;
}

}  // namespace platform
