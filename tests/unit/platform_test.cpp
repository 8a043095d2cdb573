#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include "host/plugin_abi.h"
#include "platform/format.h"
#include "platform/keys.h"
#include "platform/profile.h"
#include "platform/prompts.h"
#include "platform/shared_library.h"
#include "platform/tree_path.h"
#include "tests/support/plugin_test.h"

namespace platform {
namespace {

using pelix::EmptyFolder;
using pelix::ReadText;

class PromptTest : public pelix::PluginTest {};

TEST(Format, LongTextsComeWhole) {
  const std::string word(5000, 'x');
  EXPECT_EQ(Format("<%s>", word.c_str()), "<" + word + ">");
  EXPECT_EQ(Format("%s", std::string(255, 'y').c_str()), std::string(255, 'y'));
  EXPECT_EQ(Format("%s", std::string(256, 'z').c_str()), std::string(256, 'z'));
}

TEST(Format, ReadsDecimalsAsAUserMeansThem) {
  const struct {
    const char* text;
    int value;
  } cases[] = {{"7200", 7200},
               {" -3", -3},
               {"+12abc", 12},
               {"abc", 0},
               {"", 0},
               {"-", 0},
               {"2147483647", 2147483647},
               {"2147483648", 2147483647},
               {"-2147483649", -2147483647 - 1},
               {"99999999999999999999", 2147483647},
               {"\t5", 5}};
  for (const auto& c : cases) EXPECT_EQ(ReadDecimal(c.text), c.value) << c.text;
}

TEST(ByteView, NeverReadsOutside) {
  const std::uint8_t bytes[] = {0x11, 0x22, 0x33, 0x44};
  const ByteView view(bytes, sizeof bytes);
  std::uint32_t value = 9;
  EXPECT_TRUE(view.Le(0, 4, &value));
  EXPECT_EQ(value, 0x44332211u);
  EXPECT_TRUE(view.Be(1, 3, &value));
  EXPECT_EQ(value, 0x223344u);
  EXPECT_FALSE(view.Le(1, 4, &value));
  EXPECT_EQ(value, 0u);
  EXPECT_FALSE(view.Be(SIZE_MAX, 2, &value));
  EXPECT_TRUE(view.Holds(4, 0));
  EXPECT_FALSE(view.Holds(5, 0));
  EXPECT_FALSE(view.Holds(2, SIZE_MAX));
}

TEST(Files, NamesMatchWhateverTheirCaseAndSeparators) {
  const EmptyFolder folder;
  std::filesystem::create_directory("Data");
  std::ofstream("Data/VU_IDFY.bin") << "x";
  EXPECT_TRUE(FileExists("data\\vu_idfy.BIN"));
  File file = File::Open("DATA\\new.txt", "wb");
  EXPECT_TRUE(file.Write("y") && file.Close());
  EXPECT_EQ(ReadText("Data/NEW.TXT"), "y");
  EXPECT_EQ(RemoveFile("data/New.txt"), RemoveResult::kRemoved);
  EXPECT_FALSE(FileExists("Data\\other"));
  EXPECT_FALSE(File::Open("Data", "rb").IsOpen());
  EXPECT_EQ(RemoveFile("data\\none"), RemoveResult::kAbsent);
  EXPECT_EQ(RemoveFile("Data/VU_IDFY.bin/under"), RemoveResult::kAbsent);
  EXPECT_EQ(RemoveFile("data"), RemoveResult::kFailed);
  EXPECT_EQ(RemoveFile("DATA\\vu_idfy.bin"), RemoveResult::kRemoved);
  EXPECT_TRUE(MakeFolder("data"));
  EXPECT_FALSE(MakeFolder("none/below"));
}

TEST(Files, AReplacementThatFailsLeavesTheOldFile) {
  const EmptyFolder folder;
  std::ofstream("list.txt") << "old";
  {
    ReplacingFile file;
    ASSERT_TRUE(file.Open("LIST.TXT", "w"));
    EXPECT_TRUE(file.Write("half a list"));
  }
  EXPECT_EQ(ReadText("list.txt"), "old");
  ReplacingFile file;
  ASSERT_TRUE(file.Open("LIST.TXT", "w"));
  EXPECT_TRUE(file.Write("new"));
  EXPECT_TRUE(file.Commit());
  EXPECT_EQ(ReadText("list.txt"), "new");
  std::ofstream("list.txt.new") << "somebody else's";
  ReplacingFile again;
  ASSERT_TRUE(again.Open("list.txt", "w"));
  EXPECT_TRUE(again.Write("newer") && again.Commit());
  EXPECT_EQ(ReadText("list.txt"), "newer");
  EXPECT_EQ(ReadText("list.txt.new"), "somebody else's");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator("."), {}), 2);
}

TEST(Files, NamesFromDataAreNeverDevices) {
  const auto letters = [](char c) { return c >= 'A' && c <= 'Z'; };
  EXPECT_EQ(SafeFileName("A/B\\C", letters), "A_B_C");
  for (const char* device : {"CON", "nul.bin", "Com1.txt", "LPT9", "AUX"}) {
    EXPECT_EQ(SafeFileName(device, [](char) { return true; }), std::string("_") + device);
  }
  for (const char* file : {"COM", "COMA", "CONS", "NULL.bin", "COM10"}) {
    EXPECT_EQ(SafeFileName(file, [](char) { return true; }), file);
  }
}

TEST(Profile, ReadsOddFilesAndKeepsWhatIsNotItsOwn) {
  const EmptyFolder folder;
  const std::string long_line(65536, 'L');
  std::ofstream("p.ini", std::ios::binary) << "; comment\n[Other]\nRPM=1\n"
                                           << long_line << "\n[pelix_cfg]\r\n rpm = 5400 \r\nNAME=\" q \"\n"
                                           << "BROKEN\nEMPTY=\nRPM=7200\nTEXT=abc\n\n[Last]\nRPM=9\n";
  Profile profile;
  ASSERT_TRUE(profile.Load("P.INI"));
  EXPECT_EQ(profile.GetInt("PELIX_CFG", "RPM", 1), 5400);
  EXPECT_EQ(profile.GetInt("PELIX_CFG", "EMPTY", 7), 7);
  EXPECT_EQ(profile.GetInt("PELIX_CFG", "TEXT", 7), 0);
  EXPECT_EQ(profile.GetInt("PELIX_CFG", "BROKEN", 7), 7);
  EXPECT_EQ(profile.GetString("PELIX_CFG", "NAME", ""), " q ");
  profile.SetInt("PELIX_CFG", "RPM", 3600);
  profile.SetString("PELIX_CFG", "NEW", "a\r\n[Fake]\nb=1");
  profile.SetString("Fresh", "K", " edge ");
  ASSERT_TRUE(profile.Save("p.ini"));
  Profile again;
  ASSERT_TRUE(again.Load("p.ini"));
  EXPECT_EQ(again.GetInt("pelix_cfg", "rpm", 1), 3600);
  EXPECT_EQ(again.GetString("PELIX_CFG", "NEW", ""), "a");
  EXPECT_EQ(again.GetString("Fake", "b", "none"), "none");
  EXPECT_EQ(again.GetString("Fresh", "K", ""), " edge ");
  EXPECT_EQ(again.GetInt("Other", "RPM", 0), 1);
  EXPECT_EQ(again.GetInt("Last", "RPM", 0), 9);
  EXPECT_NE(ReadText("p.ini").find("\n" + long_line + "\n[pelix_cfg]\r\n"), std::string::npos) << "line for line";
  EXPECT_FALSE(Profile().Load("none.ini"));
}

TEST(Profile, AFileThatCannotBeReadIsNotReplaced) {
  const EmptyFolder folder;
  std::ofstream("large.ini") << "[Host]\nKey=1\n";
  std::filesystem::resize_file("large.ini", 65u << 20);
  Profile profile;
  EXPECT_FALSE(profile.Load("large.ini"));
  profile.SetInt("PELIX_CFG", "RPM", 1);
  EXPECT_FALSE(profile.Save("large.ini"));
  EXPECT_EQ(std::filesystem::file_size("large.ini"), 65u << 20);
  EXPECT_FALSE(profile.Load("none.ini"));
  EXPECT_TRUE(profile.Save("none.ini"));
}

TEST(SharedLibrary, OptionalOnesAreFoundBesideTheProgramOnly) {
  const EmptyFolder folder;
  std::filesystem::copy_file(ProgramFolder() + "/" + SharedLibraryFile("pelix"), SharedLibraryFile("elsewhere"));
  SharedLibrary library;
  EXPECT_FALSE(library.LoadOptional("elsewhere"));
  EXPECT_FALSE(library.IsLoaded());
  EXPECT_TRUE(library.LoadOptional("pelix"));
  EXPECT_NE(library.Find(kPluginEntryName), nullptr);
  EXPECT_EQ(LibraryFolder(), ProgramFolder());
}

TEST_F(PromptTest, NumbersAreReadAsTyped) {
  int value = 12;
  EXPECT_TRUE(AskNumber("Number of tracks", &value)) << "nobody has answered: the preset";
  EXPECT_EQ(value, 12);
  automation::QueueAnswer(automation::AnswerKind::kText, "-34");
  EXPECT_TRUE(AskNumber("Number of tracks", &value));
  EXPECT_EQ(value, -34);
  automation::QueueAnswer(automation::AnswerKind::kText, "123456789012345");
  EXPECT_TRUE(AskNumber("Number of tracks", &value));
  EXPECT_EQ(value, 2147483647) << "eleven characters are all that it takes";
  automation::QueueAnswer(automation::AnswerKind::kCancel, "");
  EXPECT_FALSE(AskNumber("Number of tracks", &value));
  EXPECT_EQ(value, 2147483647);
  automation::QueueAnswer(automation::AnswerKind::kText, "words");
  EXPECT_TRUE(AskNumber("Number of tracks", &value));
  EXPECT_EQ(value, 0);
}

TEST(Keys, NamesAreThoseOfTheScriptLanguage) {
  KeyPress key;
  ASSERT_TRUE(ParseKey("shift+pgdn", &key));
  EXPECT_EQ(key, (KeyPress{Key::kPageDown, true, false}));
  ASSERT_TRUE(ParseKey("Ctrl+C", &key));
  EXPECT_EQ(key, (KeyPress{Key::kC, false, true}));
  for (const char* bad : {"C", "F13", "", "Shift+", "Enter ", "Alt+F4"}) EXPECT_FALSE(ParseKey(bad, &key)) << bad;
}

}  // namespace
}  // namespace platform
