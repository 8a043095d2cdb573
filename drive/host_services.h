// What the host gives the plug-in: its script machine and request structure, its output, and the switches that decide
// whether anybody is at the screen.
#pragma once

#include <array>
#include <cstdint>
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

// Sets a switch for as long as the object lives.
class SwitchScope {
 public:
  SwitchScope(bool* flag, bool value) : flag_(flag), before_(*flag) { *flag = value; }
  ~SwitchScope() { *flag_ = before_; }
  SwitchScope(const SwitchScope&) = delete;
  SwitchScope& operator=(const SwitchScope&) = delete;

 private:
  bool* flag_;
  bool before_;
};

// Stands around every drive command: bit 1 of the command flags is clear meanwhile and, while a live test measures,
// bit 14 too; both are put back afterwards.
class CommandBracket {
 public:
  explicit CommandBracket(TARN_VM_STRUCT* request);
  ~CommandBracket();
  CommandBracket(const CommandBracket&) = delete;
  CommandBracket& operator=(const CommandBracket&) = delete;

 private:
  TARN_VM_STRUCT* request_;
  HostWord mask_;
  HostWord saved_;
};

}  // namespace pelix
