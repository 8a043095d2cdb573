#include "reports/csc_error_report.h"

#include "reports/report_frame.h"

namespace pelix {
namespace {

const char* const kLegend[] = {
    "                  CSC Error Flag         \n",
    " ====================================================\n",
    "  CHK_BPI          0x01  ||   CHK_10SEC_BER     0x02 \n",
    "  CHK_LOWOSC_BER   0x04  ||   CHK_TPI           0x08 \n",
    "  CHK_TPI_OSC      0x10  ||   CHK_LED9C         0x20 \n",
    "  CHK_TPI_BER      0x40  ||   CHK_WW            0x80 \n",
    "  CHK_MEDIA        0x100 ||   CHK_LED9D         0x200\n",
    " ====================================================\n\n",
};

void PrintErrorFlag(const CManagerCSCError& record, ReportText* text) {
  for (const char* line : kLegend) text->Add("%s", line);
  text->Add("           CSC Error Flag : 0x%02x \n", record.GetErrorCode());
}

std::string UnsupportedRevision(int revision) {
  return platform::Format(" CAPSELDA Revision %d is not supported ", revision);
}

}  // namespace

void ShowCscErrorReport() {
  const ReportFrame frame = {
      .record = "CAPSELDA", .caption = "CSC Error Report", .footer = "F9:Save", .capacity = 15000, .width = 50};
  ShowHostDecodedReport<CManagerCSCError>(frame, UnsupportedRevision, PrintErrorFlag);
}

}  // namespace pelix
