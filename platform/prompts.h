// Questions to the user that have one answer: a text, a number, a file's name.
#pragma once

#include <cstddef>
#include <string>

namespace platform {

// Asks for a text of at most `longest` characters, preset with *value. False, and *value as it was, when cancelled.
bool AskText(const std::string& title, std::size_t longest, std::string* value);
bool AskNumber(const std::string& title, int* value);

// A common file dialog that starts in the current folder and leaves the current folder as it was. Real ones give the
// whole path of what was chosen. The filter is pairs of description and pattern, each ended by "|", with one more "|"
// at the end.
struct FileDialog {
  const char* title;
  const char* default_extension;
  const char* filter;
};
bool AskFileToOpen(const FileDialog& dialog, std::string* path);
// Asks before it gives the name of a file that exists.
bool AskFileToSave(const FileDialog& dialog, std::string* path);
// The dialog of AskFileToSave, without the question.
bool AskNewName(const FileDialog& dialog, std::string* path);

}  // namespace platform
