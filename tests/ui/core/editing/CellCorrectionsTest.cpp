#include "ui_core/CellCorrections.h"

#include <gtest/gtest.h>

#include "store/UndoStack.h"
#include "support/TestSession.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;
using enum LogCell;

const QLocale kLocale(u"en_GB"_s);

/// An entry of yesterday from 08:45:20, 1 h 45 min 20 s long, and one of "Zed" from 10:00 for two hours. It
/// is the 24th of November, 10:00 in Berlin.
class CellCorrections : public testing::Test {
 protected:
  CellCorrections() {
    test.openDocument();
    activity = &test.addActivity(&test.addCustomer(u"Acme"_s), nullptr);
    entry = &test.addEntry(*activity, "2026-11-23T07:45:20Z", 6320);
    test.addEntry(test.addActivity(&test.addCustomer(u"Zed"_s), nullptr), "2026-11-23T09:00:00Z", 7200);
  }
  /// What is said and shown, without the keys: "!" when it is refused, a line each, the cell that follows.
  [[nodiscard]] QString said(LogCell cell, const QString& text) const {
    const CellReading reading = readTyped(*entry, cell, text, kLocale);
    QStringList lines;
    for (const Echo& echo : reading.echoes) lines << echo.text;
    lines.removeLast();
    if (reading.follows) lines << reading.follows->column + u' ' + reading.follows->text;
    return (reading.isRefused ? u"! "_s : QString()) + lines.join(u" | "_s);
  }
  /// "08:45:20 6320", after storing what was typed.
  [[nodiscard]] QString stored(LogCell cell, const QString& text) {
    storeTyped(*entry, cell, text, kLocale);
    return test.calendar.local(*entry->start()).toString(u"hh:mm:ss "_s) +
           QString::number(entry->storedDuration());
  }

  TestSession test;
  Activity* activity = nullptr;
  TimeEntry* entry = nullptr;
};

TEST_F(CellCorrections, SayWhatTheyStoreAndStoreWhatTheySay) {
  const QString length = u"! A length is typed as 1:30, 1h30 or 90m."_s;
  const QString time = u"! A time is typed as 14:30 or 2:30 PM."_s;
  const QString before = u"! That is before the start, at 08:45:20. Another day is typed as 11/24/26 9:30."_s;
  const QString was = u"08:45:20 6320"_s;
  struct Case {
    LogCell cell;
    QString text;
    QString said;
    QString stored;
  };
  for (const Case& each : {
           Case{Duration, u"01:45:20"_s, {}, was},  // nobody has typed, and no second is dropped
           Case{Duration, u"1h10"_s, u"Stored as 01:10:00, was 01:45:20 | end 09:55"_s, u"08:45:20 4200"_s},
           Case{Duration, u"1:10:05"_s, u"Stored as 01:10:00, 5 s dropped | end 09:55"_s, u"08:45:20 4200"_s},
           Case{Duration, u"90"_s,
                u"Stored as 90:00:00, was 01:45:20 | Ends Fri 27 Nov, 2:45. For 90 minutes type 1:30. | "
                u"Overlaps Zed by 02:00:00 | end 02:45"_s,
                u"08:45:20 324000"_s},
           Case{Duration, u"-1"_s, u"! Time durations must be positive"_s, was},
           Case{Duration, u"soon"_s, length, was},
           Case{Duration, u" "_s, length, was},
           Case{End, u"11:15"_s,
                u"Stored as 02:30:00, was 01:45:20 | Overlaps Zed by 01:15:20 | duration 02:30:00"_s,
                u"08:45:20 9000"_s},
           Case{End, u"9.55.30"_s, u"Stored as 01:10:00, 30 s dropped | duration 01:10:00"_s,
                u"08:45:20 4200"_s},
           Case{End, u"8:45"_s, u"Stored as 00:00:00, was 01:45:20 | duration 00:00:00"_s, u"08:45:20 0"_s},
           Case{End, u"8:00"_s, before, was},
           Case{End, u"1 am"_s, before, was},  // not sixteen hours
           Case{End, u"24 Nov 2026 1:00"_s,
                u"Stored as 16:15:00, was 01:45:20 | Ends Tue 24 Nov, 01:00. | Overlaps Zed by 02:00:00 | "
                u"duration 16:15:00"_s,
                u"08:45:20 58500"_s},
           Case{End, u"11/24/26 11:00"_s,
                u"Stored as 26:15:00, was 01:45:20 | Ends later than now. | Overlaps Zed by 02:00:00 | "
                u"duration 26:15:00"_s,
                u"08:45:20 94500"_s},
           Case{End, u"soon"_s, time, was},
           Case{Start, u"8"_s, u"Starts 08:00, was 08:45:20 | end 09:45"_s, u"08:00:00 6320"_s},
           Case{Start, u"11/22/26 23:30"_s, u"Starts Sun 22 Nov, 23:30, was 08:45:20 | end 01:15"_s,
                u"23:30:00 6320"_s},
           Case{Start, u"11/24/26 9:00"_s,
                u"Starts Tue 24 Nov, 09:00, was 08:45:20 | Ends later than now. | end 10:45"_s,
                u"09:00:00 6320"_s},
           Case{Start, u"11/25/26 9:00"_s, u"! Pendra cannot accept future time entries. Please try again."_s,
                was},
           Case{Start, u"25:00"_s, time, was},
           Case{Notes, u"Call; Mail"_s, {}, was},
       }) {
    const auto steps = [this] { return test.session.context()->undoStack().canUndo(); };
    EXPECT_EQ(said(each.cell, each.text), each.said) << each.text.toStdString();
    EXPECT_EQ(stored(each.cell, each.text), each.stored) << each.text.toStdString();
    EXPECT_EQ(steps(), each.stored != was || each.cell == Notes) << each.text.toStdString();
    test.session.context()->undoStack().undo();
    EXPECT_FALSE(steps());
  }
}

TEST_F(CellCorrections, LeaveToTheClockAndToVantorWhatIsTheirs) {
  entry->setDateSubmitted(test.clock.now());
  EXPECT_EQ(whyNotTyped(*entry, Notes), "");
  EXPECT_EQ(said(End, u"11:15"_s), u"! An entry that was sent keeps its time."_s);
  EXPECT_EQ(stored(End, u"11:15"_s), u"08:45:20 6320"_s) << "it was sent while it was typed";
  entry->setDateSubmitted(kReferenceInstant);

  // The hour that comes twice: the start stays in its own, an end is the first that can be.
  entry->setStart(instantOf("2026-10-25T01:30:00Z"));
  EXPECT_EQ(stored(Start, u"2:45"_s), u"02:45:00 6320"_s);
  EXPECT_EQ(entry->start(), instantOf("2026-10-25T01:45:00Z"));
  entry->setStart(instantOf("2026-10-25T00:30:00Z"));
  EXPECT_EQ(stored(End, u"2:45"_s), u"02:30:00 900"_s);
  EXPECT_EQ(stored(End, u"3:00"_s), u"02:30:00 5400"_s) << "as long as the night was";

  entry->setHaltedAt(test.clock.now());
  entry->setAwayFrom(entry->start());
  entry->setAwayTo(*entry->start() + 600);
  EXPECT_EQ(stored(End, u"2:40"_s), u"02:30:00 600"_s);
  EXPECT_FALSE(entry->haltedAt() || entry->awayFrom()) << "whoever types a length has said what counts";

  entry->setStart(test.clock.now() + -60);
  entry->startTimer();
  EXPECT_EQ(whyNotTyped(*entry, Duration), u"Stop it to correct its length."_s);
  EXPECT_EQ(said(Start, u"9:30"_s), u"Starts 09:30, was 09:59 | duration 00:30:00"_s);
  EXPECT_EQ(said(Start, u"10:30"_s), u"! What runs cannot begin later than now."_s);
}

}  // namespace
}  // namespace pendra
