// The growing text of one report.
#pragma once

#include <cstddef>
#include <memory>
#include <span>

#include "platform/format.h"

namespace pelix {

class ReportText {
 public:
  // Allocates room for `capacity` bytes; nonzero when there is none.
  [[nodiscard]] int Begin(std::size_t capacity);
  // Formats at the write position. The room doubles as often as the text needs; text for which there is no memory is
  // dropped and makes Failed true. Lines end with "\n" in the formats.
  PLATFORM_PRINTF(2, 3) void Add(const char* format, ...);
  // Ends every line with a zero instead of "\n" and counts the lines; a last line without "\n" counts too.
  void Finish();
  // Back to an empty text; the room stays.
  void Reset();
  void End();

  // The zero-ended lines, or " No Data" when nothing was added.
  std::span<const char> Text() const;
  // Valid after Finish.
  std::size_t Lines() const { return lines_; }
  bool Failed() const { return failed_; }

 private:
  bool Grow();

  std::unique_ptr<char[]> buffer_;
  std::size_t capacity_ = 0;  // bytes
  std::size_t used_ = 0;      // bytes, without the terminating zero
  std::size_t lines_ = 0;
  bool failed_ = false;
};

}  // namespace pelix
