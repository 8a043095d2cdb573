// The built library as a 32-bit host loads it, and what it leaves when it goes.
#include <cstring>

#include "standin/plugin_session.h"
#include "tests/windows/windows_fixture.h"
// Windows first: it needs its types.
#include <tlhelp32.h>

namespace pelix {
namespace {

std::string LibraryPath() {
  return platform::ProgramFolder() + "\\" + platform::SharedLibraryFile("pelix");
}

class LibraryTest : public WindowsTest {
 protected:
  LibraryTest() { Stop(); }
};

std::size_t ThreadCount() {
  HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  THREADENTRY32 entry = {};
  entry.dwSize = sizeof entry;
  std::size_t count = 0;
  for (BOOL more = Thread32First(snapshot, &entry); more; more = Thread32Next(snapshot, &entry)) {
    if (entry.th32OwnerProcessID == GetCurrentProcessId()) ++count;
  }
  CloseHandle(snapshot);
  return count;
}

std::string library_output;

TEST_F(LibraryTest, LoadsAndUnloadsAHundredTimesAndLeavesNothing) {
  const std::string folder = platform::CurrentFolder();
  std::size_t threads = 0;
  library_output.clear();
  for (int i = 0; i < 100; ++i) {
    standin::PluginSession session;
    std::string error;
    ASSERT_TRUE(session.Open(
        LibraryPath(), platform::automation::HostWindow(), [](const char* text) { library_output += text; }, &error))
        << error;
    HMODULE module = GetModuleHandleA("pelix.dll");
    EXPECT_TRUE(session.Run());
    WNDCLASSA known = {};
    if (i % 10 == 0) {
      Then([&] { EXPECT_TRUE(GetClassInfoA(module, win32::kListClass, &known)); });
      ThenKey("Esc");
      platform::automation::ActivateItem("ANALYSIS\\CSC ERROR FLAG");
    }
    EXPECT_NE(Tree(), nullptr);
    session.Destroy();
    EXPECT_FALSE(GetClassInfoA(module, win32::kListClass, &known)) << "a window class was left";
    session.Close();
    Pump();
    ASSERT_EQ(GetModuleHandleA("pelix.dll"), nullptr) << "still loaded";
    EXPECT_EQ(Tree(), nullptr);
    EXPECT_EQ(WindowCount(), 0u);
    if (i == 0) threads = ThreadCount();
  }
  EXPECT_EQ(ThreadCount(), threads);
  EXPECT_EQ(library_output, "") << "the plug-in says what it leaves open";
  EXPECT_EQ(platform::CurrentFolder(), folder);
}

// By the places where a 32-bit host looks, not by our own declarations.
TEST_F(LibraryTest, ItsRecordsLieWhereHostsReadThem) {
  platform::SharedLibrary library;
  std::string error;
  ASSERT_TRUE(library.Load(LibraryPath(), &error)) << error;
  const auto* info =
      static_cast<const unsigned char*>(reinterpret_cast<const void* (*)()>(library.Find(kPluginEntryName))());
  const auto word = [](const unsigned char* at) {
    std::uint32_t value;
    std::memcpy(&value, at, 4);
    return value;
  };
  const auto text = [&](const unsigned char* at) { return std::string(reinterpret_cast<const char*>(word(at))); };
  const auto in_library = [](std::uint32_t address) {
    HMODULE module = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const char*>(address), &module);
    return module == GetModuleHandleA("pelix.dll");
  };
  EXPECT_EQ(word(info), 3u);
  EXPECT_EQ(text(info + 4), "PELIX(v6.05j)");
  for (const int offset : {8, 12, 16, 20, 24}) EXPECT_TRUE(in_library(word(info + offset))) << offset;
  const auto* row = reinterpret_cast<const unsigned char*>(word(info + 8));
  std::string commands;
  for (; word(row + 4) != 0; row += 20) {
    commands += platform::Format("%s %x %u %u\n", text(row + 4).c_str(), word(row), word(row + 12), word(row + 16));
    EXPECT_TRUE(in_library(word(row + 8))) << commands;
  }
  EXPECT_EQ(commands,
            "pelixgetdata 30000 265 305\npelixstepmask 20000 265 304\npelixnewdatafile 10000 265 303\n"
            "pelixnewgiffile 10000 265 303\npelixnewdatadir 0 265 302\n");
  for (int offset = 0; offset < 20; offset += 4) EXPECT_EQ(word(row + offset), 0u);
}

TEST_F(LibraryTest, ItCarriesItsVersion) {
  DWORD unused = 0;
  std::vector<unsigned char> block(GetFileVersionInfoSizeA(LibraryPath().c_str(), &unused));
  ASSERT_FALSE(block.empty());
  ASSERT_TRUE(GetFileVersionInfoA(LibraryPath().c_str(), 0, static_cast<DWORD>(block.size()), block.data()));
  void* text = nullptr;
  UINT length = 0;
  ASSERT_TRUE(VerQueryValueA(block.data(), "\\StringFileInfo\\040904E4\\FileVersion", &text, &length));
  EXPECT_EQ(std::string(static_cast<const char*>(text)), "6.05j");
}

TEST_F(LibraryTest, TwoCreatesGiveOneTree) {
  platform::SharedLibrary library;
  std::string error;
  ASSERT_TRUE(library.Load(LibraryPath(), &error)) << error;
  const auto entry = reinterpret_cast<PluginEntry*>(library.Find(kPluginEntryName));
  CWnd parent = {};
  parent.window = platform::automation::HostWindow();
  void* first = entry()->create(&parent);
  EXPECT_EQ(entry()->create(&parent), first);
  EXPECT_EQ(GetWindow(Tree(), GW_HWNDNEXT), nullptr) << "the host's window has one child";
  EXPECT_EQ(entry()->run(), 1);
  entry()->destroy();
}
}  // namespace
}  // namespace pelix
