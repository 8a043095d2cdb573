#include "drive/host_services.h"

namespace pelix {
namespace {

constexpr std::size_t kLongestOutput = 1023;

}  // namespace

HostServices::HostServices() : vm(GetVM()), request(GetVMstruct()) {
  for (auto& buffer : work_buffers) buffer.reset(new std::uint8_t[kWorkBufferBytes]);
}

void Output(const char* format, ...) {
  if (!g_host || g_host->output == nullptr) return;
  std::va_list arguments;
  va_start(arguments, format);
  const std::string text = platform::FormatArguments(format, arguments).substr(0, kLongestOutput);
  va_end(arguments);
  g_host->output(text.c_str());
}

int ShowMessage(const std::string& text, platform::MessageStyle style) {
  if (!g_host->interactive) return platform::kAnswerYes;
  return platform::ShowMessageBox(text, style);
}

Progress::Progress(const std::string& text) {
  if (g_host->progress) window_ = std::make_unique<platform::ProgressWindow>(text);
}

void Progress::SetText(const std::string& text) {
  if (window_ != nullptr) window_->SetText(text);
}

void Progress::SetPosition(int percent) {
  if (window_ != nullptr) window_->SetPosition(percent);
}

ClearedFlags::ClearedFlags(TARN_VM_STRUCT* request, HostWord mask)
    : request_(request), mask_(mask), saved_(request->flags & mask) {
  request_->flags &= ~mask_;
}

ClearedFlags::~ClearedFlags() {
  request_->flags = (request_->flags & ~mask_) | saved_;
}

CommandBracket::CommandBracket(TARN_VM_STRUCT* request)
    : ClearedFlags(request, g_host->test_switch ? kFlagBit1 : kFlagBit1 | kFlagBit14) {}

}  // namespace pelix
