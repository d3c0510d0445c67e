#pragma once

#include <algorithm>
#include <vector>

#include "channel/ArchiveValue.h"
#include "channel/KeyedArchiver.h"

namespace pendra {

/// What a value holds, counted before it is written, so that no table has to grow.
class ArchiveCensus {
 public:
  explicit ArchiveCensus(const ArchiveValue& root) { add(root, 0); }

  std::size_t texts = 0;  ///< equal ones counted as often as they stand
  qsizetype textLength = 0;
  std::size_t others = 0;  ///< numbers, arrays, records and nil markers
  std::size_t arrays = 0;
  bool hasNilArg = false;
  std::vector<const ArchiveClass*> records;  ///< one of each name

  /// How many classes are described.
  [[nodiscard]] std::size_t classes() const { return (arrays > 0) + std::size_t{hasNilArg} + records.size(); }
  /// More objects than the archive has, because equal texts and numbers stand once.
  [[nodiscard]] std::size_t objects() const { return 1 + texts + others + classes(); }

 private:
  /// What is nested too deep is left out; it fails later.
  void add(const ArchiveValue& value, int depth) {
    if (const auto* record = value.as<ArchiveRecord>()) {
      ++others;
      addClass(*record->archiveClass);
      addParts(record->fields, depth);
    } else if (const auto* array = value.as<ArchiveValue::Array>()) {
      ++others;
      ++arrays;
      addParts(*array, depth);
    } else {
      const auto* text = value.as<QString>();
      ++(text ? texts : others);
      if (text) textLength += text->size();
      hasNilArg |= value.isNilArg();
    }
  }

  void addParts(const QList<ArchiveValue>& parts, int depth) {
    if (depth >= kArchiveDepth) return;
    for (const ArchiveValue& part : parts) add(part, depth + 1);
  }

  void addClass(const ArchiveClass& added) {
    const auto isSame = [&](const ArchiveClass* known) {
      return known == &added || known->name == added.name;
    };
    if (std::none_of(records.begin(), records.end(), isSame)) records.push_back(&added);
  }
};

}  // namespace pendra
