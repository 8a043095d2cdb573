#include "ui/menu_layout.h"

#include <array>

#include "ui/main_window.h"

namespace pelix {
namespace {

struct LayoutRow {
  bool standard_header, common_header;
  std::int32_t first_model, last_model;
  MenuLayout layout;
};

const LayoutRow kLayouts[] = {
    {true, false, 29, 52, MenuLayout::kA}, {true, false, 53, 56, MenuLayout::kB}, {true, true, 57, 57, MenuLayout::kD},
    {true, false, 58, 59, MenuLayout::kA}, {true, false, 60, 62, MenuLayout::kC}, {true, false, 63, 64, MenuLayout::kA},
    {false, true, 38, 42, MenuLayout::kE}, {false, true, 51, 51, MenuLayout::kF}, {false, true, 52, 52, MenuLayout::kG},
    {false, true, 60, 60, MenuLayout::kH}, {false, true, 61, 61, MenuLayout::kI}, {false, true, 62, 62, MenuLayout::kJ},
    {false, true, 63, 64, MenuLayout::kK},
};

constexpr std::size_t kDeepest = 8;
constexpr HostWord kListX = 10;
constexpr HostWord kListY = 10;

platform::TreeControl::Item AddRow(const MenuRow& row, platform::TreeControl::Item parent, MainWindow* window) {
  const ListPlace place = {kListX, kListY, row.visible_lines, row.line_width};
  switch (row.kind) {
    case MenuItemKind::kFolder:
      return window->AddFolder(row.text, parent, row.icon);
    case MenuItemKind::kPlain:
      return window->AddAction(row.text, row.plain, parent, row.icon, row.option);
    case MenuItemKind::kFixedReport:
      return window->AddRecordReport(row.text, row.fixed, row.record, place, parent, row.icon, row.option);
    case MenuItemKind::kGrowingReport:
      break;
  }
  return window->AddRecordReportGrowing(row.text, row.growing, row.record, place, parent, row.icon, row.option);
}

}  // namespace

MenuLayout ChooseLayout(std::int32_t model_index, bool common_header) {
  for (const LayoutRow& row : kLayouts) {
    if (!(common_header ? row.common_header : row.standard_header)) continue;
    if (model_index >= row.first_model && model_index <= row.last_model) return row.layout;
  }
  return MenuLayout::kNone;
}

bool Applies(ModelRule rule, std::int32_t model_index) {
  const bool is_32_or_33 = model_index == 32 || model_index == 33;
  const bool is_63_or_64 = model_index == 63 || model_index == 64;
  const bool is_58_to_61 = model_index >= 58 && model_index <= 61;
  switch (rule) {
    case ModelRule::kAny:
      break;
    case ModelRule::k32And33:
      return is_32_or_33;
    case ModelRule::k63And64:
      return is_63_or_64;
    case ModelRule::kNot63And64:
      return !is_63_or_64;
    case ModelRule::k58To61:
      return is_58_to_61;
    case ModelRule::kNoBurnInSplit:
      return !is_32_or_33 && !is_63_or_64 && !is_58_to_61;
    case ModelRule::kBelow58:
      return model_index < 58;
    case ModelRule::kFrom58:
      return model_index >= 58;
  }
  return true;
}

void BuildMenu(MenuLayout layout, std::int32_t model_index, MainWindow* window) {
  const auto layout_bit = static_cast<std::uint16_t>(1u << static_cast<unsigned>(layout));
  std::array<platform::TreeControl::Item, kDeepest> folders = {};  // by depth, [0] the root
  std::size_t left_out = kDeepest;  // depth of the folder whose contents are being left out with it
  for (const MenuRow& row : MenuRows()) {
    if (row.depth > left_out) continue;
    left_out = kDeepest;
    if ((row.layouts & layout_bit) == 0 || !Applies(row.rule, model_index)) {
      if (row.kind == MenuItemKind::kFolder) left_out = row.depth;
      continue;
    }
    const auto item = AddRow(row, folders[row.depth], window);
    if (row.kind == MenuItemKind::kFolder) folders[row.depth + 1u] = item;
  }
}

}  // namespace pelix
