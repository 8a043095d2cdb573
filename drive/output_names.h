// Names of numbered output files and folders: the drive's serial number, or its model name, and a counter.
#pragma once

#include <string>

namespace pelix {

// The serial number, or the model name when there is none, without blanks at its end; characters that no file name
// may have become "_".
std::string OutputBaseName();

// "base-0007"
std::string NumberedFolder(int counter);
// "folder\base-0007.txt"; without a folder in front when `folder` is empty.
std::string NumberedFile(const std::string& folder, int counter, const char* extension);

// The smallest counter from 0 up for which no such file, or folder in the current folder, exists.
int FirstFreeFile(const std::string& folder, const char* extension);
int FirstFreeFolder();

}  // namespace pelix
