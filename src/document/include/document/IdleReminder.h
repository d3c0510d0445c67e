#pragma once
// Nothing runs, and it is a working hour: perhaps a start was forgotten. That is said once for each stretch
// in which nothing runs, and a working day begins a stretch of its own.

#include <QTimer>

#include "platform/Notifier.h"
#include "store/ObjectContext.h"

namespace pendra {

class Session;

/// Reminds of a start that may have been forgotten, in the notice line and by whatever else is told. Wakes
/// once, when the reminder is due; never while it is off, no document is open, or something runs.
class IdleReminder {
 public:
  /// The session must outlive it. `told` is handed the sentence.
  explicit IdleReminder(Session& session, std::function<void(const QString&)> told = {});

  /// When it is due; none when it is not to come.
  [[nodiscard]] std::optional<Instant> due() const;
  [[nodiscard]] bool isWaiting() const { return next_.isActive(); }
  /// Looks whether it is due now.
  void look();

 private:
  void followPreferences();
  void followDocument();
  void followWhatRuns();
  void wait();
  /// When it would be due on that day; none when the day has no working hour left for it.
  [[nodiscard]] std::optional<Instant> dueOn(QDate day) const;
  void remind();

  Session& session_;
  std::function<void(const QString&)> told_;
  QTimer next_;
  std::optional<Instant> idleSince_;     ///< while a document is open and nothing runs
  std::optional<Instant> remindedAt_{};  ///< in this stretch
  Notifier::Subscription documents_;
  std::vector<Notifier::Subscription> preferences_;
  Subscription edits_;
};

}  // namespace pendra
