// The contents of the simulated drive's records.
#include "standin/drive_records.h"

#include <algorithm>
#include <cstring>

#include "standin/random.h"
#include "standin/record_writer.h"

namespace standin {
namespace {

constexpr std::uint32_t kRevision = 1;

class Filler {
 public:
  Filler(const RecordSetting& setting, const StoredRecord& record, bool second_copy)
      : setting_(setting),
        record_(record),
        second_copy_(second_copy),
        random_(setting.kind.seed, Mix(setting.kind.model) ^ Mix(record.descriptor.identifier)),
        bytes_(std::size_t{record.sectors} * kSectorBytes) {}

  std::vector<std::uint8_t> Fill();

 private:
  std::uint32_t model() const { return setting_.kind.model; }
  // The order of 16-bit fields: drives from 58 on store the least significant byte first.
  ByteOrder WordOrder() const { return model() >= 58 ? ByteOrder::kLittle : ByteOrder::kBig; }
  std::uint32_t SectorOf(const Defect& defect) const { return second_copy_ ? defect.logical : defect.sector; }
  static std::uint32_t HeadAndSector(const Defect& defect, std::uint32_t sector) {
    return std::uint32_t{defect.head} << 12 | sector;
  }
  void PutName() { bytes_.PutText(0, record_.name); }
  void PutRevision() { bytes_.Put(8, 2, kRevision); }
  std::vector<const Defect*> Select(bool (*wanted)(const Defect&)) const;

  void FillFsi();
  void FillFit();
  void FillPlain();
  void FillErrorLog();
  void FillDefects();
  void FillDefectsHeader();
  void FillSlips();
  void FillCountHeader(std::uint32_t count);
  void FillReassigned();
  void FillTracks();
  void FillServo();
  void FillServoHeader();
  void FillScript();
  void FillResult();

  const RecordSetting& setting_;
  const StoredRecord& record_;
  bool second_copy_;
  Random random_;
  RecordWriter bytes_;
};

// Which defects stand in which list.
bool IsSlipped(const Defect& defect) {
  return defect.type != 0x13;
}
bool IsReassigned(const Defect& defect) {
  return defect.type == 0x13;  // grown after the slip list was made
}
bool IsDeepAsperity(const Defect& defect) {
  return defect.type == kThermalAsperity && defect.depth >= 11;
}

std::vector<const Defect*> Filler::Select(bool (*wanted)(const Defect&)) const {
  std::vector<const Defect*> selected;
  for (const Defect& defect : setting_.defects().defects()) {
    if (wanted(defect)) selected.push_back(&defect);
  }
  return selected;
}

// FSI and FIT hold their words most significant byte first; see docs/stand-in.md.
void Filler::FillFsi() {
  PutName();
  bytes_.Put(8, 2, kRevision, ByteOrder::kBig);
  for (const StoredRecord& record : setting_.records) {
    if (record.content == Content::kFit) bytes_.Put(16, 2, record.sectors, ByteOrder::kBig);
  }
}

std::uint32_t HeaderFlagsOf(const DriveKind& kind) {
  std::uint32_t flags = kind.common_header ? 0x0002 : 0;
  if (kind.model >= kFirstWithMcfsRead) flags |= 0x0004;
  if (kind.model >= kFirstWithBlockOffsets) flags |= 0x0008;
  return flags;
}

void Filler::FillFit() {
  constexpr std::uint32_t kFirstDescriptor = 32;
  PutName();
  bytes_.Put(8, 2, kRevision, ByteOrder::kBig);
  bytes_.Put(10, 2, HeaderFlagsOf(setting_.kind), ByteOrder::kBig);
  bytes_.Put(18, 2, record_.sectors, ByteOrder::kBig);
  bytes_.Put(20, 2, static_cast<std::uint32_t>(setting_.records.size()), ByteOrder::kBig);
  bytes_.Put(24, 2, kFirstDescriptor, ByteOrder::kBig);
  std::size_t at = kFirstDescriptor;
  for (const StoredRecord& record : setting_.records) {
    const RECORD_FID_DESCRIPTOR& descriptor = record.descriptor;
    bytes_.Put(at, 2, descriptor.identifier, ByteOrder::kBig);
    bytes_.PutText(at + 2, std::string(descriptor.name, sizeof descriptor.name));
    bytes_.Put(at + 10, 2, descriptor.location, ByteOrder::kBig);
    bytes_.Put(at + 12, 2, descriptor.size, ByteOrder::kBig);
    bytes_.Put(at + 14, 1, descriptor.start_cylinder);
    bytes_.Put(at + 15, 1, descriptor.attributes);
    at += sizeof descriptor;
  }
}

// Measurements by head and zone.
void Filler::FillPlain() {
  PutName();
  PutRevision();
  const auto count =
      static_cast<std::uint32_t>(std::min<std::size_t>(setting_.geometry.rows.size(), (bytes_.size() - 16) / 4));
  bytes_.Put(10, 2, count);
  bytes_.Put(12, 2, 4);
  for (std::uint32_t i = 0; i < count; ++i) {
    bytes_.Put(16 + 4 * i, 2, i / setting_.geometry.zones << 8 | i % setting_.geometry.zones);
    bytes_.Put(18 + 4 * i, 2, random_.Between(20, 900));
  }
}

// Entries of 16 bytes from 16: cylinder (32), head (8), step (8), sector (16), error code (8), retries (8).
void Filler::FillErrorLog() {
  constexpr std::uint32_t kEntryBytes = 16;
  PutName();
  PutRevision();
  std::uint32_t count = 0;
  for (const Defect& defect : setting_.defects().defects()) {
    const std::uint32_t at = 16 + kEntryBytes * count;
    if (!bytes_.Holds(at, kEntryBytes)) break;
    bytes_.Put(at, 4, defect.cylinder);
    bytes_.Put(at + 4, 1, defect.head);
    bytes_.Put(at + 5, 1, random_.Between(1, 12));
    bytes_.Put(at + 6, 2, SectorOf(defect));
    bytes_.Put(at + 8, 1, defect.error_code);
    bytes_.Put(at + 9, 1, defect.depth);
    ++count;
  }
  bytes_.Put(10, 2, count);
}

struct DefectListShape {
  std::uint32_t count_at, count_width, first_entry, entry_size;
};

DefectListShape DefectListShapeOf(std::uint32_t model) {
  if (model >= 63) return {8, 4, 16, 10};
  if (model == 57) return {16, 4, 20, 16};
  // The count's upper half is the first entry's, whose cylinder therefore has no low half: cylinder 0 stands first.
  return {8, 2, 10, 10};
}

void Filler::FillDefects() {
  const DefectListShape shape = DefectListShapeOf(model());
  PutName();
  std::vector<Defect> list;
  if (model() >= 58 && model() <= 62) list.push_back({0, 0, 0x11, 1, 1, 1, 0x10, 1});
  list.insert(list.end(), setting_.defects().defects().begin(), setting_.defects().defects().end());
  std::uint32_t count = 0;
  for (const Defect& defect : list) {
    const std::uint32_t at = shape.first_entry + shape.entry_size * count;
    if (!bytes_.Holds(at, shape.entry_size)) break;
    if (model() == 57) {
      bytes_.Put(at, 4, defect.cylinder);
      bytes_.Put(at + 4, 2, defect.head);
      bytes_.Put(at + 6, 2, SectorOf(defect));
      bytes_.Put(at + 8, 2, defect.error_number);
      bytes_.Put(at + 10, 2, defect.type);
      bytes_.Put(at + 14, 2, defect.error_code);
    } else {
      bytes_.Put(at, 4, defect.cylinder, model() >= 58 ? ByteOrder::kLittle : ByteOrder::kWordSwapped);
      bytes_.Put(at + 4, 2, HeadAndSector(defect, SectorOf(defect)));
      bytes_.Put(at + (model() >= 63 ? 6 : 7), 1, defect.error_number);
      bytes_.Put(at + (model() >= 63 ? 7 : 6), 1, defect.type);
      bytes_.Put(at + 8, 1, defect.error_code);
    }
    ++count;
  }
  bytes_.Put(shape.count_at, shape.count_width, count);
}

void Filler::FillDefectsHeader() {
  FillCountHeader(static_cast<std::uint32_t>(setting_.defects().defects().size()));
}

// Name, revision at 8, count at 10.
void Filler::FillCountHeader(std::uint32_t count) {
  PutName();
  bytes_.Put(8, 2, kRevision, WordOrder());
  bytes_.Put(10, 2, count, WordOrder());
}

void Filler::FillSlips() {
  constexpr std::uint32_t kEntryBytes = 6;
  const ByteOrder cylinder_order = model() >= 58  ? ByteOrder::kLittle
                                   : model() < 35 ? ByteOrder::kBig
                                                  : ByteOrder::kWordSwapped;
  const ByteOrder word_order = model() < 35 ? ByteOrder::kBig : ByteOrder::kLittle;
  std::uint32_t at = 0;
  for (const Defect* defect : Select(IsSlipped)) {
    bytes_.Put(at, 4, defect->cylinder, cylinder_order);
    bytes_.Put(at + 4, 2, HeadAndSector(*defect, SectorOf(*defect)), word_order);
    at += kEntryBytes;
  }
}

// Spares are dealt out from the last cylinder of each head.
void Filler::FillReassigned() {
  const bool has_header = model() >= 63 || (model() >= 35 && model() <= 57);
  const std::uint32_t first = has_header ? 0 : model() >= 58 ? 652 : 658;
  const ByteOrder long_order = model() >= 58 ? ByteOrder::kLittle : ByteOrder::kHalfSwapped;
  const auto list = Select(IsReassigned);
  if (!has_header) FillCountHeader(static_cast<std::uint32_t>(list.size()));
  for (std::uint32_t i = 0; i < list.size(); ++i) {
    const Defect& defect = *list[i];
    const std::uint32_t at = first + 16 * i;
    const ZoneRow& last_zone = setting_.geometry.rows[(defect.head + 1u) * setting_.geometry.zones - 1];
    bytes_.Put(at, 4, defect.cylinder, long_order);
    bytes_.Put(at + 4, 2, HeadAndSector(defect, SectorOf(defect) - 1), WordOrder());
    bytes_.Put(at + 6, 4, last_zone.last_cylinder, long_order);
    const std::uint32_t spare = i % 256;
    const std::uint32_t head_shift = model() >= 63 ? 8 : 12;
    bytes_.Put(at + 10, 2, std::uint32_t{defect.head} << head_shift | spare, WordOrder());
    bytes_.Put(at + 12, 2, 1, WordOrder());
    bytes_.Put(at + 14, 2, defect.error_code, WordOrder());
  }
}

// The tracks in the middle of the asperities are given up whole. Count at 8, entries of 6 bytes from 10 (8 bytes from
// 48 for model 57).
void Filler::FillTracks() {
  const auto list = Select(IsDeepAsperity);
  PutName();
  bytes_.Put(8, 2, static_cast<std::uint32_t>(list.size()), WordOrder());
  for (std::uint32_t i = 0; i < list.size(); ++i) {
    const Defect& defect = *list[i];
    const std::uint32_t code = defect.error_code & 0x3Fu;
    if (model() == 57) {
      bytes_.Put(48 + 8 * i, 4, defect.cylinder);
      bytes_.Put(53 + 8 * i, 1, defect.head);
      continue;
    }
    const std::uint32_t at = 10 + 6 * i;
    const bool head_first = model() < 58;
    bytes_.Put(at, 4, defect.cylinder, head_first ? ByteOrder::kHalfSwapped : ByteOrder::kLittle);
    bytes_.Put(at + (head_first ? 4 : 5), 1, defect.head);
    bytes_.Put(at + (head_first ? 5 : 4), 1, code);
  }
}

// Servo wedges that the asperities spoil. Entries of 6 bytes from 10: cylinder (32), head and flag (8), wedge (8);
// for model 57 the count at 36 and entries of 8 bytes from 872.
void Filler::FillServo() {
  const auto list = Select(IsDeepAsperity);
  const bool wide = model() == 57;
  PutName();
  PutRevision();
  if (wide) bytes_.Put(36, 4, static_cast<std::uint32_t>(list.size()));
  for (std::uint32_t i = 0; i < list.size(); ++i) {
    const Defect& defect = *list[i];
    const std::uint32_t at = wide ? 872 + 8 * i : 10 + 6 * i;
    const std::uint32_t sectors =
        setting_.geometry.SectorsPerTrack(defect.head, static_cast<std::int32_t>(defect.cylinder));
    const std::uint32_t wedge = (defect.logical - 1u) * 192 / std::max(sectors, 1u);
    bytes_.Put(at, 4, defect.cylinder);
    bytes_.Put(at + 4, 1, defect.head);
    bytes_.Put(at + 5, 1, wedge);
  }
}

void Filler::FillServoHeader() {
  PutName();
  bytes_.Put(8, 2, static_cast<std::uint32_t>(Select(IsDeepAsperity).size()),
             model() < 57 ? ByteOrder::kBig : ByteOrder::kLittle);
}

// The burn-in script that the drive has run: codes of the burn-in firmware with argument, repeat and pass count.
struct ScriptStep {
  std::uint8_t code;
  std::uint16_t argument, repeat, pass;
};
constexpr ScriptStep kScript[] = {
    {0x07, 0, 0, 0},   {0x08, 1, 0, 0},   {0x69, 0, 0, 1},  {0x10, 0, 1, 1},      {0x4F, 0, 0, 1}, {0x90, 0, 1, 1},
    {0x08, 2, 0, 0},   {0x92, 0, 100, 1}, {0x01, 0, 0, 60}, {0x46, 0x0600, 0, 0}, {0xA0, 0, 1, 1}, {0x80, 0, 3, 1},
    {0x8C, 0, 500, 1}, {0x66, 0, 10, 1},  {0x08, 3, 0, 0},  {0xC2, 1, 0, 0},      {0x1F, 0, 0, 0},
};
constexpr std::uint32_t kLastStep = 12;  // counted from 1: where the result says burn-in stopped

void Filler::FillScript() {
  constexpr std::uint32_t kStepBytes = 8;
  constexpr std::uint32_t kHeaderSteps = 4;
  bytes_.PutText(0, "PASS");
  bytes_.PutText(8, "BURN1.00");
  std::uint32_t at = kHeaderSteps * kStepBytes;
  for (const ScriptStep& step : kScript) {
    bytes_.Put(at, 1, step.code);
    bytes_.Put(at + 2, 2, step.argument, ByteOrder::kBig);
    bytes_.Put(at + 4, 2, step.repeat, ByteOrder::kBig);
    bytes_.Put(at + 6, 2, step.pass, ByteOrder::kBig);
    at += kStepBytes;
  }
}

// Names the script's step kLastStep as the last executed, and the last of the logged errors.
void Filler::FillResult() {
  constexpr std::uint32_t kStopCondition = 0x7F;
  const ScriptStep& last_step = kScript[kLastStep - 1];
  const Defect& last_error = setting_.defects().defects().back();
  const auto errors = static_cast<std::uint32_t>(setting_.defects().defects().size());
  if (model() >= 58) {
    bytes_.Put(8, 2, kRevision);
    bytes_.Put(16, 2, kStopCondition);
    bytes_.Put(18, 2, last_step.code);
    bytes_.Put(20, 2, kLastStep);
    bytes_.Put(22, 2, errors);
    bytes_.PutText(34, "BURN1.00");
    bytes_.Put(50, 2, 0x1D);
    bytes_.Put(56, 4, last_error.cylinder);
    bytes_.Put(60, 2, last_error.head);
    bytes_.Put(62, 2, last_error.sector);
    return;
  }
  bytes_.Put(0, 2, kStopCondition, ByteOrder::kBig);
  bytes_.Put(2, 2, last_step.code, ByteOrder::kBig);
  bytes_.Put(4, 2, kLastStep, ByteOrder::kBig);
  bytes_.Put(6, 2, errors, ByteOrder::kBig);
  bytes_.Put(10, 2, last_error.cylinder, ByteOrder::kBig);
  bytes_.Put(12, 2, last_error.head, ByteOrder::kBig);
  bytes_.Put(14, 2, last_error.sector, ByteOrder::kBig);
  bytes_.Put(42, 2, 0x0005, ByteOrder::kBig);
  bytes_.Put(44, 2, 0x000A, ByteOrder::kBig);
  bytes_.Put(48, 2, 0x001D, ByteOrder::kBig);
  bytes_.Put(52, 4, setting_.geometry.rows[setting_.geometry.zones - 1].last_cylinder, ByteOrder::kBig);
  bytes_.Put(78, 4, random_.Between(20000, 90000), ByteOrder::kBig);
  bytes_.PutText(86, "BURN1.00");
}

std::vector<std::uint8_t> Filler::Fill() {
  switch (record_.content) {
    case Content::kFsi:
      FillFsi();
      break;
    case Content::kFit:
      FillFit();
      break;
    case Content::kPlain:
      FillPlain();
      break;
    case Content::kErrorLog:
      FillErrorLog();
      break;
    case Content::kDefects:
      FillDefects();
      break;
    case Content::kDefectsHeader:
      FillDefectsHeader();
      break;
    case Content::kNothing:
      break;
    case Content::kSlips:
      FillSlips();
      break;
    case Content::kSlipsHeader:
      FillCountHeader(static_cast<std::uint32_t>(Select(IsSlipped).size()));
      break;
    case Content::kReassigned:
      FillReassigned();
      break;
    case Content::kReassignedHeader:
      FillCountHeader(static_cast<std::uint32_t>(Select(IsReassigned).size()));
      break;
    case Content::kTracks:
      FillTracks();
      break;
    case Content::kServo:
      FillServo();
      break;
    case Content::kServoHeader:
      FillServoHeader();
      break;
    case Content::kScript:
      FillScript();
      break;
    case Content::kScriptHeader:
      bytes_.PutText(0, "PASS");
      PutRevision();
      break;
    case Content::kResult:
      FillResult();
      break;
    case Content::kCapacitySelect:
      PutName();
      PutRevision();
      bytes_.Put(16, 4, 1u << random_.Below(10) | 1u << random_.Below(10));
      break;
    case Content::kSerialNumber:
      PutName();
      PutRevision();
      bytes_.PutText(16, SerialNumberOf(setting_.kind));
      break;
    case Content::kIdentify:
      return IdentifyDataOf(setting_.kind, setting_.geometry);
  }
  std::vector<std::uint8_t> bytes = bytes_.Take();
  constexpr std::uint8_t kWordsSwapped = 0x10;
  if ((record_.descriptor.attributes & kWordsSwapped) != 0) {
    bytes.resize((bytes.size() + 1) / 2 * 2);
    platform::SwapWords(bytes.data(), bytes.size());
  }
  return bytes;
}

}  // namespace

std::vector<std::uint8_t> FillRecord(const RecordSetting& setting, const StoredRecord& record, bool second_copy) {
  return Filler(setting, record, second_copy).Fill();
}

}  // namespace standin
