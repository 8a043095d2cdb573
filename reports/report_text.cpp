#include "reports/report_text.h"

#include <cstdio>
#include <cstring>
#include <new>

namespace pelix {
namespace {

constexpr char kNoData[] = " No Data";
constexpr std::size_t kReserve = 100;  // most that one ordinary line takes

}  // namespace

int ReportText::Begin(std::size_t capacity) {
  End();
  capacity_ = capacity < kReserve ? kReserve : capacity;
  buffer_.reset(new (std::nothrow) char[capacity_]);
  return buffer_ == nullptr ? 1 : 0;
}

bool ReportText::Grow() {
  std::unique_ptr<char[]> larger(new (std::nothrow) char[2 * capacity_]);
  if (larger == nullptr) {
    failed_ = true;
    return false;
  }
  std::memcpy(larger.get(), buffer_.get(), used_);
  buffer_ = std::move(larger);
  capacity_ *= 2;
  return true;
}

void ReportText::Add(const char* format, ...) {
  if (buffer_ == nullptr) return;
  std::va_list arguments;
  va_start(arguments, format);
  if (used_ + kReserve >= capacity_) Grow();
  for (;;) {
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(buffer_.get() + used_, capacity_ - used_, format, again);
    va_end(again);
    if (length < 0) break;
    if (static_cast<std::size_t>(length) < capacity_ - used_) {
      used_ += static_cast<std::size_t>(length);
      break;
    }
    if (!Grow()) break;
  }
  va_end(arguments);
}

void ReportText::Finish() {
  lines_ = 0;
  for (std::size_t i = 0; i < used_; ++i) {
    if (buffer_[i] != '\n') continue;
    buffer_[i] = '\0';
    ++lines_;
  }
  if (used_ == 0 || buffer_[used_ - 1] == '\0') return;
  buffer_[used_] = '\0';
  ++used_;
  ++lines_;
}

void ReportText::Reset() {
  used_ = 0;
  lines_ = 0;
  failed_ = false;
}

void ReportText::End() {
  buffer_.reset();
  capacity_ = 0;
  Reset();
}

std::span<const char> ReportText::Text() const {
  if (used_ == 0) return {kNoData, sizeof kNoData};
  return {buffer_.get(), used_};
}

}  // namespace pelix
