#include "platform/format.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <limits>

namespace platform {

std::string Format(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  std::string text = FormatArguments(format, arguments);
  va_end(arguments);
  return text;
}

std::string FormatArguments(const char* format, std::va_list arguments) {
  std::va_list again;
  va_copy(again, arguments);
  char small[256];
  const int length = std::vsnprintf(small, sizeof small, format, arguments);
  std::string text;
  if (length >= 0 && static_cast<std::size_t>(length) < sizeof small) {
    text.assign(small, static_cast<std::size_t>(length));
  } else if (length >= 0) {
    text.resize(static_cast<std::size_t>(length) + 1);
    std::vsnprintf(text.data(), text.size(), format, again);
    text.pop_back();
  }
  va_end(again);
  return text;
}

char LowerAscii(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

char UpperAscii(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool EqualIgnoringCase(const std::string& left, const std::string& right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return LowerAscii(a) == LowerAscii(b); });
}

std::string WithoutTrailingBlanks(const std::string& text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

int ReadDecimal(const std::string& text) {
  constexpr std::int64_t kLowest = std::numeric_limits<int>::min();
  constexpr std::int64_t kHighest = std::numeric_limits<int>::max();
  std::size_t at = text.find_first_not_of(" \t");
  if (at == std::string::npos) return 0;
  const bool negative = text[at] == '-';
  if (negative || text[at] == '+') ++at;
  std::int64_t value = 0;
  for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
    value = std::min<std::int64_t>(value * 10 + (text[at] - '0'), kHighest + 1);
  }
  return static_cast<int>(std::clamp(negative ? -value : value, kLowest, kHighest));
}

}  // namespace platform
