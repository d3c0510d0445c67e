#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace pendra {

/// Letters that stand together in a text.
struct FoundLetters {
  qsizetype at;
  qsizetype length;
  friend bool operator==(const FoundLetters&, const FoundLetters&) = default;
};

/// What somebody types to find rows: words, each of which must stand somewhere in a row, whatever its case.
class SearchText {
 public:
  SearchText() = default;
  explicit SearchText(const QString& typed) : words_(typed.toCaseFolded().split(u' ', Qt::SkipEmptyParts)) {}

  [[nodiscard]] bool isEmpty() const { return words_.isEmpty(); }
  /// The words, case-folded.
  [[nodiscard]] const QStringList& words() const { return words_; }
  /// Whether each word stands in one of the texts of a row.
  [[nodiscard]] bool isIn(const QStringList& texts) const;
  /// Where words stand in a text, from the left, none twice.
  [[nodiscard]] std::vector<FoundLetters> foundIn(const QString& text) const;

 private:
  QStringList words_;
};

}  // namespace pendra
