// Where the host's own output goes: standard output and standard error, or the windowed host's pane.
#pragma once

#include <functional>
#include <string>

namespace standin {

struct OutputSinks {
  std::function<void(const std::string& text)> print;     // as it is
  std::function<void(const std::string& text)> complain;  // a diagnostic, a line without its end
};
void SetOutputSinks(OutputSinks sinks);

void Print(const std::string& text);
void Complain(const std::string& text);

}  // namespace standin
