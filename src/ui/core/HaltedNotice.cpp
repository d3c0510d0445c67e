#include "ui_core/HaltedNotice.h"

#include "document/Session.h"
#include "model/ActivityTitle.h"
#include "model/Queries.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

QString sentence(const std::vector<TimeEntry*>& entries) {
  const Activity* activity = entries.front()->activity();
  if (entries.size() == 1 && activity) {
    return formatted(tr("“%@” was being timed when Pendra ended. Its length was not stored."),
                     {activityTitle(*activity)});
  }
  return counted(std::ssize(entries), "1 entry was being timed when Pendra ended. Its length was not stored.",
                 "%Ln entries were being timed when Pendra ended. Their lengths were not stored.");
}

}  // namespace

HaltedNotice::HaltedNotice(Session& session, std::function<void(TimeEntry&)> edit)
    : session_(session),
      edit_(std::move(edit)),
      question_(session, {.ask = [this] { return ask(); },
                          .waits = [](const TimeEntry& entry) { return entry.isHalted(); },
                          .key = QStringLiteral("halted")}) {}

EntryQuestion::Question HaltedNotice::ask() const {
  HaltedEntries halted = haltedEntries(*session_.context());
  if (halted.entries.empty()) return {};
  Notice notice{.key = {}, .text = sentence(halted.entries), .actions = actionsFor(halted)};
  return {std::move(halted.entries), std::move(notice)};
}

/// An action that was cancelled leaves the notice: it goes with the last answer.
std::vector<NoticeAction> HaltedNotice::actionsFor(const HaltedEntries& halted) const {
  const std::vector<Ref<TimeEntry>> entries(halted.entries.begin(), halted.entries.end());
  const auto isDone = [] { return false; };
  std::vector<NoticeAction> actions;
  actions.push_back({formatted(tr("Set to last save (%@)"), {timeAndDay(session_, halted.until)}),
                     [&session = session_, entries] { setToLastSave(*session.context(), entries); }, isDone});
  // One after the other: the notice stays for those that are left.
  actions.push_back({entries.size() == 1 ? tr("Type its length…") : tr("Type their lengths…"),
                     [edit = edit_, entry = entries.front()] {
                       if (entry) edit(*entry);
                     },
                     isDone});
  if (std::any_of(entries.begin(), entries.end(), [](const auto& entry) { return canRunOn(*entry); })) {
    actions.push_back(
        {tr("Run On"), [&session = session_, entries] { runOn(*session.context(), entries); }, isDone});
  }
  return actions;
}

}  // namespace pendra
