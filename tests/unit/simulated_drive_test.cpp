// The simulated drive: its geometry, its bad spots and what its commands show of them must agree, for reports and live
// tests are judged by it.
#include <numeric>
#include <set>

#include "host/commands.h"
#include "standin/drive_geometry.h"
#include "tests/support/plugin_test.h"

namespace pelix {
namespace {

using standin::Defect;
using standin::DriveGeometry;
using standin::ZoneRow;

TEST(DriveGeometryTest, ZonesFollowOneAnotherOnEveryModel) {
  for (std::uint32_t model = 11; model <= 64; ++model) {
    const DriveGeometry geometry = standin::MakeGeometry(model, model % 5);
    ASSERT_TRUE(geometry.heads >= 2 && geometry.heads <= 6) << model;
    ASSERT_TRUE(geometry.zones >= 8 && geometry.zones <= 16) << model;
    for (std::int32_t head = 0; head < static_cast<std::int32_t>(geometry.heads); ++head) {
      std::uint32_t next = standin::kLastReservedCylinder + 1;
      for (std::int32_t zone = 0; zone < static_cast<std::int32_t>(geometry.zones); ++zone) {
        const ZoneRow& row = *geometry.Zone(head, zone);
        ASSERT_EQ(row.first_cylinder, next) << model;
        ASSERT_GE(row.last_cylinder, row.first_cylinder);
        ASSERT_EQ(geometry.ZoneOf(head, static_cast<std::int32_t>(row.first_cylinder)), zone);
        ASSERT_EQ(geometry.ZoneOf(head, static_cast<std::int32_t>(row.last_cylinder)), zone);
        next = row.last_cylinder + 1;
      }
      EXPECT_EQ(geometry.ZoneOf(head, static_cast<std::int32_t>(next)), -1);
      EXPECT_EQ(geometry.SectorsPerTrack(head, standin::kLastReservedCylinder), 0u) << "not of the user area";
    }
    EXPECT_EQ(geometry.Zone(static_cast<std::int32_t>(geometry.heads), 0), nullptr);
    EXPECT_EQ(geometry.Zone(-1, 0), nullptr);
  }
}

TEST(DriveGeometryTest, SkewTurnsATrackAndLosesNoSector) {
  const DriveGeometry geometry = standin::MakeGeometry(64, 1);
  const ZoneRow& zone = *geometry.Zone(1, 3);
  for (const std::uint32_t cylinder : {zone.first_cylinder, zone.first_cylinder + 1, zone.last_cylinder}) {
    std::set<std::uint32_t> physical;
    for (std::uint32_t logical = 1; logical <= zone.sectors; ++logical) {
      const std::uint32_t sector = standin::PhysicalSector(zone, 1, cylinder, logical);
      physical.insert(sector);
      EXPECT_EQ((sector - 1 + standin::TrackSkew(zone, 1, cylinder)) % zone.sectors, logical - 1);
    }
    EXPECT_EQ(physical.size(), zone.sectors);
    EXPECT_EQ(*physical.begin(), 1u);
    EXPECT_EQ(*physical.rbegin(), zone.sectors);
  }
}

class SimulatedDriveTest : public PluginTest {
 protected:
  const std::vector<Defect>& Defects() { return drive().design().defects().defects(); }
  // A bad sector of at least that depth, and a good one on its track, three sectors away from every bad one.
  const Defect& Bad(std::uint32_t depth) {
    for (const Defect& defect : Defects()) {
      if (defect.depth >= depth) return defect;
    }
    ADD_FAILURE() << "no defect is that deep";
    return Defects().front();
  }
  std::uint32_t GoodSector(const Defect& bad) {
    const auto& map = drive().design().defects();
    for (std::uint32_t sector = 4;; ++sector) {
      bool good = true;
      for (std::uint32_t near = sector - 3; near <= sector + 3; ++near) {
        good = good && map.At(bad.cylinder, bad.head, near) == nullptr;
      }
      if (good) return sector;
    }
  }

  // The command with that address and those arguments, as the plug-in's own wrappers issue it.
  template <class Command>
  ECODE Issue(Command command, const DRIVE_ADDRESS& address, std::initializer_list<std::int32_t> arguments) {
    GetVMstruct()->address = address;
    GetVMstruct()->data_buffer = data_.data();
    std::size_t number = 0;
    for (const std::int32_t argument : arguments) GetVM()->arguments[number++]->DataInt(argument);
    return command(GetVM());
  }
  std::uint32_t GainShown(std::int32_t channel_register) {
    EXPECT_EQ(Issue(OpcodeCmd_C_VU_CHRR, {}, {channel_register, 0}), 0u);
    return static_cast<std::uint32_t>(GetVM()->arguments[1]->value);
  }
  std::uint32_t FailuresOf(const Defect& at, int attempts) {
    std::uint32_t failures = 0;
    for (int i = 0; i < attempts; ++i) {
      failures += Issue(OpcodeCmd_C_VU_PHRV, {at.cylinder, at.head, at.sector, 1}, {}) != 0 ? 1 : 0;
    }
    return failures;
  }

  std::vector<std::uint8_t> data_ = std::vector<std::uint8_t>(128 * 512);
};

TEST_F(SimulatedDriveTest, DefectsStandOnTheirTracksAndRaiseTheGain) {
  for (const standin::DriveKind kind : {standin::DriveKind{11, false, 4}, {58, false, 2}, {64, true, 3}}) {
    Use(kind);
    const DriveGeometry& geometry = drive().design().geometry;
    ASSERT_GE(Defects().size(), 100u);
    for (const Defect& defect : Defects()) {
      const ZoneRow* zone = geometry.RowOf(defect.head, static_cast<std::int32_t>(defect.cylinder));
      ASSERT_NE(zone, nullptr);
      ASSERT_EQ(standin::PhysicalSector(*zone, defect.head, defect.cylinder, defect.logical), defect.sector);
      ASSERT_EQ(drive().design().defects().At(defect.cylinder, defect.head, defect.sector), &defect);
      const std::uint32_t good = drive().Gain(defect.cylinder, defect.head, GoodSector(defect), 0);
      EXPECT_GT(drive().Gain(defect.cylinder, defect.head, defect.sector, 0), good) << defect.cylinder;
      EXPECT_GT(drive().Gain(defect.cylinder, defect.head, GoodSector(defect), 40), good) << "off the track";
      EXPECT_EQ(drive().Gain(defect.cylinder, defect.head, defect.sector, -40),
                drive().Gain(defect.cylinder, defect.head, defect.sector, 40));
      EXPECT_EQ(drive().Gain(defect.cylinder, defect.head, defect.sector, 5000), 255u);
    }
  }
}

TEST_F(SimulatedDriveTest, AVerifyLeavesTheGainInTheModelsRegister) {
  const struct {
    std::uint32_t model;
    std::int32_t channel_register;
  } cases[] = {{29, 23}, {57, 23}, {58, 171}, {59, 171}, {60, 152}, {62, 152}, {63, 23}, {64, 23}};
  for (const auto& c : cases) {
    Use({c.model, false, 1});
    const Defect& bad = Bad(9);
    for (const std::int32_t offtrack : {0, 60}) {
      EXPECT_EQ(Issue(OpcodeCmd_C_VU_OFFT, {}, {offtrack}), 0u);
      Issue(OpcodeCmd_C_VU_PHRV, {bad.cylinder, bad.head, bad.sector, 1}, {});
      EXPECT_EQ(GainShown(c.channel_register), drive().Gain(bad.cylinder, bad.head, bad.sector, offtrack)) << c.model;
    }
    EXPECT_EQ(Issue(OpcodeCmd_C_VU_CHRW, {}, {40, 0x1234}), 0u);
    EXPECT_EQ(GainShown(40), 0x1234u) << "other registers keep what is written";
  }
}

TEST_F(SimulatedDriveTest, RetriesAndCorrectionSaveReadsAndOfftrackLosesThem) {
  const Defect& bad = Bad(6);
  Defect good = bad;
  good.sector = static_cast<std::uint16_t>(GoodSector(bad));
  EXPECT_EQ(FailuresOf(good, 100), 0u);
  const std::uint32_t with_all = FailuresOf(bad, 400);
  EXPECT_EQ(Issue(OpcodeCmd_C_VU_SECC, {}, {0}), 0u);
  EXPECT_EQ(Issue(OpcodeCmd_C_VU_STRY, {}, {0}), 0u);
  EXPECT_EQ(Issue(OpcodeCmd_C_VU_SHRR, {}, {0}), 0u);
  const std::uint32_t bare = FailuresOf(bad, 400);
  EXPECT_GT(bare, with_all + 50);
  EXPECT_LT(bare, 400u) << "now and then it is read";
  EXPECT_EQ(Issue(OpcodeCmd_C_VU_OFFT, {}, {-70}), 0u);
  EXPECT_EQ(FailuresOf(good, 100), 100u);
  EXPECT_EQ(Issue(OpcodeCmd_C_RESET, {}, {}), 0u);
  EXPECT_EQ(FailuresOf(good, 100), 0u) << "a reset sets everything back";
}

TEST_F(SimulatedDriveTest, TheTrackTestCountsFailuresPerSector) {
  const Defect& bad = Bad(9);
  Issue(OpcodeCmd_C_VU_STRY, {}, {0});
  constexpr std::int32_t kThirtyTimes = 30 << 8 | 132;
  EXPECT_EQ(Issue(OpcodeCmd_C_VU_FMTU, {bad.cylinder, bad.head, 1, 1}, {kThirtyTimes}), 0u);
  EXPECT_EQ(Issue(OpcodeCmd_C_VU_RDBUF, {}, {2048, 0}), 0u);
  EXPECT_GT(data_[bad.sector - 1u], 5);
  EXPECT_LE(data_[bad.sector - 1u], 30);
  EXPECT_EQ(data_[GoodSector(bad) - 1], 0);
  EXPECT_NE(Issue(OpcodeCmd_C_VU_FMTU, {bad.cylinder, bad.head, 1, 1}, {133}), 0u) << "no such function";
  EXPECT_NE(Issue(OpcodeCmd_C_VU_FMTU, {bad.cylinder, 9, 1, 1}, {kThirtyTimes}), 0u) << "no such head";
  EXPECT_NE(Issue(OpcodeCmd_C_VU_RDBUF, {}, {4097, 0}), 0u) << "more than the buffer holds";
  std::iota(data_.begin(), data_.begin() + 4096, std::uint8_t{0});
  EXPECT_EQ(Issue(OpcodeCmd_C_VU_WRBUF, {}, {4096, 0}), 0u);
  std::fill(data_.begin(), data_.end(), std::uint8_t{0});
  EXPECT_EQ(Issue(OpcodeCmd_C_VU_RDBUF, {}, {4096, 0}), 0u);
  EXPECT_EQ(data_[4095], 0xFF);
}

TEST_F(SimulatedDriveTest, RefusesWhatIsNotThere) {
  const std::uint32_t sectors = drive().design().geometry.SectorsPerTrack(0, 100);
  const struct {
    DRIVE_ADDRESS address;
    std::int32_t bytes;
  } refused[] = {{{100, 0, 0, 1}, 512},         {{100, 0, sectors, 2}, 1024},  {{100, 6, 1, 1}, 512},
                 {{100, 0, 1, 0}, 0},           {{100, 0, 1, 129}, 129 * 512}, {{100, 0, 1, 2}, 512},
                 {{0xFFFFFFF0u, 0, 1, 1}, 512}, {{31, 0, 200, 2}, 1024},       {{31, 0, 0xFFFFFFFFu, 2}, 1024}};
  for (const auto& c : refused) {
    EXPECT_NE(Issue(OpcodeCmd_C_VU_PHRD, c.address, {c.bytes}), 0u) << c.address.cylinder << " " << c.address.sector;
    EXPECT_NE(Issue(OpcodeCmd_C_VU_PHWR, c.address, {c.bytes}), 0u) << c.address.cylinder << " " << c.address.sector;
  }
  EXPECT_EQ(Issue(OpcodeCmd_C_VU_PHRD, {31, 0, 200, 1}, {512}), 0u);
  EXPECT_EQ(Issue(OpcodeCmd_C_VU_SEEK, {31, 0, 1, 1}, {}), 0u);
  EXPECT_EQ(Issue(OpcodeCmd_C_VU_SEEK, {100, 0, 1, 1}, {}), 0u);
  EXPECT_NE(Issue(OpcodeCmd_C_VU_SEEK, {31, 6, 1, 1}, {}), 0u);
  EXPECT_NE(Issue(OpcodeCmd_C_VU_SEEK, {10000000, 0, 1, 1}, {}), 0u);
}

TEST_F(SimulatedDriveTest, SmartDataCarriesItsChecksum) {
  constexpr std::int32_t kData = 0xD0, kLog = 0xD5, kEnable = 0xD8, kDisable = 0xD9;
  for (const std::int32_t feature : {kData, kLog}) {
    EXPECT_EQ(Issue(OpcodeCmd_C_SMRT, {}, {feature, 1, 6}), 0u);
    EXPECT_EQ(std::accumulate(data_.begin(), data_.begin() + 512, 0u) % 256, 0u);
    EXPECT_NE(data_[2], 0);
  }
  EXPECT_NE(Issue(OpcodeCmd_C_SMRT, {}, {kLog, 2, 6}), 0u);
  EXPECT_EQ(Issue(OpcodeCmd_C_SMRT, {}, {kDisable, 0, 0}), 0u);
  EXPECT_NE(Issue(OpcodeCmd_C_SMRT, {}, {kData, 1, 0}), 0u) << "switched off";
  EXPECT_EQ(Issue(OpcodeCmd_C_SMRT, {}, {kEnable, 0, 0}), 0u);
  EXPECT_EQ(Issue(OpcodeCmd_C_SMRT, {}, {kData, 1, 0}), 0u);
}

}  // namespace
}  // namespace pelix
