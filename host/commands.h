// The host's drive command layer: the drive information object and one function per drive command.
//
// Commands take the script machine. Where they go stands in request->address, their data in request->data_buffer,
// their numbers in the machine's argument symbols 1 to 3. A value that a command reads comes back in argument 2.
#pragma once

#include "host/vm.h"

inline constexpr std::uint32_t kSectorBytes = 512;

// ATA task-file registers as the drive shows them now.
struct TASKFILE {
  std::uint8_t status;
  std::uint8_t sector_count;
  std::uint8_t sector_number;
  std::uint8_t cylinder_low;
  std::uint8_t cylinder_high;
};
inline constexpr std::uint8_t kStatusBusy = 0x80;
inline constexpr std::uint8_t kStatusReady = 0x40;

// Identifier of a record in the drive's maintenance-cylinder file system (MCFS).
using FID_TYPE = std::uint16_t;
inline constexpr FID_TYPE kFidFsi = 0;                // file-system information, one sector
inline constexpr FID_TYPE kFidFit = 2;                // file information table
inline constexpr FID_TYPE kFidSecondCopy = 0x1000;    // the second copy of a record
inline constexpr FID_TYPE kFidBlockOffsets = 0x2000;  // offsets count blocks of 64 sectors

// File-identifier descriptor: one record of the FIT. Numbers are least significant byte first once
// MCFS_FormatFID_Descriptor has put them so; the raw FIT holds them most significant byte first.
#pragma pack(push, 1)
struct RECORD_FID_DESCRIPTOR {
  std::uint16_t identifier;
  char name[8];
  std::uint16_t location;  // sector index from the start cylinder
  std::uint16_t size;      // sectors, or tracks
  std::uint8_t start_cylinder;
  std::uint8_t attributes;
};
#pragma pack(pop)
static_assert(sizeof(RECORD_FID_DESCRIPTOR) == 16);

// The vendor-unique drive information object. Byte offsets in the comments are the 32-bit host's.
class HOST_API C_DRIVEVUINFO {
 public:
  C_DRIVEVUINFO() = default;
  C_DRIVEVUINFO(const C_DRIVEVUINFO&) = delete;
  C_DRIVEVUINFO& operator=(const C_DRIVEVUINFO&) = delete;

  // Vendor-unique identify: fills this object, request->identify and the data buffer (which holds identify_blocks
  // blocks afterwards). With kFlagIdentifyFile set it takes the data buffer's contents instead of the drive's.
  virtual ECODE Identify(TARN_VM_STRUCT* request);

  // Reads `count` sectors of a record into request->data_buffer, `offset` sectors (or blocks) after its start.
  ECODE MCFS_ReadRecord(TARN_VM_STRUCT* request, FID_TYPE identifier, std::uint16_t offset, std::uint16_t count);

  // Put a raw record's numeric words into host order, in place. FSI and FIT: at least 32 bytes.
  void MCFS_FormatFSI(void* fsi);
  void MCFS_FormatFIT(void* fit);
  void MCFS_FormatFID_Descriptor(RECORD_FID_DESCRIPTOR* descriptor);

  // Geometry of the identified drive. Heads and zones count from 0; -1 or 0 outside the drive.
  std::int32_t FindFirstCyl(std::int32_t head, std::int32_t zone);
  std::int32_t FindLastCyl(std::int32_t head, std::int32_t zone);
  std::int32_t GetSectorForCyl(std::int32_t head, std::int32_t cylinder);  // sectors per track, 0 outside
  std::int32_t GetZoneForCyl(std::int32_t head, std::int32_t cylinder);    // zone number from 1, 0 outside
  std::int32_t GetTrackSkew(std::int32_t head, std::int32_t cylinder);     // sectors

  std::uint8_t bytes_4_to_5[2];
  char firmware_code[24];                // 6: internal firmware code, zero-terminated when shorter
  std::uint16_t heads;                   // 30
  std::uint16_t zones;                   // 32
  std::uint16_t model_value;             // 34: 0 when the drive reports none
  std::uint32_t last_reserved_cylinder;  // 36
  std::uint8_t bytes_40_to_4895[4856];   // the host's own
  std::uint16_t spindle_speed;           // 4896: 0 when the drive reports none
  std::uint16_t servo_wedges;            // 4898: 0 when the drive reports none
  std::uint8_t bytes_4900_to_4917[18];
  std::uint16_t identify_blocks;  // 4918: length of the identify data in 512-byte blocks
};
// The object's first word is its operation table, so a 64-bit build holds every field that much later.
inline constexpr std::size_t kDriveInfoShift = sizeof(void*) - 4;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
static_assert(offsetof(C_DRIVEVUINFO, firmware_code) == 6 + kDriveInfoShift);
static_assert(offsetof(C_DRIVEVUINFO, heads) == 30 + kDriveInfoShift);
static_assert(offsetof(C_DRIVEVUINFO, zones) == 32 + kDriveInfoShift);
static_assert(offsetof(C_DRIVEVUINFO, model_value) == 34 + kDriveInfoShift);
static_assert(offsetof(C_DRIVEVUINFO, last_reserved_cylinder) == 36 + kDriveInfoShift);
static_assert(offsetof(C_DRIVEVUINFO, spindle_speed) == 4896 + kDriveInfoShift);
static_assert(offsetof(C_DRIVEVUINFO, servo_wedges) == 4898 + kDriveInfoShift);
static_assert(offsetof(C_DRIVEVUINFO, identify_blocks) == 4918 + kDriveInfoShift);
#pragma GCC diagnostic pop

extern "C" {
// The drive's task-file registers; issues no command.
HOST_API void GetTaskFile(TASKFILE* registers);

HOST_API ECODE OpcodeCmd_C_RESET(C_VM* vm);
// SMART: argument 1 the feature, 2 the sector count, 3 the sector number. Data: `count` sectors.
HOST_API ECODE OpcodeCmd_C_SMRT(C_VM* vm);

// Physical access at `address`. Argument 1: the transfer length in bytes, count x 512. Data: `count` sectors.
HOST_API ECODE OpcodeCmd_C_VU_PHRD(C_VM* vm);
HOST_API ECODE OpcodeCmd_C_VU_PHWR(C_VM* vm);
// Read verify of `count` sectors at `address`; no data.
HOST_API ECODE OpcodeCmd_C_VU_PHRV(C_VM* vm);
// Seek to the cylinder and head of `address`.
HOST_API ECODE OpcodeCmd_C_VU_SEEK(C_VM* vm);
// Drive buffer. Argument 1: length in bytes; argument 2: buffer selector.
HOST_API ECODE OpcodeCmd_C_VU_RDBUF(C_VM* vm);
HOST_API ECODE OpcodeCmd_C_VU_WRBUF(C_VM* vm);
// Argument 1: the signed offtrack position.
HOST_API ECODE OpcodeCmd_C_VU_OFFT(C_VM* vm);
// Retry count and second retry control, in argument 1.
HOST_API ECODE OpcodeCmd_C_VU_STRY(C_VM* vm);
HOST_API ECODE OpcodeCmd_C_VU_SHRR(C_VM* vm);
// ECC correction on (1) or off (0), in argument 1.
HOST_API ECODE OpcodeCmd_C_VU_SECC(C_VM* vm);
// Channel register: argument 1 the register number; read value in, or value to write from, argument 2.
HOST_API ECODE OpcodeCmd_C_VU_CHRR(C_VM* vm);
HOST_API ECODE OpcodeCmd_C_VU_CHRW(C_VM* vm);
// Extended register word: argument 1 the address; read value in, or value to write from, argument 2.
HOST_API ECODE OpcodeCmd_C_VU_RDXW(C_VM* vm);
HOST_API ECODE OpcodeCmd_C_VU_WRXW(C_VM* vm);
// Format and drive-side tests of the track of `address`. Argument 1: the function word.
HOST_API ECODE OpcodeCmd_C_VU_FMTU(C_VM* vm);
}
