#include "ui_core/HaltedNotice.h"

#include <QCoreApplication>

#include "document/Session.h"
#include "link/ActivityTitle.h"
#include "platform/Text.h"

namespace pendra {

namespace {

const QString kNoticeKey = QStringLiteral("halted");

using Entries = std::vector<Ref<TimeEntry>>;

QString sentence(const Entries& entries) {
  const Activity* activity = entries.front()->activity();
  if (entries.size() > 1 || !activity) {
    return formatted(u"%@ entries were being timed when Pendra ended. Their lengths were not stored.",
                     {QString::number(entries.size())});
  }
  return formatted(u"“%@” was being timed when Pendra ended. Its length was not stored.",
                   {activityTitle(*activity)});
}

/// The time, with its day unless that is today.
QString timeAndDay(const Session& session, Instant instant) {
  const Calendar& calendar = session.ports().calendar;
  const bool isToday = calendar.day(instant) == calendar.day(session.ports().clock.now());
  return calendar.local(instant).toString(isToday ? QStringLiteral("HH:mm") : QStringLiteral("d MMM HH:mm"));
}

QString tr(const char* text) { return QCoreApplication::translate("pendra::HaltedNotice", text); }

/// Whether the entry still lies as the crash has left it: nobody gave it a length, sent or deleted it since.
bool isUnanswered(const Ref<TimeEntry>& entry) {
  return entry && entry->start() && entry->storedDuration() == 0 && entry->running() != true &&
         !entry->timeIsFixed();
}

/// An entry that began after that moment has no length up to it and stays as it is.
void setLengths(Session& session, const Entries& entries, Instant end) {
  std::ignore = session.context()->edit(tr("Set to Last Save"), [&] {
    for (const Ref<TimeEntry>& entry : entries) {
      if (isUnanswered(entry) && end - *entry->start() > 0) entry->setDuration(end - *entry->start());
    }
  });
}

}  // namespace

void postHaltedNotice(Session& session, std::function<void(TimeEntry&)> edit) {
  const HaltedEntries halted =
      session.document() ? std::exchange(session.document()->halted, {}) : HaltedEntries();
  Entries entries = halted.entries;
  std::erase_if(entries, [](const Ref<TimeEntry>& entry) { return !entry; });
  if (entries.empty()) return;
  // An action that was cancelled leaves the notice: it is the only way to the entries.
  const auto isDone = [entries] { return std::none_of(entries.begin(), entries.end(), isUnanswered); };
  std::vector<NoticeAction> actions;
  if (halted.lastSave) {
    actions.push_back({formatted(u"Set to last save (%@)", {timeAndDay(session, *halted.lastSave)}),
                       [&session, entries, end = *halted.lastSave] { setLengths(session, entries, end); },
                       isDone});
  }
  if (entries.size() == 1) {
    actions.push_back({QStringLiteral("Type its length…"),
                       [entry = entries.front(), edit = std::move(edit)] {
                         if (entry) edit(*entry);
                       },
                       isDone});
  }
  session.notices().post(
      {.key = kNoticeKey, .text = sentence(entries), .actions = std::move(actions), .ofDocument = true});
}

}  // namespace pendra
