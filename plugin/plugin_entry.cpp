#include "plugin/plugin_entry.h"

#include <exception>

#include "drive/host_services.h"
#include "platform/shutdown.h"
#include "plugin/application.h"
#include "plugin/script_commands.h"
#include "ui/main_window.h"

namespace pelix {
namespace {

constexpr HostWord kInterfaceVersion = 3;
constexpr char kDisplayName[] = "PELIX(v6.05j)";

void* Create(CWnd* parent) {
  if (!g_script_state) return nullptr;  // start-up had failed
  try {
    if (g_main_window) return &*g_main_window;
    if (g_main_window.Make().Initialise(parent == nullptr ? nullptr : parent->window)) return &*g_main_window;
    g_main_window.Drop();
    return nullptr;
  } catch (const std::exception&) {
    g_main_window.Drop();
    return nullptr;
  }
}

std::int32_t Run() {
  try {
    return RunMainWindow() ? 1 : 0;
  } catch (const std::exception&) {
    return 0;
  }
}

void Destroy() {
  try {
    platform::CloseModalWindows();
    g_main_window.Drop();
  } catch (const std::exception&) {
    // What could not be told to close closes with the host's window.
  }
}

void SetContext(const HOST_CONTEXT* context) {
  if (context == nullptr || !g_host) return;
  try {
    g_host->request = context->request;
    if (g_host->vm != nullptr) g_host->vm->request = context->request;
    g_host->output = context->output;
    g_host->resource_module = context->resource_module;
    g_host->drive_label = context->drive_label == nullptr ? "" : context->drive_label;
  } catch (const std::exception&) {
    g_host->drive_label.clear();
  }
}

constexpr PLUGIN_INFO kInfo = {kInterfaceVersion, kDisplayName, kCommandTable, Create, Run, Destroy, SetContext};

}  // namespace
}  // namespace pelix

const PLUGIN_INFO* PLUGIN_GetInfoStruct() {
  return &pelix::kInfo;
}
