// The stand-in's drive command layer: what the plug-in calls, done on the simulated drive.
#include <algorithm>
#include <cstring>

#include "host/commands.h"
#include "platform/byte_view.h"
#include "standin/host.h"
#include "standin/identify_layout.h"

namespace {

using platform::ByteView;
using standin::Host;
using standin::SimDrive;

std::uint32_t Argument(const C_VM* vm, std::size_t number) {
  return static_cast<std::uint32_t>(vm->arguments[number - 1]->value);
}

// Runs a command on the drive unless a fault rule has it fail.
template <class Command>
ECODE Run(const char* name, Command command) {
  ECODE code = standin::kSuccess;
  return Host::Instance().Fails(name, &code) ? code : command(Host::Instance().drive());
}

struct Address {
  std::uint32_t cylinder, head, sector, count;
};

Address AddressOf(const C_VM* vm) {
  const DRIVE_ADDRESS& address = vm->request->address;
  return {static_cast<std::uint32_t>(address.cylinder), static_cast<std::uint32_t>(address.head),
          static_cast<std::uint32_t>(address.sector), static_cast<std::uint32_t>(address.count)};
}

std::uint8_t* DataOf(const C_VM* vm) {
  return static_cast<std::uint8_t*>(vm->request->data_buffer);
}

template <std::size_t kRoom>
void CopyText(ByteView data, std::size_t offset, char (&to)[kRoom]) {
  std::memset(to, 0, kRoom);
  if (data.Holds(offset, kRoom - 1)) std::memcpy(to, data.data() + offset, kRoom - 1);
}

std::uint32_t Number(ByteView data, std::size_t offset, std::size_t width) {
  std::uint32_t value = 0;
  return data.Le(offset, width, &value) ? value : 0;
}

standin::DriveGeometry GeometryIn(ByteView data) {
  standin::DriveGeometry geometry;
  geometry.heads = Number(data, 30, 2);
  geometry.zones = Number(data, 32, 2);
  const std::size_t rows = std::size_t{geometry.heads} * geometry.zones;
  const bool believable = geometry.heads <= standin::kMostHeads && geometry.zones <= standin::kMostZones &&
                          data.Holds(standin::kIdentifyZones, rows * standin::kIdentifyZoneBytes);
  if (!believable) return {};
  for (std::size_t i = 0; i < rows; ++i) {
    const std::size_t at = standin::kIdentifyZones + i * standin::kIdentifyZoneBytes;
    standin::ZoneRow row;
    row.first_cylinder = Number(data, at, 4);
    row.last_cylinder = Number(data, at + 4, 4);
    row.sectors = static_cast<std::uint16_t>(Number(data, at + 8, 2));
    row.cylinder_skew = static_cast<std::uint8_t>(Number(data, at + 10, 1));
    row.head_skew = static_cast<std::uint8_t>(Number(data, at + 11, 1));
    geometry.rows.push_back(row);
  }
  return geometry;
}

// The most identify data that can matter: a buffer that claims more is read no further.
constexpr std::size_t kMostIdentifyBytes =
    standin::kIdentifyZones + standin::kMostHeads * standin::kMostZones * standin::kIdentifyZoneBytes;

const standin::DriveGeometry& Geometry() {
  return Host::Instance().identified_geometry;
}

// Exchanges the bytes of the words at every second offset from `first` to `last`.
void SwapWordsAt(void* data, std::size_t first, std::size_t last) {
  platform::SwapWords(static_cast<std::uint8_t*>(data) + first, last + 2 - first);
}

}  // namespace

ECODE C_DRIVEVUINFO::Identify(TARN_VM_STRUCT* request) {
  return Run("IDENTIFY", [&](SimDrive& drive) -> ECODE {
    auto* buffer = static_cast<std::uint8_t*>(request->data_buffer);
    if ((request->flags & kFlagIdentifyFile) == 0) {
      const std::vector<std::uint8_t> data = IdentifyDataOf(drive.design().kind, drive.design().geometry);
      std::memcpy(buffer, data.data(), data.size());
    }
    constexpr std::size_t kDocumented = standin::kIdentifyZones;  // always there; the zone rows behind as claimed
    const std::size_t claimed = Number(ByteView(buffer, kDocumented), 4918, 2) * kSectorBytes;
    const ByteView data(buffer, std::clamp(claimed, kDocumented, kMostIdentifyBytes));
    // The object's bytes from 4 to the end of its last documented field are those of the data.
    std::memcpy(reinterpret_cast<std::uint8_t*>(this) + sizeof(void*), buffer + 4, 4920 - 4);
    CopyText(data, standin::kIdentifySerial, request->identify->serial_number);
    CopyText(data, standin::kIdentifyVersion, request->identify->firmware_version);
    CopyText(data, standin::kIdentifyModel, request->identify->model_name);
    Host::Instance().identified_geometry = GeometryIn(data);
    return standin::kSuccess;
  });
}

ECODE C_DRIVEVUINFO::MCFS_ReadRecord(TARN_VM_STRUCT* request, FID_TYPE identifier, std::uint16_t offset,
                                     std::uint16_t count) {
  return Run("MCFS_READRECORD", [&](SimDrive& drive) {
    return drive.ReadRecord(identifier, offset, count, static_cast<std::uint8_t*>(request->data_buffer));
  });
}

void C_DRIVEVUINFO::MCFS_FormatFSI(void* fsi) {
  SwapWordsAt(fsi, 8, 30);
}
void C_DRIVEVUINFO::MCFS_FormatFIT(void* fit) {
  SwapWordsAt(fit, 8, 24);
}
void C_DRIVEVUINFO::MCFS_FormatFID_Descriptor(RECORD_FID_DESCRIPTOR* descriptor) {
  SwapWordsAt(descriptor, 0, 0);
  SwapWordsAt(descriptor, 10, 12);
}

std::int32_t C_DRIVEVUINFO::FindFirstCyl(std::int32_t head, std::int32_t zone) {
  const standin::ZoneRow* row = Geometry().Zone(head, zone);
  return row == nullptr ? -1 : static_cast<std::int32_t>(row->first_cylinder);
}
std::int32_t C_DRIVEVUINFO::FindLastCyl(std::int32_t head, std::int32_t zone) {
  const standin::ZoneRow* row = Geometry().Zone(head, zone);
  return row == nullptr ? -1 : static_cast<std::int32_t>(row->last_cylinder);
}
std::int32_t C_DRIVEVUINFO::GetSectorForCyl(std::int32_t head, std::int32_t cylinder) {
  return static_cast<std::int32_t>(Geometry().SectorsPerTrack(head, cylinder));
}
std::int32_t C_DRIVEVUINFO::GetZoneForCyl(std::int32_t head, std::int32_t cylinder) {
  return Geometry().ZoneOf(head, cylinder) + 1;
}
std::int32_t C_DRIVEVUINFO::GetTrackSkew(std::int32_t head, std::int32_t cylinder) {
  return static_cast<std::int32_t>(Geometry().Skew(head, cylinder));
}

void GetTaskFile(TASKFILE* registers) {
  ECODE status = kStatusReady;
  Host::Instance().Fails("TASKFILE", &status);
  *registers = {};
  registers->status = static_cast<std::uint8_t>(status);
}

ECODE OpcodeCmd_C_RESET(C_VM*) {
  return Run("RESET", [](SimDrive& drive) -> ECODE {
    drive.Reset();
    return standin::kSuccess;
  });
}

ECODE OpcodeCmd_C_SMRT(C_VM* vm) {
  return Run("SMRT", [&](SimDrive& drive) {
    return drive.Smart(Argument(vm, 1), Argument(vm, 2), Argument(vm, 3), DataOf(vm));
  });
}

ECODE OpcodeCmd_C_VU_PHRD(C_VM* vm) {
  return Run("PHRD", [&](SimDrive& drive) -> ECODE {
    const Address at = AddressOf(vm);
    if (Argument(vm, 1) != at.count * kSectorBytes) return standin::kBadArgument;
    return drive.ReadPhysical(at.cylinder, at.head, at.sector, at.count, DataOf(vm));
  });
}

ECODE OpcodeCmd_C_VU_PHWR(C_VM* vm) {
  return Run("PHWR", [&](SimDrive& drive) -> ECODE {
    const Address at = AddressOf(vm);
    if (Argument(vm, 1) != at.count * kSectorBytes) return standin::kBadArgument;
    return drive.WritePhysical(at.cylinder, at.head, at.sector, at.count, DataOf(vm));
  });
}

ECODE OpcodeCmd_C_VU_PHRV(C_VM* vm) {
  return Run("PHRV", [&](SimDrive& drive) {
    const Address at = AddressOf(vm);
    return drive.VerifyPhysical(at.cylinder, at.head, at.sector, at.count);
  });
}

ECODE OpcodeCmd_C_VU_SEEK(C_VM* vm) {
  return Run("SEEK", [&](SimDrive& drive) -> ECODE {
    const Address at = AddressOf(vm);
    const bool on_drive = at.head < drive.design().geometry.heads &&
                          (at.cylinder <= standin::kLastReservedCylinder ||
                           drive.design().geometry.SectorsPerTrack(static_cast<std::int32_t>(at.head),
                                                                   static_cast<std::int32_t>(at.cylinder)) != 0);
    return on_drive ? standin::kSuccess : standin::kNotFound;
  });
}

ECODE OpcodeCmd_C_VU_RDBUF(C_VM* vm) {
  return Run("RDBUF", [&](SimDrive& drive) { return drive.ReadBuffer(Argument(vm, 1), DataOf(vm)); });
}
ECODE OpcodeCmd_C_VU_WRBUF(C_VM* vm) {
  return Run("WRBUF", [&](SimDrive& drive) { return drive.WriteBuffer(Argument(vm, 1), DataOf(vm)); });
}

namespace {

// A control that takes one number.
template <class Set>
ECODE RunControl(const char* name, C_VM* vm, Set set) {
  return Run(name, [&](SimDrive& drive) -> ECODE {
    set(drive, Argument(vm, 1));
    return standin::kSuccess;
  });
}

// A read that leaves its value in argument 2.
template <class Read>
ECODE RunRead(const char* name, C_VM* vm, Read read) {
  return Run(name, [&](SimDrive& drive) {
    std::uint32_t value = 0;
    const ECODE result = read(drive, Argument(vm, 1), &value);
    if (result == standin::kSuccess) vm->arguments[1]->DataInt(static_cast<std::int32_t>(value));
    return result;
  });
}

}  // namespace

ECODE OpcodeCmd_C_VU_OFFT(C_VM* vm) {
  return RunControl("OFFT", vm,
                    [](SimDrive& drive, std::uint32_t value) { drive.SetOfftrack(static_cast<std::int32_t>(value)); });
}
ECODE OpcodeCmd_C_VU_STRY(C_VM* vm) {
  return RunControl("STRY", vm, [](SimDrive& drive, std::uint32_t value) { drive.SetRetry(value); });
}
ECODE OpcodeCmd_C_VU_SHRR(C_VM* vm) {
  return RunControl("SHRR", vm, [](SimDrive& drive, std::uint32_t value) { drive.SetSecondRetry(value); });
}
ECODE OpcodeCmd_C_VU_SECC(C_VM* vm) {
  return RunControl("SECC", vm, [](SimDrive& drive, std::uint32_t value) { drive.SetCorrection(value); });
}
ECODE OpcodeCmd_C_VU_CHRR(C_VM* vm) {
  return RunRead("CHRR", vm, [](SimDrive& drive, std::uint32_t number, std::uint32_t* value) {
    return drive.ReadChannelRegister(number, value);
  });
}
ECODE OpcodeCmd_C_VU_CHRW(C_VM* vm) {
  return Run("CHRW", [&](SimDrive& drive) { return drive.WriteChannelRegister(Argument(vm, 1), Argument(vm, 2)); });
}
ECODE OpcodeCmd_C_VU_RDXW(C_VM* vm) {
  return RunRead("RDXW", vm, [](SimDrive& drive, std::uint32_t address, std::uint32_t* value) {
    return drive.ReadExtendedWord(address, value);
  });
}
ECODE OpcodeCmd_C_VU_WRXW(C_VM* vm) {
  return Run("WRXW", [&](SimDrive& drive) { return drive.WriteExtendedWord(Argument(vm, 1), Argument(vm, 2)); });
}
ECODE OpcodeCmd_C_VU_FMTU(C_VM* vm) {
  return Run("FMTU", [&](SimDrive& drive) {
    const Address at = AddressOf(vm);
    return drive.FormatFunction(at.cylinder, at.head, Argument(vm, 1));
  });
}
