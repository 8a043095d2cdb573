#include "ui/main_window.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <new>

#include "drive/drive_identity.h"
#include "drive/host_services.h"
#include "reports/report_frame.h"
#include "ui/config_dialog.h"
#include "ui/menu_layout.h"
#include "ui/requests.h"
#include "ui/unavailable.h"

namespace pelix {
namespace {

constexpr int kImageListGrowth = 4;

constexpr char kUnsupported[] =
    "PELIX doesn't support this model,\n"
    "because this drive has unknown firmware revision prefix.\n"
    "But if you know which kind of model this drive is similar with,\n"
    "you can enter model name on PELIX Configuration dialog box.";
constexpr char kUnsupportedCommonHeader[] =
    "PELIX doesn't support this model on Common Header mode,\n"
    "because this drive has unknown firmware revision prefix.\n"
    "But if you know which kind of model this drive is similar with,\n"
    "you can enter model name on PELIX Configuration dialog box.";

ListPlan PlanOf(const ActionEntry& action) {
  ListPlan plan;
  plan.x = static_cast<int>(action.x);
  plan.y = static_cast<int>(action.y);
  plan.most_visible_lines = action.visible_lines;
  plan.width = action.line_width;
  plan.caption = action.title;
  plan.footer = "F9:Save";
  return plan;
}

// The window is busy while the object lives, or for as long as there is a window.
class BusyScope {
 public:
  explicit BusyScope(const std::shared_ptr<bool>& busy) : busy_(busy), before_(*busy) { *busy = true; }
  ~BusyScope() {
    if (const std::shared_ptr<bool> busy = busy_.lock()) *busy = before_;
  }
  BusyScope(const BusyScope&) = delete;
  BusyScope& operator=(const BusyScope&) = delete;
  bool WindowIsGone() const { return busy_.expired(); }

 private:
  std::weak_ptr<bool> busy_;
  bool before_;
};

}  // namespace

bool MainWindow::Initialise(void* parent_window) {
  return Create(parent_window, kTreeControlId) && images_.Create(kImageListGrowth);
}

// Position of the icon in the image list, which gets it when it is asked for the first time; -1 when there is none.
int MainWindow::IconIndex(int resource_id) {
  if (resource_id == 0) return -1;
  const auto known = std::find(icon_ids_.begin(), icon_ids_.end(), resource_id);
  if (known != icon_ids_.end()) return static_cast<int>(known - icon_ids_.begin());
  if (!images_.AppendIcon(resource_id)) return -1;
  icon_ids_.push_back(resource_id);
  SetImageList(images_);
  return static_cast<int>(icon_ids_.size()) - 1;
}

MainWindow::Item MainWindow::AddFolder(const char* text, Item parent, int icon) {
  if (action_count_ >= kMostActions) return nullptr;
  return InsertItem(text, IconIndex(icon == 0 ? kFolderIcon : icon), platform::kFolderData, parent);
}

MainWindow::Item MainWindow::AddEntry(const ActionEntry& entry, Item parent, int icon) {
  if (action_count_ >= kMostActions) return nullptr;
  const int image = IconIndex(icon == 0 ? kLeafIcon : icon);
  const Item item = InsertItem(entry.title, image, static_cast<std::intptr_t>(action_count_), parent);
  actions_[action_count_++] = entry;
  return item;
}

MainWindow::Item MainWindow::AddAction(const char* text, PlainHandler handler, Item parent, int icon, HostWord option) {
  ActionEntry entry = {};
  entry.plain = handler;
  entry.kind = ActionKind::kPlain;
  entry.option = option;
  entry.title = text;
  return AddEntry(entry, parent, icon);
}

MainWindow::Item MainWindow::AddRecordReport(const char* text, FixedReportHandler handler, const char* record,
                                             const ListPlace& place, Item parent, int icon, HostWord option) {
  ActionEntry entry = {};
  entry.fixed = handler;
  entry.kind = ActionKind::kFixedReport;
  entry.option = option;
  entry.record = record;
  entry.title = text;
  entry.x = place.x;
  entry.y = place.y;
  entry.visible_lines = place.visible_lines;
  entry.line_width = place.line_width;
  return AddEntry(entry, parent, icon);
}

MainWindow::Item MainWindow::AddRecordReportGrowing(const char* text, GrowingReportHandler handler, const char* record,
                                                    const ListPlace& place, Item parent, int icon, HostWord option) {
  const Item item = AddRecordReport(text, nullptr, record, place, parent, icon, option);
  if (item == nullptr) return nullptr;
  ActionEntry& entry = actions_[action_count_ - 1];
  entry.growing = handler;
  entry.kind = ActionKind::kGrowingReport;
  return item;
}

void MainWindow::StartMenu() {
  action_count_ = 0;
  DeleteAllItems();
  for (ActionEntry& action : actions_) action.plain = nullptr;
  AddAction("PELIX Config", ShowConfigDialog, nullptr, 0, 0);
}

bool MainWindow::Run() {
  const BusyScope rebuilding(busy_);
  std::srand(static_cast<unsigned>(std::time(nullptr)));
  TakeFocus();
  StartMenu();
  Identify(&*g_identity, true);  // without a drive the menu is that of the configured model
  if (rebuilding.WindowIsGone()) return false;
  if (action_count_ > 1) StartMenu();  // the host has run it again from inside a message box
  const bool common_header = g_identity->UsesCommonHeader();
  const MenuLayout layout = ChooseLayout(g_identity->model_index, common_header);
  if (layout == MenuLayout::kNone) {
    ShowMessage(common_header ? kUnsupportedCommonHeader : kUnsupported);
    return false;
  }
  BuildMenu(layout, g_identity->model_index, this);
  return true;
}

const ActionEntry* MainWindow::ActionOf(Item item) const {
  const std::intptr_t data = ItemData(item);
  const bool leaf = data >= 0 && static_cast<std::size_t>(data) < action_count_;
  return leaf ? &actions_[static_cast<std::size_t>(data)] : nullptr;
}

void MainWindow::OnActivate() {
  Guarded([this] { ActivateSelected(); });
}

void MainWindow::ActivateSelected() {
  const Item item = SelectedItem();
  if (item == nullptr) return;
  const ActionEntry* action = ActionOf(item);
  if (action == nullptr) return ToggleExpansion(item);
  const void* before = platform::ThreadMainWindow();
  const std::weak_ptr<bool> window = busy_;
  RunAction(ActionEntry(*action));  // a copy: the configuration dialog rebuilds the table
  if (!window.expired() && before != nullptr && platform::ThreadMainWindow() == before) TakeFocus();
}

bool ActionEntry::HasHandler() const {
  switch (kind) {
    case ActionKind::kPlain:
      return plain != nullptr;
    case ActionKind::kFixedReport:
      return fixed != nullptr;
    case ActionKind::kGrowingReport:
      break;
  }
  return growing != nullptr;
}

bool MainWindow::RunAction(const ActionEntry& action) {
  if (!action.HasHandler()) {
    ShowUnavailable();
    return false;
  }
  if (action.kind == ActionKind::kPlain) {
    action.plain();
  } else {
    RunRecordReport(action);
  }
  return true;
}

void MainWindow::RunRecordReport(const ActionEntry& action) {
  const Record record = FetchReportRecord(action.record);
  if (!record) return;
  if (action.kind == ActionKind::kGrowingReport) {
    ReportText text;
    if (text.Begin(kGrowingTextBytes) != 0) return;
    action.growing(&text, record.View());
    text.Finish();
    if (!text.Failed()) ShowReport(PlanOf(action), text.Text(), text.Lines());
    return;
  }
  const std::unique_ptr<char[]> text(new (std::nothrow) char[kFixedTextBytes]());
  if (text == nullptr) return;
  const int lines = action.fixed(record.View(), text.get());
  if (lines >= 0) ShowReport(PlanOf(action), {text.get(), kFixedTextBytes}, static_cast<std::size_t>(lines));
}

std::intptr_t MainWindow::OnMessage(unsigned message, std::uintptr_t first, std::uintptr_t second) {
  if (message != kRequestMessage) return 0;
  bool done = false;
  Guarded([&] {
    const BusyScope working(busy_);
    done = RunRequest(first, *reinterpret_cast<const RequestBlock*>(second));
  });
  return done ? 0 : kRequestFailed;
}

}  // namespace pelix
