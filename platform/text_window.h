// A modal window of fixed-pitch text: a header block, body rows with a scroll bar, a footer block. It knows where
// things stand and what the user did; what rows say and what keys mean is its client's.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/keys.h"

namespace platform {

// Pixel sizes of the font (FixedSys, 10 points) and of a window's trimmings.
struct TextWindowMetrics {
  int character_width;
  int line_height;
  int scroll_bar_width;
  int side_edges;  // edge and frame, left and right together
  int top_edges;   // edge and frame, top and bottom together
  int caption_height;
};

struct TextWindowShape {
  int x, y, width, height;  // pixels on the screen
  int header_lines, body_rows, footer_lines;
  std::string caption, header, footer;
};

struct TextSpan {
  int column;  // characters from the left
  bool highlighted;
  std::string text;
};
struct TextRow {
  bool current = false;
  bool selected = false;
  std::vector<TextSpan> spans;
};

enum class ScrollAction { kLineUp, kLineDown, kPageUp, kPageDown, kThumb };
enum class RowClick { kClick, kShiftClick, kDoubleClick };

// Called by the platform on the window's thread. Must not throw.
class TextWindowClient {
 public:
  virtual ~TextWindowClient() = default;
  virtual TextRow Row(int body_row) = 0;
  virtual void OnKey(const KeyPress& key) = 0;
  virtual void OnScroll(ScrollAction action, int thumb_line) = 0;
  virtual void OnRowClick(int body_row, RowClick click) = 0;
  virtual void OnSystemItem() = 0;  // the added item of the system menu
};

class TextWindow {
 public:
  TextWindow();
  ~TextWindow();
  TextWindow(const TextWindow&) = delete;
  TextWindow& operator=(const TextWindow&) = delete;

  static TextWindowMetrics Metrics();

  // Opens the window, adds the system menu item (command 135, position 5) and returns when the window has closed.
  // False when it could not be made.
  bool RunModal(const TextWindowShape& shape, const std::string& system_item, TextWindowClient* client);

  void Close();
  // Scroll bar over 0 to lines - 1, and a redraw of the rows.
  void Refresh(int position, int lines);
  void SetTopmost(bool topmost);
  void RenameSystemItem(const std::string& text);

  struct Impl;

 private:
  std::unique_ptr<Impl> impl_;
};

}  // namespace platform
