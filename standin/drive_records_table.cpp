// The records of the simulated drives by name, size and kind of content, and where they are put.
#include <algorithm>
#include <cstring>

#include "standin/drive_records.h"

namespace standin {
namespace {

// Attribute bits of a descriptor.
constexpr std::uint8_t kEveryHead = 0x01;
constexpr std::uint8_t kTracks = 0x02;
constexpr std::uint8_t kNamed = 0x08;    // begins with its name
constexpr std::uint8_t kSwapped = 0x10;  // old drives store words the other way round

struct RecordRow {
  const char* name;
  Content content;
  std::uint16_t size;  // sectors, or tracks, or cylinders of the error log
  std::uint8_t attributes;
  std::uint8_t first_model, last_model;
};

// clang-format off
constexpr RecordRow kRows[] = {
    // name       content                     size attributes        models
    {"FSI     ", Content::kFsi,                 1, 0,                11, 64},
    {"FIT     ", Content::kFit,                 0, 0,                11, 64},
    {"BI_ERLOG", Content::kErrorLog,            2, kTracks | kNamed, 11, 64},
    {"IDENTIFY", Content::kIdentify,            0, 0,                11, 64},
    {"LDSI_TH ", Content::kDefectsHeader,       1, kNamed,           63, 64},
    {"LDSI T  ", Content::kDefects,           160, kNamed,           11, 64},
    {"LDSI2T  ", Content::kNothing,             8, 0,                63, 64},
    {"SLIST_H ", Content::kSlipsHeader,         1, kNamed,           11, 64},
    {"SLIST   ", Content::kSlips,              96, 0,                11, 64},
    {"RLIST_H ", Content::kReassignedHeader,    1, kNamed,           35, 57},
    {"RLIST_H ", Content::kReassignedHeader,    1, kNamed,           63, 64},
    {"RLIST   ", Content::kReassigned,          8, 0,                35, 57},
    {"RLIST   ", Content::kReassigned,          8, 0,                63, 64},
    {"RLIST   ", Content::kReassigned,          8, kNamed,           11, 34},
    {"RLIST   ", Content::kReassigned,          8, kNamed,           58, 62},
    {"TLIST   ", Content::kTracks,              4, kNamed,           11, 64},
    {"VLIST_H ", Content::kServoHeader,         1, kNamed,           11, 64},
    {"VLIST   ", Content::kServo,               8, kNamed,           11, 64},
    {"MLIST   ", Content::kPlain,               2, kNamed,           11, 64},
    {"BI_SCRPT", Content::kScript,              8, 0,                11, 64},
    {"BISP_HDR", Content::kScriptHeader,        1, 0,                51, 64},
    {"BI_RESLT", Content::kResult,              1, 0,                11, 64},
    {"BI_RESL2", Content::kResult,              1, 0,                63, 64},
    //
    {"BI_TIME ", Content::kPlain,               4, kNamed,           11, 64},
    {"BI_TIME2", Content::kPlain,               4, kNamed,           63, 64},
    {"CHN_TBL ", Content::kPlain,              16, kNamed,           11, 64},
    {"CHN_TB2 ", Content::kPlain,              16, kNamed,           11, 64},
    {"CHN_TB3 ", Content::kPlain,              16, kNamed,           32, 33},
    {"PAR_MON ", Content::kPlain,               4, kNamed,           11, 64},
    {"HD_BER  ", Content::kPlain,               4, kNamed,           11, 64},
    {"PTPCCTRL", Content::kPlain,               2, kNamed,           11, 64},
    {"BPES0   ", Content::kPlain,               8, kNamed,           11, 64},
    {"BPES1   ", Content::kPlain,               8, kNamed,           11, 64},
    {"BPES2   ", Content::kPlain,               8, kNamed,           11, 57},
    {"BPES3   ", Content::kPlain,               8, kNamed,           11, 57},
    {"BPES4   ", Content::kPlain,               8, kNamed,           11, 57},
    {"PES_LOG ", Content::kPlain,               8, kNamed,           11, 57},
    {"REF_TMR ", Content::kPlain,               2, kNamed,           11, 57},
    {"BAD_MDA ", Content::kPlain,               2, kNamed,           11, 64},
    //
    {"CAPSELDA", Content::kCapacitySelect,      2, kNamed,           11, 64},
    {"CUR_BPI ", Content::kPlain,               2, kNamed,           11, 64},
    {"DFCT_CNT", Content::kPlain,               2, kNamed,           11, 64},
    {"DFCT_CN2", Content::kPlain,               2, kNamed,           11, 64},
    {"FNL_TEST", Content::kPlain,               4, kNamed,           11, 64},
    {"FOD_RST ", Content::kPlain,               4, kNamed,           11, 64},
    {"HSC_RST ", Content::kPlain,               4, kNamed,           11, 64},
    {"FOD_FH  ", Content::kPlain,               4, kNamed,           11, 64},
    {"FOD_HSC ", Content::kPlain,               4, kNamed,           11, 64},
    {"HALT_HDR", Content::kPlain,               1, kNamed,           11, 64},
    {"HALT_TST", Content::kPlain,               4, kNamed,           11, 64},
    {"INSTABHD", Content::kPlain,               2, kNamed,           11, 64},
    {"MR_TUNE ", Content::kPlain,               4, kNamed,           11, 64},
    {"SEEKTIME", Content::kPlain,               2, kNamed,           11, 64},
    {"SERIALNO", Content::kSerialNumber,        1, kNamed | kEveryHead, 11, 64},
    {"SV_TBL  ", Content::kPlain,               8, kNamed,           11, 64},
    {"SV_TBL2 ", Content::kPlain,               8, kNamed,           11, 64},
    //
    {"SV_TRACE", Content::kPlain,               1, kNamed | kTracks | kEveryHead, 11, 64},
    {"SVTRC_HD", Content::kPlain,               1, kNamed,           11, 64},
    {"SMARTMEM", Content::kPlain,               2, kNamed,           11, 64},
    {"SMRT    ", Content::kPlain,               2, kNamed,           11, 64},
    {"SMRT_LOG", Content::kPlain,               4, kNamed,           11, 64},
    {"SPN_MNTR", Content::kPlain,               2, kNamed,           11, 64},
    {"SPSTW_DA", Content::kPlain,               2, kNamed,           11, 64},
    {"TMPRTURE", Content::kPlain,               2, kNamed,           11, 64},
    {"TPI_WRW ", Content::kPlain,               8, kNamed,           11, 64},
    {"BER     ", Content::kPlain,               4, kNamed,           11, 64},
    {"BER1    ", Content::kPlain,               4, kNamed,           11, 64},
    {"BER2    ", Content::kPlain,               4, kNamed,           11, 64},
    {"BER3    ", Content::kPlain,               4, kNamed,           11, 64},
    {"AZL_BPI ", Content::kPlain,               4, kNamed,           11, 64},
    {"AZL_BPI0", Content::kPlain,               4, kNamed,           11, 64},
    {"AZL_CSM ", Content::kPlain,               4, kNamed,           11, 64},
    {"AZL_CSM0", Content::kPlain,               4, kNamed,           11, 64},
    {"AZLDCSM ", Content::kPlain,               4, kNamed,           11, 64},
    {"ATW_SCRN", Content::kPlain,               8, kNamed,           11, 64},
    {"SECTDFCT", Content::kPlain,               4, kNamed,           11, 64},
    {"TW      ", Content::kPlain,               4, kNamed,           11, 64},
    //
    {"10SF    ", Content::kPlain,               4, kNamed,           11, 64},
    {"10SOFS  ", Content::kPlain,               4, kNamed,           11, 64},
    {"10SAWI  ", Content::kPlain,               4, kNamed,           11, 64},
    {"BERDWN  ", Content::kPlain,               4, kNamed,           11, 64},
    {"BER2DWN ", Content::kPlain,               4, kNamed,           11, 64},
    {"10SFDWN ", Content::kPlain,               4, kNamed,           11, 64},
    {"10SOFSD ", Content::kPlain,               4, kNamed,           11, 64},
    {"10SAWID ", Content::kPlain,               4, kNamed,           11, 64},
    {"BER_DS  ", Content::kPlain,               4, kNamed,           11, 64},
    {"BER1_DS ", Content::kPlain,               4, kNamed,           11, 64},
    {"WII DATA", Content::kPlain,               4, kNamed,           11, 64},
    {"WK_HEAD ", Content::kPlain,               2, kNamed,           11, 64},
    {"ATETST  ", Content::kPlain,               4, kNamed,           32, 33},
    {"BPI_TEST", Content::kPlain,               4, kNamed,           32, 33},
    {"HEAD_PR ", Content::kPlain,               4, kNamed,           32, 33},
    {"TET_DATA", Content::kPlain,               1, kNamed | kTracks, 11, 64},
};
// clang-format on

constexpr std::uint16_t kFirstOwnIdentifier = 0x10;
constexpr std::uint32_t kFitSectors = 8;

// Cylinders: 0 the tables, 1 what the expert keeps, 2 and 3 the error log, 4 the single tracks, from 5 on the rest.
constexpr std::uint8_t kTablesCylinder = 0;
constexpr std::uint8_t kErrorLogCylinder = 2;
constexpr std::uint8_t kSingleTrackCylinder = 4;
constexpr std::uint8_t kFirstRecordCylinder = 5;

bool HasCopy(const char* name) {
  for (const char* twice : {"BI_ERLOG", "LDSI T  ", "SLIST   ", "RLIST   "}) {
    if (std::memcmp(name, twice, 8) == 0) return true;
  }
  return false;
}

// Deals out sectors; locations count from 0 at the start cylinder.
struct Allocator {
  std::uint16_t tables = 0;
  std::uint16_t single_tracks = 0;
  std::uint16_t rest = 0;

  void Place(StoredRecord* record) {
    std::uint8_t cylinder = kFirstRecordCylinder;
    std::uint16_t* next = &rest;
    if (record->content == Content::kFsi || record->content == Content::kFit) {
      cylinder = kTablesCylinder;
      next = &tables;
    } else if (record->content == Content::kErrorLog) {
      record->descriptor.start_cylinder = kErrorLogCylinder;
      return;
    } else if ((record->descriptor.attributes & kEveryHead) != 0) {
      // One cylinder a track, so that each starts at the head of one.
      cylinder = kSingleTrackCylinder;
      next = &single_tracks;
      if ((record->descriptor.attributes & kTracks) != 0) cylinder = kSecondCopyCylinder - 1;
    }
    record->descriptor.start_cylinder = cylinder;
    const bool whole_track = cylinder == kSecondCopyCylinder - 1;
    record->descriptor.location = whole_track ? 0 : *next;
    if (!whole_track) *next = static_cast<std::uint16_t>(*next + record->sectors);
  }
};

std::uint32_t SectorsOf(const RecordRow& row, const DriveKind& kind, const DriveGeometry& geometry) {
  if (row.content == Content::kFit) return kFitSectors;
  if (row.content == Content::kIdentify) {
    return static_cast<std::uint32_t>(IdentifyDataOf(kind, geometry).size() / kSectorBytes);
  }
  const std::uint32_t heads = (row.attributes & kEveryHead) != 0 ? 1 : geometry.heads;
  return (row.attributes & kTracks) != 0 ? row.size * kMaintenanceSectors * heads : row.size;
}

}  // namespace

std::vector<StoredRecord> ListRecords(const DriveKind& kind, const DriveGeometry& geometry) {
  const bool swaps = kind.model < kFirstWithMcfsRead;
  std::vector<StoredRecord> records;
  Allocator allocator;
  std::uint16_t identifier = kFirstOwnIdentifier;
  for (const RecordRow& row : kRows) {
    if (kind.model < row.first_model || kind.model > row.last_model) continue;
    StoredRecord record = {};
    record.name = row.name;
    record.content = row.content;
    record.sectors = SectorsOf(row, kind, geometry);
    record.has_second_copy = !swaps && HasCopy(row.name);
    std::memcpy(record.descriptor.name, row.name, sizeof record.descriptor.name);
    record.descriptor.attributes = row.attributes;
    if (swaps && (row.attributes & kNamed) != 0) record.descriptor.attributes |= kSwapped;
    record.descriptor.size = (row.attributes & kTracks) != 0 ? row.size : static_cast<std::uint16_t>(record.sectors);
    record.descriptor.identifier = identifier++;
    if (row.content == Content::kFsi) record.descriptor.identifier = kFidFsi;
    if (row.content == Content::kFit) record.descriptor.identifier = kFidFit;
    allocator.Place(&record);
    records.push_back(record);
  }
  return records;
}

}  // namespace standin
