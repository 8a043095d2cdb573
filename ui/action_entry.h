// What a leaf of the analysis menu does.
#pragma once

#include "host/host_api.h"
#include "platform/byte_view.h"
#include "reports/report_text.h"

namespace pelix {

inline constexpr std::size_t kFixedTextBytes = 400'000;
inline constexpr std::size_t kGrowingTextBytes = 150'000;

// Plain action.
using PlainHandler = void (*)();
// Decodes a record into `text`, room for kFixedTextBytes, zero-ended lines one behind the other. How many lines, or a
// negative number when it failed (and has said why).
using FixedReportHandler = int (*)(platform::ByteView record, char* text);
// Decodes a record into a text that has begun.
using GrowingReportHandler = void (*)(ReportText* text, platform::ByteView record);

enum class ActionKind : HostWord { kPlain = 0, kFixedReport = 1, kGrowingReport = 2 };

// Nine host words in this order. A null handler is that of an analysis which this version does not have.
struct ActionEntry {
  union {
    PlainHandler plain;
    FixedReportHandler fixed;
    GrowingReportHandler growing;
  };
  ActionKind kind;
  HostWord option;     // for the handler; the menu does not read it
  const char* record;  // record reports: the record's name, eight characters
  const char* title;   // the leaf's text; a record report's caption
  HostWord x;          // record reports: place and size of the list window
  HostWord y;
  HostWord visible_lines;
  HostWord line_width;

  bool HasHandler() const;
};
static_assert(sizeof(ActionEntry) == 9 * sizeof(HostWord));
static_assert(!kHostIs32Bit || sizeof(ActionEntry) == 36);

}  // namespace pelix
