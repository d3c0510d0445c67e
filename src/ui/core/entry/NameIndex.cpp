#include "ui_core/NameIndex.h"

#include <algorithm>

#include "model/Queries.h"

namespace pendra {

namespace {

/// How well a name fits what was typed, the best first.
enum class Fit { OfferedBegins, OfferedWord, Begins, Word, None };

Fit fitOf(const QString& folded, bool offered, const QString& text) {
  if (folded.startsWith(text)) return offered ? Fit::OfferedBegins : Fit::Begins;
  if (wordThatBegins(folded, text) < 0) return Fit::None;
  return offered ? Fit::OfferedWord : Fit::Word;
}

}  // namespace

qsizetype wordThatBegins(const QString& folded, const QString& letters) {
  qsizetype at = folded.indexOf(letters);
  while (at > 0 && folded[at - 1].isLetterOrNumber()) at = folded.indexOf(letters, at + 1);
  return at;
}

void NameList::add(const QString& name, bool offered) {
  if (!name.trimmed().isEmpty()) names_.push_back({name.toCaseFolded(), name, offered});
}

void NameList::sort() {
  const auto order = [](const Name& one, const Name& other) {
    return std::tie(one.folded, one.name, other.offered) < std::tie(other.folded, other.name, one.offered);
  };
  std::sort(names_.begin(), names_.end(), order);
  const auto same = [](const Name& one, const Name& other) { return one.name == other.name; };
  names_.erase(std::unique(names_.begin(), names_.end(), same), names_.end());
}

std::vector<NameList::Name>::const_iterator NameList::from(const QString& folded) const {
  return std::lower_bound(names_.begin(), names_.end(), folded,
                          [](const Name& one, const QString& text) { return one.folded < text; });
}

bool NameList::holds(const QString& text) const { return !calledExactly(text).isEmpty(); }

bool NameList::holdsBeginning(const QString& text) const {
  const QString folded = text.toCaseFolded();
  const auto first = from(folded);
  return first != names_.end() && first->folded.startsWith(folded);
}

QStringList NameList::calledExactly(const QString& text) const {
  const QString folded = text.toCaseFolded();
  QStringList found;
  for (auto one = from(folded); one != names_.end() && one->folded == folded; ++one) found << one->name;
  return found.contains(text) ? QStringList(text) : found;
}

QStringList NameList::called(const QString& text) const {
  if (QStringList exact = calledExactly(text); !exact.isEmpty() || text.isEmpty()) return exact;
  const QString folded = text.toCaseFolded();
  QStringList found;
  Fit best = Fit::None;
  for (const Name& one : names_) {
    const Fit fit = fitOf(one.folded, one.offered, folded);
    if (fit > best || fit == Fit::None) continue;
    if (fit < best) found.clear();
    best = fit;
    found << one.name;
  }
  return found;
}

NameIndex::NameIndex(const ObjectContext& context) {
  for (const Customer* customer : context.all<Customer>()) {
    const QString name = queries::nameOf(customer);
    customers_.add(name, customer->shown() == true || !customer->activities().empty());
    for (const Job* job : customer->jobs()) {
      jobs_[name].add(queries::nameOf(job), job->shown() == true || !job->activities().empty());
    }
  }
  customers_.sort();
  for (NameList& jobs : jobs_) jobs.sort();
  for (const Service* service : context.all<Service>()) {
    services_.add(queries::nameOf(service), service->shown() == true || !service->activities().empty());
  }
  services_.sort();
  for (Activity* activity : context.all<Activity>()) {
    const QStringList texts{queries::nameOf(activity->customer()), queries::nameOf(activity->job()),
                            queries::nameOf(activity->service()), activity->notes().value_or(QString())};
    activities_.push_back({activity, texts.join(u'\n').toCaseFolded(), activity->completed() != false});
  }
}

const NameList& NameIndex::jobs(const QString& customer) const {
  static const NameList none;
  const auto found = jobs_.constFind(customer);
  return found == jobs_.constEnd() ? none : *found;
}

std::vector<NameIndex::Hit> NameIndex::activitiesWith(const QStringList& words, std::size_t most) const {
  struct Ranked {
    const Listed* listed;
    int words;
  };
  QStringList folded;
  for (const QString& word : words) folded << word.toCaseFolded();
  std::vector<Ranked> ranked;
  for (const Listed& one : activities_) {
    const auto count = std::count_if(folded.begin(), folded.end(), [&](const QString& word) {
      return wordThatBegins(one.folded, word) >= 0;
    });
    if (count > 0) ranked.push_back({&one, static_cast<int>(count)});
  }
  const auto better = [](const Ranked& one, const Ranked& other) {
    if (one.words != other.words) return one.words > other.words;
    if (one.listed->completed != other.listed->completed) return other.listed->completed;
    return one.listed > other.listed;
  };
  const auto end = ranked.begin() + static_cast<std::ptrdiff_t>(std::min(most, ranked.size()));
  std::partial_sort(ranked.begin(), end, ranked.end(), better);
  std::vector<Hit> hits;
  std::for_each(ranked.begin(), end, [&](const Ranked& one) {
    hits.push_back({one.listed->activity, one.words});
  });
  return hits;
}

}  // namespace pendra
