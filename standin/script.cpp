#include "standin/script.h"

#include <cstdio>

#include "platform/format.h"

namespace standin {
namespace {

constexpr std::size_t kLongestLine = 1u << 20;

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r';
}

bool IsWordCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == ':' || c == '+';
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// A text in quotes from `at` on, two quotes in it standing for one. Leaves `at` behind the closing quote.
bool TakeText(const std::string& line, std::size_t* at, std::string* text) {
  for (++*at; *at < line.size(); ++*at) {
    if (line[*at] != '"') {
      *text += line[*at];
    } else if (*at + 1 < line.size() && line[*at + 1] == '"') {
      *text += line[++*at];
    } else {
      ++*at;
      return true;
    }
  }
  return false;
}

// Decimal or, with "0x" in front, hexadecimal; anything that fits 32 bits, signed or not.
bool ReadNumber(const std::string& text, std::int32_t* number) {
  const bool negative = text[0] == '-';
  const std::string digits = text.substr(negative ? 1 : 0);
  const bool hexadecimal = digits.size() > 2 && digits[0] == '0' && platform::LowerAscii(digits[1]) == 'x';
  const std::string allowed = hexadecimal ? "0123456789abcdef" : "0123456789";
  std::uint64_t value = 0;
  for (const char c : digits.substr(hexadecimal ? 2 : 0)) {
    const std::size_t digit = allowed.find(platform::LowerAscii(c));
    if (digit == std::string::npos) return false;
    value = value * allowed.size() + digit;
    if (value > 0xFFFFFFFFu) return false;
  }
  if (negative && value > 0x80000000u) return false;
  *number = static_cast<std::int32_t>(static_cast<std::uint32_t>(negative ? 0 - value : value));
  return !digits.empty();
}

}  // namespace

bool Tokenize(const std::string& line, std::vector<Token>* tokens, std::string* error) {
  tokens->clear();
  for (std::size_t at = 0; at < line.size();) {
    const char c = line[at];
    if (c == '#') break;
    if (IsBlank(c)) {
      ++at;
    } else if (c == '"') {
      Token token = {Token::Kind::kText, "", 0};
      if (!TakeText(line, &at, &token.text)) {
        *error = "a text has no closing quote";
        return false;
      }
      tokens->push_back(token);
    } else if (c == '=') {
      tokens->push_back({Token::Kind::kEquals, "=", 0});
      ++at;
    } else {
      std::size_t end = at + (c == '-' ? 1 : 0);
      while (end < line.size() && IsWordCharacter(line[end])) ++end;
      Token token = {Token::Kind::kWord, line.substr(at, end - at), 0};
      const bool numeric = c == '-' || IsDigit(c);
      if (numeric) token.kind = Token::Kind::kNumber;
      if (end == at || (numeric && !ReadNumber(token.text, &token.number))) {
        *error = end == at ? platform::Format("a character has no meaning here: 0x%02X", static_cast<unsigned char>(c))
                           : platform::Format("\"%s\" is no number of 32 bits", token.text.c_str());
        return false;
      }
      tokens->push_back(token);
      at = end;
    }
  }
  return true;
}

bool StatementSource::Next(std::string* line, std::string* error) {
  error->clear();
  if (next_statement_ < statements_.size()) {
    *line = statements_[next_statement_++];
    name_ = "-e";
    line_number_ = next_statement_;
    return true;
  }
  for (;;) {
    if ((from_input_ || file_.IsOpen()) && ReadLine(line, error)) return true;
    if (!error->empty() || next_script_ == scripts_.size()) return false;
    name_ = scripts_[next_script_++];
    line_number_ = 0;
    from_input_ = name_ == "-";
    file_ = from_input_ ? platform::File() : platform::File::Open(name_, "rb");
    if (!from_input_ && !file_.IsOpen()) {
      *error = platform::Format("cannot open the script \"%s\"", name_.c_str());
      return false;
    }
  }
}

bool StatementSource::ReadLine(std::string* line, std::string* error) {
  line->clear();
  bool any = false;
  ++line_number_;
  for (;;) {
    char c = 0;
    const bool got = from_input_ ? std::fread(&c, 1, 1, stdin) == 1 : file_.ReadSome(&c, 1) == 1;
    if (!got) return any;
    any = true;
    if (c == '\n') return true;
    if (line->size() == kLongestLine) {
      *error = platform::Format("a line is longer than %zu characters", kLongestLine);
      return false;
    }
    *line += c;
  }
}

std::string StatementSource::Place() const {
  return platform::Format("%s:%zu", name_.c_str(), line_number_);
}

}  // namespace standin
