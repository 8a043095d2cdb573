// The plug-in's modal windows taken together.
#pragma once

namespace platform {

// Asks all of them to close, the topmost first. Each returns to whoever opened it as soon as its messages are handled.
void CloseModalWindows();

}  // namespace platform
