// The platform's tree control with its icons: what the main window is made of.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/tree_path.h"

namespace platform {

// Icons of 16 x 16 pixels in the display's own colour format, in the order in which they were added.
class ImageList {
 public:
  ImageList();
  ~ImageList();
  ImageList(const ImageList&) = delete;
  ImageList& operator=(const ImageList&) = delete;

  // No initial room; room is added `growth` images at a time.
  bool Create(int growth);
  // Appends an icon of the library's resources; false when there is none of that id.
  bool AppendIcon(int resource_id);

  struct Impl;
  Impl* impl() const { return impl_.get(); }

 private:
  std::unique_ptr<Impl> impl_;
};

// A tree with lines, buttons, lines at the root and the selection always shown. Used on the thread that made it.
class TreeControl {
 public:
  using Item = void*;  // null is the root above all items

  TreeControl();
  virtual ~TreeControl();
  TreeControl(const TreeControl&) = delete;
  TreeControl& operator=(const TreeControl&) = delete;

  // Makes it a visible child of `parent`, with an empty rectangle that the parent's owner sizes.
  bool Create(void* parent, int control_id);
  void SetImageList(const ImageList& images);
  void TakeFocus();

  // Appends to the parent's children. Image -1 is no icon.
  Item InsertItem(const std::string& text, int image, std::intptr_t data, Item parent);
  void DeleteAllItems();
  Item FirstChild(Item parent) const;  // null when there is none
  Item NextSibling(Item item) const;
  std::string ItemText(Item item) const;
  std::intptr_t ItemData(Item item) const;
  Item SelectedItem() const;
  // For finding and listing items by tree_path.h; valid while the tree lives.
  TreeWalk Walk() const;
  void ToggleExpansion(Item item);

  // Delivers a private message to this window and returns what OnMessage made of it.
  std::intptr_t SendPrivateMessage(unsigned message, std::uintptr_t first, std::uintptr_t second);

  struct Impl;
  Impl* impl() const { return impl_.get(); }

  // Called by the platform. Must not throw.
  virtual void OnActivate() = 0;  // Enter, or a double click of the left button
  virtual std::intptr_t OnMessage(unsigned message, std::uintptr_t first, std::uintptr_t second) = 0;

 private:
  std::unique_ptr<Impl> impl_;
};

// The window that the current thread's application counts as its main window, null when there is none.
void* ThreadMainWindow();

}  // namespace platform
