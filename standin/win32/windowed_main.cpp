// The windowed host: the plug-in with its real windows, for engineers without the real host.
#include "platform/automation.h"
#include "platform/profile.h"
#include "platform/prompts.h"
#include "standin/host.h"
#include "standin/output.h"
#include "standin/setup.h"
#include "standin/statements.h"
#include "standin/win32/host_frame.h"

namespace standin {
namespace {

namespace automation = platform::automation;

constexpr char kSection[] = "WTARN";
constexpr char kPlacementKey[] = "WindowPlacement";

class WindowedHost {
 public:
  int Run(const Options& options);

 private:
  void RunStatement(const std::string& statement);
  void RunScript(const std::string& path);
  void RunAll(StatementSource source);

  HostFrame frame_{
      {[this](const std::string& statement) { RunStatement(statement); },
       [this] {
         std::string path;
         if (platform::AskFileToOpen({"Run script", "txt", "Scripts (*.txt)|*.txt|All files|*.*||"}, &path)) {
           RunScript(path);
         }
       },
       [this] { session_.Destroy(); }}};
  PluginSession session_;
};

void WindowedHost::RunAll(StatementSource source) {
  StatementRunner runner(&session_, &source);
  const int status = runner.RunAll();
  if (status != 0) Complain("result " + std::to_string(status));
}

// What it opens stays open for the user.
void WindowedHost::RunStatement(const std::string& statement) {
  frame_.AddOutput("> " + statement + "\n");
  RunAll(StatementSource({statement}, {}));
}

// A script brings the events of the windows that it opens itself; what is open at its end is closed.
void WindowedHost::RunScript(const std::string& path) {
  frame_.AddOutput("> " + path + "\n");
  StatementSource source({}, {path});
  StatementRunner runner(&session_, &source);
  automation::SetMessageSink([](const std::string& text) { Print("[message] " + text + "\n"); });
  automation::SetQuestionSink([](const std::string& line) { Complain("asked: " + line); });
  automation::SetEventSource([&runner] { return runner.RunNext(); });
  const int status = runner.RunAll();
  automation::SetEventSource(nullptr);
  automation::ClearAnswers();
  if (status != 0) Complain("result " + std::to_string(status));
}

int WindowedHost::Run(const Options& options) {
  platform::Profile profile;
  profile.Load(Host::Instance().profile());
  if (!frame_.Open(profile.GetString(kSection, kPlacementKey, ""))) return kCannotRun;
  automation::UseHostWindow(frame_.window());
  SetOutputSinks({[this](const std::string& text) { frame_.AddOutput(text); },
                  [this](const std::string& text) { frame_.AddOutput("wtarn: " + text + "\n"); }});
  std::string error;
  if (!session_.Open(
          options.plugin, frame_.window(), [](const char* text) { Print(text); }, &error)) {
    MessageBoxA(frame_.window(), error.c_str(), "wtarn", MB_OK | MB_ICONERROR);
    return kCannotRun;
  }
  frame_.Arrange();
  session_.Run();
  for (const std::string& statement : options.statements) RunStatement(statement);
  for (const std::string& script : options.scripts) RunScript(script);
  frame_.Run();
  session_.Close();
  profile.Load(Host::Instance().profile());  // the plug-in has written its part of it by now
  profile.SetString(kSection, kPlacementKey, frame_.placement());
  return profile.Save(Host::Instance().profile()) ? 0 : kCannotRun;
}

// Before there is a frame, and for whoever started it without a console.
void ShowText(const std::string& text) {
  MessageBoxA(nullptr, text.c_str(), "wtarn", MB_OK);
}

int Main(int argc, char** argv) {
  SetOutputSinks({ShowText, ShowText});
  Options options;
  int status = 0;
  if (!ReadOptions(argc, argv, &options, &status) || WroteDrive(options, &status)) return status;
  if (!SetUpHost(options, &status)) return status;
  return WindowedHost().Run(options);
}

}  // namespace
}  // namespace standin

int main(int argc, char** argv) {
  return standin::Main(argc, argv);
}
