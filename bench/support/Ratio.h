#pragma once
// A time alone says more about the machine than about the program. What is measured here is a ratio: the work
// and a plain loop that does the least of it, in turns in one run, each by the median of its turns.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <vector>

namespace pendra::bench {

template <class Work>
double millisecondsOf(const Work& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

/// Of the processor, whatever else the machine does.
template <class Work>
double processorMillisecondsOf(const Work& work) {
  const auto now = [] {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
  };
  const double start = now();
  work();
  return now() - start;
}

inline double median(std::vector<double> times) {
  const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
  std::nth_element(times.begin(), middle, times.end());
  return *middle;
}

/// Prints "name  work ms  plain ms  ratio (aim)". `work` and `plain` take turns.
template <class Work, class Plain>
void compare(const char* name, double aim, const Work& work, const Plain& plain, int turns = 15) {
  std::vector<double> working;
  std::vector<double> plainly;
  for (int turn = 0; turn < turns; ++turn) {
    plainly.push_back(millisecondsOf(plain));
    working.push_back(millisecondsOf(work));
  }
  const double ratio = median(working) / median(plainly);
  std::printf("%-28s %9.3f ms  plain %9.3f ms  ratio %5.2f  (aim %.1f)%s\n", name, median(working),
              median(plainly), ratio, aim, ratio <= aim ? "" : "  MISSED");
}

}  // namespace pendra::bench
