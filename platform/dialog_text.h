// What a dialog looks like in print, for the host's scripts: the same on every platform.
#pragma once

#include <string>

#include "platform/dialog.h"

namespace platform {

// The control's id, kind, label and content, "(disabled)" behind it, in a line of its own.
std::string ControlLine(const ControlDescription& control, const std::string& text, bool checked, bool enabled);
// What a script reads of a control: an edit's text, 1 or 0 for a check or radio, a button's label.
std::string ControlValue(const ControlDescription& control, const std::string& text, bool checked);

}  // namespace platform
