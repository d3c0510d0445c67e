#pragma once
// "Acme, Roof: Design - sketches @9:30-11" in its parts. A name may hold any of the signs between the parts:
// the longest name that exists is taken first, and what stands in quotes is one name.

#include "TimesSaid.h"
#include "ui_core/NameIndex.h"

namespace pendra {

/// One name as it is written.
struct WrittenName {
  QString text{};  ///< without its quotes
  qsizetype at = 0;
  qsizetype length = 0;   ///< with its quotes
  bool isQuoted = false;  ///< it is whole
};

struct EntrySplit {
  WrittenName customer{};
  WrittenName job{};
  WrittenName service{};
  WrittenName notes{};
  qsizetype timesAt = 0;  ///< where names and notes end
  TimesSaid times{};
  std::optional<TextFault> fault{};
};

[[nodiscard]] EntrySplit splitEntry(const QString& text, const NameIndex& index, const DayReader& days);

}  // namespace pendra
