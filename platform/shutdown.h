// What the plug-in's end needs: its windows taken together.
#pragma once

namespace platform {

// Closes all of them, the topmost first: none is on the screen any more. Each returns to whoever opened it as soon as
// the message at hand is handled.
void CloseModalWindows();

// Windows and system handles that this module owns now. Zero when all that it opened is closed.
int CountOpenHandles();

}  // namespace platform
