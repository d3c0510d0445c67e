#include "ui_core/QuickEntry.h"

#include <QRegularExpression>

#include "EntrySplit.h"
#include "model/ActivityTimes.h"
#include "model/ActivityTitle.h"
#include "model/Queries.h"
#include "platform/Translation.h"
#include "store/ChangeSet.h"
#include "ui_core/QuickDeed.h"

namespace pendra {

namespace {

QString quoted(const QString& name) {
  QString text = name;
  return u'"' + text.replace(u'"', QStringLiteral("\"\"")) + u'"';
}

QStringList wordsOf(const QString& text) {
  static const QRegularExpression between(QStringLiteral(R"([\s,:"–—-]+)"));
  return text.split(between, Qt::SkipEmptyParts);
}

/// Where the words stand in a title, those that overlap as one.
std::vector<QuickCompletion::Part> foundIn(const QString& title, const QStringList& words) {
  std::vector<bool> marked(static_cast<std::size_t>(title.size()));
  for (const QString& word : words) {
    const qsizetype at = wordThatBegins(title.toLower(), word.toLower());
    const qsizetype end = at < 0 ? at : std::min(at + word.size(), title.size());
    for (qsizetype i = at; i < end; ++i) {
      marked[static_cast<std::size_t>(i)] = true;
    }
  }
  std::vector<QuickCompletion::Part> parts;
  for (std::size_t i = 0; i < marked.size(); ++i) {
    if (!marked[i]) continue;
    if (i == 0 || !marked[i - 1]) parts.push_back({static_cast<qsizetype>(i), 0});
    ++parts.back().length;
  }
  return parts;
}

/// As names are typed; in quotes they mean the same whatever else is called similarly.
QString typed(const QuickNames& names, bool inQuotes) {
  const auto shown = [inQuotes](const QString& name) { return inQuotes ? quoted(name) : name; };
  QString text = shown(names.customer);
  if (!names.job.isEmpty()) text += QStringLiteral(", ") + shown(names.job);
  if (!names.service.isEmpty()) text += QStringLiteral(": ") + shown(names.service);
  if (!names.notes.isEmpty()) text += QStringLiteral(" - ") + shown(names.notes);
  return text;
}

QString titleOf(const QuickNames& names) {
  QStringList all{names.customer, names.job, names.service};
  all.removeAll(QString());
  return all.join(QStringLiteral(" - "));
}

QString namesOf(const QString& text, const QuickReading& reading) {
  return text.mid(reading.namesAt, reading.timesAt - reading.namesAt);
}

}  // namespace

QuickEntry::QuickEntry(TimerState& timer)
    : timer_(timer), documents_(timer.session().documentChanges().observe([this] { followDocument(); })) {
  followDocument();
}

void QuickEntry::followDocument() {
  index_.reset();
  edits_ = {};
  const auto context = timer_.session().context();
  if (!context) return;
  edits_ = context->observe([this](const ChangeSet& changes) {
    const bool concerns = changes.touches<Activity>() || changes.touches<Customer>() ||
                          changes.touches<Job>() || changes.touches<Service>();
    if (concerns) index_.reset();
  });
}

const NameIndex& QuickEntry::index() {
  if (!index_) index_.emplace(*timer_.session().context());
  return *index_;
}

void QuickEntry::prepare() {
  if (timer_.session().document()) std::ignore = index();
}

QuickReading QuickEntry::read(const QString& text) {
  const Session& session = timer_.session();
  if (!session.document()) return {};
  return readQuickEntry(text, index(), *session.context(),
                        session.isStandalone() ? NewNames::Made : NewNames::Refused);
}

QuickReadingTexts QuickEntry::say(const QuickReading& reading) const {
  const auto context = timer_.session().context();
  return context ? textsOf(reading, *context) : QuickReadingTexts();
}

DayReader QuickEntry::days() const {
  const Ports& ports = timer_.session().ports();
  return {.today = ports.calendar.day(ports.clock.now())};
}

QString QuickEntry::taken(const QuickCompletion& completion) {
  const QuickNames& names = completion.names;
  const QString end = completion.times.isEmpty() ? QString() : u' ' + completion.times;
  QString plain = typed(names, false) + end;
  const EntrySplit split = splitEntry(plain, index(), days());
  const bool isMeant = split.customer.text == names.customer && split.job.text == names.job &&
                       split.service.text == names.service && split.notes.text == names.notes;
  return isMeant ? plain : typed(names, true) + end;
}

std::vector<QuickCompletion> QuickEntry::completions(const QString& text) {
  std::vector<QuickCompletion> found;
  if (!timer_.session().document()) return found;
  const QuickReading reading = read(text);
  if (namesOf(text, reading).trimmed().isEmpty()) return found;
  const QStringList words = wordsOf(namesOf(text, reading));
  const auto hits = index().activitiesWith(words, kMostCompletions);
  const auto some = std::find_if(hits.begin(), hits.end(),
                                 [&](const NameIndex::Hit& hit) { return hit.words < words.size(); });
  addActivities(found, {hits.begin(), some}, reading, text);
  addNames(found, reading, text);
  addActivities(found, {some, hits.end()}, reading, text);
  if (found.size() > kMostCompletions) found.resize(kMostCompletions);
  return found;
}

void QuickEntry::addActivities(std::vector<QuickCompletion>& to, std::span<const NameIndex::Hit> hits,
                               const QuickReading& reading, const QString& text) {
  const Session& session = timer_.session();
  const Today now(session.ports().clock.now(), session.ports().calendar);
  const QStringList words = wordsOf(namesOf(text, reading));
  const QString times = text.mid(reading.timesAt).trimmed();
  for (const NameIndex::Hit& hit : hits) {
    const Activity& activity = *hit.activity;
    if (&activity == reading.activity) continue;
    QuickNames names{queries::nameOf(activity.customer()), queries::nameOf(activity.job()),
                     queries::nameOf(activity.service()), activity.notes().value_or(QString()).simplified()};
    if (names.customer.isEmpty() || names.service.isEmpty()) continue;
    QString title = titleOf(names);
    if (!names.notes.isEmpty()) title += QStringLiteral(", ") + names.notes;
    const bool isCurrent = activity.completed() == false;
    to.push_back({.title = title,
                  .remark = isCurrent ? timeTextsOf(activity, now).total : tr("completed"),
                  .found = foundIn(title, words),
                  .names = std::move(names),
                  .times = times});
  }
}

/// What the name that is being typed may become.
void QuickEntry::addNames(std::vector<QuickCompletion>& to, const QuickReading& reading,
                          const QString& text) {
  const EntrySplit split = splitEntry(text, index(), days());
  if (!split.notes.text.isEmpty()) return;
  const QString times = text.mid(split.timesAt).trimmed();
  const auto add = [&](const WrittenName& typed, const NameList& names, QString QuickNames::*part,
                       const QString& remark) {
    for (const QString& name : names.called(typed.text)) {
      if (to.size() >= kMostCompletions || name == typed.text) return;
      QuickNames whole{reading.customer.text, reading.job.text, reading.service.text, {}};
      whole.*part = name;
      if (part == &QuickNames::customer) whole.job = whole.service = QString();
      const QString title = titleOf(whole);
      to.push_back({.title = title,
                    .remark = remark,
                    .found = foundIn(title, wordsOf(namesOf(text, reading))),
                    .names = std::move(whole),
                    .times = times});
    }
  };
  if (!split.service.text.isEmpty()) {
    add(split.service, index().services(), &QuickNames::service, tr("service item"));
  } else if (!split.job.text.isEmpty()) {
    add(split.job, index().jobs(reading.customer.text), &QuickNames::job, tr("job"));
  } else if (!split.customer.text.isEmpty()) {
    add(split.customer, index().customers(), &QuickNames::customer, tr("customer"));
  }
}

bool QuickEntry::carryOut(const QString& text) {
  const QuickReading reading = read(text);
  if (reading.deed == QuickReading::Deed::Nothing) return false;
  const auto done = pendra::carryOut(reading, *timer_.session().context());
  if (!done) return false;
  timer_.selectActivity(*done.value()->activity());
  if (reading.deed == QuickReading::Deed::Book) timer_.log().selectEntry(done.value());
  return true;
}

}  // namespace pendra
