#include "reports/report_frame.h"

#include "drive/drive_identity.h"
#include "drive/host_services.h"

namespace pelix {

bool RevisionIsSupported(const CBaseDataClass& decoder, RevisionMessage message) {
  if (decoder.IsRevisionValid()) return true;
  ShowMessage(message(decoder.GetRevisionNumber()));
  return false;
}

Record FetchReportRecord(const char* record) {
  if (!Identify(&*g_identity, true)) return {};
  return g_records->FetchRecord(RecordName(record));
}

void ShowReport(const ListPlan& plan, std::span<const char> text, std::size_t lines) {
  ListWindow window(plan, MakeBlockBody(text, lines));
  window.Show();
}

void ShowRecordReport(const ReportFrame& frame,
                      const std::function<bool(platform::ByteView record, ReportText* text)>& decode) {
  const Record record = FetchReportRecord(frame.record);
  if (!record) return;
  ReportText text;
  if (text.Begin(frame.capacity) != 0 || !decode(record.View(), &text) || text.Failed()) return;
  text.Finish();
  ListPlan plan;
  plan.width = frame.width;
  plan.caption = frame.caption;
  plan.footer = frame.footer;
  ShowReport(plan, text.Text(), text.Lines());
}

}  // namespace pelix
