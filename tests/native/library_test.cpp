// The built library as a host loads it.
#include <filesystem>

#include "standin/plugin_session.h"
#include "tests/support/plugin_test.h"

namespace pelix {
namespace {

std::string LibraryPath() {
  return platform::ProgramFolder() + "/" + platform::SharedLibraryFile("pelix");
}

std::string loaded_output;
void KeepOutput(const char* text) {
  loaded_output += text;
}

class LibraryTest : public PluginTest {
 protected:
  LibraryTest() { Stop(); }
  bool Open(standin::PluginSession* session) {
    std::string error;
    const bool opened = session->Open(LibraryPath(), platform::automation::HostWindow(), KeepOutput, &error);
    EXPECT_TRUE(opened) << error;
    return opened;
  }
};

std::size_t CountIn(const char* folder) {
  return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

TEST_F(LibraryTest, LoadsAndUnloadsAHundredTimesAndLeavesNothing) {
  const std::string folder = platform::CurrentFolder();
  std::size_t files = 0;
  std::size_t threads = 0;
  for (int i = 0; i < 100; ++i) {
    standin::PluginSession session;
    ASSERT_TRUE(Open(&session));
    EXPECT_TRUE(session.Run());
    session.Close();
    if (i == 0) files = CountIn("/proc/self/fd");
    if (i == 0) threads = CountIn("/proc/self/task");
    std::string maps;
    ASSERT_TRUE(platform::ReadWholeFile("/proc/self/maps", 1u << 24, &maps));
    ASSERT_EQ(maps.find("libpelix.so"), std::string::npos) << "still mapped";
  }
  EXPECT_EQ(CountIn("/proc/self/fd"), files);
  EXPECT_EQ(CountIn("/proc/self/task"), threads);
  EXPECT_EQ(platform::CurrentFolder(), folder);
}

TEST_F(LibraryTest, TwoCreatesGiveOneWindow) {
  standin::PluginSession session;
  ASSERT_TRUE(Open(&session));
  platform::SharedLibrary again;
  std::string error;
  ASSERT_TRUE(again.Load(LibraryPath(), &error));
  const auto entry = reinterpret_cast<PluginEntry*>(again.Find(kPluginEntryName));
  CWnd parent = {};
  parent.window = platform::automation::HostWindow();
  void* window = entry()->create(&parent);
  EXPECT_NE(window, nullptr);
  EXPECT_EQ(entry()->create(nullptr), window);
  HOST_CONTEXT context = {nullptr, nullptr, 0, 0, nullptr, 0};
  entry()->set_context(&context);
  EXPECT_EQ(entry()->run(), 1) << "no drive: the menu of the configured model";
  entry()->set_context(nullptr);
  again.Unload();
}

TEST_F(LibraryTest, StatesItsConfigurationWhenItGoes) {
  standin::PluginSession session;
  ASSERT_TRUE(Open(&session));
  session.Run();
  session.Close();
  EXPECT_NE(ReadText("test.ini").find("MODEL_ID=64\n"), std::string::npos);
}

}  // namespace
}  // namespace pelix
