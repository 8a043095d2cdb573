#include "platform/tree_control.h"

#include "platform/tree_path.h"
#include "platform/win32/windows_api.h"

namespace platform {
namespace {

constexpr int kIconPixels = 16;
constexpr std::size_t kLongestItem = 32000;

// Messages from here to below the end are the plug-in's private ones; the control's own lie elsewhere.
constexpr UINT kFirstPrivateMessage = WM_USER + 0x1000;
constexpr UINT kPrivateMessagesEnd = WM_USER + 0x1100;

HWND host_parent;  // what the tree was made a child of

void* FirstTreeItem(HWND tree, void* parent) {
  return parent == nullptr ? TreeView_GetRoot(tree) : TreeView_GetChild(tree, static_cast<HTREEITEM>(parent));
}

std::string TreeItemText(HWND tree, void* item) {
  std::string text(kLongestItem, '\0');
  TVITEMA asked = {};
  asked.mask = TVIF_TEXT | TVIF_HANDLE;
  asked.hItem = static_cast<HTREEITEM>(item);
  asked.pszText = text.data();
  asked.cchTextMax = static_cast<int>(text.size());
  SendMessageA(tree, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&asked));
  return asked.pszText;
}

std::intptr_t TreeItemData(HWND tree, void* item) {
  TVITEMA asked = {};
  asked.mask = TVIF_PARAM | TVIF_HANDLE;
  asked.hItem = static_cast<HTREEITEM>(item);
  SendMessageA(tree, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&asked));
  return asked.lParam;
}

}  // namespace

struct ImageList::Impl {
  win32::OwnedImageList list;
};

ImageList::ImageList() : impl_(std::make_unique<Impl>()) {}
ImageList::~ImageList() = default;

bool ImageList::Create(int growth) {
  impl_->list = win32::OwnedImageList(ImageList_Create(kIconPixels, kIconPixels, ILC_COLORDDB | ILC_MASK, 0, growth));
  return static_cast<bool>(impl_->list);
}

bool ImageList::AppendIcon(int resource_id) {
  HICON icon = static_cast<HICON>(
      LoadImageA(win32::ThisModule(), MAKEINTRESOURCEA(resource_id), IMAGE_ICON, kIconPixels, kIconPixels, LR_SHARED));
  return icon != nullptr && ImageList_AddIcon(impl_->list.get(), icon) != -1;
}

struct TreeControl::Impl {
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second);

  TreeControl* owner = nullptr;
  HWND window = nullptr;
  WNDPROC original = nullptr;
};

// Enter and double clicks are the tree's own before the control sees them; the rest is the control's.
LRESULT CALLBACK TreeControl::Impl::Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  auto* impl = reinterpret_cast<Impl*>(GetWindowLongPtrA(window, GWLP_USERDATA));
  TreeControl* owner = impl->owner;
  WNDPROC original = impl->original;
  switch (message) {
    case WM_GETDLGCODE:
      // A host whose loop handles dialog keys leaves Enter to the tree; Tab and the others stay the host's.
      return CallWindowProcA(original, window, message, first, second) | (first == VK_RETURN ? DLGC_WANTMESSAGE : 0);
    case WM_CHAR:
      if (first == VK_RETURN) return 0;
      break;
    case WM_KEYDOWN:
      if (first != VK_RETURN) break;
      owner->OnActivate();
      return 0;
    case WM_LBUTTONDBLCLK:
      owner->OnActivate();
      return 0;
    case WM_NCDESTROY:
      impl->window = nullptr;
      --win32::OpenHandles();
      SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(original));
      break;
    default:
      if (message >= kFirstPrivateMessage && message < kPrivateMessagesEnd) {
        return owner->OnMessage(message, first, static_cast<std::uintptr_t>(second));
      }
      break;
  }
  return CallWindowProcA(original, window, message, first, second);
}

TreeControl::TreeControl() : impl_(std::make_unique<Impl>()) {
  impl_->owner = this;
}

TreeControl::~TreeControl() {
  if (impl_->window != nullptr) DestroyWindow(impl_->window);
}

bool TreeControl::Create(void* parent, int control_id) {
  const INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_TREEVIEW_CLASSES};
  InitCommonControlsEx(&controls);
  host_parent = static_cast<HWND>(parent);
  const DWORD style =
      WS_CHILD | WS_VISIBLE | WS_TABSTOP | TVS_HASLINES | TVS_HASBUTTONS | TVS_LINESATROOT | TVS_SHOWSELALWAYS;
  impl_->window =
      CreateWindowExA(0, WC_TREEVIEWA, "", style, 0, 0, 0, 0, host_parent,
                      reinterpret_cast<HMENU>(static_cast<INT_PTR>(control_id)), win32::ThisModule(), nullptr);
  if (impl_->window == nullptr) return false;
  ++win32::OpenHandles();
  SetWindowLongPtrA(impl_->window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(impl_.get()));
  impl_->original = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrA(impl_->window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(win32::Sealed<Impl::Procedure>)));
  return true;
}

void TreeControl::SetImageList(const ImageList& images) {
  TreeView_SetImageList(impl_->window, images.impl()->list.get(), TVSIL_NORMAL);
}

void TreeControl::TakeFocus() {
  SetFocus(impl_->window);
}

TreeControl::Item TreeControl::InsertItem(const std::string& text, int image, std::intptr_t data, Item parent) {
  TVINSERTSTRUCTA insert = {};
  insert.hParent = parent == nullptr ? TVI_ROOT : static_cast<HTREEITEM>(parent);
  insert.hInsertAfter = TVI_LAST;
  insert.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
  insert.item.pszText = const_cast<char*>(text.c_str());
  insert.item.iImage = image;
  insert.item.iSelectedImage = image;
  insert.item.lParam = data;
  return reinterpret_cast<Item>(SendMessageA(impl_->window, TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&insert)));
}

void TreeControl::DeleteAllItems() {
  TreeView_DeleteAllItems(impl_->window);
}

TreeControl::Item TreeControl::FirstChild(Item parent) const {
  return Walk().first_child(parent);
}

TreeControl::Item TreeControl::NextSibling(Item item) const {
  return Walk().next_sibling(item);
}

std::string TreeControl::ItemText(Item item) const {
  return Walk().text(item);
}

std::intptr_t TreeControl::ItemData(Item item) const {
  return TreeItemData(impl_->window, item);
}

TreeControl::Item TreeControl::SelectedItem() const {
  return TreeView_GetSelection(impl_->window);
}

TreeWalk TreeControl::Walk() const {
  return win32::WalkTree(impl_->window);
}

void TreeControl::ToggleExpansion(Item item) {
  TreeView_Expand(impl_->window, static_cast<HTREEITEM>(item), TVE_TOGGLE);
}

std::intptr_t TreeControl::SendPrivateMessage(unsigned message, std::uintptr_t first, std::uintptr_t second) {
  return SendMessageA(impl_->window, message, first, static_cast<LPARAM>(second));
}

void* ThreadMainWindow() {
  return IsWindow(host_parent) ? GetAncestor(host_parent, GA_ROOT) : nullptr;
}

TreeWalk win32::WalkTree(HWND tree) {
  return {[tree](void* parent) { return FirstTreeItem(tree, parent); },
          [tree](void* item) -> void* { return TreeView_GetNextSibling(tree, static_cast<HTREEITEM>(item)); },
          [tree](void* item) { return TreeItemText(tree, item); },
          [tree](void* item) { return TreeItemData(tree, item) == kFolderData; }};
}

}  // namespace platform
