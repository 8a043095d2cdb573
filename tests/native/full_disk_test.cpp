// Disks that are full and places that cannot be written, as Linux offers them.
#include "tests/support/record_test.h"

namespace pelix {
namespace {

TEST(Files, AFullDiskShows) {
  platform::ReplacingFile device;
  ASSERT_TRUE(device.Open("/dev/full", "w"));
  EXPECT_TRUE(device.Write("x"));
  EXPECT_FALSE(device.Commit());
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
  platform::File file = platform::File::Open("/dev/full", "wb");
  EXPECT_TRUE(file.Write("x"));
  EXPECT_FALSE(file.Close());
  EXPECT_FALSE(platform::ReplacingFile().Commit());
  platform::ReplacingFile nowhere;
  EXPECT_FALSE(nowhere.Open("/proc/nowhere/list.txt", "w"));
}

TEST(Files, AReplacementKeepsRightsAndFollowsLinks) {
  const EmptyFolder folder;
  WriteBytes("real.txt", {'x'});
  std::filesystem::permissions("real.txt", std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
  std::filesystem::create_symlink("real.txt", "link.txt");
  platform::ReplacingFile file;
  ASSERT_TRUE(file.Open("link.txt", "w"));
  EXPECT_TRUE(file.Write("new") && file.Commit());
  EXPECT_TRUE(std::filesystem::is_symlink("link.txt"));
  EXPECT_EQ(ReadText("real.txt"), "new");
  EXPECT_EQ(std::filesystem::status("real.txt").permissions(),
            std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

class FullDiskTest : public RecordSourceTest {};

TEST_F(FullDiskTest, TheFirstRecordThatCannotBeWrittenEndsACopy) {
  ASSERT_TRUE(Identify(&identity(), true));
  identity().access.image_file = "/dev/full";
  EXPECT_FALSE(records().CopyAllRecords(AccessMode::kDisk, AccessMode::kMcf));
  identity().access.image_file = "none/x.mcf";
  EXPECT_FALSE(records().CopyAllRecords(AccessMode::kDisk, AccessMode::kMcf));
  std::filesystem::create_directory("CAPSELDA.bin");
  EXPECT_FALSE(records().CopyAllRecords(AccessMode::kDisk, AccessMode::kFile));
  EXPECT_EQ(messages(), (Messages{"File write fail", "File open fail",
                                  "\"CAPSELDA\" : PELIX cannot write this item into MCF file."}));
}

TEST_F(FullDiskTest, AListThatCannotBeSavedSaysSo) {
  const std::string block("line 0\0line 1", 14);
  ListWindow window({}, MakeBlockBody(block, 2));
  std::filesystem::create_symlink("/dev/full", "full.txt");
  using platform::automation::AnswerKind;
  using platform::automation::QueueAnswer;
  QueueAnswer(AnswerKind::kText, "full.txt");
  QueueAnswer(AnswerKind::kYes, "");
  ThenKey("F9");
  QueueAnswer(AnswerKind::kText, "none\\list");
  ThenKey("F9");
  window.Show();
  const char* const kFailed = "Failed to save a file.\n";
  EXPECT_EQ(messages(), (Messages{"full.txt already exists.\nDo you want to replace it?", kFailed, kFailed}));
}

TEST_F(RecordSourceTest, AMisplacedErrorLogIsAHardStop) {
  FitBytes fit(1, 0);
  fit.Add("BI_ERLOG", 0x20, 1, 2, 8, 0x02);
  Use({40, false, 1});
  PutOnTrack(0, 0, 1, FsiBytes(1));
  PutOnTrack(0, 0, 2, fit.Get());
  platform::automation::SetMessageSink([](const std::string& text) { std::fprintf(stderr, "%s\n", text.c_str()); });
  EXPECT_EXIT(Identify(&identity(), true), testing::ExitedWithCode(1),
              "\"BI_ERLOG\" : This M/C file must locate in sector 1.");
}

}  // namespace
}  // namespace pelix
