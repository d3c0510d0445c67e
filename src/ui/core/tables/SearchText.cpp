#include "ui_core/SearchText.h"

#include <algorithm>

namespace pendra {

bool SearchText::isIn(const QStringList& texts) const {
  return std::all_of(words_.begin(), words_.end(), [&texts](const QString& word) {
    return std::any_of(texts.begin(), texts.end(),
                       [&word](const QString& text) { return text.contains(word, Qt::CaseInsensitive); });
  });
}

std::vector<FoundLetters> SearchText::foundIn(const QString& text) const {
  std::vector<bool> found(static_cast<std::size_t>(text.size()), false);
  for (const QString& word : words_) {
    for (qsizetype at = text.indexOf(word, 0, Qt::CaseInsensitive); at >= 0;
         at = text.indexOf(word, at + word.size(), Qt::CaseInsensitive)) {
      std::fill_n(found.begin() + at, std::min(word.size(), text.size() - at), true);
    }
  }
  std::vector<FoundLetters> runs;
  for (std::size_t at = 0; at < found.size(); ++at) {
    if (!found[at]) continue;
    const bool goesOn = at > 0 && found[at - 1];
    if (!goesOn) runs.push_back({static_cast<qsizetype>(at), 0});
    ++runs.back().length;
  }
  return runs;
}

}  // namespace pendra
