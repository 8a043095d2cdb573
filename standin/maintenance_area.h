// The sectors of the simulated drive's maintenance cylinders: in memory, or in a folder that a later run opens again.
#pragma once

#include <memory>
#include <string>

#include "standin/drive_records.h"

namespace standin {

class MaintenanceArea {
 public:
  virtual ~MaintenanceArea() = default;
  // Whole sectors of one track; sectors count from 1 and lie inside it. False when the store fails.
  virtual bool Read(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector, std::uint32_t count,
                    std::uint8_t* to) = 0;
  virtual bool Write(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector, std::uint32_t count,
                     const std::uint8_t* from) = 0;
};

// A drive of one kind with everything that follows from its seed.
struct HOST_API DriveDesign {
  explicit DriveDesign(const DriveKind& kind);

  // The records' bytes are made when they are asked for: most sessions read few of them.
  std::vector<std::uint8_t> Fill(const StoredRecord& record, bool second_copy) const;
  const DefectMap& defects() const;

  DriveKind kind;
  DriveGeometry geometry;
  std::vector<StoredRecord> records;

 private:
  mutable std::unique_ptr<DefectMap> defects_;
};

std::unique_ptr<MaintenanceArea> MakeMemoryArea(const DriveDesign& design);

// A drive's folder: "drive.ini" says its kind, "maintenance.bin" holds the sectors, cylinder by cylinder, head by head.
HOST_API bool WriteDriveFolder(const std::string& folder, const DriveKind& kind, std::string* error);
bool ReadDriveKind(const std::string& folder, DriveKind* kind, std::string* error);
std::unique_ptr<MaintenanceArea> OpenFolderArea(const std::string& folder, const DriveGeometry& geometry,
                                                std::string* error);

// Writes the drive's records as an MCW image: a raw FIT at the start, the records where it says.
HOST_API bool WriteMcwImage(const std::string& path, const DriveDesign& design);

}  // namespace standin
