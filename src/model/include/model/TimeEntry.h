#pragma once
// An entry's length has two sources that never mix: while it is timed, the clock; once it has been stopped,
// what was stored (`duration`). Which of them counts is decided in `lengthAt` only.

#include "platform/Calendar.h"
#include "store/ManagedObject.h"

namespace pendra {

class Activity;

/// Instants of one moment may be told apart by less than this, in seconds: ends are fractions of seconds.
inline constexpr double kSameMoment = 1;

/// One time entry of an activity.
class TimeEntry final : public ManagedObject {
 public:
  static const EntityDescriptor& descriptor();
  [[nodiscard]] const EntityDescriptor& entity() const override { return descriptor(); }

  [[nodiscard]] Activity* activity() const;
  void setActivity(Activity* activity);
  [[nodiscard]] std::optional<Instant> start() const { return start_.get(); }
  void setStart(std::optional<Instant> start) { assign(start_, start); }
  /// Seconds; absent while the entry has never been stopped.
  [[nodiscard]] std::optional<double> duration() const { return duration_.get(); }
  /// Another length answers how long the entry is that a crash cut off.
  void setDuration(std::optional<double> duration);
  [[nodiscard]] std::optional<bool> running() const { return running_.get(); }
  void setRunning(std::optional<bool> running) { assign(running_, running); }
  [[nodiscard]] bool isRunning() const { return running() == true; }
  /// When the entry was last sent; the reference instant, or none, means not sent.
  [[nodiscard]] std::optional<Instant> dateSubmitted() const { return dateSubmitted_.get(); }
  void setDateSubmitted(std::optional<Instant> date) { assign(dateSubmitted_, date); }
  /// When a record with this entry was given to Vantor whose fate is not known: no answer came, or the
  /// program ended while it waited. None in every other case.
  [[nodiscard]] std::optional<Instant> sendingSince() const { return sendingSince_.get(); }
  void setSendingSince(std::optional<Instant> since) { assign(sendingSince_, since); }
  /// How the record that it is in was named when it left, as long as its fate is not known.
  [[nodiscard]] const std::optional<QString>& sentAs() const { return sentAs_.get(); }
  void setSentAs(std::optional<QString> name);
  /// Until when the entry is known to have run, when a crash cut it off and nobody has said yet how long it
  /// is.
  [[nodiscard]] std::optional<Instant> haltedAt() const { return haltedAt_.get(); }
  void setHaltedAt(std::optional<Instant> instant) { assign(haltedAt_, instant); }
  /// Whether it is still to be said how long it is, and may be: what was sent stays as it is.
  [[nodiscard]] bool isHalted() const { return haltedAt() && !timeIsFixed(); }
  /// The time within the entry in which nobody was there, while it has not been answered whether it counts.
  /// Both or none are present: `setAway` writes them.
  [[nodiscard]] std::optional<Instant> awayFrom() const { return awayFrom_.get(); }
  void setAwayFrom(std::optional<Instant> instant) { assign(awayFrom_, instant); }
  [[nodiscard]] std::optional<Instant> awayTo() const { return awayTo_.get(); }
  void setAwayTo(std::optional<Instant> instant) { assign(awayTo_, instant); }
  [[nodiscard]] const std::optional<QString>& notes() const { return notes_.get(); }
  void setNotes(std::optional<QString> notes);

  /// Runs from its start on; what a crash cut off runs on as if it had not been.
  void startTimer();
  /// The duration becomes now minus the start.
  void stopTimer();
  /// The entry has ended there: the duration becomes that instant minus the start.
  void stopTimerAt(Instant end);

  /// Its length as it counts at that moment, in seconds: what runs has run since its start, which is less
  /// than nothing under a clock that was set back.
  [[nodiscard]] double lengthAt(Instant now) const;
  /// The length by the clock of its document.
  [[nodiscard]] double length() const;
  /// Where it ends; what runs, or has no start and no length, at that moment.
  [[nodiscard]] Instant endAt(Instant now) const;
  /// The end by the clock of its document.
  [[nodiscard]] Instant end() const;
  /// The stored duration in seconds; 0 when absent.
  [[nodiscard]] double storedDuration() const { return duration().value_or(0); }
  /// Seconds from the reference instant to the sending; 0 when never sent.
  [[nodiscard]] double sentSeconds() const { return dateSubmitted().value_or(kReferenceInstant).seconds; }
  /// Whether it was sent more than a second after the reference instant. Kept: promised to those who import
  /// the exported text, and who sent before the log said when: exactly one second is not sent, though the log
  /// shows it so.
  [[nodiscard]] bool wasSent() const { return isSent(dateSubmitted()); }
  [[nodiscard]] static bool isSent(std::optional<Instant> dateSubmitted) {
    return dateSubmitted.value_or(kReferenceInstant).seconds > 1.0;
  }
  /// Whether it was sent, or left without an answer: its time may be in Vantor and must stay what it was.
  [[nodiscard]] bool timeIsFixed() const { return wasSent() || sendingSince(); }

  /// Negative, zero or positive as this entry starts before, with or after the other.
  [[nodiscard]] int compare(const TimeEntry& other) const;

 protected:
  void onInsert() override;

 private:
  Slot<bool> running_;  // first: it fits behind what every object has
  ToOne<Activity> activity_;
  Slot<Instant> start_;
  Slot<double> duration_;
  Slot<Instant> dateSubmitted_{kReferenceInstant};
  Slot<QString> notes_;
  Slot<Instant> sendingSince_;
  Slot<QString> sentAs_;
  Slot<Instant> haltedAt_;
  Slot<Instant> awayFrom_;
  Slot<Instant> awayTo_;
};

}  // namespace pendra
