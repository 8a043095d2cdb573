// The host application's settings that a plug-in may ask for.
#pragma once

#include "host/host_api.h"

extern "C" {
// Full path of the application's profile, an .ini file. Never null; valid until the host ends.
HOST_API const char* GetProfileFileName();
}
