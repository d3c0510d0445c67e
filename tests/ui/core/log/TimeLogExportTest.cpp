#include "ui_core/TimeLogExport.h"

#include <sys/stat.h>

#include "LogFixture.h"
#include "support/FileSizeLimit.h"

namespace pendra {
namespace {

const QByteArray kHeader =
    "Start Date Time\tCustomer\tJob\tService\tDuration\tDate Submitted\tActivity Notes\tMemo\tEmployee\n";

class ProgressOfTest final : public ExportProgress {
 public:
  bool goOn(std::size_t done, std::size_t of) override {
    ++asked;
    return goesOn && done <= of;
  }

  int asked = 0;
  bool goesOn = true;
};

class TimeLogExport : public TimeLog {
 protected:
  void setEmployee(std::optional<QString> name) {
    queries::firstIdentity(*test.session.context())->setEmployeeName(std::move(name));
  }
  /// Exports to a path and answers the bytes that stand there afterwards.
  QByteArray exportedTo(const QString& path) {
    test.panels.willChoose(path);
    exportTimeLog(log, progress);
    return contentsOf(path);
  }
  QByteArray exported() { return exportedTo(test.places.path("log.txt")); }

  ProgressOfTest progress;
};

TEST_F(TimeLogExport, NeverGoesOverTheOpenDocument) {
  const QString document = test.session.document()->path();
  const QByteArray before = contentsOf(document);
  const QString link = test.places.path("link.txt");
  ASSERT_TRUE(QFile::link(document, link));
  for (const QString& path : {document, link}) {
    exportedTo(path);
    EXPECT_EQ(contentsOf(document), before);
    ASSERT_EQ(test.session.notices().standing().size(), 1U);
    EXPECT_TRUE(test.session.notices().standing()[0].text.endsWith(u"it is the document that is open."));
  }
}

TEST_F(TimeLogExport, WritesEveryFieldAsItStands) {
  setEmployee("Käthe");
  Activity& roof = activityOf("Bob \"B\" Ltd", "Dach");
  roof.setNotes("first\nsecond \"third\"\tfourth");
  TimeEntry& sent = test.addEntry(roof, "2026-11-23T23:30:00.999Z", 360061.9);
  sent.setDateSubmitted(instantOf("2026-11-24T08:00:00.5Z"));
  sent.setNotes("Größe\t\"XL\"");
  Activity& plain = activityOf("Acme");
  plain.setNotes(std::nullopt);
  test.addEntry(plain, "2026-03-29T01:00:00Z", 59).setDateSubmitted(Instant{1.0});
  log.rebuild();
  sent.setDuration(90061);  // after the reload: the file holds the entry's own values, not the row's
  const QByteArray bytes = exported();
  EXPECT_EQ(bytes.toStdString(),
            kHeader.toStdString() +
                "\"2026-11-23 23:30:00 +0000\"\t\"Bob \"B\" Ltd\"\t\"Dach\"\t\"Design\"\t"
                "\"25:01:01\"\t\"2026-11-24 08:00:00 +0000\"\t"
                "\"first\nsecond \"third\"\tfourth\"\t\"Größe\t\"XL\"\"\t\"Käthe\"\n"
                "\"2026-03-29 01:00:00 +0000\"\t\"Acme\"\t\"\"\t\"Design\"\t"
                "\"00:00:59\"\t\"\"\t\"\"\t\"\"\t\"Käthe\"");
}

TEST_F(TimeLogExport, WritesTheSelectedRowsInTheOrderOfTheTable) {
  for (const char* name : {"A", "B", "C", "D", "E"}) {
    test.addEntry(activityOf(QString::fromLatin1(name)), "2026-11-24T08:00:00Z", 60);
  }
  log.rebuild();
  log.rows().sortBy({"customer", false});
  log.selection().selectRows({1, 3});
  const auto lines = exported().split('\n');
  ASSERT_EQ(lines.size(), 3);
  EXPECT_TRUE(lines[1].contains("\"D\""));
  EXPECT_TRUE(lines[2].contains("\"B\""));
}

TEST_F(TimeLogExport, LeavesWhatStoodThereWhenItIsEnded) {
  Activity& activity = activityOf("Acme");
  for (int number = 0; number < 300; ++number) test.addEntry(activity, "2026-11-24T08:00:00Z", 60);
  log.rebuild();
  EXPECT_EQ(exported().count('\n'), 300);
  EXPECT_EQ(progress.asked, 1);
  progress.goesOn = false;
  test.session.context()->all<TimeEntry>()[0]->setNotes("later");
  EXPECT_EQ(exported().count('\n'), 300);
  EXPECT_FALSE(exported().contains("later"));
}

TEST_F(TimeLogExport, ProposesANameWithItsSlashesAndWithoutRowsIsTheHeaderAlone) {
  const std::pair<std::optional<QString>, QString> rows[] = {
      {"Me", "Time Log 11/24/26.txt"}, {"me", "me 11/24/26.txt"}, {std::nullopt, "Time Log 11/24/26.txt"}};
  for (const auto& [employee, proposed] : rows) {
    setEmployee(employee);
    EXPECT_EQ(exported(), kHeader);
    EXPECT_EQ(test.panels.savePanels().back().proposedName, proposed);
  }
}

TEST_F(TimeLogExport, AsksAboutTimersAfterThePanelAndCancellingWritesNothing) {
  Activity& activity = activityOf("Acme");
  activity.startEntry();
  log.rebuild();
  test.panels.willCancel();
  exportTimeLog(log, progress);
  EXPECT_TRUE(test.alerts.shown().empty());
  test.alerts.willAnswer({"Cancel"});
  EXPECT_EQ(exported(), QByteArray());
  EXPECT_TRUE(activity.isRunning());
  test.clock.advance(61);
  test.alerts.willAnswer({"OK"});
  EXPECT_TRUE(exported().contains("\"00:01:01\""));
  EXPECT_FALSE(activity.isRunning());
}

TEST_F(TimeLogExport, SaysWhereItIsOrWhyNotAndReplacesAFileOnlyByAWholeOne) {
  test.addEntry(activityOf("Acme"), "2026-11-24T08:00:00Z", 60);
  log.rebuild();
  const QString path = test.places.path("log.txt");
  ASSERT_TRUE(writeFile(path, QByteArray(5000, 'x')));
  const auto notice = [&] { return test.session.notices().standing().back(); };
  {
    const FileSizeLimit limit(100);
    EXPECT_EQ(exported(), QByteArray(5000, 'x'));
  }
  EXPECT_EQ(notice().text, "The time log could not be exported to “log.txt”: File too large.");
  ASSERT_EQ(::mkfifo(qPrintable(test.places.path("fifo")), 0600), 0);
  test.panels.willChoose(test.places.path("fifo"));
  exportTimeLog(log, progress);
  EXPECT_TRUE(notice().text.contains("“fifo”: it is not a file"));
  exportedTo(test.places.path("missing/log.txt"));
  EXPECT_TRUE(notice().text.contains("“log.txt”: No such file"));
  EXPECT_TRUE(test.alerts.shown().empty());
  EXPECT_TRUE(exported().startsWith(kHeader));
  EXPECT_EQ(notice().text, "Written to “" + path + "”.");
  notice().actions[0].run();
  EXPECT_EQ(test.workspace.revealed(), QStringList(path));
}

}  // namespace
}  // namespace pendra
