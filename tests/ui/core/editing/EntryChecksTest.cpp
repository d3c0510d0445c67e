#include "ui_core/EntryChecks.h"

#include "support/Rows.h"
#include "support/TestSession.h"
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

using Doubt = DurationReading::Doubt;

struct Length {
  const char* name;
  const char* text;
  const char* stored;
  Doubt doubt = Doubt::None;
  const char* advice = "";
  double dropped = 0;
};

class ReadDuration : public testing::TestWithParam<Length> {};

TEST_P(ReadDuration, SaysWhatIsStoredAndWhetherThatIsWhatTheTextSeemsToSay) {
  const DurationReading reading = readDuration(GetParam().text);
  EXPECT_EQ(durationInWords(reading.seconds), QString(GetParam().stored));
  EXPECT_EQ(reading.doubt, GetParam().doubt);
  EXPECT_EQ(reading.advice, QString(GetParam().advice));
  EXPECT_EQ(reading.dropped, GetParam().dropped);
}

constexpr auto kHow = "A length is typed as 1:30, 1h30 or 90m.";

INSTANTIATE_TEST_SUITE_P(
    Plain, ReadDuration,
    testing::Values(
        Length{"Empty", "", "0 h 00 min"}, Length{"HoursAlone", "2", "2 h 00 min"},
        Length{"Twelve", "12", "12 h 00 min"},
        Length{"MoreThanTwelve", "90", "90 h 00 min", Doubt::TooLong, "For 90 minutes type 1:30."},
        Length{"MoreThanTwelveWithAColon", "12:01", "12 h 01 min", Doubt::TooLong},
        Length{"ShortMinutes", "1:5", "1 h 05 min"}, Length{"NoHours", ":30", "0 h 30 min"},
        Length{"Blanks", "  1: 30 ", "1 h 30 min", Doubt::Unreadable, kHow},
        Length{"SecondsAreDropped", "02:15:59", "2 h 15 min", Doubt::None, "", 59},
        Length{"MinutesHaveNoLimit", "0:75", "1 h 15 min", Doubt::Differs},
        Length{"PointEndsTheNumber", "1.5", "1 h 00 min", Doubt::Differs, "For 1 h 30 min type 1:30."},
        Length{"SoDoesAComma", "0,33", "0 h 00 min", Doubt::Differs, "For 0 h 20 min type 0:20."},
        Length{"NoDecimals", "2.0", "2 h 00 min"},
        Length{"NegativeMinutes", "0:-30", "-0 h 30 min", Doubt::Differs},
        Length{"NegativeHours", "-2:30", "-1 h 30 min", Doubt::Differs},
        Length{"MinusZero", "-0:30", "0 h 30 min", Doubt::Differs},
        Length{"Words", "abc", "0 h 00 min", Doubt::Unreadable, kHow},
        Length{"DigitsThenWords", "2 cats", "2 h 00 min", Doubt::Unreadable, kHow},
        Length{"NothingButColons", "::", "0 h 00 min", Doubt::Unreadable, kHow},
        Length{"TwoNumbers", "1 30", "1 h 00 min", Doubt::Unreadable, kHow},
        Length{"BeyondEveryNumber", "99999999999999999999999:59", "2147483647 h 59 min", Doubt::TooLong}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    WithUnits, ReadDuration,
    testing::Values(Length{"HoursAndMinutes", "1h30", "1 h 30 min"}, Length{"Minutes", "90m", "1 h 30 min"},
                    Length{"PartOfAnHour", "1.5h", "1 h 30 min"}, Length{"WithAComma", "1,5 h", "1 h 30 min"},
                    Length{"LongUnit", "45 min", "0 h 45 min"},
                    Length{"AllInWords", "1 Hour, 30 minutes", "1 h 30 min"},
                    Length{"Clock", "1:30 h", "1 h 30 min"}, Length{"AThird", "0.33h", "0 h 20 min"},
                    Length{"Seconds", "1h 5m 75s", "1 h 06 min", Doubt::None, "", 15},
                    Length{"SecondsAlone", "90s", "0 h 01 min", Doubt::None, "", 30},
                    Length{"TooLong", "90h", "90 h 00 min", Doubt::TooLong},
                    Length{"NumberWithoutAUnit", "90 30s", "90 h 00 min", Doubt::Unreadable, kHow},
                    Length{"Negative", "-1h30", "-1 h 00 min", Doubt::Unreadable, kHow},
                    Length{"NoUnitOfTime", "3 km", "3 h 00 min", Doubt::Unreadable, kHow}),
    RowName());

}  // namespace
}  // namespace pendra
