// An application profile: an .ini file of sections with "key=value" lines.
//
// Section and key names match whatever their case. The first line of a key counts. Lines of any length are kept as
// they are; so are other sections, comments and line ends. Values lose blanks around them and one pair of quotes.
#pragma once

#include <string>
#include <vector>

namespace platform {

class Profile {
 public:
  // Reads the file. False, and an empty profile, when there is none that can be read. Files over 64 MB are refused.
  bool Load(const std::string& path);
  // Replaces the file; the old one stays when that fails. A file that is there but could not be read is not replaced.
  [[nodiscard]] bool Save(const std::string& path) const;

  // Default where the key is absent or its value empty; a value that is no number reads as 0.
  int GetInt(const char* section, const char* key, int otherwise) const;
  std::string GetString(const char* section, const char* key, const char* otherwise) const;
  // Adds section and key where they are missing. A line break ends the value.
  void SetInt(const char* section, const char* key, int value);
  void SetString(const char* section, const char* key, const std::string& value);

 private:
  // Index of the section's heading and of the line after its last, or false.
  bool FindSection(const char* section, std::size_t* heading, std::size_t* end) const;
  bool FindKey(const char* section, const char* key, std::size_t* line) const;
  void Insert(std::size_t at, const std::string& text);

  struct Line {
    std::string text;
    std::string end;  // as it stood: "\r\n", "\n", or nothing at the end of the file
  };
  std::vector<Line> lines_;
  bool unreadable_ = false;
};

}  // namespace platform
