#include "plugin/application.h"

#include "drive/configuration.h"
#include "drive/drive_identity.h"
#include "drive/host_services.h"
#include "host/application.h"
#include "listwin/list_window.h"
#include "platform/library_entry.h"
#include "platform/shutdown.h"
#include "plugin/script_commands.h"
#include "records/record_source.h"
#include "ui/main_window.h"

namespace pelix {

void StartUp() {
  g_host.Make();
  g_identity.Make();
  LoadConfiguration(GetProfileFileName(), &*g_identity);
  g_records.Make(&*g_identity);
  g_identity->records = &*g_records;
  g_script_state.Make();
  g_main_window_is_busy = [] { return g_main_window && g_main_window->IsBusy(); };
}

void ShutDown() {
  if (!g_host) return;  // start-up had failed
  g_main_window.Drop();
  if (const int open = platform::CountOpenHandles()) Output("PELIX leaves %d windows or handles open.\n", open);
  if (g_records && !SaveConfiguration(GetProfileFileName(), *g_identity)) {
    Output("cannot save the configuration to \"%s\".\n", GetProfileFileName());
  }
  g_script_state.Drop();
  g_records.Drop();
  g_identity.Drop();
  g_host.Drop();
}

bool RunMainWindow() {
  if (!g_main_window) return false;
  TARN_VM_STRUCT* request = g_host->request;
  if (request == nullptr) return g_main_window->Run();
  const ClearedFlags running(request, kFlagBit14);
  return g_main_window->Run();
}

}  // namespace pelix

void platform::OnLibraryLoad() {
  pelix::StartUp();
}

void platform::OnLibraryUnload() {
  pelix::ShutDown();
}
