#pragma once

#include <QByteArray>
#include <span>
#include <vector>

#include "ui_core/LogRow.h"
#include "ui_core/SearchText.h"

namespace pendra {

/// Which rows of the log contain what is looked for, in the names of their activity or in their notes.
///
/// The notes of all rows stand one after the other in one piece of folded text, in which the processor finds
/// a word faster than it could visit the entries. It is made once for many keystrokes; a row that has changed
/// or come since then has no place in it and is looked at for itself.
class LogSearch {
 public:
  [[nodiscard]] const SearchText& text() const { return text_; }
  [[nodiscard]] bool isActive() const { return !text_.isEmpty(); }

  /// Gathers the notes of the rows and gives each its place among them.
  void gather(std::span<LogRow> rows);
  [[nodiscard]] bool hasGathered() const { return !begins_.empty(); }
  /// Lets go of what was gathered.
  void forget();
  void lookFor(const SearchText& text);
  /// Whether the row contains what is looked for now.
  [[nodiscard]] bool finds(const LogRow& row) const;

 private:
  using Words = quint32;  // a bit for each word

  void markNotesWith(const QString& word, Words bit);

  SearchText text_;
  Words all_ = 0;
  QByteArray notes_;         // a folded line for each row
  std::vector<int> begins_;  // where the line of each row begins
  std::vector<int> owners_;  // the activity of each row, by its place in the following
  std::vector<Ref<Activity>> activities_;
  std::vector<Words> found_;  // in the names and notes of each row
};

}  // namespace pendra
