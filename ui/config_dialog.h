// The configuration dialog: what its controls show, when they are enabled, and what OK does.
#pragma once

#include <span>

#include "platform/dialog.h"

namespace pelix {

inline constexpr int kConfigDialogResource = 161;

// Every control with its id and text, OK and Cancel included.
std::span<const platform::ControlDescription> ConfigDialogControls();

// Runs it modally with the host's resource module installed.
void ShowConfigDialog();

}  // namespace pelix
