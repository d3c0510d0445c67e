#include "link/UnknownFates.h"

#include "document/Saving.h"
#include "link/ActivityTitle.h"
#include "model/DurationText.h"
#include "platform/DateTexts.h"
#include "platform/Text.h"

namespace pendra {

namespace {

using Entries = std::vector<TimeEntry*>;

const QString kDoubtNoticeKey = QStringLiteral("unknown fates");

/// The entries of each record that has no known fate: those of one activity that left at one instant.
std::vector<Entries> recordsInDoubt(const ObjectContext& context) {
  std::vector<Entries> records;
  std::map<std::pair<double, qint64>, std::size_t> known;
  for (TimeEntry* entry : context.all<TimeEntry>()) {
    if (!entry->sendingSince() || !entry->activity()) continue;
    const std::pair key(entry->sendingSince()->seconds, entry->activity()->objectID());
    const auto [found, isNew] = known.emplace(key, records.size());
    if (isNew) records.emplace_back();
    records[found->second].push_back(entry);
  }
  return records;
}

/// "01:30:00, begun at 11/24/26 9:05 AM": the length of all and the earliest start.
QString timeOf(const Entries& entries, const Calendar& calendar) {
  double seconds = 0;
  Instant start = entries.front()->start().value_or(kReferenceInstant);
  for (const TimeEntry* entry : entries) {
    seconds += entry->storedDuration();
    start = std::min(start, entry->start().value_or(start));
  }
  return formatted(u"%@, begun at %@ %@",
                   {durationText(seconds), shortDate(start, calendar), timeWithMarker(start, calendar)});
}

int ask(Session& session, const Entries& entries) {
  return session.ports().alerts.runAlert(
      {.style = Alert::Style::Warning,
       .message = formatted(u"Did the time for “%@” arrive in Vantor?",
                            {activityTitle(*entries.front()->activity())}),
       .informative = formatted(u"This time (%@) was sent, but no answer came. Please look in Vantor: if it "
                                "did not arrive, it can be sent again.",
                                {timeOf(entries, session.ports().calendar)}),
       .buttons = {QStringLiteral("It Arrived"), QStringLiteral("Send Again"), QStringLiteral("Cancel")},
       .returnCancels = true});
}

}  // namespace

Result<void> markSending(Session& session, std::span<TimeEntry* const> entries) {
  const Instant now = session.ports().clock.now();
  ObjectContext& context = *session.context();
  std::ignore = context.edit(QString(), {.undoable = false}, [&] {
    for (TimeEntry* entry : entries) entry->setSendingSince(now);
  });
  auto saved = saveContext(session);  // waits longer for others than an edit does
  if (!saved) unmarkSending(session, entries);
  return saved;
}

void unmarkSending(Session& session, std::span<TimeEntry* const> entries) {
  std::ignore = session.context()->edit(QString(), {.undoable = false}, [&] {
    for (TimeEntry* entry : entries) entry->setSendingSince(std::nullopt);
  });
}

void markSent(TimeEntry& entry, Instant now) {
  entry.setDateSubmitted(now);
  entry.setSendingSince(std::nullopt);
}

void postUnknownFates(Session& session) {
  const auto records = recordsInDoubt(*session.context());
  if (records.empty()) return session.notices().withdraw(kDoubtNoticeKey);
  const QString one = activityTitle(*records.front().front()->activity());
  session.notices().post(
      {.key = kDoubtNoticeKey,
       .text =
           records.size() == 1
               ? formatted(u"Vantor has not confirmed the time for “%@”. You are asked about it before the "
                           "next sending.",
                           {one})
               : formatted(u"Vantor has not confirmed %@ records. You are asked about them before the next "
                           "sending.",
                           {QString::number(records.size())}),
       .actions = {},
       .ofDocument = true});
}

std::optional<std::vector<Ref<TimeEntry>>> settleUnknownFates(Session& session) {
  std::vector<Ref<TimeEntry>> again;
  for (const Entries& entries : recordsInDoubt(*session.context())) {
    const int answer = ask(session, entries);
    if (answer == kFirstButton) {
      std::ignore = session.context()->edit(QString(), {.undoable = false}, [&] {
        for (TimeEntry* entry : entries) markSent(*entry, *entry->sendingSince());
      });
    } else if (answer == kSecondButton) {
      unmarkSending(session, entries);
      again.insert(again.end(), entries.begin(), entries.end());
    } else {
      return std::nullopt;
    }
  }
  session.notices().withdraw(kDoubtNoticeKey);
  return again;
}

}  // namespace pendra
