// Progress of a headless run: a line on standard error, and only for somebody who watches it on a terminal.
#include "platform/progress_window.h"

#include <cstdio>
#include <unistd.h>

namespace platform {

struct ProgressWindow::Impl {
  void Print() const {
    if (watched) std::fprintf(stderr, "\r\033[K%s %d%%", text.c_str(), percent);
  }

  bool watched = isatty(STDERR_FILENO) != 0;
  std::string text;
  int percent = 0;
};

ProgressWindow::ProgressWindow(const std::string& text) : impl_(std::make_unique<Impl>()) {
  SetText(text);
}

ProgressWindow::~ProgressWindow() {
  if (impl_->watched) std::fputs("\r\033[K", stderr);
}

void ProgressWindow::SetText(const std::string& text) {
  impl_->text = text;
  impl_->Print();
}

void ProgressWindow::SetPosition(int percent) {
  impl_->percent = percent;
  impl_->Print();
}

}  // namespace platform
