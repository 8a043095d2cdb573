// The windowed host as a user has it: another process, driven by nothing but the messages that its windows take.
#include <chrono>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <sstream>

#include "platform/files.h"
#include "platform/format.h"
#include "platform/profile.h"
#include "platform/win32/windows_api.h"
#include "tests/support/plugin_test.h"

namespace pelix {
namespace {

namespace win32 = platform::win32;

constexpr int kTree = 10000;
constexpr int kOutput = 100;
constexpr int kStatement = 101;
constexpr int kRunScript = 102;
constexpr int kFileName = 0x47C;  // of the common file dialogs
constexpr char kDialog[] = "#32770";

struct WantedWindow {
  DWORD process;
  const char* class_name;
  HWND found;
};

BOOL CALLBACK TakeWanted(HWND window, LPARAM data) {
  auto* wanted = reinterpret_cast<WantedWindow*>(data);
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  char name[64] = {};
  GetClassNameA(window, name, sizeof name);
  if (process != wanted->process || wanted->class_name != std::string(name) || !IsWindowVisible(window)) return TRUE;
  wanted->found = window;
  return FALSE;
}

class WindowedHostTest : public testing::Test {
 protected:
  ~WindowedHostTest() override { Forget(); }

  void Forget() {
    if (process_.hProcess == nullptr) return;
    TerminateProcess(process_.hProcess, 99);
    CloseHandle(process_.hProcess);
    CloseHandle(process_.hThread);
    process_ = {};
  }

  void Launch(const char* arguments) {
    std::string command = platform::Format("\"%s\\wtarn.exe\" %s", platform::ProgramFolder().c_str(), arguments);
    STARTUPINFOA start = {};
    start.cb = sizeof start;
    ASSERT_TRUE(
        CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process_));
  }
  void Start(const char* arguments) {
    ASSERT_NO_FATAL_FAILURE(Launch(arguments));
    frame_ = Await("WtarnFrame");
  }

  // Waits for something that the other process does; false when it has not after ten seconds.
  static bool Until(const std::function<bool()>& happened) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!happened()) {
      if (std::chrono::steady_clock::now() > end) return false;
      Sleep(10);
    }
    return true;
  }
  HWND Find(const char* class_name) const {
    WantedWindow wanted = {process_.dwProcessId, class_name, nullptr};
    EnumWindows(TakeWanted, reinterpret_cast<LPARAM>(&wanted));
    return wanted.found;
  }
  HWND Await(const char* class_name) const {
    EXPECT_TRUE(Until([&] { return Find(class_name) != nullptr; })) << "no window of class " << class_name;
    return Find(class_name);
  }
  static std::string TextOf(HWND control) {
    std::string text(static_cast<std::size_t>(SendMessageA(control, WM_GETTEXTLENGTH, 0, 0)) + 1, '\0');
    const LRESULT length = SendMessageA(control, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length));
    return text;
  }
  std::string Output() const { return TextOf(GetDlgItem(frame_, kOutput)); }
  void RunStatement(const char* statement) const {
    SendMessageA(GetDlgItem(frame_, kStatement), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(statement));
    PostMessageA(frame_, WM_COMMAND, IDOK, 0);
  }
  // Names a file in the dialog that asks for one, and confirms it.
  void AnswerFileDialog(const char* name) const {
    HWND dialog = Await(kDialog);
    ASSERT_TRUE(Until([&] { return GetDlgItem(dialog, kFileName) != nullptr; }));
    SendMessageA(GetDlgItem(dialog, kFileName), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name));
    PostMessageA(dialog, WM_COMMAND, IDOK, reinterpret_cast<LPARAM>(GetDlgItem(dialog, IDOK)));
    EXPECT_TRUE(Until([&] { return !IsWindow(dialog); }));
  }
  // A double click on the n-th line that the tree shows, as the mouse gives it.
  void DoubleClickLine(int line) const {
    HWND tree = GetDlgItem(frame_, kTree);
    const auto height = static_cast<int>(SendMessageA(tree, TVM_GETITEMHEIGHT, 0, 0));
    const LPARAM at = MAKELPARAM(50, line * height + height / 2);
    PostMessageA(tree, WM_LBUTTONDOWN, MK_LBUTTON, at);
    PostMessageA(tree, WM_LBUTTONUP, 0, at);
    PostMessageA(tree, WM_LBUTTONDBLCLK, MK_LBUTTON, at);
    PostMessageA(tree, WM_LBUTTONUP, 0, at);
  }
  // The process's exit status, once it has ended by itself.
  DWORD AwaitEnd() const {
    EXPECT_EQ(WaitForSingleObject(process_.hProcess, 10000), WAIT_OBJECT_0) << "it does not end";
    DWORD status = 99;
    GetExitCodeProcess(process_.hProcess, &status);
    return status;
  }
  DWORD Close() const {
    PostMessageA(frame_, WM_CLOSE, 0, 0);
    return AwaitEnd();
  }

  EmptyFolder folder_;
  PROCESS_INFORMATION process_ = {};
  HWND frame_ = nullptr;
};

// By a tree's listing: which line of the closed tree a folder is, and which line below it, opened, a leaf of its own.
struct Lines {
  int folder = -1;
  int leaf = -1;
};
Lines FindLines(const std::string& listing, const std::string& folder, const std::string& leaf) {
  std::istringstream stream(listing);
  std::string line;
  Lines found;
  int folders = 0;
  int leaves = 0;
  for (bool inside = false; std::getline(stream, line);) {
    while (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty() || line[0] == '>') continue;
    const std::size_t depth = line.find_first_not_of(' ');
    if (depth == 0) {
      inside = line == folder;
      if (inside) found.folder = folders;
      ++folders;
    } else if (inside && depth == 2) {
      ++leaves;
      if (line == leaf) found.leaf = leaves;
    }
  }
  return found;
}

TEST_F(WindowedHostTest, ADoubleClickOpensAReportAndF9SavesIt) {
  ASSERT_NO_FATAL_FAILURE(Start("--profile wtarn.ini"));
  RunStatement("tree");
  ASSERT_TRUE(Until([&] { return Output().find("CSC ERROR FLAG") != std::string::npos; })) << Output();
  const Lines lines = FindLines(Output(), "+ ANALYSIS", "  - CSC ERROR FLAG");
  ASSERT_GE(lines.folder, 0);
  ASSERT_GT(lines.leaf, 0);
  DoubleClickLine(lines.folder);
  DoubleClickLine(lines.folder + lines.leaf);

  HWND list = Await(win32::kListClass);
  EXPECT_EQ(TextOf(list), "CSC Error Report");
  EXPECT_FALSE(IsWindowEnabled(frame_)) << "the list takes all input";
  const std::string visible = TextOf(GetDlgItem(list, win32::kBodyId));
  PostMessageA(GetDlgItem(list, win32::kBodyId), WM_KEYDOWN, VK_F9, 1);
  AnswerFileDialog("report");
  ASSERT_TRUE(Until([] { return platform::FileExists("report.txt"); }));
  std::ifstream file("report.txt");
  std::string saved((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  EXPECT_EQ(saved.find("[CSC Error Report]\n"), 0u) << saved;
  EXPECT_NE(saved.find(visible.substr(1, visible.find('\n') - 1)), std::string::npos) << saved;

  // The report is still open.
  EXPECT_EQ(Close(), 0u);
  platform::Profile profile;
  profile.Load("wtarn.ini");
  EXPECT_NE(profile.GetString("WTARN", "WindowPlacement", ""), "");
}

TEST_F(WindowedHostTest, ItRunsScriptsAndRemembersItsPlace) {
  std::ofstream("own.ini") << "[WTARN]\nWindowPlacement=1,40,50,700,500,0\n";
  std::ofstream("job.txt") << "activate \"ANALYSIS\\CSC ERROR FLAG\"\nshow\nkey Esc\n";
  ASSERT_NO_FATAL_FAILURE(Start("--profile own.ini --drive sim:64,seed=2"));
  RECT place;
  GetWindowRect(frame_, &place);
  EXPECT_EQ(place.left, 40);
  EXPECT_EQ(place.bottom, 500);
  RECT tree;
  GetWindowRect(GetDlgItem(frame_, kTree), &tree);
  EXPECT_GT(tree.right, tree.left) << "the frame gives the tree its place";
  MoveWindow(frame_, 60, 70, 500, 400, TRUE);
  RECT smaller;
  GetWindowRect(GetDlgItem(frame_, kTree), &smaller);
  EXPECT_LT(smaller.right - smaller.left, tree.right - tree.left);

  PostMessageA(frame_, WM_COMMAND, kRunScript, 0);
  AnswerFileDialog("job.txt");
  EXPECT_TRUE(Until([&] { return Output().find(">                  CSC Error Flag") != std::string::npos; }))
      << Output();
  EXPECT_EQ(Close(), 0u);
  platform::Profile profile;
  profile.Load("own.ini");
  EXPECT_EQ(profile.GetString("WTARN", "WindowPlacement", ""), "1,60,70,560,470,0");
}

// A window may be closed from outside although another takes its input: by the task bar, by the end of a session.
TEST_F(WindowedHostTest, EndsCleanlyWhateverIsOpen) {
  for (const char* item : {"PELIX Config", "ANALYSIS\\DEFECT", "M/C DATA\\DISK TO MCF"}) {
    ASSERT_NO_FATAL_FAILURE(Start(""));
    RunStatement(platform::Format("activate \"%s\"", item).c_str());
    Await(kDialog);
    EXPECT_EQ(Close(), 0u) << item;
    Forget();
  }
  ASSERT_NO_FATAL_FAILURE(Start(""));
  RunStatement("activate \"ANALYSIS\\CSC ERROR FLAG\"");
  PostMessageA(GetDlgItem(Await(win32::kListClass), win32::kBodyId), WM_KEYDOWN, VK_F9, 1);
  Await(kDialog);
  EXPECT_EQ(Close(), 0u) << "a file dialog of a report";
}

TEST_F(WindowedHostTest, SaysWhatIsWrongWithItsArguments) {
  ASSERT_NO_FATAL_FAILURE(Launch("--drive sim:9"));
  HWND box = Await(kDialog);
  EXPECT_NE(TextOf(GetDlgItem(box, 0xFFFF)).find("MODEL from 11 to 64"), std::string::npos);
  PostMessageA(box, WM_COMMAND, IDOK, 0);
  EXPECT_EQ(AwaitEnd(), 64u);
}

}  // namespace
}  // namespace pelix
