// The five commands that the plug-in adds to the host's script language.
#pragma once

#include <array>
#include <cstdint>

#include "host/plugin_abi.h"
#include "platform/process_wide.h"

namespace pelix {

// Results that go back to the script.
inline constexpr std::int32_t kDone = 0;
inline constexpr std::int32_t kNoFolder = 7;
inline constexpr std::int32_t kFailed = 9;

inline constexpr std::uint32_t kBurnInSteps = 390;

struct ScriptState {
  int folder_counter = 0;  // of default folders, set by pelixnewdatadir
  int file_counter = 0;    // of default files, set by pelixnewdatafile and pelixnewgiffile
  // Burn-in steps that later analyses take: 1 selected. Index 0 is step 1.
  std::array<std::uint32_t, kBurnInSteps> step_mask = {};
  std::uint32_t highest_step = 0;  // number of the last selected step, 0: none
};

inline platform::ProcessWide<ScriptState> g_script_state;

// Ended by a row of zeros.
extern const PLUGIN_COMMAND kCommandTable[];

}  // namespace pelix
