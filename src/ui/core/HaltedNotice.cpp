#include "ui_core/HaltedNotice.h"

#include <QCoreApplication>

#include "document/Session.h"
#include "link/ActivityTitle.h"
#include "model/Queries.h"
#include "platform/Text.h"

namespace pendra {

namespace {

const QString kNoticeKey = QStringLiteral("halted");

QString tr(const char* text) { return QCoreApplication::translate("pendra::HaltedNotice", text); }

QString sentence(const std::vector<TimeEntry*>& entries) {
  const Activity* activity = entries.front()->activity();
  if (entries.size() == 1 && activity) {
    return formatted(tr("“%@” was being timed when Pendra ended. Its length was not stored."),
                     {activityTitle(*activity)});
  }
  return formatted(tr("%@ entries were being timed when Pendra ended. Their lengths were not stored."),
                   {QString::number(entries.size())});
}

/// The time, with its day unless that is today.
QString timeAndDay(const Session& session, Instant instant) {
  const Calendar& calendar = session.ports().calendar;
  const bool isToday = calendar.day(instant) == calendar.day(session.ports().clock.now());
  return calendar.local(instant).toString(isToday ? QStringLiteral("HH:mm") : QStringLiteral("d MMM HH:mm"));
}

/// Whether the news may be about an entry that waits for an answer.
bool brings(const ChangeSet& news) {
  const auto isHalted = [](const TimeEntry* entry) { return entry->isHalted(); };
  const auto inserted = news.inserted<TimeEntry>();
  const auto changed = news.changed<TimeEntry>();
  return std::any_of(inserted.begin(), inserted.end(), isHalted) ||
         std::any_of(changed.begin(), changed.end(), isHalted);
}

}  // namespace

HaltedNotice::HaltedNotice(Session& session, std::function<void(TimeEntry&)> edit)
    : session_(session), edit_(std::move(edit)) {
  documents_ = session_.documentChanges().observe([this] { follow(); });
  follow();
}

void HaltedNotice::follow() {
  said_ = {};
  edits_ = {};
  if (const auto context = session_.context()) {
    edits_ = context->observe([this](const ChangeSet& news) { documentEdited(news); });
    update();
  }
}

void HaltedNotice::documentEdited(const ChangeSet& news) {
  if (!said_.entries.empty() || brings(news)) update();
}

void HaltedNotice::update() {
  const HaltedEntries halted = haltedEntries(*session_.context());
  if (halted.entries.empty()) {
    said_ = {};
    return session_.notices().withdraw(kNoticeKey);
  }
  Notice notice = noticeOf(halted);
  Said now{{halted.entries.begin(), halted.entries.end()}, {notice.text}};
  for (const NoticeAction& action : notice.actions) now.words << action.title;
  const Said before = std::exchange(said_, std::move(now));
  const auto& standing = session_.notices().standing();
  const bool stands =
      std::any_of(standing.begin(), standing.end(), [](const Notice& one) { return one.key == kNoticeKey; });
  const bool wasDismissed = !stands && before.entries == said_.entries;
  if (before != said_ && !wasDismissed) session_.notices().post(std::move(notice));
}

Notice HaltedNotice::noticeOf(const HaltedEntries& halted) const {
  return {
      .key = kNoticeKey, .text = sentence(halted.entries), .actions = actionsFor(halted), .ofDocument = true};
}

/// An action that was cancelled leaves the notice: it goes with the last answer.
std::vector<NoticeAction> HaltedNotice::actionsFor(const HaltedEntries& halted) const {
  const std::vector<Ref<TimeEntry>> entries(halted.entries.begin(), halted.entries.end());
  const auto isDone = [] { return false; };
  std::vector<NoticeAction> actions;
  actions.push_back({formatted(tr("Set to last save (%@)"), {timeAndDay(session_, halted.until)}),
                     [&session = session_, entries] { setToLastSave(*session.context(), entries); }, isDone});
  if (entries.size() == 1) {
    actions.push_back({tr("Type its length…"),
                       [edit = edit_, entry = entries.front()] {
                         if (entry) edit(*entry);
                       },
                       isDone});
  }
  if (std::any_of(entries.begin(), entries.end(), [](const auto& entry) { return canRunOn(*entry); })) {
    actions.push_back(
        {tr("Run On"), [&session = session_, entries] { runOn(*session.context(), entries); }, isDone});
  }
  return actions;
}

}  // namespace pendra
