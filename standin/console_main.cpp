// The console host: the plug-in without a screen, driven by statements.
#include <cstdio>

#include "platform/automation.h"
#include "standin/host.h"
#include "standin/options.h"
#include "standin/statements.h"

namespace standin {
namespace {

constexpr int kCannotRun = 1;

void PrintOutput(const char* text) {
  std::fputs(text, stdout);
}

int WriteDrive(const Options& options) {
  std::string error = "cannot write \"" + options.make_mcw + "\"";
  const bool written = options.make_mcw.empty() ? WriteDriveFolder(options.make_drive, options.drive, &error)
                                                : WriteMcwImage(options.make_mcw, DriveDesign(options.drive));
  if (!written) Complain(error);
  return written ? 0 : kCannotRun;
}

// The plug-in's session from load to unload, with the statements between.
int RunStatements(const Options& options) {
  PluginSession session;
  StatementSource source(options.statements, options.scripts);
  StatementRunner runner(&session, &source);
  platform::automation::SetMessageSink([](const std::string& text) { std::printf("[message] %s\n", text.c_str()); });
  platform::automation::SetQuestionSink([](const std::string& line) { Complain("asked: " + line); });
  platform::automation::SetEventSource([&runner] { return runner.RunNext(); });
  std::string error;
  if (!session.Open(options.plugin, platform::automation::HostWindow(), PrintOutput, &error)) {
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
  if (!ReadOptions(argc, argv, &options, &status)) return status;
  if (!options.make_drive.empty() || !options.make_mcw.empty()) return WriteDrive(options);
  Host& host = Host::Instance();
  for (const std::string& rule : options.faults) {
    if (host.AddFault(rule)) continue;
    Complain("a fault rule reads COMMAND@N[+][=ECODE], not \"" + rule + "\"");
    return kUsageStatus;
  }
  std::string error;
  host.SetProfile(options.profile);
  if (!host.UseDrive(options.drive, options.drive_folder, &error)) {
    Complain(error);
    return kCannotRun;
  }
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
