#include "ui_core/HaltedNotice.h"

#include <gmock/gmock.h>

#include <QDateTime>

#include "document/Saving.h"
#include "support/TestSession.h"

namespace pendra {
namespace {

class Halted : public testing::Test, protected TestSession {
 protected:
  /// A document whose timers ran since `start` when the program was killed, last saved at `lastSave`.
  void openAfterKill(std::initializer_list<const char*> customers, const char* start, const char* lastSave) {
    openDocument();
    for (const char* name : customers) {
      Activity& activity = addActivity(&addCustomer(QString::fromUtf8(name)), &addService("Build"));
      activity.startEntry().setStart(instantOf(start));
    }
    saveContextOrLog(session);
    session.context()->close();
    QFile file(places.path("Test.pdr"));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(QDateTime::fromString(QLatin1StringView(lastSave), Qt::ISODate),
                                 QFileDevice::FileModificationTime));
    file.close();
    session.close();
    loadDocument(session, places.path("Test.pdr"));
    postHaltedNotice(session, [this](TimeEntry& entry) { edited_ = &entry; });
  }
  const Notice& notice() { return session.notices().standing().at(0); }
  std::vector<std::optional<double>> durations() {
    std::vector<std::optional<double>> all;
    for (const TimeEntry* entry : session.context()->all<TimeEntry>()) all.push_back(entry->duration());
    return all;
  }
  TimeEntry* edited_ = nullptr;
};

TEST_F(Halted, OneEntryIsNamedAndCanBeSetOrTyped) {
  openAfterKill({"Acme"}, "2026-11-24T08:00:00Z", "2026-11-24T08:58:00Z");
  EXPECT_EQ(notice().text, "“Acme - Build” was being timed when Pendra ended. Its length was not stored.");
  ASSERT_EQ(notice().actions.size(), 2U);
  EXPECT_EQ(notice().actions[0].title, "Set to last save (09:58)");
  notice().actions[1].run();
  EXPECT_EQ(edited_, session.context()->all<TimeEntry>()[0]);
  EXPECT_THAT(durations(), testing::ElementsAre(std::nullopt)) << "nothing is rescued unasked";
  notice().actions[0].run();
  EXPECT_THAT(durations(), testing::ElementsAre(3480));
  EXPECT_FALSE(session.context()->hasChanges()) << "it is stored at once";
}

TEST_F(Halted, SeveralAreCountedAndSetTogether) {
  openAfterKill({"Acme", "Zed"}, "2026-11-23T08:00:00Z", "2026-11-23T08:00:30Z");
  EXPECT_EQ(notice().text, "2 entries were being timed when Pendra ended. Their lengths were not stored.");
  ASSERT_EQ(notice().actions.size(), 1U);
  EXPECT_EQ(notice().actions[0].title, "Set to last save (23 Nov 09:00)");
  session.context()->deleteObject(*session.context()->all<TimeEntry>()[0]);
  notice().actions[0].run();
  EXPECT_THAT(durations(), testing::ElementsAre(30)) << "one may have been deleted meanwhile";
}

TEST_F(Halted, NothingIsSaidWhereNothingWasLost) {
  openAfterKill({}, "2026-11-24T08:00:00Z", "2026-11-24T08:58:00Z");
  EXPECT_TRUE(session.notices().standing().empty());
}

}  // namespace
}  // namespace pendra
