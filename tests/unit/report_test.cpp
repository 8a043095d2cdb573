#include "reports/csc_error_report.h"
#include "reports/report_frame.h"
#include "reports/report_text.h"
#include "tests/support/plugin_test.h"

namespace pelix {
namespace {

TEST(ReportText, GrowsAndCountsLines) {
  ReportText text;
  ASSERT_EQ(text.Begin(1), 0);
  EXPECT_EQ(std::string(text.Text().data()), " No Data");
  std::string expected;
  for (int i = 0; i < 1000; ++i) {
    text.Add("%5d %s\n", i, "abc");
    expected += platform::Format("%5d %s", i, "abc") + '\0';
  }
  text.Add("%s\n", std::string(5000, 'w').c_str());
  expected += std::string(5000, 'w') + '\0';
  text.Add("last");
  text.Finish();
  EXPECT_EQ(text.Lines(), 1002u);
  EXPECT_EQ(std::string(text.Text().data(), text.Text().size()), expected + "last" + '\0');
  EXPECT_FALSE(text.Failed());
  text.Reset();
  text.Add("\n\n");
  text.Finish();
  EXPECT_EQ(text.Lines(), 2u);
  text.End();
  text.Add("after the end");
  EXPECT_EQ(std::string(text.Text().data()), " No Data");
}

// The report from record files, whose contents are the test's own.
class ReportTest : public PluginTest {
 protected:
  ReportTest() {
    identity().access.mode = AccessMode::kFile;
    FitBytes fit(1, 0x0004);
    fit.Add("CAPSELDA", 0x30, 0, 1);
    WriteTables(fit);
  }
  // What the report shows of such a record.
  static std::string Shown(const std::vector<std::uint8_t>& record) {
    WriteBytes("CAPSELDA.bin", record);
    return ShownBy(ShowCscErrorReport);
  }
  static RecordBytes CscRecord(std::uint32_t revision, std::uint32_t code) {
    return RecordBytes(512).Text(0, "CAPSELDA").Le(8, revision, 2).Le(16, code, 4);
  }
};

TEST_F(ReportTest, TheErrorFlagIsPrintedWithTwoDigitsOrMore) {
  const struct {
    std::uint32_t code;
    const char* printed;
  } cases[] = {{0, "0x00"}, {5, "0x05"}, {0x80, "0x80"}, {512, "0x200"}, {0xFFFFFFFF, "0xffffffff"}};
  for (const auto& c : cases) {
    const std::string shown = Shown(CscRecord(1, c.code).Get());
    EXPECT_EQ(shown.find("CSC Error Report\n>                  CSC Error Flag "), 0u) << shown;
    EXPECT_NE(shown.find(platform::Format("\n            CSC Error Flag : %s \nF9:Save\n", c.printed)),
              std::string::npos)
        << shown;
  }
  EXPECT_EQ(messages(), Messages());
}

TEST_F(ReportTest, RecordsThatCannotBeDecodedAreSaidAndShowNothing) {
  EXPECT_EQ(Shown(CscRecord(2, 5).Get()), "");
  EXPECT_EQ(Shown(CscRecord(0, 5).Get()), "");
  EXPECT_EQ(Shown(CscRecord(0xFFFF, 5).Get()), "");
  std::vector<std::uint8_t> cut = CscRecord(1, 5).Get();
  cut.resize(511);
  EXPECT_EQ(Shown(cut), "");
  EXPECT_EQ(Shown({}), "");
  EXPECT_EQ(messages(), (Messages{" CAPSELDA Revision 2 is not supported ", " CAPSELDA Revision 0 is not supported ",
                                  " CAPSELDA Revision 65535 is not supported ", "\"CAPSELDA\" : File read fail",
                                  "\"CAPSELDA\" : File read fail"}));
}

TEST_F(ReportTest, ADirectoryWithoutTheRecordShowsNothing) {
  WriteTables(FitBytes(1, 0x0004).Add("RLIST   ", 0x30, 0, 1));
  EXPECT_EQ(Shown(CscRecord(1, 5).Get()), "");
}

bool PrintBytes(platform::ByteView record, ReportText* text) {
  std::uint32_t first = 0;
  if (!record.Be(0, 2, &first)) return false;
  text->Add("%04X\n", first);
  return true;
}

TEST_F(ReportTest, ReportsThatDecodeThemselvesShareTheFrame) {
  const ReportFrame frame = {.record = "CAPSELDA", .caption = "Own", .footer = "F9:Save", .capacity = 100, .width = 50};
  WriteBytes("CAPSELDA.bin", CscRecord(9, 0).Get());
  EXPECT_EQ(ShownBy([&] { ShowRecordReport(frame, PrintBytes); }), "Own\n>4341\nF9:Save\n");
  EXPECT_EQ(ShownBy([&] { ShowRecordReport(frame, [](platform::ByteView, ReportText*) { return false; }); }), "");
  standin::Host::Instance().AddFault("IDENTIFY@1+");
  identity().access.mode = AccessMode::kDisk;
  EXPECT_EQ(ShownBy([&] { ShowRecordReport(frame, PrintBytes); }), "");
  EXPECT_EQ(messages(), Messages{"IDENTIFY COMMAND FAIL"});
}

}  // namespace
}  // namespace pelix
