// The console host: the plug-in driven by statements, with nobody at the screen.
#include <cstdio>

#include "platform/automation.h"
#include "standin/output.h"
#include "standin/setup.h"
#include "standin/statements.h"

namespace standin {
namespace {

// The plug-in's session from load to unload, with the statements between.
int RunStatements(const Options& options) {
  PluginSession session;
  StatementSource source(options.statements, options.scripts);
  StatementRunner runner(&session, &source);
  platform::automation::SetMessageSink([](const std::string& text) { Print("[message] " + text + "\n"); });
  platform::automation::SetQuestionSink([](const std::string& line) { Complain("asked: " + line); });
  platform::automation::SetEventSource([&runner] { return runner.RunNext(); });
  std::string error;
  void* window = platform::automation::HostWindow();
  if (!session.Open(
          options.plugin, window, [](const char* text) { Print(text); }, &error)) {
    Complain(error);
    return kCannotRun;
  }
  const int status = runner.RunAll();
  session.Close();
  return status;
}

int Main(int argc, char** argv) {
  Options options;
  int status = 0;
  if (!ReadOptions(argc, argv, &options, &status) || WroteDrive(options, &status)) return status;
  if (!SetUpHost(options, &status)) return status;
  status = RunStatements(options);
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return status;
  Complain("cannot write to standard output");
  return kCannotRun;
}

}  // namespace
}  // namespace standin

int main(int argc, char** argv) {
  return standin::Main(argc, argv);
}
