// What only real windows can show: their styles, controls, messages and what they leave behind.
#include <atomic>
#include <fstream>
#include <mutex>
#include <set>
#include <thread>

#include "platform/progress_window.h"
#include "platform/prompts.h"
#include "platform/surface_window.h"
#include "tests/windows/windows_fixture.h"
#include "ui/config_dialog.h"

namespace pelix {
namespace {

TEST_F(WindowsTest, TheTreeIsAsDescribed) {
  MainWindow& window = MakeWindow();
  ASSERT_TRUE(window.Run());
  const LONG style = GetWindowLongA(Tree(), GWL_STYLE);
  const LONG wanted = WS_CHILD | WS_VISIBLE | TVS_HASLINES | TVS_HASBUTTONS | TVS_LINESATROOT | TVS_SHOWSELALWAYS;
  EXPECT_EQ(style & wanted, wanted);
  RECT place;
  GetClientRect(Tree(), &place);
  EXPECT_EQ(place.right, 0) << "its owner sizes it";
  HIMAGELIST images = TreeView_GetImageList(Tree(), TVSIL_NORMAL);
  int width = 0;
  int height = 0;
  ImageList_GetIconSize(images, &width, &height);
  EXPECT_EQ(width, 16);
  EXPECT_EQ(height, 16);
  EXPECT_EQ(ImageList_GetImageCount(images), 3) << "folder, report and picture, each loaded once";
  const MainWindow::Item bare = window.InsertItem("no icon", -1, -1, nullptr);
  EXPECT_NE(bare, nullptr);
  EXPECT_EQ(platform::FindTreeItem(window.Walk(), "NO ICON"), bare);
}

HTREEITEM ItemAt(HWND tree, const char* path) {
  return static_cast<HTREEITEM>(platform::FindTreeItem(win32::WalkTree(tree), path));
}

bool IsExpanded(HWND tree, HTREEITEM item) {
  return (TreeView_GetItemState(tree, item, TVIS_EXPANDED) & TVIS_EXPANDED) != 0;
}

TEST_F(WindowsTest, EnterAndDoubleClickToggleFoldersAndRunLeaves) {
  ASSERT_TRUE(MakeWindow().Run());
  SetWindowPos(Tree(), nullptr, 0, 0, 300, 400, SWP_NOZORDER);
  HTREEITEM folder = ItemAt(Tree(), "ANALYSIS");
  TreeView_SelectItem(Tree(), folder);
  EXPECT_FALSE(IsExpanded(Tree(), folder));
  SendMessageA(Tree(), WM_KEYDOWN, VK_RETURN, 1);
  EXPECT_TRUE(IsExpanded(Tree(), folder));
  SendMessageA(Tree(), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(30, 30));
  EXPECT_FALSE(IsExpanded(Tree(), folder)) << "the control itself does not toggle it a second time";

  std::string shown;
  TreeView_SelectItem(Tree(), ItemAt(Tree(), "ANALYSIS\\CSC ERROR FLAG"));
  ThenShow(&shown);
  ThenKey("Esc");
  SendMessageA(Tree(), WM_KEYDOWN, VK_RETURN, 1);
  EXPECT_EQ(shown.substr(0, 17), "CSC Error Report\n");
  EXPECT_EQ(GetFocus(), Tree()) << "the tree has the focus again";
}

// A host whose message loop handles dialog keys keeps them, but for the tree's Enter.
TEST_F(WindowsTest, TabLeavesTheTreeAndEnterIsItsOwn) {
  ASSERT_TRUE(MakeWindow().Run());
  auto* host = static_cast<HWND>(platform::automation::HostWindow());
  HWND button = CreateWindowExA(0, "BUTTON", "next", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, 20, 20, host, nullptr,
                                nullptr, nullptr);
  const auto press = [&](WPARAM code) {
    MSG message = {};
    message.hwnd = Tree();
    message.message = WM_KEYDOWN;
    message.wParam = code;
    message.lParam = 1;
    if (!IsDialogMessageA(host, &message)) DispatchMessageA(&message);
  };
  HTREEITEM folder = ItemAt(Tree(), "ANALYSIS");
  TreeView_SelectItem(Tree(), folder);
  SetFocus(Tree());
  press(VK_RETURN);
  EXPECT_TRUE(IsExpanded(Tree(), folder));
  press(VK_TAB);
  EXPECT_EQ(GetFocus(), button);
  DestroyWindow(button);
}

TEST_F(WindowsTest, LongMessagesAreShownWhole) {
  MakeWindow();
  platform::ShowMessageBox(std::string(32000, '\xC7'), platform::MessageStyle::kOk);
  EXPECT_EQ(messages(), Messages{std::string(32000, '\xC7')});
}

// Message boxes and file dialogs are the system's windows, but the plug-in's to close.
TEST_F(WindowsTest, DestroyClosesTheSystemsDialogs) {
  static int closed;
  closed = 0;
  const auto destroy = [] {
    HWND dialog = FindEnabled("#32770");
    ASSERT_NE(dialog, nullptr);
    PLUGIN_GetInfoStruct()->destroy();
    EXPECT_FALSE(IsWindowVisible(dialog));
    ++closed;
  };
  platform::automation::SetMessageSink([destroy](const std::string&) { destroy(); });
  platform::automation::SetQuestionSink([destroy](const std::string&) { destroy(); });
  MakeWindow();
  platform::ShowMessageBox("text", platform::MessageStyle::kOk);
  MakeWindow();
  EXPECT_EQ(platform::ShowMessageBox("text", platform::MessageStyle::kYesNo), platform::kAnswerNo);
  MakeWindow();
  std::string path;
  platform::automation::QueueAnswer(platform::automation::AnswerKind::kText, "a.txt");
  EXPECT_FALSE(platform::AskFileToSave({"Save", "txt", "All|*.*||"}, &path));
  MakeWindow();
  EXPECT_FALSE(platform::AskText("Name", 10, &path));
  EXPECT_EQ(closed, 4);
  platform::automation::SetQuestionSink(nullptr);
}

TEST_F(WindowsTest, TheConfigurationDialogHasEveryControl) {
  MakeWindow();
  Then([] {
    HWND dialog = FindEnabled("#32770");
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(win32::WindowText(dialog), "PELIX Configuration");
    const std::set<int> disabled = {1041, 1039, 1035, 1036, 1043, 1045, 1046};
    int tab_stops = 0;
    for (const platform::ControlDescription& control : ConfigDialogControls()) {
      SCOPED_TRACE(control.id);
      HWND item = GetDlgItem(dialog, control.id);
      ASSERT_NE(item, nullptr);
      EXPECT_TRUE(IsWindowVisible(item));
      EXPECT_EQ(IsWindowEnabled(item) != 0, !disabled.contains(control.id));
      const LONG style = GetWindowLongA(item, GWL_STYLE);
      const bool edit =
          control.kind == platform::ControlKind::kEdit || control.kind == platform::ControlKind::kMultilineEdit;
      EXPECT_EQ(ClassOf(item), edit ? "Edit" : "Button");
      if (!edit) {
        EXPECT_EQ(win32::WindowText(item), control.text);
      }
      if (control.kind == platform::ControlKind::kRadio) {
        EXPECT_EQ(style & 0xF, BS_AUTORADIOBUTTON);
      }
      if (control.kind == platform::ControlKind::kCheck) {
        EXPECT_EQ(style & 0xF, BS_AUTOCHECKBOX);
      }
      if ((style & WS_TABSTOP) != 0) ++tab_stops;
      // Inside the dialog, and its text with it.
      RECT place;
      RECT area;
      GetWindowRect(item, &place);
      MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
      GetClientRect(dialog, &area);
      EXPECT_TRUE(place.left >= 0 && place.top >= 0 && place.right <= area.right && place.bottom <= area.bottom);
    }
    EXPECT_GE(tab_stops, 18);
    // The tabulator key visits them in the order of the description.
    HWND item = GetDlgItem(dialog, 1029);
    for (const platform::ControlDescription& control : ConfigDialogControls()) {
      HWND wanted = GetDlgItem(dialog, control.id);
      const bool visited = (GetWindowLongA(wanted, GWL_STYLE) & WS_TABSTOP) != 0 && IsWindowEnabled(wanted);
      if (!visited || control.id == 1029) continue;
      item = GetNextDlgTabItem(dialog, item, FALSE);
      EXPECT_EQ(item, wanted) << control.id;
    }
    // Edits take what files and paths may need, in any code page.
    std::string text(32000, '\xB8');
    for (std::size_t i = 1; i < text.size(); i += 3) text[i] = static_cast<char>(0x80 + i % 128);
    EnableWindow(GetDlgItem(dialog, 1041), TRUE);
    platform::automation::SetControl(1041, text);
    EXPECT_EQ(win32::WindowText(GetDlgItem(dialog, 1041)).size(), text.size());
    // A real click on one radio unchecks the others of its group, and changes what is enabled.
    SendMessageA(GetDlgItem(dialog, 1078), BM_CLICK, 0, 0);
    EXPECT_EQ(IsDlgButtonChecked(dialog, 1029), BST_UNCHECKED);
    EXPECT_EQ(IsDlgButtonChecked(dialog, 1078), BST_CHECKED);
    EXPECT_TRUE(IsWindowEnabled(GetDlgItem(dialog, 1041)));
    EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, 1044)));
  });
  ShowConfigDialog();
}

TEST_F(WindowsTest, ControlsDoNotOverlap) {
  MakeWindow();
  Then([] {
    HWND dialog = FindEnabled("#32770");
    std::vector<RECT> places;
    for (const platform::ControlDescription& control : ConfigDialogControls()) {
      RECT place;
      GetWindowRect(GetDlgItem(dialog, control.id), &place);
      for (const RECT& other : places) {
        RECT common;
        EXPECT_FALSE(IntersectRect(&common, &place, &other)) << control.id;
      }
      places.push_back(place);
    }
  });
  ShowConfigDialog();
}

// A picture that a worker draws while the window shows it.
class Picture : public platform::SurfaceWindowClient {
 public:
  static constexpr int kWidth = 64;
  static constexpr int kHeight = 40;

  void CopyPixels(std::uint32_t* to) override {
    const std::lock_guard lock(mutex_);
    std::copy(pixels_.begin(), pixels_.end(), to);
  }
  void OnKey(const platform::KeyPress& key) override {
    if (key.key == platform::Key::kEscape) window.Close();
  }
  void Fill(std::uint32_t colour) {
    for (std::uint32_t& pixel : pixels_) {
      const std::lock_guard lock(mutex_);
      pixel = colour;
    }
    window.Repaint();
  }
  platform::SurfaceWindow window;

 private:
  std::mutex mutex_;
  std::vector<std::uint32_t> pixels_ = std::vector<std::uint32_t>(kWidth * kHeight);
};

TEST_F(WindowsTest, ASurfaceIsShownWhileAWorkerDraws) {
  MakeWindow();
  Picture picture;
  std::atomic<bool> drawn = false;
  std::thread worker;
  Then([&] {
    worker = std::thread([&] {
      for (std::uint32_t i = 0; i < 50; ++i) picture.Fill(i << 16);
      picture.Fill(0x00123456);
      drawn = true;
    });
  });
  ThenAwait([&] { return drawn.load(); }, 500);
  Then([&] {
    worker.join();
    HWND window = FindEnabled(win32::kSurfaceClass);
    RECT area;
    GetClientRect(window, &area);
    EXPECT_EQ(area.right, Picture::kWidth);
    EXPECT_EQ(area.bottom, Picture::kHeight);
    UpdateWindow(window);
    HDC context = GetDC(window);
    EXPECT_EQ(GetPixel(context, 0, 0), RGB(0x12, 0x34, 0x56));
    EXPECT_EQ(GetPixel(context, Picture::kWidth - 1, Picture::kHeight - 1), RGB(0x12, 0x34, 0x56));
    ReleaseDC(window, context);
  });
  ThenKey("Esc");
  EXPECT_TRUE(picture.window.RunModal("PICTURE", Picture::kWidth, Picture::kHeight, &picture));
  EXPECT_TRUE(drawn);
}

TEST_F(WindowsTest, TheFileDialogLeavesTheCurrentFolderAlone) {
  MakeWindow();
  std::filesystem::create_directory("sub");
  const std::string before = platform::CurrentFolder();
  const std::string block("line\0", 5);
  platform::automation::QueueAnswer(platform::automation::AnswerKind::kText, "sub\\list");
  ThenKey("F9");
  ListWindow list({}, MakeBlockBody(block, 1));
  list.Show();
  EXPECT_EQ(platform::CurrentFolder(), before);
  EXPECT_EQ(ReadLines("sub\\list.txt"), "[]\n\nline\n");

  std::string path;
  platform::automation::QueueAnswer(platform::automation::AnswerKind::kText, "sub\\list.txt");
  EXPECT_TRUE(platform::AskFileToOpen({"Open", "txt", "Texts|*.txt||"}, &path));
  EXPECT_EQ(path, "sub\\list.txt") << "as the script has typed it";
  EXPECT_EQ(platform::CurrentFolder(), before);
}

constexpr int kFileName = 0x47C;  // of the common file dialogs

BOOL CALLBACK TakeFileDialog(HWND window, LPARAM found) {
  if (!IsWindowVisible(window) || GetDlgItem(window, kFileName) == nullptr) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

// A user's choice comes with its whole path: the profile keeps it, and the next start may be in another folder.
TEST_F(WindowsTest, AFileThatTheUserChoosesComesWithItsPath) {
  MakeWindow();
  std::ofstream("image.mcf") << "x";
  platform::automation::SetEventSource(nullptr);  // nobody answers by script
  std::thread user([host = GetCurrentThreadId()] {
    HWND dialog = nullptr;
    for (int i = 0; i < 500 && dialog == nullptr; ++i, Sleep(10)) {
      EnumThreadWindows(host, TakeFileDialog, reinterpret_cast<LPARAM>(&dialog));
    }
    SendMessageA(GetDlgItem(dialog, kFileName), WM_SETTEXT, 0, reinterpret_cast<LPARAM>("image.mcf"));
    PostMessageA(dialog, WM_COMMAND, IDOK, reinterpret_cast<LPARAM>(GetDlgItem(dialog, IDOK)));
  });
  std::string path;
  EXPECT_TRUE(platform::AskFileToOpen({"Open", "*.mcf", "MCFS Files (*.mcf)|*.mcf||"}, &path));
  user.join();
  EXPECT_EQ(path, platform::CurrentFolder() + "\\image.mcf");
}

TEST_F(WindowsTest, AProgressWindowShowsItsTextAndBar) {
  MakeWindow();
  platform::ProgressWindow progress("Reading \"RLIST   \"");
  HWND window = FindEnabled("#32770");
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(win32::WindowText(GetDlgItem(window, win32::kProgressText)), "Reading \"RLIST   \"");
  HWND bar = GetDlgItem(window, win32::kProgressBar);
  for (const int percent : {0, 50, 100}) {
    progress.SetPosition(percent);
    EXPECT_EQ(SendMessageA(bar, PBM_GETPOS, 0, 0), percent);
  }
  progress.SetText("Reading \"SLIST   \"");
  EXPECT_EQ(win32::WindowText(GetDlgItem(window, win32::kProgressText)), "Reading \"SLIST   \"");
}

LRESULT CALLBACK Throw(HWND, UINT, WPARAM, LPARAM) {
  throw std::bad_alloc();
}

TEST_F(WindowsTest, NoExceptionLeavesAProcedure) {
  HWND window = CreateWindowExA(0, "STATIC", "", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
  const LONG_PTR before = SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(win32::Sealed<Throw>));
  EXPECT_EQ(SendMessageA(window, WM_APP, 0, 0), 0);
  SetWindowLongPtrA(window, GWLP_WNDPROC, before);
  DestroyWindow(window);
}
}  // namespace
}  // namespace pelix
