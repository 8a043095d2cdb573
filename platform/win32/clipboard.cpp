#include "platform/clipboard.h"

#include "platform/win32/windows_api.h"

namespace platform {
namespace {

void CloseMemory(HGLOBAL memory) {
  GlobalFree(memory);
}
using OwnedMemory = win32::Owned<HGLOBAL, CloseMemory>;

// A memory block's bytes, where they stay while the object lives.
class LockedMemory {
 public:
  explicit LockedMemory(HGLOBAL memory) : memory_(memory), bytes_(static_cast<char*>(GlobalLock(memory))) {}
  ~LockedMemory() {
    if (bytes_ != nullptr) GlobalUnlock(memory_);
  }
  LockedMemory(const LockedMemory&) = delete;
  LockedMemory& operator=(const LockedMemory&) = delete;
  char* bytes() const { return bytes_; }

 private:
  HGLOBAL memory_;
  char* bytes_;
};

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
  OwnedMemory memory(GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size));
  if (!memory) return false;
  {
    const LockedMemory block(memory.get());
    if (block.bytes() == nullptr) return false;
    fill(block.bytes());
  }
  const OpenedClipboard clipboard;
  const bool set = clipboard.IsOpen() && EmptyClipboard() && SetClipboardData(CF_TEXT, memory.get()) != nullptr;
  if (set) memory.Release();  // the block is the clipboard's now
  return set;
}

}  // namespace platform
