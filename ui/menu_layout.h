// The analysis menus: which layout a drive gets, and what stands in it.
#pragma once

#include <cstdint>
#include <span>

#include "ui/action_entry.h"

namespace pelix {

class MainWindow;

enum class MenuLayout { kA, kB, kC, kD, kE, kF, kG, kH, kI, kJ, kK, kNone };

MenuLayout ChooseLayout(std::int32_t model_index, bool common_header);

// Which models of a layout have an item.
enum class ModelRule : std::uint8_t {
  kAny,
  k32And33,
  k63And64,
  kNot63And64,
  k58To61,
  kNoBurnInSplit,  // neither 32 and 33, 58 to 61, nor 63 and 64
  kBelow58,
  kFrom58,
};
bool Applies(ModelRule rule, std::int32_t model_index);

enum class MenuItemKind : std::uint8_t { kFolder, kPlain, kFixedReport, kGrowingReport };

// One item; its folder is the last row before it with a smaller depth. A null handler: not in this version.
struct MenuRow {
  std::uint8_t depth;
  const char* text;
  std::uint16_t layouts;  // bit n: layout n holds it
  ModelRule rule;
  MenuItemKind kind;
  int icon;  // 0: the kind's own
  HostWord option;
  PlainHandler plain;
  FixedReportHandler fixed;
  GrowingReportHandler growing;
  const char* record;
  std::uint16_t visible_lines;
  std::uint16_t line_width;
};

// Every item of every layout, in menu order.
std::span<const MenuRow> MenuRows();

void BuildMenu(MenuLayout layout, std::int32_t model_index, MainWindow* window);

}  // namespace pelix
