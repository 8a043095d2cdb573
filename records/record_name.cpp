#include "records/record_name.h"

#include <cstring>

#include "platform/files.h"
#include "platform/format.h"

namespace pelix {
namespace {

bool MayStandInRecordFileName(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == '-' || c == '.';
}

std::uint64_t NumberOf(const RecordName& name) {
  std::uint64_t number = 0;
  for (const char c : name.bytes) number = number << 8 | static_cast<std::uint8_t>(c);
  return number;
}

}  // namespace

RecordName RecordName::Swapped() const {
  RecordName swapped = *this;
  for (std::size_t i = 0; i < swapped.bytes.size(); i += 2) std::swap(swapped.bytes[i], swapped.bytes[i + 1]);
  return swapped;
}

std::uint64_t RecordName::Key() const {
  return std::min(NumberOf(*this), NumberOf(Swapped()));
}

std::string RecordName::Shown() const {
  std::string text(bytes.begin(), bytes.end());
  for (char& c : text) {
    if (static_cast<unsigned char>(c) < ' ' || c == 0x7F) c = '.';
  }
  return text;
}

std::string RecordMessage(const RecordName& name, const char* text) {
  return platform::Format("\"%s\" : %s", name.Shown().c_str(), text);
}

std::string RecordName::FileName(bool second_copy) const {
  // Blanks between the characters become underscores along with whatever else is no part of a file's name.
  const std::string stem = platform::WithoutTrailingBlanks(std::string(bytes.begin(), bytes.end()));
  return platform::SafeFileName(
             platform::Format("%s.bin", platform::SafeFileName(stem, MayStandInRecordFileName).c_str()),
             MayStandInRecordFileName) +
         (second_copy ? "2" : "");
}

}  // namespace pelix
