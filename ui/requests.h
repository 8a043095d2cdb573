// Requests that scripts send to the main window: maps and live tests that run with nobody at the screen.
#pragma once

#include <cstdint>
#include <string>

#include "host/host_api.h"

namespace pelix {

// The private window message: the request's code first, the address of a request block second. Returns 0 when the
// request was carried out.
inline constexpr unsigned kRequestMessage = 0x1408;
inline constexpr std::intptr_t kRequestFailed = 1;

struct RequestBlock {
  HostWord registers[14];  // fields 1 to 14: the script's global registers "::R0" to "::R13"
  HostWord fields_15_to_20[6];
  const char* file;    // field 21: output file
  const char* folder;  // field 22: output folder
};
static_assert(sizeof(RequestBlock) == 22 * sizeof(HostWord));

inline constexpr std::uintptr_t kRequestCodes = 14;

// Code of the request of that name, whatever its case; false when there is none.
bool FindRequest(const std::string& name, std::uintptr_t* code);

// Carries a request out. False when it could not be.
bool RunRequest(std::uintptr_t code, const RequestBlock& block);

}  // namespace pelix
