// Capacity selection check: which of its tests a drive failed.
#pragma once

namespace pelix {

void ShowCscErrorReport();

}  // namespace pelix
