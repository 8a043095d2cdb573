// What prompts say is the same on every platform.
#include "platform/prompts.h"

namespace platform {

std::string OverwriteQuestion(const std::string& path) {
  return path + " already exists.\nDo you want to replace it?";
}

}  // namespace platform
