// The library as a whole: start-up and shut-down of its process-wide objects, and its run operation.
#pragma once

namespace pelix {

// Fetches the host's objects, allocates the work buffers and loads the configuration.
void StartUp();
// Saves the configuration and frees everything.
void ShutDown();

// The run operation: runs the main window with bit 14 of the command flags clear. False when there is no main window
// or no menu for the drive.
bool RunMainWindow();

}  // namespace pelix
