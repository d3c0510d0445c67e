#include "ui_core/EntryChecks.h"

#include "support/Rows.h"
#include "support/TestSession.h"

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
  const char* selectedPeriod;
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

class EntryChecks : public testing::TestWithParam<Checked> {};

QString said(std::span<const EntryCheck> checks, const EntryTexts& texts) {
  const EntryCheck* failing = firstFailing(checks, texts);
  return failing ? failing->message.toString() : QString();
}

TEST_P(EntryChecks, SayTheFirstThingThatIsWrong) {
  const Checked& row = GetParam();
  const EntryTexts texts{.startTime = row.time,
                         .startTimeAMPM = row.marker,
                         .startDate = row.date,
                         .duration = row.duration,
                         .entryIsSelected = true,
                         .now = ManualClock().now(),
                         .calendar = Calendar(QTimeZone("Europe/Berlin"))};
  EXPECT_EQ(said(activitySaveChecks(), texts), QString(row.saveActivity));
  EXPECT_EQ(said(selectedPeriodChecks(), texts), QString(row.selectedPeriod));
  EXPECT_EQ(said(timeEntryChecks(), texts), QString(row.timeEntry));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, EntryChecks,
    testing::Values(
        Checked{"Good", "9:30", "AM", "11/24/26", "1:30", "", "", ""},
        Checked{"AllEmpty", "", "", "", "", "", "", ""},
        Checked{"DurationIsTheFirstThing", "25:00", "", "13/45/26", "-1:00", kNegative, kNegative, kNegative},
        Checked{"MinusZeroHours", "9:30", "AM", "11/24/26", "-0:30", "", "", kNegative},
        Checked{"MinusZeroAndNothing", "9:30", "AM", "11/24/26", "-0:00", "", "", ""},
        Checked{"MinusInTheMinutes", "9:30", "AM", "11/24/26", "0:-30", "", "", ""},
        Checked{"WordForDuration", "9:30", "AM", "11/24/26", "long", "", "", ""},
        Checked{"TimeBeforeDate", "25:00", "AM", "13/45/26", "1:00", kTime, kDate, kDate},
        Checked{"BadTimeAlone", "25:00", "AM", "11/24/26", "1:00", kTime, kTime, ""},
        Checked{"BadDateAlone", "9:30", "AM", "02/30/26", "1:00", kDate, kDate, kDate},
        Checked{"MarkerTypedInTime", "9:30 PM", "PM", "11/24/26", "1:00", kTime, kTime, kProper},
        Checked{"SmallMarkerTypedInTime", "9:30 pm", "PM", "11/24/26", "1:00", kTime, kTime, ""},
        Checked{"NoMarker", "9:30", "", "11/24/26", "1:00", kNoMarker, kNoMarker, kNoMarker},
        Checked{"NoMarkerBeforeMarkerInTime", "9 M", "", "11/24/26", "1:00", kTime, kTime, kNoMarker},
        Checked{"NoTime", "", "AM", "11/24/26", "1:00", kNoTime, kNoTime, ""},
        Checked{"NoDate", "9:30", "AM", "", "1:00", kNoDate, kNoDate, ""},
        Checked{"Tomorrow", "9:30", "AM", "11/25/26", "1:00", kFuture, kFuture, kFuture},
        Checked{"TomorrowWithoutMarker", "9:30", "", "11/25/26", "1:00", kNoMarker, kFuture, kNoMarker},
        Checked{"TomorrowWithoutTime", "", "AM", "11/25/26", "1:00", kNoTime, kFuture, kFuture},
        Checked{"LaterToday", "11:30", "PM", "11/24/26", "1:00", "", "", ""}),
    RowName());

TEST(SelectedPeriodChecks, StopWithoutAWordWhenNothingIsSelected) {
  EntryTexts texts{.startTime = "25:00",
                   .startTimeAMPM = {},
                   .startDate = {},
                   .duration = "1:00",
                   .entryIsSelected = false,
                   .now = {},
                   .calendar = Calendar(QTimeZone::utc())};
  ScriptedAlerts alerts;
  EXPECT_FALSE(passes(selectedPeriodChecks(), texts, alerts));
  EXPECT_TRUE(alerts.shown().empty());

  texts.duration = "-1:00";
  EXPECT_FALSE(passes(selectedPeriodChecks(), texts, alerts));
  EXPECT_EQ(alerts.last().message, QString(kNegative));
  EXPECT_EQ(alerts.last().style, Alert::Style::Critical);
}

struct Length {
  const char* name;
  const char* text;
  double seconds;
};

class DurationReading : public testing::TestWithParam<Length> {};

TEST_P(DurationReading, TakesHoursAndMinutes) {
  EXPECT_EQ(durationInSeconds(GetParam().text), GetParam().seconds);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, DurationReading,
    testing::Values(Length{"HoursAlone", "2", 7200}, Length{"ShortMinutes", "1:5", 3900},
                    Length{"SecondsAreDropped", "02:15:59", 8100}, Length{"MinutesHaveNoLimit", "1:75", 8100},
                    Length{"NegativeMinutes", "0:-30", -1800}, Length{"MinusZero", "-0:30", 1800},
                    Length{"LeadingBlanks", "  1: 30", 5400}, Length{"DigitsThenWords", "90m", 324000},
                    Length{"PointEndsTheNumber", "1.5", 3600}, Length{"WordsAreZero", "abc", 0},
                    Length{"Empty", "", 0}, Length{"NothingButColons", "::", 0}),
    RowName());

TEST(DurationReading, DoesNotOverflow) { EXPECT_GT(durationInSeconds("99999999999999999999999:59"), 0); }

}  // namespace
}  // namespace pendra
