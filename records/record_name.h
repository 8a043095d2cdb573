// Names of records in the drive's maintenance-cylinder file system.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

namespace pelix {

// Eight bytes, upper-case ASCII padded with blanks on the right, no terminator: "BI_ERLOG", "CHN_TBL ". On a drive
// that stores words byte-swapped a name may stand with each pair of bytes exchanged.
struct RecordName {
  std::array<char, 8> bytes = {};

  constexpr RecordName() = default;
  // The first eight characters of a text that holds at least eight.
  explicit constexpr RecordName(const char* text) { std::copy_n(text, bytes.size(), bytes.begin()); }
  explicit constexpr RecordName(const std::uint8_t* data) {
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(data[i]);
  }

  bool operator==(const RecordName&) const = default;
  RecordName Swapped() const;
  // Equal as it stands, or with each pair of bytes exchanged.
  bool Matches(const RecordName& other) const { return *this == other || *this == other.Swapped(); }
  // The same number for a name and its swapped form, and only for those.
  std::uint64_t Key() const;

  // As shown to the user: eight characters, those that are none shown as ".".
  std::string Shown() const;
  // Name of the record's file: "LDSI T  " is LDSI_T.bin, its second copy LDSI_T.bin2. Never a path or a device.
  std::string FileName(bool second_copy) const;
};

// The burn-in error log, which grows and is measured.
inline constexpr RecordName kErrorLog("BI_ERLOG");

// A message about one record.
std::string RecordMessage(const RecordName& name, const char* text);

}  // namespace pelix
