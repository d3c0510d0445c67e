#include "platform/UserDefaults.h"

#include <gmock/gmock.h>

#include <QDateTime>

#include "platform/Preferences.h"
#include "support/Disk.h"
#include "support/FileSizeLimit.h"
#include "support/TestPlaces.h"

namespace pendra {
namespace {

class UserDefaultsTest : public testing::Test {
 protected:
  std::string file() const { return contentsOf(places_.defaultsFile()).toStdString(); }

  TestPlaces places_;
  UserDefaults defaults_{places_.defaultsFile()};
};

TEST_F(UserDefaultsTest, TheFileShowsKeysAndValuesAsOthersReadThemAndKeepsWhatElseItHolds) {
  EXPECT_EQ(defaults_.text(preferences::kLastDocument), std::nullopt) << "absent and not empty";
  ASSERT_TRUE(writeFile(places_.config + "/theirs.ini",
                        "; by hand\n[General]\nPendraLastURL=/old\nComma=a, b\nBytes=@ByteArray(x)\n\n"
                        "[Other]\nPendraLastURL=theirs\n"));
  UserDefaults theirs(places_.config + "/theirs.ini");
  EXPECT_EQ(theirs.text("Comma"), QString("a, b"));
  EXPECT_TRUE(theirs.holdsBytes("Bytes"));
  for (UserDefaults* defaults : {&defaults_, &theirs}) {
    defaults->setText(preferences::kNoteLengthWarning, "YES");
    defaults->setText(preferences::kLastDocument, "/home/ada/Documents/Pendra/Hours 100%.pdr");
    defaults->setBoolean(preferences::kMergeSubmissions, true);
    defaults->setBoolean(preferences::kAnalyticsTracker, false);
    EXPECT_FALSE(defaults->holdsBytes(preferences::kMergeSubmissions)) << "a boolean is no data value";
    EXPECT_FALSE(defaults->contains(preferences::kHideSubmitted) ||
                 defaults->boolean(preferences::kHideSubmitted));
  }
  EXPECT_EQ(contentsOf(places_.defaultsFile()),
            "[General]\n%20PendraNoteLengthWarning=YES\n"
            "PendraLastURL=/home/ada/Documents/Pendra/Hours 100%.pdr\n"
            "PendraMergeSubmissions=true\nVTAnalyticsTracker=false\n");
  EXPECT_EQ(contentsOf(theirs.path()),
            "; by hand\n[General]\nPendraLastURL=/home/ada/Documents/Pendra/Hours 100%.pdr\nComma=a, b\n"
            "Bytes=@ByteArray(x)\n%20PendraNoteLengthWarning=YES\nPendraMergeSubmissions=true\n"
            "VTAnalyticsTracker=false\n\n[Other]\nPendraLastURL=theirs\n");
}

TEST_F(UserDefaultsTest, EveryTextIsReadAsItWasWritten) {
  const QStringList texts{"/home/zoë/a, b; \"c\"\\d.pdr",
                          "",
                          " blank ",
                          "@at",
                          "a=b",
                          "\n1\t\x01"
                          "f",
                          "\\x41",
                          "😀"};
  for (const QStringList& list : {texts, QStringList("one"), QStringList("a, b"), QStringList()}) {
    defaults_.setTexts(preferences::kRecentDocuments, list);
    EXPECT_EQ(UserDefaults(places_.defaultsFile()).texts(preferences::kRecentDocuments), list);
  }
  for (const QString& text : texts) {
    defaults_.setText(preferences::kLastDocument, text);
    EXPECT_EQ(UserDefaults(places_.defaultsFile()).text(preferences::kLastDocument), text);
  }
}

TEST_F(UserDefaultsTest, AWriteThatFailsLeavesTheFileAndIsToldOnce) {
  defaults_.setText(preferences::kLastDocument, "/old");
  const std::string before = file();
  int told = 0;
  const auto observing = defaults_.failureChanges().observe([&] { ++told; });
  {
    const FileSizeLimit limit(20);
    defaults_.setText(preferences::kLastDocument, "/new");
    defaults_.setBoolean(preferences::kHideSubmitted, true);
    EXPECT_EQ(defaults_.failure()->text, "File too large");
    EXPECT_EQ(file(), before);
    EXPECT_EQ(defaults_.text(preferences::kLastDocument), QString("/new"))
        << "it counts while the program runs";
  }
  EXPECT_EQ(told, 1);
  Disk disk;
  defaults_.setBoolean(preferences::kMergeSubmissions, true);
  EXPECT_EQ(told, 2);
  EXPECT_EQ(disk.synced.size(), 2) << "the file and its name";
  const UserDefaults next(places_.defaultsFile());
  EXPECT_EQ(next.text(preferences::kLastDocument), QString("/new"));
  EXPECT_TRUE(next.boolean(preferences::kHideSubmitted));
  const QString folder = QFileInfo(places_.defaultsFile()).path();
  QFile draft(folder + "/.pendra-abcdef");
  ASSERT_TRUE(draft.open(QIODevice::WriteOnly) &&
              draft.setFileTime(QDateTime::fromSecsSinceEpoch(0), QFileDevice::FileModificationTime));
  ASSERT_TRUE(writeFile(folder + "/.pendra-ghijkl", "of a writer at work"));
  const UserDefaults last(places_.defaultsFile());
  EXPECT_FALSE(draft.exists());
  EXPECT_TRUE(QFile::exists(folder + "/.pendra-ghijkl"));
}

TEST_F(UserDefaultsTest, ObserversOfAKeySeeItsNewValueAndNoOther) {
  std::vector<bool> seen;
  const auto observing = defaults_.changesOf(preferences::kAnalyticsTracker).observe([&] {
    seen.push_back(defaults_.boolean(preferences::kAnalyticsTracker));
  });
  defaults_.setBoolean(preferences::kHideSubmitted, true);
  defaults_.setBoolean(preferences::kAnalyticsTracker, true);
  defaults_.setBoolean(preferences::kAnalyticsTracker, false);
  EXPECT_THAT(seen, testing::ElementsAre(true, false));
}

}  // namespace
}  // namespace pendra
