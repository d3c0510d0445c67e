#include "Deeds.h"

#include <QFileInfo>

#include "Facts.h"
#include "Matching.h"
#include "document/Backup.h"
#include "document/HaltedEntries.h"
#include "document/RunningTimers.h"
#include "model/ActivityTitle.h"
#include "model/Queries.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "ui_core/QuickDeed.h"
#include "ui_core/QuickReadingTexts.h"
#include "ui_core/TimeLogExport.h"

namespace pendra::orders {

namespace {

const char* const kNotChanged =
    QT_TRANSLATE_NOOP("pendra", "nothing was changed, because the document is not saved: %@");
const char* const kNotStored = QT_TRANSLATE_NOOP("pendra", "it was done, but the document is not saved: %@");

/// Whether what is done now will be on the disk, or what was done is.
Result<void> isStored(const ObjectContext& context, const char* pattern) {
  const auto& failure = context.commitState().failure;
  if (!failure) return {};
  return refusal(Refusal::Refused, formatted(tr(pattern), {failure->why.text}));
}

Result<void> edit(ObjectContext& context, const QString& name, const std::function<void()>& work) {
  auto stored = mayChange(context);
  if (!stored) return stored;
  if (auto done = context.edit(name, work); !done) return done;
  return isStored(context, kNotStored);
}

std::vector<Activity*> runningIn(const ObjectContext& context) {
  return context.fetch<Activity>([](const Activity& one) { return one.isRunning(); });
}

/// The activity that was started, and which of those that ran before no longer do.
QVariantMap started(const Activity& activity, const std::vector<Activity*>& ranBefore) {
  QVariantMap told = facts::ofActivity(activity);
  QStringList stopped;
  for (const Activity* one : ranBefore) {
    if (!one->isRunning()) stopped << activityTitle(*one);
  }
  if (!stopped.isEmpty()) told[QStringLiteral("stopped")] = stopped;
  return told;
}

/// What stands below the field of the quick entry, and nobody sees here before it is done.
QStringList remarksOn(const QuickReading& reading, const ObjectContext& context) {
  const QuickReadingTexts texts = textsOf(reading, context);
  QStringList remarks = texts.warnings + texts.remarks;
  if (!reading.activity) remarks.prepend(tr("New activity"));
  return remarks;
}

Error nothingRuns(const ObjectContext& context) {
  const auto cutOff = haltedEntries(context).entries.size();
  if (cutOff == 0) return refusal(Refusal::NoMatch, tr("nothing runs"));
  return refusal(Refusal::NoMatch,
                 counted(static_cast<qint64>(cutOff),
                         "nothing runs; the length of 1 entry that was cut off is asked in Pendra’s window",
                         "nothing runs; the lengths of %Ln entries that were cut off are asked in Pendra’s "
                         "window"));
}

Result<std::vector<Activity*>> stoppable(const ObjectContext& context, const QString& match) {
  auto running = runningIn(context);
  if (running.empty()) return nothingRuns(context);
  if (match.isEmpty()) return running;
  const auto one = oneMatching(match, running);
  if (!one) return one.error();
  return std::vector<Activity*>{one.value()};
}

QVariantMap written(const QString& path, std::size_t entries) {
  return {{QStringLiteral("written"), path}, {QStringLiteral("entries"), static_cast<int>(entries)}};
}

/// A path that others name is meant from their own folder, which is not this program's.
Result<void> isFree(const QString& path) {
  if (!QFileInfo(path).isAbsolute()) {
    return refusal(Refusal::Refused, formatted(tr("“%@” is not an absolute path"), {path}));
  }
  if (!QFileInfo::exists(path) && !QFileInfo(path).isSymLink()) return {};
  return refusal(Refusal::Refused, formatted(tr("“%@” exists already and was left alone"), {path}));
}

Refusal refusalFor(QuickReading::Why why) {
  switch (why) {
    case QuickReading::Why::Unknown:
    case QuickReading::Why::Running:
      return Refusal::NoMatch;
    case QuickReading::Why::Several:
      return Refusal::SeveralMatches;
    case QuickReading::Why::NotUnderstood:
    case QuickReading::Why::Impossible:
      break;
  }
  return Refusal::WrongUsage;
}

/// What a text means; a failure where it means nothing that can be done.
Result<QuickReading> readEntry(const ObjectContext& context, const QString& text, bool create) {
  const DocumentSettings* settings = queries::firstDocument(context);
  const bool isStandalone = settings && settings->standalone() == true;
  const NewNames newNames = create && isStandalone ? NewNames::Made : NewNames::Refused;
  QuickReading reading = readQuickEntry(text, NameIndex(context), context, newNames);
  if (reading.isEmpty()) return refusal(Refusal::WrongUsage, tr("nothing was said"));
  if (!reading.fault) return reading;
  const bool couldMake = reading.fault->why == QuickReading::Why::Unknown && isStandalone;
  return refusal(refusalFor(reading.fault->why),
                 couldMake
                     ? formatted(tr("%@ With --create it is added to its list."), {reading.fault->reason})
                     : reading.fault->reason);
}

Error notWritten(const QString& path, const Error& why) {
  return refusal(Refusal::Refused, formatted(tr("“%@” was not written: %@"), {path, why.text}));
}

}  // namespace

Result<OpenDocument*> documentToChange(const Session& session, const QString& busyWith) {
  if (!session.document()) return refusal(Refusal::NoDocument, tr("no document is open"));
  if (!busyWith.isEmpty()) return refusal(Refusal::Refused, busyWith);
  return session.document();
}

Result<void> mayChange(const ObjectContext& context) { return isStored(context, kNotChanged); }

Result<Activity*> startable(const ObjectContext& context, const QString& match) {
  auto one = oneMatching(match, queries::openActivities(context));
  if (!one || !one.value()->isRunning()) return one;
  return refusal(Refusal::NoMatch, formatted(tr("“%@” runs already"), {titleOf(*one.value())}));
}

Result<QVariantMap> start(OpenDocument& document, const QString& match) {
  ObjectContext& context = *document.context();
  const auto one = startable(context, match);
  if (!one) return one.error();
  const auto ranBefore = runningIn(context);
  auto done = edit(context, tr("Start"), [&] { one.value()->startEntry(); });
  if (!done) return done.error();
  return started(*one.value(), ranBefore);
}

Result<QVariantList> stop(OpenDocument& document, const QString& match) {
  ObjectContext& context = *document.context();
  const auto stops = stoppable(context, match);
  if (!stops) return stops.error();
  QVariantList stopped;
  auto done = edit(context, tr("Stop"), [&] {
    for (Activity* activity : stops.value()) {
      const TimeEntry* entry = activity->runningEntry();
      activity->stop();
      QVariantMap one = facts::ofActivity(*activity);
      one[QStringLiteral("seconds")] = entry->storedDuration();
      stopped << one;
    }
  });
  if (!done) return done.error();
  return stopped;
}

Result<QVariantMap> add(OpenDocument& document, const QString& text, bool create) {
  ObjectContext& context = *document.context();
  const auto reading = readEntry(context, text, create);
  if (!reading) return reading.error();
  if (auto stored = isStored(context, kNotChanged); !stored) return stored.error();
  const QStringList remarks = remarksOn(reading.value(), context);
  const auto ranBefore = runningIn(context);
  const auto added = carryOut(reading.value(), context);
  if (!added) return added.error();
  if (auto stored = isStored(context, kNotStored); !stored) return stored.error();
  const TimeEntry& entry = *added.value();
  const bool runs = entry.isRunning();
  QVariantMap told = runs ? started(*entry.activity(), ranBefore) : facts::ofEntry(entry, context);
  if (!runs) told[QStringLiteral("notes")] = facts::ofActivity(*entry.activity())[QStringLiteral("notes")];
  if (!remarks.isEmpty()) told[QStringLiteral("remarks")] = remarks;
  return QVariantMap{{runs ? QStringLiteral("started") : QStringLiteral("added"), told}};
}

Result<bool> addStarts(const ObjectContext& context, const QString& text, bool create) {
  const auto reading = readEntry(context, text, create);
  if (!reading) return reading.error();
  return reading.value().deed != QuickReading::Deed::Book;
}

Result<QVariantMap> exportLog(OpenDocument& document, const QString& path) {
  const ObjectContext& context = *document.context();
  if (isTimeRunning(context)) {
    return refusal(Refusal::Refused, tr("time runs, and what runs has no length yet; stop it first"));
  }
  if (auto free = isFree(path); !free) return free.error();
  const auto entries = exportAll(context, path);
  if (!entries) return notWritten(path, entries.error());
  return written(path, entries.value());
}

Result<QVariantMap> backUp(OpenDocument& document, const ObjectModel& model, const QString& path) {
  const QString target = backupPath(path);
  if (auto free = isFree(target); !free) return free.error();
  if (auto made = writeBackup(document, model, path); !made) return notWritten(target, made.error());
  return written(target, document.context()->all<TimeEntry>().size());
}

}  // namespace pendra::orders
