// Statements of the host's language, of any content, run on the plug-in from its start-up to its shut-down.
#include <cctype>
#include <cstdio>

#include "fuzz/fuzz_sandbox.h"
#include "platform/automation.h"
#include "platform/files.h"
#include "plugin/application.h"
#include "plugin/plugin_entry.h"
#include "standin/host.h"
#include "standin/statements.h"

namespace {

void DropOutput(const char*) {}

// A key held down a million times is no finding, only slow.
bool HasLongNumber(const std::string& text) {
  std::size_t digits = 0;
  for (const char c : text) {
    digits = std::isdigit(static_cast<unsigned char>(c)) ? digits + 1 : 0;
    if (digits > 4) return true;
  }
  return false;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  fuzz::EnterSandbox();
  // The plug-in's output is not what is tested here, and there would be a lot of it.
  if (std::freopen("/dev/null", "w", stdout) == nullptr) return 1;
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string script(reinterpret_cast<const char*>(data), size);
  if (HasLongNumber(script) || script.find("MCF TO DISK") != std::string::npos) return 0;
  fuzz::EmptyFolder();
  {
    platform::File file = platform::File::Open("script", "wb");
    if (!file.Write(script)) return 0;
  }
  std::string error;
  standin::Host::Instance().SetProfile("fuzz.ini");
  if (!standin::Host::Instance().UseDrive({}, "", &error)) std::abort();
  standin::PluginSession session;
  standin::StatementSource source({}, {"script"});
  standin::StatementRunner runner(&session, &source);
  platform::automation::SetEventSource([&runner] { return runner.RunNext(); });
  pelix::StartUp();
  if (!session.Attach(PLUGIN_GetInfoStruct(), platform::automation::HostWindow(), DropOutput, &error)) std::abort();
  runner.RunAll();
  session.Close();
  pelix::ShutDown();
  platform::automation::ClearAnswers();
  return 0;
}
