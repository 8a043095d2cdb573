#include "platform/text_window.h"

#include "platform/headless/desktop.h"

namespace platform {

struct TextWindow::Impl : headless::ModalWindow {
  void OnKey(const KeyPress& key) override { client->OnKey(key); }
  std::string Show() override;

  TextWindowShape shape;
  TextWindowClient* client = nullptr;
  std::string system_item;
  bool topmost = false;
};

namespace {

void AddBlock(const std::string& block, std::string* text) {
  if (!block.empty()) *text += block + "\n";
}

}  // namespace

std::string TextWindow::Impl::Show() {
  std::string text = shape.caption + "\n";
  AddBlock(shape.header, &text);
  for (int row = 0; row < shape.body_rows; ++row) {
    const TextRow content = client->Row(row);
    text += content.current ? '>' : ' ';
    for (const TextSpan& span : content.spans) text += span.text;
    text += '\n';
  }
  AddBlock(shape.footer, &text);
  return text;
}

TextWindow::TextWindow() : impl_(std::make_unique<Impl>()) {}
TextWindow::~TextWindow() = default;

// FixedSys at 10 points on a display of 96 dots an inch, and the classic window trimmings.
TextWindowMetrics TextWindow::Metrics() {
  return {.character_width = 8,
          .line_height = 15,
          .scroll_bar_width = 16,
          .side_edges = 10,
          .top_edges = 10,
          .caption_height = 19};
}

bool TextWindow::RunModal(const TextWindowShape& shape, const std::string& system_item, TextWindowClient* client) {
  impl_->shape = shape;
  impl_->system_item = system_item;
  impl_->client = client;
  impl_->RunModal();
  return true;
}

void TextWindow::Close() {
  impl_->Close();
}
void TextWindow::Refresh(int, int) {}
void TextWindow::SetTopmost(bool topmost) {
  impl_->topmost = topmost;
}
void TextWindow::RenameSystemItem(const std::string& text) {
  impl_->system_item = text;
}

}  // namespace platform
