// The main window: the tree of analyses for the identified drive, and what happens when one is chosen.
#pragma once

#include <array>
#include <memory>
#include <vector>

#include "platform/process_wide.h"
#include "platform/tree_control.h"
#include "ui/action_entry.h"

namespace pelix {

inline constexpr int kTreeControlId = 10000;
inline constexpr std::size_t kMostActions = 1000;
inline constexpr int kFolderIcon = 168;
inline constexpr int kLeafIcon = 169;
inline constexpr int kVisualIcon = 170;

// Where a record report's list window stands and how large it is.
struct ListPlace {
  HostWord x, y, visible_lines, line_width;
};

class MainWindow : public platform::TreeControl {
 public:
  // Makes the tree control a child of the host's window.
  bool Initialise(void* parent_window);

  // Identifies the drive and rebuilds the menu for it. False when there is no menu for the drive's model; the message
  // has been shown.
  bool Run();

  // Items are appended to their parent's children; icon 0 is the folder's or leaf's own. Beyond kMostActions actions
  // nothing is added and null comes back.
  Item AddFolder(const char* text, Item parent, int icon);
  Item AddAction(const char* text, PlainHandler handler, Item parent, int icon, HostWord option);
  Item AddRecordReport(const char* text, FixedReportHandler handler, const char* record, const ListPlace& place,
                       Item parent, int icon, HostWord option);
  Item AddRecordReportGrowing(const char* text, GrowingReportHandler handler, const char* record,
                              const ListPlace& place, Item parent, int icon, HostWord option);

  // The leaf's action, null for a folder.
  const ActionEntry* ActionOf(Item item) const;
  // False when this version does not have the analysis; it has said so.
  bool RunAction(const ActionEntry& action);

  std::size_t action_count() const { return action_count_; }
  // While it is busy, list windows leave their key handlers alone.
  bool IsBusy() const { return *busy_; }

 private:
  void OnActivate() override;
  std::intptr_t OnMessage(unsigned message, std::uintptr_t first, std::uintptr_t second) override;

  void ActivateSelected();
  Item AddEntry(const ActionEntry& entry, Item parent, int icon);
  // The menu without a drive: the configuration alone.
  void StartMenu();
  int IconIndex(int resource_id);
  void RunRecordReport(const ActionEntry& action);

  std::size_t action_count_ = 0;
  std::array<ActionEntry, kMostActions> actions_ = {};  // those beyond the count are not in use
  platform::ImageList images_;
  std::vector<int> icon_ids_;  // resource id of every image, by its position
  // Gone with this object, which operations that show windows have to notice: whoever handles messages meanwhile may
  // destroy it.
  std::shared_ptr<bool> busy_ = std::make_shared<bool>(false);
};

inline platform::ProcessWide<MainWindow> g_main_window;

}  // namespace pelix
