#include "ui_core/EntryQuestion.h"

#include "document/Session.h"

namespace pendra {

EntryQuestion::EntryQuestion(Session& session, Rules rules) : session_(session), rules_(std::move(rules)) {
  documents_ = session_.documentChanges().observe([this] { follow(); });
  follow();
}

void EntryQuestion::follow() {
  said_ = {};
  edits_ = {};
  if (const auto context = session_.context()) {
    edits_ = context->observe([this](const ChangeSet& news) { documentEdited(news); });
    update();
  }
}

void EntryQuestion::documentEdited(const ChangeSet& news) {
  const auto waits = [this](const TimeEntry* entry) { return rules_.waits(*entry); };
  const auto inserted = news.inserted<TimeEntry>();
  const auto changed = news.changed<TimeEntry>();
  const bool bringsOne = std::any_of(inserted.begin(), inserted.end(), waits) ||
                         std::any_of(changed.begin(), changed.end(), waits);
  if (bringsOne || !said_.entries.empty()) update();
}

void EntryQuestion::update() {
  Question question = rules_.ask();
  if (question.entries.empty()) {
    said_ = {};
    return session_.notices().withdraw(rules_.key);
  }
  Notice& notice = question.notice;
  notice.key = rules_.key;
  notice.ofDocument = true;
  notice.asks = true;
  Said now{{question.entries.begin(), question.entries.end()}, {notice.text}};
  for (const NoticeAction& action : notice.actions) now.words << action.title;
  const Said before = std::exchange(said_, std::move(now));
  const auto& standing = session_.notices().standing();
  const bool stands = std::any_of(standing.begin(), standing.end(),
                                  [this](const Notice& one) { return one.key == rules_.key; });
  const bool wasDismissed = !stands && before.entries == said_.entries;
  if (before != said_ && !wasDismissed) session_.notices().post(std::move(notice));
}

QString timeAndDay(const Session& session, Instant instant) {
  const Calendar& calendar = session.ports().calendar;
  const bool isToday = calendar.day(instant) == calendar.day(session.ports().clock.now());
  return calendar.local(instant).toString(isToday ? QStringLiteral("HH:mm") : QStringLiteral("d MMM HH:mm"));
}

}  // namespace pendra
