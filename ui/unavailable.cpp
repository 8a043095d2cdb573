#include "ui/unavailable.h"

#include "drive/host_services.h"

namespace pelix {
namespace {

constexpr char kUnavailable[] = "This analysis is not available.";

}  // namespace

void ShowUnavailable() {
  ShowMessage(kUnavailable);
}

}  // namespace pelix
