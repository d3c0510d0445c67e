#pragma once

#include <QHashFunctions>
#include <QStringView>
#include <bit>
#include <vector>

namespace pendra {

/// Finds the number under which an equal text was already put. An open table of numbers, because a list of
/// customers is nothing but texts: looking them up is most of what writing it costs.
class TextIndex {
 public:
  explicit TextIndex(std::size_t expected) : slots_(std::bit_ceil(2 * expected + 16)) {}

  /// The place that holds the number of an equal text, or 0 in a place that is free for it. `textOf(number)`
  /// answers the text of a number. The place is good until the next call.
  template <class TextOf>
  quint32& find(QStringView text, const TextOf& textOf) {
    if (used_ * 2 >= slots_.size()) grow();
    const auto hash = static_cast<quint32>(qHash(text, seed_));
    size_t at = hash & (slots_.size() - 1);
    while (slots_[at].number != 0) {
      if (slots_[at].hash == hash && textOf(slots_[at].number) == text) return slots_[at].number;
      at = (at + 1) & (slots_.size() - 1);
    }
    ++used_;
    slots_[at].hash = hash;
    return slots_[at].number;
  }

 private:
  struct Slot {
    quint32 hash = 0;
    quint32 number = 0;
  };

  void grow() {
    std::vector<Slot> old(slots_.size() * 2);
    old.swap(slots_);
    for (const Slot& slot : old) {
      if (slot.number == 0) continue;
      size_t at = slot.hash & (slots_.size() - 1);
      while (slots_[at].number != 0) at = (at + 1) & (slots_.size() - 1);
      slots_[at] = slot;
    }
  }

  std::vector<Slot> slots_;
  size_t used_ = 0;
  size_t seed_ = QHashSeed::globalSeed();
};

}  // namespace pendra
