#include "drive/commands.h"

#include "drive/host_services.h"

namespace pelix {
namespace {

bool HasDrive() {
  return g_host->vm != nullptr && g_host->request != nullptr;
}

void SetArgument(std::size_t number, std::int32_t value) {
  SymbolNode* symbol = g_host->vm->arguments[number - 1];
  if (symbol != nullptr) symbol->DataInt(value);
}

ECODE AccessPhysical(ECODE (*command)(C_VM*), const PhysicalAddress& address, std::uint32_t count, void* data) {
  if (!HasDrive()) return kNoDrive;
  TARN_VM_STRUCT* request = g_host->request;
  request->address = {address.cylinder, address.head, address.sector, count};
  request->data_buffer = data;
  SetArgument(1, static_cast<std::int32_t>(count * kSectorBytes));
  const CommandBracket bracket(request);
  return command(g_host->vm);
}

}  // namespace

C_DRIVEVUINFO* DriveInfo() {
  return g_host->request == nullptr ? nullptr : g_host->request->drive_info;
}

std::uint32_t HeadCount() {
  return DriveInfo() == nullptr ? 0 : DriveInfo()->heads;
}

ECODE IdentifyDrive(std::uint8_t* buffer, bool from_buffer) {
  if (!HasDrive() || DriveInfo() == nullptr) return kNoDrive;
  TARN_VM_STRUCT* request = g_host->request;
  request->data_buffer = buffer;
  const CommandBracket bracket(request);
  if (from_buffer) request->flags |= kFlagIdentifyFile;
  const ECODE result = DriveInfo()->Identify(request);
  if (from_buffer) request->flags &= ~kFlagIdentifyFile;
  return result;
}

ECODE ReadMcfsRecord(FID_TYPE identifier, std::uint16_t offset, std::uint16_t count, std::uint8_t* to) {
  if (!HasDrive() || DriveInfo() == nullptr) return kNoDrive;
  g_host->request->data_buffer = to;
  const CommandBracket bracket(g_host->request);
  return DriveInfo()->MCFS_ReadRecord(g_host->request, identifier, offset, count);
}

ECODE ReadPhysical(const PhysicalAddress& address, std::uint32_t count, std::uint8_t* to) {
  return AccessPhysical(OpcodeCmd_C_VU_PHRD, address, count, to);
}

ECODE WritePhysical(const PhysicalAddress& address, std::uint32_t count, const std::uint8_t* from) {
  return AccessPhysical(OpcodeCmd_C_VU_PHWR, address, count, const_cast<std::uint8_t*>(from));
}

ECODE ReadExtendedWord(std::uint16_t address, std::uint16_t* value) {
  *value = 0;
  if (!HasDrive()) return kNoDrive;
  SetArgument(1, address);
  const CommandBracket bracket(g_host->request);
  const ECODE result = OpcodeCmd_C_VU_RDXW(g_host->vm);
  const SymbolNode* symbol = g_host->vm->arguments[1];
  if (result == 0 && symbol != nullptr) *value = static_cast<std::uint16_t>(symbol->value);
  return result;
}

ECODE ResetDrive() {
  if (!HasDrive()) return kNoDrive;
  const CommandBracket bracket(g_host->request);
  return OpcodeCmd_C_RESET(g_host->vm);
}

}  // namespace pelix
