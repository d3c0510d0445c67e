#pragma once
// Whoever forgot to start or to stop a timer says as of when it should have been. What that will do is told
// before it is done: also that the time is in another entry already, which is shown and not refused.

#include "document/Session.h"
#include "model/Activity.h"
#include "ui_core/EntryEchoes.h"

namespace pendra {

enum class EarlierDeed { Start, Stop };

/// As of when, in the order in which it is offered.
enum class EarlierMoment { FiveMinutes, TenMinutes, FifteenMinutes, LastEnd, Typed };

/// Starts an activity that is not running, or stops one that is, as of a moment that has passed.
class EarlierTimer {
 public:
  /// The session must outlive it; the document does not change meanwhile.
  EarlierTimer(Session& session, Activity& activity, EarlierDeed deed);

  /// What the deed would do now. Without an instant it would be refused, and the echo says why.
  struct Reading {
    std::optional<Instant> at{};
    Echo echo;
  };
  /// `typed` counts for `EarlierMoment::Typed` alone: a time of day, which is the last that has been, or a
  /// date with it.
  [[nodiscard]] Reading read(EarlierMoment moment, const QString& typed) const;
  /// Does it in one edit; false when it is refused.
  bool perform(EarlierMoment moment, const QString& typed) const;

  /// When the last entry of the document ended that has ended; none when none has.
  [[nodiscard]] std::optional<Instant> lastEnd() const { return lastEnd_; }
  /// The activity's names.
  [[nodiscard]] QString title() const;

 private:
  [[nodiscard]] Instant now() const { return session_.ports().clock.now(); }
  [[nodiscard]] Reading startAt(Instant at) const;
  [[nodiscard]] Reading stopAt(Instant at) const;
  [[nodiscard]] std::optional<Instant> instantOf(EarlierMoment moment, const QString& typed) const;
  [[nodiscard]] QString clockText(Instant instant) const;
  /// "13:05, 25 min ago".
  [[nodiscard]] QString whenText(Instant at) const;
  [[nodiscard]] QStringList stops(Instant at) const;
  [[nodiscard]] QString overlaps(Instant from, Instant to) const;
  [[nodiscard]] Reading told(Instant at, QStringList parts, const QString& overlap) const;

  Session& session_;
  Ref<Activity> activity_;
  EarlierDeed deed_;
  std::optional<Instant> lastEnd_;
};

}  // namespace pendra
