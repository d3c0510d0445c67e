#include "document/Restoring.h"

#include <QLocale>
#include <unordered_map>

#include "document/HaltedEntries.h"
#include "document/RunningTimers.h"
#include "document/Session.h"
#include "model/ActivityTitle.h"
#include "model/DurationText.h"
#include "model/Queries.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "store/PersistentStore.h"
#include "store/StateTransfer.h"

namespace pendra {

namespace {

const QString kNotice = QStringLiteral("restored");
constexpr std::size_t kMostNamed = 5;

// ---- what is one thing in both

/// Whether two customers, jobs or service items of two states are one.
bool isSameRecord(const ListRecord* one, const ListRecord* other) {
  if (!one || !other) return one == other;
  const auto id = one->vtObjectID();
  const bool hasRecord = id && *id != kLocalRecord && !id->isEmpty();
  return (hasRecord && id == other->vtObjectID()) || one->name() == other->name();
}

bool isSameEntry(const TimeEntry& one, const TimeEntry& other) {
  const auto ofActivity = [](const TimeEntry& entry) {
    return entry.activity() ? entry.activity()->objectID() : 0;
  };
  return one.start() == other.start() || one.duration() == other.duration() ||
         ofActivity(one) == ofActivity(other);
}

template <class T>
bool is(const ManagedObject& object) {
  return &object.entity() == &T::descriptor();
}
template <class T>
const T& as(const ManagedObject& object) {
  return static_cast<const T&>(object);
}

/// What is kept for the sake of an entry that was sent must be what it was sent for.
bool isSame(const ManagedObject& mine, const ManagedObject& theirs, bool isKept) {
  if (is<TimeEntry>(mine)) return isSameEntry(as<TimeEntry>(mine), as<TimeEntry>(theirs));
  if (!isKept) return true;
  if (is<Customer>(mine)) return isSameRecord(&as<Customer>(mine), &as<Customer>(theirs));
  if (is<Job>(mine)) return isSameRecord(&as<Job>(mine), &as<Job>(theirs));
  if (is<Service>(mine)) return isSameRecord(&as<Service>(mine), &as<Service>(theirs));
  if (!is<Activity>(mine)) return true;
  const auto& one = as<Activity>(mine);
  const auto& other = as<Activity>(theirs);
  return isSameRecord(one.customer(), other.customer()) && isSameRecord(one.job(), other.job()) &&
         isSameRecord(one.service(), other.service());
}

/// In whose name a document is kept is decided when it is made.
bool stays(const ManagedObject& mine) {
  if (is<TimeEntry>(mine)) return as<TimeEntry>(mine).timeIsFixed();
  return is<DocumentSettings>(mine) || is<Identity>(mine);
}

bool isStamp(const PropertyDescriptor& property) {
  const QLatin1StringView name(property.name);
  return name == u"dateSubmitted" || name == u"sendingSince" || name == u"sentAs";
}

/// The objects of a class by their identifiers.
template <class T>
std::unordered_map<qint64, const T*> byID(const ObjectContext& context) {
  std::unordered_map<qint64, const T*> found;
  for (const T* object : context.all<T>()) {
    if (!object->isTemporary()) found.emplace(object->objectID(), object);
  }
  return found;
}

template <class T>
const T* counterpart(const T& object, const std::unordered_map<qint64, const T*>& others) {
  const auto found = others.find(object.objectID());
  return found == others.end() ? nullptr : found->second;
}
const TimeEntry* sameEntry(const TimeEntry& entry,
                           const std::unordered_map<qint64, const TimeEntry*>& others) {
  const TimeEntry* found = counterpart(entry, others);
  return found && isSameEntry(entry, *found) ? found : nullptr;
}

bool differs(const TimeEntry& one, const TimeEntry& other) {
  const auto ofActivity = [](const TimeEntry& entry) {
    return entry.activity() ? entry.activity()->objectID() : 0;
  };
  return one.start() != other.start() || one.storedDuration() != other.storedDuration() ||
         one.notes().value_or(QString()) != other.notes().value_or(QString()) ||
         ofActivity(one) != ofActivity(other);
}

// ---- what is asked

/// Entries that only the backup has, and what it knows of them.
struct OnlyInBackup {
  std::vector<TimeEntry*> given;  ///< to Vantor by then: sent or in doubt
  std::vector<TimeEntry*> unsent;
};

OnlyInBackup onlyIn(const ObjectContext& backup, const ObjectContext& document) {
  const auto here = byID<TimeEntry>(document);
  OnlyInBackup only;
  for (TimeEntry* entry : backup.all<TimeEntry>()) {
    if (!sameEntry(*entry, here)) (entry->timeIsFixed() ? only.given : only.unsent).push_back(entry);
  }
  return only;
}

QString lineOf(const TimeEntry& entry, const Calendar& calendar) {
  const QString when = entry.start() ? dayAndTime(*entry.start(), calendar) : QString();
  QStringList parts{entry.activity() ? activityTitle(*entry.activity()) : QString(), when,
                    durationText(entry.storedDuration())};
  parts.removeAll(QString());
  return parts.join(QStringLiteral(", "));
}

QString linesOf(const std::vector<TimeEntry*>& entries, const Calendar& calendar) {
  QStringList lines;
  for (const TimeEntry* entry : entries) {
    if (lines.size() == kMostNamed) {
      lines << counted(entries.size() - kMostNamed, "and 1 more", "and %Ln more");
      break;
    }
    lines << lineOf(*entry, calendar);
  }
  return lines.join(u'\n');
}

/// Whether the time of these entries is in Vantor; none when the user cancelled.
std::optional<bool> isInVantor(Session& session, const std::vector<TimeEntry*>& entries,
                               const QString& question, const QString& yes, const QString& no) {
  const int answer =
      session.ports().alerts.runAlert({.style = Alert::Style::Warning,
                                       .message = question,
                                       .informative = linesOf(entries, session.ports().calendar),
                                       .buttons = {yes, no, tr("Cancel")},
                                       .topic = Alert::Topic::Backups});
  if (answer != kFirstButton && answer != kSecondButton) return std::nullopt;
  return answer == kFirstButton;
}

/// Writes the answer into the backup's state.
void stamp(const std::vector<TimeEntry*>& entries, bool inVantor, Instant now) {
  for (TimeEntry* entry : entries) {
    const Instant when = entry->wasSent() ? *entry->dateSubmitted() : entry->sendingSince().value_or(now);
    entry->setDateSubmitted(inVantor ? when : kReferenceInstant);
    entry->setSendingSince(std::nullopt);
    entry->setSentAs(std::nullopt);
  }
}

/// Asks what nobody here can know. False when the user cancelled.
bool settleFates(Session& session, ObjectContext& backup) {
  if (session.isStandalone()) return true;
  const OnlyInBackup only = onlyIn(backup, *session.context());
  const auto settle = [&](const std::vector<TimeEntry*>& entries, const QString& question, const QString& yes,
                          const QString& no) {
    if (entries.empty()) return true;
    const auto answer = isInVantor(session, entries, question, yes, no);
    if (answer) backup.fill([&] { stamp(entries, *answer, session.ports().clock.now()); });
    return answer.has_value();
  };
  return settle(only.given,
                counted(only.given.size(),
                        "1 entry that comes back was given to Vantor. Did its time arrive there?",
                        "%Ln entries that come back were given to Vantor. Did their time arrive there?"),
                tr("It Arrived"), tr("Send Again")) &&
         settle(only.unsent,
                counted(only.unsent.size(),
                        "1 entry that comes back was deleted since. Was its time sent to Vantor before that?",
                        "%Ln entries that come back were deleted since. Was their time sent to Vantor before "
                        "that?"),
                tr("It Was Sent"), tr("It Was Not"));
}

/// What of the document the backup lacks and Vantor has not: it would go.
QString whatGoes(const ObjectContext& backup, const ObjectContext& document) {
  EntrySum going;
  const auto then = byID<TimeEntry>(backup);
  for (const auto& [id, entry] : byID<TimeEntry>(document)) {
    if (!entry->timeIsFixed() && !sameEntry(*entry, then)) going.add(entry->storedDuration());
  }
  if (going.number == 0) return {};
  return counted(going.number, "1 entry goes: %@. ", "%Ln entries go: %@. ", {durationText(going.seconds)});
}

bool userAgrees(Session& session, const BackupFile& backup, const ObjectContext& then) {
  return session.ports().alerts.runAlert(
             {.style = Alert::Style::Warning,
              .message = formatted(
                  tr("Restore “%@” as it was on %@?"),
                  {session.document()->displayName(), dayAndTime(backup.madeAt, session.ports().calendar)}),
              .informative = whatGoes(then, *session.context()) +
                             tr("What was done since then goes, but what was sent to Vantor stays as it is. "
                                "Today’s document is backed up first, so you can come back."),
              .buttons = {tr("Restore"), tr("Cancel")},
              .topic = Alert::Topic::Backups}) == kFirstButton;
}

std::nullopt_t refuse(Session& session, const char* why, const Error& error) {
  session.notices().post(
      {.key = kNotice, .text = formatted(tr(why), {error.text}), .actions = {}, .ofDocument = true});
  return std::nullopt;
}

}  // namespace

QString dayAndTime(Instant instant, const Calendar& calendar) {
  return QLocale().toString(calendar.local(instant), QStringLiteral("ddd d MMM yyyy, HH:mm"));
}

Result<EntrySum> sumOf(const BackupFile& backup) {
  const auto tally = PersistentStore::tally(backup.path, TimeEntry::descriptor(), "duration");
  if (!tally) return tally.error();
  return EntrySum{static_cast<int>(tally.value().rows), tally.value().sum};
}

SinceBackup changesSince(const ObjectContext& backup, const ObjectContext& document) {
  SinceBackup since;
  const Instant now = document.clock().now();
  const auto then = byID<TimeEntry>(backup);
  for (const auto& [id, entry] : byID<TimeEntry>(document)) {
    const TimeEntry* before = sameEntry(*entry, then);
    if (!before) since.added.add(entry->lengthAt(now));
    if (before && differs(*before, *entry)) {
      since.corrected.add(std::abs(entry->lengthAt(now) - before->storedDuration()));
    }
    if (entry->timeIsFixed() && !(before && before->timeIsFixed())) since.sent.add(entry->storedDuration());
  }
  const auto only = onlyIn(backup, document);
  for (const auto* entries : {&only.given, &only.unsent}) {
    for (const TimeEntry* entry : *entries) since.deleted.add(entry->storedDuration());
  }
  const auto activities = byID<Activity>(backup);
  for (const Activity* activity : document.all<Activity>()) {
    const Activity* before = counterpart(*activity, activities);
    if (before && before->completed() != true && activity->completed() == true) {
      since.completed << activityTitle(*activity);
    }
  }
  const auto customers = byID<Customer>(backup);
  for (const Customer* customer : document.all<Customer>()) {
    if (!counterpart(*customer, customers)) since.customers << queries::nameOf(customer);
  }
  return since;
}

std::optional<QString> restoreFromBackup(Session& session, const BackupFile& backup) {
  const OpenDocument* document = session.document();
  if (!document || !checkForRunningTimers(session)) return std::nullopt;
  const auto read = readBackup(session, backup.path);
  if (!read)
    return refuse(
        session,
        QT_TRANSLATE_NOOP("pendra", "Nothing was restored, because the backup could not be read: %@."),
        read.error());
  ObjectContext& then = *read.value();
  then.fill([&] { haltRunningEntries(then, backup.madeAt); });
  if (!userAgrees(session, backup, then) || !settleFates(session, then) || session.document() != document)
    return std::nullopt;
  if (const auto made = makeBackup(session, BackupReason::Restoring); !made) {
    return refuse(
        session,
        QT_TRANSLATE_NOOP("pendra",
                          "Nothing was restored, because your document could not be backed up first: %@."),
        made.error());
  }
  const std::size_t staying = static_cast<std::size_t>(changesSince(then, *session.context()).sent.number);
  std::ignore = session.context()->edit(tr("Restore"), [&] {
    StateTransfer(*session.context(), then, {.stays = stays, .isSame = isSame, .isOwn = isStamp}).run();
  });
  const QString done =
      formatted(tr("“%@” is as it was on %@."),
                {session.document()->displayName(), dayAndTime(backup.madeAt, session.ports().calendar)});
  session.notices().withdraw(kNotice);
  if (staying == 0) return done;
  return done + u' ' +
         counted(staying, "1 entry that was sent since then stayed as it is.",
                 "%Ln entries that were sent since then stayed as they are.");
}

}  // namespace pendra
