#include "Matching.h"

#include <numeric>

#include "model/ActivityTitle.h"
#include "model/Queries.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

constexpr std::size_t kMostNear = 5;
/// So many letters of a word may be wrong for it to be near.
constexpr qsizetype kMostWrong = 2;
constexpr qsizetype kLettersOfAWord = 4;

QStringList wordsOf(const QString& text) {
  QStringList words = text.toCaseFolded().split(u' ', Qt::SkipEmptyParts);
  // As titles are written, with dashes between the names.
  words.removeIf([](const QString& word) {
    return std::none_of(word.begin(), word.end(), [](QChar one) { return one.isLetterOrNumber(); });
  });
  return words;
}

QStringList partsOf(const Activity& activity) {
  return {queries::nameOf(activity.customer()).toCaseFolded(), queries::nameOf(activity.job()).toCaseFolded(),
          queries::nameOf(activity.service()).toCaseFolded(),
          activity.notes().value_or(QString()).toCaseFolded()};
}

bool standsIn(const QString& word, const QStringList& parts) {
  return std::any_of(parts.begin(), parts.end(), [&](const QString& part) { return part.contains(word); });
}

/// How many letters must be put in, left out or exchanged to make one word of the other.
qsizetype lettersBetween(QStringView one, QStringView other) {
  std::vector<qsizetype> row(static_cast<std::size_t>(other.size()) + 1);
  std::iota(row.begin(), row.end(), 0);
  for (qsizetype i = 0; i < one.size(); ++i) {
    qsizetype diagonal = std::exchange(row[0], i + 1);
    for (std::size_t j = 1; j < row.size(); ++j) {
      const qsizetype exchanged = diagonal + (one[i] == other[static_cast<qsizetype>(j) - 1] ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, exchanged});
    }
  }
  return row.back();
}

bool isNear(const QString& word, const QStringList& parts) {
  if (standsIn(word, parts)) return true;
  if (word.size() < kLettersOfAWord) return false;
  const QStringList words = parts.join(u' ').split(u' ', Qt::SkipEmptyParts);
  return std::any_of(words.begin(), words.end(), [&](const QString& other) {
    return qAbs(other.size() - word.size()) <= kMostWrong && lettersBetween(word, other) <= kMostWrong;
  });
}

/// “Acme - Design - sketches”, “Zed”; the notes tell those apart that are called the same.
QString listed(const std::vector<Activity*>& activities) {
  QStringList titles;
  for (const Activity* activity : activities) {
    QStringList texts{titleOf(*activity), activity->notes().value_or(QString()).simplified()};
    texts.removeAll(QString());
    texts.removeDuplicates();
    titles << formatted(u"“%@”", {texts.join(QStringLiteral(" - "))});
  }
  return titles.join(u", ");
}

Error noMatch(const QString& name, const QStringList& words, const std::vector<Activity*>& among) {
  std::vector<Activity*> near;
  for (Activity* activity : among) {
    const QStringList parts = partsOf(*activity);
    const auto isNearIt = [&](const QString& word) { return isNear(word, parts); };
    if (near.size() < kMostNear && std::any_of(words.begin(), words.end(), isNearIt)) {
      near.push_back(activity);
    }
  }
  if (near.empty()) return refusal(Refusal::NoMatch, formatted(tr("“%@” matches no activity"), {name}));
  return refusal(Refusal::NoMatch,
                 formatted(tr("“%@” matches no activity; near to it: %@"), {name, listed(near)}));
}

}  // namespace

QString titleOf(const Activity& activity) {
  const QString title = activityTitle(activity);
  return title.isEmpty() ? tr("an activity without a name") : title;
}

Result<Activity*> oneMatching(const QString& name, const std::vector<Activity*>& among) {
  const QStringList words = wordsOf(name);
  if (words.isEmpty()) return refusal(Refusal::NoMatch, formatted(tr("“%@” names no activity"), {name}));
  std::vector<Activity*> matching;
  for (Activity* activity : among) {
    const QStringList parts = partsOf(*activity);
    const auto stands = [&](const QString& word) { return standsIn(word, parts); };
    if (std::all_of(words.begin(), words.end(), stands)) matching.push_back(activity);
  }
  if (matching.size() > 1) {
    std::vector<Activity*> called;
    std::copy_if(matching.begin(), matching.end(), std::back_inserter(called), [&](const Activity* one) {
      return titleOf(*one).compare(name.trimmed(), Qt::CaseInsensitive) == 0;
    });
    if (called.size() == 1) matching = called;
  }
  if (matching.empty()) return noMatch(name, words, among);
  if (matching.size() == 1) return matching.front();
  return refusal(Refusal::SeveralMatches,
                 counted(std::ssize(matching), "“%@” matches 1 activity: %@",
                         "“%@” matches %Ln activities: %@", {name, listed(matching)}));
}

}  // namespace pendra
