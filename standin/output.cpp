#include "standin/output.h"

#include <cstdio>

namespace standin {
namespace {

OutputSinks& Sinks() {
  static OutputSinks sinks = {[](const std::string& text) { std::fwrite(text.data(), 1, text.size(), stdout); },
                              [](const std::string& text) {
                                std::fflush(stdout);  // what came before it stands before it
                                std::fprintf(stderr, "wtarn: %s\n", text.c_str());
                              }};
  return sinks;
}

}  // namespace

void SetOutputSinks(OutputSinks sinks) {
  Sinks() = std::move(sinks);
}

void Print(const std::string& text) {
  Sinks().print(text);
}

void Complain(const std::string& text) {
  Sinks().complain(text);
}

}  // namespace standin
