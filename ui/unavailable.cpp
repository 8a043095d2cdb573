#include "ui/unavailable.h"

#include "drive/host_services.h"
#include "listwin/list_window.h"

namespace pelix {
namespace {

constexpr char kUnavailable[] = "This analysis is not available.";

}  // namespace

void ShowUnavailable() {
  if (g_script_output != nullptr) (void)g_script_output->Write(std::string(kUnavailable) + "\n");
  ShowMessage(kUnavailable);
}

}  // namespace pelix
