// The stand-in host's script language: one statement a line, "#" begins a comment, texts in double quotes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/files.h"

namespace standin {

struct Token {
  enum class Kind { kWord, kText, kNumber, kEquals } kind;
  std::string text;
  std::int32_t number = 0;
};

// Splits a statement. False, and *error, when a text has no end or a character has no meaning.
bool Tokenize(const std::string& line, std::vector<Token>* tokens, std::string* error);

// Where statements come from: those of the command line first, then the script files in order.
class StatementSource {
 public:
  StatementSource(std::vector<std::string> statements, std::vector<std::string> scripts)
      : statements_(std::move(statements)), scripts_(std::move(scripts)) {}

  // The next line; false at the end, or with *error when a script cannot be read.
  bool Next(std::string* line, std::string* error);
  // "script.txt:12" of the line that Next gave last.
  std::string Place() const;

 private:
  bool ReadLine(std::string* line, std::string* error);

  std::vector<std::string> statements_;
  std::vector<std::string> scripts_;
  std::size_t next_statement_ = 0;
  std::size_t next_script_ = 0;
  platform::File file_;
  bool from_input_ = false;  // the script is standard input
  std::string name_;
  std::size_t line_number_ = 0;
};

}  // namespace standin
