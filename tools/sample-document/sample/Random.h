#pragma once

#include <QtGlobal>
#include <span>

namespace pendra {

/// Random numbers that are the same everywhere for one seed, which those of the standard library's
/// distributions are not.
class Random {
 public:
  explicit Random(quint64 seed) : state_(seed) {}

  /// 0 to `limit` - 1; `limit` is positive and below 2^31.
  int below(int limit) { return static_cast<int>(((next() >> 32) * static_cast<quint64>(limit)) >> 32); }
  int between(int first, int last) { return first + below(last - first + 1); }
  bool percent(int chance) { return below(100) < chance; }
  template <class T>
  const T& oneOf(std::span<const T> choices) {
    return choices[static_cast<std::size_t>(below(static_cast<int>(choices.size())))];
  }

 private:
  // SplitMix64: a counter whose bits are mixed.
  quint64 next() {
    quint64 mixed = state_ += 0x9e3779b97f4a7c15U;
    mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9U;
    mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebU;
    return mixed ^ (mixed >> 31);
  }

  quint64 state_;
};

}  // namespace pendra
