#include "drive/output_names.h"

#include <cstring>

#include "drive/drive_identity.h"
#include "platform/files.h"
#include "platform/format.h"

namespace pelix {
namespace {

bool MayStandInFileName(char c) {
  return static_cast<unsigned char>(c) >= ' ' && std::strchr("\"*/:<>?\\|", c) == nullptr;
}

}  // namespace

std::string OutputBaseName() {
  std::string name = platform::WithoutTrailingBlanks(SerialNumber());
  if (name.empty()) name = platform::WithoutTrailingBlanks(ModelName());
  return platform::SafeFileName(name, MayStandInFileName);
}

std::string NumberedFolder(int counter) {
  return platform::Format("%s-%04d", OutputBaseName().c_str(), counter);
}

std::string NumberedFile(const std::string& folder, int counter, const char* extension) {
  const std::string name = NumberedFolder(counter) + extension;
  return folder.empty() ? name : platform::Format("%s\\%s", folder.c_str(), name.c_str());
}

int FirstFreeFile(const std::string& folder, const char* extension) {
  int counter = 0;
  while (platform::FileExists(NumberedFile(folder, counter, extension))) ++counter;
  return counter;
}

int FirstFreeFolder() {
  int counter = 0;
  while (platform::FileExists(NumberedFolder(counter))) ++counter;
  return counter;
}

}  // namespace pelix
