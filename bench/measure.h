// Measuring in one process: the best of several rounds, taken in turn so that both sides see the same machine.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>

namespace bench {

inline double Seconds(const std::function<void()>& action) {
  const auto start = std::chrono::steady_clock::now();
  action();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

struct Pair {
  double baseline, measured;
};

inline Pair BestOf(int rounds, const std::function<void()>& baseline, const std::function<void()>& measured) {
  Pair best = {1e9, 1e9};
  for (int i = 0; i < rounds; ++i) {
    best.baseline = std::min(best.baseline, Seconds(baseline));
    best.measured = std::min(best.measured, Seconds(measured));
  }
  return best;
}

// Prints a line and tells whether the ratio keeps its limit.
inline bool Report(const char* what, const char* baseline, const Pair& pair, double limit) {
  const double ratio = pair.measured / pair.baseline;
  std::printf("%-58s %8.2f ms, %s %8.2f ms: ratio %.2f, at most %.2f%s\n", what, pair.measured * 1e3, baseline,
              pair.baseline * 1e3, ratio, limit, ratio <= limit ? "" : "  TOO MUCH");
  return ratio <= limit;
}

inline bool ReportMegabytes(const char* what, double megabytes, double limit) {
  std::printf("%-58s %8.1f MB, at most %.0f%s\n", what, megabytes, limit, megabytes <= limit ? "" : "  TOO MUCH");
  return megabytes <= limit;
}

}  // namespace bench
