#include "platform/tree_control.h"

#include <algorithm>
#include <array>
#include <deque>
#include <vector>

#include "platform/headless/desktop.h"
#include "platform/tree_path.h"

namespace platform {
namespace {

// The icons in the plug-in's resources: folder, report leaf, visual leaf.
constexpr std::array kIconResources = {168, 169, 170};

struct Node {
  std::string text;
  int image = -1;
  std::intptr_t data = 0;
  std::vector<Node*> children;
  Node* next = nullptr;
  bool expanded = false;
};

}  // namespace

struct ImageList::Impl {
  std::vector<int> icons;
};

ImageList::ImageList() : impl_(std::make_unique<Impl>()) {}
ImageList::~ImageList() = default;

bool ImageList::Create(int) {
  impl_->icons.clear();
  return true;
}

bool ImageList::AppendIcon(int resource_id) {
  if (std::find(kIconResources.begin(), kIconResources.end(), resource_id) == kIconResources.end()) return false;
  impl_->icons.push_back(resource_id);
  return true;
}

struct TreeControl::Impl {
  std::deque<Node> nodes;  // an item is the address of its node
  Node root;
  Node* selected = nullptr;

  Node* NodeOf(Item item) { return item == nullptr ? &root : static_cast<Node*>(item); }
};

TreeControl::TreeControl() : impl_(std::make_unique<Impl>()) {}

TreeControl::~TreeControl() {
  std::erase(headless::Desktop::Instance().trees, this);
}

bool TreeControl::Create(void*, int) {
  headless::Desktop::Instance().trees.push_back(this);
  return true;
}

void TreeControl::SetImageList(const ImageList&) {}
void TreeControl::TakeFocus() {}

TreeControl::Item TreeControl::InsertItem(const std::string& text, int image, std::intptr_t data, Item parent) {
  Node* above = impl_->NodeOf(parent);
  Node& node = impl_->nodes.emplace_back();
  node.text = text;
  node.image = image;
  node.data = data;
  if (!above->children.empty()) above->children.back()->next = &node;
  above->children.push_back(&node);
  return &node;
}

void TreeControl::DeleteAllItems() {
  impl_->root = Node();
  impl_->selected = nullptr;
  impl_->nodes.clear();
}

TreeControl::Item TreeControl::FirstChild(Item parent) const {
  const Node* above = impl_->NodeOf(parent);
  return above->children.empty() ? nullptr : above->children.front();
}

TreeControl::Item TreeControl::NextSibling(Item item) const {
  return impl_->NodeOf(item)->next;
}

std::string TreeControl::ItemText(Item item) const {
  return impl_->NodeOf(item)->text;
}

std::intptr_t TreeControl::ItemData(Item item) const {
  return impl_->NodeOf(item)->data;
}

TreeControl::Item TreeControl::SelectedItem() const {
  return impl_->selected;
}

TreeWalk TreeControl::Walk() const {
  return {[this](void* parent) { return FirstChild(parent); }, [this](void* item) { return NextSibling(item); },
          [this](void* item) { return ItemText(item); }, [this](void* item) { return ItemData(item) == kFolderData; }};
}

void TreeControl::ToggleExpansion(Item item) {
  Node* node = impl_->NodeOf(item);
  node->expanded = !node->expanded;
}

std::intptr_t TreeControl::SendPrivateMessage(unsigned message, std::uintptr_t first, std::uintptr_t second) {
  return OnMessage(message, first, second);
}

void* ThreadMainWindow() {
  return automation::HostWindow();
}

automation::Outcome automation::ActivateItem(const std::string& path) {
  const headless::Desktop& desktop = headless::Desktop::Instance();
  if (desktop.trees.empty() || !desktop.modals.empty()) return Outcome::kNoTarget;  // a modal window is in front
  TreeControl& tree = *desktop.trees.back();
  void* item = FindTreeItem(tree.Walk(), path);
  if (item == nullptr) return Outcome::kNoTarget;
  tree.impl()->selected = static_cast<Node*>(item);
  tree.OnActivate();
  return Outcome::kDone;
}

}  // namespace platform
