// The list window as a real one: its sizes, its scroll bar, the mouse, its system menu, its colours, its end.
#include <atomic>
#include <map>
#include <thread>

#include "tests/windows/windows_fixture.h"

namespace pelix {
namespace {

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
      {WM_LBUTTONUP, 0, 0, "line 10"},
      {WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-120)), 0, "line 13"},
      {WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-30)), 0, "line 13"},
      {WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-30)), 0, "line 14"},
      {WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(20)), 0, "line 14"},
      {WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(40)), 0, "line 13"},
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

TEST_F(ListTest, DraggingTheMouseSelectsAndScrolls) {
  const int height = platform::TextWindow::Metrics().line_height;
  const auto at = [height](int row) { return MAKELPARAM(5, row * height + 3); };
  Then([&] {
    SendMessageA(Body(), WM_LBUTTONDOWN, MK_LBUTTON, at(2));
    SendMessageA(Body(), WM_MOUSEMOVE, MK_LBUTTON, at(2));
    SendMessageA(Body(), WM_MOUSEMOVE, MK_LBUTTON, at(4));
    EXPECT_EQ(Current(), "line 4");
    for (int i = 0; i < 3; ++i) SendMessageA(Body(), WM_MOUSEMOVE, MK_LBUTTON, at(20));
    EXPECT_EQ(Current(), "line 10") << "below the last row it goes on";
    SendMessageA(Body(), WM_MOUSEMOVE, MK_LBUTTON, at(5));
    EXPECT_EQ(Current(), "line 8");
    SendMessageA(Body(), WM_LBUTTONUP, 0, at(5));
    SendMessageA(Body(), WM_MOUSEMOVE, MK_LBUTTON, at(0));
    EXPECT_EQ(Current(), "line 8") << "the button is up";
  });
  ThenKey("F11");
  Then([&] {
    SendMessageA(Body(), WM_LBUTTONDOWN, MK_LBUTTON, at(1));
    for (int i = 0; i < 20; ++i) SendMessageA(Body(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(5, -30));
    EXPECT_EQ(Current(), "line 0");
  });
  window_->Show();
  EXPECT_EQ(ReadLines(SerialNumber() + "-0000.txt"),
            "[List]\nHEAD & TAIL\nsecond\nline 2\nline 3\nline 4\nline 5\nline 6\nline 7\nline 8\n");
}

// With the real mouse: where the thumb is held is known only while it is. The display's own pointer may interfere, so
// the drag is tried until it succeeds.
TEST_F(ListTest, TheThumbGoesToItsLine) {
  std::atomic<bool> arrived = false;
  std::thread mouse;
  Then([&] {
    RECT body;
    GetWindowRect(Body(), &body);
    const int x = body.right - GetSystemMetrics(SM_CXVSCROLL) / 2;
    const int top = body.top + GetSystemMetrics(SM_CYVSCROLL) + 4;
    const int bottom = body.bottom - GetSystemMetrics(SM_CYVSCROLL) - 4;
    mouse = std::thread([x, top, bottom, &arrived] {
      for (int i = 0; i < 10 && !arrived; ++i) {
        SetCursorPos(x, top);
        mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
        Sleep(100);
        SetCursorPos(x, bottom);
        Sleep(100);
        mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
        Sleep(100);
      }
    });
  });
  const auto line = [] { return std::stoi("0" + Current().substr(std::min<std::size_t>(Current().size(), 5))); };
  ThenAwait(
      [&arrived, line] {
        arrived = line() > 80;
        return arrived.load();
      },
      500);
  Then([&mouse] { mouse.join(); });
  window_->Show();
  EXPECT_TRUE(arrived);
}

TEST_F(ListTest, IsAsHighAsItsLinesWhateverTheScreen) {
  ListPlan plan;
  plan.most_visible_lines = 100;
  ListWindow list(plan, MakeBlockBody(block_, 100));
  Then([] {
    const platform::TextWindowMetrics font = platform::TextWindow::Metrics();
    const int height = 100 * font.line_height + font.caption_height + font.top_edges + 2;
    ASSERT_GT(height, GetSystemMetrics(SM_CYSCREEN));
    RECT place;
    GetWindowRect(Frame(), &place);
    EXPECT_EQ(place.bottom - place.top, height);
    GetClientRect(Body(), &place);
    EXPECT_GE(place.bottom, 100 * font.line_height);
  });
  list.Show();
}

// Sent by another thread it is handled inside the call that waits for messages, which does not return for it.
TEST_F(ListTest, ClosesWhenAnotherThreadSendsTheMessage) {
  std::atomic<bool> closed = false;
  std::thread other;
  Then([&] {
    platform::automation::SetEventSource(nullptr);  // whose ticks would wake the loop
    other = std::thread([&closed, frame = Frame()] {
      Sleep(300);  // until the loop has nothing else to do
      SendMessageA(frame, WM_CLOSE, 0, 0);
      for (int i = 0; i < 300 && !closed; ++i) Sleep(10);
      EXPECT_TRUE(closed) << "it is still open";
      if (!closed) PostMessageA(frame, WM_NULL, 0, 0);
    });
  });
  window_->Show();
  closed = true;
  other.join();
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
  auto* host = static_cast<HWND>(platform::automation::HostWindow());
  bool after = false;
  Then([&] {
    HWND frame = Frame();
    PLUGIN_GetInfoStruct()->destroy();
    EXPECT_FALSE(IsWindow(frame)) << "it is gone when destroy returns";
    EXPECT_TRUE(IsWindowEnabled(host));
    after = true;
  });
  EXPECT_TRUE(window_->Show());
  EXPECT_TRUE(after);
  EXPECT_FALSE(g_main_window);
  // What the host had disabled stays so.
  EnableWindow(host, FALSE);
  Then([] {});
  window_->Show();
  EXPECT_FALSE(IsWindowEnabled(host));
  EnableWindow(host, TRUE);
  // As the host does it while a report stands open that the tree has started.
  Use({});
  ASSERT_TRUE(MakeWindow().Run());
  Then([] { PLUGIN_GetInfoStruct()->destroy(); });
  platform::automation::ActivateItem("ANALYSIS\\CSC ERROR FLAG");
  EXPECT_FALSE(g_main_window);
}
}  // namespace
}  // namespace pelix
