// A small window with a text and a bar, open while the object lives.
#pragma once

#include <memory>
#include <string>

namespace platform {

class ProgressWindow {
 public:
  explicit ProgressWindow(const std::string& text);
  ~ProgressWindow();
  ProgressWindow(const ProgressWindow&) = delete;
  ProgressWindow& operator=(const ProgressWindow&) = delete;

  void SetText(const std::string& text);
  void SetPosition(int percent);  // 0 to 100

  struct Impl;

 private:
  std::unique_ptr<Impl> impl_;
};

}  // namespace platform
