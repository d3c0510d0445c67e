#pragma once

#include <QStringList>
#include <functional>
#include <vector>

#include "document/HaltedEntries.h"
#include "document/Notices.h"
#include "platform/Notifier.h"
#include "store/ObjectContext.h"

namespace pendra {

class Session;

/// Says in the notice line what was being timed when the program ended without stopping it, and offers to
/// give it the length up to the last save, to type the length of a single one, or to let it run on. Stands
/// for as long as the open document holds such an entry unanswered; one that the user has dismissed comes
/// back when the document is opened again, or when something else is to be answered.
class HaltedNotice {
 public:
  /// `edit` opens the editor of an entry.
  HaltedNotice(Session& session, std::function<void(TimeEntry&)> edit);

 private:
  void follow();
  void documentEdited(const ChangeSet& news);
  void update();
  [[nodiscard]] Notice noticeOf(const HaltedEntries& halted) const;
  [[nodiscard]] std::vector<NoticeAction> actionsFor(const HaltedEntries& halted) const;

  /// What was said last: about which entries, in which words.
  struct Said {
    std::vector<Ref<TimeEntry>> entries;
    QStringList words;
    friend bool operator==(const Said&, const Said&) = default;
  };

  Session& session_;
  std::function<void(TimeEntry&)> edit_;
  Said said_;
  Notifier::Subscription documents_;
  Subscription edits_;
};

}  // namespace pendra
