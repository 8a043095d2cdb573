// What only real windows can show: their styles, controls, messages and what they leave behind.
#include <atomic>
#include <cstring>
#include <fstream>
#include <map>
#include <mutex>
#include <set>
#include <thread>

#include "platform/modal_windows.h"
#include "platform/surface_window.h"
#include "platform/win32/windows_api.h"
#include "plugin/plugin_entry.h"
#include "standin/plugin_session.h"
#include "tests/support/plugin_test.h"
#include "ui/config_dialog.h"
#include "ui/main_window.h"

namespace pelix {
namespace {

namespace win32 = platform::win32;

std::string ClassOf(HWND window) {
  char name[64] = {};
  GetClassNameA(window, name, sizeof name);
  return name;
}

struct Wanted {
  const char* class_name;
  HWND found;
};
BOOL CALLBACK TakeEnabled(HWND window, LPARAM data) {
  auto* wanted = reinterpret_cast<Wanted*>(data);
  if (ClassOf(window) != wanted->class_name || !IsWindowVisible(window) || !IsWindowEnabled(window)) return TRUE;
  wanted->found = window;
  return FALSE;
}

// The topmost window of that class that takes input now.
HWND FindEnabled(const char* class_name) {
  Wanted wanted = {class_name, nullptr};
  EnumThreadWindows(GetCurrentThreadId(), TakeEnabled, reinterpret_cast<LPARAM>(&wanted));
  return wanted.found;
}

BOOL CALLBACK CountOurs(HWND window, LPARAM data) {
  // The host's window stays, and so do the helpers that the system makes for a thread.
  const std::string name = ClassOf(window);
  if (name.rfind("Pelix", 0) == 0 || name == "#32770") ++*reinterpret_cast<std::size_t*>(data);
  return TRUE;
}

std::size_t WindowCount() {
  std::size_t count = 0;
  EnumThreadWindows(GetCurrentThreadId(), CountOurs, reinterpret_cast<LPARAM>(&count));
  return count;
}

void Pump() {
  MSG message;
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
}

class WindowsTest : public PluginTest {
 protected:
  ~WindowsTest() override {
    Stop();
    Pump();
    EXPECT_EQ(win32::OpenHandles(), 0) << "handles or windows of ours were left";
    EXPECT_EQ(WindowCount(), 0u);
  }
  MainWindow& MakeWindow() {
    CWnd parent = {};
    parent.window = platform::automation::HostWindow();
    PLUGIN_GetInfoStruct()->create(&parent);
    return *g_main_window;
  }
  HWND Tree() { return GetDlgItem(static_cast<HWND>(platform::automation::HostWindow()), kTreeControlId); }
};

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

// A list of 100 lines of which eight are seen, below a header of two lines.
class ListTest : public WindowsTest {
 protected:
  ListTest() {
    for (int i = 0; i < 100; ++i) block_ += platform::Format("line %d", i) + '\0';
    ListPlan plan;
    plan.x = 40;
    plan.y = 30;
    plan.most_visible_lines = 8;
    plan.width = 50;
    plan.caption = "List";
    plan.header = "HEAD & TAIL\nsecond";
    plan.footer = "F9:Save";
    MakeWindow();
    window_ = std::make_unique<ListWindow>(plan, MakeBlockBody(block_, 100));
  }
  static HWND Frame() { return FindEnabled(win32::kListClass); }
  static HWND Body() { return GetDlgItem(Frame(), win32::kBodyId); }
  static std::string Current() {
    const std::string text = win32::WindowText(Body());
    const std::size_t at = text.find('>');
    return at == std::string::npos ? "" : text.substr(at + 1, text.find('\n', at) - at - 1);
  }

  std::string block_;
  std::unique_ptr<ListWindow> window_;
};

TEST_F(ListTest, ItsSizesFollowTheFont) {
  Then([] {
    const platform::TextWindowMetrics font = platform::TextWindow::Metrics();
    RECT place;
    GetWindowRect(Frame(), &place);
    EXPECT_EQ(place.left, 40);
    EXPECT_EQ(place.top, 30);
    EXPECT_EQ(place.right - place.left, 50 * font.character_width + font.scroll_bar_width + font.side_edges);
    EXPECT_EQ(place.bottom - place.top, (2 + 8 + 1) * font.line_height + font.caption_height + font.top_edges + 2);
    EXPECT_EQ(win32::WindowText(Frame()), "List");
    EXPECT_EQ(win32::WindowText(GetDlgItem(Frame(), win32::kHeaderId)), "HEAD & TAIL\nsecond");
    EXPECT_EQ(win32::WindowText(GetDlgItem(Frame(), win32::kFooterId)), "F9:Save");
    HWND frame = Frame();
    EXPECT_FALSE(IsWindowEnabled(static_cast<HWND>(platform::automation::HostWindow()))) << "the list is modal";
    // The parts fill the frame without a gap and without covering one another.
    RECT parts[3];
    const int ids[] = {win32::kHeaderId, win32::kBodyId, win32::kFooterId};
    for (int i = 0; i < 3; ++i) GetWindowRect(GetDlgItem(frame, ids[i]), &parts[i]);
    EXPECT_EQ(parts[0].bottom, parts[1].top);
    EXPECT_EQ(parts[1].bottom, parts[2].top);
    EXPECT_GE(parts[1].bottom - parts[1].top, 8 * font.line_height + 1);
  });
  window_->Show();
}

TEST_F(ListTest, TheScrollBarAndTheMouseMoveTheCurrentLine) {
  struct Step {
    UINT message;
    WPARAM first;
    LPARAM second;
    const char* current;
  };
  const int height = platform::TextWindow::Metrics().line_height;
  const Step steps[] = {
      {WM_VSCROLL, SB_LINEDOWN, 0, "line 1"},
      {WM_VSCROLL, SB_PAGEDOWN, 0, "line 9"},
      {WM_VSCROLL, SB_LINEUP, 0, "line 8"},
      {WM_VSCROLL, SB_PAGEUP, 0, "line 0"},
      {WM_KEYDOWN, VK_END, 1, "line 99"},
      {WM_KEYDOWN, VK_HOME, 1, "line 0"},
      {WM_KEYDOWN, VK_NEXT, 1, "line 8"},
      {WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 2 * height + 3), "line 10"},
      {WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-120)), 0, "line 13"},
  };
  for (const Step& step : steps) {
    Then([step] {
      SendMessageA(Body(), step.message, step.first, step.second);
      EXPECT_EQ(Current(), step.current);
      SCROLLINFO info = {};
      info.cbSize = sizeof info;
      info.fMask = SIF_ALL;
      GetScrollInfo(Body(), SB_VERT, &info);
      EXPECT_EQ(info.nMin, 0);
      EXPECT_EQ(info.nMax, 99);
      EXPECT_EQ("line " + std::to_string(info.nPos), step.current);
    });
  }
  // Shift and a click select from the current line on; a double click is the report's.
  int double_clicked = -1;
  window_->SetKeyHandler(
      kSlotDoubleClick, [&](std::size_t line, int, void*) { double_clicked = static_cast<int>(line); }, nullptr);
  Then([height] {
    SendMessageA(Body(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 1));
    SendMessageA(Body(), WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, MAKELPARAM(5, 3 * height + 3));
  });
  ThenKey("F11");
  Then([height] { SendMessageA(Body(), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(5, height + 3)); });
  window_->Show();
  EXPECT_EQ(ReadLines(SerialNumber() + "-0000.txt"), "[List]\nHEAD & TAIL\nsecond\nline 8\nline 9\nline 10\nline 11\n");
  EXPECT_EQ(double_clicked, 9);
}

TEST_F(ListTest, TheSystemMenuKeepsItOnTop) {
  const auto item = [] {
    char text[32] = {};
    HMENU menu = GetSystemMenu(Frame(), FALSE);
    EXPECT_EQ(GetMenuItemID(menu, 5), 135u);
    GetMenuStringA(menu, 135, text, sizeof text, MF_BYCOMMAND);
    return std::string(text) + ((GetWindowLongA(Frame(), GWL_EXSTYLE) & WS_EX_TOPMOST) != 0 ? " on" : " off");
  };
  Then([item] {
    EXPECT_EQ(item(), "&Set OnTop off");
    SendMessageA(Frame(), WM_SYSCOMMAND, 135, 0);
    EXPECT_EQ(item(), "&Reset OnTop on");
    SendMessageA(Frame(), WM_SYSCOMMAND, 135, 0);
    EXPECT_EQ(item(), "&Set OnTop off");
  });
  window_->Show();
}

TEST_F(ListTest, DrawsHighlightsAndTheCurrentLine) {
  const std::string marked("a @word@\0b @word@", 17);
  ListPlan plan;
  plan.width = 20;
  ListWindow list(plan, MakeBlockBody(marked, 2));
  Then([] {
    const platform::TextWindowMetrics font = platform::TextWindow::Metrics();
    UpdateWindow(Body());
    HDC context = GetDC(Body());
    std::map<COLORREF, int> seen[2];
    for (int row = 0; row < 2; ++row) {
      for (int x = 0; x < 7 * font.character_width; ++x) {
        for (int y = 0; y < font.line_height; ++y) {
          ++seen[row][GetPixel(context, x, row * font.line_height + 1 + y)];
        }
      }
      // "word" stands highlighted behind two characters, the markers themselves are nowhere.
      EXPECT_EQ(GetPixel(context, 2 * font.character_width, row * font.line_height + 1), RGB(255, 255, 0));
      EXPECT_EQ(GetPixel(context, 6 * font.character_width + 1, row * font.line_height + 1), RGB(255, 255, 255));
    }
    ReleaseDC(Body(), context);
    EXPECT_GT(seen[0][RGB(0, 0, 255)], 10) << "the current line has a colour of its own";
    EXPECT_EQ(seen[0][RGB(0, 0, 0)], 0);
    EXPECT_GT(seen[1][RGB(0, 0, 0)], 10);
    EXPECT_EQ(seen[1][RGB(0, 0, 255)], 0);
  });
  list.Show();
}

TEST_F(ListTest, LongTextsOfAnyCodePageAreShown) {
  std::string text(32000, '\xB8');
  for (std::size_t i = 1; i < text.size(); i += 3) text[i] = static_cast<char>(0x80 + i % 128);
  ListPlan plan;
  plan.caption = text.substr(0, 200);
  ListWindow list(plan, MakeBlockBody(text, 1));
  std::string shown;
  ThenShow(&shown);
  list.Show();
  EXPECT_EQ(shown.size(), plan.caption.size() + 1 + 1 + text.size() + 1);
}

TEST_F(ListTest, DestroyClosesWhatIsOpen) {
  bool after = false;
  Then([&after] {
    PLUGIN_GetInfoStruct()->destroy();
    after = true;
  });
  EXPECT_TRUE(window_->Show());
  EXPECT_TRUE(after);
  EXPECT_FALSE(g_main_window);
  // As the host does it while a report stands open that the tree has started.
  Use({});
  ASSERT_TRUE(MakeWindow().Run());
  Then([] { PLUGIN_GetInfoStruct()->destroy(); });
  platform::automation::ActivateItem("ANALYSIS\\CSC ERROR FLAG");
  EXPECT_FALSE(g_main_window);
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
  for (int i = 0; i < 20; ++i) Then([] { Sleep(5); });
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
}

std::string LibraryPath() {
  return platform::ProgramFolder() + "\\" + platform::SharedLibraryFile("pelix");
}

class LibraryTest : public WindowsTest {
 protected:
  LibraryTest() { Stop(); }
};

TEST_F(LibraryTest, LoadsAndUnloadsAHundredTimesAndLeavesNothing) {
  const std::string folder = platform::CurrentFolder();
  for (int i = 0; i < 100; ++i) {
    standin::PluginSession session;
    std::string error;
    ASSERT_TRUE(session.Open(
        LibraryPath(), platform::automation::HostWindow(), [](const char*) {}, &error))
        << error;
    EXPECT_TRUE(session.Run());
    if (i % 10 == 0) {
      ThenKey("Esc");
      platform::automation::ActivateItem("ANALYSIS\\CSC ERROR FLAG");
    }
    EXPECT_NE(Tree(), nullptr);
    session.Close();
    Pump();
    ASSERT_EQ(GetModuleHandleA("pelix.dll"), nullptr) << "still loaded";
    EXPECT_EQ(Tree(), nullptr);
    EXPECT_EQ(WindowCount(), 0u);
    WNDCLASSA known = {};
    EXPECT_FALSE(GetClassInfoA(nullptr, win32::kListClass, &known)) << "a window class was left";
  }
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
