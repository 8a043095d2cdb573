// What a menu leaf or a request does whose analysis this version does not have.
#pragma once

namespace pelix {

// Says so, unless nobody is there to see it: a script learns it from the result of its command.
void ShowUnavailable();

}  // namespace pelix
