#pragma once

#include <QTimer>
#include <vector>

#include "document/AbsenceFinder.h"
#include "model/TimeEntry.h"
#include "platform/IdleSource.h"
#include "platform/Notifier.h"
#include "store/ObjectContext.h"

namespace pendra {

class Session;

/// Looks while time runs whether somebody is there, and marks the entries that ran when an absence began as
/// soon as somebody is back. While nothing runs, or when the user does not want to be asked, it does not
/// wake.
class AwayWatch {
 public:
  /// All must outlive it.
  AwayWatch(Session& session, IdleSource& idle, SleepSource& sleep);

  /// Whether it is going to look.
  [[nodiscard]] bool isWatching() const { return next_.isActive(); }
  /// Looks now; the answer may come later.
  void look();

 private:
  void follow();
  void startOrStop();
  void seen(std::optional<double> idle);
  void finish(const Absence& absence);
  void reset();
  void noteWhatRuns();
  /// Of what has run, forgets all that began later.
  void keepWhatRanAt(Instant begin);
  [[nodiscard]] bool isWanted() const;

  Session& session_;
  IdleSource& idle_;
  SleepSource& sleep_;
  QTimer next_;
  std::optional<AbsenceFinder> finder_;  ///< while there is something to watch
  std::vector<Ref<TimeEntry>> ran_;      ///< since the last absence; while one lasts, when it began
  bool isAway_ = false;
  Notifier::Subscription documents_;
  Notifier::Subscription preference_;
  Notifier::Subscription sleeps_;
  Subscription edits_;
};

}  // namespace pendra
