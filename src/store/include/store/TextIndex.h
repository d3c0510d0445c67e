#pragma once

#include <QString>
#include <QStringList>
#include <unordered_map>

#include "store/OrderedObjects.h"

namespace pendra {

/// Answers which objects hold a text in one property, in the order of their insertion into the document.
class TextIndex {
 public:
  /// Makes room for so many texts.
  void reserve(std::size_t count) { sharers_.reserve(count); }
  /// `object` must have its identifier.
  void add(const QString& text, ManagedObject& object);
  /// Nothing happens when it does not stand under that text. The object must live until `settle`.
  void remove(const QString& text, ManagedObject& object);
  /// The view is void once the index changes.
  [[nodiscard]] std::span<ManagedObject* const> find(const QString& text) const;
  /// What was removed is found nowhere in here any more.
  void settle();

 private:
  std::unordered_map<QString, OrderedObjects> sharers_;
  QStringList left_;  // the texts that objects have left
};

}  // namespace pendra
