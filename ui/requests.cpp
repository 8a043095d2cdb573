#include "ui/requests.h"

#include <array>

#include "platform/format.h"
#include "ui/unavailable.h"

namespace pelix {
namespace {

struct RequestRow {
  const char* name;
  bool (*run)(const RequestBlock& block);  // null: this version has no view for it
};

// By code.
constexpr std::array<RequestRow, kRequestCodes> kRequests = {{
    {"GET_DLIST_MAP", nullptr},
    {"GET_VLIST_MAP", nullptr},
    {"GET_SLIST_MAP", nullptr},
    {"GET_RLIST_MAP", nullptr},
    {"GET_ELOG_MAP", nullptr},
    {"RUN_TET", nullptr},
    {"RUN_SPAT", nullptr},
    {"RUN_BODE_PLOT", nullptr},
    {"RUN_SEQ_SEEK", nullptr},
    {"RUN_TRACK_WIDTH", nullptr},
    {"RUN_AGC_TEST", nullptr},
    {"RUN_OFFTAGC_TEST", nullptr},
    {"RUN_MEDIA_TEST", nullptr},
    {"RUN_DEFECT_MARKING", nullptr},
}};

}  // namespace

bool FindRequest(const std::string& name, std::uintptr_t* code) {
  for (std::uintptr_t i = 0; i < kRequests.size(); ++i) {
    if (!platform::EqualIgnoringCase(name, kRequests[i].name)) continue;
    *code = i;
    return true;
  }
  return false;
}

bool RunRequest(std::uintptr_t code, const RequestBlock& block) {
  if (code >= kRequests.size()) return false;
  if (kRequests[code].run != nullptr) return kRequests[code].run(block);
  ShowUnavailable();
  return false;
}

}  // namespace pelix
