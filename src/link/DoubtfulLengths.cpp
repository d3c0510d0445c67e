#include "link/DoubtfulLengths.h"

#include "model/ActivityTitle.h"
#include "model/DurationText.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "store/ChangeSet.h"

namespace pendra {

namespace {

const QString kNoticeKey = QStringLiteral("doubtful length");
constexpr double kDay = 24 * 3600.0;

QString titleOf(const TimeEntry& entry) {
  return entry.activity() ? activityTitle(*entry.activity()) : QString();
}

}  // namespace

bool isDoubtfulLength(double seconds) { return seconds < 0 || seconds > kDay; }

QString doubtfulLengthText(double seconds) {
  if (!isDoubtfulLength(seconds)) return {};
  return seconds < 0
             ? tr("Its length is negative, because the clock was set back while it ran. Correct it before "
                  "you send it.")
             : tr("It is longer than a day: the clock was set forward while it ran, or its timer was "
                  "forgotten. Correct it before you send it.");
}

bool askAboutDoubtfulLengths(Session& session, const std::vector<SubmissionRow>& rows) {
  QStringList lines;
  for (const SubmissionRow& row : rows) {
    if (!row.isUnsent() || !isDoubtfulLength(row.entry->storedDuration())) continue;
    lines << formatted(tr("“%@”: %@"), {titleOf(*row.entry), durationText(row.entry->storedDuration())});
  }
  if (lines.isEmpty()) return true;
  return session.ports().alerts.runAlert({.style = Alert::Style::Warning,
                                          .message = lines.size() == 1
                                                         ? tr("Send a length that nobody can have worked?")
                                                         : tr("Send lengths that nobody can have worked?"),
                                          .informative = lines.join(u'\n'),
                                          .buttons = {tr("Send"), tr("Cancel")},
                                          .returnCancels = true}) == kFirstButton;
}

DoubtfulLengths::DoubtfulLengths(Session& session)
    : session_(session), documentChanges_(session.documentChanges().observe([this] { followDocument(); })) {
  followDocument();
}

void DoubtfulLengths::followDocument() {
  news_ = {};
  if (const auto context = session_.context())
    news_ = context->observe([this](const ChangeSet& changes) { edited(changes); });
}

void DoubtfulLengths::edited(const ChangeSet& changes) {
  for (const TimeEntry* entry : changes.changed<TimeEntry>()) {
    const double seconds = entry->storedDuration();
    if (!changes.changed(*entry, "duration") || !isDoubtfulLength(seconds)) continue;
    session_.notices().post(
        {.key = kNoticeKey,
         .text = formatted(tr("“%@” has an entry of %@. %@"),
                           {titleOf(*entry), durationText(seconds), doubtfulLengthText(seconds)}),
         .actions = {},
         .ofDocument = true});
  }
}

}  // namespace pendra
