// A list of ten million lines from a text file of 1 GB: indexing against wc -l, memory, and the first screen.
#include <cstdlib>
#include <sys/resource.h>

#include "bench/measure.h"
#include "tests/support/plugin_test.h"

namespace pelix {
namespace {

constexpr std::size_t kLines = 10'000'000;
constexpr char kFile[] = "lines.txt";

void MakeFile() {
  platform::File file = platform::File::Open(kFile, "wb");
  std::string block;
  for (std::size_t i = 0; i < kLines; ++i) {
    block += platform::Format("%8zu  %-88s\n", i, "cylinder head sector and what else a line of a long report says");
    if (block.size() < (1u << 20) && i + 1 < kLines) continue;
    if (!file.Write(block)) std::abort();
    block.clear();
  }
  if (!file.Close()) std::abort();
}

void Index() {
  const std::unique_ptr<ListBody> body = OpenStreamBody(kFile, kUnknownLineCount, "");
  while (!body->WaitForLine(SIZE_MAX)) {
  }
  if (body->LineCount() != kLines) std::abort();
}

void ShowFirstScreen() {
  const std::unique_ptr<ListBody> body = OpenStreamBody(kFile, kLines, "");
  for (std::size_t line = 0; line < 40; ++line) {
    if (body->Line(line).size() < 90) std::abort();
  }
}

double PeakMegabytes() {
  rusage usage = {};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024;
}

bool Run() {
  const EmptyFolder folder;
  MakeFile();
  const auto count_lines = [] {
    if (std::system("wc -l lines.txt >/dev/null") != 0) std::abort();
  };
  bool good = bench::Report("10 million lines, 1 GB, indexing", "wc -l", bench::BestOf(5, count_lines, Index), 1.5);
  good &= bench::ReportMegabytes("memory of the whole process at its peak", PeakMegabytes(), 80);
  good &= bench::Report("first screen of the same", "wc -l", bench::BestOf(3, count_lines, ShowFirstScreen), 0.1);
  return good;
}

}  // namespace
}  // namespace pelix

int main() {
  return pelix::Run() ? 0 : 1;
}
