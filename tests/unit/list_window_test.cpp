#include "listwin/list_window.h"

#include <filesystem>
#include <fstream>

#include "tests/support/plugin_test.h"

namespace pelix {
namespace {

std::string Block(int lines) {
  std::string block;
  for (int i = 0; i < lines; ++i) block += platform::Format("line %d", i) + '\0';
  return block;
}

class ListWindowTest : public PluginTest {
 protected:
  // A window of five visible lines.
  static ListPlan Plan() {
    ListPlan plan;
    plan.most_visible_lines = 5;
    plan.width = 30;
    plan.caption = "List";
    plan.header = "HEAD";
    plan.footer = "F9:Save";
    return plan;
  }
  void Open(int lines) {
    block_ = Block(lines);
    body_lines_ = static_cast<std::size_t>(lines);
    window_ = std::make_unique<ListWindow>(Plan(), MakeBlockBody(block_, body_lines_));
  }
  void OpenStream(const std::string& text, std::size_t lines = kUnknownLineCount, const std::string& index = "") {
    std::ofstream("body.txt", std::ios::binary) << text;
    window_ = std::make_unique<ListWindow>(Plan(), OpenStreamBody("body.txt", lines, index));
  }
  void Show() { EXPECT_TRUE(window_->Show()); }
  std::string Saved() {
    std::string text;
    window_->WriteTo([&](const std::string& piece) {
      text += piece;
      return true;
    });
    return text;
  }

  std::string block_;
  std::size_t body_lines_ = 0;
  std::unique_ptr<ListWindow> window_;
};

TEST_F(ListWindowTest, KeysMoveTheCurrentLineAndTheView) {
  const struct {
    std::vector<const char*> keys;
    const char* body;  // first visible line, current line
  } cases[] = {
      {{}, "0 0"},
      {{"Down"}, "0 1"},
      {{"Up"}, "0 0"},
      {{"Down", "Down", "Down", "Down", "Down"}, "1 5"},
      {{"PgDn"}, "5 5"},
      {{"PgDn", "PgDn"}, "7 10"},
      {{"PgDn", "PgDn", "PgDn"}, "7 11"},
      {{"End"}, "7 11"},
      {{"End", "Up", "Up", "Up", "Up", "Up"}, "6 6"},
      {{"End", "PgUp"}, "2 6"},
      {{"End", "PgUp", "PgUp", "PgUp"}, "0 0"},
      {{"End", "Home"}, "0 0"},
      {{"End", "Down"}, "7 11"},
  };
  for (const auto& c : cases) {
    Open(12);
    std::string shown;
    for (const char* key : c.keys) ThenKey(key);
    ThenShow(&shown);
    Show();
    int first = 0;
    int current = 0;
    ASSERT_EQ(std::sscanf(c.body, "%d %d", &first, &current), 2);
    std::string expected = "List\nHEAD\n";
    for (int line = first; line < first + 5; ++line) {
      expected += platform::Format("%cline %d\n", line == current ? '>' : ' ', line);
    }
    EXPECT_EQ(shown, expected + "F9:Save\n") << c.body;
  }
}

TEST_F(ListWindowTest, AnEmptyBodyIsOneLineThatSaysSo) {
  ListPlan plan = Plan();
  plan.header = "";
  ListWindow window(plan, MakeBlockBody({}, 0));
  std::string shown;
  ThenShow(&shown);
  ThenKey("F11");
  window.Show();
  EXPECT_EQ(shown, "List\n>************************* Empty *************************\nF9:Save\n");
  EXPECT_EQ(ReadLines(SerialNumber() + "-0000.txt"),
            "[List]\n\n************************* Empty *************************\n");
}

TEST_F(ListWindowTest, MarkersHighlightAndAreNotDrawn) {
  auto spans = [](const std::string& line) {
    std::string text;
    for (const platform::TextSpan& span : MarkedSpans(line)) {
      text += platform::Format("%d%s<%s>", span.column, span.highlighted ? "!" : "", span.text.c_str());
    }
    return text;
  };
  EXPECT_EQ(spans("a @word@ b"), "0<a >2!<word>6< b>");
  EXPECT_EQ(spans("@@x@y"), "0<x>1!<y>");
  EXPECT_EQ(spans("open @end"), "0<open >5!<end>");
  EXPECT_EQ(spans(""), "");
  EXPECT_EQ(spans("@"), "");
}

TEST_F(ListWindowTest, SelectionsAreSavedAndCopied) {
  const struct {
    std::vector<const char*> keys;
    int first, last;  // -1: all lines
  } cases[] = {
      {{}, 0, 11},
      {{"Shift+Down", "Shift+Down"}, 0, 2},
      {{"Down", "Down", "Shift+Up"}, 1, 2},
      {{"PgDn", "PgDn", "Shift+Home"}, 0, 10},
      {{"Down", "Shift+End"}, 1, 11},
      {{"Shift+PgDn", "Shift+Up"}, 0, 4},
      {{"Shift+Down", "Down"}, 0, 11},
      {{"Shift+Down", "Down", "Shift+Down"}, 2, 3},
  };
  for (const auto& c : cases) {
    Open(12);
    for (const char* key : c.keys) ThenKey(key);
    ThenKey("Ctrl+C");
    platform::automation::QueueAnswer(platform::automation::AnswerKind::kText, "saved");
    ThenKey("F9");
    Show();
    std::string saved = "[List]\nHEAD\n";
    std::string copied;
    for (int line = c.first; line <= c.last; ++line) {
      saved += platform::Format("line %d\n", line);
      copied += platform::Format("line %d\r\n", line);
    }
    EXPECT_EQ(ReadLines("saved.txt"), saved) << c.first;
    const std::string block = platform::automation::ClipboardBlock();
    EXPECT_GE(block.size(), (12u + 2) * 503) << "the system may round it up";
    EXPECT_LE(block.size(), (12u + 2) * 503 + 64);
    EXPECT_EQ(block.substr(0, copied.size()), copied);
    EXPECT_EQ(block.find_first_not_of('\0', copied.size()), std::string::npos);
    std::filesystem::remove("saved.txt");
  }
}

TEST_F(ListWindowTest, SavingAsksBeforeItOverwritesAndTellsWhenItFails) {
  Open(2);
  std::ofstream("old.txt") << "old";
  using platform::automation::AnswerKind;
  using platform::automation::QueueAnswer;
  QueueAnswer(AnswerKind::kText, "old.txt");
  QueueAnswer(AnswerKind::kNo, "");
  ThenKey("F9");
  Then([] { EXPECT_EQ(ReadLines("old.txt"), "old"); });
  QueueAnswer(AnswerKind::kText, "old.txt");
  QueueAnswer(AnswerKind::kYes, "");
  ThenKey("F9");
  Then([] { EXPECT_EQ(ReadLines("old.txt"), "[List]\nHEAD\nline 0\nline 1\n"); });
  QueueAnswer(AnswerKind::kCancel, "");
  ThenKey("F9");
  Show();
  const std::string question = "old.txt already exists.\nDo you want to replace it?";
  EXPECT_EQ(messages(), (Messages{question, question}));
}

TEST_F(ListWindowTest, ReportsHandleTheirKeys) {
  Open(12);
  struct Call {
    std::size_t line;
    int slot;
    void* item;
    bool operator==(const Call&) const = default;
  };
  std::vector<Call> calls;
  int item = 0;
  for (int slot = 0; slot < kSlots; ++slot) {
    if (slot == kSlotInsert) continue;
    window_->SetKeyHandler(
        slot,
        [&](std::size_t line, int key, void* data) {
          calls.push_back({line, key, data});
        },
        slot == kSlotEnter ? &item : nullptr);
  }
  for (const char* key : {"Space", "Down", "Enter", "F1", "F8", "Insert", "Delete", "F10", "Left"}) ThenKey(key);
  static bool busy = false;
  g_main_window_is_busy = [] { return busy; };
  Then([] { busy = true; });
  ThenKey("Enter");
  Then([] { busy = false; });
  Show();
  EXPECT_EQ(calls,
            (std::vector<Call>{{0, 0, nullptr}, {1, 1, &item}, {1, 2, nullptr}, {1, 9, nullptr}, {1, 11, nullptr}}));
}

TEST_F(ListWindowTest, TheCaptionMayCarryTheSerialNumber) {
  identity().display_serial_number = true;
  Open(1);
  EXPECT_EQ(Saved(), "[List - " + SerialNumber() + "]\nHEAD\nline 0\n");
}

TEST_F(ListWindowTest, AScriptTakesTheListInsteadOfTheScreen) {
  platform::File file = platform::File::Open("out.txt", "a");
  g_script_output = &file;
  Open(2);
  Then([] { FAIL() << "no window may open"; });
  Show();
  g_script_output = nullptr;
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(ReadLines("out.txt"), "[List]\nHEAD\nline 0\nline 1\n");
}

TEST_F(ListWindowTest, ABlockThatEndsEarlyHasFewerLines) {
  const std::string block = std::string("one\0two", 7);
  ListWindow window(Plan(), MakeBlockBody(block, 9));
  std::string shown;
  ThenShow(&shown);
  window.Show();
  EXPECT_EQ(shown, "List\nHEAD\n>one\n two\nF9:Save\n");
}

TEST_F(ListWindowTest, StreamsAreReadLineByLine) {
  const std::string long_line(2500, 'x');
  OpenStream("first\r\n\n" + long_line + "\n@mark@\nlast");
  std::string shown;
  ThenKey("End");
  ThenShow(&shown);
  Show();
  EXPECT_EQ(shown, "List\nHEAD\n " + std::string(1000, 'x') + "\n " + std::string(1000, 'x') + "\n " +
                       std::string(500, 'x') + "\n mark\n>last\nF9:Save\n");
  EXPECT_EQ(Saved(), "[List]\nHEAD\nfirst\n\n" + std::string(1000, 'x') + "\n" + std::string(1000, 'x') + "\n" +
                         std::string(500, 'x') + "\n@mark@\nlast\n");
}

TEST_F(ListWindowTest, CopyingAStreamWaitsForAllOfIt) {
  std::string text;
  for (int i = 0; i < 100000; ++i) text += "x\n";
  OpenStream(text);
  ThenKey("Ctrl+C");
  Show();
  EXPECT_GE(platform::automation::ClipboardBlock().size(), 100002u * 503);
  OpenStream(std::string(1000, 'y') + "\r\nz\r\n");
  EXPECT_EQ(Saved(), "[List]\nHEAD\n" + std::string(1000, 'y') + "\nz\n");
}

// The stream is read a megabyte at a time; a line end that falls between two is still one.
TEST_F(ListWindowTest, ALineEndMayFallBetweenTwoReads) {
  constexpr std::size_t kPiece = 1024 * 1024;
  std::string before;
  while (before.size() < kPiece - 1002) before += "x\n";
  for (const std::size_t more : {0u, 1u, 2u}) {
    const std::string line = std::string(1000, 'y');
    OpenStream(before + std::string(more, '\n') + line + "\r\nz\r");
    const std::string saved = Saved();
    EXPECT_EQ(saved.substr(saved.size() - 1003), line + "\nz\n") << more;
    OpenStream(line + "\r");
    EXPECT_EQ(Saved(), "[List]\nHEAD\n" + line + "\n");
  }
}

TEST_F(ListWindowTest, OfAStreamTheLargerEndOfASelectionIsLeftOut) {
  OpenStream("a\nb\nc\nd\n");
  ThenKey("Down");
  ThenKey("Shift+Down");
  ThenKey("Shift+Down");
  ThenKey("F11");
  Show();
  EXPECT_EQ(ReadLines(SerialNumber() + "-0000.txt"), "[List]\nHEAD\nb\nc\n");
}

TEST_F(ListWindowTest, ManyLinesAreFoundAgain) {
  std::string text;
  for (int i = 0; i < 200000; ++i) text += platform::Format("%d\n", i);
  OpenStream(text, 200000);
  std::string shown;
  ThenKey("End");
  ThenShow(&shown);
  Show();
  EXPECT_EQ(shown, "List\nHEAD\n 199995\n 199996\n 199997\n 199998\n>199999\nF9:Save\n");
  EXPECT_EQ(Saved().size(), text.size() + std::string("[List]\nHEAD\n").size());
  std::filesystem::resize_file("body.txt", 6);
  EXPECT_EQ(Saved().substr(0, 20), "[List]\nHEAD\n0\n1\n2\n\n\n") << "a file that shrinks leaves empty lines";
}

TEST_F(ListWindowTest, IndexFilesAreBelievedOnlyWhenTheyCanBeTrue) {
  const std::string text = "aa\nbb\ncc\n";
  const struct {
    std::vector<std::uint32_t> index;
    const char* body;
  } cases[] = {
      {{0, 3, 6}, " aa\n bb\n>cc\n"},  // true
      {{1, 4, 7}, " a\n b\n>c\n"},     // believed: where lines start is the report's to say
      {{0, 3}, " aa\n bb\n>cc\n"},     // too short
      {{0, 3, 3}, " aa\n bb\n>cc\n"},  // does not rise
      {{0, 3, 9}, " aa\n bb\n>cc\n"},  // past the end
  };
  for (const auto& c : cases) {
    RecordBytes bytes(c.index.size() * 4);
    for (std::size_t i = 0; i < c.index.size(); ++i) bytes.Le(4 * i, c.index[i], 4);
    WriteBytes("index.bin", bytes.Get());
    OpenStream(text, 3, "index.bin");
    std::string shown;
    ThenKey("End");
    ThenShow(&shown);
    Show();
    EXPECT_EQ(shown, std::string("List\nHEAD\n") + c.body + "F9:Save\n");
  }
  EXPECT_EQ(OpenStreamBody("none.txt", 0, ""), nullptr);
}

TEST_F(ListWindowTest, AnEmptyStreamIsAnEmptyList) {
  OpenStream("");
  EXPECT_EQ(Saved(), "[List]\nHEAD\n************************* Empty *************************\n");
}

}  // namespace
}  // namespace pelix
