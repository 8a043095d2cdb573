#include <filesystem>
#include <fstream>

#include "drive/commands.h"
#include "tests/support/record_test.h"

namespace pelix {
namespace {

const RecordName kCsc("CAPSELDA");
constexpr char kNotInitialised[] =
    "MCFS is not initialized.\nYou need to turn on \"Use MCFS\" flag on PELIX Configuration dialog box.";

TEST_F(RecordSourceTest, TheSameRecordsComeFromAllFourSources) {
  ASSERT_TRUE(Identify(&identity(), true));
  ASSERT_TRUE(records().CopyAllRecords(AccessMode::kDisk, AccessMode::kFile));
  identity().access.image_file = "IMAGE.mcf";
  ASSERT_TRUE(records().CopyAllRecords(AccessMode::kDisk, AccessMode::kMcf));
  ASSERT_TRUE(standin::WriteMcwImage("image.mcw", drive().design()));
  EXPECT_EQ(messages(), (Messages{"DONE", "DONE"}));

  const char* const names[] = {"CAPSELDA", "LDSI T  ", "SERIALNO", "BI_SCRPT", "WII DATA", "RLIST   "};
  std::vector<std::vector<std::uint8_t>> from_drive;
  for (const char* name : names) from_drive.push_back(Fetched(name));
  const std::vector<std::uint8_t> logical = Fetched("LDSI T  ", true);
  EXPECT_NE(from_drive[1], logical);
  EXPECT_EQ(from_drive[1].size(), 160u * 512);
  const std::vector<std::uint8_t> expert = Fetched("EXPERT  ");

  const struct {
    AccessMode mode;
    const char* image;
  } sources[] = {{AccessMode::kFile, ""}, {AccessMode::kMcf, "image.MCF"}, {AccessMode::kMcw, "image.mcw"}};
  for (const auto& source : sources) {
    Switch(source.mode, source.image);
    for (std::size_t i = 0; i < std::size(names); ++i) EXPECT_EQ(Fetched(names[i]), from_drive[i]) << names[i];
    if (source.mode == AccessMode::kMcw) continue;  // holds first copies only
    EXPECT_EQ(Fetched("LDSI T  ", true), logical);
    EXPECT_EQ(Fetched("EXPERT  "), expert);
    EXPECT_EQ(Fetched("VU_IDFY "), identity().identify_data);
  }
}

TEST_F(RecordSourceTest, DirectoryOfADriveHasPseudoEntriesAndSecondCopies) {
  ASSERT_TRUE(Identify(&identity(), true));
  const std::vector<DirectoryEntry>& entries = records().directory()->entries();
  EXPECT_EQ(entries[0].identifier, 0x8001);
  EXPECT_EQ(entries[0].name, RecordName("VU_IDFY "));
  EXPECT_EQ(entries[0].size, identity().identify_data.size() / 512);
  EXPECT_EQ(entries[1].identifier, 0x8002);
  EXPECT_EQ(entries[1].location, 19);
  EXPECT_EQ(entries[1].size, 8);
  EXPECT_EQ(entries[1].start_cylinder, 1);
  for (const char* name : {"BI_ERLOG", "LDSI T  ", "SLIST   ", "RLIST   "}) {
    const DirectoryEntry* first = records().FindEntry(RecordName(name), 0, Report::kNo, false);
    ASSERT_NE(first, nullptr);
    DirectoryEntry expected = *first;
    expected.identifier |= 0x1000;
    EXPECT_EQ(first[1], expected) << name;
  }
  EXPECT_EQ(entries.size(), drive().design().records.size() + 6);
}

TEST_F(RecordSourceTest, SizesInTracksAreScaledAndTheErrorLogIsMeasured) {
  FitBytes fit(1, 0);
  fit.Add("BI_ERLOG", 0x20, 0, 2, 8, 0x02).Add("ONEHEAD ", 0x21, 0, 3, 9, 0x03).Add("ALLHEADS", 0x22, 5, 2, 10, 0x02);
  fit.Add("TOO_LONG", 0x23, 0, 400, 10, 0x02);
  UseTables(fit);
  EXPECT_EQ(EntryOf("ONEHEAD ").size, 600);
  EXPECT_EQ(EntryOf("ALLHEADS").size, 400 * heads_);
  EXPECT_EQ(EntryOf("ALLHEADS").location, 6) << "entries count sectors from 1";
  EXPECT_EQ(EntryOf("TOO_LONG").size, 0xFFFF) << "the field holds no more";
  EXPECT_EQ(EntryOf("BI_ERLOG").size, 0) << "nothing is logged yet";

  // Every head of the first cylinder, and one head of the second.
  const std::vector<std::uint8_t> used = RecordBytes(512).Pattern(511, 1).Get();
  for (std::uint32_t head = 0; head < heads_; ++head) PutOnTrack(8, head, 1, used);
  PutOnTrack(9, 0, 1, used);
  ASSERT_TRUE(records().LoadDirectory());
  EXPECT_EQ(EntryOf("BI_ERLOG").size, 200 * (heads_ + 1));
  standin::Host::Instance().ClearFaults();
  standin::Host::Instance().AddFault("PHRD@3");
  ASSERT_TRUE(records().LoadDirectory());
  EXPECT_EQ(EntryOf("BI_ERLOG").size, 400) << "the first track that cannot be read ends it";
}

TEST_F(RecordSourceTest, PhysicalReadsFollowTheTracks) {
  FitBytes fit(1, 0);
  fit.Add("LONG    ", 0x20, 150, 500, 8);
  UseTables(fit);
  const RecordBytes content = RecordBytes(500 * 512).Pattern(0, 3);
  // Sector 151 of the first head on, then whole tracks, wrapping to the next cylinder behind the last head.
  for (std::uint32_t i = 0; i < 500; ++i) {
    const std::uint32_t at = 150 + i;
    ASSERT_EQ(drive().WritePhysical(8 + at / 200 / heads_, at / 200 % heads_, at % 200 + 1, 1,
                                    content.Get().data() + i * 512),
              0u);
  }
  standin::Host::Instance().ClearFaults();
  EXPECT_EQ(Fetched("LONG    "), content.Get());
  EXPECT_EQ(standin::Host::Instance().call_count("PHRD"), 6u) << "50, 128 + 72, 128 + 72, 50 sectors";
  std::vector<std::uint8_t> part(300 * 512);
  ASSERT_TRUE(records().ReadPart(RecordName("LONG    "), {49, 300}, part.data()));
  EXPECT_TRUE(std::equal(part.begin(), part.end(), content.Get().begin() + 49 * 512));

  std::vector<std::uint8_t> changed = RecordBytes(500 * 512).Pattern(0, 99).Get();
  ASSERT_TRUE(records().WriteWhole(RecordName("LONG    "), changed.data()));
  EXPECT_EQ(Fetched("LONG    "), changed);
  EXPECT_EQ(messages(), Messages());
}

TEST_F(RecordSourceTest, SingleTrackRecordsStandOnEveryHead) {
  FitBytes fit(1, 0);
  fit.Add("SINGLE  ", 0x20, 7, 3, 8, 0x01);
  UseTables(fit);
  std::vector<std::uint8_t> content = RecordBytes(3 * 512).Pattern(0, 5).Get();
  ASSERT_TRUE(records().WriteWhole(RecordName("SINGLE  "), content.data()));
  for (std::uint32_t head = 0; head < heads_; ++head) {
    std::vector<std::uint8_t> there(3 * 512);
    ASSERT_EQ(drive().ReadPhysical(8, head, 8, 3, there.data()), 0u);
    EXPECT_EQ(there, content) << head;
  }
  standin::Host::Instance().AddFault("PHRD@1");
  EXPECT_EQ(Fetched("SINGLE  "), content) << "the next head answers";
  standin::Host::Instance().AddFault("PHRD@2+");
  EXPECT_TRUE(Fetched("SINGLE  ").empty());
  EXPECT_EQ(messages(), Messages{"\"SINGLE  \" : PHRD command fail"});
  standin::Host::Instance().AddFault("PHWR@4");
  EXPECT_FALSE(records().WriteWhole(RecordName("SINGLE  "), content.data()));
  EXPECT_EQ(messages().back(), "\"SINGLE  \" : PHWR command fail");
}

TEST_F(RecordSourceTest, WordsAreSwappedAndHeadersChecked) {
  FitBytes fit(1, 0);
  fit.Add("SWAPPED ", 0x20, 0, 1, 8, 0x18).Add("NAMED_ON", 0x21, 1, 1, 8, 0x08).Add("BI_ERLOG", 0x22, 0, 1, 9, 0x08);
  UseTables(fit);
  std::vector<std::uint8_t> content = RecordBytes(512).Pattern(8, 9).Text(0, "SWAPPED ").Get();
  std::vector<std::uint8_t> sent = content;
  ASSERT_TRUE(records().WriteWhole(RecordName("SWAPPED "), sent.data()));
  std::vector<std::uint8_t> stored(512);
  ASSERT_EQ(drive().ReadPhysical(8, 0, 1, 1, stored.data()), 0u);
  EXPECT_EQ(std::string(stored.begin(), stored.begin() + 8), "WSPAEP D");
  EXPECT_EQ(sent, stored) << "the caller's buffer is swapped in place";
  EXPECT_EQ(Fetched("SWAPPED "), content);

  // The name may stand swapped in the data, as drives of the other byte order leave it.
  PutOnTrack(8, 0, 2, RecordBytes(512).Text(0, "ANEM_DNO").Get());
  EXPECT_EQ(Fetched("NAMED_ON").size(), 512u);
  PutOnTrack(8, 0, 2, RecordBytes(512).Text(0, "NAMED_OF").Get());
  EXPECT_TRUE(Fetched("NAMED_ON").empty());
  PutOnTrack(9, 0, 1, RecordBytes(512).Text(0, "IB_RELGO").Get());
  EXPECT_EQ(Fetched("BI_ERLOG").size(), 512u) << "as some drives spell it";
  std::vector<std::uint8_t> wrong(512);
  EXPECT_FALSE(records().WriteWhole(RecordName("NAMED_ON"), wrong.data()));
  EXPECT_EQ(messages(), Messages(2, "\"NAMED_ON\" : Header does not match"));
}

TEST_F(RecordSourceTest, TheHeaderIsLookedForAtTheStartOfEveryRead) {
  ASSERT_TRUE(Identify(&identity(), true));
  std::vector<std::uint8_t> part(512);
  EXPECT_TRUE(records().ReadPart(RecordName("LDSI T  "), {0, 1}, part.data()));
  EXPECT_FALSE(records().ReadPart(RecordName("LDSI T  "), {1, 1}, part.data()));
  EXPECT_EQ(messages(), Messages{"\"LDSI T  \" : Header does not match"});
}

TEST_F(RecordSourceTest, LargeRecordsAreReadInBlocksWhereTheDriveSaysSo) {
  ASSERT_TRUE(Identify(&identity(), true));  // index 64: read command and block offsets
  DirectoryEntry entry = EntryOf("SLIST   ");
  const std::vector<std::uint8_t> whole = Fetched("SLIST   ");
  std::vector<std::uint8_t> part(31 * 512);
  ASSERT_TRUE(records().ReadSectors(entry, {7, 31}, part.data()));
  EXPECT_TRUE(std::equal(part.begin(), part.end(), whole.begin() + 7 * 512));
  entry.identifier |= 0x2000;
  ASSERT_TRUE(records().ReadSectors(entry, {64, 31}, part.data()));
  EXPECT_TRUE(std::equal(part.begin(), part.end(), whole.begin() + 64 * 512));
  EXPECT_FALSE(records().ReadSectors(entry, {65, 1}, part.data()));
  EXPECT_EQ(messages(), Messages{"\"SLIST   \" :  Offset is not a multiple of 0x40.\n "});
  EXPECT_EQ(EntryOf("SLIST   ").identifier & 0x2000, 0) << "the fetch used a copy of the entry";
  ASSERT_TRUE(records().SaveRecordToFile(RecordName("SLIST   "), false));
  EXPECT_EQ(EntryOf("SLIST   ").identifier & 0x2000, 0x2000);
  EXPECT_EQ(ReadText("SLIST.bin"), std::string(whole.begin(), whole.end()));
}

TEST_F(RecordSourceTest, TheIdentifyDataNeverTouchesTheDrive) {
  ASSERT_TRUE(Identify(&identity(), true));
  standin::Host::Instance().AddFault("ANY@1+");
  EXPECT_EQ(Fetched("VU_IDFY "), identity().identify_data);
  std::vector<std::uint8_t> changed(identity().identify_data.size());
  EXPECT_TRUE(records().WriteWhole(RecordName("VU_IDFY "), changed.data())) << "accepted and ignored";
  EXPECT_NE(Fetched("VU_IDFY "), changed);
}

TEST_F(RecordSourceTest, RangesAreChecked) {
  ASSERT_TRUE(Identify(&identity(), true));
  const DirectoryEntry entry = EntryOf("CAPSELDA");  // two sectors
  std::vector<std::uint8_t> room(4 * 512);
  DirectoryEntry unnamed = entry;
  unnamed.attributes = 0;  // or reads behind the header would fail for want of it
  const SectorRange good[] = {{0, 0}, {0, 2}, {1, 1}, {2, 0}};
  for (const SectorRange& range : good) EXPECT_TRUE(records().ReadSectors(unnamed, range, room.data()));
  const SectorRange bad[] = {{0, 3}, {3, 0}, {2, 1}, {0xFFFFFFFF, 1}, {1, 0xFFFFFFFF}};
  for (const SectorRange& range : bad) {
    EXPECT_FALSE(records().ReadSectors(entry, range, room.data()));
    EXPECT_FALSE(records().WriteSectors(entry, range, room.data()));
  }
  EXPECT_EQ(messages(), Messages(10, "\"CAPSELDA\" : File size doesn't match"));
}

TEST_F(RecordSourceTest, LookupsSayWhatIsMissing) {
  std::uint8_t sector[512];
  EXPECT_FALSE(records().ReadWhole(kCsc, sector));
  EXPECT_FALSE(records().FetchRecord(kCsc));
  FitBytes fit(1, 0);
  fit.Add("EMPTY   ", 0x20, 0, 0);
  UseTables(fit);
  EXPECT_FALSE(records().ReadWhole(kCsc, sector));
  EXPECT_FALSE(records().ReadWhole(RecordName("EMPTY   "), sector));
  EXPECT_FALSE(records().FetchRecord(RecordName("EMPTY   ")));
  EXPECT_FALSE(records().WriteWhole(RecordName("NO\0NAME\x01"), sector));
  EXPECT_EQ(messages(),
            (Messages{kNotInitialised, kNotInitialised, "\"CAPSELDA\" : PELIX cannot find this in MCFR directory",
                      "\"EMPTY   \" : File size is zero", "\"NO.NAME.\" : PELIX cannot find this in MCFR directory"}));
}

TEST_F(RecordSourceTest, DriveTablesThatCannotBeReadGiveNoDirectory) {
  const char* const kFsi = "FSI read fail.\nYou need to check M/C location for FSI.";
  const char* const kFit = "FIT read fail.\nYou need to check M/C location for FIT.";
  ASSERT_TRUE(Identify(&identity(), true));
  for (const char* fault : {"MCFS_ReadRecord@1", "MCFS_ReadRecord@2"}) {
    standin::Host::Instance().ClearFaults();
    standin::Host::Instance().AddFault(fault);
    EXPECT_FALSE(records().LoadDirectory());
    EXPECT_EQ(records().directory(), nullptr);
    EXPECT_EQ(identity().header_flags, 0);
  }
  standin::Host::Instance().ClearFaults();
  PutOnTrack(0, 0, 1, FsiBytes(0));
  EXPECT_FALSE(records().LoadDirectory());
  EXPECT_EQ(messages(), (Messages{kFsi, kFit, kFit}));
}

TEST_F(RecordSourceTest, TheDirectoryFileStandsInForTheDriveTables) {
  identity().use_directory_file = true;
  EXPECT_FALSE(Identify(&identity(), true));
  FitBytes fit(1, 0x0002);
  fit.Add("CAPSELDA", 0x30, 0, 2, 5);
  std::vector<std::uint8_t> file = FsiBytes(1);
  file.insert(file.end(), fit.Get().begin(), fit.Get().end());
  WriteBytes("default.mcd", file);
  EXPECT_TRUE(Identify(&identity(), true));
  EXPECT_TRUE(identity().UsesCommonHeader());
  EXPECT_EQ(records().directory()->entries().size(), 3u);
  for (const std::size_t size : {std::size_t{0}, std::size_t{511}, std::size_t{512}, std::size_t{1023}}) {
    WriteBytes("default.mcd", {file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size)});
    EXPECT_FALSE(records().LoadDirectory());
  }
  EXPECT_EQ(messages()[0], "Cannot find MCFS directory file.");
  EXPECT_EQ(Messages(messages().begin() + 1, messages().end()), Messages(4, "Cannot read MCFS directory file."));
}

TEST_F(RecordSourceTest, RecordFilesThatAreMissingOrShortSaySo) {
  identity().access.mode = AccessMode::kFile;
  FitBytes fit(1, 0x0004);
  fit.Add("CAPSELDA", 0x30, 0, 2).Add("RLIST   ", 0x31, 0, 1).Add("BI_ERLOG", 0x32, 9, 1, 0, 0x02);
  WriteTables(fit);
  WriteBytes("BI_ERLOG.bin", std::vector<std::uint8_t>(1500));
  ASSERT_TRUE(Identify(&identity(), true));
  EXPECT_EQ(EntryOf("BI_ERLOG").size, 2) << "as long as its file, whole sectors";
  EXPECT_TRUE(Fetched("CAPSELDA").empty());
  WriteBytes("CAPSELDA.bin", std::vector<std::uint8_t>(1023));
  EXPECT_TRUE(Fetched("CAPSELDA").empty());
  WriteBytes("RLIST.bin2", RecordBytes(512).Pattern(0, 4).Get());
  EXPECT_EQ(Fetched("RLIST   ", true), RecordBytes(512).Pattern(0, 4).Get());
  std::vector<std::uint8_t> data = RecordBytes(1024).Pattern(0, 6).Get();
  EXPECT_TRUE(records().WriteWhole(kCsc, data.data()));
  EXPECT_EQ(Fetched("CAPSELDA"), data);
  std::filesystem::remove("FIT.bin");
  EXPECT_FALSE(records().LoadDirectory());
  std::filesystem::remove("FSI.bin");
  EXPECT_FALSE(records().LoadDirectory());
  EXPECT_EQ(messages(), (Messages{"\"CAPSELDA\" : File open fail", "\"CAPSELDA\" : File read fail",
                                  "\"FIT     \" : File open fail", "\"FSI     \" : File open fail"}));
}

// An MCF image with two records of one and two sectors behind a header of one sector.
std::vector<std::uint8_t> McfImage() {
  RecordBytes image(4 * 512);
  image.Text(0, "MCFRHDR").Le(10, 1, 2).Le(12, 16, 2).Le(14, 2, 2).Pattern(512, 11);
  image.Le(32, 0x40, 2).Text(34, "FIRST   ").Le(44, 1, 2).Le(48, 0x41, 2).Text(50, "SECOND  ").Le(60, 2, 2);
  return image.Get();
}

TEST_F(RecordSourceTest, ImagesAreRefusedOrReadAsFarAsTheyGo) {
  const char* const kNoImage = "PELIX doesn't support this format.\nYou should check if this file is really MCF file.";
  identity().access.mode = AccessMode::kMcf;
  EXPECT_FALSE(records().LoadDirectory());
  EXPECT_EQ(messages(), Messages{"File open fail"});
  const std::vector<std::uint8_t> whole = McfImage();
  for (std::size_t size = 0; size <= whole.size(); size += size < 600 ? 1 : 97) {
    const SwitchScope quiet(&g_host->interactive, size % 50 == 0);  // a box takes its time where windows are real
    messages().clear();
    WriteBytes("DEFAULT.MCF", {whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)});
    EXPECT_EQ(records().LoadDirectory(), size >= 512) << size;
    EXPECT_EQ(Fetched("FIRST   ").size(), size >= 1024 ? 512u : 0u) << size;
    EXPECT_EQ(Fetched("SECOND  ").empty(), size < whole.size()) << size;
    for (const std::string& message : messages()) {
      EXPECT_TRUE(message == "File read fail" || (size < 512 && message == kNotInitialised) ||
                  message == "\"FIRST   \" : File read fail" || message == "\"SECOND  \" : File read fail")
          << message;
    }
  }
  const struct {
    std::size_t offset;
    std::uint8_t value;
    bool loads;
  } cases[] = {{0, 'm', false}, {6, 'r', false}, {7, 'X', true}, {10, 0, false}, {10, 5, false}, {14, 200, true}};
  for (const auto& c : cases) {
    std::vector<std::uint8_t> damaged = whole;
    damaged[c.offset] = c.value;
    WriteBytes("DEFAULT.MCF", damaged);
    messages().clear();
    EXPECT_EQ(records().LoadDirectory(), c.loads) << c.offset;
    if (c.loads) continue;
    EXPECT_EQ(messages(), Messages{c.value == 5 ? "File read fail" : kNoImage});
  }
}

TEST_F(RecordSourceTest, ImagesAreWrittenInPlace) {
  identity().access.mode = AccessMode::kMcf;
  WriteBytes("DEFAULT.MCF", McfImage());
  ASSERT_TRUE(records().LoadDirectory());
  std::vector<std::uint8_t> data = RecordBytes(1024).Pattern(0, 77).Get();
  ASSERT_TRUE(records().WriteWhole(RecordName("SECOND  "), data.data()));
  std::vector<std::uint8_t> expected = McfImage();
  std::copy(data.begin(), data.end(), expected.begin() + 1024);
  EXPECT_EQ(ReadText("DEFAULT.MCF"), std::string(expected.begin(), expected.end()));
}

TEST_F(RecordSourceTest, AnMcwImageMovesByBytesAndPassesWhateverItsName) {
  identity().access.mode = AccessMode::kMcw;
  identity().access.image_file = "a.dat";
  ASSERT_FALSE(Identify(&identity(), true)) << "there is no image yet";
  FitBytes fit(1, 0x0000);
  fit.Add("FSI     ", 0, 8, 1)
      .Add("CAPSELDA", 0x30, 9, 2)
      .Add("NOWHERE ", 0x31, 0, 1)
      .Add("BI_ERLOG", 0x32, 9, 1, 0, 2);
  std::vector<std::uint8_t> image = fit.Get();
  const std::vector<std::uint8_t> rest = RecordBytes(13 * 512).Pattern(0, 21).Get();
  image.resize(8 * 512);
  image.insert(image.end(), rest.begin(), rest.end());
  std::copy_n("FIT_DATA", 8, image.begin());
  WriteBytes("a.dat", image);
  messages().clear();
  DriveInfo()->heads = 3;
  ASSERT_TRUE(records().LoadDirectory());
  EXPECT_EQ(records().directory()->entries().size(), 6u) << "two more than the FIT counts";
  EXPECT_EQ(EntryOf("CAPSELDA").location, 9) << "not shifted";
  EXPECT_EQ(EntryOf("BI_ERLOG").size, 600);
  std::vector<std::uint8_t> part(512);
  ASSERT_TRUE(records().ReadPart(kCsc, {1, 1}, part.data()));
  EXPECT_TRUE(std::equal(part.begin(), part.end(), image.begin() + 9 * 512 + 1));
  EXPECT_FALSE(records().ReadWhole(RecordName("NOWHERE "), part.data()));
  EXPECT_FALSE(records().WritePart(kCsc, {0, 1}, part.data()));
  EXPECT_EQ(messages(), (Messages{"\"NOWHERE \" : PELIX cannot find this in MCF file",
                                  "\"CAPSELDA\" : MCW file cannot be written"}));

  messages().clear();
  WriteBytes("a.dat", {image.begin(), image.begin() + 8 * 512});
  EXPECT_FALSE(records().LoadDirectory());
  WriteBytes("a.dat", {image.begin(), image.begin() + 8 * 512 - 1});
  EXPECT_FALSE(records().LoadDirectory());
  EXPECT_EQ(messages(), (Messages{"Read FSI fail", "File read fail"}));
  WriteBytes("a.dat", std::vector<std::uint8_t>(8 * 512, 0xFF));
  EXPECT_TRUE(records().LoadDirectory()) << "any content will do";
}

TEST_F(RecordSourceTest, SwitchingLeavesTheIdentifyData) {
  ASSERT_TRUE(Identify(&identity(), true));
  identity().access.image_file = "x.mcf";
  ASSERT_TRUE(records().CopyAllRecords(AccessMode::kDisk, AccessMode::kMcf));
  const std::vector<std::uint8_t> identify = identity().identify_data;
  EXPECT_TRUE(records().SwitchToMcf());
  EXPECT_EQ(ReadText("VU_IDFY.bin"), std::string(identify.begin(), identify.end()));
  std::filesystem::remove("VU_IDFY.bin");
  ASSERT_TRUE(standin::WriteMcwImage("x.mcw", drive().design()));
  identity().access.image_file = "x.mcw";
  EXPECT_TRUE(records().SwitchToMcw());
  EXPECT_TRUE(std::filesystem::exists("VU_IDFY.BIN"));
  EXPECT_TRUE(Identify(&identity(), true));
  EXPECT_EQ(identity().model_index, 64);
  std::filesystem::remove("VU_IDFY.BIN");
  WriteBytes("x.mcf", McfImage());
  identity().access.image_file = "x.mcf";
  messages().clear();
  EXPECT_TRUE(records().SwitchToMcf());
  EXPECT_FALSE(std::filesystem::exists("VU_IDFY.bin"));
  EXPECT_EQ(messages(), Messages());
}

// Records go out to an image and come back to a drive that has lost them.
TEST_F(RecordSourceTest, AnImageRestoresADrive) {
  for (const std::uint32_t model : {25u, 40u, 45u, 57u, 64u}) {
    Use({model, false, 3});
    messages().clear();
    platform::automation::QueueAnswer(platform::automation::AnswerKind::kText, "drive.mcf");
    CopyDiskToMcf();
    const std::vector<std::uint8_t> lists[] = {Fetched("LDSI T  "), Fetched("CAPSELDA"), Fetched("SERIALNO"),
                                               Fetched("BI_SCRPT")};
    for (const char* name : {"LDSI T  ", "CAPSELDA", "SERIALNO", "BI_SCRPT"}) {
      const std::vector<std::uint8_t> before = Fetched(name);
      std::vector<std::uint8_t> spoilt = RecordBytes(before.size()).Pattern(8, 3).Text(0, name).Get();
      ASSERT_TRUE(records().WriteWhole(RecordName(name), spoilt.data()));
      ASSERT_NE(Fetched(name), before);
    }
    platform::automation::QueueAnswer(platform::automation::AnswerKind::kText, "drive.mcf");
    CopyMcfToDisk();
    EXPECT_EQ(identity().access.mode, AccessMode::kDisk);
    EXPECT_EQ(Fetched("LDSI T  "), lists[0]) << model;
    EXPECT_EQ(Fetched("CAPSELDA"), lists[1]) << model;
    EXPECT_EQ(Fetched("SERIALNO"), lists[2]) << model;
    EXPECT_EQ(Fetched("BI_SCRPT"), lists[3]) << model;
    EXPECT_EQ(messages(), (Messages{"DONE", "DONE"})) << model;
  }
}

// What a drive has lost entirely, its error log with it, comes back; what does not fit is named.
TEST_F(RecordSourceTest, AnImageRestoresALostErrorLogAndSaysWhatItCannot) {
  ASSERT_TRUE(Identify(&identity(), true));
  const std::vector<std::uint8_t> log = Fetched("BI_ERLOG");
  ASSERT_FALSE(log.empty());
  identity().access.image_file = "drive.mcf";
  ASSERT_TRUE(records().CopyAllRecords(AccessMode::kDisk, AccessMode::kMcf));
  PutOnTrack(2, 0, 1, std::vector<std::uint8_t>(512));
  ASSERT_TRUE(Identify(&identity(), true));
  EXPECT_EQ(EntryOf("BI_ERLOG").size, 0);

  // In the image one record is larger than its place on the drive, and one is unknown to it.
  std::string image = ReadText("drive.mcf");
  std::vector<std::uint8_t> bytes(image.begin(), image.end());
  const std::size_t at = image.find("TET_DATA");
  const std::size_t unknown = image.find("WK_HEAD ");
  platform::StoreLe(&bytes[at + 10], 2, 0xFFFF);
  bytes[unknown] = 'X';
  WriteBytes("drive.mcf", bytes);
  CopyMcfToDisk();
  EXPECT_EQ(output(),
            "\"XK_HEAD \" was left out : the drive has no such record\n"
            "\"TET_DATA\" was left out : File size doesn't match\n");
  EXPECT_EQ(messages(), (Messages{"DONE", "DONE"}));
  ASSERT_TRUE(Identify(&identity(), true));
  EXPECT_EQ(Fetched("BI_ERLOG"), log);
}

class CopyTest : public RecordSourceTest {};

// An image may carry the name of a record's file.
TEST_F(CopyTest, AnImageIsNotReplacedByARecordOfItsOwn) {
  ASSERT_TRUE(Identify(&identity(), true));
  const struct {
    const char* image;
    const char* record;
  } cases[] = {{"capselda.BIN", "CAPSELDA"}, {"VU_IDFY.bin", "VU_IDFY "}, {".\\SERIALNO.bin", "SERIALNO"}};
  for (const auto& [name, record] : cases) {
    identity().access.mode = AccessMode::kDisk;
    identity().access.image_file = name;
    ASSERT_TRUE(Identify(&identity(), true));
    ASSERT_TRUE(records().CopyAllRecords(AccessMode::kDisk, AccessMode::kMcf));
    const std::string image = ReadText(name);
    output().clear();
    ASSERT_TRUE(records().SwitchToMcf());
    ASSERT_TRUE(records().CopyAllRecords(AccessMode::kMcf, AccessMode::kFile));
    EXPECT_FALSE(records().SaveRecordToFile(RecordName(record), false));
    EXPECT_EQ(ReadText(name), image);
    EXPECT_NE(output().find("was left out : its file would replace the image\n"), std::string::npos) << output();
  }
}

TEST_F(CopyTest, WithoutADirectoryNothingIsCopied) {
  identity().use_mcfs = false;
  CopyDiskToFiles();
  CopyMcfToFiles();
  EXPECT_EQ(messages(), Messages(2, kNotInitialised));
  platform::automation::QueueAnswer(platform::automation::AnswerKind::kCancel, "");
  CopyDiskToMcf();
  EXPECT_EQ(messages().size(), 2u);
}

TEST_F(CopyTest, RecordsThatCannotBeReadAreLeftOut) {
  ASSERT_TRUE(Identify(&identity(), true));
  standin::Host::Instance().ClearFaults();
  standin::Host::Instance().AddFault("MCFS_ReadRecord@2+");
  ASSERT_TRUE(records().CopyAllRecords(AccessMode::kDisk, AccessMode::kMcf));
  EXPECT_EQ(messages(), Messages{"DONE"});
  EXPECT_NE(EntryOf("CAPSELDA").size, 0) << "the loaded directory is that of the drive still";
  const Directory image = Directory::Decode(
      platform::ByteView(reinterpret_cast<const std::uint8_t*>(ReadText("DEFAULT.MCF").data()), 512 * 5));
  std::size_t kept = 0;
  for (const DirectoryEntry& entry : image.entries()) kept += entry.size != 0;
  EXPECT_EQ(kept, 3u) << "identify data, what the expert keeps, and one record";
}

// Every drive command in turn fails, for every operation, until the operation passes untouched.
TEST_F(CopyTest, AnyCommandMayFail) {
  const struct {
    const char* name;
    std::uint32_t model;
    std::function<void()> run;
  } operations[] = {
      {"identify", 44, [] { Identify(&*g_identity, true); }},
      {"copy to image", 64, [] { g_records->CopyAllRecords(AccessMode::kDisk, AccessMode::kMcf); }},
      {"copy to drive", 40, [] { g_records->CopyAllRecords(AccessMode::kMcf, AccessMode::kDisk); }},
  };
  for (const auto& operation : operations) {
    Use({operation.model, false, 1});
    ASSERT_TRUE(Identify(&identity(), true));
    ASSERT_TRUE(records().CopyAllRecords(AccessMode::kDisk, AccessMode::kMcf));
    standin::Host::Instance().ClearFaults();
    operation.run();
    const std::uint32_t calls = standin::Host::Instance().call_count("ANY");
    ASSERT_GT(calls, 2u);
    for (std::uint32_t k = 1; k <= calls; k += k < 40 ? 1 : 7) {
      SCOPED_TRACE(platform::Format("%s, --fault ANY@%u", operation.name, k));
      ASSERT_TRUE(Identify(&identity(), true));
      standin::Host::Instance().ClearFaults();
      ASSERT_TRUE(standin::Host::Instance().AddFault(platform::Format("ANY@%u", k)));
      operation.run();
      standin::Host::Instance().ClearFaults();
      EXPECT_TRUE(g_host->interactive);
      EXPECT_TRUE(Identify(&identity(), true)) << "the drive is in order again";
    }
  }
}

}  // namespace
}  // namespace pelix
