// What every header of the host's interface shares: the host word, result codes and how its symbols are imported.
#pragma once

#include <cstddef>
#include <cstdint>

// The host's library defines WTARN_HOST_BUILD while it is compiled; the plug-in and the host programs import.
#if defined(_WIN32)
#if defined(WTARN_HOST_BUILD)
#define HOST_API __declspec(dllexport)
#else
#define HOST_API __declspec(dllimport)
#endif
#else
#define HOST_API __attribute__((visibility("default")))
#endif

// One field of the host's records. The host is a 32-bit program, so its fields are 32 bits wide; where a field may
// hold a pointer it is this type, and field numbers stay valid on 64-bit builds too.
using HostWord = std::uintptr_t;

// Result of a drive command: 0 is success, any other value is the host's error code.
using ECODE = std::uint32_t;

// Byte offset of field `number` (counted from 1) in a host record made of host words.
constexpr std::size_t HostField(std::size_t number) {
  return (number - 1) * sizeof(HostWord);
}

// True in the build whose byte offsets are those of the real host.
inline constexpr bool kHostIs32Bit = sizeof(HostWord) == 4;
