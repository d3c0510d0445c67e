#pragma once

#include <algorithm>
#include <chrono>
#include <ctime>
#include <utility>
#include <vector>

namespace pendra {

/// The seconds that a piece of code takes: the median of so many runs.
template <class Code>
double medianSeconds(int runs, const Code& code) {
  std::vector<double> times;
  for (int i = 0; i < runs; ++i) {
    const auto start = std::chrono::steady_clock::now();
    code();
    times.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
  }
  std::nth_element(times.begin(), times.begin() + runs / 2, times.end());
  return times[static_cast<std::size_t>(runs / 2)];
}

/// The seconds of processor time that a piece of code takes, whatever else the machine does: the median of so
/// many runs.
template <class Code>
double medianProcessorSeconds(int runs, const Code& code) {
  const auto now = [] {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
  };
  std::vector<double> times;
  for (int i = 0; i < runs; ++i) {
    const double start = now();
    code();
    times.push_back(now() - start);
  }
  std::nth_element(times.begin(), times.begin() + runs / 2, times.end());
  return times[static_cast<std::size_t>(runs / 2)];
}

/// The medians of two pieces of code that take turns, so that whatever else the machine does falls on both.
template <class First, class Second>
std::pair<double, double> medianSeconds(int runs, const First& first, const Second& second) {
  std::vector<double> firsts;
  std::vector<double> seconds;
  for (int i = 0; i < runs; ++i) {
    firsts.push_back(medianSeconds(1, first));
    seconds.push_back(medianSeconds(1, second));
  }
  const auto median = [runs](std::vector<double>& times) {
    std::nth_element(times.begin(), times.begin() + runs / 2, times.end());
    return times[static_cast<std::size_t>(runs / 2)];
  };
  return {median(firsts), median(seconds)};
}

}  // namespace pendra
