#include "link/UnknownFates.h"

#include "document/Saving.h"
#include "model/ActivityTitle.h"
#include "model/DurationText.h"
#include "platform/DateTexts.h"
#include "platform/Text.h"
#include "platform/Translation.h"

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

/// As it was when the record left: what Vantor has to be searched for.
QString nameOf(const Entries& entries) {
  const TimeEntry& entry = *entries.front();
  return entry.sentAs().value_or(activityTitle(*entry.activity()));
}

void forgetSending(TimeEntry& entry) {
  entry.setSendingSince(std::nullopt);
  entry.setSentAs(std::nullopt);
}

/// "01:30:00, begun at 11/24/26 9:05 AM": the length of all and the earliest start.
QString timeOf(const Entries& entries, const Calendar& calendar) {
  double seconds = 0;
  Instant start = entries.front()->start().value_or(kReferenceInstant);
  for (const TimeEntry* entry : entries) {
    seconds += entry->storedDuration();
    start = std::min(start, entry->start().value_or(start));
  }
  return formatted(tr("%@, begun at %@ %@"),
                   {durationText(seconds), shortDate(start, calendar), timeWithMarker(start, calendar)});
}

int ask(Session& session, const Entries& entries) {
  return session.ports().alerts.runAlert(
      {.style = Alert::Style::Warning,
       .message = formatted(tr("Did the time for “%@” arrive in Vantor?"), {nameOf(entries)}),
       .informative =
           formatted(tr("This time (%@) was sent, but no answer came. Please look in Vantor: if it "
                        "did not arrive, it can be sent again."),
                     {timeOf(entries, session.ports().calendar)}),
       .buttons = {tr("It Arrived"), tr("Send Again"), tr("Cancel")},
       .returnCancels = true,
       .topic = Alert::Topic::UnknownFate});
}

}  // namespace

Result<void> markSending(Session& session, std::span<TimeEntry* const> entries, const QString& name,
                         const std::function<void()>& before) {
  const Instant now = session.ports().clock.now();
  ObjectContext& context = *session.context();
  std::ignore = context.edit(QString(), {.undoable = false}, [&] {
    before();
    for (TimeEntry* entry : entries) {
      entry->setSendingSince(now);
      entry->setSentAs(name);
    }
  });
  auto saved = saveContext(session);  // waits longer for others than an edit does
  if (!saved) unmarkSending(session, entries);
  return saved;
}

void unmarkSending(Session& session, std::span<TimeEntry* const> entries) {
  std::ignore = session.context()->edit(QString(), {.undoable = false}, [&] {
    for (TimeEntry* entry : entries) forgetSending(*entry);
  });
}

void markSent(TimeEntry& entry, Instant now) {
  entry.setDateSubmitted(now);
  forgetSending(entry);
}

void postUnknownFates(Session& session) {
  const auto records = recordsInDoubt(*session.context());
  if (records.empty()) return session.notices().withdraw(kDoubtNoticeKey);
  const QString one = nameOf(records.front());
  session.notices().post(
      {.key = kDoubtNoticeKey,
       .text =
           records.size() == 1
               ? formatted(tr("Vantor has not confirmed the time for “%@”. You are asked about it before the "
                              "next sending."),
                           {one})
               : counted(std::ssize(records), "",
                         "Vantor has not confirmed %Ln records. You are asked about them before the next "
                         "sending."),
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
