#include <fstream>
#include <set>

#include "drive/commands.h"
#include "drive/configuration.h"
#include "drive/output_names.h"
#include "platform/profile.h"
#include "tests/support/plugin_test.h"

namespace pelix {
namespace {

const ModelRow* RowOf(HostWord index) {
  for (const ModelRow& row : kModelTable) {
    if (row.model_index == index) return &row;
  }
  return nullptr;
}

template <class Field>
std::set<HostWord> ValuesOf(Field field) {
  std::set<HostWord> values;
  for (const ModelRow& row : kModelTable) values.insert(row.*field);
  return values;
}

TEST(ModelTable, HoldsEveryGivenRowCountAndValue) {
  std::vector<HostWord> order;
  for (HostWord index = 64; index >= 38; --index) order.push_back(index);
  order.insert(order.end(), {36, 37});
  for (HostWord index = 35; index >= 11; --index) order.push_back(index);
  ASSERT_EQ(order.size(), kModelTable.size());
  for (std::size_t i = 0; i < order.size(); ++i) EXPECT_EQ(kModelTable[i].model_index, order[i]);

  EXPECT_EQ(ValuesOf(&ModelRow::servo_wedge_address), (std::set<HostWord>{0, 0x9005, 0xA505}));
  EXPECT_EQ(ValuesOf(&ModelRow::model_value_2), (std::set<HostWord>{0, 4, 8}));
  EXPECT_EQ(ValuesOf(&ModelRow::spindle_speed), (std::set<HostWord>{3600, 5400, 5760, 7200, 7234}));
  EXPECT_EQ(ValuesOf(&ModelRow::model_value_3), (std::set<HostWord>{2, 4, 6, 8}));
  EXPECT_EQ(ValuesOf(&ModelRow::model_value_4), (std::set<HostWord>{64, 256, 4095, 4096}));
  EXPECT_EQ(ValuesOf(&ModelRow::model_value_5), (std::set<HostWord>{64, 256, 1000}));
  EXPECT_EQ(*ValuesOf(&ModelRow::servo_wedges).begin(), 72u);
  EXPECT_EQ(*ValuesOf(&ModelRow::servo_wedges).rbegin(), 252u);
  EXPECT_EQ(*ValuesOf(&ModelRow::model_value_1).rbegin(), 940u);
  for (const ModelRow& row : kModelTable) {
    EXPECT_EQ(row.generation, row.model_index >= 58 ? 2u : 1u);
    EXPECT_EQ(std::string(row.family_name).size(), 11u);
  }
  EXPECT_EQ(RowOf(64)->spindle_speed, 3600u);
  EXPECT_EQ(RowOf(64)->servo_wedges, 192u);
  EXPECT_EQ(RowOf(31)->servo_wedge_address, 0x9005u);
  EXPECT_EQ(RowOf(29)->servo_wedge_address, 0x9005u);
  EXPECT_EQ(RowOf(44)->servo_wedge_address, 0xA505u);
  EXPECT_EQ(RowOf(43)->servo_wedge_address, 0xA505u);
  EXPECT_STREQ(RowOf(28)->prefixes, RowOf(27)->prefixes);
  EXPECT_STREQ(RowOf(35)->family_name, RowOf(34)->family_name);
  EXPECT_STREQ(RowOf(56)->family_name, RowOf(55)->family_name);
}

class MatchModelTest : public PluginTest {
 protected:
  std::int32_t Match(const std::string& code, const std::string& version = "QM100") {
    return MatchModel(&identity(), code, version, false);
  }
};

TEST_F(MatchModelTest, EveryPrefixFindsItsRowAndNoOther) {
  for (const ModelRow& row : kModelTable) {
    const bool by_version = row.model_index == 28;
    std::string prefix;
    for (const char c : std::string(row.prefixes)) {
      if (c != ' ') {
        prefix += c;
        continue;
      }
      EXPECT_EQ(prefix.size(), row.model_index == 57 ? 3u : 2u);
      EXPECT_EQ(Match(prefix + "123", by_version ? "QL400-1" : "QM100"), static_cast<std::int32_t>(row.model_index));
      prefix.clear();
    }
    EXPECT_TRUE(prefix.empty()) << "every prefix ends with a blank";
  }
}

TEST_F(MatchModelTest, TheKeyComesFromCodeOrVersion) {
  EXPECT_EQ(Match("pa1"), 64) << "upper-cased";
  EXPECT_EQ(Match("0xv9"), 57) << "a digit in front keeps three characters";
  EXPECT_EQ(Match("0X"), 57) << "what there is of three";
  EXPECT_EQ(Match("0XW"), 0);
  EXPECT_EQ(Match("", "KF1"), 11);
  EXPECT_EQ(Match("-KF", "KF1"), 64) << "punctuation: an empty key, the first row";
  EXPECT_EQ(Match("", ""), 64);
  EXPECT_EQ(Match("QZ1"), 0);
  EXPECT_STREQ(identity().family_name, "UNKNOWN MODEL");
  EXPECT_EQ(identity().model_value_3, 4u);
  EXPECT_EQ(identity().model_value_4, 256u);
  EXPECT_EQ(identity().spindle_speed, 0);
}

TEST_F(MatchModelTest, AManualModelIsTakenAsConfiguredAndAlwaysSaidSo) {
  identity().update_model = false;
  identity().model_index = 57;
  g_host->interactive = false;
  EXPECT_EQ(Match("PA1"), 57);
  identity().model_index = 99;
  EXPECT_EQ(Match("PA1"), 0);
  ASSERT_EQ(messages().size(), 2u);
  EXPECT_EQ(messages()[0].substr(0, 92),
            "Update model is set manually. Drive data and test result might be wrong with this mode. \n\xB8\xF0\xB5");
}

TEST_F(MatchModelTest, SpeedAndWedgesComeFromTheDriveOrTheTable) {
  C_DRIVEVUINFO& info = *DriveInfo();
  info.heads = 4;
  EXPECT_EQ(Match("WJ1"), 30);
  EXPECT_EQ(identity().spindle_speed, 5760) << "three heads or more";
  info.heads = 2;
  Match("WJ1");
  EXPECT_EQ(identity().spindle_speed, 5400);
  info.spindle_speed = 4321;
  info.model_value = 77;
  info.servo_wedges = 99;
  Match("WJ1");
  EXPECT_EQ(identity().spindle_speed, 4321);
  EXPECT_EQ(identity().model_value_1, 77u);
  EXPECT_EQ(identity().servo_wedges, 99);
  identity().update_spindle_speed = false;
  identity().update_servo_wedges = false;
  Match("KF1");
  EXPECT_EQ(identity().spindle_speed, 4321);
  EXPECT_EQ(identity().servo_wedges, 99);
  EXPECT_EQ(identity().model_value_1, RowOf(11)->model_value_1);
  info.spindle_speed = info.model_value = info.servo_wedges = 0;
}

TEST_F(MatchModelTest, NamesOfFamilies) {
  EXPECT_EQ(ModelIndexByName("family_01"), 64);
  EXPECT_EQ(ModelIndexByName("FAMILY_54"), 11);
  EXPECT_EQ(ModelIndexByName("FAMILY_09"), 56) << "the first of two";
  EXPECT_EQ(ModelIndexByName("FAMILY_01 "), 0);
  EXPECT_EQ(ModelIndexByName(""), 0);
  EXPECT_EQ(FamilyNameOf(11), "FAMILY_54");
  EXPECT_EQ(FamilyNameOf(0), "Unknown");
}

class IdentifyTest : public PluginTest {};

TEST_F(IdentifyTest, EverySimulatedModelIsFound) {
  for (std::uint32_t model = 11; model <= 64; ++model) {
    Use({model, model % 2 == 0, model});
    EXPECT_TRUE(Identify(&identity(), true)) << model;
    EXPECT_EQ(identity().model_index, static_cast<std::int32_t>(model));
    EXPECT_EQ(identity().UsesCommonHeader(), model % 2 == 0);
    EXPECT_EQ(identity().identify_data.size() % 512, 0u);
  }
  EXPECT_EQ(messages(), Messages());
}

TEST_F(IdentifyTest, TheWedgeCountIsReadFromTheDriveWhereTheTableSaysSo) {
  Use({44, false, 1});
  EXPECT_TRUE(Identify(&identity(), true));
  EXPECT_EQ(identity().servo_wedges, 184);
  EXPECT_TRUE(Identify(&identity(), false));
  EXPECT_EQ(identity().servo_wedges, 180) << "without the directory the table's count";
  standin::Host::Instance().AddFault("RDXW@1+");
  EXPECT_TRUE(Identify(&identity(), true));
  EXPECT_EQ(identity().servo_wedges, 180);
}

TEST_F(IdentifyTest, FailuresSayWhyAndKeepTheIdentity) {
  ASSERT_TRUE(Identify(&identity(), true));
  const struct {
    const char* fault;
    const char* message;
  } cases[] = {{"TASKFILE@1", "DRIVE IS BUSY"},
               {"TASKFILE@1=0xC0", "DRIVE IS BUSY"},
               {"TASKFILE@1=0", "DRIVE IS NOT READY"},
               {"IDENTIFY@1=5", "IDENTIFY COMMAND FAIL"}};
  for (const auto& c : cases) {
    standin::Host::Instance().ClearFaults();
    ASSERT_TRUE(standin::Host::Instance().AddFault(c.fault));
    EXPECT_FALSE(Identify(&identity(), true));
    EXPECT_EQ(messages(), Messages{c.message});
    EXPECT_EQ(identity().model_index, 64);
    messages().clear();
  }
  const SwitchScope quiet(&g_host->interactive, false);
  standin::Host::Instance().ClearFaults();
  standin::Host::Instance().AddFault("TASKFILE@1");
  EXPECT_FALSE(Identify(&identity(), true));
  EXPECT_EQ(messages(), Messages());
}

TEST_F(IdentifyTest, TheIdentifyFileIsUsedForTheOtherModes) {
  identity().access.mode = AccessMode::kFile;
  EXPECT_FALSE(Identify(&identity(), false));
  EXPECT_EQ(messages(), Messages{"IDENTIFY COMMAND FAIL"});
  WriteBytes("vu_idfy.BIN", IdentifyBytes("0XV3", 3).Le(34, 515, 2).Le(4896, 4200, 2).Le(4898, 222, 2).Get());
  EXPECT_TRUE(Identify(&identity(), false));
  EXPECT_EQ(identity().model_index, 57);
  EXPECT_EQ(identity().spindle_speed, 4200);
  EXPECT_EQ(identity().model_value_1, 515u);
  EXPECT_EQ(identity().servo_wedges, 222);
  EXPECT_EQ(identity().identify_data.size(), 5120u);
  EXPECT_EQ(g_host->request->flags & kFlagIdentifyFile, 0u);

  // A file cut anywhere is all zero behind; one that claims more than there can be is cut.
  const std::vector<std::uint8_t> whole = IdentifyBytes("KF1", 2).Le(4918, 0xFFFF, 2).Get();
  for (std::size_t size : {std::size_t{7}, std::size_t{31}, std::size_t{4919}, whole.size()}) {
    WriteBytes("VU_IDFY.bin", {whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)});
    EXPECT_TRUE(Identify(&identity(), false)) << size;
    EXPECT_LE(identity().identify_data.size(), kWorkBufferBytes);
  }
  EXPECT_EQ(identity().model_index, 11);
  WriteBytes("VU_IDFY.bin", {});
  EXPECT_FALSE(Identify(&identity(), false)) << "an empty file identifies nothing";
}

TEST_F(IdentifyTest, WithoutMcfsTheDirectoryIsForgotten) {
  ASSERT_TRUE(Identify(&identity(), true));
  EXPECT_NE(records().directory(), nullptr);
  identity().use_mcfs = false;
  EXPECT_TRUE(Identify(&identity(), true));
  EXPECT_EQ(records().directory(), nullptr);
  EXPECT_EQ(identity().header_flags, 0);
}

TEST_F(IdentifyTest, NoRequestStructureOrScriptMachineIsSurvived) {
  g_host->request = nullptr;
  EXPECT_FALSE(Identify(&identity(), true));
  EXPECT_EQ(SerialNumber(), "");
  g_host->request = GetVMstruct();
  g_host->vm = nullptr;
  EXPECT_FALSE(Identify(&identity(), true));
  EXPECT_NE(ResetDrive(), 0);
  EXPECT_EQ(messages(), (Messages{"IDENTIFY COMMAND FAIL", "IDENTIFY COMMAND FAIL"}));
}

// The bit is the host's own unless the file stands in for the drive.
TEST_F(IdentifyTest, TheFileBitIsClearedOnlyWhereItWasSet) {
  g_host->request->flags |= kFlagIdentifyFile;
  EXPECT_TRUE(Identify(&identity(), true));
  EXPECT_NE(g_host->request->flags & kFlagIdentifyFile, 0u);
}

class HostServicesTest : public PluginTest {};

TEST_F(HostServicesTest, TheBracketClearsAndRestoresItsBits) {
  const HostWord other = 0x8035;
  for (const HostWord before : {HostWord{0}, HostWord{2}, HostWord{0x4000}, HostWord{0x4002}}) {
    for (const bool measuring : {false, true}) {
      const SwitchScope test(&g_host->test_switch, !measuring);
      TARN_VM_STRUCT request = {};
      request.flags = before | other;
      {
        const CommandBracket bracket(&request);
        EXPECT_EQ(request.flags, other | (measuring ? 0 : before & 0x4000));
        request.flags |= 0x100;
      }
      EXPECT_EQ(request.flags, before | other | 0x100);
    }
  }
}

TEST_F(HostServicesTest, EveryCommandIsIssuedInsideTheBracket) {
  ASSERT_TRUE(Identify(&identity(), true));
  standin::Host& host = standin::Host::Instance();
  std::uint8_t sector[512] = {};
  std::uint16_t word = 0;
  const struct {
    const char* command;
    std::function<ECODE()> issue;
  } cases[] = {
      {"IDENTIFY", [] { return IdentifyDrive(g_host->work_buffers[0].get(), false); }},
      {"MCFS_READRECORD", [&] { return ReadMcfsRecord(kFidFsi, 0, 1, sector); }},
      {"PHRD",
       [&] {
         return ReadPhysical({0, 0, 1}, 1, sector);
       }},
      {"PHWR",
       [&] {
         return WritePhysical({30, 0, 1}, 1, sector);
       }},
      {"RDXW", [&] { return ReadExtendedWord(1, &word); }},
      {"RESET", [] { return ResetDrive(); }},
  };
  for (const auto& c : cases) {
    g_host->request->flags = kFlagBit1 | kFlagBit14 | 0x10;
    const std::uint32_t before = host.call_count(c.command);
    EXPECT_EQ(c.issue(), 0u) << c.command;
    EXPECT_EQ(host.call_count(c.command), before + 1);
    EXPECT_EQ(host.flags_at_last_call(), kFlagBit14 | 0x10) << c.command;
    EXPECT_EQ(g_host->request->flags, kFlagBit1 | kFlagBit14 | 0x10) << c.command;
  }
}

TEST_F(HostServicesTest, WhatIsWrittenOnADriveInAFolderStaysThere) {
  std::string error;
  ASSERT_TRUE(standin::WriteDriveFolder("drive", {40, false, 2}, &error)) << error;
  EXPECT_FALSE(standin::WriteDriveFolder("drive", {40, false, 2}, &error)) << "it would be lost";
  const std::vector<std::uint8_t> sector = RecordBytes(512).Pattern(0, 9).Get();
  for (int round = 0; round < 2; ++round) {
    Use({}, "drive");
    ASSERT_TRUE(Identify(&identity(), true));
    EXPECT_EQ(identity().model_index, 40);
    std::vector<std::uint8_t> read(512);
    for (const std::uint32_t cylinder : {30u, 4000u}) {
      if (round == 0) {
        EXPECT_EQ(WritePhysical({cylinder, 1, 17}, 1, sector.data()), 0u);
      }
      EXPECT_EQ(ReadPhysical({cylinder, 1, 17}, 1, read.data()), 0u);
      EXPECT_EQ(read, sector);
    }
  }
}

TEST_F(HostServicesTest, OutputIsCutAndDroppedWithoutACallback) {
  Output("%s", std::string(1023, 'a').c_str());
  EXPECT_EQ(output(), std::string(1023, 'a'));
  output().clear();
  Output("%s", std::string(2000, 'b').c_str());
  EXPECT_EQ(output().size(), 1023u);
  g_host->output = nullptr;
  Output("dropped");
  EXPECT_EQ(output().size(), 1023u);
}

TEST_F(HostServicesTest, NobodyAtTheScreenMeansYes) {
  const SwitchScope quiet(&g_host->interactive, false);
  EXPECT_EQ(ShowMessage("really?", platform::MessageStyle::kYesNo), 6);
  EXPECT_EQ(messages(), Messages());
}

class ConfigurationTest : public PluginTest {};

TEST_F(ConfigurationTest, IsLoadedAtStartAndSavedAtTheEnd) {
  EXPECT_EQ(identity().model_index, 29);
  EXPECT_EQ(identity().access.image_file, "DEFAULT.MCF");
  identity().access.mode = AccessMode::kMcw;
  identity().access.image_file = "C:\\images\\a b.mcw";
  identity().display_serial_number = true;
  identity().spindle_speed = -7;
  Stop();
  EXPECT_EQ(ReadLines("test.ini"),
            "[PELIX_CFG]\nMC_ACCESS=3\nMC_FILENAME=C:\\images\\a b.mcw\nUPDATE_RPM=1\nUPDATE_SERVO_EDGE=1\nUSE_MCFS=1\n"
            "UPDATE_MODEL=1\nUSE_MCFS_DIRECTORY=0\nDISPLAY_SN=1\nRPM=-7\nSERVO_EDGE=232\nMODEL_ID=29\n"
            "MCD_FILENAME=DEFAULT.MCD\n");
  Use({});
  EXPECT_EQ(identity().access.mode, AccessMode::kMcw);
  EXPECT_EQ(identity().access.image_file, "C:\\images\\a b.mcw");
  EXPECT_TRUE(identity().display_serial_number);
  EXPECT_EQ(identity().spindle_speed, -7);
}

TEST_F(ConfigurationTest, BrokenProfilesGiveUsableValues) {
  Stop();
  std::ofstream("test.ini") << "[PELIX_CFG]\nMC_ACCESS=7\nRPM=fast\nUSE_MCFS=yes\nUPDATE_RPM=5\nSERVO_EDGE=\nMODEL_ID="
                            << std::string(65536, '9') << "\n";
  Use({});
  EXPECT_EQ(identity().access.mode, AccessMode::kDisk);
  EXPECT_EQ(identity().spindle_speed, 0);
  EXPECT_FALSE(identity().use_mcfs);
  EXPECT_TRUE(identity().update_spindle_speed);
  EXPECT_EQ(identity().servo_wedges, 232);
  EXPECT_EQ(identity().model_index, 2147483647);
}

TEST_F(ConfigurationTest, AProfileThatCannotBeWrittenIsReported) {
  standin::Host::Instance().SetProfile("none/test.ini");
  Stop();
  EXPECT_NE(output().find("cannot save the configuration to \""), std::string::npos);
}

TEST_F(ConfigurationTest, OutputNamesComeFromTheDrive) {
  IDENTIFY_RECORD& drive = *g_host->request->identify;
  auto set = [](char* field, const char* text) { std::snprintf(field, 20, "%s", text); };
  set(drive.serial_number, "S1/..\\x:y  ");
  EXPECT_EQ(NumberedFile("out", 12, ".gif"), "out\\S1_.._x_y-0012.gif");
  set(drive.serial_number, "   ");
  set(drive.model_name, "MODEL 7");
  EXPECT_EQ(NumberedFolder(10000), "MODEL 7-10000");
  std::ofstream("MODEL 7-0000.txt") << "";
  std::ofstream("model 7-0001.TXT") << "";
  EXPECT_EQ(FirstFreeFile("", ".txt"), 2);
  EXPECT_EQ(FirstFreeFile("", ".gif"), 0);
  EXPECT_EQ(FirstFreeFolder(), 0);
}

}  // namespace
}  // namespace pelix
