// The console host from start to exit, against the smallest program that there is.
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <vector>

#include "bench/measure.h"
#include "platform/files.h"
#include "tests/support/plugin_test.h"

extern char** environ;

namespace {

long peak_kilobytes;

void RunProgram(std::vector<std::string> words) {
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t quiet;
  posix_spawn_file_actions_init(&quiet);
  posix_spawn_file_actions_addopen(&quiet, 1, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  int status = 0;
  rusage usage = {};
  if (posix_spawn(&child, arguments[0], &quiet, nullptr, arguments.data(), environ) != 0) std::abort();
  if (wait4(child, &status, 0, &usage) != child || status != 0) std::abort();
  posix_spawn_file_actions_destroy(&quiet);
  peak_kilobytes = usage.ru_maxrss;
}

}  // namespace

int main() {
  const std::string host = platform::ProgramFolder() + "/wtarn";
  const pelix::EmptyFolder folder;
  const bench::Pair pair = bench::BestOf(
      300, [] { RunProgram({"/bin/true"}); },
      [&] {
        RunProgram({host, "-e", "tree"});
      });
  const bool fast = bench::Report("wtarn -e tree, start to exit", "/bin/true", pair, 5);
  const bool small = bench::ReportMegabytes("memory of wtarn -e tree", static_cast<double>(peak_kilobytes) / 1024, 20);
  return fast && small ? 0 : 1;
}
