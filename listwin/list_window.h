// The console-like window in which every text report ends: caption, header, scrolling lines, footer.
//
// Lines may hold the marker "@", which switches highlighting on and off and is not drawn. While a host script takes the
// output, a list is written to the script's file instead of being shown.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>

#include "listwin/list_body.h"
#include "platform/text_window.h"

namespace pelix {

// Keys that a report may handle, in slot order; the rest of the slots are filled from outside the keyboard.
inline constexpr int kSlotSpace = 0;
inline constexpr int kSlotEnter = 1;
inline constexpr int kSlotF1 = 2;  // F1 to F8 in a row
inline constexpr int kSlotInsert = 10;
inline constexpr int kSlotDelete = 11;
inline constexpr int kSlotDoubleClick = 12;
inline constexpr int kSlots = 20;

struct ListPlan {
  int x = 10;  // pixels on the screen
  int y = 10;
  std::size_t most_visible_lines = 40;
  std::size_t width = 80;  // characters
  std::string caption;
  std::string header;
  std::string footer;
};

class ListWindow : private platform::TextWindowClient {
 public:
  // Called with the current line's index, the key's slot and the item that was registered with it.
  using KeyHandler = std::function<void(std::size_t line, int slot, void* item)>;

  ListWindow(const ListPlan& plan, std::unique_ptr<ListBody> body);

  void SetKeyHandler(int slot, KeyHandler handler, void* item);

  // Runs modally until it is closed, or writes the list to the script's file. False when the window could not be made
  // or the file not written.
  bool Show();
  void Close() { window_.Close(); }

  // Writes caption, header and lines (the selected ones when a selection is active) in the saved form.
  using TextSink = std::function<bool(const std::string& text)>;
  bool WriteTo(const TextSink& sink);

 private:
  struct KeySlot {
    KeyHandler handler;
    void* item = nullptr;
  };

  platform::TextRow Row(int body_row) override;
  void OnKey(const platform::KeyPress& key) override;
  void OnScroll(platform::ScrollAction action, int thumb_line) override;
  void OnRowClick(int body_row, platform::RowClick click) override;
  void OnSystemItem() override;

  platform::TextWindowShape Layout() const;
  void HandleKey(const platform::KeyPress& key);
  void TakeBody(std::unique_ptr<ListBody> body);
  void MoveTo(std::size_t line, bool extend);
  void MoveBy(std::ptrdiff_t lines, bool extend);
  void MovePage(std::ptrdiff_t direction, bool extend);
  void KeepCurrentVisible();
  void CallHandler(int slot);
  // Until the line can be shown, under a progress window that says why nothing happens.
  void WaitForLine(std::size_t line);
  void SelectedRange(std::size_t* first, std::size_t* end);
  void SaveWithDialog();
  void SaveNumbered();
  void SaveAs(const std::string& path);
  void CopyToClipboard();

  ListPlan plan_;
  std::unique_ptr<ListBody> body_;
  std::size_t visible_lines_ = 0;
  std::size_t top_ = 0;
  std::size_t current_ = 0;
  std::size_t anchor_ = 0;
  std::size_t selection_end_ = 0;
  bool selecting_ = false;
  bool topmost_ = false;
  std::array<KeySlot, kSlots> slots_;
  platform::TextWindow window_;
};

// Splits a line at its markers.
std::vector<platform::TextSpan> MarkedSpans(const std::string& line);

// While set, lists go to this file instead of the screen.
inline platform::File* g_script_output = nullptr;
// Whether the main window has no time for key handlers now; null: it always has.
inline bool (*g_main_window_is_busy)() = nullptr;

}  // namespace pelix
