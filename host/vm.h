// The host's script machine and its per-drive request structure.
#pragma once

#include "host/host_api.h"

class C_DRIVEVUINFO;
struct TARN_VM_STRUCT;

// One symbol of the script machine: a global register or an argument of a command. Owned by the host.
class HOST_API SymbolNode {
 public:
  // Stores an integer; drops the text.
  void DataInt(std::int32_t value);

  HostWord fields_1_to_3[3];
  HostWord value;    // field 4: the integer value in the low 32 bits
  const char* text;  // field 5: zero-terminated, null when the symbol holds no text
};
static_assert(offsetof(SymbolNode, value) == HostField(4));
static_assert(offsetof(SymbolNode, text) == HostField(5));

// The script machine. One per host, owned by the host.
class HOST_API C_VM {
 public:
  // The symbol of that name ("::R0" to "::R13" are the global registers), null when there is none.
  SymbolNode* GetSymbolData(const char* name);

  HostWord fields_1_to_21[21];
  TARN_VM_STRUCT* request;  // field 22
  HostWord field_23;
  SymbolNode* arguments[3];  // fields 24 to 26: arguments 1 to 3 of a command, in and out
};
static_assert(offsetof(C_VM, request) == HostField(22));
static_assert(offsetof(C_VM, arguments) == HostField(24));

// Where the next drive command goes. Cylinders and heads count from 0, sectors from 1.
struct DRIVE_ADDRESS {
  HostWord cylinder;
  HostWord head;
  HostWord sector;
  HostWord count;  // sectors
};

// The drive's identify record. Texts are zero-terminated, blank or empty when the drive reports none.
struct IDENTIFY_RECORD {
  std::uint8_t bytes_0_to_29[30];
  char serial_number[21];
  char firmware_version[9];
  char model_name[41];
};
static_assert(offsetof(IDENTIFY_RECORD, serial_number) == 30);
static_assert(offsetof(IDENTIFY_RECORD, firmware_version) == 51);
static_assert(offsetof(IDENTIFY_RECORD, model_name) == 60);

// Bits of TARN_VM_STRUCT::flags that the plug-in changes.
inline constexpr HostWord kFlagBit1 = 0x0002;          // cleared around every drive command
inline constexpr HostWord kFlagIdentifyFile = 0x0080;  // identify data stands in the data buffer, not on the drive
inline constexpr HostWord kFlagBit14 = 0x4000;         // cleared while the main window runs

// The request structure of the drive in use. Owned by the host; one user-interface thread works on it.
struct TARN_VM_STRUCT {
  HostWord fields_1_to_10[10];
  void* data_buffer;  // field 11: data of the next drive command, owned by whoever issues it
  HostWord field_12;
  DRIVE_ADDRESS address;  // fields 13 to 16
  HostWord fields_17_to_27[11];
  HostWord flags;  // field 28
  HostWord fields_29_to_31[3];
  IDENTIFY_RECORD* identify;  // field 32
  C_DRIVEVUINFO* drive_info;  // field 33
};
static_assert(offsetof(TARN_VM_STRUCT, data_buffer) == HostField(11));
static_assert(offsetof(TARN_VM_STRUCT, address) == HostField(13));
static_assert(offsetof(TARN_VM_STRUCT, flags) == HostField(28));
static_assert(offsetof(TARN_VM_STRUCT, identify) == HostField(32));
static_assert(offsetof(TARN_VM_STRUCT, drive_info) == HostField(33));

extern "C" {
// Both are valid from the host's start to its end; the request structure may be replaced through the host context.
HOST_API C_VM* GetVM();
HOST_API TARN_VM_STRUCT* GetVMstruct();
}
