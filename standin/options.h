// The command line of the stand-in host's programs.
#pragma once

#include <string>
#include <vector>

#include "standin/drive_records.h"

namespace standin {

struct Options {
  std::string plugin;
  DriveKind drive;
  std::string drive_folder;  // empty: a drive in memory
  std::string profile = "wtarn.ini";
  std::vector<std::string> faults;
  std::vector<std::string> statements;
  std::vector<std::string> scripts;
  std::string make_drive;  // folder to write a drive into, instead of all else
  std::string make_mcw;    // MCW image to write, instead of all else
};

// False when the program is to end with *status, having said why.
bool ReadOptions(int argc, char** argv, Options* options, int* status);

}  // namespace standin
