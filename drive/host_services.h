// What the host gives the plug-in: its script machine and request structure, its output, and the switches that decide
// whether anybody is at the screen.
#pragma once

#include <array>
#include <cstdint>
#include <exception>
#include <memory>
#include <string>

#include "host/vm.h"
#include "platform/format.h"
#include "platform/message_box.h"
#include "platform/process_wide.h"
#include "platform/progress_window.h"

namespace pelix {

inline constexpr std::size_t kWorkBufferBytes = 2'048'000;

struct HostServices {
  // Fetches the host's objects and allocates the work buffers.
  HostServices();

  C_VM* vm;
  TARN_VM_STRUCT* request;  // replaced by set-context; may be null when the host says so
  std::string drive_label;  // empty until set-context
  void (*output)(const char* text) = nullptr;
  HostWord resource_module = 0;
  // Scratch space of identification and record readers, uninitialised.
  std::array<std::unique_ptr<std::uint8_t[]>, 2> work_buffers;

  bool test_switch = true;  // off while a live test measures
  bool interactive = true;  // off while nobody is there to see a message box
  bool progress = true;     // off while progress windows stay closed
};

inline platform::ProcessWide<HostServices> g_host;

// Writes a text to the host's output; dropped while the host has given none. Cut at 1,023 characters. Lines end with
// "\n", which the caller writes.
PLATFORM_PRINTF(1, 2) void Output(const char* format, ...);

// Shows a message box. In a non-interactive run it shows nothing and answers Yes.
int ShowMessage(const std::string& text, platform::MessageStyle style = platform::MessageStyle::kOk);

// A progress window, unless progress is switched off.
class Progress {
 public:
  explicit Progress(const std::string& text);
  void SetText(const std::string& text);
  void SetPosition(int percent);

 private:
  std::unique_ptr<platform::ProgressWindow> window_;
};

// Gives a variable another value for as long as the object lives.
template <class Value>
class ValueScope {
 public:
  ValueScope(Value* variable, Value value) : variable_(variable), before_(*variable) { *variable = value; }
  ~ValueScope() { *variable_ = before_; }
  ValueScope(const ValueScope&) = delete;
  ValueScope& operator=(const ValueScope&) = delete;

 private:
  Value* variable_;
  Value before_;
};
using SwitchScope = ValueScope<bool>;

// Clears bits of the host's command flags for as long as the object lives; the other bits keep what they become.
class ClearedFlags {
 public:
  ClearedFlags(TARN_VM_STRUCT* request, HostWord mask);
  ~ClearedFlags();
  ClearedFlags(const ClearedFlags&) = delete;
  ClearedFlags& operator=(const ClearedFlags&) = delete;

 private:
  TARN_VM_STRUCT* request_;
  HostWord mask_;
  HostWord saved_;
};

inline constexpr char kOutOfMemory[] = "There is not enough memory for this.";
// Runs an action whose exceptions may not reach the platform's or the host's frames; it can only be short of memory.
template <class Action>
void Guarded(Action action) {
  try {
    action();
  } catch (const std::exception&) {
    ShowMessage(kOutOfMemory);
  }
}

// Stands around every drive command: bit 1 of the command flags is clear meanwhile and, while a live test measures,
// bit 14 too; both are put back afterwards.
class CommandBracket : private ClearedFlags {
 public:
  explicit CommandBracket(TARN_VM_STRUCT* request);
};

}  // namespace pelix
