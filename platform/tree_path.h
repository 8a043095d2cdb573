// Finding a tree item by the texts on the way to it, whoever holds the tree.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace platform {

struct TreeWalk {
  std::function<void*(void* parent)> first_child;  // null: none; the root is null
  std::function<void*(void* item)> next_sibling;
  std::function<std::string(void* item)> text;
  std::function<bool(void* item)> is_folder;
};

// `path` is item texts separated by "\", matched ignoring case from the root down, each against the children of the
// item before it; the first that matches is taken. Null when a part matches no item.
void* FindTreeItem(const TreeWalk& tree, const std::string& path);

// The whole tree: two blanks a level, "+ " for a folder or "- " for a leaf, the item's text; a line each.
std::string TreeLines(const TreeWalk& tree);

// A folder is an item whose data names no action, whether or not it holds any.
inline constexpr std::intptr_t kFolderData = -1;

}  // namespace platform
