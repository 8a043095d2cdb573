// What both programs of the stand-in host do with their command line.
#pragma once

#include "standin/options.h"

namespace standin {

inline constexpr int kCannotRun = 1;

// Writes a drive or an image when that is all that is asked for; then *status is the exit status.
bool WroteDrive(const Options& options, int* status);

// Sets up fault rules, profile and drive. False, and the exit status, when one of them is wrong; it has been said.
bool SetUpHost(const Options& options, int* status);

}  // namespace standin
