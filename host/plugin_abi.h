// What passes between the host and a plug-in through the plug-in's one exported function.
#pragma once

#include "host/vm.h"

// How a plug-in marks its entry function. On Windows its module definition file names it instead, undecorated.
#if defined(_WIN32)
#define PLUGIN_EXPORT
#else
#define PLUGIN_EXPORT __attribute__((visibility("default")))
#endif

// The host's window object as far as a plug-in needs it: seven words of the framework's own, then the window.
struct CWnd {
  HostWord framework_words[7];
  void* window;  // the platform's window handle
};

// A script command that the plug-in offers. The table ends with a row of zeros.
struct PLUGIN_COMMAND {
  HostWord argument_count;            // in the upper 16 of 32 bits: three arguments are 0x30000
  const char* name;                   // as scripts call it
  std::int32_t (*handler)(C_VM* vm);  // arguments in vm->arguments; the result goes back to the script
  HostWord code_a;
  HostWord code_b;
};
static_assert(sizeof(PLUGIN_COMMAND) == 5 * sizeof(HostWord));

// Handed to set-context. The plug-in copies what it needs and keeps no pointer to the record.
struct HOST_CONTEXT {
  const char* drive_label;
  TARN_VM_STRUCT* request;
  HostWord field_3;
  HostWord field_4;
  void (*output)(const char* text);  // shows one text in the host's output, may be null
  HostWord resource_module;          // module handle for dialogs, 0 when the plug-in's own is to be used
};
static_assert(sizeof(HOST_CONTEXT) == 6 * sizeof(HostWord));

// Lives as long as the plug-in's library. Every operation is called on the host's user-interface thread and throws
// nothing.
struct PLUGIN_INFO {
  HostWord interface_version;
  const char* display_name;
  const PLUGIN_COMMAND* commands;
  void* (*create)(CWnd* parent);  // the main object; a second call returns the first one's
  std::int32_t (*run)();          // 1: the drive is supported; 0: it is not, or there is no main object
  void (*destroy)();
  void (*set_context)(const HOST_CONTEXT* context);
};
static_assert(sizeof(PLUGIN_INFO) == 7 * sizeof(HostWord));
static_assert(!kHostIs32Bit || (sizeof(PLUGIN_INFO) == 28 && sizeof(PLUGIN_COMMAND) == 20));

inline constexpr char kPluginEntryName[] = "PLUGIN_GetInfoStruct";
using PluginEntry = const PLUGIN_INFO*();
