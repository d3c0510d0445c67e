#include "LogSearch.h"

#include <QHash>
#include <string_view>

#include "model/Queries.h"

namespace pendra {

namespace {

/// More words are not looked for: nobody types so many to find a row.
constexpr qsizetype kMostWords = 32;

QStringList namesOf(const Activity* activity) {
  if (!activity) return {};
  return {queries::nameOf(activity->customer()), queries::nameOf(activity->job()),
          queries::nameOf(activity->service())};
}

}  // namespace

void LogSearch::gather(std::span<LogRow> rows) {
  forget();
  QHash<const Activity*, int> known;
  begins_.reserve(rows.size());
  owners_.reserve(rows.size());
  for (LogRow& row : rows) {
    row.searchPlace = static_cast<int>(begins_.size());
    begins_.push_back(static_cast<int>(notes_.size()));
    if (const QString notes = row.notes(); !notes.isEmpty()) notes_ += notes.toCaseFolded().toUtf8();
    notes_ += '\0';
    const auto next = static_cast<int>(activities_.size());
    const auto found = known.constFind(row.activity());
    owners_.push_back(found == known.cend() ? *known.insert(row.activity(), next) : *found);
    if (owners_.back() == next) activities_.push_back(row.of);
  }
  lookFor(text_);
}

void LogSearch::forget() {
  notes_ = {};
  begins_ = {};
  owners_ = {};
  activities_ = {};
  found_ = {};
}

void LogSearch::lookFor(const SearchText& text) {
  text_ = text;
  const QStringList words = text.words().first(std::min(kMostWords, text.words().size()));
  all_ = 0;
  std::vector<Words> inNames(activities_.size(), 0);
  for (qsizetype word = 0; word < words.size(); ++word) {
    const Words bit = Words{1} << word;
    all_ |= bit;
    for (std::size_t index = 0; index < activities_.size(); ++index) {
      if (SearchText(words[word]).isIn(namesOf(activities_[index].get()))) inNames[index] |= bit;
    }
  }
  found_.resize(owners_.size());
  for (std::size_t row = 0; row < owners_.size(); ++row) {
    found_[row] = inNames[static_cast<std::size_t>(owners_[row])];
  }
  for (qsizetype word = 0; word < words.size(); ++word) markNotesWith(words[word], Words{1} << word);
}

void LogSearch::markNotesWith(const QString& word, Words bit) {
  const QByteArray letters = word.toUtf8();
  const std::string_view notes(notes_.constData(), static_cast<std::size_t>(notes_.size()));
  const std::string_view wanted(letters.constData(), static_cast<std::size_t>(letters.size()));
  std::size_t row = 0;
  for (std::size_t at = notes.find(wanted); at != std::string_view::npos; at = notes.find(wanted, at)) {
    while (row + 1 < begins_.size() && static_cast<std::size_t>(begins_[row + 1]) <= at) ++row;
    found_[row] |= bit;
    if (++row == begins_.size()) return;
    at = static_cast<std::size_t>(begins_[row]);  // one place in a line is enough
  }
}

bool LogSearch::finds(const LogRow& row) const {
  const auto place = static_cast<std::size_t>(row.searchPlace);
  if (row.searchPlace >= 0 && place < found_.size()) return (found_[place] & all_) == all_;
  return text_.isIn(namesOf(row.activity()) << row.notes());
}

}  // namespace pendra
