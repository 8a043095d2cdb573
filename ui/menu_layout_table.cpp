// Every item of the eleven analysis menus, in menu order: a layout is the rows that carry its letter.
#include "records/record_source.h"
#include "reports/csc_error_report.h"
#include "ui/main_window.h"
#include "ui/menu_layout.h"

namespace pelix {
namespace {

// Layouts, to be or-ed.
constexpr std::uint16_t A = 1, B = 2, C = 4, D = 8, E = 16, F = 32, G = 64, H = 128, I = 256, J = 512, K = 1024;
constexpr std::uint16_t kAll = A | B | C | D | E | F | G | H | I | J | K;
constexpr std::uint16_t kCHIJ = C | H | I | J;  // these four leave the same leaves out
constexpr std::uint16_t kNotD = kAll & ~D;      // layout D is a short menu
constexpr std::uint16_t kMatrixAll = kAll & ~(A | B | C);

// The kinds of rows. What a kind does not need stays zero.
constexpr MenuRow Folder(std::uint8_t depth, const char* text, std::uint16_t layouts,
                         ModelRule rule = ModelRule::kAny) {
  return {depth, text, layouts, rule, MenuItemKind::kFolder, 0, 0, nullptr, nullptr, nullptr, nullptr, 0, 0};
}
constexpr MenuRow Leaf(std::uint8_t depth, const char* text, std::uint16_t layouts, PlainHandler handler = nullptr,
                       ModelRule rule = ModelRule::kAny) {
  return {depth, text, layouts, rule, MenuItemKind::kPlain, 0, 0, handler, nullptr, nullptr, nullptr, 0, 0};
}
// A leaf that carries the option value 1.
constexpr MenuRow Option(std::uint8_t depth, const char* text, std::uint16_t layouts, PlainHandler handler = nullptr,
                         ModelRule rule = ModelRule::kAny) {
  MenuRow row = Leaf(depth, text, layouts, handler, rule);
  row.option = 1;
  return row;
}
constexpr MenuRow Visual(std::uint8_t depth, const char* text, std::uint16_t layouts, PlainHandler handler = nullptr) {
  MenuRow row = Leaf(depth, text, layouts, handler);
  row.icon = kVisualIcon;
  return row;
}
constexpr MenuRow Report(std::uint8_t depth, const char* text, std::uint16_t layouts, const char* record,
                         std::uint16_t visible_lines, std::uint16_t line_width, FixedReportHandler handler = nullptr,
                         ModelRule rule = ModelRule::kAny) {
  return {depth,   text,   layouts,       rule,      MenuItemKind::kFixedReport, 0, 0, nullptr, handler,
          nullptr, record, visible_lines, line_width};
}
constexpr MenuRow Growing(std::uint8_t depth, const char* text, std::uint16_t layouts, const char* record,
                          std::uint16_t visible_lines, std::uint16_t line_width, GrowingReportHandler handler = nullptr,
                          ModelRule rule = ModelRule::kAny) {
  return {depth,   text,   layouts,       rule,      MenuItemKind::kGrowingReport, 0, 0, nullptr, nullptr,
          handler, record, visible_lines, line_width};
}

using enum ModelRule;

// clang-format off
constexpr MenuRow kRows[] = {
    // depth and text                                  layouts                    handler, model rule
    Folder(0, "ANALYSIS",                              kAll),
    Leaf  (1, "DEFECT",                                kAll),
    Leaf  (1, "DEFECT Count",                          H | I | J),
    Leaf  (1, "BURN-IN RESULT",                        kAll & ~A),
    Leaf  (1, "BURN-IN RESULT",                        A,                         nullptr, kNoBurnInSplit),
    Leaf  (1, "BURN-IN RESULT",                        A,                         nullptr, k58To61),
    Folder(1, "BURN-IN RESULT",                        A,                         k32And33),
    Leaf  (2, "BURN-IN",                               kAll),
    Leaf  (2, "DOWNSIZE",                              kAll),
    Folder(1, "BURN-IN RESULT",                        A,                         k63And64),
    Leaf  (2, "BURN-IN RESULT",                        kAll),
    Leaf  (2, "BURN-IN RESULT2",                       kAll),
    Leaf  (1, "Burn In Result",                        K),
    Leaf  (1, "WEAK HEAD TEST RESULT",                 kNotD & ~(E | K)),
    //
    Leaf  (1, "BURN-IN STEP TIME",                     kNotD & ~A),
    Leaf  (1, "BURN-IN STEP TIME",                     A,                         nullptr, kNot63And64),
    Folder(1, "BURN-IN STEP TIME",                     A,                         k63And64),
    Leaf  (2, "BURN-IN STEP TIME",                     kAll),
    Leaf  (2, "BURN-IN STEP TIME2",                    kAll),
    Leaf  (1, "QC / FINAL TEST RESULT",                kNotD),
    Leaf  (1, "BURN-IN STEP",                          kNotD),
    Leaf  (1, "SMART RESULT",                          kAll),
    Leaf  (1, "SMART SELFTEST LOG",                    kAll & ~K),
    Leaf  (1, "SMART ERROR LOG",                       kNotD),
    Leaf  (1, "ERROR LOG SORTING LIST",                kNotD),
    //                                                                            record, lines, width
    Report(1, "PARAMETER MONITORING",                  A | B | G,                 "PAR_MON ", 40, 80),
    Report(1, "PARAMETER MONITORING",                  C,                         "PAR_MON ", 40, 60),
    Report(1, "PARAMETER MONITORING",                  D,                         "PAR_MON ", 60, 100),
    Leaf  (1, "PARAMETER MONITORING",                  E | F | H | I | J | K),
    Leaf  (1, "MRR && TEMPERATURE",                    kNotD),
    Leaf  (1, "VIEW SERVO TRACE",                      kNotD),
    Leaf  (1, "FINAL TEST RESULT (EXPERT)",            A | B),
    Report(1, "HEAD DEGRADATION",                      A | E | F | G,             "HD_BER  ", 40, 70),
    Leaf  (1, "SPIN CURRENT",                          kNotD & ~(kCHIJ | K)),
    Leaf  (1, "SPSTW RESULT",                          kNotD),
    //
    Leaf  (1, "CSC ERROR FLAG",                        kNotD & ~(kCHIJ | E | K),  ShowCscErrorReport),
    Folder(1, "CAPACITY SELECT",                       kNotD & ~kCHIJ),
    Option(2, "IN-LINE",                               kAll),
    Option(2, "OFF-LINE",                              kAll),
    Leaf  (1, "SEEK TIME TEST",                        kAll),
    Report(1, "PTPC Result",                           kNotD & ~(kCHIJ | K),      "PTPCCTRL", 40, 60),
    Leaf  (1, "HALT TEST RESULT",                      A | B | E),
    Leaf  (1, "HD ERROR LOG",                          A | B | E),
    Leaf  (1, "FOD DATA",                              A),
    Folder(1, "HSC DATA",                              A | G),
    Leaf  (2, "HSC DATA 1",                            kAll),
    Leaf  (2, "HSC DATA 2",                            kAll),
    Leaf  (2, "FOD DATA 1",                            kAll),
    Leaf  (2, "FOD DATA 2",                            kAll),
    Leaf  (1, "TCC DATA",                              A | F | G),
    //
    Leaf  (1, "BER UNIFORMITY RESULT",                 B),
    Leaf  (1, "ATW SCREEN RESULT",                     B),
    Leaf  (1, "PGain Data",                            B),
    Leaf  (1, "COPY LOG",                              C | H | J),
    Leaf  (1, "BAD MEDIA TEST",                        I),
    Leaf  (1, "FOD Result",                            J | K),
    Leaf  (1, "FOD Flying Height",                     K),
    Leaf  (1, "FOD Result1",                           D),
    Leaf  (1, "FOD Result2",                           D),
    Leaf  (1, "BODE Data",                             D),
    Leaf  (1, "Sector Defect Data",                    D),

    Folder(0, "VIEW/EDIT LIST",                        kAll),
    Leaf  (1, "PRIMARY DEFECT LIST",                   kAll),
    Leaf  (1, "ATW2 TEST",                             A | B),
    Leaf  (1, "CSM TEST RESULT",                       A | B),
    Leaf  (1, "TA DEFECT LIST",                        kNotD),
    Leaf  (1, "SLIP SECTOR LIST",                      kNotD),
    Leaf  (1, "AUTO REASSIGN LIST",                    kNotD),
    Leaf  (1, "TRACK DEFECT LIST",                     kAll),
    Leaf  (1, "TRACK DEFECT CHART",                    kAll),
    Leaf  (1, "SERVO DEFECT LIST",                     kAll),
    Leaf  (1, "SERVO DEFECT CHART",                    kAll),
    Folder(1, "SERVO RCC LIST",                        kNotD),
    Leaf  (2, "LIST VIEW",                             kAll),
    Leaf  (2, "FILE OUT",                              kAll),
    Leaf  (2, "TOTAL COUNT",                           kAll),
    Leaf  (2, "CHART",                                 kAll),
    Leaf  (1, "M/C DEFECT LIST",                       kNotD),
    Folder(1, "BURN-IN SCRIPT",                        kNotD),
    Leaf  (2, "VIEW BURNIN SCRIPT",                    kAll),
    Leaf  (2, "LOAD BURNIN SCRIPT DESCRIPTION FILE",   kAll),
    //
    Folder(1, "R/W CHANNEL MENU",                      kAll),
    Folder(2, "CHANNEL TABLE 1 [CHN_TBL ]",            kAll),
    Option(3, "R/W CHANNEL TABLE",                     kAll),
    Option(3, "R/W CHANNEL MATRIX",                    kAll),
    Option(3, "R/W CHANNEL MATRIX ALL",                kMatrixAll),
    Option(3, "R/W PREAMP VALUES",                     kAll),
    Option(3, "R/W CHANNEL VALUES",                    kAll & ~(H | I | J)),
    Option(3, "R/W FIR VALUES",                        kAll & ~(H | I | J)),
    Folder(2, "CHANNEL TABLE 2 [CHN_TB2 ]",            kAll),
    Option(3, "R/W CHANNEL TABLE",                     kAll),
    Option(3, "R/W CHANNEL MATRIX",                    kAll),
    Option(3, "R/W CHANNEL MATRIX ALL",                kMatrixAll),
    Option(3, "R/W PREAMP VALUES",                     kAll),
    Option(3, "R/W CHANNEL VALUES",                    kAll & ~(H | I | J)),
    Option(3, "R/W FIR VALUES",                        kAll & ~(H | I | J)),
    Folder(2, "CHANNEL TABLE 3 [CHN_TB3 ]",            A,                         k32And33),
    Option(3, "R/W CHANNEL TABLE",                     kAll),
    Option(3, "R/W CHANNEL MATRIX",                    kAll),
    Option(3, "R/W PREAMP VALUES",                     kAll),
    Option(3, "R/W CHANNEL VALUES",                    kAll),
    Option(3, "R/W FIR VALUES",                        kAll),
    //
    Leaf  (1, "DRIVE SERIAL NUMBER",                   kNotD),
    Leaf  (1, "DRIVE PRODUCT NUMBER",                  K),
    Folder(1, "BURN-IN ERROR LOG",                     kAll),
    Leaf  (2, "LIST VIEW",                             kAll),
    Leaf  (2, "FILE OUT",                              kAll),
    Leaf  (2, "TOTAL COUNT",                           kAll),
    Leaf  (2, "CHART",                                 kAll),
    Leaf  (1, "SORTED ERROR LOG",                      kNotD),
    Leaf  (1, "SERVO INFORMATION",                     kAll),
    Leaf  (1, "SERVO INFORMATION 1",                   D | E | F),
    Leaf  (1, "SERVO INFORMATION 2",                   E | F),
    Leaf  (1, "TWM RESULT",                            A | B | F | G),
    Folder(1, "ERROR RATE TEST RESULT",                kAll),
    Option(2, "Zone Error Rates (BER)",                kAll & ~C),
    Option(2, "Zone Error Rates (BER1)",               kAll & ~C),
    Option(2, "Zone Error Rates (BER2)",               kAll & ~C),
    Option(2, "Zone Error Rates (BER3)",               kAll & ~(B | C)),
    Option(2, "Zone Error Rates (First)",              C),
    Option(2, "Zone Error Rates (Second)",             C),
    Option(2, "Zone Error Rates (Third)",              C),
    Option(2, "Zone Error Rates (Default)",            C),
    Option(2, "Zone Error Rates (10SF)",               B),
    Option(2, "Zone Error Rates (10SOFS)",             B),
    Option(2, "Zone Error Rates (10SAWI)",             B),
    Option(2, "Zone Error Rates (down)",               kAll & ~B),
    Option(2, "Zone Error Rates (down1)",              kAll & ~B),
    Option(2, "Save All Error Rates",                  kAll),
    Folder(1, "DWN ERROR RATE TEST RESULT",            B),
    Option(2, "Zone Error Rates (BERDWN)",             kAll),
    Option(2, "Zone Error Rates (BER2DWN)",            kAll),
    Option(2, "Zone Error Rates (10SFDWN)",            kAll),
    Option(2, "Zone Error Rates (10SOFSDWN)",          kAll),
    Option(2, "Zone Error Rates (10SAWIDWN)",          kAll),
    //
    Leaf  (1, "MR TUNE LOG DATA",                      kAll),
    Folder(1, "VIEW TPI 747 RESULT",                   kAll),
    Option(2, "TPI LOG from [TPI_WRW ]",               kAll),
    Option(2, "TPI LOG from [CAPSELDA]",               kNotD),
    Option(2, "TPI LOG from 2nd [TPI_WRW ]",           A,                         nullptr, k32And33),
    Leaf  (1, "DWN VIEW TPI 747 RESULT",               B),
    Folder(1, "BPI RESULT",                            kAll),
    Option(2, "BPI RESULT",                            kAll),
    Option(2, "BPI CSM RESULT",                        kAll),
    Leaf  (1, "DWN BPI CSM RESULT",                    B),
    Leaf  (1, "CURRENT GEOMETRY",                      kNotD),
    Leaf  (1, "DWN CURRENT GEOMETRY",                  B),
    Folder(1, "AZL ATE RESULT",                        A,                         k32And33),
    Leaf  (2, "1st [ATETST]",                          kAll),
    Leaf  (2, "2nd [ATETST]",                          kAll),
    Folder(1, "AZL BPI RESULT",                        A,                         k32And33),
    Leaf  (2, "1st [BPI_TEST]",                        kAll),
    Leaf  (2, "2nd [BPI_TEST]",                        kAll),
    Folder(1, "TPTP RESULT",                           A,                         k32And33),
    Leaf  (2, "1st [HEAD_PR]",                         kAll),
    Leaf  (2, "2nd [HEAD_PR]",                         kAll),
    //
    Leaf  (1, "WII TEST RESULT",                       kNotD),
    Leaf  (1, "NPV TEST",                              kNotD),
    Leaf  (1, "AMPLITUDE SPIKE TEST",                  A | B | E | K),
    //                                                                            record, lines, width, handler, rule
    Folder (1, "PES VARIANCE",                         kAll),
    Report (2, "PES Variance (B/I 0)",                 A | B | D,                 "BPES0   ", 40, 60, nullptr, kBelow58),
    Report (2, "PES Variance (B/I 1)",                 A | B | D,                 "BPES1   ", 40, 60, nullptr, kBelow58),
    Report (2, "PES Variance (B/I 0)",                 A | C | H | I | K,         "BPES0   ", 40, 60, nullptr, kFrom58),
    Report (2, "PES Variance (B/I 1)",                 A | C | H | I | K,         "BPES1   ", 40, 60, nullptr, kFrom58),
    Growing(2, "PES Variance (B/I 0)",                 E | F | G | J,             "BPES0   ", 40, 60),
    Growing(2, "PES Variance (B/I 1)",                 E | F | G | J,             "BPES1   ", 40, 60),
    Report (2, "PES Variance (B/I 2)",                 A | B | D,                 "BPES2   ", 40, 60, nullptr, kBelow58),
    Report (2, "PES Variance (B/I 3)",                 A | B | D,                 "BPES3   ", 40, 60, nullptr, kBelow58),
    Report (2, "PES Variance (B/I 4)",                 A | B | D,                 "BPES4   ", 40, 60, nullptr, kBelow58),
    Growing(2, "PES Variance (B/I 2)",                 E | F | G,                 "BPES2   ", 40, 60),
    Growing(2, "PES Variance (B/I 3)",                 E | F | G,                 "BPES3   ", 40, 60),
    Growing(2, "PES Variance (B/I 4)",                 E | F | G,                 "BPES4   ", 40, 60),
    Report (2, "PES Variance (Test)",                  A | B,                     "PES_LOG ", 40, 60, nullptr, kBelow58),
    Growing(2, "PES Variance (Test) ",                 E | F,                     "PES_LOG ", 40, 60),
    Growing(2, "PES Variance (Test)",                  G,                         "PES_LOG ", 40, 60),
    Report (2, "PES Variance (OffLine)",               A | B,                     "REF_TMR ", 40, 60, nullptr, kBelow58),
    Growing(2, "PES Variance (OffLine)",               F | G,                     "REF_TMR ", 40, 60),
    Leaf   (1, "TPI ATW",                              K),
    Leaf   (1, "ADD TO DLIST",                         kNotD),

    Folder(0, "M/C DATA",                              kAll),
    Leaf  (1, "DISK TO MCF",                           kAll,                      CopyDiskToMcf),
    Leaf  (1, "DISK TO FILE",                          kAll,                      CopyDiskToFiles),
    Leaf  (1, "MCF TO DISK",                           kAll,                      CopyMcfToDisk),
    Leaf  (1, "MCF TO FILE",                           kAll,                      CopyMcfToFiles),

    Folder(0, "VISUAL TEST",                           kAll),
    Folder(1, "MEDIA VIEW",                            kAll),
    Visual(2, "PRIMARY DEFECT LIST (D-LIST)",          kAll),
    Visual(2, "SERVO DEFECT LIST (V-LIST)",            kAll),
    Visual(2, "SLIP SECTOR LIST (S-LIST)",             kAll),
    Visual(2, "AUTO REASSIGN LIST (R-LIST)",           kAll & ~kCHIJ),
    Visual(2, "BURN-IN ERROR LOG",                     kAll),
    Visual(2, "PRIMARY DEFECT DETAIL MAP",             kAll),
    Visual(2, "MANUAL DEFECT LIST",                    kAll),
    Visual(1, "TET",                                   kAll),
    Visual(1, "SPAT",                                  kAll),
    Visual(1, "BODE PLOT",                             kAll),
    Visual(1, "SEQUENTIAL SEEK",                       kAll),
    Visual(1, "TRACE TRACK WIDTH",                     kAll),
    Visual(1, "AGC TEST",                              kAll),
    Visual(1, "OFFTRACK AGC TEST",                     kAll & ~B),
    Visual(1, "SERVO AGC MAP",                         kAll & ~(B | kCHIJ | E)),
    Visual(1, "MEDIA TEST",                            kAll),
    Visual(1, "DEFECT MARKING 1",                      kAll),
};
// clang-format on

}  // namespace

std::span<const MenuRow> MenuRows() {
  return kRows;
}

}  // namespace pelix
