// The library's one exported function.
#pragma once

#include "host/plugin_abi.h"

// The information record; the same one on every call.
extern "C" PLUGIN_EXPORT const PLUGIN_INFO* PLUGIN_GetInfoStruct();
