#pragma once

#include <QStringList>
#include <functional>
#include <vector>

#include "document/Notices.h"
#include "model/TimeEntry.h"
#include "platform/Notifier.h"
#include "store/ObjectContext.h"

namespace pendra {

class Session;

/// Keeps a notice standing for as long as the open document holds entries that wait for an answer. One that
/// the user has dismissed comes back when the document is opened again, or when it asks about other entries.
class EntryQuestion {
 public:
  struct Question {
    std::vector<TimeEntry*> entries;  ///< none when nothing is to be answered
    Notice notice{};
  };
  struct Rules {
    std::function<Question()> ask;  ///< what is to be asked at this moment
    bool (*waits)(const TimeEntry&);
    QString key;  ///< of the notice
  };
  EntryQuestion(Session& session, Rules rules);

 private:
  void follow();
  void documentEdited(const ChangeSet& news);
  void update();

  /// What was said last: about which entries, in which words.
  struct Said {
    std::vector<Ref<TimeEntry>> entries;
    QStringList words;
    friend bool operator==(const Said&, const Said&) = default;
  };

  Session& session_;
  Rules rules_;
  Said said_;
  Notifier::Subscription documents_;
  Subscription edits_;
};

/// The time of an instant, with its day unless that is today.
[[nodiscard]] QString timeAndDay(const Session& session, Instant instant);

}  // namespace pendra
