#include "ui_core/HaltedNotice.h"

#include <gmock/gmock.h>

#include <QDateTime>

#include "document/Backup.h"
#include "store/UndoStack.h"
#include "support/TestSession.h"
#include "ui_core/UnaskedEnd.h"

namespace pendra {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto kStart = "2026-11-24T08:00:00Z";
constexpr auto kLastSave = "2026-11-24T08:58:00Z";

class Halted : public testing::Test, protected TestSession {
 protected:
  /// The program is killed; the file is from `lastSave`, and opened again.
  void killAndOpen(const char* lastSave = kLastSave) {
    ASSERT_TRUE(session.context()->save());
    session.close();
    QFile file(places.path("Test.pdr"));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(QDateTime::fromString(QLatin1StringView(lastSave), Qt::ISODate),
                                 QFileDevice::FileModificationTime));
    file.close();
    ASSERT_TRUE(loadDocument(session, places.path("Test.pdr")));
  }
  Activity& addRunning(const char* customer, const char* start = kStart) {
    Activity& activity = addActivity(&addCustomer(QString::fromUtf8(customer)), &addService("Build"));
    activity.startEntry().setStart(instantOf(start));
    return activity;
  }
  TimeEntry& entry(std::size_t index) { return *session.context()->all<TimeEntry>()[index]; }
  template <class Work>
  void edit(Work work) {
    ASSERT_TRUE(session.context()->edit({}, work));
  }
  /// The question, if it is asked; a backup has a notice of its own.
  std::vector<Notice> standing() {
    std::vector<Notice> asked = session.notices().standing();
    std::erase_if(asked, [](const Notice& notice) { return notice.key != u"halted"; });
    return asked;
  }
  QStringList titles() {
    QStringList titles;
    const Notice question = standing().at(0);
    for (const NoticeAction& action : question.actions) titles << action.title;
    return titles;
  }
  void press(const QString& title) {
    session.notices().press(QStringLiteral("halted"), static_cast<std::size_t>(titles().indexOf(title)));
  }
  std::vector<std::optional<double>> durations() {
    std::vector<std::optional<double>> all;
    for (const TimeEntry* entry : session.context()->all<TimeEntry>()) all.push_back(entry->duration());
    return all;
  }
  TimeEntry* edited_ = nullptr;
};

TEST_F(Halted, IsKnownToHaveRunUntilTheLastSignOfLife) {
  const struct {
    const char* alive;
    const char* lastSave;
    const char* start;
    const char* shown;
    const char* why;
  } cases[] = {
      {nullptr, "08:58", "08:00", "09:58", "a document of before there were signs of life"},
      {"08:57", "08:58", "08:00", "09:58", "an edit was stored after the sign"},
      {"08:57", "08:10", "08:00", "09:57", "a copy that is older than what is in it"},
      {"08:30", "08:58", "08:00", "09:30", "a copy, made when nothing ran any more"},
      {"06:00", "08:58", "08:57", "09:58", "the sign is of an earlier day's work"},
      {"06:00", "07:00", "08:57", "09:57", "it lived when the entry began"},
      {"23:00", "08:58", "08:00", "10:00", "not later than now, whatever a clock said"},
  };
  const auto at = [](const char* time) { return QStringLiteral("2026-11-24T%1:00Z").arg(time).toUtf8(); };
  for (const auto& one : cases) {
    openDocument();
    addRunning("Acme", at(one.start).constData());
    if (one.alive) session.settings()->setAliveAt(instantOf(at(one.alive).constData()));
    killAndOpen(at(one.lastSave).constData());
    const HaltedNotice notice(session, {});
    EXPECT_EQ(titles()[0], QStringLiteral("Set to last save (%1)").arg(one.shown)) << one.why;
    session.close();
    QFile::remove(places.path("Test.pdr"));
  }
}

TEST_F(Halted, AsksUntilItIsAnsweredAndNoLonger) {
  openDocument();
  addRunning("Acme");
  killAndOpen();
  const HaltedNotice notice(session, [this](TimeEntry& entry) { edited_ = &entry; });
  EXPECT_EQ(standing()[0].text,
            "“Acme - Build” was being timed when Pendra ended. Its length was not stored.");
  EXPECT_EQ(titles(), QStringList({"Set to last save (09:58)", "Type its length…", "Run On"}));
  press("Type its length…");
  EXPECT_EQ(edited_, &entry(0));
  EXPECT_THAT(durations(), ElementsAre(std::nullopt)) << "nothing is rescued unasked";
  edit([&] { entry(0).setNotes("no answer"), entry(0).setDuration(0); });
  EXPECT_EQ(standing().size(), 1U);
  edit([&] { entry(0).activity()->customer()->setName("Zed"); });
  EXPECT_TRUE(standing()[0].text.startsWith("“Zed - Build”"));

  session.notices().withdraw(standing()[0].key);
  edit([&] { entry(0).setNotes("still none"); });
  EXPECT_THAT(standing(), IsEmpty()) << "it was dismissed";
  backUpTo(session, places.path("Copy.pdrbackup"));
  killAndOpen();
  EXPECT_EQ(titles()[0], "Set to last save (09:58)") << "but not answered";
  session.close();
  QFile::remove(places.path("Test.pdr"));
  ASSERT_TRUE(QFile::rename(places.path("Copy.pdrbackup"), places.path("Test.pdr")));
  ASSERT_TRUE(loadDocument(session, places.path("Test.pdr")));
  EXPECT_EQ(titles()[0], "Set to last save (09:58)") << "nor by a backup and a restore";

  press("Set to last save (09:58)");
  EXPECT_THAT(durations(), ElementsAre(3480));
  EXPECT_FALSE(session.context()->hasChanges()) << "it is stored at once";
  EXPECT_THAT(standing(), IsEmpty());
  session.context()->undoStack().undo();
  EXPECT_EQ(standing().size(), 1U) << "the answer was taken back";
  edit([&] { entry(0).setSendingSince(clock.now()); });
  EXPECT_THAT(standing(), IsEmpty()) << "its time may be in Vantor";
  edit([&] { entry(0).setSendingSince({}); });
  EXPECT_EQ(standing().size(), 1U);
  edit([&] { entry(0).setDuration(7200); });
  EXPECT_THAT(standing(), IsEmpty()) << "its length was corrected elsewhere";
  EXPECT_FALSE(entry(0).haltedAt());
}

TEST_F(Halted, SeveralAreAnsweredTogetherAndEachCrashForItself) {
  openDocument();
  addRunning("Earlier", "2026-11-23T08:00:00Z");
  killAndOpen("2026-11-23T08:00:30Z");
  addRunning("Acme");
  addRunning("Deleted");
  addRunning("Again");
  addRunning("Completed");
  killAndOpen();
  const HaltedNotice notice(session, {});
  EXPECT_EQ(standing()[0].text,
            "4 entries were being timed when Pendra ended. Their lengths were not stored.");
  EXPECT_EQ(titles(), QStringList({"Set to last save (09:58)", "Type their lengths…", "Run On"}));
  edit([&] {
    session.context()->deleteObject(entry(2));
    entry(2).activity()->startEntry();
    entry(3).activity()->setCompleted(true);
  });
  press("Run On");
  const auto runs = [&](std::size_t index) { return entry(index).running() == true; };
  EXPECT_TRUE(runs(1) && !entry(1).haltedAt()) << "from its start, as if nothing had happened";
  EXPECT_EQ(entry(1).length(), 3600);
  EXPECT_FALSE(runs(2)) << "its activity runs already";
  EXPECT_FALSE(runs(3)) << "its activity has left the list";
  EXPECT_EQ(titles(), QStringList({"Set to last save (09:58)", "Type their lengths…"}));
  session.context()->undoStack().undo();
  EXPECT_TRUE(!runs(1) && entry(1).isHalted());
  press("Set to last save (09:58)");
  EXPECT_THAT(durations(), ElementsAre(std::nullopt, 3480, 3480, 3480, std::nullopt));
  EXPECT_EQ(titles()[0], "Set to last save (23 Nov 09:00)") << "the crash before";
  press(titles()[0]);
  EXPECT_EQ(durations()[0], 30);
  EXPECT_THAT(standing(), IsEmpty());
}

TEST_F(Halted, AnEndThatAskedNobodyIsToldOfOnce) {
  openDocument();
  addRunning("Acme");
  stopUnasked(session, true);
  EXPECT_EQ(entry(0).duration(), 3600);
  tellOfUnaskedEnd(session);
  ASSERT_EQ(session.notices().standing().size(), 1U);
  EXPECT_EQ(session.notices().standing()[0].text,
            "Pendra had to end on 24 Nov 2026 10:00 and stopped “Acme - Build”. What was being typed was not "
            "stored.");
  session.notices().withdraw(session.notices().standing()[0].key);
  stopUnasked(session, false);  // nothing ran, and nothing is lost
  tellOfUnaskedEnd(session);
  EXPECT_THAT(session.notices().standing(), IsEmpty());
}

}  // namespace
}  // namespace pendra
