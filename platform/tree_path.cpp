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

}  // namespace platform
