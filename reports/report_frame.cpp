#include "reports/report_frame.h"

#include "drive/drive_identity.h"
#include "drive/host_services.h"
#include "listwin/list_window.h"
#include "records/record_source.h"

namespace pelix {

bool RevisionIsSupported(const CBaseDataClass& decoder, RevisionMessage message) {
  if (decoder.IsRevisionValid()) return true;
  ShowMessage(message(decoder.GetRevisionNumber()));
  return false;
}

void ShowRecordReport(const ReportFrame& frame,
                      const std::function<bool(platform::ByteView record, ReportText* text)>& decode) {
  if (!Identify(&*g_identity, true)) return;
  const Record record = g_records->FetchRecord(RecordName(frame.record));
  if (!record) return;
  ReportText text;
  if (text.Begin(frame.capacity) != 0 || !decode(record.View(), &text) || text.Failed()) return;
  text.Finish();
  ListPlan plan;
  plan.width = frame.width;
  plan.caption = frame.caption;
  plan.footer = frame.footer;
  ListWindow window(plan, MakeBlockBody(text.Text(), text.Lines()));
  window.Show();
}

}  // namespace pelix
