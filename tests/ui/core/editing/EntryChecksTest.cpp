#include "ui_core/EntryChecks.h"

#include <gtest/gtest.h>

#include "support/ManualClock.h"
#include "ui_core/DurationReading.h"

namespace pendra {
namespace {

// The session stands at 2026-11-24 10:00 in Berlin.

struct Checked {
  const char* name;
  const char* time;
  const char* marker;
  const char* date;
  const char* duration;
  const char* saveActivity;  ///< what each of the three orders says; "" passes
  const char* selectedEntry;
  const char* timeEntry;
};

constexpr auto kNegative = "Time durations must be positive";
constexpr auto kTime = "Please enter a valid start time.";
constexpr auto kDate = "Please enter a valid date.";
constexpr auto kProper = "Please enter AM/PM in the proper text field.";
constexpr auto kNoMarker = "Please enter AM/PM in the text field.";
constexpr auto kNoTime = "Please enter a start time in the text field.";
constexpr auto kNoDate = "Please enter a start date in the text field.";
constexpr auto kFuture = "Pendra cannot accept future time entries. Please try again.";

QString said(std::span<const EntryCheck> checks, const EntryTexts& texts) {
  const EntryCheck* failing = firstFailing(checks, texts);
  return failing ? QString::fromLatin1(failing->message) : QString();
}

const Checked kRows[] = {

    {"Good", "9:30", "AM", "11/24/26", "1:30", "", "", ""},
    {"AllEmpty", "", "", "", "", "", "", ""},
    {"DurationIsTheFirstThing", "25:00", "", "13/45/26", "-1:00", kNegative, kNegative, kNegative},
    {"MinusZeroHours", "9:30", "AM", "11/24/26", "-0:30", "", "", kNegative},
    {"MinusZeroAndNothing", "9:30", "AM", "11/24/26", "-0:00", "", "", ""},
    {"MinusInTheMinutes", "9:30", "AM", "11/24/26", "0:-30", "", "", ""},
    {"WordForDuration", "9:30", "AM", "11/24/26", "long", "", "", ""},
    {"TimeBeforeDate", "25:00", "AM", "13/45/26", "1:00", kTime, kDate, kDate},
    {"BadTimeAlone", "25:00", "AM", "11/24/26", "1:00", kTime, kTime, ""},
    {"BadDateAlone", "9:30", "AM", "02/30/26", "1:00", kDate, kDate, kDate},
    {"MarkerTypedInTime", "9:30 PM", "PM", "11/24/26", "1:00", kTime, kTime, kProper},
    {"SmallMarkerTypedInTime", "9:30 pm", "PM", "11/24/26", "1:00", kTime, kTime, ""},
    {"NoMarker", "9:30", "", "11/24/26", "1:00", kNoMarker, kNoMarker, kNoMarker},
    {"NoMarkerBeforeMarkerInTime", "9 M", "", "11/24/26", "1:00", kTime, kTime, kNoMarker},
    {"NoTime", "", "AM", "11/24/26", "1:00", kNoTime, kNoTime, ""},
    {"NoDate", "9:30", "AM", "", "1:00", kNoDate, kNoDate, ""},
    {"Tomorrow", "9:30", "AM", "11/25/26", "1:00", kFuture, kFuture, kFuture},
    {"TomorrowWithoutMarker", "9:30", "", "11/25/26", "1:00", kNoMarker, kFuture, kNoMarker},
    {"TomorrowWithoutTime", "", "AM", "11/25/26", "1:00", kNoTime, kFuture, kFuture},
    {"LaterToday", "11:30", "PM", "11/24/26", "1:00", "", "", ""}};

TEST(EntryChecks, SayTheFirstThingThatIsWrong) {
  for (const Checked& row : kRows) {
    SCOPED_TRACE(row.name);
    const EntryTexts texts{.startTime = row.time,
                           .startTimeAMPM = row.marker,
                           .startDate = row.date,
                           .duration = row.duration,
                           .entryIsSelected = true,
                           .now = ManualClock().now(),
                           .calendar = Calendar(QTimeZone("Europe/Berlin"))};
    EXPECT_EQ(said(activitySaveChecks(), texts), QString(row.saveActivity));
    EXPECT_EQ(said(selectedEntryChecks(), texts), QString(row.selectedEntry));
    EXPECT_EQ(said(timeEntryChecks(), texts), QString(row.timeEntry));
  }
}

TEST(ReadDuration, SaysWhatIsStoredAndWhetherThatIsWhatTheTextSeemsToSay) {
  using Doubt = DurationReading::Doubt;
  constexpr auto kHow = "A length is typed as 1:30, 1h30 or 90m.";
  const struct {
    const char* text;
    const char* stored;
    Doubt doubt = Doubt::None;
    const char* advice = "";
    double dropped = 0;
  } rows[] = {{"", "0 h 00 min"},
              {"2", "2 h 00 min"},
              {"12", "12 h 00 min"},
              {"90", "90 h 00 min", Doubt::TooLong, "For 90 minutes type 1:30."},
              {"12:01", "12 h 01 min", Doubt::TooLong},
              {"1:5", "1 h 05 min"},
              {":30", "0 h 30 min"},
              {"  1: 30 ", "1 h 30 min", Doubt::Unreadable, kHow},
              {"02:15:59", "2 h 15 min", Doubt::None, "", 59},
              {"0:75", "1 h 15 min", Doubt::Differs},
              {"1.5", "1 h 00 min", Doubt::Differs, "For 1 h 30 min type 1:30."},
              {"0,33", "0 h 00 min", Doubt::Differs, "For 0 h 20 min type 0:20."},
              {"2.0", "2 h 00 min"},
              {"0:-30", "-0 h 30 min", Doubt::Differs},
              {"-2:30", "-1 h 30 min", Doubt::Differs},
              {"-0:30", "0 h 30 min", Doubt::Differs},
              {"abc", "0 h 00 min", Doubt::Unreadable, kHow},
              {"2 cats", "2 h 00 min", Doubt::Unreadable, kHow},
              {"::", "0 h 00 min", Doubt::Unreadable, kHow},
              {"1 30", "1 h 00 min", Doubt::Unreadable, kHow},
              {"99999999999999999999999:59", "2147483647 h 59 min", Doubt::TooLong},
              {"1h30", "1 h 30 min"},
              {"90m", "1 h 30 min"},
              {"1.5h", "1 h 30 min"},
              {"1,5 h", "1 h 30 min"},
              {"45 min", "0 h 45 min"},
              {"1 Hour, 30 minutes", "1 h 30 min"},
              {"1:30 h", "1 h 30 min"},
              {"0.33h", "0 h 20 min"},
              {"1h 5m 75s", "1 h 06 min", Doubt::None, "", 15},
              {"90s", "0 h 01 min", Doubt::None, "", 30},
              {"90h", "90 h 00 min", Doubt::TooLong},
              {"90 30s", "90 h 00 min", Doubt::Unreadable, kHow},
              {"-1h30", "-1 h 00 min", Doubt::Unreadable, kHow},
              {"3 km", "3 h 00 min", Doubt::Unreadable, kHow}};
  for (const auto& row : rows) {
    const DurationReading reading = readDuration(row.text);
    EXPECT_EQ(durationInWords(reading.seconds), QString(row.stored)) << row.text;
    EXPECT_EQ(reading.doubt, row.doubt) << row.text;
    EXPECT_EQ(reading.advice, QString(row.advice)) << row.text;
    EXPECT_EQ(reading.dropped, row.dropped) << row.text;
  }
}

}  // namespace
}  // namespace pendra
