// What every record report has in common: identify, fetch, decode, show.
#pragma once

#include <functional>

#include "host/decoders.h"
#include "listwin/list_window.h"
#include "platform/byte_view.h"
#include "records/record_source.h"
#include "reports/report_text.h"

namespace pelix {

struct ReportFrame {
  const char* record;  // eight characters
  const char* caption;
  const char* footer;
  std::size_t capacity;  // bytes that the text starts with
  std::size_t width;     // characters
};

// Identifies the drive with its directory and fetches the record; nothing when either fails.
Record FetchReportRecord(const char* record);
// Shows lines in a list window, or writes them where a script takes them.
void ShowReport(const ListPlan& plan, std::span<const char> text, std::size_t lines);

// Identifies the drive, fetches the record, has `decode` write the lines and shows them. Stops without a window when
// one of these fails; `decode` has then shown its own message.
void ShowRecordReport(const ReportFrame& frame,
                      const std::function<bool(platform::ByteView record, ReportText* text)>& decode);

// False, and the message, when the host's decoder does not know the record's revision.
using RevisionMessage = std::string (*)(int revision);
bool RevisionIsSupported(const CBaseDataClass& decoder, RevisionMessage message);

// The same for a record that a class of the host decodes.
template <class Decoder>
void ShowHostDecodedReport(const ReportFrame& frame, RevisionMessage message,
                           void (*print)(const Decoder& decoder, ReportText* text)) {
  ShowRecordReport(frame, [&](platform::ByteView record, ReportText* text) {
    const Decoder decoder(record.data(), static_cast<std::uint32_t>(record.size()));
    if (!RevisionIsSupported(decoder, message)) return false;
    print(decoder, text);
    return true;
  });
}

}  // namespace pelix
