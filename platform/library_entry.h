// What the system's loader calls in the plug-in library. Declared here, defined by the library; the platform's
// library_entry.cpp is linked into the library and calls them, once each, catching whatever they throw.
#pragma once

namespace platform {

void OnLibraryLoad();
void OnLibraryUnload();

}  // namespace platform
