// The host's record decoders: one class per record kind, built on a record buffer and read by accessor.
//
// A decoder reads the buffer it was built on and never past its end; the buffer must outlive it. Entry indexes count
// from 0; an index that the record does not hold reads as 0.
#pragma once

#include "host/host_api.h"

class HOST_API CBaseDataClass {
 public:
  virtual ~CBaseDataClass();
  CBaseDataClass(const CBaseDataClass&) = delete;
  CBaseDataClass& operator=(const CBaseDataClass&) = delete;

  // Whether this class knows the layout of the record's revision.
  bool IsRevisionValid() const;
  std::int32_t GetRevisionNumber() const;

 protected:
  // Knows the revisions from 1 to `newest_revision`.
  CBaseDataClass(const void* record, std::uint32_t bytes, std::int32_t newest_revision);

  // Number at a byte offset, least significant byte first; 0 past the record's end.
  std::uint32_t Number(std::uint32_t offset, std::uint32_t width) const;

  const std::uint8_t* record_;
  std::uint32_t bytes_;

 private:
  std::int32_t newest_revision_;
};

// A raw FIT, as the drive stores it.
class HOST_API CManagerFIT : public CBaseDataClass {
 public:
  CManagerFIT(const void* record, std::uint32_t bytes);
  // Sector number of the record of that name (eight characters), 0 when the FIT does not name it.
  std::uint32_t GetNumberSector(const char* name) const;
};

// Capacity selection check, "CAPSELDA".
class HOST_API CManagerCSCError : public CBaseDataClass {
 public:
  CManagerCSCError(const void* record, std::uint32_t bytes);
  std::uint32_t GetErrorCode() const;
};

class HOST_API CManagerTemperature : public CBaseDataClass {
 public:
  CManagerTemperature(const void* record, std::uint32_t bytes);
};

class HOST_API CManagerSMRTResult : public CBaseDataClass {
 public:
  CManagerSMRTResult(const void* record, std::uint32_t bytes);
};

class HOST_API CManagerServoTable : public CBaseDataClass {
 public:
  CManagerServoTable(const void* record, std::uint32_t bytes);
};

class HOST_API CManagerChannelTable : public CBaseDataClass {
 public:
  CManagerChannelTable(const void* record, std::uint32_t bytes);
};

// Burn-in script. `header` is the 512-byte "BISP_HDR", null on drives without one.
class HOST_API CManagerBIScript : public CBaseDataClass {
 public:
  CManagerBIScript(void* header, void* record, std::uint32_t bytes);
  const char* GetEndStatus() const;
  void SetEndStatus(const char* status);
  std::uint8_t GetWaitTime() const;
  void SetWaitTime(std::uint8_t wait);
  const char* GetScriptName() const;
  std::uint32_t GetNumberOfStep() const;
  std::uint8_t GetBICommand(std::uint32_t step) const;
  void SetBICommand(std::uint32_t step, std::uint8_t code);
  std::uint8_t GetReserved(std::uint32_t step) const;
  void SetReserved(std::uint32_t step, std::uint8_t value);
  std::uint16_t GetBICmdPCount(std::uint32_t step) const;
  void SetBICmdPCount(std::uint32_t step, std::uint16_t count);
  std::uint16_t GetBICmdRCount(std::uint32_t step) const;
  void SetBICmdRCount(std::uint32_t step, std::uint16_t count);
  std::uint16_t GetBICmdArgument(std::uint32_t step) const;
  void SetBICmdArgument(std::uint32_t step, std::uint16_t argument);
};

class HOST_API CManagerBIResult : public CBaseDataClass {
 public:
  CManagerBIResult(const void* record, std::uint32_t bytes);
  std::uint16_t GetBFlag() const;
  std::uint16_t GetAdOFS() const;
  const char* GetBurninCode() const;
  std::uint32_t GetBurninTime() const;
  std::uint16_t GetCacheOption() const;
};

// Defect lists. Header and entry records in one or two buffers; SetBuffer attaches them to a default-built object.
class HOST_API CManagerDLIST : public CBaseDataClass {
 public:
  CManagerDLIST();
  CManagerDLIST(const void* header, std::uint32_t header_bytes, const void* entries, std::uint32_t entry_bytes);
  void SetBuffer(const void* header, std::uint32_t header_bytes, const void* entries, std::uint32_t entry_bytes);
  std::uint16_t GetNumberOfEntries() const;
  std::uint32_t GetCylinder(std::uint32_t index) const;
  std::uint16_t GetHead(std::uint32_t index) const;
  std::uint16_t GetSector(std::uint32_t index) const;
  std::uint8_t GetType(std::uint32_t index) const;
  std::uint8_t GetErrCnt(std::uint32_t index) const;
  std::uint8_t GetErrCode(std::uint32_t index) const;
};

class HOST_API CManagerRLIST : public CBaseDataClass {
 public:
  CManagerRLIST(const void* header, std::uint32_t header_bytes, const void* entries, std::uint32_t entry_bytes);
  std::uint16_t GetNumberOfEntries() const;
  std::uint32_t GetCylinder(std::uint32_t index) const;
  std::uint8_t GetHead(std::uint32_t index) const;
  std::uint16_t GetSector(std::uint32_t index) const;
  std::uint32_t GetAltCylinder(std::uint32_t index) const;
  std::uint8_t GetAltHead(std::uint32_t index) const;
  std::uint16_t GetAltSector(std::uint32_t index) const;
  std::uint16_t GetFlag(std::uint32_t index) const;
  std::uint16_t GetErrorCode(std::uint32_t index) const;
  std::uint16_t GetNumberOfGhost() const;
};

class HOST_API CManagerSLIPLIST : public CBaseDataClass {
 public:
  CManagerSLIPLIST();
  CManagerSLIPLIST(const void* header, std::uint32_t header_bytes, const void* entries, std::uint32_t entry_bytes);
  void SetBuffer(const void* header, std::uint32_t header_bytes, const void* entries, std::uint32_t entry_bytes);
  std::uint16_t GetNumberOfEntries() const;
  std::uint32_t GetCylinder(std::uint32_t index) const;
  std::uint8_t GetHead(std::uint32_t index) const;
  std::uint16_t GetSector(std::uint32_t index) const;
  std::uint8_t GetTrackFlag(std::uint32_t index) const;
};

class HOST_API CManagerTLIST : public CBaseDataClass {
 public:
  CManagerTLIST(const void* header, std::uint32_t header_bytes, const void* entries, std::uint32_t entry_bytes);
  std::uint32_t GetNumberOfEntries() const;
  std::uint32_t GetCylinder(std::uint32_t index) const;
  std::uint16_t GetHead(std::uint32_t index) const;
  std::uint16_t GetErrorCode(std::uint32_t index) const;
  std::uint8_t GetStep(std::uint32_t index) const;
};

class HOST_API CManagerVLIST : public CBaseDataClass {
 public:
  CManagerVLIST(const void* header, std::uint32_t header_bytes, const void* entries, std::uint32_t entry_bytes);
  std::uint32_t GetNumberOfEntries() const;
  std::uint32_t GetCylinder(std::uint32_t index) const;
  std::uint8_t GetHead(std::uint32_t index) const;
  std::uint8_t GetSector(std::uint32_t index) const;  // servo wedge
  std::uint8_t GetFlag(std::uint32_t index) const;
  std::uint8_t GetStep(std::uint32_t index) const;
};

class HOST_API CManagerMLIST : public CBaseDataClass {
 public:
  CManagerMLIST(const void* entries, std::uint32_t entry_bytes);
};
