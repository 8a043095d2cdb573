// The library's one exported function.
#pragma once

#include "host/plugin_abi.h"

#if defined(_WIN32)
#define PELIX_EXPORT  // the module definition file names it, undecorated
#else
#define PELIX_EXPORT __attribute__((visibility("default")))
#endif

// The information record; the same one on every call.
extern "C" PELIX_EXPORT const PLUGIN_INFO* PLUGIN_GetInfoStruct();
