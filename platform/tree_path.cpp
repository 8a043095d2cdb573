#include "platform/tree_path.h"

#include <algorithm>

#include "platform/format.h"

namespace platform {

void* FindTreeItem(const TreeWalk& tree, const std::string& path) {
  void* item = nullptr;
  for (std::size_t at = 0; at <= path.size();) {
    const std::size_t end = std::min(path.find('\\', at), path.size());
    const std::string part = path.substr(at, end - at);
    item = tree.first_child(item);
    while (item != nullptr && !EqualIgnoringCase(tree.text(item), part)) item = tree.next_sibling(item);
    if (item == nullptr) return nullptr;
    at = end + 1;
  }
  return item;
}

namespace {

void AddLines(const TreeWalk& tree, void* parent, std::size_t level, std::string* text) {
  for (void* item = tree.first_child(parent); item != nullptr; item = tree.next_sibling(item)) {
    *text += std::string(2 * level, ' ') + (tree.is_folder(item) ? "+ " : "- ") + tree.text(item) + "\n";
    AddLines(tree, item, level + 1, text);
  }
}

}  // namespace

std::string TreeLines(const TreeWalk& tree) {
  std::string text;
  AddLines(tree, nullptr, 0, &text);
  return text;
}

}  // namespace platform
