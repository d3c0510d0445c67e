#pragma once

#include <QHashFunctions>
#include <QStringView>
#include <array>
#include <bit>
#include <vector>

namespace pendra {

/// Finds the number under which an equal text was already put. An open table of numbers, because a list of
/// customers is nothing but texts: looking them up is most of what writing it costs.
class TextIndex {
 public:
  /// Room for so many different texts; more must not be put.
  explicit TextIndex(std::size_t greatestCount) : slots_(std::bit_ceil(greatestCount * 4 / 3 + 2)) {}

  /// Says that a text will be looked for soon, in the order of these calls. Looking for a text in a large
  /// table is mostly waiting for memory, which is so done beforehand.
  void expect(QStringView text) {
    const size_t hash = qHash(text, seed_);
    __builtin_prefetch(&slots_[hash & (slots_.size() - 1)]);
    if (pushed_ - popped_ == expected_.size()) popped_ = pushed_;
    expected_[pushed_++ % expected_.size()] = {text, hash};
  }

  /// The place that holds the number of an equal text, or 0 in a place that is free for it. `textOf(number)`
  /// answers the text of a number.
  template <class TextOf>
  quint32& find(QStringView text, const TextOf& textOf) {
    const size_t hash = hashOf(text);
    const auto mark = static_cast<quint32>(hash >> 32);
    size_t at = hash & (slots_.size() - 1);
    while (slots_[at].number != 0) {
      if (slots_[at].mark == mark && textOf(slots_[at].number) == text) return slots_[at].number;
      at = (at + 1) & (slots_.size() - 1);
    }
    slots_[at].mark = mark;
    return slots_[at].number;
  }

 private:
  struct Slot {
    quint32 mark = 0;  ///< a part of the hash that did not choose the slot
    quint32 number = 0;
  };

  struct Expected {
    QStringView text;
    size_t hash = 0;
  };

  size_t hashOf(QStringView text) {
    const Expected& next = expected_[popped_ % expected_.size()];
    if (popped_ == pushed_ || next.text.data() != text.data() || next.text.size() != text.size())
      return qHash(text, seed_);
    ++popped_;
    return next.hash;
  }

  std::vector<Slot> slots_;
  std::array<Expected, 64> expected_;
  size_t pushed_ = 0;
  size_t popped_ = 0;
  size_t seed_ = QHashSeed::globalSeed();
};

}  // namespace pendra
