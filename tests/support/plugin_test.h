// The plug-in's rooms in the test's own process, on the stand-in's drive, each test in an empty folder of its own.
#pragma once

#include <algorithm>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "drive/drive_identity.h"
#include "drive/host_services.h"
#include "listwin/list_window.h"
#include "platform/automation.h"
#include "platform/shutdown.h"
#include "plugin/application.h"
#include "records/record_source.h"
#include "standin/host.h"
#include "tests/support/bytes.h"

namespace pelix {

// A folder that is the current one while the object lives, and is then removed.
class EmptyFolder {
 public:
  EmptyFolder() : before_(std::filesystem::current_path()) {
    std::random_device random;
    do {
      path_ = std::filesystem::temp_directory_path() / ("pelix" + std::to_string(random()));
    } while (!std::filesystem::create_directory(path_));
    std::filesystem::current_path(path_);
  }
  ~EmptyFolder() {
    std::error_code ignored;
    std::filesystem::current_path(before_);
    std::filesystem::remove_all(path_, ignored);
  }

 private:
  std::filesystem::path before_;
  std::filesystem::path path_;
};

class PluginTest : public testing::Test {
 protected:
  PluginTest() {
    namespace automation = platform::automation;
    messages().clear();
    output().clear();
    automation::SetMessageSink([](const std::string& text) { messages().push_back(text); });
    automation::SetEventSource([] { return NextEvent(); });
    events().clear();
    automation::ClearAnswers();
    Use({});
  }
  ~PluginTest() override {
    Stop();
    standin::Host::Instance().ClearFaults();
    platform::automation::SetEventSource(nullptr);
    EXPECT_EQ(platform::CountOpenHandles(), 0) << "windows or handles of ours were left";
  }

  // Starts the plug-in on another drive.
  void Use(const standin::DriveKind& kind, const std::string& folder = "") {
    Stop();
    standin::Host& host = standin::Host::Instance();
    std::string error;
    host.ClearFaults();
    host.SetProfile("test.ini");
    ASSERT_TRUE(host.UseDrive(kind, folder, &error)) << error;
    StartUp();
    g_host->output = [](const char* text) { output() += text; };
  }
  void Stop() {
    if (g_host) ShutDown();
  }

  // What a modal window is to receive, in order; when they are used up it closes.
  static void Then(std::function<void()> event) { events().push_back(std::move(event)); }
  static void ThenKey(const char* name) {
    Then([name] {
      platform::KeyPress key;
      ASSERT_TRUE(platform::ParseKey(name, &key));
      platform::automation::SendKey(key);
    });
  }
  // Lets the window go on, a tick of the platform's at a time, until it has happened or so many ticks are over.
  static void ThenAwait(const std::function<bool()>& happened, int ticks) {
    Then([happened, ticks] {
      if (ticks == 0 || happened()) return;
      ThenAwait(happened, ticks - 1);
      std::rotate(events().begin(), events().end() - 1, events().end());  // before what was to follow
    });
  }
  // What the topmost window shows by then.
  static void ThenShow(std::string* text) {
    Then([text] { platform::automation::Show(text); });
  }
  // What the window that the action opens shows; empty when it opens none.
  static std::string ShownBy(const std::function<void()>& action) {
    std::string text;
    ThenShow(&text);
    action();
    events().clear();
    return text;
  }

  static std::vector<std::string>& messages() {
    static std::vector<std::string> list;
    return list;
  }
  static std::string& output() {
    static std::string text;
    return text;
  }

  static DriveIdentity& identity() { return *g_identity; }
  static RecordSource& records() { return *g_records; }
  static standin::SimDrive& drive() { return standin::Host::Instance().drive(); }

  // Files of a FILE I/O source.
  static void WriteTables(const FitBytes& fit, std::uint16_t heads = 2) {
    WriteBytes("VU_IDFY.bin", IdentifyBytes("PA100", heads).Get());
    WriteBytes("FSI.bin", FsiBytes(static_cast<std::uint16_t>(fit.Get().size() / 512)));
    WriteBytes("FIT.bin", fit.Get());
  }

 private:
  static std::vector<std::function<void()>>& events() {
    static std::vector<std::function<void()>> list;
    return list;
  }
  static bool NextEvent() {
    if (events().empty()) return false;
    const std::function<void()> event = events().front();
    events().erase(events().begin());
    event();
    return true;
  }

  EmptyFolder folder_;
};

using Messages = std::vector<std::string>;

}  // namespace pelix
