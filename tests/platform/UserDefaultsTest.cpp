#include "platform/UserDefaults.h"

#include <gmock/gmock.h>

#include <QSettings>

#include "platform/Preferences.h"
#include "support/TestPlaces.h"

namespace pendra {
namespace {

using testing::AllOf;
using testing::HasSubstr;

class UserDefaultsTest : public testing::Test {
 protected:
  std::string file() const { return contentsOf(places_.defaultsFile()).toStdString(); }

  TestPlaces places_;
  UserDefaults defaults_{places_.defaultsFile()};
};

TEST_F(UserDefaultsTest, WhatWasNeverWrittenIsAbsentAndNotEmpty) {
  EXPECT_EQ(defaults_.text(preferences::kLastDocument), std::nullopt);
  defaults_.setText(preferences::kLastDocument, "");
  EXPECT_EQ(defaults_.text(preferences::kLastDocument), QString(""));
  EXPECT_FALSE(defaults_.boolean(preferences::kHideSubmitted));
  EXPECT_FALSE(defaults_.contains(preferences::kHideSubmitted));
}

TEST_F(UserDefaultsTest, TheFileShowsKeysAndValuesAsOthersReadThem) {
  defaults_.setText(preferences::kNoteLengthWarning, "YES");
  defaults_.setText(preferences::kLastDocument, "/home/ada/Documents/Pendra/Hours 100%.pdr");
  defaults_.setBoolean(preferences::kMergeSubmissions, true);
  defaults_.setBoolean(preferences::kAnalyticsTracker, false);
  EXPECT_THAT(file(),
              AllOf(HasSubstr("[General]\n"), HasSubstr("\n%20PendraNoteLengthWarning=YES\n"),
                    HasSubstr("\nPendraLastURL=/home/ada/Documents/Pendra/Hours 100%.pdr\n"),
                    HasSubstr("\nPendraMergeSubmissions=true\n"), HasSubstr("\nVTAnalyticsTracker=false\n")));
}

TEST_F(UserDefaultsTest, TheNextProgramReadsWhatThisOneWrote) {
  const QString path = QString::fromUtf8("/home/zoë/a, b; \"c\"\\d.pdr");
  defaults_.setText(preferences::kNoteLengthWarning, "YES");
  defaults_.setText(preferences::kLastDocument, path);
  defaults_.setBoolean(preferences::kHideSubmitted, true);
  defaults_.setTexts(preferences::kRecentDocuments, {path});
  const UserDefaults next(places_.defaultsFile());
  EXPECT_EQ(next.text(preferences::kNoteLengthWarning), QString("YES"));
  EXPECT_FALSE(next.contains("PendraNoteLengthWarning"));
  EXPECT_EQ(next.text(preferences::kLastDocument), path);
  EXPECT_TRUE(next.boolean(preferences::kHideSubmitted));
  EXPECT_EQ(next.texts(preferences::kRecentDocuments), QStringList(path));
}

TEST_F(UserDefaultsTest, ABooleanIsNoDataValue) {
  defaults_.setBoolean(preferences::kMergeSubmissions, false);
  EXPECT_FALSE(defaults_.dataForKey(preferences::kMergeSubmissions));
  EXPECT_FALSE(UserDefaults(places_.defaultsFile()).dataForKey(preferences::kMergeSubmissions));
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
