#include "records/directory.h"

#include "records/fit.h"
#include "tests/support/plugin_test.h"

namespace pelix {
namespace {

TEST(RecordName, FileNamesAreSafeAndFixed) {
  const struct {
    const char* name;
    bool second;
    const char* file;
  } cases[] = {
      {"LDSI T  ", false, "LDSI_T.bin"},   {"LDSI T  ", true, "LDSI_T.bin2"},    {"        ", false, ".bin"},
      {"BI_ERLOG", true, "BI_ERLOG.bin2"}, {"..\\..\\X ", false, ".._.._X.bin"}, {"/etc/a  ", false, "_etc_a.bin"},
      {"CON     ", false, "_CON.bin"},     {"nul.x   ", false, "_nul.x.bin"},    {"A\0B\xFF:*? ", false, "A_B____.bin"},
      {"  A     ", false, "__A.bin"},
  };
  for (const auto& c : cases) EXPECT_EQ(RecordName(c.name).FileName(c.second), c.file);
  EXPECT_EQ(RecordName("A\nB\x7F\0\0\0\0").Shown(), "A.B.....");
}

TEST(RecordName, MatchesItselfAndItsSwappedForm) {
  const RecordName name("BI_ERLOG");
  EXPECT_TRUE(name.Matches(RecordName("IBE_LRGO")));
  EXPECT_TRUE(RecordName("IBE_LRGO").Matches(name));
  EXPECT_FALSE(name.Matches(RecordName("BI_ERLGO")));
  EXPECT_EQ(name.Key(), RecordName("IBE_LRGO").Key());
  EXPECT_NE(name.Key(), RecordName("BI_ERLGO").Key());
}

TEST(Directory, StandsAtTheHeadOfAnImageByteForByte) {
  DirectoryEntry entry = DecodeEntry(RecordBytes(16)
                                         .Le(0, 0x3123, 2)
                                         .Text(2, "CHN_TBL ")
                                         .Le(10, 0x4567, 2)
                                         .Le(12, 0x89AB, 2)
                                         .Le(14, 0xCD, 1)
                                         .Le(15, 0x1B, 1)
                                         .Get()
                                         .data());
  EXPECT_EQ(entry.name, RecordName("CHN_TBL "));
  EXPECT_EQ(entry.location, 0x4567);
  EXPECT_EQ(entry.size, 0x89AB);
  EXPECT_EQ(entry.start_cylinder, 0xCD);
  EXPECT_EQ(entry.attributes, 0x1B);
  EXPECT_TRUE(entry.IsSecondCopy());
  EXPECT_EQ(entry.Fid(), 0x1123);

  const std::vector<std::uint8_t> bytes = Directory(2, {DirectoryEntry(), entry}).Encode();
  const RecordBytes expected = RecordBytes(1024)
                                   .Text(0, "MCFRHDR")
                                   .Le(10, 2, 2)
                                   .Le(12, 16, 2)
                                   .Le(14, 2, 2)
                                   .Le(48, 0x3123, 2)
                                   .Text(50, "CHN_TBL ")
                                   .Le(58, 0x4567, 2)
                                   .Le(60, 0x89AB, 2)
                                   .Le(62, 0xCD, 1)
                                   .Le(63, 0x1B, 1);
  EXPECT_EQ(bytes, expected.Get());
  EXPECT_EQ(Directory::Decode(expected.View()).entries(), (std::vector<DirectoryEntry>{DirectoryEntry(), entry}));
}

TEST(Directory, CountsAreCutToWhatTheHeaderHolds) {
  const struct {
    std::uint32_t count;
    std::size_t entries;
  } cases[] = {{0, 0}, {1, 1}, {29, 29}, {30, 30}, {31, 30}, {0xFFFF, 30}};
  for (const auto& c : cases) {
    const RecordBytes header = RecordBytes(512).Text(0, "MCFRHDR").Le(10, 1, 2).Le(12, 16, 2).Le(14, c.count, 2);
    EXPECT_EQ(Directory::Decode(header.View()).entries().size(), c.entries) << c.count;
  }
  const RecordBytes full = RecordBytes(512).Text(0, "MCFRHDR").Le(10, 1, 2).Le(14, 30, 2);
  ForEachTruncation(full.View(), [](platform::ByteView cut) {
    const std::size_t room = cut.size() < 32 ? 0 : (cut.size() - 32) / 16;
    EXPECT_EQ(Directory::Decode(cut).entries().size(), room) << cut.size();
    EXPECT_EQ(Directory::HasSignature(cut), cut.size() >= 7);
  });
}

TEST(Directory, FindsByNameCopyAndIndex) {
  auto entry = [](const char* name, FID_TYPE identifier) {
    DirectoryEntry made;
    made.name = RecordName(name);
    made.identifier = identifier;
    return made;
  };
  Directory directory(1, {entry("BI_ERLOG", 1), entry("BI_ERLOG", 0x1001), entry("IBE_LRGO", 2), entry("OTHER   ", 3)});
  EXPECT_EQ(directory.Find(RecordName("BI_ERLOG"), 0, false)->identifier, 1);
  EXPECT_EQ(directory.Find(RecordName("BI_ERLOG"), 1, false)->identifier, 2);
  EXPECT_EQ(directory.Find(RecordName("BI_ERLOG"), 2, false), nullptr);
  EXPECT_EQ(directory.Find(RecordName("IBE_LRGO"), 0, true)->identifier, 0x1001);
  EXPECT_EQ(directory.Find(RecordName("OTHER  X"), 0, false), nullptr);
}

class FitTest : public PluginTest {};

TEST_F(FitTest, DescriptorsThatDoNotFitAreLeftOut) {
  const struct {
    std::uint32_t sectors_read, sectors_said, first, count;
    std::uint32_t descriptors, sectors;
  } cases[] = {
      {1, 1, 32, 30, 30, 1},      {1, 1, 32, 31, 30, 1},        {1, 1, 33, 30, 29, 1}, {1, 1, 512, 5, 0, 1},
      {1, 1, 513, 5, 0, 1},       {1, 1, 0xFFFF, 0xFFFF, 0, 1}, {1, 0, 32, 5, 0, 0},   {2, 1, 32, 0xFFFF, 30, 1},
      {1, 0xFFFF, 32, 40, 30, 1}, {2, 2, 500, 9, 9, 2},         {1, 1, 32, 0, 0, 1},   {2, 2, 1024, 0, 0, 2},
  };
  for (const auto& c : cases) {
    RecordBytes raw(c.sectors_read * 512);
    raw.Be(10, 0x000E, 2).Be(18, c.sectors_said, 2).Be(20, c.count, 2).Be(24, c.first, 2);
    std::vector<std::uint8_t> bytes = raw.Get();
    const Fit fit = FormatFit(&bytes, 0);
    EXPECT_EQ(fit.descriptor_count, c.descriptors) << c.first << " " << c.count;
    EXPECT_EQ(fit.sectors, c.sectors);
    EXPECT_EQ(fit.flags, 0x000E);
    EXPECT_EQ(fit.descriptors.size(), c.descriptors);
  }
  std::vector<std::uint8_t> nothing;
  EXPECT_EQ(FormatFit(&nothing, 2).descriptors.size(), 0u);
}

TEST_F(FitTest, ADescriptorMayStraddleSectors) {
  RecordBytes raw(1024);
  raw.Be(18, 2, 2).Be(20, 1, 2).Be(24, 505, 2);
  raw.Be(505, 0x0102, 2).Text(507, "STRADDLE").Be(515, 0x0304, 2).Be(517, 0x0506, 2).Le(519, 7, 1).Le(520, 8, 1);
  std::vector<std::uint8_t> bytes = raw.Get();
  const Fit fit = FormatFit(&bytes, 0);
  ASSERT_EQ(fit.descriptors.size(), 1u);
  EXPECT_EQ(fit.descriptors[0].identifier, 0x0102);
  EXPECT_EQ(fit.descriptors[0].name, RecordName("STRADDLE"));
  EXPECT_EQ(fit.descriptors[0].location, 0x0304);
  EXPECT_EQ(fit.descriptors[0].size, 0x0506);
  EXPECT_EQ(fit.descriptors[0].start_cylinder, 7);
}

}  // namespace
}  // namespace pelix
