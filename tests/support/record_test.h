// What tests of records need: tables and sectors of their own on the drive, and records by name.
#pragma once

#include "drive/commands.h"
#include "tests/support/plugin_test.h"

namespace pelix {

class RecordSourceTest : public PluginTest {
 protected:
  // A drive whose FIT is the test's own, read physically.
  void UseTables(const FitBytes& fit) {
    Use({40, false, 1});
    PutOnTrack(0, 0, 1, FsiBytes(static_cast<std::uint16_t>(fit.Get().size() / 512)));
    PutOnTrack(0, 0, 2, fit.Get());
    ASSERT_TRUE(Identify(&identity(), true));
    heads_ = DriveInfo()->heads;
  }
  void PutOnTrack(std::uint32_t cylinder, std::uint32_t head, std::uint32_t sector,
                  const std::vector<std::uint8_t>& bytes) {
    for (std::size_t i = 0; i < bytes.size() / 512; ++i) {
      ASSERT_EQ(drive().WritePhysical(cylinder, head, sector + static_cast<std::uint32_t>(i), 1, &bytes[i * 512]), 0u);
    }
  }
  std::vector<std::uint8_t> Fetched(const char* name, bool second_copy = false) {
    const Record record = records().FetchRecord(RecordName(name), 0, second_copy);
    return {record.bytes.get(), record.bytes.get() + record.size};
  }
  DirectoryEntry EntryOf(const char* name) {
    const DirectoryEntry* entry = records().FindEntry(RecordName(name), 0, Report::kNo, false);
    return entry == nullptr ? DirectoryEntry() : *entry;
  }
  void Switch(AccessMode mode, const std::string& image) {
    identity().access.mode = mode;
    identity().access.image_file = image;
    ASSERT_TRUE(Identify(&identity(), true));
  }

  std::uint32_t heads_ = 0;
};

}  // namespace pelix
