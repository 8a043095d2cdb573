#include "listwin/list_window.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "drive/drive_identity.h"
#include "drive/host_services.h"
#include "drive/output_names.h"
#include "platform/clipboard.h"
#include "platform/prompts.h"

namespace pelix {
namespace {

using platform::Key;
using platform::KeyPress;
using platform::TextSpan;

constexpr char kEmptyBody[] = "************************* Empty *************************";
constexpr char kSetOnTop[] = "&Set OnTop";
constexpr char kResetOnTop[] = "&Reset OnTop";
constexpr char kSaveFailed[] = "Failed to save a file.\n";
constexpr char kCopyFailed[] = "Failed to copy to the clipboard.\n";
constexpr char kMarker = '@';
constexpr std::size_t kAllLines = SIZE_MAX;  // to wait for

std::size_t LineCountOf(const std::string& block) {
  if (block.empty()) return 0;
  return 1 + static_cast<std::size_t>(std::count(block.begin(), block.end(), '\n'));
}

std::string CaptionOf(const std::string& caption) {
  return g_identity->display_serial_number ? caption + " - " + SerialNumber() : caption;
}

// The slot of a key that only a report gives a meaning to.
std::optional<int> SlotOf(Key key) {
  if (key >= Key::kF1 && key <= Key::kF8) return kSlotF1 + (static_cast<int>(key) - static_cast<int>(Key::kF1));
  switch (key) {
    case Key::kSpace:
      return kSlotSpace;
    case Key::kEnter:
      return kSlotEnter;
    case Key::kInsert:
      return kSlotInsert;
    case Key::kDelete:
      return kSlotDelete;
    default:
      return std::nullopt;
  }
}

}  // namespace

std::vector<TextSpan> MarkedSpans(const std::string& line) {
  std::vector<TextSpan> spans;
  int column = 0;
  bool highlighted = false;
  for (std::size_t at = 0; at <= line.size();) {
    const std::size_t end = std::min(line.find(kMarker, at), line.size());
    if (end > at) {
      spans.push_back({column, highlighted, line.substr(at, end - at)});
      column += static_cast<int>(end - at);
    }
    highlighted = !highlighted;
    at = end + 1;
  }
  return spans;
}

ListWindow::ListWindow(const ListPlan& plan, std::unique_ptr<ListBody> body) : plan_(plan) {
  plan_.caption = CaptionOf(plan.caption);
  TakeBody(std::move(body));
  visible_lines_ = std::min(body_->LineCount(), plan_.most_visible_lines);
}

void ListWindow::TakeBody(std::unique_ptr<ListBody> body) {
  body_ = std::move(body);
  // A stream whose length nobody knows has no lines until the first are found.
  while (body_->LineCount() == 0 && !body_->WaitForLine(0)) {
  }
  if (body_->LineCount() != 0) return;
  body_ = MakeBlockBody(kEmptyBody, 1);
  plan_.width = std::strlen(kEmptyBody);
}

void ListWindow::SetKeyHandler(int slot, KeyHandler handler, void* item) {
  slots_[static_cast<std::size_t>(slot)] = {std::move(handler), item};
}

platform::TextWindowShape ListWindow::Layout() const {
  const platform::TextWindowMetrics metrics = platform::TextWindow::Metrics();
  platform::TextWindowShape shape;
  shape.x = plan_.x;
  shape.y = plan_.y;
  shape.header_lines = static_cast<int>(LineCountOf(plan_.header));
  shape.body_rows = static_cast<int>(visible_lines_);
  shape.footer_lines = static_cast<int>(LineCountOf(plan_.footer));
  shape.width = static_cast<int>(plan_.width) * metrics.character_width + metrics.scroll_bar_width + metrics.side_edges;
  shape.height = (shape.header_lines + shape.body_rows + shape.footer_lines) * metrics.line_height +
                 metrics.caption_height + metrics.top_edges + 2;
  shape.caption = plan_.caption;
  shape.header = plan_.header;
  shape.footer = plan_.footer;
  return shape;
}

bool ListWindow::Show() {
  if (g_script_output != nullptr) {
    return WriteTo([](const std::string& text) { return g_script_output->Write(text); });
  }
  topmost_ = false;
  return window_.RunModal(Layout(), kSetOnTop, this);
}

void ListWindow::WaitForLine(std::size_t line) {
  if (body_->WaitForLine(line)) return;
  Progress progress("Please Wait... formatting");
  while (!body_->WaitForLine(line)) progress.SetPosition(body_->Percent());
}

platform::TextRow ListWindow::Row(int body_row) {
  platform::TextRow row;
  Guarded([&] {
    if (body_row == 0) WaitForLine(top_);
    const std::size_t line = top_ + static_cast<std::size_t>(body_row);
    std::size_t first = 0;
    std::size_t end = 0;
    SelectedRange(&first, &end);
    row.current = line == current_;
    row.selected = selecting_ && line >= first && line <= end;
    row.spans = MarkedSpans(body_->Line(line));
  });
  return row;
}

void ListWindow::MoveTo(std::size_t line, bool extend) {
  const std::size_t count = std::max<std::size_t>(body_->LineCount(), 1);
  current_ = std::min(line, count - 1);
  selection_end_ = current_;
  selecting_ = extend;
  if (!extend) anchor_ = current_;
  KeepCurrentVisible();
}

void ListWindow::KeepCurrentVisible() {
  if (current_ < top_) top_ = current_;
  if (current_ >= top_ + visible_lines_) top_ = current_ - visible_lines_ + 1;
}

void ListWindow::MoveBy(std::ptrdiff_t lines, bool extend) {
  const auto target = static_cast<std::ptrdiff_t>(current_) + lines;
  MoveTo(static_cast<std::size_t>(std::max<std::ptrdiff_t>(target, 0)), extend);
}

void ListWindow::MovePage(std::ptrdiff_t direction, bool extend) {
  const std::size_t count = body_->LineCount();
  const std::size_t last_top = count > visible_lines_ ? count - visible_lines_ : 0;
  if (direction < 0) {
    top_ -= std::min(top_, visible_lines_);
  } else {
    top_ = std::min(top_ + visible_lines_, last_top);
  }
  MoveBy(direction * static_cast<std::ptrdiff_t>(visible_lines_), extend);
}

void ListWindow::OnKey(const KeyPress& key) {
  Guarded([&] {
    HandleKey(key);
    window_.Refresh(static_cast<int>(current_), static_cast<int>(body_->LineCount()));
  });
}

void ListWindow::HandleKey(const KeyPress& key) {
  switch (key.key) {
    case Key::kEscape:
      return Close();
    case Key::kUp:
      return MoveBy(-1, key.shift);
    case Key::kDown:
      return MoveBy(1, key.shift);
    case Key::kPageUp:
      return MovePage(-1, key.shift);
    case Key::kPageDown:
      return MovePage(1, key.shift);
    case Key::kHome:
      return MoveTo(0, key.shift);
    case Key::kEnd:
      WaitForLine(kAllLines);
      return MoveTo(body_->LineCount() - 1, key.shift);
    case Key::kC:
      return CopyToClipboard();
    case Key::kF9:
      return SaveWithDialog();
    case Key::kF11:
      return SaveNumbered();
    default:
      break;
  }
  if (const std::optional<int> slot = SlotOf(key.key)) CallHandler(*slot);
}

void ListWindow::CallHandler(int slot) {
  if (g_main_window_is_busy != nullptr && g_main_window_is_busy()) return;
  const KeySlot& registered = slots_[static_cast<std::size_t>(slot)];
  if (registered.handler != nullptr) registered.handler(current_, slot, registered.item);
}

void ListWindow::OnScroll(platform::ScrollAction action, int thumb_line) {
  Guarded([&] {
    switch (action) {
      case platform::ScrollAction::kLineUp:
        MoveBy(-1, false);
        break;
      case platform::ScrollAction::kLineDown:
        MoveBy(1, false);
        break;
      case platform::ScrollAction::kPageUp:
        MovePage(-1, false);
        break;
      case platform::ScrollAction::kPageDown:
        MovePage(1, false);
        break;
      case platform::ScrollAction::kThumb:
        MoveTo(static_cast<std::size_t>(std::max(thumb_line, 0)), false);
        break;
    }
    window_.Refresh(static_cast<int>(current_), static_cast<int>(body_->LineCount()));
  });
}

void ListWindow::OnRowClick(int body_row, platform::RowClick click) {
  Guarded([&] {
    const auto line = static_cast<std::ptrdiff_t>(top_) + body_row;
    MoveTo(static_cast<std::size_t>(std::max<std::ptrdiff_t>(line, 0)), click == platform::RowClick::kShiftClick);
    if (click == platform::RowClick::kDoubleClick) CallHandler(kSlotDoubleClick);
    window_.Refresh(static_cast<int>(current_), static_cast<int>(body_->LineCount()));
  });
}

void ListWindow::OnSystemItem() {
  topmost_ = !topmost_;
  window_.SetTopmost(topmost_);
  window_.RenameSystemItem(topmost_ ? kResetOnTop : kSetOnTop);
}

// The smaller and the larger end of the selection.
void ListWindow::SelectedRange(std::size_t* first, std::size_t* end) {
  *first = std::min(anchor_, selection_end_);
  *end = std::max(anchor_, selection_end_);
}

bool ListWindow::WriteTo(const TextSink& sink) {
  std::size_t first = 0;
  std::size_t end = 0;
  if (selecting_) {
    SelectedRange(&first, &end);
    if (!body_->IsStream()) ++end;  // of a stream the larger end is left out
  } else {
    WaitForLine(kAllLines);
    end = body_->LineCount();
  }
  return sink(platform::Format("[%s]\n", plan_.caption.c_str())) && sink(plan_.header + "\n") &&
         body_->VisitLines(first, end, [&](const std::string& line) { return sink(line + "\n"); });
}

void ListWindow::SaveAs(const std::string& path) {
  platform::ReplacingFile file;
  const bool saved =
      file.Open(path, "w") && WriteTo([&](const std::string& text) { return file.Write(text); }) && file.Commit();
  if (!saved) ShowMessage(kSaveFailed);
}

void ListWindow::SaveWithDialog() {
  const platform::FileDialog dialog = {"Save List", "txt", "Text Files(*.txt)|*.txt||"};
  std::string path;
  if (platform::AskFileToSave(dialog, &path)) SaveAs(path);
}

void ListWindow::SaveNumbered() {
  SaveAs(NumberedFile("", FirstFreeFile("", ".txt"), ".txt"));
}

void ListWindow::CopyToClipboard() {
  constexpr std::uint64_t kBytesPerLine = 503;
  constexpr std::uint64_t kLargestBlock = 0x7FFF'FFFF;
  WaitForLine(kAllLines);
  std::size_t first = 0;
  std::size_t end = body_->LineCount();
  if (selecting_) {
    SelectedRange(&first, &end);
    end = std::min(end + 1, body_->LineCount());
  }
  const std::uint64_t size = (std::uint64_t{body_->LineCount()} + 2) * kBytesPerLine;
  const auto fill = [&](char* block) {
    std::size_t used = 0;
    body_->VisitLines(first, end, [&](const std::string& line) {
      const std::string text = line + "\r\n";
      if (text.size() >= size - used) return false;  // the block ends with a zero
      std::memcpy(block + used, text.data(), text.size());
      used += text.size();
      return true;
    });
  };
  if (size > kLargestBlock || !platform::SetClipboardText(static_cast<std::size_t>(size), fill)) {
    ShowMessage(kCopyFailed);
  }
}

}  // namespace pelix
