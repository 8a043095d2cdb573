#include "standin/plugin_session.h"

#include "platform/format.h"
#include "standin/host.h"

namespace standin {
namespace {

constexpr HostWord kKnownInterface = 3;
constexpr std::size_t kMostCommands = 100;
constexpr char kDriveLabel[] = "SIMULATED DRIVE";

}  // namespace

bool PluginSession::Open(const std::string& path, void* window, void (*output)(const char*), std::string* error) {
  if (!library_.Load(path, error)) return false;
  const auto entry = reinterpret_cast<PluginEntry*>(library_.Find(kPluginEntryName));
  if (entry == nullptr) {
    *error = platform::Format("\"%s\" exports no %s", path.c_str(), kPluginEntryName);
    return false;
  }
  return Attach(entry(), window, output, error);
}

bool PluginSession::Attach(const PLUGIN_INFO* info, void* window, void (*output)(const char*), std::string* error) {
  if (info == nullptr || info->interface_version != kKnownInterface) {
    *error = "the plug-in has another interface version";
    return false;
  }
  info_ = info;
  parent_.window = window;
  if (info_->create(&parent_) == nullptr) {
    *error = platform::Format("%s could not make its main window", info_->display_name);
    return false;
  }
  const HOST_CONTEXT context = {kDriveLabel, Host::Instance().request(), 0, 0, output, 0};
  info_->set_context(&context);
  return true;
}

void PluginSession::Destroy() {
  if (info_ != nullptr) info_->destroy();
}

void PluginSession::Close() {
  Destroy();
  info_ = nullptr;
  library_.Unload();
}

const PLUGIN_COMMAND* PluginSession::FindCommand(const std::string& name) const {
  const PLUGIN_COMMAND* command = info_->commands;
  for (std::size_t i = 0; i < kMostCommands && command[i].name != nullptr; ++i) {
    if (name == command[i].name) return &command[i];
  }
  return nullptr;
}

bool PluginSession::Run() {
  return info_->run() != 0;
}

}  // namespace standin
