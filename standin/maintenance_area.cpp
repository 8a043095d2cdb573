#include "standin/maintenance_area.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <set>
#include <unordered_map>
#include <utility>

#include "platform/byte_view.h"
#include "platform/files.h"
#include "platform/format.h"
#include "platform/profile.h"

namespace standin {
namespace {

constexpr std::size_t kTrackBytes = std::size_t{kMaintenanceSectors} * kSectorBytes;
constexpr std::uint32_t kCylinders = kLastReservedCylinder + 1;

using platform::Format;

// Where a run of a record's sectors stands on one track.
struct Piece {
  std::uint32_t cylinder, head, sector;  // sector from 1
  std::uint32_t count, done;             // sectors: of this piece, and before it
};

// Visits the tracks that a record takes, as the drive's firmware does.
void VisitPieces(const StoredRecord& record, std::uint32_t heads, bool second_copy,
                 const std::function<void(const Piece&)>& visit) {
  constexpr std::uint8_t kOnEveryHead = 0x01;
  const std::uint32_t cylinder = second_copy ? kSecondCopyCylinder : record.descriptor.start_cylinder;
  if ((record.descriptor.attributes & kOnEveryHead) != 0) {
    for (std::uint32_t head = 0; head < heads; ++head) {
      visit({cylinder, head, record.descriptor.location + 1u, record.sectors, 0});
    }
    return;
  }
  for (std::uint32_t done = 0; done < record.sectors;) {
    const std::uint32_t at = record.descriptor.location + done;
    const std::uint32_t track = at / kMaintenanceSectors;
    const std::uint32_t count = std::min(kMaintenanceSectors - at % kMaintenanceSectors, record.sectors - done);
    visit({cylinder + track / heads, track % heads, at % kMaintenanceSectors + 1, count, done});
    done += count;
  }
}

// Records come into being when one of their tracks is touched. Sectors that hold nothing but zeros are not kept.
class MemoryArea : public MaintenanceArea {
 public:
  explicit MemoryArea(const DriveDesign& design) : design_(design), waiting_(kCylinders * design.geometry.heads) {
    for (const StoredRecord& record : design.records) {
      for (const bool second_copy : {false, true}) {
        if (second_copy && !record.has_second_copy) continue;
        VisitPieces(record, design.geometry.heads, second_copy, [&](const Piece& piece) {
          waiting_[TrackIndex(piece.cylinder, piece.head)].push_back({&record, second_copy});
        });
      }
    }
  }

  bool Read(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector, std::uint32_t count,
            std::uint8_t* to) override {
    MakeTrack(TrackIndex(cylinder, head));
    for (std::uint32_t i = 0; i < count; ++i, to += kSectorBytes) {
      const auto found = sectors_.find(SectorIndex(TrackIndex(cylinder, head), sector + i));
      if (found == sectors_.end()) {
        std::memset(to, 0, kSectorBytes);
      } else {
        std::memcpy(to, found->second.data(), kSectorBytes);
      }
    }
    return true;
  }
  bool Write(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector, std::uint32_t count,
             const std::uint8_t* from) override {
    MakeTrack(TrackIndex(cylinder, head));
    for (std::uint32_t i = 0; i < count; ++i, from += kSectorBytes) {
      std::memcpy(sectors_[SectorIndex(TrackIndex(cylinder, head), sector + i)].data(), from, kSectorBytes);
    }
    return true;
  }

 private:
  using RecordKey = std::pair<const StoredRecord*, bool>;

  std::uint32_t TrackIndex(std::uint32_t cylinder, std::uint32_t head) const {
    return cylinder * design_.geometry.heads + head;
  }
  static std::uint32_t SectorIndex(std::uint32_t track, std::uint32_t sector) {
    return track * kMaintenanceSectors + sector - 1;
  }
  void MakeTrack(std::uint32_t track) {
    const std::vector<RecordKey> records = std::exchange(waiting_[track], {});
    for (const RecordKey& record : records) {
      if (made_.insert(record).second) MakeRecord(record);
    }
  }
  void MakeRecord(const RecordKey& key) {
    const std::vector<std::uint8_t> bytes = design_.Fill(*key.first, key.second);
    VisitPieces(*key.first, design_.geometry.heads, key.second, [&](const Piece& piece) {
      const std::uint32_t first = SectorIndex(TrackIndex(piece.cylinder, piece.head), piece.sector);
      for (std::uint32_t i = 0; i < piece.count; ++i) {
        const std::size_t at = std::size_t{piece.done + i} * kSectorBytes;
        if (at >= bytes.size()) return;
        std::array<std::uint8_t, kSectorBytes>& sector = sectors_[first + i];
        std::memcpy(sector.data(), bytes.data() + at, std::min<std::size_t>(kSectorBytes, bytes.size() - at));
      }
    });
  }

  const DriveDesign& design_;
  std::vector<std::vector<RecordKey>> waiting_;  // by track: records on it that are not made yet
  std::set<RecordKey> made_;
  std::unordered_map<std::uint32_t, std::array<std::uint8_t, kSectorBytes>> sectors_ = {};
};

constexpr char kKindFile[] = "drive.ini";
constexpr char kSectorFile[] = "maintenance.bin";
constexpr char kSection[] = "DRIVE";

std::string InFolder(const std::string& folder, const char* name) {
  return folder + "/" + name;
}

class FolderArea : public MaintenanceArea {
 public:
  FolderArea(platform::File file, std::uint32_t heads) : file_(std::move(file)), heads_(heads) {}

  bool Read(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector, std::uint32_t count,
            std::uint8_t* to) override {
    return Seek(cylinder, head, sector) && file_.Read(to, std::size_t{count} * kSectorBytes);
  }
  bool Write(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector, std::uint32_t count,
             const std::uint8_t* from) override {
    return Seek(cylinder, head, sector) && file_.Write(from, std::size_t{count} * kSectorBytes) && file_.Flush();
  }

 private:
  bool Seek(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector) {
    return file_.Seek((std::uint64_t{cylinder} * heads_ + head) * kTrackBytes +
                      std::uint64_t{sector - 1} * kSectorBytes);
  }

  platform::File file_;
  std::uint32_t heads_;
};

}  // namespace

DriveDesign::DriveDesign(const DriveKind& wanted)
    : kind(wanted), geometry(MakeGeometry(wanted.model, wanted.seed)), records(ListRecords(kind, geometry)) {}

const DefectMap& DriveDesign::defects() const {
  if (defects_ == nullptr) defects_ = std::make_unique<DefectMap>(geometry, kind.model, kind.seed);
  return *defects_;
}

std::vector<std::uint8_t> DriveDesign::Fill(const StoredRecord& record, bool second_copy) const {
  return FillRecord({kind, geometry, [this]() -> const DefectMap& { return defects(); }, records}, record, second_copy);
}

std::unique_ptr<MaintenanceArea> MakeMemoryArea(const DriveDesign& design) {
  return std::make_unique<MemoryArea>(design);
}

bool WriteDriveFolder(const std::string& folder, const DriveKind& kind, std::string* error) {
  *error = Format("cannot write a drive into \"%s\"", folder.c_str());
  if (platform::FileExists(InFolder(folder, kKindFile))) {
    *error = Format("\"%s\" holds a drive already", folder.c_str());
    return false;
  }
  if (!platform::MakeFolder(folder)) return false;
  const DriveDesign design(kind);
  MemoryArea area(design);
  platform::ReplacingFile sectors;
  if (!sectors.Open(InFolder(folder, kSectorFile), "wb")) return false;
  std::vector<std::uint8_t> track(kTrackBytes);
  for (std::uint32_t i = 0; i < kCylinders * design.geometry.heads; ++i) {
    area.Read(i / design.geometry.heads, i % design.geometry.heads, 1, kMaintenanceSectors, track.data());
    if (!sectors.Write(track.data(), track.size())) return false;
  }
  platform::Profile profile;
  profile.SetInt(kSection, "MODEL", static_cast<int>(kind.model));
  profile.SetInt(kSection, "COMMON_HEADER", kind.common_header ? 1 : 0);
  profile.SetInt(kSection, "SEED", static_cast<int>(kind.seed));
  return sectors.Commit() && profile.Save(InFolder(folder, kKindFile));
}

bool ReadDriveKind(const std::string& folder, DriveKind* kind, std::string* error) {
  platform::Profile profile;
  if (!profile.Load(InFolder(folder, kKindFile))) {
    *error = Format("\"%s\" holds no drive", folder.c_str());
    return false;
  }
  const int model = profile.GetInt(kSection, "MODEL", 0);
  kind->common_header = profile.GetInt(kSection, "COMMON_HEADER", 0) != 0;
  kind->seed = static_cast<std::uint32_t>(profile.GetInt(kSection, "SEED", 1));
  if (model < 11 || model > 64) {
    *error = Format("\"%s\" holds a drive of model %d; models are 11 to 64", folder.c_str(), model);
    return false;
  }
  kind->model = static_cast<std::uint32_t>(model);
  return true;
}

std::unique_ptr<MaintenanceArea> OpenFolderArea(const std::string& folder, const DriveGeometry& geometry,
                                                std::string* error) {
  const std::string path = InFolder(folder, kSectorFile);
  platform::File file = platform::File::Open(path, "r+b");
  std::uint64_t size = 0;
  if (!file.Size(&size) || size < std::uint64_t{kCylinders} * geometry.heads * kTrackBytes) {
    *error = Format("\"%s\" cannot be opened or is too short", path.c_str());
    return nullptr;
  }
  return std::make_unique<FolderArea>(std::move(file), geometry.heads);
}

bool WriteMcwImage(const std::string& path, const DriveDesign& design) {
  DriveDesign image(design.kind);
  std::uint16_t next = 0;
  // The FIT stands at the image's start.
  for (StoredRecord& record : image.records) {
    if (record.content == Content::kFit) next = static_cast<std::uint16_t>(record.sectors);
  }
  for (StoredRecord& record : image.records) {
    record.descriptor.location = record.content == Content::kFit ? 0 : next;
    if (record.content != Content::kFit) next = static_cast<std::uint16_t>(next + record.sectors);
    record.descriptor.attributes &= 0x0F;  // an image holds words the way they are read
  }
  std::vector<std::uint8_t> bytes(std::size_t{next} * kSectorBytes);
  for (const StoredRecord& record : image.records) {
    const std::vector<std::uint8_t> content = image.Fill(record, false);
    std::copy(content.begin(), content.end(),
              bytes.begin() + static_cast<std::ptrdiff_t>(std::size_t{record.descriptor.location} * kSectorBytes));
  }
  platform::ReplacingFile file;
  return file.Open(path, "wb") && file.Write(bytes.data(), bytes.size()) && file.Commit();
}

}  // namespace standin
