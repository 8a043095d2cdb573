#include "platform/profile.h"

#include <algorithm>

#include "platform/files.h"
#include "platform/format.h"
#include "platform/system_files.h"

namespace platform {
namespace {

constexpr std::size_t kLargestProfile = 64u << 20;

std::string Trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(" \t\r");
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

bool IsHeading(const std::string& line, std::string* name) {
  const std::string text = Trimmed(line);
  const std::size_t close = text.find(']');
  if (text.empty() || text[0] != '[' || close == std::string::npos) return false;
  *name = text.substr(1, close - 1);
  return true;
}

std::string WithoutQuotes(const std::string& text) {
  const bool quoted = text.size() >= 2 && (text[0] == '"' || text[0] == '\'') && text.back() == text[0];
  return quoted ? text.substr(1, text.size() - 2) : text;
}

// A value that blanks or quotes at its ends would not survive is put in quotes.
std::string Stored(const std::string& value) {
  const std::string line = value.substr(0, value.find_first_of("\r\n"));
  return WithoutQuotes(Trimmed(line)) == line ? line : "\"" + line + "\"";
}

}  // namespace

bool Profile::Load(const std::string& path) {
  lines_.clear();
  std::string content;
  const bool read = ReadWholeFile(path, kLargestProfile, &content);
  unreadable_ = !read && FileExists(path);
  if (!read) return false;
  for (std::size_t at = 0; at < content.size();) {
    const std::size_t next = std::min(content.find('\n', at), content.size() - 1) + 1;
    std::size_t end = next;
    while (end > at && (content[end - 1] == '\n' || content[end - 1] == '\r')) --end;
    lines_.push_back({content.substr(at, end - at), content.substr(end, next - end)});
    at = next;
  }
  return true;
}

bool Profile::Save(const std::string& path) const {
  ReplacingFile file;
  if (unreadable_ || !file.Open(path, "wb")) return false;
  for (const Line& line : lines_) {
    if (!file.Write(line.text + line.end)) return false;
  }
  return file.Commit();
}

bool Profile::FindSection(const char* section, std::size_t* heading, std::size_t* end) const {
  bool found = false;
  std::string name;
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    if (!IsHeading(lines_[i].text, &name)) continue;
    if (found) {
      *end = i;
      return true;
    }
    found = EqualIgnoringCase(name, section);
    *heading = i;
  }
  *end = lines_.size();
  return found;
}

bool Profile::FindKey(const char* section, const char* key, std::size_t* line) const {
  std::size_t heading = 0;
  std::size_t end = 0;
  if (!FindSection(section, &heading, &end)) return false;
  for (std::size_t i = heading + 1; i < end; ++i) {
    const std::string& text = lines_[i].text;
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || !EqualIgnoringCase(Trimmed(text.substr(0, equals)), key)) continue;
    *line = i;
    return true;
  }
  return false;
}

std::string Profile::GetString(const char* section, const char* key, const char* otherwise) const {
  std::size_t line = 0;
  if (!FindKey(section, key, &line)) return otherwise;
  const std::string& text = lines_[line].text;
  return WithoutQuotes(Trimmed(text.substr(text.find('=') + 1)));
}

int Profile::GetInt(const char* section, const char* key, int otherwise) const {
  const std::string value = GetString(section, key, "");
  return value.empty() ? otherwise : ReadDecimal(value);
}

void Profile::SetInt(const char* section, const char* key, int value) {
  SetString(section, key, Format("%d", value));
}

void Profile::SetString(const char* section, const char* key, const std::string& value) {
  const std::string text = std::string(key) + "=" + Stored(value);
  std::size_t line = 0;
  if (FindKey(section, key, &line)) {
    lines_[line].text = text;
    return;
  }
  std::size_t heading = 0;
  std::size_t end = 0;
  if (!FindSection(section, &heading, &end)) {
    heading = lines_.size();
    Insert(heading, std::string("[") + section + "]");
    end = lines_.size();
  }
  while (end > heading + 1 && Trimmed(lines_[end - 1].text).empty()) --end;
  Insert(end, text);
}

// New lines end as the file's first does.
void Profile::Insert(std::size_t at, const std::string& text) {
  const std::string end = lines_.empty() || lines_[0].end.empty() ? LineEnd() : lines_[0].end;
  if (at > 0 && lines_[at - 1].end.empty()) lines_[at - 1].end = end;
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(at), Line{text, end});
}

}  // namespace platform
