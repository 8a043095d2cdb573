// The plug-in as the host uses it: loaded, its commands registered, its main window made, its context set; and all of
// that undone.
#pragma once

#include <string>

#include "host/plugin_abi.h"
#include "platform/shared_library.h"

namespace standin {

class PluginSession {
 public:
  PluginSession() = default;
  ~PluginSession() { Close(); }
  PluginSession(const PluginSession&) = delete;
  PluginSession& operator=(const PluginSession&) = delete;

  // `output` receives the plug-in's lines.
  bool Open(const std::string& path, void* window, void (*output)(const char*), std::string* error);
  // The same for a plug-in that is part of this program.
  bool Attach(const PLUGIN_INFO* info, void* window, void (*output)(const char*), std::string* error);
  // Has the plug-in close its windows and drop its main one; a call into it may still be under way.
  void Destroy();
  // Destroy, and the library unloaded.
  void Close();

  // The command of that name, null when the plug-in has none.
  const PLUGIN_COMMAND* FindCommand(const std::string& name) const;
  static std::size_t ArgumentCount(const PLUGIN_COMMAND& command) { return command.argument_count >> 16; }

  // The plug-in's run operation.
  bool Run();

 private:
  platform::SharedLibrary library_;
  const PLUGIN_INFO* info_ = nullptr;
  CWnd parent_ = {};
};

}  // namespace standin
