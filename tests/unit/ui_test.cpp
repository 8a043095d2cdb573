#include <cstring>
#include <set>

#include "plugin/plugin_entry.h"
#include "plugin/script_commands.h"
#include "tests/support/plugin_test.h"
#include "ui/main_window.h"
#include "ui/menu_layout.h"
#include "ui/requests.h"

namespace pelix {
namespace {

class MainWindowTest : public PluginTest {
 protected:
  MainWindow& MakeWindow() {
    CWnd parent = {};
    parent.window = platform::automation::HostWindow();
    PLUGIN_GetInfoStruct()->create(&parent);
    return *g_main_window;
  }
  std::string Tree() {
    std::string text;
    platform::automation::TreeText(&text);
    return text;
  }
};

TEST_F(MainWindowTest, EveryMenuRowStandsInAFolderOfItsLayouts) {
  const std::span<const MenuRow> rows = MenuRows();
  std::uint16_t folders[8] = {0x7FF};
  std::size_t deepest = 0;
  for (const MenuRow& row : rows) {
    SCOPED_TRACE(row.text);
    ASSERT_LE(row.depth, deepest);
    EXPECT_NE(row.layouts & folders[row.depth], 0) << "no layout could ever show it";
    deepest = row.depth;
    if (row.kind == MenuItemKind::kFolder) folders[++deepest] = row.layouts & folders[row.depth];
    const bool report = row.kind == MenuItemKind::kFixedReport || row.kind == MenuItemKind::kGrowingReport;
    EXPECT_EQ(report, row.record != nullptr);
    if (!report) continue;
    EXPECT_EQ(std::string(row.record).size(), 8u);
    EXPECT_TRUE(row.line_width >= 60 && row.line_width <= 100);
  }
}

TEST_F(MainWindowTest, RowsCarryTheirIconsOptionsAndPlaces) {
  const std::set<std::string> with_option = {
      "IN-LINE",           "OFF-LINE",           "R/W CHANNEL TABLE", "R/W CHANNEL MATRIX",   "R/W CHANNEL MATRIX ALL",
      "R/W PREAMP VALUES", "R/W CHANNEL VALUES", "R/W FIR VALUES",    "Save All Error Rates", "BPI CSM RESULT"};
  bool visual = false;
  for (const MenuRow& row : MenuRows()) {
    SCOPED_TRACE(row.text);
    const std::string text = row.text;
    if (row.depth == 0) visual = text == "VISUAL TEST";
    EXPECT_EQ(row.icon, visual && row.kind != MenuItemKind::kFolder ? 170 : 0);
    const bool numbered = text.starts_with("Zone Error Rates") || text.starts_with("TPI LOG");
    if (text == "BPI RESULT") continue;  // a folder and a leaf of that name
    EXPECT_EQ(row.option, with_option.contains(text) || numbered ? 1u : 0u);
    if (text != "PARAMETER MONITORING" || row.record == nullptr) continue;
    const bool only_d = row.layouts == 1u << static_cast<unsigned>(MenuLayout::kD);
    const bool only_c = row.layouts == 1u << static_cast<unsigned>(MenuLayout::kC);
    EXPECT_EQ(row.visible_lines, only_d ? 60 : 40);
    EXPECT_EQ(row.line_width, only_d ? 100 : only_c ? 60 : 80);
  }
}

TEST_F(MainWindowTest, ModelsAndHeadersChooseTheirLayouts) {
  const struct {
    char layout;
    bool common;
    std::set<std::int32_t> models;
  } cases[] = {
      {'B', false, {53, 54, 55, 56}},
      {'C', false, {60, 61, 62}},
      {'D', false, {57}},
      {'D', true, {57}},
      {'E', true, {38, 39, 40, 41, 42}},
      {'F', true, {51}},
      {'G', true, {52}},
      {'H', true, {60}},
      {'I', true, {61}},
      {'J', true, {62}},
      {'K', true, {63, 64}},
  };
  std::set<std::int32_t> standard_a = {58, 59, 63, 64};
  for (std::int32_t model = 29; model <= 52; ++model) standard_a.insert(model);
  for (std::int32_t model = -1; model <= 70; ++model) {
    for (const bool common : {false, true}) {
      MenuLayout expected = !common && standard_a.contains(model) ? MenuLayout::kA : MenuLayout::kNone;
      for (const auto& c : cases) {
        if (c.common == common && c.models.contains(model)) expected = static_cast<MenuLayout>(c.layout - 'A');
      }
      EXPECT_EQ(ChooseLayout(model, common), expected) << model << (common ? " common" : "");
    }
  }
}

TEST_F(MainWindowTest, ASecondRunReplacesTheFirst) {
  MainWindow& window = MakeWindow();
  EXPECT_TRUE(window.Run());
  const std::string tree = Tree();
  const std::size_t actions = window.action_count();
  EXPECT_TRUE(window.Run());
  EXPECT_EQ(Tree(), tree);
  EXPECT_EQ(window.action_count(), actions);
  EXPECT_EQ(tree.substr(0, 16), "- PELIX Config\n+");
}

TEST_F(MainWindowTest, AModelWithoutAMenuKeepsOnlyTheConfiguration) {
  MainWindow& window = MakeWindow();
  identity().update_model = false;
  identity().model_index = 11;
  EXPECT_FALSE(window.Run());
  EXPECT_EQ(Tree(), "- PELIX Config\n");
  ASSERT_EQ(messages().size(), 2u);
  EXPECT_EQ(messages()[1],
            "PELIX doesn't support this model,\nbecause this drive has unknown firmware revision prefix.\nBut if you "
            "know which kind of model this drive is similar with,\nyou can enter model name on PELIX Configuration "
            "dialog box.");
  Use({43, true, 1});
  EXPECT_FALSE(MakeWindow().Run());
  EXPECT_EQ(messages().back().substr(0, 57), "PELIX doesn't support this model on Common Header mode,\nb");
}

TEST_F(MainWindowTest, TheActionTableHasItsLimit) {
  MainWindow& window = MakeWindow();
  for (int i = 0; i < 1000; ++i) EXPECT_NE(window.AddAction("leaf", nullptr, nullptr, 0, 0), nullptr);
  EXPECT_EQ(window.AddAction("one more", nullptr, nullptr, 0, 0), nullptr);
  EXPECT_EQ(window.AddFolder("folder", nullptr, 0), nullptr);
  EXPECT_EQ(window.AddRecordReportGrowing("report", nullptr, "CAPSELDA", {}, nullptr, 0, 0), nullptr);
  EXPECT_EQ(window.action_count(), 1000u);
  EXPECT_EQ(Tree().find("one more"), std::string::npos);
}

// What the reports below are to write, and how often they were asked.
int reported_lines;
int reports;
int WriteFixed(platform::ByteView record, char* text) {
  ++reports;
  EXPECT_EQ(record.size(), 1024u);
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(record.data()), 8), "CAPSELDA");
  for (int i = 0; i < reported_lines; ++i) std::snprintf(text + 7 * i, 8, "line %d", i % 10);
  return reported_lines;
}
void WriteGrowing(ReportText* text, platform::ByteView) {
  for (int i = 0; i < reported_lines; ++i) text->Add("line %d\n", i);
}

TEST_F(MainWindowTest, RecordReportsReadDecodeAndShow) {
  MainWindow& window = MakeWindow();
  window.AddRecordReport("FIXED", WriteFixed, "CAPSELDA", {10, 10, 2, 60}, nullptr, 0, 0);
  window.AddRecordReportGrowing("GROWING", WriteGrowing, "CAPSELDA", {10, 10, 2, 60}, nullptr, 0, 0);
  window.AddRecordReport("ABSENT", WriteFixed, "NO_SUCH ", {10, 10, 2, 60}, nullptr, 0, 0);
  const struct {
    const char* leaf;
    int lines;
    const char* shown;
  } cases[] = {
      {"FIXED", 3, "FIXED\n>line 0\n line 1\nF9:Save\n"},
      {"fixed", 0, "FIXED\n>************************* Empty *************************\nF9:Save\n"},
      {"FIXED", -1, ""},
      {"GROWING", 1, "GROWING\n>line 0\nF9:Save\n"},
      {"GROWING", 0, "GROWING\n>************************* Empty *************************\nF9:Save\n"},
      {"ABSENT", 1, ""},
  };
  for (const auto& c : cases) {
    std::string shown;
    reported_lines = c.lines;
    ThenShow(&shown);
    EXPECT_EQ(platform::automation::ActivateItem(c.leaf), platform::automation::Outcome::kDone);
    EXPECT_EQ(shown, c.shown) << c.leaf << c.lines;
    Use({});
    MainWindow& fresh = MakeWindow();
    fresh.AddRecordReport("FIXED", WriteFixed, "CAPSELDA", {10, 10, 2, 60}, nullptr, 0, 0);
    fresh.AddRecordReportGrowing("GROWING", WriteGrowing, "CAPSELDA", {10, 10, 2, 60}, nullptr, 0, 0);
    fresh.AddRecordReport("ABSENT", WriteFixed, "NO_SUCH ", {10, 10, 2, 60}, nullptr, 0, 0);
  }
  EXPECT_EQ(messages(), Messages());
  reports = 0;
  standin::Host::Instance().AddFault("IDENTIFY@1+");
  platform::automation::ActivateItem("FIXED");
  EXPECT_EQ(reports, 0);
  EXPECT_EQ(messages(), Messages{"IDENTIFY COMMAND FAIL"});
}

TEST_F(MainWindowTest, TheRunOperationKeepsBit14) {
  MakeWindow();
  TARN_VM_STRUCT& request = *g_host->request;
  for (const HostWord bit : {HostWord{0}, HostWord{0x4000}}) {
    request.flags = 0x9000 | bit;
    EXPECT_EQ(PLUGIN_GetInfoStruct()->run(), 1);
    EXPECT_EQ(request.flags, 0x9000 | bit);
  }
  PLUGIN_GetInfoStruct()->destroy();
  EXPECT_EQ(PLUGIN_GetInfoStruct()->run(), 0);
  PLUGIN_GetInfoStruct()->destroy();
}

// A message box handles the host's messages, and what the user does with the host meanwhile may end the plug-in.
TEST_F(MainWindowTest, TheHostMayDestroyWhileRunShowsAMessage) {
  for (const char* fault : {"TASKFILE@1+", "IDENTIFY@1+"}) {
    MakeWindow();
    standin::Host::Instance().AddFault(fault);
    platform::automation::SetMessageSink([](const std::string& text) {
      messages().push_back(text);
      PLUGIN_GetInfoStruct()->destroy();
    });
    EXPECT_EQ(PLUGIN_GetInfoStruct()->run(), 0);
    EXPECT_FALSE(g_main_window);
    standin::Host::Instance().ClearFaults();
  }
  EXPECT_EQ(messages(), (Messages{"DRIVE IS BUSY", "IDENTIFY COMMAND FAIL"}));
}

TEST_F(MainWindowTest, TheHostMayRunWhileRunShowsAMessage) {
  MainWindow& window = MakeWindow();
  ASSERT_TRUE(window.Run());
  const std::size_t actions = window.action_count();
  platform::automation::SetMessageSink([](const std::string&) { EXPECT_EQ(PLUGIN_GetInfoStruct()->run(), 1); });
  standin::Host::Instance().ClearFaults();
  standin::Host::Instance().AddFault("TASKFILE@1");
  EXPECT_EQ(PLUGIN_GetInfoStruct()->run(), 1);
  EXPECT_EQ(window.action_count(), actions) << "one menu";
}

TEST_F(MainWindowTest, RequestsWithoutAViewFail) {
  MainWindow& window = MakeWindow();
  RequestBlock block = {};
  for (std::uintptr_t code = 0; code < 15; ++code) {
    EXPECT_EQ(window.SendPrivateMessage(0x1408, code, reinterpret_cast<std::uintptr_t>(&block)), 1);
  }
  EXPECT_EQ(window.SendPrivateMessage(0x1409, 0, 0), 0) << "not one of ours";
  std::uintptr_t code = 99;
  const char* const names[] = {"GET_DLIST_MAP",  "GET_VLIST_MAP",     "GET_SLIST_MAP", "GET_RLIST_MAP",
                               "GET_ELOG_MAP",   "RUN_TET",           "RUN_SPAT",      "RUN_BODE_PLOT",
                               "RUN_SEQ_SEEK",   "RUN_TRACK_WIDTH",   "RUN_AGC_TEST",  "run_offtagc_test",
                               "RUN_MEDIA_TEST", "RUN_DEFECT_MARKING"};
  for (std::uintptr_t i = 0; i < std::size(names); ++i) {
    EXPECT_TRUE(FindRequest(names[i], &code));
    EXPECT_EQ(code, i);
  }
  EXPECT_FALSE(FindRequest("GET_DLIST_MAP ", &code));
}

TEST_F(MainWindowTest, SetContextKeepsWhatTheHostHands) {
  TARN_VM_STRUCT other = {};
  TARN_VM_STRUCT* before = g_host->request;
  const HOST_CONTEXT context = {"DRIVE 7", &other, 1, 2, nullptr, 77};
  PLUGIN_GetInfoStruct()->set_context(&context);
  EXPECT_EQ(g_host->drive_label, "DRIVE 7");
  EXPECT_EQ(g_host->request, &other);
  EXPECT_EQ(g_host->vm->request, &other);
  EXPECT_EQ(g_host->resource_module, 77u);
  EXPECT_EQ(g_host->output, nullptr);
  g_host->request = g_host->vm->request = before;
  const HOST_CONTEXT empty = {nullptr, nullptr, 0, 0, nullptr, 0};
  PLUGIN_GetInfoStruct()->set_context(&empty);
  EXPECT_EQ(g_host->drive_label, "");
  MakeWindow();
  EXPECT_EQ(PLUGIN_GetInfoStruct()->run(), 1) << "no drive: the menu of the configured model";
  PLUGIN_GetInfoStruct()->set_context(nullptr);
  g_host->request = g_host->vm->request = before;
}

class ScriptCommandTest : public MainWindowTest {
 protected:
  static std::int32_t StepMask(std::int32_t operation, std::int32_t step) {
    standin::Host& host = standin::Host::Instance();
    host.SetArgument(1, operation);
    host.SetArgument(2, step);
    return PLUGIN_GetInfoStruct()->commands[1].handler(host.vm());
  }
};

TEST_F(ScriptCommandTest, TheStepMaskFollowsItsOperations) {
  const auto selected = [] {
    return std::count(g_script_state->step_mask.begin(), g_script_state->step_mask.end(), 1u);
  };
  const struct {
    std::int32_t operation, step;
    std::uint32_t highest;
    long count;
  } cases[] = {
      {0, 1, 1, 1}, {0, 7, 7, 2}, {0, 1000, 389, 3}, {0, -1, 389, 3},  {0, 0, 389, 3},     {1, 389, 7, 2},
      {1, 0, 7, 2}, {1, 7, 1, 1}, {4, 5, 1, 1},      {2, 0, 390, 390}, {1, 390, 390, 389}, {3, 0, 0, 0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(StepMask(c.operation, c.step), 0);
    EXPECT_EQ(g_script_state->highest_step, c.highest) << c.operation << " " << c.step;
    EXPECT_EQ(selected(), c.count);
  }
}

TEST_F(ScriptCommandTest, CommandsSurviveMissingSymbolsAndWindows) {
  C_VM vm = {};
  for (const PLUGIN_COMMAND* command = PLUGIN_GetInfoStruct()->commands; command->name != nullptr; ++command) {
    const std::int32_t result = command->handler(&vm);
    EXPECT_TRUE(result == 0 || result == 9) << command->name;
    EXPECT_EQ(command->handler(nullptr), 9) << command->name;
  }
  standin::Host& host = standin::Host::Instance();
  host.SetArgument(1, "RUN_TET");
  host.SetArgument(2, "out");
  host.SetArgument(3, std::string(10000, 'f'));
  EXPECT_EQ(PLUGIN_GetInfoStruct()->commands[0].handler(host.vm()), 9) << "there is no main window";
  host.SetArgument(2, std::string(10000, 'd'));
  EXPECT_EQ(PLUGIN_GetInfoStruct()->commands[0].handler(host.vm()), 7);
}

TEST(Abi, TheRecordIsAsTheHostExpects) {
  const PLUGIN_INFO* info = PLUGIN_GetInfoStruct();
  EXPECT_EQ(info, PLUGIN_GetInfoStruct());
  EXPECT_EQ(info->interface_version, 3u);
  EXPECT_STREQ(info->display_name, "PELIX(v6.05j)");
  const struct {
    const char* name;
    HostWord arguments, code_b;
  } rows[] = {{"pelixgetdata", 0x30000, 0x131},
              {"pelixstepmask", 0x20000, 0x130},
              {"pelixnewdatafile", 0x10000, 0x12F},
              {"pelixnewgiffile", 0x10000, 0x12F},
              {"pelixnewdatadir", 0, 0x12E}};
  const PLUGIN_COMMAND* command = info->commands;
  for (const auto& row : rows) {
    EXPECT_STREQ(command->name, row.name);
    EXPECT_EQ(command->argument_count, row.arguments);
    EXPECT_EQ(command->code_a, 265u);
    EXPECT_EQ(command->code_b, row.code_b);
    ++command;
  }
  const PLUGIN_COMMAND zero = {};
  EXPECT_EQ(std::memcmp(command, &zero, sizeof zero), 0);
}

}  // namespace
}  // namespace pelix
