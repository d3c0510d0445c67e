#include "ui_core/EntryChecks.h"

#include <array>

#include "platform/DateTexts.h"
#include "platform/Translation.h"
#include "ui_core/DurationReading.h"

namespace pendra {

namespace {

constexpr const char* kNegativeDuration = QT_TRANSLATE_NOOP("pendra", "Time durations must be positive");
constexpr const char* kInvalidTime = QT_TRANSLATE_NOOP("pendra", "Please enter a valid start time.");
constexpr const char* kInvalidDate = QT_TRANSLATE_NOOP("pendra", "Please enter a valid date.");
constexpr const char* kMarkerInTime =
    QT_TRANSLATE_NOOP("pendra", "Please enter AM/PM in the proper text field.");
constexpr const char* kNoMarker = QT_TRANSLATE_NOOP("pendra", "Please enter AM/PM in the text field.");
constexpr const char* kNoTime = QT_TRANSLATE_NOOP("pendra", "Please enter a start time in the text field.");
constexpr const char* kNoDate = QT_TRANSLATE_NOOP("pendra", "Please enter a start date in the text field.");
constexpr const char* kFutureEntry =
    QT_TRANSLATE_NOOP("pendra", "Pendra cannot accept future time entries. Please try again.");
constexpr const char* kSilently = "";

bool durationIsNegative(const EntryTexts& texts) { return integerValue(texts.duration) < 0; }

/// Kept: promised to those who use the editors: "-0:30" is negative to the time entry editor, while the
/// activity editor takes it for half an hour.
bool durationHasMinus(const EntryTexts& texts) {
  const QStringList pieces = texts.duration.trimmed().split(u':');
  const bool restIsPositive = std::any_of(pieces.begin() + 1, pieces.end(),
                                          [](const QString& piece) { return integerValue(piece) > 0; });
  return durationIsNegative(texts) || (pieces[0].startsWith(u'-') && restIsPositive);
}

bool nothingIsSelected(const EntryTexts& texts) { return !texts.entryIsSelected; }
bool timeIsInvalid(const EntryTexts& texts) {
  return !texts.startTime.isEmpty() && !readTime(texts.startTime);
}
bool dateIsInvalid(const EntryTexts& texts) {
  return !texts.startDate.isEmpty() && !readShortDate(texts.startDate);
}
/// Kept: promised to those who use the editors: a small "m" passes here.
bool markerIsInTime(const EntryTexts& texts) { return texts.startTime.contains(u'M'); }
bool markerIsMissing(const EntryTexts& texts) {
  return texts.startTimeAMPM.isEmpty() && !texts.startDate.isEmpty();
}
bool timeIsMissing(const EntryTexts& texts) {
  return texts.startTime.isEmpty() && !texts.startTimeAMPM.isEmpty();
}
bool dateIsMissing(const EntryTexts& texts) {
  return texts.startDate.isEmpty() && !texts.startTime.isEmpty();
}
/// Only the day is asked for: later today is not the future.
bool dayIsInFuture(const EntryTexts& texts) {
  const auto day = readShortDate(texts.startDate);
  return day && texts.now < texts.calendar.startOfDay(*day);
}

constexpr std::array kActivitySaveChecks{
    EntryCheck{durationIsNegative, kNegativeDuration},
    EntryCheck{timeIsInvalid, kInvalidTime},
    EntryCheck{dateIsInvalid, kInvalidDate},
    EntryCheck{markerIsInTime, kMarkerInTime},
    EntryCheck{markerIsMissing, kNoMarker},
    EntryCheck{timeIsMissing, kNoTime},
    EntryCheck{dateIsMissing, kNoDate},
    EntryCheck{dayIsInFuture, kFutureEntry},
};

constexpr std::array kSelectedEntryChecks{
    EntryCheck{durationIsNegative, kNegativeDuration},
    EntryCheck{nothingIsSelected, kSilently},
    EntryCheck{dateIsInvalid, kInvalidDate},
    EntryCheck{timeIsInvalid, kInvalidTime},
    EntryCheck{dayIsInFuture, kFutureEntry},
    EntryCheck{markerIsInTime, kMarkerInTime},
    EntryCheck{markerIsMissing, kNoMarker},
    EntryCheck{timeIsMissing, kNoTime},
    EntryCheck{dateIsMissing, kNoDate},
};

constexpr std::array kTimeEntryChecks{
    EntryCheck{durationHasMinus, kNegativeDuration}, EntryCheck{dateIsInvalid, kInvalidDate},
    EntryCheck{markerIsMissing, kNoMarker},          EntryCheck{markerIsInTime, kMarkerInTime},
    EntryCheck{dayIsInFuture, kFutureEntry},
};

}  // namespace

std::span<const EntryCheck> activitySaveChecks() { return kActivitySaveChecks; }
std::span<const EntryCheck> selectedEntryChecks() { return kSelectedEntryChecks; }
std::span<const EntryCheck> timeEntryChecks() { return kTimeEntryChecks; }

const EntryCheck* firstFailing(std::span<const EntryCheck> checks, const EntryTexts& texts) {
  const auto failing =
      std::find_if(checks.begin(), checks.end(), [&](const EntryCheck& check) { return check.fails(texts); });
  return failing == checks.end() ? nullptr : &*failing;
}

bool passes(std::span<const EntryCheck> checks, const EntryTexts& texts, Alerts& alerts) {
  const EntryCheck* failing = firstFailing(checks, texts);
  if (failing && *failing->message) {
    alerts.beginSheet({.style = Alert::Style::Critical, .message = tr(failing->message), .informative = {}},
                      {});
  }
  return !failing;
}

}  // namespace pendra
