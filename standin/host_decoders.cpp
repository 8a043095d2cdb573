// The stand-in's record decoders. Layouts are its own (docs/stand-in.md); a revision word stands at byte 8.
#include <cstring>

#include "host/decoders.h"
#include "platform/byte_view.h"

namespace {

constexpr std::uint32_t kRevisionAt = 8;

}  // namespace

CBaseDataClass::CBaseDataClass(const void* record, std::uint32_t bytes, std::int32_t newest_revision)
    : record_(static_cast<const std::uint8_t*>(record)), bytes_(bytes), newest_revision_(newest_revision) {}

CBaseDataClass::~CBaseDataClass() = default;

std::uint32_t CBaseDataClass::Number(std::uint32_t offset, std::uint32_t width) const {
  std::uint32_t value = 0;
  return platform::ByteView(record_, bytes_).Le(offset, width, &value) ? value : 0;
}

std::int32_t CBaseDataClass::GetRevisionNumber() const {
  return static_cast<std::int32_t>(Number(kRevisionAt, 2));
}

bool CBaseDataClass::IsRevisionValid() const {
  return GetRevisionNumber() >= 1 && GetRevisionNumber() <= newest_revision_;
}

CManagerFIT::CManagerFIT(const void* record, std::uint32_t bytes) : CBaseDataClass(record, bytes, 1) {}

std::uint32_t CManagerFIT::GetNumberSector(const char* name) const {
  constexpr std::uint32_t kDescriptorBytes = 16;
  const platform::ByteView fit(record_, bytes_);
  std::uint32_t count = 0;
  std::uint32_t first = 0;
  std::uint32_t location = 0;
  if (!fit.Be(20, 2, &count) || !fit.Be(24, 2, &first)) return 0;
  for (std::uint32_t i = 0; i < count; ++i) {
    const std::size_t at = first + std::size_t{i} * kDescriptorBytes;
    if (!fit.Holds(at, kDescriptorBytes)) return 0;
    if (std::memcmp(fit.data() + at + 2, name, 8) == 0) return fit.Be(at + 10, 2, &location) ? location : 0;
  }
  return 0;
}

// CAPSELDA: name, revision, error code (32 bits) at 16.
CManagerCSCError::CManagerCSCError(const void* record, std::uint32_t bytes) : CBaseDataClass(record, bytes, 1) {}

std::uint32_t CManagerCSCError::GetErrorCode() const {
  return Number(16, 4);
}
