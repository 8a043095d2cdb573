// Finding a tree item by the texts on the way to it, whoever holds the tree.
#pragma once

#include <functional>
#include <string>

namespace platform {

struct TreeWalk {
  std::function<void*(void* parent)> first_child;  // null: none; the root is null
  std::function<void*(void* item)> next_sibling;
  std::function<std::string(void* item)> text;
};

// `path` is item texts separated by "\", matched ignoring case from the root down, each against the children of the
// item before it; the first that matches is taken. Null when a part matches no item.
void* FindTreeItem(const TreeWalk& tree, const std::string& path);

}  // namespace platform
