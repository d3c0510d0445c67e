#pragma once

#include <QHash>
#include <QString>
#include <QVarLengthArray>
#include <span>

namespace pendra {

class ManagedObject;

/// Answers which objects hold a text in one property, in the order of their insertion into the document.
class TextIndex {
 public:
  /// Makes room for so many texts.
  void reserve(std::size_t count) { sharers_.reserve(static_cast<qsizetype>(count)); }
  /// `object` must have its identifier.
  void add(const QString& text, ManagedObject& object);
  /// Nothing happens when it does not stand under that text.
  void remove(const QString& text, const ManagedObject& object);
  /// The view is void once the index changes.
  [[nodiscard]] std::span<ManagedObject* const> find(const QString& text) const;

 private:
  using Sharers = QVarLengthArray<ManagedObject*, 1>;  // nearly every text stands once

  QHash<QString, Sharers> sharers_;
};

}  // namespace pendra
