#pragma once
// What arrays can do beyond the standard library. An index that was not found is -1.

#include <QString>
#include <QVariant>
#include <algorithm>
#include <optional>

namespace pendra {

/// Whether the very object, not an equal one, is an element of an array of pointers.
template <class Array, class Object>
[[nodiscard]] bool containsObjectIdenticalTo(const Array& array, const Object* object) {
  return std::any_of(array.begin(), array.end(),
                     [object](const auto& element) { return &*element == object; });
}

/// The index of the first element after `index` for which the predicate holds.
template <class Array, class Predicate>
[[nodiscard]] qint32 findMatchingPredicate(const Array& array, const Predicate& predicate,
                                           qint32 afterIndex) {
  const auto size = static_cast<qint32>(array.size());
  if (afterIndex + 1 >= size) return -1;
  const auto found = std::find_if(array.begin() + (afterIndex + 1), array.end(), predicate);
  return found == array.end() ? -1 : static_cast<qint32>(found - array.begin());
}

template <class Array, class Predicate>
[[nodiscard]] qint32 findFirstMatchingPredicate(const Array& array, const Predicate& predicate) {
  return findMatchingPredicate(array, predicate, -1);
}

template <class Array, class Predicate>
[[nodiscard]] qint32 countMatchingPredicate(const Array& array, const Predicate& predicate) {
  return static_cast<qint32>(std::count_if(array.begin(), array.end(), predicate));
}

/// Inserts the elements of `source` together, in their order.
template <class Array, class Source>
void insertObjectsFromArray(Array& array, const Source& source, qsizetype atIndex) {
  for (const auto& element : source) array.insert(array.begin() + atIndex++, element);
}

/// Appends the object when it is given and no element equals it; answers whether it did.
template <class Array, class Object>
bool addObjectIfUnique(Array& array, const std::optional<Object>& object) {
  if (!object || std::find(array.begin(), array.end(), *object) != array.end()) return false;
  array.push_back(*object);
  return true;
}

namespace array_extensions {
inline bool hasContents(const QString& element, const QString& text) { return element == text; }
inline bool hasContents(const QVariant& element, const QString& text) {
  return element.typeId() == QMetaType::QString && element.toString() == text;
}
}  // namespace array_extensions

/// Appends the text when it is given and no element that is a text has the same contents; answers whether
/// it did.
template <class Array>
bool addStringIfContentsAreUnique(Array& array, const std::optional<QString>& text) {
  const auto same = [&](const auto& element) { return array_extensions::hasContents(element, *text); };
  if (!text || std::any_of(array.begin(), array.end(), same)) return false;
  array.push_back(*text);
  return true;
}

}  // namespace pendra
