#pragma once
// A time alone says more about the machine than about the program. What is measured here is a ratio: the work
// and a plain loop that does the least of it, in turns in one run, each by the median of its turns.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <utility>
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

/// The median of so many runs.
template <class Work>
double medianMilliseconds(int runs, const Work& work) {
  std::vector<double> times;
  for (int run = 0; run < runs; ++run) times.push_back(millisecondsOf(work));
  return median(std::move(times));
}

template <class Work>
double medianProcessorMilliseconds(int runs, const Work& work) {
  std::vector<double> times;
  for (int run = 0; run < runs; ++run) times.push_back(processorMillisecondsOf(work));
  return median(std::move(times));
}

/// The medians of a work and of a plain one that take turns.
template <class Work, class Plain>
std::pair<double, double> mediansInTurn(int turns, const Work& work, const Plain& plain) {
  std::vector<double> working;
  std::vector<double> plainly;
  for (int turn = 0; turn < turns; ++turn) {
    plainly.push_back(millisecondsOf(plain));
    working.push_back(millisecondsOf(work));
  }
  return {median(std::move(working)), median(std::move(plainly))};
}

/// Prints "name  work ms  plain ms  ratio (aim)".
template <class Work, class Plain>
void compare(const char* name, double aim, const Work& work, const Plain& plain, int turns = 15) {
  const auto [ours, plains] = mediansInTurn(turns, work, plain);
  const double ratio = ours / plains;
  std::printf("%-28s %9.3f ms  plain %9.3f ms  ratio %5.2f  (aim %.1f)%s\n", name, ours, plains, ratio, aim,
              ratio <= aim ? "" : "  MISSED");
}

}  // namespace pendra::bench
