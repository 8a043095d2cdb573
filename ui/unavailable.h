// What a menu leaf or a request does whose analysis this version does not have.
#pragma once

namespace pelix {

// Says so: in a message box, or in the script's file while a script takes the output.
void ShowUnavailable();

}  // namespace pelix
